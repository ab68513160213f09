#include "platform/encoding.h"
#include "support/errortext.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace qmrules::platform {
namespace {

using test::ErrorText;

using namespace std::string_view_literals;

TEST(Encoding, NamesAreKnownInAnyCase) {
  for (const auto* name : {"", "UTF-8", "utf8", "ISO-8859-1", "iso-8859-5", "CP1252", "SHIFT_JIS", "EUC-KR", "UTF-16",
                           "IBM037", "IBM1047", "ibm-1047"}) {
    EXPECT_TRUE(IsKnownEncoding(name)) << name;
  }
}

TEST(Encoding, OtherNamesAndWaysToPassOverErrorsAreNotKnown) {
  for (const auto name :
       {"FOO"sv, "UTF-8//IGNORE"sv, "ISO-8859-1//TRANSLIT"sv, "/"sv, " "sv, "UTF-8\0X"sv, "UTF-8,X"sv}) {
    EXPECT_FALSE(IsKnownEncoding(name)) << name;
  }
}

TEST(Encoding, RequiringAnUnknownEncodingNamesItAndOthers) {
  EXPECT_EQ(ErrorText([] { RequireKnownEncoding("FOO"); }),
            "The encoding \"FOO\" is not known. Name one such as UTF-8, ISO-8859-1, CP1252, SHIFT_JIS, EUC-KR, IBM037 "
            "or IBM1047.");
}

TEST(Encoding, AsciiCompatibilityIsToldByTheBytes) {
  EXPECT_TRUE(IsAsciiCompatible(""));
  EXPECT_TRUE(IsAsciiCompatible("SHIFT_JIS"));
  EXPECT_TRUE(IsAsciiCompatible("CP1252"));
  EXPECT_FALSE(IsAsciiCompatible("UTF-16LE"));
  EXPECT_FALSE(IsAsciiCompatible("IBM037"));
  EXPECT_FALSE(IsAsciiCompatible("FOO"));
}

TEST(DecodeText, DefaultTakesUtf8WhereTheBytesAreThat) {
  EXPECT_EQ(DecodeText("Gr\xC3\xB6\xC3\x9F"
                       "e",
                       "", "a.cbl"),
            "Größe");
  EXPECT_EQ(DecodeText("", "", "a.cbl"), "");
}

TEST(DecodeText, DefaultFallsBackToLatin1ForTheWholeText) {
  EXPECT_EQ(DecodeText("Gr\xF6\xDF"
                       "e \xC3\xB6",
                       "", "a.cbl"),
            "Größe Ã¶");
}

TEST(DecodeText, ByteOrderMarkIsDropped) {
  EXPECT_EQ(DecodeText("\xEF\xBB\xBF"
                       "a",
                       "", "a.cbl"),
            "a");
  EXPECT_EQ(DecodeText("\xEF\xBB\xBF"
                       "a",
                       "UTF-8", "a.cbl"),
            "a");
  EXPECT_EQ(DecodeText("\xFF\xFE"
                       "a\0"sv,
                       "UTF-16", "a.cbl"),
            "a");
  EXPECT_EQ(DecodeText("\xFF\xFE"
                       "a\0"sv,
                       "UTF-16LE", "a.cbl"),
            "a");
}

TEST(DecodeText, DecodesEastAsianAndCyrillicText) {
  EXPECT_EQ(DecodeText("\x93\xFA\x96\x7B", "SHIFT_JIS", "a.cbl"), "日本");
  EXPECT_EQ(DecodeText("\xB0\xA1", "EUC-KR", "a.cbl"), "가");
  EXPECT_EQ(DecodeText("\xB0\xD0", "ISO-8859-5", "a.cbl"), "Аа");
  EXPECT_EQ(DecodeText("\x80 5", "CP1252", "a.cbl"), "€ 5");
}

TEST(DecodeText, BackslashOfShiftJisIsNoYenSign) {
  for (const auto* encoding : {"SHIFT_JIS", "Shift-JIS", "sjis"}) {
    EXPECT_EQ(DecodeText("a\\b~", encoding, "a.cbl"), "a\\b~") << encoding;
    EXPECT_EQ(EncodeText("a\\b~", encoding), "a\\b~") << encoding;
  }
  EXPECT_EQ(IconvName("Shift_JIS"), "CP932");
  EXPECT_EQ(IconvName("EUC-KR"), "EUC-KR");
}

TEST(DecodeText, EbcdicRecordsEndWithLf) {
  for (const auto* encoding : {"IBM037", "IBM1047", "ibm1047"}) {
    EXPECT_EQ(DecodeText("\xC1\x15\xC2\x25\xC3\x0D\x15\xC4", encoding, "a.cbl"), "A\nB\nC\r\nD") << encoding;
  }
}

TEST(DecodeText, NelElsewhereIsACharacterOfTheLine) {
  EXPECT_EQ(DecodeText("a\x85"
                       "b",
                       "ISO-8859-1", "a.cbl"),
            "a\xC2\x85"
            "b");
  EXPECT_EQ(DecodeText("a\xC2\x85"
                       "b",
                       "", "a.cbl"),
            "a\xC2\x85"
            "b");
}

TEST(DecodeText, MalformedUtf8IsRefusedWithTheOffset) {
  EXPECT_EQ(ErrorText([] { DecodeText("ab\xC3(", "UTF-8", "src/a.cbl"); }),
            "src/a.cbl: the byte 0xC3 at offset 2 is no text in UTF-8. Choose another encoding.");
}

TEST(DecodeText, UndecodableBytesAreRefusedWithTheOffset) {
  EXPECT_EQ(ErrorText([] { DecodeText("abc\x81", "CP1252", "a.cbl"); }),
            "a.cbl: the byte 0x81 at offset 3 is no text in CP1252. Choose another encoding.");
}

TEST(DecodeText, CutCharacterAtTheEndIsRefusedWithItsOffset) {
  EXPECT_EQ(ErrorText([] { DecodeText("a\x93", "SHIFT_JIS", "a.cbl"); }),
            "a.cbl: the byte 0x93 at offset 1 is no text in SHIFT_JIS. Choose another encoding.");
}

TEST(DecodeText, OffsetIsRightBehindTheFirstBufferful) {
  const std::string bytes = std::string(200000, 'a') + "\x81" + "b";
  EXPECT_EQ(ErrorText([&] { DecodeText(bytes, "CP1252", "a.cbl"); }),
            "a.cbl: the byte 0x81 at offset 200000 is no text in CP1252. Choose another encoding.");
}

TEST(DecodeText, UnknownEncodingIsRefused) {
  EXPECT_EQ(ErrorText([] { DecodeText("a", "UTF-8//IGNORE", "a.cbl"); }),
            "The encoding \"UTF-8//IGNORE\" is not known. Name one such as UTF-8, ISO-8859-1, CP1252, SHIFT_JIS, "
            "EUC-KR, IBM037 or IBM1047.");
}

TEST(DecodeText, LongTextsComeWhole) {
  const std::string bytes(1000000, '\xE9');
  const std::string text = DecodeText(bytes, "ISO-8859-1", "a.cbl");
  ASSERT_EQ(text.size(), 2000000U);
  EXPECT_EQ(text.substr(1999998), "é");
}

TEST(EncodeText, IsTheInverseOfDecodeText) {
  EXPECT_EQ(EncodeText("日本", "SHIFT_JIS"), "\x93\xFA\x96\x7B");
  EXPECT_EQ(EncodeText("가", "EUC-KR"), "\xB0\xA1");
  EXPECT_EQ(EncodeText("Größe", "ISO-8859-1"),
            "Gr\xF6\xDF"
            "e");
  EXPECT_EQ(EncodeText("Größe", ""), "Größe");
  const std::string text = "MOVE A TO B.\nSTOP RUN.\n";
  EXPECT_EQ(DecodeText(EncodeText(text, "IBM1047"), "IBM1047", "a.cbl"), text);
}

TEST(EncodeText, ShiftStatesAreClosedAtTheEnd) {
  EXPECT_EQ(EncodeText("日", "ISO-2022-JP"),
            "\x1B$B"
            "F|"
            "\x1B(B");
}

TEST(EncodeText, MissingCharacterIsNamed) {
  EXPECT_EQ(ErrorText([] { EncodeText("5 €", "ISO-8859-1"); }),
            "The character U+20AC cannot be written in ISO-8859-1.");
  EXPECT_EQ(ErrorText([] { EncodeText("ab😀", "SHIFT_JIS"); }), "The character U+1F600 cannot be written in SHIFT_JIS.");
}

TEST(EncodeText, LookAlikesDoNotStandIn) {
  EXPECT_EQ(ErrorText([] { EncodeText("5 ¥", "SHIFT_JIS"); }), "The character U+00A5 cannot be written in SHIFT_JIS.");
  EXPECT_EQ(ErrorText([] { EncodeText("〜", "SHIFT_JIS"); }), "The character U+301C cannot be written in SHIFT_JIS.");
}

TEST(EncodeMarkup, MissingCharacterBecomesAReference) {
  EXPECT_EQ(EncodeMarkup("<a>é€¥😀</a>", "ISO-8859-1"), "<a>\xE9&#8364;\xA5&#128512;</a>");
  EXPECT_EQ(EncodeMarkup("日¥", "SHIFT_JIS"), "\x93\xFA&#165;");
  EXPECT_EQ(EncodeMarkup("é€", ""), "é€");
}

TEST(EncodeText, MalformedTextIsRefused) {
  EXPECT_EQ(ErrorText([] { EncodeText("ab\xFF", ""); }), "The text is not valid UTF-8 at byte offset 2.");
  EXPECT_EQ(ErrorText([] { EncodeText("ab\xFF", "EUC-KR"); }), "The text is not valid UTF-8 at byte offset 2.");
}

TEST(EncodeText, UnknownEncodingIsRefused) {
  EXPECT_EQ(ErrorText([] { EncodeText("a", "FOO"); }),
            "The encoding \"FOO\" is not known. Name one such as UTF-8, ISO-8859-1, CP1252, SHIFT_JIS, EUC-KR, IBM037 "
            "or IBM1047.");
}

struct Utf8Case {
  const char* description;
  std::string_view bytes;
  std::optional<std::size_t> malformedAt;
};

TEST(MalformedAt, FindsTheFirstByteThatIsNoUtf8) {
  const Utf8Case cases[] = {
      {"empty", "", std::nullopt},
      {"every length", "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", std::nullopt},
      {"last code point", "\xF4\x8F\xBF\xBF", std::nullopt},
      {"past the last code point", "\xF4\x90\x80\x80", 0},
      {"stray continuation", "a\x80", 1},
      {"overlong slash", "\xC0\xAF", 0},
      {"overlong three bytes", "\xE0\x80\xAF", 0},
      {"encoded surrogate", "ab\xED\xA0\x80", 2},
      {"cut sequence at the end", "abc\xE2\x82", 3},
      {"cut sequence before a letter", "\xE2\x82z", 0},
      {"byte that never occurs", "\xFF", 0},
  };
  for (const auto& each : cases) EXPECT_EQ(MalformedAt(each.bytes), each.malformedAt) << each.description;
}

TEST(LooksBinary, TextOfAnyAsciiCompatibleEncodingDoesNot) {
  EXPECT_FALSE(LooksBinary(""));
  EXPECT_FALSE(LooksBinary("       MOVE A TO B.\r\n\x1A"));
  EXPECT_FALSE(LooksBinary("\x93\xFA\x96\x7B"));
  EXPECT_FALSE(LooksBinary("\x0E\x0F\x0E\x0F\t\n\f\x1B"));
}

TEST(LooksBinary, NulTellsAProgramFile) {
  EXPECT_TRUE(LooksBinary("MZ\0 and a good deal of text behind it"sv));
}

TEST(LooksBinary, MoreThanOneControlCharacterInTenTells) {
  EXPECT_FALSE(LooksBinary("123456789\x01"));
  EXPECT_TRUE(LooksBinary("12345678\x01"));
}

}  // namespace
}  // namespace qmrules::platform
