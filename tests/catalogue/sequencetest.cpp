#include "catalogue/sequence.h"

#include <gtest/gtest.h>

#include <set>

#include "catalogue/gateway.h"
#include "platform/error.h"
#include "support/teststore.h"

namespace qmrules::catalogue {
namespace {

class Sequence : public testing::Test {
 protected:
  // Rules with these numbers, in this order.
  std::vector<std::int32_t> Rules(std::initializer_list<int> numbers) {
    std::vector<std::int32_t> ids;
    ids.reserve(numbers.size());
    for (const auto number : numbers) ids.push_back(store.AddRule(set, "Rule", number));
    return ids;
  }

  std::vector<std::int64_t> NumbersOf(const std::vector<std::int32_t>& rules) {
    std::vector<std::int64_t> numbers;
    for (const auto rule : rules) numbers.push_back(SeqNoOf(kRule, rule));
    return numbers;
  }

  std::int64_t SeqNoOf(std::string_view entity, std::int32_t id) {
    return store.Get(MakeKey(entity, id), "SeqNo").Integer();
  }

  std::int64_t NextRule(std::int32_t afterID) { return NextSeqNo(repository, {kRuleSet, set, "Has", kRule, afterID}); }

  test::TestStore store;
  platform::Repository& repository = store.Repository();
  std::int32_t function = store.AddFunction("Billing");
  std::int32_t set = store.AddRuleSet("Fees");
};

using Numbers = std::vector<std::int64_t>;

TEST_F(Sequence, AppendingToAnEmptyParentGivesOne) {
  EXPECT_EQ(NextRule(0), 1);
}

TEST_F(Sequence, AppendingGoesBehindTheHighestNumber) {
  const auto rules = Rules({3, 9, 5});
  EXPECT_EQ(NextRule(0), 10);
  EXPECT_EQ(NumbersOf(rules), (Numbers{3, 9, 5}));
}

TEST_F(Sequence, AppendingHeedsTheOwnParentOnly) {
  const auto other = store.AddRuleSet("Taxes");
  store.AddRule(other, "Rule", 50);
  Rules({1, 2});
  EXPECT_EQ(NextRule(0), 3);
}

TEST_F(Sequence, InsertionShiftsTheRunUpToTheGap) {
  const auto rules = Rules({1, 2, 3, 7});
  EXPECT_EQ(NextRule(rules[0]), 2);
  EXPECT_EQ(NumbersOf(rules), (Numbers{1, 3, 4, 7}));
}

TEST_F(Sequence, InsertionAfterSecondTakesTheGap) {
  const auto rules = Rules({1, 2, 5});
  EXPECT_EQ(NextRule(rules[1]), 3);
  EXPECT_EQ(NumbersOf(rules), (Numbers{1, 2, 5}));
}

TEST_F(Sequence, InsertionAfterTheLastMovesNobody) {
  const auto rules = Rules({1, 2});
  EXPECT_EQ(NextRule(rules[1]), 3);
  EXPECT_EQ(NumbersOf(rules), (Numbers{1, 2}));
}

TEST_F(Sequence, InsertionLeavesOtherParentsAlone) {
  const auto other = store.AddRuleSet("Taxes");
  const auto stranger = store.AddRule(other, "Rule", 2);
  const auto rules = Rules({1, 2});
  EXPECT_EQ(NextRule(rules[0]), 2);
  EXPECT_EQ(SeqNoOf(kRule, stranger), 2);
  EXPECT_EQ(NumbersOf(rules), (Numbers{1, 3}));
}

TEST_F(Sequence, EqualNumbersMoveTogether) {
  const auto rules = Rules({1, 2, 2, 3});
  EXPECT_EQ(NextRule(rules[0]), 2);
  EXPECT_EQ(NumbersOf(rules), (Numbers{1, 3, 3, 4}));
}

TEST_F(Sequence, CallsOfAFunctionAreNumberedAlike) {
  const auto second = store.AddRuleSet("Taxes");
  const auto firstCall = store.AddCall(function, set, 1);
  const auto secondCall = store.AddCall(function, second, 2);
  EXPECT_EQ(NextSeqNo(repository, {kBusinessFunction, function, "Triggers", kRuleSetCall, firstCall}), 2);
  EXPECT_EQ(SeqNoOf(kRuleSetCall, secondCall), 3);
  EXPECT_EQ(NextSeqNo(repository, {kBusinessFunction, function, "Triggers", kRuleSetCall}), 4);
}

TEST_F(Sequence, AMissingNeighbourIsNamed) {
  try {
    FAIL() << NextRule(4711);
  } catch (const platform::Error& error) {
    EXPECT_STREQ(error.what(), "There is no object RULE#4711 to go behind.");
  }
}

TEST_F(Sequence, TwoThousandNeighboursNeitherLoseNorDouble) {
  std::vector<std::int32_t> rules;
  {
    const auto transaction = repository.BeginTransaction();
    for (int number = 1; number <= 2000; ++number) rules.push_back(store.AddRule(set, "Rule", number));
    transaction->Commit();
  }
  EXPECT_EQ(NextRule(rules[0]), 2);
  std::set<std::int64_t> numbers;
  for (const auto number : NumbersOf(rules)) numbers.insert(number);
  EXPECT_EQ(numbers.size(), 2000U);
  EXPECT_FALSE(numbers.contains(2));
  EXPECT_EQ(*numbers.begin(), 1);
  EXPECT_EQ(*numbers.rbegin(), 2001);
}

TEST_F(Sequence, SwappingTwoRulesExchangesTheirNumbers) {
  const auto rules = Rules({4, 9});
  const auto swapped = SwapRules(repository, rules[0], rules[1]);
  EXPECT_EQ(swapped.first, 9);
  EXPECT_EQ(swapped.second, 4);
  EXPECT_EQ(NumbersOf(rules), (Numbers{9, 4}));
}

TEST_F(Sequence, SwappingEqualNumbersChangesNone) {
  const auto rules = Rules({4, 4});
  SwapRules(repository, rules[0], rules[1]);
  EXPECT_EQ(NumbersOf(rules), (Numbers{4, 4}));
}

TEST_F(Sequence, SwappingRuleSetsExchangesTheNumbersOfTheirCalls) {
  const auto second = store.AddRuleSet("Taxes");
  const auto firstCall = store.AddCall(function, set, 1);
  const auto secondCall = store.AddCall(function, second, 5);
  const auto swapped = SwapRuleSets(repository, function, set, second);
  EXPECT_EQ(swapped.first, 5);
  EXPECT_EQ(swapped.second, 1);
  EXPECT_EQ(SeqNoOf(kRuleSetCall, firstCall), 5);
  EXPECT_EQ(SeqNoOf(kRuleSetCall, secondCall), 1);
}

TEST_F(Sequence, SwappingRuleSetsLeavesTheirCallsElsewhereAlone) {
  const auto second = store.AddRuleSet("Taxes");
  const auto otherFunction = store.AddFunction("Claims");
  store.AddCall(function, set, 1);
  store.AddCall(function, second, 2);
  const auto there = store.AddCall(otherFunction, set, 8);
  SwapRuleSets(repository, function, set, second);
  EXPECT_EQ(SeqNoOf(kRuleSetCall, there), 8);
}

TEST_F(Sequence, SwappingWithARuleSetOfAnotherFunctionIsRefusedBeforeAnyWrite) {
  const auto second = store.AddRuleSet("Taxes");
  const auto call = store.AddCall(function, set, 1);
  try {
    SwapRuleSets(repository, function, set, second);
    ADD_FAILURE() << "swapped";
  } catch (const platform::Error& error) {
    EXPECT_EQ(error.what(),
              MakeKey(kRuleSet, second) + " is not triggered by " + MakeKey(kBusinessFunction, function) + ".");
  }
  EXPECT_EQ(SeqNoOf(kRuleSetCall, call), 1);
}

TEST_F(Sequence, ARulesNeighboursFollowTheNumbers) {
  const auto rules = Rules({7, 2, 5});  // in sequence: [1], [2], [0]
  const auto neighbour = [&](std::int32_t rule, Direction direction) {
    return NeighbourRule(repository, store.ProjectKey(), set, rule, direction);
  };
  EXPECT_EQ(neighbour(rules[1], Direction::Up), std::nullopt);
  EXPECT_EQ(neighbour(rules[1], Direction::Down), rules[2]);
  EXPECT_EQ(neighbour(rules[2], Direction::Up), rules[1]);
  EXPECT_EQ(neighbour(rules[2], Direction::Down), rules[0]);
  EXPECT_EQ(neighbour(rules[0], Direction::Down), std::nullopt);
}

TEST_F(Sequence, EqualNumbersAreNeighboursByID) {
  const auto rules = Rules({1, 1, 1});
  EXPECT_EQ(NeighbourRule(repository, store.ProjectKey(), set, rules[1], Direction::Up), rules[0]);
  EXPECT_EQ(NeighbourRule(repository, store.ProjectKey(), set, rules[1], Direction::Down), rules[2]);
}

TEST_F(Sequence, ARuleOfAnotherSetHasNoNeighbourHere) {
  const auto other = store.AddRuleSet("Taxes");
  const auto stranger = store.AddRule(other, "Rule", 1);
  Rules({1, 2});
  EXPECT_EQ(NeighbourRule(repository, store.ProjectKey(), set, stranger, Direction::Up), std::nullopt);
  EXPECT_EQ(NeighbourRule(repository, store.ProjectKey(), set, stranger, Direction::Down), std::nullopt);
}

TEST_F(Sequence, AMovedFirstRuleCanMoveUpAndAMovedLastRuleDown) {
  const auto rules = Rules({1, 2, 3});
  SwapRules(repository, rules[0], rules[1]);
  EXPECT_EQ(NeighbourRule(repository, store.ProjectKey(), set, rules[0], Direction::Up), rules[1]);
  SwapRules(repository, rules[2], rules[0]);
  EXPECT_EQ(NeighbourRule(repository, store.ProjectKey(), set, rules[2], Direction::Down), rules[0]);
}

TEST_F(Sequence, ARuleSetsNeighboursFollowTheCallsOfTheFunction) {
  const auto second = store.AddRuleSet("Taxes");
  const auto third = store.AddRuleSet("Rates");
  store.AddCall(function, set, 3);
  store.AddCall(function, second, 1);
  store.AddCall(function, third, 2);
  const auto neighbour = [&](std::int32_t ruleSet, Direction direction) {
    return NeighbourRuleSet(repository, store.ProjectKey(), function, ruleSet, direction);
  };
  EXPECT_EQ(neighbour(second, Direction::Up), std::nullopt);
  EXPECT_EQ(neighbour(second, Direction::Down), third);
  EXPECT_EQ(neighbour(set, Direction::Up), third);
  EXPECT_EQ(neighbour(set, Direction::Down), std::nullopt);
}

TEST_F(Sequence, ARuleSetOfAnotherProjectIsNobodysNeighbour) {
  const auto foreign = store.Add("RULESET", "Foreign");
  const auto third = store.AddRuleSet("Rates");
  store.AddCall(function, set, 1);
  store.AddCall(function, foreign, 2);
  store.AddCall(function, third, 3);
  EXPECT_EQ(NeighbourRuleSet(repository, store.ProjectKey(), function, set, Direction::Down), third);
}

TEST_F(Sequence, ARuleSetThatIsCalledTwiceStandsWhereItIsCalledFirst) {
  const auto second = store.AddRuleSet("Taxes");
  store.AddCall(function, set, 1);
  store.AddCall(function, second, 2);
  store.AddCall(function, set, 3);
  EXPECT_EQ(NeighbourRuleSet(repository, store.ProjectKey(), function, second, Direction::Down), std::nullopt);
  EXPECT_EQ(NeighbourRuleSet(repository, store.ProjectKey(), function, second, Direction::Up), set);
}

}  // namespace
}  // namespace qmrules::catalogue
