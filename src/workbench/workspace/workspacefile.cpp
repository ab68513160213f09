#include "workbench/workspace/workspacefile.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string_view>

#include "platform/diskfile.h"
#include "platform/encoding.h"
#include "platform/error.h"
#include "workbench/workspace/projectname.h"

namespace qmrules::workbench {

namespace {

using nlohmann::ordered_json;
using platform::Error;

constexpr std::size_t largestFile = std::size_t{64} * 1024;

Error Broken(const std::string& path, std::string_view reason) {
  return Error(fmt::format("{}: {}. Mend the file, or put back a copy of it.", path, reason));
}

ordered_json Parse(const std::string& path, const std::string& bytes) {
  try {
    return ordered_json::parse(bytes);
  } catch (const ordered_json::parse_error& failure) {
    // The parser counts bytes from 1 and points behind the last one for a text that ends too early.
    const std::size_t at = std::min(failure.byte == 0 ? 0 : failure.byte - 1, bytes.size());
    const std::string_view before = std::string_view(bytes).substr(0, at);
    const auto line = 1 + std::ranges::count(before, '\n');
    const std::size_t column = at - (before.rfind('\n') + 1) + 1;
    throw Error(
        fmt::format("{}:{}:{}: this is no JSON text. Mend the file, or put back a copy of it.", path, line, column));
  } catch (const ordered_json::out_of_range&) {
    throw Broken(path, "it holds a number that is too large");
  }
}

std::string TextMember(const std::string& path, const ordered_json& json, const char* name) {
  const auto found = json.find(name);
  if (found == json.end()) throw Broken(path, fmt::format("the member \"{}\" is missing", name));
  if (!found->is_string()) throw Broken(path, fmt::format("the member \"{}\" is not a text", name));
  return found->get<std::string>();
}

void CheckVersion(const std::string& path, const ordered_json& json) {
  const auto found = json.find("version");
  if (found == json.end()) throw Broken(path, "the member \"version\" is missing");
  if (!found->is_number_unsigned() || *found == 0)
    throw Broken(path, "the member \"version\" is not a number from 1 on");
  if (found->get<std::uint64_t>() > workspaceVersion) {
    throw Error(
        fmt::format("{}: the workspace has version {} of its layout, and this program knows versions up to {}. Use a "
                    "newer program.",
                    path, found->dump(), workspaceVersion));
  }
}

}  // namespace

WorkspaceFile ReadWorkspaceFile(const std::string& path) {
  const ordered_json json = Parse(path, platform::ReadDiskFile(path, largestFile));
  if (!json.is_object()) throw Broken(path, "it holds no object");
  CheckVersion(path, json);
  for (const auto& [name, value] : json.items()) {
    if (name != "version" && name != "project" && name != "sourceEncoding") {
      throw Broken(path, fmt::format("the member \"{}\" is not known", name));
    }
  }
  WorkspaceFile file{TextMember(path, json, "project"), TextMember(path, json, "sourceEncoding")};
  if (!file.sourceEncoding.empty() && !platform::IsKnownEncoding(file.sourceEncoding)) {
    throw Broken(path, fmt::format("the encoding \"{}\" is not known", file.sourceEncoding));
  }
  if (!IsProjectName(file.project)) {
    throw Broken(path, fmt::format("\"{}\" is no admissible name of a project", file.project));
  }
  return file;
}

void WriteWorkspaceFile(const std::string& path, const WorkspaceFile& file) {
  ordered_json json;
  json["version"] = workspaceVersion;
  json["project"] = file.project;
  json["sourceEncoding"] = file.sourceEncoding;
  platform::WriteDiskFile(path, json.dump(2) + "\n");
}

}  // namespace qmrules::workbench
