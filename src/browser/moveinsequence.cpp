#include "browser/moveinsequence.h"

#include <utility>

#include "browser/nodes.h"
#include "catalogue/gateway.h"
#include "catalogue/nodekeys.h"

namespace qmrules::browser {

using catalogue::Direction;
using platform::BusyCursor;
using platform::widgets::NewNode;
using platform::widgets::TreeNode;
using platform::widgets::TreeRelation;

namespace {

NewNode ContentOf(const TreeNode& node) {
  return {node.Key(), node.Text(), node.Image(), node.Tag(), node.Checked()};
}

}  // namespace

MoveInSequence::MoveInSequence(const BrowserServices& services, const ObjectTree& tree)
    : services_(services), objects_(tree), tree_(services.widgets.tvObjects), faces_(services) {}

void MoveInSequence::Run(Direction direction) {
  TreeNode* const node = tree_.SelectedNode();
  if (node == nullptr || !(IsRule(*node) || IsRuleSet(*node))) return;
  TreeNode* const neighbour = direction == Direction::Up ? node->PreviousSibling() : node->NextSibling();
  if (neighbour == nullptr) return;
  const BusyCursor busy(services_.pointer);
  const catalogue::SwappedNumbers swapped =
      IsRule(*node)
          ? catalogue::SwapRules(services_.Repository(), NodeID(*node), NodeID(*neighbour))
          : catalogue::SwapRuleSets(services_.Repository(), NodeID(*node->Parent()), NodeID(*node), NodeID(*neighbour));
  TreeNode& moved = Rebuild(*node, *neighbour, direction);
  SetSequence(moved, swapped.first);
  SetSequence(*neighbour, swapped.second);
  if (IsRule(moved)) SwapElsewhere(moved, *neighbour);
  faces_.SetEnabled("MoveUp", moved.PreviousSibling() != nullptr);
  faces_.SetEnabled("MoveDown", moved.NextSibling() != nullptr);
}

TreeNode& MoveInSequence::Rebuild(TreeNode& node, TreeNode& neighbour, Direction direction) {
  const bool isCurrent = &node == services_.host.CurrentNode();
  const bool hadChildren = node.FirstChild() != nullptr;
  NewNode content = ContentOf(node);
  tree_.Remove(node);
  TreeNode& moved = *tree_.Add(std::move(content), &neighbour,
                               direction == Direction::Up ? TreeRelation::tvwPrevious : TreeRelation::tvwNext);
  if (hadChildren) AddPlaceholder(tree_, moved, services_.texts);
  tree_.SetSelectedNode(&moved);
  if (isCurrent) services_.host.ReplaceCurrentNode(moved);
  return moved;
}

// The rule set may stand open under other functions too, where the two rules change places in the same way.
void MoveInSequence::SwapElsewhere(const TreeNode& moved, const TreeNode& neighbour) {
  for (const TreeNode* const set : objects_.Index().Occurrences(catalogue::kRuleSet, NodeID(*moved.Parent()))) {
    if (set == moved.Parent()) continue;
    const std::int32_t functionID = NodeID(*set->Parent());
    TreeNode* const movedThere = tree_.Find(catalogue::RuleNodeKey(functionID, NodeID(moved)));
    TreeNode* const neighbourThere = tree_.Find(catalogue::RuleNodeKey(functionID, NodeID(neighbour)));
    if (movedThere != nullptr) movedThere->SetTag(moved.Tag());
    if (neighbourThere != nullptr) neighbourThere->SetTag(neighbour.Tag());
    if (movedThere != nullptr && neighbourThere != nullptr) SwapPlaces(*movedThere, *neighbourThere);
  }
}

// Of two rules, which have nothing below them. Others may stand between them here. A marker keeps the first one's
// place.
void MoveInSequence::SwapPlaces(TreeNode& first, TreeNode& second) {
  TreeNode& marker = *tree_.Add({}, &first, TreeRelation::tvwPrevious);
  NewNode firstContent = ContentOf(first);
  tree_.Remove(first);
  tree_.Add(std::move(firstContent), &second, TreeRelation::tvwPrevious);
  NewNode secondContent = ContentOf(second);
  tree_.Remove(second);
  tree_.Add(std::move(secondContent), &marker, TreeRelation::tvwPrevious);
  tree_.Remove(marker);
}

}  // namespace qmrules::browser
