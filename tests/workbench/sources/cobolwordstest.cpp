#include "workbench/sources/cobolwords.h"

#include <gtest/gtest.h>

#include <iterator>
#include <random>
#include <string>

namespace qmrules::workbench {
namespace {

// The words as text: words bare, literals in brackets, periods as "."; a new line for each that is the first on its
// line.
std::string Read(std::string_view text, SourceFormat format) {
  CobolWords words(text, format);
  std::string shown;
  while (const auto word = words.Next()) {
    if (!shown.empty()) shown += word->firstOnLine ? "|" : " ";
    if (word->kind == CobolWord::Kind::Period) shown += ".";
    if (word->kind == CobolWord::Kind::Literal) shown += "[" + word->text + "]";
    if (word->kind == CobolWord::Kind::Word) shown += word->text;
  }
  return shown;
}

std::string Fixed(std::string_view text) {
  return Read(text, SourceFormat::Fixed);
}
std::string Free(std::string_view text) {
  return Read(text, SourceFormat::Free);
}

TEST(CobolWords, FixedFormPassesOverSequenceNumbersAndColumnsBehind72) {
  EXPECT_EQ(Fixed("000100 MOVE A TO B.                                                     PB000010\r\n"
                  "PB0020     STOP RUN.                                                    PB000020\n"),
            "MOVE A TO B .|STOP RUN .");
}

TEST(CobolWords, ColumnsCountCharacters) {
  const std::string code = "       \u00c9TAT" + std::string(59, ' ') + "XYZ";
  EXPECT_EQ(Fixed(code), "\u00c9TAT XY");
}

TEST(CobolWords, CommentsDebuggingLinesAndDirectivesArePassedOver) {
  EXPECT_EQ(Fixed("000100* A comment\n"
                  "      / A page\n"
                  "      D DISPLAY 'X'\n"
                  "      $SET SOURCEFORMAT\"FIXED\"\n"
                  "      >>SOURCE FORMAT IS FIXED\n"
                  "       A *> the rest\n"
                  "       *> all of it\n"
                  "       B\n"),
            "A|B");
  EXPECT_EQ(Free("* no code\n*> a comment\nA *> the rest\n      * as in fixed form\n>>D DISPLAY X\nB"), "A|B");
}

TEST(CobolWords, ACommentSignInALiteralIsText) {
  EXPECT_EQ(Free("A '*> no' B"), "A [*> no] B");
}

TEST(CobolWords, LiteralsHaveEitherQuoteAndDoubleIt) {
  EXPECT_EQ(Free(R"(A 'it''s' "say ""no""" '"' "'" '')"), R"(A [it's] [say "no"] ["] ['] [])");
}

TEST(CobolWords, AnOpenLiteralEndsWithItsLine) {
  EXPECT_EQ(Free("A 'open\nB 'c'"), "A [open]|B [c]");
  EXPECT_EQ(Fixed("       REMARKS. DON'T.\n       B"), "REMARKS . DON [T.]|B");
}

TEST(CobolWords, AContinuationLineGoesOnWithWordOrLiteral) {
  EXPECT_EQ(Fixed("       PROGRAM-\n"
                  "      * between\n"
                  "      -    ID. X\n"),
            "PROGRAM-ID . X");
  const std::string opened = "       A 'one" + std::string(72 - 13, ' ');
  EXPECT_EQ(Fixed(opened + "\n      -    'two' B\n"), "A [one" + std::string(72 - 13, ' ') + "two] B");
}

TEST(CobolWords, ALineThatIsNoContinuationIsReadOnItsOwn) {
  EXPECT_EQ(Fixed("       A\n       B\n\n       'x\n       C"), "A|B|[x]|C");
}

TEST(CobolWords, TabsLeadToTheCode) {
  EXPECT_EQ(Fixed("\tA B\n000100\tC\n"), "A B|C");
}

TEST(CobolWords, OtherCharactersPartWords) {
  EXPECT_EQ(Free("A(1:2)=B+C,D;E.F"), "A 1 2 B C D E . F");
}

TEST(CobolWords, RowsCountFromOne) {
  const std::string text = "\n       A\n      * c\n       B\n      -C\n       D";
  CobolWords words(text, SourceFormat::Fixed);
  EXPECT_EQ(words.Next()->row, 2U);
  const auto continued = words.Next();
  EXPECT_EQ(continued->text, "BC");
  EXPECT_EQ(continued->row, 4U);
  EXPECT_EQ(words.Next()->row, 6U);
  EXPECT_FALSE(words.Next());
}

TEST(CobolWords, AnyBytesComeToAnEnd) {
  EXPECT_EQ(Free(""), "");
  EXPECT_EQ(Fixed("\n\n"), "");
  EXPECT_EQ(Fixed("12345"), "");
  EXPECT_EQ(Free("'"), "[]");
  EXPECT_EQ(Fixed("       A \xff\xfe B\x1a"), "A \xff\xfe B");
}

// Texts put together at random from what means something, so that every state meets every sign.
TEST(CobolWords, WordsOfAnyTextComeWholeAndInTheOrderOfTheirRows) {
  const std::string_view pieces[] = {"A",          "'",       "\"",   ".",      "*>", "\n", "\r\n",
                                     "      -",    "      *", " ",    "\t",     "''", "-",  "000100 ",
                                     "PROGRAM-ID", "       ", "\xff", "\u00e9", ">>", "$"};
  std::mt19937 random(20260131);
  std::uniform_int_distribution<std::size_t> choose(0, std::size(pieces) - 1);
  for (int round = 0; round < 3000; ++round) {
    std::string text;
    for (int piece = 0; piece < 40; ++piece) text += pieces[choose(random)];
    for (const auto format : {SourceFormat::Fixed, SourceFormat::Free}) {
      CobolWords words(text, format);
      std::size_t row = 1;
      const auto rows = platform::SplitLines(text).size();
      while (const auto word = words.Next()) {
        ASSERT_GE(word->row, row) << text;
        ASSERT_LE(word->row, rows) << text;
        ASSERT_EQ(word->kind == CobolWord::Kind::Word, !word->text.empty() && word->kind != CobolWord::Kind::Literal)
            << text;
        row = word->row;
      }
    }
  }
}

TEST(DetectFormat, ATextWithIndicatorsOnlyIsFixed) {
  EXPECT_EQ(
      DetectFormat("000100 IDENTIFICATION DIVISION.\n      * c\n      D X\n      /\n      - 'x'\n\tA\n  CBL LIB\n"),
      SourceFormat::Fixed);
  EXPECT_EQ(DetectFormat(""), SourceFormat::Fixed);
}

TEST(DetectFormat, CodeInColumnSevenIsFree) {
  EXPECT_EQ(DetectFormat("IDENTIFICATION DIVISION.\nPROGRAM-ID. X.\n        MOVE A TO B.\n"), SourceFormat::Free);
  EXPECT_EQ(DetectFormat("    DISPLAY 'X'\n"), SourceFormat::Free);
}

TEST(DetectFormat, OneStrayLineInFiftyLeavesAFixedText) {
  std::string text;
  for (int line = 0; line < 49; ++line) text += "       MOVE A TO B.\n";
  EXPECT_EQ(DetectFormat(text + "STRAYLINE\n"), SourceFormat::Fixed);
  EXPECT_EQ(DetectFormat(text + "STRAYLINE\nSTRAYLINE\n"), SourceFormat::Free);
}

TEST(DetectFormat, ADirectiveDecides) {
  EXPECT_EQ(DetectFormat("       >>source format is free\n       A.\n"), SourceFormat::Free);
  EXPECT_EQ(DetectFormat("000100$SET SOURCEFORMAT\"FREE\"\n       A.\n"), SourceFormat::Free);
  EXPECT_EQ(DetectFormat("      $SET SOURCEFORMAT\"FIXED\"\nSTRAYLINE\n"), SourceFormat::Fixed);
  EXPECT_EQ(DetectFormat("      $SET ANS85\n       A.\n"), SourceFormat::Fixed);
}

}  // namespace
}  // namespace qmrules::workbench
