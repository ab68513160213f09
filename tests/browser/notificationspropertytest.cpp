#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "browser/browsertest.h"
#include "browser/moveinsequence.h"
#include "catalogue/gateway.h"
#include "platform/error.h"

namespace qmrules::browser {
namespace {

using catalogue::Direction;
using catalogue::MakeKey;
using platform::widgets::TreeNode;

// Changes a catalogue at random, as several users of one process would, and keeps the IDs of what there is.
class RandomChanges : public BrowserTest, public testing::WithParamInterface<unsigned> {
 protected:
  struct Call {
    std::int32_t id = 0;
    std::int32_t function = 0;
    std::int32_t set = 0;
  };
  struct Rule {
    std::int32_t id = 0;
    std::int32_t set = 0;
  };

  std::size_t Below(std::size_t count) { return std::uniform_int_distribution<std::size_t>(0, count - 1)(random); }
  template <class T>
  T& Any(std::vector<T>& all) {
    return all[Below(all.size())];
  }

  // The ID of one of those that pass, or 0.
  template <class T, class Passes>
  std::int32_t AnyOrNone(const std::vector<T>& all, const Passes& passes) {
    std::vector<std::int32_t> ids = {0};
    for (const T& item : all) {
      if (passes(item)) ids.push_back(item.id);
    }
    return Any(ids);
  }

  bool Triggers(std::int32_t function, std::int32_t set) const {
    return std::any_of(calls.begin(), calls.end(),
                       [&](const Call& call) { return call.function == function && call.set == set; });
  }

  void Add() {
    const std::size_t kind = Below(20);
    const std::string name = std::to_string(1000 + ++names);  // new functions come last by name
    if (functions.empty() || kind == 0) {
      functions.push_back(store.AddFunction("F" + name));
    } else if (sets.empty() || kind == 1) {
      sets.push_back(store.AddRuleSet("S" + name));
    } else if (kind < 8) {
      const auto function = Any(functions);
      const auto set = Any(sets);
      if (Triggers(function, set)) return;
      const auto after = AnyOrNone(calls, [&](const Call& call) { return call.function == function; });
      calls.push_back({Trigger(function, set, after), function, set});
    } else {
      const auto set = Any(sets);
      const auto after = AnyOrNone(rules, [&](const Rule& rule) { return rule.set == set; });
      rules.push_back({CreateRule(set, "R" + name, after), set});
    }
  }

  void Delete() {
    const std::size_t kind = Below(20);
    if (kind == 0 && !functions.empty()) {
      const auto function = Any(functions);
      repository.object(MakeKey("BUSINESSFUNC", function))->Delete();
      std::erase(functions, function);
      std::erase_if(calls, [&](const Call& call) { return call.function == function; });
    } else if (kind == 1 && !sets.empty()) {
      const auto set = Any(sets);
      DeleteCallsOf(set);
      repository.object(MakeKey("RULESET", set))->Delete();
      std::erase(sets, set);
      std::erase_if(rules, [&](const Rule& rule) { return rule.set == set; });
    } else if (kind < 8 && !calls.empty()) {
      const Call call = Any(calls);
      repository.object(MakeKey("RULESETCALL", call.id))->Delete();
      std::erase_if(calls, [&](const Call& other) { return other.id == call.id; });
    } else if (!rules.empty()) {
      const Rule rule = Any(rules);
      repository.object(MakeKey("RULE", rule.id))->Delete();
      std::erase_if(rules, [&](const Rule& other) { return other.id == rule.id; });
    }
  }

  void DeleteCallsOf(std::int32_t set) {
    for (const Call& call : calls) {
      if (call.set == set) repository.object(MakeKey("RULESETCALL", call.id))->Delete();
    }
    std::erase_if(calls, [&](const Call& call) { return call.set == set; });
  }

