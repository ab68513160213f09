#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/database.h"

namespace qmrules::workbench {

class DatabaseConnection;

// A SQLite database as the logic addresses it: one statement at a time, which reads rows (select) or changes them
// (insert, update, delete). Everything else is refused, since parts of the text may come from outside: other files
// (ATTACH, VACUUM INTO, load_extension), settings (PRAGMA), transactions, changes of the tables' layout. Names of
// tables, columns and indexes are taken in any case. Errors name the file and the statement.
class SqliteDatabase final : public platform::Database {
 public:
  // Opens an existing file; errors as told for DatabaseEngine::OpenDatabase.
  explicit SqliteDatabase(std::string_view path);
  ~SqliteDatabase() override;

  // The recordset may outlive this object. Its rows are read while it is walked: a row that is changed before the walk
  // reaches it comes changed.
  std::unique_ptr<platform::Recordset> OpenRecordset(std::string_view tableOrQuery) override;
  void Execute(std::string_view statement) override;
  // 0 before the first Execute and after one that failed.
  std::int64_t RecordsAffected() const override { return recordsAffected_; }

 private:
  std::shared_ptr<DatabaseConnection> connection_;
  std::int64_t recordsAffected_ = 0;
};

class SqliteDatabaseEngine final : public platform::DatabaseEngine {
 public:
  std::unique_ptr<platform::Database> OpenDatabase(std::string_view path) override;
};

}  // namespace qmrules::workbench
