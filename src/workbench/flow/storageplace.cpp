#include "workbench/flow/storageplace.h"

#include <algorithm>
#include <limits>

namespace qmrules::workbench::flow {

namespace {

std::uint64_t Plus(std::uint64_t left, std::uint64_t right) {
  constexpr std::uint64_t kMost = std::numeric_limits<std::uint64_t>::max();
  return left > kMost - right ? kMost : left + right;
}

std::uint64_t Times(std::uint64_t left, std::uint64_t right) {
  constexpr std::uint64_t kMost = std::numeric_limits<std::uint64_t>::max();
  return right != 0 && left > kMost / right ? kMost : left * right;
}

// Puts the interval behind the others, which begin no later.
void Append(std::vector<ByteInterval>& intervals, ByteInterval interval) {
  if (interval.begin >= interval.end) return;
  if (!intervals.empty() && intervals.back().end >= interval.begin) {
    intervals.back().end = std::max(intervals.back().end, interval.end);
  } else {
    intervals.push_back(interval);
  }
}

}  // namespace

std::uint64_t ByteSet::Bytes() const {
  std::uint64_t bytes = 0;
  for (const ByteInterval& interval : intervals_) bytes += interval.end - interval.begin;
  return bytes;
}

bool ByteSet::Overlaps(ByteInterval interval) const {
  if (interval.begin >= interval.end) return false;
  const auto behind = std::ranges::upper_bound(intervals_, interval.begin, {}, &ByteInterval::end);
  return behind != intervals_.end() && behind->begin < interval.end;
}

bool ByteSet::Overlaps(const ByteSet& other) const {
  // Few against many are looked for one by one.
  constexpr std::size_t kFew = 8;
  if (other.intervals_.size() < intervals_.size() / kFew) return other.Overlaps(*this);
  if (intervals_.size() < other.intervals_.size() / kFew) {
    return std::ranges::any_of(intervals_, [&other](ByteInterval interval) { return other.Overlaps(interval); });
  }
  auto left = intervals_.begin();
  auto right = other.intervals_.begin();
  while (left != intervals_.end() && right != other.intervals_.end()) {
    if (left->begin < right->end && right->begin < left->end) return true;
    if (left->end < right->end) {
      ++left;
    } else {
      ++right;
    }
  }
  return false;
}

void ByteSet::Add(ByteInterval interval) {
  if (interval.begin >= interval.end) return;
  const auto first = std::ranges::lower_bound(intervals_, interval.begin, {}, &ByteInterval::end);
  const auto last = std::ranges::upper_bound(intervals_, interval.end, {}, &ByteInterval::begin);
  if (first == last) {
    intervals_.insert(first, interval);
    return;
  }
  first->begin = std::min(first->begin, interval.begin);
  first->end = std::max((last - 1)->end, interval.end);
  intervals_.erase(first + 1, last);
}

void ByteSet::Add(const ByteSet& other) {
  if (other.intervals_.size() < 4) {
    for (const ByteInterval& interval : other.intervals_) Add(interval);
    return;
  }
  std::vector<ByteInterval> all(intervals_.size() + other.intervals_.size());
  std::ranges::merge(intervals_, other.intervals_, all.begin(), {}, &ByteInterval::begin, &ByteInterval::begin);
  intervals_.clear();
  for (const ByteInterval& interval : all) Append(intervals_, interval);
}

void ByteSet::Remove(ByteInterval interval) {
  if (interval.begin >= interval.end) return;
  const auto first = std::ranges::upper_bound(intervals_, interval.begin, {}, &ByteInterval::end);
  const auto last = std::ranges::lower_bound(intervals_, interval.end, {}, &ByteInterval::begin);
  if (first >= last) return;
  const ByteInterval before = {first->begin, interval.begin};
  const ByteInterval behind = {interval.end, (last - 1)->end};
  auto at = intervals_.erase(first, last);
  if (behind.begin < behind.end) at = intervals_.insert(at, behind);
  if (before.begin < before.end) intervals_.insert(at, before);
}

void ByteSet::Remove(const ByteSet& other) {
  if (other.intervals_.size() < 4) {
    for (const ByteInterval& interval : other.intervals_) Remove(interval);
    return;
  }
  std::vector<ByteInterval> left;
  auto cut = other.intervals_.begin();
  for (ByteInterval interval : intervals_) {
    while (cut != other.intervals_.end() && cut->end <= interval.begin) ++cut;
    for (auto at = cut; at != other.intervals_.end() && at->begin < interval.end; ++at) {
      Append(left, {interval.begin, at->begin});
      interval.begin = std::min(at->end, interval.end);
    }
    Append(left, interval);
  }
  intervals_ = std::move(left);
}

ByteSet ByteSet::Within(const ByteSet& other) const {
  ByteSet common;
  auto left = intervals_.begin();
  auto right = other.intervals_.begin();
  while (left != intervals_.end() && right != other.intervals_.end()) {
    Append(common.intervals_, {std::max(left->begin, right->begin), std::min(left->end, right->end)});
    if (left->end < right->end) {
      ++left;
    } else {
      ++right;
    }
  }
  return common;
}

ByteSet ByteSet::Within(ByteInterval interval) const {
  ByteSet common;
  auto at = std::ranges::upper_bound(intervals_, interval.begin, {}, &ByteInterval::end);
  for (; at != intervals_.end() && at->begin < interval.end; ++at) {
    Append(common.intervals_, {std::max(at->begin, interval.begin), std::min(at->end, interval.end)});
  }
  return common;
}

ByteSet StoragePlace::Bytes(std::size_t most) const {
  if (strides.empty()) return ByteSet(first);
  std::vector<Stride> steps;
  ByteInterval around = first;
  for (const Stride& stride : strides) {
    if (stride.count < 2 || stride.step == 0) continue;
    steps.push_back(stride);
    around.end = Plus(around.end, Times(stride.step, stride.count - 1));
  }
  std::ranges::sort(steps, {}, &Stride::step);
  std::vector<ByteInterval> places = {first};
  for (const Stride& stride : steps) {
    if (places.size() == 1 && places[0].end - places[0].begin >= stride.step) {
      places[0].end = Plus(places[0].end, Times(stride.step, stride.count - 1));
      continue;
    }
    if (Times(places.size(), stride.count) > most) return ByteSet(around);
    const std::size_t once = places.size();
    for (std::uint32_t time = 1; time < stride.count; ++time) {
      const std::uint64_t shift = Times(stride.step, time);
      for (std::size_t at = 0; at < once; ++at) {
        places.push_back({Plus(places[at].begin, shift), Plus(places[at].end, shift)});
      }
    }
  }
  std::ranges::sort(places, {}, &ByteInterval::begin);
  std::vector<ByteInterval> joined;
  for (const ByteInterval& place : places) Append(joined, place);
  ByteSet bytes;
  bytes.intervals_ = std::move(joined);
  return bytes;
}

}  // namespace qmrules::workbench::flow
