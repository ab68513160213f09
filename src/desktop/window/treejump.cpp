#include "desktop/window/treejump.h"

#include "catalogue/gateway.h"
#include "catalogue/nodekeys.h"

namespace qmrules::desktop {

namespace {

using platform::widgets::TreeNode;
using platform::widgets::TreeView;

// Opens the node, which reads what is below it when that was not read yet.
TreeNode* Opened(TreeView& tree, const std::string& key) {
  TreeNode* const node = tree.Find(key);
  if (node != nullptr && !node->Expanded()) tree.Expand(*node);
  return node;
}

TreeNode* Find(const LocatorEntry& entry, TreeView& tree) {
  const auto id = catalogue::SplitKey(entry.key).id;
  if (entry.entity == catalogue::kBusinessFunction) return tree.Find(catalogue::FunctionNodeKey(id));
  if (entry.entity == catalogue::kRuleSet) return tree.Find(catalogue::RuleSetNodeKey(entry.functionID, id));
  if (Opened(tree, catalogue::FunctionNodeKey(entry.functionID)) == nullptr) return nullptr;
  if (Opened(tree, catalogue::RuleSetNodeKey(entry.functionID, entry.ruleSetID)) == nullptr) return nullptr;
  return tree.Find(catalogue::RuleNodeKey(entry.functionID, id));
}

}  // namespace

bool JumpTo(const LocatorEntry& entry, browser::ControlWidgets& widgets) {
  TreeView& tree = widgets.tvObjects;
  TreeNode* const node = Find(entry, tree);
  if (node == nullptr) return false;
  tree.EnsureVisible(*node);
  tree.Click(*node);
  return true;
}

}  // namespace qmrules::desktop
