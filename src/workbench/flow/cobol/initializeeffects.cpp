#include <algorithm>
#include <functional>
#include <string_view>

#include "workbench/codemodel/cobol/data/layout.h"
#include "workbench/flow/cobol/statementeffects.h"

// INITIALIZE.
namespace qmrules::workbench::flow::cobol {

using codemodel::DataUsage;
using codemodel::DeclRecord;
using codemodel::Entity;
using codemodel::ModelImage;
using codemodel::NodeRecord;
using codemodel::Role;
using codemodel::cobol::AddBytes;
using codemodel::cobol::kMostBytes;
using codemodel::cobol::MultiplyBytes;

namespace {

// Holes of a table that are told apart.
constexpr std::size_t kMostPieces = 4096;

// What is overwritten for sure, and what only perhaps, as bytes of the area.
struct Overwritten {
  ByteSet surely, perhaps;
};

std::string_view CategoryNameOf(const DeclRecord& decl) {
  const bool edited = (decl.flags & codemodel::kEdited) != 0;
  switch (decl.usage) {
    case DataUsage::Index:
      return "INDEX";
    case DataUsage::Pointer:
      return "POINTER";
    case DataUsage::ProcedurePointer:
      return "PROCEDURE-POINTER";
    case DataUsage::ObjectReference:
      return "OBJECT";
    case DataUsage::National:
      if ((decl.flags & codemodel::kNumeric) != 0) break;
      return edited ? "NATIONAL-EDITED" : "NATIONAL";
    case DataUsage::Dbcs:
      return "DBCS";
    default:
      break;
  }
  if ((decl.flags & codemodel::kNumeric) != 0) return edited ? "NUMERIC-EDITED" : "NUMERIC";
  if (edited) return "ALPHANUMERIC-EDITED";
  return (decl.flags & codemodel::kAlphabetic) != 0 ? "ALPHABETIC" : "ALPHANUMERIC";
}

// Compilers differ in whether these are set without REPLACING.
bool IsHandle(const DeclRecord& decl) {
  return decl.usage == DataUsage::Index || decl.usage == DataUsage::Pointer ||
         decl.usage == DataUsage::ProcedurePointer || decl.usage == DataUsage::ObjectReference;
}

enum class Part : std::uint8_t { No, Perhaps, Yes };
using PartOf = std::function<Part(const DeclRecord& decl)>;

// Goes through a group down to its elementary items. What redefines others and what lies below such an item is left as
// it is; items without a name are too, unless the statement selects what it takes in: then they may be among it.
class Items {
 public:
  Items(const StorageLayout& layout, const ModelImage& model, PartOf partOf, bool selects)
      : layout_(layout), model_(model), partOf_(std::move(partOf)), selects_(selects) {}

  // Of one occurrence of the item.
  Overwritten Of(NodeId item, int level = 0) const {
    Overwritten bytes;
    const DeclRecord& decl = model_.Decl(item);
    const ByteInterval whole = BytesOf(decl);
    if (decl.usage != DataUsage::Group || level > kMostLevels) {
      const Part part = decl.usage == DataUsage::Group ? Part::Perhaps : partOf_(decl);
      if (part != Part::No) (part == Part::Yes ? bytes.surely : bytes.perhaps).Add(whole);
      return bytes;
    }
    for (NodeId child = item + 1; child <= model_.Nodes()[item].last; child = model_.Nodes()[child].last + 1) {
      if (model_.Nodes()[child].entity != Entity::Decl) continue;
      const DeclRecord& below = model_.Decl(child);
      const bool nameless = (below.flags & codemodel::kFiller) != 0 && below.usage != DataUsage::Group;
      if (!HasOwnBytes(below) || below.redefines != 0 || (nameless && !selects_)) continue;
      Overwritten once = Of(child, level + 1);
      if (nameless) {
        once.perhaps.Add(once.surely);
        once.surely = {};
      }
      const std::uint64_t slack = layout_.SlackOf(child);
      if (slack <= layout_.SlackOf(item)) {
        Repeat(below, once, bytes);
      } else if (!once.surely.Empty() || !once.perhaps.Empty()) {
        // Behind a table of variable size.
        const ByteInterval all = AllBytesOf(below);
        bytes.perhaps.Add({all.begin - std::min(slack, all.begin - whole.begin), all.end});
      }
    }
    return bytes;
  }

