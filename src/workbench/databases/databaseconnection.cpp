#include "workbench/databases/databaseconnection.h"

#include <fmt/format.h>

#include <limits>

#include "shell/casefold.h"
#include "shell/utf16.h"
#include "workbench/databases/databasefile.h"

namespace qmrules::workbench {

namespace {

using platform::Error;

constexpr std::size_t quotedStatementCharacters = 400;

std::string_view ColumnText(sqlite3_stmt& statement, int column) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(&statement, column));
  if (text == nullptr) return {};
  return {text, static_cast<std::size_t>(sqlite3_column_bytes(&statement, column))};
}

// What the statements of the logic are made of. "" for these, else the words under which the action is refused.
std::string_view RefusedAction(int action, std::string_view function) {
  switch (action) {
    case SQLITE_SELECT:
    case SQLITE_READ:
    case SQLITE_RECURSIVE:
    case SQLITE_INSERT:
    case SQLITE_UPDATE:
    case SQLITE_DELETE:
      return {};
    case SQLITE_FUNCTION:
      return shell::EqualIgnoringCase(function, "load_extension") ? "loading extensions" : "";
    case SQLITE_ATTACH:
    case SQLITE_DETACH:
      return "other database files";
    case SQLITE_PRAGMA:
      return "settings";
    case SQLITE_TRANSACTION:
    case SQLITE_SAVEPOINT:
      return "transactions";
    default:
      return "changes of the tables' layout";
  }
}

}  // namespace

std::string QuoteName(std::string_view name) {
  std::string quoted = "\"";
  for (const char character : name) {
    if (character == '"') quoted += '"';
    quoted += character;
  }
  return quoted + '"';
}

DatabaseConnection::DatabaseConnection(std::string_view path) : path_(path), connection_(OpenDatabaseFile(path)) {
  // A misspelled column in double quotes is an error then, not a text; and what the file itself brings along (views,
  // triggers, defaults) may not call functions with side effects.
  for (const int option : {SQLITE_DBCONFIG_DQS_DML, SQLITE_DBCONFIG_DQS_DDL, SQLITE_DBCONFIG_TRUSTED_SCHEMA}) {
    sqlite3_db_config(connection_.get(), option, 0, nullptr);
  }
  sqlite3_db_config(connection_.get(), SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_set_authorizer(connection_.get(), Authorize, this);
}

int DatabaseConnection::Authorize(void* self, int action, const char*, const char* second, const char*, const char*) {
  auto& connection = *static_cast<DatabaseConnection*>(self);
  if (connection.ownQuestion_) return SQLITE_OK;
  const std::string_view refused = RefusedAction(action, second == nullptr ? "" : second);
  if (refused.empty()) return SQLITE_OK;
  connection.refusedAction_ = refused;
  return SQLITE_DENY;
}

SqliteStatement DatabaseConnection::Prepare(std::string_view sql) {
  const auto zero = sql.find('\0');
  if (zero != std::string_view::npos) throw Refusal(sql.substr(0, zero), "behind this it holds the character 0");
  if (sql.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) throw Refusal(sql, "it is too long");
  refusedAction_.clear();
  SqliteStatement result;
  const char* at = sql.data();
  const char* const end = sql.data() + sql.size();
  // Blanks and comments behind the statement prepare to nothing.
  while (at != end) {
    sqlite3_stmt* next = nullptr;
    if (sqlite3_prepare_v2(Handle(), at, static_cast<int>(end - at), &next, &at) != SQLITE_OK) throw Refusal(sql);
    SqliteStatement statement(next);
    if (statement && result) throw Refusal(sql, "there is a second statement behind the first");
    if (statement) result = std::move(statement);
  }
  if (!result) throw Refusal(sql, "there is no statement in it");
  return result;
}

SqliteStatement DatabaseConnection::PrepareOwn(std::string_view sql) {
  ownQuestion_ = true;
  sqlite3_stmt* statement = nullptr;
  const int code = sqlite3_prepare_v2(Handle(), sql.data(), static_cast<int>(sql.size()), &statement, nullptr);
  ownQuestion_ = false;
  if (code != SQLITE_OK) throw Refusal(sql);
  return SqliteStatement(statement);
}

std::string DatabaseConnection::FindTable(std::string_view name) {
  const auto statement = PrepareOwn("SELECT name FROM sqlite_schema WHERE type IN ('table', 'view')");
  while (Step(*statement)) {
    const std::string_view found = ColumnText(*statement, 0);
    if (shell::EqualIgnoringCase(found, name)) return std::string(found);
  }
  return {};
}

std::vector<std::string> DatabaseConnection::IndexColumns(const std::string& table, std::string_view index) {
  std::string spelled;
  const auto list = PrepareOwn(fmt::format("PRAGMA index_list({})", QuoteName(table)));
  while (spelled.empty() && Step(*list)) {
    if (shell::EqualIgnoringCase(ColumnText(*list, 1), index)) spelled = ColumnText(*list, 1);
  }
  std::vector<std::string> columns;
  if (!spelled.empty()) {
    const auto info = PrepareOwn(fmt::format("PRAGMA index_info({})", QuoteName(spelled)));
    while (Step(*info)) columns.emplace_back(ColumnText(*info, 2));
  }
  // The name of an indexed expression, which no Seek can compare, is absent.
  if (columns.empty() || columns.front().empty()) {
    throw Error(fmt::format("The database \"{}\": the table {} has no index {}.", path_, table, index));
  }
  return columns;
}

bool DatabaseConnection::Step(sqlite3_stmt& statement) {
  const int code = sqlite3_step(&statement);
  if (code == SQLITE_ROW) return true;
  if (code == SQLITE_DONE) return false;
  throw Refusal(sqlite3_sql(&statement));
}

platform::Error DatabaseConnection::Refusal(std::string_view sql, std::string_view reason) const {
  std::string told(reason);
  if (told.empty()) told = sqlite3_errmsg(Handle());
  if (reason.empty() && !refusedAction_.empty()) told = fmt::format("{} are not allowed here", refusedAction_);
  return Error(fmt::format("The database \"{}\" refused the statement \"{}\": {}.", path_,
                           shell::CutWithEllipsis(sql, quotedStatementCharacters), told));
}

}  // namespace qmrules::workbench
