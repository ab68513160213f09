#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "workbench/flow/callorder.h"
#include "workbench/flow/rangebodies.h"

// The conditions that stand on every path to a place, found through the dominators of the body it is in.
//
//   IF A > 1
//       PERFORM CHECK
//   ELSE
//       PERFORM CHECK
//   END-IF
//
// Behind END-IF neither outcome of A > 1 is on every path, but what CHECK tests and leaves in one sense only is,
// although none of the two Calls is. So where ways meet, the facts of each of them are compared.
//
// A fact says that each path comes by the test with this outcome, not that the outcome is the last one: a condition can
// be tested again, in a range that is performed later. Where that cannot be, the fact is sure.
namespace qmrules::workbench::flow {

struct ConditionFact {
  NodeId condition = 0;
  NodeId within = 0;        // the statement of the outermost Call that has returned since; 0 for none
  RangeId home = kNoRange;  // in whose body it was tested
  bool sense = false;
  bool ended = false;  // as in ControllingCondition
  bool sure = false;   // there is no other test of it behind this one, unless it is `within` and `home` itself is
                       // performed again without having returned
};

// Which facts of a test are sure.
enum class Sureness : std::uint8_t {
  None,
  Direct,  // those of a test that stands on the way itself
  All,
};

// The same for facts that say the same.
inline std::uint64_t KeyOf(const ConditionFact& fact) {
  return std::uint64_t{fact.condition} << 1 | static_cast<std::uint64_t>(fact.sense);
}

class ConditionFacts {
 public:
  ConditionFacts(const RangeBodies& bodies, const CallOrder& order);

  // Adds the facts of all paths from the range's entry to the place, the last tested first; the same fact can come more
  // than once.
  void AddAt(RangeId range, std::uint32_t place, std::vector<ConditionFact>& facts);

 private:
  class Walk;
  class Common;
  struct Prepared;
  struct Place {
    RangeId range;
    std::uint32_t place;
    const Prepared& facts;  // of the range
  };
  struct Prepared {
    std::vector<std::uint32_t> dominators;  // only until its whole group is prepared
    // By place: the nearest dominator above it that bears facts; kNoPlace where there is none.
    std::vector<std::uint32_t> above;
    // Facts that all paths to a place have in common and no dominator has, ascending by place.
    std::vector<std::pair<std::uint32_t, std::vector<ConditionFact>>> joint;
    bool done = false;
  };
  enum class Found : std::uint8_t { Nothing, Something, NotYetKnown };

  void FindSureTests();
  Sureness SurenessIn(std::span<const RangeId> ranges);
  bool PerformsAnyOf(std::span<const RangeId> ranges, RangeId range);
  void PrepareGroup(std::size_t group);
  bool Prepare(RangeId range);
  bool Bears(RangeId range, const Point& point) const;
  Found FindJoint(const Place& at, std::vector<ConditionFact>& joint);
  bool MayShareFacts(const Place& at);
  // Of a Holds point, seen from the place that the walk through this range began at.
  ConditionFact FactOf(RangeId range, std::uint32_t place, std::uint32_t seenFrom) const;
  bool IsEndOfLoop(RangeId range, std::uint32_t place, std::uint32_t seenFrom) const;

  const RangeBodies& bodies_;
  const CallOrder& order_;
  std::vector<Prepared> prepared_;                 // by range
  std::vector<std::vector<std::uint32_t>> loops_;  // by range and place: the same for places that reach each other
  std::vector<Sureness> sure_;                     // by point, of Holds points
  std::size_t lookedAt_ = 0;                       // Calls, in the search for sure tests
  std::vector<std::uint32_t> walkedWith_;          // by range: the last walk that went through it
  std::uint32_t walks_ = 0;
};

}  // namespace qmrules::workbench::flow
