#include "browser/segmentview.h"

#include <gtest/gtest.h>

#include "browser/detailpanestest.h"
#include "platform/error.h"

namespace qmrules::browser {
namespace {

using platform::widgets::Color;

class SegmentViewTest : public DetailPanesTest {
 protected:
  platform::widgets::TextBox& txtFileName = widgets.txtFileName;
};

TEST_F(SegmentViewTest, ASegmentComesIntoTheSourceViewerWithItsRowsSelected) {
  PutSegment("copy\\RATES.cpy", 12, 14);
  ShowRule("Base fee");
  EXPECT_EQ(workspace.ObjectID(), programKey);
  EXPECT_EQ(viewer.CurFile()->FileName, "copy\\RATES.cpy");
  EXPECT_EQ(viewer.Row(), 12);
  EXPECT_EQ(viewer.SelectedRowsCount(), 3);
  EXPECT_EQ(txtFileName.Text(), "copy\\RATES.cpy");
  EXPECT_EQ(txtFileName.ForeColor(), Color::Normal);
}

TEST_F(SegmentViewTest, AFileThatIsOnViewIsNotOpenedAgain) {
  PutSegment("fee.CBL", 5, 5);
  workspace.SetObjectID(programKey);
  int opened = 0;
  const auto watching = viewer.OnFileChanged([&] { ++opened; });
  ShowRule("Base fee");
  EXPECT_EQ(opened, 0);
  EXPECT_EQ(viewer.Row(), 5);
  EXPECT_EQ(viewer.SelectedRowsCount(), 1);
  EXPECT_EQ(txtFileName.Text(), "fee.CBL");
}

TEST_F(SegmentViewTest, ARuleWithAnEmptyModelShowsNoSegmentAndLeavesTheViewerButForItsSelection) {
  PutSegment("copy\\RATES.cpy", 12, 14);
  store.Put(ruleKey, "Model", "");
  workspace.SetObjectID(programKey);
  viewer.SetRow(7);
  viewer.SetSelectedRowsCount(2);
  ShowRule("Base fee");
  EXPECT_EQ(viewer.CurFile()->FileName, "FEE.cbl");
  EXPECT_EQ(viewer.Row(), 7);
  EXPECT_EQ(viewer.SelectedRowsCount(), 0);
  EXPECT_EQ(txtFileName.Text(), "");
}

TEST_F(SegmentViewTest, ARuleWhoseProgramIsNotInTheProjectShowsTheFileMessageInRed) {
  PutSegment("TAX.cbl", 1, 2, "TAX");
  const auto elsewhere = store.Add("COBOL", "TAX");
  repository.object("COBOL#" + std::to_string(elsewhere))->Link("BelongsTo", store.OtherProjectKey());
  ShowRule("Base fee");
  EXPECT_EQ(txtFileName.Text(), "No file TAX.cbl is found in the current project");
  EXPECT_EQ(txtFileName.ForeColor(), Color::Red);
  EXPECT_EQ(workspace.ObjectID(), "");
}

TEST_F(SegmentViewTest, AModelThatTheRepositoryDoesNotKnowShowsTheFileMessageInRed) {
  PutSegment("FEE.cbl", 1, 2);
  store.Put(ruleKey, "Model", "FORTRAN");
  ShowRule("Base fee");
  EXPECT_EQ(txtFileName.Text(), "No file FEE.cbl is found in the current project");
  EXPECT_EQ(txtFileName.ForeColor(), Color::Red);
}

TEST_F(SegmentViewTest, ANameWithSignsOfTheFilterLanguageIsData) {
  PutSegment("FEE.cbl", 1, 2, "FEE|Name=FEE");
  ShowRule("Base fee");
  EXPECT_EQ(txtFileName.ForeColor(), Color::Red);
}

TEST_F(SegmentViewTest, AProgramThatTheWorkspaceDoesNotTakeShowsTheSegmentMessageInRed) {
  PutSegment("FEE.cbl", 1, 2);
  workspace.SetObjectGate([](std::string_view) { return false; });
  ShowRule("Base fee");
  EXPECT_EQ(txtFileName.Text(), "No valid segment found in file FEE.cbl exists.");
  EXPECT_EQ(txtFileName.ForeColor(), Color::Red);
}

TEST_F(SegmentViewTest, AFileThatTheProgramDoesNotHaveShowsTheSegmentMessageInRed) {
  PutSegment("OTHER.cbl", 1, 2);
  ShowRule("Base fee");
  EXPECT_EQ(txtFileName.Text(), "No valid segment found in file OTHER.cbl exists.");
  EXPECT_EQ(viewer.CurFile()->FileName, "FEE.cbl");
  EXPECT_EQ(viewer.SelectedRowsCount(), 0);
}

TEST_F(SegmentViewTest, RowsThatNoFileHasShowTheSegmentMessageInRed) {
  PutSegment("FEE.cbl", 0, 2);
  ShowRule("Base fee");
  EXPECT_EQ(txtFileName.ForeColor(), Color::Red);
  PutSegment("FEE.cbl", 5, 4);
  ShowRule("Base fee");
  EXPECT_EQ(txtFileName.Text(), "No valid segment found in file FEE.cbl exists.");
}

// A workspace whose viewer cannot read the program's file.
TEST_F(SegmentViewTest, AFailureOfTheViewerShowsTheSegmentMessageInRedWithTheCauseInTheToolTip) {
  PutSegment("copy\\RATES.cpy", 1, 2);
  const auto watching = viewer.OnFileChanged([this] {
    if (viewer.CurFile()->FileName != "FEE.cbl") throw platform::Error("The disk cannot be read.");
  });
  ShowRule("Base fee");
  EXPECT_EQ(txtFileName.Text(), "No valid segment found in file copy\\RATES.cpy exists.");
  EXPECT_EQ(txtFileName.ToolTipText(),
            "No valid segment found in file copy\\RATES.cpy exists.\r\nThe disk cannot be read.");
  EXPECT_EQ(txtFileName.ForeColor(), Color::Red);
  EXPECT_EQ(panes.CurrentKey(), ruleKey);
}

TEST_F(SegmentViewTest, TheNextNodeTakesTheMessageAway) {
  PutSegment("OTHER.cbl", 1, 2);
  ShowRule("Base fee");
  ShowRule("Late fee");
  EXPECT_EQ(txtFileName.Text(), "");
  EXPECT_EQ(txtFileName.ForeColor(), Color::Normal);
}

TEST_F(SegmentViewTest, TheFieldIsLocked) {
  EXPECT_TRUE(txtFileName.Locked());
}

}  // namespace
}  // namespace qmrules::browser
