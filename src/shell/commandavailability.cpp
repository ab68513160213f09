#include "shell/commandavailability.h"

#include <string_view>

#include "browser/nodes.h"

namespace qmrules::shell {

using platform::widgets::TreeNode;

namespace {

// What a command asks of the node.
enum class Needs {
  Node,
  Rule,
  MovableNode,  // one that can go to another place
  PreviousSibling,
  NextSibling,
};

struct Need {
  std::string_view command;
  Needs needs;
};

constexpr Need kNeeds[] = {
    {"CreateRuleIO", Needs::Rule},
    {"CreateRuleCond", Needs::Rule},
    {"Export", Needs::Node},
    {"Find", Needs::Node},
    {"PreviousSelected", Needs::Node},
    {"NextSelected", Needs::Node},
    {"Selected", Needs::Node},
    {"SelectAll", Needs::Node},
    {"UnselectAll", Needs::Node},
    {"CopyMove", Needs::MovableNode},
    {"MoveUp", Needs::PreviousSibling},
    {"MoveDown", Needs::NextSibling},
    {"Changer", Needs::Node},
    {"Delete", Needs::Node},
    {"Segment", Needs::Rule},
    {"DeleteSegment", Needs::Rule},
    {"DataElements", Needs::Rule},
    {"BusinessNames", Needs::Rule},
    {"Emphasize", Needs::Node},
    {"Validate", Needs::Node},
    {"ActivityLog", Needs::Rule},
};

bool HasPlace(const TreeNode& node) {
  return browser::IsRuleSet(node) || browser::IsRule(node);
}

bool Serves(const TreeNode& node, Needs needs, const platform::TesselGlobals& globals) {
  switch (needs) {
    case Needs::Node:
      break;
    case Needs::Rule:
      return browser::IsRule(node);
    case Needs::MovableNode:
      // The rule set is held against the function's name; so it is required.
      return browser::IsRule(node) || (browser::IsRuleSet(node) && node.Text() != globals.UnassignedBFName);
    case Needs::PreviousSibling:
      return HasPlace(node) && node.PreviousSibling() != nullptr;
    case Needs::NextSibling:
      return HasPlace(node) && node.NextSibling() != nullptr;
  }
  return true;
}

}  // namespace

void CommandAvailability::Update(const TreeNode* node) const {
  for (const Need& need : kNeeds) {
    faces_.SetEnabled(need.command, node != nullptr && Serves(*node, need.needs, services_.globals));
  }
}

}  // namespace qmrules::shell
