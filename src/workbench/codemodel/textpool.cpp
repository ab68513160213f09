#include "workbench/codemodel/textpool.h"

#include <xxhash.h>

#include <utility>

namespace qmrules::workbench::codemodel {

namespace {
constexpr std::size_t kFirstSlots = 256;
}

TextPool::TextPool() : texts_(1), hashes_(1), slots_(kFirstSlots) {}

TextId TextPool::Add(std::string_view text) {
  if (text.empty()) return 0;
  const auto hash = static_cast<std::uint32_t>(XXH3_64bits(text.data(), text.size()));
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = hash & mask;
  for (; slots_[slot] != 0; slot = (slot + 1) & mask) {
    const TextId known = slots_[slot];
    if (hashes_[known] == hash && texts_[known] == text) return known;
  }
  const auto added = static_cast<TextId>(texts_.size());
  texts_.emplace_back(text);
  hashes_.push_back(hash);
  slots_[slot] = added;
  if (texts_.size() * 2 > slots_.size()) Grow();
  return added;
}

void TextPool::Grow() {
  slots_.assign(slots_.size() * 2, 0);
  const std::size_t mask = slots_.size() - 1;
  for (TextId text = 1; text < texts_.size(); ++text) {
    std::size_t slot = hashes_[text] & mask;
    while (slots_[slot] != 0) slot = (slot + 1) & mask;
    slots_[slot] = text;
  }
}

std::vector<std::string> TextPool::Take() {
  std::vector<std::string> taken = std::exchange(texts_, std::vector<std::string>(1));
  hashes_.assign(1, 0);
  slots_.assign(kFirstSlots, 0);
  return taken;
}

}  // namespace qmrules::workbench::codemodel
