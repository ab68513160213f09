// The flow of COBOL programs: labels, branches, and what depends on the outcome of statements.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbench/flow/flowprogram.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view kBranchData = "01  A PIC 9.\n01  B PIC 9.\n";

TEST(CobolFlow, ParagraphsFallThroughToTheNext) {
  const auto program = FlowProgram::Of(kBranchData, R"(MAIN-PARA.
    MOVE 1 TO A.
PART SECTION.
NEXT-PARA.
    MOVE 2 TO A.
)");
  EXPECT_EQ(program.Listing(), R"(entry > start MAIN-PARA
start MAIN-PARA > 9 MOVE
9 MOVE > end MAIN-PARA
end MAIN-PARA > start PART
start PART > start NEXT-PARA
start NEXT-PARA > 12 MOVE
12 MOVE > end NEXT-PARA
end PART > 12 leave
end NEXT-PARA > end PART
12 leave
)");
}

TEST(CobolFlow, BothBranchesOfAnIfComeTogether) {
  const auto program = FlowProgram::Of(kBranchData, R"(MAIN-PARA.
    IF A = 1
        MOVE 1 TO B
    ELSE
        IF A = 2
            GOBACK
        END-IF
    END-IF
    MOVE 3 TO B.
    STOP RUN.
)");
  EXPECT_EQ(program.Listing(), R"(entry > start MAIN-PARA
leave
start MAIN-PARA > 9 IF
9 IF > 9 A = 1
9 A = 1 > 9 yes, 9 no
9 yes > 10 MOVE
9 no > 12 IF
10 MOVE > 16 MOVE
12 IF > 12 A = 2
12 A = 2 > 12 yes, 12 no
12 yes > 13 leave
12 no > 16 MOVE
13 leave
16 MOVE > 17 leave
end MAIN-PARA > leave
17 leave
)");
}

TEST(CobolFlow, WhenGroupsShareTheirStatements) {
  const auto program = FlowProgram::Of(kBranchData, R"(MAIN-PARA.
    EVALUATE A ALSO TRUE
        WHEN 1 ALSO B = 1
        WHEN 2 ALSO ANY
            MOVE 1 TO B
        WHEN ANY ALSO ANY
            MOVE 2 TO B
        WHEN OTHER
            MOVE 3 TO B
    END-EVALUATE
    GOBACK.
)");
  EXPECT_EQ(program.Listing(), R"(entry > start MAIN-PARA
leave
start MAIN-PARA > 9 EVALUATE
9 EVALUATE > 10 A = 1 AND B = 1 OR A = 2
10 A = 1 AND B = 1 OR A = 2 > 10 yes, 10 no
10 yes > 12 MOVE
10 no > 13 ANY
12 MOVE > 18 leave
13 ANY > 13 yes
13 yes > 14 MOVE
13 no > 16 MOVE
14 MOVE > 18 leave
16 MOVE > 18 leave
end MAIN-PARA > leave
18 leave
)");
}

TEST(CobolFlow, EvaluateWithoutOtherGoesOnWhenNothingHolds) {
  const auto program = FlowProgram::Of(kBranchData, R"(MAIN-PARA.
    EVALUATE TRUE
        WHEN A = 1
        WHEN A = 2
            MOVE 1 TO B
        WHEN A = 3
            CONTINUE
    END-EVALUATE
    GOBACK.
)");
  EXPECT_EQ(program.Listing(), R"(entry > start MAIN-PARA
leave
start MAIN-PARA > 9 EVALUATE
9 EVALUATE > 10 A = 1 OR A = 2
10 A = 1 OR A = 2 > 10 yes, 10 no
10 yes > 12 MOVE
10 no > 13 A = 3
12 MOVE > 16 leave
13 A = 3 > 13 yes, 13 no
13 yes > 14 CONTINUE
13 no > 16 leave
14 CONTINUE > 16 leave
end MAIN-PARA > leave
16 leave
)");
}

