#include "workbench/flow/cobol/effectsprogram.h"

#include <utility>

#include "workbench/flow/cobol/cobolunit.h"

namespace qmrules::test {

using workbench::codemodel::Entity;
using workbench::flow::Effect;
using workbench::flow::EffectGap;
using workbench::flow::EffectKind;
using workbench::flow::Effects;
using workbench::flow::kNoFeed;
using workbench::flow::NodeId;
using workbench::flow::PointId;
using workbench::flow::StoragePlace;
using workbench::flow::Stride;

namespace {

std::string TextOf(const StoragePlace& place) {
  std::string text = std::to_string(place.first.begin) + "+" + std::to_string(place.first.end - place.first.begin);
  for (const Stride& stride : place.strides) {
    text += " " + std::to_string(stride.count) + "x" + std::to_string(stride.step);
  }
  return text;
}

std::string_view VerbOf(EffectKind kind) {
  switch (kind) {
    case EffectKind::Use:
      return "use ";
    case EffectKind::Define:
      return "define ";
    case EffectKind::MayDefine:
      return "may define ";
  }
  return "";
}

}  // namespace

EffectsProgram::EffectsProgram(FlowProgram program)
    : program_(std::move(program)),
      effects_(workbench::flow::cobol::EffectsOfUnit(program_.Model(), program_.Unit(), program_.Flow())) {}

std::string EffectsProgram::NameOf(NodeId node) const {
  return std::string(program_.Model().Text(program_.Model().Nodes()[node].name));
}

std::vector<std::string> EffectsProgram::Lines(const Effects& effects) const {
  std::vector<std::string> lines;
  for (const Effect& effect : effects.all) {
    std::string line(VerbOf(effect.kind));
    line += NameOf(effect.operand) + " " + NameOf(effect.place.area) + " " + TextOf(effect.place);
    if (effect.kind != EffectKind::Use) line.append(" ").append(workbench::flow::NameOf(effect.definition));
    if (effect.copies) line += " copies";
    if (effect.partial) line += " partial";
    if (effect.feed != 0 && effect.feed != kNoFeed) line += " #" + std::to_string(effect.feed);
    if (effect.kind == EffectKind::Use && effect.feed == kNoFeed) line += " aside";
    lines.push_back(std::move(line));
  }
  return lines;
}

std::vector<std::string> EffectsProgram::EffectsOf(PointId point) const {
  return Lines(effects_->EffectsAt(point));
}

std::vector<std::string> EffectsProgram::AtEntry(std::string_view area) const {
  return Lines(effects_->EntryEffects(ItemNamed(area)));
}

std::vector<std::string> EffectsProgram::GapsOf(PointId point) const {
  std::vector<std::string> gaps;
  for (const EffectGap& gap : effects_->EffectsAt(point).gaps) {
    gaps.push_back(std::string(workbench::flow::NameOf(gap.kind)) + " " + NameOf(gap.node));
  }
  return gaps;
}

std::vector<std::string> EffectsProgram::PointsOn(std::string_view area) const {
  std::vector<std::string> points;
  for (const PointId point : effects_->PointsOn(ItemNamed(area))) points.push_back(program_.Describe(point));
  return points;
}

NodeId EffectsProgram::ItemNamed(std::string_view name) const {
  for (const NodeId item : program_.Model().NodesOf(Entity::Decl)) {
    if (NameOf(item) == name) return item;
  }
  return 0;
}

}  // namespace qmrules::test
