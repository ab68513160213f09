#include "platform/settings.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <system_error>

#include "platform/diskfile.h"
#include "platform/encoding.h"
#include "platform/error.h"
#include "platform/filefailure.h"
#include "shell/casefold.h"
#include "shell/utf16.h"

namespace qmrules::platform {

namespace {

using Json = nlohmann::ordered_json;  // keeps the order in which the user may have arranged the file

constexpr std::size_t largestFile = std::size_t{16} * 1024 * 1024;
constexpr int deepestNesting = 100;  // beyond it, writing the file would exhaust the stack

std::pair<std::string, std::string> FoldedPair(std::string_view first, std::string_view second) {
  return {shell::FoldCase(first), shell::FoldCase(second)};
}

// "LINE:COLUMN" of the character that begins at or holds the byte at `offset`; the column counts characters.
std::string Position(std::string_view text, std::size_t offset) {
  std::size_t line = 1;
  std::size_t lineStart = 0;
  offset = std::min(offset, text.size());
  for (std::size_t end = text.find('\n'); end != std::string_view::npos && end < offset;
       end = text.find('\n', lineStart)) {
    lineStart = end + 1;
    ++line;
  }
  return fmt::format("{}:{}", line, shell::CharacterCount(text.substr(lineStart, offset - lineStart)) + 1);
}

// The parser's own words behind its number and position.
std::string Reason(const Json::parse_error& failure) {
  std::string reason = failure.what();
  if (const std::size_t at = reason.find(": syntax error"); at != std::string::npos) reason.erase(0, at + 2);
  return reason;
}

// The object in the file; an empty one when there is no file.
Json ReadObject(const std::string& path) {
  std::error_code unknown;  // anything but "not found" shows again, with its reason, on reading
  const auto status = std::filesystem::status(DiskPath(path), unknown);
  if (status.type() == std::filesystem::file_type::not_found) return Json::object();
  const std::string text = ReadDiskFile(path, largestFile);
  if (const auto malformed = MalformedAt(text)) {
    throw Error(fmt::format("{}:{}: the file is not valid UTF-8", path, Position(text, *malformed)));
  }
  try {
    Json object = Json::parse(text, [&path](int depth, Json::parse_event_t, const Json&) {
      if (depth > deepestNesting) throw Error(fmt::format("{}: values are nested too deeply", path));
      return true;
    });
    if (!object.is_object()) throw Error(fmt::format("{}:1:1: the file has to hold one JSON object", path));
    return object;
  } catch (const Json::parse_error& failure) {
    const std::size_t offset = failure.byte == 0 ? 0 : failure.byte - 1;
    throw Error(fmt::format("{}:{}: {}", path, Position(text, offset), Reason(failure)));
  } catch (const Json::out_of_range&) {
    throw Error(fmt::format("{}: the file holds a number beyond what can be kept", path));
  }
}

// The member of this name, in any case.
template <class Object>
auto FindMember(Object& object, std::string_view name) {
  auto member = object.begin();
  while (member != object.end() && !shell::EqualIgnoringCase(member.key(), name)) ++member;
  return member;
}

void RequireObject(const Json& value, const std::string& path, std::string_view name) {
  if (!value.is_object()) throw Error(fmt::format("{}: the value of \"{}\" has to be a JSON object", path, name));
}

// The text of a name within a group, or nothing.
std::optional<std::string> TextIn(const std::string& path, std::string_view group, std::string_view name) {
  const Json file = ReadObject(path);
  const auto found = FindMember(file, group);
  if (found == file.end()) return std::nullopt;
  RequireObject(*found, path, group);
  const auto text = FindMember(*found, name);
  if (text == found->end()) return std::nullopt;
  if (!text->is_string()) {
    throw Error(fmt::format("{}: the value of \"{}\" in \"{}\" has to be a JSON string", path, name, group));
  }
  return text->template get<std::string>();
}

}  // namespace

std::string MemorySettings::Get(std::string_view section, std::string_view name, std::string_view otherwise) const {
  const auto found = values_.find(FoldedPair(section, name));
  return found == values_.end() ? std::string(otherwise) : found->second;
}

void MemorySettings::Set(std::string_view section, std::string_view name, std::string_view value) {
  values_[FoldedPair(section, name)] = std::string(value);
}

std::string JsonUserSettings::Get(std::string_view section, std::string_view name, std::string_view otherwise) const {
  return TextIn(path_, section, name).value_or(std::string(otherwise));
}

void JsonUserSettings::Set(std::string_view section, std::string_view name, std::string_view value) {
  for (const std::string_view text : {section, name, value}) {
    if (MalformedAt(text)) throw WriteFailure(path_, "a setting is not valid UTF-8");
  }
  Json file = ReadObject(path_);
  auto group = FindMember(file, section);
  if (group == file.end()) group = file.emplace(section, Json::object()).first;
  RequireObject(*group, path_, section);
  const auto text = FindMember(*group, name);
  if (text == group->end()) {
    group->emplace(name, value);
  } else {
    *text = value;
  }
  const std::filesystem::path folder = std::filesystem::path(DiskPath(path_)).parent_path();
  if (!folder.empty()) CreateDiskFolder(folder.string());
  WriteDiskFile(path_, file.dump(2) + "\n");
}

std::optional<std::string> MemoryRegistry::Value(std::string_view key, std::string_view name) const {
  const auto found = values_.find(FoldedPair(key, name));
  if (found == values_.end()) return std::nullopt;
  return found->second;
}

void MemoryRegistry::SetValue(std::string_view key, std::string_view name, std::string_view value) {
  values_[FoldedPair(key, name)] = std::string(value);
}

std::optional<std::string> JsonRegistry::Value(std::string_view key, std::string_view name) const {
  return TextIn(path_, key, name);
}

}  // namespace qmrules::platform
