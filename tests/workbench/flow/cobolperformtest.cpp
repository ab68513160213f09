// The flow of PERFORM and of jumps.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbench/flow/flowprogram.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view kLoopData = "01  A PIC 9.\n01  B PIC 9.\n01  C PIC 9.\n01  D PIC 9.\n";

TEST(PerformFlow, GoesOnBehindItsCallOnly) {
  const auto program = FlowProgram::Of(kLoopData, R"(MAIN-PARA.
    PERFORM SUB-PARA.
    PERFORM SUB-PARA THRU LAST-PARA
    PERFORM LAST-PARA THRU SUB-PARA
    PERFORM SUB-PARA.
    GOBACK.
SUB-PARA.
    CONTINUE.
LAST-PARA.
    EXIT.
)");
  EXPECT_EQ(program.Listing(), R"(entry > start MAIN-PARA
leave
start MAIN-PARA > 11 PERFORM
11 PERFORM > 11 call SUB-PARA
11 call SUB-PARA > 12 PERFORM
12 PERFORM > 12 call SUB-PARA THRU LAST-PARA
12 call SUB-PARA THRU LAST-PARA > 13 PERFORM
13 PERFORM > 13 call LAST-PARA THRU SUB-PARA
13 call LAST-PARA THRU SUB-PARA > 14 PERFORM
14 PERFORM > 14 call SUB-PARA
14 call SUB-PARA > 15 leave
end MAIN-PARA > start SUB-PARA
15 leave
start SUB-PARA > 17 CONTINUE
end SUB-PARA > start LAST-PARA
17 CONTINUE > end SUB-PARA
start LAST-PARA > 19 EXIT
end LAST-PARA > leave
19 EXIT > end LAST-PARA
)");
  EXPECT_EQ(program.Flow().Ranges().size(), 4U);
}

TEST(PerformFlow, TimesCanBeNoneUnlessANumberTellsOtherwise) {
  const auto program = FlowProgram::Of(kLoopData, R"(MAIN-PARA.
    PERFORM A TIMES MOVE 1 TO B END-PERFORM
    PERFORM 3 TIMES MOVE 2 TO B END-PERFORM
    PERFORM SUB-PARA 0 TIMES
    GOBACK.
SUB-PARA.
    CONTINUE.
)");
  EXPECT_EQ(program.Listing(), R"(entry > start MAIN-PARA
leave
start MAIN-PARA > 11 PERFORM
11 PERFORM > 11 chance
11 chance > 11 MOVE, 12 PERFORM
11 MOVE > loop 11 chance
12 PERFORM > 12 MOVE
12 chance > loop 12 MOVE, 13 PERFORM
12 MOVE > 12 chance
13 PERFORM > 13 chance
13 chance > 13 call SUB-PARA, 14 leave
13 call SUB-PARA > loop 13 chance
end MAIN-PARA > start SUB-PARA
14 leave
start SUB-PARA > 16 CONTINUE
end SUB-PARA > leave
16 CONTINUE > end SUB-PARA
)");
}

TEST(PerformFlow, UntilAsksBeforeOrBehind) {
  const auto program = FlowProgram::Of(kLoopData, R"(MAIN-PARA.
    PERFORM SUB-PARA UNTIL A = 1
    PERFORM SUB-PARA TEST AFTER UNTIL A = 2
    PERFORM UNTIL A = 3
        MOVE 1 TO B
    END-PERFORM
    PERFORM TEST AFTER UNTIL A = 4
        CONTINUE
    END-PERFORM
    GOBACK.
SUB-PARA.
    CONTINUE.
)");
  EXPECT_EQ(program.Listing(), R"(entry > start MAIN-PARA
leave
start MAIN-PARA > 11 PERFORM
11 PERFORM > 11 A = 1
11 call SUB-PARA > loop 11 A = 1
11 A = 1 > 11 yes, 11 no
11 yes > 12 PERFORM
11 no > 11 call SUB-PARA
12 PERFORM > 12 call SUB-PARA
12 call SUB-PARA > 12 A = 2
12 A = 2 > 12 yes, 12 no
12 yes > 13 PERFORM
12 no > loop 12 call SUB-PARA
13 PERFORM > 13 A = 3
13 A = 3 > 13 yes, 13 no
13 yes > 16 PERFORM
13 no > 14 MOVE
14 MOVE > loop 13 A = 3
16 PERFORM > 17 CONTINUE
16 A = 4 > 16 yes, 16 no
16 yes > 19 leave
16 no > loop 17 CONTINUE
17 CONTINUE > 16 A = 4
end MAIN-PARA > start SUB-PARA
19 leave
start SUB-PARA > 21 CONTINUE
end SUB-PARA > leave
21 CONTINUE > end SUB-PARA
)");
}

