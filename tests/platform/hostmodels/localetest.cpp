#include "platform/locale.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace qmrules::platform {
namespace {

TEST(Locale, AFixedOneStaysWhatItIs) {
  EXPECT_EQ(FixedLocale(1049).GetUserDefaultLCID(), 1049);
}

TEST(Locale, TheSystemsIsReadFromTheEnvironmentInItsOrder) {
  ASSERT_EQ(setenv("LANG", "ru_RU.UTF-8", 1), 0);
  ASSERT_EQ(setenv("LC_CTYPE", "ja_JP.UTF-8", 1), 0);
  ASSERT_EQ(setenv("LC_ALL", "ko_KR.UTF-8", 1), 0);
  EXPECT_EQ(SystemLocale().GetUserDefaultLCID(), 1042);
  ASSERT_EQ(setenv("LC_ALL", "", 1), 0);
  EXPECT_EQ(SystemLocale().GetUserDefaultLCID(), 1041);
  ASSERT_EQ(unsetenv("LC_CTYPE"), 0);
  EXPECT_EQ(SystemLocale().GetUserDefaultLCID(), 1049);
  ASSERT_EQ(unsetenv("LANG"), 0);
  EXPECT_EQ(SystemLocale().GetUserDefaultLCID(), 1033);
}

}  // namespace
}  // namespace qmrules::platform
