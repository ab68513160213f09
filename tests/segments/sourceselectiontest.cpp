#include "segments/sourceselection.h"

#include "platform/error.h"
#include "segments/hostfixture.h"
#include "support/errortext.h"

namespace qmrules::segments {
namespace {

class SourceSelectionTest : public HostTest {
 protected:
  Segment Get(bool showMessage = true) {
    return GetSourceSegment({workspace, repository, files, dialogs, texts, globals}, showMessage);
  }
  void Select(int row, int count) {
    viewer.SetRow(row);
    viewer.SetSelectedRowsCount(count);
    component.calls.clear();
  }
};

TEST_F(SourceSelectionTest, TheSelectedRowsAreTheSegment) {
  Select(3, 2);
  EXPECT_EQ(Get(), (Segment{"COBOL", "FEE", "cobol/FEE.cbl", 3, 4, "line 3\nline 4\n"}));
  EXPECT_TRUE(dialogs.History().empty());
}

TEST_F(SourceSelectionTest, ASelectionFromTheBottomUpCountsFromItsTopAndRunsDownwardsAfterwards) {
  Select(10, -3);
  const Segment segment = Get();
  EXPECT_EQ(segment.FromRow, 8);
  EXPECT_EQ(segment.ToRow, 10);
  EXPECT_EQ(segment.SourceText, "line 8\nline 9\nline 10\n");
  EXPECT_EQ(viewer.Row(), 8);
  EXPECT_EQ(viewer.SelectedRowsCount(), 3);
  EXPECT_EQ(component.calls, (std::vector<std::string>{"SelectedRowsCount = 0", "Row = 8", "SelectedRowsCount = 3"}));
}

TEST_F(SourceSelectionTest, WithoutSelectedRowsTheTextThatIsSelectedCounts) {
  viewer.SelectText({.FromRow = 5, .FromCol = 3, .ToRow = 6});
  const Segment segment = Get();
  EXPECT_EQ(segment.FromRow, 5);
  EXPECT_EQ(segment.ToRow, 6);
  EXPECT_EQ(viewer.SelectedRowsCount(), 2);
}

TEST_F(SourceSelectionTest, ACaretIsNoSelectionAndTheUserIsToldSo) {
  viewer.SetRow(5);
  ASSERT_EQ(workspace.Selected()->FromCol, 0);
  dialogs.ExpectMessage(platform::MessageAnswer::Ok, "Please, select source segment.");
  EXPECT_EQ(Get(true), Segment{});
  ASSERT_EQ(dialogs.History().size(), 1U);
  EXPECT_EQ(dialogs.History()[0].style, platform::MessageStyle::Exclamation);
  EXPECT_EQ(dialogs.History()[0].caption, "Business Rules");
}

TEST_F(SourceSelectionTest, WithoutTheMessageAMissingSelectionIsPassedOverInSilence) {
  viewer.SetRow(5);
  EXPECT_EQ(Get(false), Segment{});
  EXPECT_TRUE(dialogs.History().empty());
}

TEST_F(SourceSelectionTest, WithoutAFileInTheViewerThereIsNoSelection) {
  viewer.SetFiles({});
  EXPECT_EQ(Get(false), Segment{});
}

TEST_F(SourceSelectionTest, ExactlyThirtyThousandCharactersAreKept) {
  WriteSource(std::string(29998, 'x') + "\n\n");
  Select(1, 2);
  const Segment segment = Get();
  EXPECT_TRUE(segment.IsCaptured());
  EXPECT_EQ(segment.SourceText.size(), 30000U);
}

TEST_F(SourceSelectionTest, OneCharacterMoreIsRefusedWhateverTheFlagSays) {
  WriteSource(std::string(29999, 'x') + "\n\n");
  for (const bool showMessage : {true, false}) {
    Select(1, 2);
    dialogs.ExpectMessage(platform::MessageAnswer::Ok, "Too long segment. It is ignored.");
    const Segment segment = Get(showMessage);
    EXPECT_FALSE(segment.IsCaptured());
    EXPECT_EQ(segment, (Segment{"", "", "", 1, 2, ""}));
  }
  EXPECT_EQ(dialogs.History().back().style, platform::MessageStyle::Exclamation);
}

TEST_F(SourceSelectionTest, CharactersOutsideTheBasicPlaneCountTwice) {
  std::string text;
  for (int at = 0; at < 15000; ++at) text += "\xF0\x9F\x98\x80";
  WriteSource(text + "\n");
  Select(1, 1);
  dialogs.ExpectMessage(platform::MessageAnswer::Ok, "Too long segment. It is ignored.");
  EXPECT_FALSE(Get().IsCaptured());
}

TEST_F(SourceSelectionTest, BeyondTheEndOfTheFileFewerLinesComeAndTheLastRowIsTheSelectedOne) {
  Select(19, 5);
  const Segment segment = Get();
  EXPECT_EQ(segment.SourceText, "line 19\nline 20\n");
  EXPECT_EQ(segment.ToRow, 23);
}

TEST_F(SourceSelectionTest, ControlCharactersComeAsSafeTextMapsThem) {
  WriteSource(
      "a\x01"
      "b\n");
  Select(1, 1);
  EXPECT_EQ(Get().SourceText, "a&#64999;b\n");
}

TEST_F(SourceSelectionTest, AFileThatCannotBeReadIsNamedAndLeavesTheViewerAsItIs) {
  files.SetReadable("/src/cobol/FEE.cbl", false);
  Select(10, -3);
  EXPECT_NE(test::ErrorText([&] { static_cast<void>(Get()); }).find("FEE.cbl"), std::string::npos);
  EXPECT_TRUE(component.calls.empty());
}

TEST_F(SourceSelectionTest, WithoutACurrentProgramTheCallFails) {
  workspace.SetObjectID("");
  Select(1, 1);
  EXPECT_THROW(static_cast<void>(Get()), platform::Error);
  workspace.SetObjectID("COBOL#99999");
  EXPECT_THROW(static_cast<void>(Get()), platform::Error);
  EXPECT_TRUE(component.calls.empty());
}

TEST_F(SourceSelectionTest, ARowThatIsNoNumberFailsTheCall) {
  class Broken final : public platform::Component {
   public:
    std::optional<std::string> PropertyGet(std::string_view) override { return "many"; }
    void PropertyLet(std::string_view, const platform::Value&) override {}
    platform::Value MethodCall(std::string_view, std::string_view) override { return {}; }
  } broken;
  workspace.AddComponent("QMSource", broken);
  EXPECT_THROW(static_cast<void>(Get()), platform::Error);
}

}  // namespace
}  // namespace qmrules::segments
