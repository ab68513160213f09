#include "browser/rulenodes.h"

#include <unordered_set>
#include <utility>

#include "browser/nodes.h"
#include "catalogue/gateway.h"

namespace qmrules::browser {

using catalogue::IDField;
using platform::widgets::NewNode;
using platform::widgets::TreeNode;

namespace {

void ReadRulesOf(platform::FrontEnd& frontEnd, const catalogue::IDList& setIDs, RulesOfSets& rules) {
  const auto fetch = catalogue::NewQuery(frontEnd.Repository());
  const auto rule = fetch->AddObject(false, catalogue::kRule, "ID:RuleID,RuleName,>SeqNo");
  const auto has = fetch->AddRelation("Has", false, "", rule);
  fetch->SetRoot(fetch->AddObject(true, catalogue::kRuleSet, "ID:SetID", "ID in " + setIDs.Text(), has));
  for (fetch->Execute(frontEnd.ProjectObject()->ObjectID()); !fetch->Eof(); fetch->MoveNext()) {
    const auto& row = fetch->Row();
    rules[IDField(row, "SetID")].push_back(
        {IDField(row, "RuleID"), row.Item("RuleName").Text(), row.Item("SeqNo").Value().Integer()});
  }
}

}  // namespace

RulesOfSets ReadRules(platform::FrontEnd& frontEnd, const std::vector<TreeNode*>& sets) {
  RulesOfSets rules;
  catalogue::IDList list;
  std::unordered_set<std::int32_t> listed;
  for (const TreeNode* set : sets) {
    if (const std::int32_t id = NodeID(*set); listed.insert(id).second) list.Add(id);
    if (!list.IsFull()) continue;
    ReadRulesOf(frontEnd, list, rules);
    list.Clear();
  }
  if (!list.Empty()) ReadRulesOf(frontEnd, list, rules);
  return rules;
}

void AddRules(platform::widgets::TreeView& tree, TreeNode& set, const RulesOfSets& rules,
              const std::function<bool(const std::string& ruleKey)>& isChecked) {
  const auto found = rules.find(NodeID(set));
  if (found == rules.end()) return;
  const std::int32_t functionID = NodeID(*set.Parent());
  for (const RuleRow& rule : found->second) {
    NewNode content = RuleNode(functionID, rule.id, rule.ruleName, rule.seqNo);
    content.checked = isChecked(content.key);
    tree.Add(std::move(content), &set);
  }
}

}  // namespace qmrules::browser
