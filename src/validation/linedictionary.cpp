#include "validation/linedictionary.h"

#include <xxhash.h>

#include <algorithm>
#include <bit>

#include "shell/casefold.h"
#include "shell/casemapping.h"
#include "validation/largepages.h"

namespace qmrules::validation {

namespace {

constexpr std::size_t kFirstSlots = 256;

}  // namespace

std::int32_t LineDictionary::LineId(std::string_view key, bool add) {
  if (key.empty()) return 0;
  Fold(key);
  const auto hash = static_cast<std::uint32_t>(XXH3_64bits(folded_.data(), folded_.size()));
  std::size_t at = Find(hash);
  if (slots_[at].id != 0 || !add) return slots_[at].id;

  ++count_;
  if (static_cast<std::size_t>(count_) * 4 > slots_.size() * 3) {
    Grow();
    at = Find(hash);
  }
  slots_[at] = {hash, count_, texts_.size()};
  texts_ += folded_;
  return count_;
}

void LineDictionary::Clear(std::size_t bytesToCome) {
  // As many slots as the last file came to need, so that small files behind a large one do not clear its table each.
  slots_.assign(std::bit_ceil(std::max(kFirstSlots, static_cast<std::size_t>(count_) * 4 / 3 + 1)), Slot{});
  count_ = 0;
  texts_.clear();
  if (bytesToCome <= texts_.capacity()) return;
  texts_.reserve(bytesToCome);
  PreferLargePages(texts_.data(), texts_.capacity());
}

void LineDictionary::Fold(std::string_view key) {
  folded_.resize(key.size());
  unsigned char bits = 0;
  for (std::size_t at = 0; at < key.size(); ++at) {
    const auto byte = static_cast<unsigned char>(key[at]);
    bits = static_cast<unsigned char>(bits | byte);
    folded_[at] = static_cast<char>(shell::FoldAscii(byte));
  }
  if (bits >= 0x80) folded_ = shell::FoldCase(key);
  folded_ += '\n';
}

// The slot of the key in folded_, or the free one where it belongs. What ends the key ends the comparison, so that no
// length need be kept.
std::size_t LineDictionary::Find(std::uint32_t hash) const {
  const std::size_t mask = slots_.size() - 1;
  std::size_t at = hash & mask;
  while (slots_[at].id != 0 &&
         (slots_[at].hash != hash || texts_.compare(slots_[at].begin, folded_.size(), folded_) != 0)) {
    at = (at + 1) & mask;
  }
  return at;
}

void LineDictionary::Grow() {
  std::vector<Slot> slots;
  slots.reserve(slots_.size() * 2);
  PreferLargePages(slots.data(), slots.capacity() * sizeof(Slot));
  slots.resize(slots_.size() * 2);
  const std::size_t mask = slots.size() - 1;
  for (const Slot& slot : slots_) {
    if (slot.id == 0) continue;
    std::size_t at = slot.hash & mask;
    while (slots[at].id != 0) at = (at + 1) & mask;
    slots[at] = slot;
  }
  slots_ = std::move(slots);
}

}  // namespace qmrules::validation
