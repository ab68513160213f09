#include "workbench/flow/conditionfacts.h"

#include <algorithm>
#include <map>
#include <optional>
#include <span>
#include <unordered_set>
#include <utility>

#include "workbench/flow/cycles.h"
#include "workbench/flow/dominators.h"

namespace qmrules::workbench::flow {
namespace {

constexpr std::uint32_t kNowhere = RangeBody::kNoPlace;
constexpr std::size_t kMostLookedAt = 1'000'000;

// A direct test that no other path can have: useless where ways meet.
bool IsOfOneWay(const ConditionFact& fact) {
  return fact.sure && fact.within == 0;
}

}  // namespace

// The facts from a place back to the entry of its range, the last tested first, through the ranges that have returned
// on the way. Each of these is gone through once, the last time that it was performed.
class ConditionFacts::Walk {
 public:
  // `leaving`: with what the place itself adds. Ends when it comes to the place `until`, or above it.
  Walk(ConditionFacts& facts, const Place& from, bool leaving, std::uint32_t until = kNowhere)
      : facts_(facts), until_(until) {
    ++facts_.walks_;
    stack_.push_back({.range = from.range,
                      .place = from.place,
                      .begin = from.place,
                      .within = 0,
                      .facts = &from.facts,
                      .joint = !leaving});
  }

  bool IsUnknown() const { return unknown_; }

  std::optional<ConditionFact> Next() {
    while (!unknown_) {
      if (!pending_.empty()) {
        const ConditionFact fact = pending_.front();
        pending_ = pending_.subspan(1);
        return Outermost(fact, pendingWithin_);
      }
      if (stack_.empty()) break;
      Cursor& cursor = stack_.back();
      if (cursor.joint) {
        cursor.joint = false;
        AddJoint(cursor);
        cursor.place = cursor.facts->above[cursor.place];
        continue;
      }
      if (IsAtEnd(cursor)) {
        stack_.pop_back();
        continue;
      }
      cursor.joint = true;
      const Point& point = PointAt(cursor);
      if (point.kind == PointKind::Holds) {
        return FactAt(cursor);
      }
      if (point.kind == PointKind::Call) GoInto(point, cursor.within);
    }
    return std::nullopt;
  }

 private:
  struct Cursor {
    RangeId range;
    std::uint32_t place;  // whose own facts come next, or (`joint`) those that all ways to it have
    std::uint32_t begin;  // where the walk through this range has begun
    NodeId within;
    const Prepared* facts;  // of the range
    bool joint;
  };

  bool IsAtEnd(const Cursor& cursor) const {
    return cursor.place == kNowhere || (stack_.size() == 1 && until_ != kNowhere && cursor.place <= until_);
  }

  const Point& PointAt(const Cursor& cursor) const {
    return facts_.bodies_.Flow().Points()[facts_.bodies_.Of(cursor.range).points[cursor.place]];
  }

  static ConditionFact Outermost(ConditionFact fact, NodeId within) {
    if (within != 0) fact.within = within;
    return fact;
  }

  ConditionFact FactAt(const Cursor& cursor) const {
    ConditionFact fact = facts_.FactOf(cursor.range, cursor.place, cursor.begin);
    const Sureness sureness = facts_.sure_[facts_.bodies_.Of(cursor.range).points[cursor.place]];
    fact.sure = sureness == Sureness::All || (sureness == Sureness::Direct && cursor.within == 0);
    return Outermost(fact, cursor.within);
  }

  void AddJoint(const Cursor& cursor) {
    const auto& joint = cursor.facts->joint;
    const auto found = std::ranges::lower_bound(joint, cursor.place, {}, [](const auto& at) { return at.first; });
    if (found == joint.end() || found->first != cursor.place) return;
    pending_ = found->second;
    pendingWithin_ = cursor.within;
    if (found->second.empty()) unknown_ = true;
  }

  void GoInto(const Point& call, NodeId within) {
    if (!facts_.bodies_.Returns(call.range)) return;
    if (!facts_.prepared_[call.range].done) {
      unknown_ = true;
      return;
    }
    if (std::exchange(facts_.walkedWith_[call.range], facts_.walks_) == facts_.walks_) return;
    stack_.push_back({.range = call.range,
                      .place = facts_.bodies_.Of(call.range).exit,
                      .begin = facts_.bodies_.Of(call.range).exit,
                      .within = within == 0 ? call.node : within,
                      .facts = &facts_.prepared_[call.range],
                      .joint = true});
  }

