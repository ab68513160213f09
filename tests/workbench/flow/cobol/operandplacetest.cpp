// Where the operands of statements lie.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbench/flow/cobol/effectsprogram.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view kTableData = R"(01  G.
    05  HEAD PIC X(4).
    05  R OCCURS 3 INDEXED BY IX.
        10  C PIC 9.
        10  E OCCURS 5 PIC X(3).
            88  E-FULL VALUE "YES".
    05  A PIC X(2).
01  ELSEWHERE.
    05  A PIC X(2).
01  I PIC 9(4) COMP.
01  J PIC 9(4) COMP.
)";

// What a DISPLAY of the operand reads, the variables of its subscripts left out.
std::vector<std::string> Read(std::string_view data, std::string_view operand) {
  const std::string text = "MAIN-PARA.\n    $at^DISPLAY " + std::string(operand) + ".\n";
  const auto program = EffectsProgram::Of(data, text);
  std::vector<std::string> lines = program.At("at");
  std::erase_if(lines, [](const std::string& line) { return line.ends_with("aside") && line.starts_with("use I "); });
  std::erase_if(lines,
                [](const std::string& line) { return line.starts_with("use J J") || line.starts_with("use IX"); });
  for (std::string& line : lines) line = line.substr(4, line.rfind(" aside") - 4);
  return lines;
}

TEST(OperandPlaces, ItemsLieAtTheirBytesAndNotAtThoseOfTheSameNameElsewhere) {
  EXPECT_THAT(Read(kTableData, "A OF G"), ElementsAre("A G 52+2"));
  EXPECT_THAT(Read(kTableData, "A OF ELSEWHERE"), ElementsAre("A ELSEWHERE 0+2"));
}

TEST(OperandPlaces, ConstantSubscriptsAreExact) {
  EXPECT_THAT(Read(kTableData, "E (1 1)"), ElementsAre("E G 5+3"));
  EXPECT_THAT(Read(kTableData, "E (2, 3)"), ElementsAre("E G 27+3"));
  EXPECT_THAT(Read(kTableData, "R (3)"), ElementsAre("R G 36+16"));
  EXPECT_THAT(Read(kTableData, "C (2)"), ElementsAre("C G 20+1"));
}

TEST(OperandPlaces, VariableSubscriptsStandForEveryOccurrenceOfTheirDimension) {
  EXPECT_THAT(Read(kTableData, "E (2, J)"), ElementsAre("E G 21+3 5x3"));
  EXPECT_THAT(Read(kTableData, "E (I, 3)"), ElementsAre("E G 11+3 3x16"));
  EXPECT_THAT(Read(kTableData, "E (I, J)"), ElementsAre("E G 5+3 3x16 5x3"));
  EXPECT_THAT(Read(kTableData, "C (IX)"), ElementsAre("C G 4+1 3x16"));
}

TEST(OperandPlaces, AnExpressionIsOneSubscript) {
  EXPECT_THAT(Read(kTableData, "E (I + 1, 3)"), ElementsAre("E G 11+3 3x16"));
  EXPECT_THAT(Read(kTableData, "E (3 IX - 1)"), ElementsAre("E G 37+3 5x3"));
  EXPECT_THAT(Read(kTableData, "C (1 + 1)"), ElementsAre("C G 4+1 3x16"));
  EXPECT_THAT(Read(kTableData, "E (I OF J, 2)"), ElementsAre("E G 8+3 3x16"));
}

TEST(OperandPlaces, ASubscriptBeyondTheTableStaysInIt) {
  EXPECT_THAT(Read(kTableData, "C (4)"), ElementsAre("C G 4+1 3x16"));
  EXPECT_THAT(Read(kTableData, "C (0)"), ElementsAre("C G 4+1 3x16"));
  EXPECT_THAT(Read(kTableData, "C (99999999999)"), ElementsAre("C G 4+1 3x16"));
}

