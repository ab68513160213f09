#pragma once

#include <functional>
#include <string>

#include "workbench/repository/attributetest.h"
#include "workbench/repository/condition.h"
#include "workbench/repository/filter.h"
#include "workbench/repository/storeschema.h"

namespace qmrules::workbench::repository {

// Where the attributes that a filter names are found.
struct FilterScope {
  // The column of the attribute, or of "ID". Throws platform::Error with the reason alone for an unknown one.
  std::function<TestedColumn(std::string_view name)> column;
  std::string idExpression;
  const StoreEntity* entity = nullptr;  // nullptr: any entity
};

// How deep conditions that are run may stand within each other, which is less than what the languages can say: an AND
// or OR of two parts counts for one level, of n parts for as many as n has binary digits, a related object for four.
inline constexpr int kCompiledNesting = 20;

// The filter as an SQL condition. `filterText` is its text, for messages. `left`, when given, is left out: it is a part
// of the conjunction that the caller deals with itself. The result is empty when nothing is left.
// Throws platform::Error, with the text and the column.
SqlPiece CompileFilter(const FilterExpression& filter, std::string_view filterText, const FilterScope& scope,
                       const Comparison* left = nullptr);

// The part "ID in ..." that the filter as a whole demands, or nullptr.
const Comparison* DemandedIDList(const FilterExpression& filter);

// The condition of a search condition document as an SQL condition on the scope's object.
SqlPiece CompileCondition(const StoreSchema& schema, const ConditionNode& condition, const FilterScope& scope);

}  // namespace qmrules::workbench::repository
