#include "platform/dataflow.h"

#include <gtest/gtest.h>

namespace qmrules::platform {
namespace {

TEST(TraceTarget, IsProgramCarriageReturnVariable) {
  const TraceTarget target{"PBRATE", "VAR: WS-PREMIUM at 120 "};
  EXPECT_EQ(target.Text(), "PBRATE\rVAR: WS-PREMIUM at 120 ");
}

TEST(TraceTarget, ParsingGivesTheTargetBack) {
  const auto target = TraceTarget::Parse("PBRATE\rWS-PREMIUM");
  ASSERT_TRUE(target);
  EXPECT_EQ(target->program, "PBRATE");
  EXPECT_EQ(target->variable, "WS-PREMIUM");
}

TEST(TraceTarget, ATextWithoutACarriageReturnIsNone) {
  EXPECT_FALSE(TraceTarget::Parse("PBRATE"));
  EXPECT_FALSE(TraceTarget::Parse(""));
}

}  // namespace
}  // namespace qmrules::platform
