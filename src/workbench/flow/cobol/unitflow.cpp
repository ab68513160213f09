#include "workbench/flow/cobol/unitflow.h"

#include <array>

#include "workbench/flow/cobol/statementparts.h"

namespace qmrules::workbench::flow::cobol {

using codemodel::Entity;
using codemodel::cobol::Verb;

UnitFlow::UnitFlow(const codemodel::ModelImage& model, NodeId division, FlowGraph& graph, PointId entry, bool isCalled)
    : model_(model),
      nodes_(model.Nodes()),
      division_(division),
      graph_(graph),
      entry_(entry),
      isCalled_(isCalled),
      ways_(graph),
      labels_(model, division, graph),
      uses_(model, division, labels_, graph),
      monitor_(model, division, labels_, ways_, graph),
      sql_(model, labels_, ways_) {}

bool UnitFlow::IsStatement(NodeId node) const {
  static const auto isStatement = [] {
    std::array<bool, codemodel::kEntities> made{};
    for (const Entity kind : codemodel::KindsOf(Entity::Stat)) made[static_cast<std::size_t>(kind)] = true;
    return made;
  }();
  return isStatement[static_cast<std::size_t>(nodes_[node].entity)];
}

// Declaratives come first in the text, and nothing falls into or out of them.
void UnitFlow::Build() {
  NodeId end = 0;
  bool begun = false;
  for (NodeId child = division_ + 1; child <= nodes_[division_].last; child = nodes_[child].last + 1) {
    if (nodes_[child].entity == Entity::Port) end = child;
    if (!labels_.IsLabel(child)) continue;
    if (!begun && child > uses_.LastSection()) {
      ways_.Open(entry_);
      begun = true;
    }
    Label(child);
    if (!begun) ways_.Drop();
  }
  if (!begun) ways_.Open(entry_);
  EndFirstSection();
  const bool isExit = end != 0 && (nodes_[end].flags & codemodel::kPortReturn) != 0;
  ways_.Reach(ways_.Add(isExit ? end : division_, PointKind::Leave));
}

void UnitFlow::Label(NodeId label) {
  if (nodes_[label].entity == Entity::Section) EndFirstSection();
  ways_.Pass(labels_.StartOf(label));
  if (nodes_[label].entity == Entity::Section) {
    section_ = label;
    for (NodeId child = label + 1; child <= nodes_[label].last; child = nodes_[child].last + 1) {
      if (nodes_[child].entity == Entity::Par) Label(child);
    }
    section_ = 0;
  } else {
    paragraph_ = label;
    Statements(label);
    EndSentence();
    paragraph_ = 0;
  }
  ways_.Pass(labels_.EndOf(label));
}

void UnitFlow::EndSentence() {
  for (const PointId point : sentences_) ways_.Open(point, WayKind::Jump);
  sentences_.clear();
}

void UnitFlow::Statements(NodeId list) {
  if (++depth_ > kMostDepth) {
    graph_.AddGap({FlowGapKind::UnknownStatement, list});
    --depth_;
    return;
  }
  for (NodeId child = list + 1; child <= nodes_[list].last;) {
    child = IsStatement(child) ? Statement(child) : nodes_[child].last + 1;
  }
  --depth_;
}

NodeId UnitFlow::Statement(NodeId node) {
  const NodeId end = nodes_[nodes_[node].parent].last;
  NodeId last = node;
  const NodeId next = nodes_[node].last + 1;
  const bool hasNext = next <= end && nodes_[next].entity == Entity::If;
  if (hasNext && VerbOf(next) == Verb::Phrase) {
    last = WithPhrases(node);
  } else if (hasNext && VerbOf(node) == Verb::Search && VerbOf(next) == Verb::Search) {
    Search(node, next);
    last = next;
  } else {
    Dispatch(node);
    ways_.Join(Errors(node, false));
  }
  if ((nodes_[last].flags & codemodel::kEndsSentence) != 0) EndSentence();
  return nodes_[last].last + 1;
}

// A point for each part of the statement.
void UnitFlow::PassParts(NodeId node, PointKind kind) {
  ways_.Pass(node, kind);
  const std::size_t parts = PartsOf(model_, node).size();
  for (std::size_t part = 1; part < parts; ++part) {
    graph_.At(ways_.Pass(node, kind)).part = static_cast<std::uint16_t>(part);
  }
}

void UnitFlow::Dispatch(NodeId node) {
  switch (VerbOf(node)) {
    case Verb::If:
    case Verb::Evaluate:
      return Decide(node);
    case Verb::Perform:
      return Perform(node);
    case Verb::Goto:
      return GoTo(node);
    case Verb::NextSentence:
      return NextSentence(node);
    case Verb::ExitParagraph:
      return paragraph_ == 0 ? Unknown(node) : JumpTo(node, labels_.EndOf(paragraph_));
    case Verb::ExitSection:
      return ExitSection(node);
    case Verb::ExitPerform:
      return ExitPerform(node, false);
    case Verb::ExitPerformCycle:
      return ExitPerform(node, true);
    case Verb::ExitProgram:
      return ExitProgram(node);
    case Verb::StopRun:
    case Verb::Goback:
      return ways_.Reach(ways_.Add(node, PointKind::Leave));
    case Verb::Entry:
      return Entry(node);
    case Verb::Resume:
      return Resume(node);
    case Verb::ExecCics:
      return monitor_.Command(node);
    case Verb::ExecSql:
      return sql_.Statement(node);
    case Verb::Sort:
    case Verb::Merge:
    case Verb::XmlParse:
      return Procedures(node);
    case Verb::ExecOther:
    case Verb::Raise:
    case Verb::Unknown:
      return Unknown(node);
    default:
      if (nodes_[node].entity == Entity::If) return Decide(node);
      PassParts(node, PointKind::Statement);
      if (nodes_[node].entity == Entity::Block) Statements(node);
  }
}

}  // namespace qmrules::workbench::flow::cobol
