#include "browser/selectedonly.h"

#include <vector>

#include "browser/nodes.h"
#include "catalogue/gateway.h"
#include "catalogue/nodekeys.h"
#include "platform/widgets/treenodehandle.h"

namespace qmrules::browser {

using catalogue::IDField;
using platform::BusyCursor;
using platform::widgets::TreeNode;
using platform::widgets::TreeNodeHandle;

SelectedOnly::SelectedOnly(const BrowserServices& services, ObjectTree& tree, SelectedKeys& selectedKeys)
    : services_(services),
      objects_(tree),
      selectedKeys_(selectedKeys),
      tree_(services.widgets.tvObjects),
      faces_(services) {}

void SelectedOnly::Toggle() {
  if (IsOn()) {
    TurnOff();
  } else {
    TurnOn();
  }
}

void SelectedOnly::TurnOn() {
  const BusyCursor busy(services_.pointer);
  LoadCheckedRuleSets();
  Keys kept = CheckedKeys();
  AddPlacesOfSelected(kept);
  faces_.SetChecked("Selected", true);
  RemoveAllBut(kept);
  services_.host.ShowNode(tree_.SelectedNode());
  faces_.SetEnabled("Selected", true);  // also in a tree that is empty now
}

void SelectedOnly::TurnOff() {
  objects_.LoadTree();
  ClearMark();
  services_.host.RefreshEmphasis();
}

void SelectedOnly::LoadCheckedRuleSets() {
  std::vector<TreeNode*> sets;
  for (TreeNode* node = tree_.First(); node != nullptr; node = node->NextInOrder()) {
    if (IsRuleSet(*node) && node->Checked() && HasPlaceholder(*node)) sets.push_back(node);
  }
  objects_.LoadRules(sets, [](const TreeNode&, const std::string&) { return true; });
}

SelectedOnly::Keys SelectedOnly::CheckedKeys() const {
  Keys keys;
  for (TreeNode* node = tree_.First(); node != nullptr; node = node->NextInOrder()) {
    if (!node->Checked() || node->Key().empty()) continue;
    for (const TreeNode* around = node; around != nullptr; around = around->Parent()) keys.insert(around->Key());
  }
  return keys;
}

void SelectedOnly::AddPlacesOfSelected(Keys& kept) const {
  catalogue::IDList list;
  for (const std::string& key : selectedKeys_.Rules()) {
    list.Add(catalogue::NodeKeyID(catalogue::kRule, key));
    if (!list.IsFull()) continue;
    AddPlacesOf(list.Text(), kept);
    list.Clear();
  }
  if (!list.Empty()) AddPlacesOf(list.Text(), kept);
}

// Keeps the rule sets and functions that the rules stand under.
void SelectedOnly::AddPlacesOf(const std::string& ruleIDs, Keys& kept) const {
  const auto fetch = catalogue::NewQuery(services_.Repository());
  const auto rule = fetch->AddObject(false, catalogue::kRule, "", "ID in " + ruleIDs);
  const auto has = fetch->AddRelation("Has", false, "", rule);
  const auto set = fetch->AddObject(false, catalogue::kRuleSet, "ID:SetID", {}, has);
  const auto refers = fetch->AddRelation("Refers", false, "", set);
  const auto call = fetch->AddObject(false, catalogue::kRuleSetCall, "", {}, refers);
  const auto triggers = fetch->AddRelation("Triggers", false, "", call);
  fetch->SetRoot(fetch->AddObject(false, catalogue::kBusinessFunction, "ID:FuncID", {}, triggers));
  for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) {
    const std::int32_t functionID = IDField(fetch->Row(), "FuncID");
    kept.insert(catalogue::FunctionNodeKey(functionID));
    kept.insert(catalogue::RuleSetNodeKey(functionID, IDField(fetch->Row(), "SetID")));
  }
}

void SelectedOnly::RemoveAllBut(const Keys& kept) {
  const TreeNodeHandle selected(tree_.SelectedNode());
  TreeNode* node = tree_.Last();
  while (node != nullptr) {
    TreeNode* const before = node->PreviousInOrder();
    const TreeNode* const parent = node->Parent();
    const bool isPlaceholder = node->Tag().empty() && parent != nullptr && kept.contains(parent->Key());
    if (!kept.contains(node->Key()) && !isPlaceholder) tree_.Remove(*node);
    node = before;
  }
  if (selected.Get() == nullptr) tree_.SetSelectedNode(tree_.First());
}

}  // namespace qmrules::browser
