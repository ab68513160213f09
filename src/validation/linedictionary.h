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

  // Many keys at less cost: each is announced, then a block of them is entered. What a key is looked for in has come
  // from memory meanwhile, which for a large file takes most of the time.
  void Announce(std::string_view key);
  // True when enough have been announced, in number or in bytes, that they should be entered.
  bool IsBlockFull() const { return announced_.size() >= kBlockKeys || announcedTexts_.size() >= kBlockBytes; }
  // Enters the keys announced since the last time, and appends their numbers to `ids` in their order: those that
  // LineId with `add` would give.
  void EnterAnnounced(std::vector<std::int32_t>& ids);

  std::int32_t Count() const { return count_; }
  // Takes all keys out, announced ones too, for keys of about so many bytes in all to come. Memory is kept.
  void Clear(std::size_t bytesToCome);
  // Bytes held, the texts of the keys left out.
  std::size_t Bytes() const { return slots_.capacity() * sizeof(Slot); }

 private:
  static constexpr std::size_t kBlockKeys = 32;
  static constexpr std::size_t kBlockBytes = 16'384;

  struct Slot {
    std::uint32_t hash = 0;
    std::int32_t id = 0;    // 0: free
    std::size_t begin = 0;  // of the key in texts_
  };

  struct Announcement {
    std::uint32_t hash = 0;
    std::size_t begin = 0;  // of the key in announcedTexts_
    std::size_t size = 0;
  };

  std::int32_t FoldedId(std::string_view folded, std::uint32_t hash, bool add);
  std::size_t FirstSlot(std::uint32_t hash) const { return hash & (slots_.size() - 1); }
  std::size_t Find(std::string_view folded, std::uint32_t hash) const;
  void Grow();

  std::string folded_;                   // the key last asked for, with a line feed behind it
  std::vector<Announcement> announced_;  // keys to be entered, in their order
  std::string announcedTexts_;           // folded, each with a line feed behind it
  std::string texts_;                    // folded keys, each with a line feed behind it
  std::vector<Slot> slots_;              // open addressing; a power of two, at most three quarters taken
  std::int32_t count_ = 0;
};

}  // namespace qmrules::validation
