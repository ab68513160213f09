#include "workbench/flow/openreturns.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

#include "workbench/flow/callorder.h"
#include "workbench/flow/equalrun.h"

namespace qmrules::workbench::flow {

namespace {

// Looks at so many calls in all; where more would be needed, a range is taken to be performed within the other.
constexpr std::size_t kMostCallsSeen = 2'000'000;

// Which ranges can be performed while another one is being performed.
class InnerRanges {
 public:
  explicit InnerRanges(const RangeBodies& bodies)
      : bodies_(bodies), order_(bodies), seenFrom_(bodies.Flow().Ranges().size(), kNoRange) {}

  // One of the others, none of which is the outer one.
  bool AnyRunsWithin(RangeId outer, std::span<const std::pair<RangeId, RangeId>> others) {
    const std::uint32_t group = order_.GroupOf(outer);
    std::uint32_t least = group;
    for (const auto& [same, other] : others) {
      if (order_.GroupOf(other) == group) return true;
      least = std::min(least, order_.GroupOf(other));
    }
    if (least == group) return false;
    Find(outer, least);
    return tooMany_ || std::ranges::any_of(others, [&](const std::pair<RangeId, RangeId>& each) {
             return seenFrom_[each.second] == outer;
           });
  }

 private:
  // Those of the groups from `least` on: no others lead there.
  void Find(RangeId outer, std::uint32_t least) {
    std::vector<RangeId> open{outer};
    while (!open.empty()) {
      const RangeBody& body = bodies_.Of(open.back());
      open.pop_back();
      for (const std::uint32_t call : body.calls) {
        tooMany_ = ++looked_ > kMostCallsSeen;
        if (tooMany_) return;
        const RangeId range = bodies_.Flow().Points()[body.points[call]].range;
        if (seenFrom_[range] == outer || order_.GroupOf(range) < least) continue;
        seenFrom_[range] = outer;
        open.push_back(range);
      }
    }
  }

  const RangeBodies& bodies_;
  CallOrder order_;
  std::vector<RangeId> seenFrom_;  // by range: the last outer one that it was found for
  std::size_t looked_ = 0;
  bool tooMany_ = false;
};

// The ranges that end there, each with one that passes its end.
std::vector<std::pair<RangeId, RangeId>> PassedEnds(const RangeBodies& bodies) {
  const FlowGraph& flow = bodies.Flow();
  std::vector<std::pair<PointId, RangeId>> exits;
  for (RangeId range = 1; range < flow.Ranges().size(); ++range) {
    if (bodies.Runs(range)) exits.emplace_back(flow.Ranges()[range].exit, range);
  }
  std::ranges::sort(exits);
  std::vector<std::pair<RangeId, RangeId>> passed;
  for (RangeId range = 1; range < flow.Ranges().size(); ++range) {
    if (!bodies.Runs(range)) continue;
    for (const PointId point : bodies.Of(range).points) {
      if (flow.Points()[point].kind != PointKind::End || point == flow.Ranges()[range].exit) continue;
      for (const auto& [exit, other] : EqualRun(exits, point, &std::pair<PointId, RangeId>::first)) {
        passed.emplace_back(other, range);
      }
    }
  }
  std::ranges::sort(passed);
  return passed;
}

}  // namespace

std::vector<FlowGap> OpenReturns(const RangeBodies& bodies) {
  std::vector<FlowGap> gaps;
  if (!bodies.AreReturnsMatched()) return gaps;
  const FlowGraph& flow = bodies.Flow();
  InnerRanges inner(bodies);
  std::vector<PointId> ends;
  const auto passed = PassedEnds(bodies);
  for (std::size_t first = 0, last = 0; first < passed.size(); first = last) {
    const RangeId outer = passed[first].first;
    while (last < passed.size() && passed[last].first == outer) ++last;
    const auto others = std::span(passed).subspan(first, last - first);
    if (inner.AnyRunsWithin(outer, others)) ends.push_back(flow.Ranges()[outer].exit);
  }
  std::ranges::sort(ends);
  ends.erase(std::unique(ends.begin(), ends.end()), ends.end());
  for (const PointId end : ends) gaps.push_back({FlowGapKind::OpenReturn, flow.Points()[end].node, {end}});
  return gaps;
}

}  // namespace qmrules::workbench::flow