TEST(CobolFlow, NextSentenceGoesBehindTheFullStop) {
  const auto program = FlowProgram::Of(kBranchData, R"(MAIN-PARA.
    IF A = 1
        IF B = 1
            $next^NEXT SENTENCE
        END-IF
        MOVE 1 TO B
    END-IF
    MOVE 2 TO B.
    MOVE 3 TO B.
    IF A = 1 $last^NEXT SENTENCE ELSE MOVE 4 TO B.
LAST-PARA.
    GOBACK.
)");
  EXPECT_THAT(program.After("next"), ElementsAre("jump 16 MOVE"));
  EXPECT_THAT(program.After("last"), ElementsAre("jump end MAIN-PARA"));
}

TEST(CobolFlow, SizeErrorLeavesTheStatementUncompleted) {
  const auto program = FlowProgram::Of(kBranchData, R"(MAIN-PARA.
    ADD 1 TO A
        ON SIZE ERROR MOVE 1 TO B
        NOT ON SIZE ERROR MOVE 2 TO B
    END-ADD
    SUBTRACT 1 FROM A
        NOT SIZE ERROR MOVE 3 TO B
    END-SUBTRACT
    DIVIDE 2 INTO A
        SIZE ERROR GO TO MAIN-PARA.
    GOBACK.
)");
  EXPECT_EQ(program.Listing(), R"(entry > start MAIN-PARA
leave
start MAIN-PARA > 9 ADD
9 ADD > 10 If size error
9 completed > 11 MOVE
10 If size error > 10 ON SIZE ERROR
10 ON SIZE ERROR > 10 yes, 10 no
10 yes > exception 10 MOVE
10 no > 9 completed
10 MOVE > 13 SUBTRACT
11 MOVE > 13 SUBTRACT
13 SUBTRACT > 14 If size error
13 completed > 14 MOVE
14 If size error > 14 NOT ON SIZE ERROR
14 NOT ON SIZE ERROR > 14 yes, 14 no
14 yes > 13 completed
14 no > 16 DIVIDE
14 MOVE > 16 DIVIDE
16 DIVIDE > 17 If size error
16 completed > 18 leave
17 If size error > 17 ON SIZE ERROR
17 ON SIZE ERROR > 17 yes, 17 no
17 yes > exception 17 GO TO
17 no > 16 completed
17 GO TO > jump start MAIN-PARA
end MAIN-PARA > leave
18 leave
)");
}

TEST(CobolFlow, SearchTriesItsConditionsAgain) {
  const auto program = FlowProgram::Of(R"(01  T.
    05  E PIC 9 OCCURS 5 INDEXED BY I.
01  B PIC 9.
)",
                                       R"(MAIN-PARA.
    SEARCH E
        AT END MOVE 0 TO B
        WHEN E (I) = 1 MOVE 1 TO B
        WHEN E (I) = 2
        WHEN E (I) = 3
            MOVE 2 TO B
    END-SEARCH
    SEARCH ALL E
        WHEN E (I) = 1 MOVE 3 TO B
    END-SEARCH
    GOBACK.
)");
  EXPECT_EQ(program.Listing(), R"(entry > start MAIN-PARA
leave
start MAIN-PARA > 10 SEARCH
10 SEARCH > 11 SEARCH
11 SEARCH > 11 AT END
11 AT END > 11 yes, 11 no
11 yes > 11 MOVE
11 no > 12 E(I) = 1
11 MOVE > 17 SEARCH
12 E(I) = 1 > 12 yes, 12 no
12 yes > 12 MOVE
12 no > 13 E(I) = 2 OR E(I) = 3
12 MOVE > 17 SEARCH
13 E(I) = 2 OR E(I) = 3 > 13 yes, 13 no
13 yes > 15 MOVE
13 no > loop 10 SEARCH
15 MOVE > 17 SEARCH
17 SEARCH > 18 SEARCH
18 SEARCH > 18 chance
18 chance > 18 E(I) = 1, 20 leave
18 E(I) = 1 > 18 yes, 18 no
18 yes > 18 MOVE
18 no > loop 17 SEARCH
18 MOVE > 20 leave
end MAIN-PARA > leave
20 leave
)");
}

