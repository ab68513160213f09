#pragma once

#include <string>
#include <string_view>

#include "workbench/repository/storeschema.h"

namespace qmrules::workbench::repository {

// The SQL condition that the object of the entity whose ID is `idExpression` is in a project: by its own link, or
// through the object that holds it. Takes the project's ID as its one parameter. "" for an entity whose objects are in
// no project.
std::string MembershipSql(const StoreSchema& schema, const StoreEntity& entity, std::string_view idExpression);

}  // namespace qmrules::workbench::repository
