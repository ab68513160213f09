#include "workbench/repository/sqliteconnection.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <cstring>
#include <stdexcept>

#include "platform/error.h"
#include "shell/casefold.h"
#include "shell/likepattern.h"

namespace qmrules::workbench::repository {

namespace {

using platform::Error;

constexpr std::size_t quotedStatementLength = 400;
constexpr int kBusyStep = 5;  // milliseconds

struct CloseConnection {
  void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
};
struct FinalizeStatement {
  void operator()(sqlite3_stmt* handle) const { sqlite3_finalize(handle); }
};

[[noreturn]] void Fail(sqlite3* handle, const std::string& name, std::string_view statement) {
  const int code = sqlite3_errcode(handle);
  const std::string reason = sqlite3_errmsg(handle);
  switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      throw Error(
          fmt::format("The catalogue \"{}\" is in use by another process; try again when it has finished.", name));
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
      throw Error(
          fmt::format("\"{}\" is not a catalogue, or it is damaged ({}). Put back a copy of the file.", name, reason));
    case SQLITE_FULL:
      throw Error(fmt::format("There is no room left to write \"{}\"; make room and repeat the command.", name));
    case SQLITE_READONLY:
      throw Error(fmt::format("\"{}\" may not be written; check its permissions and those of its folder.", name));
    case SQLITE_CANTOPEN:
      throw Error(fmt::format("\"{}\" cannot be opened; check that its folder exists and may be written.", name));
    default:
      break;
  }
  throw Error(fmt::format("The catalogue \"{}\" refused the statement \"{}\": {}.", name,
                          statement.substr(0, quotedStatementLength), reason));
}

class SqliteStatement final : public Statement {
 public:
  SqliteStatement(sqlite3* connection, const std::string& name, std::string_view sql)
      : connection_(connection), name_(name) {
    sqlite3_stmt* handle = nullptr;
    if (sqlite3_prepare_v2(connection, sql.data(), static_cast<int>(sql.size()), &handle, nullptr) != SQLITE_OK) {
      Fail(connection, name, sql);
    }
    handle_.reset(handle);
  }

  void BindNull(int parameter) override { Check(sqlite3_bind_null(handle_.get(), parameter + 1)); }
  void BindInteger(int parameter, std::int64_t value) override {
    Check(sqlite3_bind_int64(handle_.get(), parameter + 1, value));
  }
  void BindText(int parameter, std::string_view value) override {
    Check(sqlite3_bind_text64(handle_.get(), parameter + 1, value.empty() ? "" : value.data(), value.size(),
                              SQLITE_TRANSIENT, SQLITE_UTF8));
  }
  void BindTextInPlace(int parameter, std::string_view value) override {
    Check(sqlite3_bind_text64(handle_.get(), parameter + 1, value.empty() ? "" : value.data(), value.size(),
                              SQLITE_STATIC, SQLITE_UTF8));
  }

  bool Step() override {
    const int code = sqlite3_step(handle_.get());
    if (code == SQLITE_ROW) return true;
    if (code == SQLITE_DONE) return false;
    Fail(connection_, name_, sqlite3_sql(handle_.get()));
  }
  void Reset() override {
    // The code repeats the last Step's failure, which that call has told of.
    sqlite3_reset(handle_.get());
    sqlite3_clear_bindings(handle_.get());
  }

  bool IsNull(int column) const override { return sqlite3_column_type(handle_.get(), column) == SQLITE_NULL; }
  bool IsInteger(int column) const override { return sqlite3_column_type(handle_.get(), column) == SQLITE_INTEGER; }
  std::int64_t Integer(int column) const override { return sqlite3_column_int64(handle_.get(), column); }
  std::string_view Text(int column) const override {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(handle_.get(), column));
    if (text == nullptr) return {};
    return {text, static_cast<std::size_t>(sqlite3_column_bytes(handle_.get(), column))};
  }

 private:
  void Check(int code) {
    if (code != SQLITE_OK) Fail(connection_, name_, sqlite3_sql(handle_.get()));
  }

  sqlite3* connection_;
  const std::string& name_;
  std::unique_ptr<sqlite3_stmt, FinalizeStatement> handle_;
};

