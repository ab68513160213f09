#pragma once

#include <memory>

#include "platform/widgets/treenode.h"

namespace qmrules::platform::widgets {

// Remembers a node across changes of the tree: gives nullptr once the node has been removed.
class TreeNodeHandle {
 public:
  TreeNodeHandle() = default;
  explicit TreeNodeHandle(TreeNode* node) {
    if (node != nullptr) life_ = node->Life();
  }

  TreeNode* Get() const {
    const auto life = life_.lock();
    return life == nullptr ? nullptr : *life;
  }

 private:
  std::weak_ptr<TreeNode*> life_;
};

}  // namespace qmrules::platform::widgets
