#include "browser/selection.h"

#include <vector>

#include "browser/nodes.h"
#include "catalogue/gateway.h"
#include "catalogue/nodekeys.h"
#include "platform/widgets/treenodehandle.h"

namespace qmrules::browser {

using catalogue::AddKeyed;
using platform::BusyCursor;
using platform::widgets::TreeNode;
using platform::widgets::TreeNodeHandle;

namespace {

void AddRulesOfSets(const BrowserServices& services, catalogue::IDList& setIDs,
                    platform::KeyedCollection<std::string>& rules) {
  const auto fetch = catalogue::NewQuery(services.Repository());
  const auto rule = fetch->AddObject(false, catalogue::kRule, "ID");
  const auto has = fetch->AddRelation("Has", false, "", rule);
  fetch->SetRoot(fetch->AddObject(true, catalogue::kRuleSet, "", "ID in " + setIDs.Text(), has));
  for (fetch->Execute(services.ProjectKey()); !fetch->Eof(); fetch->MoveNext()) {
    AddKeyed(rules, fetch->Row().Item("ID").Text());
  }
  setIDs.Clear();
}

}  // namespace

Selection::Selection(const BrowserServices& services, ObjectTree& tree, SelectedKeys& selectedKeys)
    : services_(services), objects_(tree), selectedKeys_(selectedKeys), tree_(services.widgets.tvObjects) {}

SelectedIDs Selection::GetSelection() const {
  const BusyCursor busy(services_.pointer);
  SelectedIDs selection;
  catalogue::IDList unopened;
  for (const TreeNode* node = tree_.First(); node != nullptr; node = node->NextInOrder()) {
    if (node->Key().empty() || !node->Checked()) continue;
    const std::int32_t id = NodeID(*node);
    if (IsRule(*node)) {
      AddKeyed(selection.rules, std::to_string(id));
    } else if (IsFunction(*node)) {
      AddKeyed(selection.functions, std::to_string(id));
    } else {
      AddKeyed(selection.sets, std::to_string(id));
      if (HasPlaceholder(*node)) unopened.Add(id);
      if (unopened.IsFull()) AddRulesOfSets(services_, unopened, selection.rules);
    }
  }
  if (!unopened.Empty()) AddRulesOfSets(services_, unopened, selection.rules);
  for (const std::string& key : selectedKeys_.Rules()) {
    AddKeyed(selection.rules, std::to_string(catalogue::NodeKeyID(catalogue::kRule, key)));
  }
  return selection;
}

void Selection::SelectAll() {
  for (TreeNode* node = tree_.First(); node != nullptr; node = node->NextInOrder()) node->SetChecked(true);
}

void Selection::UnselectAll() {
  for (TreeNode* node = tree_.First(); node != nullptr; node = node->NextInOrder()) node->SetChecked(false);
  selectedKeys_.Clear();
}

void Selection::WalkSelected(bool forward) {
  if (selectedKeys_.Empty()) return;
  const BusyCursor busy(services_.pointer);
  TreeNode* node = nullptr;
  while (node == nullptr && !selectedKeys_.Empty()) {
    const std::string ruleKey = selectedKeys_.Step(forward);
    node = Reach(ruleKey);
    if (node == nullptr) selectedKeys_.DropStepped(ruleKey, forward);
  }
  if (node == nullptr) return;
  const TreeNodeHandle reached(node);
  tree_.EnsureVisible(*node);
  if (reached.Get() != nullptr) objects_.SelectAndShow(*node);
}

// The rule's node, for which its rule set is opened when need be; nullptr when there is none.
TreeNode* Selection::Reach(const std::string& ruleKey) {
  if (TreeNode* const node = tree_.Find(ruleKey)) return node;
  const std::string* const setKey = selectedKeys_.SetOf(ruleKey);
  const TreeNodeHandle set(setKey == nullptr ? nullptr : tree_.Find(*setKey));
  if (set.Get() == nullptr) return nullptr;
  tree_.SetExpanded(*set.Get(), true);
  if (set.Get() == nullptr) return nullptr;
  std::vector<TreeNode*> selected;
  for (TreeNode* rule = set.Get()->FirstChild(); rule != nullptr; rule = rule->NextSibling()) {
    if (selectedKeys_.Contains(rule->Key())) selected.push_back(rule);
  }
  for (TreeNode* rule : selected) {
    rule->SetChecked(true);
    objects_.CheckChanged(*rule);
  }
  return tree_.Find(ruleKey);
}

}  // namespace qmrules::browser
