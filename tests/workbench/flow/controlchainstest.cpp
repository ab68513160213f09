#include <gmock/gmock.h>

#include "workbench/flow/chainprogram.h"

// Chains through every form of control. The order of the text would give other answers, which are told with each.
namespace qmrules::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

// MAIN-PARA stands on row 9.
constexpr std::string_view kItems = "01 A PIC 9.\n01 B PIC 9.\n01 X PIC 9.\n";

TEST(ControlChains, AParagraphFallsThroughToTheNext) {
  ChainProgram program(kItems, R"(MAIN-PARA.
    MOVE 1 TO A.
NEXT-PARA.
    DISPLAY $next[[A]].
    MOVE 2 TO A.
    GOBACK.
LAST-PARA.
    MOVE 3 TO A.
)");
  // Not rows 13 and 16, which stand behind.
  EXPECT_THAT(program.Reaching("next"), ElementsAre("10 A constant move"));
}

TEST(ControlChains, ASectionThatIsPerformedReturnsAtItsEnd) {
  ChainProgram program(kItems, R"(MAIN-PART SECTION.
MAIN-PARA.
    PERFORM WORK-PART
    DISPLAY $behind[[A]]
    GOBACK.
WORK-PART SECTION.
FIRST-PARA.
    MOVE 1 TO A.
SECOND-PARA.
    MOVE 2 TO A.
REST-PART SECTION.
REST-PARA.
    MOVE 3 TO A.
)");
  // Not row 16, as if the first paragraph were all, and not row 21.
  EXPECT_THAT(program.Reaching("behind"), ElementsAre("18 A constant move"));
}

TEST(ControlChains, ARangeWithinARangeReturnsIntoIt) {
  ChainProgram program(kItems, R"(MAIN-PARA.
    MOVE 0 TO A
    PERFORM OUTER-A THRU OUTER-B
    DISPLAY $behind[[A]]
    GOBACK.
OUTER-A.
    MOVE 1 TO A
    PERFORM INNER-A
    DISPLAY $inside[[A]].
OUTER-B.
    IF X = 1 MOVE 2 TO A.
INNER-A.
    DISPLAY $inner[[A]]
    MOVE 3 TO A.
)");
  EXPECT_THAT(program.Reaching("inner"), ElementsAre("15 A constant move"));
  EXPECT_THAT(program.Reaching("inside"), ElementsAre("22 A constant move"));
  EXPECT_THAT(program.Reaching("behind"), ElementsAre("19 A constant move", "22 A constant move"));
}

TEST(ControlChains, AJumpIntoARangeThatIsNotPerformedThenFallsOutOfIt) {
  ChainProgram program(kItems, R"(MAIN-PARA.
    MOVE 1 TO A
    PERFORM STEP-A THRU STEP-B
    DISPLAY $behind[[A]]
    MOVE 2 TO A
    GO TO STEP-B.
STEP-A.
    MOVE 3 TO A.
STEP-B.
    DISPLAY $within[[A]].
STEP-C.
    DISPLAY $fallen[[A]]
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("within"), ElementsAre("13 A constant move", "16 A constant move"));
  // Not row 13: what has been jumped into returns to no PERFORM; and not row 16, which returns.
  EXPECT_THAT(program.Reaching("behind"), ElementsAre("16 A constant move"));
  EXPECT_THAT(program.Reaching("fallen"), ElementsAre("13 A constant move"));
}

TEST(ControlChains, GoToDependingLeadsToEachOfItsLabelsOrOn) {
  ChainProgram program(kItems, R"(MAIN-PARA.
    MOVE 1 TO A
    GO TO FIRST-PARA THIRD-PARA DEPENDING ON X.
    MOVE 2 TO A
    GO TO THIRD-PARA.
FIRST-PARA.
    DISPLAY $first[[A]]
    GOBACK.
SECOND-PARA.
    MOVE 3 TO A.
THIRD-PARA.
    DISPLAY $third[[A]]
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("first"), ElementsAre("10 A constant move"));
  // Not row 18: its label is none of them.
  EXPECT_THAT(program.Reaching("third"), ElementsAre("10 A constant move", "12 A constant move"));
}

