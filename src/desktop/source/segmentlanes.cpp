#include "desktop/source/segmentlanes.h"

#include <algorithm>
#include <array>

namespace qmrules::desktop {

SegmentLanes::SegmentLanes(const std::vector<platform::SegmentMark>& marks) {
  for (const platform::SegmentMark& mark : marks) {
    const int fromRow = std::max(mark.fromRow, 1);
    if (mark.toRow >= fromRow) bars_.push_back({fromRow, mark.toRow, 0});
  }
  std::stable_sort(bars_.begin(), bars_.end(), [](const SegmentBar& left, const SegmentBar& right) {
    return left.fromRow != right.fromRow ? left.fromRow < right.fromRow : left.toRow > right.toRow;
  });
  std::array<int, kMostLanes> lastRows{};
  for (SegmentBar& bar : bars_) {
    const auto* const free =
        std::find_if(lastRows.begin(), lastRows.end() - 1, [&](int lastRow) { return lastRow < bar.fromRow; });
    bar.lane = static_cast<int>(free - lastRows.begin());
    int& lastRow = lastRows[static_cast<std::size_t>(bar.lane)];
    lastRow = std::max(lastRow, bar.toRow);
    lanes_ = std::max(lanes_, bar.lane + 1);
  }
}

std::vector<SegmentBar> SegmentLanes::Within(int fromRow, int toRow) const {
  std::vector<SegmentBar> within;
  for (const SegmentBar& bar : bars_) {
    if (bar.fromRow > toRow) break;
    if (bar.toRow >= fromRow) within.push_back(bar);
  }
  return within;
}

std::optional<int> SegmentLanes::NextBelow(int row) const {
  const auto next = std::upper_bound(bars_.begin(), bars_.end(), row,
                                     [](int above, const SegmentBar& bar) { return above < bar.fromRow; });
  return next == bars_.end() ? std::nullopt : std::optional(next->fromRow);
}

std::optional<int> SegmentLanes::NextAbove(int row) const {
  const auto next = std::lower_bound(bars_.begin(), bars_.end(), row,
                                     [](const SegmentBar& bar, int below) { return bar.fromRow < below; });
  return next == bars_.begin() ? std::nullopt : std::optional((next - 1)->fromRow);
}

}  // namespace qmrules::desktop
