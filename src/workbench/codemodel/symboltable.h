#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace qmrules::workbench::codemodel {

// Numbers for words: one for each word, whatever its case (of the letters A to Z). Words are numbered from 0 in the
// order of their coming, so those that the table is filled with at first, the language's own, have fixed numbers.
class SymbolTable {
 public:
  explicit SymbolTable(const std::vector<std::string_view>& first);

  std::uint32_t Intern(std::string_view word);
  // The number of a word that was met before, or kNone.
  static constexpr std::uint32_t kNone = 0xFFFFFFFF;
  std::uint32_t Find(std::string_view word) const;
  // In upper case. Valid as long as the table.
  std::string_view Text(std::uint32_t symbol) const { return texts_[symbol]; }
  std::uint32_t Count() const { return static_cast<std::uint32_t>(texts_.size()); }

 private:
  // All that a look-up compares stands in the slot and at `text`, so that it touches two places in memory.
  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t size = 0;
    const char* text = nullptr;  // nullptr for a free slot
    std::uint32_t symbol = 0;
  };
  std::size_t Probe(std::string_view word, std::uint32_t hash) const;
  void Grow();

  std::vector<Slot> slots_;  // a power of two
  std::vector<std::string_view> texts_;
  std::deque<std::string> storage_;
};

}  // namespace qmrules::workbench::codemodel
