#include <algorithm>
#include <string_view>

#include "workbench/flow/cobol/statementeffects.h"

// EXEC SQL, EXEC CICS, XML and JSON.
namespace qmrules::workbench::flow::cobol {

using codemodel::Entity;
using codemodel::NodeRecord;
using codemodel::Role;

namespace {

constexpr Definition kInput{.kind = DefinitionKind::Input, .feed = kNoFeed};
constexpr Definition kPerhapsInput{.kind = DefinitionKind::Input, .certainty = Certainty::Perhaps, .feed = kNoFeed};

std::string_view CommandOf(const Statement& statement) {
  return statement.Model().Text(statement.Record(statement.node).name);
}

// Statements that are only for the precompiler.
bool IsExecuted(std::string_view name) {
  constexpr std::string_view kNotExecuted[] = {"EXEC SQL DECLARE", "EXEC SQL INCLUDE", "EXEC SQL WHENEVER",
                                               "EXEC SQL BEGIN DECLARE", "EXEC SQL END DECLARE"};
  return std::ranges::none_of(kNotExecuted, [name](std::string_view start) { return name.starts_with(start); });
}

void HostVariable(const Statement& statement, NodeId operand, DefinitionKind kind, EffectList& list) {
  const NodeRecord& node = statement.Record(operand);
  if (node.role == Role::AddressOf) {
    // SET (ADDRESS OF item) lays it over storage of the monitor.
    list.Gap(EffectGapKind::AddressTaken, operand);
    list.Define(operand, kPerhapsInput);
    return;
  }
  if (node.entity != Entity::Var || Reads(node.usage)) list.Use(operand, kind == DefinitionKind::Call ? 0 : kNoFeed);
  if (node.entity != Entity::Var || !Defines(node.usage)) return;
  Definition definition = kPerhapsInput;
  definition.kind = kind;
  if (kind == DefinitionKind::Call) definition.feed = 0;
  if (node.role == Role::Status) definition = kInput;
  list.Define(operand, definition);
}

}  // namespace

void SqlEffects(const Statement& statement, EffectList& list) {
  const std::string_view name = CommandOf(statement);
  const bool calls = name.starts_with("EXEC SQL CALL");
  if (!IsExecuted(name)) return;
  for (const NodeId operand : statement.operands) {
    HostVariable(statement, operand, calls ? DefinitionKind::Call : DefinitionKind::Input, list);
  }
  // A row that is not found leaves the variables as they were, but tells it.
  const UnitFacts& facts = statement.facts;
  list.DefineItem(facts.Register("SQLCA"), statement.node, kPerhapsInput);
  list.DefineItem(facts.Register("SQLCODE"), statement.node, kInput);
  list.DefineItem(facts.Register("SQLSTATE"), statement.node, kInput);
}

void CicsEffects(const Statement& statement, EffectList& list) {
  const std::string_view name = CommandOf(statement);
  const bool transfers = name == "EXEC CICS XCTL", calls = transfers || name == "EXEC CICS LINK";
  for (const NodeId operand : statement.operands) {
    const NodeRecord& node = statement.Record(operand);
    if ((node.flags & codemodel::kImplicit) != 0 && node.role == Role::Argument) continue;
    const bool isArea = calls && node.role == Role::Argument;
    if (isArea && transfers) {
      // Nothing comes back; where the program goes on, the other one has not run.
      list.Use(operand, 0);
      continue;
    }
    HostVariable(statement, operand, isArea ? DefinitionKind::Call : DefinitionKind::Input, list);
  }
  const UnitFacts& facts = statement.facts;
  list.DefineItem(facts.Register("DFHEIBLK"), statement.node, kPerhapsInput);
  for (const std::string_view field : {"EIBFN", "EIBRCODE", "EIBRESP", "EIBRESP2"}) {
    list.DefineItem(facts.Register(field), statement.node, kInput);
  }
}

void MarkupEffects(const Statement& statement, EffectList& list) {
  for (const NodeId operand : statement.operands) {
    const NodeRecord& node = statement.Record(operand);
    if (node.entity == Entity::Var && Defines(node.usage)) {
      // A document can lack some of the items that it is read into.
      const bool whole = statement.verb == Verb::XmlGenerate || statement.verb == Verb::JsonGenerate;
      list.Define(operand, {.kind = DefinitionKind::Computation,
                            .certainty = whole ? Certainty::IfGood : Certainty::Perhaps,
                            .spoils = true});
    } else if (node.entity != Entity::Var || Reads(node.usage)) {
      list.Use(operand, node.role == Role::Source ? std::uint16_t{0} : kNoFeed);
    }
  }
  const UnitFacts& facts = statement.facts;
  const bool isXml = statement.verb == Verb::XmlGenerate || statement.verb == Verb::XmlParse;
  if (!isXml) {
    list.DefineItem(facts.Register("JSON-CODE"), statement.node, kInput);
    list.DefineItem(facts.Register("JSON-STATUS"), statement.node, kPerhapsInput);
    return;
  }
  list.DefineItem(facts.Register("XML-CODE"), statement.node, kInput);
  if (statement.verb != Verb::XmlParse) return;
  // What the processing procedure finds, once for each part of the document.
  for (const std::string_view item : {"XML-EVENT", "XML-INFORMATION", "XML-NAMESPACE", "XML-NAMESPACE-PREFIX",
                                      "XML-NNAMESPACE", "XML-NNAMESPACE-PREFIX", "XML-NTEXT", "XML-TEXT"}) {
    list.DefineItem(facts.Register(item), statement.node, kPerhapsInput);
  }
}

}  // namespace qmrules::workbench::flow::cobol
