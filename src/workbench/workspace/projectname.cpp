#include "workbench/workspace/projectname.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "platform/encoding.h"
#include "platform/error.h"
#include "shell/casefold.h"
#include "shell/utf16.h"

namespace qmrules::workbench {

namespace {

using platform::Error;

// What file systems allow for one name, less ".mdb".
constexpr std::size_t longestFolderBytes = 250;
constexpr std::size_t quotedNameCharacters = 100;
constexpr std::string_view refusedCharacters = "<>:\"/\\|?*%";

// Names that stand for devices, alone and before an extension.
bool IsDeviceName(std::string_view name) {
  constexpr std::array<std::string_view, 22> devices{"CON",  "PRN",  "AUX",  "NUL",  "COM1", "COM2", "COM3", "COM4",
                                                     "COM5", "COM6", "COM7", "COM8", "COM9", "LPT1", "LPT2", "LPT3",
                                                     "LPT4", "LPT5", "LPT6", "LPT7", "LPT8", "LPT9"};
  const std::string_view stem = name.substr(0, name.find('.'));
  return std::ranges::any_of(devices, [&](std::string_view device) { return shell::EqualIgnoringCase(device, stem); });
}

bool IsControl(char character) {
  const auto code = static_cast<unsigned char>(character);
  return code < 32 || code == 127;
}

// Why the name is refused; "" for an admissible one.
std::string_view Refusal(std::string_view name) {
  if (name.find_first_not_of(' ') == std::string_view::npos) return "it is empty";
  if (name.front() == ' ' || name.back() == ' ') return "it begins or ends with a blank";
  if (std::ranges::any_of(name, IsControl)) return "it holds a control character";
  if (platform::MalformedAt(name)) return "it is not well-formed UTF-8";
  return {};
}

std::string Encode(std::string_view name) {
  std::string folder;
  for (std::size_t at = 0; at < name.size(); ++at) {
    const char character = name[at];
    // A device name is no longer one with its first letter encoded; a point at either end has meanings of its own.
    const bool atEnd = at == 0 || at + 1 == name.size();
    const bool encode = refusedCharacters.find(character) != std::string_view::npos || (character == '.' && atEnd) ||
                        (at == 0 && IsDeviceName(name));
    if (encode) {
      folder += fmt::format("%{:02X}", static_cast<unsigned char>(character));
    } else {
      folder += character;
    }
  }
  return folder;
}

}  // namespace

std::string ProjectFolderName(std::string_view projectName) {
  std::string_view refusal = Refusal(projectName);
  std::string folder;
  if (refusal.empty()) folder = Encode(projectName);
  if (folder.size() > longestFolderBytes) refusal = "it is too long for a folder's name";
  if (!refusal.empty()) {
    throw Error(fmt::format("The project name \"{}\" is not admissible: {}. Choose another name.",
                            shell::CutWithEllipsis(projectName, quotedNameCharacters), refusal));
  }
  return folder;
}

bool IsProjectName(std::string_view projectName) {
  return Refusal(projectName).empty() && Encode(projectName).size() <= longestFolderBytes;
}

std::optional<std::string> ProjectNameOfFolder(std::string_view folderName) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string name;
  for (std::size_t at = 0; at < folderName.size(); ++at) {
    if (folderName[at] != '%') {
      name += folderName[at];
      continue;
    }
    if (at + 2 >= folderName.size()) return std::nullopt;
    const auto high = digits.find(folderName[at + 1]);
    const auto low = digits.find(folderName[at + 2]);
    if (high == std::string_view::npos || low == std::string_view::npos) return std::nullopt;
    name += static_cast<char>(high * 16 + low);
    at += 2;
  }
  return IsProjectName(name) && Encode(name) == folderName ? std::optional(name) : std::nullopt;
}

}  // namespace qmrules::workbench
