// Under which conditions COBOL statements run.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "workbench/flow/controllingconditions.h"
#include "workbench/flow/flowprogram.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using workbench::flow::ConditionFinder;
using workbench::flow::ControllingCondition;
using workbench::flow::NodeId;
using workbench::flow::RangeBodies;
using workbench::flow::StatementConditions;
using workbench::flow::WayIn;

constexpr std::string_view kData = R"(01  A PIC 9.
01  B PIC 9.
01  C PIC 9.
01  N PIC 99.
01  T.
    05  E PIC 9 OCCURS 9 INDEXED BY I.
)";

class CobolConditions {
 public:
  explicit CobolConditions(std::string_view procedures) : CobolConditions(FlowProgram::Of(kData, procedures)) {}
  explicit CobolConditions(FlowProgram program)
      : program_(std::move(program)), bodies_(program_.Flow()), finder_(bodies_) {}

  // "A = 1", "not A = 1", "A = 1 in PERFORM CHECK" for what that PERFORM has gone through and "A = 1, ended" for a
  // loop, in their order.
  std::vector<std::string> Always(std::string_view mark) {
    const StatementConditions found = finder_.ConditionsOf(StatementAt(mark));
    if (!found.runs) return {"never runs"};
    return Told(found.always);
  }
  // "from PERFORM CHECK: A = 1; B = 2" for each way in, "from the beginning: " for the program's.
  std::vector<std::string> WaysIn(std::string_view mark) {
    std::vector<std::string> ways;
    for (const WayIn& way : finder_.ConditionsOf(StatementAt(mark)).waysIn) {
      std::string text = "from " + (way.perform == 0 ? "the beginning" : Statement(way.perform)) + ":";
      for (const std::string& condition : Told(way.conditions)) text += " " + condition + ";";
      ways.push_back(std::move(text));
    }
    return ways;
  }

 private:
  // A branch begins where its first statement does.
  NodeId StatementAt(std::string_view mark) const {
    NodeId node = program_.NodeAt(mark);
    const NodeId last = program_.Model().Nodes()[node].last;
    while (program_.Flow().PointOf(node) == workbench::flow::kNoPoint && node < last) ++node;
    return node;
  }

  std::string Name(NodeId node) const {
    const auto& model = program_.Model();
    return std::string(model.Text(model.Nodes()[node].name));
  }

  // With the name of its first operand.
  std::string Statement(NodeId node) const { return Name(node) + " " + Name(node + 1); }

  std::vector<std::string> Told(const std::vector<ControllingCondition>& conditions) const {
    std::vector<std::string> told;
    for (const ControllingCondition& each : conditions) {
      std::string text = (each.sense ? "" : "not ") + Name(each.condition);
      if (each.within != 0) text += " in " + Statement(each.within);
      if (each.ended) text += ", ended";
      told.push_back(std::move(text));
    }
    return told;
  }

  FlowProgram program_;
  RangeBodies bodies_;
  ConditionFinder finder_;
};

TEST(ConditionsOfCobol, NestedIfsAreToldFromTheOutermostInwards) {
  CobolConditions found(R"(MAIN-PARA.
    $before^MOVE 0 TO N
    IF A = 1
        IF B = 2
            $both^MOVE 1 TO N
        ELSE
            $else^MOVE 2 TO N
        END-IF
        $inner^MOVE 3 TO N
    END-IF.
    $behind^MOVE 4 TO N.
    GOBACK.
)");
  EXPECT_THAT(found.Always("before"), IsEmpty());
  EXPECT_THAT(found.Always("both"), ElementsAre("A = 1", "B = 2"));
  EXPECT_THAT(found.Always("else"), ElementsAre("A = 1", "not B = 2"));
  EXPECT_THAT(found.Always("inner"), ElementsAre("A = 1"));
  EXPECT_THAT(found.Always("behind"), IsEmpty());
}

