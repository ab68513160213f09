#include "desktop/locator/locatormatch.h"

#include <gtest/gtest.h>

#include "shell/text.h"

namespace qmrules::desktop {
namespace {

std::vector<MarkedRun> Marks(std::string_view text, std::string_view name) {
  const auto match = LocatorQuery(text).Match(name);
  return match ? match->marks : std::vector<MarkedRun>{};
}

bool AtWordStarts(std::string_view text, std::string_view name) {
  const auto match = LocatorQuery(text).Match(name);
  return match && match->atWordStarts;
}

TEST(LocatorQuery, FindsAPartOfANameInAnyCase) {
  EXPECT_EQ(Marks("PREM", "Annual premium"), (std::vector<MarkedRun>{{7, 4}}));
  EXPECT_EQ(Marks("mium", "Annual Premium"), (std::vector<MarkedRun>{{10, 4}}));
  EXPECT_FALSE(LocatorQuery("loss").Match("Annual premium"));
}

TEST(LocatorQuery, EveryWordOfTheTextHasToOccur) {
  EXPECT_EQ(Marks("prem ann", "Annual premium"), (std::vector<MarkedRun>{{0, 3}, {7, 4}}));
  EXPECT_FALSE(LocatorQuery("prem loss").Match("Annual premium"));
}

TEST(LocatorQuery, ATextWithoutAWordIsEmpty) {
  EXPECT_TRUE(LocatorQuery("").IsEmpty());
  EXPECT_TRUE(LocatorQuery(" \t　").IsEmpty());
  EXPECT_FALSE(LocatorQuery(" a ").IsEmpty());
}

TEST(LocatorQuery, WordsBeginBehindBlanksMarksAndSmallLetters) {
  EXPECT_TRUE(AtWordStarts("calc", "Policy calculation"));
  EXPECT_TRUE(AtWordStarts("calc", "POL-CALC"));
  EXPECT_TRUE(AtWordStarts("calc", "pol_calc"));
  EXPECT_TRUE(AtWordStarts("calc", "PolicyCalc"));
  EXPECT_TRUE(AtWordStarts("premium", "(premium)"));
  EXPECT_FALSE(AtWordStarts("calc", "Recalculation"));
  EXPECT_FALSE(AtWordStarts("alc", "POLCALC"));
}

TEST(LocatorQuery, TheMarkGoesToTheWordThatBeginsSo) {
  EXPECT_EQ(Marks("ate", "Update ate"), (std::vector<MarkedRun>{{7, 3}}));
  EXPECT_EQ(Marks("ate", "Update"), (std::vector<MarkedRun>{{3, 3}}));
}

TEST(LocatorQuery, AMatchIsWholeOnlyWhenEveryWordBeginsAWord) {
  EXPECT_TRUE(AtWordStarts("ann prem", "Annual premium"));
  EXPECT_FALSE(AtWordStarts("ann mium", "Annual premium"));
}

TEST(LocatorQuery, MarksThatMeetBecomeOne) {
  EXPECT_EQ(Marks("prem remium", "Premium"), (std::vector<MarkedRun>{{0, 7}}));
}

TEST(LocatorQuery, PlacesAreToldInUtf16) {
  EXPECT_EQ(Marks("rule", "😀 Rule"), (std::vector<MarkedRun>{{3, 4}}));
  EXPECT_EQ(Marks("保険料", "年間保険料計算"), (std::vector<MarkedRun>{{2, 3}}));
  EXPECT_EQ(Marks("ÄRGER", "Großer Ärger"), (std::vector<MarkedRun>{{7, 5}}));
  EXPECT_EQ(LocatorQuery("rule").Match("😀 Rule")->nameLength, 7U);
}

TEST(LocatorQuery, AWideBlankPartsWords) {
  EXPECT_TRUE(AtWordStarts("計算", "保険料　計算"));
  EXPECT_FALSE(AtWordStarts("計算", "保険料計算"));
}

TEST(LocatorQuery, BytesThatAreNoTextAreFoundAsTheyAre) {
  EXPECT_EQ(Marks("\xff", "a\xff"), (std::vector<MarkedRun>{{1, 1}}));
}

TEST(LocatorQuery, ThePatternsFindWhatTheMatchFinds) {
  const char* const texts[] = {"prem", "a*b", "50%?", "#1", "[x]", "]", "*", "保険", "Ä b"};
  const char* const names[] = {"Premium", "a*b", "aXb",    "50%?", "50%!", "#1", "11",
                               "[x]",     "x",   "保険料", "äB",   "b ä",  ""};
  for (const char* const text : texts) {
    const LocatorQuery query(text);
    for (const char* const name : names) {
      bool meetsAll = true;
      for (const auto& pattern : query.Patterns()) meetsAll = meetsAll && shell::MatchesPattern(name, pattern);
      EXPECT_EQ(meetsAll, query.Match(name).has_value()) << text << " in " << name;
    }
  }
}

}  // namespace
}  // namespace qmrules::desktop
