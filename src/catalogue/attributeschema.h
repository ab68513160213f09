#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/keyedcollection.h"
#include "platform/xml.h"

// What the schema document says of a rule's attributes. In the document the element `entityattrs` of the entity RULE
// holds one `entityattr` for each attribute; the child elements of an `entityattr` that have an attribute `value` are
// the attribute's admissible values.
namespace qmrules::catalogue {

// Path of the element `entityattrs` of the rules, and of the definitions in it.
inline constexpr const char* kRuleAttributesPath = "//entity[@name='RULE']/entityattrs";

// The definition of the attribute among the children of an element `entityattrs`, or none.
[[nodiscard]] platform::XmlElement AttributeElement(const platform::XmlElement& entityAttrs, std::string_view name);

// The admissible values of a definition, in its order; none when it lists none and for no element.
[[nodiscard]] std::vector<std::string> AdmissibleValues(const platform::XmlElement& attribute);

// The most characters that a one-line value of the definition may have; nothing when it sets no limit. Throws Error,
// naming the attribute, when its `length` is not a whole number.
[[nodiscard]] std::optional<std::size_t> LongestValue(const platform::XmlElement& attribute);

struct AttributeDefault {
  std::string name;
  std::string value;
  friend bool operator==(const AttributeDefault&, const AttributeDefault&) = default;
};

// What a new rule's attributes are set to: each definition whose `default` is not empty, in document order.
[[nodiscard]] std::vector<AttributeDefault> DefaultsOfNewRule(const platform::XmlElement& entityAttrs);

// The schema test of a value. An attribute that the document does not define takes any text. "INTEGER" takes numbers
// without "," and "."; "BOOLEAN" takes "true" and "false" in any case; "CHAR" takes up to `length` characters; every
// other type takes any text.
[[nodiscard]] bool IsAttributeValueValid(const platform::XmlDocument& document, std::string_view name,
                                         std::string_view value);

// True for a number as a reader writes it: a sign or none, digits with grouping commas before and a point among or
// around them, an exponent ("E" or "D") or none, blanks around it all.
[[nodiscard]] bool IsNumeric(std::string_view text);

// The attributes of a rule that have a field, and those of them that the user may change, each under its own name.
struct AttributeLists {
  platform::KeyedCollection<std::string> shown;
  platform::KeyedCollection<std::string> editable;
};

// The product's own attributes, then each one of the document whose `system` is "false".
[[nodiscard]] AttributeLists BuildAttributeLists(const platform::XmlElement& entityAttrs);

}  // namespace qmrules::catalogue
