#include "workbench/codemodel/cobol/procedure/searchstatement.h"

#include <fmt/format.h>

#include <string>

namespace qmrules::workbench::codemodel::cobol {
namespace {

// The index that a search of the table without VARYING counts up: the first one of INDEXED BY, as an implicit VAR.
void ImplicitIndex(ModelBuilder& model, NodeId table) {
  const NodeId declaration = model.Node(table).declaration;
  if (declaration == 0 || model.Node(declaration).entity != Entity::Decl) return;
  for (NodeId child = declaration + 1; child <= model.Node(declaration).last; child = model.Node(child).last + 1) {
    if (model.Node(child).entity != Entity::Decl || (model.Decl(child).flags & kIndexName) == 0) continue;
    const std::uint32_t token = model.FirstToken(table);
    const NodeId var = model.Leaf(Entity::Var, token, token);
    NodeRecord& record = model.Node(var);
    record.name = model.Node(child).name;
    record.declaration = child;
    record.usage = VarUsage::InOut;
    record.role = Role::Varying;
    record.flags |= kImplicit;
    return;
  }
}

bool OwnOperands(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  cursor.Accept(Word::All);
  const NodeId table = parser.Operand().Variable(Role::Search, VarUsage::Out);
  if (table == 0) return false;
  if (cursor.Accept(Word::Varying)) return parser.Operand().Variable(Role::Varying, VarUsage::InOut) != 0;
  ImplicitIndex(parser.Model(), table);
  return true;
}

// The WHENs that share their statements, as one COND.
void WhenGroup(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  ModelBuilder& model = parser.Model();
  const NodeId condition = model.Open(Entity::Cond, cursor.Index());
  std::string text;
  while (cursor.Accept(Word::When)) {
    if (!text.empty()) text += " OR ";
    const std::uint32_t first = cursor.Index();
    if (parser.ConditionReader().Read(Role::Source, text).isEmpty) {
      model.Report(Severity::Gap, first, "A condition is missing.");
    }
    if (!parser.AtStatementEnd()) parser.Skip(fmt::format("{} does not fit into the WHEN.", cursor.Text()));
  }
  const TextId id = model.Text(text);
  model.Node(condition).name = id;
  model.Node(condition).detail = id;
  parser.Close(condition);
}

bool AtEnd(StatementParser& parser) {
  const TokenCursor& cursor = parser.Cursor();
  return parser.AtPhrase() && (cursor.At(Word::End) || (cursor.At(Word::At) && cursor.WordAt(1) == Word::End));
}

void Outcomes(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  ModelBuilder& model = parser.Model();
  const NodeId node = model.Open(Entity::If, cursor.Index());
  parser.SetVerb(node, Verb::Search);
  model.Node(node).detail = model.Text("Search");
  while (!cursor.AtEnd()) {
    const std::uint32_t first = cursor.Index();
    if (cursor.At(Word::When)) {
      WhenGroup(parser);
    } else if (AtEnd(parser)) {
      cursor.Accept(Word::At);
      cursor.Next();
      parser.PlainCondition(first, "AT END");
    } else {
      break;
    }
    parser.BlockBefore(Word::When, Role::Then);
  }
  cursor.Accept(Word::EndSearch);
  parser.Close(node);
}

}  // namespace

void ParseSearch(StatementParser& parser, NodeId node) {
  const TokenCursor& cursor = parser.Cursor();
  if (!OwnOperands(parser)) parser.Skip("The table of SEARCH is missing.");
  if (!parser.AtStatementEnd()) parser.Skip(fmt::format("{} does not fit into the SEARCH statement.", cursor.Text()));
  parser.Close(node);
  if (cursor.At(Word::When) || AtEnd(parser)) Outcomes(parser);
}

}  // namespace qmrules::workbench::codemodel::cobol
