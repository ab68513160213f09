#pragma once

#include <functional>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/widgets/imagelist.h"
#include "platform/widgets/treenode.h"
#include "platform/widgets/widget.h"
#include "shell/likepattern.h"

namespace qmrules::platform::widgets {

// Where a new node goes, seen from a node that stands.
enum class TreeRelation {
  tvwChild,     // below it, as its last child
  tvwPrevious,  // before it, as its sibling
  tvwNext,      // behind it, as its sibling
};

// A tree of nodes with pictures and check boxes. Keys compare without regard to case and are unique; nodes with an
// empty key are not looked up, and there may be any number of them. Adding, removing one node and looking up cost
// constant time, whatever the number of siblings.
class TreeView final : public Widget {
 public:
  explicit TreeView(std::string name, int index = 0);
  ~TreeView() override;

  // Adds a node: beside `relative`, or at the end of the top level without one. nullptr, with nothing changed, when the
  // key is taken.
  TreeNode* Add(NewNode content, TreeNode* relative = nullptr, TreeRelation relation = TreeRelation::tvwChild);
  // Takes the node out with all below it. When the selected node is among them, the selection falls to the node's next
  // sibling, else to its previous one, else to its parent, else to none. A parent that loses its last child stays open.
  void Remove(TreeNode& node);
  void Clear();

  // The node under the key, or nullptr; the empty key finds none.
  TreeNode* Find(std::string_view key) const;
  std::size_t Count() const { return nodes_.size(); }
  // The ends of the reading order, and of the top level; nullptr in an empty tree.
  TreeNode* First() const { return root_->firstChild_; }
  TreeNode* Last() const;
  TreeNode* FirstRoot() const { return root_->firstChild_; }
  TreeNode* LastRoot() const { return root_->lastChild_; }

  // The first node in reading order whose key matches, from `from` on (the whole tree for nullptr), or nullptr.
  TreeNode* FindLike(const shell::LikePattern& pattern, TreeNode* from = nullptr) const;
  // All of them, in reading order.
  std::vector<TreeNode*> AllLike(const shell::LikePattern& pattern) const;

  TreeNode* SelectedNode() const { return selected_; }
  // Raises OnSelectionChanged for the view but no OnNodeClick: that one tells of the user.
  void SetSelectedNode(TreeNode* node);

  // Opens (with OnExpanding before) or closes a node. A node that has no children after OnExpanding stays closed. When
  // the selected node comes to lie within a closed one, the closed one is selected.
  void SetExpanded(TreeNode& node, bool expanded);
  // Opens all nodes around the node and asks the view to bring it into sight.
  void EnsureVisible(TreeNode& node);

  // The node at a place of a mouse press: during a user action on a node that node, else what the view tells.
  TreeNode* HitTest(int x, int y) const;
  void SetHitTest(std::function<TreeNode*(int x, int y)> hitTest) { hitTest_ = std::move(hitTest); }

  // The node pictures; outlive the tree. nullptr for none.
  const ImageList* Images() const { return images_; }
  void SetImages(const ImageList* images) { Assign(images_, images); }

  // User: clicks the node's text (mouse down and up, selection, OnNodeClick).
  bool Click(TreeNode& node);
  // User: the right button goes down and up over the node, or beside all nodes for nullptr.
  bool RightClick(TreeNode* node);
  // User: clicks, then double-clicks the node; a node with children also opens or closes.
  bool DoubleClick(TreeNode& node);
  // User: clicks the check box; it turns over between mouse down and mouse up, OnNodeCheck follows.
  bool ClickCheckBox(TreeNode& node);
  // User: opens or closes the node by its sign. Where closing moves the selection, OnNodeClick follows.
  bool Expand(TreeNode& node);
  bool Collapse(TreeNode& node);

  Event<TreeNode&> OnExpanding;
  Event<TreeNode&> OnNodeClick;
  Event<TreeNode&> OnNodeCheck;
  Event<TreeNode&> OnDoubleClick;

  // For the view. Observers leave the tree as it is.
  Event<TreeNode&> OnNodeAdded;
  Event<TreeNode&> OnNodeChanged;   // text, picture, check or expansion
  Event<TreeNode&> OnNodeRemoving;  // it and all below are still there
  Event<> OnNodesRemoved;           // after a removal, and after Clear
  Event<> OnSelectionChanged;
  Event<TreeNode&> OnEnsureVisible;

 protected:
  bool ActOnKey(const KeyPress& press) override;

 private:
  static void Attach(TreeNode& node, TreeNode& relative, TreeRelation relation);
  static void Detach(TreeNode& node);
  static TreeNode* NextShown(const TreeNode& node);
  static TreeNode* PreviousShown(const TreeNode& node);
  TreeNode* LastShown() const;
  TreeNode* NodeForKey(const KeyPress& press) const;
  bool MoveSelection(TreeNode* node);

  std::unordered_map<const TreeNode*, std::unique_ptr<TreeNode>> nodes_;
  std::unordered_map<std::string, TreeNode*> index_;  // by folded key
  std::unique_ptr<TreeNode> root_;                    // hidden; the top level are its children
  TreeNode* selected_ = nullptr;
  TreeNode* underPointer_ = nullptr;
  std::function<TreeNode*(int, int)> hitTest_;
  const ImageList* images_ = nullptr;
};

}  // namespace qmrules::platform::widgets
