#include "platform/clock.h"

#include <gtest/gtest.h>

#include <ctime>

namespace qmrules::platform {
namespace {

TEST(SystemClock, GivesTheMachinesTimeInSeconds) {
  const std::time_t before = std::time(nullptr);
  const Timestamp now = SystemClock().Now();
  const std::time_t after = std::time(nullptr);
  // time() may read a coarser clock that lags a little behind.
  EXPECT_GE(now.seconds, before);
  EXPECT_LE(now.seconds, after + 1);
}

TEST(FixedClock, StandsUntilItIsSet) {
  FixedClock clock(Timestamp{5});
  EXPECT_EQ(clock.Now(), Timestamp{5});
  EXPECT_EQ(clock.Now(), Timestamp{5});
  clock.Set(Timestamp{9});
  EXPECT_EQ(clock.Now(), Timestamp{9});
}

}  // namespace
}  // namespace qmrules::platform
