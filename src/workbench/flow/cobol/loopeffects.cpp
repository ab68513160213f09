#include "workbench/flow/cobol/statementeffects.h"

// The counters of PERFORM VARYING and SEARCH.
namespace qmrules::workbench::flow::cobol {

using codemodel::Entity;
using codemodel::ModelImage;
using codemodel::NodeRecord;
using codemodel::Role;

namespace {

// The operands with the role that stand behind the counter, before the next one and its conditions.
std::vector<NodeId> ClauseOf(const ModelImage& model, NodeId counter, Role role) {
  std::vector<NodeId> operands;
  const NodeId last = model.Nodes()[model.Nodes()[counter].parent].last;
  for (NodeId node = model.Nodes()[counter].last + 1; node <= last; node = model.Nodes()[node].last + 1) {
    const NodeRecord& record = model.Nodes()[node];
    if (record.entity == Entity::Cond || record.entity == Entity::Block || record.role == Role::Varying) break;
    if (record.role == role) operands.push_back(node);
  }
  return operands;
}

// The first index of the table, which a search counts up even if it varies something else.
NodeId FirstIndex(const ModelImage& model, NodeId table) {
  for (NodeId child = table + 1; child <= model.Nodes()[table].last; child = model.Nodes()[child].last + 1) {
    const bool isItem = model.Nodes()[child].entity == Entity::Decl;
    if (isItem && (model.Decl(child).flags & codemodel::kIndexName) != 0) return child;
  }
  return 0;
}

}  // namespace

void BeginEffects(const UnitFacts& facts, NodeId counter, EffectList& list) {
  const std::vector<NodeId> from = ClauseOf(facts.Model(), counter, Role::From);
  for (const NodeId operand : from) {
    list.Use(operand, 0);
    list.Subscripts(operand);
  }
  list.Subscripts(counter);
  list.Define(counter, {.kind = KindOfMove(facts.Model(), from), .feed = from.empty() ? kNoFeed : std::uint16_t{0}});
}

void StepEffects(const UnitFacts& facts, NodeId counter, EffectList& list) {
  for (const NodeId operand : ClauseOf(facts.Model(), counter, Role::By)) {
    list.Use(operand, 0);
    list.Subscripts(operand);
  }
  list.Use(counter, 0);
  list.Subscripts(counter);
  list.Define(counter, {.kind = DefinitionKind::Computation});
}

void SearchEffects(const Statement& statement, bool hasStep, EffectList& list) {
  const ModelImage& model = statement.Model();
  const auto isItem = [&](NodeId node) { return node != 0 && model.Nodes()[node].entity == Entity::Decl; };
  NodeId table = 0, varied = 0;
  for (const NodeId operand : statement.operands) {
    const NodeRecord& node = statement.Record(operand);
    // The table is read by the conditions.
    if (node.role == Role::Search) table = node.declaration;
    if (node.role != Role::Varying) continue;
    varied = node.declaration;
    if (hasStep) continue;
    list.Use(operand, 0);
    list.Define(operand, {.kind = DefinitionKind::Computation, .certainty = Certainty::Perhaps});
  }
  const NodeId index = isItem(table) ? FirstIndex(model, table) : 0;
  const bool ofTable = index != 0 && isItem(varied) && model.Nodes()[varied].parent == table &&
                       (model.Decl(varied).flags & codemodel::kIndexName) != 0;
  if (index == 0 || ofTable) return;
  const OperandPlace place = list.Places().OfItem(index);
  list.UsePlace(place, statement.node, 1);
  list.DefinePlace(place, statement.node,
                   {.kind = DefinitionKind::Computation, .certainty = Certainty::Perhaps, .feed = 1});
}

}  // namespace qmrules::workbench::flow::cobol
