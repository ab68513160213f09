#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace qmrules::shell {

/// One text of the user interface. `number` is the resource number: 100 to 214 for labels, 500 to 649 for messages.
struct StringTableEntry {
  int number = 0;
  std::string_view text;
};

inline constexpr int kFirstLabel = 100;
inline constexpr int kLastLabel = 214;
inline constexpr int kFirstMessage = 500;
inline constexpr int kLastMessage = 649;
inline constexpr std::size_t kLabelCount = kLastLabel - kFirstLabel + 1;
inline constexpr std::size_t kStringTableSize = kLabelCount + (kLastMessage - kFirstMessage + 1);

/// The number that stands at place `index`, from 0, of every table.
[[nodiscard]] constexpr int StringTableNumber(std::size_t index) {
  return index < kLabelCount ? kFirstLabel + static_cast<int>(index)
                             : kFirstMessage + static_cast<int>(index - kLabelCount);
}

/// True when a table has each number once, in order, with a text. Each table checks itself with it when compiled.
[[nodiscard]] constexpr bool IsComplete(std::span<const StringTableEntry> table) {
  if (table.size() != kStringTableSize) {
    return false;
  }
  for (std::size_t index = 0; index < table.size(); ++index) {
    if (table[index].number != StringTableNumber(index) || table[index].text.empty()) {
      return false;
    }
  }
  return true;
}

[[nodiscard]] std::span<const StringTableEntry> EnglishStringTable();
[[nodiscard]] std::span<const StringTableEntry> JapaneseStringTable();
[[nodiscard]] std::span<const StringTableEntry> KoreanStringTable();

}  // namespace qmrules::shell