TEST(OperandPlaces, VariableSubscriptsAreGaps) {
  const auto program = EffectsProgram::Of(kTableData, R"(MAIN-PARA.
    $variable^DISPLAY C (I).
    $constant^DISPLAY C (2).
    $beyond^DISPLAY C (4).
)");
  EXPECT_THAT(program.GapsAt("variable"), ElementsAre("variable subscript C"));
  EXPECT_THAT(program.GapsAt("constant"), IsEmpty());
  EXPECT_THAT(program.GapsAt("beyond"), ElementsAre("variable subscript C"));
}

TEST(OperandPlaces, AllTakesEveryOccurrence) {
  const auto program = EffectsProgram::Of(kTableData, R"(MAIN-PARA.
    $at^COMPUTE I = FUNCTION SUM (C (ALL)).
)");
  EXPECT_THAT(program.At("at"), ElementsAre("use C G 4+1 3x16", "define I I 0+2 computation"));
  EXPECT_THAT(program.GapsAt("at"), IsEmpty());
}

TEST(OperandPlaces, ConstantReferenceModificationIsExact) {
  EXPECT_THAT(Read(kTableData, "HEAD (2:2)"), ElementsAre("HEAD G 1+2"));
  EXPECT_THAT(Read(kTableData, "HEAD (3:)"), ElementsAre("HEAD G 2+2"));
  EXPECT_THAT(Read(kTableData, "E (2, 3) (2:1)"), ElementsAre("E G 28+1"));
  EXPECT_THAT(Read(kTableData, "E (I, 3) (2:1)"), ElementsAre("E G 12+1 3x16"));
}

TEST(OperandPlaces, VariableReferenceModificationIsSomewhereInTheItem) {
  EXPECT_THAT(Read(kTableData, "HEAD (I:1)"), ElementsAre("HEAD G 0+4 partial"));
  EXPECT_THAT(Read(kTableData, "HEAD (2:J)"), ElementsAre("HEAD G 1+3 partial"));
  EXPECT_THAT(Read(kTableData, "HEAD (1 + 1:1)"), ElementsAre("HEAD G 0+4 partial"));
  const auto program = EffectsProgram::Of(kTableData, "MAIN-PARA.\n    $at^DISPLAY HEAD (I:1).\n");
  EXPECT_THAT(program.GapsAt("at"), ElementsAre("variable reference HEAD"));
}

TEST(OperandPlaces, ReferenceModificationCanReachIntoWhatFollows) {
  EXPECT_THAT(Read(kTableData, "HEAD (3:4)"), ElementsAre("HEAD G 2+4"));
  const auto program = EffectsProgram::Of(kTableData, "MAIN-PARA.\n    $at^DISPLAY HEAD (3:4).\n");
  EXPECT_THAT(program.GapsAt("at"), ElementsAre("variable reference HEAD"));
}

TEST(OperandPlaces, NationalCharactersTakeTwoBytes) {
  EXPECT_THAT(Read("01  N PIC N(5) USAGE NATIONAL.\n", "N (2:3)"), ElementsAre("N N 2+6"));
}

TEST(OperandPlaces, ConditionNamesAreTheirItemsBytes) {
  const auto program = EffectsProgram::Of(kTableData, R"(MAIN-PARA.
    IF $at^E-FULL (2, 1) DISPLAY "X".
)");
  EXPECT_THAT(program.At("at"), ElementsAre("use E-FULL G 21+3 aside"));
}

TEST(OperandPlaces, RedefiningItemsShareTheBytes) {
  constexpr std::string_view kRedefinitions = R"(01  G.
    05  D PIC 9(8).
    05  P REDEFINES D.
        10  Y PIC 9(4).
        10  M PIC 99.
01  H REDEFINES G PIC X(3).
)";
  EXPECT_THAT(Read(kRedefinitions, "M"), ElementsAre("M G 4+2"));
  EXPECT_THAT(Read(kRedefinitions, "H"), ElementsAre("H G 0+3"));
}

