// What MOVE and SET do with storage.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbench/flow/cobol/effectsprogram.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view kMoveData = R"(01  A PIC X(4).
01  B PIC X(6).
01  N PIC 9(3).
01  P PIC S9(5) COMP-3.
01  ED PIC ZZ9.
01  RJ PIC X(6) JUSTIFIED.
01  G.
    05  G1 PIC X(2).
    05  G2 PIC 9(2).
01  T.
    05  E PIC X OCCURS 4 INDEXED BY IX.
01  FLAGS.
    05  F PIC X.
        88  F-ON VALUE "Y" FALSE "N".
    05  FT PIC X OCCURS 3.
        88  FT-ON VALUE "Y".
01  PT USAGE POINTER.
)";

std::vector<std::string> MoveEffectsOf(std::string_view statement) {
  const auto program = EffectsProgram::Of(kMoveData, "MAIN-PARA.\n    $at^" + std::string(statement) + ".\n");
  return program.At("at");
}

TEST(MoveEffects, DataGoesFromTheSourceToEachTarget) {
  EXPECT_THAT(MoveEffectsOf("MOVE N TO P ED"),
              ElementsAre("use N N 0+3", "define P P 0+3 move", "define ED ED 0+3 move"));
}

TEST(MoveEffects, CharactersGoThroughAsTheyAre) {
  EXPECT_THAT(MoveEffectsOf("MOVE A TO B"), ElementsAre("use A A 0+4", "define B B 0+6 move copies"));
  EXPECT_THAT(MoveEffectsOf("MOVE A TO RJ"), ElementsAre("use A A 0+4", "define RJ RJ 0+6 move"));
  EXPECT_THAT(MoveEffectsOf("MOVE A TO N"), ElementsAre("use A A 0+4", "define N N 0+3 move"));
  EXPECT_THAT(MoveEffectsOf("MOVE N TO A"), ElementsAre("use N N 0+3", "define A A 0+4 move"));
}

TEST(MoveEffects, AMoveFromOrToAGroupConvertsNothing) {
  EXPECT_THAT(MoveEffectsOf("MOVE G TO P"), ElementsAre("use G G 0+4", "define P P 0+3 move copies"));
  EXPECT_THAT(MoveEffectsOf("MOVE P TO G"), ElementsAre("use P P 0+3", "define G G 0+4 move copies"));
}

TEST(MoveEffects, PartsOfItemsAreCharacters) {
  EXPECT_THAT(MoveEffectsOf("MOVE N (1:2) TO ED (2:2)"), ElementsAre("use N N 0+2", "define ED ED 1+2 move copies"));
}

TEST(MoveEffects, ConstantsAreToldApart) {
  EXPECT_THAT(MoveEffectsOf("MOVE 5 TO N"), ElementsAre("define N N 0+3 constant move"));
  EXPECT_THAT(MoveEffectsOf("MOVE SPACES TO G"), ElementsAre("define G G 0+4 constant move"));
  EXPECT_THAT(MoveEffectsOf("MOVE ALL \"*\" TO A"), ElementsAre("define A A 0+4 constant move"));
}

TEST(MoveEffects, FunctionsCompute) {
  EXPECT_THAT(MoveEffectsOf("MOVE FUNCTION UPPER-CASE (A) TO B"),
              ElementsAre("use A A 0+4", "define B B 0+6 computation"));
  EXPECT_THAT(MoveEffectsOf("MOVE FUNCTION CURRENT-DATE TO B"), ElementsAre("define B B 0+6 input"));
}

TEST(MoveEffects, AnUnknownOccurrenceMayBeDefined) {
  EXPECT_THAT(MoveEffectsOf("MOVE A TO E (IX)"),
              ElementsAre("use IX IX 0+4 aside", "use A A 0+4", "may define E T 0+1 4x1 move copies"));
  EXPECT_THAT(MoveEffectsOf("MOVE A TO E (3)"), ElementsAre("use A A 0+4", "define E T 2+1 move copies"));
}

TEST(MoveEffects, CorrespondingItemsGoInPairs) {
  constexpr std::string_view kGroups = R"(01  FROM-G.
    05  A PIC X(2).
    05  B PIC 9(3).
    05  ONLY-HERE PIC X.
    05  SUB.
        10  C PIC X.
01  TO-T.
    05  TO-G OCCURS 2.
        10  B PIC 9(3).
        10  A PIC X(2).
        10  OTHER PIC X.
        10  SUB.
            15  C PIC X(2).
)";
  const auto program = EffectsProgram::Of(kGroups, "MAIN-PARA.\n    $at^MOVE CORRESPONDING FROM-G TO TO-G (2).\n");
  EXPECT_THAT(program.At("at"),
              ElementsAre("use A FROM-G 0+2", "define A TO-T 11+2 move copies", "use B FROM-G 2+3 #1",
                          "define B TO-T 8+3 move #1", "use C FROM-G 6+1 #2", "define C TO-T 14+2 move copies #2"));
}

TEST(SetEffects, ConditionNamesSetTheirItem) {
  EXPECT_THAT(MoveEffectsOf("SET F-ON TO TRUE"), ElementsAre("define F-ON FLAGS 0+1 constant move"));
  EXPECT_THAT(MoveEffectsOf("SET F-ON TO FALSE"), ElementsAre("define F-ON FLAGS 0+1 constant move"));
  EXPECT_THAT(MoveEffectsOf("SET FT-ON (2) TO TRUE"), ElementsAre("define FT-ON FLAGS 2+1 constant move"));
}

TEST(SetEffects, IndexesAreSetAndCounted) {
  EXPECT_THAT(MoveEffectsOf("SET IX TO 3"), ElementsAre("define IX IX 0+4 constant move"));
  EXPECT_THAT(MoveEffectsOf("SET IX TO N"), ElementsAre("use N N 0+3", "define IX IX 0+4 move"));
  EXPECT_THAT(MoveEffectsOf("SET IX UP BY N"),
              ElementsAre("use N N 0+3", "use IX IX 0+4", "define IX IX 0+4 computation"));
}

TEST(SetEffects, EachClauseHasItsOwnValues) {
  EXPECT_THAT(MoveEffectsOf("SET IX TO N F-ON TO TRUE P TO 1"),
              ElementsAre("use N N 0+3", "define IX IX 0+4 move", "define F-ON FLAGS 0+1 constant move",
                          "define P P 0+3 constant move #1"));
}

TEST(SetEffects, AnAddressThatIsTakenIsAGap) {
  const auto program = EffectsProgram::Of(kMoveData, "MAIN-PARA.\n    $at^SET PT TO ADDRESS OF G.\n");
  EXPECT_THAT(program.At("at"), ElementsAre("define PT PT 0+8 computation"));
  EXPECT_THAT(program.GapsAt("at"), ElementsAre("address taken G"));
}

TEST(SetEffects, AnItemLaidOverOtherStorageMayHaveChanged) {
  const EffectsProgram program(R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. LAID.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  PT USAGE POINTER.
       LINKAGE SECTION.
       01  L PIC X(5).
       PROCEDURE DIVISION.
       MAIN-PARA.
           $at^SET ADDRESS OF L TO PT.
)");
  EXPECT_THAT(program.At("at"), ElementsAre("use PT PT 0+8", "may define L L 0+5 unknown"));
  EXPECT_THAT(program.GapsAt("at"), ElementsAre("address taken L"));
  EXPECT_THAT(program.AtEntry("L"), ElementsAre("define L L 0+5 unknown"));
}

}  // namespace
}  // namespace qmrules::test
