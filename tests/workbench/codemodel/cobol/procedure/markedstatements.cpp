#include "workbench/codemodel/cobol/procedure/markedstatements.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <map>

#include "support/annotatedsource.h"
#include "support/memorysources.h"
#include "workbench/codemodel/cobol/cobolfrontend.h"

namespace qmrules::test {
namespace {

using workbench::codemodel::Diagnostic;
using workbench::codemodel::Entity;
using workbench::codemodel::IsKindOf;
using workbench::codemodel::NameOf;
using workbench::codemodel::NodeId;
using workbench::codemodel::NodeRecord;
using workbench::codemodel::Role;
using workbench::codemodel::VarUsage;
namespace cobol = workbench::codemodel::cobol;

constexpr std::string_view kHead =
    "       IDENTIFICATION DIVISION.\n"
    "       PROGRAM-ID. PROBE.\n";
constexpr std::string_view kIndent = "           ";

std::string Indented(std::string_view text) {
  std::string indented;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find('\n', at), text.size());
    indented.append(kIndent).append(text.substr(at, end - at)).append("\n");
    at = end + 1;
  }
  return indented;
}

std::string NameOfUsage(VarUsage usage) {
  switch (usage) {
    case VarUsage::None:
      return "None";
    case VarUsage::In:
      return "In";
    case VarUsage::Out:
      return "Out";
    case VarUsage::InOut:
      return "InOut";
  }
  return "";
}

std::string MarkOf(const NodeRecord& node) {
  // Where control goes.
  if (node.entity == Entity::Ref && node.role == Role::None) return "Procedure";
  std::string name(NameOf(node.role));
  if (node.entity == Entity::Var) name += NameOfUsage(node.usage);
  if ((node.flags & workbench::codemodel::kByContent) != 0) name += "ByContent";
  if ((node.flags & workbench::codemodel::kCorresponding) != 0) name += "Corresponding";
  if ((node.flags & workbench::codemodel::kOmitted) != 0) name += "Omitted";
  return name;
}

bool IsOperand(const NodeRecord& node) {
  return node.entity == Entity::Var || node.entity == Entity::Const || node.entity == Entity::Func ||
         node.entity == Entity::Ref;
}

// The innermost name that a variable's text begins with.
bool BeginsWith(std::string_view text, std::string_view name) {
  for (const std::string_view before : {"LENGTH OF ", "ADDRESS OF "}) {
    if (text.starts_with(before)) text.remove_prefix(before.size());
  }
  // A host variable is qualified from the left.
  const std::size_t point = text.rfind('.');
  if (point != std::string_view::npos && point + 1 < text.size()) text.remove_prefix(point + 1);
  return text.starts_with(name);
}

}  // namespace

MarkedStatements::MarkedStatements(std::string_view divisions, std::string_view statements) {
  std::string before(kHead);
  before.append(divisions).append("       PROCEDURE DIVISION.\n       MAIN.\n");
  expected_ = Indented(statements);
  const std::string clean = before + Annotated(expected_).text;
  MemorySources sources{{"probe.cbl", clean}};
  cobol::CobolFrontEnd frontEnd(sources, {.format = cobol::SourceFormat::WideFixed});
  auto programs = frontEnd.Translate("probe.cbl", [] { return false; });
  if (programs.empty()) throw std::runtime_error("The text holds no program.");
  model_ = std::move(programs[0].model);
  const auto rows = static_cast<std::uint32_t>(std::ranges::count(before, '\n'));
  for (const Diagnostic& diagnostic : model_.diagnostics) {
    // Columns of the statements are counted without the indentation.
    const std::int64_t row = std::int64_t{diagnostic.row} - rows;
    const std::int64_t column = std::int64_t{diagnostic.column} - static_cast<std::int64_t>(kIndent.size());
    diagnostics_.push_back(std::to_string(row) + ":" + std::to_string(column) + " " + diagnostic.text);
  }
  Read(clean, before.size());
}

void MarkedStatements::Read(const std::string& text, std::size_t statements) {
  std::map<std::size_t, std::string> heads;
  std::map<std::size_t, std::string> tails;
  for (const NodeRecord& node : model_.nodes) {
    const bool isStatement = IsKindOf(node.entity, Entity::Stat) && node.entity != Entity::Block;
    if (node.position < statements && (node.flags & workbench::codemodel::kImplicit) == 0) continue;
    if (isStatement && node.position >= statements && (node.flags & workbench::codemodel::kImplicit) == 0) {
      statements_.push_back(std::string(NameOf(node.entity)) + " " + model_.texts[node.name]);
    }
    if (!IsOperand(node)) continue;
    const std::string& name = model_.texts[node.name];
    if ((node.flags & workbench::codemodel::kImplicit) != 0) {
      if (node.position < statements) continue;
      implicit_.push_back(std::string(NameOf(node.role)) + " " + name + " " + std::string(NameOf(node.usage)));
      continue;
    }
    const std::string_view spelled = std::string_view(text).substr(node.position, node.endPosition - node.position);
    const bool tied = node.declaration != 0 && model_.texts[model_.nodes[node.declaration].name] == name;
    if (node.entity == Entity::Var && (!tied || !BeginsWith(spelled, name))) untied_.push_back(std::string(spelled));
    heads[node.position] += "$" + MarkOf(node) + "[[";
    tails[node.endPosition] += "]]";
  }
  for (std::size_t at = statements; at <= text.size(); ++at) {
    modelled_ += tails[at] + heads[at];
    if (at < text.size()) modelled_ += text[at];
  }
}

std::vector<NodeRecord> MarkedStatements::Nodes(Entity entity) const {
  std::vector<NodeRecord> nodes;
  const NodeId division = model_.units[0].division;
  for (NodeId node = division; node <= model_.nodes[division].last; ++node) {
    if (model_.nodes[node].entity == entity) nodes.push_back(model_.nodes[node]);
  }
  return nodes;
}

MarkedStatements ExpectMarked(std::string_view divisions, std::string_view statements) {
  MarkedStatements marked(divisions, statements);
  EXPECT_EQ(marked.Modelled(), marked.Expected());
  EXPECT_THAT(marked.Diagnostics(), testing::IsEmpty());
  EXPECT_THAT(marked.Untied(), testing::IsEmpty());
  return marked;
}

}  // namespace qmrules::test
