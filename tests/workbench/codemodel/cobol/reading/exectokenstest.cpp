#include <gtest/gtest.h>

#include "workbench/codemodel/cobol/reading/lexedtext.h"

namespace qmrules::workbench::codemodel::cobol {
namespace {

TEST(ExecTokens, CommasAreTokensAndFullStopsEndNothing) {
  const LexedFile lexed = LexFree("EXEC SQL SELECT A, B.C; D INTO :X FROM T.U WHERE E = 1.5 END-EXEC. MOVE A, B");
  EXPECT_EQ(Shown(lexed), "EXEC SQL SELECT A , B ?. C ?; D INTO : X FROM T ?. U WHERE E = #1.5 END-EXEC . MOVE A B");
  EXPECT_EQ(Flagged(lexed, kAdjacent), ", . C ; X . U .");
}

TEST(ExecTokens, SqlHasCommentsOfItsOwn) {
  EXPECT_EQ(Free("EXEC SQL SELECT A -- the ' first\n -- all of it\n FROM B-1 END-EXEC A --B"),
            "EXEC SQL SELECT A|FROM B-1 END-EXEC A - - B");
  EXPECT_EQ(Free("EXEC CICS READ -- X\n END-EXEC"), "EXEC CICS READ - - X|END-EXEC");
}

TEST(ExecTokens, CicsHasLiteralsAndParentheses) {
  EXPECT_EQ(Free("EXEC CICS READ FILE('POL') INTO(WS-A) LENGTH(LENGTH OF WS-A) END-EXEC"),
            "EXEC CICS READ FILE ( 'POL' ) INTO ( WS-A ) LENGTH ( LENGTH OF WS-A ) END-EXEC");
}

TEST(ExecTokens, SqlMayHoldAnyWord) {
  EXPECT_EQ(Free("EXEC SQL EXECUTE S1 END-EXEC A, B"), "EXEC SQL EXECUTE S1 END-EXEC A B");
  EXPECT_EQ(Free("EXEC SQL SELECT AUTHOR, TITLE FROM T\nTITLE 'x' END-EXEC"),
            "EXEC SQL SELECT AUTHOR , TITLE FROM T|TITLE 'x' END-EXEC");
  EXPECT_EQ(Free("EXEC SQL A <> B || C END-EXEC"), "EXEC SQL A <> B ?| ?| C END-EXEC");
}

TEST(ExecTokens, AFullStopAtTheEndOfALineEndsABlockThatLacksItsEnd) {
  EXPECT_EQ(Free("EXEC SQL COMMIT END-EXE.\nMOVE A, B.\nMOVE C"), "EXEC SQL COMMIT END-EXE .|MOVE A B .|MOVE C");
}

TEST(ExecTokens, DirectivesAreNoneWithinExec) {
  EXPECT_EQ(Fixed("       EXEC SQL A\n           >> B\n       $C\n       END-EXEC"), "EXEC SQL A|> > B|$C|END-EXEC");
}

}  // namespace
}  // namespace qmrules::workbench::codemodel::cobol
