#pragma once

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "platform/memorysourceviewer.h"
#include "support/errortext.h"

namespace qmrules::platform {

// What every source viewer keeps, shown on a screen or not. `Holder` has the viewer as `viewer`, without files; the
// program's texts have 100 rows.
template <class Holder>
class SourceViewerContract : public testing::Test, public Holder {
 protected:
  SourceViewerContract() { this->viewer.SetFiles({{"PBRATE.cbl", "COBOL"}, {"copy\\PBPOLMS.cpy", "COBOL"}}); }

  int selections = 0;
  Subscription selection = this->viewer.OnSelectionChanged([this] { ++selections; });
};

TYPED_TEST_SUITE_P(SourceViewerContract);

using test::ErrorText;

TYPED_TEST_P(SourceViewerContract, TheFirstFileComesOnView) {
  EXPECT_EQ(this->viewer.CurFile()->FileName, "PBRATE.cbl");
  EXPECT_EQ(this->viewer.CurFile()->Language, "COBOL");
  EXPECT_EQ(this->viewer.Files(), (std::vector<std::string>{"PBRATE.cbl", "copy\\PBPOLMS.cpy"}));
  EXPECT_EQ(this->viewer.Row(), 1);
  EXPECT_EQ(this->viewer.SelectedRowsCount(), 0);
}

TYPED_TEST_P(SourceViewerContract, AnotherFileBeginsAtRowOne) {
  this->viewer.SetRow(20);
  this->viewer.SetSelectedRowsCount(3);
  int files = 0;
  const auto fileChange = this->viewer.OnFileChanged([&] { ++files; });
  this->viewer.OpenFile("COPY\\pbpolms.cpy");
  EXPECT_EQ(this->viewer.CurFile()->FileName, "copy\\PBPOLMS.cpy");
  EXPECT_EQ(this->viewer.Row(), 1);
  EXPECT_EQ(this->viewer.SelectedRowsCount(), 0);
  EXPECT_EQ(files, 1);
}

TYPED_TEST_P(SourceViewerContract, AnUnknownFileIsRefusedByName) {
  EXPECT_EQ(ErrorText([&] { this->viewer.OpenFile("PBGONE.cbl"); }),
            "PBGONE.cbl: the current program has no such file.");
  EXPECT_EQ(this->viewer.CurFile()->FileName, "PBRATE.cbl");
}

TYPED_TEST_P(SourceViewerContract, ASelectionDownwardStartsAtTheCaret) {
  this->viewer.SetSelectedRowsCount(0);
  this->viewer.SetRow(8);
  this->viewer.SetSelectedRowsCount(3);
  EXPECT_EQ(this->viewer.Row(), 8);
  EXPECT_EQ(this->viewer.SelectedRowsCount(), 3);
  EXPECT_EQ(this->viewer.Selected()->FromRow, 8);
  EXPECT_EQ(this->viewer.Selected()->FromCol, 1);
  EXPECT_EQ(this->viewer.Selected()->ToRow, 10);
  EXPECT_EQ(this->selections, 3);
}

TYPED_TEST_P(SourceViewerContract, ASelectionUpwardHasAMinusSignAndEndsAtTheCaret) {
  this->viewer.SetRow(10);
  this->viewer.SetSelectedRowsCount(-3);
  EXPECT_EQ(this->viewer.SelectedRowsCount(), -3);
  EXPECT_EQ(this->viewer.Selected()->FromRow, 8);
  EXPECT_EQ(this->viewer.Selected()->ToRow, 10);
}

TYPED_TEST_P(SourceViewerContract, MovingTheCaretDropsTheSelection) {
  this->viewer.SetSelectedRowsCount(3);
  this->viewer.SetRow(5);
  EXPECT_EQ(this->viewer.SelectedRowsCount(), 0);
  EXPECT_EQ(this->viewer.Selected()->FromRow, 5);
  EXPECT_EQ(this->viewer.Selected()->FromCol, 0);
}

TYPED_TEST_P(SourceViewerContract, RowsBelowTheFirstAreRefused) {
  EXPECT_EQ(ErrorText([&] { this->viewer.SetRow(0); }), "PBRATE.cbl: there is no row 0; rows count from 1.");
  this->viewer.SetRow(2);
  EXPECT_EQ(ErrorText([&] { this->viewer.SetSelectedRowsCount(-3); }),
            "PBRATE.cbl: there is no row 0; rows count from 1.");
  EXPECT_NO_THROW(this->viewer.SetSelectedRowsCount(-2));
}

TYPED_TEST_P(SourceViewerContract, ASelectedPieceOfTextHasItsColumn) {
  this->viewer.SelectText({4, 12, 6});
  EXPECT_EQ(this->viewer.Selected()->FromCol, 12);
  EXPECT_EQ(this->viewer.Selected()->ToRow, 6);
  EXPECT_EQ(this->viewer.SelectedRowsCount(), 0);
  EXPECT_EQ(ErrorText([&] { this->viewer.SelectText({4, 1, 3}); }), "A selection ends at its first row or below it.");
}

TYPED_TEST_P(SourceViewerContract, MarksAreKeptUntilTheyAreCleared) {
  this->viewer.CheckSegment({"COBOL#12", 8, 10});
  this->viewer.CheckSegment({"COBOL#12", 8, 10});
  EXPECT_EQ(this->viewer.Marks().size(), 2U);
  this->viewer.ClearMarks();
  EXPECT_TRUE(this->viewer.Marks().empty());
}

TYPED_TEST_P(SourceViewerContract, GoingToAPlaceOpensItsFile) {
  int files = 0;
  const auto fileChange = this->viewer.OnFileChanged([&] { ++files; });
  this->viewer.GoTo({"copy\\PBPOLMS.cpy", 17, 8});
  EXPECT_EQ(this->viewer.Row(), 17);
  this->viewer.GoTo({"copy\\PBPOLMS.cpy", 18, 1});
  EXPECT_EQ(this->viewer.Row(), 18);
  EXPECT_EQ(files, 1);
}

TYPED_TEST_P(SourceViewerContract, WithoutAFileThereIsNothingToSelect) {
  this->viewer.SetFiles({});
  EXPECT_FALSE(this->viewer.CurFile());
  EXPECT_FALSE(this->viewer.Selected());
  EXPECT_EQ(this->viewer.Row(), 0);
  EXPECT_NO_THROW(this->viewer.SetSelectedRowsCount(0));
  EXPECT_EQ(ErrorText([&] { this->viewer.SetRow(1); }), "No source file is on view.");
  EXPECT_EQ(ErrorText([&] { this->viewer.SetSelectedRowsCount(1); }), "No source file is on view.");
}

TYPED_TEST_P(SourceViewerContract, RowsAreSelectedAsOneChange) {
  this->viewer.SelectRows(10, -3);
  EXPECT_EQ(this->viewer.Row(), 10);
  EXPECT_EQ(this->viewer.SelectedRowsCount(), -3);
  EXPECT_EQ(this->viewer.Selected()->FromRow, 8);
  EXPECT_EQ(this->selections, 1);
  EXPECT_EQ(ErrorText([&] { this->viewer.SelectRows(2, -3); }), "PBRATE.cbl: there is no row 0; rows count from 1.");
  EXPECT_EQ(this->viewer.Row(), 10);
  EXPECT_EQ(this->viewer.SelectedRowsCount(), -3);
}

TYPED_TEST_P(SourceViewerContract, ASelectionReachesBehindTheLastRow) {
  this->viewer.SetRow(99);
  this->viewer.SetSelectedRowsCount(50);
  EXPECT_EQ(this->viewer.Row(), 99);
  EXPECT_EQ(this->viewer.SelectedRowsCount(), 50);
  this->viewer.SetRow(5000);
  this->viewer.SetSelectedRowsCount(2);
  EXPECT_EQ(this->viewer.Selected()->FromRow, 5000);
  EXPECT_EQ(this->viewer.Selected()->ToRow, 5001);
}

TYPED_TEST_P(SourceViewerContract, ASelectionEndsAtTheLargestRowAtMost) {
  this->viewer.SetRow(5);
  this->viewer.SetSelectedRowsCount(std::numeric_limits<int>::max());
  EXPECT_EQ(this->viewer.Selected()->FromRow, 5);
  EXPECT_EQ(this->viewer.Selected()->ToRow, std::numeric_limits<int>::max());
}

TYPED_TEST_P(SourceViewerContract, TheCaretHasTheColumnOfThePlaceGoneTo) {
  this->viewer.GoTo({"PBRATE.cbl", 4, 12});
  EXPECT_EQ(this->viewer.Column(), 12);
  EXPECT_EQ(this->viewer.Selected()->FromCol, 0);
  this->viewer.SetRow(5);
  EXPECT_EQ(this->viewer.Column(), 1);
}

TYPED_TEST_P(SourceViewerContract, ItIsToldWhenTheCaretIsPlacedAndWhenMarksChange) {
  int placed = 0;
  int marks = 0;
  const auto placing = this->viewer.OnCaretPlaced([&] { ++placed; });
  const auto marking = this->viewer.OnMarksChanged([&] { ++marks; });
  this->viewer.SetRow(3);
  this->viewer.SetRow(3);
  this->viewer.SetSelectedRowsCount(2);
  EXPECT_EQ(placed, 2);
  this->viewer.CheckSegment({"COBOL#12", 8, 10});
  this->viewer.ClearMarks();
  EXPECT_EQ(marks, 2);
}

REGISTER_TYPED_TEST_SUITE_P(SourceViewerContract, TheFirstFileComesOnView, AnotherFileBeginsAtRowOne,
                            AnUnknownFileIsRefusedByName, ASelectionDownwardStartsAtTheCaret,
                            ASelectionUpwardHasAMinusSignAndEndsAtTheCaret, MovingTheCaretDropsTheSelection,
                            RowsBelowTheFirstAreRefused, ASelectedPieceOfTextHasItsColumn,
                            MarksAreKeptUntilTheyAreCleared, GoingToAPlaceOpensItsFile,
                            WithoutAFileThereIsNothingToSelect, RowsAreSelectedAsOneChange,
                            ASelectionReachesBehindTheLastRow, ASelectionEndsAtTheLargestRowAtMost,
                            TheCaretHasTheColumnOfThePlaceGoneTo, ItIsToldWhenTheCaretIsPlacedAndWhenMarksChange);

}  // namespace qmrules::platform
