#include "workbench/flow/cobol/cobolunit.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "workbench/codemodel/nodewalk.h"
#include "workbench/flow/cobol/entryeffects.h"
#include "workbench/flow/cobol/programcalls.h"
#include "workbench/flow/cobol/statementeffects.h"
#include "workbench/flow/cobol/statementparts.h"

namespace qmrules::workbench::flow::cobol {

using codemodel::Entity;
using codemodel::ModelImage;
using codemodel::NodeRecord;
using codemodel::Role;

namespace {

bool IsNested(Entity entity) {
  return entity == Entity::Var || entity == Entity::Func || entity == Entity::Const || entity == Entity::Ref;
}

// Statements that touch storage which they do not name.
bool TouchesMore(const NodeRecord& node) {
  if (node.entity == Entity::IoStat || node.entity == Entity::Port) return true;
  switch (static_cast<Verb>(node.verb)) {
    case Verb::ExecCics:
    case Verb::ExecDli:
    case Verb::ExecSql:
    case Verb::Generate:
    case Verb::Initiate:
    case Verb::Invoke:
    case Verb::JsonGenerate:
    case Verb::JsonParse:
    case Verb::Search:
    case Verb::Sort:
    case Verb::Terminate:
    case Verb::XmlGenerate:
    case Verb::XmlParse:
      return true;
    default:
      return false;
  }
}

bool Calls(const NodeRecord& node) {
  return static_cast<Verb>(node.verb) == Verb::Call || static_cast<Verb>(node.verb) == Verb::Invoke;
}

class CobolUnit final : public UnitEffects {
 public:
  CobolUnit(const ModelImage& model, std::uint32_t unit, const FlowGraph& flow)
      : model_(model), flow_(flow), facts_(model, unit) {
    FindOperands();
  }

  Effects EffectsAt(PointId point) const override;
  Effects EntryEffects(NodeId area) const override;
  std::vector<PointId> PointsOn(NodeId area) const override;
  std::vector<PointId> PointsOf(NodeId operand) const override;
  std::vector<ProgramCall> Calls() const override { return CallsOf(facts_); }
  std::vector<Argument> Parameters() const override { return ParametersOf(facts_); }
  std::vector<Argument> ParametersAt(NodeId entry) const override { return ParametersOfEntry(facts_, entry); }

 private:
  void FindOperands();
  void FindUnnamed(NodeId statement);
  bool HasPoint(NodeId node, PointKind kind) const;
  void AddPointsOf(NodeId operand, std::vector<PointId>& points) const;
  void AddStatementPoints(NodeId statement, std::vector<PointId>& points) const;
  void AddCounterPoints(NodeId loop, NodeId operand, std::vector<PointId>& points) const;
  bool HasStep(NodeId statement) const;
  OperandsOfPoint OperandsAt(const Point& point) const;

