#include "platform/widgets/treeview.h"

#include "platform/widgets/treenodehandle.h"
#include "shell/casefold.h"

namespace qmrules::platform::widgets {

namespace {

// Lets HitTest answer for one user action.
class PointerOver {
 public:
  PointerOver(TreeNode*& underPointer, TreeNode* node) : underPointer_(underPointer) { underPointer_ = node; }
  PointerOver(const PointerOver&) = delete;
  PointerOver& operator=(const PointerOver&) = delete;
  ~PointerOver() { underPointer_ = nullptr; }

 private:
  TreeNode*& underPointer_;
};

}  // namespace

TreeView::TreeView(std::string name, int index)
    : Widget(std::move(name), index), root_(std::make_unique<TreeNode>(TreeNode::Making(), *this, NewNode{})) {
  root_->expanded_ = true;
}

TreeView::~TreeView() = default;

TreeNode* TreeView::Add(NewNode content, TreeNode* relative, TreeRelation relation) {
  std::string folded = shell::FoldCase(content.key);
  if (!folded.empty() && index_.contains(folded)) return nullptr;
  auto owned = std::make_unique<TreeNode>(TreeNode::Making(), *this, std::move(content));
  TreeNode& node = *owned;
  nodes_.emplace(&node, std::move(owned));
  if (!folded.empty()) index_.emplace(std::move(folded), &node);
  Attach(node, relative == nullptr ? *root_ : *relative, relative == nullptr ? TreeRelation::tvwChild : relation);
  OnNodeAdded.Raise(node);
  return &node;
}

void TreeView::Attach(TreeNode& node, TreeNode& relative, TreeRelation relation) {
  TreeNode& parent = relation == TreeRelation::tvwChild ? relative : *relative.parent_;
  node.parent_ = &parent;
  switch (relation) {
    case TreeRelation::tvwChild:
      node.previous_ = parent.lastChild_;
      break;
    case TreeRelation::tvwPrevious:
      node.previous_ = relative.previous_;
      break;
    case TreeRelation::tvwNext:
      node.previous_ = &relative;
      break;
  }
  node.next_ = node.previous_ == nullptr ? parent.firstChild_ : node.previous_->next_;
  (node.previous_ == nullptr ? parent.firstChild_ : node.previous_->next_) = &node;
  (node.next_ == nullptr ? parent.lastChild_ : node.next_->previous_) = &node;
  ++parent.childCount_;
}

void TreeView::Detach(TreeNode& node) {
  TreeNode& parent = *node.parent_;
  (node.previous_ == nullptr ? parent.firstChild_ : node.previous_->next_) = node.next_;
  (node.next_ == nullptr ? parent.lastChild_ : node.next_->previous_) = node.previous_;
  --parent.childCount_;
}

void TreeView::Remove(TreeNode& node) {
  OnNodeRemoving.Raise(node);
  TreeNode* const parent = node.Parent();
  const bool selectionFalls = selected_ != nullptr && selected_->IsWithin(node);
  if (selectionFalls) {
    selected_ = node.next_ != nullptr ? node.next_ : node.previous_ != nullptr ? node.previous_ : parent;
  }
  if (underPointer_ != nullptr && underPointer_->IsWithin(node)) underPointer_ = nullptr;
  std::vector<TreeNode*> gone;
  const TreeNode* const behind = node.NextBehind();
  for (TreeNode* below = &node; below != behind; below = below->NextInOrder()) gone.push_back(below);
  Detach(node);
  for (TreeNode* below : gone) {
    if (!below->Key().empty()) index_.erase(shell::FoldCase(below->Key()));
    nodes_.erase(below);
  }
  OnNodesRemoved.Raise();
  if (selectionFalls) OnSelectionChanged.Raise();
}

void TreeView::Clear() {
  const bool hadSelection = selected_ != nullptr;
  selected_ = nullptr;
  underPointer_ = nullptr;
  index_.clear();
  root_->firstChild_ = nullptr;
  root_->lastChild_ = nullptr;
  root_->childCount_ = 0;
  nodes_.clear();
  OnNodesRemoved.Raise();
  if (hadSelection) OnSelectionChanged.Raise();
}

TreeNode* TreeView::Find(std::string_view key) const {
  const auto found = index_.find(shell::FoldCase(key));
  return found == index_.end() ? nullptr : found->second;
}

TreeNode* TreeView::Last() const {
  TreeNode* node = root_->lastChild_;
  while (node != nullptr && node->lastChild_ != nullptr) node = node->lastChild_;
  return node;
}

TreeNode* TreeView::FindLike(const shell::LikePattern& pattern, TreeNode* from) const {
  for (TreeNode* node = from == nullptr ? First() : from; node != nullptr; node = node->NextInOrder()) {
    if (pattern.Matches(node->Key())) return node;
  }
  return nullptr;
}

std::vector<TreeNode*> TreeView::AllLike(const shell::LikePattern& pattern) const {
  std::vector<TreeNode*> matching;
  for (TreeNode* node = First(); node != nullptr; node = node->NextInOrder()) {
    if (pattern.Matches(node->Key())) matching.push_back(node);
  }
  return matching;
}

void TreeView::SetSelectedNode(TreeNode* node) {
  if (selected_ == node) return;
  selected_ = node;
  OnSelectionChanged.Raise();
}

void TreeView::SetExpanded(TreeNode& node, bool expanded) {
  if (node.expanded_ == expanded) return;
  if (expanded) {
    if (node.firstChild_ == nullptr) return;
    const TreeNodeHandle expanding(&node);
    OnExpanding.Raise(node);
    if (expanding.Get() == nullptr || node.expanded_ || node.firstChild_ == nullptr) return;
  }
  node.expanded_ = expanded;
  OnNodeChanged.Raise(node);
  if (!expanded && selected_ != nullptr && selected_->IsWithin(node)) SetSelectedNode(&node);
}

void TreeView::EnsureVisible(TreeNode& node) {
  const TreeNodeHandle shown(&node);
  std::vector<TreeNodeHandle> around;
  for (TreeNode* parent = node.Parent(); parent != nullptr; parent = parent->Parent()) around.emplace_back(parent);
  for (auto parent = around.rbegin(); parent != around.rend(); ++parent) {
    if (parent->Get() != nullptr) SetExpanded(*parent->Get(), true);
  }
  if (shown.Get() != nullptr) OnEnsureVisible.Raise(node);
}

TreeNode* TreeView::HitTest(int x, int y) const {
  if (underPointer_ != nullptr) return underPointer_;
  return hitTest_ ? hitTest_(x, y) : nullptr;
}

bool TreeView::Click(TreeNode& node) {
  const TreeNodeHandle clicked(&node);
  {
    const PointerOver pointer(underPointer_, &node);
    if (!PressMouse({MouseButton::Left, {}})) return false;
    ReleaseMouse({MouseButton::Left, {}});
  }
  if (clicked.Get() == nullptr) return true;
  SetSelectedNode(&node);
  OnNodeClick.Raise(node);
  return true;
}

bool TreeView::RightClick(TreeNode* node) {
  const PointerOver pointer(underPointer_, node);
  if (!PressMouse({MouseButton::Right, {}})) return false;
  ReleaseMouse({MouseButton::Right, {}});
  return true;
}

bool TreeView::DoubleClick(TreeNode& node) {
  const TreeNodeHandle clicked(&node);
  if (!Click(node)) return false;
  if (clicked.Get() == nullptr) return true;
  SetExpanded(node, !node.Expanded());
  if (clicked.Get() != nullptr) OnDoubleClick.Raise(node);
  return true;
}

bool TreeView::ClickCheckBox(TreeNode& node) {
  const TreeNodeHandle clicked(&node);
  {
    const PointerOver pointer(underPointer_, &node);
    if (!PressMouse({MouseButton::Left, {}})) return false;
    if (clicked.Get() == nullptr) return true;
    node.SetChecked(!node.Checked());
    ReleaseMouse({MouseButton::Left, {}});
  }
  if (clicked.Get() != nullptr) OnNodeCheck.Raise(node);
  return true;
}

bool TreeView::Expand(TreeNode& node) {
  if (!BeginUserAction()) return false;
  SetExpanded(node, true);
  return true;
}

bool TreeView::Collapse(TreeNode& node) {
  if (!BeginUserAction()) return false;
  const TreeNode* const before = selected_;
  SetExpanded(node, false);
  if (selected_ != before) OnNodeClick.Raise(node);
  return true;
}

TreeNode* TreeView::NextShown(const TreeNode& node) {
  return node.expanded_ ? node.NextInOrder() : node.NextBehind();
}

TreeNode* TreeView::PreviousShown(const TreeNode& node) {
  if (node.previous_ == nullptr) return node.Parent();
  TreeNode* shown = node.previous_;
  while (shown->expanded_ && shown->lastChild_ != nullptr) shown = shown->lastChild_;
  return shown;
}

TreeNode* TreeView::LastShown() const {
  TreeNode* shown = root_->lastChild_;
  while (shown != nullptr && shown->expanded_ && shown->lastChild_ != nullptr) shown = shown->lastChild_;
  return shown;
}

bool TreeView::MoveSelection(TreeNode* node) {
  if (node == nullptr || node == selected_) return false;
  SetSelectedNode(node);
  OnEnsureVisible.Raise(*node);
  return true;
}

TreeNode* TreeView::NodeForKey(const KeyPress& press) const {
  if (press.key == Key::Home) return First();
  if (press.key == Key::End) return LastShown();
  if (selected_ == nullptr) return press.key == Key::Down ? First() : nullptr;
  if (press.key == Key::Up) return PreviousShown(*selected_);
  if (press.key == Key::Down) return NextShown(*selected_);
  if (press.key == Key::Left) return selected_->Parent();
  return press.key == Key::Right && selected_->expanded_ ? selected_->FirstChild() : nullptr;
}

bool TreeView::ActOnKey(const KeyPress& press) {
  if (selected_ != nullptr && press.key == Key::Left && selected_->expanded_) {
    SetExpanded(*selected_, false);
    return true;
  }
  if (selected_ != nullptr && press.key == Key::Right && !selected_->expanded_ && selected_->firstChild_ != nullptr) {
    SetExpanded(*selected_, true);
    return true;
  }
  if (selected_ != nullptr && press.key == Key::Space) {
    selected_->SetChecked(!selected_->Checked());
    OnNodeCheck.Raise(*selected_);
    return true;
  }
  return MoveSelection(NodeForKey(press));
}

}  // namespace qmrules::platform::widgets
