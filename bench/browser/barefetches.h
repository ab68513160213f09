#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/repository.h"

// The fetches that the browser cannot do without, walked with nothing done to their rows but the copying of each field
// into a text. Each gives the number of rows.
namespace qmrules::bench {

// The functions, their rule sets, and the rule sets of the repository.
std::uint64_t FetchTree(platform::Repository& repository, const std::string& projectKey);
// The valid rules of the repository with their files.
std::uint64_t FetchValidRules(platform::Repository& repository);

// What the panes show of one object: itself and the rows of its lists, and, of a rule, its program.
std::uint64_t FetchFunction(platform::Repository& repository, int functionID);
std::uint64_t FetchRuleSet(platform::Repository& repository, const std::string& projectKey, int setID);
std::uint64_t FetchRule(platform::Repository& repository, const std::string& projectKey, int ruleID,
                        const std::string& program);

// The IDs of the rules that the project's rule sets hold.
std::uint64_t FetchRuleIDs(platform::Repository& repository, const std::string& projectKey);
// The rule sets and functions that the rules of this ID list stand under.
std::uint64_t FetchPlaces(platform::Repository& repository, const std::string& ruleIDs);

}  // namespace qmrules::bench
