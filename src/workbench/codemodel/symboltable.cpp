#include "workbench/codemodel/symboltable.h"

#include <algorithm>
#include <cstring>

namespace qmrules::workbench::codemodel {

namespace {

constexpr std::size_t kSlotsOfAProgram = 4096;

char Upper(char letter) {
  return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

// Of eight bytes at a time, without the bit that tells the case of a letter.
std::uint32_t HashOf(std::string_view word) {
  constexpr std::uint64_t caseless = 0xDFDFDFDFDFDFDFDF;
  constexpr std::uint64_t factor = 0x9E3779B97F4A7C15;
  std::uint64_t hash = word.size();
  const char* at = word.data();
  std::size_t left = word.size();
  for (; left >= sizeof hash; left -= sizeof hash, at += sizeof hash) {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, at, sizeof bytes);
    hash = (hash ^ (bytes & caseless)) * factor;
    hash ^= hash >> 32;
  }
  std::uint64_t bytes = 0;
  for (; left > 0; --left) bytes = bytes << 8 | static_cast<unsigned char>(at[left - 1]);
  hash = (hash ^ (bytes & caseless)) * factor;
  return static_cast<std::uint32_t>(hash >> 32);
}

bool SameWord(const char* upper, std::string_view word) {
  return std::memcmp(upper, word.data(), word.size()) == 0 ||
         std::equal(word.begin(), word.end(), upper, [](char a, char b) { return Upper(a) == b; });
}

}  // namespace

SymbolTable::SymbolTable(const std::vector<std::string_view>& first) : slots_(kSlotsOfAProgram) {
  for (const std::string_view word : first) Intern(word);
}

// The slot of the word, or the free one where it belongs.
std::size_t SymbolTable::Probe(std::string_view word, std::uint32_t hash) const {
  const std::size_t mask = slots_.size() - 1;
  std::size_t at = hash & mask;
  for (; slots_[at].text != nullptr; at = (at + 1) & mask) {
    const Slot& slot = slots_[at];
    if (slot.hash == hash && slot.size == word.size() && SameWord(slot.text, word)) break;
  }
  return at;
}

std::uint32_t SymbolTable::Intern(std::string_view word) {
  const std::uint32_t hash = HashOf(word);
  std::size_t at = Probe(word, hash);
  if (slots_[at].text != nullptr) return slots_[at].symbol;
  if (texts_.size() * 2 >= slots_.size()) {
    Grow();
    at = Probe(word, hash);
  }
  std::string& text = storage_.emplace_back(word);
  std::ranges::transform(text, text.begin(), Upper);
  slots_[at] = {hash, static_cast<std::uint32_t>(text.size()), text.data(), Count()};
  texts_.push_back(text);
  return slots_[at].symbol;
}

std::uint32_t SymbolTable::Find(std::string_view word) const {
  const Slot& slot = slots_[Probe(word, HashOf(word))];
  return slot.text == nullptr ? kNone : slot.symbol;
}

// Enters all symbols in a table of twice the size.
void SymbolTable::Grow() {
  std::vector<Slot> old(slots_.size() * 2);
  old.swap(slots_);
  const std::size_t mask = slots_.size() - 1;
  for (const Slot& slot : old) {
    if (slot.text == nullptr) continue;
    std::size_t at = slot.hash & mask;
    while (slots_[at].text != nullptr) at = (at + 1) & mask;
    slots_[at] = slot;
  }
}

}  // namespace qmrules::workbench::codemodel
