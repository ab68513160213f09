#include "browser/repositorynotifications.h"

#include <gtest/gtest.h>

#include "browser/browsertest.h"
#include "catalogue/gateway.h"
#include "catalogue/nodekeys.h"
#include "support/errortext.h"

namespace qmrules::browser {
namespace {

using catalogue::MakeKey;
using catalogue::RuleSetNodeKey;
using platform::widgets::TreeNode;

class RepositoryNotificationsTest : public BrowserTest {
 protected:
  void Delete(const std::string& entity, std::int32_t id) { repository.object(MakeKey(entity, id))->Delete(); }

  // Shows a rule of a rule set that two functions trigger.
  void ShowSharedRule() {
    billing = store.AddFunction("Billing");
    claims = store.AddFunction("Claims");
    fees = store.AddRuleSet("Fees");
    billingCall = Trigger(billing, fees);
    Trigger(claims, fees);
    baseFee = CreateRule(fees, "Base fee");
    objects.LoadTree();
    tvObjects.Expand(Node("Fees"));
    tvObjects.Click(Node("Base fee"));
    host.shown.clear();
  }

  // A data element or a condition of the rule, linked last as the dialogs do.
  std::int32_t AddElement(const std::string& entity, std::int32_t rule, const std::string& relation,
                          const std::map<std::string, platform::Value>& attributes) {
    const auto id = store.Add(entity, entity + "name", attributes);
    repository.object(MakeKey("RULE", rule))->Link(relation, MakeKey(entity, id));
    return id;
  }

