#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/keyedcollection.h"
#include "platform/repository.h"
#include "validation/filegroups.h"
#include "validation/segmentrelocation.h"

namespace qmrules::validation {

// A rule whose segment is to be looked at, without its text.
struct RuleToValidate {
  std::int32_t id = 0;
  std::size_t file = 0;  // its group
  RowRange rows;
};

// The rules of these IDs in the order in which validation works them off: the IDs are packed into a few long lists, and
// each list comes in the order of its fetch. IDs of no rule are left out. Each file is entered in the groups. Throws
// Error when the store fails.
[[nodiscard]] std::vector<RuleToValidate> ReadRulesToValidate(platform::Repository& repository,
                                                              const platform::KeyedCollection<std::string>& ids,
                                                              FileGroups& files);

struct RuleTexts {
  std::string name;     // of the rule
  std::string segment;  // its stored text
};

// The rules' texts by their IDs. Throws Error when the store fails.
[[nodiscard]] std::unordered_map<std::int32_t, RuleTexts> ReadRuleTexts(platform::Repository& repository,
                                                                        const std::vector<std::int32_t>& ids);

}  // namespace qmrules::validation
