#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/flow/flowlanguage.h"
#include "workbench/flow/flowprogram.h"

namespace qmrules::test {

// A COBOL program with marks, and what its statements do with storage, as lines:
//
//   use A G 4+3             the operand A reads 3 bytes of the area G from the fifth one on
//   use I I 0+2 aside       and no definition takes its value from it
//   use A G 4+3 #1          the definitions with the same number do
//   define B G 7+2 move     overwrites the bytes; a trailing "copies" for bytes that go through as they are
//   may define T T 0+3 5x3 constant move
//                           one of five places, three bytes from each other
//   may define B G 7+2 move partial
//                           somewhere within these bytes
class EffectsProgram {
 public:
  explicit EffectsProgram(std::string_view annotated, std::uint32_t unit = 0)
      : EffectsProgram(FlowProgram(annotated, unit)) {}
  static EffectsProgram Of(std::string_view workingStorage, std::string_view procedures) {
    return EffectsProgram(FlowProgram::Of(workingStorage, procedures));
  }

  const FlowProgram& Flow() const { return program_; }
  const workbench::flow::UnitEffects& Unit() const { return *effects_; }
  // At the statement or condition that is marked.
  std::vector<std::string> At(std::string_view mark) const { return EffectsOf(program_.PointAt(mark)); }
  // At a point as FlowProgram::PointNamed has it.
  std::vector<std::string> AtPoint(std::string_view name) const { return EffectsOf(program_.PointNamed(name)); }
  // When the program starts, on the area at level 01 of this name.
  std::vector<std::string> AtEntry(std::string_view area) const;
  // "variable subscript T" for each gap at the mark.
  std::vector<std::string> GapsAt(std::string_view mark) const { return GapsOf(program_.PointAt(mark)); }
  // The points that can touch the area, as FlowProgram tells them.
  std::vector<std::string> PointsOn(std::string_view area) const;
  workbench::flow::NodeId ItemNamed(std::string_view name) const;

 private:
  explicit EffectsProgram(FlowProgram program);
  std::vector<std::string> EffectsOf(workbench::flow::PointId point) const;
  std::vector<std::string> GapsOf(workbench::flow::PointId point) const;
  std::vector<std::string> Lines(const workbench::flow::Effects& effects) const;
  std::string NameOf(workbench::flow::NodeId node) const;

  FlowProgram program_;
  std::unique_ptr<workbench::flow::UnitEffects> effects_;
};

}  // namespace qmrules::test