TEST(OperandPlaces, RenamesTakesInWhatItRenames) {
  constexpr std::string_view kRenaming = R"(01  G.
    05  A PIC X.
    05  B PIC XX.
    05  C PIC XXX.
    05  D PIC X.
    66  BC RENAMES B THRU C.
    66  JUST-B RENAMES B.
)";
  EXPECT_THAT(Read(kRenaming, "BC"), ElementsAre("BC G 1+5"));
  EXPECT_THAT(Read(kRenaming, "JUST-B"), ElementsAre("JUST-B G 1+2"));
}

TEST(OperandPlaces, LengthOfReadsNothing) {
  const auto program = EffectsProgram::Of(kTableData, R"(MAIN-PARA.
    $at^MOVE LENGTH OF HEAD TO I.
    $function^COMPUTE J = FUNCTION LENGTH (HEAD).
    $trimmed^COMPUTE J = FUNCTION LENGTH (FUNCTION TRIM (HEAD)).
)");
  EXPECT_THAT(program.At("at"), ElementsAre("define I I 0+2 constant move"));
  EXPECT_THAT(program.At("function"), ElementsAre("define J J 0+2 computation"));
  EXPECT_THAT(program.At("trimmed"), ElementsAre("use HEAD G 0+4", "define J J 0+2 computation"));
}

TEST(OperandPlaces, SubscriptsAreReadBesideTheData) {
  const auto program = EffectsProgram::Of(kTableData, R"(MAIN-PARA.
    $at^MOVE C (I) TO HEAD (J:1).
)");
  EXPECT_THAT(program.At("at"), ElementsAre("use I I 0+2 aside", "use J J 0+2 aside", "use C G 4+1 3x16",
                                            "may define HEAD G 0+4 move partial"));
}

TEST(OperandPlaces, ArgumentsOfFunctionsInSubscriptsAreNoData) {
  const auto program = EffectsProgram::Of(kTableData, R"(MAIN-PARA.
    $at^MOVE C (FUNCTION MAX (I J)) TO A OF G.
)");
  EXPECT_THAT(program.At("at"),
              ElementsAre("use I I 0+2 aside", "use J J 0+2 aside", "use C G 4+1 3x16", "define A G 52+2 move"));
}

TEST(OperandPlaces, TheSubjectOfAnEvaluateLiesWhereTheTextSaysInItsConditions) {
  const auto program = EffectsProgram::Of(kTableData, R"(MAIN-PARA.
    $at^EVALUATE E (2, 1)
      $when^WHEN "ABC" DISPLAY "X"
      WHEN "DEF" DISPLAY "Y"
    END-EVALUATE.
)");
  EXPECT_THAT(program.At("at"), ElementsAre("use E G 21+3"));
  EXPECT_THAT(program.At("when"), ElementsAre("use E G 21+3 aside"));
}

TEST(OperandPlaces, ANameThatIsNotDeclaredIsAGap) {
  const auto program = EffectsProgram::Of(kTableData, R"(MAIN-PARA.
    $at^MOVE NOWHERE TO I.
)");
  EXPECT_THAT(program.At("at"), ElementsAre("define I I 0+2 move"));
  EXPECT_THAT(program.GapsAt("at"), ElementsAre("unresolved name NOWHERE"));
}

TEST(OperandPlaces, AnItemOfAnyLengthHasRoomForAnyPart) {
  const EffectsProgram program(R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. LONG.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  A PIC X(4).
       LINKAGE SECTION.
       01  L PIC X ANY LENGTH.
       PROCEDURE DIVISION USING L.
       MAIN-PARA.
           $whole^MOVE A TO L.
           $part^DISPLAY L (5:2).
)");
  EXPECT_THAT(program.At("whole"), ElementsAre("use A A 0+4", "define L L 0+1048576 move copies"));
  EXPECT_THAT(program.At("part"), ElementsAre("use L L 4+2 aside"));
}

