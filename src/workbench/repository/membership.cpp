#include "workbench/repository/membership.h"

#include <fmt/format.h>

namespace qmrules::workbench::repository {

namespace {

// `depth` keeps the aliases of nested look-ups apart.
std::string Membership(const StoreSchema& schema, const StoreEntity& entity, std::string_view idExpression, int depth) {
  if (entity.ProjectRelation().empty()) return {};
  const auto relations = schema.FindRelations(entity, entity.ProjectRelation());
  if (relations.size() != 1) return {};
  const auto& directed = relations.front();
  const std::string alias = fmt::format("m{}", depth);
  const std::string far = fmt::format("{}.\"{}\"", alias, directed.FarColumn());
  const std::string holder = directed.Far().ProjectRelation().empty()
                                 ? fmt::format("{} = ?", far)
                                 : Membership(schema, directed.Far(), far, depth + 1);
  return fmt::format("EXISTS (SELECT 1 FROM {} {} WHERE {}.\"{}\" = {} AND {})", directed.relation->Table(), alias,
                     alias, directed.NearColumn(), idExpression, holder);
}

}  // namespace

std::string MembershipSql(const StoreSchema& schema, const StoreEntity& entity, std::string_view idExpression) {
  return Membership(schema, entity, idExpression, 0);
}

}  // namespace qmrules::workbench::repository
