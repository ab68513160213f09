// What INITIALIZE does with storage.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbench/flow/cobol/effectsprogram.h"

namespace qmrules::test {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view kGroups = R"(01  PLAIN.
    05  P1 PIC X(3).
    05  P2 PIC 9(4).
01  HOLES.
    05  H1 PIC X(3).
    05  FILLER PIC X(2).
    05  H2 PIC 9(4).
    05  H3 REDEFINES H2 PIC X(4).
    05  FILLER.
        10  H4 PIC X.
    05  H5 PIC ZZ9.
    05  H6 PIC A(2).
01  TABLES.
    05  T1 OCCURS 1000.
        10  T2 PIC X(2).
        10  T3 PIC 9(2).
    05  T4 OCCURS 3.
        10  T5 PIC X(2).
        10  FILLER PIC X.
01  HANDLES.
    05  K1 PIC X.
    05  K2 USAGE INDEX.
    05  K3 USAGE POINTER.
01  N PIC 99.
01  DEPENDING-G.
    05  D1 PIC X.
    05  D2 PIC X(2) OCCURS 1 TO 5 DEPENDING ON N.
01  I PIC 99.
01  V PIC 9(4).
)";

std::vector<std::string> InitializeEffectsOf(std::string_view statement) {
  return EffectsProgram::Of(kGroups, "MAIN-PARA.\n    $at^" + std::string(statement) + ".\n").At("at");
}

TEST(InitializeEffects, AGroupIsOverwrittenWhereItHasItems) {
  EXPECT_THAT(InitializeEffectsOf("INITIALIZE PLAIN"), ElementsAre("define PLAIN PLAIN 0+7 constant move"));
  EXPECT_THAT(InitializeEffectsOf("INITIALIZE HOLES"),
              ElementsAre("define HOLES HOLES 0+3 constant move", "define HOLES HOLES 5+10 constant move"));
}

TEST(InitializeEffects, AnItemThatRedefinesIsInitializedWhenItIsNamed) {
  EXPECT_THAT(InitializeEffectsOf("INITIALIZE H3 N"),
              ElementsAre("define H3 HOLES 5+4 constant move", "define N N 0+2 constant move"));
}

TEST(InitializeEffects, TablesAreInitializedInAllOccurrences) {
  EXPECT_THAT(InitializeEffectsOf("INITIALIZE TABLES"),
              ElementsAre("define TABLES TABLES 0+4002 constant move", "define TABLES TABLES 4003+2 constant move",
                          "define TABLES TABLES 4006+2 constant move"));
  EXPECT_THAT(InitializeEffectsOf("INITIALIZE T4 (2)"), ElementsAre("define T4 TABLES 4003+2 constant move"));
  EXPECT_THAT(InitializeEffectsOf("INITIALIZE T1 (I)"),
              ElementsAre("use I I 0+2 aside", "may define T1 TABLES 0+4 1000x4 constant move"));
}

TEST(InitializeEffects, IndexesAndPointersMayStay) {
  EXPECT_THAT(InitializeEffectsOf("INITIALIZE HANDLES"),
              ElementsAre("define HANDLES HANDLES 0+1 constant move", "may define HANDLES HANDLES 1+12 constant move"));
}

TEST(InitializeEffects, OnlyTheOccurrencesThereAreAreSure) {
  EXPECT_THAT(InitializeEffectsOf("INITIALIZE DEPENDING-G"),
              ElementsAre("define DEPENDING-G DEPENDING-G 0+3 constant move",
                          "may define DEPENDING-G DEPENDING-G 3+8 constant move"));
}

TEST(InitializeEffects, WhatLiesBehindATableOfVariableSizeMayBeAnywhere) {
  const auto program = EffectsProgram::Of(R"(01  N PIC 99.
01  G.
    05  A PIC X.
    05  T PIC X(2) OCCURS 1 TO 5 DEPENDING ON N.
    05  B PIC X(3).
)",
                                          "MAIN-PARA.\n    $at^INITIALIZE G.\n");
  EXPECT_THAT(program.At("at"), ElementsAre("define G G 0+3 constant move", "may define G G 3+11 constant move"));
}

TEST(InitializeEffects, ReplacingTakesInItemsOfItsCategory) {
  EXPECT_THAT(InitializeEffectsOf("INITIALIZE HOLES REPLACING NUMERIC DATA BY V"),
              ElementsAre("use V V 0+4", "define HOLES HOLES 5+4 move"));
  EXPECT_THAT(InitializeEffectsOf("INITIALIZE HOLES REPLACING ALPHANUMERIC DATA BY \"*\"\n      NUMERIC-EDITED BY V"),
              ElementsAre("define HOLES HOLES 0+3 constant move", "define HOLES HOLES 9+1 constant move",
                          "use V V 0+4 #1", "define HOLES HOLES 10+3 move #1"));
  EXPECT_THAT(InitializeEffectsOf("INITIALIZE HOLES REPLACING ALPHABETIC BY SPACES"),
              ElementsAre("define HOLES HOLES 13+2 constant move"));
  EXPECT_THAT(InitializeEffectsOf("INITIALIZE H2 REPLACING ALPHANUMERIC BY V"), ElementsAre("use V V 0+4"));
}

TEST(InitializeEffects, OtherPhrasesMakeEverythingUnsure) {
  EXPECT_THAT(InitializeEffectsOf("INITIALIZE PLAIN ALL TO VALUE"),
              ElementsAre("may define PLAIN PLAIN 0+7 constant move"));
  EXPECT_THAT(InitializeEffectsOf("INITIALIZE P1 WITH FILLER"), ElementsAre("may define P1 PLAIN 0+3 constant move"));
}

TEST(InitializeEffects, ItemsWithoutANameMayBeAskedFor) {
  EXPECT_THAT(InitializeEffectsOf("INITIALIZE HOLES WITH FILLER"),
              ElementsAre("may define HOLES HOLES 0+15 constant move"));
  EXPECT_THAT(InitializeEffectsOf("INITIALIZE HOLES FILLER REPLACING ALPHANUMERIC BY V"),
              AllOf(Contains("define HOLES HOLES 0+3 move"), Contains("may define HOLES HOLES 3+2 move")));
}

}  // namespace
}  // namespace qmrules::test