TEST(ConditionsOfCobol, AnEarlyExitAndThePerformsOfAParagraphAreToldApart) {
  CobolConditions found(R"(MAIN-PARA.
    IF A = 0
        GO TO DONE.
    IF B = 1
        PERFORM SHOW
        PERFORM NOTE.
    IF C = 1
        PERFORM SHOW.
DONE.
    $end^GOBACK.
SHOW.
    $show^DISPLAY A.
NOTE.
    $note^DISPLAY B.
)");
  EXPECT_THAT(found.Always("note"), ElementsAre("not A = 0", "B = 1"));
  EXPECT_THAT(found.Always("show"), ElementsAre("not A = 0"));
  EXPECT_THAT(found.WaysIn("show"), ElementsAre("from PERFORM SHOW: B = 1;", "from PERFORM SHOW: C = 1;"));
  EXPECT_THAT(found.Always("end"), IsEmpty());
}

TEST(ConditionsOfCobol, AConditionIsAskedForWithoutItself) {
  CobolConditions found(R"(MAIN-PARA.
    IF A = 1
        PERFORM UNTIL $loop[[B > 5]]
            ADD 1 TO B
        END-PERFORM
    END-IF.
    GOBACK.
)");
  EXPECT_THAT(found.Always("loop"), ElementsAre("A = 1"));
}

TEST(ConditionsOfCobol, OfAnEvaluateAreAllThatWereTriedBefore) {
  CobolConditions found(R"(MAIN-PARA.
    EVALUATE A
        WHEN 1
            $one^MOVE 1 TO N
        WHEN 2
        WHEN 3
            $group^MOVE 2 TO N
        WHEN OTHER
            $other^MOVE 3 TO N
    END-EVALUATE.
    $behind^MOVE 4 TO N.
    GOBACK.
)");
  EXPECT_THAT(found.Always("one"), ElementsAre("A = 1"));
  EXPECT_THAT(found.Always("group"), ElementsAre("not A = 1", "A = 2 OR A = 3"));
  EXPECT_THAT(found.Always("other"), ElementsAre("not A = 1", "not A = 2 OR A = 3"));
  EXPECT_THAT(found.Always("behind"), IsEmpty());
}

TEST(ConditionsOfCobol, ALoopRunsWhileItsConditionDoesNotHold) {
  CobolConditions found(R"(MAIN-PARA.
    PERFORM UNTIL A = 1
        $inside^ADD 1 TO N
    END-PERFORM.
    $behind^MOVE 4 TO N.
    GOBACK.
)");
  EXPECT_THAT(found.Always("inside"), ElementsAre("not A = 1"));
  EXPECT_THAT(found.Always("behind"), ElementsAre("A = 1, ended"));
}

TEST(ConditionsOfCobol, TheFirstRoundOfALoopThatIsTestedAfterwardsHasNoCondition) {
  CobolConditions found(R"(MAIN-PARA.
    PERFORM WITH TEST AFTER UNTIL A = 1
        $inside^ADD 1 TO N
    END-PERFORM.
    $behind^MOVE 4 TO N.
    GOBACK.
)");
  EXPECT_THAT(found.Always("inside"), IsEmpty());
  EXPECT_THAT(found.Always("behind"), ElementsAre("A = 1, ended"));
}

TEST(ConditionsOfCobol, BehindALoopThatIsLeftHalfWayItsConditionIsOpen) {
  CobolConditions found(R"(MAIN-PARA.
    PERFORM UNTIL A = 1
        IF B = 2
            EXIT PERFORM
        END-IF
        $inside^ADD 1 TO N
    END-PERFORM.
    $behind^MOVE 4 TO N.
    GOBACK.
)");
  EXPECT_THAT(found.Always("inside"), ElementsAre("not A = 1", "not B = 2"));
  EXPECT_THAT(found.Always("behind"), IsEmpty());
}

TEST(ConditionsOfCobol, CountersOfOneLoopInAnotherBothControlTheBody) {
  CobolConditions found(R"(MAIN-PARA.
    PERFORM VARYING A FROM 1 BY 1 UNTIL A > 3
              AFTER B FROM 1 BY 1 UNTIL B > 5
        $inside^ADD 1 TO N
    END-PERFORM.
    $behind^MOVE 4 TO N.
    GOBACK.
)");
  EXPECT_THAT(found.Always("inside"), ElementsAre("not A > 3", "not B > 5"));
  EXPECT_THAT(found.Always("behind"), ElementsAre("A > 3, ended"));
}

