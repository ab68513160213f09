// Whatever the text is, its tokens lie in it in their order.
#include <gtest/gtest.h>

#include <iterator>
#include <random>
#include <string>

#include "workbench/codemodel/cobol/reading/lexedtext.h"

namespace qmrules::workbench::codemodel::cobol {
namespace {

void ExpectSound(const LexedFile& lexed, const std::string& text) {
  ASSERT_FALSE(lexed.tokens.empty());
  std::uint32_t end = 0;
  for (const Token& token : lexed.tokens) {
    ASSERT_EQ(token.kind == TokenKind::End, &token == &lexed.tokens.back()) << text;
    ASSERT_GE(token.offset, end) << text;
    end = token.offset + token.length;
    ASSERT_LE(end, lexed.file->Text().size()) << text;
    if (token.kind == TokenKind::End) break;
    ASSERT_GT(token.length, 0U) << text;
    ASSERT_EQ(token.row, lexed.file->RowOf(token.offset)) << text;
    ASSERT_FALSE(lexed.Text(token).empty()) << text;
    ASSERT_EQ(token.inclusion, 0U) << text;
  }
  std::uint32_t row = 0;
  for (const std::uint32_t comment : *lexed.commentRows) {
    ASSERT_GT(comment, row) << text;
    row = comment;
  }
  ASSERT_LE(row, lexed.file->Rows());
  std::uint32_t token = 0;
  for (const Directive& directive : lexed.directives) {
    ASSERT_GE(directive.token, token) << text;
    token = directive.token;
    ASSERT_LT(token, lexed.tokens.size()) << text;
    ASSERT_FALSE(lexed.Text(directive).empty()) << text;
  }
}

void ExpectSoundInAnyForm(const std::string& text) {
  for (const auto format : {SourceFormat::Fixed, SourceFormat::WideFixed, SourceFormat::Free}) {
    for (const bool on : {false, true}) {
      LexerOptions options;
      options.format = format;
      options.debuggingLines = options.decimalComma = options.wideCharactersTakeTwoColumns = on;
      ASSERT_NO_FATAL_FAILURE(ExpectSound(LexText(text, options), text));
    }
  }
  ASSERT_NO_FATAL_FAILURE(ExpectSound(LexText(text), text));
}

TEST(AnyBytes, ShortTextsComeToAnEnd) {
  for (const std::string text :
       {"",  "\n", "\r",  "\n\n", "12345",   "'",        "X'",   "-",        ">>", ">",           "$",
        ".", "++", "PIC", "EXEC", "      -", "      -'", "\x1a", "\xff\xfe", "*",  "\xef\xbb\xbf"}) {
    ExpectSoundInAnyForm(text);
  }
}

// Texts put together at random from what means something, so that every state meets every sign.
TEST(AnyBytes, TextsOfMeaningfulPiecesAreReadSoundly) {
  const std::string_view pieces[] = {"A",
                                     "1",
                                     "'",
                                     "\"",
                                     ".",
                                     ",",
                                     ";",
                                     "*>",
                                     "\n",
                                     "\n",
                                     "\n",
                                     "\r\n",
                                     "\n      -",
                                     "\n      *",
                                     "\n       ",
                                     "\n      D",
                                     " ",
                                     "\t",
                                     "''",
                                     "-",
                                     "-\n",
                                     "000100 ",
                                     "PROGRAM-ID",
                                     "ID DIVISION.",
                                     "AUTHOR.",
                                     "END PROGRAM",
                                     "       ",
                                     "\xff",
                                     "\u00e9",
                                     ">>",
                                     "$",
                                     "$IF",
                                     "PIC ",
                                     "X(5)",
                                     "EXEC SQL ",
                                     "END-EXEC",
                                     "COMMA",
                                     "DECIMAL-POINT IS ",
                                     ":",
                                     "==",
                                     "(",
                                     ")",
                                     "--",
                                     "TITLE ",
                                     "EJECT",
                                     "CBL ",
                                     "\n>>SOURCE FREE\n",
                                     "\n>>SOURCE FIXED\n",
                                     "++INCLUDE ",
                                     "\f",
                                     std::string_view("\0", 1),
                                     "E-3",
                                     "="};
  std::mt19937 random(20260131);
  std::uniform_int_distribution<std::size_t> choose(0, std::size(pieces) - 1);
  for (int round = 0; round < 1500; ++round) {
    std::string text;
    for (int piece = 0; piece < 30; ++piece) text += pieces[choose(random)];
    ASSERT_NO_FATAL_FAILURE(ExpectSoundInAnyForm(text));
  }
}

TEST(AnyBytes, TextsOfAnyBytesAreReadSoundly) {
  std::mt19937 random(20260201);
  std::uniform_int_distribution<int> byte(0, 255);
  for (int round = 0; round < 300; ++round) {
    std::string text(300, ' ');
    for (char& character : text) character = static_cast<char>(byte(random));
    ASSERT_NO_FATAL_FAILURE(ExpectSoundInAnyForm(text));
  }
}

TEST(AnyBytes, LongRunsTakeLinearTime) {
  constexpr std::size_t size = 2'000'000;
  std::string joined;
  for (std::size_t line = 0; line < size / 8; ++line) joined += "'a'-\n";
  for (const std::string& text :
       {std::string(size, 'A'), std::string(size, '1'), std::string(size, '\''), std::string(size, '('),
        std::string(size, '-'), std::string(size, '\n'), std::string(size, '\r'), "PIC " + std::string(size, '9'),
        std::string(size, '\0'), "A" + std::string(size, '-'), "EXEC SQL " + std::string(size, '.'), joined}) {
    EXPECT_FALSE(LexFree(text).tokens.empty());
    EXPECT_FALSE(LexFixed("       " + text).tokens.empty());
  }
}

}  // namespace
}  // namespace qmrules::workbench::codemodel::cobol
