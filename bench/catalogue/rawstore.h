#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace qmrules::bench {

// The other side of every comparison: the store's file by way of the database's own calls and hand-written statements,
// with the settings that the store itself uses. Failures throw std::runtime_error.

class RawStatement {
 public:
  RawStatement(sqlite3* connection, std::string_view sql);
  // Parameters count from 1.
  void Bind(int parameter, std::int64_t value);
  // The text must live until the statement has run.
  void Bind(int parameter, std::string_view value);
  bool Step();
  // Steps to the end and makes the statement ready to be run again.
  void Run();
  std::string Text(int column) const;
  std::int64_t Integer(int column) const { return sqlite3_column_int64(handle_.get(), column); }

 private:
  void Check(int code) const;
  struct Finalize {
    void operator()(sqlite3_stmt* handle) const { sqlite3_finalize(handle); }
  };
  sqlite3* connection_;
  std::unique_ptr<sqlite3_stmt, Finalize> handle_;
};

class RawStore {
 public:
  explicit RawStore(const std::string& path);
  RawStatement Prepare(std::string_view sql) { return {handle_.get(), sql}; }
  void Execute(const std::string& sql) { Prepare(sql).Run(); }
  std::int64_t LastID() const { return sqlite3_last_insert_rowid(handle_.get()); }

 private:
  struct Close {
    void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
  };
  std::unique_ptr<sqlite3, Close> handle_;
};

}  // namespace qmrules::bench
