#include "workbench/repository/rowspool.h"

#include <fmt/format.h>

#include <cerrno>
#include <system_error>

#include "platform/error.h"

namespace qmrules::workbench::repository {

namespace {

using platform::Error;

enum class CellKind : char { Unset, Integer, Text };

[[noreturn]] void Fail(std::string_view what) {
  throw Error(fmt::format("Rows cannot be put aside in the folder for temporary files: {} ({}).", what,
                          std::generic_category().message(errno)));
}

}  // namespace

RowSpool::RowSpool() : file_(std::tmpfile()) {
  if (!file_) Fail("no file could be made");
}

void RowSpool::WriteBytes(const void* bytes, std::size_t count) {
  if (count > 0 && std::fwrite(bytes, 1, count, file_.get()) != count) Fail("writing failed");
}

void RowSpool::ReadBytes(void* bytes, std::size_t count) {
  if (count > 0 && std::fread(bytes, 1, count, file_.get()) != count) Fail("reading failed");
}

void RowSpool::Write(const std::vector<StoredValue>& row) {
  for (const auto& cell : row) {
    if (const auto* number = std::get_if<std::int64_t>(&cell)) {
      const auto kind = CellKind::Integer;
      WriteBytes(&kind, sizeof kind);
      WriteBytes(number, sizeof *number);
    } else if (const auto* text = std::get_if<std::string>(&cell)) {
      const auto kind = CellKind::Text;
      const std::uint64_t length = text->size();
      WriteBytes(&kind, sizeof kind);
      WriteBytes(&length, sizeof length);
      WriteBytes(text->data(), text->size());
    } else {
      const auto kind = CellKind::Unset;
      WriteBytes(&kind, sizeof kind);
    }
  }
  ++rows_;
}

void RowSpool::Rewind() {
  if (std::fflush(file_.get()) != 0) Fail("writing failed");
  std::rewind(file_.get());
}

bool RowSpool::Read(std::vector<StoredValue>& row) {
  if (rows_ == 0) return false;
  --rows_;
  for (auto& cell : row) {
    CellKind kind{};
    ReadBytes(&kind, sizeof kind);
    if (kind == CellKind::Integer) {
      std::int64_t number = 0;
      ReadBytes(&number, sizeof number);
      cell = number;
    } else if (kind == CellKind::Text) {
      std::uint64_t length = 0;
      ReadBytes(&length, sizeof length);
      std::string text(length, '\0');
      ReadBytes(text.data(), text.size());
      cell = std::move(text);
    } else {
      cell = std::monostate();
    }
  }
  return true;
}

}  // namespace qmrules::workbench::repository
