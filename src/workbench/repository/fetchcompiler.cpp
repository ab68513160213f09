#include "workbench/repository/fetchcompiler.h"

#include <fmt/format.h>

#include <algorithm>

#include "platform/error.h"
#include "shell/casefold.h"
#include "workbench/repository/conditioncompiler.h"
#include "workbench/repository/membership.h"
#include "workbench/repository/ownerpaths.h"
#include "workbench/repository/querysyntax.h"

namespace qmrules::workbench::repository {

using platform::AttrType;
using platform::Error;

namespace {

struct SortKey {
  std::string expression;
  bool isDescending = false;
};

// One FROM item; the first one's condition goes to WHERE.
struct Source {
  std::string table;
  std::string condition;
};

// A node as it is being compiled.
struct Node {
  const DeclaredNode* declared = nullptr;
  const StoreEntity* entity = nullptr;  // nullptr: any entity
  std::string alias;
  std::string idExpression;
  bool usesTable = false;
  bool isNegated = false;                 // behind a link that must not exist
  std::vector<OwnerPath> ownerPaths;      // of a closure walk that leads here
  std::vector<std::string> ownerColumns;  // attributes that the walk's table has to deliver
};

void AppendParameters(std::vector<StoredValue>& to, std::vector<StoredValue> from) {
  for (auto& value : from) to.push_back(std::move(value));
}

class FetchCompiler {
 public:
  FetchCompiler(const StoreSchema& schema, const FetchPath& path, std::optional<std::int32_t> projectID)
      : schema_(schema), path_(path), projectID_(projectID) {}

  CompiledFetch Compile() {
    if (!path_.root) throw Error("A fetch needs a root: SetRoot comes before Execute.");
    isSorted_ = std::any_of(path_.nodes.begin(), path_.nodes.end(), [](const auto& node) {
      return std::any_of(node.items.begin(), node.items.end(),
                         [](const auto& item) { return item.sort != Sort::None; }) ||
             (node.condition && std::any_of(node.condition->attributes.begin(), node.condition->attributes.end(),
                                            [](const auto& item) { return item.sort != Sort::None; }));
    });
    const auto& root = path_.nodes[*path_.root];
    if (!root.entity) throw Error("The root of a fetch needs an entity.");
    Node node;
    node.declared = &root;
    node.entity = &EntityOf(root);
    node.alias = NextAlias("n");
    node.idExpression = node.alias + ".\"ObjectID\"";
    node.usesTable = true;
    CompileNode(node, level_);
    return Render();
  }

 private:
  // What one SELECT is made of: the statement itself, or the inside of a NOT EXISTS.
  struct Level {
    std::vector<Source> lists;  // of IDs in whose order the rows come; they go first
    std::vector<StoredValue> listParameters;
    std::vector<Source> sources;
    std::vector<std::string> conditions;
    std::vector<StoredValue> conditionParameters;

    void Where(SqlPiece piece) {
      if (piece.text.empty()) return;
      conditions.push_back(std::move(piece.text));
      AppendParameters(conditionParameters, std::move(piece.parameters));
    }
  };

  std::string NextAlias(std::string_view letter) { return fmt::format("{}{}", letter, aliases_++); }

  const StoreEntity& EntityOf(const DeclaredNode& node) const {
    const auto& entity = schema_.Entity(*node.entity);
    if (node.condition && !shell::EqualIgnoringCase(node.condition->entity, entity.Name())) {
      throw Error(fmt::format("The search condition is on {}, but the node that it filters is {}.",
                              node.condition->entity, entity.Name()));
    }
    return entity;
  }

  // Compiles the node, whose place among the sources is kept until it is known whether its table is needed, and all
  // that lies behind it.
  void CompileNode(Node& node, Level& level) {
    const std::size_t place = level.sources.size();
    if (!node.isNegated) AddColumns(node);
    AddFilter(node, level);
    RestrictToProject(node.entity, node.idExpression, node.declared->inProject, level);
    InsertTable(node, level, place);
    if (!node.isNegated) idExpressions_.push_back(node.idExpression);
    // Objects of different entities may have one ID.
    if (!node.isNegated && node.entity == nullptr) idExpressions_.push_back(node.alias + ".\"Type\"");
    if (node.declared->related) Follow(node, path_.relations[*node.declared->related], level);
  }

