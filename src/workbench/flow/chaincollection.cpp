#include "workbench/flow/chaincollection.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace qmrules::workbench::flow {

namespace {

using codemodel::Entity;
using codemodel::ModelImage;

// The area's part of what one point does.
void Take(Effects effects, PointId point, NodeId area, std::vector<AreaEffect>& taken, std::vector<AreaGap>& gaps) {
  bool touches = false;
  for (Effect& effect : effects.all) {
    if (effect.place.area != area) continue;
    touches = true;
    ByteSet bytes = effect.place.Bytes();
    taken.push_back({point, std::move(effect), std::move(bytes)});
  }
  if (!touches) return;
  for (const EffectGap& gap : effects.gaps) gaps.push_back({point, gap});
}

// Whether control can go on behind the call without the program having run.
bool CanFail(const FlowGraph& flow, PointId call) {
  const auto isException = [](const Way& way) { return way.kind == WayKind::Exception; };
  const auto points = flow.PointsOf(flow.Points()[call].node);
  return std::ranges::any_of(flow.WaysOut(call), isException) ||
         std::ranges::any_of(points, [&](PointId point) { return flow.Points()[point].kind == PointKind::Completed; });
}

// Puts what the called programs do in the place of what any program might do.
void RefineCalls(const FlowGraph& flow, const CallOutcomes& outcomes, std::vector<AreaEffect>& effects) {
  std::vector<AreaEffect> refined;
  for (AreaEffect& effect : effects) {
    const bool isCall = !effect.IsUse() && effect.effect.definition == DefinitionKind::Call && !effect.effect.partial &&
                        effect.effect.place.IsExact();
    const auto outcome =
        isCall ? outcomes(flow.Points()[effect.point].node, effect.effect.operand, effect.effect.place) : std::nullopt;
    if (!outcome) {
      refined.push_back(std::move(effect));
      continue;
    }
    AreaEffect part = effect;
    part.effect.kind = CanFail(flow, effect.point) ? EffectKind::MayDefine : EffectKind::Define;
    part.bytes = outcome->surely.Within(effect.bytes);
    refined.push_back(part);
    part.effect.kind = EffectKind::MayDefine;
    part.bytes = outcome->perhaps.Within(effect.bytes);
    refined.push_back(std::move(part));
  }
  effects = std::move(refined);
}

}  // namespace

NodeId StatementOfPoint(const ModelImage& model, const Point& point) {
  NodeId node = point.node;
  while (node != 0 && model.Nodes()[node].entity == Entity::Var) node = model.Nodes()[node].parent;
  return node;
}

ChainArea CollectArea(const UnitEffects& effects, const FlowGraph& flow, NodeId area, const CallOutcomes& outcomes) {
  const PointId entry = flow.Ranges()[kProgramRange].entry;
  std::vector<AreaEffect> found;
  std::vector<AreaGap> gaps;
  Take(effects.EntryEffects(area), entry, area, found, gaps);
  for (const PointId point : effects.PointsOn(area)) Take(effects.EffectsAt(point), point, area, found, gaps);
  if (outcomes) RefineCalls(flow, outcomes, found);
  return {std::move(found), std::move(gaps)};
}

}  // namespace qmrules::workbench::flow
