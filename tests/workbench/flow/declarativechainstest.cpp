#include <gmock/gmock.h>

#include "workbench/flow/chainprogram.h"

// Chains through the procedures of DECLARATIVES.
namespace qmrules::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

constexpr std::string_view kPrinted = R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. PROBE.
       ENVIRONMENT DIVISION.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT F ASSIGN TO 'F' FILE STATUS FS.
           SELECT P ASSIGN TO 'P'.
       DATA DIVISION.
       FILE SECTION.
       FD  F.
       01  F-REC PIC X.
       FD  P REPORT IS R.
       WORKING-STORAGE SECTION.
       01  FS PIC XX.
       01  A PIC 9.
       01  B PIC 9.
       REPORT SECTION.
       RD  R PAGE LIMIT 60.
       01  D TYPE DETAIL.
           05  LINE PLUS 1.
           05  COLUMN 1 PIC 9 SOURCE B.
       PROCEDURE DIVISION.
       DECLARATIVES.
)";

ChainProgram Declaring(std::string_view procedures) {
  return ChainProgram(std::string(kPrinted) + std::string(procedures));
}

TEST(DeclarativeChains, AnErrorProcedureRunsBehindStatementsOnItsFileOnly) {
  auto program = Declaring(R"(       F-ERROR SECTION.
           USE AFTER ERROR PROCEDURE ON F.
       F-PARA.
           DISPLAY $before[[B]]
           MOVE 1 TO A.
       END DECLARATIVES.
       MAIN-PART SECTION.
       MAIN-PARA.
           MOVE 5 TO A B
           DISPLAY $untouched[[A]]
           OPEN OUTPUT P
           DISPLAY $other[[A]]
           OPEN INPUT F
           DISPLAY $opened[[A]]
           MOVE 6 TO B
           GOBACK.
)");
  EXPECT_THAT(program.Reaching("untouched"), ElementsAre("32 A constant move"));
  EXPECT_THAT(program.Reaching("other"), ElementsAre("32 A constant move"));
  EXPECT_THAT(program.Reaching("opened"), ElementsAre("28 A constant move", "32 A constant move"));
  // Not row 38, behind the last statement on the file.
  EXPECT_THAT(program.Reaching("before"), ElementsAre("32 B constant move"));
}

TEST(DeclarativeChains, ABeforeReportingProcedureRunsWithTheStatementsOnReports) {
  auto program = Declaring(R"(       R-PRINTED SECTION.
           USE BEFORE REPORTING D.
       R-PARA.
           DISPLAY $before[[B]]
           ADD 1 TO A.
       END DECLARATIVES.
       MAIN-PART SECTION.
       MAIN-PARA.
           MOVE 5 TO A B
           OPEN OUTPUT P
           INITIATE R
           DISPLAY $initiated[[A]]
           GENERATE D
           DISPLAY $generated[[A]]
           MOVE 6 TO B
           TERMINATE R
           MOVE 7 TO B
           GOBACK.
)");
  EXPECT_THAT(program.Reaching("initiated"), ElementsAre("32 A constant move"));
  EXPECT_THAT(program.Reaching("generated"), ElementsAre("28 A computation", "32 A constant move"));
  // By GENERATE and by TERMINATE, not behind them.
  EXPECT_THAT(program.Reaching("before"), ElementsAre("32 B constant move", "38 B constant move"));
}

TEST(DeclarativeChains, WhatADebuggingProcedureDoesIsAGapOfTheParagraphsThatItIsFor) {
  auto program = Declaring(R"(       DEBUG-PART SECTION.
           USE FOR DEBUGGING ON WATCHED-PARA.
       DEBUG-PARA.
           MOVE 1 TO A.
       END DECLARATIVES.
       MAIN-PART SECTION.
       MAIN-PARA.
           MOVE 5 TO A
           DISPLAY $before[[A]].
       WATCHED-PARA.
           DISPLAY $behind[[A]]
           GOBACK.
)");
  EXPECT_THAT(program.Gaps("before"), IsEmpty());
  EXPECT_THAT(program.Reaching("behind"), ElementsAre("31 A constant move"));
  EXPECT_THAT(program.Gaps("behind"),
              ElementsAre("25 In a program made for debugging, this procedure runs in between and may change A."));
}

TEST(DeclarativeChains, DebuggingOfAllProceduresOrOfAnItemIsAGapEverywhere) {
  for (const std::string_view on : {"ALL PROCEDURES", "ALL REFERENCES OF B"}) {
    auto program = Declaring("       DEBUG-PART SECTION.\n           USE FOR DEBUGGING ON " + std::string(on) + R"(.
       DEBUG-PARA.
           MOVE 1 TO A.
       END DECLARATIVES.
       MAIN-PART SECTION.
       MAIN-PARA.
           MOVE 5 TO A.
       NEXT-PARA.
           DISPLAY $behind[[A]]
           GOBACK.
)");
    EXPECT_THAT(program.Gaps("behind"),
                ElementsAre("25 In a program made for debugging, this procedure runs in between and may change A."))
        << on;
  }
}

}  // namespace
}  // namespace qmrules::test
