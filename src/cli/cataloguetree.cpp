#include "cli/cataloguetree.h"

#include <unordered_set>

#include "catalogue/gateway.h"

namespace qmrules::cli {

using catalogue::IDField;
using catalogue::kBusinessFunction;
using catalogue::kRule;
using catalogue::kRuleSet;
using catalogue::kRuleSetCall;

namespace {

void ReadFunctions(platform::Repository& repository, const std::string& project, CatalogueTree& tree) {
  const auto fetch = catalogue::NewQuery(repository);
  fetch->SetRoot(fetch->AddObject(true, kBusinessFunction, "ID,>Name"));
  for (fetch->Execute(project); !fetch->Eof(); fetch->MoveNext()) {
    tree.functions.push_back({IDField(fetch->Row(), "ID"), fetch->Row().Item("Name").Text(), {}});
  }
}

// Gives the IDs of the rule sets that some function triggers.
std::unordered_set<std::int32_t> ReadTriggeredSets(platform::Repository& repository, const std::string& project,
                                                   CatalogueTree& tree) {
  std::unordered_map<std::int32_t, ListedFunction*> functionOf;
  for (auto& function : tree.functions) functionOf[function.id] = &function;
  std::unordered_set<std::int32_t> triggered;
  const auto fetch = catalogue::NewQuery(repository);
  const auto set = fetch->AddObject(true, kRuleSet, "ID:SetID,Name:SetName");
  const auto refers = fetch->AddRelation("Refers", false, "", set);
  const auto call = fetch->AddObject(false, kRuleSetCall, ">SeqNo:CallSeqNo", {}, refers);
  const auto triggers = fetch->AddRelation("Triggers", false, "", call);
  fetch->SetRoot(fetch->AddObject(true, kBusinessFunction, "ID:FuncID,>Name:FuncName", {}, triggers));
  for (fetch->Execute(project); !fetch->Eof(); fetch->MoveNext()) {
    const auto& row = fetch->Row();
    const auto function = functionOf.find(IDField(row, "FuncID"));
    if (function == functionOf.end()) continue;  // made by another process since the functions were read
    const std::int32_t id = IDField(row, "SetID");
    triggered.insert(id);
    function->second->ruleSets.push_back({id, row.Item("SetName").Text(), row.Item("CallSeqNo").Value().Integer()});
  }
  return triggered;
}

void ReadOtherSets(platform::Repository& repository, const std::string& project,
                   const std::unordered_set<std::int32_t>& triggered, CatalogueTree& tree) {
  const auto fetch = catalogue::NewQuery(repository);
  fetch->SetRoot(fetch->AddObject(true, kRuleSet, "ID,>Name"));
  for (fetch->Execute(project); !fetch->Eof(); fetch->MoveNext()) {
    const std::int32_t id = IDField(fetch->Row(), "ID");
    if (!triggered.contains(id)) tree.withoutFunction.push_back({id, fetch->Row().Item("Name").Text(), 0});
  }
}

void ReadRules(platform::Repository& repository, const std::string& project, CatalogueTree& tree) {
  const auto fetch = catalogue::NewQuery(repository);
  const auto rule = fetch->AddObject(false, kRule, "ID:RuleID,RuleName,>SeqNo");
  const auto has = fetch->AddRelation("Has", false, "", rule);
  fetch->SetRoot(fetch->AddObject(true, kRuleSet, "ID:SetID", {}, has));
  for (fetch->Execute(project); !fetch->Eof(); fetch->MoveNext()) {
    const auto& row = fetch->Row();
    tree.rules[IDField(row, "SetID")].push_back(
        {IDField(row, "RuleID"), row.Item("RuleName").Text(), row.Item("SeqNo").Value().Integer()});
  }
}

}  // namespace

const std::vector<ListedRule>& CatalogueTree::RulesOf(std::int32_t ruleSetID) const {
  static const std::vector<ListedRule> none;
  const auto found = rules.find(ruleSetID);
  return found == rules.end() ? none : found->second;
}

CatalogueTree ReadCatalogueTree(workbench::EmbeddedHost& host) {
  auto& repository = host.Repository();
  const std::string project = host.ProjectObject()->ObjectID();
  CatalogueTree tree;
  ReadFunctions(repository, project, tree);
  ReadOtherSets(repository, project, ReadTriggeredSets(repository, project, tree), tree);
  ReadRules(repository, project, tree);
  return tree;
}

}  // namespace qmrules::cli