TEST(PerformFlow, VaryingSetsInnerCountersAgain) {
  const auto program = FlowProgram::Of(kLoopData, R"(MAIN-PARA.
    PERFORM VARYING A FROM 1 BY 1 UNTIL A > 1
              AFTER B FROM A BY 1
              UNTIL B > 2
        CONTINUE
    END-PERFORM
    GOBACK.
)");
  EXPECT_EQ(program.Listing(), R"(entry > start MAIN-PARA
leave
start MAIN-PARA > 11 PERFORM
11 PERFORM > 11 begin A
11 begin A > 12 begin B
11 step A > loop 12 begin B
11 A > 1 > 11 yes, 11 no
11 yes > 16 leave
11 no > 13 B > 2
12 begin B > 11 A > 1
12 step B > loop 13 B > 2
13 B > 2 > 13 yes, 13 no
13 yes > 11 step A
13 no > 14 CONTINUE
14 CONTINUE > 12 step B
end MAIN-PARA > leave
16 leave
)");
}

TEST(PerformFlow, VaryingWithTheTestBehind) {
  const auto program = FlowProgram::Of(kLoopData, R"(MAIN-PARA.
    PERFORM SUB-PARA TEST AFTER VARYING A FROM 1 BY 1 UNTIL A > 1
              AFTER B FROM A BY 1
              UNTIL B > 2
    GOBACK.
SUB-PARA.
    CONTINUE.
)");
  EXPECT_EQ(program.Listing(), R"(entry > start MAIN-PARA
leave
start MAIN-PARA > 11 PERFORM
11 PERFORM > 11 begin A
11 call SUB-PARA > 13 B > 2
11 begin A > 12 begin B
11 step A > loop 12 begin B
11 A > 1 > 11 yes, 11 no
11 yes > 14 leave
11 no > 11 step A
12 begin B > 11 call SUB-PARA
12 step B > loop 11 call SUB-PARA
13 B > 2 > 13 yes, 13 no
13 yes > 11 A > 1
13 no > 12 step B
end MAIN-PARA > start SUB-PARA
14 leave
start SUB-PARA > 16 CONTINUE
end SUB-PARA > leave
16 CONTINUE > end SUB-PARA
)");
}

TEST(PerformFlow, TheThirdCounterIsSetAtOnceOrWhenItIsNeeded) {
  const auto program = FlowProgram::Of(kLoopData, R"(MAIN-PARA.
    PERFORM VARYING A FROM 1 BY 1 UNTIL A > 1
              AFTER B FROM A BY 1 UNTIL B > 2
              AFTER C FROM B BY 1 UNTIL C > 3
        CONTINUE
    END-PERFORM
    GOBACK.
)");
  EXPECT_THAT(program.AfterNamed("11 begin A"), ElementsAre("11 chance"));
  EXPECT_THAT(program.AfterNamed("11 chance"), ElementsAre("13 begin C", "12 begin B"));
}

TEST(PerformFlow, ExitPerformLeavesTheInnermostLoop) {
  const auto program = FlowProgram::Of(kLoopData, R"(MAIN-PARA.
    PERFORM UNTIL EXIT
        PERFORM VARYING A FROM 1 BY 1 UNTIL A > 5
            IF B = 1 $inner^EXIT PERFORM END-IF
            IF B = 2 $cycle^EXIT PERFORM CYCLE END-IF
        END-PERFORM
        IF C = 1 $again^EXIT PERFORM CYCLE END-IF
        IF C = 2 $outer^EXIT PERFORM END-IF
    END-PERFORM
    PERFORM
        IF C = 3 $once^EXIT PERFORM CYCLE END-IF
        MOVE 1 TO D
    END-PERFORM
    GOBACK.
)");
  EXPECT_THAT(program.After("inner"), ElementsAre("jump 16 IF"));
  EXPECT_THAT(program.After("cycle"), ElementsAre("jump 12 step A"));
  EXPECT_THAT(program.After("again"), ElementsAre("jump 11 PERFORM"));
  EXPECT_THAT(program.After("outer"), ElementsAre("jump 19 PERFORM"));
  EXPECT_THAT(program.After("once"), ElementsAre("jump 23 leave"));
}

