#include "workbench/sources/cobolprograms.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "platform/linereader.h"

namespace qmrules::workbench {
namespace {

// "NAME@row(nested nested)" for each program, "?row" for each heading without a name.
std::string Found(std::string_view text) {
  const auto found = FindPrograms(text);
  std::string shown;
  for (const auto& program : found.programs) {
    shown += (shown.empty() ? "" : " ") + program.programId + "@" + std::to_string(program.row);
    for (std::size_t at = 0; at < program.nested.size(); ++at) shown += (at == 0 ? "(" : " ") + program.nested[at];
    if (!program.nested.empty()) shown += ")";
  }
  for (const auto row : found.nameless) shown += (shown.empty() ? "?" : " ?") + std::to_string(row);
  return shown;
}

TEST(CobolPrograms, AFixedProgramIsFound) {
  EXPECT_EQ(Found("000100 IDENTIFICATION DIVISION.\n"
                  "000110 PROGRAM-ID. PBRATE01.\n"
                  "000120 PROCEDURE DIVISION.\n"
                  "000130     STOP RUN.\n"),
            "PBRATE01@2");
}

TEST(CobolPrograms, AFreeProgramIsFound) {
  EXPECT_EQ(Found("identification division.\nprogram-id. pbrate01.\nprocedure division.\n    stop run.\n"),
            "PBRATE01@2");
}

TEST(CobolPrograms, TheDivisionAndTheParagraphMayShareALine) {
  EXPECT_EQ(Found("       ID DIVISION. PROGRAM-ID. A1.\n"), "A1@1");
}

TEST(CobolPrograms, TheNameMayStandOnTheNextLine) {
  EXPECT_EQ(Found("       PROGRAM-ID.\n      * the name\n\n           PBRATE01.\n"), "PBRATE01@4");
  EXPECT_EQ(Found("       PROGRAM-ID\n           .\n           PBRATE01.\n"), "PBRATE01@3");
}

TEST(CobolPrograms, AQuotedNameCounts) {
  EXPECT_EQ(Found("       PROGRAM-ID. 'pbrate01'.\n"), "PBRATE01@1");
  EXPECT_EQ(Found("       PROGRAM-ID. \"Pb Rate\" IS INITIAL PROGRAM.\n"), "PB RATE@1");
}

TEST(CobolPrograms, AttributesBehindTheNameAreNoPartOfIt) {
  EXPECT_EQ(Found("       PROGRAM-ID. A1 IS RECURSIVE.\n"), "A1@1");
  EXPECT_EQ(Found("       PROGRAM-ID. A1\n       ENVIRONMENT DIVISION.\n"), "A1@1");
}

TEST(CobolPrograms, CommentsAndLiteralsDefineNothing) {
  EXPECT_EQ(Found("      * PROGRAM-ID. OLD.\n"
                  "      / PROGRAM-ID. PAGE.\n"
                  "      *> PROGRAM-ID. NOTE.\n"
                  "       PROGRAM-ID. A1. *> PROGRAM-ID. B1.\n"
                  "       AUTHOR. KEEPER OF PROGRAM-ID. B2.\n"
                  "           DISPLAY 'PROGRAM-ID. B3.'.\n"
                  "           DISPLAY \"PROGRAM-ID. B4.\".\n"),
            "A1@4");
}

TEST(CobolPrograms, AWordThatOnlyContainsItIsNotIt) {
  EXPECT_EQ(Found("       01 WS-PROGRAM-ID.\n          05 X PIC X.\n       PROGRAM-ID-2. A.\n"), "");
}

TEST(CobolPrograms, ACopybookHasNone) {
  EXPECT_EQ(Found("       01 POLICY-RECORD.\n          05 POLICY-NO PIC X(10).\n"), "");
  EXPECT_EQ(Found(""), "");
}

TEST(CobolPrograms, NestedProgramsStandUnderTheirOuterOne) {
  EXPECT_EQ(Found("       PROGRAM-ID. OUTER1.\n"
                  "       PROGRAM-ID. IN1.\n"
                  "       PROGRAM-ID. IN2.\n"
                  "       END PROGRAM IN2.\n"
                  "       END PROGRAM IN1.\n"
                  "       PROGRAM-ID. IN3.\n"
                  "       END PROGRAM IN3.\n"
                  "       END PROGRAM OUTER1.\n"),
            "OUTER1@1(IN1 IN2 IN3)");
}

TEST(CobolPrograms, ProgramsOneAfterTheOtherAllCount) {
  EXPECT_EQ(Found("       PROGRAM-ID. A1.\n"
                  "       END PROGRAM A1.\n"
                  "       PROGRAM-ID. 'b1'.\n"
                  "       PROGRAM-ID. B2.\n"
                  "       END PROGRAM B2.\n"
                  "       END PROGRAM \"b1\".\n"
                  "       PROGRAM-ID. C1.\n"),
            "A1@1 B1@3(B2) C1@7");
}

TEST(CobolPrograms, AnOuterEndEndsWhatIsOpenWithin) {
  EXPECT_EQ(Found("       PROGRAM-ID. A1.\n"
                  "       PROGRAM-ID. A2.\n"
                  "       END PROGRAM A1.\n"
                  "       PROGRAM-ID. B1.\n"),
            "A1@1(A2) B1@4");
}

TEST(CobolPrograms, AnEndWithoutAProgramIsPassedOver) {
  EXPECT_EQ(Found("       END PROGRAM X.\n       PROGRAM-ID. A1.\n       END PROGRAM.\n       PROGRAM-ID. B1.\n"),
            "A1@2 B1@4");
}

TEST(CobolPrograms, AHeadingWithoutANameIsTold) {
  EXPECT_EQ(Found("       PROGRAM-ID.\n"), "?1");
  EXPECT_EQ(Found("       PROGRAM-ID. .\n"), "?1");
  EXPECT_EQ(Found("       PROGRAM-ID. '  '.\n"), "?1");
  EXPECT_EQ(Found("       ID DIVISION.\n       PROGRAM-ID.\n       ENVIRONMENT DIVISION.\n"), "?2");
}

// Texts put together at random from what means something, so that every state meets every sign.
TEST(CobolPrograms, AnyTextComesToAnEndWithRowsInTheirOrder) {
  const std::string_view pieces[] = {"A",       "'",          "\"",      ".",    "*>", "\n", "\r\n",
                                     "      -", "      *",    " ",       "\t",   "''", "-",  "END PROGRAM",
                                     "000100 ", "PROGRAM-ID", "       ", "\xff", ">>", "$",  "\0"};
  std::mt19937 random(20260131);
  std::uniform_int_distribution<std::size_t> choose(0, std::size(pieces) - 1);
  for (int round = 0; round < 3000; ++round) {
    std::string text;
    for (int piece = 0; piece < 40; ++piece) text += pieces[choose(random)];
    const auto rows = platform::SplitLines(text).size();
    std::size_t row = 1;
    for (const auto& program : FindPrograms(text).programs) {
      ASSERT_GE(program.row, row) << text;
      ASSERT_LE(program.row, rows) << text;
      ASSERT_FALSE(program.programId.empty()) << text;
      row = program.row;
    }
  }
}

}  // namespace
}  // namespace qmrules::workbench
