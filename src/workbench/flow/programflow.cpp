#include "workbench/flow/programflow.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <utility>
#include <vector>

#include "platform/error.h"
#include "workbench/flow/chainblocks.h"
#include "workbench/flow/chaincollection.h"
#include "workbench/flow/chainlinks.h"
#include "workbench/flow/chainquestion.h"
#include "workbench/flow/flowlanguage.h"
#include "workbench/flow/openreturns.h"

namespace qmrules::workbench::flow {

namespace {

// The other one of a pair of use and definition, as far as it has to do with these bytes of the first: byte by byte
// where the definition copies. Nothing where the bytes are not the first's, or come from no use, as blanks behind a
// short item.
std::optional<Effect> Narrowed(const Effect& own, const Effect& other, const ByteSet& bytes) {
  if (!bytes.Overlaps(own.place.Bytes())) return std::nullopt;
  const bool copies = own.kind == EffectKind::Use ? other.copies : own.copies;
  if (!copies || !own.place.IsExact() || !other.place.IsExact() || own.partial || other.partial) return other;
  const ByteSet asked = bytes.Within(ByteSet(own.place.first));
  if (asked.Empty()) return std::nullopt;
  Effect narrowed = other;
  const std::uint64_t begin = asked.Intervals().front().begin - own.place.first.begin;
  const std::uint64_t end = asked.Intervals().back().end - own.place.first.begin;
  narrowed.place.first.begin = std::min(other.place.first.begin + begin, other.place.first.end);
  narrowed.place.first.end = std::min(other.place.first.begin + end, other.place.first.end);
  if (narrowed.place.first.begin == narrowed.place.first.end) return std::nullopt;
  return narrowed;
}

}  // namespace

struct ProgramFlow::Parts {
  std::shared_ptr<const codemodel::ModelImage> model;
  std::uint32_t unit = 0;
  CallOutcomes outcomes;
  std::size_t mostPoints = 0;
  const FlowLanguage* language = nullptr;
  std::unique_ptr<const FlowGraph> flow;
  std::unique_ptr<const UnitEffects> effects;
  std::unique_ptr<const RangeBodies> bodies;
  std::unique_ptr<BlockBodies> blocks;
  std::unique_ptr<ConditionFinder> conditions;
  std::map<NodeId, ChainArea> areas;
  std::optional<std::vector<ProgramCall>> calls;
  std::optional<std::vector<Argument>> parameters;
  std::map<NodeId, std::vector<Argument>> entries;  // their parameters
  std::vector<PointId> leaves;                      // ascending
  std::vector<PointId> gapPoints;                   // ascending; each once
  std::vector<FlowGap> gapOfPoint;                  // beside them
  std::vector<PointId> lost;                        // of these: where control can go on at a place that is not known

