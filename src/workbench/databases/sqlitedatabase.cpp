#include "workbench/databases/sqlitedatabase.h"

#include <fmt/format.h>

#include "workbench/databases/databaseconnection.h"
#include "workbench/databases/sqliterecordset.h"

namespace qmrules::workbench {

SqliteDatabase::SqliteDatabase(std::string_view path) : connection_(std::make_shared<DatabaseConnection>(path)) {}

SqliteDatabase::~SqliteDatabase() = default;

std::unique_ptr<platform::Recordset> SqliteDatabase::OpenRecordset(std::string_view tableOrQuery) {
  auto table = connection_->FindTable(tableOrQuery);
  if (!table.empty()) return SqliteRecordset::OfTable(connection_, std::move(table));
  if (tableOrQuery.find_first_of(" \t\r\n") == std::string_view::npos) {
    throw platform::Error(fmt::format("The database \"{}\" has no table \"{}\".", connection_->Path(), tableOrQuery));
  }
  return SqliteRecordset::OfQuery(connection_, tableOrQuery);
}

void SqliteDatabase::Execute(std::string_view statement) {
  recordsAffected_ = 0;
  const auto prepared = connection_->Prepare(statement);
  if (sqlite3_stmt_readonly(prepared.get()) != 0 || sqlite3_stmt_isexplain(prepared.get()) != 0) {
    throw connection_->Refusal(statement, "it changes no rows; open a recordset to read them");
  }
  // "returning" makes a changing statement give rows; they are passed over.
  while (connection_->Step(*prepared)) continue;
  recordsAffected_ = sqlite3_changes64(connection_->Handle());
}

std::unique_ptr<platform::Database> SqliteDatabaseEngine::OpenDatabase(std::string_view path) {
  return std::make_unique<SqliteDatabase>(path);
}

}  // namespace qmrules::workbench
