#include "workbench/flow/referencesolver.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace qmrules::test {

using workbench::flow::AreaEffect;
using workbench::flow::ByteInterval;
using workbench::flow::ByteSet;
using workbench::flow::CallSite;
using workbench::flow::ChainArea;
using workbench::flow::kNoRange;
using workbench::flow::PointId;
using workbench::flow::PointKind;
using workbench::flow::RangeBodies;
using workbench::flow::RangeBody;
using workbench::flow::RangeId;

namespace {

bool Join(std::vector<std::uint64_t>& into, const std::vector<std::uint64_t>& from) {
  bool changed = false;
  for (std::size_t word = 0; word < from.size(); ++word) {
    changed = changed || (from[word] & ~into[word]) != 0;
    into[word] |= from[word];
  }
  return changed;
}

}  // namespace

ReferenceSolver::ReferenceSolver(const RangeBodies& bodies, const ChainArea& area) : bodies_(bodies), area_(area) {
  std::set<std::uint64_t> cuts;
  for (const AreaEffect& effect : area.Effects()) {
    for (const ByteInterval& interval : effect.bytes.Intervals()) cuts.insert({interval.begin, interval.end});
  }
  for (auto cut = cuts.begin(); cut != cuts.end() && std::next(cut) != cuts.end(); ++cut) {
    SolvePiece({*cut, *std::next(cut)});
  }
}

void ReferenceSolver::SolvePiece(ByteInterval piece) {
  definitions_.clear();
  at_.clear();
  for (std::uint32_t index = 0; index < area_.Effects().size(); ++index) {
    const AreaEffect& effect = area_.Effects()[index];
    if (!effect.bytes.Overlaps(piece)) continue;
    if (effect.IsUse()) continue;
    auto& [bits, kills] = at_[effect.point];
    bits.push_back(definitions_.size());
    kills = kills || effect.Kills();
    definitions_.push_back(index);
  }
  if (definitions_.empty()) return;
  const auto ranges = static_cast<RangeId>(bodies_.Flow().Ranges().size());
  const Bits none((definitions_.size() + 63) / 64);
  facts_.clear();
  facts_.resize(ranges);
  for (RangeId range = 0; range < ranges; ++range) {
    const std::size_t places = bodies_.Runs(range) ? bodies_.Of(range).points.size() : 0;
    facts_[range].before.assign(places, Fact{none, false});
    facts_[range].exit.since = none;
    facts_[range].atEntry = none;
  }
  const auto sweep = [&](bool (ReferenceSolver::*step)(RangeId)) {
    for (bool changed = true; changed;) {
      changed = false;
      for (RangeId range = 0; range < ranges; ++range) {
        if (bodies_.Runs(range) && (this->*step)(range)) changed = true;
      }
    }
  };
  sweep(&ReferenceSolver::SweepWithin);
  sweep(&ReferenceSolver::SweepAcross);
  Keep(piece);
}

ReferenceSolver::Fact ReferenceSolver::Behind(PointId point, Fact fact) const {
  if (const auto found = at_.find(point); found != at_.end()) {
    const auto& [bits, kills] = found->second;
    if (kills) fact = {Bits(fact.since.size()), false};
    for (const std::size_t bit : bits) fact.since[bit / 64] |= std::uint64_t{1} << (bit % 64);
  }
  const RangeId called = bodies_.Flow().Points()[point].range;
  if (called == kNoRange) return fact;
  Fact behind = facts_[called].exit;
  if (behind.passes) Join(behind.since, fact.since);
  behind.passes = behind.passes && fact.passes;
  return behind;
}

bool ReferenceSolver::SweepWithin(RangeId range) {
  const RangeBody& body = bodies_.Of(range);
  RangeFacts& facts = facts_[range];
  bool changed = false;
  for (std::uint32_t place = 0; place < body.points.size(); ++place) {
    Fact& before = facts.before[place];
    const auto add = [&](const Fact& fact) {
      changed = Join(before.since, fact.since) || changed;
      changed = changed || (fact.passes && !before.passes);
      before.passes = before.passes || fact.passes;
    };
    if (place == 0) add({Bits(before.since.size()), true});
    for (const std::uint32_t from : body.Ins(place)) add(Behind(body.points[from], facts.before[from]));
  }
  if (body.exit == RangeBody::kNoPlace) return changed;
  const Fact exit = Behind(body.points[body.exit], facts.before[body.exit]);
  changed = Join(facts.exit.since, exit.since) || changed || exit.passes != facts.exit.passes;
  facts.exit.passes = exit.passes;
  return changed;
}

bool ReferenceSolver::SweepAcross(RangeId range) {
  bool changed = false;
  for (const CallSite& site : bodies_.CallsOf(range)) {
    changed = Join(facts_[range].atEntry, All(facts_[site.caller], site.place)) || changed;
  }
  return changed;
}

ReferenceSolver::Bits ReferenceSolver::All(const RangeFacts& facts, std::uint32_t place) const {
  Bits bits = facts.before[place].since;
  if (facts.before[place].passes) Join(bits, facts.atEntry);
  return bits;
}

void ReferenceSolver::Keep(ByteInterval piece) {
  std::set<PointId> points;
  for (const AreaEffect& effect : area_.Effects()) {
    if (effect.IsUse()) points.insert(effect.point);
  }
  for (PointId point = 0; point < bodies_.Flow().Points().size(); ++point) {
    if (bodies_.Flow().Points()[point].kind == PointKind::Leave) points.insert(point);
  }
  for (const PointId point : points) {
    for (const RangeId range : bodies_.RangesWith(point)) {
      const Bits bits = All(facts_[range], bodies_.Of(range).PlaceOf(point));
      for (std::size_t bit = 0; bit < definitions_.size(); ++bit) {
        if ((bits[bit / 64] >> (bit % 64) & 1) != 0) reaching_[{point, definitions_[bit]}].Add(piece);
      }
    }
  }
}

std::map<std::pair<std::uint32_t, std::uint32_t>, ByteSet> ReferenceSolver::Links() const {
  std::map<std::pair<std::uint32_t, std::uint32_t>, ByteSet> links;
  for (std::uint32_t use = 0; use < area_.Effects().size(); ++use) {
    const AreaEffect& effect = area_.Effects()[use];
    if (!effect.IsUse()) continue;
    for (auto found = reaching_.lower_bound({effect.point, 0});
         found != reaching_.end() && found->first.first == effect.point; ++found) {
      ByteSet bytes = found->second.Within(effect.bytes);
      if (!bytes.Empty()) links[{use, found->first.second}] = std::move(bytes);
    }
  }
  return links;
}

}  // namespace qmrules::test
