#include "browser/treeload.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "browser/nodes.h"
#include "browser/rulenodes.h"
#include "catalogue/gateway.h"
#include "catalogue/nodekeys.h"

namespace qmrules::browser {

using catalogue::IDField;
using platform::widgets::NewNode;
using platform::widgets::TreeNode;
using platform::widgets::TreeRelation;

namespace {

// From here on a list of the known rule sets would be too long for a filter.
constexpr std::size_t kManySets = 1000;

// Reports the functions as steps of the progress display; what is left of the total comes with the last step.
class FunctionSteps {
 public:
  FunctionSteps(platform::Progress& progress, int total) : progress_(progress), left_(total) {}

  void Enter(const std::string& name) {
    if (current_ == name) return;
    Finish(std::min(left_, 1));
    current_ = name;
    progress_.StartStep(name);
  }
  void FinishLast() { Finish(left_); }

 private:
  void Finish(int amount) {
    if (!current_) return;
    progress_.FinishStep(amount);
    left_ -= amount;
  }

  platform::Progress& progress_;
  int left_;
  std::optional<std::string> current_;
};

}  // namespace

TreeLoad::TreeLoad(const BrowserServices& services, bool keepsNodes)
    : services_(services), pauses_(services.progress), tree_(services.widgets.tvObjects), keepsNodes_(keepsNodes) {
  const auto fetch = catalogue::NewQuery(services_.Repository());
  fetch->SetRoot(fetch->AddObject(true, catalogue::kBusinessFunction, ">Name:FuncName,ID:FuncID"));
  for (fetch->Execute(services_.ProjectKey()); !fetch->Eof(); fetch->MoveNext()) {
    pauses_.Turn();
    functions_.push_back({IDField(fetch->Row(), "FuncID"), fetch->Row().Item("FuncName").Text()});
  }
}

void TreeLoad::Read(bool reportsSteps) {
  ReadRuleSets(reportsSteps);
  if (keepsNodes_) ReadOpenRules();
  ReadForeignSets();
}

void TreeLoad::ReadRuleSets(bool reportsSteps) {
  const auto fetch = catalogue::NewQuery(services_.Repository());
  const auto rules = fetch->AddCount("Has", false, "Children");
  const auto set = fetch->AddObject(true, catalogue::kRuleSet, "Name:SetName,ID:SetID", {}, rules);
  const auto refers = fetch->AddRelation("Refers", false, "", set);
  const auto call = fetch->AddObject(false, catalogue::kRuleSetCall, ">SeqNo", {}, refers);
  const auto triggers = fetch->AddRelation("Triggers", false, "", call);
  fetch->SetRoot(fetch->AddObject(true, catalogue::kBusinessFunction, ">Name:FuncName,ID:FuncID", {}, triggers));

  FunctionSteps steps(services_.progress, Steps());
  for (fetch->Execute(services_.ProjectKey()); !fetch->Eof(); fetch->MoveNext()) {
    pauses_.Turn();
    if (reportsSteps) steps.Enter(fetch->Row().Item("FuncName").Text());
    ReadRow(fetch->Row());
  }
  steps.FinishLast();
}

void TreeLoad::ReadRow(const platform::FetchRow& row) {
  RuleSet set{IDField(row, "FuncID"), IDField(row, "SetID"), row.Item("SetName").Text(),
              row.Item("SeqNo").Value().Integer(), row.Item("Children").Value().Integer() > 0};
  if (isKnown_.insert(set.id).second) knownSets_.push_back(set.id);
  if (met_.insert(catalogue::RuleSetNodeKey(set.functionID, set.id)).second) ruleSets_.push_back(std::move(set));
}

void TreeLoad::ReadOpenRules() {
  for (const RuleSet& set : ruleSets_) {
    TreeNode* const node = NodeOf(set);
    if (node != nullptr && node->FirstChild() != nullptr && IsRule(*node->FirstChild())) openSets_.push_back(node);
  }
  openRules_ = ReadRules(services_.FE, openSets_);
}

void TreeLoad::ReadForeignSets() {
  const bool filters = knownSets_.size() < kManySets;
  catalogue::IDList known;
  if (filters) {
    for (const std::int32_t id : knownSets_) known.Add(id);
  }
  const auto fetch = catalogue::NewQuery(services_.Repository());
  const platform::Filter filter = filters ? platform::Filter("~ID in " + known.Text()) : platform::Filter();
  fetch->SetRoot(fetch->AddObject(false, catalogue::kRuleSet, "ID", filter));
  for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) {
    pauses_.Turn();
    const std::int32_t id = IDField(fetch->Row(), "ID");
    if (!isKnown_.contains(id)) foreignSets_.Add(id, catalogue::RuleSetRowKey(id));
  }
}

