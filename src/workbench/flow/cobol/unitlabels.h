#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <unordered_map>
#include <utility>
#include <vector>

#include "workbench/codemodel/modelfile.h"
#include "workbench/flow/flowgraph.h"

namespace qmrules::workbench::flow::cobol {

// The sections and paragraphs of a procedure division, with their points in the graph, and the ranges of them that are
// performed.
class UnitLabels {
 public:
  // Adds the points Start and End of each label to the graph.
  UnitLabels(const codemodel::ModelImage& model, NodeId division, FlowGraph& graph);

  bool IsLabel(NodeId node) const { return IndexOf(node).has_value(); }
  // Of a label of the division.
  PointId StartOf(NodeId label) const { return first_ + 2 * *IndexOf(label); }
  PointId EndOf(NodeId label) const { return StartOf(label) + 1; }
  std::vector<PointId> Starts() const;  // of all labels
  // The range from one label of the division to another.
  RangeId RangeOf(NodeId from, NodeId to);
  // The ranges that a statement names: a label, or two with THRU. What cannot be told becomes a gap.
  struct NamedRange {
    RangeId range = kNoRange;
    codemodel::Role role = codemodel::Role::None;  // of its first name
  };
  void RangesOf(NodeId statement, std::vector<NamedRange>& ranges);
  // The labels that a statement names (GO TO, HANDLE), each once; what is not known becomes a gap.
  void LabelsOf(NodeId statement, std::vector<NodeId>& labels);
  // Where an ALTER makes the paragraph's GO TO lead.
  std::span<const std::pair<NodeId, NodeId>> AlteredTo(NodeId paragraph) const;
  // Adds to labels what they do not hold yet. Starts a new list when `begin`.
  void AddOnce(NodeId label, std::vector<NodeId>& labels, bool begin);

 private:
  std::optional<std::uint32_t> IndexOf(NodeId node) const;
  void FindAlters();

  const codemodel::ModelImage& model_;
  NodeId division_;
  FlowGraph& graph_;
  std::vector<NodeId> labels_;  // ascending
  PointId first_ = kNoPoint;
  std::unordered_map<std::uint64_t, RangeId> ranges_;  // by their two labels
  std::vector<std::pair<NodeId, NodeId>> alters_;      // paragraph, where to; ascending
  std::vector<std::uint32_t> listed_;                  // by label: in which list it was last
  std::uint32_t list_ = 0;
};

}  // namespace qmrules::workbench::flow::cobol
