#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbench/codemodel/cobol/procedure/markedstatements.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view kFileData = R"(       ENVIRONMENT DIVISION.
       CONFIGURATION SECTION.
       SPECIAL-NAMES.
           C01 IS TOP-OF-FORM.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT F ASSIGN TO 'F' ORGANIZATION INDEXED
               ACCESS DYNAMIC RECORD KEY IS K.
           SELECT G ASSIGN TO 'G'.
           SELECT H ASSIGN TO 'H'.
       DATA DIVISION.
       FILE SECTION.
       FD  F.
       01  REC.
           05  K PIC X(04).
           05  V PIC X(06).
       FD  G.
       01  GREC PIC X(10).
       FD  H.
       01  HREC PIC X(10).
       WORKING-STORAGE SECTION.
       01  A PIC X(10).
       01  N PIC 9(02).
)";

TEST(OpenVerb, TellsHowItsFilesAreUsed) {
  const auto marked = ExpectMarked(kFileData,
                                   "OPEN INPUT $Input[[F]] $Input[[G]] OUTPUT $Output[[H]].\n"
                                   "OPEN I-O $Both[[F]] EXTEND $Output[[G]].\n"
                                   "OPEN INPUT $Input[[G]] REVERSED $Input[[H]] WITH NO REWIND.\n"
                                   "OPEN OUTPUT $Output[[G]] WITH LOCK.\n"
                                   "OPEN I-O SHARING WITH ALL OTHER RETRY $Times[[3]] TIMES $Both[[F]].");
  EXPECT_EQ(marked.Statements()[0], "IOSTAT OPEN");
}

TEST(OpenVerb, TellsWhatItLacks) {
  EXPECT_THAT(MarkedStatements(kFileData, "OPEN F.").Diagnostics(),
              ElementsAre("1:6 OPEN lacks INPUT, OUTPUT, I-O or EXTEND."));
  EXPECT_THAT(MarkedStatements(kFileData, "OPEN INPUT.").Diagnostics(),
              ElementsAre("1:11 OPEN lacks the name of a file."));
  EXPECT_THAT(MarkedStatements(kFileData, "OPEN INPUT A.").Diagnostics(),
              ElementsAre("1:12 A is not a file of this program."));
}

TEST(CloseVerb, NamesItsFiles) {
  const auto marked = ExpectMarked(kFileData,
                                   "CLOSE $File[[F]] $File[[G]] WITH LOCK.\n"
                                   "CLOSE $File[[G]] REEL FOR REMOVAL $File[[H]] UNIT WITH NO REWIND.\n"
                                   "CLOSE $File[[G]] NO REWIND.");
  EXPECT_EQ(marked.Statements()[0], "IOSTAT CLOSE");
}

TEST(ReadVerb, BringsDataIntoTheRecord) {
  const auto marked = ExpectMarked(kFileData, "READ $File[[F]].");
  EXPECT_THAT(marked.Statements(), ElementsAre("IOSTAT READ"));
  EXPECT_THAT(marked.Implicit(), ElementsAre("Record REC IN"));
}

TEST(ReadVerb, MovesTheRecordInto) {
  const auto marked = ExpectMarked(kFileData,
                                   "READ $File[[G]] NEXT RECORD INTO $IntoIn[[A]] AT END MOVE $Source[[1]] TO\n"
                                   "    $TargetIn[[N]] NOT AT END DISPLAY $SourceOut[[A]] END-READ.");
  EXPECT_THAT(marked.Statements(), ElementsAre("IOSTAT READ", "IF If at end", "STAT MOVE", "IOSTAT DISPLAY"));
  EXPECT_THAT(marked.Implicit(), ElementsAre("Record GREC IN"));
}

TEST(ReadVerb, ReadsItsKey) {
  const auto marked = ExpectMarked(kFileData,
                                   "READ $File[[F]] RECORD INTO $IntoIn[[A]] WITH NO LOCK KEY IS $KeyOut[[K]]\n"
                                   "    INVALID KEY MOVE $Source[[1]] TO $TargetIn[[N]].");
  EXPECT_THAT(marked.Statements(), ElementsAre("IOSTAT READ", "IF If invalid key", "STAT MOVE"));
}

TEST(ReadVerb, TakesTheWordsAboutLocks) {
  ExpectMarked(kFileData,
               "READ $File[[F]] PREVIOUS WITH KEPT LOCK.\n"
               "READ $File[[F]] IGNORE LOCK.\n"
               "READ $File[[F]] WITH WAIT.\n"
               "READ $File[[F]] WITH LOCK END-READ\n"
               "READ $File[[F]] ADVANCING ON LOCK.");
}

