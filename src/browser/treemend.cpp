#include "browser/treemend.h"

#include <functional>
#include <optional>
#include <utility>

#include "browser/nodes.h"
#include "browser/rulenodes.h"
#include "catalogue/gateway.h"
#include "catalogue/nodekeys.h"

namespace qmrules::browser {

using catalogue::IDField;
using platform::BusyCursor;
using platform::widgets::NewNode;
using platform::widgets::TreeNode;
using platform::widgets::TreeRelation;

namespace {

// Hands the IDs on in lists that a filter can take.
void ForEachList(const std::unordered_set<std::int32_t>& ids, const std::function<void(const std::string&)>& take) {
  catalogue::IDList list;
  for (const std::int32_t id : ids) {
    list.Add(id);
    if (!list.IsFull()) continue;
    take(list.Text());
    list.Clear();
  }
  if (!list.Empty()) take(list.Text());
}

// True for a rule set whose rules have been read, also when there were none.
bool RulesAreRead(const TreeNode& set) {
  return set.FirstChild() == nullptr ? set.Expanded() : !HasPlaceholder(set);
}

}  // namespace

TreeMend::TreeMend(const BrowserServices& services, ObjectTree& tree, SelectedOnly& selectedOnly)
    : services_(services), objects_(tree), selectedOnly_(selectedOnly), tree_(services.widgets.tvObjects) {}

std::unordered_set<std::string> TreeMend::Mend(const std::vector<std::string>& objectKeys) {
  const BusyCursor busy(services_.pointer);
  std::unordered_map<std::string, IDs> changed;
  for (const std::string& key : objectKeys) {
    const auto object = catalogue::SplitKey(key);
    changed[object.entity].insert(object.id);
  }
  IDs functions = changed[std::string(catalogue::kBusinessFunction)];
  IDs sets = changed[std::string(catalogue::kRuleSet)];
  AddFunctionsOfCalls(changed[std::string(catalogue::kRuleSetCall)], functions);
  AddSetsOfRules(changed[std::string(catalogue::kRule)], sets);
  for (const std::int32_t set : sets) {
    for (const TreeNode* const node : objects_.Index().Occurrences(catalogue::kRuleSet, set)) {
      functions.insert(NodeID(*node->Parent()));
    }
  }
  MendFunctions(functions);
  MendRuleSets(sets);

  std::unordered_set<std::string> mended;
  for (const std::int32_t id : functions) mended.insert(catalogue::MakeKey(catalogue::kBusinessFunction, id));
  for (const std::int32_t id : sets) mended.insert(catalogue::MakeKey(catalogue::kRuleSet, id));
  return mended;
}

void TreeMend::MendAll() {
  const BusyCursor busy(services_.pointer);
  IDs functions;
  for (const TreeNode* node = tree_.FirstRoot(); node != nullptr; node = node->NextSibling()) {
    functions.insert(NodeID(*node));
  }
  const auto fetch = catalogue::NewQuery(services_.Repository());
  fetch->SetRoot(fetch->AddObject(true, catalogue::kBusinessFunction, "ID"));
  for (fetch->Execute(services_.ProjectKey()); !fetch->Eof(); fetch->MoveNext()) {
    functions.insert(IDField(fetch->Row(), "ID"));
  }
  MendFunctions(functions);

  IDs sets;
  for (const TreeNode* node = tree_.First(); node != nullptr; node = node->NextInOrder()) {
    if (IsRuleSet(*node) && RulesAreRead(*node)) sets.insert(NodeID(*node));
  }
  MendRuleSets(sets);
}

void TreeMend::AddFunctionsOfCalls(const IDs& calls, IDs& functions) const {
  ForEachList(calls, [&](const std::string& ids) {
    const auto fetch = catalogue::NewQuery(services_.Repository());
    const auto call = fetch->AddObject(false, catalogue::kRuleSetCall, "", "ID in " + ids);
    const auto triggers = fetch->AddRelation("Triggers", false, "", call);
    fetch->SetRoot(fetch->AddObject(false, catalogue::kBusinessFunction, "ID", {}, triggers));
    for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) functions.insert(IDField(fetch->Row(), "ID"));
  });
}

