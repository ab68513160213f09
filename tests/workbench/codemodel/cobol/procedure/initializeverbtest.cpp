#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/cobolmodel.h"
#include "workbench/codemodel/cobol/procedure/markedstatements.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;

constexpr std::string_view kInitializeData = R"(       DATA DIVISION.
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
  const auto marked = ExpectMarked(kInitializeData, "INITIALIZE $TargetIn[[A]] $TargetIn[[T ($SubscriptOut[[N]])]].");
  EXPECT_THAT(marked.Statements(), ElementsAre("STAT INITIALIZE"));
}

TEST(InitializeVerb, ReadsWhatItReplacesBy) {
  ExpectMarked(kInitializeData,
               "INITIALIZE $TargetIn[[TAB]] REPLACING ALPHANUMERIC DATA BY $SourceOut[[A]]\n"
               "    NUMERIC BY $Source[[ZERO]] ALPHANUMERIC-EDITED BY $Source[['X']].");
}

TEST(InitializeVerb, TakesItsClausesInTheirOrder) {
  ExpectMarked(kInitializeData,
               "INITIALIZE $TargetIn[[TAB]] WITH FILLER ALL TO VALUE\n"
               "    THEN REPLACING NUMERIC DATA BY $Source[[1]] THEN TO DEFAULT.\n"
               "INITIALIZE $TargetIn[[TAB]] NUMERIC TO VALUE.\n"
               "INITIALIZE $TargetIn[[TAB]] TO DEFAULT.");
}

TEST(InitializeVerb, KeepsTheCategoryWithWhatReplacesIt) {
  const CobolModel model = CobolModel::Of("01  A PIC X.\n01  N PIC 9.\n", R"(MAIN-PARA.
    INITIALIZE A REPLACING NUMERIC BY $two[[N]]
      alphanumeric-edited DATA BY $three[[FUNCTION TRIM (A)]].
)");
  const auto categoryAt = [&](std::string_view mark) { return model.Text(model.Node(model.NodeAt(mark)).detail); };
  EXPECT_EQ(categoryAt("two"), "NUMERIC");
  EXPECT_EQ(categoryAt("three"), "ALPHANUMERIC-EDITED");
}

TEST(InitializeVerb, TellsThatItTakesInOtherItemsThanUsual) {
  const CobolModel model = CobolModel::Of("01  A PIC X.\n", R"(MAIN-PARA.
    $plain^INITIALIZE A.
    $replacing^INITIALIZE A REPLACING NUMERIC BY 1.
    $filler^INITIALIZE A WITH FILLER.
    $value^INITIALIZE A ALL TO VALUE.
    $default^INITIALIZE A REPLACING NUMERIC BY 1 TO DEFAULT.
)");
  const auto selects = [&](std::string_view mark) {
    return (model.Node(model.NodeAt(mark)).flags & workbench::codemodel::kSelects) != 0;
  };
  EXPECT_FALSE(selects("plain"));
  EXPECT_FALSE(selects("replacing"));
  EXPECT_TRUE(selects("filler"));
  EXPECT_TRUE(selects("value"));
  EXPECT_TRUE(selects("default"));
}

TEST(InitializeVerb, TellsWhatItLacks) {
  EXPECT_THAT(MarkedStatements(kInitializeData, "INITIALIZE.").Diagnostics(),
              ElementsAre("1:11 INITIALIZE lacks its item."));
  EXPECT_THAT(MarkedStatements(kInitializeData, "INITIALIZE A REPLACING BY 1.").Diagnostics(),
              ElementsAre("1:24 REPLACING lacks a category of data."));
}

TEST(AllocateVerb, WritesTheItemOrThePointer) {
  ExpectMarked(kInitializeData,
               "ALLOCATE $TargetIn[[L]] INITIALIZED RETURNING $ReturningIn[[P]].\n"
               "ALLOCATE $SourceOut[[N]] * $Source[[2]] CHARACTERS RETURNING $ReturningIn[[P]].");
}

TEST(FreeVerb, ReadsAndClearsThePointer) {
  ExpectMarked(kInitializeData, "FREE $BothInOut[[P]].");
}

TEST(ValidateVerb, ReadsItsItems) {
  ExpectMarked(kInitializeData, "VALIDATE $SourceOut[[A]] $SourceOut[[N]].");
}

}  // namespace
}  // namespace qmrules::test
