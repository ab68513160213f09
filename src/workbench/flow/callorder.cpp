#include "workbench/flow/callorder.h"

namespace qmrules::workbench::flow {

CallOrder::CallOrder(const RangeBodies& bodies) : performsItself_(bodies.Flow().Ranges().size(), 0) {
  const auto called = [&bodies](RangeId range, std::size_t call) {
    const RangeBody& body = bodies.Of(range);
    return bodies.Flow().Points()[body.points[body.calls[call]]].range;
  };
  const auto calls = [&bodies](RangeId range) { return bodies.Of(range).calls.size(); };
  groups_ = FindCycleGroups(performsItself_.size(), calls, called);
  for (const RangeId range : groups_.order) {
    for (std::size_t call = 0; call < calls(range); ++call) {
      if (called(range, call) == range) performsItself_[range] = 1;
    }
  }
}

}  // namespace qmrules::workbench::flow