  const ModelImage& model_;
  const FlowGraph& flow_;
  UnitFacts facts_;
  std::vector<std::pair<NodeId, NodeId>> byArea_;  // area and operand, or statement, ascending
  std::vector<NodeId> calls_;                      // statements that can change what is shared
};

void CobolUnit::FindOperands() {
  const NodeId division = facts_.Unit().division;
  if (division == 0) return;
  const NodeId last = model_.Nodes()[division].last;
  const auto vars = model_.NodesOf(Entity::Var);
  for (auto var = std::ranges::lower_bound(vars, division); var != vars.end() && *var <= last; ++var) {
    const NodeId item = model_.Nodes()[*var].declaration;
    if (item == 0 || model_.Nodes()[item].entity != Entity::Decl) continue;
    if (const NodeId area = model_.Decl(item).area) byArea_.emplace_back(area, *var);
  }
  for (codemodel::KindWalk walk(model_, Entity::Stat, division, last); walk.Current() != 0; walk.MoveNext()) {
    const NodeRecord& node = model_.Nodes()[walk.Current()];
    if (cobol::Calls(node)) {
      calls_.push_back(walk.Current());
      const NodeId code = facts_.Register("RETURN-CODE");
      if (code != 0) byArea_.emplace_back(model_.Decl(code).area, walk.Current());
    } else if (TouchesMore(node)) {
      FindUnnamed(walk.Current());
    }
  }
  std::ranges::sort(byArea_);
  byArea_.erase(std::unique(byArea_.begin(), byArea_.end()), byArea_.end());
}

void CobolUnit::FindUnnamed(NodeId statement) {
  Effects effects;
  EffectList list(facts_.Places(), Phase::Whole, effects);
  StatementEffects(facts_, statement, list);
  if (static_cast<Verb>(model_.Nodes()[statement].verb) == Verb::Search) {
    Statement search{facts_, statement, Verb::Search, OperandsBelow(model_, statement)};
    SearchEffects(search, HasStep(statement), list);
  }
  for (const Effect& effect : effects.all) {
    if (effect.operand == statement) byArea_.emplace_back(effect.place.area, statement);
  }
}

bool CobolUnit::HasPoint(NodeId node, PointKind kind) const {
  return std::ranges::any_of(flow_.PointsOf(node), [&](PointId point) { return flow_.Points()[point].kind == kind; });
}

// The flow of the statement counts its counters up at points of their own.
bool CobolUnit::HasStep(NodeId statement) const {
  return std::ranges::any_of(OperandsBelow(model_, statement), [&](NodeId operand) {
    return model_.Nodes()[operand].role == Role::Varying && HasPoint(operand, PointKind::Step);
  });
}

OperandsOfPoint CobolUnit::OperandsAt(const Point& point) const {
  const auto parts = PartsOf(model_, point.node);
  if (parts.empty()) return {};
  const auto verb = static_cast<Verb>(model_.Nodes()[point.node].verb);
  const bool isFirst = point.part == 0;
  const auto& own = parts[std::min<std::size_t>(point.part, parts.size() - 1)];
  return {point.node, own, isFirst, !isFirst && (verb == Verb::Read || verb == Verb::Return)};
}

Effects CobolUnit::EffectsAt(PointId at) const {
  Effects effects;
  const Point& point = flow_.Points()[at];
  const auto statement = [&](Phase phase) {
    EffectList list(facts_.Places(), phase, effects, OperandsAt(point));
    if (static_cast<Verb>(model_.Nodes()[point.node].verb) == Verb::Search) {
      for (const NodeId operand : OperandsBelow(model_, point.node)) list.Subscripts(operand);
      SearchEffects({facts_, point.node, Verb::Search, OperandsBelow(model_, point.node)}, HasStep(point.node), list);
    } else {
      StatementEffects(facts_, point.node, list);
    }
  };
  EffectList whole(facts_.Places(), Phase::Whole, effects);
  switch (point.kind) {
    case PointKind::Entry:
      for (const NodeId area : facts_.Layout().Areas()) cobol::EntryEffects(facts_, area, whole);
      break;
    case PointKind::Statement:
    case PointKind::Leave:
      if (!IsKindOf(model_.Nodes()[point.node].entity, Entity::Stat) ||
          (point.part == 0 && flow_.PointOf(point.node) != at))
        break;
      statement(HasPoint(point.node, PointKind::Completed) ? Phase::Attempt : Phase::Whole);
      break;
    case PointKind::Completed:
      statement(Phase::Success);
      break;
    case PointKind::Condition:
      ConditionEffects(facts_, point.node, whole);
      break;
    case PointKind::Begin:
      BeginEffects(facts_, point.node, whole);
      break;
    case PointKind::Step:
      StepEffects(facts_, point.node, whole);
      break;
    default:
      break;
  }
  return effects;
}

Effects CobolUnit::EntryEffects(NodeId area) const {
  Effects effects;
  EffectList list(facts_.Places(), Phase::Whole, effects);
  cobol::EntryEffects(facts_, area, list);
  return effects;
}

void CobolUnit::AddStatementPoints(NodeId statement, std::vector<PointId>& points) const {
  for (const PointId point : flow_.PointsOf(statement)) {
    const PointKind kind = flow_.Points()[point].kind;
    const bool handles = kind == PointKind::Statement || kind == PointKind::Leave || kind == PointKind::Completed ||
                         kind == PointKind::Condition || kind == PointKind::Begin || kind == PointKind::Step;
    if (handles) points.push_back(point);
  }
}

// The points of the counter that the operand of a loop is, or is the FROM or BY of.
void CobolUnit::AddCounterPoints(NodeId loop, NodeId operand, std::vector<PointId>& points) const {
  NodeId counter = 0;
  for (NodeId child = loop + 1; child <= operand; child = model_.Nodes()[child].last + 1) {
    if (model_.Nodes()[child].role == Role::Varying) counter = child;
  }
  if (counter != 0) AddStatementPoints(counter, points);
}

void CobolUnit::AddPointsOf(NodeId operand, std::vector<PointId>& points) const {
  NodeId owner = operand;
  NodeId below = operand;  // the operand of the owner that this one is or lies in
  while (owner != 0 && IsNested(model_.Nodes()[owner].entity)) {
    below = owner;
    owner = model_.Nodes()[owner].parent;
  }
  if (owner == 0) return;
  if (model_.Nodes()[owner].entity == Entity::Decl) {
    points.push_back(flow_.Ranges()[kProgramRange].entry);
    return;
  }
  // FROM and BY are read where the counter before them is set.
  const Role role = below == owner ? Role::None : model_.Nodes()[below].role;
  const bool ofCounter = role == Role::Varying || role == Role::From || role == Role::By;
  const auto verb = static_cast<Verb>(model_.Nodes()[owner].verb);
  if (verb != Verb::Perform || !ofCounter) AddStatementPoints(owner, points);
  if (ofCounter && (verb == Verb::Perform || verb == Verb::Search)) AddCounterPoints(owner, below, points);
}

std::vector<PointId> CobolUnit::PointsOf(NodeId operand) const {
  std::vector<PointId> points;
  AddPointsOf(operand, points);
  std::ranges::sort(points);
  points.erase(std::unique(points.begin(), points.end()), points.end());
  return points;
}

std::vector<PointId> CobolUnit::PointsOn(NodeId area) const {
  std::vector<PointId> points;
  auto at = std::ranges::lower_bound(byArea_, std::pair<NodeId, NodeId>(area, 0));
  for (; at != byArea_.end() && at->first == area; ++at) AddPointsOf(at->second, points);
  if (std::ranges::binary_search(facts_.SharedAreas(), area)) {
    for (const NodeId call : calls_) AddStatementPoints(call, points);
  }
  std::ranges::sort(points);
  points.erase(std::unique(points.begin(), points.end()), points.end());
  return points;
}

}  // namespace

std::unique_ptr<UnitEffects> EffectsOfUnit(const ModelImage& model, std::uint32_t unit, const FlowGraph& flow) {
  return std::make_unique<CobolUnit>(model, unit, flow);
}

}  // namespace qmrules::workbench::flow::cobol