  const FlowGraph& Flow();
  BlockBodies& Blocks();
  const ChainArea& Area(NodeId area);
  // At which the operand has its effects.
  std::vector<PointId> Points(NodeId operand) {
    Flow();
    return effects->PointsOf(operand);
  }
  std::set<NodeId> AreasOf(NodeId operand, bool uses);
  void FindWatchedPoints();
  std::span<const PointId> PointsAround(NodeId node) const;
  void WatchOpenReturns();
  ChainGatherer Gatherer();
  void AddLostWays(NodeId operand, ChainGatherer& gatherer);
  void AddGaps(std::span<const PointId> watched, const QuestionAnswer& answer, NodeId operand,
               ChainGatherer& gatherer) const;
  void FindDefinitions(const ChainArea& area, const AreaEffect& use, const ByteSet& bytes, ChainGatherer& gatherer);
  void FindUses(const ChainArea& area, const AreaEffect& definition, const ByteSet& bytes, ByteSet* atEnd,
                ChainGatherer& gatherer);
  std::vector<Effect> EffectsBeside(NodeId operand, bool isUse, const ByteSet& bytes);
};

const FlowGraph& ProgramFlow::Parts::Flow() {
  if (!flow) {
    flow = std::make_unique<const FlowGraph>(language->BuildFlow(*model, unit));
    effects = language->EffectsOf(*model, unit, *flow);
    FindWatchedPoints();
  }
  return *flow;
}

BlockBodies& ProgramFlow::Parts::Blocks() {
  if (!bodies) {
    bodies = std::make_unique<const RangeBodies>(Flow(), mostPoints);
    blocks = std::make_unique<BlockBodies>(*bodies);
    WatchOpenReturns();
  }
  return *blocks;
}

const ChainArea& ProgramFlow::Parts::Area(NodeId area) {
  const FlowGraph& graph = Flow();
  const auto found = areas.find(area);
  if (found != areas.end()) return found->second;
  return areas.emplace(area, CollectArea(*effects, graph, area, outcomes)).first->second;
}

// Where the program ends, and where it is not known what happens.
void ProgramFlow::Parts::FindWatchedPoints() {
  for (PointId point = 0; point < flow->Points().size(); ++point) {
    if (flow->Points()[point].kind == PointKind::Leave) leaves.push_back(point);
  }
  std::map<PointId, FlowGap> gaps;
  for (const FlowGap& gap : flow->Gaps()) {
    if (gap.kind == FlowGapKind::HandledElsewhere) continue;
    const std::span<const PointId> passed = gap.points.empty() ? PointsAround(gap.node) : std::span(gap.points);
    for (const PointId point : passed) gaps.emplace(point, FlowGap{gap.kind, gap.node});
  }
  for (const auto& [point, gap] : gaps) {
    gapPoints.push_back(point);
    gapOfPoint.push_back(gap);
    // Behind a PERFORM control goes on all the same, so that a question that the gap matters for comes by it.
    const bool isWayMissing = gap.kind == FlowGapKind::UnknownLabel || gap.kind == FlowGapKind::NoAlter;
    const bool performs = model->Nodes()[flow->Points()[point].node].entity == codemodel::Entity::Perform;
    if (isWayMissing && !performs) lost.push_back(point);
  }
}

// Those of the node, or of the nearest one around it that has points: of the statement that a procedure name stands in.
std::span<const PointId> ProgramFlow::Parts::PointsAround(NodeId node) const {
  while (node != 0 && flow->PointsOf(node).empty()) node = model->Nodes()[node].parent;
  return node == 0 ? std::span<const PointId>() : flow->PointsOf(node);
}

void ProgramFlow::Parts::WatchOpenReturns() {
  for (const FlowGap& gap : OpenReturns(*bodies)) {
    const auto place = std::ranges::lower_bound(gapPoints, gap.points.front());
    if (place != gapPoints.end() && *place == gap.points.front()) continue;
    gapOfPoint.insert(gapOfPoint.begin() + (place - gapPoints.begin()), FlowGap{gap.kind, gap.node});
    gapPoints.insert(place, gap.points.front());
  }
}

// With the gap that every answer about the program has.
ChainGatherer ProgramFlow::Parts::Gatherer() {
  ChainGatherer gatherer(*model, Flow());
  if (!Blocks().Bodies().AreReturnsMatched()) {
    gatherer.AddGap(
        flow->Ranges()[kProgramRange].first,
        "Too many of its PERFORM ranges run through each other by GO TO: the end of a range is taken to lead "
        "behind each PERFORM of it, so that some ways told here may not be.");
  }
  return gatherer;
}

// Wherever control goes on from there, it may bring a definition that was made before.
void ProgramFlow::Parts::AddLostWays(NodeId operand, ChainGatherer& gatherer) {
  for (const PointId point : lost) {
    if (bodies->RangesWith(point).empty()) continue;
    const auto gap = std::ranges::lower_bound(gapPoints, point) - gapPoints.begin();
    gatherer.AddGap(gapOfPoint[static_cast<std::size_t>(gap)], operand);
  }
}

// The areas in which the operand is used, or defined.
std::set<NodeId> ProgramFlow::Parts::AreasOf(NodeId operand, bool uses) {
  std::set<NodeId> found;
  const auto take = [&](const Effects& atPoint) {
    for (const Effect& effect : atPoint.all) {
      if (effect.operand != operand || effect.place.area == 0) continue;
      if ((effect.kind == EffectKind::Use) == uses) found.insert(effect.place.area);
    }
  };
  for (const PointId point : Points(operand)) {
    if (flow->Points()[point].kind != PointKind::Entry) {
      take(effects->EffectsAt(point));
    } else if (model->Nodes()[operand].entity == codemodel::Entity::Decl) {
      take(effects->EntryEffects(model->Decl(operand).area));
    }
  }
  return found;
}

void ProgramFlow::Parts::AddGaps(std::span<const PointId> watched, const QuestionAnswer& answer, NodeId operand,
                                 ChainGatherer& gatherer) const {
  for (const ReachedEffect& seen : answer.watched) {
    const auto gap = std::ranges::lower_bound(gapPoints, watched[seen.effect]);
    if (gap == gapPoints.end() || *gap != watched[seen.effect]) continue;
    gatherer.AddGap(gapOfPoint[static_cast<std::size_t>(gap - gapPoints.begin())], operand);
  }
}

ProgramFlow::ProgramFlow(std::shared_ptr<const codemodel::ModelImage> model, std::uint32_t unit, CallOutcomes outcomes,
                         std::size_t mostPoints)
    : parts_(std::make_unique<Parts>()) {
  parts_->language = FlowLanguageOf(*model);
  if (parts_->language == nullptr) {
    throw platform::Error(fmt::format("There is no dataflow for programs in {}.", model->Language()));
  }
  parts_->model = std::move(model);
  parts_->unit = unit;
  parts_->outcomes = std::move(outcomes);
  parts_->mostPoints = mostPoints;
}

ProgramFlow::~ProgramFlow() = default;

const codemodel::ModelImage& ProgramFlow::Model() const {
  return *parts_->model;
}

std::uint32_t ProgramFlow::Unit() const {
  return parts_->unit;
}

const FlowGraph& ProgramFlow::Flow() {
  return parts_->Flow();
}

const RangeBodies& ProgramFlow::Bodies() {
  return parts_->Blocks().Bodies();
}

void ProgramFlow::Parts::FindDefinitions(const ChainArea& area, const AreaEffect& use, const ByteSet& bytes,
                                         ChainGatherer& gatherer) {
  const QuestionStart start{use.point, bytes};
  const auto answer = DefinitionsBefore(Blocks(), area, {&start, 1}, gapPoints);
  for (const ReachedEffect& reached : answer.effects) {
    const AreaEffect& definition = area.Effects()[reached.effect];
    gatherer.Add(definition, &use, reached.bytes);
    gatherer.AddGapsOf(area, definition);
  }
  gatherer.AddGapsOf(area, use);
  AddGaps(gapPoints, answer, use.effect.operand, gatherer);
  AddLostWays(use.effect.operand, gatherer);
}

void ProgramFlow::Parts::FindUses(const ChainArea& area, const AreaEffect& definition, const ByteSet& bytes,
                                  ByteSet* atEnd, ChainGatherer& gatherer) {
  std::vector<PointId> watched = gapPoints;
  if (atEnd != nullptr) {
    watched.clear();
    std::ranges::set_union(gapPoints, leaves, std::back_inserter(watched));
  }
  const QuestionStart start{definition.point, bytes};
  const auto answer = UsesBehind(Blocks(), area, {&start, 1}, watched);
  for (const ReachedEffect& reached : answer.effects) {
    const AreaEffect& use = area.Effects()[reached.effect];
    gatherer.Add(definition, &use, reached.bytes);
    gatherer.AddGapsOf(area, use);
  }
  gatherer.AddGapsOf(area, definition);
  AddGaps(watched, answer, definition.effect.operand, gatherer);
  if (atEnd == nullptr) return;
  for (const ReachedEffect& seen : answer.watched) {
    if (std::ranges::binary_search(leaves, watched[seen.effect])) atEnd->Add(seen.bytes);
  }
}

Chain ProgramFlow::DefinitionsReaching(NodeId occurrence, const ByteSet& bytes) {
  ChainGatherer gatherer = parts_->Gatherer();
  for (const NodeId id : parts_->AreasOf(occurrence, true)) {
    const ChainArea& area = parts_->Area(id);
    for (const std::uint32_t index : area.OfOperand(occurrence)) {
      const AreaEffect& use = area.Effects()[index];
      if (use.IsUse()) parts_->FindDefinitions(area, use, use.bytes.Within(bytes), gatherer);
    }
  }
  return std::move(gatherer).ByDefinition();
}

Chain ProgramFlow::DefinitionsAtEnd(NodeId id, const ByteSet& bytes) {
  const ChainArea& area = parts_->Area(id);
  std::vector<QuestionStart> starts;
  for (const PointId point : parts_->leaves) starts.push_back({point, bytes});
  const auto answer = DefinitionsBefore(parts_->Blocks(), area, starts, parts_->gapPoints);
  ChainGatherer gatherer = parts_->Gatherer();
  for (const ReachedEffect& reached : answer.effects) {
    gatherer.Add(area.Effects()[reached.effect], nullptr, reached.bytes);
    gatherer.AddGapsOf(area, area.Effects()[reached.effect]);
  }
  parts_->AddGaps(parts_->gapPoints, answer, id, gatherer);
  parts_->AddLostWays(id, gatherer);
  return std::move(gatherer).ByDefinition();
}

Chain ProgramFlow::UsesReached(NodeId definition, const ByteSet& bytes, ByteSet* atEnd) {
  ChainGatherer gatherer = parts_->Gatherer();
  for (const NodeId id : parts_->AreasOf(definition, false)) {
    const ChainArea& area = parts_->Area(id);
    for (const std::uint32_t index : area.OfOperand(definition)) {
      const AreaEffect& effect = area.Effects()[index];
      if (!effect.IsUse()) parts_->FindUses(area, effect, effect.bytes.Within(bytes), atEnd, gatherer);
    }
  }
  return std::move(gatherer).ByUse();
}

Chain ProgramFlow::UsesOfStart(NodeId id, const ByteSet& bytes, ByteSet* atEnd) {
  ChainGatherer gatherer = parts_->Gatherer();
  const ChainArea& area = parts_->Area(id);
  for (const AreaEffect& effect : area.Effects()) {
    if (Flow().Points()[effect.point].kind != PointKind::Entry) continue;
    const ByteSet first = effect.bytes.Within(bytes);
    if (!effect.IsUse() && !first.Empty()) parts_->FindUses(area, effect, first, atEnd, gatherer);
  }
  return std::move(gatherer).ByUse();
}

// The effects of the other kind that the statement has where the operand has one, and that belong to it.
std::vector<Effect> ProgramFlow::Parts::EffectsBeside(NodeId operand, bool isUse, const ByteSet& bytes) {
  std::vector<Effect> owns;
  std::set<PointId> points;
  for (const PointId point : Points(operand)) {
    if (flow->Points()[point].kind == PointKind::Entry) continue;
    const Effects atPoint = effects->EffectsAt(point);
    for (const Effect& own : atPoint.all) {
      if (own.operand != operand || (own.kind == EffectKind::Use) != isUse || own.feed == kNoFeed) continue;
      owns.push_back(own);
      const auto ofStatement = flow->PointsOf(flow->Points()[point].node);
      points.insert(ofStatement.begin(), ofStatement.end());
    }
  }
  std::vector<Effect> beside;
  for (const PointId point : points) {
    const Effects atPoint = effects->EffectsAt(point);
    for (const Effect& other : atPoint.all) {
      if ((other.kind == EffectKind::Use) == isUse) continue;
      // The operand can have several effects: on parts of its place, or one that is sure and one that is not.
      for (const Effect& own : owns) {
        if (own.feed != other.feed) continue;
        auto narrowed = Narrowed(own, other, bytes);
        if (!narrowed) continue;
        const bool isWhole = narrowed->place.first == other.place.first;
        beside.push_back(std::move(*narrowed));
        if (isWhole) break;
      }
    }
  }
  return beside;
}

std::vector<Effect> ProgramFlow::FeedsOf(NodeId definition, const ByteSet& bytes) {
  return parts_->EffectsBeside(definition, false, bytes);
}

std::vector<Effect> ProgramFlow::FedBy(NodeId use, const ByteSet& bytes) {
  return parts_->EffectsBeside(use, true, bytes);
}

const std::vector<ProgramCall>& ProgramFlow::Calls() {
  parts_->Flow();
  if (!parts_->calls) parts_->calls = parts_->effects->Calls();
  return *parts_->calls;
}

const std::vector<Argument>& ProgramFlow::Parameters() {
  parts_->Flow();
  if (!parts_->parameters) parts_->parameters = parts_->effects->Parameters();
  return *parts_->parameters;
}

const std::vector<Argument>& ProgramFlow::ParametersAt(NodeId entry) {
  if (entry == 0) return Parameters();
  parts_->Flow();
  const auto [found, isNew] = parts_->entries.try_emplace(entry);
  if (isNew) found->second = parts_->effects->ParametersAt(entry);
  return found->second;
}

std::size_t ProgramFlow::Bytes() const {
  std::size_t bytes = 0;
  if (parts_->flow) bytes += parts_->flow->Bytes();
  if (parts_->bodies) bytes += parts_->bodies->Bytes() + parts_->blocks->Bytes();
  for (const auto& [id, area] : parts_->areas) bytes += area.Bytes();
  return bytes;
}

StatementConditions ProgramFlow::ConditionsOf(NodeId statement) {
  if (!parts_->conditions) parts_->conditions = std::make_unique<ConditionFinder>(Bodies());
  return parts_->conditions->ConditionsOf(statement);
}

}  // namespace qmrules::workbench::flow
