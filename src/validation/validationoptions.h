#pragma once

#include <string>

#include "platform/options.h"

namespace qmrules::validation {

// The case of the project options that the user is shown before a validation.
inline constexpr const char* kRuleValidationPath =
    "/OPTIONS/CASE[@NAME='Ferrowood']/LIST[@NAME='FW']/CASE[@NAME='CRD']/LIST[@NAME='CRDOptions']"
    "/CASE[@NAME='RuleValidation']";

// What happens to a rule whose text no longer stands at its rows. Any other text leaves such a rule as it is.
inline constexpr const char* kLeave = "leave";    // it becomes "Invalid"
inline constexpr const char* kDelete = "delete";  // its segment is taken away, and it counts as "Valid"
inline constexpr const char* kRepair = "valid";   // its text is looked for in the file, and the segment moves there

// Both throw Error, naming the path, when the document lacks the node.
[[nodiscard]] std::string ReadValidationAction(platform::Options& options);
[[nodiscard]] bool ReadCollapseSpaces(platform::Options& options);

}  // namespace qmrules::validation
