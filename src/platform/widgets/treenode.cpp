#include "platform/widgets/treenode.h"

#include "platform/widgets/treeview.h"

namespace qmrules::platform::widgets {

TreeNode::TreeNode(Making, TreeView& tree, NewNode content) : tree_(tree), content_(std::move(content)) {}

void TreeNode::SetText(std::string text) {
  if (content_.text == text) return;
  content_.text = std::move(text);
  tree_.OnNodeChanged.Raise(*this);
}

void TreeNode::SetImage(std::string image) {
  if (content_.image == image) return;
  content_.image = std::move(image);
  tree_.OnNodeChanged.Raise(*this);
}

void TreeNode::SetChecked(bool checked) {
  if (content_.checked == checked) return;
  content_.checked = checked;
  tree_.OnNodeChanged.Raise(*this);
}

void TreeNode::SetExpanded(bool expanded) {
  tree_.SetExpanded(*this, expanded);
}

TreeNode* TreeNode::Parent() const {
  return parent_ == nullptr || parent_->parent_ == nullptr ? nullptr : parent_;
}

TreeNode* TreeNode::NextBehind() const {
  for (const TreeNode* node = this; node != nullptr; node = node->parent_) {
    if (node->next_ != nullptr) return node->next_;
  }
  return nullptr;
}

TreeNode* TreeNode::NextInOrder() const {
  return firstChild_ != nullptr ? firstChild_ : NextBehind();
}

TreeNode* TreeNode::PreviousInOrder() const {
  if (previous_ == nullptr) return Parent();
  TreeNode* node = previous_;
  while (node->lastChild_ != nullptr) node = node->lastChild_;
  return node;
}

bool TreeNode::IsWithin(const TreeNode& around) const {
  for (const TreeNode* node = this; node != nullptr; node = node->parent_) {
    if (node == &around) return true;
  }
  return false;
}

std::weak_ptr<TreeNode*> TreeNode::Life() {
  if (life_ == nullptr) life_ = std::make_shared<TreeNode*>(this);
  return life_;
}

}  // namespace qmrules::platform::widgets
