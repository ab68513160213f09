#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "workbench/flow/cobol/openways.h"
#include "workbench/flow/cobol/unitlabels.h"

namespace qmrules::workbench::flow::cobol {

// Where commands of a transaction monitor lead by HANDLE. All labels of one kind of HANDLE hang on one Chance point, so
// that commands and labels, however many, cost no more than their sum.
class MonitorWays {
 public:
  // Adds these points for the labels of all HANDLEs below the division.
  MonitorWays(const codemodel::ModelImage& model, NodeId division, UnitLabels& labels, OpenWays& ways,
              FlowGraph& graph);

  // Adds the point of a command and what can follow it; leads there what is open.
  void Command(NodeId node);

 private:
  enum Kind : std::uint8_t { Condition, Attention, Abend };
  static constexpr std::size_t kKinds = 3;
  void Handle(NodeId node, Kind kind);
  std::string_view NameOf(NodeId node) const;
  bool AsksForOutcome(NodeId node) const;
  void Raise(PointId chance, std::string_view name);
  bool IsHandled(std::string_view name) const;

  const codemodel::ModelImage& model_;
  OpenWays& ways_;
  FlowGraph& graph_;
  std::array<std::vector<NodeId>, kKinds> labels_;
  std::array<PointId, kKinds> chances_;
  bool ignores_ = false;  // some condition, somewhere
};

}  // namespace qmrules::workbench::flow::cobol