TreeNode* TreeLoad::NodeOf(const RuleSet& set) const {
  return tree_.Find(catalogue::RuleSetNodeKey(set.functionID, set.id));
}

void TreeLoad::Apply() {
  if (!keepsNodes_) tree_.Clear();
  AddFunctions();
  AddRuleSets();
  ExchangeRules();
}

// A function that was missing goes behind the one that is before it by name.
void TreeLoad::AddFunctions() {
  TreeNode* before = nullptr;
  for (const Function& function : functions_) {
    pauses_.Turn();
    TreeNode* node = tree_.Find(catalogue::FunctionNodeKey(function.id));
    if (node == nullptr) {
      TreeNode* const beside = before == nullptr ? tree_.FirstRoot() : before;
      node = tree_.Add(FunctionNode(function.id, function.name), beside,
                       before == nullptr ? TreeRelation::tvwPrevious : TreeRelation::tvwNext);
    }
    before = node;
  }
}

// The numbers of those that stand come first: they may have changed while others were hidden.
void TreeLoad::AddRuleSets() {
  for (const RuleSet& set : ruleSets_) {
    if (TreeNode* const standing = NodeOf(set)) SetSequence(*standing, set.seqNo);
  }
  TreeNode* last = nullptr;
  for (const RuleSet& set : ruleSets_) {
    pauses_.Turn();
    TreeNode* node = NodeOf(set);
    if (node == nullptr) node = AddRuleSet(set, last);
    if (node == nullptr) continue;
    if (node->FirstChild() == nullptr && set.hasRules) {
      node->SetExpanded(false);
      AddPlaceholder(tree_, *node, services_.texts);
    }
    last = node;
  }
}

// The rule sets of a function come in sequence: the place is not before `last`, the one that came before this one.
TreeNode* TreeLoad::AddRuleSet(const RuleSet& set, TreeNode* last) {
  TreeNode* const function = tree_.Find(catalogue::FunctionNodeKey(set.functionID));
  if (function == nullptr) return nullptr;  // made by another process since the functions were read
  const bool follows = last != nullptr && last->Parent() == function;
  TreeNode* behind = follows ? last->NextSibling() : function->FirstChild();
  while (behind != nullptr && SequenceOf(*behind) <= set.seqNo) behind = behind->NextSibling();
  NewNode content = RuleSetNode(set.functionID, set.id, set.name, set.seqNo);
  return behind == nullptr ? tree_.Add(std::move(content), function)
                           : tree_.Add(std::move(content), behind, TreeRelation::tvwPrevious);
}

void TreeLoad::ExchangeRules() {
  for (TreeNode* const set : openSets_) {
    std::unordered_set<std::string> checked;
    while (TreeNode* const rule = set->FirstChild()) {
      if (rule->Checked()) checked.insert(rule->Key());
      tree_.Remove(*rule);
    }
    AddRules(tree_, *set, openRules_, [&](const std::string& ruleKey) { return checked.contains(ruleKey); });
  }
}

}  // namespace qmrules::browser
