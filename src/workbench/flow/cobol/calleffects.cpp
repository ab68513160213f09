#include "workbench/flow/cobol/statementeffects.h"

// What leads to other programs and back: CALL, INVOKE, ENTRY, GOBACK.
namespace qmrules::workbench::flow::cobol {

using codemodel::Entity;
using codemodel::NodeRecord;
using codemodel::Role;

namespace {

constexpr Definition kByCall{.kind = DefinitionKind::Call, .certainty = Certainty::Perhaps};

// What a called program can reach without being handed it.
void SharedEffects(const Statement& statement, EffectList& list) {
  for (const NodeId area : statement.facts.SharedAreas()) {
    OperandPlace place;
    place.place.area = area;
    place.place.first = statement.facts.Layout().ExtentOf(area);
    list.UsePlace(place, statement.node);
    Definition definition = kByCall;
    definition.feed = kNoFeed;
    list.DefinePlace(place, statement.node, definition);
  }
}

}  // namespace

void CallEffects(const Statement& statement, EffectList& list) {
  bool returns = false;
  for (const NodeId operand : statement.operands) {
    const NodeRecord& node = statement.Record(operand);
    if (node.role == Role::Returning && node.entity == Entity::Var) {
      returns = true;
      list.Define(operand, {.kind = DefinitionKind::Call, .certainty = Certainty::OnSuccess});
    } else if (node.role == Role::AddressOf) {
      // The called program can keep the address, and change the item whenever it runs.
      list.Gap(EffectGapKind::AddressTaken, operand);
      list.UsePlace(list.Places().Of(operand), operand, 0);
      list.Define(operand, kByCall);
    } else if (node.role == Role::Argument) {
      list.Use(operand, 0);
      if (node.entity == Entity::Var && Defines(node.usage)) list.Define(operand, kByCall);
    } else {
      list.Use(operand, kNoFeed);
    }
  }
  SharedEffects(statement, list);
  if (returns) return;
  list.DefineItem(statement.facts.Register("RETURN-CODE"), statement.node,
                  {.kind = DefinitionKind::Call, .certainty = Certainty::Perhaps, .feed = kNoFeed});
}

void EntryStatementEffects(const Statement& statement, EffectList& list) {
  for (const NodeId operand : statement.operands) {
    const NodeRecord& node = statement.Record(operand);
    if (node.entity != Entity::Var || (node.role != Role::Argument && node.role != Role::Returning)) continue;
    // Control that falls through from above brings nothing in.
    list.Define(operand, {.kind = DefinitionKind::Parameter, .certainty = Certainty::Perhaps, .feed = kNoFeed});
  }
}

void LeaveEffects(const Statement& statement, EffectList& list) {
  for (const NodeId operand : statement.operands) {
    const NodeRecord& node = statement.Record(operand);
    // What the caller finds in its arguments is what they hold in the end; nothing is read here.
    const bool isArgument = (node.flags & codemodel::kImplicit) != 0 && node.role == Role::Argument;
    if (!isArgument) list.Use(operand, kNoFeed);
  }
}

}  // namespace qmrules::workbench::flow::cobol