  ConditionFacts& facts_;
  std::uint32_t until_;
  std::vector<Cursor> stack_;
  std::span<const ConditionFact> pending_;
  NodeId pendingWithin_ = 0;
  bool unknown_ = false;
};

ConditionFacts::ConditionFacts(const RangeBodies& bodies, const CallOrder& order)
    : bodies_(bodies),
      order_(order),
      prepared_(bodies.Flow().Ranges().size()),
      loops_(bodies.Flow().Ranges().size()),
      walkedWith_(bodies.Flow().Ranges().size()) {
  FindSureTests();
  for (std::size_t group = 0; group < order.Groups(); ++group) PrepareGroup(group);
}

void ConditionFacts::AddAt(RangeId range, std::uint32_t place, std::vector<ConditionFact>& facts) {
  Walk walk(*this, {range, place, prepared_[range]}, false);
  while (const auto fact = walk.Next()) facts.push_back(*fact);
}

// Of a condition that is tested at one point only, which these ranges have in common. In a single range that cannot be
// performed while it is being performed, nothing tests it again. Of several, none of which performs another, nothing
// that such a range performs tests it again; another one of them can, after it has returned.
Sureness ConditionFacts::SurenessIn(std::span<const RangeId> ranges) {
  const auto isRecursive = [this](RangeId range) { return order_.IsRecursive(range); };
  if (ranges.empty() || std::ranges::any_of(ranges, isRecursive)) return Sureness::None;
  if (ranges.size() == 1) return Sureness::All;
  const auto performs = [&](RangeId range) { return PerformsAnyOf(ranges, range); };
  return std::ranges::any_of(ranges, performs) ? Sureness::None : Sureness::Direct;
}

// At any depth. Taken to be so where it would be too long a search.
bool ConditionFacts::PerformsAnyOf(std::span<const RangeId> ranges, RangeId range) {
  std::vector<RangeId> open{range};
  std::unordered_set<RangeId> seen;
  while (!open.empty()) {
    const RangeBody& body = bodies_.Of(open.back());
    open.pop_back();
    lookedAt_ += 1 + body.calls.size();
    if (lookedAt_ > kMostLookedAt) return true;
    for (const std::uint32_t call : body.calls) {
      const RangeId called = bodies_.Flow().Points()[body.points[call]].range;
      if (std::ranges::binary_search(ranges, called)) return true;
      if (seen.insert(called).second) open.push_back(called);
    }
  }
  return false;
}

void ConditionFacts::FindSureTests() {
  const auto points = bodies_.Flow().Points();
  sure_.assign(points.size(), Sureness::None);
  std::map<std::vector<RangeId>, Sureness> known;
  for (PointId point = 0; point < points.size(); ++point) {
    if (points[point].kind != PointKind::Condition) continue;
    const auto ranges = bodies_.RangesWith(point);
    const auto ofNode = bodies_.Flow().PointsOf(points[point].node);
    const auto isTest = [points](PointId other) { return points[other].kind == PointKind::Condition; };
    if (std::ranges::count_if(ofNode, isTest) > 1) continue;
    const auto [found, isNew] = known.try_emplace({ranges.begin(), ranges.end()}, Sureness::None);
    if (isNew) found->second = SurenessIn(ranges);
    for (const PointId other : ofNode) sure_[other] = found->second;
  }
}

// Ranges that perform each other need each other's facts. Those of a Call that are not known yet are left out of
// account; the next round knows more, since each range can return without going in circles.
void ConditionFacts::PrepareGroup(std::size_t group) {
  const auto members = order_.Group(group);
  for (const RangeId range : members) {
    const RangeBody& body = bodies_.Of(range);
    prepared_[range].dominators = ImmediateDominators(body);
    loops_[range] = FindCycleGroups(
                        body.points.size(), [&body](std::uint32_t place) { return body.Outs(place).size(); },
                        [&body](std::uint32_t place, std::size_t way) { return body.Outs(place)[way]; })
                        .groupOf;
  }
  bool known = false;
  for (std::size_t round = 0; !known && round <= members.size() + 1; ++round) {
    known = true;
    for (const RangeId range : members) known = Prepare(range) && known;
  }
  for (const RangeId range : members) {
    prepared_[range].dominators = {};
    std::erase_if(prepared_[range].joint, [](const auto& joint) { return joint.second.empty(); });
  }
}

// False when some of it is not known yet: such a place has an empty list.
bool ConditionFacts::Prepare(RangeId range) {
  const RangeBody& body = bodies_.Of(range);
  const auto places = static_cast<std::uint32_t>(body.points.size());
  Prepared fresh{.dominators = std::move(prepared_[range].dominators),
                 .above = std::vector<std::uint32_t>(places, kNowhere),
                 .joint = {},
                 .done = true};
  std::vector<std::uint8_t> bears(places, 0);
  bool known = true;
  for (std::uint32_t place = 0; place < places; ++place) {
    const std::uint32_t dominator = fresh.dominators[place];
    if (place != 0) fresh.above[place] = bears[dominator] != 0 ? dominator : fresh.above[dominator];
    bears[place] = static_cast<std::uint8_t>(Bears(range, bodies_.Flow().Points()[body.points[place]]));
    if (place == 0 || body.Ins(place).size() < 2) continue;
    std::vector<ConditionFact> joint;
    const Found found = FindJoint({range, place, fresh}, joint);
    if (found == Found::Nothing) continue;
    known = known && found == Found::Something;
    fresh.joint.emplace_back(place, std::move(joint));
    bears[place] = 1;
  }
  prepared_[range] = std::move(fresh);
  return known;
}

// Whether a walk that comes by the point finds facts there.
bool ConditionFacts::Bears(RangeId range, const Point& point) const {
  if (point.kind == PointKind::Holds) return true;
  if (point.kind != PointKind::Call || !bodies_.Returns(point.range)) return false;
  if (order_.GroupOf(point.range) == order_.GroupOf(range)) return true;
  const Prepared& called = prepared_[point.range];
  const std::uint32_t exit = bodies_.Of(point.range).exit;
  return called.above[exit] != kNowhere ||
         std::ranges::binary_search(called.joint, exit, {}, [](const auto& at) { return at.first; });
}

ConditionFact ConditionFacts::FactOf(RangeId range, std::uint32_t place, std::uint32_t seenFrom) const {
  const PointId point = bodies_.Of(range).points[place];
  const Point& at = bodies_.Flow().Points()[point];
  return {.condition = at.node,
          .within = 0,
          .home = range,
          .sense = at.sense,
          .ended = IsEndOfLoop(range, place, seenFrom)};
}

bool ConditionFacts::IsEndOfLoop(RangeId range, std::uint32_t place, std::uint32_t seenFrom) const {
  const RangeBody& body = bodies_.Of(range);
  const std::vector<std::uint32_t>& loops = loops_[range];
  const std::uint32_t test = body.Ins(place).front();
  if (loops[test] == loops[seenFrom]) return false;
  const auto outs = body.Outs(test);
  return std::ranges::any_of(outs, [&](std::uint32_t out) { return out != place && loops[out] == loops[test]; });
}

// Whether each way to the place has a fact that another one could have too.
bool ConditionFacts::MayShareFacts(const Place& at) {
  const std::uint32_t dominator = at.facts.dominators[at.place];
  for (const std::uint32_t before : bodies_.Of(at.range).Ins(at.place)) {
    if (before >= at.place) continue;
    Walk walk(*this, {at.range, before, at.facts}, true, dominator);
    auto fact = walk.Next();
    while (fact && IsOfOneWay(*fact)) fact = walk.Next();
    if (!fact && !walk.IsUnknown()) return false;
  }
  return true;
}

// What several ways have in common.
class ConditionFacts::Common {
 public:
  // False when the facts of the way are not known yet, which changes nothing.
  bool Add(Walk way) {
    std::unordered_set<std::uint64_t> met;
    std::vector<ConditionFact> fresh;
    while (const auto fact = way.Next()) {
      if (isFirst_ ? IsOfOneWay(*fact) : !shared_.contains(KeyOf(*fact))) continue;
      if (!met.insert(KeyOf(*fact)).second) continue;
      if (isFirst_) fresh.push_back(*fact);
      if (!isFirst_ && met.size() == shared_.size()) break;
    }
    if (way.IsUnknown()) return false;
    if (isFirst_) facts_ = std::move(fresh);
    shared_ = std::move(met);
    isFirst_ = false;
    return true;
  }

