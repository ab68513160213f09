#include "workbench/codemodel/cobol/procedure/programports.h"

#include <algorithm>

namespace qmrules::workbench::codemodel::cobol {
namespace {

constexpr std::uint8_t kRead = 1, kWritten = 2;

bool IsPassing(Word word) {
  using enum Word;
  return word == By || word == Reference || word == Value || word == Content || word == Optional;
}

}  // namespace

void ProgramPorts::Enter(NodeId port) {
  model_.Node(port).flags |= kPortUsing;
  for (;;) {
    if (cursor_.Accept(Word::Using) || cursor_.Accept(Word::Chaining)) {
      Parameters();
    } else if (cursor_.Accept(Word::Returning) || cursor_.Accept(Word::Giving)) {
      Returning();
    } else {
      return;
    }
  }
}

void ProgramPorts::Parameters() {
  bool byValue = false;
  for (;;) {
    if (cursor_.At(TokenKind::Word) && IsPassing(cursor_.WordAt())) {
      if (cursor_.At(Word::Value)) byValue = true;
      if (cursor_.At(Word::Reference)) byValue = false;
      cursor_.Next();
      continue;
    }
    const NodeId var = operands_.Variable(Role::Argument, VarUsage::None);
    if (var == 0) return;
    if (byValue) model_.Node(var).flags |= kByContent;
    parameters_.push_back({var, model_.Node(var).declaration, false});
  }
}

void ProgramPorts::Returning() {
  const NodeId var = operands_.Variable(Role::Returning, VarUsage::None);
  if (var == 0) {
    model_.Report(Severity::Gap, cursor_.Index(), "RETURNING lacks its operand.");
    return;
  }
  parameters_.push_back({var, model_.Node(var).declaration, true});
}

void ProgramPorts::Leave(NodeId port) {
  model_.Node(port).flags |= kPortReturn;
  const std::uint32_t token = model_.FirstToken(port);
  for (const Parameter& parameter : parameters_) {
    if (parameter.declaration == 0) continue;
    if (implicitLeft_ == 0) return;
    --implicitLeft_;
    const NodeId var = model_.Leaf(Entity::Var, token, token);
    NodeRecord& record = model_.Node(var);
    record.declaration = parameter.declaration;
    record.name = model_.Node(parameter.declaration).name;
    record.role = parameter.returning ? Role::Returning : Role::Argument;
    record.flags = static_cast<std::uint16_t>(kImplicit | (model_.Node(parameter.var).flags & kByContent));
    leaving_.push_back(var);
  }
}

NodeId ProgramPorts::AreaOf(NodeId declaration) const {
  if (!IsKindOf(model_.Node(declaration).entity, Entity::Decl) || model_.Node(declaration).entity == Entity::File) {
    return 0;
  }
  return model_.Decl(declaration).area;
}

// The first and the last declaration in the areas of the parameters: all others need no look at their records. The last
// is below the first when there are none.
std::pair<NodeId, NodeId> ProgramPorts::ItemsOfParameters() const {
  std::vector<NodeId> areas;
  for (const Parameter& parameter : parameters_) {
    if (parameter.declaration != 0) areas.push_back(AreaOf(parameter.declaration));
  }
  std::pair<NodeId, NodeId> items = {1, 0};
  for (const DeclRecord& decl : model_.Decls()) {
    if (decl.area == 0 || std::ranges::find(areas, decl.area) == areas.end()) continue;
    if (items.second == 0) items.first = decl.node;
    items.second = decl.node;
  }
  return items;
}

void ProgramPorts::TellDirections(NodeId first) {
  if (!parameters_.empty()) {
    std::vector<std::uint8_t> passing(first, 0);  // by area
    const std::pair<NodeId, NodeId> items = ItemsOfParameters();
    const auto mark = [&](NodeId declaration, std::uint8_t how) {
      if (declaration < items.first || declaration > items.second || declaration >= first) return;
      const NodeId area = AreaOf(declaration);
      if (area != 0 && area < first) passing[area] |= how;
    };
    for (NodeId node = first; node <= model_.LastNode(); ++node) {
      const NodeRecord& record = model_.Node(node);
      if (record.entity != Entity::Var || record.usage == VarUsage::None) continue;
      if (record.usage != VarUsage::In) mark(record.declaration, kRead);
      if (record.usage != VarUsage::Out) mark(record.declaration, kWritten);
    }
    const auto passes = [&](NodeId declaration) {
      const NodeId area = declaration == 0 ? 0 : AreaOf(declaration);
      return area == 0 || area >= first ? std::uint8_t{0} : passing[area];
    };
    for (const Parameter& parameter : parameters_) {
      const std::uint8_t how = passes(parameter.declaration);
      NodeRecord& record = model_.Node(parameter.var);
      const bool in = (how & kRead) != 0 && !parameter.returning;
      const bool out = parameter.returning || ((how & kWritten) != 0 && (record.flags & kByContent) == 0);
      record.usage = in ? (out ? VarUsage::InOut : VarUsage::In) : (out ? VarUsage::Out : VarUsage::None);
    }
    for (const NodeId var : leaving_) {
      NodeRecord& record = model_.Node(var);
      const bool changed = (passes(record.declaration) & kWritten) != 0 && (record.flags & kByContent) == 0;
      if (changed || record.role == Role::Returning) record.usage = VarUsage::Out;
    }
  }
  parameters_.clear();
  leaving_.clear();
}

}  // namespace qmrules::workbench::codemodel::cobol
