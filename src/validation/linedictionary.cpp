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

// Appends the key, folded, and a line feed.
void AppendFolded(std::string_view key, std::string& texts) {
  const std::size_t begin = texts.size();
  texts.resize(begin + key.size());
  unsigned char bits = 0;
  for (std::size_t at = 0; at < key.size(); ++at) {
    const auto byte = static_cast<unsigned char>(key[at]);
    bits = static_cast<unsigned char>(bits | byte);
    texts[begin + at] = static_cast<char>(shell::FoldAscii(byte));
  }
  if (bits >= 0x80) texts.replace(begin, key.size(), shell::FoldCase(key));
  texts += '\n';
}

std::uint32_t HashOf(std::string_view folded) {
  return static_cast<std::uint32_t>(XXH3_64bits(folded.data(), folded.size()));
}

}  // namespace

std::int32_t LineDictionary::LineId(std::string_view key, bool add) {
  if (key.empty()) return 0;
  folded_.clear();
  AppendFolded(key, folded_);
  return FoldedId(folded_, HashOf(folded_), add);
}

void LineDictionary::Announce(std::string_view key) {
  Announcement announcement{.begin = announcedTexts_.size()};
  if (!key.empty()) {
    AppendFolded(key, announcedTexts_);
    announcement.size = announcedTexts_.size() - announcement.begin;
    announcement.hash = HashOf(std::string_view(announcedTexts_).substr(announcement.begin));
    __builtin_prefetch(&slots_[FirstSlot(announcement.hash)]);
  }
  announced_.push_back(announcement);
}

void LineDictionary::EnterAnnounced(std::vector<std::int32_t>& ids) {
  for (const Announcement& key : announced_) {
    const Slot& slot = slots_[FirstSlot(key.hash)];
    if (slot.id != 0 && slot.hash == key.hash) __builtin_prefetch(&texts_[slot.begin]);
  }
  const std::string_view texts = announcedTexts_;
  for (const Announcement& key : announced_) {
    ids.push_back(key.size == 0 ? 0 : FoldedId(texts.substr(key.begin, key.size), key.hash, true));
  }
  announced_.clear();
  announcedTexts_.clear();
}

std::int32_t LineDictionary::FoldedId(std::string_view folded, std::uint32_t hash, bool add) {
  std::size_t at = Find(folded, hash);
  if (slots_[at].id != 0 || !add) return slots_[at].id;

  ++count_;
  if (static_cast<std::size_t>(count_) * 4 > slots_.size() * 3) {
    Grow();
    at = Find(folded, hash);
  }
  slots_[at] = {hash, count_, texts_.size()};
  texts_ += folded;
  return count_;
}

void LineDictionary::Clear(std::size_t bytesToCome) {
  // As many slots as the last file came to need, so that small files behind a large one do not clear its table each.
  slots_.assign(std::bit_ceil(std::max(kFirstSlots, static_cast<std::size_t>(count_) * 4 / 3 + 1)), Slot{});
  count_ = 0;
  texts_.clear();
  announced_.clear();
  announcedTexts_.clear();
  if (bytesToCome <= texts_.capacity()) return;
  texts_.reserve(bytesToCome);
  PreferLargePages(texts_.data(), texts_.capacity());
}

// The slot of the key, or the free one where it belongs. What ends the key ends the comparison, so that no length need
// be kept.
std::size_t LineDictionary::Find(std::string_view folded, std::uint32_t hash) const {
  const std::size_t mask = slots_.size() - 1;
  std::size_t at = FirstSlot(hash);
  while (slots_[at].id != 0 &&
         (slots_[at].hash != hash || texts_.compare(slots_[at].begin, folded.size(), folded) != 0)) {
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
