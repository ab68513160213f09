#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "workbench/flow/chainarea.h"
#include "workbench/flow/programflow.h"

// How the answer to a question reads.
namespace qmrules::workbench::flow {

LinkReason ReasonOf(const codemodel::ModelImage& model, NodeId definition, NodeId use);

// Gathers the links and gaps of one answer. Each of them is in it once.
class ChainGatherer {
 public:
  ChainGatherer(const codemodel::ModelImage& model, const FlowGraph& flow) : model_(model), flow_(flow) {}

  // `bytes` are those that both are about. With use 0 the link leads to the end of the program.
  void Add(const AreaEffect& definition, const AreaEffect* use, const ByteSet& bytes);
  // Of one effect in the answer, or of the one asked about.
  void AddGapsOf(const ChainArea& area, const AreaEffect& effect);
  void AddGap(const FlowGap& gap, NodeId operand);
  void AddGap(NodeId node, const std::string& text);
  // In the order of the definitions' places, or of the uses'.
  Chain ByDefinition() &&;
  Chain ByUse() &&;

 private:
  Chain Sorted(NodeId ChainLink::*first, NodeId ChainLink::*second);
  NodeId StatementOf(const AreaEffect& effect) const;

  const codemodel::ModelImage& model_;
  const FlowGraph& flow_;
  std::map<std::vector<NodeId>, ChainLink> links_;  // by definition, definedAt, use, usedAt, kind
  std::map<std::pair<NodeId, std::string>, AnswerGap> gaps_;
};

}  // namespace qmrules::workbench::flow
