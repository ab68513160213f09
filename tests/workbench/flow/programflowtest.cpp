#include "workbench/flow/programflow.h"

#include <gmock/gmock.h>

#include "workbench/flow/chainprogram.h"

namespace qmrules::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(ProgramFlowChains, ADefinitionOnOneBranchStandsBesideTheOneBefore) {
  ChainProgram program("01 ONE.\n   05 A PIC 9.\n01 B PIC 9.\n01 X PIC 9.\n01 OTHER.\n   05 A PIC 9.\n", R"(MAIN-PARA.
    MOVE 5 TO A OF ONE
    IF X > 1
      MOVE B TO $inner[[A OF ONE]]
    END-IF
    MOVE 7 TO A OF OTHER
    DISPLAY $use[[A OF ONE]]
    MOVE 9 TO A OF ONE
    DISPLAY $last[[A OF ONE]]
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("use"), ElementsAre("13 A constant move", "15 A move"));
  EXPECT_THAT(program.Reaching("last"), ElementsAre("19 A constant move"));
  EXPECT_THAT(program.Uses("inner"), ElementsAre("18 A"));
  EXPECT_THAT(program.Feeds("inner"), ElementsAre("B"));
}

TEST(ProgramFlowChains, WhatAProgramStartsWithReachesUntilItIsOverwritten) {
  ChainProgram program("01 A PIC 9 VALUE 3.\n", R"(MAIN-PARA.
    DISPLAY $before[[A]]
    MOVE 1 TO A
    DISPLAY $behind[[A]]
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("before"), ElementsAre("5 A initial value"));
  EXPECT_THAT(program.Reaching("behind"), ElementsAre("9 A constant move"));
  EXPECT_THAT(program.AtEnd("A"), ElementsAre("9 A constant move 0-1"));
}

TEST(ProgramFlowChains, APerformedParagraphGivesBackToItsOwnCallOnly) {
  ChainProgram program("01 A PIC 9.\n01 B PIC 9.\n", R"(MAIN-PARA.
    MOVE 1 TO $first[[A]]
    PERFORM SHOW-PARA
    DISPLAY $between[[A]]
    MOVE 2 TO A
    PERFORM SHOW-PARA
    DISPLAY $behind[[A]]
    GOBACK.
SHOW-PARA.
    DISPLAY $inside[[A]]
    ADD 1 TO B.
)");
  EXPECT_THAT(program.Reaching("inside"), ElementsAre("9 A constant move", "12 A constant move"));
  EXPECT_THAT(program.Reaching("between"), ElementsAre("9 A constant move"));
  EXPECT_THAT(program.Reaching("behind"), ElementsAre("12 A constant move"));
  EXPECT_THAT(program.Uses("first"), ElementsAre("11 A", "17 A"));
}

TEST(ProgramFlowChains, WithoutMatchedReturnsNothingIsMissingAndAGapSaysSo) {
  ChainProgram program("01 A PIC 9.\n", R"(MAIN-PARA.
    MOVE 1 TO A
    PERFORM SHOW-PARA
    MOVE 2 TO A
    PERFORM SHOW-PARA
    IF A = 2
      DISPLAY $behind[[A]]
    END-IF
    GOBACK.
SHOW-PARA.
    DISPLAY A.
)");
  const auto use = program.Program().NodeAt("behind");
  EXPECT_EQ(program.Flow().DefinitionsReaching(use).links.size(), 1U);
  workbench::flow::ProgramFlow unmatched(program.Program().Image(), 0, {}, 5);
  const auto chain = unmatched.DefinitionsReaching(use);
  EXPECT_EQ(chain.links.size(), 2U);
  ASSERT_EQ(chain.gaps.size(), 1U);
  EXPECT_THAT(chain.gaps[0].text, ::testing::StartsWith("Too many of its PERFORM ranges run through each other"));
  const auto conditions = unmatched.ConditionsOf(chain.links[0].usedAt);
  EXPECT_EQ(conditions.always.size(), 1U);
  EXPECT_TRUE(conditions.areCut);
}

TEST(ProgramFlowChains, WhatAPerformedRangeDefinesReachesBehindItsCall) {
  ChainProgram program("01 A PIC 9.\n01 X PIC 9.\n", R"(MAIN-PARA.
    MOVE 1 TO A
    PERFORM STEP-1 THRU STEP-2
    DISPLAY $behind[[A]]
    GOBACK.
STEP-1.
    IF X = 1 GO TO STEP-2.
    MOVE 2 TO A.
STEP-2.
    CONTINUE.
STEP-3.
    MOVE 3 TO A.
)");
  EXPECT_THAT(program.Reaching("behind"), ElementsAre("9 A constant move", "15 A constant move"));
}

