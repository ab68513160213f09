#include <algorithm>
#include <limits>
#include <string_view>

#include "workbench/codemodel/nodewalk.h"
#include "workbench/flow/cobol/fileitems.h"
#include "workbench/flow/cobol/statementeffects.h"

// READ, WRITE and the other statements on files, SORT and MERGE.
namespace qmrules::workbench::flow::cobol {

using codemodel::Entity;
using codemodel::FileRecord;
using codemodel::ModelImage;
using codemodel::NodeRecord;
using codemodel::Role;

namespace {

constexpr Definition kFromOutside{.kind = DefinitionKind::Input, .feed = kNoFeed};

std::vector<NodeId> FilesOf(const Statement& statement) {
  std::vector<NodeId> files;
  for (const NodeId operand : statement.operands) {
    const NodeId file = statement.Record(operand).declaration;
    const bool isFile = file != 0 && statement.Record(file).entity == Entity::File;
    if (statement.Record(operand).entity == Entity::Ref && isFile) files.push_back(file);
  }
  return files;
}

// The status of each file is set, however the statement ends.
void SetStatus(const Statement& statement, Certainty certainty, EffectList& list) {
  Definition status = kFromOutside;
  status.certainty = certainty;
  for (const NodeId file : FilesOf(statement)) list.DefineItem(list.Model().File(file).status, statement.node, status);
}

bool IsSequential(std::string_view access) {
  return access.empty() || access == "SEQUENTIAL";
}

// The key of the file tells which record is meant, unless records go by in their order. Then a relative file tells with
// its key which one it was.
void KeyEffects(const Statement& statement, NodeId file, EffectList& list) {
  const FileRecord& record = list.Model().File(file);
  if (record.key == 0) return;
  const bool inOrder = IsSequential(list.Model().Text(record.access));
  if (statement.verb == Verb::Start || !inOrder) list.UseItem(record.key, statement.node);
  const bool passes = statement.verb == Verb::Read || (statement.verb == Verb::Write && inOrder);
  if (!passes || list.Model().Text(record.organization) != "RELATIVE") return;
  Definition told = kFromOutside;
  told.certainty = Certainty::Perhaps;
  list.DefineItem(record.key, statement.node, told);
}

// RECORD VARYING … DEPENDING ON.
NodeId SizeItem(const ModelImage& model, NodeId file) {
  for (const NodeId var : codemodel::ChildrenOf(model, file, Entity::Var)) {
    if (model.Nodes()[var].role == Role::DependingOn) return var;
  }
  return 0;
}

void DefineRecordArea(const Statement& statement, NodeId file, NodeId operand, Certainty certainty, EffectList& list) {
  Definition input = kFromOutside;
  input.certainty = certainty;
  list.DefinePlace(RecordArea(statement.facts.Layout(), list.Model(), file), operand, input);
}

}  // namespace

OperandPlace RecordArea(const StorageLayout& layout, const ModelImage& model, NodeId file) {
  OperandPlace place;
  const NodeId first = model.File(file).firstRecord;
  if (first == 0) return place;
  place.place.area = model.Decl(first).area;
  place.place.first = layout.ExtentOf(place.place.area);
  place.certain = std::numeric_limits<std::uint64_t>::max();
  for (const NodeId record : codemodel::ChildrenOf(model, file, Entity::Decl)) {
    const bool isRecord = model.Nodes()[record].entity == Entity::Decl && HasOwnBytes(model.Decl(record));
    if (isRecord) place.certain = std::min(place.certain, layout.LeastBytes(record));
  }
  // The number of its characters may be less than that of any record.
  if (SizeItem(model, file) != 0) place.certain = 0;
  return place;
}

void ReadEffects(const Statement& statement, EffectList& list) {
  for (const NodeId file : FilesOf(statement)) {
    KeyEffects(statement, file, list);
    if (const NodeId size = SizeItem(list.Model(), file)) {
      list.DefinePlace(list.Places().Of(size), statement.node,
                       {.kind = DefinitionKind::Input, .certainty = Certainty::IfGood, .feed = kNoFeed});
    }
  }
  for (const NodeId operand : statement.operands) {
    const NodeRecord& node = statement.Record(operand);
    if (node.entity != Entity::Var) continue;
    if (node.role == Role::Record) {
      const NodeId file = statement.Record(node.declaration).parent;
      const bool isRecord = file != 0 && statement.Record(file).entity == Entity::File;
      if (isRecord) DefineRecordArea(statement, file, operand, Certainty::IfGood, list);
    } else if (Defines(node.usage)) {
      list.Define(operand, {.kind = DefinitionKind::Input, .certainty = Certainty::IfGood, .feed = kNoFeed});
    } else {
      list.Use(operand, kNoFeed);
    }
  }
  SetStatus(statement, Certainty::Always, list);
}

void WriteEffects(const Statement& statement, EffectList& list) {
  const ModelImage& model = statement.Model();
  NodeId from = 0, record = 0;
  for (const NodeId operand : statement.operands) {
    const Role role = statement.Record(operand).role;
    if (role == Role::From) from = operand;
    if (role == Role::Record) record = operand;
    if (role != Role::From && role != Role::Record) list.Use(operand, kNoFeed);
  }
  if (from != 0) list.Use(from, 0);
  if (from != 0 && record != 0) {
    // What is written then is what came from there.
    list.Define(record, {.kind = KindOfMove(model, {from}), .copies = BytesPass(model, from, record)});
  } else if (record != 0) {
    list.Use(record, kNoFeed);
  }
  for (const NodeId file : FilesOf(statement)) {
    if (record == 0) {
      // Only the file is named: which record it is follows from what is moved.
      if (from != 0) {
        OperandPlace place = RecordArea(statement.facts.Layout(), model, file);
        list.DefinePlace(place, statement.node, {.kind = KindOfMove(model, {from}), .certainty = Certainty::Perhaps});
      } else {
        list.UsePlace(RecordArea(statement.facts.Layout(), model, file), statement.node);
      }
    }
    KeyEffects(statement, file, list);
    if (const NodeId size = SizeItem(model, file)) list.UsePlace(list.Places().Of(size), statement.node);
  }
  if (statement.verb == Verb::Write) {
    list.DefineItem(statement.facts.Register("LINAGE-COUNTER"), statement.node,
                    {.kind = DefinitionKind::Computation, .certainty = Certainty::Perhaps, .feed = kNoFeed});
  }
  SetStatus(statement, Certainty::Always, list);
}

void SortEffects(const Statement& statement, EffectList& list) {
  const ModelImage& model = statement.Model();
  for (const NodeId operand : statement.operands) {
    const NodeRecord& node = statement.Record(operand);
    if (node.entity != Entity::Var || node.role != Role::Both) continue;
    // The occurrences of a table change their places.
    list.Use(operand, 0);
    OperandPlace place = list.Places().Of(operand);
    if (node.declaration != 0 && statement.Record(node.declaration).entity == Entity::Decl) {
      const codemodel::DeclRecord& table = model.Decl(node.declaration);
      if (place.place.strides.size() == 1 && (table.flags & codemodel::kOccurs) != 0) {
        place.place.strides.clear();
        const ByteInterval all = AllBytesOf(table);
        place.place.first = {std::min(place.place.first.begin, all.begin), all.end};
        place.certain = table.dependingOn == 0 ? place.place.first.end - place.place.first.begin : 0;
      }
    }
    list.DefinePlace(place, operand, {.kind = DefinitionKind::Computation});
  }
  // Records pass through the areas of all files.
  for (const NodeId file : FilesOf(statement)) {
    DefineRecordArea(statement, file, statement.node, Certainty::Perhaps, list);
  }
  SetStatus(statement, Certainty::Perhaps, list);
  if (!FilesOf(statement).empty()) {
    list.DefineItem(statement.facts.Register("SORT-RETURN"), statement.node, kFromOutside);
  }
}

void FileEffects(const Statement& statement, EffectList& list) {
  for (const NodeId operand : statement.operands) list.Use(operand, kNoFeed);
  for (const NodeId file : FilesOf(statement)) {
    if (statement.verb == Verb::Delete || statement.verb == Verb::Start) {
      KeyEffects(statement, file, list);
    } else if (statement.verb == Verb::Open) {
      list.DefineItem(statement.facts.Register("LINAGE-COUNTER"), statement.node,
                      {.kind = DefinitionKind::Computation, .certainty = Certainty::Perhaps, .feed = kNoFeed});
    }
  }
  SetStatus(statement, Certainty::Always, list);
}

}  // namespace qmrules::workbench::flow::cobol
