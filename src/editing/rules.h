#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "editing/outcomes.h"
#include "platform/keyedcollection.h"
#include "platform/xml.h"
#include "segments/rulesegments.h"

namespace qmrules::editing {

struct NewRule {
  std::int32_t ruleSetID = 0;
  std::string name;  // not unique
  std::string description;
  std::int32_t afterRuleID = 0;          // the rule of the set behind which it goes; 0 for the end
  segments::Segment segment;             // its lines; default-made for a rule without
  platform::XmlElement attributeSchema;  // the element `entityattrs` of the rules, for the defaults; none for none
};

using RuleOutcome = std::variant<Created, Refused>;

// Makes a rule in a rule set of the current project and logs it. Texts pass SafeText; the name is stored untrimmed. A
// failure after the object is made throws Error and leaves what was written. Throws Error when no project is chosen and
// when there is no such rule set.
[[nodiscard]] RuleOutcome CreateRule(const EditingContext& context, const NewRule& wanted);

using ChangeOutcome = std::variant<Changed, Unchanged, Refused>;

// The attributes of a rule, as the control keeps them.
struct RuleAttributes {
  const platform::XmlDocument& schema;
  const platform::KeyedCollection<std::string>& editable;
};

struct NewValue {
  std::string_view attribute;  // in any case
  std::string_view value;
};

// Gives an attribute of a rule another value and logs it under the attribute's caption. Refused are a value that the
// schema document does not admit and, where there is a choice of values, one that is no part of it. `RuleName` goes by
// Rename. Throws Error for an attribute that is not editable.
ChangeOutcome SetRuleAttribute(const EditingContext& context, const RuleAttributes& attributes, std::int32_t ruleID,
                               const NewValue& wanted);

// The same for a business function (`Name`, `Description`, `BusinessArea`) or a rule set (`Name`, `Description`), of
// which nothing is logged. `key` is the object's. Throws Error for any other object or attribute.
ChangeOutcome SetObjectAttribute(const EditingContext& context, std::string_view key, const NewValue& wanted);

// Gives a business function, a rule set or a rule another name (through SafeText, untrimmed); one of blanks is refused.
// A rule's is logged. Function and rule set: every call on it gets a fresh object name, together with the new name or
// not at all. Throws Error for a name that another function or rule set has, and for any other object.
ChangeOutcome Rename(const EditingContext& context, std::string_view key, std::string_view name);

}  // namespace qmrules::editing
