#pragma once

#include <string>
#include <string_view>

namespace qmrules::workbench::repository {

// How far a relation is followed: one link, or all the way from owner to owned or from owned to owner.
enum class Closure { None, Forward, Backward };

// One relation of a query's path.
struct RelationStep {
  bool isNegated = false;  // no such link may exist
  Closure closure = Closure::None;
  std::string name;  // of the relation; with a closure, of the class of relations

  friend bool operator==(const RelationStep&, const RelationStep&) = default;
};

// Reads a relation: `NAME`, `*NAME` (Forward) or `*<NAME` (Backward), each with "~" before it to negate. Blanks are not
// allowed. Throws Error, naming text and column, for anything else.
RelationStep ParseRelation(std::string_view text);

}  // namespace qmrules::workbench::repository
