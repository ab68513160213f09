#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// The texts by which the browser names catalogue objects in its tree and lists. "f", "s" and "r" stand for function,
// set and rule. A rule set under two functions has two node keys, both with its one ID.
namespace qmrules::catalogue {

[[nodiscard]] std::string FunctionNodeKey(std::int32_t functionID);                     // "f1"
[[nodiscard]] std::string RuleSetNodeKey(std::int32_t functionID, std::int32_t setID);  // "f1s2"
[[nodiscard]] std::string RuleNodeKey(std::int32_t functionID, std::int32_t ruleID);    // "f1r3"

[[nodiscard]] std::string RuleSetRowKey(std::int32_t setID);  // "s2": in a business function's list
[[nodiscard]] std::string RuleRowKey(std::int32_t ruleID);    // "r3": in a rule set's list, and a trigger's row
[[nodiscard]] std::string ElementRowKey(std::int32_t id);     // "k4": a data element or a condition

// Patterns for shell::LikePattern that find every occurrence of one rule set or rule among all node keys.
[[nodiscard]] std::string RuleSetOccurrences(std::int32_t setID);  // "f*s2"
[[nodiscard]] std::string RuleOccurrences(std::int32_t ruleID);    // "f*r3"

// The ID of the node's object. `image` is the node's image key, an entity name, and tells the node's kind: for a
// function the ID is all behind the first character of the key, for a rule set all behind the first "s", for a rule
// all behind the first "r". Throws Error, naming both, for another image and a key that holds no ID there.
[[nodiscard]] std::int32_t NodeKeyID(std::string_view image, std::string_view key);

}  // namespace qmrules::catalogue
