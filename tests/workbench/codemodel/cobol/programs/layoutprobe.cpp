#include "workbench/codemodel/cobol/programs/layoutprobe.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <sstream>
#include <utility>

#include "workbench/codemodel/cobol/data/datadivision.h"
#include "workbench/codemodel/cobol/reading/reader.h"

namespace qmrules::test {

namespace {

using namespace workbench::codemodel;
using namespace workbench::codemodel::cobol;

// Among the items below the node, the first table whose size another item tells, or 0.
NodeId VaryingTable(const ModelBuilder& model, NodeId node) {
  for (NodeId at = node; at <= model.Node(node).last; ++at) {
    if (model.Node(at).entity == Entity::Decl && model.Decl(at).dependingOn != 0) return at;
  }
  return 0;
}

// The items of one program's head that a statement can name.
class ProbeWriter {
 public:
  ProbeWriter(const ModelBuilder& model, const ProgramScope& scope, SymbolTable& symbols)
      : model_(model), scope_(scope), symbols_(symbols) {}

  // Statements that print the places of the items between two nodes.
  std::string Statements(NodeId first, NodeId last, std::vector<ItemPlace>& expected);

 private:
  bool IsProbed(NodeId node) const;
  std::string Reference(NodeId node) const;
  bool IsUnique(NodeId node) const;
  std::vector<std::uint32_t> Qualifiers(NodeId node) const;

