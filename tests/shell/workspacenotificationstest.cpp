#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "catalogue/gateway.h"
#include "catalogue/sequence.h"
#include "platform/error.h"
#include "shell/controltest.h"

namespace qmrules::shell {
namespace {

using catalogue::MakeKey;
using platform::SegmentMark;

class WorkspaceNotificationsTest : public ControlTest {
 protected:
  void PutDataflow(const std::vector<std::string>& flags) {
    for (const std::string& flag : flags) store.Put(program, flag, true);
  }
  void PutSegment(std::int32_t rule, const std::string& file, int fromRow, int toRow) {
    const std::string key = MakeKey("RULE", rule);
    store.Put(key, "Model", "COBOL");
    store.Put(key, "Program", "FEE");
    store.Put(key, "FileName", file);
    store.Put(key, "FromRow", fromRow);
    store.Put(key, "ToRow", toRow);
  }
};

TEST_F(WorkspaceNotificationsTest, ACobolProgramShowsTheProcessOutlineReportOnAllThreeFaces) {
  Open();
  workspace.SetObjectID(MakeKey("PLI", store.Add("PLI", "PAY")));
  EXPECT_EQ(HostState("ProcessOutlineReport"), "enable hide");
  EXPECT_FALSE(widgets.mnuPopup.Item("mnuProcessOutlineReport").Visible());
  EXPECT_FALSE(widgets.tbToolbar.Button("Report").Menu("ProcessOutlineReport").Visible());
  EXPECT_TRUE(widgets.tbToolbar.Button("Report").Visible());
  workspace.SetObjectID(program);
  EXPECT_EQ(HostState("ProcessOutlineReport"), "enable");
  EXPECT_TRUE(widgets.mnuPopup.Item("mnuProcessOutlineReport").Visible());
  EXPECT_TRUE(widgets.tbToolbar.Button("Report").Menu("ProcessOutlineReport").Visible());
}

TEST_F(WorkspaceNotificationsTest, WithoutACurrentObjectTheProcessOutlineReportStaysAsItIs) {
  Open();
  workspace.SetObjectID(MakeKey("PLI", store.Add("PLI", "PAY")));
  workspace.SetObjectID("");
  EXPECT_EQ(HostState("ProcessOutlineReport"), "enable hide");
  EXPECT_TRUE(workspace.Errors().empty());
}

TEST_F(WorkspaceNotificationsTest, ACurrentObjectWithoutAKeyIsRecordedAndChangesNothing) {
  Open();
  workspace.SetObjectID("no key");
  ASSERT_EQ(workspace.Errors().size(), 1U);
  EXPECT_NE(workspace.Errors()[0].find("no key"), std::string::npos);
  EXPECT_TRUE(dialogs.History().empty());
}

TEST_F(WorkspaceNotificationsTest, AutoDetectAsksTheCurrentObjectForAllDataflowData) {
  Open();
  EXPECT_EQ(HostState("AutoDetect"), "disable");
  PutDataflow({"DataView", "DataRelations"});
  workspace.RaiseSelectedChanged();
  EXPECT_EQ(HostState("AutoDetect"), "disable");
  PutDataflow({"DataDepends"});
  workspace.RaiseSelectedChanged();
  EXPECT_EQ(HostState("AutoDetect"), "enable");
  EXPECT_TRUE(widgets.mnuPopup.Item("mnuAutoDetect").Enabled());
  EXPECT_TRUE(widgets.tbToolbar.Button("AutoDetect").Enabled());
}

TEST_F(WorkspaceNotificationsTest, AutoDetectIsNotAvailableForWhatHasNoSuchAttributesAndWhatCannotBeOpened) {
  PutDataflow({"DataView", "DataRelations", "DataDepends"});
  Open();
  ASSERT_EQ(HostState("AutoDetect"), "enable");
  for (const std::string& key : {MakeKey("BUSINESSFUNC", billing), std::string("COBOL#99999"), std::string()}) {
    workspace.SetObjectID(key);
    workspace.RaiseSelectedChanged();
    EXPECT_EQ(HostState("AutoDetect"), "disable") << key;
    workspace.SetObjectID(program);
    workspace.RaiseSelectedChanged();
    EXPECT_EQ(HostState("AutoDetect"), "enable");
  }
  EXPECT_TRUE(workspace.Errors().empty()) << "these failures are left out";
}

TEST_F(WorkspaceNotificationsTest, AnotherFileInTheViewerGetsItsMarks) {
  PutSegment(baseFee, "FEE.cbl", 2, 4);
  PutSegment(lateFee, "TAX.cbl", 5, 6);
  Open();
  Request("Emphasize");
  EXPECT_EQ(viewer.Marks(), (std::vector<SegmentMark>{{program, 2, 4}}));
  viewer.SetFiles({{"TAX.cbl", "COBOL"}});
  EXPECT_EQ(viewer.Marks(), (std::vector<SegmentMark>{{program, 5, 6}}));
  EXPECT_EQ(HostState("Emphasize"), "enable check");
}

TEST_F(WorkspaceNotificationsTest, WithoutEmphasizeAnotherFileGetsNoMarksAndTheStateStays) {
  PutSegment(baseFee, "TAX.cbl", 2, 4);
  Open();
  viewer.SetFiles({{"TAX.cbl", "COBOL"}});
  EXPECT_TRUE(viewer.Marks().empty());
  EXPECT_EQ(HostState("Emphasize"), "enable");
}

TEST_F(WorkspaceNotificationsTest, OnlyTheViewersFileOrAllItsPropertiesPaintTheMarksAnew) {
  PutSegment(baseFee, "FEE.cbl", 2, 4);
  Open();
  Request("Emphasize");
  const auto isPainted = [this](const std::string& component, const std::string& property) {
    viewer.ClearMarks();
    workspace.RaisePropertyChanged(component, property, "");
    return !viewer.Marks().empty();
  };
  EXPECT_TRUE(isPainted("QMSource", ""));
  EXPECT_TRUE(isPainted("QMSource", "FileName"));
  EXPECT_FALSE(isPainted("QMSource", "Row"));
  EXPECT_FALSE(isPainted("Gleaner", "FileName"));
  EXPECT_FALSE(isPainted("Gleaner", ""));
}

TEST_F(WorkspaceNotificationsTest, AFailureWhileTheMarksArePaintedIsRecordedAndNotThrownAtTheWorkspace) {
  Open();
  Request("Emphasize");
  watch.Arm(1);
  workspace.RaisePropertyChanged("QMSource", "FileName", "");
  EXPECT_EQ(workspace.Errors(), std::vector<std::string>{browser::kReadFault});
  EXPECT_TRUE(dialogs.History().empty());
  EXPECT_EQ(HostState("Emphasize"), "enable check");
}

// What the control as a whole does with the store's events.

class ControlEventsTest : public ControlTest {
 protected:
  ControlEventsTest() {
    Open();
    OpenAll();
  }
};

TEST_F(ControlEventsTest, DeletingTheCurrentRuleEmptiesTheTextFieldsAndWritesNothing) {
  Click("Base fee");
  widgets.rtbDescription.SetFocus();
  widgets.rtbDescription.Enter("Half a sentence");
  repository.object(MakeKey("RULE", baseFee))->Delete();
  EXPECT_EQ(widgets.rtbDescription.Text(), "");
  EXPECT_EQ(widgets.rtbBusiness.Text(), "");
  EXPECT_TRUE(widgets.ReleaseFocus());
  EXPECT_EQ(repository.CountObjects("RULELOG", {}), 0);
  EXPECT_TRUE(dialogs.History().empty());
}

TEST_F(ControlEventsTest, ANodeThatIsDeletedWhileItsPanesAreOpenIsNotWrittenTo) {
  Click("Base fee");
  widgets.txtObjName.SetFocus();
  widgets.txtObjName.Enter("Basic fee");
  repository.object(MakeKey("RULE", baseFee))->Delete();
  Click("Late fee");
  Request("SelectAll");
  control.DeInit();
  EXPECT_EQ(store.Get(MakeKey("RULE", lateFee), "RuleName").Text(), "Late fee");
  EXPECT_EQ(repository.CountObjects("RULELOG", {}), 0);
}

TEST_F(ControlEventsTest, ARuleOfARuleSetThatIsShownTwiceAppearsInBothPlaces) {
  store.AddCall(claims, fees, 2);
  const std::string key = "f" + std::to_string(claims) + "s" + std::to_string(fees);
  tvObjects.Expand(*tvObjects.Find(key));
  store.AddRule(fees, "New fee", 4);
  EXPECT_EQ(tvObjects.Find(key)->LastChild()->Text(), "New fee");
  EXPECT_EQ(Node("Fees").LastChild()->Text(), "New fee");
}

TEST_F(ControlEventsTest, ARuleSetLinkedToAFunctionThatTheViewHidesTurnsTheViewOff) {
  tvObjects.ClickCheckBox(Node("Claims"));
  Request("Selected");
  ASSERT_EQ(Tree(), "Claims\n  Homeless Function\n");
  store.AddCall(billing, store.AddRuleSet("Discounts"), 4);
  EXPECT_EQ(HostState("Selected"), "enable");
  EXPECT_EQ(Tree().substr(0, 8), "Billing\n");
  EXPECT_EQ(Node("Discounts").Parent()->Text(), "Billing");
  EXPECT_TRUE(Node("Claims").Checked());
}

TEST_F(ControlEventsTest, DuringABulkLoadNoNodeIsAdded) {
  const std::string before = Tree();
  globals.eventsSilenced = true;
  store.AddFunction("Reports");
  store.AddRule(fees, "New fee", 4);
  EXPECT_EQ(Tree(), before);
}

TEST_F(ControlEventsTest, AFailingEventDoesNotReachTheOneWhoWrote) {
  watch.Arm(1);
  EXPECT_NO_THROW(store.AddFunction("Reports"));
  EXPECT_EQ(workspace.Errors(), std::vector<std::string>{browser::kReadFault});
  EXPECT_FALSE(pointer.IsBusy());
}

}  // namespace
}  // namespace qmrules::shell
