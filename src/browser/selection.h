#pragma once

#include <string>

#include "browser/browserservices.h"
#include "browser/objecttree.h"
#include "browser/selectedkeys.h"
#include "platform/keyedcollection.h"

namespace qmrules::browser {

// What bulk commands work on: IDs as text, each under "k" and itself.
struct SelectedIDs {
  platform::KeyedCollection<std::string> functions;
  platform::KeyedCollection<std::string> sets;
  platform::KeyedCollection<std::string> rules;
};

// The check marks of the tree together with the rules that a search has found.
class Selection {
 public:
  // Both outlive this.
  Selection(const BrowserServices& services, ObjectTree& tree, SelectedKeys& selectedKeys);

  // The functions, rule sets and rules that are checked, the rules of checked rule sets that have not been opened, and
  // the selected rules, each once. Throws Error when the repository fails.
  [[nodiscard]] SelectedIDs GetSelection() const;

  // Checks every node; unchecks every node and forgets the selected rules.
  void SelectAll();
  void UnselectAll();

  // Goes to the next selected rule, or to the previous one, around the ends: opens the rule set that it stands in and
  // shows it. Rules that are gone are dropped on the way. Does nothing without a selected rule. Throws Error when the
  // repository fails.
  void WalkSelected(bool forward);

 private:
  platform::widgets::TreeNode* Reach(const std::string& ruleKey);

  BrowserServices services_;
  ObjectTree& objects_;
  SelectedKeys& selectedKeys_;
  platform::widgets::TreeView& tree_;
};

}  // namespace qmrules::browser
