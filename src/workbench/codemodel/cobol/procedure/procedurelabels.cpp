#include "workbench/codemodel/cobol/procedure/procedurelabels.h"

#include <string>

namespace qmrules::workbench::codemodel::cobol {
namespace {

// Labels of one name past this number are not looked at for one reference.
constexpr int kMostCandidates = 1000;

}  // namespace

void ProcedureLabels::Add(std::uint32_t symbol, NodeId node, NodeId section) {
  std::uint32_t& latest = latest_[symbol];
  labels_.push_back({node, section, latest});
  latest = static_cast<std::uint32_t>(labels_.size());
  if (model_.Node(node).entity == Entity::Section) sectionNames_[node] = symbol;
}

bool ProcedureLabels::IsSectionNamed(NodeId section, std::uint32_t symbol) const {
  const auto found = sectionNames_.find(section);
  return found != sectionNames_.end() && found->second == symbol;
}

NodeId ProcedureLabels::SectionAround(NodeId node) const {
  while (node != 0 && model_.Node(node).entity != Entity::Section && model_.Node(node).entity != Entity::Division) {
    node = model_.Node(node).parent;
  }
  return node != 0 && model_.Node(node).entity == Entity::Section ? node : 0;
}

ProcedureLabels::Answer ProcedureLabels::Find(const Operands::PendingLabel& pending) const {
  const auto found = latest_.find(pending.name);
  if (found == latest_.end()) return {};
  const bool qualified = pending.section != SymbolTable::kNone;
  const Label& only = labels_[found->second - 1];
  if (!qualified && only.next == 0) return {only.node, false};
  Answer own, any;
  const NodeId around = qualified ? 0 : SectionAround(pending.node);
  int count = 0;
  for (std::uint32_t at = found->second; at != 0 && count < kMostCandidates; ++count) {
    const Label& label = labels_[at - 1];
    at = label.next;
    if (qualified && !IsSectionNamed(label.section, pending.section)) continue;
    Answer& answer = around != 0 && label.section == around ? own : any;
    if (answer.node != 0) answer.several = true;
    answer.node = label.node;
  }
  return own.node != 0 ? own : any;
}

void ProcedureLabels::Tie(const Operands::PendingLabel& pending, NodeId label) {
  NodeRecord& reference = model_.Node(pending.node);
  reference.declaration = label;
  reference.name = model_.Node(label).name;
  NodeRecord& statement = model_.Node(reference.parent);
  if (statement.entity != Entity::Goto && statement.entity != Entity::Perform) return;
  if (statement.declaration == 0 && reference.role != Role::Thru) statement.declaration = label;
}

void ProcedureLabels::Miss(const Operands::PendingLabel& pending, bool several) {
  std::string text = "Paragraph ";
  text += symbols_.Text(pending.name);
  if (pending.section != SymbolTable::kNone) text.append(" OF ").append(symbols_.Text(pending.section));
  text += several ? " is ambiguous; qualify it." : " is not in this program.";
  model_.Report(Severity::Gap, pending.token, std::move(text));
  NodeId node = model_.Node(pending.node).parent;
  while (node != 0 && !IsKindOf(model_.Node(node).entity, Entity::Stat)) node = model_.Node(node).parent;
  if (node != 0) model_.Node(node).flags |= kGap;
}

void ProcedureLabels::Resolve(std::span<const Operands::PendingLabel> pending) {
  for (const Operands::PendingLabel& each : pending) {
    const Answer answer = Find(each);
    if (answer.node == 0 || answer.several) {
      Miss(each, answer.several);
    } else {
      Tie(each, answer.node);
    }
  }
}

}  // namespace qmrules::workbench::codemodel::cobol
