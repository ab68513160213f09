#include "desktop/locator/entryplaces.h"

#include <fmt/format.h>

#include <cstdint>
#include <map>
#include <set>

#include "catalogue/gateway.h"

namespace qmrules::desktop {

namespace {

using catalogue::IDField;

struct RuleSet {
  std::int32_t id = 0;
  std::string name;
};

// The first function that triggers a rule set, and how many do.
struct Trigger {
  std::int32_t functionID = 0;
  std::string functionName;
  std::set<std::int32_t> functions;
};

// The rule set of each rule.
std::map<std::int32_t, RuleSet> RuleSetsOf(platform::Repository& repository, const std::string& ruleIDs) {
  std::map<std::int32_t, RuleSet> sets;
  const auto fetch = catalogue::NewQuery(repository);
  const auto set = fetch->AddObject(false, catalogue::kRuleSet, "ID:SetID,Name:SetName");
  const auto belongs = fetch->AddRelation("BelongsToRuleSet", false, "", set);
  fetch->SetRoot(fetch->AddObject(false, catalogue::kRule, "ID:RuleID", "ID in " + ruleIDs, belongs));
  for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) {
    const auto& row = fetch->Row();
    sets.try_emplace(IDField(row, "RuleID"), RuleSet{IDField(row, "SetID"), row.Item("SetName").Text()});
  }
  return sets;
}

// Read in the order in which the catalogue is read, so the first function is the one that the reader meets first.
std::map<std::int32_t, Trigger> TriggersOf(platform::Repository& repository, const std::string& projectKey,
                                           const std::string& setIDs) {
  std::map<std::int32_t, Trigger> triggers;
  const auto fetch = catalogue::NewQuery(repository);
  const auto set = fetch->AddObject(false, catalogue::kRuleSet, "ID:SetID", "ID in " + setIDs);
  const auto refers = fetch->AddRelation("Refers", false, "", set);
  const auto call = fetch->AddObject(false, catalogue::kRuleSetCall, ">SeqNo", {}, refers);
  const auto calls = fetch->AddRelation("Triggers", false, "", call);
  fetch->SetRoot(fetch->AddObject(true, catalogue::kBusinessFunction, ">Name:FuncName,ID:FuncID", {}, calls));
  for (fetch->Execute(projectKey); !fetch->Eof(); fetch->MoveNext()) {
    const auto& row = fetch->Row();
    Trigger& trigger = triggers[IDField(row, "SetID")];
    const std::int32_t functionID = IDField(row, "FuncID");
    trigger.functions.insert(functionID);
    if (trigger.functionID != 0) continue;
    trigger.functionID = functionID;
    trigger.functionName = row.Item("FuncName").Text();
  }
  return triggers;
}

std::string PlaceText(const Trigger& trigger, const std::string& ruleSet) {
  const bool hasBoth = !trigger.functionName.empty() && !ruleSet.empty();
  std::string place = trigger.functionName + (hasBoth ? " / " : "") + ruleSet;
  if (trigger.functions.size() > 1) place += fmt::format(" (+{})", trigger.functions.size() - 1);
  return place;
}

}  // namespace

void PutPlaces(platform::Repository& repository, const std::string& projectKey,
               const std::vector<LocatorEntry*>& entries) {
  catalogue::IDList ruleIDs;
  catalogue::IDList setIDs;
  for (const LocatorEntry* const entry : entries) {
    const auto key = catalogue::SplitKey(entry->key);
    if (key.entity == catalogue::kRule) ruleIDs.Add(key.id);
    if (key.entity == catalogue::kRuleSet) setIDs.Add(key.id);
  }
  std::map<std::int32_t, RuleSet> ruleSets;
  if (!ruleIDs.Empty()) ruleSets = RuleSetsOf(repository, ruleIDs.Text());
  for (const auto& [ruleID, set] : ruleSets) setIDs.Add(set.id);
  if (setIDs.Empty()) return;
  auto triggers = TriggersOf(repository, projectKey, setIDs.Text());
  for (LocatorEntry* const entry : entries) {
    const auto key = catalogue::SplitKey(entry->key);
    const bool isRule = key.entity == catalogue::kRule;
    if (!isRule && key.entity != catalogue::kRuleSet) continue;
    const RuleSet set = isRule ? ruleSets[key.id] : RuleSet{key.id, {}};
    const Trigger& trigger = triggers[set.id];
    entry->place = PlaceText(trigger, set.name);
    entry->functionID = trigger.functionID;
    entry->ruleSetID = isRule ? set.id : 0;
  }
}

}  // namespace qmrules::desktop