TEST(ProgramFlowChains, ALoopBringsADefinitionBackToTheUseAboveIt) {
  ChainProgram program("01 A PIC 9.\n01 I PIC 9.\n", R"(MAIN-PARA.
    MOVE 0 TO A
    PERFORM VARYING I FROM 1 BY 1 UNTIL $test[[I]] > 5
      DISPLAY $use[[A]] $counter[[I]]
      ADD 1 TO $sum[[A]]
    END-PERFORM
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("use"), Contains("9 A constant move"));
  EXPECT_THAT(program.Reaching("use"), Contains(::testing::StartsWith("12 A computation")));
  EXPECT_EQ(program.Reaching("test").size(), 2U);
  EXPECT_EQ(program.Reaching("counter"), program.Reaching("test"));
  EXPECT_THAT(program.Uses("sum"), Contains("11 A"));
  EXPECT_THAT(program.Uses("sum"), Contains("12 A"));
}

TEST(ProgramFlowChains, AGroupMoveDefinesItsItemsAndAnItemAPartOfTheGroup) {
  ChainProgram program("01 G.\n   05 A PIC X(2).\n   05 B PIC X(3).\n01 H PIC X(5).\n", R"(MAIN-PARA.
    MOVE H TO G
    MOVE 'XYZ' TO B
    DISPLAY $a[[A]] $b[[B]] $g[[G]]
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("a"), ElementsAre("11 G move"));
  EXPECT_THAT(program.Reaching("b"), ElementsAre("12 B constant move"));
  EXPECT_THAT(program.ReachingBytes("g"), ElementsAre("11 G move 0-2", "12 B constant move 2-5"));
}

TEST(ProgramFlowChains, ARedefinitionDefinesTheSameBytesAndIsToldAsAnOverlap) {
  ChainProgram program("01 A PIC X(4).\n01 B REDEFINES A.\n   05 B1 PIC X.\n   05 B2 PIC X(3).\n", R"(MAIN-PARA.
    MOVE 'AAAA' TO A
    MOVE 'B' TO B1
    DISPLAY $a[[A]] $b2[[B2]]
    GOBACK.
)");
  EXPECT_THAT(program.ReachingBytes("a"), ElementsAre("11 A constant move 1-4", "12 B1 constant move overlap 0-1"));
  EXPECT_THAT(program.ReachingBytes("b2"), ElementsAre("11 A constant move overlap 1-4"));
}

TEST(ProgramFlowChains, ATableElementByConstantIsApartFromItsNeighbours) {
  ChainProgram program("01 T.\n   05 E PIC 9 OCCURS 3.\n01 I PIC 9.\n", R"(MAIN-PARA.
    MOVE 1 TO E (1)
    MOVE 2 TO E (2)
    MOVE 3 TO E (3)
    DISPLAY $second[[E (2)]]
    DISPLAY $any[[E (I)]]
    MOVE 9 TO E (I)
    DISPLAY $after[[E (2)]]
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("second"), ElementsAre("11 E constant move"));
  EXPECT_THAT(program.Reaching("any"), ElementsAre("10 E constant move", "11 E constant move", "12 E constant move"));
  EXPECT_THAT(program.Reaching("after"), ElementsAre("11 E constant move", "15 E constant move perhaps"));
  EXPECT_THAT(program.Gaps("second"), IsEmpty());
  EXPECT_THAT(program.Gaps("any"),
              ElementsAre("14 A subscript of E is not constant; it is taken for every occurrence."));
  EXPECT_THAT(program.Gaps("after"),
              ElementsAre("15 A subscript of E is not constant; it is taken for every occurrence."));
}

TEST(ProgramFlowChains, AnOccurrenceThatNeverRunsHasNoDefinitions) {
  ChainProgram program("01 A PIC 9.\n", R"(MAIN-PARA.
    MOVE 1 TO A
    GOBACK.
DEAD-PARA.
    DISPLAY $dead[[A]].
)");
  EXPECT_THAT(program.Reaching("dead"), IsEmpty());
}

TEST(ProgramFlowChains, ADefinitionIsNoUse) {
  ChainProgram program("01 A PIC 9.\n", "MAIN-PARA.\n    MOVE 1 TO $defined[[A]]\n    GOBACK.\n");
  EXPECT_THAT(program.Reaching("defined"), IsEmpty());
  EXPECT_THAT(program.Uses("defined"), ElementsAre("end 0-1"));
}

