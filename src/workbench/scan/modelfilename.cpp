#include "workbench/scan/modelfilename.h"

#include <fmt/format.h>
#include <xxhash.h>

#include <algorithm>

namespace qmrules::workbench {

namespace {

// A file system takes 255 bytes; "%" and digits make three of one.
constexpr std::size_t kLongestPart = 96;
constexpr std::size_t kNumberDigits = 16;
// In place of a program's name; none is encoded like this.
constexpr std::string_view kNoProgram = ".~none";

bool IsSafe(char character) {
  return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
         (character >= 'a' && character <= 'z') || character == '-' || character == '_';
}

std::string Number(std::string_view text) {
  return fmt::format("{:016x}", XXH3_64bits(text.data(), text.size()));
}

// A part of a name; `also` may stand in it as it is.
std::string Encode(std::string_view text, char also) {
  std::string part;
  for (const char character : text) {
    if (IsSafe(character) || character == also) {
      part += character;
    } else {
      part += fmt::format("%{:02X}", static_cast<unsigned char>(character));
    }
    if (part.size() > kLongestPart) return part.substr(0, kLongestPart - kNumberDigits - 1) + '~' + Number(text);
  }
  return part;
}

bool IsHexadecimal(char character) {
  return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'f');
}

}  // namespace

std::string ModelFileStem(std::string_view source) {
  const std::size_t folders = source.rfind('/');
  const std::string_view own = folders == std::string_view::npos ? source : source.substr(folders + 1);
  return fmt::format("{}.{}", Encode(own, '.'), Number(source));
}

std::string ModelFileName(std::string_view source, std::string_view program) {
  return fmt::format("{}.{}{}", ModelFileStem(source), Encode(program, '-'), kModelSuffix);
}

std::string NoProgramFileName(std::string_view source) {
  return fmt::format("{}{}{}", ModelFileStem(source), kNoProgram, kModelSuffix);
}

bool NotesNoProgram(std::string_view modelFile) {
  if (!modelFile.ends_with(kModelSuffix)) return false;
  modelFile.remove_suffix(kModelSuffix.size());
  return modelFile.ends_with(kNoProgram);
}

std::string_view StemOfModelFile(std::string_view name) {
  if (!name.ends_with(kModelSuffix)) return {};
  name.remove_suffix(kModelSuffix.size());
  name = name.substr(0, std::min(name.rfind('.'), name.size()));
  if (name.size() < kNumberDigits + 2 || name[name.size() - kNumberDigits - 1] != '.') return {};
  return std::ranges::all_of(name.substr(name.size() - kNumberDigits), IsHexadecimal) ? name : std::string_view();
}

}  // namespace qmrules::workbench
