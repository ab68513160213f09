#include "browser/selection.h"

#include <gtest/gtest.h>

#include "browser/browsertest.h"
#include "catalogue/gateway.h"
#include "catalogue/nodekeys.h"
#include "support/errortext.h"

namespace qmrules::browser {
namespace {

using catalogue::RuleNodeKey;
using catalogue::RuleSetNodeKey;

std::string Joined(const platform::KeyedCollection<std::string>& ids) {
  std::string text;
  for (const std::string& id : ids) text += (text.empty() ? "" : ",") + id;
  return text;
}

class SelectionTest : public BrowserTest {
 protected:
  SelectionTest() {
    store.AddCall(billing, fees, 1);
    store.AddCall(billing, taxes, 2);
    store.AddCall(claims, fees, 1);
    objects.LoadTree();
    host.shown.clear();
  }

  void Found(std::int32_t function, std::int32_t set, std::int32_t rule) {
    selectedKeys.Add(RuleNodeKey(function, rule), RuleSetNodeKey(function, set));
  }

  static std::string Text(std::int32_t id) { return std::to_string(id); }

  std::int32_t billing = store.AddFunction("Billing");
  std::int32_t claims = store.AddFunction("Claims");
  std::int32_t fees = store.AddRuleSet("Fees");
  std::int32_t taxes = store.AddRuleSet("Taxes");
  std::int32_t baseFee = store.AddRule(fees, "Base fee", 1);
  std::int32_t lateFee = store.AddRule(fees, "Late fee", 2);
  std::int32_t tax = store.AddRule(taxes, "Tax", 1);
};

TEST_F(SelectionTest, NothingCheckedIsNothingSelected) {
  const SelectedIDs selected = selection.GetSelection();
  EXPECT_EQ(selected.functions.Count() + selected.sets.Count() + selected.rules.Count(), 0U);
  EXPECT_FALSE(pointer.IsBusy());
}

TEST_F(SelectionTest, SelectAllSelectsEverythingAlsoRulesThatHaveNotBeenRead) {
  selection.SelectAll();
  const SelectedIDs selected = selection.GetSelection();
  EXPECT_EQ(Joined(selected.functions), Text(billing) + "," + Text(claims));
  EXPECT_EQ(Joined(selected.sets), Text(fees) + "," + Text(taxes));
  EXPECT_EQ(Joined(selected.rules), Text(baseFee) + "," + Text(lateFee) + "," + Text(tax));
  EXPECT_TRUE(selected.functions.Contains("k" + Text(billing)));
  EXPECT_TRUE(selected.rules.Contains("k" + Text(tax)));
}

TEST_F(SelectionTest, ACheckedRuleSetUnderTwoFunctionsCountsOnce) {
  Node("Fees").SetChecked(true);
  tvObjects.Find(RuleSetNodeKey(claims, fees))->SetChecked(true);
  const SelectedIDs selected = selection.GetSelection();
  EXPECT_EQ(Joined(selected.sets), Text(fees));
  EXPECT_EQ(Joined(selected.rules), Text(baseFee) + "," + Text(lateFee));
}

TEST_F(SelectionTest, ARuleThatIsCheckedAndFoundCountsOnce) {
  tvObjects.Expand(Node("Fees"));
  Node("Late fee").SetChecked(true);
  Found(billing, fees, lateFee);
  Found(claims, fees, lateFee);
  EXPECT_EQ(Joined(selection.GetSelection().rules), Text(lateFee));
}

TEST_F(SelectionTest, FoundRulesCountWithoutANode) {
  Found(billing, taxes, tax);
  EXPECT_EQ(Joined(selection.GetSelection().rules), Text(tax));
}

TEST_F(SelectionTest, AnOpenedRuleSetCountsItsCheckedRulesOnly) {
  tvObjects.Expand(Node("Fees"));
  Node("Fees").SetChecked(true);
  Node("Late fee").SetChecked(true);
  const SelectedIDs selected = selection.GetSelection();
  EXPECT_EQ(Joined(selected.sets), Text(fees));
  EXPECT_EQ(Joined(selected.rules), Text(lateFee));
}

TEST_F(SelectionTest, TheRulesOfAnUnopenedRuleSetThatHasLeftTheProjectDoNotCount) {
  Node("Fees").SetChecked(true);
  Node("Taxes").SetChecked(true);
  repository.object(catalogue::MakeKey("RULESET", taxes))->UnLink("BelongsTo", store.ProjectKey());
  EXPECT_EQ(Joined(selection.GetSelection().rules), Text(baseFee) + "," + Text(lateFee));
}

TEST_F(SelectionTest, ManyUnopenedRuleSetsAreAskedForInLists) {
  globals.eventsSilenced = true;
  {
    const auto transaction = repository.BeginTransaction();
    for (int number = 1; number <= 1500; ++number) {
      const auto set = store.AddRuleSet("Set" + std::to_string(number));
      store.AddCall(claims, set, number + 1);
      store.AddRule(set, "Rule", 1);
    }
    transaction->Commit();
  }
  objects.LoadTree();
  selection.SelectAll();
  watch.executed = 0;
  watch.filters.clear();
  const SelectedIDs selected = selection.GetSelection();
  EXPECT_EQ(selected.sets.Count(), 1502U);
  EXPECT_EQ(selected.rules.Count(), 1503U);
  EXPECT_EQ(watch.executed, 2);
  for (const std::string& filter : watch.filters) EXPECT_LT(filter.size(), 4020U);
}

TEST_F(SelectionTest, AFailureComesThroughAndThePointerIsNormalAgain) {
  selection.SelectAll();
  watch.Arm(1);
  EXPECT_EQ(test::ErrorText([this] { static_cast<void>(selection.GetSelection()); }), kReadFault);
  EXPECT_FALSE(pointer.IsBusy());
}

TEST_F(SelectionTest, UnselectAllForgetsTheFoundRulesSoThatTheWalkHasNothingToDo) {
  Found(billing, taxes, tax);
  selection.SelectAll();
  selection.UnselectAll();
  EXPECT_EQ(Tree().find("[x]"), std::string::npos);
  EXPECT_TRUE(selectedKeys.Empty());
  selection.WalkSelected(true);
  selection.WalkSelected(false);
  EXPECT_TRUE(host.shown.empty());
}

TEST_F(SelectionTest, TheWalkOpensRuleSetsAndGoesAroundTheEnds) {
  Found(billing, fees, lateFee);
  Found(billing, taxes, tax);
  Found(claims, fees, baseFee);
  std::vector<std::string> met;
  for (int step = 0; step < 4; ++step) {
    selection.WalkSelected(true);
    met.push_back(tvObjects.SelectedNode()->Key());
    EXPECT_EQ(host.shown.back(), SelectedText());
    EXPECT_TRUE(tvObjects.SelectedNode()->Checked());
    EXPECT_TRUE(tvObjects.SelectedNode()->Parent()->Expanded());
    EXPECT_TRUE(tvObjects.SelectedNode()->Parent()->Parent()->Expanded());
  }
  const std::vector<std::string> expected = {RuleNodeKey(billing, lateFee), RuleNodeKey(billing, tax),
                                             RuleNodeKey(claims, baseFee), RuleNodeKey(billing, lateFee)};
  EXPECT_EQ(met, expected);
  selection.WalkSelected(false);
  EXPECT_EQ(tvObjects.SelectedNode()->Key(), RuleNodeKey(claims, baseFee));
  selection.WalkSelected(false);
  EXPECT_EQ(SelectedText(), "Tax");
  EXPECT_FALSE(pointer.IsBusy());
}

TEST_F(SelectionTest, OnItsWayTheWalkChecksTheFoundRulesOfAnOpenRuleSet) {
  tvObjects.Expand(Node("Fees"));
  Found(billing, fees, 900);  // is gone
  Found(billing, taxes, tax);
  Found(billing, fees, lateFee);
  selection.WalkSelected(true);
  EXPECT_EQ(SelectedText(), "Tax");
  EXPECT_TRUE(Node("Late fee").Checked());
  EXPECT_FALSE(Node("Base fee").Checked());
  EXPECT_EQ(selectedKeys.Rules().Count(), 2U);
}

TEST_F(SelectionTest, NextAndPreviousStayOnTheOneFoundRule) {
  Found(billing, taxes, tax);
  for (const bool forward : {true, true, false, false}) {
    selection.WalkSelected(forward);
    EXPECT_EQ(SelectedText(), "Tax");
  }
  EXPECT_EQ(selectedKeys.Rules().Count(), 1U);
}

TEST_F(SelectionTest, AWalkOverStaleRulesOnlyEmptiesTheCollectionAndEnds) {
  for (std::int32_t gone = 900; gone < 905; ++gone) Found(billing, 800, gone);
  Found(billing, fees, 950);  // the rule set stands, the rule does not
  selection.WalkSelected(true);
  EXPECT_TRUE(selectedKeys.Empty());
  for (std::int32_t gone = 900; gone < 905; ++gone) Found(billing, 800, gone);
  selection.WalkSelected(false);
  EXPECT_TRUE(selectedKeys.Empty());
}

class StaleAmongFound : public SelectionTest, public testing::WithParamInterface<bool> {};

// Wherever the stale key stands, and whichever way the walk goes, it is dropped and no other is left out.
TEST_P(StaleAmongFound, IsDroppedAndTheNextOneIsMet) {
  tvObjects.Expand(Node("Fees"));
  const bool forward = GetParam();
  for (std::size_t stale = 0; stale < 4; ++stale) {
    for (std::size_t begin = 0; begin < 4; ++begin) {
      std::vector<std::int32_t> rules = {baseFee, lateFee, tax};
      rules.insert(rules.begin() + static_cast<std::ptrdiff_t>(stale), 900);
      selectedKeys.Clear();
      for (const std::int32_t rule : rules) Found(billing, rule == tax ? taxes : rule == 900 ? 800 : fees, rule);
      if (begin == stale) continue;
      selectedKeys.SetPosition(begin + 1);
      std::size_t next = begin;
      do {
        next = (next + (forward ? 1 : 3)) % 4;
      } while (next == stale);
      selection.WalkSelected(forward);
      EXPECT_EQ(tvObjects.SelectedNode()->Key(), RuleNodeKey(billing, rules[next]))
          << "stale at " << stale << ", from " << begin;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(BothWays, StaleAmongFound, testing::Bool());

TEST_F(SelectionTest, AFailureInTheWalkLeavesTheFoundRules) {
  Found(billing, taxes, tax);
  watch.Arm(1);
  EXPECT_EQ(test::ErrorText([this] { selection.WalkSelected(true); }), kReadFault);
  EXPECT_EQ(selectedKeys.Rules().Count(), 1U);
  EXPECT_FALSE(pointer.IsBusy());
}

TEST_F(SelectionTest, AllKeysOfADeletedRuleCanBeForgotten) {
  Found(billing, fees, lateFee);
  Found(billing, taxes, tax);
  Found(claims, fees, lateFee);
  selectedKeys.RemoveRule(lateFee);
  ASSERT_EQ(selectedKeys.Rules().Count(), 1U);
  EXPECT_EQ(selectedKeys.Rules().At(1), RuleNodeKey(billing, tax));
}

TEST_F(SelectionTest, ARuleIsFoundOnce) {
  Found(billing, taxes, tax);
  EXPECT_FALSE(selectedKeys.Add(RuleNodeKey(billing, tax), RuleSetNodeKey(billing, fees)));
  EXPECT_EQ(*selectedKeys.SetOf(RuleNodeKey(billing, tax)), RuleSetNodeKey(billing, taxes));
}

}  // namespace
}  // namespace qmrules::browser
