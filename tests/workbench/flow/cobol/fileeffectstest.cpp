// What the statements on files, screens and reports do with storage.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbench/flow/cobol/effectsprogram.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

EffectsProgram Files(std::string_view statements) {
  return EffectsProgram(std::string(R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. FILES.
       ENVIRONMENT DIVISION.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT F ASSIGN TO "F" FILE STATUS IS FS.
           SELECT R ASSIGN TO "R" ORGANIZATION RELATIVE
               ACCESS DYNAMIC RELATIVE KEY RK.
           SELECT S ASSIGN TO "S".
           SELECT V ASSIGN TO "V".
       DATA DIVISION.
       FILE SECTION.
       FD  F.
       01  F-REC.
           05  F-KEY PIC X(2).
           05  F-REST PIC X(8).
       01  F-OTHER PIC X(4).
       FD  R.
       01  R-REC PIC X(5).
       SD  S.
       01  S-REC PIC X(6).
       FD  V RECORD VARYING FROM 1 TO 9 DEPENDING ON VL.
       01  V-REC PIC X(9).
       WORKING-STORAGE SECTION.
       01  FS PIC XX.
       01  RK PIC 9(4).
       01  VL PIC 9(4).
       01  W PIC X(10).
       01  N PIC 9(4).
       01  T.
           05  E PIC X(2) OCCURS 5 ASCENDING KEY E INDEXED BY IX.
       PROCEDURE DIVISION.
       MAIN-PARA.
)") + std::string(statements) +
                        "           GOBACK.\n       IN-PARA.\n           CONTINUE.\n");
}

std::vector<std::string> FileEffectsOf(std::string_view statement) {
  return Files("           $at^" + std::string(statement) + ".\n").At("at");
}

TEST(FileEffects, ReadBringsInAllRecordsOfTheFileUnlessItFails) {
  EXPECT_THAT(FileEffectsOf("READ F"), ElementsAre("may define F-REC F-REC 0+10 input", "define READ FS 0+2 input"));
}

TEST(FileEffects, BehindAPhraseTheRecordIsThere) {
  const auto program = Files(R"(           $at^READ F INTO W
             AT END MOVE 1 TO N
             NOT AT END MOVE 2 TO N
           END-READ.
)");
  EXPECT_THAT(program.At("at"), ElementsAre("define READ FS 0+2 input"));
  // Of a shorter record not all bytes come in.
  EXPECT_THAT(program.AtPoint("34 completed"),
              ElementsAre("define F-REC F-REC 0+4 input", "may define F-REC F-REC 4+6 input", "define W W 0+10 input"));
}

TEST(FileEffects, ReadOfARelativeFileUsesAndTellsTheNumber) {
  EXPECT_THAT(FileEffectsOf("READ R"),
              ElementsAre("use READ RK 0+4 aside", "may define READ RK 0+4 input", "may define R-REC R-REC 0+5 input"));
}

TEST(FileEffects, RecordsThatGoByInTheirOrderTellTheirNumber) {
  const auto of = [](std::string_view organization) {
    return EffectsProgram("\n" + std::string(R"(       IDENTIFICATION DIVISION.
       PROGRAM-ID. FILES.
       ENVIRONMENT DIVISION.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT R ASSIGN TO "R" ORGANIZATION )") +
                          std::string(organization) + R"(.
       DATA DIVISION.
       FILE SECTION.
       FD  R.
       01  R-REC.
           05  R-KEY PIC X(5).
           05  R-REST PIC X(3).
       WORKING-STORAGE SECTION.
       01  RK PIC 9(4).
       PROCEDURE DIVISION.
       MAIN-PARA.
           $read^READ R.
           $write^WRITE R-REC.
           $delete^DELETE R.
)");
  };
  const auto relative = of("RELATIVE RELATIVE KEY RK");
  EXPECT_THAT(relative.At("read"), ElementsAre("may define READ RK 0+4 input", "may define R-REC R-REC 0+8 input"));
  EXPECT_THAT(relative.At("write"), ElementsAre("use R-REC R-REC 0+8 aside", "may define WRITE RK 0+4 input"));
  EXPECT_THAT(relative.At("delete"), IsEmpty());
  const auto indexed = of("INDEXED RECORD KEY R-KEY\n               ACCESS RANDOM");
  EXPECT_THAT(indexed.At("read"), ElementsAre("use READ R-REC 0+5 aside", "may define R-REC R-REC 0+8 input"));
  EXPECT_THAT(indexed.At("delete"), ElementsAre("use DELETE R-REC 0+5 aside"));
}

TEST(FileEffects, ARecordOfVaryingSizeTellsIt) {
  const auto program = Files("           $at^READ V AT END CONTINUE.\n");
  EXPECT_THAT(program.AtPoint("34 completed"),
              ElementsAre("define READ VL 0+4 input", "may define V-REC V-REC 0+9 input"));
  EXPECT_THAT(FileEffectsOf("WRITE V-REC"), ElementsAre("use V-REC V-REC 0+9 aside", "use WRITE VL 0+4 aside"));
}

