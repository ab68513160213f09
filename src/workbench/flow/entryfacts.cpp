#include "workbench/flow/entryfacts.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace qmrules::workbench::flow {
namespace {

constexpr std::size_t kMostCallsOfGroup = 20'000;

}  // namespace
// The facts of one way, from its end up.
class EntryFacts::Gathering {
 public:
  // Adds facts that were found above all ranges that were entered so far.
  void Add(const std::vector<ConditionFact>& facts) {
    for (const ConditionFact& fact : facts) {
      if (!met_.insert(KeyOf(fact)).second) continue;
      all.facts.push_back(fact);
      // What has returned with this outcome is performed again, and not at its end yet.
      if (fact.within != 0 && entered_.contains(fact.home)) all.facts.back().sure = false;
    }
  }
  void Enter(RangeId range) { entered_.insert(range); }

  Found all;

 private:
  std::unordered_set<std::uint64_t> met_;
  std::unordered_set<RangeId> entered_;
};

EntryFacts::EntryFacts(const RangeBodies& bodies, const CallOrder& order, ConditionFacts& facts)
    : bodies_(bodies), order_(order), facts_(facts) {}

EntryFacts::Found EntryFacts::At(RangeId range, std::uint32_t place, std::optional<CallSite> by) {
  Know(by ? by->caller : range);
  return *GatherUp(range, place, by);
}

// Nothing when a meeting on the way up is not known yet.
std::optional<EntryFacts::Found> EntryFacts::GatherUp(RangeId range, std::uint32_t place, std::optional<CallSite> by) {
  Gathering gathering;
  std::vector<ConditionFact> facts;
  while (true) {
    gathering.Enter(range);
    facts.clear();
    facts_.AddAt(range, place, facts);
    gathering.Add(facts);
    if (range == kProgramRange) break;
    if (!by && Meets(range)) {
      const Meeting& meeting = meetings_[range];
      if (!meeting.known) return std::nullopt;
      gathering.Add(meeting.found.facts);
      gathering.all.isCut = meeting.found.isCut;
      break;
    }
    const CallSite site = by ? *by : bodies_.CallsOf(range).front();
    by = std::nullopt;
    range = site.caller;
    place = site.place;
  }
  return std::move(gathering.all);
}

bool EntryFacts::Meets(RangeId range) const {
  return range != kProgramRange && (bodies_.CallsOf(range).size() > 1 || order_.IsRecursive(range));
}

// Works out the meetings that the facts on entry to the range hang on, those of the outer ranges first.
void EntryFacts::Know(RangeId range) {
  std::vector<RangeId> open{range};
  std::unordered_set<RangeId> seen{range};
  std::vector<RangeId> unknown;
  while (!open.empty()) {
    const RangeId at = open.back();
    open.pop_back();
    if (Meets(at)) {
      if (meetings_[at].known) continue;
      unknown.push_back(at);
    }
    for (const CallSite& call : bodies_.CallsOf(at)) {
      if (seen.insert(call.caller).second) open.push_back(call.caller);
    }
  }
  std::ranges::sort(unknown, [this](RangeId left, RangeId right) {
    return std::pair(order_.GroupOf(right), left) < std::pair(order_.GroupOf(left), right);
  });
  for (auto first = unknown.begin(); first != unknown.end();) {
    const auto last = std::find_if(first, unknown.end(),
                                   [&](RangeId other) { return order_.GroupOf(other) != order_.GroupOf(*first); });
    MeetGroup({first, last});
    first = last;
  }
}

// Ranges that perform each other: ways that come from one which is not known yet are left out of account, until each
// has had a way from outside of the group. Far too many of them are taken for ranges without any facts.
void EntryFacts::MeetGroup(const std::vector<RangeId>& ranges) {
  if (order_.IsRecursive(ranges.front())) {
    std::size_t calls = 0;
    for (const RangeId range : ranges) calls += bodies_.CallsOf(range).size();
    if (calls > kMostCallsOfGroup) {
      for (const RangeId range : ranges) meetings_[range] = {.known = true, .found = {.facts = {}, .isCut = true}};
      return;
    }
  }
  bool known = false;
  while (!known) {
    known = true;
    for (const RangeId range : ranges) {
      if (!meetings_[range].known) known = Meet(range) && known;
    }
  }
}

bool EntryFacts::Meet(RangeId range) {
  std::optional<Found> common;
  for (const CallSite& call : bodies_.CallsOf(range)) {
    auto found = GatherUp(call.caller, call.place, std::nullopt);
    if (!found) continue;
    if (!common) {
      common = std::move(found);
      continue;
    }
    std::unordered_map<std::uint64_t, bool> sure;
    for (const ConditionFact& fact : found->facts) sure.emplace(KeyOf(fact), fact.sure);
    std::erase_if(common->facts, [&sure](const ConditionFact& fact) { return !sure.contains(KeyOf(fact)); });
    for (ConditionFact& fact : common->facts) fact.sure = fact.sure && sure.at(KeyOf(fact));
    common->isCut = common->isCut || found->isCut;
  }
  if (!common) return false;
  if (order_.IsRecursive(range)) {
    for (ConditionFact& fact : common->facts) fact.sure = false;
  }
  meetings_[range] = {.known = true, .found = std::move(*common)};
  return true;
}

}  // namespace qmrules::workbench::flow
