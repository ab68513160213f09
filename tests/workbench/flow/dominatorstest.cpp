#include "workbench/flow/dominators.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "workbench/flow/randomflow.h"

namespace qmrules::workbench::flow {
namespace {

// Which places can be reached from the entry without coming by `without`.
std::vector<bool> ReachedWithout(const RangeBody& body, std::uint32_t without) {
  std::vector<bool> reached(body.points.size(), false);
  std::vector<std::uint32_t> open;
  const auto reach = [&](std::uint32_t place) {
    if (place == without || reached[place]) return;
    reached[place] = true;
    open.push_back(place);
  };
  reach(0);
  while (!open.empty()) {
    const std::uint32_t place = open.back();
    open.pop_back();
    for (const std::uint32_t out : body.Outs(place)) reach(out);
  }
  return reached;
}

// In reverse postorder the nearest of several dominators is the one with the highest place.
std::vector<std::uint32_t> PlainDominators(const RangeBody& body) {
  std::vector<std::uint32_t> dominators(body.points.size(), 0);
  for (std::uint32_t candidate = 1; candidate < body.points.size(); ++candidate) {
    const std::vector<bool> reached = ReachedWithout(body, candidate);
    for (std::uint32_t place = 0; place < body.points.size(); ++place) {
      if (place != candidate && !reached[place]) dominators[place] = candidate;
    }
  }
  return dominators;
}

TEST(Dominators, AreThePlacesWithoutWhichNothingIsReached) {
  std::mt19937 random(99);
  std::size_t compared = 0;
  for (int round = 0; round < 300; ++round) {
    const FlowGraph flow = test::RandomFlow(random, {.labels = 5, .pointsOfLabel = 6, .ranges = 1, .conditions = 12});
    const RangeBodies bodies(flow);
    for (RangeId range = 0; range < flow.Ranges().size(); ++range) {
      if (!bodies.Runs(range)) continue;
      const RangeBody& body = bodies.Of(range);
      ASSERT_EQ(ImmediateDominators(body), PlainDominators(body)) << "round " << round << ", range " << range;
      compared += body.points.size();
    }
  }
  EXPECT_GT(compared, 5000U);
}

// A ladder of tests that all lead to the same place, each past the one before it.
TEST(Dominators, OfALongLadderAreFoundInReasonableTime) {
  FlowGraph flow;
  flow.AddRange({.entry = flow.AddPoint({.node = 1, .range = kNoRange, .kind = PointKind::Entry})});
  const PointId join = flow.AddPoint({.node = 2, .range = kNoRange, .kind = PointKind::Leave});
  PointId before = 0;
  constexpr NodeId kSteps = 100'000;
  for (NodeId step = 0; step < kSteps; ++step) {
    const PointId test = flow.AddPoint({.node = 3 + step, .range = kNoRange, .kind = PointKind::Chance});
    flow.AddWay(before, {test});
    flow.AddWay(test, {join});
    before = test;
  }
  flow.AddWay(before, {join, WayKind::Jump});
  flow.Finish();
  const RangeBodies bodies(flow);
  const RangeBody& body = bodies.Of(kProgramRange);
  const std::vector<std::uint32_t> dominators = ImmediateDominators(body);
  EXPECT_EQ(body.points[dominators[body.PlaceOf(join)]], 2U);
  EXPECT_EQ(body.points[dominators[body.PlaceOf(before)]], before - 1);
}

}  // namespace
}  // namespace qmrules::workbench::flow
