#include "workbench/flow/cobol/programcalls.h"

#include <cstdint>
#include <string_view>
#include <utility>

#include "workbench/codemodel/cobol/procedure/verbs.h"
#include "workbench/codemodel/nodewalk.h"

namespace qmrules::workbench::flow::cobol {

using codemodel::Entity;
using codemodel::ModelImage;
using codemodel::NodeRecord;
using codemodel::Role;
using codemodel::cobol::Verb;

namespace {

Argument ArgumentOf(const UnitFacts& facts, NodeId operand) {
  const NodeRecord& node = facts.Model().Nodes()[operand];
  Argument argument;
  if ((node.flags & codemodel::kOmitted) != 0) return argument;
  argument.operand = operand;
  // Behind ADDRESS OF the address itself is handed over.
  if (node.entity != Entity::Var || node.role == Role::AddressOf) return argument;
  const OperandPlace place = facts.Places().Of(operand);
  argument.place = place.place;
  const bool changes = node.usage == codemodel::VarUsage::In || node.usage == codemodel::VarUsage::InOut;
  argument.canChange = changes && (node.flags & codemodel::kByContent) == 0;
  return argument;
}

Argument ParameterOf(const UnitFacts& facts, NodeId var) {
  Argument parameter;
  parameter.operand = var;
  parameter.place = facts.Places().Of(var).place;
  parameter.canChange = (facts.Model().Nodes()[var].flags & codemodel::kByContent) == 0;
  return parameter;
}

enum class Callee : std::uint8_t { None, Program, Transaction, Elsewhere };

Callee CalleeOf(const ModelImage& model, NodeId statement) {
  const NodeRecord& node = model.Nodes()[statement];
  const std::string_view name = model.Text(node.name);
  switch (static_cast<Verb>(node.verb)) {
    case Verb::ExecCics:
      return name == "EXEC CICS LINK" || name == "EXEC CICS XCTL" ? Callee::Transaction : Callee::None;
    case Verb::ExecSql:
      return name == "EXEC SQL CALL" ? Callee::Elsewhere : Callee::None;
    case Verb::Call:
      return Callee::Program;
    case Verb::Invoke:
      return Callee::Elsewhere;
    default:
      return Callee::None;
  }
}

// Commands can fail, and the program goes on.
bool Handles(const ModelImage& model, NodeId statement) {
  if (static_cast<Verb>(model.Nodes()[statement].verb) != Verb::ExecCics) return false;
  const std::string_view name = model.Text(model.Nodes()[statement].name);
  return name == "EXEC CICS HANDLE CONDITION" || name == "EXEC CICS HANDLE ABEND" ||
         name == "EXEC CICS IGNORE CONDITION";
}

ProgramCall CallBy(const UnitFacts& facts, NodeId statement, Callee callee) {
  const ModelImage& model = facts.Model();
  const bool ofCics = callee == Callee::Transaction;
  ProgramCall call;
  call.statement = statement;
  call.returns = model.Text(model.Nodes()[statement].name) != "EXEC CICS XCTL";
  call.commarea = ofCics;
  call.mayFail = ofCics && (model.Nodes()[statement].flags & codemodel::kNoHandle) != 0;
  for (NodeId child = statement + 1; child <= model.Nodes()[statement].last; child = model.Nodes()[child].last + 1) {
    const NodeRecord& operand = model.Nodes()[child];
    const bool passes = operand.role == Role::Argument || operand.role == Role::AddressOf ||
                        (operand.role == Role::LengthOf && !ofCics);
    if (operand.role == Role::Program && call.program == 0 && callee != Callee::Elsewhere) call.program = child;
    call.mayFail = call.mayFail || (ofCics && operand.role == Role::Status);
    if (passes && (operand.flags & codemodel::kImplicit) == 0) call.arguments.push_back(ArgumentOf(facts, child));
  }
  return call;
}

}  // namespace

std::vector<ProgramCall> CallsOf(const UnitFacts& facts) {
  const ModelImage& model = facts.Model();
  std::vector<ProgramCall> calls;
  const NodeId division = facts.Unit().division;
  if (division == 0) return calls;
  bool handles = false;
  for (codemodel::KindWalk walk(model, Entity::Stat, division, model.Nodes()[division].last); walk.Current() != 0;
       walk.MoveNext()) {
    handles = handles || Handles(model, walk.Current());
    const Callee callee = CalleeOf(model, walk.Current());
    if (callee != Callee::None) calls.push_back(CallBy(facts, walk.Current(), callee));
  }
  for (ProgramCall& call : calls) call.mayFail = call.mayFail || (handles && call.commarea);
  return calls;
}

std::vector<Argument> ParametersOf(const UnitFacts& facts) {
  std::vector<Argument> parameters;
  for (const NodeId var : facts.Parameters()) parameters.push_back(ParameterOf(facts, var));
  if (parameters.empty() && facts.CommunicationArea() != 0) {
    parameters.push_back({facts.CommunicationArea(), facts.Places().OfItem(facts.CommunicationArea()).place, true});
  }
  return parameters;
}

std::vector<Argument> ParametersOfEntry(const UnitFacts& facts, NodeId entry) {
  std::vector<Argument> parameters;
  for (const NodeId var : codemodel::ChildrenOf(facts.Model(), entry, Entity::Var)) {
    if (facts.Model().Nodes()[var].role == Role::Argument) parameters.push_back(ParameterOf(facts, var));
  }
  return parameters;
}

}  // namespace qmrules::workbench::flow::cobol
