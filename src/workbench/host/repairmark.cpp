#include "workbench/host/repairmark.h"

#include <fmt/format.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/diskfile.h"
#include "platform/xml.h"
#include "workbench/repository/storelayout.h"

namespace qmrules::workbench {

namespace {

using nlohmann::json;

constexpr std::size_t kLargestMark = 4096;
constexpr std::size_t kLargestSchema = std::size_t{64} * 1024 * 1024;

struct Mark {
  std::string schema;
  std::int64_t entry = 0;
};

// FNV-1a: the document is not a secret, and its length stands beside the number.
std::string Fingerprint(std::string_view bytes) {
  std::uint64_t hash = 14695981039346656037U;
  for (const char byte : bytes) {
    hash ^= static_cast<unsigned char>(byte);
    hash *= 1099511628211U;
  }
  return fmt::format("{}:{:016x}", bytes.size(), hash);
}

std::optional<Mark> ReadMark(const std::string& path) {
  std::error_code failed;
  if (!std::filesystem::is_regular_file(path, failed)) return std::nullopt;
  const auto mark = json::parse(platform::ReadDiskFile(path, kLargestMark), nullptr, false);
  const bool isMark = mark.is_object() && mark.contains("schema") && mark["schema"].is_string() &&
                      mark.contains("entry") && mark["entry"].is_number_integer();
  if (!isMark) return std::nullopt;
  return Mark{mark["schema"].get<std::string>(), mark["entry"].get<std::int64_t>()};
}

bool HasListOfValues(const std::string& path) {
  platform::XmlDocument document;
  document.load(path);
  return static_cast<bool>(
      document.selectSingleNode("//entity[@name='RULE']/entityattrs/entityattr[const and not(@system='true')]"));
}

bool RuleWasWrittenSince(repository::Connection& connection, std::int64_t entry) {
  const auto statement = connection.Prepare(
      fmt::format("SELECT 1 FROM \"{}\" WHERE EntryID > ? AND Object LIKE 'RULE#%' LIMIT 1", repository::journalTable));
  statement->BindInteger(0, entry);
  return statement->Step();
}

std::int64_t LastEntry(repository::Connection& connection) {
  const auto statement =
      connection.Prepare(fmt::format("SELECT COALESCE(MAX(EntryID), 0) FROM \"{}\"", repository::journalTable));
  statement->Step();
  return statement->Integer(0);
}

}  // namespace

RepairMark::RepairMark(Places places) : places_(std::move(places)) {}

bool RepairMark::IsDue() const {
  if (!HasListOfValues(places_.schemaPath)) return false;
  const auto mark = ReadMark(places_.markPath);
  if (!mark || mark->schema != Fingerprint(platform::ReadDiskFile(places_.schemaPath, kLargestSchema))) return true;
  return RuleWasWrittenSince(*places_.connect(places_.storePath), mark->entry);
}

void RepairMark::SetDone() const {
  const json mark = {{"schema", Fingerprint(platform::ReadDiskFile(places_.schemaPath, kLargestSchema))},
                     {"entry", LastEntry(*places_.connect(places_.storePath))}};
  platform::WriteDiskFile(places_.markPath, mark.dump(2) + "\n");
}

}  // namespace qmrules::workbench
