#include <gmock/gmock.h>

#include "workbench/flow/chainprogram.h"

// Chains through the forms of COBOL in which names and bytes, or the order of the text and that of the run, differ.
namespace qmrules::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

TEST(CobolChains, AConditionNameUsesAndSetsItsItem) {
  ChainProgram program("01 A PIC X.\n   88 IS-ON VALUE 'Y' FALSE 'N'.\n   88 IS-OFF VALUE 'N'.\n", R"(MAIN-PARA.
    SET IS-ON TO TRUE
    IF $off[[IS-OFF]]
      DISPLAY $a[[A]]
    END-IF
    MOVE 'N' TO A
    IF $on[[IS-ON]]
      CONTINUE
    END-IF
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("a"), ElementsAre("10 IS-ON constant move"));
  EXPECT_THAT(program.Reaching("off"), ElementsAre(StartsWith("10 IS-ON constant move")));
  EXPECT_THAT(program.Reaching("on"), ElementsAre("14 A constant move"));
}

TEST(CobolChains, RenamesIsAnOverlap) {
  ChainProgram program("01 G.\n   05 A PIC X.\n   05 B PIC X.\n   05 C PIC X.\n66 R RENAMES A THRU B.\n", R"(MAIN-PARA.
    MOVE 'ABC' TO G
    MOVE 'XY' TO R
    DISPLAY $a[[A]] $c[[C]]
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("a"), ElementsAre("13 R constant move overlap"));
  EXPECT_THAT(program.Reaching("c"), ElementsAre("12 G constant move"));
}

TEST(CobolChains, AConstantPartOfAnItemIsExactAndAVariableOneMayBeAnyPart) {
  ChainProgram program("01 A PIC X(9).\n01 I PIC 9.\n", R"(MAIN-PARA.
    MOVE SPACES TO A
    MOVE 'BC' TO A (2:2)
    DISPLAY $first[[A (1:1)]] $second[[A (2:1)]]
    MOVE 'Z' TO A (I:1)
    DISPLAY $third[[A (1:1)]]
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("first"), ElementsAre("9 A constant move"));
  EXPECT_THAT(program.Reaching("second"), ElementsAre("10 A constant move"));
  EXPECT_THAT(program.Reaching("third"), ElementsAre("9 A constant move", "12 A constant move perhaps"));
}

TEST(CobolChains, InitializeDefinesTheItemsOfTheGroupButNotItsFillers) {
  ChainProgram program("01 G.\n   05 A PIC 9.\n   05 FILLER PIC X.\n   05 B PIC X.\n", R"(MAIN-PARA.
    MOVE 'abc' TO G
    INITIALIZE G
    DISPLAY $g[[G]]
    GOBACK.
)");
  EXPECT_THAT(program.ReachingBytes("g"), Contains("11 G constant move 1-2"));
  EXPECT_THAT(program.Reaching("g"), Contains(StartsWith("12 G constant move")));
}

TEST(CobolChains, AnAlteredJumpGoesToEachOfItsTargets) {
  ChainProgram program("01 A PIC 9.\n01 X PIC 9.\n", R"(MAIN-PARA.
    IF X = 1 ALTER SWITCH-PARA TO PROCEED TO SECOND-PARA.
SWITCH-PARA.
    GO TO FIRST-PARA.
FIRST-PARA.
    MOVE 1 TO A.
    GO TO LAST-PARA.
SECOND-PARA.
    MOVE 2 TO A.
    GO TO LAST-PARA.
NEVER-PARA.
    MOVE 3 TO A.
LAST-PARA.
    DISPLAY $a[[A]].
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("a"), ElementsAre("13 A constant move", "16 A constant move"));
}