  // To another rule set, with a number there, as the move of a rule does it.
  void MoveRule() {
    if (rules.empty()) return;
    Rule& rule = Any(rules);
    const auto set = Any(sets);
    if (set == rule.set) return;
    const auto after = AnyOrNone(rules, [&](const Rule& other) { return other.set == set; });
    const auto object = repository.object(MakeKey("RULE", rule.id));
    object->UnLink("BelongsToRuleSet", MakeKey("RULESET", rule.set));
    const auto number = catalogue::NextSeqNo(repository, {"RULESET", set, "Has", "RULE", after});
    object->Edit();
    object->Attrs("SeqNo", number);
    object->Post();
    object->Link("BelongsToRuleSet", MakeKey("RULESET", set));
    rule.set = set;
  }

  TreeNode* AnyNode() {
    std::vector<TreeNode*> nodes;
    for (TreeNode* node = tvObjects.First(); node != nullptr; node = node->NextInOrder()) {
      if (!node->Key().empty()) nodes.push_back(node);
    }
    return nodes.empty() ? nullptr : Any(nodes);
  }

  void ActOnTheTree() {
    TreeNode* const node = AnyNode();
    if (node == nullptr) return;
    const std::size_t kind = Below(12);
    if (kind < 2) {
      tvObjects.SetExpanded(*node, !node->Expanded());
    } else if (kind < 8) {
      tvObjects.Click(*node);
      mover.Run(Below(2) == 0 ? Direction::Up : Direction::Down);
    } else if (kind < 11) {
      tvObjects.ClickCheckBox(*node);
    } else {
      selectedOnly.Toggle();
    }
  }

  void OpenAll() {
    for (TreeNode* node = tvObjects.First(); node != nullptr; node = node->NextInOrder()) {
      if (HasPlaceholder(*node)) tvObjects.SetExpanded(*node, true);
    }
  }

  // The index against a walk through the tree.
  void CheckIndex() {
    std::size_t indexed = 0;
    for (const std::string_view image : {"RULESET", "RULE"}) {
      for (std::int32_t id = 1; id < 400; ++id) {
        for (const TreeNode* node : objects.Index().Occurrences(image, id)) {
          ++indexed;
          EXPECT_EQ(tvObjects.Find(node->Key()), node);
          EXPECT_EQ(NodeID(*node), id);
          EXPECT_EQ(node->Image(), image);
        }
      }
    }
    std::size_t walked = 0;
    for (const TreeNode* node = tvObjects.First(); node != nullptr; node = node->NextInOrder()) {
      if (!node->Key().empty() && !IsFunction(*node)) ++walked;
    }
    EXPECT_EQ(indexed, walked);
  }

  std::mt19937 random{GetParam()};
  MoveInSequence mover{services, objects};
  std::vector<std::int32_t> functions;
  std::vector<std::int32_t> sets;
  std::vector<Call> calls;
  std::vector<Rule> rules;
  int names = 0;
};

std::string WithoutChecks(std::string tree) {
  for (std::size_t at = tree.find(" [x]"); at != std::string::npos; at = tree.find(" [x]")) tree.erase(at, 4);
  return tree;
}

TEST_P(RandomChanges, LeaveTheTreeAsALoadWouldShowIt) {
  std::size_t most = 0;
  for (int change = 0; change < 300; ++change) {
    const std::size_t kind = Below(10);
    if (kind < 4) {
      Add();
    } else if (kind < 5) {
      Delete();
    } else if (kind < 6) {
      MoveRule();
    } else {
      ActOnTheTree();
    }
    if (change % 50 != 49) continue;
    if (selectedOnly.IsOn()) selectedOnly.TurnOff();
    OpenAll();
    const std::string mended = WithoutChecks(Tree());
    most = std::max(most, tvObjects.Count());
    CheckIndex();
    objects.LoadTree();
    OpenAll();
    ASSERT_EQ(mended, WithoutChecks(Tree())) << "after " << change + 1 << " changes";
    CheckIndex();
  }
  EXPECT_TRUE(host.failures.empty());
  EXPECT_GT(most, 20U);
}

INSTANTIATE_TEST_SUITE_P(ManySeeds, RandomChanges, testing::Range(1U, 9U));

}  // namespace
}  // namespace qmrules::browser
