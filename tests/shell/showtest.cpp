#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "catalogue/activitylog.h"
#include "catalogue/gateway.h"
#include "platform/error.h"
#include "shell/controltest.h"

namespace qmrules::shell {
namespace {

using catalogue::MakeKey;
using platform::MessageAnswer;

class ShowTest : public ControlTest {
 protected:
  void OfferGlossary() {
    store.FE().GlobalOptions().Document().loadXML(kGlobalOptions);
    databases.known = store.FE().GetFerrowoodName(4) + "\\Glossary.mdb";
  }
  std::string Valid(std::int32_t rule) { return store.Get(MakeKey("RULE", rule), "Valid").Text(); }
  void PutFile(std::int32_t rule, const std::string& file) {
    store.Put(MakeKey("RULE", rule), "FileName", file);
    store.Put(MakeKey("RULE", rule), "Valid", "Valid");
    store.Put(MakeKey("RULE", rule), "Validated", store.Clock().Now());
  }
};

TEST_F(ShowTest, FillsTheTreeAndShowsTheFirstNode) {
  Open();
  EXPECT_EQ(Tree(), "Billing\n  Fees\n    ...\n  Taxes\n  Rebates\nClaims\n  Homeless Function\n");
  EXPECT_EQ(SelectedText(), "Billing");
  EXPECT_EQ(widgets.txtObjName.Text(), "Billing");
  EXPECT_FALSE(pointer.IsBusy());
}

TEST_F(ShowTest, ShowsNoProgressOfItsOwn) {
  Open();
  EXPECT_TRUE(progress.Entries().empty());
}

TEST_F(ShowTest, TheWorkspaceIsToldOfShowAndHide) {
  Open();
  EXPECT_TRUE(workspace.IsShown("QMRulesIn"));
  EXPECT_TRUE(control.IsShown());
  control.Hide();
  EXPECT_FALSE(workspace.IsShown("QMRulesIn"));
  EXPECT_FALSE(control.IsShown());
}

TEST_F(ShowTest, TheWorkspaceIsToldThatTheFocusEntered) {
  Open();
  control.EnterFocus();
  EXPECT_EQ(workspace.FocusedComponent(), "QMRulesIn");
}

TEST_F(ShowTest, WithoutAWorkspaceNothingHappens) {
  control.Show();
  control.Hide();
  control.EnterFocus();
  EXPECT_FALSE(control.IsShown());
  EXPECT_TRUE(dialogs.History().empty());
}

TEST_F(ShowTest, NothingOfTheTreeSurvivesAHide) {
  Open();
  OpenAll();
  Node("Fees").SetChecked(true);
  control.Hide();
  store.Put(MakeKey("RULESET", fees), "Name", "Charges");
  control.Show();
  EXPECT_EQ(Tree(), "Billing\n  Charges\n    ...\n  Taxes\n  Rebates\nClaims\n  Homeless Function\n");
  EXPECT_FALSE(Node("Charges").Checked());
}

TEST_F(ShowTest, TheViewOfTheSelectedOnlyEndsAtTheNextShow) {
  Open();
  tvObjects.ClickCheckBox(Node("Claims"));
  Request("Selected");
  ASSERT_EQ(HostState("Selected"), "enable check");
  control.Show();
  EXPECT_EQ(HostState("Selected"), "enable");
  EXPECT_FALSE(widgets.tbToolbar.Button("Selected").Pressed());
  EXPECT_EQ(Tree(), "Billing\n  Fees\n    ...\n  Taxes\n  Rebates\nClaims\n  Homeless Function\n");
}

TEST_F(ShowTest, EventsAreHeardAgain) {
  globals.eventsSilenced = true;
  Open();
  store.AddFunction("Reports");
  EXPECT_EQ(Node("Reports").Text(), "Reports");
}

TEST_F(ShowTest, AShowThatComesFromItsOwnHandlersFillsTheTreeOnce) {
  Init();
  int fills = 0;
  const auto removed = tvObjects.OnNodesRemoved.Subscribe([&] { ++fills; });
  int shows = 0;
  const auto commands = workspace.OnCommandsChanged([&] {
    if (++shows == 1) control.Show();
  });
  control.Show();
  EXPECT_GT(shows, 0);
  EXPECT_EQ(fills, 1);
  EXPECT_EQ(Tree(), "Billing\n  Fees\n    ...\n  Taxes\n  Rebates\nClaims\n  Homeless Function\n");
}

TEST_F(ShowTest, WhatOtherProcessesChangeMeanwhileIsLeftToTheFill) {
  Init();
  platform::ForeignChanges all;
  all.areTooMany = true;
  std::vector<std::size_t> nodes;
  const auto commands = workspace.OnCommandsChanged([&] {
    if (tvObjects.Count() > 0) return;
    control.MendFromStore(all);
    nodes.push_back(tvObjects.Count());
  });
  control.Show();
  ASSERT_FALSE(nodes.empty());
  for (const std::size_t count : nodes) EXPECT_EQ(count, 0U);
  EXPECT_EQ(tvObjects.Count(), 7U);
}

TEST_F(ShowTest, DemotesTheRulesWhoseFileIsGone) {
  PutFile(baseFee, "gone.cbl");
  Open();
  EXPECT_EQ(Valid(baseFee), "Invalid");
}

TEST_F(ShowTest, DemotesTheRulesWhoseFileIsYounger) {
  store.Folder().Write("FEE.cbl", "text\n");
  PutFile(baseFee, "FEE.cbl");
  store.Put(MakeKey("RULE", baseFee), "Validated", platform::Timestamp{0});
  Open();
  EXPECT_EQ(Valid(baseFee), "Potentially invalid");
}

TEST_F(ShowTest, ARuleWithoutAFileIsNotTouched) {
  PutFile(baseFee, "");
  Open();
  EXPECT_EQ(Valid(baseFee), "Valid");
}

TEST_F(ShowTest, ARuleValidatedInTheSameSecondAsTheFilesDateStaysValid) {
  const std::string path = store.Folder().Write("FEE.cbl", "text\n");
  PutFile(baseFee, "FEE.cbl");
  store.Put(MakeKey("RULE", baseFee), "Validated", files.DateLastModified(path));
  Open();
  EXPECT_EQ(Valid(baseFee), "Valid");
}

TEST_F(ShowTest, WithTheGlossaryItsCommandsAreThereAndItsDatabaseIsOpen) {
  OfferGlossary();
  Open();
  EXPECT_TRUE(globals.glossaryAvailable);
  EXPECT_NE(globals.glossary, nullptr);
  EXPECT_TRUE(widgets.mnuPopup.Item("mnuPopulateBusinessName").Visible());
  EXPECT_TRUE(widgets.tbToolbar.Button("Segment").Menu("BusinessNames").Visible());
  EXPECT_TRUE(widgets.mnuAuxMain.Item("mnuSyncBusinessNames").Visible());
  EXPECT_EQ(HostState("BusinessNames"), "disable");
}

TEST_F(ShowTest, WithoutTheGlossaryItsCommandsAreHidden) {
  Open();
  EXPECT_FALSE(globals.glossaryAvailable);
  EXPECT_EQ(globals.glossary, nullptr);
  EXPECT_FALSE(widgets.mnuPopup.Item("mnuPopulateBusinessName").Visible());
  EXPECT_FALSE(widgets.tbToolbar.Button("Segment").Menu("BusinessNames").Visible());
  EXPECT_FALSE(widgets.mnuAuxMain.Item("mnuSyncBusinessNames").Visible());
  EXPECT_EQ(HostState("BusinessNames"), "disable hide");
}

TEST_F(ShowTest, TheGlossaryIsLookedForAtEachShow) {
  OfferGlossary();
  Open();
  control.Hide();
  store.FE().GlobalOptions().Document().loadXML("<OPTIONS/>");
  control.Show();
  EXPECT_EQ(databases.open, 0);
  EXPECT_EQ(HostState("BusinessNames"), "disable hide");
  OfferGlossary();
  control.Show();
  control.Show();
  EXPECT_EQ(databases.open, 1);
}

TEST_F(ShowTest, AGlossaryThatCannotBeOpenedIsToldOfAndItsCommandsStay) {
  OfferGlossary();
  databases.known = "elsewhere";
  Init();
  ExpectMessage("There is no database " + store.FE().GetFerrowoodName(4) + "\\Glossary.mdb.");
  control.Show();
  EXPECT_EQ(dialogs.History().back().style, platform::MessageStyle::Exclamation);
  EXPECT_EQ(globals.glossary, nullptr);
  EXPECT_TRUE(widgets.mnuPopup.Item("mnuPopulateBusinessName").Visible());
}

TEST_F(ShowTest, TheProcessOutlineReportIsThereForACobolProgramOnly) {
  const std::string pli = MakeKey("PLI", store.Add("PLI", "PAY"));
  workspace.SetObjectID(pli);
  Open();
  EXPECT_EQ(HostState("ProcessOutlineReport"), "enable hide");
  workspace.SetObjectID(program);
  control.Show();
  EXPECT_EQ(HostState("ProcessOutlineReport"), "enable");
}

TEST_F(ShowTest, WithAnEmptyCatalogueTheWorkspaceIsAskedAllTheSame) {
  repository.object(MakeKey("BUSINESSFUNC", billing))->Delete();
  repository.object(MakeKey("BUSINESSFUNC", claims))->Delete();
  workspace.SetObjectID(MakeKey("PLI", store.Add("PLI", "PAY")));
  Open();
  EXPECT_EQ(tvObjects.Count(), 0U);
  EXPECT_EQ(HostState("AutoDetect"), "disable");
  EXPECT_EQ(HostState("ProcessOutlineReport"), "enable hide");
}

TEST_F(ShowTest, DeInitWritesWhatIsPendingInTheFields) {
  Open();
  Click("Billing");
  widgets.txtObjName.SetFocus();
  widgets.txtObjName.Enter("Invoicing");
  widgets.rtbDescription.SetText("All that is billed.");
  control.DeInit();
  EXPECT_EQ(store.Get(MakeKey("BUSINESSFUNC", billing), "Name").Text(), "Invoicing");
  EXPECT_EQ(store.Get(MakeKey("BUSINESSFUNC", billing), "Description").Text(), "All that is billed.");
}

TEST_F(ShowTest, DeInitWritesTheTextsThenTheNameThenTheAttributes) {
  Open();
  OpenAll();
  Click("Base fee");
  widgets.txtObjName.SetText("Basic fee");
  widgets.rtbBusiness.SetText("Everybody pays.");
  widgets.rtbDescription.SetText("Adds the fee.");
  for (int index = 1; index <= widgets.AttributeCount(); ++index) {
    if (widgets.lblAttrs(index).Caption() == "Remark:") widgets.rtbAttrs(index).SetText("Old");
    if (widgets.lblAttrs(index).Caption() == "Assigned To:") widgets.txtAttrs(index).SetText("ann");
  }
  control.DeInit();
  std::vector<std::string> records;
  for (const auto& row : catalogue::ReadRuleLog(repository, StringTableFor(Language::English), baseFee).rows) {
    records.push_back(row.Activity);
  }
  EXPECT_EQ(records,
            (std::vector<std::string>{"Technical Description changed to Adds the fee.",
                                      "Business Description changed to Everybody pays.", "Name changed to Basic fee",
                                      "Assigned To changed to ann", "Remark changed to Old"}));
}

TEST_F(ShowTest, DeInitRefusesANameOfBlanksAndGivesEverythingBackAllTheSame) {
  Open();
  Click("Billing");
  widgets.rtbDescription.SetText("All that is billed.");
  widgets.txtObjName.SetFocus();
  widgets.txtObjName.Enter("  ");
  ExpectMessage("Name cannot be empty.");
  control.DeInit();
  EXPECT_EQ(dialogs.Remaining(), 0U);
  EXPECT_FALSE(control.HasWorkspace());
  EXPECT_EQ(store.Get(MakeKey("BUSINESSFUNC", billing), "Name").Text(), "Billing");
  EXPECT_EQ(store.Get(MakeKey("BUSINESSFUNC", billing), "Description").Text(), "All that is billed.");
  EXPECT_NE(settings.Get("Settings", "Splitter", ""), "");
}

TEST_F(ShowTest, DeInitLeavesTheWidgetsAsTheyWereBeforeInit) {
  Open();
  OpenAll();
  Click("Base fee");
  control.DeInit();
  EXPECT_EQ(tvObjects.Count(), 0U);
  EXPECT_EQ(widgets.AttributeCount(), 0);
  EXPECT_EQ(widgets.txtObjName.Text(), "");
  EXPECT_FALSE(widgets.txtObjName.Visible());
  EXPECT_TRUE(widgets.mnuAuxMain.Items().empty());
  store.AddFunction("Reports");
  EXPECT_EQ(tvObjects.Count(), 0U) << "events are heard no more";
  Request("SelectAll");
  EXPECT_TRUE(dialogs.History().empty());
}

TEST_F(ShowTest, TheControlCanBeShownForAnotherWorkspaceAfterDeInit) {
  Open();
  control.DeInit();
  platform::MemoryWorkspace another(frontEnd, progress);
  control.Init(another, "Other", "Rules");
  control.Show();
  EXPECT_TRUE(another.IsShown("Other"));
  EXPECT_EQ(Tree(), "Billing\n  Fees\n    ...\n  Taxes\n  Rebates\nClaims\n  Homeless Function\n");
}

}  // namespace
}  // namespace qmrules::shell
