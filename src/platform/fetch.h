#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "platform/value.h"
#include "platform/xml.h"

namespace qmrules::platform {

// A query over the repository: a path of entity nodes joined by named relations, declared from its far end to its
// root, run once and walked forward.
//
//   auto fetch = NewQuery(repository);
//   auto set = fetch->AddObject(true, "RULESET", "ID,Name");
//   auto refers = fetch->AddRelation("Refers", false, "", set);
//   auto call = fetch->AddObject(false, "RULESETCALL", ">SeqNo", {}, refers);
//   fetch->SetRoot(call);
//   for (fetch->Execute(project); !fetch->Eof(); fetch->MoveNext()) use(fetch->Row().Item("Name").Text());
//
// Fetch list: items joined by ",". An item is an attribute's name, or ID, or (for an end of any entity) Type; with
// ">" before it the rows are sorted by it upwards, with "<" downwards; with ":alias" behind it the value is delivered
// under the alias only. Sort items apply from the root outward; text sorts without regard to case; ties go by ID in
// the last sort item's direction. Rows of an unsorted fetch with "ID in" come in the order of the list, other
// unsorted rows by ID. Where two nodes deliver one name, the node nearer to the far end is read.
//
// Filter: comparisons "Name=value" (also <>, <, <=, >, >=, " like " and " in "), joined by "&" (binds tighter) and
// "|", negated by "~", grouped by "( )". Values stand bare; a free text passes FilterValue first. "=" heeds case; an
// absent value counts as the empty text, which is below every other value. "ID in" takes a comma list of any length,
// with or without parentheses.
//
// Relation: a name in either direction. "~" before it asks that no such link exists. "*NAME" follows the owning
// relations of the class NAME transitively from owner to owned, "*<NAME" backwards.
//
// Every call throws Error for a malformed list, filter or relation; the text names it and the column in it (from 1).

struct ObjectNode {
  std::size_t index = 0;
};
struct RelationNode {
  std::size_t index = 0;
};

// No filter, a filter text, or the element `object` of a search condition document.
using Filter = std::variant<std::monostate, std::string, XmlElement>;

// Where a row's values come from while it is current.
class RowValues {
 public:
  virtual ~RowValues() = default;
  virtual Value ValueAt(std::size_t column) const = 0;
  virtual std::string TextAt(std::size_t column) const = 0;
};

// One field of the current row; good until the fetch moves on.
class FetchField {
 public:
  FetchField(const RowValues& values, std::size_t column) : values_(values), column_(column) {}
  // For what goes on as a number or a date.
  platform::Value Value() const { return values_.ValueAt(column_); }
  // For what is shown; "" for an absent value.
  std::string Text() const { return values_.TextAt(column_); }

 private:
  const RowValues& values_;
  std::size_t column_;
};

class FetchRow {
 public:
  virtual ~FetchRow() = default;
  // The field delivered under this name or alias, in any case. Throws Error for a name that the fetch does not deliver.
  virtual FetchField Item(std::string_view name) const = 0;
};

class Fetch {
 public:
  virtual ~Fetch() = default;

  // Declares an entity node. Without an entity the node stands for any entity that the relation leads to.
  // `related` is the relation that starts from this node.
  virtual ObjectNode AddObject(bool inProject, std::optional<std::string_view> entity, std::string_view fetchList,
                               const Filter& filter = {}, std::optional<RelationNode> related = std::nullopt) = 0;

  // Declares a relation that leads to `target`. `fetchList` is always empty.
  virtual RelationNode AddRelation(std::string_view relation, bool inProject, std::string_view fetchList,
                                   ObjectNode target) = 0;

  // Declares a relation of which only the number of objects at its end is delivered, under `alias`.
  virtual RelationNode AddCount(std::string_view relation, bool inProject, std::string_view alias) = 0;

  virtual void SetRoot(ObjectNode node) = 0;

  // Runs the query; nodes declared in project are restricted to the project of this key ("" restricts nothing).
  // Returns Eof(). The rows are those of this moment, own earlier writes included, whatever is written during the walk.
  virtual bool Execute(std::string_view projectKey) = 0;

  virtual bool Eof() const = 0;

  // The current row. Throws Error past the last one.
  virtual const FetchRow& Row() const = 0;

  virtual void MoveNext() = 0;

  // Forgets nodes and rows; the fetch can be filled anew.
  virtual void Reset() = 0;
};

// Prepares a free text for use as a bare value in a filter: "&", "|", "~", "(", ")", "," and "\" get a "\" before
// them, so that the text is data and never syntax.
std::string FilterValue(std::string_view text);

}  // namespace qmrules::platform
