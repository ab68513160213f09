#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "support/cobolmodel.h"
#include "workbench/codemodel/modelfile.h"
#include "workbench/flow/flowgraph.h"

namespace qmrules::test {

// A COBOL program whose text has marks (support/annotatedsource.h), its model and the flow of one of its units.
//
//   const auto program = FlowProgram::Of("01 A PIC 9.\n", R"(MAIN-PARA.
//       $test^IF A = 1
//           MOVE 2 TO A.
//       GOBACK.
//   )");
//   EXPECT_THAT(program.After("test"), ElementsAre("8 A = 1"));
//
// In texts, points are called "entry", "start A", "end A", "8 MOVE" (a statement), "8 A = 1" (a condition), "8 yes",
// "8 no" (where it holds or does not), "8 chance", "8 completed", "8 begin I", "8 step I", "8 call A", "8 call A THRU
// B", "8 leave", "leave". A way that is a jump, an exception or a loop is told before the point it leads to:
// "jump start A".
class FlowProgram {
 public:
  // A whole program, which begins with a line end that is passed over, in fixed form.
  explicit FlowProgram(std::string_view annotated, std::uint32_t unit = 0);
  // As CobolModel::Of: rows of the procedures begin behind 4 + the rows of working storage + 1.
  static FlowProgram Of(std::string_view workingStorage, std::string_view procedures);

  const CobolModel& Cobol() const { return cobol_; }
  const workbench::codemodel::ModelImage& Model() const { return *image_; }
  std::shared_ptr<const workbench::codemodel::ModelImage> Image() const { return image_; }
  std::uint32_t Unit() const { return unit_; }
  const workbench::flow::FlowGraph& Flow() const { return *flow_; }

  // The object with just this place or, for a mark without a range, the outermost one that begins there; of a branch,
  // its first statement. Throws
  // std::invalid_argument when there is none.
  workbench::flow::NodeId NodeAt(std::string_view mark) const;
  // Where its data is handled. Throws the same for an object without such a point.
  workbench::flow::PointId PointAt(std::string_view mark) const;
  // The first point that is called so; throws the same when there is none.
  workbench::flow::PointId PointNamed(std::string_view name) const;

  std::string Describe(workbench::flow::PointId point) const;
  std::string Describe(const workbench::flow::Way& way) const;
  std::vector<std::string> After(workbench::flow::PointId point) const;
  std::vector<std::string> After(std::string_view mark) const { return After(PointAt(mark)); }
  // The same of the point that is called so.
  std::vector<std::string> AfterNamed(std::string_view name) const { return After(PointNamed(name)); }
  // All points of the procedures with their ways: "8 A = 1 > 8 yes, 8 no" and a line end, in the order of the text.
  std::string Listing() const;
  // "unknown label 9 X" for each.
  std::vector<std::string> Gaps() const;

 private:
  FlowProgram(CobolModel cobol, std::uint32_t unit);
  // Throws std::logic_error for a graph that is not of the form that flowgraph.h tells.
  void RequireForm(workbench::flow::PointId point) const;

  CobolModel cobol_;
  std::shared_ptr<const workbench::codemodel::ModelImage> image_;
  std::uint32_t unit_;
  std::shared_ptr<const workbench::flow::FlowGraph> flow_;
};

}  // namespace qmrules::test
