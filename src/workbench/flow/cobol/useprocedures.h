#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <span>
#include <vector>

#include "workbench/flow/cobol/unitlabels.h"

namespace qmrules::workbench::flow::cobol {

// The USE procedures of a division's declaratives, and which statements can make them run.
class UseProcedures {
 public:
  UseProcedures(const codemodel::ModelImage& model, NodeId division, UnitLabels& labels, FlowGraph& graph);

  // The last section of the declaratives; 0 for none.
  NodeId LastSection() const { return lastSection_; }
  // The ranges that the statement can make run, each once: of the files that it names, or those of reports.
  void RangesFor(NodeId statement, std::vector<RangeId>& ranges) const;
  bool Empty() const { return byFile_.empty() && reports_.empty() && !HasModes(); }

 private:
  // More procedures for one file or mode are not told apart from these.
  static constexpr std::size_t kMostForOne = 8;
  enum Mode : std::uint8_t { Input, Output, InputOutput };
  static constexpr std::size_t kModes = 3;
  struct OfFile {
    std::uint32_t file = 0;  // index in FileRecords
    RangeId range = kNoRange;
    bool operator<(const OfFile& other) const { return file != other.file ? file < other.file : range < other.range; }
  };

  void Take(NodeId section, NodeId use, UnitLabels& labels, FlowGraph& graph);
  void TakeName(NodeId name, RangeId range);
  std::vector<PointId> DebuggedPoints(NodeId use, const UnitLabels& labels) const;
  void FindOpenModes(NodeId division);
  bool HasModes() const;
  void AddForFile(NodeId reference, bool opens, std::vector<RangeId>& ranges) const;
  static unsigned ModeBit(codemodel::Role role);
  static void Add(std::span<const RangeId> more, std::vector<RangeId>& ranges);

  const codemodel::ModelImage& model_;
  NodeId lastSection_ = 0;
  std::vector<OfFile> byFile_;  // ascending
  std::array<std::vector<RangeId>, kModes> byMode_;
  std::vector<RangeId> reports_;
  std::vector<std::uint8_t> openModes_;  // by file: a bit for each mode that the unit opens it in
};

}  // namespace qmrules::workbench::flow::cobol