TEST(PerformFlow, ExitParagraphAndSectionLeadToTheirEnds) {
  const auto program = FlowProgram::Of(kLoopData, R"(PART SECTION.
MAIN-PARA.
    IF A = 1 $paragraph^EXIT PARAGRAPH END-IF
    IF A = 2 $section^EXIT SECTION END-IF.
LAST-PARA.
    GOBACK.
)");
  EXPECT_THAT(program.After("paragraph"), ElementsAre("jump end MAIN-PARA"));
  EXPECT_THAT(program.After("section"), ElementsAre("jump end PART"));
}

TEST(PerformFlow, ExitSectionBeforeTheFirstHeaderLeadsToIt) {
  const auto program = FlowProgram::Of(kLoopData, R"(MAIN-PARA.
    IF A = 1 $exit^EXIT SECTION END-IF.
NEXT-PARA.
    CONTINUE.
SOME-SECTION SECTION.
SOME-PARA.
    GOBACK.
)");
  EXPECT_THAT(program.After("exit"), ElementsAre("jump start SOME-SECTION"));
}

TEST(PerformFlow, ExitSectionWithoutAnySectionLeadsToTheEnd) {
  const auto program = FlowProgram::Of(kLoopData, R"(MAIN-PARA.
    IF A = 1 $exit^EXIT SECTION END-IF.
NEXT-PARA.
    CONTINUE.
)");
  EXPECT_THAT(program.After("exit"), ElementsAre("jump 13 leave"));
}

TEST(JumpFlow, GoToLeadsToTheStartOnly) {
  const auto program = FlowProgram::Of(kLoopData, R"(MAIN-PARA.
    PERFORM SUB-PARA.
    $go^GO TO LAST-PARA.
SUB-PARA.
    $out^GO TO LAST-PARA.
LAST-PARA.
    GOBACK.
)");
  EXPECT_THAT(program.After("go"), ElementsAre("jump start LAST-PARA"));
  EXPECT_THAT(program.After("out"), ElementsAre("jump start LAST-PARA"));
}

TEST(JumpFlow, GoToDependingFallsThroughWhenOutOfRange) {
  const auto program = FlowProgram::Of(kLoopData, R"(MAIN-PARA.
    $go^GO TO FIRST-PARA SECOND-PARA FIRST-PARA DEPENDING ON A.
    MOVE 1 TO B.
FIRST-PARA.
    CONTINUE.
SECOND-PARA.
    GOBACK.
)");
  EXPECT_THAT(program.After("go"), ElementsAre("11 chance"));
  EXPECT_THAT(program.AfterNamed("11 chance"),
              ElementsAre("jump start FIRST-PARA", "jump start SECOND-PARA", "12 MOVE"));
}

TEST(JumpFlow, AlterAddsTargets) {
  const auto program = FlowProgram::Of(kLoopData, R"(MAIN-PARA.
    ALTER SWITCH-PARA TO PROCEED TO LAST-PARA
    ALTER EMPTY-PARA TO LAST-PARA, SWITCH-PARA TO LAST-PARA.
SWITCH-PARA.
    $switch^GO TO NEXT-PARA.
EMPTY-PARA.
    $empty^GO TO.
NEXT-PARA.
    $other^GO TO NEXT-PARA.
NEVER-PARA.
    $never^GO TO.
LAST-PARA.
    GOBACK.
)");
  EXPECT_THAT(program.After("switch"), ElementsAre("14 chance"));
  EXPECT_THAT(program.AfterNamed("14 chance"), ElementsAre("jump start NEXT-PARA", "jump start LAST-PARA"));
  EXPECT_THAT(program.After("empty"), ElementsAre("jump start LAST-PARA"));
  EXPECT_THAT(program.After("other"), ElementsAre("jump start NEXT-PARA"));
  EXPECT_THAT(program.After("never"), IsEmpty());
  EXPECT_THAT(program.Gaps(), ElementsAre("no alter 20 GO TO"));
}

}  // namespace
}  // namespace qmrules::test
