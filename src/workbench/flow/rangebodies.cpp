#include "workbench/flow/rangebodies.h"

#include <algorithm>
#include <utility>

#include "workbench/flow/rangereach.h"

namespace qmrules::workbench::flow {

std::uint32_t RangeBody::PlaceOf(PointId point) const {
  const auto found = std::ranges::lower_bound(byPoint, point, {}, &std::pair<PointId, std::uint32_t>::first);
  return found != byPoint.end() && found->first == point ? found->second : kNoPlace;
}

namespace {

// Makes one body after the other. Which places the points have it keeps in one list for all of them.
class BodyMaker {
 public:
  BodyMaker(const FlowGraph& flow, const RangeReach& reach)
      : flow_(flow), reach_(reach), places_(flow.Points().size(), RangeBody::kNoPlace) {}

  std::unique_ptr<RangeBody> Make(RangeId range) {
    auto body = std::make_unique<RangeBody>();
    const PerformRange& labels = flow_.Ranges()[range];
    exit_ = labels.exit;
    FindOrder(labels.entry, body->points);
    for (std::uint32_t place = 0; place < body->points.size(); ++place) places_[body->points[place]] = place;
    LinkPlaces(*body);
    if (exit_ != kNoPoint) body->exit = places_[exit_];
    for (const PointId point : body->points) places_[point] = RangeBody::kNoPlace;
    return body;
  }

 private:
  struct Step {
    PointId point;
    std::size_t waysLeft;
  };

  std::span<const Way> WaysOn(PointId point) const {
    if (point == exit_) return {};
    const Point& at = flow_.Points()[point];
    if (at.kind == PointKind::Call && !reach_.Returns(at.range)) return {};
    return flow_.WaysOut(point);
  }

  void Enter(PointId point, std::vector<Step>& steps) {
    places_[point] = 0;
    steps.push_back({point, WaysOn(point).size()});
  }

  // Takes the last way of a point first, so that the first one comes first in the reverse.
  void FindOrder(PointId entry, std::vector<PointId>& points) {
    std::vector<Step> steps;
    Enter(entry, steps);
    while (!steps.empty()) {
      Step& step = steps.back();
      if (step.waysLeft == 0) {
        points.push_back(step.point);
        steps.pop_back();
        continue;
      }
      const PointId to = WaysOn(step.point)[--step.waysLeft].to;
      if (places_[to] == RangeBody::kNoPlace) Enter(to, steps);
    }
    std::ranges::reverse(points);
    points.shrink_to_fit();
  }

  void LinkPlaces(RangeBody& body) const {
    const auto count = static_cast<std::uint32_t>(body.points.size());
    body.outStarts.reserve(count + 1);
    body.inStarts.assign(count + 1, 0);
    for (std::uint32_t place = 0; place < count; ++place) {
      body.outStarts.push_back(static_cast<std::uint32_t>(body.outs.size()));
      for (const Way& way : WaysOn(body.points[place])) {
        body.outs.push_back(places_[way.to]);
        ++body.inStarts[places_[way.to] + 1];
      }
      if (flow_.Points()[body.points[place]].kind == PointKind::Call) body.calls.push_back(place);
    }
    body.outStarts.push_back(static_cast<std::uint32_t>(body.outs.size()));
    for (std::uint32_t place = 0; place < count; ++place) body.inStarts[place + 1] += body.inStarts[place];
    body.ins.resize(body.outs.size());
    std::vector<std::uint32_t> next(body.inStarts.begin(), body.inStarts.end() - 1);
    for (std::uint32_t place = 0; place < count; ++place) {
      for (const std::uint32_t out : body.Outs(place)) body.ins[next[out]++] = place;
    }
    body.outs.shrink_to_fit();
    body.calls.shrink_to_fit();
  }

