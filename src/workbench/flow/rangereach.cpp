#include "workbench/flow/rangereach.h"

#include <algorithm>
#include <utility>

namespace qmrules::workbench::flow {

// Open addressing in one array, since there are several of these for each statement of a program.
class RangeReach::PositionSet {
 public:
  explicit PositionSet(std::size_t expected) {
    while (slots_.size() < expected * 2) slots_.resize(slots_.size() * 2);
    std::ranges::fill(slots_, kFree);
  }

  // False when it was there already.
  bool Add(Position position) {
    if (2 * (count_ + 1) > slots_.size()) Grow();
    std::uint64_t& slot = SlotOf((std::uint64_t{position.range} << 32) | position.point);
    if (slot != kFree) return false;
    slot = (std::uint64_t{position.range} << 32) | position.point;
    ++count_;
    return true;
  }
  std::size_t Count() const { return count_; }

 private:
  static constexpr std::uint64_t kFree = ~std::uint64_t{0};  // neither number goes so far

  std::uint64_t& SlotOf(std::uint64_t key) {
    std::uint64_t mixed = key * 0x9E3779B97F4A7C15U;
    mixed ^= mixed >> 32;
    std::size_t slot = mixed & (slots_.size() - 1);
    while (slots_[slot] != kFree && slots_[slot] != key) slot = (slot + 1) & (slots_.size() - 1);
    return slots_[slot];
  }

  void Grow() {
    std::vector<std::uint64_t> old(slots_.size() * 2, kFree);
    old.swap(slots_);
    for (const std::uint64_t key : old) {
      if (key != kFree) SlotOf(key) = key;
    }
  }

  std::vector<std::uint64_t> slots_ = std::vector<std::uint64_t>(64);  // a power of 2
  std::size_t count_ = 0;
};

class RangeReach::Search {
 public:
  Search(const FlowGraph& flow, RangeReach& found)
      : flow_(flow), found_(found), seen_(flow.Points().size()), waiting_(flow.Ranges().size()) {}

  // Whether there were no more than so many.
  bool Run(std::size_t most) {
    Start(kProgramRange);
    while (!open_.empty() && seen_.Count() <= most) {
      const Position position = open_.back();
      open_.pop_back();
      const Point& point = flow_.Points()[position.point];
      if (position.point == flow_.Ranges()[position.range].exit) {
        Return(position.range);
      } else if (point.kind == PointKind::Call) {
        Start(point.range);
        if (found_.Returns(point.range)) {
          GoOn(position);
        } else {
          waiting_[point.range].push_back(position);
        }
      } else {
        GoOn(position);
      }
    }
    return seen_.Count() <= most;
  }

 private:
  void Start(RangeId range) {
    if (std::exchange(found_.runs_[range], std::uint8_t{1}) == 0) Reach({range, flow_.Ranges()[range].entry});
  }

  void Return(RangeId range) {
    found_.returns_[range] = 1;
    for (const Position& call : std::exchange(waiting_[range], {})) GoOn(call);
  }

  void GoOn(Position position) {
    for (const Way& way : flow_.WaysOut(position.point)) Reach({position.range, way.to});
  }

  void Reach(Position position) {
    if (seen_.Add(position)) open_.push_back(position);
  }

  const FlowGraph& flow_;
  RangeReach& found_;
  PositionSet seen_;
  std::vector<Position> open_;
  std::vector<std::vector<Position>> waiting_;  // by range: the Calls that wait for its return
};

RangeReach::RangeReach(const FlowGraph& flow, std::size_t most)
    : runs_(flow.Ranges().size()), returns_(flow.Ranges().size()) {
  complete_ = Search(flow, *this).Run(most);
}

}  // namespace qmrules::workbench::flow
