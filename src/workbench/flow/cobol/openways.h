#pragma once

#include <cstddef>
#include <vector>

#include "workbench/flow/flowgraph.h"

namespace qmrules::workbench::flow::cobol {

// A graph while it is built from the beginning of the text to its end, with the ways whose other end is not there yet:
// they lead to what comes next.
class OpenWays {
 public:
  explicit OpenWays(FlowGraph& graph) : graph_(graph) {}

  PointId Add(NodeId node, PointKind kind, bool sense = false) {
    return graph_.AddPoint({node, kNoRange, kind, sense});
  }
  PointId AddCall(NodeId node, RangeId range) { return graph_.AddPoint({node, range, PointKind::Call, false}); }
  void Lead(PointId from, PointId to, WayKind kind) { graph_.AddWay(from, {to, kind}); }
  // The point goes on at what comes next.
  void Open(PointId from, WayKind kind = WayKind::Next) { open_.push_back({from, kind}); }
  // What is open leads here, and nothing is open any more.
  void Reach(PointId point) {
    for (std::size_t at = base_; at < open_.size(); ++at) Lead(open_[at].from, point, open_[at].kind);
    open_.resize(base_);
  }
  // The same on the way back to the beginning of a loop.
  void ReachAgain(PointId point) {
    for (std::size_t at = base_; at < open_.size(); ++at) Lead(open_[at].from, point, WayKind::Loop);
    open_.resize(base_);
  }
  // What is open leads nowhere.
  void Drop() { open_.resize(base_); }
  // A point that all goes through.
  PointId Pass(PointId point) {
    Reach(point);
    Open(point);
    return point;
  }
  PointId Pass(NodeId node, PointKind kind) { return Pass(Add(node, kind)); }
  // Puts aside what is open, until Join with what this gives opens it again, beside what is open then.
  std::size_t PutAside() {
    const std::size_t base = base_;
    base_ = open_.size();
    return base;
  }
  void Join(std::size_t base) { base_ = base; }
  // What to Join with for all that is put aside from now on.
  std::size_t Base() const { return base_; }

 private:
  struct OpenWay {
    PointId from;
    WayKind kind;
  };
  FlowGraph& graph_;
  std::vector<OpenWay> open_;
  std::size_t base_ = 0;  // those before it are put aside
};

}  // namespace qmrules::workbench::flow::cobol
