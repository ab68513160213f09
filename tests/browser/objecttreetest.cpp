#include <gtest/gtest.h>

#include "browser/browsertest.h"
#include "catalogue/gateway.h"
#include "support/errortext.h"

namespace qmrules::browser {
namespace {

using platform::RecordingProgress;
using platform::widgets::TreeRelation;
using Call = RecordingProgress::Call;

class ObjectTreeTest : public BrowserTest {
 protected:
  // Two functions that share a rule set, on an empty tree.
  void FillStore() {
    globals.eventsSilenced = true;
    billing = store.AddFunction("Billing");
    claims = store.AddFunction("Claims");
    fees = store.AddRuleSet("Fees");
    taxes = store.AddRuleSet("Taxes");
    store.AddCall(billing, taxes, 2);
    store.AddCall(billing, fees, 1);
    store.AddCall(claims, fees, 1);
    lateFee = store.AddRule(fees, "Late fee", 2);
    baseFee = store.AddRule(fees, "Base fee", 1);
    globals.eventsSilenced = false;
  }

  std::int32_t billing = 0;
  std::int32_t claims = 0;
  std::int32_t fees = 0;
  std::int32_t taxes = 0;
  std::int32_t lateFee = 0;
  std::int32_t baseFee = 0;
};

TEST_F(ObjectTreeTest, ShowsFunctionsByNameAndTheirRuleSetsInSequence) {
  FillStore();
  objects.LoadTree();
  EXPECT_EQ(Tree(),
            "Billing\n"
            "  Fees #1\n"
            "    ...\n"
            "  Taxes #2\n"
            "Claims\n"
            "  Fees #1\n"
            "    ...\n");
}

TEST_F(ObjectTreeTest, NamesObjectsByTheirKeysAndPictures) {
  FillStore();
  objects.LoadTree();
  const auto& node = Node("Fees");
  EXPECT_EQ(node.Key(), "f" + std::to_string(billing) + "s" + std::to_string(fees));
  EXPECT_EQ(node.Image(), "RULESET");
  EXPECT_EQ(node.Parent()->Key(), "f" + std::to_string(billing));
  EXPECT_EQ(node.Parent()->Image(), "BUSINESSFUNC");
  EXPECT_EQ(node.Parent()->Tag(), "");
  EXPECT_EQ(node.FirstChild()->Text(), "Please, wait...");
  EXPECT_EQ(node.FirstChild()->Key(), "");
}

TEST_F(ObjectTreeTest, AFunctionWithoutRuleSetsIsALeaf) {
  store.AddFunction("Lonely");
  objects.LoadTree();
  EXPECT_EQ(Tree(), "Lonely\n");
  tvObjects.Expand(Node("Lonely"));
  EXPECT_FALSE(Node("Lonely").Expanded());
}

TEST_F(ObjectTreeTest, ARuleSetWithoutRulesHasNoPlaceholderAndDoesNotOpen) {
  FillStore();
  objects.LoadTree();
  EXPECT_EQ(Node("Taxes").FirstChild(), nullptr);
  tvObjects.Expand(Node("Taxes"));
  EXPECT_FALSE(Node("Taxes").Expanded());
}

TEST_F(ObjectTreeTest, ShowsTheCurrentProjectOnly) {
  FillStore();
  const auto foreignFunction = AddElsewhere("BUSINESSFUNC", "Abroad");
  const auto foreignSet = AddElsewhere("RULESET", "Tariffs");
  globals.eventsSilenced = true;
  store.AddCall(foreignFunction, foreignSet, 1);
  store.AddCall(billing, foreignSet, 3);
  globals.eventsSilenced = false;
  objects.LoadTree();
  EXPECT_EQ(Tree().find("Abroad"), std::string::npos);
  EXPECT_EQ(Tree().find("Tariffs"), std::string::npos);
}

TEST_F(ObjectTreeTest, EqualNumbersStandByTheirIDs) {
  const auto function = store.AddFunction("Billing");
  globals.eventsSilenced = true;
  for (const char* name : {"First", "Second", "Third"}) store.AddCall(function, store.AddRuleSet(name), 4);
  globals.eventsSilenced = false;
  objects.LoadTree();
  EXPECT_EQ(Tree(), "Billing\n  First #4\n  Second #4\n  Third #4\n");
}

TEST_F(ObjectTreeTest, FunctionsWhoseNamesDifferInCaseKeepTheirRuleSets) {
  globals.eventsSilenced = true;
  const auto lower = store.AddFunction("fees");
  const auto upper = store.AddFunction("FEES");
  for (int number = 1; number <= 3; ++number) {
    store.AddCall(lower, store.AddRuleSet("low" + std::to_string(number)), number);
    store.AddCall(upper, store.AddRuleSet("up" + std::to_string(number)), number);
  }
  globals.eventsSilenced = false;
  objects.LoadTree();
  EXPECT_EQ(Tree(), "fees\n  low1 #1\n  low2 #2\n  low3 #3\nFEES\n  up1 #1\n  up2 #2\n  up3 #3\n");
  // The two come in turn, and each change of name is a step, but the amounts add up to the two functions.
  EXPECT_EQ(progress.Done(), 2);
}

TEST_F(ObjectTreeTest, ARuleSetThatAFunctionTriggersTwiceStandsOnceWhereItComesFirst) {
  FillStore();
  globals.eventsSilenced = true;
  store.AddCall(billing, fees, 3);
  globals.eventsSilenced = false;
  objects.LoadTree();
  EXPECT_EQ(Tree(), "Billing\n  Fees #1\n    ...\n  Taxes #2\nClaims\n  Fees #1\n    ...\n");
}

TEST_F(ObjectTreeTest, OpeningARuleSetReadsItsRulesInSequence) {
  FillStore();
  objects.LoadTree();
  tvObjects.Expand(Node("Fees"));
  EXPECT_EQ(Tree(),
            "Billing\n"
            "  Fees #1\n"
            "    Base fee #1\n"
            "    Late fee #2\n"
            "  Taxes #2\n"
            "Claims\n"
            "  Fees #1\n"
            "    ...\n");
  EXPECT_TRUE(Node("Fees").Expanded());
  EXPECT_EQ(Node("Late fee").Key(), "f" + std::to_string(billing) + "r" + std::to_string(lateFee));
  EXPECT_EQ(Node("Late fee").Image(), "RULE");
  EXPECT_FALSE(pointer.IsBusy());
}

TEST_F(ObjectTreeTest, OpeningARuleSetSelectsAndShowsIt) {
  FillStore();
  objects.LoadTree();
  host.shown.clear();
  tvObjects.Expand(Node("Fees"));
  EXPECT_EQ(host.shown, std::vector<std::string>{"Fees"});
  EXPECT_EQ(SelectedText(), "Fees");
}

TEST_F(ObjectTreeTest, OpeningARuleSetTwiceReadsOnce) {
  FillStore();
  objects.LoadTree();
  tvObjects.Expand(Node("Fees"));
  tvObjects.Collapse(Node("Fees"));
  const int executed = watch.executed;
  tvObjects.Expand(Node("Fees"));
  EXPECT_EQ(watch.executed, executed);
  EXPECT_TRUE(Node("Fees").Expanded());
}

TEST_F(ObjectTreeTest, ARuleSetWithMoreThanThePlaceholderIsNotReadOnOpening) {
  FillStore();
  objects.LoadTree();
  tvObjects.Add({"f9r999", "Other", "RULE", "9"}, &Node("Fees"));
  const int executed = watch.executed;
  tvObjects.Expand(Node("Fees"));
  EXPECT_EQ(watch.executed, executed);
  EXPECT_EQ(Node("Fees").ChildCount(), 2U);
}

TEST_F(ObjectTreeTest, ARuleSetWhoseRulesAreGoneLosesThePlaceholderOnOpening) {
  FillStore();
  objects.LoadTree();
  globals.eventsSilenced = true;
  for (const auto rule : {lateFee, baseFee}) repository.object(catalogue::MakeKey("RULE", rule))->Delete();
  tvObjects.Expand(Node("Fees"));
  EXPECT_EQ(Node("Fees").FirstChild(), nullptr);
  EXPECT_FALSE(Node("Fees").Expanded());
}

TEST_F(ObjectTreeTest, RulesReadLaterTakeTheCheckMarkOfTheirRuleSet) {
  FillStore();
  objects.LoadTree();
  tvObjects.ClickCheckBox(Node("Billing"));
  tvObjects.Expand(Node("Fees"));
  EXPECT_EQ(Tree(),
            "Billing [x]\n"
            "  Fees #1 [x]\n"
            "    Base fee #1 [x]\n"
            "    Late fee #2 [x]\n"
            "  Taxes #2 [x]\n"
            "Claims\n"
            "  Fees #1\n"
            "    ...\n");
}

TEST_F(ObjectTreeTest, CheckingAFunctionChecksItsRuleSetsAndTheRulesReadAlready) {
  FillStore();
  objects.LoadTree();
  tvObjects.Expand(Node("Fees"));
  tvObjects.ClickCheckBox(Node("Billing"));
  EXPECT_TRUE(Node("Fees").Checked());
  EXPECT_TRUE(Node("Taxes").Checked());
  EXPECT_TRUE(Node("Base fee").Checked());
  EXPECT_FALSE(Node("Claims").Checked());
}

TEST_F(ObjectTreeTest, SelectedRulesAreCheckedWhenTheyAreRead) {
  FillStore();
  objects.LoadTree();
  selectedKeys.Add("f" + std::to_string(billing) + "r" + std::to_string(lateFee), Node("Fees").Key());
  tvObjects.Expand(Node("Fees"));
  EXPECT_FALSE(Node("Base fee").Checked());
  EXPECT_TRUE(Node("Late fee").Checked());
}

TEST_F(ObjectTreeTest, UncheckingForgetsTheKeysOfAllNodesBelow) {
  FillStore();
  objects.LoadTree();
  tvObjects.Expand(Node("Fees"));
  tvObjects.ClickCheckBox(Node("Billing"));
  selectedKeys.Add(Node("Late fee").Key(), Node("Fees").Key());
  tvObjects.ClickCheckBox(Node("Billing"));
  EXPECT_TRUE(selectedKeys.Empty());
  EXPECT_FALSE(Node("Late fee").Checked());
}

TEST_F(ObjectTreeTest, TheNodeMayVanishWhileItIsShown) {
  FillStore();
  objects.LoadTree();
  host.onShow = [this] { repository.object(catalogue::MakeKey("RULESET", fees))->Delete(); };
  tvObjects.Expand(Node("Fees"));
  EXPECT_EQ(Tree(), "Billing\n  Taxes #2\nClaims\n");
}

TEST_F(ObjectTreeTest, RuleSetsThatNoFunctionTriggersAreForeign) {
  FillStore();
  const auto orphan = store.AddRuleSet("Orphan");
  const auto elsewhere = AddElsewhere("RULESET", "Tariffs");
  objects.LoadTree();
  EXPECT_TRUE(objects.IsForeign(orphan));
  EXPECT_TRUE(objects.IsForeign(elsewhere));
  EXPECT_FALSE(objects.IsForeign(fees));
  EXPECT_EQ(objects.ForeignSets().Count(), 2U);
  EXPECT_EQ(*objects.ForeignSets().Find("s" + std::to_string(orphan)), orphan);
}

class ManySets : public ObjectTreeTest, public testing::WithParamInterface<int> {};

TEST_P(ManySets, FewAreLeftOutByAFilterAndManyByAScan) {
  globals.eventsSilenced = true;
  {
    const auto transaction = repository.BeginTransaction();
    const auto function = store.AddFunction("Billing");
    for (int number = 1; number <= GetParam(); ++number) {
      store.AddCall(function, store.AddRuleSet("Set" + std::to_string(number)), number);
    }
    transaction->Commit();
  }
  const auto orphan = store.AddRuleSet("Orphan");
  objects.LoadTree();
  EXPECT_EQ(tvObjects.Count(), static_cast<std::size_t>(GetParam()) + 1);
  EXPECT_EQ(objects.ForeignSets().Count(), 1U);
  EXPECT_TRUE(objects.IsForeign(orphan));
  const bool filtered = !watch.filters.empty() && watch.filters.back().starts_with("~ID in 0,");
  EXPECT_EQ(filtered, GetParam() < 1000);
}

INSTANTIATE_TEST_SUITE_P(AtTheLimit, ManySets, testing::Values(999, 1000));

TEST_F(ObjectTreeTest, ReportsEachFunctionAsAStep) {
  FillStore();
  store.AddFunction("Lonely");
  objects.LoadTree();
  const std::vector<RecordingProgress::Entry> expected = {
      {Call::StartProgress, "Business Rules objects loading...", 3, false},
      {Call::StartStep, "Billing", 0, false},
      {Call::FinishStep, "", 1, false},
      {Call::StartStep, "Claims", 0, false},
      {Call::FinishStep, "", 2, false},
      {Call::FinishProgress, "", 0, false},
  };
  EXPECT_EQ(progress.Entries(), expected);
}

TEST_F(ObjectTreeTest, ShowsNoProgressOfItsOwnWhileTheControlLoads) {
  FillStore();
  host.isLoading = true;
  objects.LoadTree();
  EXPECT_TRUE(progress.Entries().empty());
  EXPECT_EQ(tvObjects.Count(), 7U);
}

TEST_F(ObjectTreeTest, LetsTheHostPaintWhileItReads) {
  constexpr int kSets = 500;
  const auto function = store.AddFunction("Billing");
  for (int set = 0; set < kSets; ++set)
    store.AddCall(function, store.AddRuleSet("Set " + std::to_string(set)), set + 1);
  host.isLoading = true;
  objects.LoadTree();
  EXPECT_GE(progress.Asked(), kSets / 100);
  EXPECT_TRUE(progress.Entries().empty());
}

TEST_F(ObjectTreeTest, LoadingEmptiesTheListsAndTheTrigger) {
  FillStore();
  lvContent.Add("s1", "Old");
  lvTriggers.Add("r1", "Old");
  lvIOElems.Add("k1", "Old");
  lvConditions.Add("k1", "Old");
  txtTriggers.SetText("Old");
  objects.LoadTree();
  EXPECT_EQ(lvContent.Count() + lvTriggers.Count() + lvIOElems.Count() + lvConditions.Count(), 0U);
  EXPECT_EQ(txtTriggers.Text(), "(none)");
}

TEST_F(ObjectTreeTest, LoadingMakesTheCommandsOfATreeAvailable) {
  FillStore();
  for (const char* item : {"mnuSearchRules", "mnuPreviousSelected", "mnuNextSelected", "mnuSelected", "mnuSelectAll",
                           "mnuUnselectAll", "mnuChanger"}) {
    mnuPopup.Item(item).SetEnabled(false);
  }
  objects.LoadTree();
  for (const char* item : {"mnuSearchRules", "mnuPreviousSelected", "mnuNextSelected", "mnuSelected", "mnuSelectAll",
                           "mnuUnselectAll", "mnuChanger"}) {
    EXPECT_TRUE(IsEnabled(item)) << item;
  }
  EXPECT_EQ(host.updated, std::vector<std::string>{"-"});
  EXPECT_EQ(host.hostItems, (std::vector<std::string>{"Find enable", "PreviousSelected enable", "NextSelected enable",
                                                      "Selected enable", "SelectAll enable", "UnselectAll enable",
                                                      "Changer enable", "Selected uncheck"}));
}

TEST_F(ObjectTreeTest, AnEmptyCatalogueMakesNothingAvailableAndShowsNothing) {
  objects.LoadTree();
  EXPECT_EQ(tvObjects.Count(), 0U);
  EXPECT_TRUE(host.hostItems.empty());
  EXPECT_TRUE(host.shown.empty());
  EXPECT_FALSE(progress.IsOpen());
}

TEST_F(ObjectTreeTest, ShowsTheFirstNodeAndLaterTheOneThatWasSelected) {
  FillStore();
  objects.LoadTree();
  EXPECT_EQ(host.shown, std::vector<std::string>{"Billing"});
  tvObjects.Click(Node("Taxes"));
  host.shown.clear();
  objects.LoadTree();
  EXPECT_EQ(host.shown, std::vector<std::string>{"Taxes"});
  EXPECT_EQ(SelectedText(), "Taxes");
}

TEST_F(ObjectTreeTest, ASelectedRuleIsNotReadAgainSoTheFirstNodeIsShown) {
  FillStore();
  objects.LoadTree();
  tvObjects.Expand(Node("Fees"));
  tvObjects.Click(Node("Late fee"));
  objects.LoadTree();
  EXPECT_EQ(SelectedText(), "Billing");
}

TEST_F(ObjectTreeTest, AFailureAtAnyStepLeavesTheTreeAndTheListsAsTheyWere) {
  FillStore();
  store.AddRuleSet("Orphan");
  objects.LoadTree();
  tvObjects.Expand(Node("Fees"));
  tvObjects.ClickCheckBox(Node("Late fee"));
  lvContent.Add("r1", "Shown");
  const std::string before = Tree();
  int failures = 0;
  for (int step = 1; step < 100; ++step) {
    watch.Arm(step);
    if (test::ErrorText([this] { objects.LoadTree(); }) == "(no error)") break;
    ++failures;
    EXPECT_EQ(Tree(), before) << "at step " << step;
    EXPECT_EQ(lvContent.Count(), 1U);
    EXPECT_EQ(objects.ForeignSets().Count(), 1U);
    EXPECT_FALSE(progress.IsOpen());
  }
  EXPECT_EQ(failures, 9);  // three fetches of two, three and one rows
  EXPECT_EQ(Tree(), "Billing\n  Fees #1\n    ...\n  Taxes #2\nClaims\n  Fees #1\n    ...\n");
}

TEST_F(ObjectTreeTest, AFailureWhileRulesAreReadLeavesThePlaceholderAlone) {
  FillStore();
  objects.LoadTree();
  const std::string before = Tree();
  for (int step = 1; step <= 2; ++step) {
    watch.Arm(step);
    EXPECT_EQ(test::ErrorText([this] { tvObjects.Expand(Node("Fees")); }), kReadFault);
    EXPECT_EQ(Tree(), before);
    EXPECT_FALSE(Node("Fees").Expanded());
    EXPECT_FALSE(pointer.IsBusy());
  }
  watch.Arm(0);
  tvObjects.Expand(Node("Fees"));
  EXPECT_EQ(Node("Fees").ChildCount(), 2U);
}

}  // namespace
}  // namespace qmrules::browser
