#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbench/codemodel/cobol/procedure/markedstatements.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;

constexpr std::string_view kData = R"(       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  A PIC X(10).
       01  N PIC 9(02).
       01  P POINTER.
       01  TAB.
           05  T PIC X(10) OCCURS 5.
       LINKAGE SECTION.
       01  L PIC X(10).
)";

TEST(InitializeVerb, WritesItsItems) {
  const auto marked = ExpectMarked(kData, "INITIALIZE $TargetIn[[A]] $TargetIn[[T ($SubscriptOut[[N]])]].");
  EXPECT_THAT(marked.Statements(), ElementsAre("STAT INITIALIZE"));
}

TEST(InitializeVerb, ReadsWhatItReplacesBy) {
  ExpectMarked(kData,
               "INITIALIZE $TargetIn[[TAB]] REPLACING ALPHANUMERIC DATA BY $SourceOut[[A]]\n"
               "    NUMERIC BY $Source[[ZERO]] ALPHANUMERIC-EDITED BY $Source[['X']].");
}

TEST(InitializeVerb, TakesItsClausesInTheirOrder) {
  ExpectMarked(kData,
               "INITIALIZE $TargetIn[[TAB]] WITH FILLER ALL TO VALUE\n"
               "    THEN REPLACING NUMERIC DATA BY $Source[[1]] THEN TO DEFAULT.\n"
               "INITIALIZE $TargetIn[[TAB]] NUMERIC TO VALUE.\n"
               "INITIALIZE $TargetIn[[TAB]] TO DEFAULT.");
}

TEST(InitializeVerb, TellsWhatItLacks) {
  EXPECT_THAT(MarkedStatements(kData, "INITIALIZE.").Diagnostics(), ElementsAre("1:11 INITIALIZE lacks its item."));
  EXPECT_THAT(MarkedStatements(kData, "INITIALIZE A REPLACING BY 1.").Diagnostics(),
              ElementsAre("1:24 REPLACING lacks a category of data."));
}

TEST(AllocateVerb, WritesTheItemOrThePointer) {
  ExpectMarked(kData,
               "ALLOCATE $TargetIn[[L]] INITIALIZED RETURNING $ReturningIn[[P]].\n"
               "ALLOCATE $SourceOut[[N]] * $Source[[2]] CHARACTERS RETURNING $ReturningIn[[P]].");
}

TEST(FreeVerb, ReadsAndClearsThePointer) {
  ExpectMarked(kData, "FREE $BothInOut[[P]].");
}

TEST(ValidateVerb, ReadsItsItems) {
  ExpectMarked(kData, "VALIDATE $SourceOut[[A]] $SourceOut[[N]].");
}

}  // namespace
}  // namespace qmrules::test
