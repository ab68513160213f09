#include "shell/utf16.h"

#include "shell/utf8.h"

namespace qmrules::shell {
namespace {

std::size_t CodeUnits(const Utf8Step& step) {
  return step.value >= 0x10000 && step.value < kMalformedByte ? 2 : 1;
}

/// Bytes of the longest beginning of at most `count` characters.
std::size_t BytesOfLeft(std::string_view utf8, std::size_t count) {
  // A character takes at least one byte, so a text of no more bytes than that cannot be too long.
  if (utf8.size() <= count) {
    return utf8.size();
  }
  std::size_t position = 0;
  std::size_t left = count;
  while (position < utf8.size()) {
    const Utf8Step step = DecodeAt(utf8, position);
    const std::size_t units = CodeUnits(step);
    if (units > left) {
      break;
    }
    left -= units;
    position += step.length;
  }
  return position;
}

}  // namespace

std::size_t CharacterCount(std::string_view utf8) {
  std::size_t count = 0;
  for (std::size_t position = 0; position < utf8.size();) {
    const Utf8Step step = DecodeAt(utf8, position);
    count += CodeUnits(step);
    position += step.length;
  }
  return count;
}

std::string LeftCharacters(std::string_view utf8, std::size_t count) {
  return std::string(utf8.substr(0, BytesOfLeft(utf8, count)));
}

std::string CutWithEllipsis(std::string_view utf8, std::size_t limit) {
  return CutWithEllipsis(utf8, limit, limit);
}

std::string CutWithEllipsis(std::string_view utf8, std::size_t limit, std::size_t kept) {
  if (BytesOfLeft(utf8, limit) == utf8.size()) {
    return std::string(utf8);
  }
  return LeftCharacters(utf8, kept) + "...";
}

}  // namespace qmrules::shell
