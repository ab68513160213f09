#include "browser/moveinsequence.h"

#include <gtest/gtest.h>

#include "browser/browsertest.h"
#include "catalogue/gateway.h"
#include "catalogue/nodekeys.h"
#include "platform/error.h"
#include "support/errortext.h"

namespace qmrules::browser {
namespace {

using catalogue::Direction;
using catalogue::MakeKey;
using catalogue::RuleSetNodeKey;

class MoveInSequenceTest : public BrowserTest {
 protected:
  MoveInSequenceTest() {
    objects.LoadTree();
    tvObjects.Expand(Node("Billing"));
    host.shown.clear();
    host.hostItems.clear();
  }

  void Move(const std::string& text, Direction direction) {
    tvObjects.Click(Node(text));
    mover.Run(direction);
  }

  std::string SeqNo(const std::string& entity, std::int32_t id) {
    return store.Get(MakeKey(entity, id), "SeqNo").Text();
  }

  std::int32_t billing = store.AddFunction("Billing");
  std::int32_t claims = store.AddFunction("Claims");
  std::int32_t fees = store.AddRuleSet("Fees");
  std::int32_t taxes = store.AddRuleSet("Taxes");
  std::int32_t rebates = store.AddRuleSet("Rebates");
  std::int32_t feesCall = store.AddCall(billing, fees, 1);
  std::int32_t taxesCall = store.AddCall(billing, taxes, 4);
  std::int32_t rebatesCall = store.AddCall(billing, rebates, 6);
  std::int32_t otherCall = store.AddCall(claims, fees, 1);
  std::int32_t otherTaxes = store.AddCall(claims, taxes, 2);
  std::int32_t baseFee = store.AddRule(fees, "Base fee", 1);
  std::int32_t lateFee = store.AddRule(fees, "Late fee", 2);
  MoveInSequence mover{services, objects};
};

TEST_F(MoveInSequenceTest, RuleSetsChangePlacesAndTheNumbersOfTheirCalls) {
  Move("Fees", Direction::Down);
  EXPECT_EQ(Tree(), "Billing\n  Taxes #1\n  Fees #4\n    ...\n  Rebates #6\nClaims\n  Fees #1\n    ...\n  Taxes #2\n");
  EXPECT_EQ(SeqNo("RULESETCALL", feesCall), "4");
  EXPECT_EQ(SeqNo("RULESETCALL", taxesCall), "1");
  EXPECT_EQ(SeqNo("RULESETCALL", rebatesCall), "6");
  EXPECT_FALSE(pointer.IsBusy());
}

TEST_F(MoveInSequenceTest, TheSameRuleSetsUnderAnotherFunctionStay) {
  Move("Fees", Direction::Down);
  EXPECT_EQ(SeqNo("RULESETCALL", otherCall), "1");
  EXPECT_EQ(SeqNo("RULESETCALL", otherTaxes), "2");
}

TEST_F(MoveInSequenceTest, RulesChangePlacesAndNumbers) {
  tvObjects.Expand(Node("Fees"));
  Move("Late fee", Direction::Up);
  EXPECT_EQ(Tree(),
            "Billing\n  Fees #1\n    Late fee #1\n    Base fee #2\n  Taxes #4\n  Rebates #6\nClaims\n  Fees #1\n"
            "    ...\n  Taxes #2\n");
  EXPECT_EQ(SeqNo("RULE", lateFee), "1");
  EXPECT_EQ(SeqNo("RULE", baseFee), "2");
}

TEST_F(MoveInSequenceTest, AfterTheFirstNodeHasMovedDownItCanMoveUp) {
  mnuPopup.Item("mnuMoveUp").SetEnabled(false);
  tbToolbar.Button("MoveUp").SetEnabled(false);
  Move("Fees", Direction::Down);
  EXPECT_TRUE(IsEnabled("mnuMoveUp"));
  EXPECT_TRUE(IsEnabled("mnuMoveDown"));
  EXPECT_TRUE(tbToolbar.Button("MoveUp").Enabled());
  EXPECT_EQ(host.hostItems, (std::vector<std::string>{"MoveUp enable", "MoveDown enable"}));
}

TEST_F(MoveInSequenceTest, AfterTheLastNodeHasMovedUpItCanMoveDown) {
  mnuPopup.Item("mnuMoveDown").SetEnabled(false);
  Move("Rebates", Direction::Up);
  EXPECT_TRUE(IsEnabled("mnuMoveDown"));
  EXPECT_TRUE(IsEnabled("mnuMoveUp"));
}

TEST_F(MoveInSequenceTest, ANodeThatHasReachedAnEndCanGoNoFurther) {
  Move("Taxes", Direction::Up);
  EXPECT_FALSE(IsEnabled("mnuMoveUp"));
  EXPECT_FALSE(tbToolbar.Button("MoveUp").Enabled());
  EXPECT_TRUE(IsEnabled("mnuMoveDown"));
  EXPECT_EQ(host.hostItems, (std::vector<std::string>{"MoveUp disable", "MoveDown enable"}));
  const std::string before = Tree();
  mover.Run(Direction::Up);
  EXPECT_EQ(Tree(), before);
}

TEST_F(MoveInSequenceTest, NothingHappensAtTheEndsForFunctionsAndWithoutASelectedNode) {
  const std::string before = Tree();
  Move("Fees", Direction::Up);
  Move("Rebates", Direction::Down);
  Move("Billing", Direction::Down);
  tvObjects.SetSelectedNode(nullptr);
  mover.Run(Direction::Down);
  EXPECT_EQ(Tree(), before);
  EXPECT_TRUE(host.hostItems.empty());
}

TEST_F(MoveInSequenceTest, EqualNumbersSwapUnseenButTheNodesChangePlaces) {
  store.Put(MakeKey("RULESETCALL", taxesCall), "SeqNo", 1);
  objects.LoadTree();
  Move("Fees", Direction::Down);
  EXPECT_EQ(Tree().substr(0, 42), "Billing\n  Taxes #1\n  Fees #1\n    ...\n  Reb");
  EXPECT_EQ(SeqNo("RULESETCALL", feesCall), "1");
  EXPECT_EQ(SeqNo("RULESETCALL", taxesCall), "1");
}

TEST_F(MoveInSequenceTest, TheMovedNodeStaysSelectedCheckedAndCurrentAndNothingIsReadAgain) {
  tvObjects.Click(Node("Fees"));
  tvObjects.ClickCheckBox(Node("Fees"));
  tvObjects.Expand(Node("Fees"));
  host.shown.clear();
  mover.Run(Direction::Down);
  EXPECT_EQ(SelectedText(), "Fees");
  EXPECT_EQ(host.CurrentNode(), &Node("Fees"));
  EXPECT_TRUE(Node("Fees").Checked());
  EXPECT_TRUE(host.shown.empty());
}

TEST_F(MoveInSequenceTest, AMovedRuleSetReadsItsRulesWhenItIsOpenedNext) {
  tvObjects.Expand(Node("Fees"));
  Move("Fees", Direction::Down);
  EXPECT_FALSE(Node("Fees").Expanded());
  EXPECT_EQ(Node("Fees").ChildCount(), 1U);
  EXPECT_EQ(Node("Fees").FirstChild()->Text(), "Please, wait...");
  tvObjects.Expand(Node("Fees"));
  EXPECT_EQ(Node("Fees").ChildCount(), 2U);
}

TEST_F(MoveInSequenceTest, ARuleSetThatIsInsertedLaterFindsItsPlaceAmongTheSwappedNumbers) {
  Move("Fees", Direction::Down);
  CreateSet(billing, "New", taxesCall);
  EXPECT_EQ(Tree().substr(0, 53), "Billing\n  Taxes #1\n  New #2\n  Fees #4\n    ...\n  Rebat");
}

TEST_F(MoveInSequenceTest, ARuleChangesItsPlaceWhereverItsRuleSetIsOpen) {
  tvObjects.Expand(Node("Fees"));
  auto& elsewhere = *tvObjects.Find(RuleSetNodeKey(claims, fees));
  tvObjects.Expand(elsewhere);
  elsewhere.FirstChild()->SetChecked(true);
  Move("Late fee", Direction::Up);
  EXPECT_EQ(Tree(),
            "Billing\n  Fees #1\n    Late fee #1\n    Base fee #2\n  Taxes #4\n  Rebates #6\n"
            "Claims\n  Fees #1\n    Late fee #1\n    Base fee #2 [x]\n  Taxes #2\n");
  EXPECT_EQ(SelectedText(), "Late fee");
  Move("Late fee", Direction::Down);
  EXPECT_EQ(elsewhere.FirstChild()->Text(), "Base fee");
  EXPECT_EQ(elsewhere.ChildCount(), 2U);
}

TEST_F(MoveInSequenceTest, ARuleThatStandsBetweenTheTwoElsewhereStaysBetweenThem) {
  store.AddRule(fees, "Last fee", 3);
  tvObjects.ClickCheckBox(Node("Billing"));
  tvObjects.ClickCheckBox(Node("Claims"));
  tvObjects.Expand(Node("Fees"));
  tvObjects.ClickCheckBox(Node("Late fee"));
  selectedOnly.TurnOn();
  Move("Last fee", Direction::Up);
  EXPECT_EQ(Tree(),
            "Billing [x]\n  Fees #1 [x]\n    Last fee #1 [x]\n    Base fee #3 [x]\n  Taxes #4 [x]\n"
            "  Rebates #6 [x]\nClaims [x]\n  Fees #1 [x]\n    Last fee #1 [x]\n    Late fee #2 [x]\n"
            "    Base fee #3 [x]\n  Taxes #2 [x]\n");
}

TEST_F(MoveInSequenceTest, AFailureWhileReadingLeavesTheTreeAndTheNumbers) {
  const std::string before = Tree();
  tvObjects.Click(Node("Fees"));
  watch.Arm(1);
  EXPECT_EQ(test::ErrorText([this] { mover.Run(Direction::Down); }), kReadFault);
  EXPECT_EQ(Tree(), before);
  EXPECT_EQ(SeqNo("RULESETCALL", feesCall), "1");
  EXPECT_FALSE(pointer.IsBusy());
}

TEST_F(MoveInSequenceTest, ARuleThatAnotherProcessDeletedLeavesTheTree) {
  tvObjects.Expand(Node("Fees"));
  tvObjects.Click(Node("Base fee"));
  const std::string before = Tree();
  const auto gone =
      tvObjects.Add({"f1r999", "Gone", "RULE", "9"}, &Node("Base fee"), platform::widgets::TreeRelation::tvwNext);
  ASSERT_NE(gone, nullptr);
  EXPECT_THROW(mover.Run(Direction::Down), platform::Error);
  tvObjects.Remove(*gone);
  EXPECT_EQ(Tree(), before);
  EXPECT_EQ(SeqNo("RULE", baseFee), "1");
}

}  // namespace
}  // namespace qmrules::browser
