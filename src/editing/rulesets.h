#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "editing/outcomes.h"

namespace qmrules::editing {

struct NewRuleSet {
  std::int32_t functionID = 0;  // the business function that is to trigger it
  std::string name;
  std::string description;
  std::int32_t afterRuleSetID = 0;  // the rule set of the function behind which it goes; 0 for the end
};

// A rule set and the call by which its function triggers it.
struct CreatedRuleSet {
  std::int32_t id = 0;
  std::int32_t callID = 0;
  std::string name;
  std::string description;
};

// The default rule set, which holds rules without a home, stood already. It has the description that was asked for and
// no further call.
struct ExistingRuleSet {
  std::int32_t id = 0;
  Notice notice;
  bool accepted = false;  // it is in the current project: the dialog ends with success
};

// Another rule set of the project has the name. The question is whether to go on: OK is for another name; on Cancel the
// caller ends with the existing one, through UseExistingRuleSet, and without success.
struct RuleSetQuestion {
  std::int32_t id = 0;
  Notice question;
};

using RuleSetOutcome = std::variant<CreatedRuleSet, ExistingRuleSet, RuleSetQuestion, Refused>;

// Makes a rule set in the current project and the call that puts it under the function. Texts pass SafeText. A failure
// leaves neither. Throws Error when no project is chosen and when there is no such function.
[[nodiscard]] RuleSetOutcome CreateRuleSet(const EditingContext& context, const NewRuleSet& wanted);

// Gives the rule set the description (through SafeText) where it has another one.
void UseExistingRuleSet(const EditingContext& context, std::int32_t ruleSetID, std::string_view description);

}  // namespace qmrules::editing
