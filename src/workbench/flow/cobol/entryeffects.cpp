#include "workbench/flow/cobol/entryeffects.h"

#include <algorithm>

namespace qmrules::workbench::flow::cobol {

using codemodel::DataSectionKind;
using codemodel::DeclRecord;
using codemodel::Entity;
using codemodel::ModelImage;

namespace {

void DefineBytes(NodeId area, ByteInterval bytes, NodeId item, DefinitionKind kind, EffectList& list) {
  OperandPlace place;
  place.place.area = area;
  place.place.first = bytes;
  place.certain = bytes.end - bytes.begin;
  list.DefinePlace(place, item, {.kind = kind, .feed = kNoFeed});
}

// The item and the groups around it, from the outermost one in or as a table on: a VALUE within a table stands for all
// occurrences, and the table as a whole has its first value from it. 0 for an item that is laid over another.
NodeId OutermostTable(const ModelImage& model, NodeId item) {
  NodeId found = item;
  for (NodeId around = item; around != 0 && model.Nodes()[around].entity == Entity::Decl;
       around = model.Nodes()[around].parent) {
    const DeclRecord& decl = model.Decl(around);
    if (decl.redefines != 0) return 0;
    if ((decl.flags & codemodel::kOccurs) != 0) found = around;
  }
  return found;
}

void FirstValues(const UnitFacts& facts, NodeId area, ByteSet& left, EffectList& list) {
  const ModelImage& model = facts.Model();
  for (const NodeId item : facts.Layout().ItemsOf(area)) {
    const DeclRecord& decl = model.Decl(item);
    if (decl.value == 0 || !HasOwnBytes(decl)) continue;
    const NodeId whole = OutermostTable(model, item);
    if (whole == 0) continue;
    // What a group's VALUE or another item of the table has filled is filled already.
    const ByteInterval bytes = AllBytesOf(model.Decl(whole));
    const ByteSet own = left.Within(bytes);
    for (const ByteInterval& piece : own.Intervals()) {
      DefineBytes(area, piece, whole, DefinitionKind::InitialValue, list);
    }
    left.Remove(bytes);
  }
}

bool IsParameter(const UnitFacts& facts, NodeId area) {
  const ModelImage& model = facts.Model();
  const auto isOf = [&](NodeId var) {
    const NodeId item = model.Nodes()[var].declaration;
    return item != 0 && model.Nodes()[item].entity == Entity::Decl && model.Decl(item).area == area;
  };
  return std::ranges::any_of(facts.Parameters(), isOf) || std::ranges::any_of(facts.EntryParameters(), isOf) ||
         facts.CommunicationArea() == area;
}

}  // namespace

void EntryEffects(const UnitFacts& facts, NodeId area, EffectList& list) {
  const ModelImage& model = facts.Model();
  if (area == 0 || area >= model.Nodes().size() || model.Nodes()[area].entity != Entity::Decl) return;
  const DeclRecord& decl = model.Decl(area);
  ByteSet left(facts.Layout().ExtentOf(area));
  const auto defineRest = [&](DefinitionKind kind) {
    for (const ByteInterval& piece : left.Intervals()) DefineBytes(area, piece, area, kind, list);
  };
  const bool isOthers = !facts.IsOwn(area) && (decl.flags & codemodel::kRegister) == 0;
  if (isOthers || (decl.flags & codemodel::kExternal) != 0) {
    list.Gap(EffectGapKind::SharedStorage, area);
    defineRest(DefinitionKind::Unknown);
    return;
  }
  const std::string_view name = model.Text(model.Nodes()[area].name);
  if ((decl.flags & codemodel::kRegister) != 0 && name == "DFHEIBLK") {
    defineRest(DefinitionKind::Input);
  } else if (IsParameter(facts, area)) {
    defineRest(DefinitionKind::Parameter);
  } else if (static_cast<DataSectionKind>(decl.section) == DataSectionKind::Linkage) {
    // Laid over storage by SET ADDRESS, or not at all.
    list.Gap(EffectGapKind::AddressTaken, area);
    defineRest(DefinitionKind::Unknown);
  } else {
    FirstValues(facts, area, left, list);
    defineRest(DefinitionKind::InitialValue);
  }
}

}  // namespace qmrules::workbench::flow::cobol