TEST(CobolFlow, WhatStandsBehindAnEndIsReachedByNothing) {
  const auto program = FlowProgram::Of(kBranchData, R"(MAIN-PARA.
    GOBACK.
    MOVE 1 TO A.
    STOP 'WAIT'.
    MOVE 2 TO A.
)");
  EXPECT_EQ(program.Listing(), R"(entry > start MAIN-PARA
start MAIN-PARA > 9 leave
9 leave
10 MOVE > 11 STOP
11 STOP > 12 MOVE
12 MOVE > end MAIN-PARA
end MAIN-PARA > 12 leave
12 leave
)");
}

TEST(CobolFlow, ExitProgramOfAProgramThatIsNotCalledGoesOn) {
  const auto program = FlowProgram::Of(kBranchData, "MAIN-PARA.\n    $exit^EXIT PROGRAM.\n    STOP RUN.\n");
  EXPECT_THAT(program.After("exit"), ElementsAre("9 chance"));
  EXPECT_THAT(program.AfterNamed("9 chance"), ElementsAre("9 leave", "10 leave"));
}

TEST(CobolFlow, ExitProgramOfACalledProgramLeaves) {
  const FlowProgram program(R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. PROBE.
       DATA DIVISION.
       LINKAGE SECTION.
       01  A PIC 9.
       PROCEDURE DIVISION USING A.
       MAIN-PARA.
           $exit^EXIT PROGRAM.
           STOP RUN.
)");
  EXPECT_THAT(program.After("exit"), IsEmpty());
  EXPECT_EQ(program.Describe(program.PointAt("exit")), "8 leave");
}

TEST(CobolFlow, EachUnitHasAFlowOfItsOwn) {
  constexpr std::string_view kNested = R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. OUTER.
       PROCEDURE DIVISION.
       MAIN-PARA.
           CALL 'INNER'.
           STOP RUN.
       IDENTIFICATION DIVISION.
       PROGRAM-ID. INNER.
       PROCEDURE DIVISION.
       MAIN-PARA.
           EXIT PROGRAM.
       END PROGRAM INNER.
       END PROGRAM OUTER.
)";
  EXPECT_EQ(FlowProgram(kNested).Listing(), R"(entry > start MAIN-PARA
leave
start MAIN-PARA > 5 CALL
5 CALL > 6 leave
end MAIN-PARA > leave
6 leave
)");
  EXPECT_EQ(FlowProgram(kNested, 1).Listing(), R"(entry > start MAIN-PARA
leave
start MAIN-PARA > 11 leave
end MAIN-PARA > leave
11 leave
)");
}

TEST(CobolFlow, AnEntryIsOneMoreWayIn) {
  const auto program = FlowProgram::Of(kBranchData, R"(MAIN-PARA.
    MOVE 1 TO A.
    ENTRY 'SECOND'.
    GOBACK.
)");
  EXPECT_THAT(program.AfterNamed("entry"), testing::UnorderedElementsAre("start MAIN-PARA", "jump 10 ENTRY"));
  EXPECT_THAT(program.AfterNamed("9 MOVE"), ElementsAre("10 ENTRY"));
}

TEST(CobolFlow, UnknownStatementsAreGaps) {
  const auto program = FlowProgram::Of(kBranchData, R"(MAIN-PARA.
    FROBNICATE A.
    PERFORM NOWHERE.
    GO TO ELSEWHERE.
    GOBACK.
)");
  EXPECT_THAT(program.Gaps(),
              ElementsAre("unknown statement 9 FROBNICATE", "unknown label 10 NOWHERE", "unknown label 11 ELSEWHERE"));
  EXPECT_THAT(program.AfterNamed("10 PERFORM"), ElementsAre("11 GO TO"));
  EXPECT_THAT(program.AfterNamed("11 GO TO"), IsEmpty());
}

// 700 IFs, each in the one before.
TEST(CobolFlow, NestingThatIsTooDeepIsAGap) {
  std::string procedures = "MAIN-PARA.\n";
  for (int depth = 0; depth < 700; ++depth) procedures += "    IF A = 1\n";
  const auto program = FlowProgram::Of(kBranchData, procedures + "    MOVE 1 TO A.\n    GOBACK.\n");
  EXPECT_FALSE(program.Gaps().empty());
  EXPECT_THAT(program.AfterNamed("709 MOVE"), ElementsAre("710 leave"));
}

}  // namespace
}  // namespace qmrules::test
