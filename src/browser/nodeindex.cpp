#include "browser/nodeindex.h"

#include "browser/nodes.h"
#include "catalogue/gateway.h"

namespace qmrules::browser {

using platform::widgets::TreeNode;

NodeIndex::NodeIndex(platform::widgets::TreeView& tree)
    : tree_(tree),
      adding_(tree.OnNodeAdded.Subscribe([this](TreeNode& node) { Added(node); })),
      removing_(tree.OnNodeRemoving.Subscribe([this](TreeNode& node) { Removing(node); })),
      removed_(tree.OnNodesRemoved.Subscribe([this] { Removed(); })) {}

std::vector<TreeNode*> NodeIndex::Occurrences(std::string_view image, std::int32_t id) const {
  const Nodes& nodes = image == catalogue::kRule ? rules_ : ruleSets_;
  const auto found = nodes.find(id);
  return found == nodes.end() ? std::vector<TreeNode*>() : found->second;
}

NodeIndex::Nodes* NodeIndex::NodesLike(const TreeNode& node) {
  if (IsRule(node)) return &rules_;
  return IsRuleSet(node) ? &ruleSets_ : nullptr;
}

void NodeIndex::Added(TreeNode& node) {
  if (Nodes* const nodes = NodesLike(node)) (*nodes)[NodeID(node)].push_back(&node);
}

void NodeIndex::Removing(const TreeNode& around) {
  const TreeNode* const behind = around.NextBehind();
  for (const TreeNode* node = &around; node != behind; node = node->NextInOrder()) {
    Nodes* const nodes = NodesLike(*node);
    if (nodes == nullptr) continue;
    const auto found = nodes->find(NodeID(*node));
    if (found == nodes->end()) continue;
    std::erase(found->second, node);
    if (found->second.empty()) nodes->erase(found);
  }
}

// A tree that is cleared tells of no single node.
void NodeIndex::Removed() {
  if (tree_.Count() > 0) return;
  ruleSets_.clear();
  rules_.clear();
}

}  // namespace qmrules::browser
