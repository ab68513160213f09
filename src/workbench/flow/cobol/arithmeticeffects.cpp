#include <cstddef>

#include "workbench/flow/cobol/statementeffects.h"

// ADD, SUBTRACT, MULTIPLY, DIVIDE, COMPUTE.
namespace qmrules::workbench::flow::cobol {

using codemodel::Entity;
using codemodel::NodeRecord;
using codemodel::Role;

namespace {

// Above that many, the results of a statement share what they are computed from.
constexpr std::size_t kMostUses = 256;

struct Operands {
  std::vector<NodeId> sources, changed, results;
};

// What does not fit into its item is cut off without a phrase for it, but what has no value is not stored. With the
// phrase, an item whose result does not fit keeps its value, and the others get theirs.
Definition ResultOf(const Statement& statement, std::size_t results) {
  const bool divides = statement.Has(codemodel::kDivides);
  return {.kind = DefinitionKind::Computation,
          .certainty = divides ? Certainty::IfGood : Certainty::OnSuccess,
          .spoils = results > 1};
}

void Corresponding(const Statement& statement, EffectList& list) {
  std::uint16_t feed = 0;
  for (const NodeId operand : statement.operands) {
    const NodeRecord& node = statement.Record(operand);
    if ((node.flags & codemodel::kImplicit) == 0) continue;
    list.Use(operand, feed);
    if (node.role == Role::Source) continue;
    Definition result = ResultOf(statement, 2);
    result.feed = feed;
    list.Define(operand, result);
    if (feed < kNoFeed - 1) ++feed;
  }
}

}  // namespace

void ArithmeticEffects(const Statement& statement, EffectList& list) {
  Operands operands;
  for (const NodeId operand : statement.operands) {
    const NodeRecord& node = statement.Record(operand);
    if ((node.flags & codemodel::kCorresponding) != 0) {
      Corresponding(statement, list);
      return;
    }
    if (node.entity != Entity::Var || !Defines(node.usage)) {
      operands.sources.push_back(operand);
    } else {
      (Reads(node.usage) ? operands.changed : operands.results).push_back(operand);
    }
  }
  Definition result = ResultOf(statement, operands.changed.size() + operands.results.size());
  if (statement.verb == Verb::Compute && operands.sources.size() == 1) {
    result.kind = KindOfMove(statement.Model(), operands.sources);
  }
  const bool apart = operands.changed.size() > 1 && operands.sources.size() * operands.changed.size() <= kMostUses;
  const std::size_t feeds = apart ? operands.changed.size() : 1;
  for (std::size_t feed = 0; feed < feeds; ++feed) {
    for (const NodeId source : operands.sources) list.Use(source, static_cast<std::uint16_t>(feed));
  }
  for (const NodeId changed : operands.changed) {
    list.Use(changed, result.feed);
    list.Define(changed, result);
    if (apart) ++result.feed;
  }
  result.feed = 0;
  for (const NodeId target : operands.results) list.Define(target, result);
}

}  // namespace qmrules::workbench::flow::cobol
