#include "workbench/flow/lastoutcomes.h"

#include <algorithm>

namespace qmrules::workbench::flow {
namespace {

constexpr std::size_t kKeptRanges = 16;
constexpr std::size_t kMostPlaces = 200'000;  // a hundred times the usual

// What comes out when `step` is done to `before`.
LastOutcomes::Set Chained(LastOutcomes::Set before, LastOutcomes::Set step) {
  if (before == 0) return 0;
  const int tested = step & ~LastOutcomes::kUntested;
  return static_cast<LastOutcomes::Set>((step & LastOutcomes::kUntested) != 0 ? tested | before : tested);
}

}  // namespace

LastOutcomes::LastOutcomes(const RangeBodies& bodies, const CallOrder& order, NodeId condition)
    : bodies_(bodies),
      order_(order),
      condition_(condition),
      touched_(bodies.Flow().Ranges().size(), 0),
      through_(bodies.Flow().Ranges().size(), kUntested),
      onEntry_(bodies.Flow().Ranges().size(), 0) {
  if (FindTouched()) {
    GoThroughRanges();
    EnterRanges();
  } else {
    complete_ = false;
    std::ranges::fill(onEntry_, kAny);
    std::ranges::fill(touched_, std::uint8_t{0});
  }
}

std::size_t LastOutcomes::Bytes() const {
  std::size_t bytes = sizeof(LastOutcomes) + touched_.size() + through_.size() + onEntry_.size();
  for (const auto& [range, sets] : within_) bytes += sets.size();
  return bytes;
}

LastOutcomes::Set LastOutcomes::At(RangeId range, std::uint32_t place) {
  return Chained(onEntry_[range], Within(range, place));
}

LastOutcomes::Set LastOutcomes::At(RangeId range, std::uint32_t place, const CallSite& by) {
  return Chained(At(by.caller, by.place), Within(range, place));
}

bool LastOutcomes::FindTouched() {
  std::size_t places = 0;
  std::vector<RangeId> open;
  const auto touch = [&](RangeId range) {
    if (touched_[range] != 0) return;
    touched_[range] = 1;
    through_[range] = 0;
    places += bodies_.Of(range).points.size();
    open.push_back(range);
  };
  for (const PointId point : bodies_.Flow().PointsOf(condition_)) {
    if (bodies_.Flow().Points()[point].kind != PointKind::Holds) continue;
    for (const RangeId range : bodies_.RangesWith(point)) touch(range);
  }
  while (!open.empty() && places <= kMostPlaces) {
    const RangeId range = open.back();
    open.pop_back();
    if (!bodies_.Returns(range)) continue;
    for (const CallSite& call : bodies_.CallsOf(range)) touch(call.caller);
  }
  return places <= kMostPlaces;
}

void LastOutcomes::GoThroughRanges() {
  for (std::size_t group = 0; group < order_.Groups(); ++group) {
    bool changed = true;
    while (changed) {
      changed = false;
      for (const RangeId range : order_.Group(group)) {
        if (touched_[range] == 0 || !bodies_.Returns(range)) continue;
        const Set through = OutcomesIn(range)[bodies_.Of(range).exit];
        changed = changed || (through != through_[range] && order_.IsRecursive(range));
        through_[range] = through;
      }
    }
  }
}

void LastOutcomes::EnterRanges() {
  onEntry_[kProgramRange] = kUntested;
  for (std::size_t group = order_.Groups(); group-- > 0;) {
    bool changed = true;
    while (changed) {
      changed = false;
      for (const RangeId range : order_.Group(group)) {
        changed = (EnterFrom(range) && order_.IsRecursive(range)) || changed;
      }
    }
  }
}

// Whether it was news to any range that is performed from here.
bool LastOutcomes::EnterFrom(RangeId range) {
  const RangeBody& body = bodies_.Of(range);
  if (body.calls.empty() || onEntry_[range] == 0) return false;
  const std::vector<Set> within = touched_[range] != 0 ? OutcomesIn(range) : std::vector<Set>();
  bool news = false;
  for (const std::uint32_t place : body.calls) {
    Set& entered = onEntry_[bodies_.Flow().Points()[body.points[place]].range];
    const int outcome = entered | (within.empty() ? onEntry_[range] : Chained(onEntry_[range], within[place]));
    news = news || outcome != entered;
    entered = static_cast<Set>(outcome);
  }
  return news;
}

// By place, before the point itself. Sets only grow, so that this ends.
std::vector<LastOutcomes::Set> LastOutcomes::OutcomesIn(RangeId range) const {
  const RangeBody& body = bodies_.Of(range);
  const auto points = bodies_.Flow().Points();
  std::vector<Set> before(body.points.size(), 0);
  before[0] = kUntested;
  bool again = true;
  while (again) {
    again = false;
    for (std::uint32_t place = 0; place < before.size(); ++place) {
      const Set behind = Behind(points[body.points[place]], before[place]);
      for (const std::uint32_t out : body.Outs(place)) {
        const auto joined = static_cast<Set>(before[out] | behind);
        again = again || (joined != before[out] && out <= place);
        before[out] = joined;
      }
    }
  }
  return before;
}

LastOutcomes::Set LastOutcomes::Behind(const Point& point, Set before) const {
  if (point.kind == PointKind::Call) return Chained(before, through_[point.range]);
  if (point.kind != PointKind::Holds || point.node != condition_ || before == 0) return before;
  return point.sense ? kTrue : kFalse;
}

LastOutcomes::Set LastOutcomes::Within(RangeId range, std::uint32_t place) {
  if (touched_[range] == 0) return kUntested;
  auto found = within_.find(range);
  if (found == within_.end()) {
    if (within_.size() >= kKeptRanges) within_.clear();
    found = within_.emplace(range, OutcomesIn(range)).first;
  }
  return found->second[place];
}

}  // namespace qmrules::workbench::flow