TEST(ReadVerb, TellsOfAFileThatIsNone) {
  const MarkedStatements marked(kFileData, "READ AT END MOVE 1 TO N.");
  EXPECT_THAT(marked.Diagnostics(), ElementsAre("1:6 READ lacks the name of a file."));
  EXPECT_THAT(marked.Statements(), ElementsAre("IOSTAT READ", "IF If at end", "STAT MOVE"));
}

TEST(WriteVerb, ReadsItsRecordAndLeadsToItsFile) {
  const auto marked = ExpectMarked(kFileData, "WRITE $RecordOut[[REC]].");
  EXPECT_THAT(marked.Statements(), ElementsAre("IOSTAT WRITE"));
  EXPECT_THAT(marked.Implicit(), ElementsAre("File F "));
}

TEST(WriteVerb, ChangesItsRecordFirstWithFrom) {
  ExpectMarked(kFileData, "WRITE $RecordInOut[[GREC]] FROM $FromOut[[A]].");
}

TEST(WriteVerb, Advances) {
  const auto marked = ExpectMarked(kFileData,
                                   "WRITE $RecordOut[[GREC]] AFTER ADVANCING $OtherOut[[N]] LINES.\n"
                                   "WRITE $RecordOut[[GREC]] BEFORE $Other[[2]].\n"
                                   "WRITE $RecordOut[[GREC]] AFTER PAGE.\n"
                                   "WRITE $RecordOut[[GREC]] AFTER ADVANCING $Other[[TOP-OF-FORM]]\n"
                                   "    AT END-OF-PAGE DISPLAY $Source[['EOP']] END-WRITE.");
  EXPECT_THAT(marked.Statements(), ElementsAre("IOSTAT WRITE", "IOSTAT WRITE", "IOSTAT WRITE", "IOSTAT WRITE",
                                               "IF If end of page", "IOSTAT DISPLAY"));
}

TEST(WriteVerb, WritesAFileFromAnItem) {
  ExpectMarked(kFileData, "WRITE FILE $File[[G]] FROM $FromOut[[A]].");
}

TEST(RewriteVerb, ReadsItsRecord) {
  ExpectMarked(kFileData,
               "REWRITE $RecordOut[[REC]] INVALID KEY CONTINUE END-REWRITE.\n"
               "REWRITE $RecordInOut[[REC]] RECORD FROM $FromOut[[A]] WITH LOCK.");
}

TEST(DeleteVerb, NamesItsFile) {
  const auto marked = ExpectMarked(kFileData, "DELETE $File[[F]] RECORD NOT INVALID KEY CONTINUE END-DELETE.");
  EXPECT_THAT(marked.Statements(), ElementsAre("IOSTAT DELETE", "IF If invalid key", "STAT CONTINUE"));
  ExpectMarked(kFileData, "DELETE FILE $File[[G]] $File[[H]].");
}

TEST(StartVerb, ReadsItsKeyInAllSpellingsOfTheRelation) {
  ExpectMarked(kFileData,
               "START $File[[F]].\n"
               "START $File[[F]] KEY IS EQUAL TO $KeyOut[[K]].\n"
               "START $File[[F]] KEY = $KeyOut[[K]].\n"
               "START $File[[F]] KEY IS NOT LESS THAN $KeyOut[[K]].\n"
               "START $File[[F]] KEY >= $KeyOut[[K]].\n"
               "START $File[[F]] KEY NOT < $KeyOut[[K]].\n"
               "START $File[[F]] KEY GREATER THAN OR EQUAL TO $KeyOut[[K OF $Qualifier[[REC]]]] INVALID KEY CONTINUE.\n"
               "START $File[[F]] KEY > $KeyOut[[K]] WITH LENGTH $Other[[2]] END-START.\n"
               "START $File[[F]] FIRST.\n"
               "START $File[[F]] KEY IS LAST.");
}

TEST(StartVerb, TellsWhatItLacks) {
  EXPECT_THAT(MarkedStatements(kFileData, "START F KEY K.").Diagnostics(), ElementsAre("1:13 KEY lacks its relation."));
  EXPECT_THAT(MarkedStatements(kFileData, "START F KEY > .").Diagnostics(), ElementsAre("1:15 KEY lacks its operand."));
}

TEST(UnlockVerb, NamesItsFile) {
  ExpectMarked(kFileData, "UNLOCK $File[[F]] RECORDS.\nUNLOCK $File[[F]].");
}

TEST(CommitVerb, HasNoOperands) {
  const auto marked = ExpectMarked(kFileData, "COMMIT ROLLBACK.");
  EXPECT_THAT(marked.Statements(), ElementsAre("STAT COMMIT", "STAT ROLLBACK"));
}

}  // namespace
}  // namespace qmrules::test