void TreeMend::AddSetsOfRules(const IDs& rules, IDs& sets) const {
  ForEachList(rules, [&](const std::string& ids) {
    const auto fetch = catalogue::NewQuery(services_.Repository());
    const auto rule = fetch->AddObject(false, catalogue::kRule, "", "ID in " + ids);
    const auto has = fetch->AddRelation("Has", false, "", rule);
    fetch->SetRoot(fetch->AddObject(false, catalogue::kRuleSet, "ID", {}, has));
    for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) sets.insert(IDField(fetch->Row(), "ID"));
  });
}

void TreeMend::ReadFunctions(const std::string& ids, std::unordered_map<std::int32_t, std::string>& names) const {
  const auto fetch = catalogue::NewQuery(services_.Repository());
  fetch->SetRoot(fetch->AddObject(true, catalogue::kBusinessFunction, "Name:FuncName,ID:FuncID", "ID in " + ids));
  for (fetch->Execute(services_.ProjectKey()); !fetch->Eof(); fetch->MoveNext()) {
    names.emplace(IDField(fetch->Row(), "FuncID"), fetch->Row().Item("FuncName").Text());
  }
}

// A rule set that a function calls twice stands at its first call.
void TreeMend::ReadRuleSets(const std::string& ids, WantedChildren& wanted) const {
  std::unordered_set<std::string> met;
  const auto fetch = catalogue::NewQuery(services_.Repository());
  const auto rules = fetch->AddCount("Has", false, "Children");
  const auto set = fetch->AddObject(true, catalogue::kRuleSet, "Name:SetName,ID:SetID", {}, rules);
  const auto refers = fetch->AddRelation("Refers", false, "", set);
  const auto call = fetch->AddObject(false, catalogue::kRuleSetCall, ">SeqNo", {}, refers);
  const auto triggers = fetch->AddRelation("Triggers", false, "", call);
  fetch->SetRoot(fetch->AddObject(true, catalogue::kBusinessFunction, "ID:FuncID", "ID in " + ids, triggers));
  for (fetch->Execute(services_.ProjectKey()); !fetch->Eof(); fetch->MoveNext()) {
    const auto& row = fetch->Row();
    const std::int32_t functionID = IDField(row, "FuncID");
    Wanted child{
        RuleSetNode(functionID, IDField(row, "SetID"), row.Item("SetName").Text(), row.Item("SeqNo").Value().Integer()),
        row.Item("Children").Value().Integer() > 0};
    if (met.insert(child.content.key).second) wanted[functionID].push_back(std::move(child));
  }
}

// Everything is read before a node is changed.
void TreeMend::MendFunctions(const IDs& functions) {
  std::unordered_map<std::int32_t, std::string> names;
  WantedChildren wanted;
  ForEachList(functions, [&](const std::string& ids) {
    ReadFunctions(ids, names);
    ReadRuleSets(ids, wanted);
  });
  for (const std::int32_t id : functions) {
    const auto name = names.find(id);
    if (name == names.end()) {
      if (TreeNode* const gone = tree_.Find(catalogue::FunctionNodeKey(id))) tree_.Remove(*gone);
    } else if (TreeNode* const node = FunctionNodeOf(id, name->second)) {
      BringInLine(*node, wanted[id]);
    }
  }
}

TreeNode* TreeMend::FunctionNodeOf(std::int32_t functionID, const std::string& name) {
  TreeNode* const node = tree_.Find(catalogue::FunctionNodeKey(functionID));
  if (node != nullptr) {
    node->SetText(name);
    return node;
  }
  return selectedOnly_.IsOn() ? nullptr : tree_.Add(FunctionNode(functionID, name));
}

