#pragma once

#include <memory>
#include <vector>

#include "workbench/flow/rangebodies.h"

// Under which conditions a statement runs.
//
//    1  MAIN-PART.
//    2      IF A = 0
//    3          GO TO DONE.
//    4      IF B = 1
//    5          PERFORM SHOW
//    6          PERFORM NOTE.
//    7      IF C = 1
//    8          PERFORM SHOW.
//    9  DONE.
//   10      GOBACK.
//   11  SHOW.
//   12      DISPLAY A.
//   13  NOTE.
//   14      DISPLAY B.
//
// Row 14 runs when A = 0 does not hold, which row 3 sees to, and B = 1 does. So does row 12 when it is performed at row
// 5; when it is performed at row 8, C = 1 holds, and of B = 1 nothing is known. Whichever way it is performed, A = 0
// does not hold. Row 10 runs under no condition.
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
  // Too much of the program runs through itself here, by PERFORM and GO TO, to be followed whole: what is told holds,
  // but conditions and ways in can be missing.
  bool areCut = false;
};

// Answers for one graph, whose bodies have to outlive it. What it finds out it keeps. Not for two threads at a time.
class ConditionFinder {
 public:
  explicit ConditionFinder(const RangeBodies& bodies);
  ~ConditionFinder();
  // Of a statement or a condition itself (then without it). Exact with regard to the graph: a condition is among
  // `always` when every path from the beginning of the program passes it with this sense, and none tests it again
  // afterwards with the other one; except where the answer says that it is cut.
  StatementConditions ConditionsOf(NodeId statement);

 private:
  struct Found;
  const RangeBodies& bodies_;
  std::unique_ptr<Found> found_;  // once there was a question
};

}  // namespace qmrules::workbench::flow
