#include "workbench/codemodel/cobol/data/headmodel.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "support/memorysources.h"
#include "workbench/codemodel/cobol/reading/reader.h"

namespace qmrules::test {

using namespace workbench::codemodel;
using namespace workbench::codemodel::cobol;

struct HeadModel::Parts {
  explicit Parts(std::string_view source)
      : sources{{"P.CBL", std::string(source)}},
        symbols(CobolWordList()),
        reader(sources, symbols, {.format = SourceFormat::Fixed}),
        text(reader.Read("P.CBL", diagnostics)),
        model(text, diagnostics),
        scope(model, symbols, nullptr),
        cursor(text),
        head(ParseProgramHead(cursor, model, scope, symbols)) {
    for (const Diagnostic& each : diagnostics.Take()) {
      lines += fmt::format("{} {}:{} {}\n", NameOf(each.severity), each.row, each.column, each.text);
    }
  }

  MemorySources sources;
  workbench::codemodel::Diagnostics diagnostics;
  SymbolTable symbols;
  ProgramReader reader;
  ExpandedText text;
  ModelBuilder model;
  ProgramScope scope;
  TokenCursor cursor;
  ProgramHead head;
  std::string lines;
};

HeadModel::HeadModel(std::string_view text)
    : parts_(std::make_unique<Parts>(text.starts_with('\n') ? text.substr(1) : text)) {}
HeadModel::~HeadModel() = default;

std::string HeadModel::WorkingStorage(std::string_view lines) {
  std::string text =
      "       IDENTIFICATION DIVISION.\n       PROGRAM-ID. P.\n       DATA DIVISION.\n"
      "       WORKING-STORAGE SECTION.\n";
  while (!lines.empty()) {
    const std::size_t end = std::min(lines.find('\n'), lines.size());
    if (end != 0) text += fmt::format("       {}\n", lines.substr(0, end));
    lines.remove_prefix(std::min(end + 1, lines.size()));
  }
  return text;
}

std::string HeadModel::Layout() const {
  const ModelBuilder& model = parts_->model;
  std::string layout;
  for (NodeId node = 1; node <= model.LastNode(); ++node) {
    if (model.Node(node).entity != Entity::Decl) continue;
    const DeclRecord& decl = model.Decl(node);
    for (NodeId at = model.Node(node).parent; model.Node(at).entity == Entity::Decl; at = model.Node(at).parent) {
      layout += "  ";
    }
    const std::string name = model.Node(node).name == 0 ? "-" : std::string(model.TextOf(model.Node(node).name));
    layout += fmt::format("{:02} {} {}+{}", decl.level, name, decl.offset, decl.size);
    if (decl.occurs != 1) layout += fmt::format("*{}", decl.occurs);
    layout += '\n';
  }
  return layout;
}

std::string HeadModel::Tree(Entity entity) const {
  const ModelBuilder& model = parts_->model;
  const NodeId top = First(entity);
  std::string tree;
  for (NodeId node = top + 1; top != 0 && node <= model.Node(top).last; ++node) {
    const NodeRecord& record = model.Node(node);
    for (NodeId at = record.parent; at != top; at = model.Node(at).parent) tree += "  ";
    tree += fmt::format("{} {}", workbench::codemodel::NameOf(record.entity), model.TextOf(record.name));
    if (record.usage != VarUsage::None) tree += fmt::format(" {}", workbench::codemodel::NameOf(record.usage));
    if (record.role != Role::None) tree += fmt::format(" {}", workbench::codemodel::NameOf(record.role));
    if (record.declaration != 0) tree += fmt::format(" @{}", model.Node(record.declaration).firstRow);
    tree += '\n';
  }
  return tree;
}

std::string HeadModel::Diagnostics() const {
  return parts_->lines;
}

DeclRecord HeadModel::Item(std::string_view name, std::vector<std::string_view> qualifiers) const {
  std::vector<std::uint32_t> symbols;
  for (const std::string_view qualifier : qualifiers) symbols.push_back(Symbol(qualifier));
  const Resolution resolution = parts_->scope.Resolve(Symbol(name), symbols);
  if (resolution.found != Resolution::Found::One) {
    ADD_FAILURE() << name << " is not one item.";
    return {};
  }
  return parts_->model.Decl(resolution.node);
}

FileRecord HeadModel::File(std::string_view name) const {
  const Resolution resolution = parts_->scope.ResolveFile(Symbol(name));
  if (resolution.found != Resolution::Found::One) {
    ADD_FAILURE() << name << " is no file.";
    return {};
  }
  return parts_->model.File(resolution.node);
}

std::string HeadModel::Text(TextId text) const {
  return std::string(parts_->model.TextOf(text));
}
const NodeRecord& HeadModel::Node(NodeId node) const {
  return parts_->model.Node(node);
}
std::uint32_t HeadModel::Symbol(std::string_view word) const {
  return parts_->symbols.Intern(word);
}

NodeId HeadModel::First(Entity entity) const {
  for (NodeId node = 1; node <= parts_->model.LastNode(); ++node) {
    if (parts_->model.Node(node).entity == entity) return node;
  }
  return 0;
}

std::string HeadModel::StoppedAt() const {
  return parts_->cursor.AtEnd() ? "the end" : std::string(parts_->cursor.Text());
}

const ProgramHead& HeadModel::Head() const {
  return parts_->head;
}
ProgramScope& HeadModel::Scope() const {
  return parts_->scope;
}
ModelBuilder& HeadModel::Model() const {
  return parts_->model;
}

}  // namespace qmrules::test
