#pragma once

#include <sqlite3.h>

#include <memory>

namespace qmrules::workbench {

// Owners of what SQLite hands out. A connection that closes while a statement of it lives goes with the last statement.

struct CloseSqliteConnection {
  void operator()(sqlite3* connection) const noexcept { sqlite3_close_v2(connection); }
};
using SqliteConnection = std::unique_ptr<sqlite3, CloseSqliteConnection>;

struct FinalizeSqliteStatement {
  void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
};
using SqliteStatement = std::unique_ptr<sqlite3_stmt, FinalizeSqliteStatement>;

}  // namespace qmrules::workbench
