#include "workbench/databases/sqliterecordset.h"

#include <fmt/format.h>

#include <array>
#include <utility>

#include "shell/casefold.h"

namespace qmrules::workbench {

namespace {

using platform::Error;
using platform::Value;

// How a comparison is sought: whether a row compares so, and the rows from the first such one on. A row of the least
// value is the first that is less than another, so those walks start at the index's beginning.
struct SeekForm {
  std::string_view comparison;
  std::string_view walkFrom;
};
constexpr std::array<SeekForm, 5> seekForms{{
    {"=", ">= ?1"},
    {">=", ">= ?1"},
    {">", "> ?1"},
    {"<=", "IS NOT NULL"},
    {"<", "IS NOT NULL"},
}};

struct BindParameter {
  sqlite3_stmt* statement;

  int operator()(std::monostate) const { return sqlite3_bind_null(statement, 1); }
  int operator()(bool value) const { return sqlite3_bind_int64(statement, 1, value ? 1 : 0); }
  int operator()(std::int64_t value) const { return sqlite3_bind_int64(statement, 1, value); }
  int operator()(double value) const { return sqlite3_bind_double(statement, 1, value); }
  int operator()(const std::string& value) const {
    return sqlite3_bind_text64(statement, 1, value.c_str(), value.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  }
  int operator()(platform::Timestamp value) const { return (*this)(platform::FormatTimestamp(value)); }
};

}  // namespace

SqliteRecordset::SqliteRecordset(std::shared_ptr<DatabaseConnection> connection, std::string table)
    : connection_(std::move(connection)), table_(std::move(table)) {}

std::unique_ptr<SqliteRecordset> SqliteRecordset::OfTable(std::shared_ptr<DatabaseConnection> connection,
                                                          std::string table) {
  std::unique_ptr<SqliteRecordset> result(new SqliteRecordset(std::move(connection), std::move(table)));
  result->Start(result->connection_->Prepare(fmt::format("SELECT * FROM {}", QuoteName(result->table_))));
  return result;
}

std::unique_ptr<SqliteRecordset> SqliteRecordset::OfQuery(std::shared_ptr<DatabaseConnection> connection,
                                                          std::string_view query) {
  SqliteStatement statement = connection->Prepare(query);
  const bool givesRows = sqlite3_column_count(statement.get()) > 0 && sqlite3_stmt_readonly(statement.get()) != 0 &&
                         sqlite3_stmt_isexplain(statement.get()) == 0;
  if (!givesRows) throw connection->Refusal(query, "only a table or a select statement can be opened");
  std::unique_ptr<SqliteRecordset> result(new SqliteRecordset(std::move(connection), {}));
  result->Start(std::move(statement));
  return result;
}

void SqliteRecordset::Start(SqliteStatement statement) {
  onRow_ = false;
  statement_ = std::move(statement);
  onRow_ = connection_->Step(*statement_);
  // Read after the first step, which takes in a layout that has changed meanwhile.
  columns_.clear();
  const int count = sqlite3_column_count(statement_.get());
  for (int column = 0; column < count; ++column) columns_.emplace_back(sqlite3_column_name(statement_.get(), column));
}

void SqliteRecordset::RequireOpen() const {
  if (!connection_) throw Error("A recordset was used after it had been closed.");
}

void SqliteRecordset::MoveNext() {
  RequireOpen();
  if (!onRow_) throw Error(fmt::format("The database \"{}\": there is no row to move on from.", connection_->Path()));
  onRow_ = false;
  onRow_ = connection_->Step(*statement_);
}

Value SqliteRecordset::Field(std::string_view name) const {
  RequireOpen();
  int column = 0;
  while (column < std::ssize(columns_) && !shell::EqualIgnoringCase(columns_[static_cast<std::size_t>(column)], name)) {
    ++column;
  }
  if (column == std::ssize(columns_)) {
    throw Error(fmt::format("The database \"{}\": the statement \"{}\" gives no column {}.", connection_->Path(),
                            sqlite3_sql(statement_.get()), name));
  }
  if (!onRow_)
    throw Error(fmt::format("The database \"{}\": there is no row to read {} of.", connection_->Path(), name));
  sqlite3_stmt* const row = statement_.get();
  switch (sqlite3_column_type(row, column)) {
    case SQLITE_NULL:
      return {};
    case SQLITE_INTEGER:
      return static_cast<std::int64_t>(sqlite3_column_int64(row, column));
    case SQLITE_FLOAT:
      return sqlite3_column_double(row, column);
    case SQLITE_TEXT:
      return std::string(reinterpret_cast<const char*>(sqlite3_column_text(row, column)),
                         static_cast<std::size_t>(sqlite3_column_bytes(row, column)));
    default:
      throw Error(fmt::format("The database \"{}\": the column {} holds bytes, which are no text or number.",
                              connection_->Path(), name));
  }
}

void SqliteRecordset::SetIndex(std::string_view name) {
  RequireOpen();
  if (table_.empty()) {
    throw Error(fmt::format("The database \"{}\": an index can be set for a table only, not for the statement \"{}\".",
                            connection_->Path(), sqlite3_sql(statement_.get())));
  }
  auto columns = connection_->IndexColumns(table_, name);
  indexColumns_ = std::move(columns);
  seekComparison_.clear();
  Start(connection_->Prepare(fmt::format("SELECT * FROM {} ORDER BY {}", QuoteName(table_), IndexOrder())));
}

std::string SqliteRecordset::IndexOrder() const {
  std::string order;
  for (const auto& column : indexColumns_) {
    // The name of an indexed expression is absent; the order ends before it.
    if (column.empty()) break;
    if (!order.empty()) order += ", ";
    order += QuoteName(column);
  }
  return order;
}

bool SqliteRecordset::Seek(std::string_view comparison, const Value& value) {
  RequireOpen();
  if (indexColumns_.empty()) {
    throw Error(fmt::format("The database \"{}\": an index must be set before a Seek.", connection_->Path()));
  }
  const auto* form = seekForms.begin();
  while (form != seekForms.end() && form->comparison != comparison) ++form;
  if (form == seekForms.end()) {
    throw Error(fmt::format("The database \"{}\": Seek knows =, >=, >, <= and <, not \"{}\".", connection_->Path(),
                            comparison));
  }
  onRow_ = false;
  sqlite3_reset(statement_.get());  // ends the walk before, whose failures MoveNext has told of
  if (seekComparison_ != comparison) {
    const std::string table = QuoteName(table_);
    const std::string column = QuoteName(indexColumns_.front());
    seekProbe_ =
        connection_->Prepare(fmt::format("SELECT 1 FROM {} WHERE {} {} ?1 LIMIT 1", table, column, comparison));
    statement_ = connection_->Prepare(
        fmt::format("SELECT * FROM {} WHERE {} {} ORDER BY {}", table, column, form->walkFrom, IndexOrder()));
    seekComparison_ = comparison;
  }
  Bind(*seekProbe_, value);
  const bool found = connection_->Step(*seekProbe_);
  sqlite3_reset(seekProbe_.get());
  if (!found) return false;
  Bind(*statement_, value);
  onRow_ = connection_->Step(*statement_);
  return onRow_;
}

void SqliteRecordset::Bind(sqlite3_stmt& statement, const Value& value) const {
  if (sqlite3_bind_parameter_count(&statement) == 0) return;
  if (std::visit(BindParameter{&statement}, value.Get()) != SQLITE_OK) {
    throw connection_->Refusal(sqlite3_sql(&statement));
  }
}

void SqliteRecordset::Close() {
  onRow_ = false;
  seekProbe_.reset();
  statement_.reset();
  connection_.reset();
}

}  // namespace qmrules::workbench
