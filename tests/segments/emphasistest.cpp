#include "segments/emphasis.h"

#include "browser/commandwidgets.h"
#include "platform/error.h"
#include "segments/hostfixture.h"
#include "segments/rulesegments.h"

namespace qmrules::segments {
namespace {

using platform::SegmentMark;

// The control around the command; the command asks it for the host's item only.
class QuietHost final : public browser::BrowserHost {
 public:
  void UpdateCommands(platform::widgets::TreeNode*) override {}
  void ShowNode(platform::widgets::TreeNode*) override {}
  platform::widgets::TreeNode* CurrentNode() const override { return nullptr; }
  std::string CurrentKey() const override { return {}; }
  void ReplaceCurrentNode(platform::widgets::TreeNode&) override {}
  void SetHostItem(std::string_view command, std::string_view state) override {
    hostItems.push_back(std::string(command) + " " + std::string(state));
  }
  bool IsLoading() const override { return false; }
  void OpenPopup() override {}
  void RefreshEmphasis() override {}
  void RecordFailure(std::string_view) override {}

  std::vector<std::string> hostItems;
};

class NoCommands final : public platform::CommandSink {
 public:
  void Run(std::string_view) override {}
};

class EmphasisTest : public HostTest {
 protected:
  EmphasisTest() { browser::FillCommandWidgets(widgets, texts); }

  std::int32_t AddRule(int fromRow, int toRow, const std::string& file = "cobol/FEE.cbl",
                       const std::string& name = "FEE", const std::string& model = "COBOL") {
    const auto rule = store.AddRule(set, "Rule", ++rules_);
    const auto object = repository.object(catalogue::MakeKey("RULE", rule));
    object->Edit();
    PutSegment(*object, {model, name, file, fromRow, toRow, "text\n"}, store.Clock().Now());
    object->Post();
    return rule;
  }

  bool IsPressed() { return widgets.tbToolbar.Button("Emphasize").Pressed(); }

  std::int32_t set = store.AddRuleSet("Fees");
  browser::ControlWidgets widgets{texts};
  QuietHost host;
  NoCommands commands;
  browser::BrowserServices services{workspace, frontEnd, progress, dialogs, pointer, store.Clock(),
                                    texts,     globals,  commands, host,    widgets};
  Emphasis emphasis{services};

 private:
  int rules_ = 0;
};

TEST_F(EmphasisTest, MarksEverySegmentOfTheFileWhicheverRuleAndProjectItIsOf) {
  AddRule(2, 4);
  AddRule(7, 7);
  const auto elsewhere = store.Add("RULESET", "Elsewhere");
  repository.object(catalogue::MakeKey("RULESET", elsewhere))->Link("BelongsTo", store.OtherProjectKey());
  set = elsewhere;
  AddRule(11, 12);
  emphasis.Toggle();
  EXPECT_EQ(viewer.Marks(), (std::vector<SegmentMark>{{program, 2, 4}, {program, 7, 7}, {program, 11, 12}}));
  EXPECT_EQ(component.calls[0], "CheckSegment ");
  EXPECT_EQ(component.calls[1], "CheckSegment " + program + ":2:4");
  EXPECT_FALSE(pointer.IsBusy());
}

TEST_F(EmphasisTest, ShowsItsStateOnAllThreeFaces) {
  emphasis.Toggle();
  EXPECT_TRUE(emphasis.IsOn());
  EXPECT_TRUE(widgets.mnuPopup.Item("mnuEmphasize").Checked());
  EXPECT_TRUE(IsPressed());
  emphasis.Toggle();
  EXPECT_FALSE(emphasis.IsOn());
  EXPECT_FALSE(IsPressed());
  EXPECT_EQ(host.hostItems, (std::vector<std::string>{"Emphasize check", "Emphasize uncheck"}));
}

TEST_F(EmphasisTest, TurnedOffItTakesAllMarksAway) {
  AddRule(2, 4);
  emphasis.Toggle();
  emphasis.Toggle();
  EXPECT_TRUE(viewer.Marks().empty());
}

TEST_F(EmphasisTest, AFileWithoutSegmentsHasNoMarksAndTheButtonIsPressed) {
  viewer.CheckSegment({program, 1, 2});
  emphasis.Toggle();
  EXPECT_TRUE(viewer.Marks().empty());
  EXPECT_TRUE(IsPressed());
}

TEST_F(EmphasisTest, SegmentsOfOtherFilesProgramsAndLanguagesAreNotMarked) {
  AddRule(2, 4, "cobol/FEECOPY.cpy");
  AddRule(3, 4, "cobol/FEE.cbl", "OTHER");
  AddRule(4, 4, "cobol/FEE.cbl", "FEE", "PLI");
  emphasis.Toggle();
  EXPECT_TRUE(viewer.Marks().empty());
}

TEST_F(EmphasisTest, NamesWithSignsOfTheFilterLanguageAreFound) {
  const std::string odd = "cobol/A&B=(C) 'D'.cbl";
  store.Put(program, "Name", "FEE (old)&new");
  AddRule(5, 6, odd, "FEE (old)&new");
  viewer.SetFiles({{odd, "COBOL"}});
  emphasis.Toggle();
  EXPECT_EQ(viewer.Marks(), (std::vector<SegmentMark>{{program, 5, 6}}));
}

TEST_F(EmphasisTest, WithoutAFileOnViewOnlyTheStateChanges) {
  viewer.SetFiles({});
  component.calls.clear();
  emphasis.Toggle();
  EXPECT_TRUE(emphasis.IsOn());
  EXPECT_TRUE(component.calls.empty());
}

TEST_F(EmphasisTest, WithoutACurrentProgramAndForOneThatIsGoneNothingIsMarked) {
  AddRule(2, 4);
  workspace.SetObjectID("");
  emphasis.Toggle();
  EXPECT_TRUE(viewer.Marks().empty());
  workspace.SetObjectID("COBOL#99999");
  emphasis.Refresh();
  EXPECT_TRUE(viewer.Marks().empty());
}

TEST_F(EmphasisTest, ARefreshPaintsAnewAndKeepsTheState) {
  emphasis.Refresh();
  EXPECT_FALSE(emphasis.IsOn());
  AddRule(2, 4);
  emphasis.Toggle();
  AddRule(7, 7);
  emphasis.Refresh();
  EXPECT_TRUE(emphasis.IsOn());
  EXPECT_EQ(viewer.Marks().size(), 2U);
  EXPECT_EQ(host.hostItems.back(), "Emphasize check");
}

TEST_F(EmphasisTest, AFailureLeavesThePointerNormalAndTheStateTurnedOver) {
  workspace.SetObjectID("UNKNOWN#1");
  EXPECT_THROW(emphasis.Toggle(), platform::Error);
  EXPECT_TRUE(emphasis.IsOn());
  EXPECT_FALSE(pointer.IsBusy());
}

}  // namespace
}  // namespace qmrules::segments