void TreeMend::MendRuleSets(const IDs& sets) {
  std::vector<TreeNode*> nodes;
  for (const std::int32_t id : sets) {
    for (TreeNode* const node : objects_.Index().Occurrences(catalogue::kRuleSet, id)) {
      if (RulesAreRead(*node)) nodes.push_back(node);
    }
  }
  RulesOfSets rules = ReadRules(services_.FE, nodes);
  for (TreeNode* const node : nodes) {
    const std::int32_t functionID = NodeID(*node->Parent());
    std::vector<Wanted> wanted;
    for (const RuleRow& rule : rules[NodeID(*node)]) {
      wanted.push_back({RuleNode(functionID, rule.id, rule.ruleName, rule.seqNo)});
    }
    BringInLine(*node, wanted);
  }
}

void TreeMend::RemoveAllBut(TreeNode& parent, const std::vector<Wanted>& wanted) {
  std::unordered_set<std::string> keys;
  for (const Wanted& child : wanted) keys.insert(child.content.key);
  for (TreeNode* child = parent.FirstChild(); child != nullptr;) {
    TreeNode* const next = child->NextSibling();
    if (!child->Key().empty() && !keys.contains(child->Key())) tree_.Remove(*child);
    child = next;
  }
}

// Goes through the children in the wanted order with `place` on the first one that has not had its turn. A child in the
// way of the next one is taken out until its turn comes; so one child that moved, up or down, is all that is touched.
void TreeMend::BringInLine(TreeNode& parent, const std::vector<Wanted>& wanted) {
  RemoveAllBut(parent, wanted);
  std::unordered_map<std::string, bool> takenOut;  // key, checked
  std::string selected;
  const auto takeOut = [&](TreeNode& node) {
    takenOut.emplace(node.Key(), node.Checked());
    if (tree_.SelectedNode() != nullptr && tree_.SelectedNode()->IsWithin(node)) selected = node.Key();
    tree_.Remove(node);
  };

  const std::string currentBefore = services_.host.CurrentNode() == nullptr ? "" : services_.host.CurrentNode()->Key();
  TreeNode* place = parent.FirstChild();
  for (const Wanted& child : wanted) {
    TreeNode* node = tree_.Find(child.content.key);
    if (node != nullptr && node != place && place != nullptr && place->NextSibling() == node) {
      takeOut(*place);
      place = node;
    }
    if (node != nullptr && node != place) {
      takeOut(*node);
      node = nullptr;
    }
    if (node != nullptr) {
      place = node->NextSibling();
    } else if (const auto taken = takenOut.find(child.content.key); taken != takenOut.end()) {
      node = PutBefore(place, parent, child, taken->second);
    } else if (!selectedOnly_.IsOn()) {
      node = PutBefore(place, parent, child, parent.Checked());
    }
    if (node == nullptr) continue;
    node->SetText(child.content.text);
    node->SetTag(child.content.tag);
    if (IsRuleSet(*node)) MendPlaceholder(*node, child.hasRules);
  }

  if (selected.empty()) return;
  TreeNode* const again = tree_.Find(selected);
  if (again == nullptr) return;
  tree_.SetSelectedNode(again);
  if (currentBefore == selected) {
    services_.host.ReplaceCurrentNode(*again);
  } else {
    services_.host.ShowNode(again);
  }
}

TreeNode* TreeMend::PutBefore(TreeNode* place, TreeNode& parent, const Wanted& wanted, bool checked) {
  NewNode content = wanted.content;
  content.checked = checked;
  return place == nullptr ? tree_.Add(std::move(content), &parent)
                          : tree_.Add(std::move(content), place, TreeRelation::tvwPrevious);
}

void TreeMend::MendPlaceholder(TreeNode& set, bool hasRules) {
  if (!hasRules && HasOnlyPlaceholder(set)) tree_.Remove(*set.FirstChild());
  if (hasRules && set.FirstChild() == nullptr && !set.Expanded()) AddPlaceholder(tree_, set, services_.texts);
}

}  // namespace qmrules::browser
