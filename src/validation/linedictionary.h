#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qmrules::validation {

// The distinct lines of a file, each under a number: 1, 2, ... in the order of first appearance. Lines that differ only
// in case are the same line, by the rule that the keys of a KeyedCollection follow.
class LineDictionary {
 public:
  LineDictionary() { Clear(0); }

  // The number of the key, 0 for one that is not there. With `add` such a key is entered under the next number. The
  // empty key is never there and never entered. A key has no line feed in it.
  std::int32_t LineId(std::string_view key, bool add);

  std::int32_t Count() const { return count_; }
  // Takes all keys out, for keys of about so many bytes in all to come. Memory is kept.
  void Clear(std::size_t bytesToCome);
  // Bytes held, the texts of the keys left out.
  std::size_t Bytes() const { return slots_.capacity() * sizeof(Slot); }

 private:
  struct Slot {
    std::uint32_t hash = 0;
    std::int32_t id = 0;    // 0: free
    std::size_t begin = 0;  // of the key in texts_
  };

  void Fold(std::string_view key);
  std::size_t Find(std::uint32_t hash) const;
  void Grow();

  std::string folded_;       // the key last asked for, with a line feed behind it
  std::string texts_;        // folded keys, each with a line feed behind it
  std::vector<Slot> slots_;  // open addressing; a power of two, at most three quarters taken
  std::int32_t count_ = 0;
};

}  // namespace qmrules::validation