TEST(FileEffects, WriteReadsTheRecord) {
  EXPECT_THAT(FileEffectsOf("WRITE F-OTHER"), ElementsAre("use F-OTHER F-REC 0+4 aside", "define WRITE FS 0+2 input"));
}

TEST(FileEffects, WriteFromMovesToTheRecordFirst) {
  EXPECT_THAT(FileEffectsOf("WRITE F-REC FROM W AFTER N LINES"),
              ElementsAre("use N N 0+4 aside", "use W W 0+10", "define F-REC F-REC 0+10 move copies",
                          "define WRITE FS 0+2 input"));
  EXPECT_THAT(FileEffectsOf("RELEASE S-REC FROM \"ABC\""), ElementsAre("define S-REC S-REC 0+6 constant move"));
}

TEST(FileEffects, OpenAndCloseTellTheStatus) {
  EXPECT_THAT(FileEffectsOf("OPEN INPUT F S"), ElementsAre("define OPEN FS 0+2 input"));
  EXPECT_THAT(FileEffectsOf("CLOSE F"), ElementsAre("define CLOSE FS 0+2 input"));
  EXPECT_THAT(FileEffectsOf("DELETE R RECORD"), ElementsAre("use DELETE RK 0+4 aside"));
  EXPECT_THAT(FileEffectsOf("START R KEY > RK"), ElementsAre("use RK RK 0+4 aside", "use START RK 0+4 aside"));
}

TEST(FileEffects, SortPassesRecordsThroughTheAreasOfAllFiles) {
  EXPECT_THAT(FileEffectsOf("SORT S ON ASCENDING KEY S-REC USING F GIVING R"),
              ElementsAre("may define SORT S-REC 0+6 input", "may define SORT F-REC 0+10 input",
                          "may define SORT R-REC 0+5 input", "may define SORT FS 0+2 input"));
}

TEST(FileEffects, SortOfATableChangesAllOfIt) {
  EXPECT_THAT(FileEffectsOf("SORT E ASCENDING KEY E"), ElementsAre("use E T 0+2 5x2", "define E T 0+10 computation"));
}

TEST(FileEffects, ReturnBringsInTheSortedRecord) {
  const auto program = Files("           $at^RETURN S INTO W AT END CONTINUE.\n");
  EXPECT_THAT(program.AtPoint("34 completed"), ElementsAre("define S-REC S-REC 0+6 input", "define W W 0+10 input"));
}

TEST(FileEffects, TheAreasOfFilesAreThereWhenTheProgramStarts) {
  EXPECT_THAT(Files("").AtEntry("F-REC"), ElementsAre("define F-REC F-REC 0+10 initial value"));
}

TEST(FileEffects, StatementsTouchWhatTheyDoNotName) {
  const auto program = Files(R"(           READ F.
           MOVE FS TO W.
           MOVE W TO F-OTHER.
           READ R.
)");
  EXPECT_THAT(program.PointsOn("FS"), ElementsAre("34 READ", "35 MOVE"));
  EXPECT_THAT(program.PointsOn("F-REC"), ElementsAre("34 READ", "36 MOVE"));
  EXPECT_THAT(program.PointsOn("RK"), ElementsAre("37 READ"));
}

TEST(ScreenEffects, AcceptTakesInput) {
  EXPECT_THAT(FileEffectsOf("ACCEPT W"), ElementsAre("define W W 0+10 input"));
  EXPECT_THAT(FileEffectsOf("ACCEPT W FROM DATE"), ElementsAre("define W W 0+10 input"));
  EXPECT_THAT(FileEffectsOf("ACCEPT W FROM ENVIRONMENT \"HOME\""), ElementsAre("may define W W 0+10 input"));
}

TEST(ScreenEffects, DisplayReadsItsOperands) {
  EXPECT_THAT(FileEffectsOf("DISPLAY \"N\" N W (1:2)"), ElementsAre("use N N 0+4 aside", "use W W 0+2 aside"));
}

TEST(ScreenEffects, AScreenStandsForTheItemsOfItsFields) {
  const EffectsProgram program(R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. SHOWN.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  A PIC X(3).
       01  B PIC X(4).
       01  C PIC X(5).
       SCREEN SECTION.
       01  SCR.
           05  LINE 1 COL 1 PIC X(3) FROM A.
           05  LINE 2 COL 1 PIC X(4) USING B.
           05  LINE 3 COL 1 PIC X(5) TO C.
       PROCEDURE DIVISION.
       MAIN-PARA.
           $show^DISPLAY SCR.
           $take^ACCEPT SCR.
)");
  EXPECT_THAT(program.At("show"), ElementsAre("use DISPLAY A 0+3 aside", "use DISPLAY B 0+4 aside"));
  EXPECT_THAT(program.At("take"),
              UnorderedElementsAre("use ACCEPT A 0+3 aside", "use ACCEPT B 0+4 aside", "may define ACCEPT B 0+4 input",
                                   "may define ACCEPT C 0+5 input"));
}

}  // namespace
}  // namespace qmrules::test
