#include <algorithm>
#include <optional>
#include <string_view>

#include "workbench/codemodel/cobol/data/layout.h"
#include "workbench/flow/cobol/statementeffects.h"

// STRING, UNSTRING, INSPECT, EXAMINE, TRANSFORM.
namespace qmrules::workbench::flow::cobol {

using codemodel::DataUsage;
using codemodel::Entity;
using codemodel::NodeRecord;
using codemodel::Role;

namespace {

constexpr std::uint16_t kCounterFeed = 1;
constexpr Definition kPerhaps{.kind = DefinitionKind::Computation, .certainty = Certainty::Perhaps};

// The characters of a literal between plain quotes; nothing for one in another notation.
std::optional<std::uint64_t> LiteralBytes(std::string_view text) {
  if (text.size() < 2 || (text.front() != '"' && text.front() != '\'') || text.back() != text.front()) return {};
  std::uint64_t bytes = 0;
  for (std::size_t at = 1; at + 1 < text.size(); ++at, ++bytes) {
    const auto character = static_cast<unsigned char>(text[at]);
    if (character >= 0x80) return {};
    if (text[at] == text.front()) ++at;
  }
  return bytes;
}

// How many bytes a sending item has that is taken as a whole.
std::optional<std::uint64_t> SourceBytes(const Statement& statement, NodeId operand) {
  const NodeRecord& node = statement.Record(operand);
  if (node.entity == Entity::Const) return LiteralBytes(statement.Model().Text(node.name));
  if (node.entity != Entity::Var || node.declaration == 0) return {};
  if (statement.Record(node.declaration).entity != Entity::Decl) return {};
  const codemodel::DeclRecord& decl = statement.Model().Decl(node.declaration);
  const bool characters =
      decl.usage == DataUsage::Group || (decl.usage == DataUsage::Display && (decl.flags & codemodel::kNumeric) == 0);
  const OperandPlace place = statement.facts.Places().Of(operand);
  if (!characters || place.partial || (decl.flags & codemodel::kDynamic) != 0) return {};
  return place.certain;
}

// Without a pointer, and when all sending items go in whole, it is known how far the receiving one is filled.
std::optional<std::uint64_t> FilledBytes(const Statement& statement) {
  std::uint64_t filled = 0;
  for (const NodeId operand : statement.operands) {
    const Role role = statement.Record(operand).role;
    if (role == Role::Pointer || role == Role::Delimiter) return {};
    if (role != Role::Source) continue;
    const std::optional<std::uint64_t> bytes = SourceBytes(statement, operand);
    if (!bytes) return {};
    filled = codemodel::cobol::AddBytes(filled, *bytes);
  }
  return filled;
}

// The first bytes are overwritten; behind them everything stays.
void DefineFilled(const Statement& statement, NodeId target, std::uint64_t filled, EffectList& list) {
  OperandPlace place = statement.facts.Places().Of(target);
  if (place.partial || place.certain < place.place.first.end - place.place.first.begin) {
    list.Define(target, kPerhaps);
    return;
  }
  place.place.first.end = std::min(place.place.first.end, place.place.first.begin + filled);
  place.certain = place.place.first.end - place.place.first.begin;
  list.DefinePlace(place, target, {.kind = DefinitionKind::Computation});
}

// A counter or pointer that the statement may change.
void CountEffects(NodeId counter, std::uint16_t feed, EffectList& list) {
  list.Use(counter, feed);
  list.Define(counter, {.kind = DefinitionKind::Computation, .certainty = Certainty::Perhaps, .feed = feed});
}

}  // namespace

void StringEffects(const Statement& statement, EffectList& list) {
  for (const NodeId operand : statement.operands) {
    switch (statement.Record(operand).role) {
      case Role::Source:
        list.Use(operand, 0);
        break;
      case Role::Target:
        if (const std::optional<std::uint64_t> filled = FilledBytes(statement)) {
          DefineFilled(statement, operand, *filled, list);
        } else {
          list.Define(operand, kPerhaps);
        }
        break;
      case Role::Pointer:
        list.Use(operand, kCounterFeed);
        list.Define(operand, {.kind = DefinitionKind::Computation,
                              .certainty = Certainty::IfGood,
                              .feed = kCounterFeed,
                              .spoils = true});
        break;
      default:
        list.Use(operand, kNoFeed);
        break;
    }
  }
}

void UnstringEffects(const Statement& statement, EffectList& list) {
  const auto isPointer = [&](NodeId operand) { return statement.Record(operand).role == Role::Pointer; };
  const bool points = std::ranges::any_of(statement.operands, isPointer);
  bool isFirst = true;
  bool isSource = true;
  for (const NodeId operand : statement.operands) {
    const NodeRecord& node = statement.Record(operand);
    if (isSource || node.role == Role::Delimiter) {
      list.Use(operand, isSource ? std::uint16_t{0} : kNoFeed);
      isSource = false;
    } else if (node.role == Role::Pointer || node.role == Role::Tally) {
      CountEffects(operand, node.role == Role::Pointer ? kCounterFeed : kCounterFeed + 1, list);
    } else {
      // Without a pointer there is always something to put into the first one.
      Definition definition = kPerhaps;
      if (isFirst && !points) definition.certainty = Certainty::Always;
      list.Define(operand, definition);
      isFirst = false;
    }
  }
}

void InspectEffects(const Statement& statement, EffectList& list) {
  std::uint16_t feed = kCounterFeed;
  for (const NodeId operand : statement.operands) {
    const NodeRecord& node = statement.Record(operand);
    if (node.role == Role::Tally && Reads(node.usage)) {
      // Only what is counted is added.
      if (!statement.operands.empty()) list.Use(statement.operands.front(), feed);
      CountEffects(operand, feed, list);
      if (feed < kNoFeed - 1) ++feed;
    } else if (node.role == Role::Tally) {
      list.Define(operand, {.kind = DefinitionKind::Computation});
    } else {
      const bool feeds = node.role == Role::Source || node.role == Role::Both;
      list.Use(operand, feeds ? std::uint16_t{0} : kNoFeed);
      if (Defines(node.usage)) list.Define(operand, kPerhaps);
    }
  }
}

}  // namespace qmrules::workbench::flow::cobol
