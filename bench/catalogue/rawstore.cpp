#include "catalogue/rawstore.h"

#include <fmt/format.h>

#include <stdexcept>

namespace qmrules::bench {

RawStatement::RawStatement(sqlite3* connection, std::string_view sql) : connection_(connection) {
  sqlite3_stmt* handle = nullptr;
  Check(sqlite3_prepare_v2(connection, sql.data(), static_cast<int>(sql.size()), &handle, nullptr));
  handle_.reset(handle);
}

void RawStatement::Bind(int parameter, std::int64_t value) {
  Check(sqlite3_bind_int64(handle_.get(), parameter, value));
}

void RawStatement::Bind(int parameter, std::string_view value) {
  Check(sqlite3_bind_text64(handle_.get(), parameter, value.data(), value.size(), SQLITE_STATIC, SQLITE_UTF8));
}

bool RawStatement::Step() {
  const int code = sqlite3_step(handle_.get());
  if (code == SQLITE_ROW) return true;
  if (code == SQLITE_DONE) return false;
  throw std::runtime_error(fmt::format("The hand-written statement failed: {}", sqlite3_errmsg(connection_)));
}

void RawStatement::Run() {
  while (Step()) continue;
  Check(sqlite3_reset(handle_.get()));
}

std::string RawStatement::Text(int column) const {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(handle_.get(), column));
  if (text == nullptr) return {};
  return {text, static_cast<std::size_t>(sqlite3_column_bytes(handle_.get(), column))};
}

void RawStatement::Check(int code) const {
  if (code == SQLITE_OK) return;
  throw std::runtime_error(fmt::format("The hand-written statement failed: {}", sqlite3_errmsg(connection_)));
}

RawStore::RawStore(const std::string& path) {
  sqlite3* handle = nullptr;
  const int code = sqlite3_open_v2(path.c_str(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
  handle_.reset(handle);
  if (code != SQLITE_OK) throw std::runtime_error(fmt::format("{} cannot be opened.", path));
  for (const char* setting : {"PRAGMA synchronous = FULL", "PRAGMA temp_store = FILE", "PRAGMA cache_size = -8192",
                              "PRAGMA cache_spill = -32768", "PRAGMA wal_autocheckpoint = 8192"}) {
    Execute(setting);
  }
}

}  // namespace qmrules::bench