TEST(ConditionsOfCobol, AnEarlyExitByGoToControlsTheRest) {
  CobolConditions found(R"(MAIN-PARA.
    PERFORM CHECK THRU CHECK-END.
    $returned^MOVE 5 TO N.
    GOBACK.
CHECK.
    IF A = 1
        GO TO CHECK-END.
    $rest^MOVE 1 TO N.
    IF B = 2
        MOVE 2 TO N
        GO TO CHECK-END
    END-IF.
    $more^MOVE 3 TO N.
CHECK-END.
    $end^EXIT.
)");
  EXPECT_THAT(found.Always("rest"), ElementsAre("not A = 1"));
  EXPECT_THAT(found.Always("more"), ElementsAre("not A = 1", "not B = 2"));
  EXPECT_THAT(found.Always("end"), IsEmpty());
  EXPECT_THAT(found.Always("returned"), IsEmpty());
}

TEST(ConditionsOfCobol, AGuardThatEndsTheProgramControlsWhatRunsAfterItsReturn) {
  CobolConditions found(R"(MAIN-PARA.
    PERFORM OPENING.
    $behind^MOVE 1 TO N.
    PERFORM WORKING.
    GOBACK.
OPENING.
    PERFORM CHECK.
    IF B = 2
        MOVE 3 TO N.
CHECK.
    IF A = 1
        $stop^STOP RUN.
WORKING.
    $work^MOVE 2 TO N.
)");
  EXPECT_THAT(found.Always("stop"), ElementsAre("A = 1"));
  EXPECT_THAT(found.Always("behind"), ElementsAre("not A = 1 in PERFORM OPENING"));
  EXPECT_THAT(found.Always("work"), ElementsAre("not A = 1 in PERFORM OPENING"));
}

TEST(ConditionsOfCobol, AGuardThatIsPerformedOnEveryBranchControlsWhatIsBehind) {
  CobolConditions found(R"(MAIN-PARA.
    IF B = 2
        PERFORM CHECK
    ELSE
        MOVE 1 TO N
        PERFORM CHECK
    END-IF.
    $behind^MOVE 1 TO N.
    IF C = 1
        PERFORM OTHER-CHECK
    END-IF.
    $last^MOVE 2 TO N.
    GOBACK.
CHECK.
    IF A = 1
        STOP RUN.
OTHER-CHECK.
    IF A = 3
        STOP RUN.
)");
  EXPECT_THAT(found.Always("behind"), ElementsAre("not A = 1 in PERFORM CHECK"));
  // Not the other one, which is performed on one branch only.
  EXPECT_THAT(found.Always("last"), ElementsAre("not A = 1 in PERFORM CHECK"));
}

TEST(ConditionsOfCobol, ALoopInARangeThatHasReturnedIsNoGuard) {
  CobolConditions found(R"(MAIN-PARA.
    PERFORM READING.
    $behind^MOVE 1 TO N.
    GOBACK.
READING.
    PERFORM UNTIL A = 1
        ADD 1 TO A
    END-PERFORM.
)");
  EXPECT_THAT(found.Always("behind"), ElementsAre("A = 1 in PERFORM READING, ended"));
}

TEST(ConditionsOfCobol, AConditionThatIsTestedAgainInBetweenCountsAsItCameOutLast) {
  CobolConditions found(R"(MAIN-PARA.
    MOVE 0 TO N.
TRYING.
    IF A = 1
        $yes^MOVE 1 TO N
        PERFORM CHANGING
        $still^MOVE 2 TO N
        PERFORM TRYING-END
        $again^MOVE 3 TO N
        GOBACK
    END-IF.
CHANGING.
    MOVE 2 TO A.
TRYING-END.
    IF C = 1
        PERFORM TRYING.
)");
  EXPECT_THAT(found.Always("yes"), ElementsAre("A = 1"));
  EXPECT_THAT(found.Always("still"), ElementsAre("A = 1"));
  // TRYING-END performs TRYING, which returns when A is not 1 any more.
  EXPECT_THAT(found.Always("again"), IsEmpty());
}

