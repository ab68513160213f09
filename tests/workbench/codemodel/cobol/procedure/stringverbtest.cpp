#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbench/codemodel/cobol/procedure/markedstatements.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;

constexpr std::string_view kStringData = R"(       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  A PIC X(10).
       01  B PIC X(10).
       01  C PIC X(10).
       01  D PIC X(10).
       01  N PIC 9(02).
       01  M PIC 9(02).
       01  P PIC 9(02).
       01  TAB.
           05  T PIC 9(02) OCCURS 5.
)";

TEST(StringVerb, ReadsItsSendersAndKeepsTheRestOfItsReceiver) {
  const auto marked = ExpectMarked(kStringData,
                                   "STRING $SourceOut[[A]] $Source[[' ']] DELIMITED BY SIZE\n"
                                   "       $SourceOut[[B]] DELIMITED $Delimiter[[SPACE]]\n"
                                   "       $SourceOut[[C]] DELIMITED BY $DelimiterOut[[D]]\n"
                                   "    INTO $TargetInOut[[D]] WITH POINTER $PointerInOut[[P]].");
  EXPECT_THAT(marked.Statements(), ElementsAre("STAT STRING"));
}

TEST(StringVerb, HasABranchForAnOverflow) {
  const auto marked = ExpectMarked(kStringData,
                                   "STRING $SourceOut[[A]] DELIMITED SIZE INTO $TargetInOut[[B]] POINTER\n"
                                   "    $PointerInOut[[P]]\n"
                                   "    ON OVERFLOW MOVE $Source[[1]] TO $TargetIn[[N]]\n"
                                   "    NOT ON OVERFLOW MOVE $Source[[2]] TO $TargetIn[[N]]\n"
                                   "END-STRING.");
  EXPECT_THAT(marked.Statements(), ElementsAre("STAT STRING", "IF If overflow", "STAT MOVE", "STAT MOVE"));
}

TEST(StringVerb, TellsWhatItLacks) {
  EXPECT_THAT(MarkedStatements(kStringData, "STRING INTO A.").Diagnostics(),
              ElementsAre("1:8 STRING lacks its sending items."));
  EXPECT_THAT(MarkedStatements(kStringData, "STRING A DELIMITED SIZE.").Diagnostics(),
              ElementsAre("1:24 STRING lacks INTO."));
}

TEST(UnstringVerb, WritesItsReceiversAndWhatItCounts) {
  const auto marked = ExpectMarked(kStringData,
                                   "UNSTRING $SourceOut[[A]] DELIMITED BY ALL $Delimiter[[',']] OR $DelimiterOut[[D]]\n"
                                   "    INTO $TargetIn[[B]] DELIMITER IN $TargetIn[[C]] COUNT IN $CountIn[[N]]\n"
                                   "         $TargetIn[[T ($SubscriptOut[[M]])]] COUNT $CountIn[[M]]\n"
                                   "    WITH POINTER $PointerInOut[[P]] TALLYING IN $TallyInOut[[N]]\n"
                                   "    ON OVERFLOW DISPLAY $Source[['FULL']]\n"
                                   "END-UNSTRING.");
  EXPECT_THAT(marked.Statements(), ElementsAre("STAT UNSTRING", "IF If overflow", "IOSTAT DISPLAY"));
}

TEST(UnstringVerb, CanDoWithoutDelimiters) {
  ExpectMarked(kStringData, "UNSTRING $SourceOut[[A]] INTO $TargetIn[[B]] $TargetIn[[C]].");
}

TEST(InspectVerb, CountsWithoutChangingItsItem) {
  const auto marked = ExpectMarked(kStringData,
                                   "INSPECT $SourceOut[[A]] TALLYING\n"
                                   "    $TallyInOut[[N]] FOR ALL $Other[['X']] $OtherOut[[B]] LEADING $Other[[ZERO]]\n"
                                   "        AFTER INITIAL $Delimiter[['(']] BEFORE $DelimiterOut[[C]]\n"
                                   "    $TallyInOut[[T ($Subscript[[1]])]] FOR CHARACTERS BEFORE INITIAL\n"
                                   "        $Delimiter[[SPACE]]\n"
                                   "    $TallyInOut[[M]] FOR TRAILING $Other[[SPACES]].");
  EXPECT_THAT(marked.Statements(), ElementsAre("STAT INSPECT"));
}

TEST(InspectVerb, ReplacesInItsItem) {
  ExpectMarked(kStringData,
               "INSPECT $BothInOut[[A]] REPLACING CHARACTERS BY $Source[['*']] AFTER $Delimiter[['-']].\n"
               "INSPECT $BothInOut[[A]] REPLACING ALL $Other[['A']] BY $Source[['B']]\n"
               "    $OtherOut[[C]] BY $SourceOut[[D]] BEFORE INITIAL $Delimiter[['X']]\n"
               "    FIRST $Other[['E']] BY $Source[['F']]\n"
               "    LEADING $Other[[SPACES]] BY $Source[[ZEROS]].");
}

TEST(InspectVerb, CountsAndReplaces) {
  ExpectMarked(kStringData,
               "INSPECT $BothInOut[[A]] TALLYING $TallyInOut[[N]] FOR ALL $Other[['X']]\n"
               "    REPLACING ALL $Other[['X']] BY $Source[['Y']].");
}

TEST(InspectVerb, ConvertsCharacters) {
  ExpectMarked(kStringData,
               "INSPECT $BothInOut[[A]] CONVERTING $Other[['abc']] TO $SourceOut[[B]]\n"
               "    AFTER INITIAL $Delimiter[[QUOTE]].");
}

TEST(InspectVerb, TellsWhatItLacks) {
  EXPECT_THAT(MarkedStatements(kStringData, "INSPECT A.").Diagnostics(),
              ElementsAre("1:10 INSPECT lacks TALLYING, REPLACING or CONVERTING."));
  EXPECT_THAT(MarkedStatements(kStringData, "INSPECT A REPLACING ALL 'X'.").Diagnostics(),
              ElementsAre("1:28 REPLACING lacks BY."));
  EXPECT_THAT(MarkedStatements(kStringData, "INSPECT A CONVERTING B.").Diagnostics(),
              ElementsAre("1:23 CONVERTING lacks TO."));
}

TEST(ExamineVerb, CountsInTheRegisterTally) {
  const auto marked = ExpectMarked(kStringData,
                                   "EXAMINE $SourceOut[[A]] TALLYING UNTIL FIRST $Other[['X']].\n"
                                   "EXAMINE $BothInOut[[A]] TALLYING ALL $Other[['X']] REPLACING BY $Source[['Y']].");
  EXPECT_THAT(marked.Implicit(), ElementsAre("Tally TALLY IN", "Tally TALLY IN"));
}

TEST(ExamineVerb, Replaces) {
  ExpectMarked(kStringData, "EXAMINE $BothInOut[[A]] REPLACING LEADING $Other[[ZERO]] BY $Source[[SPACE]].");
}

TEST(TransformVerb, ChangesItsItem) {
  ExpectMarked(kStringData,
               "TRANSFORM $BothInOut[[A]] CHARACTERS FROM $Other[['AB']] TO $Source[['XY']].\n"
               "TRANSFORM $BothInOut[[A]] FROM $OtherOut[[B]] TO $SourceOut[[C]].");
}

}  // namespace
}  // namespace qmrules::test
