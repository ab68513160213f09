#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "workbench/flow/cycles.h"
#include "workbench/flow/rangebodies.h"

namespace qmrules::workbench::flow {

// The ranges that can run, in an order in which each comes behind those that it performs. Ranges that perform each
// other in a circle form one group; every other range is a group by itself.
class CallOrder {
 public:
  explicit CallOrder(const RangeBodies& bodies);

  std::size_t Groups() const { return groups_.Count(); }
  std::span<const RangeId> Group(std::size_t group) const {
    return std::span(groups_.order).subspan(groups_.starts[group], groups_.SizeOf(static_cast<std::uint32_t>(group)));
  }
  // Of a range that can run.
  std::uint32_t GroupOf(RangeId range) const { return groups_.groupOf[range]; }
  // Can be performed while it is being performed.
  bool IsRecursive(RangeId range) const { return performsItself_[range] != 0 || groups_.SizeOf(GroupOf(range)) > 1; }

 private:
  CycleGroups groups_;
  std::vector<std::uint8_t> performsItself_;  // by range
};

}  // namespace qmrules::workbench::flow
