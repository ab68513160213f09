#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/flow/flowprogram.h"
#include "workbench/flow/programflow.h"

namespace qmrules::test {

// A COBOL program with marks, and questions about its chains. In texts a definition is "7 A move", with the row of its
// statement (of its declaration where the program starts with it), the operand and the kind; behind it "perhaps" where
// it does not overwrite for sure and "overlap" where it is another name for the bytes. A use is "9 A".
class ChainProgram {
 public:
  // As FlowProgram::Of: the first row of the procedures is 6 + the rows of working storage.
  ChainProgram(std::string_view workingStorage, std::string_view procedures);
  // A whole program.
  explicit ChainProgram(std::string_view annotated);

  // What reaches the occurrence at the mark.
  std::vector<std::string> Reaching(std::string_view mark);
  // Where the definition at the mark is used.
  std::vector<std::string> Uses(std::string_view mark);
  // The same with the bytes of the area: "7 A move 0-2".
  std::vector<std::string> ReachingBytes(std::string_view mark);
  // What the area of the declaration with this name holds in the end, with the bytes.
  std::vector<std::string> AtEnd(std::string_view name);
  // "9 The statement is not understood; …" of what reaches the mark.
  std::vector<std::string> Gaps(std::string_view mark);
  // Names of the operands that the definition takes its value from, and of the other way round.
  std::vector<std::string> Feeds(std::string_view mark);
  std::vector<std::string> Fed(std::string_view mark);

  workbench::flow::ProgramFlow& Flow() { return *flow_; }
  const FlowProgram& Program() const { return program_; }

 private:
  explicit ChainProgram(FlowProgram program);
  std::string Definition(const workbench::flow::ChainLink& link) const;
  std::string Row(workbench::flow::NodeId statement, workbench::flow::NodeId operand) const;
  std::string Name(workbench::flow::NodeId node) const;
  static std::string Bytes(const workbench::flow::ByteSet& bytes);

  FlowProgram program_;
  std::unique_ptr<workbench::flow::ProgramFlow> flow_;
};

}  // namespace qmrules::test