TEST(ControlChains, TheBodyOfALoopMayNotHaveRunOrMustHave) {
  ChainProgram program(kItems, R"(MAIN-PARA.
    MOVE 1 TO A B
    PERFORM X TIMES MOVE 2 TO A END-PERFORM
    DISPLAY $times[[A]]
    PERFORM 3 TIMES MOVE 3 TO A END-PERFORM
    DISPLAY $thrice[[A]]
    PERFORM UNTIL X = 1 MOVE 4 TO A END-PERFORM
    DISPLAY $before[[A]]
    PERFORM TEST AFTER UNTIL X = 1 MOVE 5 TO A END-PERFORM
    DISPLAY $after[[A]]
    PERFORM MOVE 6 TO A END-PERFORM
    DISPLAY $once[[A]]
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("times"), ElementsAre("10 A constant move", "11 A constant move"));
  EXPECT_THAT(program.Reaching("thrice"), ElementsAre("13 A constant move"));
  EXPECT_THAT(program.Reaching("before"), ElementsAre("13 A constant move", "15 A constant move"));
  EXPECT_THAT(program.Reaching("after"), ElementsAre("17 A constant move"));
  EXPECT_THAT(program.Reaching("once"), ElementsAre("19 A constant move"));
}

TEST(ControlChains, CountersBeginAndGoOn) {
  ChainProgram program(kItems, R"(MAIN-PARA.
    MOVE 7 TO A B
    PERFORM VARYING A FROM 1 BY 1 UNTIL $test[[A]] > 3
        AFTER B FROM $from[[A]] BY 1 UNTIL B > 5
      DISPLAY $inside[[A]]
    END-PERFORM
    DISPLAY $behind[[A]]
    GOBACK.
)");
  // Not row 10, which the loop overwrites at once.
  EXPECT_THAT(program.Reaching("test"), ElementsAre("11 A constant move", "11 A computation"));
  EXPECT_THAT(program.Reaching("from"), ElementsAre("11 A constant move", "11 A computation"));
  EXPECT_THAT(program.Reaching("inside"), ElementsAre("11 A constant move", "11 A computation"));
  EXPECT_THAT(program.Reaching("behind"), ElementsAre("11 A constant move", "11 A computation"));
}

TEST(ControlChains, ExitsLeadToTheEndOfWhatTheyExit) {
  ChainProgram program(kItems, R"(MAIN-PARA.
    MOVE 1 TO A
    PERFORM UNTIL EXIT
      IF X = 1 MOVE 2 TO A EXIT PERFORM END-IF
      IF X = 2 MOVE 3 TO A EXIT PERFORM CYCLE END-IF
      DISPLAY $rest[[A]]
      MOVE 4 TO A
    END-PERFORM
    DISPLAY $behind[[A]]
    MOVE 5 TO A
    IF X = 3 EXIT PARAGRAPH END-IF
    MOVE 6 TO A.
NEXT-PARA.
    DISPLAY $next[[A]]
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("behind"), ElementsAre("12 A constant move"));
  // Not row 12, which has left the loop.
  EXPECT_THAT(program.Reaching("rest"), ElementsAre("10 A constant move", "13 A constant move", "15 A constant move"));
  EXPECT_THAT(program.Reaching("next"), ElementsAre("18 A constant move", "20 A constant move"));
}

TEST(ControlChains, ExitSectionPassesItsOtherParagraphsBy) {
  ChainProgram program(kItems, R"(MAIN-PART SECTION.
MAIN-PARA.
    MOVE 1 TO A
    IF X = 1 EXIT SECTION END-IF
    MOVE 2 TO A.
SKIPPED-PARA.
    DISPLAY $skipped[[A]]
    MOVE 3 TO A.
NEXT-PART SECTION.
NEXT-PARA.
    DISPLAY $next[[A]]
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("skipped"), ElementsAre("13 A constant move"));
  EXPECT_THAT(program.Reaching("next"), ElementsAre("11 A constant move", "16 A constant move"));
}

TEST(ControlChains, NextSentenceLeadsBehindTheFullStop) {
  ChainProgram program(kItems, R"(MAIN-PARA.
    MOVE 1 TO A
    IF X = 1
      MOVE 2 TO A
      IF B = 1 NEXT SENTENCE END-IF
      MOVE 3 TO A
    END-IF
    DISPLAY $sentence[[A]].
    DISPLAY $behind[[A]].
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("sentence"), ElementsAre("10 A constant move", "14 A constant move"));
  EXPECT_THAT(program.Reaching("behind"),
              ElementsAre("10 A constant move", "12 A constant move", "14 A constant move"));
}

