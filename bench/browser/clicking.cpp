#include "browser/clicking.h"

#include <fmt/format.h>

#include <stdexcept>

#include "browser/barefetches.h"
#include "catalogue/nodekeys.h"

namespace qmrules::bench {

using platform::widgets::TreeNode;

namespace {

constexpr int kRounds = 200;
constexpr double kAimSeconds = 0.05;
constexpr double kExpansionLimit = 40;
constexpr double kClickLimit = 10;

// Numbers from 1 that lie all over the catalogue, none twice in a run of it.
int Spread(int round, int count) {
  return 1 + static_cast<int>(static_cast<std::int64_t>(round) * count / kRounds);
}

// What every measurement needs.
struct Place {
  Control& control;
  platform::Repository& repository;
  const Catalogue& catalogue;
  TimeTable& table;

  TreeNode& Node(const std::string& key) const {
    TreeNode* const node = control.Tree().Find(key);
    if (node == nullptr) throw std::runtime_error(fmt::format("the tree has no node {}.", key));
    return *node;
  }
  TreeNode& FunctionNode(int id) const { return Node(catalogue::FunctionNodeKey(id)); }
  TreeNode& SetNode(int id) const { return Node(catalogue::RuleSetNodeKey(1 + (id - 1) / kSetsPerFunction, id)); }
  TreeNode& RuleNode(int id) const { return Node(catalogue::RuleNodeKey(1 + (id - 1) / kRulesPerFunction, id)); }
  static Act ActNamed(const char* name, double ratioLimit) {
    return {.name = name, .aimSeconds = kAimSeconds, .ratioLimit = ratioLimit, .rounds = kRounds};
  }
};

void Require(bool isTrue, const char* what) {
  if (!isTrue) throw std::runtime_error(what);
}

// The first rule of its set.
int RuleOf(int setID) {
  return 1 + (setID - 1) * kRulesPerSet;
}

void MeasureExpansion(const Place& place) {
  const auto expand = [&](int round) {
    TreeNode& set = place.SetNode(Spread(round, place.catalogue.Sets()));
    place.control.Tree().EnsureVisible(set);
    const Spent spent = TimeOf([&] { place.control.Tree().Expand(set); });
    Require(set.ChildCount() == kRulesPerSet, "expand: a rule set does not show its rules.");
    return spent;
  };
  place.table.Measure(Place::ActNamed("expand", kExpansionLimit), expand, [&](int round) {
    return FetchRuleSet(place.repository, place.catalogue.projectKey, Spread(round, place.catalogue.Sets()));
  });
}

Spent Click(const Place& place, TreeNode& node) {
  const Spent spent = TimeOf([&] { place.control.Tree().Click(node); });
  Require(place.control.Widgets().txtObjName.Text() == node.Text(), "click: the panes show another object.");
  return spent;
}

void MeasureClicks(const Place& place) {
  const Catalogue& catalogue = place.catalogue;
  const auto& widgets = place.control.Widgets();
  place.table.Measure(
      Place::ActNamed("click_function", kClickLimit),
      [&](int round) { return Click(place, place.FunctionNode(Spread(round, catalogue.functions))); },
      [&](int round) { return FetchFunction(place.repository, Spread(round, catalogue.functions)); });
  Require(widgets.lvContent.Count() == kSetsPerFunction, "click: a function does not show its rule sets.");

  place.table.Measure(
      Place::ActNamed("click_rule_set", kClickLimit),
      [&](int round) { return Click(place, place.SetNode(Spread(round, catalogue.Sets()))); },
      [&](int round) { return FetchRuleSet(place.repository, catalogue.projectKey, Spread(round, catalogue.Sets())); });
  Require(widgets.lvContent.Count() == kRulesPerSet, "click: a rule set does not show its rules.");

  const auto ruleOf = [&](int round) { return RuleOf(Spread(round, catalogue.Sets())); };
  place.table.Measure(
      Place::ActNamed("click_rule", kClickLimit),
      [&](int round) { return Click(place, place.RuleNode(ruleOf(round))); },
      [&](int round) {
        const std::string program = MakeProgram((ruleOf(round) - 1) / kRulesPerProgram).name;
        return FetchRule(place.repository, catalogue.projectKey, ruleOf(round), program);
      });
  Require(widgets.lvIOElems.Count() == kIOPerRule, "click: a rule does not show its data elements.");
  const std::string file = MakeProgram((ruleOf(kRounds - 1) - 1) / kRulesPerProgram).fileName;
  Require(widgets.txtFileName.Text() == file, "click: a rule does not show its segment.");
}

}  // namespace

void MeasureExpansionAndClicks(Control& control, platform::Repository& repository, const Catalogue& catalogue,
                               TimeTable& table) {
  const Place place{control, repository, catalogue, table};
  MeasureExpansion(place);
  MeasureClicks(place);
}

}  // namespace qmrules::bench
