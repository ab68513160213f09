#include "workbench/flow/cobol/useprocedures.h"

#include <algorithm>

#include "workbench/codemodel/cobol/procedure/verbs.h"
#include "workbench/codemodel/nodewalk.h"
#include "workbench/flow/equalrun.h"

namespace qmrules::workbench::flow::cobol {

using codemodel::DataSectionKind;
using codemodel::Entity;
using codemodel::NodeRecord;
using codemodel::Role;
using codemodel::cobol::Verb;

namespace {

// The USE that a section of the declaratives begins with; 0 for another section.
NodeId UseOf(const codemodel::ModelImage& model, NodeId section) {
  const NodeId paragraph = codemodel::FirstChild(model, section);
  const NodeId first = paragraph == 0 ? 0 : codemodel::FirstChild(model, paragraph);
  return first != 0 && model.Nodes()[first].verb == static_cast<std::uint8_t>(Verb::Use) ? first : 0;
}

bool IsReportVerb(std::uint8_t verb) {
  return verb == static_cast<std::uint8_t>(Verb::Generate) || verb == static_cast<std::uint8_t>(Verb::Terminate);
}

bool IsFileVerb(std::uint8_t verb) {
  switch (static_cast<Verb>(verb)) {
    case Verb::Open:
    case Verb::Close:
    case Verb::Read:
    case Verb::Write:
    case Verb::Rewrite:
    case Verb::Delete:
    case Verb::Start:
    case Verb::Sort:
    case Verb::Merge:
    case Verb::Unlock:
      return true;
    default:
      return false;
  }
}

}  // namespace

UseProcedures::UseProcedures(const codemodel::ModelImage& model, NodeId division, UnitLabels& labels, FlowGraph& graph)
    : model_(model) {
  const auto nodes = model.Nodes();
  for (NodeId child = division + 1; child <= nodes[division].last; child = nodes[child].last + 1) {
    if (nodes[child].entity != Entity::Section) continue;
    const NodeId use = UseOf(model, child);
    if (use == 0) continue;
    lastSection_ = child;
    Take(child, use, labels, graph);
  }
  std::sort(byFile_.begin(), byFile_.end());
  if (HasModes()) FindOpenModes(division);
}

bool UseProcedures::HasModes() const {
  return std::ranges::any_of(byMode_, [](const auto& ranges) { return !ranges.empty(); });
}

void UseProcedures::Take(NodeId section, NodeId use, UnitLabels& labels, FlowGraph& graph) {
  const auto nodes = model_.Nodes();
  const RangeId range = labels.RangeOf(section, section);
  bool known = false;
  for (NodeId child = use + 1; child <= nodes[use].last; child = nodes[child].last + 1) {
    const NodeRecord& record = nodes[child];
    if (record.role != Role::Other) {
      known = true;
      TakeName(child, range);
    } else if (record.entity == Entity::Var && record.declaration != 0 &&
               nodes[record.declaration].entity == Entity::Decl &&
               model_.Decl(record.declaration).section == static_cast<std::uint8_t>(DataSectionKind::Report)) {
      known = true;
      reports_.push_back(range);
    }
  }
  if (!known) graph.AddGap({FlowGapKind::Debugging, use, DebuggedPoints(use, labels)});
}

// Where FOR DEBUGGING runs: at the beginning of the procedures that are named. What is done with a file or an item can
// be anywhere.
std::vector<PointId> UseProcedures::DebuggedPoints(NodeId use, const UnitLabels& labels) const {
  const auto nodes = model_.Nodes();
  std::vector<PointId> points;
  for (NodeId child = use + 1; child <= nodes[use].last; child = nodes[child].last + 1) {
    if (!labels.IsLabel(nodes[child].declaration)) return labels.Starts();
    points.push_back(labels.StartOf(nodes[child].declaration));
  }
  return points.empty() ? labels.Starts() : points;
}

// A file or a mode.
void UseProcedures::TakeName(NodeId name, RangeId range) {
  const NodeRecord& record = model_.Nodes()[name];
  if (record.declaration != 0 && model_.Nodes()[record.declaration].entity == Entity::File) {
    byFile_.push_back({model_.Nodes()[record.declaration].detail, range});
  } else if (record.role == Role::Input) {
    byMode_[Input].push_back(range);
  } else if (record.role == Role::Output) {
    byMode_[Output].push_back(range);
  } else if (record.role == Role::Both) {
    byMode_[InputOutput].push_back(range);
  }
}

// Of a file's name in an OPEN.
unsigned UseProcedures::ModeBit(Role role) {
  if (role == Role::Input) return 1U << Input;
  return role == Role::Both ? 1U << InputOutput : 1U << Output;
}

void UseProcedures::FindOpenModes(NodeId division) {
  const auto nodes = model_.Nodes();
  openModes_.assign(model_.FileRecords().size(), 0);
  for (codemodel::KindWalk walk(model_, Entity::Stat, division, nodes[division].last); walk.Current() != 0;
       walk.MoveNext()) {
    const NodeId node = walk.Current();
    if (nodes[node].verb != static_cast<std::uint8_t>(Verb::Open)) continue;
    for (NodeId child = node + 1; child <= nodes[node].last; child = nodes[child].last + 1) {
      const NodeRecord& record = nodes[child];
      if (record.declaration == 0 || nodes[record.declaration].entity != Entity::File) continue;
      const unsigned bit = ModeBit(record.role);
      std::uint8_t& modes = openModes_[nodes[record.declaration].detail];
      modes = static_cast<std::uint8_t>(modes | bit);
    }
  }
}

void UseProcedures::Add(std::span<const RangeId> more, std::vector<RangeId>& ranges) {
  const auto some = more.first(std::min(more.size(), kMostForOne));
  ranges.insert(ranges.end(), some.begin(), some.end());
}

// Those of the file itself; where there is none, those of the modes that it can be open in: with OPEN, the one told
// there.
void UseProcedures::AddForFile(NodeId reference, bool opens, std::vector<RangeId>& ranges) const {
  const NodeRecord& record = model_.Nodes()[reference];
  const std::uint32_t file = model_.Nodes()[record.declaration].detail;
  const std::span<const OfFile> own = EqualRun(byFile_, file, &OfFile::file);
  if (!own.empty()) {
    for (const OfFile& each : own.first(std::min(own.size(), kMostForOne))) {
      ranges.push_back(each.range);
    }
    return;
  }
  unsigned modes = openModes_.empty() ? 0 : openModes_[file];
  if (opens) modes = ModeBit(record.role);
  for (std::size_t mode = 0; mode < kModes; ++mode) {
    if (modes == 0 || (modes & (1U << mode)) != 0) Add(byMode_[mode], ranges);
  }
}

void UseProcedures::RangesFor(NodeId statement, std::vector<RangeId>& ranges) const {
  ranges.clear();
  const auto nodes = model_.Nodes();
  const NodeRecord& record = nodes[statement];
  if (IsReportVerb(record.verb)) return Add(reports_, ranges);
  if (!IsFileVerb(record.verb)) return;
  for (NodeId child = statement + 1; child <= nodes[statement].last; child = nodes[child].last + 1) {
    const NodeId file = nodes[child].entity == Entity::Ref ? nodes[child].declaration : 0;
    if (file == 0 || nodes[file].entity != Entity::File) continue;
    AddForFile(child, record.verb == static_cast<std::uint8_t>(Verb::Open), ranges);
  }
  std::ranges::sort(ranges);
  ranges.erase(std::unique(ranges.begin(), ranges.end()), ranges.end());
}

}  // namespace qmrules::workbench::flow::cobol
