#include <algorithm>

#include "workbench/codemodel/cobol/data/itemstack.h"
#include "workbench/flow/cobol/statementeffects.h"

// MOVE and SET.
namespace qmrules::workbench::flow::cobol {

using codemodel::DataUsage;
using codemodel::DeclRecord;
using codemodel::Entity;
using codemodel::ModelImage;
using codemodel::NodeRecord;
using codemodel::Role;

namespace {

constexpr std::uint16_t kMostFeeds = 0xfff0;

enum class Category : std::uint8_t { None, Group, Characters, Other };

Category CategoryOf(const ModelImage& model, NodeId var) {
  const NodeRecord& node = model.Nodes()[var];
  if (node.entity != Entity::Var || node.declaration == 0) return Category::None;
  NodeId item = node.declaration;
  if (model.Nodes()[item].entity != Entity::Decl) return Category::None;
  if (model.Decl(item).usage == DataUsage::Renames) {
    if (model.Decl(item).renamesThrough != 0 || model.Decl(item).redefines == 0) return Category::Group;
    item = model.Decl(item).redefines;
  }
  const DeclRecord& decl = model.Decl(item);
  if (decl.usage == DataUsage::National || decl.usage == DataUsage::Dbcs) return Category::None;
  if ((node.flags & codemodel::kRefMod) != 0) return Category::Characters;
  if (decl.usage == DataUsage::Group) return Category::Group;
  const bool characters = decl.usage == DataUsage::Display && (decl.flags & codemodel::kNumeric) == 0;
  return characters ? Category::Characters : Category::Other;
}

bool Adjusts(const ModelImage& model, NodeId var) {
  const DeclRecord& decl = model.Decl(model.Nodes()[var].declaration);
  if ((model.Nodes()[var].flags & codemodel::kRefMod) != 0) return false;
  return (decl.flags & (codemodel::kJustified | codemodel::kEdited)) != 0;
}

bool IsConstant(const ModelImage& model, NodeId operand) {
  const NodeRecord& node = model.Nodes()[operand];
  if (node.entity == Entity::Const || node.role == Role::LengthOf) return true;
  // A constant entry.
  return node.entity == Entity::Var && node.declaration != 0 &&
         model.Nodes()[node.declaration].entity == Entity::Decl &&
         model.Decl(node.declaration).level == codemodel::cobol::kConstantLevel;
}

void MoveCorresponding(const Statement& statement, EffectList& list) {
  std::uint16_t feed = 0;
  NodeId source = 0;
  for (const NodeId operand : statement.operands) {
    const NodeRecord& node = statement.Record(operand);
    if ((node.flags & codemodel::kImplicit) == 0) continue;
    if (node.role == Role::Source) {
      source = operand;
      list.Use(source, feed);
    } else if (source != 0) {
      Definition definition{.feed = feed, .copies = BytesPass(statement.Model(), source, operand)};
      list.Define(operand, definition);
      if (feed < kMostFeeds) ++feed;
      source = 0;
    }
  }
}

bool IsSwitch(const ModelImage& model, NodeId var) {
  const NodeId item = model.Nodes()[var].declaration;
  return item != 0 && model.Nodes()[item].entity == Entity::Decl && model.Decl(item).usage == DataUsage::Condition;
}

// SET targets … TO | UP BY | DOWN BY sources.
void SetGroup(const std::vector<NodeId>& targets, const std::vector<NodeId>& sources, std::uint16_t feed,
              EffectList& list) {
  const ModelImage& model = list.Model();
  for (const NodeId source : sources) {
    list.Use(source, feed);
    if (model.Nodes()[source].role == Role::AddressOf) list.Gap(EffectGapKind::AddressTaken, source);
  }
  const DefinitionKind kind = KindOfMove(model, sources);
  for (const NodeId target : targets) {
    const NodeRecord& node = model.Nodes()[target];
    if (node.role == Role::AddressOf) {
      // The item lies over other storage from here on.
      list.Gap(EffectGapKind::AddressTaken, target);
      list.Define(target, {.kind = DefinitionKind::Unknown, .certainty = Certainty::Perhaps, .feed = kNoFeed});
    } else if (IsSwitch(model, target)) {
      list.Define(target, {.kind = DefinitionKind::ConstantMove, .feed = kNoFeed});
    } else if (node.role == Role::Both) {
      list.Use(target, feed);
      list.Define(target, {.kind = DefinitionKind::Computation, .feed = feed});
    } else {
      list.Define(target, {.kind = kind, .feed = feed});
    }
  }
}

}  // namespace

bool BytesPass(const ModelImage& model, NodeId source, NodeId target) {
  const Category from = CategoryOf(model, source), to = CategoryOf(model, target);
  if (from == Category::None || to == Category::None) return false;
  // A move from or to a group takes everything for characters.
  const bool passes =
      from == Category::Group || to == Category::Group || (from == Category::Characters && to == Category::Characters);
  return passes && (to == Category::Group || !Adjusts(model, target));
}

DefinitionKind KindOfMove(const ModelImage& model, const std::vector<NodeId>& sources) {
  if (std::ranges::all_of(sources, [&](NodeId source) { return IsConstant(model, source); })) {
    return DefinitionKind::ConstantMove;
  }
  if (sources.size() > 1) return DefinitionKind::Computation;
  const NodeRecord& source = model.Nodes()[sources.front()];
  if (source.entity == Entity::Func) {
    const bool now = model.Text(source.name) == "CURRENT-DATE";
    return now ? DefinitionKind::Input : DefinitionKind::Computation;
  }
  return source.role == Role::AddressOf ? DefinitionKind::Computation : DefinitionKind::Move;
}

void MoveEffects(const Statement& statement, EffectList& list) {
  if (statement.operands.empty()) return;
  const ModelImage& model = statement.Model();
  const NodeId source = statement.operands.front();
  if ((statement.Record(source).flags & codemodel::kCorresponding) != 0) {
    MoveCorresponding(statement, list);
    return;
  }
  list.Use(source, 0);
  const DefinitionKind kind = KindOfMove(model, {source});
  for (std::size_t at = 1; at < statement.operands.size(); ++at) {
    const NodeId target = statement.operands[at];
    list.Define(target, {.kind = kind, .copies = BytesPass(model, source, target)});
  }
}

void SetEffects(const Statement& statement, EffectList& list) {
  std::vector<NodeId> targets, sources;
  std::uint16_t feed = 0;
  for (const NodeId operand : statement.operands) {
    const NodeRecord& node = statement.Record(operand);
    const bool isTarget = node.entity == Entity::Var && Defines(node.usage);
    if (isTarget && !sources.empty()) {
      SetGroup(targets, sources, feed, list);
      targets.clear();
      sources.clear();
      if (feed < kMostFeeds) ++feed;
    }
    (isTarget ? targets : sources).push_back(operand);
  }
  SetGroup(targets, sources, feed, list);
}

}  // namespace qmrules::workbench::flow::cobol
