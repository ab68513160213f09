#include <algorithm>
#include <vector>

#include "workbench/codemodel/cobol/procedure/operands.h"

namespace qmrules::workbench::codemodel::cobol {

NodeId Operands::HostVariable(Role role, VarUsage usage) {
  if (!cursor_.At(TokenKind::Word)) return 0;
  const std::uint32_t first = cursor_.Index();
  std::uint32_t name = cursor_.Current().symbol;
  std::string_view spelled = cursor_.Text();
  cursor_.Next();
  qualifiers_.clear();
  while (cursor_.Text() == "." && cursor_.Current().Has(kAdjacent) && cursor_.Ahead(1).kind == TokenKind::Word &&
         cursor_.Ahead(1).Has(kAdjacent)) {
    qualifiers_.push_back(name);
    cursor_.Next();
    name = cursor_.Current().symbol;
    spelled = cursor_.Text();
    cursor_.Next();
  }
  std::ranges::reverse(qualifiers_);
  const Meaning meaning = MeaningOf(name, cursor_.Previous());
  const NodeId node =
      qualifiers_.empty() ? model_.Leaf(meaning.entity, first, first) : model_.Open(meaning.entity, first);
  NodeRecord& record = model_.Node(node);
  record.declaration = meaning.declaration;
  record.name = meaning.declaration != 0 ? model_.Node(meaning.declaration).name : model_.SymbolText(name, spelled);
  record.role = role;
  if (meaning.entity == Entity::Var) record.usage = usage;
  if (meaning.isRegister) {
    scope_->UseRegister(node, name, qualifiers_.size() == 1 ? qualifiers_.front() : SymbolTable::kNone);
  }
  if (qualifiers_.empty()) return node;
  HostQualifiers(first, meaning.declaration);
  model_.Close(node, cursor_.Previous());
  return node;
}

// The qualifiers stand before the name, the outermost first.
void Operands::HostQualifiers(std::uint32_t first, NodeId declaration) {
  std::vector<NodeId> groups(qualifiers_.size(), 0);
  NodeId around = declaration;
  for (std::size_t at = 0; at < qualifiers_.size() && around != 0; ++at) {
    do {
      around = model_.Node(around).parent;
    } while (around != 0 && symbols_.Find(model_.TextOf(model_.Node(around).name)) != qualifiers_[at]);
    groups[at] = around;
  }
  for (std::size_t at = qualifiers_.size(); at-- > 0;) {
    const TextId name = groups[at] != 0 ? model_.Node(groups[at]).name
                                        : model_.SymbolText(qualifiers_[at], symbols_.Text(qualifiers_[at]));
    const NodeId node = model_.Leaf(Entity::Ref, first, first);
    model_.Node(node).name = name;
    model_.Node(node).declaration = groups[at];
    model_.Node(node).role = Role::Qualifier;
    first += 2;
  }
}

}  // namespace qmrules::workbench::codemodel::cobol