  std::map<std::uint32_t, std::vector<NodeId>> named_;
  const ModelBuilder& model_;
  const ProgramScope& scope_;
  SymbolTable& symbols_;
};

bool ProbeWriter::IsProbed(NodeId node) const {
  if (model_.Node(node).entity != Entity::Decl || model_.Node(node).name == 0) return false;
  const DeclRecord& decl = model_.Decl(node);
  if (decl.usage == DataUsage::Condition || decl.usage == DataUsage::Renames || decl.level == 78) return false;
  if ((decl.flags & (kIndexName | kDynamic)) != 0) return false;
  switch (static_cast<DataSectionKind>(decl.section)) {
    case DataSectionKind::File:
    case DataSectionKind::WorkingStorage:
    case DataSectionKind::LocalStorage:
    case DataSectionKind::Linkage:
      break;
    default:
      return false;
  }
  NodeId record = node;
  while (model_.Node(model_.Node(record).parent).entity == Entity::Decl) record = model_.Node(record).parent;
  if (model_.Node(record).name == 0 || !IsUnique(record)) return false;
  const NodeId table = VaryingTable(model_, node);
  // Linkage has no storage that a number of occurrences could be in.
  if (table != 0 &&
      (decl.section == static_cast<std::uint8_t>(DataSectionKind::Linkage) ||
       model_.Decl(model_.Decl(table).dependingOn).section == static_cast<std::uint8_t>(DataSectionKind::Linkage))) {
    return false;
  }
  return IsUnique(node);
}

// Compilers want a name to be unique among all items, whatever its place among them.
bool ProbeWriter::IsUnique(NodeId node) const {
  const auto name = symbols_.Find(model_.TextOf(model_.Node(node).name));
  const std::vector<std::uint32_t> qualifiers = Qualifiers(node);
  const auto fits = [&](NodeId other) {
    const std::vector<std::uint32_t> around = Qualifiers(other);
    auto at = around.begin();
    for (const std::uint32_t qualifier : qualifiers) {
      at = std::find(at, around.end(), qualifier);
      if (at == around.end()) return false;
      ++at;
    }
    return true;
  };
  for (const NodeId other : named_.at(name)) {
    if (other != node && fits(other)) return false;
  }
  const Resolution resolution = scope_.Resolve(name, qualifiers);
  return resolution.found == Resolution::Found::One && resolution.node == node;
}

std::vector<std::uint32_t> ProbeWriter::Qualifiers(NodeId node) const {
  std::vector<std::uint32_t> qualifiers;
  for (NodeId at = model_.Node(node).parent; at != 0; at = model_.Node(at).parent) {
    const Entity entity = model_.Node(at).entity;
    if (entity != Entity::Decl && entity != Entity::File) break;
    if (model_.Node(at).name != 0) qualifiers.push_back(symbols_.Find(model_.TextOf(model_.Node(at).name)));
  }
  return qualifiers;
}

std::string ProbeWriter::Reference(NodeId node) const {
  std::string reference(model_.TextOf(model_.Node(node).name));
  for (const std::uint32_t qualifier : Qualifiers(node)) reference += fmt::format("\n OF {}", symbols_.Text(qualifier));
  std::string subscripts;
  for (NodeId at = node; at != 0 && model_.Node(at).entity == Entity::Decl; at = model_.Node(at).parent) {
    if ((model_.Decl(at).flags & kOccurs) != 0) subscripts += subscripts.empty() ? "1" : " 1";
  }
  if (!subscripts.empty()) reference += fmt::format(" ({})", subscripts);
  return reference;
}

std::string ProbeWriter::Statements(NodeId first, NodeId last, std::vector<ItemPlace>& expected) {
  for (NodeId node = first; node <= last; ++node) {
    const NodeRecord& record = model_.Node(node);
    if (record.entity == Entity::Decl) named_[symbols_.Find(model_.TextOf(record.name))].push_back(node);
  }
  std::string text;
  for (NodeId node = first; node <= last; ++node) {
    if (!IsProbed(node)) continue;
    const DeclRecord& decl = model_.Decl(node);
    const bool isRecord = model_.Node(model_.Node(node).parent).entity != Entity::Decl;
    const std::string reference = Reference(node);
    // A group's size is that which it has at the moment: let it be the most.
    if (const NodeId table = VaryingTable(model_, node); table != 0) {
      text += fmt::format("MOVE {} TO {}\n", model_.Decl(table).occurs, Reference(model_.Decl(table).dependingOn));
    }
    // Bases of redefining and of other records of a file are their own: the same storage.
    if (isRecord) text += fmt::format("SET PROBE-BASE TO ADDRESS OF {}\n", reference);
    text += fmt::format(
        "SET PROBE-HERE TO ADDRESS OF {}\nCOMPUTE PROBE-OFFSET = PROBE-HERE-N - PROBE-BASE-N\n"
        "MOVE LENGTH OF {} TO PROBE-SIZE\nDISPLAY {} \" \" PROBE-OFFSET \" \" PROBE-SIZE\n",
        reference, reference, expected.size());
    expected.push_back({reference, decl.offset, decl.size});
  }
  return text;
}

constexpr std::string_view kProbeItems =
    "01 PROBE-BASE USAGE POINTER.\n01 PROBE-BASE-N REDEFINES PROBE-BASE PIC S9(18) COMP-5.\n"
    "01 PROBE-HERE USAGE POINTER.\n01 PROBE-HERE-N REDEFINES PROBE-HERE PIC S9(18) COMP-5.\n"
    "01 PROBE-OFFSET PIC 9(9).\n01 PROBE-SIZE PIC 9(9).\n";

// Writes the tokens of a head as free form text, with the probe's own items in WORKING-STORAGE.
class HeadWriter {
 public:
  HeadWriter(const ExpandedText& text, std::uint32_t first, std::uint32_t behind)
      : text_(text), first_(first), behind_(behind) {}
  std::string Write();

 private:
  Word WordAt(std::uint32_t index) const {
    const Token& token = text_.tokens[index];
    return index < behind_ && token.kind == TokenKind::Word ? WordOf(token.symbol) : Word::None;
  }
  bool IsSectionBehindWorkingStorage(std::uint32_t index) const;
  void Add(const Token& token);

