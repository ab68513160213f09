#pragma once

#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/xml.h"
#include "workbench/repository/fetchlist.h"

// A search condition document, which takes the place of a filter text:
//
//   <object>
//     <objecttype><type name="RULE"/></objecttype>
//     <fetchid as="RuleID"/>
//     <fetchattr name="SeqNo" as="RuleSeqNo" order="asc"/>
//     <cond>
//       <and>
//         <attr name="Valid" op="=" arg="Valid"/>
//         <related>
//           <reltype><rel name="Has"/></reltype>
//           <object>
//             <objecttype><type name="RULEIO"/></objecttype>
//             <cond><attr name="IOName" op="like" arg="ACC*" negate="true"/></cond>
//           </object>
//         </related>
//       </and>
//     </cond>
//   </object>
//
// Only the outermost object delivers anything, so only there may `fetchid` and `fetchattr` stand.

namespace qmrules::workbench::repository {

// Conditions within each other; a lone condition has the depth 1.
inline constexpr int kConditionDepth = 100;

enum class ConditionOperator { Equal, Less, Greater, Like, In };

struct ConditionNode;
struct ConditionObject;

// A test of one attribute. The forms "<>", "<=", ">=", "not like" and "not in" come as their opposite, negated.
struct ConditionTest {
  std::string name;
  ConditionOperator op = ConditionOperator::Equal;
  std::string arg;
  std::vector<std::string> items;  // of `In` only: the argument split at its commas, blanks around each dropped
  bool isNegated = false;
};
struct ConditionAnd {
  std::vector<ConditionNode> children;  // one or more
  bool isNegated = false;
};
struct ConditionOr {
  std::vector<ConditionNode> children;  // one or more
  bool isNegated = false;
};
// There is an object at the end of the relation that meets its condition.
struct ConditionRelated {
  std::string relation;
  std::unique_ptr<ConditionObject> object;
  bool isNegated = false;
};

struct ConditionNode {
  std::variant<ConditionTest, ConditionAnd, ConditionOr, ConditionRelated> node;
};

// An attribute to deliver.
struct ConditionAttribute {
  std::string name;
  std::string alias;  // `name` when it has none of its own
  Sort sort = Sort::None;

  friend bool operator==(const ConditionAttribute&, const ConditionAttribute&) = default;
};

struct ConditionObject {
  std::string entity;
  std::optional<std::string> fetchID;  // the name under which the object's ID is delivered; nothing when it is not
  std::vector<ConditionAttribute> attributes;
  std::optional<ConditionNode> condition;  // nothing: every object of the entity
};

// Reads the element `object` of a search condition document. Throws Error, naming the path of the element concerned and
// what is wrong with it ("search condition object/cond/and/attr: the attribute \"op\" is missing"), for an element that
// is unknown, stands too often or is missing, an attribute that is missing or has no known value, and conditions nested
// deeper than kConditionDepth.
ConditionObject ParseCondition(const platform::XmlElement& object);

}  // namespace qmrules::workbench::repository
