#pragma once

#include <string_view>
#include <utility>
#include <vector>

#include "workbench/codemodel/modelfile.h"
#include "workbench/flow/cobol/operandplace.h"
#include "workbench/flow/cobol/storagelayout.h"

namespace qmrules::workbench::flow::cobol {

// What statements of a unit touch without naming it, looked up once. The model has to outlive it.
class UnitFacts {
 public:
  UnitFacts(const codemodel::ModelImage& model, std::uint32_t unit);
  UnitFacts(const UnitFacts&) = delete;
  UnitFacts& operator=(const UnitFacts&) = delete;

  const codemodel::ModelImage& Model() const { return model_; }
  const codemodel::UnitRecord& Unit() const { return model_.Units()[unit_]; }
  const StorageLayout& Layout() const { return layout_; }
  const OperandPlaces& Places() const { return places_; }

  // A register that the program uses, by its name in upper case, or one of the communication area of SQL, which a
  // program can also declare itself; 0 for none.
  NodeId Register(std::string_view name) const;
  // Areas that called programs can change without being handed them: EXTERNAL ones, and GLOBAL ones for a program that
  // calls one of its nested programs.
  const std::vector<NodeId>& SharedAreas() const { return sharedAreas_; }
  // VARs of the report section that its lines are made from.
  const std::vector<NodeId>& ReportSources() const { return reportSources_; }
  // The VARs of PROCEDURE DIVISION USING, and of every ENTRY.
  const std::vector<NodeId>& Parameters() const { return parameters_; }
  const std::vector<NodeId>& EntryParameters() const { return entryParameters_; }
  // DFHCOMMAREA, where it is what the unit takes in; 0 otherwise.
  NodeId CommunicationArea() const { return communicationArea_; }
  // The node lies in the unit and in none of its nested units.
  bool IsOwn(NodeId node) const;

 private:
  void FindRegisters();
  void FindSharedAreas();
  void FindReportSources();
  void FindParameters();

  const codemodel::ModelImage& model_;
  std::uint32_t unit_;
  StorageLayout layout_;
  OperandPlaces places_;
  std::vector<std::pair<NodeId, NodeId>> nested_;  // first and last nodes of nested units
  std::vector<std::pair<std::string_view, NodeId>> registers_;
  std::vector<NodeId> sharedAreas_, reportSources_, parameters_, entryParameters_;
  NodeId communicationArea_ = 0;
};

}  // namespace qmrules::workbench::flow::cobol
