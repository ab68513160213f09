#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "workbench/flow/flowgraph.h"

// What runs in which range, with the returns of PERFORM matched to their calls: on valid paths only.
namespace qmrules::workbench::flow {

// All points that can run while the range is the innermost one that is being performed. GO TO does not end a PERFORM:
// what it leads to is in the body, wherever it stands. What a Call performs is not: the body goes on behind the Call,
// if the called range can return at all.
//
// Places are positions in `points`, which is in reverse postorder from the range's entry, so that [0] is the entry.
struct RangeBody {
  std::vector<PointId> points;
  std::vector<std::uint32_t> outStarts, outs;  // by place: the places that follow, in the order of the ways
  std::vector<std::uint32_t> inStarts, ins;    // by place: the places before, ascending
  std::vector<std::uint32_t> calls;            // places of Call points, ascending
  std::uint32_t exit = kNoPlace;               // of the range's exit, from where it returns; none when it never does

  static constexpr std::uint32_t kNoPlace = ~std::uint32_t{0};
  std::span<const std::uint32_t> Outs(std::uint32_t place) const {
    return std::span(outs).subspan(outStarts[place], outStarts[place + 1] - outStarts[place]);
  }
  std::span<const std::uint32_t> Ins(std::uint32_t place) const {
    return std::span(ins).subspan(inStarts[place], inStarts[place + 1] - inStarts[place]);
  }
  // kNoPlace for a point that is not in the body.
  std::uint32_t PlaceOf(PointId point) const;

  std::vector<std::pair<PointId, std::uint32_t>> byPoint;  // ascending
};

struct CallSite {
  RangeId caller = kNoRange;
  std::uint32_t place = 0;  // of the Call in the caller's body
};

// The bodies of the ranges that can run, beginning with the unit itself. Ranges that nothing performs have none. Time
// and memory are those of all bodies together, which is linear as long as ranges do not share most of the program by
// GO TO; the graph has to outlive it.
//
// Where they would have more than `most` points, returns are not matched: there is one body, that of the unit, which
// has all points that can run. In it a Call leads into its range, and the range's end behind every Call of it as well
// as to the next label. Every path of the program is a path of this body too, so what is never so in it is never so;
// but it has others.
class RangeBodies {
 public:
  static constexpr std::size_t kMostPoints = 10'000'000;
  explicit RangeBodies(const FlowGraph& flow, std::size_t most = kMostPoints);

  bool AreReturnsMatched() const { return matched_; }
  const FlowGraph& Flow() const { return flow_; }
  // Of a range that can run.
  const RangeBody& Of(RangeId range) const { return *bodies_[range]; }
  bool Runs(RangeId range) const { return bodies_[range] != nullptr; }
  // Can come to its end, so that control goes on behind a Call of it.
  bool Returns(RangeId range) const { return Runs(range) && Of(range).exit != RangeBody::kNoPlace; }
  // Where the range is performed, in the order of the callers; empty for kProgramRange.
  std::span<const CallSite> CallsOf(RangeId range) const;
  // The ranges in whose bodies the point is, ascending; empty when it never runs.
  std::span<const RangeId> RangesWith(PointId point) const;
  std::size_t Bytes() const;

 private:
  void MergeRanges();
  void FindRangesByPoint();
  void FindCalls();

  const FlowGraph& flow_;
  bool matched_ = true;
  std::vector<std::unique_ptr<RangeBody>> bodies_;
  std::vector<std::uint32_t> callStarts_;
  std::vector<CallSite> calls_;
  std::vector<std::uint32_t> rangeStarts_;  // by point
  std::vector<RangeId> ranges_;
};

}  // namespace qmrules::workbench::flow
