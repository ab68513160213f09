#include "workbench/flow/flowgraph.h"

#include <algorithm>
#include <array>

#include "workbench/codemodel/records.h"
#include "workbench/flow/equalrun.h"

namespace qmrules::workbench::flow {

std::string_view NameOf(PointKind kind) {
  static constexpr std::array<std::string_view, kPointKinds> kNames = {"entry",     "start",  "end",   "statement",
                                                                       "condition", "chance", "holds", "completed",
                                                                       "begin",     "step",   "call",  "leave"};
  return kNames[static_cast<std::size_t>(kind)];
}

std::string_view NameOf(WayKind kind) {
  static constexpr std::array<std::string_view, kWayKinds> kNames = {"next", "true",      "false",
                                                                     "jump", "exception", "loop"};
  return kNames[static_cast<std::size_t>(kind)];
}

std::string_view NameOf(FlowGapKind kind) {
  static constexpr std::array<std::string_view, kFlowGapKinds> kNames = {
      "unknown statement", "unknown label", "no alter",   "handled elsewhere",
      "any statement",     "debugging",     "open return"};
  return kNames[static_cast<std::size_t>(kind)];
}

void FlowGraph::Finish() {
  starts_.assign(points_.size() + 1, 0);
  for (const Draft& draft : drafts_) ++starts_[draft.from + 1];
  for (std::size_t point = 0; point < points_.size(); ++point) starts_[point + 1] += starts_[point];
  ways_.resize(drafts_.size());
  std::vector<std::uint32_t> next(starts_.begin(), starts_.end() - 1);
  for (const Draft& draft : drafts_) ways_[next[draft.from]++] = draft.way;
  drafts_ = {};
  byNode_.resize(points_.size());
  for (PointId point = 0; point < byNode_.size(); ++point) byNode_[point] = point;
  std::ranges::stable_sort(byNode_, {}, [this](PointId point) { return points_[point].node; });
}

std::span<const PointId> FlowGraph::PointsOf(NodeId node) const {
  return EqualRun(byNode_, node, [this](PointId point) { return points_[point].node; });
}

PointId FlowGraph::PointOf(NodeId node) const {
  for (const PointId point : PointsOf(node)) {
    const PointKind kind = points_[point].kind;
    if (kind == PointKind::Statement || kind == PointKind::Condition || kind == PointKind::Leave) return point;
  }
  return kNoPoint;
}

std::size_t FlowGraph::Bytes() const {
  return points_.capacity() * sizeof(Point) + ways_.capacity() * sizeof(Way) + starts_.capacity() * sizeof(starts_[0]) +
         byNode_.capacity() * sizeof(PointId) + ranges_.capacity() * sizeof(PerformRange) +
         gaps_.capacity() * sizeof(FlowGap);
}

}  // namespace qmrules::workbench::flow
