#include <gmock/gmock.h>

#include "workbench/flow/chainprogram.h"

// Chains through records of files, SORT and what the program takes in.
namespace qmrules::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

// The procedures begin on row 27.
constexpr std::string_view kRecords = R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. PROBE.
       ENVIRONMENT DIVISION.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT F ASSIGN TO 'F'.
           SELECT G ASSIGN TO 'G' ORGANIZATION INDEXED ACCESS RANDOM
               RECORD KEY G-KEY.
           SELECT W ASSIGN TO 'W'.
       DATA DIVISION.
       FILE SECTION.
       FD  F.
       01  F-REC.
           05  F-A PIC X.
           05  F-B PIC X.
       01  F-OTHER PIC XX.
       FD  G.
       01  G-REC.
           05  G-KEY PIC X.
           05  G-A PIC X.
       SD  W.
       01  W-REC PIC XX.
       WORKING-STORAGE SECTION.
       01  A PIC XX.
       01  B PIC XX.
       PROCEDURE DIVISION.
)";

ChainProgram Filing(std::string_view procedures) {
  return ChainProgram(std::string(kRecords) + std::string(procedures));
}

TEST(FileChains, ReadBringsARecordUnderAllItsNames) {
  auto program = Filing(R"(       MAIN-PARA.
           MOVE 'XY' TO F-REC
           MOVE 'Z' TO G-A
           READ F AT END GO TO END-PARA.
           DISPLAY $item[[F-A]] $other[[F-OTHER]] $elsewhere[[G-A]]
           GOBACK.
       END-PARA.
           DISPLAY $atend[[F-A]]
           GOBACK.
)");
  EXPECT_THAT(program.Reaching("item"), ElementsAre("30 F-REC input"));
  EXPECT_THAT(program.Reaching("other"), ElementsAre("30 F-REC input overlap"));
  // Another file's record stays, and so does this one when there was no record.
  EXPECT_THAT(program.Reaching("elsewhere"), ElementsAre("29 G-A constant move"));
  EXPECT_THAT(program.Reaching("atend"), ElementsAre("28 F-REC constant move"));
}

TEST(FileChains, IntoAndFromMoveBesideTheRecord) {
  auto program = Filing(R"(       MAIN-PARA.
           MOVE 'AA' TO A
           MOVE 'BB' TO B
           MOVE 'FF' TO F-REC
           READ F INTO A NOT AT END
               DISPLAY $into[[A]]
           END-READ
           WRITE F-REC FROM $from[[B]]
           DISPLAY $written[[F-B]] $kept[[B]]
           GOBACK.
)");
  EXPECT_THAT(program.Reaching("into"), ElementsAre("31 A input"));
  EXPECT_THAT(program.Reaching("from"), ElementsAre("29 B constant move"));
  EXPECT_THAT(program.Reaching("written"), ElementsAre("34 F-REC move"));
  EXPECT_THAT(program.Reaching("kept"), ElementsAre("29 B constant move"));
}

TEST(FileChains, WriteUsesTheRecordAndChangesNothing) {
  auto program = Filing(R"(       MAIN-PARA.
           MOVE 'X' TO $item[[F-A]]
           MOVE 'K' TO $key[[G-KEY]]
           WRITE F-OTHER
           DISPLAY $behind[[F-A]]
           READ G INVALID KEY
               DISPLAY $invalid[[G-KEY]]
           END-READ
           GOBACK.
)");
  EXPECT_THAT(program.Uses("item"), ElementsAre("30 F-OTHER", "31 F-A", "end 0-1"));
  EXPECT_THAT(program.Reaching("behind"), ElementsAre("28 F-A constant move"));
  EXPECT_THAT(program.Uses("key"), Contains("32 READ"));
  EXPECT_THAT(program.Reaching("invalid"), Contains("29 G-KEY constant move"));
}

TEST(FileChains, TheProceduresOfASortRunOneAfterTheOther) {
  auto program = Filing(R"(       MAIN-PARA.
           MOVE 'M' TO A
           SORT W ASCENDING KEY W-REC
               INPUT PROCEDURE IN-PARA THRU IN-END
               OUTPUT PROCEDURE OUT-PARA
           DISPLAY $sorted[[A]]
           MERGE W ASCENDING KEY W-REC USING F G
               OUTPUT PROCEDURE OUT-PARA
           DISPLAY $merged[[A]]
           GOBACK.
       IN-PARA.
           DISPLAY $in[[A]]
           MOVE 'I' TO A.
       IN-END.
           RELEASE W-REC.
       OUT-PARA.
           DISPLAY $out[[A]]
           MOVE 'O' TO A
           RETURN W AT END CONTINUE.
)");
  // Not row 44: the output procedure runs behind the input procedure.
  EXPECT_THAT(program.Reaching("in"), ElementsAre("28 A constant move"));
  // From the input procedure, and from the SORT before the MERGE.
  EXPECT_THAT(program.Reaching("out"), ElementsAre("39 A constant move", "44 A constant move"));
  EXPECT_THAT(program.Reaching("sorted"), ElementsAre("44 A constant move"));
  EXPECT_THAT(program.Reaching("merged"), ElementsAre("44 A constant move"));
}

TEST(LinkageChains, WhatTheProgramTakesInIsAnInputOfTheItemsInItsUsing) {
  ChainProgram program(R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. PROBE.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  OWN PIC X.
       LINKAGE SECTION.
       01  P.
           05  P1 PIC X.
           05  P2 PIC X.
       01  LOST PIC X.
       PROCEDURE DIVISION USING P.
       MAIN-PARA.
           DISPLAY $taken[[P1]] $own[[OWN]] $lost[[LOST]]
           MOVE 'X' TO P1
           DISPLAY $set[[P1]] $still[[P2]]
           GOBACK.
)");
  EXPECT_THAT(program.Reaching("taken"), ElementsAre("7 P parameter"));
  EXPECT_THAT(program.Reaching("set"), ElementsAre("14 P1 constant move"));
  EXPECT_THAT(program.Reaching("still"), ElementsAre("7 P parameter"));
  // No parameters, although one of them stands in the LINKAGE SECTION too.
  EXPECT_THAT(program.Reaching("own"), ElementsAre("5 OWN initial value"));
  EXPECT_THAT(program.Reaching("lost"), ElementsAre("10 LOST unknown"));
  EXPECT_THAT(program.Gaps("lost"),
              ElementsAre("10 The address of LOST is set or taken; its storage may be another's."));
}

}  // namespace
}  // namespace qmrules::test
