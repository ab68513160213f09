#include "workbench/flow/chainarea.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "workbench/flow/equalrun.h"

namespace qmrules::workbench::flow {

namespace {

std::uint64_t FirstByte(const AreaEffect& effect) {
  return effect.bytes.Intervals().front().begin;
}

std::uint64_t EndOf(const AreaEffect& effect) {
  return effect.bytes.Intervals().back().end;
}

}  // namespace

ChainArea::ChainArea(std::vector<AreaEffect> effects, std::vector<AreaGap> gaps)
    : effects_(std::move(effects)), gaps_(std::move(gaps)) {
  std::erase_if(effects_, [](const AreaEffect& effect) { return effect.bytes.Empty(); });
  std::ranges::stable_sort(effects_, {}, &AreaEffect::point);
  std::ranges::stable_sort(gaps_, {}, &AreaGap::point);
  byOperand_.resize(effects_.size());
  std::iota(byOperand_.begin(), byOperand_.end(), 0U);
  byBegin_ = byOperand_;
  std::ranges::stable_sort(byOperand_, {}, [this](std::uint32_t index) { return effects_[index].effect.operand; });
  std::ranges::stable_sort(byBegin_, {}, [this](std::uint32_t index) { return FirstByte(effects_[index]); });
  farthest_.resize(effects_.size());
  MakeTree(0, byBegin_.size());
}

void ChainArea::MakeTree(std::size_t first, std::size_t last) {
  if (first == last) return;
  const std::size_t middle = first + (last - first) / 2;
  MakeTree(first, middle);
  MakeTree(middle + 1, last);
  farthest_[middle] =
      std::max({EndOf(effects_[byBegin_[middle]]), FarthestEnd(first, middle), FarthestEnd(middle + 1, last)});
}

std::uint64_t ChainArea::FarthestEnd(std::size_t first, std::size_t last) const {
  return first == last ? 0 : farthest_[first + (last - first) / 2];
}

void ChainArea::Collect(std::size_t first, std::size_t last, ByteInterval interval,
                        std::vector<std::uint32_t>& found) const {
  if (FarthestEnd(first, last) <= interval.begin) return;
  const std::size_t middle = first + (last - first) / 2;
  Collect(first, middle, interval, found);
  const AreaEffect& effect = effects_[byBegin_[middle]];
  if (FirstByte(effect) >= interval.end) return;
  if (effect.bytes.Overlaps(interval)) found.push_back(byBegin_[middle]);
  Collect(middle + 1, last, interval, found);
}

std::vector<std::uint32_t> ChainArea::Touching(const ByteSet& bytes) const {
  std::vector<std::uint32_t> found;
  for (const ByteInterval& interval : bytes.Intervals()) Collect(0, byBegin_.size(), interval, found);
  std::ranges::sort(found);
  found.erase(std::unique(found.begin(), found.end()), found.end());
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
                      (byOperand_.capacity() + byBegin_.capacity()) * sizeof(std::uint32_t) +
                      farthest_.capacity() * sizeof(std::uint64_t);
  for (const AreaEffect& effect : effects_) {
    bytes += effect.bytes.Intervals().capacity() * sizeof(ByteInterval) +
             effect.effect.place.strides.capacity() * sizeof(Stride);
  }
  return bytes;
}

}  // namespace qmrules::workbench::flow
