#pragma once

#include <cstddef>
#include <memory>
#include <string>

namespace qmrules::platform::widgets {

class TreeView;

// What a new node begins with.
struct NewNode {
  std::string key;  // "" for a node that is not looked up
  std::string text;
  std::string image;  // key in the tree's image list
  std::string tag;
  bool checked = false;
};

// A node of a TreeView, which owns it: it stays at its address until it is removed. Neighbours are nullptr where there
// are none.
class TreeNode {
 public:
  // Only a TreeView makes nodes.
  class Making {
    friend class TreeView;
    Making() = default;
  };
  TreeNode(Making, TreeView& tree, NewNode content);
  TreeNode(const TreeNode&) = delete;
  TreeNode& operator=(const TreeNode&) = delete;

  const std::string& Key() const { return content_.key; }
  const std::string& Text() const { return content_.text; }
  void SetText(std::string text);
  const std::string& Image() const { return content_.image; }
  void SetImage(std::string image);
  const std::string& Tag() const { return content_.tag; }
  void SetTag(std::string tag) { content_.tag = std::move(tag); }
  bool Checked() const { return content_.checked; }
  // Raises no OnNodeCheck: that one tells of the user.
  void SetChecked(bool checked);
  bool Expanded() const { return expanded_; }
  // As by the user, with OnExpanding before the node opens.
  void SetExpanded(bool expanded);

  TreeNode* Parent() const;
  TreeNode* FirstChild() const { return firstChild_; }
  TreeNode* LastChild() const { return lastChild_; }
  TreeNode* NextSibling() const { return next_; }
  TreeNode* PreviousSibling() const { return previous_; }
  std::size_t ChildCount() const { return childCount_; }

  // The neighbours in reading order: a node, then all below it, then its next sibling. Expanded or not is the same.
  TreeNode* NextInOrder() const;
  TreeNode* PreviousInOrder() const;
  // The first node in reading order that is not below this one.
  TreeNode* NextBehind() const;
  // True for the node itself and for each one around it.
  bool IsWithin(const TreeNode& around) const;

 private:
  friend class TreeView;
  friend class TreeNodeHandle;
  std::weak_ptr<TreeNode*> Life();

  TreeView& tree_;
  NewNode content_;
  bool expanded_ = false;
  TreeNode* parent_ = nullptr;  // the tree's hidden root for a node of the top level
  TreeNode* firstChild_ = nullptr;
  TreeNode* lastChild_ = nullptr;
  TreeNode* next_ = nullptr;
  TreeNode* previous_ = nullptr;
  std::size_t childCount_ = 0;
  std::shared_ptr<TreeNode*> life_;  // made when the first handle asks for it
};

}  // namespace qmrules::platform::widgets
