#include "cli/displaywidth.h"

#include <algorithm>

#include "platform/linereader.h"
#include "shell/utf8.h"

namespace qmrules::cli {

namespace {

struct Range {
  char32_t first;
  char32_t last;
};

constexpr Range kWide[] = {
    {0x1100, 0x115F}, {0x2E80, 0x303E}, {0x3041, 0xA4CF},   {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},
    {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6}, {0x1F300, 0x1F64F}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD},
};
constexpr Range kCombining[] = {{0x0300, 0x036F}, {0x200B, 0x200F}, {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}};
// What a terminal takes for commands, or for a turn of the direction of writing.
constexpr Range kControl[] = {{0x00, 0x1F}, {0x7F, 0x9F}, {0x2028, 0x202E}, {0x2066, 0x2069}};

template <std::size_t Count>
bool IsAmong(const Range (&ranges)[Count], char32_t value) {
  return std::any_of(ranges, ranges + Count,
                     [value](const Range& range) { return value >= range.first && value <= range.last; });
}

std::size_t WidthOf(char32_t value) {
  if (IsAmong(kCombining, value)) return 0;
  return IsAmong(kWide, value) ? 2 : 1;
}

}  // namespace

std::size_t DisplayWidth(std::string_view text) {
  std::size_t width = 0;
  for (std::size_t at = 0; at < text.size();) {
    const auto step = shell::DecodeAt(text, at);
    width += WidthOf(step.value);
    at += step.length;
  }
  return width;
}

std::string LeftColumns(std::string_view text, std::size_t columns) {
  std::size_t width = 0;
  std::size_t at = 0;
  while (at < text.size()) {
    const auto step = shell::DecodeAt(text, at);
    width += WidthOf(step.value);
    if (width > columns) break;
    at += step.length;
  }
  return std::string(text.substr(0, at));
}

std::string OneLine(std::string_view text) {
  std::string line;
  for (std::size_t at = 0; at < text.size();) {
    const auto step = shell::DecodeAt(text, at);
    if (step.value >= shell::kMalformedByte) {
      line += '?';
    } else if (IsAmong(kControl, step.value)) {
      line += ' ';
    } else {
      line += text.substr(at, step.length);
    }
    at += step.length;
  }
  return line;
}

std::string IndentedLines(std::string_view text, std::string_view indent) {
  std::string lines;
  for (const auto line : platform::SplitLines(text)) {
    lines += indent;
    lines += OneLine(line);
    lines += '\n';
  }
  return lines;
}

}  // namespace qmrules::cli
