#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "workbench/repository/relationpath.h"
#include "workbench/repository/storeschema.h"

namespace qmrules::workbench::repository {

// A way from one entity to another over relations of one owning class.
using OwnerPath = std::vector<DirectedRelation>;

// Every way from the entity over the relations of the class, from owner to owned (Forward) or from owned to owner
// (Backward), one step or several. Ends at `end` only, when it is given.
std::vector<OwnerPath> OwnerPaths(const StoreSchema& schema, const StoreEntity& start, std::string_view className,
                                  Closure closure, const StoreEntity* end);

// A table expression of what lies at the ends of the ways, with the columns NearID, ID and Type and one column for each
// name of `attributes`. Throws platform::Error with the reason alone when an end does not have such an attribute.
std::string OwnerPathTable(const std::vector<OwnerPath>& paths, const std::vector<std::string>& attributes);

}  // namespace qmrules::workbench::repository