TEST(CobolChains, AJumpOutOfARangeStillReturnsAtItsEnd) {
  ChainProgram program("01 A PIC 9.\n01 X PIC 9.\n", R"(MAIN-PARA.
    PERFORM STEP-A
    DISPLAY $first[[A]]
    PERFORM STEP-B
    DISPLAY $second[[A]]
    GOBACK.
STEP-A.
    MOVE 1 TO A
    IF X = 1 GO TO STEP-B.
    MOVE 2 TO A.
STEP-B.
    MOVE 3 TO A.
STEP-C.
    MOVE 4 TO A
    IF X = 2 GO TO STEP-A.
)");
  // By GO TO the range of STEP-A runs on through STEP-B and STEP-C, and it ends when it comes back to STEP-A's end.
  EXPECT_THAT(program.Reaching("first"), ElementsAre("17 A constant move"));
  EXPECT_THAT(program.Reaching("second"), ElementsAre("19 A constant move"));
}

TEST(CobolChains, OverlappingRangesReturnWhereEachOfThemEnds) {
  ChainProgram program("01 A PIC 9.\n", R"(MAIN-PARA.
    PERFORM STEP-A THRU STEP-B
    DISPLAY $first[[A]]
    PERFORM STEP-B THRU STEP-C
    DISPLAY $second[[A]]
    GOBACK.
STEP-A.
    MOVE 1 TO A.
STEP-B.
    ADD 1 TO $sum[[A]].
STEP-C.
    MOVE 3 TO A.
)");
  EXPECT_THAT(program.Reaching("first"), ElementsAre(StartsWith("16 A computation")));
  EXPECT_THAT(program.Reaching("second"), ElementsAre("18 A constant move"));
  EXPECT_THAT(program.Reaching("sum"), ElementsAre("14 A constant move", StartsWith("16 A computation")));
}

TEST(CobolChains, ARangeThatPerformsItselfComesToAnEnd) {
  ChainProgram program("01 A PIC 9.\n", R"(MAIN-PARA.
    MOVE 0 TO A
    PERFORM AGAIN-PARA
    DISPLAY $behind[[A]]
    GOBACK.
AGAIN-PARA.
    IF $test[[A]] < 5
      MOVE 7 TO A
      PERFORM AGAIN-PARA
    END-IF.
)");
  EXPECT_THAT(program.Reaching("behind"), ElementsAre("8 A constant move", "14 A constant move"));
  EXPECT_THAT(program.Reaching("test"), ElementsAre("8 A constant move", "14 A constant move"));
}

TEST(CobolChains, ATextInTheMiddleOfAStringIsDefinedInPart) {
  ChainProgram program("01 A PIC X(9).\n01 B PIC X(3).\n", R"(MAIN-PARA.
    MOVE SPACES TO A
    STRING B DELIMITED BY SPACE INTO $into[[A]]
    DISPLAY $a[[A]]
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("a"), ElementsAre("9 A constant move", StartsWith("10 A computation perhaps")));
  EXPECT_THAT(program.Feeds("into"), Contains("B"));
}

TEST(CobolChains, UnstringSetsItsFirstItemForSureAndTheOthersPerhaps) {
  ChainProgram program("01 S PIC X(9).\n01 A PIC X.\n01 B PIC X.\n01 N PIC 9.\n", R"(MAIN-PARA.
    MOVE SPACES TO A B S
    MOVE 0 TO N
    UNSTRING S DELIMITED BY ',' INTO $first[[A]] B TALLYING IN N
    DISPLAY $a[[A]] $b[[B]] $n[[N]] $s[[S]]
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("a"), ElementsAre("13 A computation"));
  EXPECT_THAT(program.Reaching("b"), ElementsAre("11 B constant move", "13 B computation perhaps"));
  EXPECT_THAT(program.Reaching("n"), ElementsAre("12 N constant move", "13 N computation perhaps"));
  EXPECT_THAT(program.Reaching("s"), ElementsAre("11 S constant move"));
  EXPECT_THAT(program.Feeds("first"), ElementsAre("S"));
}

