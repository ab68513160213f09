#include "platform/locale.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace qmrules::platform {
namespace {

TEST(Locale, NamesHaveTheirIdentifiers) {
  EXPECT_EQ(LCIDOfLocaleName("en_US.UTF-8"), 1033);
  EXPECT_EQ(LCIDOfLocaleName("en_GB.UTF-8"), 2057);
  EXPECT_EQ(LCIDOfLocaleName("ja_JP.eucJP"), 1041);
  EXPECT_EQ(LCIDOfLocaleName("ko_KR"), 1042);
  EXPECT_EQ(LCIDOfLocaleName("ru_RU.KOI8-R"), 1049);
  EXPECT_EQ(LCIDOfLocaleName("de_DE@euro"), 1031);
}

TEST(Locale, ABareLanguageStandsForItsMainCountry) {
  EXPECT_EQ(LCIDOfLocaleName("en"), 1033);
  EXPECT_EQ(LCIDOfLocaleName("ja"), 1041);
}

TEST(Locale, WithoutALanguageItIsEnglish) {
  EXPECT_EQ(LCIDOfLocaleName(""), 1033);
  EXPECT_EQ(LCIDOfLocaleName("C"), 1033);
  EXPECT_EQ(LCIDOfLocaleName("C.UTF-8"), 1033);
  EXPECT_EQ(LCIDOfLocaleName("POSIX"), 1033);
}

TEST(Locale, AnUnknownLocaleIsTheInvariantOne) {
  EXPECT_EQ(LCIDOfLocaleName("eo"), 127);
  EXPECT_EQ(LCIDOfLocaleName("en_ZA.UTF-8"), 127);
}

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
