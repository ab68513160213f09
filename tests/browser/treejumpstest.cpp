#include <gtest/gtest.h>

#include "browser/browsertest.h"
#include "catalogue/gateway.h"
#include "support/errortext.h"

namespace qmrules::browser {
namespace {

using platform::widgets::Color;
using platform::widgets::Key;
using platform::widgets::ListRow;

class TreeJumpsTest : public BrowserTest {
 protected:
  TreeJumpsTest() {
    store.AddCall(billing, fees, 1);
    store.AddCall(billing, taxes, 2);
    store.AddCall(claims, fees, 1);
    objects.LoadTree();
    host.shown.clear();
  }

  // Shows the only rule of the set "Fees" below "Billing", with the rule set that it triggers in the panes.
  void ShowRule(std::int32_t triggered) {
    tvObjects.Expand(Node("Fees"));
    tvObjects.Click(Node("Base fee"));
    txtTriggers.SetTag(std::to_string(triggered));
    host.shown.clear();
  }

  ListRow& ShowWithRow(platform::widgets::ListView& list, const std::string& node, const std::string& key) {
    tvObjects.Click(Node(node));
    host.shown.clear();
    return *list.Add(key, "row");
  }

  std::int32_t billing = store.AddFunction("Billing");
  std::int32_t claims = store.AddFunction("Claims");
  std::int32_t fees = store.AddRuleSet("Fees");
  std::int32_t taxes = store.AddRuleSet("Taxes");
  std::int32_t orphan = store.AddRuleSet("Orphan");
  std::int32_t baseFee = store.AddRule(fees, "Base fee", 1);
  std::int32_t tax = store.AddRule(taxes, "Tax", 1);
};

TEST_F(TreeJumpsTest, ADoubleClickOnARuleGoesToTheFirstPlaceOfTheRuleSetThatItTriggers) {
  ShowRule(taxes);
  tvObjects.Collapse(Node("Billing"));
  tvObjects.Expand(Node("Billing"));
  tvObjects.Expand(Node("Fees"));
  tvObjects.SetSelectedNode(&Node("Base fee"));
  host.shown.clear();
  jumps.ToTriggered();
  EXPECT_EQ(SelectedText(), "Taxes");
  EXPECT_EQ(host.shown.back(), "Taxes");
  EXPECT_FALSE(pointer.IsBusy());
}

TEST_F(TreeJumpsTest, TheJumpOpensTheFunctionAroundTheRuleSet) {
  const auto discounts = store.AddRuleSet("Discounts");
  globals.eventsSilenced = true;
  store.AddCall(claims, discounts, 2);
  globals.eventsSilenced = false;
  objects.LoadTree();
  ShowRule(discounts);
  EXPECT_FALSE(Node("Claims").Expanded());
  tvObjects.DoubleClick(Node("Base fee"));
  EXPECT_TRUE(Node("Claims").Expanded());
  EXPECT_EQ(SelectedText(), "Discounts");
}

TEST_F(TreeJumpsTest, ARuleWithoutATriggerLeadsNowhere) {
  ShowRule(0);
  tvObjects.DoubleClick(Node("Base fee"));
  EXPECT_EQ(SelectedText(), "Base fee");
  EXPECT_EQ(host.shown, std::vector<std::string>{"Base fee"});
}

TEST_F(TreeJumpsTest, ATriggeredRuleSetThatTheTreeDoesNotShowLeadsNowhere) {
  ShowRule(orphan);
  tvObjects.DoubleClick(Node("Base fee"));
  EXPECT_EQ(SelectedText(), "Base fee");
}

TEST_F(TreeJumpsTest, ATriggeredRuleSetThatIsGoneLeadsNowhere) {
  ShowRule(taxes);
  repository.object(catalogue::MakeKey("RULESET", taxes))->Delete();
  tvObjects.DoubleClick(Node("Base fee"));
  EXPECT_EQ(SelectedText(), "Base fee");
}

TEST_F(TreeJumpsTest, ADoubleClickOnARuleSetLeadsNowhere) {
  txtTriggers.SetTag(std::to_string(taxes));
  tvObjects.DoubleClick(Node("Fees"));
  EXPECT_EQ(SelectedText(), "Fees");
}

TEST_F(TreeJumpsTest, AJumpTurnsSelectedOnlyOff) {
  ShowRule(taxes);
  tvObjects.ClickCheckBox(Node("Base fee"));
  selectedOnly.TurnOn();
  EXPECT_EQ(Tree(), "Billing\n  Fees #1\n    Base fee #1 [x]\n");
  txtTriggers.SetTag(std::to_string(taxes));
  tvObjects.DoubleClick(Node("Base fee"));
  EXPECT_FALSE(selectedOnly.IsOn());
  EXPECT_EQ(SelectedText(), "Taxes");
  EXPECT_TRUE(Node("Base fee").Checked());
}

TEST_F(TreeJumpsTest, WhatLeadsNowhereLeavesSelectedOnlyOn) {
  ShowRule(orphan);
  tvObjects.ClickCheckBox(Node("Base fee"));
  selectedOnly.TurnOn();
  for (const std::int32_t triggered : {orphan, 0}) {
    txtTriggers.SetTag(std::to_string(triggered));
    tvObjects.DoubleClick(Node("Base fee"));
    EXPECT_TRUE(selectedOnly.IsOn()) << triggered;
  }
  for (auto* const list : {&lvContent, &lvTriggers}) {
    list->Add("r" + std::to_string(tax), "row")->SetForeColor(Color::Grey);
    list->DoubleClick(list->Row(0));
    EXPECT_TRUE(selectedOnly.IsOn());
  }
  EXPECT_EQ(SelectedText(), "Base fee");
}

TEST_F(TreeJumpsTest, ARowOfAFunctionLeadsToItsRuleSet) {
  auto& row = ShowWithRow(lvContent, "Claims", "s" + std::to_string(fees));
  EXPECT_TRUE(lvContent.DoubleClick(row));
  EXPECT_EQ(tvObjects.SelectedNode()->Key(), "f" + std::to_string(claims) + "s" + std::to_string(fees));
  EXPECT_EQ(host.shown.back(), "Fees");
  EXPECT_TRUE(Node("Claims").Expanded());
}

TEST_F(TreeJumpsTest, ARowOfARuleSetLeadsToARuleThatHasNotBeenRead) {
  auto& row = ShowWithRow(lvContent, "Fees", "r" + std::to_string(baseFee));
  EXPECT_TRUE(lvContent.DoubleClick(row));
  EXPECT_EQ(SelectedText(), "Base fee");
  EXPECT_EQ(host.shown.back(), "Base fee");
  EXPECT_TRUE(Node("Fees").Expanded());
  EXPECT_TRUE(Node("Billing").Expanded());
}

TEST_F(TreeJumpsTest, EnterLeadsToTheCurrentRow) {
  lvContent.SetCurrentRow(&ShowWithRow(lvContent, "Fees", "r" + std::to_string(baseFee)));
  EXPECT_TRUE(lvContent.PressKey(Key::Enter));
  EXPECT_EQ(SelectedText(), "Base fee");
}

TEST_F(TreeJumpsTest, EnterWithoutACurrentRowAndOtherKeysLeadNowhere) {
  auto& row = ShowWithRow(lvContent, "Fees", "r" + std::to_string(baseFee));
  EXPECT_FALSE(lvContent.PressKey(Key::Enter));
  lvContent.SetCurrentRow(&row);
  EXPECT_FALSE(lvContent.PressKey(Key::Space));
  EXPECT_EQ(SelectedText(), "Fees");
}

TEST_F(TreeJumpsTest, AGreyRowLeadsNowhere) {
  ShowWithRow(lvContent, "Fees", "r" + std::to_string(baseFee)).SetForeColor(Color::Grey);
  lvContent.DoubleClick(lvContent.Row(0));
  EXPECT_EQ(SelectedText(), "Fees");
  ShowWithRow(lvTriggers, "Fees", "r" + std::to_string(tax)).SetForeColor(Color::Grey);
  lvTriggers.DoubleClick(lvTriggers.Row(0));
  EXPECT_EQ(SelectedText(), "Fees");
}

TEST_F(TreeJumpsTest, ARowLeadsNowhereOnceItsNodeIsGone) {
  ShowWithRow(lvContent, "Taxes", "r" + std::to_string(tax));
  repository.object(catalogue::MakeKey("RULESET", taxes))->Delete();
  lvContent.DoubleClick(lvContent.Row(0));
  EXPECT_EQ(SelectedText(), "Fees");
}

TEST_F(TreeJumpsTest, ATriggeringRuleIsReachedThroughItsRuleSet) {
  auto& row = ShowWithRow(lvTriggers, "Fees", "r" + std::to_string(tax));
  EXPECT_TRUE(lvTriggers.DoubleClick(row));
  EXPECT_EQ(SelectedText(), "Tax");
  EXPECT_EQ(host.shown.back(), "Tax");
  EXPECT_TRUE(Node("Taxes").Expanded());
}

TEST_F(TreeJumpsTest, ATriggeringRuleIsReachedByEnterAndThroughSelectedOnly) {
  tvObjects.ClickCheckBox(Node("Fees"));
  selectedOnly.TurnOn();
  lvTriggers.SetCurrentRow(&ShowWithRow(lvTriggers, "Fees", "r" + std::to_string(tax)));
  EXPECT_TRUE(lvTriggers.PressKey(Key::Enter));
  EXPECT_FALSE(selectedOnly.IsOn());
  EXPECT_EQ(SelectedText(), "Tax");
}

TEST_F(TreeJumpsTest, ATriggeringRuleThatNoFunctionOfTheProjectShowsLeadsNowhere) {
  const auto hidden = store.AddRule(orphan, "Hidden", 1);
  auto& row = ShowWithRow(lvTriggers, "Fees", "r" + std::to_string(hidden));
  lvTriggers.DoubleClick(row);
  EXPECT_EQ(SelectedText(), "Fees");
}

TEST_F(TreeJumpsTest, TheFirstPlaceWithANodeIsTaken) {
  const auto abroad = AddElsewhere("BUSINESSFUNC", "Abroad");
  globals.eventsSilenced = true;
  store.AddCall(abroad, taxes, 1);
  globals.eventsSilenced = false;
  objects.LoadTree();
  auto& row = ShowWithRow(lvTriggers, "Fees", "r" + std::to_string(tax));
  lvTriggers.DoubleClick(row);
  EXPECT_EQ(tvObjects.SelectedNode()->Key(), "f" + std::to_string(billing) + "r" + std::to_string(tax));
}

TEST_F(TreeJumpsTest, AFailureOnTheWayComesThroughAndThePointerIsNormalAgain) {
  auto& row = ShowWithRow(lvTriggers, "Fees", "r" + std::to_string(tax));
  watch.Arm(1);
  EXPECT_EQ(test::ErrorText([&] { lvTriggers.DoubleClick(row); }), kReadFault);
  EXPECT_FALSE(pointer.IsBusy());
  EXPECT_EQ(SelectedText(), "Fees");
}

}  // namespace
}  // namespace qmrules::browser
