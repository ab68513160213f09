#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "workbench/repository/attributetest.h"
#include "workbench/repository/condition.h"
#include "workbench/repository/fetchlist.h"
#include "workbench/repository/filter.h"
#include "workbench/repository/relationpath.h"
#include "workbench/repository/storeschema.h"

// From a declared path to one SQL statement. The path
//
//     BUSINESSFUNC --"Triggers"--> RULESETCALL --"Refers"--> RULESET [in project]
//     ">Name:FuncName"             ">SeqNo"                  "ID:SetID" and the count of "Has"
//
// becomes, with a table of links for each step and an entity's table only where an attribute of it is asked for:
//
//     SELECT r1."FromID" ..., (SELECT COUNT(*) FROM "VekRuleSetHasRuleTbl" ...)
//     FROM "VekBUSINESSFUNCTbl" n0 JOIN "Vek...Tbl" r1 ON ... JOIN "VekRULESETCALLTbl" n1 ON ... JOIN ...
//     WHERE EXISTS (... the project's link ...) ORDER BY ...
//
// A closure walk becomes a UNION ALL of the ways that the schema has from owner to owned; a link that must not exist
// becomes NOT EXISTS around the rest of the path.

namespace qmrules::workbench::repository {

struct DeclaredNode {
  bool inProject = false;
  std::optional<std::string> entity;  // absent: any entity
  std::string fetchList;
  std::vector<FetchItem> items;
  std::string filterText;
  std::unique_ptr<FilterExpression> filter;
  std::unique_ptr<ConditionObject> condition;  // in place of a filter
  std::optional<std::size_t> related;          // the relation that starts here
};

struct DeclaredRelation {
  std::string text;
  RelationStep step;
  bool inProject = false;
  std::optional<std::size_t> target;  // absent: only the number of objects at the end is delivered
  std::string countAlias;
};

struct FetchPath {
  std::vector<DeclaredNode> nodes;
  std::vector<DeclaredRelation> relations;
  std::optional<std::size_t> root;
};

struct OutputColumn {
  std::string name;
  platform::AttrType type = platform::AttrType::Char;
};

struct CompiledFetch {
  SqlPiece statement;
  std::vector<OutputColumn> columns;  // of the far end first, so that of one name the far end's is found first
};

// `projectID` restricts the nodes that are declared in project; without it they are not restricted.
// Throws platform::Error, naming the text and the column, for what the schema does not have.
CompiledFetch CompileFetch(const StoreSchema& schema, const FetchPath& path, std::optional<std::int32_t> projectID);

}  // namespace qmrules::workbench::repository
