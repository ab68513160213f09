#include "workbench/flow/rangebodies.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <utility>

#include "workbench/flow/randomflow.h"

namespace qmrules::workbench::flow {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A graph made point by point: labels with their statements, one after the other.
struct HandMade {
  HandMade() { graph.AddRange({.entry = Add(PointKind::Entry)}); }
  PointId Add(PointKind kind) { return graph.AddPoint({.node = next++, .range = kNoRange, .kind = kind}); }
  PointId AddBehind(PointId before, PointKind kind) {
    const PointId point = Add(kind);
    graph.AddWay(before, {point});
    return point;
  }
  PointId CallBehind(PointId before, RangeId range) {
    const PointId point = AddBehind(before, PointKind::Call);
    graph.At(point).range = range;
    return point;
  }
  FlowGraph graph;
  NodeId next = 1;
};

TEST(RangeBodies, AReturnLeadsBehindItsOwnCallOnly) {
  HandMade made;
  const PointId first = made.CallBehind(0, 1);
  const PointId second = made.CallBehind(first, 1);
  const PointId leave = made.AddBehind(second, PointKind::Leave);
  const PointId start = made.Add(PointKind::Start);
  const PointId end = made.AddBehind(start, PointKind::End);
  made.graph.AddWay(end, {leave});
  made.graph.AddRange({.entry = start, .exit = end});
  made.graph.Finish();
  const RangeBodies bodies(made.graph);
  EXPECT_THAT(bodies.Of(kProgramRange).points, ElementsAre(0, first, second, leave));
  EXPECT_THAT(bodies.Of(1).points, ElementsAre(start, end));
  EXPECT_EQ(bodies.Of(1).exit, 1U);
  EXPECT_TRUE(bodies.Returns(1));
  EXPECT_THAT(bodies.Of(kProgramRange).calls, ElementsAre(1, 2));
  ASSERT_EQ(bodies.CallsOf(1).size(), 2U);
  EXPECT_EQ(bodies.CallsOf(1)[0].place, 1U);
  EXPECT_EQ(bodies.CallsOf(1)[1].place, 2U);
  EXPECT_THAT(bodies.CallsOf(kProgramRange), IsEmpty());
  EXPECT_THAT(bodies.RangesWith(end), ElementsAre(1));
}

TEST(RangeBodies, NothingRunsBehindACallThatNeverReturns) {
  HandMade made;
  const PointId call = made.CallBehind(0, 1);
  const PointId behind = made.AddBehind(call, PointKind::Statement);
  const PointId start = made.Add(PointKind::Start);
  const PointId stop = made.AddBehind(start, PointKind::Leave);
  made.graph.AddRange({.entry = start, .exit = made.Add(PointKind::End)});
  made.graph.Finish();
  const RangeBodies bodies(made.graph);
  EXPECT_FALSE(bodies.Returns(1));
  EXPECT_THAT(bodies.Of(kProgramRange).points, ElementsAre(0, call));
  EXPECT_THAT(bodies.Of(1).points, ElementsAre(start, stop));
  EXPECT_THAT(bodies.RangesWith(behind), IsEmpty());
}

TEST(RangeBodies, ARangeThatOnlyPerformsItselfNeverReturns) {
  HandMade made;
  const PointId call = made.CallBehind(0, 1);
  made.AddBehind(call, PointKind::Leave);
  const PointId start = made.Add(PointKind::Start);
  const PointId again = made.CallBehind(start, 1);
  const PointId end = made.AddBehind(again, PointKind::End);
  made.graph.AddRange({.entry = start, .exit = end});
  made.graph.Finish();
  const RangeBodies bodies(made.graph);
  EXPECT_FALSE(bodies.Returns(1));
  EXPECT_THAT(bodies.Of(1).points, ElementsAre(start, again));
  EXPECT_EQ(bodies.CallsOf(1).size(), 2U);
}

TEST(RangeBodies, ARangeThatPerformsItselfReturnsWhenAPathDoes) {
  HandMade made;
  const PointId call = made.CallBehind(0, 1);
  const PointId leave = made.AddBehind(call, PointKind::Leave);
  const PointId start = made.Add(PointKind::Start);
  const PointId choice = made.AddBehind(start, PointKind::Chance);
  const PointId again = made.CallBehind(choice, 1);
  const PointId end = made.AddBehind(again, PointKind::End);
  made.graph.AddWay(choice, {end});
  made.graph.AddRange({.entry = start, .exit = end});
  made.graph.Finish();
  const RangeBodies bodies(made.graph);
  EXPECT_TRUE(bodies.Returns(1));
  EXPECT_THAT(bodies.Of(kProgramRange).points, ElementsAre(0, call, leave));
  EXPECT_THAT(bodies.Of(1).points, ElementsAre(start, choice, again, end));
}

TEST(RangeBodies, ARangeThatNothingPerformsHasNoBody) {
  HandMade made;
  made.AddBehind(0, PointKind::Leave);
  const PointId start = made.Add(PointKind::Start);
  made.graph.AddRange({.entry = start, .exit = made.AddBehind(start, PointKind::End)});
  made.graph.Finish();
  const RangeBodies bodies(made.graph);
  EXPECT_FALSE(bodies.Runs(1));
  EXPECT_FALSE(bodies.Returns(1));
}

TEST(RangeBodies, APointBehindAHundredThousandOthersIsReached) {
  HandMade made;
  PointId last = 0;
  for (int count = 0; count < 100'000; ++count) last = made.AddBehind(last, PointKind::Statement);
  made.graph.Finish();
  const RangeBodies bodies(made.graph);
  EXPECT_EQ(bodies.Of(kProgramRange).PlaceOf(last), 100'000U);
}

TEST(RangeBodies, ATowerOfAHundredThousandCallsIsFollowed) {
  HandMade made;
  const PointId call = made.CallBehind(0, 1);
  const PointId leave = made.AddBehind(call, PointKind::Leave);
  constexpr RangeId kRanges = 100'000;
  for (RangeId range = 1; range <= kRanges; ++range) {
    const PointId start = made.Add(PointKind::Start);
    const PointId next = range < kRanges ? made.CallBehind(start, range + 1) : start;
    made.graph.AddRange({.entry = start, .exit = made.AddBehind(next, PointKind::End)});
  }
  made.graph.Finish();
  const RangeBodies bodies(made.graph);
  EXPECT_THAT(bodies.RangesWith(leave), ElementsAre(kProgramRange));
  EXPECT_TRUE(bodies.Returns(kRanges));
}

TEST(RangeBodies, OfRangesThatRunThroughEachOtherTooOftenAreOneInWhichReturnsLeadBehindEachCall) {
  HandMade made;
  const PointId first = made.CallBehind(0, 1);
  const PointId second = made.CallBehind(first, 1);
  const PointId leave = made.AddBehind(second, PointKind::Leave);
  const PointId start = made.Add(PointKind::Start);
  const PointId end = made.AddBehind(start, PointKind::End);
  const PointId next = made.AddBehind(end, PointKind::Start);
  const PointId never = made.Add(PointKind::Start);
  made.graph.AddRange({.entry = start, .exit = end});
  made.graph.Finish();
  constexpr std::size_t kPoints = 6;  // four of the program and two of the range
  EXPECT_TRUE(RangeBodies(made.graph, kPoints).AreReturnsMatched());
  const RangeBodies bodies(made.graph, kPoints - 1);
  EXPECT_FALSE(bodies.AreReturnsMatched());
  EXPECT_FALSE(bodies.Runs(1));
  EXPECT_TRUE(bodies.CallsOf(1).empty());
  const RangeBody& body = bodies.Of(kProgramRange);
  EXPECT_EQ(body.PlaceOf(never), RangeBody::kNoPlace);
  const auto behind = [&body](PointId point) {
    std::vector<PointId> points;
    for (const std::uint32_t out : body.Outs(body.PlaceOf(point))) points.push_back(body.points[out]);
    return points;
  };
  EXPECT_THAT(behind(first), ElementsAre(start));
  EXPECT_THAT(behind(second), ElementsAre(start));
  EXPECT_THAT(behind(end), testing::UnorderedElementsAre(next, second, leave));
}

// All pairs of a point and the range that it runs in, by walks with a stack of ranges: plain, and only for small
// graphs.
class StackWalks {
 public:
  explicit StackWalks(const FlowGraph& flow) : flow_(flow) {
    Reach({kProgramRange}, flow.Ranges()[kProgramRange].entry);
    while (!open_.empty()) {
      const auto [stack, point] = open_.back();
      open_.pop_back();
      pairs.insert({point, stack.back()});
      Step(stack, point);
    }
  }

  std::set<std::pair<PointId, RangeId>> pairs;

 private:
  static constexpr std::size_t kDeepest = 8;

  void Step(const std::vector<RangeId>& stack, PointId point) {
    if (point == flow_.Ranges()[stack.back()].exit) {
      const std::vector<RangeId> outer(stack.begin(), stack.end() - 1);
      for (const PointId call : callsOf_[stack]) Follow(outer, call);
      returned_.insert(stack);
    } else if (flow_.Points()[point].kind == PointKind::Call) {
      if (stack.size() == kDeepest) return;
      std::vector<RangeId> inner = stack;
      inner.push_back(flow_.Points()[point].range);
      callsOf_[inner].insert(point);
      Reach(inner, flow_.Ranges()[inner.back()].entry);
      if (returned_.contains(inner)) Follow(stack, point);
    } else {
      Follow(stack, point);
    }
  }

  void Follow(const std::vector<RangeId>& stack, PointId point) {
    for (const Way& way : flow_.WaysOut(point)) Reach(stack, way.to);
  }

  void Reach(const std::vector<RangeId>& stack, PointId point) {
    if (seen_.insert({stack, point}).second) open_.emplace_back(stack, point);
  }

  const FlowGraph& flow_;
  std::set<std::pair<std::vector<RangeId>, PointId>> seen_;
  std::vector<std::pair<std::vector<RangeId>, PointId>> open_;
  std::map<std::vector<RangeId>, std::set<PointId>> callsOf_;  // by the stack inside
  std::set<std::vector<RangeId>> returned_;
};

std::set<std::pair<PointId, RangeId>> PairsOf(const RangeBodies& bodies) {
  std::set<std::pair<PointId, RangeId>> pairs;
  for (RangeId range = 0; range < bodies.Flow().Ranges().size(); ++range) {
    if (!bodies.Runs(range)) continue;
    for (const PointId point : bodies.Of(range).points) pairs.insert({point, range});
  }
  return pairs;
}

TEST(RangeBodies, AreThePairsThatWalksWithAStackOfRangesReach) {
  std::mt19937 random(4711);
  for (int round = 0; round < 250; ++round) {
    const FlowGraph flow = test::RandomFlow(random, {.ranges = 1 + static_cast<std::uint32_t>(round) % 3});
    const RangeBodies bodies(flow);
    ASSERT_EQ(PairsOf(bodies), StackWalks(flow).pairs) << "round " << round;
    for (const auto& [point, range] : PairsOf(bodies)) {
      const auto with = bodies.RangesWith(point);
      ASSERT_TRUE(std::ranges::binary_search(with, range));
      ASSERT_EQ(bodies.Of(range).points[bodies.Of(range).PlaceOf(point)], point);
    }
  }
}

TEST(RangeBodies, LinkEachPlaceWithThoseBehindItAndBeforeIt) {
  std::mt19937 random(815);
  for (int round = 0; round < 100; ++round) {
    const FlowGraph flow = test::RandomFlow(random, {});
    const RangeBodies bodies(flow);
    for (RangeId range = 0; range < flow.Ranges().size(); ++range) {
      if (!bodies.Runs(range)) continue;
      const RangeBody& body = bodies.Of(range);
      std::multiset<std::pair<std::uint32_t, std::uint32_t>> forward, backward;
      for (std::uint32_t place = 0; place < body.points.size(); ++place) {
        for (const std::uint32_t out : body.Outs(place)) forward.insert({place, out});
        for (const std::uint32_t in : body.Ins(place)) backward.insert({in, place});
        ASSERT_TRUE(std::ranges::is_sorted(body.Ins(place)));
        if (place == 0) continue;
        // In reverse postorder something before it leads to each place.
        ASSERT_LT(body.Ins(place).front(), place);
      }
      ASSERT_EQ(forward, backward);
      ASSERT_EQ(body.points.front(), flow.Ranges()[range].entry);
    }
  }
}

}  // namespace
}  // namespace qmrules::workbench::flow