std::string_view ValueText(sqlite3_value* value) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
  if (text == nullptr) return {};
  return {text, static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

// qmlike(pattern, text). The compiled pattern stays with the statement while the pattern does not change.
void Like(sqlite3_context* context, int, sqlite3_value** arguments) {
  auto* pattern = static_cast<shell::LikePattern*>(sqlite3_get_auxdata(context, 0));
  std::unique_ptr<shell::LikePattern> made;
  if (pattern == nullptr) {
    try {
      made = std::make_unique<shell::LikePattern>(ValueText(arguments[0]));
    } catch (const std::exception& failure) {
      sqlite3_result_error(context, failure.what(), -1);
      return;
    }
    pattern = made.get();
  }
  sqlite3_result_int(context, pattern->Matches(ValueText(arguments[1])) ? 1 : 0);
  if (made) {
    sqlite3_set_auxdata(context, 0, made.release(), [](void* held) { delete static_cast<shell::LikePattern*>(held); });
  }
}

int CompareCase(void*, int lengthA, const void* a, int lengthB, const void* b) {
  // Sorting compares like with like most of the time.
  if (lengthA == lengthB && std::memcmp(a, b, static_cast<std::size_t>(lengthA)) == 0) return 0;
  const std::string_view textA(static_cast<const char*>(a), static_cast<std::size_t>(lengthA));
  const std::string_view textB(static_cast<const char*>(b), static_cast<std::size_t>(lengthB));
  return shell::CompareIgnoringCase(textA, textB);
}

class SqliteConnection final : public Connection {
 public:
  SqliteConnection(const std::string& path, Durability durability, int busyMilliseconds)
      : name_(path), busyMilliseconds_(busyMilliseconds) {
    sqlite3* handle = nullptr;
    // Without the library's own locks: a connection belongs to one thread.
    constexpr int openFlags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
    const int code = sqlite3_open_v2(path.c_str(), &handle, openFlags, nullptr);
    handle_.reset(handle);
    if (code != SQLITE_OK) Fail(handle, name_, "open");
    sqlite3_extended_result_codes(handle, 1);
    sqlite3_busy_timeout(handle, busyMilliseconds);
    constexpr int textFlags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    sqlite3_create_function_v2(handle, "qmlike", 2, textFlags, nullptr, Like, nullptr, nullptr, nullptr);
    sqlite3_create_collation_v2(handle, "QMCASE", SQLITE_UTF8, nullptr, CompareCase, nullptr);
    Execute(durability == Durability::Full ? "PRAGMA synchronous = FULL" : "PRAGMA synchronous = OFF");
    Execute("PRAGMA temp_store = FILE");
    // A sort takes as much memory as the cache may have, so that is small; a write may hold more before it spills.
    Execute("PRAGMA cache_size = -8192");
    Execute("PRAGMA cache_spill = -32768");
    // Pages that many commits change go from the log to the file once for some thousands of pages.
    Execute("PRAGMA wal_autocheckpoint = 8192");
  }

  std::unique_ptr<Statement> Prepare(std::string_view sql) override {
    return std::make_unique<SqliteStatement>(handle_.get(), name_, sql);
  }
  void Execute(const std::string& sql) override {
    if (sqlite3_exec(handle_.get(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
      Fail(handle_.get(), name_, sql);
  }
  std::int64_t LastInsertedID() const override { return sqlite3_last_insert_rowid(handle_.get()); }
  std::int64_t ChangedRows() const override { return sqlite3_changes64(handle_.get()); }
  std::int64_t ForeignVersion() override {
    SqliteStatement statement(handle_.get(), name_, "PRAGMA data_version");
    statement.Step();
    return statement.Integer(0);
  }
  bool InTransaction() const override { return sqlite3_get_autocommit(handle_.get()) == 0; }
  // With the write-ahead log readers and one writer do not wait for each other. The file keeps this mode. While the
  // mode is changed SQLite does not wait for a process that does the same, so the waiting is done here.
  void TakeOver() override {
    const std::string sql = "PRAGMA journal_mode = WAL";
    for (int waited = 0;; waited += kBusyStep) {
      const int code = sqlite3_exec(handle_.get(), sql.c_str(), nullptr, nullptr, nullptr);
      if (code == SQLITE_OK) return;
      if ((code & 0xff) != SQLITE_BUSY || waited >= busyMilliseconds_) Fail(handle_.get(), name_, sql);
      sqlite3_sleep(kBusyStep);
    }
  }
  const std::string& Name() const override { return name_; }

 private:
  std::string name_;
  int busyMilliseconds_;
  std::unique_ptr<sqlite3, CloseConnection> handle_;
};

}  // namespace

std::unique_ptr<Connection> OpenSqliteConnection(const std::string& path, Durability durability, int busyMilliseconds) {
  return std::make_unique<SqliteConnection>(path, durability, busyMilliseconds);
}

}  // namespace qmrules::workbench::repository
