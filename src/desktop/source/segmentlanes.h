#pragma once

#include <optional>
#include <vector>

#include "platform/sourceviewer.h"

namespace qmrules::desktop {

// A segment as a bar in the margin. Bars that overlap stand in different lanes, as far as there are lanes.
struct SegmentBar {
  int fromRow = 0;  // from 1
  int toRow = 0;    // inclusive
  int lane = 0;     // from 0
  friend bool operator==(const SegmentBar&, const SegmentBar&) = default;
};

// The segments marked in a file, side by side where they overlap.
class SegmentLanes {
 public:
  static constexpr int kMostLanes = 4;

  SegmentLanes() = default;
  // Marks without a row (their last one before their first, or before row 1) have no bar. The rest of each goes into
  // the first free lane, in the order of their first rows, the longer one first; into the last lane when none is free.
  explicit SegmentLanes(const std::vector<platform::SegmentMark>& marks);

  int Lanes() const { return lanes_; }
  // The bars that hold a row of these, by their first rows.
  std::vector<SegmentBar> Within(int fromRow, int toRow) const;
  // The first row of the nearest segment that begins below the row, or above it.
  std::optional<int> NextBelow(int row) const;
  std::optional<int> NextAbove(int row) const;

 private:
  std::vector<SegmentBar> bars_;
  int lanes_ = 0;
};

}  // namespace qmrules::desktop
