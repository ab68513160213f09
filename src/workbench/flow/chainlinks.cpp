#include "workbench/flow/chainlinks.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include "workbench/flow/chaincollection.h"

namespace qmrules::workbench::flow {

namespace {

using codemodel::Entity;
using codemodel::ModelImage;

// What an operand names; 0 where it names nothing that is declared.
NodeId DeclarationOf(const ModelImage& model, NodeId operand) {
  const auto& record = model.Nodes()[operand];
  if (IsKindOf(record.entity, Entity::Decl)) return operand;
  return record.entity == Entity::Var ? record.declaration : 0;
}

bool Contains(const ModelImage& model, NodeId node, NodeId other) {
  return node <= other && other <= model.Nodes()[node].last;
}

std::string TextOf(EffectGapKind kind, std::string_view name) {
  switch (kind) {
    case EffectGapKind::UnknownStatement:
      return fmt::format("The statement is not understood; it may read and change {}.", name);
    case EffectGapKind::UnresolvedName:
      return fmt::format("It is not known what {} is; it may be any storage.", name);
    case EffectGapKind::VariableSubscript:
      return fmt::format("A subscript of {} is not constant; it is taken for every occurrence.", name);
    case EffectGapKind::VariableReference:
      return fmt::format("The part of {} is not constant; it is taken for the whole item.", name);
    case EffectGapKind::AddressTaken:
      return fmt::format("The address of {} is set or taken; its storage may be another's.", name);
    case EffectGapKind::SharedStorage:
      return fmt::format("{} is shared with other programs, which may change it.", name);
    case EffectGapKind::MovingItem:
      return fmt::format("{} lies behind a table of variable size; it is taken for every place where it can lie.",
                         name);
  }
  return {};
}

std::string TextOf(FlowGapKind kind, std::string_view name) {
  switch (kind) {
    case FlowGapKind::UnknownStatement:
      return fmt::format("The statement is not understood; it may change {}.", name);
    case FlowGapKind::UnknownLabel:
      return fmt::format("It leads to a name that is not declared; what {} gets there is not known.", name);
    case FlowGapKind::NoAlter:
      return fmt::format("It is not known where it leads; what {} gets there is not known.", name);
    case FlowGapKind::HandledElsewhere:
      return fmt::format("An error here may be handled outside the program, where {} may change.", name);
    case FlowGapKind::AnyStatement:
      return fmt::format(
          "An abend of any statement leads to this label; only those of CICS commands are followed, so {} may have "
          "other "
          "values there.",
          name);
    case FlowGapKind::Debugging:
      return fmt::format("In a program made for debugging, this procedure runs in between and may change {}.", name);
    case FlowGapKind::OpenReturn:
      return fmt::format(
          "A PERFORM that ends here, but was left by GO TO or overlaps another one, may still return from here; what "
          "{} "
          "gets then is not known.",
          name);
  }
  return {};
}

}  // namespace

LinkReason ReasonOf(const ModelImage& model, NodeId definition, NodeId use) {
  const NodeId defined = DeclarationOf(model, definition);
  const NodeId used = DeclarationOf(model, use);
  if (defined == 0 || used == 0) return LinkReason::Direct;
  return Contains(model, defined, used) || Contains(model, used, defined) ? LinkReason::Direct : LinkReason::Overlap;
}

NodeId ChainGatherer::StatementOf(const AreaEffect& effect) const {
  return StatementOfPoint(model_, flow_.Points()[effect.point]);
}

void ChainGatherer::Add(const AreaEffect& definition, const AreaEffect* use, const ByteSet& bytes) {
  const NodeId operand = use == nullptr ? 0 : use->effect.operand;
  const std::vector<NodeId> key{definition.effect.operand, StatementOf(definition), operand,
                                use == nullptr ? 0 : StatementOf(*use),
                                static_cast<NodeId>(definition.effect.definition)};
  const auto [found, isNew] = links_.try_emplace(key);
  ChainLink& link = found->second;
  if (isNew) {
    link.definition = key[0];
    link.definedAt = key[1];
    link.use = key[2];
    link.usedAt = key[3];
    link.area = definition.effect.place.area;
    link.kind = definition.effect.definition;
    link.reason = operand == 0 ? LinkReason::Direct : ReasonOf(model_, link.definition, link.use);
  }
  link.bytes.Add(bytes);
  link.mayDefine = link.mayDefine || !definition.Kills();
}

void ChainGatherer::AddGapsOf(const ChainArea& area, const AreaEffect& effect) {
  const NodeId operand = effect.effect.operand;
  for (const AreaGap& found : area.GapsAt(effect.point)) {
    // What is said of an operand does not concern the variables of its subscripts.
    const bool ofGroup =
        model_.Nodes()[found.gap.node].entity != Entity::Var && Contains(model_, found.gap.node, operand);
    const bool concerns =
        found.gap.kind == EffectGapKind::UnknownStatement || Contains(model_, operand, found.gap.node) || ofGroup;
    if (!concerns) continue;
    AddGap(found.gap.node, TextOf(found.gap.kind, model_.Text(model_.Nodes()[operand].name)));
  }
}

void ChainGatherer::AddGap(const FlowGap& gap, NodeId operand) {
  AddGap(gap.node, TextOf(gap.kind, model_.Text(model_.Nodes()[operand].name)));
}

void ChainGatherer::AddGap(NodeId node, const std::string& text) {
  gaps_.try_emplace({node, text}, AnswerGap{node, text});
}

Chain ChainGatherer::Sorted(NodeId ChainLink::*first, NodeId ChainLink::*second) {
  Chain chain;
  for (auto& [key, link] : links_) chain.links.push_back(std::move(link));
  std::ranges::stable_sort(chain.links, {}, [first, second](const ChainLink& link) {
    return std::array{link.*first, link.*second};
  });
  for (auto& [key, gap] : gaps_) chain.gaps.push_back(std::move(gap));
  return chain;
}

Chain ChainGatherer::ByDefinition() && {
  return Sorted(&ChainLink::definition, &ChainLink::definedAt);
}

Chain ChainGatherer::ByUse() && {
  return Sorted(&ChainLink::use, &ChainLink::usedAt);
}

}  // namespace qmrules::workbench::flow
