#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "workbench/codemodel/cobol/procedure/markedstatements.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;

constexpr std::string_view kEmbeddedData = R"(       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  A PIC X(10).
       01  N PIC S9(04) COMP.
)";

TEST(DliCommands, NameSegmentsAndBringThemIn) {
  const auto marked =
      ExpectMarked(kEmbeddedData,
                   "EXEC DLI GU USING PCB($Other[[1]]) SEGMENT($File[[SKILL]]) INTO($IntoIn[[A]])\n"
                   "     SEGLENGTH($LengthOut[[N]]) WHERE(SKILCODE=$KeyOut[[A]] AND LEVEL>=$Key[[2]]) END-EXEC.\n"
                   "EXEC DLI ISRT USING PCB($OtherOut[[N]]) SEGMENT(($FileOut[[A]])) FROM($FromOut[[A]]) END-EXEC.\n"
                   "EXEC DLI REPL USING PCB($Other[[1]]) SEGMENT($File[[SKILL]]) FROM($FromOut[[A]]) END-EXEC.\n"
                   "EXEC DLI SCHD PSB($Other[[PSB1]]) END-EXEC.");
  EXPECT_THAT(marked.Statements(),
              ElementsAre("IOSTAT EXEC DLI GU", "IOSTAT EXEC DLI ISRT", "IOSTAT EXEC DLI REPL", "STAT EXEC DLI SCHD"));
}

TEST(EmbeddedCode, OfAnUnknownLanguageIsAGap) {
  const MarkedStatements marked(kEmbeddedData, "EXEC HTML P OF A END-EXEC MOVE 1 TO N.");
  EXPECT_THAT(marked.Diagnostics(), ElementsAre("1:1 HTML is not understood behind EXEC."));
  EXPECT_THAT(marked.Statements(), ElementsAre("STAT EXEC HTML", "STAT MOVE"));
}

TEST(EmbeddedCode, WithoutItsEndIsLeftAtTheFullStop) {
  const MarkedStatements marked(kEmbeddedData, "EXEC CICS SYNCPOINT.\nMOVE 1 TO N.");
  EXPECT_THAT(marked.Diagnostics(), ElementsAre("1:1 END-EXEC is missing."));
  EXPECT_THAT(marked.Statements(), ElementsAre("STAT EXEC CICS SYNCPOINT", "STAT MOVE"));
}

TEST(EmbeddedCode, WithoutItsEndIsLeftAtTheNextStatement) {
  const MarkedStatements marked(kEmbeddedData,
                                "EXEC CICS READ FILE('M')\n"
                                "     INTO(A)\n"
                                "MOVE 1 TO N\n"
                                "EXEC SQL COMMIT END-EXEC\n"
                                "EXEC SQL SELECT X INTO :A\n"
                                "EXEC SQL COMMIT END-EXEC.");
  EXPECT_THAT(marked.Diagnostics(), ElementsAre("1:1 END-EXEC is missing.", "5:1 END-EXEC is missing."));
  EXPECT_THAT(marked.Statements(), ElementsAre("IOSTAT EXEC CICS READ", "STAT MOVE", "STAT EXEC SQL COMMIT",
                                               "IOSTAT EXEC SQL SELECT", "STAT EXEC SQL COMMIT"));
}

TEST(EmbeddedCode, CanNestParenthesesWithoutEnd) {
  const std::string open(10'000, '('), close(10'000, ')');
  const MarkedStatements marked(kEmbeddedData, "EXEC SQL SET :A = " + open + "1" + close + " END-EXEC.\n" +
                                                   "EXEC CICS DELAY INTERVAL(" + open + "N" + close + ") END-EXEC.\n" +
                                                   "EXEC SQL SELECT X FROM " + open + " END-EXEC.\n" + "MOVE 1 TO N.");
  EXPECT_THAT(marked.Diagnostics(), ElementsAre());
  EXPECT_THAT(marked.Statements(),
              ElementsAre("STAT EXEC SQL SET", "STAT EXEC CICS DELAY", "IOSTAT EXEC SQL SELECT", "STAT MOVE"));
}

TEST(EmbeddedCode, StandsAmongTheStatementsOfABranch) {
  const auto marked = ExpectMarked(kEmbeddedData,
                                   "IF $SourceOut[[N]] = $Source[[1]]\n"
                                   "   EXEC SQL ROLLBACK END-EXEC\n"
                                   "ELSE\n"
                                   "   EXEC SQL COMMIT END-EXEC\n"
                                   "END-IF.");
  EXPECT_THAT(marked.Statements(), ElementsAre("IF IF", "STAT EXEC SQL ROLLBACK", "STAT EXEC SQL COMMIT"));
}

}  // namespace
}  // namespace qmrules::test
