#pragma once

#include <string_view>

namespace qmrules::shell {

// The text without the blanks at its ends. Only blanks count: tabs and line breaks are content.
[[nodiscard]] constexpr std::string_view TrimBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// True for a text of nothing but blanks, which no name may be.
[[nodiscard]] constexpr bool IsBlank(std::string_view text) {
  return TrimBlanks(text).empty();
}

}  // namespace qmrules::shell