TEST(ProgramFlowChains, MoveCorrespondingFeedsPairByPair) {
  ChainProgram program("01 G.\n   05 A PIC 9.\n   05 B PIC 9.\n01 H.\n   05 B PIC 9.\n   05 A PIC 9.\n", R"(MAIN-PARA.
    MOVE CORRESPONDING G TO H
    DISPLAY $a[[A OF H]]
    GOBACK.
)");
  const auto chain = program.Flow().DefinitionsReaching(program.Program().NodeAt("a"));
  ASSERT_EQ(chain.links.size(), 1U);
  const auto feeds = program.Flow().FeedsOf(chain.links[0].definition);
  ASSERT_EQ(feeds.size(), 1U);
  EXPECT_EQ(feeds[0].place.first, (workbench::flow::ByteInterval{0, 1}));
}

TEST(ProgramFlowChains, AGroupThatIsMovedFeedsByteByByte) {
  ChainProgram program("01 G.\n   05 A PIC X(2).\n   05 B PIC X(3).\n01 H.\n   05 C PIC X(2).\n   05 D PIC X(9).\n",
                       R"(MAIN-PARA.
    MOVE G TO $target[[H]]
    DISPLAY D
    GOBACK.
)");
  const auto target = program.Program().NodeAt("target");
  const auto feeds = program.Flow().FeedsOf(target, workbench::flow::ByteSet({2, 11}));
  ASSERT_EQ(feeds.size(), 1U);
  EXPECT_EQ(feeds[0].place.first, (workbench::flow::ByteInterval{2, 5}));
  EXPECT_THAT(program.Flow().FeedsOf(target, workbench::flow::ByteSet({6, 11})), IsEmpty());
}

TEST(ProgramFlowChains, ACallByReferenceMayChangeItsArgument) {
  ChainProgram program("01 A PIC 9.\n01 B PIC 9.\n", R"(MAIN-PARA.
    MOVE 1 TO A B
    CALL 'PBX01' USING A BY CONTENT B
    DISPLAY $a[[A]] $b[[B]]
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("a"), ElementsAre("9 A constant move", "10 A call perhaps"));
  EXPECT_THAT(program.Reaching("b"), ElementsAre("9 B constant move"));
}

TEST(ProgramFlowChains, AJumpToANameThatIsNotThereIsAGapWhereverItMayLeadBackTo) {
  ChainProgram program("01 A PIC 9.\n01 X PIC 9.\n", R"(MAIN-PARA.
    MOVE 1 TO A.
    IF X = 1
        GO TO MISSING-PARA.
    MOVE 2 TO A.
LAST-PARA.
    DISPLAY $a[[A]]
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("a"), ElementsAre("12 A constant move"));
  EXPECT_THAT(program.Gaps("a"), ElementsAre("11 It leads to a name that is not declared; what A gets there is not "
                                             "known."));
}

TEST(ProgramFlowChains, OccurrencesOfATableAreOnePieceUntilOneIsNamed) {
  ChainProgram program("01 T.\n   05 ROW-OF OCCURS 200.\n      10 F PIC 9.\n      10 G PIC 9.\n01 I PIC 999.\n",
                       R"(MAIN-PARA.
    MOVE 1 TO F (I)
    MOVE 2 TO G (I)
    MOVE 3 TO F (7)
    DISPLAY $any[[F (I)]]
    DISPLAY $seventh[[F (7)]]
    DISPLAY $eighth[[F (8)]]
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("any"),
              ElementsAre("5 T initial value", "12 F constant move perhaps", "14 F constant move"));
  EXPECT_THAT(program.Reaching("seventh"), ElementsAre("14 F constant move"));
  EXPECT_THAT(program.Reaching("eighth"), ElementsAre("5 T initial value", "12 F constant move perhaps"));
}

TEST(ProgramFlowChains, AnUnknownStatementOnTheWayIsAGap) {
  ChainProgram program("01 A PIC 9.\n01 B PIC 9.\n", R"(MAIN-PARA.
    MOVE 1 TO A.
    FROBNICATE THE BITS.
    DISPLAY $a[[A]]
    MOVE 2 TO A
    DISPLAY $behind[[A]]
    GOBACK.
)");
  EXPECT_THAT(program.Gaps("a"), Contains(::testing::StartsWith("10 The statement is not understood")));
  EXPECT_THAT(program.Gaps("behind"), IsEmpty());
}

TEST(ProgramFlowChains, TheSameQuestionTwiceHasTheSameAnswer) {
  ChainProgram program("01 A PIC 9.\n", "MAIN-PARA.\n    MOVE 1 TO A\n    DISPLAY $a[[A]]\n    GOBACK.\n");
  const auto node = program.Program().NodeAt("a");
  EXPECT_EQ(program.Flow().DefinitionsReaching(node).links, program.Flow().DefinitionsReaching(node).links);
  EXPECT_GT(program.Flow().Bytes(), 0U);
}

}  // namespace
}  // namespace qmrules::test