  std::int32_t billing = 0;
  std::int32_t claims = 0;
  std::int32_t fees = 0;
  std::int32_t billingCall = 0;
  std::int32_t baseFee = 0;
};

TEST_F(RepositoryNotificationsTest, ANewFunctionStandsAtTheEnd) {
  store.AddFunction("Claims");
  store.AddFunction("Billing");
  EXPECT_EQ(Tree(), "Claims\nBilling\n");
  EXPECT_EQ(tvObjects.First()->Image(), "BUSINESSFUNC");
  EXPECT_FALSE(pointer.IsBusy());
}

TEST_F(RepositoryNotificationsTest, OtherNewObjectsAddNothing) {
  store.AddRuleSet("Fees");
  store.Add("RULE", "rule");
  EXPECT_EQ(tvObjects.Count(), 0U);
}

TEST_F(RepositoryNotificationsTest, ATriggeredRuleSetStandsInSequenceWithThePlaceholderOfItsRules) {
  const auto function = store.AddFunction("Billing");
  const auto set = store.AddRuleSet("Fees");
  store.AddRule(set, "Base fee", 1);
  const auto first = Trigger(function, set);
  CreateSet(function, "Taxes");
  CreateSet(function, "Discounts", first);
  EXPECT_EQ(Tree(), "Billing\n  Fees #1\n    ...\n  Discounts #2\n  Taxes #3\n");
}

TEST_F(RepositoryNotificationsTest, AnInsertionRaisesTheRunUpToTheFirstGap) {
  const auto function = store.AddFunction("Billing");
  std::int32_t first = 0;
  for (const int number : {1, 2, 3, 7}) {
    const auto call = store.AddCall(function, store.AddRuleSet("Set" + std::to_string(number)), number);
    if (number == 1) first = call;
  }
  objects.LoadTree();
  CreateSet(function, "New", first);
  const std::string expected = "Billing\n  Set1 #1\n  New #2\n  Set2 #3\n  Set3 #4\n  Set7 #7\n";
  EXPECT_EQ(Tree(), expected);
  objects.LoadTree();
  EXPECT_EQ(Tree(), expected);
}

TEST_F(RepositoryNotificationsTest, AnInsertionIntoAGapRaisesNothing) {
  const auto function = store.AddFunction("Billing");
  std::int32_t second = 0;
  for (const int number : {1, 2, 5}) {
    const auto call = store.AddCall(function, store.AddRuleSet("Set" + std::to_string(number)), number);
    if (number == 2) second = call;
  }
  CreateSet(function, "New", second);
  EXPECT_EQ(Tree(), "Billing\n  Set1 #1\n  Set2 #2\n  New #3\n  Set5 #5\n");
}

TEST_F(RepositoryNotificationsTest, ANewRuleSetTakesTheCheckMarkOfItsFunction) {
  const auto function = store.AddFunction("Billing");
  Node("Billing").SetChecked(true);
  CreateSet(function, "Fees");
  EXPECT_TRUE(Node("Fees").Checked());
}

TEST_F(RepositoryNotificationsTest, ALinkToldFromItsOtherEndIsTheSame) {
  const auto function = store.AddFunction("Billing");
  store.AddCall(function, store.AddRuleSet("Fees"), 1);
  EXPECT_EQ(Tree(), "Billing\n  Fees #1\n");
}

TEST_F(RepositoryNotificationsTest, ARuleOfARuleSetThatStandsTwiceAppearsInBothPlacesWhenTheyAreOpen) {
  ShowSharedRule();
  tvObjects.Expand(*tvObjects.Find(RuleSetNodeKey(claims, fees)));
  CreateRule(fees, "Late fee");
  EXPECT_EQ(Tree(),
            "Billing\n  Fees #1\n    Base fee #1\n    Late fee #2\n"
            "Claims\n  Fees #1\n    Base fee #1\n    Late fee #2\n");
}

TEST_F(RepositoryNotificationsTest, ARuleOfAnUnopenedRuleSetWaitsBehindThePlaceholder) {
  ShowSharedRule();
  CreateRule(fees, "Late fee");
  EXPECT_EQ(Tree(), "Billing\n  Fees #1\n    Base fee #1\n    Late fee #2\nClaims\n  Fees #1\n    ...\n");
}

TEST_F(RepositoryNotificationsTest, TheFirstRuleOfARuleSetBringsThePlaceholder) {
  const auto function = store.AddFunction("Billing");
  const auto set = CreateSet(function, "Fees");
  objects.LoadTree();
  CreateRule(set, "Base fee");
  EXPECT_EQ(Tree(), "Billing\n  Fees #1\n    ...\n");
  tvObjects.Expand(Node("Fees"));
  EXPECT_EQ(Tree(), "Billing\n  Fees #1\n    Base fee #1\n");
}

TEST_F(RepositoryNotificationsTest, ARuleSetThatWasOpenedAndClosedTakesTheRuleAtOnce) {
  ShowSharedRule();
  tvObjects.Collapse(Node("Fees"));
  CreateRule(fees, "Late fee");
  EXPECT_EQ(Tree(), "Billing\n  Fees #1\n    Base fee #1\n    Late fee #2\nClaims\n  Fees #1\n    ...\n");
  EXPECT_FALSE(Node("Fees").Expanded());
}

TEST_F(RepositoryNotificationsTest, AnOpenRuleSetThatLostItsLastRuleTakesTheNextOne) {
  ShowSharedRule();
  Delete("RULE", baseFee);
  EXPECT_EQ(Node("Fees").FirstChild(), nullptr);
  CreateRule(fees, "Late fee");
  EXPECT_EQ(Tree(), "Billing\n  Fees #1\n    Late fee #1\nClaims\n  Fees #1\n    ...\n");
}

TEST_F(RepositoryNotificationsTest, ANewRuleStandsInSequenceWithTheCheckMarkOfItsRuleSet) {
  ShowSharedRule();
  CreateRule(fees, "Late fee");
  Node("Fees").SetChecked(true);
  CreateRule(fees, "Early fee", baseFee);
  EXPECT_EQ(Tree(),
            "Billing\n  Fees #1 [x]\n    Base fee #1\n    Early fee #2 [x]\n    Late fee #3\n"
            "Claims\n  Fees #1\n    ...\n");
}

TEST_F(RepositoryNotificationsTest, ADeletedFunctionTakesItsRuleSetsAway) {
  ShowSharedRule();
  Delete("BUSINESSFUNC", billing);
  EXPECT_EQ(Tree(), "Claims\n  Fees #1\n    ...\n");
}

TEST_F(RepositoryNotificationsTest, ADeletedRuleSetOrRuleGoesFromAllPlaces) {
  ShowSharedRule();
  tvObjects.Expand(*tvObjects.Find(RuleSetNodeKey(claims, fees)));
  Delete("RULE", baseFee);
  EXPECT_EQ(Tree(), "Billing\n  Fees #1\nClaims\n  Fees #1\n");
  Delete("RULESET", fees);
  EXPECT_EQ(Tree(), "Billing\nClaims\n");
}

TEST_F(RepositoryNotificationsTest, ADeletedCallTakesTheRuleSetFromItsFunctionOnly) {
  ShowSharedRule();
  Delete("RULESETCALL", billingCall);
  EXPECT_EQ(Tree(), "Billing\nClaims\n  Fees #1\n    ...\n");
}

TEST_F(RepositoryNotificationsTest, AnUnlinkedRuleSetGoesFromItsFunction) {
  ShowSharedRule();
  repository.object(MakeKey("BUSINESSFUNC", billing))->UnLink("Triggers", MakeKey("RULESETCALL", billingCall));
  EXPECT_EQ(Tree(), "Billing\nClaims\n  Fees #1\n    ...\n");
}

TEST_F(RepositoryNotificationsTest, ARuleThatIsMovedChangesItsRuleSet) {
  ShowSharedRule();
  const auto taxes = CreateSet(billing, "Taxes");
  const auto rule = repository.object(MakeKey("RULE", baseFee));
  rule->UnLink("BelongsToRuleSet", MakeKey("RULESET", fees));
  EXPECT_EQ(Tree(), "Billing\n  Fees #1\n  Taxes #2\nClaims\n  Fees #1\n    ...\n");
  rule->Link("BelongsToRuleSet", MakeKey("RULESET", taxes));
  EXPECT_EQ(Tree(), "Billing\n  Fees #1\n  Taxes #2\n    ...\nClaims\n  Fees #1\n    ...\n");
}

TEST_F(RepositoryNotificationsTest, OtherUnlinkedRelationsChangeNothing) {
  ShowSharedRule();
  const std::string before = Tree();
  const auto rule = repository.object(MakeKey("RULE", baseFee));
  rule->Link("Triggers", MakeKey("RULESET", fees));
  rule->UnLink("Triggers", MakeKey("RULESET", fees));
  EXPECT_EQ(Tree(), before);
}

TEST_F(RepositoryNotificationsTest, TheSelectionFallsToANeighbourAndNothingIsShown) {
  ShowSharedRule();
  Delete("RULE", baseFee);
  EXPECT_EQ(SelectedText(), "Fees");
  EXPECT_TRUE(host.shown.empty());
  EXPECT_EQ(host.CurrentNode(), nullptr);
}

TEST_F(RepositoryNotificationsTest, DeletingTheCurrentRuleEmptiesTheTextFieldsAndWhatTheyWereReadAs) {
  ShowSharedRule();
  rtbDescription.SetTag("as read");
  rtbDescription.SetText("as edited");
  rtbBusiness.SetTag("as read");
  rtbBusiness.SetText("as edited");
  Delete("RULE", baseFee);
  EXPECT_EQ(rtbDescription.Text() + rtbDescription.Tag() + rtbBusiness.Text() + rtbBusiness.Tag(), "");
}

TEST_F(RepositoryNotificationsTest, DeletingAnotherObjectLeavesTheTextFields) {
  ShowSharedRule();
  const auto other = CreateRule(fees, "Late fee");
  rtbDescription.SetText("as edited");
  Delete("RULE", other);
  EXPECT_EQ(rtbDescription.Text(), "as edited");
}

TEST_F(RepositoryNotificationsTest, ANewDataElementOfTheCurrentRuleGetsARow) {
  ShowSharedRule();
  const auto id =
      AddElement("RULEIO", baseFee, "Has",
                 {{"IOName", "AMOUNT"}, {"Kind", "Input"}, {"BusinessName", "Amount"}, {"Description", "What is due"}});
  EXPECT_EQ(Rows(lvIOElems), "AMOUNT | Input | Amount | What is due\n");
  EXPECT_NE(lvIOElems.Find("k" + std::to_string(id)), nullptr);
  Delete("RULEIO", id);
  EXPECT_EQ(lvIOElems.Count(), 0U);
}

TEST_F(RepositoryNotificationsTest, ANewConditionOfTheCurrentRuleGetsARow) {
  ShowSharedRule();
  const auto id = AddElement("RULECOND", baseFee, "IsControlledBy",
                             {{"CondName", "STATUS"}, {"Operator", "="}, {"Argument", "'A'"}});
  EXPECT_EQ(Rows(lvConditions), "STATUS | = | 'A' | \n");
  EXPECT_EQ(lvIOElems.Count(), 0U);
  Delete("RULECOND", id);
  EXPECT_EQ(lvConditions.Count(), 0U);
}

TEST_F(RepositoryNotificationsTest, ElementsOfAnotherRuleGetNoRow) {
  ShowSharedRule();
  const auto other = CreateRule(fees, "Late fee");
  const auto id = AddElement("RULEIO", other, "Has", {{"IOName", "AMOUNT"}});
  AddElement("RULECOND", other, "IsControlledBy", {{"CondName", "STATUS"}});
  EXPECT_EQ(lvIOElems.Count() + lvConditions.Count(), 0U);
  Delete("RULEIO", id);
  EXPECT_TRUE(host.failures.empty());
}

TEST_F(RepositoryNotificationsTest, WhileTheEventsAreSilencedNoNodeIsAddedAndTheTreeIsFilledAtTheEnd) {
  ShowSharedRule();
  const std::string before = Tree();
  globals.eventsSilenced = true;
  const auto function = store.AddFunction("Discounts");
  CreateSet(function, "Rebates");
  CreateRule(fees, "Late fee");
  AddElement("RULEIO", baseFee, "Has", {{"IOName", "AMOUNT"}});
  EXPECT_EQ(Tree(), before);
  EXPECT_EQ(lvIOElems.Count(), 0U);
  globals.eventsSilenced = false;
  objects.LoadTree();
  EXPECT_EQ(Tree(), "Billing\n  Fees #1\n    ...\nClaims\n  Fees #1\n    ...\nDiscounts\n  Rebates #1\n");
}

TEST_F(RepositoryNotificationsTest, WhileTheEventsAreSilencedDeletedNodesGoAllTheSame) {
  ShowSharedRule();
  globals.eventsSilenced = true;
  lvIOElems.Add("k" + std::to_string(store.Add("RULEIO", "element")), "AMOUNT");
  Delete("RULE", baseFee);
  EXPECT_EQ(Node("Fees").FirstChild(), nullptr);
  Delete("BUSINESSFUNC", billing);
  EXPECT_EQ(Tree(), "Claims\n  Fees #1\n    ...\n");
  Delete("RULEIO", catalogue::SplitKey(repository.FindObject("RULEIO", "element")->Key()).id);
  EXPECT_EQ(lvIOElems.Count(), 0U);
}

TEST_F(RepositoryNotificationsTest, WhileTheEventsAreSilencedUnlinkedNodesGoAllTheSame) {
  ShowSharedRule();
  globals.eventsSilenced = true;
  repository.object(MakeKey("RULE", baseFee))->UnLink("BelongsToRuleSet", MakeKey("RULESET", fees));
  EXPECT_EQ(Tree(), "Billing\n  Fees #1\nClaims\n  Fees #1\n    ...\n");
  repository.object(MakeKey("BUSINESSFUNC", billing))->UnLink("Triggers", MakeKey("RULESETCALL", billingCall));
  EXPECT_EQ(Tree(), "Billing\nClaims\n  Fees #1\n    ...\n");
}

TEST_F(RepositoryNotificationsTest, ARuleSetOfAFunctionThatSelectedOnlyHidesTurnsTheViewOff) {
  ShowSharedRule();
  tvObjects.ClickCheckBox(Node("Base fee"));
  selectedOnly.TurnOn();
  EXPECT_EQ(tvObjects.Find("f" + std::to_string(claims)), nullptr);
  CreateSet(claims, "Rebates");
  EXPECT_FALSE(selectedOnly.IsOn());
  EXPECT_EQ(Tree(), "Billing\n  Fees #1\n    Base fee #1 [x]\nClaims\n  Fees #1\n    ...\n  Rebates #2\n");
}

TEST_F(RepositoryNotificationsTest, AViewThatCannotBeTurnedOffStaysAndTheWriteStands) {
  ShowSharedRule();
  tvObjects.ClickCheckBox(Node("Base fee"));
  selectedOnly.TurnOn();
  const std::string before = Tree();
  const auto set = store.AddRuleSet("Rebates");
  const auto call = store.Add("RULESETCALL", "call", {{"SeqNo", 2}});
  repository.object(MakeKey("RULESETCALL", call))->Link("Refers", MakeKey("RULESET", set));
  watch.Arm(3);  // behind the reading of the rule set itself
  repository.object(MakeKey("BUSINESSFUNC", claims))->Link("Triggers", MakeKey("RULESETCALL", call));
  watch.Arm(0);
  EXPECT_EQ(host.failures, std::vector<std::string>{kReadFault});
  EXPECT_TRUE(selectedOnly.IsOn());
  EXPECT_EQ(Tree(), before);
  selectedOnly.TurnOff();
  EXPECT_EQ(Node("Rebates").Parent()->Text(), "Claims");
}

TEST_F(RepositoryNotificationsTest, UnderSelectedOnlyANewObjectFindsItsPlaceAmongHiddenOnes) {
  const auto function = store.AddFunction("Billing");
  std::vector<std::int32_t> calls;
  std::vector<std::int32_t> rules;
  const auto set = store.AddRuleSet("Set1");
  for (int number = 1; number <= 3; ++number) {
    calls.push_back(Trigger(function, number == 1 ? set : store.AddRuleSet("Set" + std::to_string(number))));
    rules.push_back(CreateRule(set, "Rule" + std::to_string(number)));
  }
  objects.LoadTree();
  tvObjects.Expand(Node("Set1"));
  tvObjects.ClickCheckBox(Node("Set3"));
  tvObjects.ClickCheckBox(Node("Rule3"));
  selectedOnly.TurnOn();
  EXPECT_EQ(Tree(), "Billing\n  Set1 #1\n    Rule3 #3 [x]\n  Set3 #3 [x]\n");
  CreateSet(function, "New1", calls[0]);
  CreateSet(function, "New2", calls[1]);
  CreateRule(set, "Early", rules[0]);
  CreateRule(set, "Late", rules[1]);
  EXPECT_EQ(Tree(),
            "Billing\n  Set1 #1\n    Early #2\n    Late #4\n    Rule3 #5 [x]\n  New1 #2\n  New2 #4\n  Set3 #5 [x]\n");
}

TEST_F(RepositoryNotificationsTest, ARuleSetOfAFunctionThatTheTreeDoesNotShowAddsNothing) {
  ShowSharedRule();
  const std::string before = Tree();
  globals.eventsSilenced = true;
  const auto abroad = AddElsewhere("BUSINESSFUNC", "Abroad");
  globals.eventsSilenced = false;
  CreateSet(abroad, "Tariffs");
  EXPECT_EQ(Tree(), before);
  EXPECT_TRUE(host.shown.empty());
}

TEST_F(RepositoryNotificationsTest, AFailureIsRecordedAndTheWriteStands) {
  ShowSharedRule();
  const auto rule = store.Add("RULE", "late", {{"RuleName", "Late fee"}, {"SeqNo", 2}});
  const auto set = repository.object(MakeKey("RULESET", fees));
  watch.Arm(1);
  EXPECT_EQ(test::ErrorText([&] { set->Link("Has", MakeKey("RULE", rule)); }), "(no error)");
  EXPECT_EQ(host.failures, std::vector<std::string>{kReadFault});
  EXPECT_FALSE(pointer.IsBusy());
  objects.LoadTree();
  tvObjects.Expand(Node("Fees"));
  EXPECT_EQ(Node("Late fee").Tag(), "2");
}

TEST_F(RepositoryNotificationsTest, AFailureWhileAnObjectIsDeletedDoesNotStopTheDeletion) {
  ShowSharedRule();
  watch.Arm(1);
  Delete("RULESETCALL", billingCall);
  EXPECT_EQ(host.failures, std::vector<std::string>{kReadFault});
  objects.LoadTree();
  EXPECT_EQ(Tree(), "Billing\nClaims\n  Fees #1\n    ...\n");
}

}  // namespace
}  // namespace qmrules::browser