  bool IsKnown() const { return !isFirst_; }
  bool IsNothing() const { return !isFirst_ && shared_.empty(); }

  std::vector<ConditionFact> Take() {
    std::erase_if(facts_, [this](const ConditionFact& fact) { return !shared_.contains(KeyOf(fact)); });
    for (ConditionFact& fact : facts_) fact.sure = false;
    return std::move(facts_);
  }

 private:
  bool isFirst_ = true;
  std::vector<ConditionFact> facts_;
  std::unordered_set<std::uint64_t> shared_;
};

// What all ways to the place have in common since they parted. Ways back (from higher places) have what the others
// have, and are followed only when nothing is known of these: through what the round before has found.
ConditionFacts::Found ConditionFacts::FindJoint(const Place& at, std::vector<ConditionFact>& joint) {
  if (!MayShareFacts(at)) return Found::Nothing;
  const std::uint32_t dominator = at.facts.dominators[at.place];
  const auto ins = bodies_.Of(at.range).Ins(at.place);
  Common common;
  for (const std::uint32_t before : ins) {
    if (before < at.place) common.Add(Walk(*this, {at.range, before, at.facts}, true, dominator));
    if (common.IsNothing()) return Found::Nothing;
  }
  const Prepared& known = prepared_[at.range];
  for (const std::uint32_t before : ins) {
    if (common.IsKnown() || !known.done) break;
    if (before >= at.place) common.Add(Walk(*this, {at.range, before, known}, true, dominator));
  }
  joint = common.Take();
  if (!common.IsKnown()) return Found::NotYetKnown;
  return joint.empty() ? Found::Nothing : Found::Something;
}

}  // namespace qmrules::workbench::flow
