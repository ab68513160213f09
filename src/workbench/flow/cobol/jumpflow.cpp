// GO TO and what else does not go on with the next statement.

#include "workbench/flow/cobol/unitflow.h"

namespace qmrules::workbench::flow::cobol {

using codemodel::Entity;
using codemodel::Role;

void UnitFlow::JumpTo(NodeId node, PointId target) {
  const PointId point = ways_.Add(node, PointKind::Statement);
  ways_.Reach(point);
  ways_.Lead(point, target, WayKind::Jump);
}

// ALTER changes a GO TO that is all there is in its paragraph.
bool UnitFlow::IsAlone(NodeId node) const {
  return paragraph_ != 0 && node == paragraph_ + 1;
}

void UnitFlow::GoTo(NodeId node) {
  labels_.LabelsOf(node, targets_);
  bool depends = false, names = false;
  for (NodeId child = node + 1; child <= nodes_[node].last; child = nodes_[child].last + 1) {
    if (nodes_[child].entity == Entity::Ref) names = true;
    if (nodes_[child].role == Role::DependingOn) depends = true;
  }
  if (!depends && IsAlone(node)) {
    for (const auto& [paragraph, to] : labels_.AlteredTo(paragraph_)) labels_.AddOnce(to, targets_, false);
  }
  PointId from = ways_.Add(node, PointKind::Statement);
  ways_.Reach(from);
  if (targets_.empty() && !names) graph_.AddGap({FlowGapKind::NoAlter, node});
  if (depends || targets_.size() > 1) {
    const PointId chance = ways_.Add(node, PointKind::Chance);
    ways_.Lead(from, chance, WayKind::Next);
    from = chance;
  }
  for (const NodeId target : targets_) ways_.Lead(from, labels_.StartOf(target), WayKind::Jump);
  if (depends) ways_.Open(from);
}

// What stands before the first section is a section too, which has no header.
void UnitFlow::ExitSection(NodeId node) {
  if (section_ != 0) return JumpTo(node, labels_.EndOf(section_));
  const PointId point = ways_.Add(node, PointKind::Statement);
  ways_.Reach(point);
  firstSectionExits_.push_back(point);
}

void UnitFlow::EndFirstSection() {
  for (const PointId point : firstSectionExits_) ways_.Open(point, WayKind::Jump);
  firstSectionExits_.clear();
}

// Of a program that nothing has called it does nothing.
void UnitFlow::ExitProgram(NodeId node) {
  if (isCalled_) return ways_.Reach(ways_.Add(node, PointKind::Leave));
  ways_.Pass(node, PointKind::Statement);
  const PointId chance = ways_.Pass(node, PointKind::Chance);
  ways_.Lead(chance, ways_.Add(node, PointKind::Leave), WayKind::Next);
}

// Out of a USE procedure: to a label, or behind what has made it run.
void UnitFlow::Resume(NodeId node) {
  labels_.LabelsOf(node, targets_);
  if (!targets_.empty()) return JumpTo(node, labels_.StartOf(targets_.front()));
  if (section_ != 0) return ExitSection(node);
  Unknown(node);
}

void UnitFlow::NextSentence(NodeId node) {
  const PointId point = ways_.Add(node, PointKind::Statement);
  ways_.Reach(point);
  sentences_.push_back(point);
}

// One more place where callers can come in.
void UnitFlow::Entry(NodeId node) {
  const PointId point = ways_.Pass(node, PointKind::Statement);
  ways_.Lead(entry_, point, WayKind::Jump);
}

void UnitFlow::Unknown(NodeId node) {
  graph_.AddGap({FlowGapKind::UnknownStatement, node});
  ways_.Pass(node, PointKind::Statement);
}

}  // namespace qmrules::workbench::flow::cobol
