#include "workbench/flow/flowgraph.h"

#include <gtest/gtest.h>

namespace qmrules::workbench::flow {
namespace {

TEST(FlowGraph, KeepsTheOrderOfTheWaysOfAPoint) {
  FlowGraph graph;
  const PointId test = graph.AddPoint({7, kNoRange, PointKind::Condition});
  const PointId isFalse = graph.AddPoint({7, kNoRange, PointKind::Holds, false});
  const PointId isTrue = graph.AddPoint({7, kNoRange, PointKind::Holds, true});
  graph.AddWay(test, {isTrue, WayKind::True});
  graph.AddWay(isTrue, {isFalse, WayKind::Next});
  graph.AddWay(test, {isFalse, WayKind::False});
  graph.Finish();
  ASSERT_EQ(graph.WaysOut(test).size(), 2U);
  EXPECT_EQ(graph.WaysOut(test)[0], (Way{isTrue, WayKind::True}));
  EXPECT_EQ(graph.WaysOut(test)[1], (Way{isFalse, WayKind::False}));
  EXPECT_TRUE(graph.WaysOut(isFalse).empty());
}

TEST(FlowGraph, FindsThePointsOfANode) {
  FlowGraph graph;
  graph.AddPoint({9, kNoRange, PointKind::Statement});
  const PointId test = graph.AddPoint({7, kNoRange, PointKind::Condition});
  const PointId holds = graph.AddPoint({7, kNoRange, PointKind::Holds});
  graph.Finish();
  EXPECT_EQ(std::vector<PointId>(graph.PointsOf(7).begin(), graph.PointsOf(7).end()), (std::vector{test, holds}));
  EXPECT_EQ(graph.PointOf(7), test);
  EXPECT_TRUE(graph.PointsOf(8).empty());
  EXPECT_EQ(graph.PointOf(8), kNoPoint);
}

}  // namespace
}  // namespace qmrules::workbench::flow