  void InsertTable(const Node& node, Level& level, std::size_t place) {
    const bool isRoot = node.idExpression == node.alias + ".\"ObjectID\"";
    if (!node.ownerPaths.empty()) {
      auto& walk = level.sources[place - 1];
      walk.table = OwnerPathTable(node.ownerPaths, node.ownerColumns) + " " + walk.table;
    }
    if (node.entity == nullptr || !node.usesTable) return;
    Source source{node.entity->Table() + " " + node.alias, ""};
    if (!isRoot) source.condition = fmt::format("{}.\"ObjectID\" = {}", node.alias, node.idExpression);
    level.sources.insert(level.sources.begin() + static_cast<std::ptrdiff_t>(place), std::move(source));
  }

  // The attribute's column in this node. Reason alone in the error.
  TestedColumn ColumnOf(Node& node, std::string_view name) {
    if (shell::EqualIgnoringCase(name, "ID")) return {node.idExpression, AttrType::Integer, false};
    if (node.entity != nullptr) {
      if (const auto* attribute = node.entity->FindAttr(name)) {
        node.usesTable = true;
        return {node.alias + "." + attribute->Column(), attribute->Type(), true};
      }
      if (shell::EqualIgnoringCase(name, "Type")) return {"'" + node.entity->Name() + "'", AttrType::Char, false};
      throw Error(fmt::format("{} has no attribute \"{}\"", node.entity->Name(), name));
    }
    if (shell::EqualIgnoringCase(name, "Type")) return {node.alias + ".\"Type\"", AttrType::Char, false};
    for (const auto& path : node.ownerPaths) {
      if (path.back().Far().FindAttr(name) != nullptr) continue;
      throw Error(
          fmt::format("{}, which the relation may lead to, has no attribute \"{}\"", path.back().Far().Name(), name));
    }
    const auto& end = node.ownerPaths.front().back().Far();
    const auto& attribute = *end.Attributes()[end.PlaceOf(name)];
    if (std::find(node.ownerColumns.begin(), node.ownerColumns.end(), attribute.Name()) == node.ownerColumns.end()) {
      node.ownerColumns.push_back(attribute.Name());
    }
    return {node.alias + "." + QuoteIdentifier(attribute.Name()), attribute.Type(), true};
  }

  void AddColumns(Node& node) {
    std::vector<std::pair<OutputColumn, std::string>> columns;
    const auto add = [&](const std::string& name, const std::string& alias, Sort sort) {
      const auto column = ColumnOf(node, name);
      columns.emplace_back(OutputColumn{alias, column.type}, column.expression);
      if (sort != Sort::None) sorts_.push_back({SortExpression(column), sort == Sort::Descending});
    };
    for (const auto& item : node.declared->items) {
      try {
        add(item.name, item.alias, item.sort);
      } catch (const Error& failure) {
        throw ColumnError({"fetch list", node.declared->fetchList}, item.column, failure.what());
      }
    }
    if (const auto* condition = node.declared->condition.get()) {
      if (condition->fetchID) add("ID", *condition->fetchID, Sort::None);
      for (const auto& item : condition->attributes) {
        try {
          add(item.name, item.alias, item.sort);
        } catch (const Error& failure) {
          throw Error(fmt::format("search condition on \"{}\": {}", item.name, failure.what()));
        }
      }
    }
    outputs_.insert(outputs_.begin(), columns.begin(), columns.end());
  }

  static std::string SortExpression(const TestedColumn& column) {
    switch (column.type) {
      case AttrType::Integer:
        return column.expression;
      case AttrType::Boolean:
      case AttrType::Timestamp:
        return fmt::format("COALESCE({}, '')", column.expression);
      case AttrType::Char:
      case AttrType::LongText:
        break;
    }
    if (!column.isNullable) return column.expression + " COLLATE QMCASE";
    return fmt::format("COALESCE({}, '') COLLATE QMCASE", column.expression);
  }

  void AddFilter(Node& node, Level& level) {
    FilterScope scope{[&](std::string_view name) { return ColumnOf(node, name); }, node.idExpression, node.entity};
    if (const auto* condition = node.declared->condition.get(); condition != nullptr && condition->condition) {
      level.Where(CompileCondition(schema_, *condition->condition, scope));
    }
    if (!node.declared->filter) return;
    const Comparison* list = isSorted_ || node.isNegated ? nullptr : DemandedIDList(*node.declared->filter);
    if (list != nullptr) OrderByList(node, *list, level);
    level.Where(CompileFilter(*node.declared->filter, node.declared->filterText, scope, list));
  }

