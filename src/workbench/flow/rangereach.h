#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "workbench/flow/flowgraph.h"

// Which ranges can run at all, and which of them can return.
namespace qmrules::workbench::flow {

// A Call lets control go on only if the range that it performs can come to its end, and that may hang on the Calls in
// this range in turn; a range that does nothing but perform itself never returns. So all ranges are followed at the
// same time, point by point, and a Call waits until the first path through its range has been found.
class RangeReach {
 public:
  // Gives up when the ranges have more than `most` points together.
  RangeReach(const FlowGraph& flow, std::size_t most);
  // Nothing else is known of ranges that it has given up on.
  bool IsComplete() const { return complete_; }
  bool Runs(RangeId range) const { return runs_[range] != 0; }
  bool Returns(RangeId range) const { return returns_[range] != 0; }

 private:
  struct Position {
    RangeId range;
    PointId point;
  };
  class PositionSet;
  class Search;

  std::vector<std::uint8_t> runs_, returns_;  // by range
  bool complete_ = false;
};

}  // namespace qmrules::workbench::flow
