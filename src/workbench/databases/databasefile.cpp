#include "workbench/databases/databasefile.h"

#include <fmt/format.h>

#include <filesystem>
#include <system_error>

#include "platform/diskfile.h"
#include "platform/error.h"

namespace qmrules::workbench {

namespace {

using platform::Error;

constexpr int busyMilliseconds = 10000;

// SQLite takes a name that begins with "file:" as an address of its own kind; an absolute path never does.
std::string AbsolutePath(std::string_view path) {
  return std::filesystem::absolute(platform::DiskPath(path)).lexically_normal().string();
}

// Removes a file that could not be finished, with what SQLite lays beside it. The text tells what could not be removed.
std::string RemoveUnfinished(const std::string& file) {
  std::string left;
  for (const char* suffix : {"", "-journal"}) {
    std::error_code failed;
    std::filesystem::remove(file + suffix, failed);
    if (failed) left += fmt::format(" The unfinished file \"{}{}\" is left: remove it.", file, suffix);
  }
  return left;
}

SqliteConnection OpenConnection(std::string_view path, const std::string& file, int flags) {
  sqlite3* handle = nullptr;
  const int code = sqlite3_open_v2(file.c_str(), &handle, flags, nullptr);
  SqliteConnection connection(handle);
  if (code != SQLITE_OK) {
    const char* reason = handle == nullptr ? sqlite3_errstr(code) : sqlite3_errmsg(handle);
    throw Error(fmt::format("The database \"{}\" cannot be opened: {}.", path, reason));
  }
  sqlite3_extended_result_codes(handle, 1);
  sqlite3_busy_timeout(handle, busyMilliseconds);
  return connection;
}

}  // namespace

void CreateDatabaseFile(const std::string& path, const DatabaseFormat& format, const char* statements) {
  const std::string file = AbsolutePath(path);
  std::error_code failed;
  if (std::filesystem::exists(std::filesystem::symlink_status(file, failed))) {
    throw Error(fmt::format("The database \"{}\" cannot be made: a file of this name exists. Move it away.", path));
  }
  std::string reason;
  {
    const SqliteConnection connection = OpenConnection(path, file, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    const std::string script = fmt::format("PRAGMA application_id={};PRAGMA user_version={};BEGIN;{};COMMIT",
                                           format.applicationID, format.version, statements);
    if (sqlite3_exec(connection.get(), script.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK) return;
    reason = sqlite3_errmsg(connection.get());
  }
  throw Error(fmt::format("The database \"{}\" cannot be made: {}.{}", path, reason, RemoveUnfinished(file)));
}

SqliteConnection OpenDatabaseFile(std::string_view path) {
  const std::string file = AbsolutePath(path);
  std::error_code failed;
  const auto status = std::filesystem::status(file, failed);
  if (!std::filesystem::exists(status)) {
    throw Error(fmt::format("The database \"{}\" cannot be opened: there is no such file.", path));
  }
  if (!std::filesystem::is_regular_file(status)) {
    throw Error(fmt::format("The database \"{}\" cannot be opened: it is not an ordinary file.", path));
  }
  // SQLite takes a file without a byte for a database without tables.
  if (std::filesystem::file_size(file, failed) == 0) {
    throw Error(fmt::format("The database \"{}\" cannot be opened: the file is empty.", path));
  }
  SqliteConnection connection = OpenConnection(path, file, SQLITE_OPEN_READWRITE);
  // Only the first look into the file tells whether it is a database.
  if (sqlite3_exec(connection.get(), "SELECT count(*) FROM sqlite_schema", nullptr, nullptr, nullptr) != SQLITE_OK) {
    throw Error(fmt::format("The database \"{}\" cannot be opened: {}.", path, sqlite3_errmsg(connection.get())));
  }
  return connection;
}

}  // namespace qmrules::workbench
