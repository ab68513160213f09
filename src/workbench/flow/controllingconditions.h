#pragma once

#include <memory>
#include <vector>

#include "workbench/flow/rangebodies.h"

// Under which conditions a statement runs.
namespace qmrules::workbench::flow {

struct ControllingCondition {
  NodeId condition = 0;  // COND
  bool sense = true;     // how it came out, the last time it was tested before
  NodeId within = 0;  // the PERFORM between whose start and return it was tested: a guard that leaves the program when
                      // it fails, in a range that has returned since; 0 for one that stands on the way itself. Where
                      // several ways lead to the statement, it is so on the first of them
  // It has ended a loop that the statement is not in: had it come out otherwise, it would only have been tested again.
  // So the statement waits for it, but is not kept from running by it.
  bool ended = false;
  bool operator==(const ControllingCondition&) const = default;
};

// One of several ways into the range that the statement runs in.
struct WayIn {
  NodeId perform = 0;                            // the statement that performs; 0 for the beginning of the program
  std::vector<ControllingCondition> conditions;  // that hold on this way and not on every one, outermost first
};

struct StatementConditions {
  bool runs = true;                          // false when no path leads to the statement
  std::vector<ControllingCondition> always;  // whichever way was taken, outermost (first tested) first
  std::vector<WayIn> waysIn;                 // when there are several and they differ; in the order of the program
};

// Answers for one graph, whose bodies have to outlive it. What it finds out it keeps. Not for two threads at a time.
class ConditionFinder {
 public:
  explicit ConditionFinder(const RangeBodies& bodies);
  ~ConditionFinder();
  // Of a statement or a condition itself (then without it). Exact with regard to the graph: a condition is among
  // `always` when every path from the beginning of the program passes it with this sense, and none tests it again
  // afterwards with the other one. In a program most of whose ranges perform each other, by GO TO out of them, some
  // that are can be missing.
  StatementConditions ConditionsOf(NodeId statement);

 private:
  struct Found;
  const RangeBodies& bodies_;
  std::unique_ptr<Found> found_;  // once there was a question
};

}  // namespace qmrules::workbench::flow
