// Lines and their areas, as the tokens show them.
#include <gtest/gtest.h>

#include <string>

#include "workbench/codemodel/cobol/reading/lexedtext.h"

namespace qmrules::workbench::codemodel::cobol {
namespace {

std::string Wide(std::string_view text) {
  LexerOptions options;
  options.format = SourceFormat::WideFixed;
  return Shown(LexText(text, options));
}

TEST(RowAreas, FixedFormPassesOverSequenceNumbersAndColumnsBehind72) {
  EXPECT_EQ(Fixed("000100 MOVE A TO B.                                                     PB000010\r\n"
                  "PB0020     STOP RUN.                                                    PB000020\n"),
            "MOVE A TO B .|STOP RUN .");
}

TEST(RowAreas, WideFixedFormGoesOnToTheEndOfTheLine) {
  const std::string line = "000100 A" + std::string(80, ' ') + "B\n";
  EXPECT_EQ(Wide(line), "A B");
  EXPECT_EQ(Fixed(line), "A");
}

TEST(RowAreas, FreeFormTakesTheWholeLine) {
  EXPECT_EQ(Free("A\n" + std::string(100, ' ') + "B"), "A|B");
}

TEST(RowAreas, LinesEndWithAnyLineEndOrNone) {
  EXPECT_EQ(Fixed("       A\r       B\n       C\r\n       D"), "A|B|C|D");
  EXPECT_EQ(Fixed("       A\r\r\n\n       B"), "A|B");
}

TEST(RowAreas, LinesThatEndBeforeTheTextAreEmpty) {
  EXPECT_EQ(Fixed("000\n000100\n000100 \n000100*\n       A"), "A");
}

TEST(RowAreas, ColumnsCountCharacters) {
  const std::string code = "       \u00c9TAT" + std::string(59, ' ') + "XYZ";
  EXPECT_EQ(Fixed(code), "\u00c9TAT XY");
  EXPECT_EQ(Fixed("\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9 A\n\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9* B"), "A");
}

TEST(RowAreas, WideCharactersTakeTwoColumnsWhereTheEncodingHasTwoBytes) {
  // Ten wide characters and 46 blanks, then XYZ in columns 74 to 76 or 64 to 66.
  std::string code = "       ";
  for (int count = 0; count < 10; ++count) code += "\u65e5";
  code += std::string(44, ' ') + "XYZ";
  LexerOptions options;
  options.format = SourceFormat::Fixed;
  EXPECT_EQ(Flagged(LexText(code, options), kFirstOnRow), Flagged(LexText(code, options), kAreaA));
  EXPECT_EQ(LexText(code, options).tokens.size(), 3U);
  options.wideCharactersTakeTwoColumns = true;
  const LexedFile lexed = LexText(code, options);
  ASSERT_EQ(lexed.tokens.size(), 3U);
  EXPECT_EQ(lexed.Text(lexed.tokens[1]), "X");
  // Half-width katakana are of one byte.
  std::string narrow = "       ";
  for (int count = 0; count < 10; ++count) narrow += "\uff71";
  const LexedFile katakana = LexText(narrow + std::string(54, ' ') + "XYZ", options);
  ASSERT_EQ(katakana.tokens.size(), 3U);
  EXPECT_EQ(katakana.Text(katakana.tokens[1]), "X");
}

TEST(RowAreas, TabsGoToTheNextMultipleOfEightColumns) {
  EXPECT_EQ(Fixed("\tA B\n000100\tC\n"), "A B|C");
  const LexedFile lexed = LexFixed("\tA\n\t  B\n\t   C\n\t\tD\n");
  EXPECT_EQ(Flagged(lexed, kAreaA), "A B");
  EXPECT_EQ(Flagged(lexed, kFirstOnRow), "A B C D");
  // Columns 73 and on.
  EXPECT_EQ(Fixed("\tA\t\t\t\t\t\t\t\tX"), "A");
  EXPECT_EQ(Fixed("\tA\t\t\t\t\t\t\tX"), "A X");
  // The indicator area behind digits and blanks.
  EXPECT_EQ(Fixed("000100*\tC\n"), "");
}

TEST(RowAreas, AFormFeedBeforeALineTakesNoColumn) {
  EXPECT_EQ(Fixed("\f000100 A\n\f\n      * c\f\n       B\f"), "A|B");
}

TEST(RowAreas, AByteOrderMarkTakesNoColumn) {
  EXPECT_EQ(Fixed("\xEF\xBB\xBF       A\n       B"), "A|B");
}

TEST(RowAreas, AnEndOfFileMarkStandsForNothing) {
  EXPECT_EQ(Fixed("       A\n\x1a"), "A");
  EXPECT_EQ(Free("A\n\x1a\x1a\n"), "A");
}

TEST(RowAreas, CommentLinesArePassedOver) {
  const LexedFile lexed = LexFixed(
      "000100* A comment\n"
      "      / A page\n"
      "       A *> the rest\n"
      "       *> all of it\n"
      "           *> further in\n"
      "      *> too\n"
      "       B\n");
  EXPECT_EQ(Shown(lexed), "A|B");
  EXPECT_EQ(*lexed.commentRows, (std::vector<std::uint32_t>{1, 2, 4, 5, 6}));
}

TEST(RowAreas, CommentLinesOfFreeFormBeginWithAStar) {
  const LexedFile lexed = LexFree(
      "* no code\n"
      "*> a comment\n"
      "A *> the rest\n"
      "      * as in fixed form\n"
      "000100* the same\n"
      "   *********\n"
      "/ page\n"
      "  *> last\n"
      "B");
  EXPECT_EQ(Shown(lexed), "A|B");
  EXPECT_EQ(*lexed.commentRows, (std::vector<std::uint32_t>{1, 2, 4, 5, 6, 7, 8}));
}

TEST(RowAreas, AnOperatorCanBeginALineOfFreeForm) {
  EXPECT_EQ(Free("COMPUTE A = B\n   * C\n   / D\n   ** E\n   - F\n   + G"), "COMPUTE A = B|* C|/ D|** E|- F|+ G");
}

TEST(RowAreas, DebuggingLinesArePassedOver) {
  const std::string text = "       A\n      D B\n      d C\n       >>D D\n       E\n";
  EXPECT_EQ(Fixed(text), "A|E");
  LexerOptions options;
  options.format = SourceFormat::Fixed;
  options.debuggingLines = true;
  EXPECT_EQ(Shown(LexText(text, options)), "A|B|C|D|E");
  EXPECT_EQ(Free("A\n>>D B\nC"), "A|C");
}

TEST(RowAreas, DebuggingLinesAreTextOnceAProgramAsksForThem) {
  const LexedFile lexed = LexFixed(
      "      D A\n"
      "       SOURCE-COMPUTER. X WITH DEBUGGING MODE.\n"
      "      D B\n"
      "       END PROGRAM X.\n"
      "      D C\n");
  EXPECT_EQ(Shown(lexed), "SOURCE-COMPUTER . X WITH DEBUGGING MODE .|B|END PROGRAM X .");
  EXPECT_TRUE(lexed.debuggingMode);
}

TEST(RowAreas, AnUnknownIndicatorIsWarnedOfAndItsLineRead) {
  const LexedFile lexed = LexFixed("      X A\n      \x01 B\n      \u00e9 C\n");
  EXPECT_EQ(Shown(lexed), "A|B|C");
  EXPECT_EQ(Diagnosed(lexed),
            "1:7 warning: Column 7 holds 'X', which is no indicator. The line is read as text.\n"
            "2:7 warning: Column 7 holds a control character, which is no indicator. The line is read as text.\n"
            "3:7 warning: Column 7 holds '\u00e9', which is no indicator. The line is read as text.\n");
}

TEST(RowAreas, WarningsAreBounded) {
  std::string text;
  for (int line = 0; line < 2000; ++line) text += "      X A\n";
  EXPECT_EQ(LexFixed(text).diagnostics.size(), 1000U);
}

TEST(RowAreas, LinesForTheListingArePassedOver) {
  const LexedFile lexed = LexFixed(
      "       A\n"
      "       EJECT\n"
      "           SKIP1.\n"
      "       SKIP2\n"
      "       SKIP3 .\n"
      "       TITLE 'Policies'.\n"
      "      *CBL NOLIST\n"
      "      *CONTROL LIST\n"
      "       B\n");
  EXPECT_EQ(Shown(lexed), "A|B");
  EXPECT_TRUE(lexed.commentRows->empty());
}

TEST(RowAreas, WordsOfTheListingAreTextWhereMoreStandsOnTheLine) {
  EXPECT_EQ(Fixed("       TITLE OF A\n       MOVE EJECT\n       SKIP1 B"), "TITLE OF A|MOVE EJECT|SKIP1 B");
}

TEST(RowAreas, CompilerOptionsBeforeAProgramArePassedOver) {
  const std::string options = "CBL LIB,APOST\n000100 PROCESS NODYNAM\n      cbl xref\n";
  EXPECT_EQ(Fixed(options + "       A\n       END PROGRAM A.\n       CBL MAP\n       B\n       PROCESS\n"),
            "A|END PROGRAM A .|B|PROCESS");
  EXPECT_EQ(Diagnosed(LexFixed(options)), "");
  EXPECT_EQ(Free("PROCESS LIST\nPROCESSOR"), "PROCESSOR");
}

TEST(RowAreas, DirectivesAreKeptBesideTheTokens) {
  const LexedFile lexed = LexFixed(
      ">>DEFINE X AS 1\n"
      "       A B\n"
      "       >>IF X = 1 *> a comment\n"
      "       C\n"
      "      $ELSE\n"
      "      #D\n"
      "       $IF Y\n"
      "      >>END-IF                                                          MARK\n"
      "++INCLUDE ABC\n"
      "       ++INCLUDE DEF\n"
      "-INC GHI\n"
      "       -INC JKL\n");
  EXPECT_EQ(Shown(lexed), "A B|C");
  std::string shown;
  for (const Directive& directive : lexed.directives) {
    shown += std::to_string(directive.row) + ":" + std::to_string(directive.token) + " " +
             std::string(lexed.Text(directive)) + "\n";
  }
  EXPECT_EQ(shown,
            "1:0 >>DEFINE X AS 1\n"
            "3:2 >>IF X = 1\n"
            "5:3 $ELSE\n"
            "6:3 #D\n"
            "7:3 $IF Y\n"
            "8:3 >>END-IF\n"
            "9:3 ++INCLUDE ABC\n"
            "10:3 ++INCLUDE DEF\n"
            "11:3 -INC GHI\n"
            "12:3 -INC JKL\n");
}

TEST(RowAreas, DirectivesChangeTheFormatInTheMiddleOfAFile) {
  LexerOptions options;
  options.format = SourceFormat::Fixed;
  const LexedFile lexed = LexText(
      "000100 A                                                                MARK\n"
      "       >>SOURCE FORMAT IS FREE\n"
      "B                                                                          C\n"
      "$SET SOURCEFORMAT\"FIXED\"\n"
      "000100 D                                                                MARK\n"
      "      >>SOURCE FORMAT VARIABLE\n"
      "000100 E                                                                TEXT\n",
      options);
  EXPECT_EQ(Shown(lexed), "A|B C|D|E TEXT");
  EXPECT_EQ(lexed.format, SourceFormat::Fixed);
  EXPECT_TRUE(lexed.directives.empty());
}

}  // namespace
}  // namespace qmrules::workbench::codemodel::cobol
