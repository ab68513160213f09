#include "browser/selectedonly.h"

#include <gtest/gtest.h>

#include "browser/browsertest.h"
#include "catalogue/gateway.h"
#include "catalogue/nodekeys.h"
#include "support/errortext.h"

namespace qmrules::browser {
namespace {

using catalogue::RuleNodeKey;
using catalogue::RuleSetNodeKey;

class SelectedOnlyTest : public BrowserTest {
 protected:
  SelectedOnlyTest() {
    feesCall = store.AddCall(billing, fees, 1);
    store.AddCall(billing, discounts, 2);
    store.AddCall(billing, taxes, 3);
    store.AddCall(claims, fees, 1);
    objects.LoadTree();
    whole = Tree();
    host.shown.clear();
    host.hostItems.clear();
  }

  std::int32_t billing = store.AddFunction("Billing");
  std::int32_t claims = store.AddFunction("Claims");
  std::int32_t fees = store.AddRuleSet("Fees");
  std::int32_t discounts = store.AddRuleSet("Discounts");
  std::int32_t taxes = store.AddRuleSet("Taxes");
  std::int32_t baseFee = store.AddRule(fees, "Base fee", 1);
  std::int32_t lateFee = store.AddRule(fees, "Late fee", 2);
  std::int32_t tax = store.AddRule(taxes, "Tax", 1);
  std::int32_t feesCall = 0;
  std::string whole;
};

TEST_F(SelectedOnlyTest, KeepsCheckedNodesWithThoseAbove) {
  tvObjects.Expand(Node("Fees"));
  tvObjects.ClickCheckBox(Node("Late fee"));
  selectedOnly.TurnOn();
  EXPECT_EQ(Tree(), "Billing\n  Fees #1\n    Late fee #2 [x]\n");
}

TEST_F(SelectedOnlyTest, ReadsTheRulesOfCheckedRuleSets) {
  tvObjects.ClickCheckBox(Node("Fees"));
  tvObjects.ClickCheckBox(*tvObjects.Find(RuleSetNodeKey(claims, fees)));
  selectedOnly.TurnOn();
  EXPECT_EQ(Tree(),
            "Billing\n  Fees #1 [x]\n    Base fee #1 [x]\n    Late fee #2 [x]\n"
            "Claims\n  Fees #1 [x]\n    Base fee #1 [x]\n    Late fee #2 [x]\n");
}

TEST_F(SelectedOnlyTest, KeepsTheRuleSetsOfFoundRulesUnopened) {
  selectedKeys.Add(RuleNodeKey(billing, tax), RuleSetNodeKey(billing, taxes));
  selectedOnly.TurnOn();
  EXPECT_EQ(Tree(), "Billing\n  Taxes #3\n    ...\n");
}

TEST_F(SelectedOnlyTest, AFoundRuleKeepsItsPlacesUnderAllFunctions) {
  selectedKeys.Add(RuleNodeKey(billing, lateFee), RuleSetNodeKey(billing, fees));
  selectedOnly.TurnOn();
  EXPECT_EQ(Tree(), "Billing\n  Fees #1\n    ...\nClaims\n  Fees #1\n    ...\n");
}

TEST_F(SelectedOnlyTest, ManyFoundRulesAreAskedForInLists) {
  {
    const auto transaction = repository.BeginTransaction();
    for (int number = 2; number <= 1000; ++number) {
      const auto rule = store.AddRule(taxes, "Tax" + std::to_string(number), number);
      selectedKeys.Add(RuleNodeKey(billing, rule), RuleSetNodeKey(billing, taxes));
    }
    transaction->Commit();
  }
  watch.executed = 0;
  selectedOnly.TurnOn();
  EXPECT_EQ(Tree(), "Billing\n  Taxes #3\n    ...\n");
  EXPECT_EQ(watch.executed, 1);
}

TEST_F(SelectedOnlyTest, KeepsTheSelectionOrTakesTheFirstNode) {
  tvObjects.Click(Node("Taxes"));
  tvObjects.ClickCheckBox(Node("Taxes"));
  selectedOnly.TurnOn();
  EXPECT_EQ(SelectedText(), "Taxes");
  selectedOnly.TurnOff();
  tvObjects.Click(Node("Discounts"));
  selectedOnly.TurnOn();
  EXPECT_EQ(SelectedText(), "Billing");
  EXPECT_EQ(host.shown.back(), "Billing");
}

TEST_F(SelectedOnlyTest, TheCommandTurnsTheMarkOverOnAllFaces) {
  tvObjects.ClickCheckBox(Node("Fees"));
  selectedOnly.Toggle();
  EXPECT_TRUE(selectedOnly.IsOn());
  EXPECT_TRUE(mnuPopup.Item("mnuSelected").Checked());
  EXPECT_TRUE(tbToolbar.Button("Selected").Pressed());
  EXPECT_EQ(host.hostItems, (std::vector<std::string>{"Selected check", "Selected enable"}));
  selectedOnly.Toggle();
  EXPECT_FALSE(mnuPopup.Item("mnuSelected").Checked());
  EXPECT_FALSE(tbToolbar.Button("Selected").Pressed());
  EXPECT_EQ(host.hostItems.back(), "Selected uncheck");
}

TEST_F(SelectedOnlyTest, WithNothingSelectedTheTreeIsEmptyAndTheViewCanBeTurnedOff) {
  selectedOnly.TurnOn();
  EXPECT_EQ(tvObjects.Count(), 0U);
  EXPECT_EQ(host.shown, std::vector<std::string>{"-"});
  EXPECT_TRUE(IsEnabled("mnuSelected"));
  selectedOnly.TurnOff();
  EXPECT_EQ(Tree(), whole);
}

TEST_F(SelectedOnlyTest, TurningOffAnEmptyViewShowsNoNode) {
  selectedOnly.TurnOn();
  host.shown.clear();
  selectedOnly.TurnOff();
  EXPECT_TRUE(host.shown.empty());
  EXPECT_EQ(SelectedText(), "-");
}

TEST_F(SelectedOnlyTest, TurningOffBringsEverythingBackInItsPlaceAndKeepsTheChecks) {
  tvObjects.Expand(Node("Fees"));
  tvObjects.ClickCheckBox(Node("Late fee"));
  tvObjects.ClickCheckBox(Node("Taxes"));
  selectedOnly.TurnOn();
  EXPECT_EQ(Tree(), "Billing\n  Fees #1\n    Late fee #2 [x]\n  Taxes #3 [x]\n    Tax #1 [x]\n");
  selectedOnly.TurnOff();
  EXPECT_EQ(Tree(),
            "Billing\n  Fees #1\n    Base fee #1\n    Late fee #2 [x]\n  Discounts #2\n  Taxes #3 [x]\n"
            "    Tax #1 [x]\nClaims\n  Fees #1\n    ...\n");
}

TEST_F(SelectedOnlyTest, AFunctionThatComesBackStandsByItsName) {
  tvObjects.ClickCheckBox(*tvObjects.Find(RuleSetNodeKey(claims, fees)));
  selectedOnly.TurnOn();
  EXPECT_EQ(tvObjects.First()->Text(), "Claims");
  selectedOnly.TurnOff();
  EXPECT_EQ(tvObjects.First()->Text(), "Billing");
}

TEST_F(SelectedOnlyTest, ACheckedRuleSetWhoseRulesAreNotGetsThemBack) {
  tvObjects.Expand(Node("Fees"));
  Node("Fees").SetChecked(true);
  selectedOnly.TurnOn();
  EXPECT_EQ(Tree(), "Billing\n  Fees #1 [x]\n");
  selectedOnly.TurnOff();
  ASSERT_TRUE(Node("Fees").FirstChild());
  tvObjects.Expand(Node("Fees"));
  EXPECT_EQ(Node("Fees").ChildCount(), 2U);
}

TEST_F(SelectedOnlyTest, TurningOffShowsTheNodeThatIsSelectedAndPaintsTheMarksAnew) {
  tvObjects.Expand(Node("Fees"));
  tvObjects.ClickCheckBox(Node("Late fee"));
  tvObjects.Click(Node("Late fee"));
  selectedOnly.TurnOn();
  EXPECT_EQ(host.refreshes, 0);
  selectedOnly.TurnOff();
  EXPECT_EQ(SelectedText(), "Late fee");
  EXPECT_EQ(host.shown.back(), "Late fee");
  EXPECT_EQ(host.refreshes, 1);
}

TEST_F(SelectedOnlyTest, RuleSetsThatWereMovedMeanwhileComeBackInSequence) {
  tvObjects.ClickCheckBox(Node("Taxes"));
  selectedOnly.TurnOn();
  globals.eventsSilenced = true;
  store.AddCall(billing, store.AddRuleSet("Last"), 9);
  globals.eventsSilenced = false;
  selectedOnly.TurnOff();
  EXPECT_EQ(Tree(),
            "Billing\n  Fees #1\n    ...\n  Discounts #2\n  Taxes #3 [x]\n    Tax #1 [x]\n  Last #9\n"
            "Claims\n  Fees #1\n    ...\n");
}

TEST_F(SelectedOnlyTest, NumbersThatWereRaisedMeanwhileAreReadAgain) {
  tvObjects.ClickCheckBox(Node("Fees"));
  tvObjects.ClickCheckBox(Node("Taxes"));
  selectedOnly.TurnOn();
  globals.eventsSilenced = true;
  CreateSet(billing, "New", feesCall);
  globals.eventsSilenced = false;
  selectedOnly.TurnOff();
  EXPECT_EQ(Tree(),
            "Billing\n  Fees #1 [x]\n    Base fee #1 [x]\n    Late fee #2 [x]\n  New #2\n  Discounts #3\n"
            "  Taxes #4 [x]\n    Tax #1 [x]\nClaims\n  Fees #1\n    ...\n");
}

TEST_F(SelectedOnlyTest, AmongEqualNumbersTheOneThatComesBackIsTheLast) {
  globals.eventsSilenced = true;
  for (const char* name : {"Tie1", "Tie2", "Tie3"}) store.AddCall(claims, store.AddRuleSet(name), 5);
  globals.eventsSilenced = false;
  objects.LoadTree();
  tvObjects.ClickCheckBox(Node("Tie1"));
  tvObjects.ClickCheckBox(Node("Tie3"));
  selectedOnly.TurnOn();
  selectedOnly.TurnOff();
  EXPECT_EQ(Tree(), whole + "  Tie1 #5 [x]\n  Tie3 #5 [x]\n  Tie2 #5\n");
}

TEST_F(SelectedOnlyTest, ClearingTheMarkLeavesTheTree) {
  tvObjects.ClickCheckBox(Node("Fees"));
  selectedOnly.TurnOn();
  const std::string before = Tree();
  selectedOnly.ClearMark();
  EXPECT_FALSE(selectedOnly.IsOn());
  EXPECT_EQ(Tree(), before);
}

TEST_F(SelectedOnlyTest, AFailureWhileTurningOnTakesNoNodeOut) {
  tvObjects.ClickCheckBox(Node("Fees"));
  selectedKeys.Add(RuleNodeKey(billing, tax), RuleSetNodeKey(billing, taxes));
  int failures = 0;
  for (int step = 1; !selectedOnly.IsOn(); ++step) {
    watch.Arm(step);
    const std::string error = test::ErrorText([this] { selectedOnly.TurnOn(); });
    if (error == "(no error)") break;
    ++failures;
    EXPECT_EQ(error, kReadFault);
    EXPECT_FALSE(selectedOnly.IsOn());
    EXPECT_NE(tvObjects.Find(RuleSetNodeKey(claims, fees)), nullptr);
    EXPECT_FALSE(pointer.IsBusy());
  }
  EXPECT_GE(failures, 4);
  EXPECT_TRUE(selectedOnly.IsOn());
}

TEST_F(SelectedOnlyTest, AFailureWhileTurningOffLeavesTheMarkSoThatItCanBeTriedAgain) {
  tvObjects.Expand(Node("Fees"));
  tvObjects.ClickCheckBox(Node("Late fee"));
  selectedOnly.TurnOn();
  int failures = 0;
  for (int step = 1; selectedOnly.IsOn(); ++step) {
    watch.Arm(step);
    if (test::ErrorText([this] { selectedOnly.TurnOff(); }) == "(no error)") break;
    ++failures;
    EXPECT_TRUE(selectedOnly.IsOn());
    EXPECT_TRUE(Node("Late fee").Checked());
  }
  EXPECT_GE(failures, 5);
  EXPECT_EQ(Tree(),
            "Billing\n  Fees #1\n    Base fee #1\n    Late fee #2 [x]\n  Discounts #2\n  Taxes #3\n    ...\n"
            "Claims\n  Fees #1\n    ...\n");
}

}  // namespace
}  // namespace qmrules::browser
