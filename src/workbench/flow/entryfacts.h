#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "workbench/flow/callorder.h"
#include "workbench/flow/conditionfacts.h"
#include "workbench/flow/rangebodies.h"

namespace qmrules::workbench::flow {

// Facts about conditions from the beginning of the program on, through the Calls that lead into a range. They are
// worked out for the ranges above the one asked about only, and kept where several Calls meet.
class EntryFacts {
 public:
  struct Found {
    std::vector<ConditionFact> facts;  // the last tested first, each once
    bool isCut = false;                // ranges that perform each other were too many to be followed
  };

  EntryFacts(const RangeBodies& bodies, const CallOrder& order, ConditionFacts& facts);

  // At a place of a range, on all paths that come in by this Call: by any one when there is none. A fact that is sure
  // holds; for the others it is a guess that leaves none out.
  Found At(RangeId range, std::uint32_t place, std::optional<CallSite> by);

 private:
  struct Meeting {
    bool known = false;
    Found found;
  };
  class Gathering;

  std::optional<Found> GatherUp(RangeId range, std::uint32_t place, std::optional<CallSite> by);
  void Know(RangeId range);
  bool Meets(RangeId range) const;
  void MeetGroup(const std::vector<RangeId>& ranges);
  bool Meet(RangeId range);

  const RangeBodies& bodies_;
  const CallOrder& order_;
  ConditionFacts& facts_;
  std::map<RangeId, Meeting> meetings_;  // of ranges with more than one way in
};

}  // namespace qmrules::workbench::flow
