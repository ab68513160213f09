#include "desktop/source/segmentlanes.h"

#include <gtest/gtest.h>

#include <limits>

namespace qmrules::desktop {
namespace {

SegmentLanes LanesOf(const std::vector<std::pair<int, int>>& segments) {
  std::vector<platform::SegmentMark> marks;
  for (const auto& [fromRow, toRow] : segments) marks.push_back({"COBOL#1", fromRow, toRow});
  return SegmentLanes(marks);
}

using Bars = std::vector<SegmentBar>;
constexpr int kLastRow = std::numeric_limits<int>::max();

TEST(SegmentLanes, SegmentsThatDoNotMeetShareALane) {
  EXPECT_EQ(LanesOf({{20, 30}, {1, 10}, {11, 19}}).Within(1, kLastRow), (Bars{{1, 10, 0}, {11, 19, 0}, {20, 30, 0}}));
}

TEST(SegmentLanes, OverlappingSegmentsStandSideBySideTheLongerFirst) {
  const SegmentLanes lanes = LanesOf({{5, 6}, {5, 9}, {6, 6}});
  EXPECT_EQ(lanes.Within(1, kLastRow), (Bars{{5, 9, 0}, {5, 6, 1}, {6, 6, 2}}));
  EXPECT_EQ(lanes.Lanes(), 3);
}

TEST(SegmentLanes, EqualSegmentsBothHaveTheirBar) {
  EXPECT_EQ(LanesOf({{5, 6}, {5, 6}}).Within(5, 5), (Bars{{5, 6, 0}, {5, 6, 1}}));
}

TEST(SegmentLanes, WhatFindsNoLaneGoesIntoTheLast) {
  const SegmentLanes lanes = LanesOf({{1, 9}, {1, 9}, {1, 9}, {1, 9}, {1, 9}, {1, 9}});
  EXPECT_EQ(lanes.Lanes(), SegmentLanes::kMostLanes);
  EXPECT_EQ(lanes.Within(1, 1).back(), (SegmentBar{1, 9, SegmentLanes::kMostLanes - 1}));
}

TEST(SegmentLanes, MarksWithoutARowHaveNoBar) {
  EXPECT_TRUE(LanesOf({{0, 0}, {9, 8}, {-5, -1}}).Within(1, kLastRow).empty());
  EXPECT_EQ(LanesOf({{0, 2}}).Within(1, kLastRow), (Bars{{1, 2, 0}}));
}

TEST(SegmentLanes, GivesTheSegmentsOfARow) {
  const SegmentLanes lanes = LanesOf({{1, 100}, {10, 12}, {14, 15}});
  EXPECT_EQ(lanes.Within(12, 13), (Bars{{1, 100, 0}, {10, 12, 1}}));
  EXPECT_TRUE(lanes.Within(101, 200).empty());
}

TEST(SegmentLanes, LeadsToTheNextSegmentBelowAndAbove) {
  const SegmentLanes lanes = LanesOf({{10, 12}, {20, 22}});
  EXPECT_EQ(lanes.NextBelow(1), 10);
  EXPECT_EQ(lanes.NextBelow(10), 20);
  EXPECT_EQ(lanes.NextBelow(20), std::nullopt);
  EXPECT_EQ(lanes.NextAbove(22), 20);
  EXPECT_EQ(lanes.NextAbove(20), 10);
  EXPECT_EQ(lanes.NextAbove(10), std::nullopt);
}

}  // namespace
}  // namespace qmrules::desktop
