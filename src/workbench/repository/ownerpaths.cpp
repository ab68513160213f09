#include "workbench/repository/ownerpaths.h"

#include <fmt/format.h>

#include <algorithm>

#include "shell/casefold.h"

namespace qmrules::workbench::repository {

namespace {

// The relation as a step of the walk from the entity, or nothing when it is none.
std::optional<DirectedRelation> StepFrom(const StoreRelation& relation, const StoreEntity& entity, Closure closure) {
  const bool ownerIsFrom = relation.Owner() != OwningEnd::To;
  const bool nearIsFrom = (closure == Closure::Forward) == ownerIsFrom;
  const StoreEntity& near = nearIsFrom ? relation.From() : relation.To();
  if (&near != &entity) return std::nullopt;
  return DirectedRelation{&relation, nearIsFrom};
}

bool Passes(const OwnerPath& path, const StoreRelation& relation) {
  return std::any_of(path.begin(), path.end(), [&](const auto& step) { return step.relation == &relation; });
}

void Walk(const StoreSchema& schema, const StoreEntity& entity, std::string_view className, Closure closure,
          OwnerPath& path, std::vector<OwnerPath>& paths) {
  for (const auto& relation : schema.Relations()) {
    if (!shell::EqualIgnoringCase(relation->ClassName(), className)) continue;
    const auto step = StepFrom(*relation, entity, closure);
    if (!step || Passes(path, *relation)) continue;
    path.push_back(*step);
    paths.push_back(path);
    Walk(schema, step->Far(), className, closure, path, paths);
    path.pop_back();
  }
}

std::string Branch(const OwnerPath& path, const std::vector<std::string>& attributes) {
  const auto& end = path.back().Far();
  const std::size_t last = path.size() - 1;
  std::string from = fmt::format("{} p0", path.front().relation->Table());
  for (std::size_t step = 1; step < path.size(); ++step) {
    from += fmt::format(" JOIN {0} p{1} ON p{1}.\"{2}\" = p{3}.\"{4}\"", path[step].relation->Table(), step,
                        path[step].NearColumn(), step - 1, path[step - 1].FarColumn());
  }
  const std::string id = fmt::format("p{}.\"{}\"", last, path.back().FarColumn());
  std::string columns =
      fmt::format("p0.\"{}\" AS \"NearID\", {} AS \"ID\", '{}' AS \"Type\"", path.front().NearColumn(), id, end.Name());
  if (!attributes.empty()) from += fmt::format(" JOIN {} e ON e.\"ObjectID\" = {}", end.Table(), id);
  for (const auto& name : attributes) {
    columns += fmt::format(", e.{} AS {}", end.Attributes()[end.PlaceOf(name)]->Column(), QuoteIdentifier(name));
  }
  return fmt::format("SELECT {} FROM {}", columns, from);
}

}  // namespace

std::vector<OwnerPath> OwnerPaths(const StoreSchema& schema, const StoreEntity& start, std::string_view className,
                                  Closure closure, const StoreEntity* end) {
  std::vector<OwnerPath> paths;
  OwnerPath path;
  Walk(schema, start, className, closure, path, paths);
  if (end != nullptr) std::erase_if(paths, [&](const auto& found) { return &found.back().Far() != end; });
  return paths;
}

std::string OwnerPathTable(const std::vector<OwnerPath>& paths, const std::vector<std::string>& attributes) {
  std::string table;
  for (const auto& path : paths) {
    if (!table.empty()) table += " UNION ALL ";
    table += Branch(path, attributes);
  }
  return "(" + table + ")";
}

}  // namespace qmrules::workbench::repository
