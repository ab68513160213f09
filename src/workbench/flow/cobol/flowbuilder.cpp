#include "workbench/flow/cobol/flowbuilder.h"

#include "workbench/flow/cobol/unitflow.h"

namespace qmrules::workbench::flow::cobol {

using codemodel::Role;

namespace {

// A nested program, or one that takes something in.
bool IsCertainlyCalled(const codemodel::ModelImage& model, std::uint32_t unit) {
  const codemodel::UnitRecord& record = model.Units()[unit];
  if (record.parent != unit) return true;
  const auto nodes = model.Nodes();
  const NodeId header = record.division + 1;
  if (header > nodes[record.division].last || (nodes[header].flags & codemodel::kPortUsing) == 0) return false;
  for (NodeId child = header + 1; child <= nodes[header].last; child = nodes[child].last + 1) {
    if (nodes[child].role == Role::Argument) return true;
  }
  return false;
}

}  // namespace

FlowGraph BuildFlow(const codemodel::ModelImage& model, std::uint32_t unit) {
  FlowGraph graph;
  const NodeId division = model.Units()[unit].division;
  const PointId entry = graph.AddPoint({division, kNoRange, PointKind::Entry, false});
  graph.AddRange({division, division, entry, kNoPoint});
  if (division != 0) {
    UnitFlow(model, division, graph, entry, IsCertainlyCalled(model, unit)).Build();
  } else {
    graph.AddWay(entry, {graph.AddPoint({0, kNoRange, PointKind::Leave, false}), WayKind::Next});
  }
  graph.Finish();
  return graph;
}

}  // namespace qmrules::workbench::flow::cobol
