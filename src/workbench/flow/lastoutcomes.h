#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "workbench/flow/callorder.h"
#include "workbench/flow/rangebodies.h"

namespace qmrules::workbench::flow {

// How one condition can have come out, the last time that it was tested, on all the paths that lead to a place: the
// returns of PERFORM matched, however the ranges lie over each other or perform each other. Where far too many of them
// do (by GO TO out of most ranges into the others), each outcome is taken for possible.
class LastOutcomes {
 public:
  using Set = std::uint8_t;
  static constexpr Set kUntested = 1;
  static constexpr Set kFalse = 2;
  static constexpr Set kTrue = 4;
  static constexpr Set kAny = kUntested | kFalse | kTrue;

  LastOutcomes(const RangeBodies& bodies, const CallOrder& order, NodeId condition);

  // At a place of the range, whichever way led into the range.
  Set At(RangeId range, std::uint32_t place);
  // The same of those paths that came into the range by this Call.
  Set At(RangeId range, std::uint32_t place, const CallSite& by);
  // False where each outcome was taken for possible because too much of the program would have to be followed.
  bool IsComplete() const { return complete_; }
  std::size_t Bytes() const;  // that it holds in memory

 private:
  // False when they have too many places to be followed.
  bool FindTouched();
  void GoThroughRanges();
  void EnterRanges();
  bool EnterFrom(RangeId range);
  std::vector<Set> OutcomesIn(RangeId range) const;
  Set Behind(const Point& point, Set before) const;
  // In which kUntested stands for what there was on entry to the range.
  Set Within(RangeId range, std::uint32_t place);

  const RangeBodies& bodies_;
  const CallOrder& order_;
  NodeId condition_;
  bool complete_ = true;
  std::vector<std::uint8_t> touched_;           // by range: it or what it performs can test the condition
  std::vector<Set> through_;                    // by range: on its return, from its entry
  std::vector<Set> onEntry_;                    // by range: from the beginning of the program
  std::map<RangeId, std::vector<Set>> within_;  // of the ranges asked for last
};

}  // namespace qmrules::workbench::flow