TEST(OperandPlaces, WhatDependsOnACounterIsSureOnlyUpToItsLeast) {
  constexpr std::string_view kDepending = R"(01  N PIC 99.
01  G.
    05  HEAD PIC X(3).
    05  T PIC X(2) OCCURS 2 TO 9 DEPENDING ON N.
01  S PIC X(21).
)";
  const auto program = EffectsProgram::Of(kDepending, R"(MAIN-PARA.
    $group^MOVE S TO G.
    $item^MOVE S TO T (7).
)");
  EXPECT_THAT(program.At("group"),
              ElementsAre("use S S 0+21", "define G G 0+7 move copies", "may define G G 7+14 move"));
  EXPECT_THAT(program.At("item"), ElementsAre("use S S 0+21", "define T G 15+2 move copies"));
}

constexpr std::string_view kMoving = R"(01  N PIC 99.
01  G.
    05  T PIC X(2) OCCURS 2 TO 9 DEPENDING ON N.
    05  BEHIND PIC X(3).
    05  AGAIN REDEFINES BEHIND.
        10  HALF PIC X.
    05  U PIC X OCCURS 4.
01  H REDEFINES G.
    05  FILLER PIC X(20).
    05  FIXED PIC X.
01  R.
    05  ROW OCCURS 3.
        10  CELL PIC X OCCURS 1 TO 4 DEPENDING ON N.
        10  REST PIC X.
    05  LAST-ONE PIC X.
01  S PIC X(3).
)";

TEST(OperandPlaces, BehindATableOfVariableSizeAnItemCanLieBeforeItsPlace) {
  const auto program = EffectsProgram::Of(kMoving, R"(MAIN-PARA.
    $item^MOVE S TO BEHIND.
    $part^MOVE "X" TO BEHIND (2:1).
    $half^MOVE "X" TO HALF.
    $one^MOVE "X" TO U (2).
    $some^MOVE "X" TO U (N).
    $table^MOVE "AB" TO T (3).
    $fixed^MOVE "X" TO FIXED.
)");
  EXPECT_THAT(program.At("item"), ElementsAre("use S S 0+3", "may define BEHIND G 4+17 move copies partial"));
  EXPECT_THAT(program.At("part"), ElementsAre("may define BEHIND G 5+15 constant move partial"));
  EXPECT_THAT(program.At("half"), ElementsAre("may define HALF G 4+15 constant move partial"));
  EXPECT_THAT(program.At("one"), ElementsAre("may define U G 8+15 constant move partial"));
  EXPECT_THAT(program.At("some"), ElementsAre("use N N 0+2 aside", "may define U G 7+15 4x1 constant move partial"));
  EXPECT_THAT(program.At("table"), ElementsAre("define T G 4+2 constant move"));
  EXPECT_THAT(program.At("fixed"), ElementsAre("define FIXED G 20+1 constant move"));
  EXPECT_THAT(program.GapsAt("item"), ElementsAre("moving item BEHIND"));
  EXPECT_THAT(program.GapsAt("table"), IsEmpty());
  EXPECT_THAT(program.GapsAt("fixed"), IsEmpty());
}

TEST(OperandPlaces, OccurrencesOfVariableSizeCanLieAnywhereInTheirTable) {
  const auto program = EffectsProgram::Of(kMoving, R"(MAIN-PARA.
    $rest^MOVE "X" TO REST (2).
    $row^MOVE "X" TO ROW (1).
    $last^MOVE "X" TO LAST-ONE.
)");
  EXPECT_THAT(program.At("rest"), ElementsAre("may define REST R 0+15 constant move partial"));
  EXPECT_THAT(program.At("row"), ElementsAre("may define ROW R 0+15 constant move partial"));
  EXPECT_THAT(program.At("last"), ElementsAre("may define LAST-ONE R 6+10 constant move partial"));
}

}  // namespace
}  // namespace qmrules::test
