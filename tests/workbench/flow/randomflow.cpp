#include "workbench/flow/randomflow.h"

namespace qmrules::test {
namespace flow = workbench::flow;

namespace {

constexpr flow::NodeId kFirstStatement = 1001;
constexpr flow::NodeId kFirstLabel = 2001;

class FlowMaker {
 public:
  FlowMaker(std::mt19937& random, const RandomFlowSize& size) : random_(random), size_(size) {}

  flow::FlowGraph Make() {
    for (std::uint32_t range = 0; range < size_.ranges; ++range) {
      const std::uint32_t first = Below(size_.labels);
      ranges_.push_back({first, Below(3) == 0 ? Below(size_.labels) : first});
    }
    const flow::PointId entry = Add(flow::PointKind::Entry, 0);
    for (std::uint32_t label = 0; label < size_.labels; ++label) MakeLabel(label);
    const flow::PointId leave = Add(flow::PointKind::Leave, 0);
    graph_.AddRange({.entry = entry});
    for (const Range& range : ranges_) {
      graph_.AddRange({.first = kFirstLabel + range.first,
                       .last = kFirstLabel + range.last,
                       .entry = labels_[range.first].front(),
                       .exit = labels_[range.last].back()});
    }
    graph_.AddWay(entry, {labels_.front().front()});
    for (std::uint32_t label = 0; label < size_.labels; ++label) {
      LinkLabel(labels_[label]);
      graph_.AddWay(labels_[label].back(), {label + 1 < size_.labels ? labels_[label + 1].front() : leave});
    }
    graph_.Finish();
    return std::move(graph_);
  }

 private:
  struct Range {
    std::uint32_t first, last;  // labels
  };

  std::uint32_t Below(std::uint32_t limit) { return static_cast<std::uint32_t>(random_()) % limit; }

  flow::PointId Add(flow::PointKind kind, flow::NodeId node) {
    return graph_.AddPoint({.node = node, .range = flow::kNoRange, .kind = kind});
  }

  void MakeLabel(std::uint32_t label) {
    std::vector<flow::PointId> points{Add(flow::PointKind::Start, kFirstLabel + label)};
    for (std::uint32_t number = 0; number < size_.pointsOfLabel; ++number) {
      const std::uint32_t choice = Below(8);
      if (choice < 3 && conditions_ < size_.conditions) {
        points.push_back(Add(flow::PointKind::Condition, ++conditions_));
      } else if (choice < 5 && size_.ranges > 0) {
        points.push_back(Add(flow::PointKind::Call, kFirstStatement + statements_++));
        graph_.At(points.back()).range = RangeToCall(label);
      } else {
        points.push_back(Add(flow::PointKind::Statement, kFirstStatement + statements_++));
      }
    }
    points.push_back(Add(flow::PointKind::End, kFirstLabel + label));
    labels_.push_back(std::move(points));
  }

  // Rather one that stands behind, so that not everything goes in circles.
  flow::RangeId RangeToCall(std::uint32_t label) {
    std::uint32_t range = Below(size_.ranges);
    for (int attempt = 0; attempt < 3 && ranges_[range].first <= label; ++attempt) range = Below(size_.ranges);
    return range + 1;
  }

  // Forward in the label as a rule, else to any label's beginning, or back.
  flow::PointId Target(const std::vector<flow::PointId>& points, std::size_t from) {
    const std::uint32_t choice = Below(10);
    if (choice == 0) return labels_[Below(size_.labels)].front();
    if (choice == 1) return points[1 + Below(static_cast<std::uint32_t>(from))];
    return points[from + 1 + Below(static_cast<std::uint32_t>(points.size() - from - 1))];
  }

  void LinkLabel(const std::vector<flow::PointId>& points) {
    graph_.AddWay(points[0], {points[1]});
    for (std::size_t at = 1; at + 1 < points.size(); ++at) {
      const flow::Point point = graph_.At(points[at]);
      if (point.kind != flow::PointKind::Condition) {
        const bool jumps = point.kind == flow::PointKind::Statement && Below(6) == 0;
        graph_.AddWay(points[at], {jumps ? Target(points, at) : points[at + 1]});
        continue;
      }
      for (const bool sense : {true, false}) {
        const flow::PointId holds = Add(flow::PointKind::Holds, point.node);
        graph_.At(holds).sense = sense;
        graph_.AddWay(points[at], {holds, sense ? flow::WayKind::True : flow::WayKind::False});
        graph_.AddWay(holds, {Target(points, at)});
      }
    }
  }

  std::mt19937& random_;
  RandomFlowSize size_;
  flow::FlowGraph graph_;
  std::vector<Range> ranges_;                       // without the program
  std::vector<std::vector<flow::PointId>> labels_;  // the points of each, from its start to its end
  std::uint32_t conditions_ = 0, statements_ = 0;
};

std::vector<flow::NodeId> NodesWith(const flow::FlowGraph& graph, flow::PointKind kind) {
  std::vector<flow::NodeId> nodes;
  for (const flow::Point& point : graph.Points()) {
    if (point.kind == kind) nodes.push_back(point.node);
  }
  return nodes;
}

}  // namespace

flow::FlowGraph RandomFlow(std::mt19937& random, const RandomFlowSize& size) {
  return FlowMaker(random, size).Make();
}

std::vector<flow::NodeId> ConditionsIn(const flow::FlowGraph& graph) {
  return NodesWith(graph, flow::PointKind::Condition);
}

std::vector<flow::NodeId> StatementsIn(const flow::FlowGraph& graph) {
  return NodesWith(graph, flow::PointKind::Statement);
}

}  // namespace qmrules::test