 private:
  // Adds the bytes of one occurrence for all of them.
  static void Repeat(const DeclRecord& decl, const Overwritten& once, Overwritten& bytes) {
    const std::uint32_t least = decl.dependingOn == 0 ? decl.occurs : std::min(decl.occursLeast, decl.occurs);
    const std::uint64_t step = std::min(decl.size, kMostBytes);
    const auto add = [&](const ByteSet& pieces, std::uint32_t from, std::uint32_t to, ByteSet& surely) {
      if (from >= to) return;
      const std::uint32_t count = to - from;
      const bool closed = pieces.Bytes() >= step;
      if (!closed && pieces.Intervals().size() > kMostPieces / count) {
        bytes.perhaps.Add({AddBytes(BytesOf(decl).begin, MultiplyBytes(step, from)),
                           AddBytes(BytesOf(decl).begin, MultiplyBytes(step, to))});
        return;
      }
      for (const ByteInterval& piece : pieces.Intervals()) {
        const std::uint64_t shift = MultiplyBytes(step, from);
        const StoragePlace place{0, {piece.begin + shift, piece.end + shift}, {{step, count}}};
        surely.Add(place.Bytes(kMostPieces));
      }
    };
    add(once.surely, 0, least, bytes.surely);
    add(once.surely, least, decl.occurs, bytes.perhaps);
    add(once.perhaps, 0, decl.occurs, bytes.perhaps);
  }

  const StorageLayout& layout_;
  const ModelImage& model_;
  PartOf partOf_;
  bool selects_;
};

// The bytes are those of the item's first occurrence; the operand may be another one.
void Put(const Statement& statement, NodeId target, const Overwritten& bytes, Definition definition, EffectList& list) {
  const OperandPlace operand = statement.facts.Places().Of(target);
  const std::uint64_t base = BytesOf(statement.Model().Decl(statement.Record(target).declaration)).begin;
  for (const ByteSet* set : {&bytes.surely, &bytes.perhaps}) {
    definition.certainty = set == &bytes.surely ? Certainty::Always : Certainty::Perhaps;
    for (const ByteInterval& piece : set->Intervals()) {
      OperandPlace place = operand;
      place.place.first = {operand.place.first.begin + (piece.begin - base),
                           operand.place.first.begin + (piece.end - base)};
      place.certain = piece.end - piece.begin;
      list.DefinePlace(place, target, definition);
    }
  }
}

// The whole operand: an elementary item, or a part of one.
void PutWhole(NodeId target, Part part, Definition definition, EffectList& list) {
  if (part == Part::No) return;
  definition.certainty = part == Part::Yes ? Certainty::Always : Certainty::Perhaps;
  list.Define(target, definition);
}

void Initialize(const Statement& statement, NodeId target, const PartOf& partOf, Definition definition,
                EffectList& list) {
  const NodeRecord& node = statement.Record(target);
  if (node.declaration == 0 || statement.Record(node.declaration).entity != Entity::Decl) {
    list.Define(target, definition);
    return;
  }
  const DeclRecord& decl = statement.Model().Decl(node.declaration);
  if (decl.usage != DataUsage::Group || (node.flags & codemodel::kRefMod) != 0) {
    PutWhole(target, partOf(decl), definition, list);
  } else {
    const Items items(statement.facts.Layout(), statement.Model(), partOf, statement.Has(codemodel::kSelects));
    Put(statement, target, items.Of(node.declaration), definition, list);
  }
}

PartOf Replaced(std::string_view category) {
  return [category](const DeclRecord& decl) {
    const std::string_view own = CategoryNameOf(decl);
    if (own == category || (category == "KANJI" && own == "DBCS")) return Part::Yes;
    // A category that stands for several.
    const bool isHandle = category == "FUNCTION-POINTER" || category.empty() || decl.usage == DataUsage::Renames;
    return isHandle ? Part::Perhaps : Part::No;
  };
}

}  // namespace

void InitializeEffects(const Statement& statement, EffectList& list) {
  std::vector<NodeId> targets, sources;
  for (const NodeId operand : statement.operands) {
    (statement.Record(operand).role == Role::Target ? targets : sources).push_back(operand);
  }
  const bool selects = statement.Has(codemodel::kSelects);
  if (sources.empty() || selects) {
    const PartOf usual = [selects](const DeclRecord& decl) {
      return selects || IsHandle(decl) ? Part::Perhaps : Part::Yes;
    };
    const Definition constant{.kind = DefinitionKind::ConstantMove, .feed = kNoFeed};
    for (const NodeId target : targets) Initialize(statement, target, usual, constant, list);
  }
  std::uint16_t feed = 0;
  for (const NodeId source : sources) {
    const codemodel::TextId category = statement.Record(source).detail;
    list.Use(source, feed);
    const Definition moved{.kind = KindOfMove(statement.Model(), {source}), .feed = feed};
    for (const NodeId target : targets) {
      Initialize(statement, target, Replaced(statement.Model().Text(category)), moved, list);
    }
    if (feed < kNoFeed - 1) ++feed;
  }
}

}  // namespace qmrules::workbench::flow::cobol