TEST(ConditionsOfCobol, NextSentenceLeavesAllIfsOfItsSentence) {
  CobolConditions found(R"(MAIN-PARA.
    IF A = 1
        IF B = 2
            NEXT SENTENCE
        ELSE
            $else^MOVE 1 TO N
        END-IF
        $inner^MOVE 2 TO N.
    $behind^MOVE 3 TO N.
    GOBACK.
)");
  EXPECT_THAT(found.Always("else"), ElementsAre("A = 1", "not B = 2"));
  EXPECT_THAT(found.Always("inner"), ElementsAre("A = 1", "not B = 2"));
  EXPECT_THAT(found.Always("behind"), IsEmpty());
}

TEST(ConditionsOfCobol, WhatOnlyOneOfSeveralCallsImpliesIsKeptApart) {
  CobolConditions found(R"(MAIN-PARA.
    IF C = 1
        IF A = 1
            PERFORM SHARED
        END-IF
        IF A = 2
            PERFORM SHARED THRU SHARED
        END-IF
        PERFORM SHARED-TWICE
    END-IF.
    GOBACK.
SHARED.
    IF N = 0
        $shared^MOVE 1 TO N.
SHARED-TWICE.
    $alone^MOVE 2 TO B.
)");
  EXPECT_THAT(found.Always("shared"), ElementsAre("C = 1", "N = 0"));
  EXPECT_THAT(found.WaysIn("shared"), ElementsAre("from PERFORM SHARED: A = 1;", "from PERFORM SHARED: A = 2;"));
  EXPECT_THAT(found.Always("alone"), ElementsAre("C = 1"));
  EXPECT_THAT(found.WaysIn("alone"), IsEmpty());
}

TEST(ConditionsOfCobol, AParagraphThatIsAlsoFallenIntoHasTheBeginningAsAWay) {
  CobolConditions found(R"(MAIN-PARA.
    IF A = 1
        PERFORM SHARED.
    IF B = 2
        GOBACK.
SHARED.
    $shared^MOVE 1 TO N.
)");
  EXPECT_THAT(found.Always("shared"), IsEmpty());
  EXPECT_THAT(found.WaysIn("shared"), ElementsAre("from the beginning: not B = 2;", "from PERFORM SHARED: A = 1;"));
}

TEST(ConditionsOfCobol, PerformsUnderTheSameConditionsAreNotToldApart) {
  CobolConditions found(R"(MAIN-PARA.
    IF A = 1
        PERFORM SHARED
        PERFORM SHARED
    END-IF.
    GOBACK.
SHARED.
    $shared^MOVE 1 TO N.
)");
  EXPECT_THAT(found.Always("shared"), ElementsAre("A = 1"));
  EXPECT_THAT(found.WaysIn("shared"), IsEmpty());
}

TEST(ConditionsOfCobol, ConditionsReachThroughSeveralCalls) {
  CobolConditions found(R"(MAIN-PARA.
    IF A = 1
        PERFORM OUTER.
    GOBACK.
OUTER.
    IF B = 2
        PERFORM INNER.
INNER.
    IF C = 1
        $inner^MOVE 1 TO N.
)");
  EXPECT_THAT(found.Always("inner"), ElementsAre("A = 1", "B = 2", "C = 1"));
}

TEST(ConditionsOfCobol, ARangeThatPerformsItselfKeepsTheOuterConditions) {
  CobolConditions found(R"(MAIN-PARA.
    IF A = 1
        PERFORM AROUND.
    GOBACK.
AROUND.
    IF B = 2
        $again^MOVE 1 TO N
        PERFORM AROUND
        $back^MOVE 3 TO N
    END-IF.
    $end^MOVE 2 TO N.
)");
  EXPECT_THAT(found.Always("again"), ElementsAre("A = 1", "B = 2"));
  // The innermost AROUND has come to its end because B is not 2.
  EXPECT_THAT(found.Always("back"), ElementsAre("A = 1", "not B = 2 in PERFORM AROUND"));
  EXPECT_THAT(found.Always("end"), ElementsAre("A = 1", "not B = 2"));
}

