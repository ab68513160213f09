#include "browser/detailpanestest.h"

#include "catalogue/activitylog.h"
#include "catalogue/gateway.h"
#include "support/errortext.h"
#include "workbench/repository/sqliteconnection.h"
#include "workbench/repository/store.h"

namespace qmrules::browser {

using platform::widgets::Color;
using platform::widgets::ComboBox;
using platform::widgets::TextBox;

namespace {

constexpr const char* kExtension = R"(<repstry><entities><entity name="RULE"><entityattrs>
  <entityattr name="Status" type="CHAR" length="8" system="false" description="Status">
    <const value="new"/><const value="approved"/>
  </entityattr>
  <entityattr name="Weight" type="INTEGER" length="" system="false" description="Weight of the rule"/>
  <entityattr name="Audited" type="BOOLEAN" system="false" description="Audited"/>
  <entityattr name="Remark" type="LONGTEXT" system="false" description="Remark"/>
  <entityattr name="Owner" type="CHAR" length="9" system="false" description="Owner"/>
  <entityattr name="Origin" type="CHAR" system="true" description="Origin"/>
</entityattrs></entity></entities></repstry>)";

workbench::repository::ConnectionFactory ConnectWith(const std::shared_ptr<test::Fault>& fault) {
  return [fault](const std::string& path) {
    return test::MakeFaulty(
        workbench::repository::OpenSqliteConnection(path, workbench::repository::Durability::Relaxed), fault);
  };
}

}  // namespace

DetailPanesTest::DetailPanesTest() : DetailPanesTest(std::make_shared<test::Fault>()) {}

DetailPanesTest::DetailPanesTest(const std::shared_ptr<test::Fault>& shared)
    : BrowserTest(kExtension, ConnectWith(shared)), fault_(shared) {
  objectChanged_ = workspace.OnObjectIDChanged([this] {
    if (workspace.ObjectID() == programKey) viewer.SetFiles({{"FEE.cbl", "COBOL"}, {"copy\\RATES.cpy", "COBOL"}});
  });
  host.panes = &panes;
  objects.LoadTree();
  host.shown.clear();
}

std::string DetailPanesTest::AddProgram(const std::string& name) {
  const std::string key = catalogue::MakeKey("COBOL", store.Add("COBOL", name));
  repository.object(key)->Link("BelongsTo", store.ProjectKey());
  return key;
}

platform::XmlElement DetailPanesTest::LoadDefinitions() {
  document.loadXML(kExtension);
  return document.selectSingleNode(catalogue::kRuleAttributesPath);
}

void DetailPanesTest::ShowFunction(const std::string& name) {
  tvObjects.Click(Node(name));
}

void DetailPanesTest::ShowRuleSet(const std::string& function, const std::string& name) {
  tvObjects.Expand(Node(function));
  for (auto* node = Node(function).FirstChild(); node != nullptr; node = node->NextSibling()) {
    if (node->Text() == name) tvObjects.Click(*node);
  }
}

void DetailPanesTest::ShowRule(const std::string& name) {
  tvObjects.Expand(Node("Billing"));
  tvObjects.Expand(Node("Fees"));
  tvObjects.Click(Node(name));
}

bool DetailPanesTest::EnterAndLeave(TextBox& field, const std::string& text) {
  field.Enter(text);
  return Leave();
}

bool DetailPanesTest::ChooseAndLeave(ComboBox& field, const std::string& text) {
  field.ChooseText(text);
  return Leave();
}

std::vector<std::string> DetailPanesTest::Log() {
  std::vector<std::string> activities;
  for (const auto& row : catalogue::ReadRuleLog(repository, texts, baseFee).rows) activities.push_back(row.Activity);
  return activities;
}

std::string DetailPanesTest::VisibleWidgets() const {
  std::string names;
  for (const auto& widget : widgets.Widgets()) {
    if (!widget->Visible() || widget->Enclosing() != nullptr) continue;
    if (widget.get() == &tbToolbar || widget.get() == &tvObjects) continue;
    names += (names.empty() ? "" : " ") + widget->Name();
  }
  return names;
}

std::int32_t DetailPanesTest::AddElement(const std::string& entity,
                                         const std::map<std::string, platform::Value>& attributes) {
  const auto id = store.Add(entity, "element" + std::to_string(repository.CountObjects(entity, {})), attributes);
  repository.object(ruleKey)->Link(entity == "RULEIO" ? "Has" : "IsControlledBy", catalogue::MakeKey(entity, id));
  return id;
}

