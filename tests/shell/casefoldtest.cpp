#include "shell/casefold.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "shell/casemapping.h"
#include "shell/utf8.h"

namespace qmrules::shell {
namespace {

TEST(FoldCase, AsciiLetters) {
  EXPECT_EQ(FoldCase(""), "");
  EXPECT_EQ(FoldCase("AZ az 09 @[`{ CUST-NAME"), "az az 09 @[`{ cust-name");
}

TEST(FoldCase, LettersBeyondAscii) {
  EXPECT_EQ(FoldCase("Ä"), "ä");
  EXPECT_EQ(FoldCase("ä"), "ä");
  EXPECT_EQ(FoldCase("ΑΒΓ ΣΊΣΥΦΟΣ"), "αβγ σίσυφοσ");
  EXPECT_EQ(FoldCase("ПРИВЕТ Ё"), "привет ё");
  EXPECT_EQ(FoldCase("ＡＢＣ"), "ａｂｃ");
  EXPECT_EQ(FoldCase("𐐀"), "𐐨");
}

TEST(FoldCase, LettersWithMoreThanTwoCasesAreOne) {
  EXPECT_EQ(FoldCase("ς"), "σ");
  EXPECT_EQ(FoldCase("ǅ"), FoldCase("Ǆ"));
  EXPECT_EQ(FoldCase("ǅ"), FoldCase("ǆ"));
  EXPECT_EQ(FoldCase("\u212A"), "k");  // the Kelvin sign
  EXPECT_EQ(FoldCase("\u017F"), "s");  // the long s
}

TEST(FoldCase, TurkishLettersAreNotSpecial) {
  EXPECT_EQ(FoldCase("I"), "i");
  EXPECT_EQ(FoldCase("ı"), "ı");
  EXPECT_EQ(FoldCase("İ"), "İ");
  EXPECT_FALSE(EqualIgnoringCase("ı", "I"));
  EXPECT_FALSE(EqualIgnoringCase("İ", "i"));
}

TEST(FoldCase, TextWithoutCaseIsKept) {
  EXPECT_EQ(FoldCase("日本語 한국어 ß 123 😀"), "日本語 한국어 ß 123 😀");
}

TEST(FoldCase, MalformedBytesAreKept) {
  EXPECT_EQ(FoldCase("A\xFF\xC3"
                     "B\xE2\x82"),
            "a\xFF\xC3"
            "b\xE2\x82");
}

TEST(FoldCase, SecondPassChangesNothingForAnyCodePoint) {
  for (char32_t value = 0; value < kMalformedByte + 0x100; ++value) {
    const char32_t folded = CaseMapping::Unicode().Fold(value);
    ASSERT_EQ(CaseMapping::Unicode().Fold(folded), folded) << static_cast<unsigned>(value);
  }
}

TEST(ToUpper, MapsLettersOneToOne) {
  EXPECT_EQ(ToUpper("rule-1.cust_näme"), "RULE-1.CUST_NÄME");
  EXPECT_EQ(ToUpper("αβς привет"), "ΑΒΣ ПРИВЕТ");
  EXPECT_EQ(ToUpper("straße"), "STRAßE");
  EXPECT_EQ(ToUpper("日本\xFF"
                    "a"),
            "日本\xFF"
            "A");
}

TEST(CompareIgnoringCase, OrdersByFoldedCodePoints) {
  EXPECT_EQ(CompareIgnoringCase("", ""), 0);
  EXPECT_EQ(CompareIgnoringCase("abc", "ABC"), 0);
  EXPECT_EQ(CompareIgnoringCase("abc", "ABD"), -1);
  EXPECT_EQ(CompareIgnoringCase("ABD", "abc"), 1);
  EXPECT_EQ(CompareIgnoringCase("ab", "ABC"), -1);
  EXPECT_EQ(CompareIgnoringCase("abc", "AB"), 1);
  EXPECT_EQ(CompareIgnoringCase("z", "Ä"), -1);
  EXPECT_EQ(CompareIgnoringCase("Äa", "äB"), -1);
  EXPECT_EQ(CompareIgnoringCase("\uFFFD", "\U00010000"), -1);
}

TEST(CompareIgnoringCase, UnderscoreStandsBeforeLettersAsInTheFoldedText) {
  EXPECT_EQ(CompareIgnoringCase("_", "A"), -1);
  EXPECT_EQ(CompareIgnoringCase("_", "a"), -1);
}

TEST(CompareIgnoringCase, LettersWhoseCasesHaveDifferentLengthsInBytesAreEqual) {
  EXPECT_EQ(CompareIgnoringCase("\u212Aelvin", "kELVIN"), 0);
  EXPECT_EQ(CompareIgnoringCase("xK", "X\u212A"), 0);
  EXPECT_EQ(CompareIgnoringCase("\u2C65", "\u023A"), 0);
}

TEST(CompareIgnoringCase, MalformedBytesEqualOnlyThemselves) {
  EXPECT_EQ(CompareIgnoringCase("a\xFF", "A\xFF"), 0);
  EXPECT_NE(CompareIgnoringCase("\xC3", "\xC3\xA4"), 0);
  EXPECT_NE(CompareIgnoringCase("\xE4", "ä"), 0);
  EXPECT_EQ(CompareIgnoringCase("\xE2"
                                "a",
                                "\xE2\x82\xAC"),
            -1);
}

TEST(CompareIgnoringCase, AgreesWithTheOrderOfFoldedTexts) {
  const std::vector<std::string> pieces = {"a", "A", "k", "\u212A", "ä", "Ä",    "σ",        "ς",    "Σ",   "я",
                                           "Я", "z", "_", "語",     "😀", "\xE2", "\xE2\x82", "\xC3", "\xFF"};
  std::mt19937 random(31415);
  std::uniform_int_distribution<std::size_t> pick(0, pieces.size() - 1);
  std::uniform_int_distribution<int> lengths(0, 4);
  const auto make = [&] {
    std::string text;
    for (int length = lengths(random); length > 0; --length) {
      text += pieces[pick(random)];
    }
    return text;
  };
  for (int round = 0; round < 100000; ++round) {
    const std::string left = make();
    const std::string right = make();
    const int order = FoldCase(left).compare(FoldCase(right));
    const int sign = (order > 0 ? 1 : 0) - (order < 0 ? 1 : 0);
    ASSERT_EQ(CompareIgnoringCase(left, right), sign) << left << " | " << right;
    ASSERT_EQ(EqualIgnoringCase(left, right), sign == 0) << left << " | " << right;
  }
}

TEST(CaseMapping, WithoutTheSystemsTablesOnlyAsciiLettersHaveACase) {
  const CaseMapping mapping("no-such-locale");
  EXPECT_EQ(mapping.Fold(U'A'), U'a');
  EXPECT_EQ(mapping.Fold(U'['), U'[');
  EXPECT_EQ(mapping.Fold(U'Ä'), U'Ä');
  EXPECT_EQ(mapping.Upper(U'z'), U'Z');
  EXPECT_EQ(mapping.Upper(U'{'), U'{');
  EXPECT_EQ(mapping.Upper(U'ä'), U'ä');
}

}  // namespace
}  // namespace qmrules::shell
