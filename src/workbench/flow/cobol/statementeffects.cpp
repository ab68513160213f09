#include "workbench/flow/cobol/statementeffects.h"

#include <algorithm>

namespace qmrules::workbench::flow::cobol {

using codemodel::Entity;
using codemodel::ModelImage;
using codemodel::NodeRecord;
using codemodel::Role;
using codemodel::VarUsage;

namespace {

bool IsOperand(Entity entity) {
  return entity == Entity::Var || entity == Entity::Const || entity == Entity::Func || entity == Entity::Ref;
}

constexpr Definition kUnknownDefinition{
    .kind = DefinitionKind::Unknown, .certainty = Certainty::Perhaps, .feed = 0, .copies = false, .spoils = false};

// Everything that is named may be read and written.
void UnknownEffects(const Statement& statement, EffectList& list) {
  list.Gap(EffectGapKind::UnknownStatement, statement.node);
  for (const NodeId operand : statement.operands) {
    list.Use(operand, 0);
    list.Define(operand, kUnknownDefinition);
  }
}

// A part of the statement could not be read.
void MissingText(const Statement& statement, EffectList& list) {
  // A name that is not declared is told with its operand.
  for (NodeId node = statement.node + 1; node <= statement.Record(statement.node).last; ++node) {
    const NodeRecord& record = statement.Record(node);
    if (!IsOperand(record.entity)) break;
    if (record.entity == Entity::Var && record.declaration == 0) return;
  }
  const bool holdsOthers = statement.verb == Verb::If || statement.verb == Verb::Evaluate ||
                           statement.verb == Verb::Search || statement.verb == Verb::Perform;
  if (holdsOthers) {
    list.Gap(EffectGapKind::UnknownStatement, statement.node);
  } else {
    UnknownEffects(statement, list);
  }
}

void Allocate(const Statement& statement, EffectList& list) {
  for (const NodeId operand : statement.operands) {
    const NodeRecord& node = statement.Record(operand);
    if (node.role == Role::Target) {
      list.Gap(EffectGapKind::AddressTaken, operand);
      list.Define(operand, kUnknownDefinition);
    } else if (node.role == Role::Returning) {
      list.Define(operand, {.kind = DefinitionKind::Computation, .feed = kNoFeed});
    } else {
      list.Use(operand, kNoFeed);
    }
  }
}

bool DataFamily(const Statement& statement, EffectList& list) {
  switch (statement.verb) {
    case Verb::Move:
      MoveEffects(statement, list);
      return true;
    case Verb::Set:
      SetEffects(statement, list);
      return true;
    case Verb::Initialize:
      InitializeEffects(statement, list);
      return true;
    case Verb::Add:
    case Verb::Subtract:
    case Verb::Multiply:
    case Verb::Divide:
    case Verb::Compute:
      ArithmeticEffects(statement, list);
      return true;
    case Verb::String:
      StringEffects(statement, list);
      return true;
    case Verb::Unstring:
      UnstringEffects(statement, list);
      return true;
    case Verb::Inspect:
    case Verb::Examine:
    case Verb::Transform:
      InspectEffects(statement, list);
      return true;
    case Verb::Allocate:
      Allocate(statement, list);
      return true;
    case Verb::Free:
      PlainEffects(statement, {.kind = DefinitionKind::Computation}, list);
      return true;
    default:
      return false;
  }
}

bool FileFamily(const Statement& statement, EffectList& list) {
  switch (statement.verb) {
    case Verb::Read:
    case Verb::Return:
      ReadEffects(statement, list);
      return true;
    case Verb::Write:
    case Verb::Rewrite:
    case Verb::Release:
      WriteEffects(statement, list);
      return true;
    case Verb::Sort:
    case Verb::Merge:
      SortEffects(statement, list);
      return true;
    case Verb::Open:
    case Verb::Close:
    case Verb::Start:
    case Verb::Delete:
    case Verb::Unlock:
      FileEffects(statement, list);
      return true;
    case Verb::Accept:
      AcceptEffects(statement, list);
      return true;
    case Verb::Display:
    case Verb::Exhibit:
      DisplayEffects(statement, list);
      return true;
    case Verb::Initiate:
    case Verb::Generate:
    case Verb::Terminate:
      ReportEffects(statement, list);
      return true;
    case Verb::Receive:
      PlainEffects(statement,
                   {.kind = DefinitionKind::Input, .certainty = Certainty::IfGood, .feed = kNoFeed, .spoils = true},
                   list);
      return true;
    default:
      return false;
  }
}

bool ProgramFamily(const Statement& statement, EffectList& list) {
  switch (statement.verb) {
    case Verb::Call:
    case Verb::Invoke:
      CallEffects(statement, list);
      return true;
    case Verb::Entry:
      EntryStatementEffects(statement, list);
      return true;
    case Verb::Goback:
    case Verb::ExitProgram:
    case Verb::StopRun:
      LeaveEffects(statement, list);
      return true;
    case Verb::ExecSql:
      SqlEffects(statement, list);
      return true;
    case Verb::ExecCics:
      CicsEffects(statement, list);
      return true;
    case Verb::ExecDli:
      PlainEffects(statement, {.kind = DefinitionKind::Input, .certainty = Certainty::Perhaps, .feed = kNoFeed}, list);
      return true;
    case Verb::XmlGenerate:
    case Verb::XmlParse:
    case Verb::JsonGenerate:
    case Verb::JsonParse:
      MarkupEffects(statement, list);
      return true;
    default:
      return false;
  }
}

void OwnEffects(const Statement& statement, EffectList& list) {
  if (DataFamily(statement, list) || FileFamily(statement, list) || ProgramFamily(statement, list)) return;
  switch (statement.verb) {
    case Verb::Perform:
      // The counters have points of their own.
      for (const NodeId operand : statement.operands) {
        if (statement.Record(operand).role == Role::Times) list.Use(operand, kNoFeed);
      }
      break;
    case Verb::None:
      // The end of the text; the beginning has the effects of the entry.
      if (statement.Has(codemodel::kPortReturn)) LeaveEffects(statement, list);
      break;
    case Verb::Unknown:
    case Verb::ExecOther:
      UnknownEffects(statement, list);
      break;
    default:
      PlainEffects(statement, kUnknownDefinition, list);
      break;
  }
}

}  // namespace

bool Reads(VarUsage usage) {
  return usage == VarUsage::Out || usage == VarUsage::InOut;
}

bool Defines(VarUsage usage) {
  return usage == VarUsage::In || usage == VarUsage::InOut;
}

std::vector<NodeId> OperandsBelow(const ModelImage& model, NodeId node) {
  std::vector<NodeId> operands;
  for (NodeId child = node + 1; child <= model.Nodes()[node].last; child = model.Nodes()[child].last + 1) {
    const NodeRecord& record = model.Nodes()[child];
    // What hangs on conditions comes behind them.
    if (record.entity == Entity::Cond || record.entity == Entity::Block) break;
    if (IsOperand(record.entity)) operands.push_back(child);
  }
  return operands;
}

void PlainEffects(const Statement& statement, Definition definition, EffectList& list) {
  for (const NodeId operand : statement.operands) {
    const NodeRecord& node = statement.Record(operand);
    if (node.entity != Entity::Var || Reads(node.usage)) list.Use(operand, definition.feed);
    if (node.entity == Entity::Var && Defines(node.usage)) list.Define(operand, definition);
  }
}

void StatementEffects(const UnitFacts& facts, NodeId node, EffectList& list) {
  const NodeRecord& record = facts.Model().Nodes()[node];
  Statement statement{facts, node, static_cast<Verb>(record.verb), OperandsBelow(facts.Model(), node)};
  for (const NodeId operand : statement.operands) {
    const Role role = statement.Record(operand).role;
    const bool ofCounter = role == Role::Varying || role == Role::From || role == Role::By;
    if (statement.verb != Verb::Perform || !ofCounter) list.Subscripts(operand);
  }
  OwnEffects(statement, list);
  if (statement.Has(codemodel::kGap) && statement.verb != Verb::Unknown) MissingText(statement, list);
}

void ConditionEffects(const UnitFacts& facts, NodeId condition, EffectList& list) {
  for (const NodeId operand : OperandsBelow(facts.Model(), condition)) {
    list.Use(operand, kNoFeed);
    list.Subscripts(operand);
  }
}

}  // namespace qmrules::workbench::flow::cobol