  // The rows come in the order of the list, so the list is joined with its places and not only looked into.
  void OrderByList(const Node& node, const Comparison& list, Level& level) {
    const std::string alias = NextAlias("l");
    level.lists.push_back({fmt::format("json_each(?) {}", alias), ""});
    level.listParameters.emplace_back(JsonList(list.ids));
    level.conditions.push_back(fmt::format("{}.value = {}", alias, node.idExpression));
    sorts_.push_back({alias + ".key", false});
  }

  void RestrictToProject(const StoreEntity* entity, const std::string& idExpression, bool inProject, Level& level) {
    if (!inProject || !projectID_) return;
    if (entity == nullptr) throw Error("A node of any entity cannot be restricted to a project.");
    SqlPiece membership{MembershipSql(schema_, *entity, idExpression), {*projectID_}};
    if (membership.text.empty()) membership = {"1 = 0", {}};
    level.Where(std::move(membership));
  }

  void Follow(const Node& near, const DeclaredRelation& relation, Level& level) {
    if (near.entity == nullptr) throw RelationError(relation, "no relation can start from a node of any entity");
    if (!relation.target) return AddCount(near, relation);
    Node far;
    far.declared = &path_.nodes[*relation.target];
    far.isNegated = near.isNegated || relation.step.isNegated;
    if (far.declared->entity) far.entity = &EntityOf(*far.declared);
    if (!relation.step.isNegated) return Step(near, relation, far, level);
    if (DeliversAnything(*far.declared)) {
      throw RelationError(relation,
                          "a node behind a link that must not exist delivers nothing; its fetch list must be empty");
    }
    Level inner;
    Step(near, relation, far, inner);
    SqlPiece piece{fmt::format("NOT EXISTS (SELECT 1{})", FromAndWhere(inner)), std::move(inner.listParameters)};
    AppendParameters(piece.parameters, std::move(inner.conditionParameters));
    level.Where(std::move(piece));
  }

  static bool DeliversAnything(const DeclaredNode& node) {
    return !node.items.empty() || (node.condition && (node.condition->fetchID || !node.condition->attributes.empty()));
  }

  void Step(const Node& near, const DeclaredRelation& relation, Node& far, Level& level) {
    if (relation.step.closure == Closure::None) {
      StepByLink(near, relation, far, level);
    } else {
      StepByOwners(near, relation, far, level);
    }
    RestrictToProject(far.entity, far.idExpression, relation.inProject, level);
    CompileNode(far, level);
  }

  void StepByLink(const Node& near, const DeclaredRelation& relation, Node& far, Level& level) {
    const auto directed = ResolveLink(*near.entity, relation, far.entity);
    far.entity = &directed.Far();
    far.alias = NextAlias("n");
    const std::string link = NextAlias("r");
    far.idExpression = fmt::format("{}.\"{}\"", link, directed.FarColumn());
    level.sources.push_back({directed.relation->Table() + " " + link,
                             fmt::format("{}.\"{}\" = {}", link, directed.NearColumn(), near.idExpression)});
  }

  void StepByOwners(const Node& near, const DeclaredRelation& relation, Node& far, Level& level) {
    far.ownerPaths = OwnerPaths(schema_, *near.entity, relation.step.name, relation.step.closure, far.entity);
    if (far.ownerPaths.empty()) {
      throw RelationError(relation, fmt::format("no such walk leads from {} to {}", near.entity->Name(),
                                                far.entity != nullptr ? far.entity->Name() : "any entity"));
    }
    const std::string walk = NextAlias("w");
    far.alias = far.entity == nullptr ? walk : NextAlias("n");
    far.idExpression = walk + ".\"ID\"";
    level.sources.push_back({walk, fmt::format("{}.\"NearID\" = {}", walk, near.idExpression)});
  }

