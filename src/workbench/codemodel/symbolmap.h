#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "workbench/codemodel/symboltable.h"

namespace qmrules::workbench::codemodel {

// A number for each of some symbols. Looking one up touches one place in memory, which a reference's resolving lives
// on.
class SymbolMap {
 public:
  static constexpr std::uint32_t kNone = SymbolTable::kNone;

  // The symbol's number, or kNone.
  std::uint32_t Find(std::uint32_t symbol) const {
    if (slots_.empty()) return kNone;
    return slots_[Probe(symbol)].number;
  }
  // Gives the symbol a number other than kNone, in place of the one that it may have.
  void Set(std::uint32_t symbol, std::uint32_t number) {
    if ((count_ + 1) * 2 > slots_.size()) Grow();
    Slot& slot = slots_[Probe(symbol)];
    if (slot.number == kNone) ++count_;
    slot = {symbol, number};
  }

 private:
  struct Slot {
    std::uint32_t symbol = kNone;
    std::uint32_t number = kNone;
  };

  // The slot of the symbol, or the free one where it belongs.
  std::size_t Probe(std::uint32_t symbol) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t at = (symbol * std::size_t{0x9E3779B97F4A7C15} >> 20) & mask;
    while (slots_[at].number != kNone && slots_[at].symbol != symbol) at = (at + 1) & mask;
    return at;
  }
  void Grow() {
    std::vector<Slot> old(slots_.empty() ? 64 : slots_.size() * 2);
    old.swap(slots_);
    for (const Slot& slot : old) {
      if (slot.number != kNone) slots_[Probe(slot.symbol)] = slot;
    }
  }

  std::vector<Slot> slots_;  // a power of two
  std::size_t count_ = 0;
};

}  // namespace qmrules::workbench::codemodel
