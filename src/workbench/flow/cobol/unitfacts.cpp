#include "workbench/flow/cobol/unitfacts.h"

#include <algorithm>

#include "workbench/codemodel/nodewalk.h"

namespace qmrules::workbench::flow::cobol {

using codemodel::DataSectionKind;
using codemodel::DeclRecord;
using codemodel::Entity;
using codemodel::ModelImage;
using codemodel::NodeRecord;
using codemodel::Role;
using codemodel::UnitRecord;

namespace {

bool IsSame(std::string_view text, std::string_view upper) {
  return text.size() == upper.size() && std::equal(text.begin(), text.end(), upper.begin(), [](char a, char b) {
           return (a >= 'a' && a <= 'z' ? static_cast<char>(a - 'a' + 'A') : a) == b;
         });
}

constexpr std::string_view kOfSql[] = {"SQLCA", "SQLCODE", "SQLSTATE"};

DataSectionKind SectionOf(const DeclRecord& decl) {
  return static_cast<DataSectionKind>(decl.section);
}

}  // namespace

UnitFacts::UnitFacts(const ModelImage& model, std::uint32_t unit)
    : model_(model), unit_(unit), layout_(model), places_(model, layout_) {
  for (std::uint32_t other = 0; other < model.Units().size(); ++other) {
    const UnitRecord& record = model.Units()[other];
    const bool inside = record.firstNode > Unit().firstNode && record.lastNode <= Unit().lastNode;
    if (other != unit && inside) nested_.emplace_back(record.firstNode, record.lastNode);
  }
  std::ranges::sort(nested_);
  FindRegisters();
  FindSharedAreas();
  FindReportSources();
  FindParameters();
}

bool UnitFacts::IsOwn(NodeId node) const {
  if (node < Unit().firstNode || node > Unit().lastNode) return false;
  // Of the nested units that begin before the node, those within another one end before it does.
  return std::ranges::none_of(nested_,
                              [node](const auto& other) { return other.first <= node && node <= other.second; });
}

void UnitFacts::FindRegisters() {
  for (const NodeId top : model_.NodesOf(Entity::Registers)) {
    for (NodeId node = top + 1; node <= model_.Nodes()[top].last; ++node) {
      const std::string_view name = model_.Text(model_.Nodes()[node].name);
      if (model_.Nodes()[node].entity == Entity::Decl && !name.empty()) registers_.emplace_back(name, node);
    }
  }
  for (const DeclRecord& decl : model_.Decls()) {
    const std::string_view name = model_.Text(model_.Nodes()[decl.node].name);
    if (name.size() < 5 || name.size() > 8 || (name[0] != 'S' && name[0] != 's')) continue;
    for (const std::string_view wanted : kOfSql) {
      if (IsSame(name, wanted)) registers_.emplace_back(wanted, decl.node);
    }
  }
  std::ranges::sort(registers_);
}

NodeId UnitFacts::Register(std::string_view name) const {
  const auto first = std::ranges::lower_bound(registers_, name, {}, &std::pair<std::string_view, NodeId>::first);
  if (first == registers_.end() || first->first != name) return 0;
  for (auto at = first; at != registers_.end() && at->first == name; ++at) {
    if (IsOwn(at->second)) return at->second;
  }
  return first->second;
}

void UnitFacts::FindSharedAreas() {
  std::vector<NodeId> shared;
  for (const DeclRecord& decl : model_.Decls()) {
    const bool external = (decl.flags & codemodel::kExternal) != 0;
    const bool global = (decl.flags & codemodel::kGlobal) != 0 && model_.Units().size() > 1;
    if (decl.area != 0 && (external || global)) shared.push_back(decl.area);
  }
  for (const codemodel::FileRecord& file : model_.FileRecords()) {
    const bool external = (file.flags & codemodel::kExternal) != 0;
    const bool global = (file.flags & codemodel::kGlobal) != 0 && model_.Units().size() > 1;
    if (file.firstRecord != 0 && (external || global)) shared.push_back(model_.Decl(file.firstRecord).area);
  }
  std::ranges::sort(shared);
  shared.erase(std::unique(shared.begin(), shared.end()), shared.end());
  sharedAreas_ = std::move(shared);
}

void UnitFacts::FindReportSources() {
  for (const DeclRecord& decl : model_.Decls()) {
    if (SectionOf(decl) != DataSectionKind::Report || !IsOwn(decl.node)) continue;
    for (const NodeId var : codemodel::ChildrenOf(model_, decl.node, Entity::Var)) reportSources_.push_back(var);
  }
}

void UnitFacts::FindParameters() {
  const NodeId division = Unit().division;
  if (division == 0) return;
  for (const NodeId port : model_.NodesOf(Entity::Port)) {
    const NodeRecord& node = model_.Nodes()[port];
    if (port < division || port > model_.Nodes()[division].last || (node.flags & codemodel::kPortUsing) == 0) continue;
    std::vector<NodeId>& parameters = node.parent == division ? parameters_ : entryParameters_;
    for (const NodeId var : codemodel::ChildrenOf(model_, port, Entity::Var)) {
      if (model_.Nodes()[var].role == Role::Argument) parameters.push_back(var);
    }
  }
  if (!parameters_.empty()) return;
  for (const DeclRecord& decl : model_.Decls()) {
    const bool linkage = SectionOf(decl) == DataSectionKind::Linkage || (decl.flags & codemodel::kRegister) != 0;
    const std::string_view name = model_.Text(model_.Nodes()[decl.node].name);
    if (linkage && decl.level == 1 && IsSame(name, "DFHCOMMAREA") && communicationArea_ == 0) {
      communicationArea_ = decl.node;
    }
  }
}

}  // namespace qmrules::workbench::flow::cobol
