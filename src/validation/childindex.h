#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace qmrules::validation {

// Children of the nodes of a tree by the first number on their edge: a hash table beside the ordered lists, so that
// looking up one of many children costs no walk.
class ChildIndex {
 public:
  ChildIndex() { Clear(); }

  // Takes all out. Memory is kept.
  void Clear();

  // The child of the node whose edge begins with `id`; 0 for none.
  std::int32_t Find(std::int32_t parent, std::int32_t id) const { return slots_[SlotOf(parent, id)].child; }
  // Enters a child, or puts it in the place of the one that begins with the same number.
  void Put(std::int32_t parent, std::int32_t id, std::int32_t child);

  // Asks for the memory where the child is or belongs, so that a later look does not wait for it.
  [[gnu::always_inline]] void Fetch(std::int32_t parent, std::int32_t id) const {
    __builtin_prefetch(&slots_[FirstSlot(parent, id)]);
  }

  std::size_t Bytes() const { return slots_.capacity() * sizeof(Slot); }

 private:
  struct Slot {
    std::int32_t parent = 0;
    std::int32_t id = 0;
    std::int32_t child = 0;  // 0: free
  };

  // The slot at which the search for the child begins.
  std::size_t FirstSlot(std::int32_t parent, std::int32_t id) const {
    constexpr std::uint64_t spread = 0x9E3779B97F4A7C15;
    const std::uint64_t key =
        (std::uint64_t{static_cast<std::uint32_t>(parent)} << 32) | static_cast<std::uint32_t>(id);
    std::uint64_t hash = key * spread;
    hash = (hash ^ (hash >> 29)) * spread;
    return (hash >> 32) & (slots_.size() - 1);
  }
  // The slot of the child, or the free one where it belongs.
  std::size_t SlotOf(std::int32_t parent, std::int32_t id) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t at = FirstSlot(parent, id);
    while (slots_[at].child != 0 && (slots_[at].parent != parent || slots_[at].id != id)) at = (at + 1) & mask;
    return at;
  }
  void Grow();

  std::vector<Slot> slots_;  // open addressing; a power of two, at most three quarters taken
  std::size_t count_ = 0;
};

}  // namespace qmrules::validation
