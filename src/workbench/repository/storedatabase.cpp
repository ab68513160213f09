#include "workbench/repository/storedatabase.h"

#include <fmt/format.h>

#include "platform/error.h"
#include "platform/objectkey.h"
#include "shell/casefold.h"
#include "workbench/repository/attributetest.h"

namespace qmrules::workbench::repository {

using platform::Error;
using platform::Value;

namespace {

const StoreEntity& EntityOfTable(const StoreSchema& schema, std::string_view table) {
  for (const auto& entity : schema.AllEntities()) {
    if (shell::EqualIgnoringCase(entity->TableName(), table)) return *entity;
  }
  throw Error(fmt::format("The catalogue has no table \"{}\".", table));
}

// Column and type of an attribute, or of ObjectID.
struct Column {
  std::string sql;
  const StoreAttribute* attribute = nullptr;  // nullptr: ObjectID
};

Column FindColumn(const StoreEntity& entity, const std::string& name) {
  if (shell::EqualIgnoringCase(name, "ObjectID")) return {"\"ObjectID\"", nullptr};
  const auto& attribute = *entity.Attributes()[entity.PlaceOf(name)];
  return {attribute.Column(), &attribute};
}

StoredValue LiteralValue(const Column& column, const StatementLiteral& literal) {
  if (column.attribute == nullptr) return Value(literal.text).Integer();
  if (!literal.isQuoted && shell::EqualIgnoringCase(literal.text, "null")) return {};
  return ToStored(*column.attribute, Value(literal.text));
}

SqlPiece ListCondition(const Column& column, const ContractStatement& statement) {
  std::vector<std::int64_t> numbers;
  std::vector<std::string> texts;
  for (const auto& literal : statement.list) {
    const auto value = LiteralValue(column, literal);
    if (const auto* number = std::get_if<std::int64_t>(&value)) numbers.push_back(*number);
    if (const auto* text = std::get_if<std::string>(&value)) texts.push_back(*text);
  }
  const bool isInteger = column.attribute == nullptr || column.attribute->Type() == platform::AttrType::Integer;
  return {fmt::format("{} {}IN (SELECT value FROM json_each(?))", column.sql, statement.isNegated ? "NOT " : ""),
          {isInteger ? JsonList(numbers) : JsonList(texts)}};
}

}  // namespace

std::unique_ptr<platform::Recordset> StoreDatabase::OpenRecordset(std::string_view tableOrQuery) {
  throw Error(fmt::format("The catalogue does not run \"{}\": its tables are read through a fetch.", tableOrQuery));
}

void StoreDatabase::Execute(std::string_view text) {
  recordsAffected_ = 0;
  const auto statement = ParseContractStatement(text);
  const auto& entity = EntityOfTable(session_.Schema(), statement.table);
  const auto target = FindColumn(entity, statement.setColumn);
  if (target.attribute == nullptr) throw Error("ObjectID cannot be changed.");
  if (target.attribute->Name() == "Name") {
    throw Error(fmt::format("The Name of a {} is changed through the object, not by a statement.", entity.Caption()));
  }
  const auto newValue = LiteralValue(target, statement.setValue);
  auto condition = ListCondition(FindColumn(entity, statement.listColumn), statement);
  if (statement.extra) {
    const auto column = FindColumn(entity, statement.extra->column);
    condition.text += fmt::format(" AND {} = ?", column.sql);
    condition.parameters.push_back(LiteralValue(column, statement.extra->value));
  }

  WriteScope scope(session_);
  {
    const auto rows = session_.Use(
        fmt::format("SELECT \"ObjectID\", {} FROM {} WHERE {}", target.sql, entity.Table(), condition.text));
    int parameter = 0;
    for (const auto& value : condition.parameters) Bind(*rows, parameter++, value);
    while (rows->Step()) {
      const auto before = ReadStored(*rows, 1);
      if (before == newValue) continue;
      const auto key = platform::MakeKey(entity.Name(), static_cast<std::int32_t>(rows->Integer(0)));
      session_.Journal().MakeRoom();
      session_.Journal().Append(ChangeEntry(JournalAction::Edit, key, {{target.attribute, before, newValue}}));
    }
  }
  {
    const auto update =
        session_.Use(fmt::format("UPDATE {} SET {} = ? WHERE {}", entity.Table(), target.sql, condition.text));
    int parameter = 0;
    Bind(*update, parameter++, newValue);
    for (const auto& value : condition.parameters) Bind(*update, parameter++, value);
    update->Step();
  }
  recordsAffected_ = session_.Database().ChangedRows();
  scope.Complete();
}

}  // namespace qmrules::workbench::repository
