#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "browser/browserservices.h"
#include "browser/commandfaces.h"
#include "browser/nodeindex.h"
#include "browser/selectedkeys.h"
#include "platform/event.h"
#include "platform/keyedcollection.h"
#include "platform/widgets/treeview.h"

namespace qmrules::browser {

// The tree of the catalogue: the business functions of the project, their rule sets in sequence, and the rules of each
// rule set in sequence, which are read when the rule set is opened for the first time.
class ObjectTree {
 public:
  // For an empty tree. `selectedKeys` outlives this.
  ObjectTree(const BrowserServices& services, SelectedKeys& selectedKeys);
  ObjectTree(const ObjectTree&) = delete;
  ObjectTree& operator=(const ObjectTree&) = delete;

  // Fills the tree from the repository and shows the node that was selected, when it is still there, else the first
  // one. While Selected Only is marked, what stands in the tree stays, with its checks, and what is missing is added;
  // otherwise the tree begins empty. Throws Error, with the tree, the commands, the panes and the foreign sets as they
  // were, when the repository fails.
  void LoadTree();

  // Makes the node the selected one and shows it. It may have left the tree afterwards.
  void SelectAndShow(platform::widgets::TreeNode& node);

  // Puts the rules of these rule sets, of which each has a placeholder, in the placeholders' places. `isChecked` tells
  // the check mark of a rule from its rule set's node and its own key. Throws Error, with the tree as it was, when the
  // repository fails.
  using CheckOfRule = std::function<bool(const platform::widgets::TreeNode& set, const std::string& ruleKey)>;
  void LoadRules(const std::vector<platform::widgets::TreeNode*>& sets, const CheckOfRule& isChecked);

  // Hands the node's check mark on to all below it. What is not checked any more is not selected either.
  void CheckChanged(platform::widgets::TreeNode& node);

  // The rule sets of the repository that the last load did not put into the tree, since no function of this project
  // triggers them: the IDs, each under its row key.
  const platform::KeyedCollection<std::int32_t>& ForeignSets() const { return foreignSets_; }
  bool IsForeign(std::int32_t setID) const;

  // The nodes of all rule sets and rules.
  const NodeIndex& Index() const { return index_; }

 private:
  void Expanding(platform::widgets::TreeNode& node);
  void ClearLists();

  BrowserServices services_;
  SelectedKeys& selectedKeys_;
  platform::widgets::TreeView& tree_;
  CommandFaces faces_;
  NodeIndex index_;
  platform::KeyedCollection<std::int32_t> foreignSets_;
  platform::Subscription expanding_;
};

}  // namespace qmrules::browser
