#include <gmock/gmock.h>

#include "workbench/flow/chainprogram.h"

// Chains within one statement, whose operands are taken one after the other.
namespace qmrules::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

constexpr std::string_view kTable = R"(01  I PIC 9.
01  A PIC 9.
01  S PIC X(9).
01  TT.
    05  T PIC 9 OCCURS 9.
)";

TEST(OperandOrder, ASubscriptOfALaterTargetReadsTheTargetBefore) {
  ChainProgram program(kTable, R"(MAIN-PARA.
    MOVE 1 TO I
    MOVE 3 TO $target[[I]] T ($later[[I]])
    MOVE 4 TO T ($before[[I]]) I
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("later"), ElementsAre("13 I constant move"));
  EXPECT_THAT(program.Uses("target"), ElementsAre("13 I", "14 I"));
  // Not row 14, which comes to its I later.
  EXPECT_THAT(program.Reaching("before"), ElementsAre("13 I constant move"));
  // That T may be any of them is said of T, not of I.
  EXPECT_THAT(program.Gaps("later"), IsEmpty());
}

TEST(OperandOrder, WhatIsMovedIsKnownBeforeAnythingIsMoved) {
  ChainProgram program(kTable, R"(MAIN-PARA.
    MOVE 1 TO I
    MOVE $moved[[I]] TO A T ($subscript[[I]]) I
    COMPUTE I $table[[T (I)]] = $computed[[I]] + 1
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("moved"), ElementsAre("12 I constant move"));
  EXPECT_THAT(program.Reaching("subscript"), ElementsAre("12 I constant move"));
  EXPECT_THAT(program.Reaching("computed"), ElementsAre("13 I move"));
  EXPECT_THAT(program.Feeds("table"), ElementsAre("I"));
}

TEST(OperandOrder, ArithmeticStoresOneResultAfterTheOther) {
  ChainProgram program(kTable, R"(MAIN-PARA.
    MOVE 1 TO I A
    ADD I TO I T ($added[[I]])
    ADD 1 TO $once[[A]] $twice[[A]]
    DIVIDE 17 BY 5 GIVING I REMAINDER T ($rest[[I]])
    COMPUTE I T ($computed[[I]]) = A
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("added"), ElementsAre("13 I computation"));
  EXPECT_THAT(program.Reaching("once"), ElementsAre("12 A constant move"));
  EXPECT_THAT(program.Reaching("twice"), ElementsAre("14 A computation"));
  EXPECT_THAT(program.Reaching("rest"), ElementsAre("15 I computation"));
  EXPECT_THAT(program.Reaching("computed"), ElementsAre("16 I move"));
}

TEST(OperandOrder, WhatIsAddedToSeveralTargetsMayBeLookedAtAgain) {
  ChainProgram program(kTable, R"(MAIN-PARA.
    MOVE 1 TO I A
    ADD $added[[I]] TO I A
    SUBTRACT $taken[[I]] FROM A I
    ADD $given[[I]] A GIVING I A
    MULTIPLY $factor[[I]] BY A
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("added"), ElementsAre("12 I constant move", "13 I computation"));
  // I comes last, and with GIVING the sum is there before it goes anywhere.
  EXPECT_THAT(program.Reaching("taken"), ElementsAre("13 I computation"));
  EXPECT_THAT(program.Reaching("given"), ElementsAre("14 I computation"));
  EXPECT_THAT(program.Reaching("factor"), ElementsAre("15 I computation"));
}

TEST(OperandOrder, AResultThatDoesNotFitMayHaveStayedAsItWas) {
  ChainProgram program(kTable, R"(MAIN-PARA.
    MOVE 1 TO I
    ADD 9 TO I T ($added[[I]])
        ON SIZE ERROR DISPLAY $failed[[I]]
        NOT ON SIZE ERROR DISPLAY $fits[[I]]
    END-ADD
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("added"), ElementsAre("12 I constant move", "13 I computation perhaps"));
  EXPECT_THAT(program.Reaching("failed"), ElementsAre("12 I constant move", "13 I computation perhaps"));
  EXPECT_THAT(program.Reaching("fits"), ElementsAre("13 I computation"));
}

TEST(OperandOrder, UnstringSetAndInitializeGoFromTargetToTarget) {
  ChainProgram program(kTable, R"(MAIN-PARA.
    MOVE 1 TO I
    UNSTRING S DELIMITED BY "," INTO I T ($part[[I]])
    SET I A T ($set[[A]]) TO 5
    INITIALIZE I T ($zero[[I]]) REPLACING NUMERIC BY 7
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("part"), ElementsAre("13 I computation"));
  EXPECT_THAT(program.Reaching("set"), ElementsAre("14 A constant move"));
  EXPECT_THAT(program.Reaching("zero"), ElementsAre("15 I constant move"));
}

TEST(OperandOrder, APointerIsReadBeforeAnythingIsPutTogether) {
  ChainProgram program(kTable, R"(MAIN-PARA.
    MOVE 1 TO I
    STRING "5" DELIMITED BY SIZE INTO S ($offset[[I]]:) POINTER $pointer[[I]]
    GOBACK.
)");
  EXPECT_THAT(program.Reaching("offset"), ElementsAre("12 I constant move"));
  EXPECT_THAT(program.Reaching("pointer"), ElementsAre("12 I constant move"));
}

constexpr std::string_view kReading = R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. PROBE.
       ENVIRONMENT DIVISION.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT F ASSIGN TO 'F'.
       DATA DIVISION.
       FILE SECTION.
       FD  F.
       01  F-REC.
           05  F-NUMBER PIC 9.
       WORKING-STORAGE SECTION.
       01  TT.
           05  T PIC 9 OCCURS 9.
       PROCEDURE DIVISION.
       MAIN-PARA.
           MOVE 1 TO F-NUMBER
)";

TEST(OperandOrder, IntoPutsTheRecordWhereTheRecordItselfTells) {
  ChainProgram program(std::string(kReading) + R"(           READ F INTO T ($into[[F-NUMBER]])
               NOT AT END DISPLAY T (1)
           END-READ
           GOBACK.
)");
  // Not row 17: when there is no record, nothing goes INTO anything.
  EXPECT_THAT(program.Reaching("into"), ElementsAre("18 F-REC input"));
  ChainProgram unasked(std::string(kReading) + R"(           READ F INTO T ($into[[F-NUMBER]])
           GOBACK.
)");
  EXPECT_THAT(unasked.Reaching("into"), ElementsAre("17 F-NUMBER constant move", "18 F-REC input perhaps"));
}

TEST(OperandOrder, WithoutSuchAnOperandAStatementIsOnePoint) {
  const auto program = FlowProgram::Of(kTable, R"(MAIN-PARA.
    $one^MOVE 3 TO I A T (1).
    $two^MOVE 3 TO I A T (I).
    GOBACK.
)");
  EXPECT_THAT(program.After("one"), ElementsAre("13 MOVE"));
  EXPECT_THAT(program.After("two"), ElementsAre("13 MOVE"));
  EXPECT_THAT(program.After(program.PointAt("two") + 1), ElementsAre("14 leave"));
}

}  // namespace
}  // namespace qmrules::test
