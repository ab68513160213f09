#include "support/cobolmodel.h"

#include <algorithm>
#include <stdexcept>

#include "support/memorysources.h"
#include "workbench/codemodel/cobol/cobolfrontend.h"
#include "workbench/codemodel/cobol/procedure/verbs.h"

namespace qmrules::test {

using workbench::codemodel::Diagnostic;
using workbench::codemodel::Entity;
using workbench::codemodel::IsKindOf;
using workbench::codemodel::NameOf;
using workbench::codemodel::NodeId;
using workbench::codemodel::NodeRecord;

namespace cobol = workbench::codemodel::cobol;

namespace {

std::string Indented(std::string_view text) {
  std::string indented;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find('\n', at), text.size());
    if (end > at) indented.append("       ").append(text.substr(at, end - at));
    indented += '\n';
    at = end + 1;
  }
  return indented;
}

bool IsOutline(const NodeRecord& node) {
  return IsKindOf(node.entity, Entity::Stat) || IsKindOf(node.entity, Entity::Label) || node.entity == Entity::Cond;
}

}  // namespace

CobolModel::CobolModel(std::string_view annotated) {
  if (annotated.starts_with('\n')) annotated.remove_prefix(1);
  source_ = Annotated(annotated);
  MemorySources sources{{"program.cbl", source_.text}};
  cobol::CobolFrontEnd frontEnd(sources, {.format = cobol::SourceFormat::Fixed});
  auto programs = frontEnd.Translate("program.cbl", [] { return false; });
  if (programs.empty()) throw std::invalid_argument("The text holds no program.");
  data_ = std::move(programs.front().model);
}

CobolModel CobolModel::Of(std::string_view workingStorage, std::string_view procedures) {
  std::string text =
      Indented("IDENTIFICATION DIVISION.\nPROGRAM-ID. PROBE.\nDATA DIVISION.\nWORKING-STORAGE SECTION.\n");
  text += Indented(workingStorage);
  text += Indented("PROCEDURE DIVISION.\n");
  return CobolModel(text + Indented(procedures));
}

std::string CobolModel::LineOf(const NodeRecord& node) const {
  std::string line(NameOf(node.entity));
  const auto add = [&](std::string_view word) {
    if (!word.empty()) line.append(" ").append(word);
  };
  add(Text(node.entity == Entity::If ? node.detail : node.name));
  add(NameOf(node.usage));
  add(NameOf(node.role));
  if ((node.flags & workbench::codemodel::kImplicit) != 0) add("implicit");
  return line;
}

NodeId CobolModel::NodeAt(std::string_view mark) const {
  const SourceMark& place = source_.At(mark);
  NodeId found = 0;
  for (NodeId id = 1; id < data_.nodes.size(); ++id) {
    const NodeRecord& node = Node(id);
    if (node.position != place.offset || (node.flags & workbench::codemodel::kImplicit) != 0) continue;
    if (place.end == place.offset) return id;
    if (node.endPosition == place.end) found = id;
  }
  return found;
}

std::string CobolModel::At(std::string_view mark) const {
  const NodeId found = NodeAt(mark);
  if (found == 0) return "nothing";
  std::string line = LineOf(Node(found));
  if (Node(found).declaration != 0) line.append(" ").append(std::to_string(Node(Node(found).declaration).firstRow));
  return line;
}

NodeId CobolModel::Division() const {
  return data_.units.front().division;
}

std::string CobolModel::Lines(NodeId top, bool outline) const {
  std::string lines;
  for (NodeId id = top + 1; id <= Node(top).last; ++id) {
    const NodeRecord& node = Node(id);
    if (outline && !IsOutline(node)) continue;
    for (NodeId up = node.parent; up != top; up = Node(up).parent) lines += "  ";
    lines.append(LineOf(node)).append("\n");
  }
  return lines;
}

std::string CobolModel::Tree(NodeId node) const {
  return Lines(node == 0 ? Division() : node, false);
}

std::string CobolModel::Outline() const {
  return Lines(Division(), true);
}

std::vector<std::string> CobolModel::Statements() const {
  std::vector<std::string> statements;
  for (const NodeRecord& node : data_.nodes) {
    const bool isPlain = (node.flags & workbench::codemodel::kImplicit) == 0 && node.verb != 0;
    const bool isEntry = (node.flags & workbench::codemodel::kPortUsing) != 0;
    const bool isPhrase = node.verb == static_cast<std::uint8_t>(cobol::Verb::Phrase);
    if (!IsKindOf(node.entity, Entity::Stat) || !isPlain || isEntry || isPhrase) continue;
    statements.push_back(std::to_string(node.firstRow) + " " + Text(node.name));
  }
  return statements;
}

std::vector<std::string> CobolModel::Conditions() const {
  std::vector<std::string> conditions;
  for (const NodeRecord& node : data_.nodes) {
    if (node.entity == Entity::Cond) conditions.push_back(Text(node.detail));
  }
  return conditions;
}

std::vector<std::string> CobolModel::Diagnostics() const {
  std::vector<std::string> diagnostics;
  for (const Diagnostic& diagnostic : data_.diagnostics) {
    diagnostics.push_back(std::string(NameOf(diagnostic.severity)) + " " + std::to_string(diagnostic.row) + ":" +
                          std::to_string(diagnostic.column) + " " + diagnostic.text);
  }
  return diagnostics;
}

NodeId CobolModel::Find(Entity entity, std::string_view name) const {
  for (NodeId id = 1; id < data_.nodes.size(); ++id) {
    if (Node(id).entity == entity && Text(Node(id).name) == name) return id;
  }
  return 0;
}

}  // namespace qmrules::test
