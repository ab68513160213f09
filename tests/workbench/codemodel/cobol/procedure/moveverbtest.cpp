#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbench/codemodel/cobol/procedure/markedstatements.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;

constexpr std::string_view kMoveData = R"(       ENVIRONMENT DIVISION.
       CONFIGURATION SECTION.
       SPECIAL-NAMES.
           SYMBOLIC CHARACTERS NL IS 11.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  A PIC X(10).
       01  B PIC X(10).
       01  I PIC 9(02).
       01  TAB.
           05  T PIC X(10) OCCURS 5 INDEXED BY X.
       01  G1.
           05  F PIC X(02).
           05  N PIC 9(02).
       01  G2.
           05  F PIC X(02).
           05  N PIC 9(02).
)";

TEST(MoveVerb, MovesOneItemToAnother) {
  const auto marked = ExpectMarked(kMoveData, "MOVE $SourceOut[[A]] TO $TargetIn[[B]].");
  EXPECT_THAT(marked.Statements(), ElementsAre("STAT MOVE"));
}

TEST(MoveVerb, MovesToSeveralItems) {
  ExpectMarked(kMoveData,
               "MOVE $Source[['X']] TO $TargetIn[[A]], $TargetIn[[B]]\n    $TargetIn[[F OF $Qualifier[[G1]]]].");
}

TEST(MoveVerb, ReadsSubscriptsOnBothSides) {
  ExpectMarked(kMoveData,
               "MOVE $SourceOut[[T ($SubscriptOut[[I]])]] TO $TargetIn[[T ($SubscriptOut[[X]] + $Subscript[[1]])]].");
}

TEST(MoveVerb, ReadsThePartsOfAReferenceModification) {
  const auto marked = ExpectMarked(
      kMoveData, "MOVE $SourceOut[[A ($OffsetOut[[I]] : $Length[[2]])]] TO $TargetIn[[B ($Offset[[1]]:)]].");
  EXPECT_NE(marked.Nodes(workbench::codemodel::Entity::Var)[0].flags & workbench::codemodel::kRefMod, 0);
}

TEST(MoveVerb, MovesFigurativeConstantsAndFunctions) {
  ExpectMarked(kMoveData,
               "MOVE $Source[[SPACES]] TO $TargetIn[[A]].\n"
               "MOVE $Source[[ALL '*']] TO $TargetIn[[A]].\n"
               "MOVE $Source[[ALL NL]] TO $TargetIn[[A]].\n"
               "MOVE $Source[[-1]] TO $TargetIn[[I]].\n"
               "MOVE $Source[[FUNCTION UPPER-CASE ($ArgumentOut[[B]])]] TO $TargetIn[[A]].");
}

TEST(MoveVerb, TakesTheLengthOfAnItemWithoutReadingIt) {
  ExpectMarked(kMoveData, "MOVE $LengthOfNone[[LENGTH OF A]] TO $TargetIn[[I]].");
}

TEST(MoveVerb, MarksBothGroupsOfMoveCorresponding) {
  ExpectMarked(kMoveData,
               "MOVE CORRESPONDING $SourceOutCorresponding[[G1]] TO $TargetInCorresponding[[G2]].\n"
               "MOVE CORR $SourceOutCorresponding[[G1]] TO $TargetInCorresponding[[G2]].");
}

TEST(MoveVerb, MovesTheItemsOfOneNameWithCorresponding) {
  constexpr std::string_view data = R"(       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  G1.
           05  F PIC X(02).
           05  ONLY-HERE PIC X.
           05  SUB.
               10  K PIC 9.
               10  TWICE PIC 9 OCCURS 2.
           05  MIXED.
               10  PART PIC X(04).
           05  FILLER PIC X.
           05  IX USAGE INDEX.
       01  G2.
           05  SUB.
               10  TWICE PIC 9 OCCURS 2.
               10  K PIC 9.
           05  MIXED PIC X(04).
           05  F PIC X(02).
           05  AGAIN REDEFINES F PIC X(02).
           05  IX USAGE INDEX.
)";
  const auto moved = ExpectMarked(data, "MOVE CORR $SourceOutCorresponding[[G1]] TO $TargetInCorresponding[[G2]].");
  EXPECT_THAT(moved.Implicit(), ElementsAre("Source F OUT", "Target F IN", "Source MIXED OUT", "Target MIXED IN",
                                            "Source K OUT", "Target K IN"));
  const auto added = ExpectMarked(data, "ADD CORR $SourceOutCorresponding[[G1]] TO $BothInOutCorresponding[[G2]].");
  EXPECT_THAT(added.Implicit(), ElementsAre("Source K OUT", "Both K INOUT"));
}

TEST(MoveVerb, TellsWhatAMoveLacks) {
  EXPECT_THAT(MarkedStatements(kMoveData, "MOVE TO A.").Diagnostics(), ElementsAre("1:6 MOVE lacks its sending item."));
  EXPECT_THAT(MarkedStatements(kMoveData, "MOVE A B.").Diagnostics(), ElementsAre("1:8 MOVE lacks TO."));
  EXPECT_THAT(MarkedStatements(kMoveData, "MOVE A TO.").Diagnostics(),
              ElementsAre("1:10 MOVE lacks its receiving item."));
}

TEST(MoveVerb, TellsOfAnUnknownAndOfAnAmbiguousName) {
  EXPECT_THAT(MarkedStatements(kMoveData, "MOVE NIL TO F.").Diagnostics(),
              ElementsAre("1:6 NIL is not declared.", "1:13 F is ambiguous; qualify it."));
}

}  // namespace
}  // namespace qmrules::test
