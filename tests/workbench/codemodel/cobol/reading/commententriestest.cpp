#include <gtest/gtest.h>

#include "workbench/codemodel/cobol/reading/lexedtext.h"

namespace qmrules::workbench::codemodel::cobol {
namespace {

TEST(CommentEntries, TheyGoOnToTheNextWordInAreaA) {
  EXPECT_EQ(
      Fixed("       IDENTIFICATION DIVISION.\n"
            "       PROGRAM-ID. X.\n"
            "       AUTHOR. DON'T ASK. MOVE A TO B.\n"
            "           COPY NOTHING.\n"
            "      -    'no continuation'\n"
            "       INSTALLATION.\n"
            "           \"A. B.\n"
            "       DATE-WRITTEN. 1995.\n"
            "       DATE-COMPILED.\n"
            "       SECURITY.    NONE\n"
            "       REMARKS.\n"
            "           ENVIRONMENT DIVISION.\n"
            "       ENVIRONMENT DIVISION.\n"
            "       AUTHOR. A.\n"),
      "IDENTIFICATION DIVISION .|PROGRAM-ID . X .|AUTHOR .|INSTALLATION .|DATE-WRITTEN .|DATE-COMPILED .|SECURITY .|"
      "REMARKS .|ENVIRONMENT DIVISION .|AUTHOR . A .");
}

TEST(CommentEntries, InFreeFormTheyGoOnToTheNextHeader) {
  EXPECT_EQ(Free("ID DIVISION.\n"
                 "PROGRAM-ID. X.\n"
                 "AUTHOR. DON'T ASK.\n"
                 "THE DATA DIVISION.\n"
                 "SECURITY IS NO CONCERN.\n"
                 "DATE-WRITTEN. TODAY\n"
                 "DATA\n"
                 "DATA DIVISION.\n"
                 "X.\n"),
            "ID DIVISION .|PROGRAM-ID . X .|AUTHOR .|DATE-WRITTEN .|DATA DIVISION .|X .");
  EXPECT_EQ(Free("PROGRAM-ID. X.\nAUTHOR. A.\nWORKING-STORAGE SECTION.\nX."),
            "PROGRAM-ID . X .|AUTHOR .|WORKING-STORAGE SECTION .|X .");
  EXPECT_EQ(Free("PROGRAM-ID. X.\nAUTHOR. A.\nPROGRAM-ID. Y."), "PROGRAM-ID . X .|AUTHOR .|PROGRAM-ID . Y .");
}

TEST(CommentEntries, TheyNeedNoFullStopBehindTheirHeader) {
  EXPECT_EQ(Fixed("       PROGRAM-ID. X.\n       AUTHOR A. B.\n       DATA DIVISION.\n"),
            "PROGRAM-ID . X .|AUTHOR|DATA DIVISION .");
}

TEST(CommentEntries, OutsideTheIdentificationDivisionTheirWordsAreNames) {
  EXPECT_EQ(Fixed("       AUTHOR. A.\n       PROCEDURE DIVISION.\n       SECURITY. MOVE A TO B.\n"),
            "AUTHOR . A .|PROCEDURE DIVISION .|SECURITY . MOVE A TO B .");
  EXPECT_EQ(Fixed("       ID DIVISION.\n       FILE SECTION.\n       REMARKS. A.\n"),
            "ID DIVISION .|FILE SECTION .|REMARKS . A .");
}

TEST(CommentEntries, OnlyAWordAtTheBeginningOfItsLineIsAHeader) {
  EXPECT_EQ(Fixed("       PROGRAM-ID. AUTHOR. A.\n           SECURITY. B.\n"),
            "PROGRAM-ID . AUTHOR . A .|SECURITY . B .");
}

TEST(CommentEntries, CommentLinesWithinThemAreNoted) {
  const LexedFile lexed = LexFixed("       ID DIVISION.\n       AUTHOR. A\n      * c\n       DATA DIVISION.\n");
  EXPECT_EQ(Shown(lexed), "ID DIVISION .|AUTHOR .|DATA DIVISION .");
  EXPECT_EQ(*lexed.commentRows, (std::vector<std::uint32_t>{3}));
}

TEST(CommentEntries, TheLastOneEndsWithTheFile) {
  EXPECT_EQ(Fixed("       ID DIVISION.\n       AUTHOR.\n           A.\n           B."), "ID DIVISION .|AUTHOR .");
}

}  // namespace
}  // namespace qmrules::workbench::codemodel::cobol
