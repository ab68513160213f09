#include "workbench/flow/cobol/monitorways.h"

#include <initializer_list>

#include "workbench/codemodel/cobol/procedure/verbs.h"
#include "workbench/codemodel/nodewalk.h"

namespace qmrules::workbench::flow::cobol {

using codemodel::Entity;
using codemodel::Role;
using codemodel::cobol::Verb;

namespace {

constexpr std::string_view kCommand = "EXEC CICS ";

bool IsOneOf(std::string_view name, std::initializer_list<std::string_view> commands) {
  for (const std::string_view command : commands) {
    if (name.substr(0, name.find(' ')) == command) return true;
  }
  return false;
}

}  // namespace

MonitorWays::MonitorWays(const codemodel::ModelImage& model, NodeId division, UnitLabels& labels, OpenWays& ways,
                         FlowGraph& graph)
    : model_(model), ways_(ways), graph_(graph) {
  chances_.fill(kNoPoint);
  const auto nodes = model.Nodes();
  std::array<NodeId, kKinds> first{};
  std::vector<NodeId> found;
  for (codemodel::KindWalk walk(model, Entity::Stat, division, nodes[division].last); walk.Current() != 0;
       walk.MoveNext()) {
    const NodeId node = walk.Current();
    if (nodes[node].verb != static_cast<std::uint8_t>(Verb::ExecCics)) continue;
    const std::string_view name = NameOf(node);
    if (name == "IGNORE CONDITION") ignores_ = true;
    if (!name.starts_with("HANDLE")) continue;
    const Kind kind = name == "HANDLE AID" ? Attention : name == "HANDLE ABEND" ? Abend : Condition;
    labels.LabelsOf(node, found);
    if (found.empty()) Handle(node, kind);
    if (!found.empty() && first[kind] == 0) first[kind] = node;
    labels_[kind].insert(labels_[kind].end(), found.begin(), found.end());
  }
  for (std::size_t kind = 0; kind < kKinds; ++kind) {
    if (labels_[kind].empty()) continue;
    chances_[kind] = ways.Add(first[kind], PointKind::Chance);
    found.clear();
    bool begin = true;
    for (const NodeId label : labels_[kind]) {
      labels.AddOnce(label, found, begin);
      begin = false;
    }
    if (kind == Abend) graph.AddGap({FlowGapKind::AnyStatement, first[kind], {chances_[kind]}});
    for (const NodeId label : found) ways.Lead(chances_[kind], labels.StartOf(label), WayKind::Jump);
  }
}

// A HANDLE without a label: one with a program leads out of this one.
void MonitorWays::Handle(NodeId node, Kind kind) {
  const auto nodes = model_.Nodes();
  if (kind != Abend) return;
  for (NodeId child = node + 1; child <= nodes[node].last; child = nodes[child].last + 1) {
    if (nodes[child].role == Role::Program) graph_.AddGap({FlowGapKind::HandledElsewhere, node});
  }
}

// The words of the command.
std::string_view MonitorWays::NameOf(NodeId node) const {
  std::string_view name = model_.Text(model_.Nodes()[node].name);
  if (name.starts_with(kCommand)) name.remove_prefix(kCommand.size());
  return name;
}

bool MonitorWays::AsksForOutcome(NodeId node) const {
  const auto nodes = model_.Nodes();
  if ((nodes[node].flags & codemodel::kNoHandle) != 0) return true;
  for (NodeId child = node + 1; child <= nodes[node].last; child = nodes[child].last + 1) {
    if (nodes[child].entity == Entity::Var && nodes[child].role == Role::Status) return true;
  }
  return false;
}

bool MonitorWays::IsHandled(std::string_view name) const {
  if (IsOneOf(name, {"HANDLE", "IGNORE", "PUSH", "POP"})) return false;
  return chances_[Condition] != kNoPoint || chances_[Abend] != kNoPoint ||
         (chances_[Attention] != kNoPoint && IsOneOf(name, {"RECEIVE", "CONVERSE"}));
}

void MonitorWays::Raise(PointId chance, std::string_view name) {
  const bool receives = IsOneOf(name, {"RECEIVE", "CONVERSE"});
  for (const Kind kind : {Condition, Attention, Abend}) {
    if (chances_[kind] == kNoPoint || (kind == Attention && !receives)) continue;
    if (kind == Condition && name == "ABEND") continue;
    ways_.Lead(chance, chances_[kind], WayKind::Exception);
  }
}

void MonitorWays::Command(NodeId node) {
  const std::string_view name = NameOf(node);
  const bool leaves = IsOneOf(name, {"RETURN", "XCTL", "ABEND"});
  const bool asks = AsksForOutcome(node);
  const bool raises = !asks && IsHandled(name) && (name != "ABEND" || chances_[Abend] != kNoPoint);
  // What is ignored goes on behind the command.
  const bool returns = !leaves || asks || (ignores_ && name != "ABEND");
  if (!returns && !raises) {
    ways_.Reach(ways_.Add(node, PointKind::Leave));
    return;
  }
  ways_.Pass(node, PointKind::Statement);
  if (!raises && !leaves) return;
  const PointId chance = ways_.Add(node, PointKind::Chance);
  ways_.Reach(chance);
  if (leaves) ways_.Lead(chance, ways_.Add(node, PointKind::Leave), WayKind::Next);
  if (raises) Raise(chance, name);
  if (returns) ways_.Open(chance);
}

}  // namespace qmrules::workbench::flow::cobol