TEST(CobolChains, InspectCountsOrReplacesPerhaps) {
  ChainProgram program("01 S PIC X(9).\n01 C PIC X.\n01 N PIC 9.\n", R"(MAIN-PARA.
    MOVE SPACES TO S
    MOVE '*' TO C
    MOVE 0 TO N
    INSPECT S TALLYING $count[[N]] FOR ALL 'A'
    DISPLAY $counted[[S]] $n[[N]]
    INSPECT S REPLACING ALL 'A' BY $by[[C]]
    DISPLAY $s[[S]]
    GOBACK.
)");
  // Counting changes nothing.
  EXPECT_THAT(program.Reaching("counted"), ElementsAre("10 S constant move"));
  EXPECT_THAT(program.Reaching("n"), ElementsAre("12 N constant move", "13 N computation perhaps"));
  EXPECT_THAT(program.Reaching("s"), ElementsAre("10 S constant move", "15 S computation perhaps"));
  EXPECT_THAT(program.Reaching("by"), ElementsAre("11 C constant move"));
}

TEST(CobolChains, InitializeReplacingDefinesTheItemsOfItsCategory) {
  ChainProgram program("01 G.\n   05 A PIC 9.\n   05 B PIC X.\n   05 C REDEFINES B PIC 9.\n", R"(MAIN-PARA.
    MOVE 'ab' TO G
    INITIALIZE G REPLACING NUMERIC DATA BY 5
    DISPLAY $a[[A]] $b[[B]] $c[[C]]
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("a"), ElementsAre("12 G constant move"));
  EXPECT_THAT(program.Reaching("b"), ElementsAre("11 G constant move"));
  // Numeric too, but the other name of an item that is not.
  EXPECT_THAT(program.Reaching("c"), ElementsAre("11 G constant move"));
}

TEST(CobolChains, CorrespondingItemsGetTheirValueFromThoseOfTheSameNameOnly) {
  ChainProgram program("01 G.\n   05 A PIC X.\n   05 B PIC X.\n01 H.\n   05 B PIC X.\n   05 C PIC X.\n", R"(MAIN-PARA.
    MOVE 'gg' TO G
    MOVE 'hh' TO H
    MOVE CORRESPONDING G TO H
    DISPLAY $b[[B OF H]] $c[[C]] $a[[A]]
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("b"), ElementsAre("15 B move"));
  EXPECT_THAT(program.Reaching("c"), ElementsAre("14 H constant move"));
  EXPECT_THAT(program.Reaching("a"), ElementsAre("13 G constant move"));
}

TEST(CobolChains, TheSubjectOfAnEvaluateFeedsNothing) {
  ChainProgram program("01 A PIC 9.\n01 B PIC 9.\n01 C PIC 9.\n", R"(MAIN-PARA.
    EVALUATE $subject[[A]]
      WHEN 1 MOVE B TO $target[[C]]
    END-EVALUATE
    GOBACK.
)");
  EXPECT_THAT(program.Fed("subject"), IsEmpty());
  EXPECT_THAT(program.Feeds("target"), ElementsAre("B"));
}

TEST(CobolChains, AnItemBehindATableOfVariableSizeIsTakenForAllItsPlaces) {
  ChainProgram program("01 N PIC 9.\n01 G.\n   05 T PIC X OCCURS 1 TO 5 DEPENDING ON N.\n   05 B PIC X.\n",
                       R"(MAIN-PARA.
    MOVE 'A' TO B
    MOVE 'T' TO T (3)
    MOVE 'S' TO T (1)
    DISPLAY $b[[B]]
    GOBACK.
)");
  // B lies where T (2) to T (5) or it itself would: not where T (1) is.
  EXPECT_THAT(program.Reaching("b"),
              ElementsAre("6 G initial value", "11 B constant move perhaps", "12 T constant move overlap"));
  EXPECT_THAT(program.Gaps("b"),
              Contains("14 B lies behind a table of variable size; it is taken for every place where it can lie."));
}

}  // namespace
}  // namespace qmrules::test