  DirectedRelation ResolveLink(const StoreEntity& near, const DeclaredRelation& relation,
                               const StoreEntity* far) const {
    if (far != nullptr) {
      if (const auto found = schema_.FindRelation(near, relation.step.name, *far)) return *found;
      throw RelationError(
          relation, fmt::format("{} and {} have no relation \"{}\"", near.Name(), far->Name(), relation.step.name));
    }
    const auto found = schema_.FindRelations(near, relation.step.name);
    if (found.size() == 1) return found.front();
    throw RelationError(relation, fmt::format("{} has {} relation \"{}\"", near.Name(),
                                              found.empty() ? "no" : "more than one", relation.step.name));
  }

  void AddCount(const Node& near, const DeclaredRelation& relation) {
    const auto directed = ResolveLink(*near.entity, relation, nullptr);
    const std::string link = NextAlias("r");
    std::string sql = fmt::format("(SELECT COUNT(*) FROM {} {} WHERE {}.\"{}\" = {}", directed.relation->Table(), link,
                                  link, directed.NearColumn(), near.idExpression);
    if (relation.inProject && projectID_) {
      const auto membership =
          MembershipSql(schema_, directed.Far(), fmt::format("{}.\"{}\"", link, directed.FarColumn()));
      if (!membership.empty()) {
        sql += " AND " + membership;
        outputParameters_.emplace_back(*projectID_);
      }
    }
    // Later counts go before earlier ones; their parameters need no such care, since all are the one project.
    outputs_.insert(outputs_.begin(), {OutputColumn{relation.countAlias, AttrType::Integer}, sql + ")"});
  }

  static Error RelationError(const DeclaredRelation& relation, std::string_view reason) {
    return ColumnError({"relation", relation.text}, 1, reason);
  }

  // A list stands before the tables that it is joined with, which CROSS JOIN makes sure of.
  static std::string FromAndWhere(const Level& level) {
    std::string sql;
    std::string conditions;
    const auto add = [&](const Source& source) {
      if (sql.empty()) {
        sql = " FROM " + source.table;
        conditions = source.condition;
      } else if (source.condition.empty()) {
        sql += " CROSS JOIN " + source.table;
      } else {
        sql += " JOIN " + source.table + " ON " + source.condition;
      }
    };
    std::for_each(level.lists.begin(), level.lists.end(), add);
    std::for_each(level.sources.begin(), level.sources.end(), add);
    for (const auto& condition : level.conditions) {
      if (!conditions.empty()) conditions += " AND ";
      conditions += condition;
    }
    if (!conditions.empty()) sql += " WHERE " + conditions;
    return sql;
  }

  std::string OrderBy() const {
    const bool isDescending = !sorts_.empty() && sorts_.back().isDescending;
    std::string sql;
    for (const auto& sort : sorts_) {
      sql += sql.empty() ? " ORDER BY " : ", ";
      sql += sort.expression + (sort.isDescending ? " DESC" : "");
    }
    for (const auto& id : idExpressions_) {
      sql += sql.empty() ? " ORDER BY " : ", ";
      sql += id + (isDescending ? " DESC" : "");
    }
    return sql;
  }

  CompiledFetch Render() {
    CompiledFetch compiled;
    std::string columns;
    for (auto& [column, expression] : outputs_) {
      columns += (columns.empty() ? "" : ", ") + expression;
      compiled.columns.push_back(std::move(column));
    }
    if (columns.empty()) columns = "1";
    compiled.statement.text = "SELECT " + columns + FromAndWhere(level_) + OrderBy();
    compiled.statement.parameters = std::move(outputParameters_);
    AppendParameters(compiled.statement.parameters, std::move(level_.listParameters));
    AppendParameters(compiled.statement.parameters, std::move(level_.conditionParameters));
    return compiled;
  }

  const StoreSchema& schema_;
  const FetchPath& path_;
  std::optional<std::int32_t> projectID_;
  bool isSorted_ = false;
  int aliases_ = 0;
  Level level_;
  std::vector<std::pair<OutputColumn, std::string>> outputs_;
  std::vector<StoredValue> outputParameters_;
  std::vector<SortKey> sorts_;
  std::vector<std::string> idExpressions_;
};

}  // namespace

CompiledFetch CompileFetch(const StoreSchema& schema, const FetchPath& path, std::optional<std::int32_t> projectID) {
  return FetchCompiler(schema, path, projectID).Compile();
}

}  // namespace qmrules::workbench::repository