TEST(ConditionsOfCobol, OfASearchAreThoseOfTheRoundThatFinds) {
  CobolConditions found(R"(MAIN-PARA.
    SEARCH E
        AT END
            $missing^MOVE 1 TO N
        WHEN E (I) = 1
            $first^MOVE 2 TO N
        WHEN E (I) = 2
            $second^MOVE 3 TO N
    END-SEARCH.
    $behind^MOVE 4 TO N.
    GOBACK.
)");
  // Each of them ends the counting.
  EXPECT_THAT(found.Always("missing"), ElementsAre("AT END, ended"));
  EXPECT_THAT(found.Always("first"), ElementsAre("not AT END", "E(I) = 1, ended"));
  EXPECT_THAT(found.Always("second"), ElementsAre("not AT END", "not E(I) = 1", "E(I) = 2, ended"));
  EXPECT_THAT(found.Always("behind"), IsEmpty());
}

TEST(ConditionsOfCobol, PhrasesAreConditionsOfTheirBlocks) {
  CobolConditions found(R"(MAIN-PARA.
    ADD 1 TO N
        ON SIZE ERROR
            $failed^MOVE 1 TO A
        NOT ON SIZE ERROR
            $right^MOVE 2 TO A
    END-ADD.
    $behind^MOVE 4 TO A.
    GOBACK.
)");
  EXPECT_THAT(found.Always("failed"), testing::SizeIs(1));
  EXPECT_THAT(found.Always("right"), testing::SizeIs(1));
  EXPECT_THAT(found.Always("right"), ElementsAre("not " + found.Always("failed").front()));
  EXPECT_THAT(found.Always("behind"), IsEmpty());
}

TEST(ConditionsOfCobol, AReadThatGoesToItsEndControlsTheRestOfALoop) {
  CobolConditions found(FlowProgram(R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. PROBE.
       ENVIRONMENT DIVISION.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT F ASSIGN TO "F".
       DATA DIVISION.
       FILE SECTION.
       FD  F.
       01  R PIC X.
       WORKING-STORAGE SECTION.
       01  N PIC 9.
       PROCEDURE DIVISION.
       MAIN-PARA.
           READ F
               AT END
                   $atend^GO TO FINISH
           END-READ.
           $record^ADD 1 TO N.
           GO TO MAIN-PARA.
       FINISH.
           $finish^GOBACK.
)"));
  EXPECT_THAT(found.Always("atend"), ElementsAre("AT END, ended"));
  EXPECT_THAT(found.Always("record"), ElementsAre("not AT END"));
  EXPECT_THAT(found.Always("finish"), ElementsAre("AT END, ended"));
}

TEST(ConditionsOfCobol, ACheckOfTheSqlCodeControlsWhatIsBehindIt) {
  CobolConditions found(R"(MAIN-PARA.
    EXEC SQL SELECT X INTO :N FROM Y END-EXEC.
    IF SQLCODE NOT = 0
        $failed^PERFORM FAILING
    END-IF.
    $found^MOVE 1 TO A.
    GOBACK.
FAILING.
    DISPLAY "?".
    STOP RUN.
)");
  EXPECT_THAT(found.Always("failed"), ElementsAre("SQLCODE NOT = 0"));
  // FAILING never returns.
  EXPECT_THAT(found.Always("found"), ElementsAre("not SQLCODE NOT = 0"));
}

TEST(ConditionsOfCobol, AStatementThatIsNeverReachedHasNone) {
  CobolConditions found(R"(MAIN-PARA.
    IF A = 1
        GOBACK
    ELSE
        STOP RUN
    END-IF.
    $dead^MOVE 1 TO N.
UNUSED.
    IF B = 2
        $unused^MOVE 1 TO N.
)");
  EXPECT_THAT(found.Always("dead"), ElementsAre("never runs"));
  EXPECT_THAT(found.Always("unused"), ElementsAre("never runs"));
}

TEST(ConditionsOfCobol, JumpingOutOfAPerformedRangeKeepsWhatLedThere) {
  CobolConditions found(R"(MAIN-PARA.
    PERFORM WORK.
    GOBACK.
WORK.
    IF A = 1
        GO TO FAILED.
    MOVE 1 TO N.
FAILED-NOT.
    EXIT.
FAILED.
    $failed^MOVE 2 TO N.
    STOP RUN.
)");
  EXPECT_THAT(found.Always("failed"), ElementsAre("A = 1"));
}

}  // namespace
}  // namespace qmrules::test
