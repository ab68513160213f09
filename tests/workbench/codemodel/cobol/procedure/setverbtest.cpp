#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbench/codemodel/cobol/procedure/markedstatements.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;

constexpr std::string_view kSetData = R"(       ENVIRONMENT DIVISION.
       CONFIGURATION SECTION.
       SPECIAL-NAMES.
           UPSI-0 IS SW ON STATUS IS SW-ON OFF STATUS IS SW-OFF.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  N PIC 9(02).
       01  TAB.
           05  T PIC X(10) OCCURS 5 INDEXED BY X Y.
       01  FLAG PIC X.
           88  YES VALUE 'Y' FALSE 'N'.
           88  DONE VALUE 'D'.
       01  P POINTER.
       01  Q POINTER.
       01  PP PROCEDURE-POINTER.
       01  O OBJECT REFERENCE.
       LINKAGE SECTION.
       01  L PIC X(10).
)";

TEST(SetVerb, SetsIndexes) {
  const auto marked = ExpectMarked(kSetData,
                                   "SET $TargetIn[[X]] $TargetIn[[Y]] TO $Source[[1]].\n"
                                   "SET $TargetIn[[X]] TO $SourceOut[[N]].\n"
                                   "SET $TargetIn[[N]] TO $SourceOut[[X]].");
  EXPECT_THAT(marked.Statements(), ElementsAre("STAT SET", "STAT SET", "STAT SET"));
}

TEST(SetVerb, MovesIndexesUpAndDown) {
  ExpectMarked(kSetData,
               "SET $BothInOut[[X]] $BothInOut[[Y]] UP BY $Source[[1]].\n"
               "SET $BothInOut[[X]] DOWN BY $SourceOut[[N]].");
}

TEST(SetVerb, SetsConditions) {
  ExpectMarked(kSetData,
               "SET $TargetIn[[YES]] $TargetIn[[DONE]] TO TRUE.\n"
               "SET $TargetIn[[YES]] TO FALSE.\n"
               "SET $TargetIn[[YES]] TO FALSE $TargetIn[[DONE]] TO TRUE.");
}

TEST(SetVerb, TurnsSwitches) {
  ExpectMarked(kSetData, "SET $Target[[SW]] TO ON.");
}

TEST(SetVerb, SetsPointers) {
  ExpectMarked(kSetData,
               "SET $TargetIn[[P]] TO $AddressOfNone[[ADDRESS OF N]].\n"
               "SET $TargetIn[[P]] TO $Source[[NULL]].\n"
               "SET $TargetIn[[P]] TO $SourceOut[[Q]].\n"
               "SET $BothInOut[[P]] UP BY $LengthOfNone[[LENGTH OF N]].");
}

TEST(SetVerb, BringsDataIntoAnItemThatIsLaidOverOtherStorage) {
  ExpectMarked(kSetData, "SET $AddressOfIn[[ADDRESS OF L]] TO $SourceOut[[P]].");
}

TEST(SetVerb, TakesTheEntryOfAProgram) {
  ExpectMarked(kSetData, "SET $TargetIn[[PP]] TO ENTRY $Program[['SUB']].");
}

TEST(SetVerb, SetsObjectReferences) {
  ExpectMarked(kSetData,
               "SET $TargetIn[[O]] TO $Source[[SELF]].\n"
               "SET $TargetIn[[O]] TO $Source[[NULL]].");
}

TEST(SetVerb, SetsVariablesOfTheEnvironment) {
  ExpectMarked(kSetData,
               "SET ENVIRONMENT $Other[['HOME']] TO $SourceOut[[N]].\n"
               "SET LAST EXCEPTION TO OFF.");
}

TEST(SetVerb, TellsWhatItLacks) {
  EXPECT_THAT(MarkedStatements(kSetData, "SET TO 1.").Diagnostics(), ElementsAre("1:5 SET lacks what is set."));
  EXPECT_THAT(MarkedStatements(kSetData, "SET X 1.").Diagnostics(), ElementsAre("1:7 SET lacks TO."));
  EXPECT_THAT(MarkedStatements(kSetData, "SET X UP 1.").Diagnostics(), ElementsAre("1:10 SET lacks BY."));
  EXPECT_THAT(MarkedStatements(kSetData, "SET X TO.").Diagnostics(), ElementsAre("1:9 TO lacks its operand."));
}

}  // namespace
}  // namespace qmrules::test
