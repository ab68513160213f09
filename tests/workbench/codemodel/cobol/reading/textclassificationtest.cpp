#include "workbench/codemodel/cobol/reading/textclassification.h"

#include <gtest/gtest.h>

#include <fstream>
#include <random>
#include <string>

#include "shell/utf16.h"

namespace qmrules::workbench::codemodel::cobol {
namespace {

// A letter for each class.
char LetterOf(TextClass kind) {
  constexpr std::string_view letters = "cmdHLvriELnp";
  static_assert(letters.size() == kTextClasses);
  switch (kind) {
    case TextClass::Literal:
      return 'q';
    case TextClass::Embedded:
      return 'e';
    default:
      return letters[static_cast<std::size_t>(kind)];
  }
}

// Below each row a row with the letters of its classes.
std::string Classed(std::string_view text, std::optional<SourceFormat> format = SourceFormat::Fixed) {
  const auto file = std::make_shared<const SourceFile>("PROG.cbl", std::string(text));
  LexerOptions options;
  options.format = format;
  const ClassedText classed = ClassifyText(file, options);
  std::string shown;
  for (std::uint32_t row = 1; row <= file->Rows(); ++row) {
    std::string letters;
    for (const ClassedRun& run : classed.Row(row)) {
      letters.resize(run.column - 1, ' ');
      letters.append(run.length, LetterOf(run.kind));
    }
    shown += letters + "\n";
  }
  return shown;
}

// The row with a mark in the identification area.
std::string Marked(std::string row) {
  row.resize(72, ' ');
  return row + "PBRATE\n";
}

std::string MarginAt73(std::string letters) {
  letters.resize(72, ' ');
  return letters + "mmmmmm\n";
}

TEST(TextClassification, ARowOfFixedFormHasItsMargins) {
  EXPECT_EQ(Classed(Marked("000100     MOVE A TO B.")), MarginAt73("mmmmmm     vvvv   rr"));
}

TEST(TextClassification, HeadingsAndLabelsStandOut) {
  EXPECT_EQ(Classed("       PROCEDURE DIVISION USING P.\n"
                    "       MAIN SECTION.\n"
                    "       1000-START.\n"
                    "       100.\n"
                    "           EXIT.\n"),
            "       HHHHHHHHH HHHHHHHH rrrrr\n"
            "       HHHH HHHHHHH\n"
            "       LLLLLLLLLL\n"
            "       LLL\n"
            "           vvvv\n");
}

TEST(TextClassification, WordsOfTheLanguageAreToldFromNames) {
  EXPECT_EQ(Classed("           IF A-FLAG = 'Y' AND COL > 12\n"
                    "             DISPLAY BEEP END-IF\n"),
            "           vv          qqq rrr       nn\n"
            "             vvvvvvv      vvvvvv\n");
}

TEST(TextClassification, DataEntries) {
  EXPECT_EQ(Classed("       01  WS-A   PIC S9(4)V99 COMP-3 VALUE ZERO.\n"),
            "       nn         rrr pppppppp rrrrrr rrrrr rrrr\n");
}

TEST(TextClassification, CommentsOfAllKinds) {
  EXPECT_EQ(Classed("      * WHOLE ROW\n"
                    "      / PAGE\n"
                    "           MOVE A TO B *> BEHIND\n"
                    "           MOVE A, B *> NOT, A, COMMA;\n"),
            "      ccccccccccc\n"
            "      cccccc\n"
            "           vvvv   rr   ccccccccc\n"
            "           vvvv      ccccccccccccccccc\n");
}

TEST(TextClassification, CommentEntriesAreComments) {
  EXPECT_EQ(Classed("       IDENTIFICATION DIVISION.\n"
                    "       PROGRAM-ID. A.\n"
                    "       AUTHOR. M OKAFOR MOVE.\n"
                    "           AND OTHERS.\n"),
            "       HHHHHHHHHHHHHH HHHHHHHH\n"
            "       rrrrrrrrrr\n"
            "       rrrrrr  cccccccccccccc\n"
            "           ccccccccccc\n");
}

TEST(TextClassification, DebuggingLinesAreCommentsUntilTheyAreAskedFor) {
  EXPECT_EQ(Classed("      D    DISPLAY A\n"), "      m    ccccccccc\n");
  EXPECT_EQ(Classed("       SOURCE-COMPUTER. X WITH DEBUGGING MODE.\n"
                    "      D    DISPLAY A\n"),
            "       rrrrrrrrrrrrrrr    rrrr rrrrrrrrr rrrr\n"
            "      m    vvvvvvv\n");
}

TEST(TextClassification, ALiteralGoesOnOverRowsWithoutItsMargins) {
  EXPECT_EQ(Classed(Marked("           MOVE 'ABC") + "000200-    'DEF' TO B.\n"),
            MarginAt73("           vvvv qqqq") + "mmmmmmm    qqqqq rr\n");
}

TEST(TextClassification, AWordGoesOnOverRows) {
  EXPECT_EQ(Classed("           MO\n"
                    "      -    VE A TO B.\n"),
            "           vv\n"
            "      m    vv   rr\n");
}

TEST(TextClassification, EmbeddedBlocksAreOfOneKindButForHostVariables) {
  EXPECT_EQ(Classed("           EXEC SQL SELECT NAME, 'X' INTO :WS.NAME FROM T\n"
                    "             WHERE ID = 12 -- A NOTE\n"
                    "           END-EXEC MOVE A TO B.\n"),
            "           eeee eee eeeeee eeee  qqq eeee          eeee e\n"
            "             eeeee ee   nn ccccccccc\n"
            "           eeeeeeee vvvv   rr\n");
}

TEST(TextClassification, ACopyStatementShowsWhatItBringsIn) {
  EXPECT_EQ(Classed("       COPY PBPOLMS OF LIB REPLACING ==:TAG:== BY ==MOVE==.\n"
                    "       COPY 'a.cpy'. MOVE\n"
                    "           REPLACE ==A. B== BY ==C==. MOVE\n"),
            "       iiii iiiiiii ii iii iiiiiiiii           ii   vvvv\n"
            "       iiii iiiiiii  vvvv\n"
            "           iiiiiii          ii        vvvv\n");
}

TEST(TextClassification, LinesForTheCompiler) {
  EXPECT_EQ(Classed("       CBL ARITH(EXTEND)\n"
                    "      $SET SOURCEFORMAT\"FIXED\"\n"
                    "      >>IF A\n"
                    "           EJECT\n"),
            "       ddddddddddddddddd\n"
            "      dddddddddddddddddddddddd\n"
            "      dddddd\n"
            "           ccccc\n");
}

TEST(TextClassification, ASequenceNumberAloneIsMargin) {
  EXPECT_EQ(Classed("000100\n\n000200 \n"), "mmmmmm\n\nmmmmmm\n");
}

TEST(TextClassification, FreeFormHasNoMargins) {
  EXPECT_EQ(Classed("move a to b. *> behind\n"
                    "*> whole\n"
                    "main-par.\n",
                    SourceFormat::Free),
            "vvvv   rr    ccccccccc\n"
            "cccccccc\n"
            "LLLLLLLL\n");
}

TEST(TextClassification, ADirectiveChangesTheFormForTheRowsBehind) {
  EXPECT_EQ(Classed("      >>SOURCE FORMAT IS FREE\n"
                    "move a to b.\n",
                    std::nullopt),
            "      ddddddddddddddddddddddd\n"
            "vvvv   rr\n");
}

TEST(TextClassification, ColumnsCountCharacters) {
  // A letter of two bytes, one of four that is two characters.
  EXPECT_EQ(Classed("      * \u00c4\n           MOVE '\U0001F600' TO B\n"), "      ccc\n           vvvv qqqq rr\n");
}

TEST(TextClassification, RunsOfAnyTextStandBehindOneAnotherWithinTheirRow) {
  std::mt19937 random(7);
  constexpr std::string_view pieces[] = {
      "      ", "000100", "EXEC SQL ", "END-EXEC", "'",        "\"",   "==",       ". ",       "COPY A", "\n",
      "\r\n",   "-",      "*",         "D",        "PIC ",     "9(4)", ">>",       "$SET ",    "CBL ",   "\t",
      "\u00c4", "*>",     "\xF0\x9F",  "MOVE ",    "AUTHOR. ", "\f",   "SECTION.", "REPLACE ", ":",      "--"};
  for (int round = 0; round < 2000; ++round) {
    std::string text;
    for (int count = 0; count < 40; ++count) text += pieces[random() % std::size(pieces)];
    const auto file = std::make_shared<const SourceFile>("PROG.cbl", text);
    const ClassedText classed = ClassifyText(file, {});
    for (std::uint32_t row = 1; row <= file->Rows(); ++row) {
      std::size_t behind = 0;
      for (const ClassedRun& run : classed.Row(row)) {
        ASSERT_GT(run.column, behind) << text;
        ASSERT_GT(run.length, 0U) << text;
        behind = run.column + run.length - 1;
      }
      ASSERT_LE(behind, shell::CharacterCount(file->Row(row))) << text;
    }
    ASSERT_TRUE(classed.Row(file->Rows() + 1).empty());
  }
}

}  // namespace
}  // namespace qmrules::workbench::codemodel::cobol