void DetailPanesTest::PutSegment(const std::string& file, int fromRow, int toRow, const std::string& programName) {
  const auto rule = repository.object(ruleKey);
  rule->Edit();
  rule->Attrs("Model", "COBOL");
  rule->Attrs("Program", programName);
  rule->Attrs("FileName", file);
  rule->Attrs("FromRow", fromRow);
  rule->Attrs("ToRow", toRow);
  rule->Post();
}

void DetailPanesTest::DeleteElsewhere(const std::string& key) {
  const auto other = workbench::repository::OpenStore(
      {store.StorePath(), store.Folder().File("product/User.Repstry.xml"), "other", ConnectWith(fault_)},
      store.Clock());
  other->object(key)->Delete();
}

namespace {

TEST_F(DetailPanesTest, AFunctionShowsItsTextsAndItsRuleSetsInSequence) {
  store.Put(functionKey, "Description", "Bills customers.");
  store.Put(functionKey, "BusinessArea", "Finance");
  store.AddCall(billing, taxes, 2);
  ShowFunction("Billing");
  EXPECT_EQ(widgets.txtObjName.Text(), "Billing");
  EXPECT_EQ(rtbDescription.Text(), "Bills customers.");
  EXPECT_EQ(rtbBusiness.Text(), "Finance");
  EXPECT_EQ(lvContent.Columns()[0].text, "Rule Sets");
  EXPECT_EQ(Rows(lvContent), "Fees\nTaxes\n");
  EXPECT_EQ(lvContent.Row(0).Key(), "s" + std::to_string(fees));
  EXPECT_EQ(panes.CurrentKey(), functionKey);
  EXPECT_EQ(panes.CurrentNode(), &Node("Billing"));
  EXPECT_FALSE(pointer.IsBusy());
}

TEST_F(DetailPanesTest, TheListsFollowTheNumbersAndNotTheAge) {
  store.Put("RULESETCALL#" + std::to_string(billingFees), "SeqNo", 7);
  store.AddCall(billing, taxes, 2);
  store.Put(ruleKey, "SeqNo", 9);
  ShowFunction("Billing");
  EXPECT_EQ(Rows(lvContent), "Taxes\nFees\n");
  ShowRuleSet("Claims", "Fees");
  EXPECT_EQ(Rows(lvContent), "Late fee\nBase fee\n");
}

TEST_F(DetailPanesTest, ARuleSetThatHasLeftTheProjectShowsNoRules) {
  repository.object(setKey)->UnLink("BelongsTo", store.ProjectKey());
  ShowRuleSet("Claims", "Fees");
  EXPECT_EQ(widgets.txtObjName.Text(), "Fees");
  EXPECT_EQ(lvContent.Count(), 0U);
}

TEST_F(DetailPanesTest, ARuleSetThatAFunctionTriggersTwiceAppearsOnce) {
  store.AddCall(billing, fees, 5);
  ShowFunction("Billing");
  EXPECT_EQ(Rows(lvContent), "Fees\n");
}

TEST_F(DetailPanesTest, ARuleSetThatTheTreeDoesNotShowIsGrey) {
  const auto abroad = store.Add("RULESET", "Abroad");
  store.AddCall(billing, abroad, 2);
  objects.LoadTree();
  ShowFunction("Billing");
  ASSERT_EQ(Rows(lvContent), "Fees\nAbroad\n");
  EXPECT_EQ(lvContent.Row(0).ForeColor(), Color::Normal);
  EXPECT_EQ(lvContent.Row(1).ForeColor(), Color::Grey);
}

TEST_F(DetailPanesTest, ARuleSetShowsItsRulesAndTheRulesThatTriggerIt) {
  store.Put(setKey, "Description", "All fees.");
  const auto tax = store.AddRule(taxes, "Tax", 1);
  repository.object("RULE#" + std::to_string(tax))->Link("Triggers", setKey);
  ShowRuleSet("Claims", "Fees");
  EXPECT_EQ(widgets.txtObjName.Text(), "Fees");
  EXPECT_EQ(rtbDescription.Text(), "All fees.");
  EXPECT_EQ(lvContent.Columns()[0].text, "Rules");
  EXPECT_EQ(Rows(lvContent), "Base fee\nLate fee\n");
  EXPECT_EQ(lvContent.Row(1).Key(), "r" + std::to_string(lateFee));
  EXPECT_EQ(Rows(lvTriggers), "Tax | Taxes\n");
  EXPECT_EQ(lvTriggers.Row(0).Key(), "r" + std::to_string(tax));
  EXPECT_EQ(lvTriggers.Row(0).ForeColor(), Color::Normal);
  EXPECT_EQ(panes.CurrentKey(), setKey);
}

TEST_F(DetailPanesTest, ATriggeringRuleOfARuleSetThatTheTreeDoesNotShowIsGrey) {
  const auto orphan = store.AddRuleSet("Orphan");
  const auto lone = store.AddRule(orphan, "Lone", 1);
  repository.object("RULE#" + std::to_string(lone))->Link("Triggers", setKey);
  objects.LoadTree();
  ShowRuleSet("Claims", "Fees");
  ASSERT_EQ(Rows(lvTriggers), "Lone | Orphan\n");
  EXPECT_EQ(lvTriggers.Row(0).ForeColor(), Color::Grey);
}

TEST_F(DetailPanesTest, ARuleShowsItsTextsItsAttributesItsListsAndWhatItTriggers) {
  store.Put(ruleKey, "Description", "Adds the fee.");
  store.Put(ruleKey, "BusinessDescription", "Everybody pays.");
  store.Put(ruleKey, "AssignedTo", "ann");
  AddElement("RULEIO", {{"IOName", "RATE"},
                        {"Kind", "Input"},
                        {"BusinessName", "Rate"},
                        {"Description", "Per cent"},
                        {"QMID", "VAR#17"},
                        {"SourceType", "COBOL"},
                        {"SourceID", "3"}});
  AddElement("RULEIO", {{"IOName", "AMOUNT"}, {"Kind", "Output"}});
  AddElement("RULECOND", {{"CondName", "ZERO"}, {"Operator", "="}, {"Argument", "0"}, {"Description", "Nothing due"}});
  repository.object(ruleKey)->Link("Triggers", "RULESET#" + std::to_string(taxes));
  ShowRule("Base fee");
  EXPECT_EQ(widgets.txtObjName.Text(), "Base fee");
  EXPECT_EQ(rtbDescription.Text(), "Adds the fee.");
  EXPECT_EQ(rtbBusiness.Text(), "Everybody pays.");
  EXPECT_EQ(Text("AssignedTo").Text(), "ann");
  EXPECT_EQ(Text("Valid").Text(), "Valid");
  EXPECT_EQ(Rows(lvIOElems), "AMOUNT | Output |  | \nRATE | Input | Rate | Per cent\n");
  EXPECT_EQ(lvIOElems.Row(0).Tag(), "##");
  EXPECT_EQ(lvIOElems.Row(1).Tag(), "VAR#17#COBOL#3");
  EXPECT_EQ(Rows(lvConditions), "ZERO | = | 0 | Nothing due\n");
  EXPECT_EQ(txtTriggers.Text(), "Taxes");
  EXPECT_EQ(txtTriggers.ToolTipText(), "Taxes");
  EXPECT_EQ(txtTriggers.Tag(), std::to_string(taxes));
  EXPECT_EQ(panes.CurrentKey(), ruleKey);
}

TEST_F(DetailPanesTest, ARuleThatTriggersNothingSaysSo) {
  ShowRule("Base fee");
  EXPECT_EQ(txtTriggers.Text(), "(none)");
  EXPECT_EQ(txtTriggers.ToolTipText(), "(none)");
  EXPECT_EQ(txtTriggers.Tag(), "0");
}

TEST_F(DetailPanesTest, TextsStandInTheTagsToo) {
  store.Put(ruleKey, "Description", "Adds the fee.");
  ShowRule("Base fee");
  EXPECT_EQ(widgets.txtObjName.Tag(), "Base fee");
  EXPECT_EQ(rtbDescription.Tag(), "Adds the fee.");
  EXPECT_FALSE(panes.IsEdited());
}

TEST_F(DetailPanesTest, ToolTipsOfLongTextsAreCutToAHundredCharacters) {
  store.Put(ruleKey, "Description", std::string(99, 'x') + "yz");
  store.Put(ruleKey, "Remark", std::string(101, 'r'));
  ShowRule("Base fee");
  EXPECT_EQ(rtbDescription.ToolTipText(), std::string(99, 'x') + "y");
  EXPECT_EQ(LongText("Remark").ToolTipText(), std::string(100, 'r'));
}

TEST_F(DetailPanesTest, WhatAnotherNodeShowedIsGone) {
  AddElement("RULEIO", {{"IOName", "RATE"}});
  ShowRule("Base fee");
  ShowFunction("Billing");
  EXPECT_EQ(lvIOElems.Count(), 0U);
  EXPECT_EQ(Text("Valid").Text(), "");
  EXPECT_EQ(txtTriggers.Tag(), "0");
  ShowRule("Base fee");
  EXPECT_EQ(lvContent.Count(), 0U);
}

TEST_F(DetailPanesTest, NoNodeLeavesThePanesEmptyAndHidden) {
  ShowRule("Base fee");
  panes.ShowNode(nullptr);
  EXPECT_EQ(widgets.txtObjName.Text(), "");
  EXPECT_EQ(VisibleWidgets(), "");
  EXPECT_EQ(panes.CurrentNode(), nullptr);
  EXPECT_EQ(panes.CurrentKey(), "");
  EXPECT_FALSE(panes.IsEdited());
  EXPECT_FALSE(pointer.IsBusy());
}

TEST_F(DetailPanesTest, ShowingANodeUpdatesTheCommandsAndDropsTheViewersSelection) {
  workspace.SetObjectID(programKey);
  viewer.SetSelectedRowsCount(3);
  host.updated.clear();
  ShowFunction("Claims");
  EXPECT_EQ(host.updated, std::vector<std::string>{"Claims"});
  EXPECT_EQ(viewer.SelectedRowsCount(), 0);
}

TEST_F(DetailPanesTest, EachKindOfNodeHasItsPanes) {
  ShowFunction("Billing");
  EXPECT_EQ(VisibleWidgets(), "lblObjName txtObjName tsDescrs rtbDescription lvContent");
  EXPECT_EQ(widgets.tsDescrs.Tabs()[0].caption, "Description");
  EXPECT_EQ(widgets.tsDescrs.Tabs()[1].caption, "Business Area");
  ShowRuleSet("Billing", "Fees");
  EXPECT_EQ(VisibleWidgets(), "lblObjName txtObjName rtbDescription lvContent lvTriggers");
  ShowRule("Base fee");
  EXPECT_EQ(VisibleWidgets(),
            "lblObjName txtObjName tsDescrs rtbDescription pbAttrs txtFileName lblTriggers txtTriggers "
            "cmdSelectTrigger tsIOCond lvIOElems");
  EXPECT_EQ(widgets.tsDescrs.Tabs()[0].caption, "Technical Description");
  EXPECT_EQ(widgets.tsDescrs.Tabs()[1].caption, "Business Description");
}

TEST_F(DetailPanesTest, TheTabsBringTheirFieldToTheFront) {
  ShowRule("Base fee");
  widgets.tsDescrs.Choose("Business");
  EXPECT_FALSE(rtbDescription.Visible());
  EXPECT_TRUE(rtbBusiness.Visible());
  widgets.tsIOCond.Choose("Conditions");
  EXPECT_FALSE(lvIOElems.Visible());
  EXPECT_TRUE(lvConditions.Visible());
  widgets.tsDescrs.Choose("Description");
  widgets.tsIOCond.Choose("I/O");
  EXPECT_TRUE(rtbDescription.Visible());
  EXPECT_TRUE(lvIOElems.Visible());
}

TEST_F(DetailPanesTest, APaneThatStaysInSightKeepsTheFocus) {
  ShowRuleSet("Billing", "Fees");
  lvContent.SetFocus();
  int changes = 0;
  const auto watching = widgets.lvTriggers.OnChanged.Subscribe([&] { ++changes; });
  panes.ShowNode(&Node("Fees"));
  EXPECT_TRUE(lvContent.HasFocus());
  EXPECT_EQ(changes, 0);
}

TEST_F(DetailPanesTest, ShowingTheSameTextAgainLeavesTheCaret) {
  store.Put(ruleKey, "Description", "Adds the fee.");
  ShowRule("Base fee");
  rtbDescription.Select(5, 3);
  panes.ShowNode(&Node("Base fee"));
  EXPECT_EQ(rtbDescription.SelText(), "the");
}

TEST_F(DetailPanesTest, ALineThatOnlyTellsToWaitShowsNothing) {
  auto* const placeholder = Node("Billing").FirstChild()->FirstChild();
  ASSERT_EQ(placeholder->Text(), "Please, wait...");
  panes.ShowNode(placeholder);
  EXPECT_EQ(VisibleWidgets(), "");
  EXPECT_EQ(host.updated.back(), "-");
}

TEST_F(DetailPanesTest, FieldsOfSeveralLinesAreNamedAfterTheirTabs) {
  ShowRule("Base fee");
  EXPECT_EQ(widgets.AccessibleNameOf(rtbDescription), "Technical Description");
  EXPECT_EQ(widgets.AccessibleNameOf(rtbBusiness), "Business Description");
  EXPECT_EQ(widgets.AccessibleNameOf(LongText("Remark")), "Remark");
  ShowRuleSet("Billing", "Fees");
  EXPECT_EQ(widgets.AccessibleNameOf(rtbDescription), "Description");
}

TEST_F(DetailPanesTest, TheTabStaysInFrontForTheNextNode) {
  ShowRule("Base fee");
  widgets.tsDescrs.Choose("Business");
  ShowFunction("Billing");
  EXPECT_EQ(VisibleWidgets(), "lblObjName txtObjName tsDescrs rtbBusiness lvContent");
  ShowRuleSet("Billing", "Fees");
  EXPECT_EQ(VisibleWidgets(), "lblObjName txtObjName rtbDescription lvContent lvTriggers");
}

TEST_F(DetailPanesTest, TabsThatAreNotInUseBringNothingToTheFront) {
  panes.ShowNode(nullptr);
  widgets.tsDescrs.SetSelected("Business");
  widgets.tsIOCond.SetSelected("Conditions");
  EXPECT_EQ(VisibleWidgets(), "");
}

TEST_F(DetailPanesTest, AFailureWhileReadingLeavesThePanesEmptyAndWithoutAnObject) {
  ShowRule("Base fee");
  auto& billingNode = Node("Billing");
  for (int step = 1; step <= 2; ++step) {
    panes.ShowNode(&Node("Base fee"));
    watch.Arm(step);
    EXPECT_EQ(test::ErrorText([&] { panes.ShowNode(&billingNode); }), kReadFault) << step;
    watch.Arm(0);
    EXPECT_EQ(panes.CurrentKey(), "");
    EXPECT_EQ(widgets.txtObjName.Text(), "");
    EXPECT_EQ(VisibleWidgets(), "");
    EXPECT_FALSE(pointer.IsBusy());
  }
  panes.ShowNode(&billingNode);
  EXPECT_EQ(widgets.txtObjName.Text(), "Billing");
}

TEST_F(DetailPanesTest, ANodeWhoseObjectAnotherProcessHasDeletedIsToldAndShowsNothing) {
  ShowRule("Base fee");
  DeleteElsewhere("RULE#" + std::to_string(lateFee));
  const auto text = test::ErrorText([&] { tvObjects.Click(Node("Late fee")); });
  EXPECT_EQ(text, "RULE#" + std::to_string(lateFee) + " has been deleted. Refresh the tree to see what is there.");
  EXPECT_EQ(VisibleWidgets(), "");
  EXPECT_EQ(panes.CurrentNode(), nullptr);
}

TEST_F(DetailPanesTest, TheObjectOfANodeThatLeavesTheTreeStaysTheCurrentOne) {
  ShowRule("Base fee");
  tvObjects.Remove(Node("Base fee"));
  EXPECT_EQ(panes.CurrentNode(), nullptr);
  EXPECT_EQ(panes.CurrentKey(), ruleKey);
}

TEST_F(DetailPanesTest, ANodeThatWasPutBackIsTheCurrentOneAgain) {
  ShowRule("Base fee");
  host.ReplaceCurrentNode(Node("Late fee"));
  EXPECT_EQ(panes.CurrentNode(), &Node("Late fee"));
  EXPECT_EQ(panes.CurrentKey(), ruleKey);
}

}  // namespace
}  // namespace qmrules::browser
