#include "workbench/flow/cobol/effectlist.h"

#include <algorithm>
#include <string_view>

namespace qmrules::workbench::flow::cobol {

using codemodel::Entity;
using codemodel::ModelImage;
using codemodel::NodeRecord;
using codemodel::Role;

namespace {

bool IsPart(Role role) {
  return role == Role::Subscript || role == Role::Offset || role == Role::Length;
}

// A function of its argument's size, not of what is in it.
bool IsLength(std::string_view function) {
  return function == "LENGTH" || function == "BYTE-LENGTH";
}

// Calls take (var, isPart) for every VAR below the operand that is read with it. Parts of an operand are what its
// subscripts and reference modification consist of, with all below them; the others are arguments of functions.
template <typename Take>
void ForNested(const ModelImage& model, NodeId operand, Take take) {
  NodeId parts = 0;  // the last node of a part
  for (NodeId node = operand + 1; node <= model.Nodes()[operand].last; ++node) {
    const NodeRecord& record = model.Nodes()[node];
    if (IsPart(record.role)) parts = std::max(parts, record.last);
    if (record.entity != Entity::Var) continue;
    const NodeRecord& around = model.Nodes()[record.parent];
    const bool isMeasured = around.entity == Entity::Func && IsLength(model.Text(around.name));
    if (record.role == Role::LengthOf || isMeasured) {
      node = record.last;
    } else {
      take(node, node <= parts);
    }
  }
}

}  // namespace

bool OperandsOfPoint::Has(const ModelImage& model, NodeId operand) const {
  if (operands.empty()) return true;
  if (operand == statement) return isFirst;
  while (operand != 0 && model.Nodes()[operand].parent != statement) operand = model.Nodes()[operand].parent;
  return std::ranges::find(operands, operand) != operands.end();
}

bool EffectList::Reads() const {
  return phase_ == Phase::Whole || (phase_ == Phase::Success) == operands_.readsOnSuccess;
}

void EffectList::Use(NodeId operand, std::uint16_t feed) {
  if (!Reads()) return;
  const NodeRecord& node = Model().Nodes()[operand];
  if (node.entity == Entity::Var && node.role != Role::AddressOf) {
    UsePlace(places_.Of(operand), operand, feed);
  } else if (node.entity == Entity::Func) {
    ForNested(Model(), operand, [&](NodeId var, bool isPart) {
      if (!isPart) UsePlace(places_.Of(var), var, feed);
    });
  }
}

void EffectList::Subscripts(NodeId operand) {
  if (!Reads() || Model().Nodes()[operand].role == Role::LengthOf) return;
  ForNested(Model(), operand, [&](NodeId var, bool isPart) {
    if (isPart) UsePlace(places_.Of(var), var, kNoFeed);
  });
}

void EffectList::Define(NodeId var, Definition definition) {
  if (Model().Nodes()[var].entity == Entity::Var) DefinePlace(places_.Of(var), var, definition);
}

void EffectList::DefineItem(NodeId item, NodeId operand, Definition definition) {
  if (item != 0) DefinePlace(places_.OfItem(item), operand, definition);
}

void EffectList::UsePlace(const OperandPlace& place, NodeId operand, std::uint16_t feed) {
  if (!Reads() || !operands_.Has(Model(), operand)) return;
  if (place.gap) Gap(*place.gap, operand);
  Effect use;
  use.feed = feed;
  use.operand = operand;
  Put(use, place);
}

void EffectList::DefinePlace(const OperandPlace& place, NodeId operand, Definition definition) {
  const bool onSuccess = definition.certainty == Certainty::OnSuccess || definition.certainty == Certainty::IfGood;
  if (phase_ == Phase::Success && !onSuccess) return;
  if (!operands_.Has(Model(), operand)) return;
  if (place.gap) Gap(*place.gap, operand);
  Effect effect;
  effect.definition = definition.kind;
  effect.feed = definition.feed;
  effect.copies = definition.copies;
  effect.operand = operand;
  effect.kind = EffectKind::MayDefine;
  if (phase_ == Phase::Attempt && onSuccess) {
    if (definition.spoils) Put(effect, place);
    return;
  }
  const bool certain = definition.certainty == Certainty::Always || definition.certainty == Certainty::OnSuccess ||
                       phase_ == Phase::Success;
  if (certain && place.place.IsExact() && !place.partial && place.certain > 0) effect.kind = EffectKind::Define;
  const std::uint64_t size = place.place.first.end - place.place.first.begin;
  if (effect.kind != EffectKind::Define || place.certain >= size) {
    Put(effect, place);
    return;
  }
  OperandPlace rest = place;
  OperandPlace least = place;
  least.place.first.end = rest.place.first.begin = place.place.first.begin + place.certain;
  Put(effect, least);
  effect.kind = EffectKind::MayDefine;
  effect.copies = false;
  Put(effect, rest);
}

void EffectList::Put(Effect effect, const OperandPlace& place) {
  if (place.IsNowhere()) return;
  effect.partial = place.partial;
  effect.place = place.place;
  effects_.all.push_back(std::move(effect));
}

void EffectList::Gap(EffectGapKind kind, NodeId node) {
  const auto same = [&](const EffectGap& gap) { return gap.kind == kind && gap.node == node; };
  // An operand that is used and defined comes twice, one after the other.
  const std::size_t look = std::min<std::size_t>(effects_.gaps.size(), 4);
  if (std::any_of(effects_.gaps.end() - static_cast<std::ptrdiff_t>(look), effects_.gaps.end(), same)) return;
  effects_.gaps.push_back({kind, node});
}

}  // namespace qmrules::workbench::flow::cobol
