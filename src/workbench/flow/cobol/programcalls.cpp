#include "workbench/flow/cobol/programcalls.h"

#include <string_view>

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

}  // namespace

std::vector<ProgramCall> CallsOf(const UnitFacts& facts) {
  const ModelImage& model = facts.Model();
  std::vector<ProgramCall> calls;
  const NodeId division = facts.Unit().division;
  if (division == 0) return calls;
  for (const NodeId port : model.NodesOf(Entity::Port)) {
    const NodeRecord& node = model.Nodes()[port];
    if (port < division || port > model.Nodes()[division].last) continue;
    const std::string_view name = model.Text(node.name);
    const bool ofCics = name == "EXEC CICS LINK" || name == "EXEC CICS XCTL";
    if (static_cast<Verb>(node.verb) != Verb::Call && !ofCics) continue;
    ProgramCall call;
    call.statement = port;
    call.returns = name != "EXEC CICS XCTL";
    call.commarea = ofCics;
    for (NodeId child = port + 1; child <= node.last; child = model.Nodes()[child].last + 1) {
      const NodeRecord& operand = model.Nodes()[child];
      const bool passes = operand.role == Role::Argument || operand.role == Role::AddressOf ||
                          (operand.role == Role::LengthOf && !ofCics);
      if (operand.role == Role::Program && call.program == 0) call.program = child;
      if (passes && (operand.flags & codemodel::kImplicit) == 0) call.arguments.push_back(ArgumentOf(facts, child));
    }
    calls.push_back(std::move(call));
  }
  return calls;
}

std::vector<Argument> ParametersOf(const UnitFacts& facts) {
  std::vector<Argument> parameters;
  for (const NodeId var : facts.Parameters()) {
    Argument parameter;
    parameter.operand = var;
    parameter.place = facts.Places().Of(var).place;
    parameter.canChange = (facts.Model().Nodes()[var].flags & codemodel::kByContent) == 0;
    parameters.push_back(std::move(parameter));
  }
  if (parameters.empty() && facts.CommunicationArea() != 0) {
    parameters.push_back({facts.CommunicationArea(), facts.Places().OfItem(facts.CommunicationArea()).place, true});
  }
  return parameters;
}

}  // namespace qmrules::workbench::flow::cobol
