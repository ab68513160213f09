#include <gmock/gmock.h>

#include "workbench/flow/chainprogram.h"

// Chains through EXEC SQL and EXEC CICS, whose variables go in or come out, and through what they lead to.
namespace qmrules::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

constexpr std::string_view kHostItems = R"(01  A PIC X(4).
01  B PIC X(4).
01  K PIC X(4).
01  R PIC S9(8) COMP.
)";

TEST(SqlChains, VariablesOfAStatementGoInOrComeOut) {
  ChainProgram program(kHostItems, R"(MAIN-PARA.
    MOVE 'A' TO $old[[A]]
    MOVE 'K' TO $key[[K]]
    EXEC SQL SELECT C INTO :A FROM T WHERE D = :$where[[K]] END-EXEC
    DISPLAY $selected[[A]] $still[[K]]
    EXEC SQL UPDATE T SET C = :$written[[A]] WHERE D = :K END-EXEC
    DISPLAY $updated[[A]]
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("where"), ElementsAre("12 K constant move"));
  EXPECT_THAT(program.Reaching("selected"), ElementsAre("11 A constant move", "13 A input perhaps"));
  // What goes into the database stays as it is, and what comes out of it is not made from what has gone in.
  EXPECT_THAT(program.Reaching("still"), ElementsAre("12 K constant move"));
  EXPECT_THAT(program.Reaching("updated"), ElementsAre("11 A constant move", "13 A input perhaps"));
  EXPECT_THAT(program.Uses("key"), ElementsAre("13 K", "14 K", "15 K", "end 0-4"));
  EXPECT_THAT(program.Fed("where"), IsEmpty());
  EXPECT_THAT(program.Fed("written"), IsEmpty());
}

TEST(SqlChains, ACursorReadsItsVariablesWhenItIsOpened) {
  ChainProgram program(kHostItems, R"(MAIN-PARA.
    MOVE 'K' TO $opened[[K]]
    EXEC SQL DECLARE C1 CURSOR FOR
      SELECT C FROM T WHERE D = :K END-EXEC
    EXEC SQL OPEN C1 END-EXEC
    MOVE 'L' TO $late[[K]]
    EXEC SQL FETCH C1 INTO :$fetched[[A]] END-EXEC
    DISPLAY $a[[A]]
    GOBACK.
)");
  EXPECT_THAT(program.Uses("opened"), ElementsAre("14 K"));
  EXPECT_THAT(program.Uses("late"), ElementsAre("end 0-4"));
  EXPECT_THAT(program.Reaching("a"), Contains("16 A input perhaps"));
  EXPECT_THAT(program.Feeds("fetched"), IsEmpty());
}

TEST(SqlChains, WheneverLeadsOnFromWhatStandsBehindItOnly) {
  ChainProgram program(kHostItems, R"(MAIN-PARA.
    MOVE '1' TO A
    EXEC SQL DELETE FROM T END-EXEC
    EXEC SQL WHENEVER SQLERROR GO TO BAD-PARA END-EXEC
    MOVE '2' TO A
    EXEC SQL DELETE FROM T END-EXEC
    MOVE '3' TO A
    GOBACK.
BAD-PARA.
    DISPLAY $bad[[A]]
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("bad"), ElementsAre("14 A constant move"));
}

TEST(CicsChains, OptionsOfACommandGoInOrComeOut) {
  ChainProgram program(kHostItems, R"(MAIN-PARA.
    MOVE 'A' TO A
    MOVE 'K' TO $key[[K]]
    EXEC CICS READ FILE('F') INTO(A) RIDFLD(K) RESP(R) END-EXEC
    DISPLAY $read[[A]] $still[[K]] $resp[[R]]
    EXEC CICS SEND FROM($sent[[A]]) END-EXEC
    DISPLAY $behind[[A]]
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("read"), ElementsAre("11 A constant move", "13 A input perhaps"));
  EXPECT_THAT(program.Reaching("still"), ElementsAre("12 K constant move"));
  EXPECT_THAT(program.Reaching("resp"), ElementsAre("13 R input"));
  EXPECT_THAT(program.Reaching("sent"), ElementsAre("11 A constant move", "13 A input perhaps"));
  EXPECT_THAT(program.Reaching("behind"), ElementsAre("11 A constant move", "13 A input perhaps"));
  EXPECT_THAT(program.Uses("key"), ElementsAre("13 K", "14 K", "end 0-4"));
}

TEST(CicsChains, AHandledConditionBringsWhatWasThereAtTheCommand) {
  ChainProgram program(kHostItems, R"(MAIN-PARA.
    EXEC CICS HANDLE CONDITION NOTFND(GONE-PARA) END-EXEC
    MOVE '1' TO A
    EXEC CICS READ FILE('F') INTO(B) RIDFLD(K) END-EXEC
    MOVE '2' TO A
    EXEC CICS READ FILE('F') INTO(B) RIDFLD(K) RESP(R) END-EXEC
    MOVE '3' TO A
    EXEC CICS READ FILE('F') INTO(B) RIDFLD(K) NOHANDLE END-EXEC
    MOVE '4' TO A
    GOBACK.
GONE-PARA.
    DISPLAY $gone[[A]]
    GOBACK.
)");
  // Not from rows 14 and 16: their commands look at the outcome themselves.
  EXPECT_THAT(program.Reaching("gone"), ElementsAre("12 A constant move"));
}

TEST(CicsChains, ACommandThatLeavesGoesOnWhereItsFailureIsNotHandled) {
  ChainProgram program(kHostItems, R"(MAIN-PARA.
    MOVE '1' TO A
    IF B = '1'
      EXEC CICS XCTL PROGRAM('P') NOHANDLE END-EXEC
    END-IF
    DISPLAY $tried[[A]]
    MOVE '2' TO A
    EXEC CICS XCTL PROGRAM('P') END-EXEC
    DISPLAY $never[[A]]
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("tried"), ElementsAre("11 A constant move"));
  EXPECT_THAT(program.Reaching("never"), IsEmpty());
  ChainProgram ignoring(kHostItems, R"(MAIN-PARA.
    EXEC CICS IGNORE CONDITION PGMIDERR END-EXEC
    MOVE '1' TO A
    EXEC CICS XCTL PROGRAM('P') END-EXEC
    DISPLAY $behind[[A]]
    GOBACK.
)");
  EXPECT_THAT(ignoring.Reaching("behind"), ElementsAre("12 A constant move"));
}

TEST(CicsChains, WhatAnAbendOfAnyStatementBringsIsAGap) {
  ChainProgram program(kHostItems, R"(MAIN-PARA.
    EXEC CICS HANDLE ABEND LABEL(BAD-PARA) END-EXEC
    DISPLAY $before[[A]]
    MOVE '1' TO A
    COMPUTE R = R + 1
    MOVE '2' TO A
    EXEC CICS RETURN END-EXEC.
BAD-PARA.
    DISPLAY $bad[[A]]
    EXEC CICS ABEND ABCODE('X') END-EXEC.
)");
  EXPECT_THAT(program.Reaching("bad"), Contains("15 A constant move"));
  EXPECT_THAT(
      program.Gaps("bad"),
      ElementsAre("11 An abend of any statement leads to this label; only those of CICS commands are followed, so A "
                  "may have other values there."));
  EXPECT_THAT(program.Gaps("before"), IsEmpty());
}

}  // namespace
}  // namespace qmrules::test
