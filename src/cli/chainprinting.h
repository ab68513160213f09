#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "cli/chaintree.h"
#include "cli/output.h"
#include "cli/sourcelines.h"

namespace qmrules::cli {

// Shows chains, with the lines of the sources that they lead through.
class ChainPrinter {
 public:
  explicit ChainPrinter(workbench::EmbeddedHost& host) : host_(host) {}

  // "PREMIUM  cobol/rates.cbl:14  ADD FEE TO PREMIUM"
  std::string Occurrence(const workbench::flow::NetworkProgram& program, workbench::flow::NodeId node);
  // The tree as indented lines, its gaps below it. Conditions that all its statements have in common stand above it
  // once.
  void Print(std::ostream& out, const ChainTree& tree);
  Json AsJson(const ChainTree& tree);
  Json PlaceAsJson(const workbench::flow::NetworkProgram& program, workbench::flow::NodeId node);

 private:
  using NodeId = workbench::flow::NodeId;
  using Program = workbench::flow::NetworkProgram;

  void Print(std::ostream& out, const ChainNode& node, const ChainNode* above, std::size_t depth);
  void FindCommon(const std::vector<ChainNode>& nodes);
  void PrintCommon(std::ostream& out) const;
  std::vector<workbench::flow::ControllingCondition> ShownConditions(const ChainNode& node);
  void PrintConditions(std::ostream& out, const ChainNode& node, const ChainNode* above, const std::string& indent);
  Json AsJson(const ChainNode& node);
  Json ConditionsAsJson(const Program& program, const std::vector<workbench::flow::ControllingCondition>& conditions);
  NodeId PlaceOf(const ChainNode& node) const;
  std::string Place(const Program& program, NodeId node) const;
  std::string Line(const Program& program, NodeId node);
  std::string Remarks(const ChainNode& node) const;
  std::string ConditionText(const Program& program, const workbench::flow::ControllingCondition& condition) const;

  // The conditions that all statements of a program in a tree have in common, and how many these are.
  struct Common {
    const Program* program = nullptr;
    std::vector<workbench::flow::ControllingCondition> conditions;
    std::size_t statements = 0;
  };
  Common& CommonOf(const Program& program);

  workbench::EmbeddedHost& host_;
  std::vector<Common> common_;  // of the tree that is being printed, in the order in which its programs come up
  std::string_view arrow_;      // in it
  std::map<const workbench::codemodel::ModelImage*, std::unique_ptr<SourceLines>> lines_;
};

}  // namespace qmrules::cli
