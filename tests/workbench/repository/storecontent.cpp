#include "workbench/repository/storecontent.h"

#include "workbench/repository/sqliteconnection.h"

namespace qmrules::test {

namespace repository = workbench::repository;

namespace {

std::string RowOf(const repository::Statement& statement, int columns) {
  std::string row;
  for (int column = 0; column < columns; ++column) {
    if (column > 0) row += '|';
    row += statement.IsNull(column) ? "(null)" : std::string(statement.Text(column));
  }
  return row;
}

std::vector<std::string> RowsOf(repository::Connection& connection, const std::string& sql, int columns) {
  std::vector<std::string> rows;
  const auto statement = connection.Prepare(sql);
  while (statement->Step()) rows.push_back(RowOf(*statement, columns));
  return rows;
}

}  // namespace

StoreContent ReadContent(const std::string& path) {
  const auto connection = repository::OpenSqliteConnection(path, repository::Durability::Relaxed);
  StoreContent content;
  for (const auto& table : RowsOf(*connection, "SELECT name FROM sqlite_master WHERE type = 'table'", 1)) {
    const auto columns = RowsOf(*connection, "SELECT name FROM pragma_table_info('" + table + "')", 1).size();
    content[table] = RowsOf(*connection, "SELECT * FROM \"" + table + "\" ORDER BY 1, 2", static_cast<int>(columns));
  }
  return content;
}

std::string RunSql(const std::string& path, const std::string& sql, int columns) {
  const auto connection = repository::OpenSqliteConnection(path, repository::Durability::Relaxed);
  if (columns == 0) {
    connection->Execute(sql);
    return {};
  }
  std::string text;
  for (const auto& row : RowsOf(*connection, sql, columns)) text += (text.empty() ? "" : ";") + row;
  return text;
}

std::vector<std::string> JournalEntries(const std::string& path, std::int64_t after) {
  const auto connection = repository::OpenSqliteConnection(path, repository::Durability::Relaxed);
  return RowsOf(*connection,
                "SELECT Action || ' ' || Object || CASE Other WHEN '' THEN '' ELSE ' ' || Other END || ' ' || Changes "
                "FROM VekJournalTbl WHERE EntryID > " +
                    std::to_string(after) + " ORDER BY EntryID",
                1);
}

std::int64_t LastJournalEntry(const std::string& path) {
  return std::stoll(RunSql(path, "SELECT COALESCE(MAX(EntryID), 0) FROM VekJournalTbl", 1));
}

}  // namespace qmrules::test
