#pragma once

#include <QAbstractItemModel>
#include <optional>
#include <unordered_map>
#include <vector>

#include "desktop/views/pictures.h"
#include "platform/event.h"
#include "platform/widgets/treeview.h"

namespace qmrules::desktop {

// The nodes of a tree as an item model of one column. Children are looked at when Qt first asks for them, so a closed
// node costs nothing. Each change of the tree is handed on as that one change.
//
// Qt asks for rows by number, while a node knows only its neighbours. So the children of a node that Qt has asked for
// stand in a list, and each of them remembers the row where it was last seen: a change among the siblings moves it by
// one, so the search from there ends after a step or two.
class TreeModel final : public QAbstractItemModel {
 public:
  // `tree` outlives this.
  explicit TreeModel(platform::widgets::TreeView& tree);
  ~TreeModel() override;

  QModelIndex IndexOf(const platform::widgets::TreeNode* node) const;
  // The node at the index; nullptr for the invalid one.
  platform::widgets::TreeNode* NodeAt(const QModelIndex& index) const;

  QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
  QModelIndex parent(const QModelIndex& child) const override;
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  bool hasChildren(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  using Siblings = std::vector<platform::widgets::TreeNode*>;

  Siblings& ChildrenOf(const platform::widgets::TreeNode* parent) const;
  platform::widgets::TreeNode* FirstChildOf(const platform::widgets::TreeNode* parent) const;
  int RowOf(const platform::widgets::TreeNode& node) const;
  void Added(platform::widgets::TreeNode& node);
  void Removing(const platform::widgets::TreeNode& node);
  void Removed();
  void Forget(const platform::widgets::TreeNode& node);
  void Reset();
  void TellAll();

  platform::widgets::TreeView& tree_;
  std::optional<Pictures> pictures_;
  mutable std::unordered_map<const platform::widgets::TreeNode*, Siblings> children_;  // by parent; nullptr: top level
  mutable std::unordered_map<const platform::widgets::TreeNode*, int> rows_;           // where last seen
  std::vector<platform::Subscription> subscriptions_;
};

}  // namespace qmrules::desktop
