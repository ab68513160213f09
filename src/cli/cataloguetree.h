#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "workbench/host/embeddedhost.h"

namespace qmrules::cli {

struct ListedRule {
  std::int32_t id = 0;
  std::string name;
  std::int64_t seqNo = 0;
};

struct ListedRuleSet {
  std::int32_t id = 0;
  std::string name;
  std::int64_t seqNo = 0;  // of the call by which the function triggers it; 0 without a function
};

struct ListedFunction {
  std::int32_t id = 0;
  std::string name;
  std::vector<ListedRuleSet> ruleSets;  // in sequence; one that is triggered twice stands here twice
};

// The current project's part of the catalogue in reading order. A rule set's rules are kept once, whoever triggers it.
struct CatalogueTree {
  std::vector<ListedFunction> functions;       // by name
  std::vector<ListedRuleSet> withoutFunction;  // rule sets that no function of the project triggers, by name
  std::unordered_map<std::int32_t, std::vector<ListedRule>> rules;  // of each rule set, in sequence

  // None for a rule set without rules.
  const std::vector<ListedRule>& RulesOf(std::int32_t ruleSetID) const;
};

// Reads it in four fetches.
CatalogueTree ReadCatalogueTree(workbench::EmbeddedHost& host);

}  // namespace qmrules::cli
