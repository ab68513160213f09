#include "shell/text.h"

#include <gtest/gtest.h>
#include <libxml/tree.h>
#include <libxml/xpath.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace qmrules::shell {
namespace {

TEST(SafeText, EmptyTextStaysEmpty) {
  EXPECT_EQ(SafeText(""), "");
}

TEST(SafeText, Code14AloneIsAClosingBrace) {
  EXPECT_EQ(SafeText("\x0E"), "}");
}

TEST(SafeText, Code15AloneIsAnOpeningBrace) {
  EXPECT_EQ(SafeText("\x0F"), "{");
}

TEST(SafeText, CodeOneBecomesAReference) {
  EXPECT_EQ(SafeText("\x01"), "&#64999;");
}

TEST(SafeText, Code31IsTheLastThatBecomesAReference) {
  EXPECT_EQ(SafeText("\x1F"), "&#64969;");
  EXPECT_EQ(SafeText(" "), " ");
}

TEST(SafeText, TabAndLineEndsAreKept) {
  EXPECT_EQ(SafeText("a\tb\r\nc"), "a\tb\r\nc");
}

TEST(SafeText, NulIsDropped) {
  EXPECT_EQ(SafeText(std::string_view("a\0b", 3)), "ab");
}

TEST(SafeText, EveryControlCodeFollowsTheRule) {
  for (int code = 0; code < 32; ++code) {
    std::string expected = "&#" + std::to_string(65000 - code) + ";";
    if (code == 0) {
      expected.clear();
    } else if (code == 9 || code == 10 || code == 13) {
      expected = std::string(1, static_cast<char>(code));
    } else if (code == 14) {
      expected = "}";
    } else if (code == 15) {
      expected = "{";
    }
    EXPECT_EQ(SafeText(std::string(1, static_cast<char>(code))), expected) << code;
  }
}

TEST(SafeText, EveryAsciiCharacterFrom32OnIsKept) {
  for (int code = 32; code < 128; ++code) {
    const std::string text(1, static_cast<char>(code));
    EXPECT_EQ(SafeText(text), text) << code;
  }
}

TEST(SafeText, CharactersBeyondAsciiAreKept) {
  // U+8000 and up are the negative ones of a signed 16-bit code; U+0080 to U+009F are controls that are not below 32.
  const std::string text = "\xC2\x85 é 日本語 \xE8\x80\x80 \xEF\xBF\xBD 😀";
  EXPECT_EQ(SafeText(text), text);
}

TEST(SafeText, MalformedBytesPassThrough) {
  const std::string text = "a\xFF\xC3\xE2\x82\x80 \xF0\x9F";
  EXPECT_EQ(SafeText(text), text);
}

TEST(SafeText, SecondPassChangesNothing) {
  const std::string once = SafeText("x\x01\x0E\x0F\x02y");
  EXPECT_EQ(once, "x&#64999;}{&#64998;y");
  EXPECT_EQ(SafeText(once), once);
}

TEST(HtmlText, AddedAmpersandsAreNotEscapedAgain) {
  EXPECT_EQ(HtmlText("<&>"), "&lt;&amp;&gt;");
}

TEST(HtmlText, DoubleQuoteIsEscapedAndSingleQuoteIsNot) {
  EXPECT_EQ(HtmlText("\"a\" 'b'"), "&quot;a&quot; 'b'");
}

TEST(HtmlText, AnEscapedTextIsEscapedOnceMore) {
  EXPECT_EQ(HtmlText("&lt;"), "&amp;lt;");
}

TEST(HtmlText, EmptyTextStaysEmpty) {
  EXPECT_EQ(HtmlText(""), "");
}

TEST(XPathLiteral, TextWithoutDoubleQuoteStandsInDoubleQuotes) {
  EXPECT_EQ(XPathLiteral(""), "\"\"");
  EXPECT_EQ(XPathLiteral("abc"), "\"abc\"");
  EXPECT_EQ(XPathLiteral("it's"), "\"it's\"");
}

TEST(XPathLiteral, TextWithDoubleQuotesOnlyStandsInSingleQuotes) {
  EXPECT_EQ(XPathLiteral("a\"b"), "'a\"b'");
}

TEST(XPathLiteral, TextWithBothBecomesConcat) {
  EXPECT_EQ(XPathLiteral("a\"b'c"), "concat(\"a\",'\"b',\"'c\",\"\")");
}

TEST(XPathLiteral, TextThatBeginsWithADoubleQuoteHasAnEmptyFirstPiece) {
  EXPECT_EQ(XPathLiteral("\"'"), "concat(\"\",'\"',\"'\",\"\")");
}

TEST(XPathLiteral, TextThatBeginsWithASingleQuoteDoesNot) {
  EXPECT_EQ(XPathLiteral("'\""), "concat(\"'\",'\"',\"\")");
}

/// The value that an XPath engine gives to an expression of type string; fails the test when it is not valid.
std::string ValueOf(const std::string& expression) {
  const std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> document(xmlNewDoc(BAD_CAST "1.0"), &xmlFreeDoc);
  const std::unique_ptr<xmlXPathContext, decltype(&xmlXPathFreeContext)> context(xmlXPathNewContext(document.get()),
                                                                                 &xmlXPathFreeContext);
  const std::unique_ptr<xmlXPathObject, decltype(&xmlXPathFreeObject)> object(
      xmlXPathEvalExpression(BAD_CAST expression.c_str(), context.get()), &xmlXPathFreeObject);
  if (!object || object->type != XPATH_STRING) {
    ADD_FAILURE() << "not a valid expression of a string: " << expression;
    return "";
  }
  return reinterpret_cast<const char*>(object->stringval);
}

TEST(XPathLiteral, ValueOfTheExpressionIsTheText) {
  const std::vector<std::string> texts = {
      "",       "plain",   "it's",     "say \"so\"",  "both ' and \"", "\"'",       "'\"",         "''\"\"",
      "\"\"''", "'\"'\"'", "\"'\"'\"", "a'b\"c'd\"e", "',\"concat(",   "\"),'evil", "日本'語\"é😀", "%1 & <'\">"};
  for (const std::string& text : texts) {
    EXPECT_EQ(ValueOf(XPathLiteral(text)), text);
  }
}

TEST(XPathLiteral, EveryShortTextOfQuotesKeepsItsValue) {
  for (unsigned length = 0; length <= 6; ++length) {
    for (unsigned bits = 0; bits < (1U << (2 * length)); ++bits) {
      std::string text;
      for (unsigned place = 0; place < length; ++place) {
        text += "\"'a,"[(bits >> (2 * place)) & 3U];
      }
      ASSERT_EQ(ValueOf(XPathLiteral(text)), text);
    }
  }
}

TEST(Subst, ReplacesEachPlaceholderByItsArgument) {
  EXPECT_EQ(Subst("File: %1 Lines %2-%3", {"A.CBL", "10", "20"}), "File: A.CBL Lines 10-20");
}

TEST(Subst, OrderInTheFormatDecides) {
  EXPECT_EQ(Subst("%2 of %1", {"a", "b"}), "b of a");
}

TEST(Subst, FewerArgumentsLeaveThePlaceholder) {
  EXPECT_EQ(Subst("%1 and %2", {"a"}), "a and %2");
  EXPECT_EQ(Subst("%1 and %2", {}), "%1 and %2");
}

TEST(Subst, MoreArgumentsThanPlaceholdersAreIgnored) {
  EXPECT_EQ(Subst("only %1", {"a", "b", "c", "d"}), "only a");
}

TEST(Subst, SubstitutedTextIsNotSearchedAgain) {
  EXPECT_EQ(Subst("%1 %2 %3", {"%2", "%3", "%1"}), "%2 %3 %1");
  EXPECT_EQ(Subst("%1%2", {"%", "1"}), "%1");
}

TEST(Subst, PlaceholderIsReplacedAsOftenAsItOccurs) {
  EXPECT_EQ(Subst("%1%1-%1", {"x"}), "xx-x");
}

TEST(Subst, OnlyPlaceholdersOneToThreeCount) {
  EXPECT_EQ(Subst("%0 %4 %a %% %", {"a", "b", "c", "d"}), "%0 %4 %a %% %");
  EXPECT_EQ(Subst("%%1", {"a"}), "%a");
  EXPECT_EQ(Subst("%10", {"a"}), "a0");
}

TEST(Subst, TakesAListOfStrings) {
  const std::vector<std::string> args = {"one", "two"};
  EXPECT_EQ(Subst("%1, %2", args), "one, two");
}

TEST(Subst, FillsALineBreak) {
  EXPECT_EQ(Subst("a%1b", {"\r\n"}), "a\r\nb");
}

TEST(ERDEncoding, FollowsTheTable) {
  EXPECT_EQ(ERDEncoding(1033), "ISO-8859-1");
  EXPECT_EQ(ERDEncoding(1041), "SHIFT_JIS");
  EXPECT_EQ(ERDEncoding(1042), "EUC-KR");
  EXPECT_EQ(ERDEncoding(1049), "ISO-8859-5");
}

TEST(ERDEncoding, AnyOtherLocaleGivesUtf8) {
  EXPECT_EQ(ERDEncoding(0), "UTF-8");
  EXPECT_EQ(ERDEncoding(1031), "UTF-8");
  EXPECT_EQ(ERDEncoding(2057), "UTF-8");
  EXPECT_EQ(ERDEncoding(-1), "UTF-8");
}

TEST(LocaleIdentifier, KnowsLanguageAndRegion) {
  EXPECT_EQ(LocaleIdentifier("en_US"), 1033);
  EXPECT_EQ(LocaleIdentifier("en_GB"), 2057);
  EXPECT_EQ(LocaleIdentifier("ja_JP"), 1041);
  EXPECT_EQ(LocaleIdentifier("ko_KR"), 1042);
  EXPECT_EQ(LocaleIdentifier("ru_RU"), 1049);
  EXPECT_EQ(LocaleIdentifier("de_CH"), 2055);
  EXPECT_EQ(LocaleIdentifier("zh_TW"), 1028);
}

TEST(LocaleIdentifier, EncodingAndModifierDoNotMatter) {
  EXPECT_EQ(LocaleIdentifier("ja_JP.UTF-8"), 1041);
  EXPECT_EQ(LocaleIdentifier("de_DE@euro"), 1031);
  EXPECT_EQ(LocaleIdentifier("de_DE.ISO-8859-15@euro"), 1031);
  EXPECT_EQ(LocaleIdentifier("C.UTF-8"), 1033);
}

TEST(LocaleIdentifier, CaseAndSeparatorDoNotMatter) {
  EXPECT_EQ(LocaleIdentifier("EN-gb"), 2057);
  EXPECT_EQ(LocaleIdentifier("en-GB"), 2057);
}

TEST(LocaleIdentifier, LanguageAloneStandsForItsChiefRegion) {
  EXPECT_EQ(LocaleIdentifier("en"), 1033);
  EXPECT_EQ(LocaleIdentifier("ko"), 1042);
  EXPECT_EQ(LocaleIdentifier("ja.eucJP"), 1041);
  EXPECT_EQ(LocaleIdentifier("de"), 1031);
}

TEST(LocaleIdentifier, PortableLocaleIsEnglish) {
  EXPECT_EQ(LocaleIdentifier("C"), 1033);
  EXPECT_EQ(LocaleIdentifier("POSIX"), 1033);
}

TEST(LocaleIdentifier, UnknownNamesGiveZero) {
  EXPECT_EQ(LocaleIdentifier(""), 0);
  EXPECT_EQ(LocaleIdentifier("xx_YY.UTF-8"), 0);
  EXPECT_EQ(LocaleIdentifier("en_XX"), 0);
  EXPECT_EQ(LocaleIdentifier("_US"), 0);
  EXPECT_EQ(LocaleIdentifier(".UTF-8"), 0);
}

TEST(LocaleIdentifier, LeadsToTheEncodingOfTheUsersLocale) {
  EXPECT_EQ(ERDEncoding(LocaleIdentifier("ja_JP.UTF-8")), "SHIFT_JIS");
  EXPECT_EQ(ERDEncoding(LocaleIdentifier("ko")), "EUC-KR");
  EXPECT_EQ(ERDEncoding(LocaleIdentifier("ru_RU")), "ISO-8859-5");
  EXPECT_EQ(ERDEncoding(LocaleIdentifier("en_GB")), "UTF-8");
  EXPECT_EQ(ERDEncoding(LocaleIdentifier("C")), "ISO-8859-1");
  EXPECT_EQ(ERDEncoding(LocaleIdentifier("nowhere")), "UTF-8");
}

TEST(LanguageOf, JapaneseAndKoreanByTheirLanguageElseEnglish) {
  EXPECT_EQ(LanguageOf("ja_JP.UTF-8"), Language::Japanese);
  EXPECT_EQ(LanguageOf("ja"), Language::Japanese);
  EXPECT_EQ(LanguageOf("ko_KR.eucKR"), Language::Korean);
  EXPECT_EQ(LanguageOf("ko_KP"), Language::Korean);
  EXPECT_EQ(LanguageOf("en_GB"), Language::English);
  EXPECT_EQ(LanguageOf("ru_RU"), Language::English);
  EXPECT_EQ(LanguageOf("jav_ID"), Language::English);
  EXPECT_EQ(LanguageOf("C"), Language::English);
  EXPECT_EQ(LanguageOf(""), Language::English);
}

TEST(ParseLanguage, KnowsExactlyTheThreeCodes) {
  EXPECT_EQ(ParseLanguage("en"), Language::English);
  EXPECT_EQ(ParseLanguage("ja"), Language::Japanese);
  EXPECT_EQ(ParseLanguage("ko"), Language::Korean);
  EXPECT_EQ(ParseLanguage(""), std::nullopt);
  EXPECT_EQ(ParseLanguage("de"), std::nullopt);
  EXPECT_EQ(ParseLanguage("EN"), std::nullopt);
  EXPECT_EQ(ParseLanguage("en_US"), std::nullopt);
}

TEST(Language, ValuesAreTheLocaleIdentifiers) {
  EXPECT_EQ(static_cast<int>(Language::English), LocaleIdentifier("en"));
  EXPECT_EQ(static_cast<int>(Language::Japanese), LocaleIdentifier("ja"));
  EXPECT_EQ(static_cast<int>(Language::Korean), LocaleIdentifier("ko"));
}

}  // namespace
}  // namespace qmrules::shell