  const FlowGraph& flow_;
  const RangeReach& reach_;
  std::vector<std::uint32_t> places_;  // by point; kNoPlace for those that are not in the body
  PointId exit_ = kNoPoint;
};

// The same points, with ways in the place of Calls and returns.
FlowGraph WithoutCalls(const FlowGraph& flow) {
  FlowGraph merged;
  merged.AddRange(flow.Ranges()[kProgramRange]);
  for (Point point : flow.Points()) {
    if (point.kind == PointKind::Call) point.kind = PointKind::Statement;
    merged.AddPoint(point);
  }
  std::vector<std::pair<PointId, PointId>> returns;  // from a range's exit
  for (PointId point = 0; point < flow.Points().size(); ++point) {
    const Point& at = flow.Points()[point];
    const auto ways = flow.WaysOut(point);
    if (at.kind != PointKind::Call) {
      for (const Way& way : ways) merged.AddWay(point, way);
      continue;
    }
    const PerformRange& range = flow.Ranges()[at.range];
    merged.AddWay(point, {range.entry, WayKind::Next});
    for (const Way& way : ways) returns.emplace_back(range.exit, way.to);
  }
  std::ranges::sort(returns);
  returns.erase(std::unique(returns.begin(), returns.end()), returns.end());
  for (const auto& [exit, to] : returns) merged.AddWay(exit, {to, WayKind::Next});
  merged.Finish();
  return merged;
}

template <typename T>
std::size_t BytesOf(const std::vector<T>& list) {
  return list.capacity() * sizeof(T);
}

}  // namespace

RangeBodies::RangeBodies(const FlowGraph& flow, std::size_t most) : flow_(flow) {
  const auto ranges = static_cast<RangeId>(flow.Ranges().size());
  bodies_.resize(ranges);
  const RangeReach reach(flow, most);
  matched_ = reach.IsComplete();
  if (matched_) {
    BodyMaker maker(flow, reach);
    for (RangeId range = 0; range < ranges; ++range) {
      if (reach.Runs(range)) bodies_[range] = maker.Make(range);
    }
  } else {
    MergeRanges();
  }
  FindRangesByPoint();
  FindCalls();
}

void RangeBodies::MergeRanges() {
  const FlowGraph merged = WithoutCalls(flow_);
  const RangeReach reach(merged, merged.Points().size());
  bodies_[kProgramRange] = BodyMaker(merged, reach).Make(kProgramRange);
}

void RangeBodies::FindRangesByPoint() {
  const std::size_t points = flow_.Points().size();
  rangeStarts_.assign(points + 1, 0);
  for (const auto& body : bodies_) {
    if (!body) continue;
    body->byPoint.reserve(body->points.size());
    for (const PointId point : body->points) ++rangeStarts_[point + 1];
  }
  for (std::size_t point = 0; point < points; ++point) rangeStarts_[point + 1] += rangeStarts_[point];
  ranges_.resize(rangeStarts_.back());
  std::vector<std::uint32_t> placesByPoint(ranges_.size());
  std::vector<std::uint32_t> next(rangeStarts_.begin(), rangeStarts_.end() - 1);
  for (RangeId range = 0; range < bodies_.size(); ++range) {
    if (!bodies_[range]) continue;
    const std::vector<PointId>& body = bodies_[range]->points;
    for (std::uint32_t place = 0; place < body.size(); ++place) {
      const std::uint32_t slot = next[body[place]]++;
      ranges_[slot] = range;
      placesByPoint[slot] = place;
    }
  }
  for (PointId point = 0; point < points; ++point) {
    for (std::uint32_t slot = rangeStarts_[point]; slot < rangeStarts_[point + 1]; ++slot) {
      bodies_[ranges_[slot]]->byPoint.emplace_back(point, placesByPoint[slot]);
    }
  }
}

void RangeBodies::FindCalls() {
  callStarts_.assign(bodies_.size() + 1, 0);
  const auto calledAt = [this](const RangeBody& body, std::uint32_t place) {
    return flow_.Points()[body.points[place]].range;
  };
  for (const auto& body : bodies_) {
    if (!body) continue;
    for (const std::uint32_t place : body->calls) ++callStarts_[calledAt(*body, place) + 1];
  }
  for (std::size_t range = 0; range < bodies_.size(); ++range) callStarts_[range + 1] += callStarts_[range];
  calls_.resize(callStarts_.back());
  std::vector<std::uint32_t> next(callStarts_.begin(), callStarts_.end() - 1);
  for (RangeId caller = 0; caller < bodies_.size(); ++caller) {
    if (!bodies_[caller]) continue;
    for (const std::uint32_t place : bodies_[caller]->calls) {
      calls_[next[calledAt(*bodies_[caller], place)]++] = {caller, place};
    }
  }
}

std::span<const CallSite> RangeBodies::CallsOf(RangeId range) const {
  return std::span(calls_).subspan(callStarts_[range], callStarts_[range + 1] - callStarts_[range]);
}

std::span<const RangeId> RangeBodies::RangesWith(PointId point) const {
  return std::span(ranges_).subspan(rangeStarts_[point], rangeStarts_[point + 1] - rangeStarts_[point]);
}

std::size_t RangeBodies::Bytes() const {
  std::size_t bytes =
      BytesOf(bodies_) + BytesOf(callStarts_) + BytesOf(calls_) + BytesOf(rangeStarts_) + BytesOf(ranges_);
  for (const auto& body : bodies_) {
    if (!body) continue;
    bytes += sizeof(RangeBody) + BytesOf(body->points) + BytesOf(body->outStarts) + BytesOf(body->outs) +
             BytesOf(body->inStarts) + BytesOf(body->ins) + BytesOf(body->calls) + BytesOf(body->byPoint);
  }
  return bytes;
}

}  // namespace qmrules::workbench::flow
