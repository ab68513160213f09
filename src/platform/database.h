#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/value.h"

namespace qmrules::platform {

// The rows of a table or of a query, walked forward.
class Recordset {
 public:
  virtual ~Recordset() = default;
  virtual bool Eof() const = 0;
  virtual void MoveNext() = 0;
  // A column of the current row, named in any case. Throws Error for an unknown name and past the last row.
  virtual Value Field(std::string_view name) const = 0;
  // Names the index that Seek uses. Only for a recordset opened on a table; Error for any other and an unknown index.
  virtual void SetIndex(std::string_view name) = 0;
  // Moves to the first row whose index column compares so ("=", ">=", ">", "<=", "<") with the value. False, with
  // Eof() true, when there is none.
  virtual bool Seek(std::string_view comparison, const Value& value) = 0;
  virtual void Close() = 0;
};

// A database that the logic addresses by SQL text.
class Database {
 public:
  virtual ~Database() = default;
  // Opens a table by its name, or runs a "select" statement. Throws Error with the statement when it is refused.
  virtual std::unique_ptr<Recordset> OpenRecordset(std::string_view tableOrQuery) = 0;
  // Runs a statement that changes rows.
  virtual void Execute(std::string_view statement) = 0;
  // Rows changed by the last Execute.
  virtual std::int64_t RecordsAffected() const = 0;
};

// Opens database files for the logic.
class DatabaseEngine {
 public:
  virtual ~DatabaseEngine() = default;
  // Opens an existing file, in the system's path form ("\" or "/"). Throws Error, naming the file, when there is none
  // or it is no database.
  virtual std::unique_ptr<Database> OpenDatabase(std::string_view path) = 0;
};

}  // namespace qmrules::platform
