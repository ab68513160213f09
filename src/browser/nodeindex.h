#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/event.h"
#include "platform/widgets/treeview.h"

namespace qmrules::browser {

// Finds all nodes of one rule or rule set, which may stand under several functions, without a walk through the tree.
// Made for an empty tree and kept up by the tree's own events.
class NodeIndex {
 public:
  explicit NodeIndex(platform::widgets::TreeView& tree);
  NodeIndex(const NodeIndex&) = delete;
  NodeIndex& operator=(const NodeIndex&) = delete;

  // The nodes with this image, "RULESET" or "RULE", and this ID, in no particular order.
  std::vector<platform::widgets::TreeNode*> Occurrences(std::string_view image, std::int32_t id) const;

 private:
  using Nodes = std::unordered_map<std::int32_t, std::vector<platform::widgets::TreeNode*>>;

  Nodes* NodesLike(const platform::widgets::TreeNode& node);
  void Added(platform::widgets::TreeNode& node);
  void Removing(const platform::widgets::TreeNode& around);
  void Removed();

  platform::widgets::TreeView& tree_;
  Nodes ruleSets_;
  Nodes rules_;
  platform::Subscription adding_;
  platform::Subscription removing_;
  platform::Subscription removed_;
};

}  // namespace qmrules::browser
