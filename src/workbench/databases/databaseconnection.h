#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/error.h"
#include "workbench/databases/sqlitehandles.h"

namespace qmrules::workbench {

// A name as an SQL identifier, in double quotes.
std::string QuoteName(std::string_view name);

// One opened database file with the check of what its statements may do. Shared by the database and its recordsets.
class DatabaseConnection {
 public:
  explicit DatabaseConnection(std::string_view path);
  // The connection knows this object's address.
  DatabaseConnection(const DatabaseConnection&) = delete;
  DatabaseConnection& operator=(const DatabaseConnection&) = delete;

  // Prepares exactly one statement. Throws Error for none, for a second one behind it, and for one that is refused.
  SqliteStatement Prepare(std::string_view sql);

  // The same for a question of this system's own about tables and indexes.
  SqliteStatement PrepareOwn(std::string_view sql);

  // The name, as it is spelled in the file, of the table or view of this name in any case; "" for none.
  std::string FindTable(std::string_view name);

  // The columns of the table's index of this name, in any case. Error without such an index.
  std::vector<std::string> IndexColumns(const std::string& table, std::string_view index);

  // True when it stands on a row, false past the last one. Throws Error.
  bool Step(sqlite3_stmt& statement);

  // A failure of the statement: `reason` is what SQLite says where it is empty.
  platform::Error Refusal(std::string_view sql, std::string_view reason = {}) const;

  sqlite3* Handle() const { return connection_.get(); }
  const std::string& Path() const { return path_; }

 private:
  static int Authorize(void* self, int action, const char* first, const char* second, const char* database,
                       const char* trigger);

  std::string path_;
  SqliteConnection connection_;
  bool ownQuestion_ = false;
  std::string refusedAction_;
};

}  // namespace qmrules::workbench
