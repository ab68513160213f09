#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/database.h"
#include "workbench/databases/databaseconnection.h"

namespace qmrules::workbench {

// The rows of a table or of a select statement. It stands on the first row at once.
class SqliteRecordset final : public platform::Recordset {
 public:
  // The whole table, in the order in which its rows were made.
  static std::unique_ptr<SqliteRecordset> OfTable(std::shared_ptr<DatabaseConnection> connection, std::string table);
  // The rows of the select statement. Error for a statement of another kind.
  static std::unique_ptr<SqliteRecordset> OfQuery(std::shared_ptr<DatabaseConnection> connection,
                                                  std::string_view query);

  bool Eof() const override { return !onRow_; }
  void MoveNext() override;
  platform::Value Field(std::string_view name) const override;
  // Starts anew at the first row in the index's order.
  void SetIndex(std::string_view name) override;
  // "First" is meant in the index's order, for every comparison. Only the index's first column is compared; an absent
  // one never compares. MoveNext goes on from there in the index's order, to rows that compare otherwise as well.
  bool Seek(std::string_view comparison, const platform::Value& value) override;
  void Close() override;

 private:
  SqliteRecordset(std::shared_ptr<DatabaseConnection> connection, std::string table);
  void Start(SqliteStatement statement);
  void RequireOpen() const;
  void Bind(sqlite3_stmt& statement, const platform::Value& value) const;
  std::string IndexOrder() const;

  // Declared first: the statement must go before the connection.
  std::shared_ptr<DatabaseConnection> connection_;
  SqliteStatement statement_;
  std::string table_;  // "" for a query
  std::vector<std::string> indexColumns_;
  std::vector<std::string> columns_;
  // The statements of the last Seek, for the next one of the same comparison; statement_ is the walk then.
  std::string seekComparison_;
  SqliteStatement seekProbe_;
  bool onRow_ = false;
};

}  // namespace qmrules::workbench
