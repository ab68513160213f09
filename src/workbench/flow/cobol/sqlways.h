#pragma once

#include <array>
#include <string_view>

#include "workbench/flow/cobol/openways.h"
#include "workbench/flow/cobol/unitlabels.h"

namespace qmrules::workbench::flow::cobol {

// Where SQL statements lead by WHENEVER, which holds for what stands behind it in the text.
class SqlWays {
 public:
  SqlWays(const codemodel::ModelImage& model, UnitLabels& labels, OpenWays& ways)
      : model_(model), labels_(labels), ways_(ways) {}

  // Adds the point of a statement and what can follow it; leads there what is open. To be called in the order of the
  // text.
  void Statement(NodeId node);

 private:
  static constexpr std::size_t kConditions = 3;
  struct Target {
    NodeId label = 0;  // 0 for CONTINUE
    bool performed = false;
    bool operator==(const Target&) const = default;
  };
  void Whenever(NodeId node, std::string_view condition);

  const codemodel::ModelImage& model_;
  UnitLabels& labels_;
  OpenWays& ways_;
  std::array<Target, kConditions> targets_;  // for NOT FOUND, SQLERROR, SQLWARNING
  std::vector<NodeId> found_;
};

}  // namespace qmrules::workbench::flow::cobol
