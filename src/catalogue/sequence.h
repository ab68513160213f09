#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/repository.h"

// Sequence numbers: the order of rule sets within a business function (on RULESETCALL) and of rules within a rule set
// (on RULE). They begin at 1 and may have gaps and doubles.
namespace qmrules::catalogue {

// Where a new child goes.
struct ChildPlace {
  std::string_view parentEntity;
  std::int32_t parentID = 0;
  std::string_view relation;  // from the parent to the child: "Has" or "Triggers"
  std::string_view childEntity;
  std::int32_t afterID = 0;  // the child behind which the new one goes; 0 for the end
};

// The `SeqNo` for the new child. At the end that is the highest number and 1; elsewhere the number behind `afterID`'s,
// and the unbroken run of numbers from there on has been moved up by one, in one transaction, so that the first gap
// takes the insertion. Throws Error when `afterID` is no child object.
[[nodiscard]] std::int64_t NextSeqNo(platform::Repository& repository, const ChildPlace& place);

// The numbers of two neighbours after they were swapped.
struct SwappedNumbers {
  std::int64_t first = 0;
  std::int64_t second = 0;
};

// Swaps the numbers of two rules. A failure between the two writes leaves the first one.
SwappedNumbers SwapRules(platform::Repository& repository, std::int32_t firstID, std::int32_t secondID);

// Swaps the numbers of the calls by which one business function triggers two rule sets; the same sets under another
// function keep theirs. Throws Error, before any write, when the function does not trigger both.
SwappedNumbers SwapRuleSets(platform::Repository& repository, std::int32_t functionID, std::int32_t firstID,
                            std::int32_t secondID);

enum class Direction { Up, Down };

// The rule before (Up) or behind (Down) this one in its rule set, as the tree shows it to the project: by number, equal
// numbers by ID. Nothing at the end, and for a rule that the rule set does not show.
[[nodiscard]] std::optional<std::int32_t> NeighbourRule(platform::Repository& repository, std::string_view projectKey,
                                                        std::int32_t ruleSetID, std::int32_t ruleID,
                                                        Direction direction);

// The same for the rule sets of a business function.
[[nodiscard]] std::optional<std::int32_t> NeighbourRuleSet(platform::Repository& repository,
                                                           std::string_view projectKey, std::int32_t functionID,
                                                           std::int32_t ruleSetID, Direction direction);

}  // namespace qmrules::catalogue
