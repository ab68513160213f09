#include "workbench/flow/cobol/unitlabels.h"

#include <algorithm>

#include "workbench/codemodel/cobol/procedure/verbs.h"
#include "workbench/codemodel/nodewalk.h"
#include "workbench/flow/equalrun.h"

namespace qmrules::workbench::flow::cobol {

using codemodel::Entity;
using codemodel::NodeRecord;
using codemodel::Role;
using codemodel::cobol::Verb;

UnitLabels::UnitLabels(const codemodel::ModelImage& model, NodeId division, FlowGraph& graph)
    : model_(model), division_(division), graph_(graph) {
  for (codemodel::KindWalk walk(model, Entity::Label, division, model.Nodes()[division].last); walk.Current() != 0;
       walk.MoveNext()) {
    labels_.push_back(walk.Current());
  }
  first_ = static_cast<PointId>(graph.Points().size());
  for (const NodeId label : labels_) {
    graph.AddPoint({label, kNoRange, PointKind::Start, false});
    graph.AddPoint({label, kNoRange, PointKind::End, false});
  }
  listed_.assign(labels_.size(), 0);
  FindAlters();
}

void UnitLabels::FindAlters() {
  const auto nodes = model_.Nodes();
  for (codemodel::KindWalk walk(model_, Entity::Stat, division_, nodes[division_].last); walk.Current() != 0;
       walk.MoveNext()) {
    if (nodes[walk.Current()].verb != static_cast<std::uint8_t>(Verb::Alter)) continue;
    NodeId altered = 0;
    for (NodeId child = walk.Current() + 1; child <= nodes[walk.Current()].last; child = nodes[child].last + 1) {
      const NodeRecord& record = nodes[child];
      if (record.entity != Entity::Ref) continue;
      if (!IsLabel(record.declaration)) {
        graph_.AddGap({FlowGapKind::UnknownLabel, child});
      } else if (record.role == Role::Source && altered != 0) {
        alters_.emplace_back(altered, record.declaration);
      }
      altered = record.role == Role::Target && IsLabel(record.declaration) ? record.declaration : 0;
    }
  }
  std::ranges::sort(alters_);
  alters_.erase(std::unique(alters_.begin(), alters_.end()), alters_.end());
}

std::span<const std::pair<NodeId, NodeId>> UnitLabels::AlteredTo(NodeId paragraph) const {
  return EqualRun(alters_, paragraph, &std::pair<NodeId, NodeId>::first);
}

std::optional<std::uint32_t> UnitLabels::IndexOf(NodeId node) const {
  const auto found = std::ranges::lower_bound(labels_, node);
  if (found == labels_.end() || *found != node) return std::nullopt;
  return static_cast<std::uint32_t>(found - labels_.begin());
}

std::vector<PointId> UnitLabels::Starts() const {
  std::vector<PointId> starts;
  starts.reserve(labels_.size());
  for (const NodeId label : labels_) starts.push_back(StartOf(label));
  return starts;
}

RangeId UnitLabels::RangeOf(NodeId from, NodeId to) {
  const auto [place, added] = ranges_.try_emplace((std::uint64_t{from} << 32) | to, kNoRange);
  if (added) place->second = graph_.AddRange({from, to, StartOf(from), EndOf(to)});
  return place->second;
}

void UnitLabels::RangesOf(NodeId statement, std::vector<NamedRange>& ranges) {
  const auto nodes = model_.Nodes();
  ranges.clear();
  struct Names {
    NodeId from = 0, to = 0;
    Role role = Role::None;
  } names;
  const auto end = [&] {
    if (names.from != 0 && names.to != 0) ranges.push_back({RangeOf(names.from, names.to), names.role});
    names = {};
  };
  for (NodeId child = statement + 1; child <= nodes[statement].last; child = nodes[child].last + 1) {
    const NodeRecord& record = nodes[child];
    if (record.entity != Entity::Ref) continue;
    const bool isFile = record.declaration != 0 && nodes[record.declaration].entity == Entity::File;
    if (isFile || record.role == Role::File || record.role == Role::Other) continue;
    const NodeId label = IsLabel(record.declaration) ? record.declaration : 0;
    if (label == 0) graph_.AddGap({FlowGapKind::UnknownLabel, child});
    if (record.role == Role::Thru) {
      names.to = label;
      continue;
    }
    end();
    names = {label, label, record.role};
  }
  end();
}

void UnitLabels::AddOnce(NodeId label, std::vector<NodeId>& labels, bool begin) {
  if (begin) ++list_;
  std::uint32_t& listed = listed_[*IndexOf(label)];
  if (listed == list_) return;
  listed = list_;
  labels.push_back(label);
}

void UnitLabels::LabelsOf(NodeId statement, std::vector<NodeId>& labels) {
  const auto nodes = model_.Nodes();
  labels.clear();
  ++list_;
  for (NodeId child = statement + 1; child <= nodes[statement].last; child = nodes[child].last + 1) {
    if (nodes[child].entity != Entity::Ref) continue;
    if (IsLabel(nodes[child].declaration)) {
      AddOnce(nodes[child].declaration, labels, false);
    } else {
      graph_.AddGap({FlowGapKind::UnknownLabel, child});
    }
  }
}

}  // namespace qmrules::workbench::flow::cobol
