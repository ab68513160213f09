#include "platform/memorysourceviewer.h"

#include <gtest/gtest.h>

#include "support/errortext.h"

namespace qmrules::platform {
namespace {

using test::ErrorText;

class MemorySourceViewerTest : public testing::Test {
 protected:
  MemorySourceViewerTest() { viewer.SetFiles({{"PBRATE.cbl", "COBOL"}, {"copy\\PBPOLMS.cpy", "COBOL"}}); }

  MemorySourceViewer viewer;
  int selections = 0;
  Subscription selection = viewer.OnSelectionChanged([this] { ++selections; });
};

TEST_F(MemorySourceViewerTest, TheFirstFileComesOnView) {
  EXPECT_EQ(viewer.CurFile()->FileName, "PBRATE.cbl");
  EXPECT_EQ(viewer.CurFile()->Language, "COBOL");
  EXPECT_EQ(viewer.Files(), (std::vector<std::string>{"PBRATE.cbl", "copy\\PBPOLMS.cpy"}));
  EXPECT_EQ(viewer.Row(), 1);
  EXPECT_EQ(viewer.SelectedRowsCount(), 0);
}

TEST_F(MemorySourceViewerTest, AnotherFileBeginsAtRowOne) {
  viewer.SetRow(20);
  viewer.SetSelectedRowsCount(3);
  int files = 0;
  const auto fileChange = viewer.OnFileChanged([&] { ++files; });
  viewer.OpenFile("COPY\\pbpolms.cpy");
  EXPECT_EQ(viewer.CurFile()->FileName, "copy\\PBPOLMS.cpy");
  EXPECT_EQ(viewer.Row(), 1);
  EXPECT_EQ(viewer.SelectedRowsCount(), 0);
  EXPECT_EQ(files, 1);
}

TEST_F(MemorySourceViewerTest, AnUnknownFileIsRefusedByName) {
  EXPECT_EQ(ErrorText([&] { viewer.OpenFile("PBGONE.cbl"); }), "PBGONE.cbl: the current program has no such file.");
  EXPECT_EQ(viewer.CurFile()->FileName, "PBRATE.cbl");
}

TEST_F(MemorySourceViewerTest, ASelectionDownwardStartsAtTheCaret) {
  viewer.SetSelectedRowsCount(0);
  viewer.SetRow(8);
  viewer.SetSelectedRowsCount(3);
  EXPECT_EQ(viewer.Row(), 8);
  EXPECT_EQ(viewer.SelectedRowsCount(), 3);
  EXPECT_EQ(viewer.Selected()->FromRow, 8);
  EXPECT_EQ(viewer.Selected()->FromCol, 1);
  EXPECT_EQ(viewer.Selected()->ToRow, 10);
  EXPECT_EQ(selections, 3);
}

TEST_F(MemorySourceViewerTest, ASelectionUpwardHasAMinusSignAndEndsAtTheCaret) {
  viewer.SetRow(10);
  viewer.SetSelectedRowsCount(-3);
  EXPECT_EQ(viewer.SelectedRowsCount(), -3);
  EXPECT_EQ(viewer.Selected()->FromRow, 8);
  EXPECT_EQ(viewer.Selected()->ToRow, 10);
}

TEST_F(MemorySourceViewerTest, MovingTheCaretDropsTheSelection) {
  viewer.SetSelectedRowsCount(3);
  viewer.SetRow(5);
  EXPECT_EQ(viewer.SelectedRowsCount(), 0);
  EXPECT_EQ(viewer.Selected()->FromRow, 5);
  EXPECT_EQ(viewer.Selected()->FromCol, 0);
}

TEST_F(MemorySourceViewerTest, RowsBelowTheFirstAreRefused) {
  EXPECT_EQ(ErrorText([&] { viewer.SetRow(0); }), "PBRATE.cbl: there is no row 0; rows count from 1.");
  viewer.SetRow(2);
  EXPECT_EQ(ErrorText([&] { viewer.SetSelectedRowsCount(-3); }), "PBRATE.cbl: there is no row 0; rows count from 1.");
  EXPECT_NO_THROW(viewer.SetSelectedRowsCount(-2));
}

TEST_F(MemorySourceViewerTest, ASelectedPieceOfTextHasItsColumn) {
  viewer.SelectText({4, 12, 6});
  EXPECT_EQ(viewer.Selected()->FromCol, 12);
  EXPECT_EQ(viewer.Selected()->ToRow, 6);
  EXPECT_EQ(viewer.SelectedRowsCount(), 0);
  EXPECT_EQ(ErrorText([&] { viewer.SelectText({4, 1, 3}); }), "A selection ends at its first row or below it.");
}

TEST_F(MemorySourceViewerTest, MarksAreKeptUntilTheyAreCleared) {
  viewer.CheckSegment({"COBOL#12", 8, 10});
  viewer.CheckSegment({"COBOL#12", 8, 10});
  EXPECT_EQ(viewer.Marks().size(), 2U);
  viewer.ClearMarks();
  EXPECT_TRUE(viewer.Marks().empty());
}

TEST_F(MemorySourceViewerTest, GoingToAPlaceOpensItsFile) {
  int files = 0;
  const auto fileChange = viewer.OnFileChanged([&] { ++files; });
  viewer.GoTo({"copy\\PBPOLMS.cpy", 17, 8});
  EXPECT_EQ(viewer.Row(), 17);
  viewer.GoTo({"copy\\PBPOLMS.cpy", 18, 1});
  EXPECT_EQ(viewer.Row(), 18);
  EXPECT_EQ(files, 1);
}

TEST_F(MemorySourceViewerTest, WithoutAFileThereIsNothingToSelect) {
  viewer.SetFiles({});
  EXPECT_FALSE(viewer.CurFile());
  EXPECT_FALSE(viewer.Selected());
  EXPECT_EQ(viewer.Row(), 0);
  EXPECT_NO_THROW(viewer.SetSelectedRowsCount(0));
  EXPECT_EQ(ErrorText([&] { viewer.SetRow(1); }), "No source file is on view.");
  EXPECT_EQ(ErrorText([&] { viewer.SetSelectedRowsCount(1); }), "No source file is on view.");
}

}  // namespace
}  // namespace qmrules::platform
