#include "browser/barefetches.h"

#include <initializer_list>
#include <string_view>

#include "catalogue/walk.h"
#include "platform/fetch.h"

namespace qmrules::bench {

using platform::Fetch;
using platform::Repository;

namespace {

std::uint64_t Rows(Fetch& fetch, std::string_view projectKey, std::initializer_list<std::string_view> names) {
  RowSink sink(RowSink::Mode::Timing);
  Walk(fetch, projectKey, names, sink);
  return sink.Rows();
}

std::string ByID(int id) {
  return "ID=" + std::to_string(id);
}

std::uint64_t FetchFunctions(Repository& repository, const std::string& projectKey) {
  const auto fetch = repository.NewFetch();
  fetch->SetRoot(fetch->AddObject(true, "BUSINESSFUNC", ">Name:FuncName,ID:FuncID"));
  return Rows(*fetch, projectKey, {"FuncName", "FuncID"});
}

std::uint64_t FetchRuleSetsInSequence(Repository& repository, const std::string& projectKey) {
  const auto fetch = repository.NewFetch();
  const auto count = fetch->AddCount("Has", false, "Children");
  const auto set = fetch->AddObject(true, "RULESET", "Name:SetName,ID:SetID", {}, count);
  const auto refers = fetch->AddRelation("Refers", false, "", set);
  const auto call = fetch->AddObject(false, "RULESETCALL", ">SeqNo", {}, refers);
  const auto triggers = fetch->AddRelation("Triggers", false, "", call);
  fetch->SetRoot(fetch->AddObject(true, "BUSINESSFUNC", ">Name:FuncName,ID:FuncID", {}, triggers));
  return Rows(*fetch, projectKey, {"FuncName", "FuncID", "SeqNo", "SetName", "SetID", "Children"});
}

std::uint64_t FetchElements(Repository& repository, int ruleID, std::string_view entity, std::string_view relation,
                            std::string_view attributes, std::initializer_list<std::string_view> names) {
  const auto fetch = repository.NewFetch();
  const auto element = fetch->AddObject(false, entity, attributes);
  const auto belongs = fetch->AddRelation(relation, false, "", element);
  fetch->SetRoot(fetch->AddObject(false, "RULE", "", ByID(ruleID), belongs));
  return Rows(*fetch, "", names);
}

}  // namespace

std::uint64_t FetchTree(Repository& repository, const std::string& projectKey) {
  const auto all = repository.NewFetch();
  all->SetRoot(all->AddObject(false, "RULESET", "ID"));
  return FetchFunctions(repository, projectKey) + FetchRuleSetsInSequence(repository, projectKey) +
         Rows(*all, "", {"ID"});
}

std::uint64_t FetchValidRules(Repository& repository) {
  const auto fetch = repository.NewFetch();
  fetch->SetRoot(fetch->AddObject(false, "RULE", "ID,FileName,Valid,Validated", "Valid=Valid"));
  return Rows(*fetch, "", {"ID", "FileName", "Valid", "Validated"});
}

std::uint64_t FetchFunction(Repository& repository, int functionID) {
  const auto function = repository.NewFetch();
  function->SetRoot(function->AddObject(false, "BUSINESSFUNC", "Name,Description,BusinessArea", ByID(functionID)));
  const auto sets = repository.NewFetch();
  const auto set = sets->AddObject(false, "RULESET", "ID,Name");
  const auto refers = sets->AddRelation("Refers", false, "", set);
  const auto call = sets->AddObject(false, "RULESETCALL", ">SeqNo", {}, refers);
  const auto triggers = sets->AddRelation("Triggers", false, "", call);
  sets->SetRoot(sets->AddObject(false, "BUSINESSFUNC", "", ByID(functionID), triggers));
  return Rows(*function, "", {"Name", "Description", "BusinessArea"}) + Rows(*sets, "", {"ID", "Name"});
}

std::uint64_t FetchRuleSet(Repository& repository, const std::string& projectKey, int setID) {
  const auto set = repository.NewFetch();
  set->SetRoot(set->AddObject(false, "RULESET", "Name,Description", ByID(setID)));
  const auto rules = repository.NewFetch();
  const auto rule = rules->AddObject(false, "RULE", "ID,RuleName,>SeqNo");
  const auto has = rules->AddRelation("Has", false, "", rule);
  rules->SetRoot(rules->AddObject(true, "RULESET", "", ByID(setID), has));
  const auto triggering = repository.NewFetch();
  const auto around = triggering->AddObject(false, "RULESET", "Name:RuleSetName,ID:SetID");
  const auto belongs = triggering->AddRelation("BelongsToRuleSet", false, "", around);
  const auto trigger = triggering->AddObject(false, "RULE", "ID:RuleID,RuleName", {}, belongs);
  const auto triggered = triggering->AddRelation("IsTriggeredBy", false, "", trigger);
  triggering->SetRoot(triggering->AddObject(false, "RULESET", "", ByID(setID), triggered));
  return Rows(*set, "", {"Name", "Description"}) + Rows(*rules, projectKey, {"ID", "RuleName", "SeqNo"}) +
         Rows(*triggering, "", {"RuleID", "RuleName", "RuleSetName", "SetID"});
}

std::uint64_t FetchRule(Repository& repository, const std::string& projectKey, int ruleID, const std::string& program) {
  const auto rule = repository.NewFetch();
  rule->SetRoot(rule->AddObject(
      false, "RULE", "RuleName,Description,BusinessDescription,Model,Program,FileName,FromRow,ToRow", ByID(ruleID)));
  const auto source = repository.NewFetch();
  source->SetRoot(source->AddObject(true, "COBOL", "ID", "Name=" + platform::FilterValue(program)));
  const auto triggers = repository.NewFetch();
  const auto set = triggers->AddObject(false, "RULESET", "ID,Name");
  const auto relation = triggers->AddRelation("Triggers", false, "", set);
  triggers->SetRoot(triggers->AddObject(false, "RULE", "", ByID(ruleID), relation));
  return Rows(*rule, "",
              {"RuleName", "Description", "BusinessDescription", "Model", "Program", "FileName", "FromRow", "ToRow"}) +
         Rows(*source, projectKey, {"ID"}) +
         FetchElements(repository, ruleID, "RULEIO", "BelongsToRule",
                       "ID,>IOName,Kind,BusinessName,Description,QMID,SourceType,SourceID",
                       {"ID", "IOName", "Kind", "BusinessName", "Description", "QMID", "SourceType", "SourceID"}) +
         FetchElements(repository, ruleID, "RULECOND", "Controls",
                       "ID,CondName,Operator,Argument,Description,QMID,SourceType,SourceID",
                       {"ID", "CondName", "Operator", "Argument", "Description", "QMID", "SourceType", "SourceID"}) +
         Rows(*triggers, "", {"ID", "Name"});
}

std::uint64_t FetchRuleIDs(Repository& repository, const std::string& projectKey) {
  const auto fetch = repository.NewFetch();
  const auto rule = fetch->AddObject(false, "RULE", "ID");
  const auto has = fetch->AddRelation("Has", false, "", rule);
  fetch->SetRoot(fetch->AddObject(true, "RULESET", "", {}, has));
  return Rows(*fetch, projectKey, {"ID"});
}

std::uint64_t FetchPlaces(Repository& repository, const std::string& ruleIDs) {
  const auto fetch = repository.NewFetch();
  const auto rule = fetch->AddObject(false, "RULE", "", "ID in " + ruleIDs);
  const auto has = fetch->AddRelation("Has", false, "", rule);
  const auto set = fetch->AddObject(false, "RULESET", "ID:SetID", {}, has);
  const auto refers = fetch->AddRelation("Refers", false, "", set);
  const auto call = fetch->AddObject(false, "RULESETCALL", "", {}, refers);
  const auto triggers = fetch->AddRelation("Triggers", false, "", call);
  fetch->SetRoot(fetch->AddObject(false, "BUSINESSFUNC", "ID:FuncID", {}, triggers));
  return Rows(*fetch, "", {"FuncID", "SetID"});
}

}  // namespace qmrules::bench
