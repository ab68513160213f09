#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbench/codemodel/cobol/procedure/markedstatements.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;

constexpr std::string_view kCommunicationData = R"(       ENVIRONMENT DIVISION.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT F ASSIGN TO 'F'.
       DATA DIVISION.
       FILE SECTION.
       FD  F REPORT IS RPT.
       WORKING-STORAGE SECTION.
       01  A PIC X(10).
       01  N PIC 9(02).
       COMMUNICATION SECTION.
       CD  Q FOR INPUT.
       01  QREC PIC X(87).
       REPORT SECTION.
       RD  RPT.
       01  DET TYPE IS DETAIL LINE PLUS 1.
           05  COLUMN 1 PIC X(10) SOURCE A.
)";

TEST(CommunicationVerbs, SendAMessage) {
  const auto marked = ExpectMarked(kCommunicationData,
                                   "SEND $File[[Q]] FROM $FromOut[[A]] WITH EMI.\n"
                                   "SEND $File[[Q]] FROM $FromOut[[A]] WITH $OtherOut[[N]] AFTER ADVANCING\n"
                                   "    $OtherOut[[N]] LINES REPLACING LINE.\n"
                                   "SEND $File[[Q]] WITH EGI BEFORE PAGE.");
  EXPECT_EQ(marked.Statements()[0], "IOSTAT SEND");
}

TEST(CommunicationVerbs, ReceiveAMessage) {
  const auto marked = ExpectMarked(kCommunicationData,
                                   "RECEIVE $File[[Q]] MESSAGE INTO $IntoIn[[A]] NO DATA CONTINUE WITH DATA CONTINUE.");
  EXPECT_THAT(marked.Statements(), ElementsAre("IOSTAT RECEIVE", "IF If no data", "STAT CONTINUE", "STAT CONTINUE"));
}

TEST(CommunicationVerbs, EnableAndDisableQueues) {
  ExpectMarked(kCommunicationData,
               "ENABLE INPUT TERMINAL $File[[Q]] WITH KEY $KeyOut[[A]].\n"
               "DISABLE OUTPUT $File[[Q]] KEY $Key[['X']].\n"
               "ENABLE INPUT $File[[Q]].\n"
               "PURGE $File[[Q]].");
}

TEST(CommunicationVerbs, CountMessages) {
  ExpectMarked(kCommunicationData, "ACCEPT $File[[Q]] MESSAGE COUNT.");
}

TEST(ReportVerbs, NameReportsAndReadDetails) {
  const auto marked = ExpectMarked(kCommunicationData,
                                   "INITIATE $File[[RPT]].\n"
                                   "GENERATE $SourceOut[[DET]].\n"
                                   "GENERATE $File[[RPT]].\n"
                                   "SUPPRESS PRINTING.\n"
                                   "TERMINATE $File[[RPT]].");
  EXPECT_THAT(marked.Statements(), ElementsAre("IOSTAT INITIATE", "IOSTAT GENERATE", "IOSTAT GENERATE",
                                               "IOSTAT SUPPRESS", "IOSTAT TERMINATE"));
}

}  // namespace
}  // namespace qmrules::test
