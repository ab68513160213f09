#include "desktop/views/treemodel.h"

#include <algorithm>

#include "desktop/views/qttext.h"

namespace qmrules::desktop {

using platform::widgets::TreeNode;
using platform::widgets::TreeView;

TreeModel::TreeModel(TreeView& tree) : tree_(tree) {
  if (tree.Images() != nullptr) {
    pictures_.emplace(*tree.Images());
    subscriptions_.push_back(pictures_->OnChanged.Subscribe([this] { TellAll(); }));
  }
  subscriptions_.push_back(tree.OnNodeAdded.Subscribe([this](TreeNode& node) { Added(node); }));
  subscriptions_.push_back(tree.OnNodeRemoving.Subscribe([this](TreeNode& node) { Removing(node); }));
  subscriptions_.push_back(tree.OnNodesRemoved.Subscribe([this] { Removed(); }));
  subscriptions_.push_back(tree.OnNodeChanged.Subscribe([this](TreeNode& node) {
    if (!rows_.contains(&node)) return;
    const QModelIndex index = IndexOf(&node);
    emit dataChanged(index, index);
  }));
}

TreeModel::~TreeModel() = default;

TreeNode* TreeModel::FirstChildOf(const TreeNode* parent) const {
  return parent == nullptr ? tree_.FirstRoot() : parent->FirstChild();
}

TreeModel::Siblings& TreeModel::ChildrenOf(const TreeNode* parent) const {
  const auto [found, isNew] = children_.try_emplace(parent);
  Siblings& siblings = found->second;
  if (!isNew) return siblings;
  if (parent != nullptr) siblings.reserve(parent->ChildCount());
  for (TreeNode* child = FirstChildOf(parent); child != nullptr; child = child->NextSibling()) {
    rows_[child] = static_cast<int>(siblings.size());
    siblings.push_back(child);
  }
  return siblings;
}

int TreeModel::RowOf(const TreeNode& node) const {
  const Siblings& siblings = ChildrenOf(node.Parent());
  const auto count = static_cast<std::ptrdiff_t>(siblings.size());
  int& seen = rows_[&node];
  const auto from = std::min<std::ptrdiff_t>(seen, count - 1);
  for (std::ptrdiff_t away = 0; away <= count; ++away) {
    for (const auto at : {from - away, from + away}) {
      if (at < 0 || at >= count || siblings[static_cast<std::size_t>(at)] != &node) continue;
      seen = static_cast<int>(at);
      return seen;
    }
  }
  return -1;
}

QModelIndex TreeModel::IndexOf(const TreeNode* node) const {
  if (node == nullptr) return {};
  const int row = RowOf(*node);
  return row < 0 ? QModelIndex() : createIndex(row, 0, node);
}

TreeNode* TreeModel::NodeAt(const QModelIndex& index) const {
  return static_cast<TreeNode*>(index.internalPointer());
}

QModelIndex TreeModel::index(int row, int column, const QModelIndex& parent) const {
  if (row < 0 || column != 0) return {};
  const Siblings& siblings = ChildrenOf(NodeAt(parent));
  const auto at = static_cast<std::size_t>(row);
  return at < siblings.size() ? createIndex(row, 0, siblings[at]) : QModelIndex();
}

QModelIndex TreeModel::parent(const QModelIndex& child) const {
  const TreeNode* const node = NodeAt(child);
  return node == nullptr ? QModelIndex() : IndexOf(node->Parent());
}

int TreeModel::rowCount(const QModelIndex& parent) const {
  return static_cast<int>(ChildrenOf(NodeAt(parent)).size());
}

int TreeModel::columnCount(const QModelIndex&) const {
  return 1;
}

bool TreeModel::hasChildren(const QModelIndex& parent) const {
  const TreeNode* const node = NodeAt(parent);
  const auto known = children_.find(node);
  return known == children_.end() ? FirstChildOf(node) != nullptr : !known->second.empty();
}

QVariant TreeModel::data(const QModelIndex& index, int role) const {
  const TreeNode* const node = NodeAt(index);
  if (node == nullptr) return {};
  switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
      return ToQt(node->Text());
    case Qt::DecorationRole: {
      const QIcon icon = pictures_ ? pictures_->Icon(node->Image()) : QIcon();
      return icon.isNull() ? QVariant() : QVariant(icon);
    }
    case Qt::CheckStateRole:
      return static_cast<int>(node->Checked() ? Qt::Checked : Qt::Unchecked);
    default:
      return {};
  }
}

// A check box is turned over by the tree itself, as its user.
Qt::ItemFlags TreeModel::flags(const QModelIndex& index) const {
  return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable : Qt::NoItemFlags;
}

void TreeModel::Added(TreeNode& node) {
  const TreeNode* const parent = node.Parent();
  const bool isOnly = node.NextSibling() == nullptr && node.PreviousSibling() == nullptr;
  if (!children_.contains(parent)) {
    // Nobody has asked for these children. But where there were none, the parent gets its sign.
    if (!isOnly || (parent != nullptr && !rows_.contains(parent))) return;
    children_.try_emplace(parent);
  }
  Siblings& siblings = ChildrenOf(parent);
  const int row = node.NextSibling() == nullptr ? static_cast<int>(siblings.size()) : RowOf(*node.NextSibling());
  beginInsertRows(IndexOf(parent), row, row);
  siblings.insert(siblings.begin() + row, &node);
  rows_[&node] = row;
  endInsertRows();
}

void TreeModel::Forget(const TreeNode& node) {
  const TreeNode* const behind = node.NextBehind();
  for (const TreeNode* below = &node; below != behind; below = below->NextInOrder()) {
    rows_.erase(below);
    children_.erase(below);
  }
}

void TreeModel::Removing(const TreeNode& node) {
  const TreeNode* const parent = node.Parent();
  const bool isOnly = node.NextSibling() == nullptr && node.PreviousSibling() == nullptr;
  const bool parentIsKnown = parent == nullptr || rows_.contains(parent);
  if (!children_.contains(parent) && (!isOnly || !parentIsKnown)) {
    Forget(node);
    return;
  }
  Siblings& siblings = ChildrenOf(parent);
  const int row = RowOf(node);
  beginRemoveRows(IndexOf(parent), row, row);
  siblings.erase(siblings.begin() + row);
  Forget(node);
  endRemoveRows();
}

// Clear tells of its nodes only once they are gone.
void TreeModel::Removed() {
  if (tree_.Count() == 0 && !rows_.empty()) Reset();
}

void TreeModel::Reset() {
  beginResetModel();
  children_.clear();
  rows_.clear();
  endResetModel();
}

void TreeModel::TellAll() {
  for (const auto& [parent, siblings] : children_) {
    if (siblings.empty()) continue;
    emit dataChanged(createIndex(0, 0, siblings.front()),
                     createIndex(static_cast<int>(siblings.size()) - 1, 0, siblings.back()), {Qt::DecorationRole});
  }
}

}  // namespace qmrules::desktop
