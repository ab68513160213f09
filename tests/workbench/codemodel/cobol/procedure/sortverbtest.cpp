#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbench/codemodel/cobol/procedure/markedstatements.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;

constexpr std::string_view kSortData = R"(       ENVIRONMENT DIVISION.
       CONFIGURATION SECTION.
       SPECIAL-NAMES.
           ALPHABET ASC IS STANDARD-1.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT S ASSIGN TO 'S'.
           SELECT F ASSIGN TO 'F'.
           SELECT G ASSIGN TO 'G'.
       DATA DIVISION.
       FILE SECTION.
       SD  S.
       01  SREC.
           05  K1 PIC X(04).
           05  K2 PIC X(06).
       FD  F.
       01  FREC PIC X(10).
       FD  G.
       01  GREC PIC X(10).
       WORKING-STORAGE SECTION.
       01  A PIC X(10).
       01  TAB.
           05  T OCCURS 5.
               10  TK PIC X(02).
)";

TEST(SortVerb, ReadsItsKeysAndNamesItsFiles) {
  const auto marked =
      ExpectMarked(kSortData,
                   "SORT $File[[S]] ON ASCENDING KEY $KeyOut[[K1]] DESCENDING $KeyOut[[K2 OF $Qualifier[[SREC]]]]\n"
                   "    WITH DUPLICATES IN ORDER COLLATING SEQUENCE IS $Other[[ASC]]\n"
                   "    USING $Input[[F]] $Input[[G]] GIVING $Output[[G]].");
  EXPECT_THAT(marked.Statements(), ElementsAre("IOSTAT SORT"));
}

TEST(SortVerb, NamesItsProcedures) {
  const auto marked = ExpectMarked(kSortData,
                                   "SORT $File[[S]] ASCENDING $KeyOut[[K1]] $KeyOut[[K2]]\n"
                                   "    INPUT PROCEDURE IS $Input[[MAIN]] THRU $Thru[[MAIN]]\n"
                                   "    OUTPUT PROCEDURE $Output[[MAIN]].");
  for (const auto& node : marked.Nodes(workbench::codemodel::Entity::Ref)) {
    if (marked.Text(node.name) == "MAIN") {
      EXPECT_EQ(marked.Model().nodes[node.declaration].entity, workbench::codemodel::Entity::Par);
    }
  }
}

TEST(SortVerb, ChangesTheTableThatItSorts) {
  const auto marked = ExpectMarked(kSortData,
                                   "SORT $BothInOut[[T]] ON DESCENDING KEY $KeyOut[[TK]].\n"
                                   "SORT $BothInOut[[T]] DESCENDING.");
  EXPECT_THAT(marked.Statements(), ElementsAre("STAT SORT", "STAT SORT"));
}

TEST(MergeVerb, ReadsItsKeysAndNamesItsFiles) {
  const auto marked = ExpectMarked(kSortData,
                                   "MERGE $File[[S]] ON ASCENDING KEY $KeyOut[[K1]] SEQUENCE $Other[[ASC]]\n"
                                   "    USING $Input[[F]] $Input[[G]] OUTPUT PROCEDURE $Output[[MAIN]].");
  EXPECT_THAT(marked.Statements(), ElementsAre("IOSTAT MERGE"));
}

TEST(ReleaseVerb, ReadsItsRecord) {
  const auto marked =
      ExpectMarked(kSortData, "RELEASE $RecordOut[[SREC]].\nRELEASE $RecordInOut[[SREC]] FROM $FromOut[[A]].");
  EXPECT_EQ(marked.Statements()[0], "IOSTAT RELEASE");
  EXPECT_THAT(marked.Implicit(), ElementsAre("File S ", "File S "));
}

TEST(ReturnVerb, BringsDataIntoTheRecord) {
  const auto marked = ExpectMarked(
      kSortData, "RETURN $File[[S]] RECORD INTO $IntoIn[[A]] AT END CONTINUE NOT AT END CONTINUE END-RETURN.");
  EXPECT_THAT(marked.Statements(), ElementsAre("IOSTAT RETURN", "IF If at end", "STAT CONTINUE", "STAT CONTINUE"));
  EXPECT_THAT(marked.Implicit(), ElementsAre("Record SREC IN"));
}

TEST(SortVerb, TellsWhatItLacks) {
  EXPECT_THAT(MarkedStatements(kSortData, "SORT.").Diagnostics(), ElementsAre("1:5 SORT lacks the name of a file."));
  EXPECT_THAT(MarkedStatements(kSortData, "SORT S ASCENDING K1 USING.").Diagnostics(),
              ElementsAre("1:26 USING lacks the name of a file."));
}

}  // namespace
}  // namespace qmrules::test
