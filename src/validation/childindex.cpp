#include "validation/childindex.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "validation/largepages.h"

namespace qmrules::validation {

namespace {

constexpr std::size_t kFewestSlots = 256;

}  // namespace

void ChildIndex::Clear() {
  // As many slots as the last tree came to need, so that small trees behind a large one do not clear its table each.
  slots_.assign(std::bit_ceil(std::max(kFewestSlots, count_ * 4 / 3 + 1)), Slot{});
  count_ = 0;
}

void ChildIndex::Put(std::int32_t parent, std::int32_t id, std::int32_t child) {
  std::size_t at = SlotOf(parent, id);
  if (slots_[at].child == 0) {
    if (++count_ * 4 > slots_.size() * 3) {
      Grow();
      at = SlotOf(parent, id);
    }
  }
  slots_[at] = {parent, id, child};
}

void ChildIndex::Grow() {
  std::vector<Slot> slots;
  slots.reserve(slots_.size() * 2);
  PreferLargePages(slots.data(), slots.capacity() * sizeof(Slot));
  slots.resize(slots_.size() * 2);
  std::swap(slots, slots_);
  for (const Slot& slot : slots) {
    if (slot.child != 0) slots_[SlotOf(slot.parent, slot.id)] = slot;
  }
}

}  // namespace qmrules::validation