TEST(ControlChains, OneBranchOfAnEvaluateRuns) {
  ChainProgram program(kItems, R"(MAIN-PARA.
    MOVE 1 TO A
    EVALUATE X ALSO TRUE
      WHEN 1 ALSO B = 2
        MOVE 2 TO A
      WHEN 2 ALSO ANY
        DISPLAY $second[[A]]
        MOVE 3 TO A
      WHEN OTHER
        DISPLAY $other[[A]]
        MOVE 4 TO A
    END-EVALUATE
    DISPLAY $behind[[A]]
    GOBACK.
)");
  // Not row 13 and not row 16: no branch runs into the next.
  EXPECT_THAT(program.Reaching("second"), ElementsAre("10 A constant move"));
  EXPECT_THAT(program.Reaching("other"), ElementsAre("10 A constant move"));
  // Not row 10: with OTHER there is always one.
  EXPECT_THAT(program.Reaching("behind"),
              ElementsAre("13 A constant move", "16 A constant move", "19 A constant move"));
}

TEST(ControlChains, ASearchFindsOrComesToTheEnd) {
  ChainProgram program("01 A PIC 9.\n01 T.\n   05 E PIC 9 OCCURS 5 INDEXED BY I.\n", R"(MAIN-PARA.
    MOVE 1 TO A
    SET I TO 1
    SEARCH E
      AT END DISPLAY $end[[A]] MOVE 2 TO A
      WHEN E (I) = 1 DISPLAY $found[[A]] $index[[I]] MOVE 3 TO A
      WHEN E ($again[[I]]) = 2 CONTINUE
    END-SEARCH
    DISPLAY $behind[[A]]
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("end"), ElementsAre("10 A constant move"));
  EXPECT_THAT(program.Reaching("found"), ElementsAre("10 A constant move"));
  EXPECT_THAT(program.Reaching("index"), ElementsAre("11 I constant move", "12 I computation perhaps"));
  EXPECT_THAT(program.Reaching("again"), ElementsAre("11 I constant move", "12 I computation perhaps"));
  EXPECT_THAT(program.Reaching("behind"),
              ElementsAre("10 A constant move", "13 A constant move", "14 A constant move"));
}

TEST(ControlChains, APhraseRunsWhenItsStatementHasFailed) {
  ChainProgram program("01 A PIC 9.\n01 B PIC 9.\n01 S PIC X(4).\n", R"(MAIN-PARA.
    MOVE 1 TO A B
    ADD 9 TO A
      ON SIZE ERROR DISPLAY $kept[[A]] MOVE 2 TO B
      NOT ON SIZE ERROR DISPLAY $added[[A]] $untold[[B]]
    END-ADD
    STRING S DELIMITED BY SIZE INTO S
      ON OVERFLOW MOVE 3 TO B
    END-STRING
    CALL 'PBX01' USING A
      ON EXCEPTION DISPLAY $uncalled[[A]] MOVE 4 TO B
      NOT ON EXCEPTION DISPLAY $called[[A]]
    END-CALL
    DISPLAY $behind[[B]]
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("kept"), ElementsAre("10 A constant move"));
  EXPECT_THAT(program.Reaching("added"), ElementsAre("11 A computation"));
  // Not row 12, of the other phrase.
  EXPECT_THAT(program.Reaching("untold"), ElementsAre("10 B constant move"));
  EXPECT_THAT(program.Reaching("behind"),
              ElementsAre("10 B constant move", "12 B constant move", "16 B constant move", "19 B constant move"));
  EXPECT_THAT(program.Reaching("called"), Contains("18 A call perhaps"));
}

TEST(ControlChains, NothingRunsBehindAnEnd) {
  ChainProgram program(kItems, R"(MAIN-PARA.
    MOVE 1 TO A
    IF X = 1 MOVE 2 TO A STOP RUN.
    IF X = 2 MOVE 3 TO A GOBACK.
    DISPLAY $behind[[A]]
    PERFORM END-PARA
    DISPLAY $never[[A]]
    GOBACK.
END-PARA.
    MOVE 4 TO A
    STOP RUN.
)");
  // Not rows 11 and 12, although they stand before.
  EXPECT_THAT(program.Reaching("behind"), ElementsAre("10 A constant move"));
  EXPECT_THAT(program.Reaching("never"), IsEmpty());
}

}  // namespace
}  // namespace qmrules::test