  const ExpandedText& text_;
  std::uint32_t first_, behind_;
  std::uint32_t row_ = 0;
  std::string head_;
};

bool HeadWriter::IsSectionBehindWorkingStorage(std::uint32_t index) const {
  if (WordAt(index + 1) != Word::Section) return false;
  switch (WordAt(index)) {
    case Word::LocalStorage:
    case Word::Linkage:
    case Word::Communication:
    case Word::Report:
    case Word::Screen:
      return true;
    default:
      return false;
  }
}

void HeadWriter::Add(const Token& token) {
  const bool isOwnText = !token.Has(kComposed) && !token.Has(kReplaced);
  if (!token.Has(kAdjacent) || !isOwnText) head_ += token.row != row_ ? '\n' : ' ';
  row_ = token.row;
  head_ += text_.Text(token);
}

std::string HeadWriter::Write() {
  bool hasItems = false;
  const auto addItems = [&](std::string_view before) {
    if (!hasItems) head_ += fmt::format("{}.\n{}", before, kProbeItems);
    hasItems = true;
  };
  for (std::uint32_t index = first_; index < behind_; ++index) {
    if (WordAt(index) == Word::Exec) {
      while (index < behind_ && WordAt(index) != Word::EndExec) ++index;
      if (index + 1 < behind_ && text_.tokens[index + 1].kind == TokenKind::Period) ++index;
      continue;
    }
    // Each program stands alone here.
    if (WordAt(index) == Word::Common || (WordAt(index) == Word::Is && WordAt(index + 1) == Word::Common)) continue;
    if (IsSectionBehindWorkingStorage(index)) addItems("\nWORKING-STORAGE SECTION");
    Add(text_.tokens[index]);
    if (!hasItems && WordAt(index) == Word::Section && index > first_ && WordAt(index - 1) == Word::WorkingStorage) {
      addItems("");
      ++index;  // the full stop
    }
  }
  addItems("\nWORKING-STORAGE SECTION");
  return std::move(head_);
}

bool AtProgram(const TokenCursor& cursor) {
  return (cursor.At(Word::Identification) || cursor.At(Word::Id)) && cursor.WordAt(1) == Word::Division;
}

}  // namespace

std::vector<LayoutProbe> ProbesOf(MemorySources& sources, std::string_view file) {
  SymbolTable symbols(CobolWordList());
  Diagnostics ofReading, diagnostics;
  ProgramReader reader(sources, symbols, {});
  const ExpandedText text = reader.Read(file, ofReading);
  std::vector<LayoutProbe> probes;
  TokenCursor cursor(text);
  ModelBuilder model(text, diagnostics);
  while (!cursor.AtEnd()) {
    while (!cursor.AtEnd() && !AtProgram(cursor)) cursor.Next();
    if (cursor.AtEnd()) break;
    const std::uint32_t first = cursor.Index();
    const NodeId before = model.LastNode();
    ProgramScope scope(model, symbols, nullptr);
    ParseProgramHead(cursor, model, scope, symbols);
    LayoutProbe probe;
    probe.name = fmt::format("{}-{}", file, probes.size() + 1);
    const std::string statements =
        ProbeWriter(model, scope, symbols).Statements(before + 1, model.LastNode(), probe.expected);
    probe.text = fmt::format("{}\nPROCEDURE DIVISION.\nPROBE-START.\n{}STOP RUN.\n",
                             HeadWriter(text, first, cursor.Index()).Write(), statements);
    probes.push_back(std::move(probe));
  }
  for (const Diagnostic& diagnostic : diagnostics.Take()) {
    if (probes.empty()) break;
    probes[0].diagnostics.push_back(fmt::format("{}:{} {}", diagnostic.row, diagnostic.column, diagnostic.text));
  }
  return probes;
}

std::vector<ItemPlace> PrintedPlaces(const LayoutProbe& probe, std::string_view output) {
  std::vector<ItemPlace> places;
  std::istringstream lines{std::string(output)};
  std::size_t index = 0;
  std::int64_t offset = 0;
  std::uint64_t size = 0;
  while (lines >> index >> offset >> size && index < probe.expected.size()) {
    places.push_back({probe.expected[index].item, static_cast<std::uint64_t>(offset), size});
  }
  return places;
}

}  // namespace qmrules::test
