#include "workbench/flow/chainarea.h"

#include <algorithm>
#include <numeric>
#include <unordered_map>
#include <utility>

#include "workbench/flow/equalrun.h"

namespace qmrules::workbench::flow {

namespace {

std::uint64_t FirstByteOf(const ByteSet& bytes) {
  return bytes.Intervals().front().begin;
}

std::uint64_t EndOf(const ByteSet& bytes) {
  return bytes.Intervals().back().end;
}

struct ByteSetHash {
  std::size_t operator()(const ByteSet* bytes) const {
    std::uint64_t hash = 0;
    for (const ByteInterval& interval : bytes->Intervals()) {
      hash = (hash ^ interval.begin) * 0x9E3779B97F4A7C15U;
      hash = (hash ^ (hash >> 32) ^ interval.end) * 0xBF58476D1CE4E5B9U;
    }
    return hash ^ (hash >> 29);
  }
};

struct SameBytes {
  bool operator()(const ByteSet* left, const ByteSet* right) const { return *left == *right; }
};

}  // namespace

ChainArea::ChainArea(std::vector<AreaEffect> effects, std::vector<AreaGap> gaps)
    : effects_(std::move(effects)), gaps_(std::move(gaps)) {
  std::erase_if(effects_, [](const AreaEffect& effect) { return effect.bytes.Empty(); });
  std::ranges::stable_sort(effects_, {}, &AreaEffect::point);
  std::ranges::stable_sort(gaps_, {}, &AreaGap::point);
  byOperand_.resize(effects_.size());
  std::iota(byOperand_.begin(), byOperand_.end(), 0U);
  std::ranges::stable_sort(byOperand_, {}, [this](std::uint32_t index) { return effects_[index].effect.operand; });
  FindSets();
  byBegin_.resize(setStarts_.size() - 1);
  std::iota(byBegin_.begin(), byBegin_.end(), 0U);
  std::ranges::stable_sort(byBegin_, {}, [this](std::uint32_t set) { return FirstByteOf(SetOfBytes(set)); });
  farthest_.resize(byBegin_.size());
  MakeTree(0, byBegin_.size());
}

void ChainArea::FindSets() {
  std::unordered_map<const ByteSet*, std::uint32_t, ByteSetHash, SameBytes> numbers;
  std::vector<std::uint32_t> setOf;
  setOf.reserve(effects_.size());
  for (const AreaEffect& effect : effects_) {
    setOf.push_back(numbers.try_emplace(&effect.bytes, static_cast<std::uint32_t>(numbers.size())).first->second);
  }
  setStarts_.assign(numbers.size() + 1, 0);
  for (const std::uint32_t set : setOf) ++setStarts_[set + 1];
  std::partial_sum(setStarts_.begin(), setStarts_.end(), setStarts_.begin());
  bySet_.resize(effects_.size());
  std::vector<std::uint32_t> next(setStarts_.begin(), setStarts_.end() - 1);
  for (std::uint32_t index = 0; index < setOf.size(); ++index) bySet_[next[setOf[index]]++] = index;
}

void ChainArea::MakeTree(std::size_t first, std::size_t last) {
  if (first == last) return;
  const std::size_t middle = first + (last - first) / 2;
  MakeTree(first, middle);
  MakeTree(middle + 1, last);
  farthest_[middle] =
      std::max({EndOf(SetOfBytes(byBegin_[middle])), FarthestEnd(first, middle), FarthestEnd(middle + 1, last)});
}

std::uint64_t ChainArea::FarthestEnd(std::size_t first, std::size_t last) const {
  return first == last ? 0 : farthest_[first + (last - first) / 2];
}

void ChainArea::Collect(std::size_t first, std::size_t last, const ByteSet& bytes, ByteInterval around,
                        std::vector<std::uint32_t>& found) const {
  if (FarthestEnd(first, last) <= around.begin) return;
  const std::size_t middle = first + (last - first) / 2;
  Collect(first, middle, bytes, around, found);
  const ByteSet& own = SetOfBytes(byBegin_[middle]);
  if (FirstByteOf(own) >= around.end) return;
  if (own.Overlaps(bytes)) found.push_back(byBegin_[middle]);
  Collect(middle + 1, last, bytes, around, found);
}

std::vector<std::uint32_t> ChainArea::SetsWith(const ByteSet& bytes) const {
  std::vector<std::uint32_t> found;
  if (bytes.Empty()) return found;
  Collect(0, byBegin_.size(), bytes, {FirstByteOf(bytes), EndOf(bytes)}, found);
  std::ranges::sort(found);
  return found;
}

std::vector<std::uint32_t> ChainArea::OfOperand(NodeId operand) const {
  const auto found =
      EqualRun(byOperand_, operand, [this](std::uint32_t index) { return effects_[index].effect.operand; });
  return {found.begin(), found.end()};
}

std::span<const AreaGap> ChainArea::GapsAt(PointId point) const {
  return EqualRun(gaps_, point, &AreaGap::point);
}

std::size_t ChainArea::Bytes() const {
  std::size_t bytes = effects_.capacity() * sizeof(AreaEffect) + gaps_.capacity() * sizeof(AreaGap) +
                      (byOperand_.capacity() + byBegin_.capacity() + bySet_.capacity() + setStarts_.capacity()) *
                          sizeof(std::uint32_t) +
                      farthest_.capacity() * sizeof(std::uint64_t);
  for (const AreaEffect& effect : effects_) {
    bytes += effect.bytes.Intervals().capacity() * sizeof(ByteInterval) +
             effect.effect.place.strides.capacity() * sizeof(Stride);
  }
  return bytes;
}

}  // namespace qmrules::workbench::flow
