#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbench/codemodel/cobol/procedure/markedstatements.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;

constexpr std::string_view kTerminalData = R"(       ENVIRONMENT DIVISION.
       CONFIGURATION SECTION.
       SPECIAL-NAMES.
           SYSIN IS CARDS CONSOLE IS OPERATOR.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  A PIC X(10).
       01  B PIC X(10).
       01  N PIC 9(02).
       01  COLOR-NO PIC 9(02).
       01  TBL.
           05  T PIC X(10) OCCURS 5.
)";

TEST(AcceptVerb, BringsDataIn) {
  const auto marked = ExpectMarked(kTerminalData,
                                   "ACCEPT $TargetIn[[A]].\n"
                                   "ACCEPT $TargetIn[[T ($SubscriptOut[[N]])]] FROM $Source[[CARDS]].\n"
                                   "ACCEPT $TargetIn[[A]] FROM $Source[[CONSOLE]].\n"
                                   "ACCEPT OMITTED.");
  EXPECT_EQ(marked.Statements()[0], "IOSTAT ACCEPT");
}

TEST(AcceptVerb, AsksTheSystem) {
  ExpectMarked(kTerminalData,
               "ACCEPT $TargetIn[[A]] FROM $Source[[DATE]].\n"
               "ACCEPT $TargetIn[[A]] FROM $Source[[DATE]] YYYYMMDD.\n"
               "ACCEPT $TargetIn[[A]] FROM $Source[[DAY]] YYYYDDD.\n"
               "ACCEPT $TargetIn[[A]] FROM $Source[[DAY-OF-WEEK]].\n"
               "ACCEPT $TargetIn[[A]] FROM $Source[[TIME]].\n"
               "ACCEPT $TargetIn[[A]] FROM $Source[[COMMAND-LINE]].\n"
               "ACCEPT $TargetIn[[A]] FROM $Source[[ENVIRONMENT]] $Other[['HOME']].\n"
               "ACCEPT $TargetIn[[A]] FROM $Source[[ENVIRONMENT-VALUE]]\n"
               "    ON EXCEPTION CONTINUE END-ACCEPT.\n"
               "ACCEPT $TargetIn[[A]] FROM $Source[[ESCAPE]] KEY.\n"
               "ACCEPT $TargetIn[[A]] FROM $Source[[EXCEPTION]] STATUS.\n"
               "ACCEPT $TargetIn[[A]] FROM $Source[[USER]] NAME.");
}

TEST(AcceptVerb, TakesAFieldOfTheScreen) {
  ExpectMarked(kTerminalData,
               "ACCEPT $TargetIn[[A]] AT $Other[[0510]] WITH UNDERLINE.\n"
               "ACCEPT $TargetIn[[A]] AT LINE $OtherOut[[N]] COLUMN $Other[[5]] WITH NO ECHO AUTO-SKIP.\n"
               "ACCEPT $TargetIn[[A]] LINE NUMBER $Other[[5]] POSITION $Other[[1]] PROMPT $Other[['_']] TAB.\n"
               "ACCEPT $TargetIn[[A]] WITH FOREGROUND-COLOR IS $OtherOut[[COLOR-NO]] UPDATE SIZE $Other[[5]]\n"
               "    ON EXCEPTION CONTINUE.");
}

TEST(AcceptVerb, TellsWhatItLacks) {
  EXPECT_THAT(MarkedStatements(kTerminalData, "ACCEPT FROM DATE.").Diagnostics(),
              ElementsAre("1:8 ACCEPT lacks its item."));
  EXPECT_THAT(MarkedStatements(kTerminalData, "ACCEPT A FROM.").Diagnostics(),
              ElementsAre("1:14 FROM lacks its operand."));
}

TEST(DisplayVerb, ReadsItsOperands) {
  const auto marked = ExpectMarked(kTerminalData,
                                   "DISPLAY $Source[['A=']] $SourceOut[[A]] $SourceOut[[T ($Subscript[[1]])]]\n"
                                   "    $Source[[FUNCTION TRIM ($ArgumentOut[[B]])]] WITH NO ADVANCING.\n"
                                   "DISPLAY $SourceOut[[A]] UPON $Other[[OPERATOR]].\n"
                                   "DISPLAY $SourceOut[[A]] UPON $Other[[SYSOUT]] NO ADVANCING.\n"
                                   "DISPLAY $SourceOut[[A]] UPON $Other[[ENVIRONMENT-NAME]].");
  EXPECT_EQ(marked.Statements()[0], "IOSTAT DISPLAY");
}

TEST(DisplayVerb, ShowsFieldsOfTheScreen) {
  ExpectMarked(kTerminalData,
               "DISPLAY $Source[['NAME']] AT $Other[[0101]] WITH HIGHLIGHT BACKGROUND-COLOR $Other[[1]].\n"
               "DISPLAY $SourceOut[[A]] LINE $OtherOut[[N]] + $Other[[1]] COL $Other[[5]] ERASE EOL\n"
               "        $SourceOut[[B]] LINE $Other[[2]] POSITION $Other[[1]] REVERSE.\n"
               "DISPLAY $Source[[' ']] WITH BLANK SCREEN END-DISPLAY.\n"
               "DISPLAY $SourceOut[[A]] WITH SCROLL UP BY $Other[[2]] LINES.");
}

TEST(DisplayVerb, TellsWhatItLacks) {
  EXPECT_THAT(MarkedStatements(kTerminalData, "DISPLAY.").Diagnostics(), ElementsAre("1:8 DISPLAY lacks its operand."));
  EXPECT_THAT(MarkedStatements(kTerminalData, "DISPLAY A UPON.").Diagnostics(),
              ElementsAre("1:15 UPON lacks a device."));
}

TEST(ExhibitVerb, ReadsItsOperands) {
  ExpectMarked(kTerminalData,
               "EXHIBIT NAMED $SourceOut[[A]] $SourceOut[[B]].\n"
               "EXHIBIT CHANGED NAMED $SourceOut[[A]].\n"
               "EXHIBIT $Source[['X']].");
}

TEST(TraceVerbs, HaveNoOperands) {
  const auto marked = ExpectMarked(kTerminalData, "READY TRACE.\nRESET TRACE.");
  EXPECT_THAT(marked.Statements(), ElementsAre("STAT READY", "STAT RESET"));
}

}  // namespace
}  // namespace qmrules::test
