#include "workbench/flow/callorder.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <vector>

#include "workbench/flow/randomflow.h"

namespace qmrules::workbench::flow {
namespace {

std::set<RangeId> PerformedBy(const RangeBodies& bodies, RangeId range) {
  std::set<RangeId> performed;
  for (const std::uint32_t call : bodies.Of(range).calls) {
    performed.insert(bodies.Flow().Points()[bodies.Of(range).points[call]].range);
  }
  return performed;
}

// At any depth.
std::set<RangeId> AllPerformedBy(const RangeBodies& bodies, RangeId range) {
  std::set<RangeId> all;
  std::vector<RangeId> open{range};
  while (!open.empty()) {
    const RangeId at = open.back();
    open.pop_back();
    for (const RangeId performed : PerformedBy(bodies, at)) {
      if (all.insert(performed).second) open.push_back(performed);
    }
  }
  return all;
}

TEST(CallOrder, PutsEachRangeBehindThoseThatItPerforms) {
  std::mt19937 random(17);
  int circles = 0;
  for (int round = 0; round < 300; ++round) {
    const FlowGraph flow = test::RandomFlow(random, {.labels = 6, .ranges = 6});
    const RangeBodies bodies(flow);
    const CallOrder order(bodies);
    std::set<RangeId> met;
    for (std::size_t group = 0; group < order.Groups(); ++group) {
      for (const RangeId range : order.Group(group)) {
        ASSERT_EQ(order.GroupOf(range), group);
        ASSERT_TRUE(met.insert(range).second);
      }
    }
    for (RangeId range = 0; range < flow.Ranges().size(); ++range) {
      ASSERT_EQ(met.contains(range), bodies.Runs(range));
      if (!bodies.Runs(range)) continue;
      const std::set<RangeId> performed = AllPerformedBy(bodies, range);
      ASSERT_EQ(order.IsRecursive(range), performed.contains(range));
      for (const RangeId other : performed) {
        ASSERT_LE(order.GroupOf(other), order.GroupOf(range));
        const bool isCircle = AllPerformedBy(bodies, other).contains(range);
        ASSERT_EQ(order.GroupOf(other) == order.GroupOf(range), isCircle || other == range);
        if (isCircle && other != range) ++circles;
      }
    }
  }
  EXPECT_GT(circles, 20);
}

}  // namespace
}  // namespace qmrules::workbench::flow
