#include "workbench/flow/chainsearch.h"

#include <algorithm>
#include <tuple>

namespace qmrules::workbench::flow {

ChainSearch::ChainSearch(BlockBodies& bodies, Direction direction, std::span<const Touch> touches)
    : bodies_(bodies),
      direction_(direction),
      touches_(touches),
      found_(touches.size()),
      stateOf_(bodies.Bodies().Flow().Ranges().size(), kNone) {
  const RangeBodies& all = bodies_.Bodies();
  std::vector<RangeId> marked;  // ranges whose calls have no markers yet
  const auto add = [&](RangeId range, const Marker& marker) {
    if (stateOf_[range] == kNone) marked.push_back(range);
    StateOf(range).markers.push_back(marker);
  };
  for (std::uint32_t touch = 0; touch < touches.size(); ++touch) {
    for (const RangeId range : all.RangesWith(touches[touch].point)) add(range, {.touch = touch});
  }
  while (!marked.empty()) {
    const RangeId called = marked.back();
    marked.pop_back();
    for (const CallSite& site : all.CallsOf(called)) add(site.caller, {.position = site.place, .called = called});
  }
}

ChainSearch::RangeState& ChainSearch::StateOf(RangeId range) {
  if (stateOf_[range] == kNone) {
    stateOf_[range] = static_cast<std::uint32_t>(states_.size());
    states_.emplace_back();
  }
  return states_[stateOf_[range]];
}

ChainSearch::RangeState& ChainSearch::Open(RangeId range) {
  RangeState& state = StateOf(range);
  if (state.blocks != nullptr) return state;
  state.blocks = &bodies_.Of(range);
  const RangeBody& body = bodies_.Bodies().Of(range);
  for (Marker& marker : state.markers) {
    const bool isTouch = marker.touch != kNone;
    marker.position = state.blocks->PositionOf(isTouch ? body.PlaceOf(touches_[marker.touch].point) : marker.position);
  }
  // What a Call point does with storage comes before what it performs.
  std::ranges::sort(state.markers, {}, [](const Marker& marker) {
    return std::make_tuple(marker.position, marker.touch == kNone, marker.called);
  });
  for (auto& reached : state.reached) reached.resize(state.blocks->Blocks());
  return state;
}

void ChainSearch::Start(PointId point, Pieces pieces) {
  const RangeBodies& all = bodies_.Bodies();
  for (const RangeId range : all.RangesWith(point)) StartAt(range, all.Of(range).PlaceOf(point), pieces);
}

void ChainSearch::StartAt(RangeId range, std::uint32_t place, Pieces pieces) {
  const RangeState& state = Open(range);
  const std::uint32_t position = state.blocks->PositionOf(place);
  const auto beyond = IsBackward() ? std::ranges::lower_bound(state.markers, position, {}, &Marker::position)
                                   : std::ranges::upper_bound(state.markers, position, {}, &Marker::position);
  steps_.push_back({range, Outward, state.blocks->BlockAt(position),
                    static_cast<std::uint32_t>(beyond - state.markers.begin()), pieces});
}

void ChainSearch::Run() {
  while (!steps_.empty()) {
    const Step step = steps_.back();
    steps_.pop_back();
    Pass(step);
  }
}

void ChainSearch::Reach(RangeId range, Mode mode, std::uint32_t block, Pieces pieces) {
  RangeState& state = Open(range);
  const Pieces fresh = pieces & ~state.reached[mode][block];
  if (fresh == 0) return;
  state.reached[mode][block] |= fresh;
  const std::uint32_t position = IsBackward() ? state.blocks->End(block) : state.blocks->Begin(block);
  const auto first = std::ranges::lower_bound(state.markers, position, {}, &Marker::position);
  steps_.push_back({range, mode, block, static_cast<std::uint32_t>(first - state.markers.begin()), fresh});
}

void ChainSearch::Pass(const Step& step) {
  const RangeState& state = StateOf(step.range);
  const BlockBody& blocks = *state.blocks;
  Pieces pieces = step.pieces;
  if (IsBackward()) {
    for (std::uint32_t index = step.marker; pieces != 0 && index-- > 0;) {
      if (state.markers[index].position < blocks.Begin(step.block)) break;
      pieces = PassMarker(step, index, pieces);
    }
  } else {
    for (std::uint32_t index = step.marker; pieces != 0 && index < state.markers.size(); ++index) {
      if (state.markers[index].position >= blocks.End(step.block)) break;
      pieces = PassMarker(step, index, pieces);
    }
  }
  if (pieces == 0) return;
  const auto next = IsBackward() ? blocks.Before(step.block) : blocks.After(step.block);
  for (const std::uint32_t block : next) Reach(step.range, step.mode, block, pieces);
  if (step.block == (IsBackward() ? blocks.EntryBlock() : blocks.ExitBlock())) Leave(step.range, step.mode, pieces);
}

Pieces ChainSearch::PassMarker(const Step& step, std::uint32_t index, Pieces pieces) {
  const Marker& marker = StateOf(step.range).markers[index];
  if (marker.touch == kNone) return PassCall(step, index, pieces);
  found_[marker.touch] |= pieces & touches_[marker.touch].wanted;
  return pieces & ~touches_[marker.touch].stopped;
}

Pieces ChainSearch::PassCall(const Step& step, std::uint32_t index, Pieces pieces) {
  Marker& marker = StateOf(step.range).markers[index];
  RangeState& called = Open(marker.called);
  Pieces& waiting = marker.waiting[step.mode];
  if (const Pieces fresh = pieces & ~waiting; fresh != 0) {
    if (waiting == 0) called.waiters.push_back({step.range, index, step.mode});
    waiting |= fresh;
    const std::uint32_t block = IsBackward() ? called.blocks->ExitBlock() : called.blocks->EntryBlock();
    // A range without exit does not return, so that a search backward has not come from behind the call.
    if (block != BlockBody::kNone) Reach(marker.called, Inward, block, fresh);
  }
  return pieces & called.passed;
}

void ChainSearch::Leave(RangeId range, Mode mode, Pieces pieces) {
  RangeState& state = StateOf(range);
  Pieces& gone = mode == Outward ? state.left : state.passed;
  const Pieces fresh = pieces & ~gone;
  if (fresh == 0) return;
  gone |= fresh;
  if (mode == Outward) {
    for (const CallSite& site : bodies_.Bodies().CallsOf(range)) StartAt(site.caller, site.place, fresh);
    return;
  }
  for (const Waiter& waiter : state.waiters) {
    const RangeState& caller = StateOf(waiter.caller);
    const Marker& marker = caller.markers[waiter.marker];
    const Pieces through = marker.waiting[waiter.mode] & fresh;
    if (through == 0) continue;
    const std::uint32_t next = IsBackward() ? waiter.marker : waiter.marker + 1;
    steps_.push_back({waiter.caller, waiter.mode, caller.blocks->BlockAt(marker.position), next, through});
  }
}

}  // namespace qmrules::workbench::flow
