#include "workbench/codemodel/cobol/procedure/clauses.h"

#include <string>

namespace qmrules::workbench::codemodel::cobol {

bool AtSpelled(StatementParser& parser, std::string_view word, std::uint32_t ahead) {
  const Token& token = parser.Cursor().Ahead(ahead);
  return token.kind == TokenKind::Word && parser.Symbols().Text(token.symbol) == word;
}

bool AcceptSpelled(StatementParser& parser, std::string_view word) {
  if (!AtSpelled(parser, word)) return false;
  parser.Cursor().Next();
  return true;
}

bool Need(StatementParser& parser, bool present, std::string_view what) {
  if (!present) parser.Skip(std::string(what));
  return present;
}

NodeId OperandOrWord(StatementParser& parser, Role role) {
  TokenCursor& cursor = parser.Cursor();
  if (cursor.At(TokenKind::Word)) {
    const std::uint32_t symbol = cursor.Current().symbol;
    const bool known = parser.Scope().IsDeclared(symbol) || parser.Scope().IsRegister(symbol);
    if (!known && (WordOf(symbol) == Word::None || !parser.Operand().AtOperand()))
      return parser.Operand().OtherName(role);
  }
  return parser.Operand().Operand(role);
}

void Turn(StatementParser& parser, NodeId node, Role role, VarUsage usage) {
  NodeRecord& record = parser.Model().Node(node);
  record.role = role;
  if (record.entity == Entity::Var) record.usage = usage;
}

void TurnFrom(StatementParser& parser, NodeId first, Role role, VarUsage usage) {
  const NodeId last = parser.Model().LastNode();
  for (NodeId node = first; node <= last; node = parser.Model().Node(node).last + 1) Turn(parser, node, role, usage);
}

std::string LiteralValue(std::string_view text) {
  const std::size_t open = text.find_first_of("'\"");
  if (open == std::string_view::npos) return std::string(text);
  const char quote = text[open];
  std::string value;
  for (std::size_t index = open + 1; index < text.size(); ++index) {
    if (text[index] == quote && (++index == text.size() || text[index] != quote)) break;
    value += text[index];
  }
  return value;
}

void SetProgram(StatementParser& parser, NodeId port, std::string_view literal) {
  std::string name = LiteralValue(literal);
  for (char& character : name) {
    if (character >= 'a' && character <= 'z') character = static_cast<char>(character - 'a' + 'A');
  }
  name.erase(name.find_last_not_of(' ') + 1);
  const TextId text = parser.Model().Text(name);
  parser.Model().Node(port).detail = text;
}

bool FromClause(StatementParser& parser) {
  if (!parser.Cursor().Accept(Word::From)) return false;
  Need(parser, parser.Operand().Operand(Role::From) != 0, "FROM lacks its operand.");
  return true;
}

bool IntoClause(StatementParser& parser) {
  if (!parser.Cursor().Accept(Word::Into)) return false;
  Need(parser, parser.Operand().Variable(Role::Into, VarUsage::In) != 0, "INTO lacks its operand.");
  return true;
}

namespace {

NodeRecord& ImplicitOccurrence(StatementParser& parser, Entity entity, NodeId declaration, Role role) {
  ModelBuilder& model = parser.Model();
  const std::uint32_t token = parser.Cursor().Previous();
  const NodeId node = model.Leaf(entity, token, token);
  NodeRecord& record = model.Node(node);
  record.name = model.Node(declaration).name;
  record.declaration = declaration;
  record.role = role;
  record.flags |= kImplicit;
  return record;
}

}  // namespace

void ImplicitVariable(StatementParser& parser, NodeId declaration, Role role, VarUsage usage) {
  ImplicitOccurrence(parser, Entity::Var, declaration, role).usage = usage;
}

void ImplicitRecord(StatementParser& parser, NodeId fileReference) {
  const ModelBuilder& model = parser.Model();
  if (fileReference == 0) return;
  const NodeId file = model.Node(fileReference).declaration;
  if (file == 0 || model.Node(file).entity != Entity::File) return;
  const NodeId record = parser.Model().File(file).firstRecord;
  if (record != 0) ImplicitVariable(parser, record, Role::Record, VarUsage::In);
}

void ImplicitFile(StatementParser& parser, NodeId record) {
  const ModelBuilder& model = parser.Model();
  const NodeId declaration = model.Node(record).declaration;
  if (declaration == 0) return;
  const NodeId file = model.Node(declaration).parent;
  if (file != 0 && model.Node(file).entity == Entity::File) ImplicitOccurrence(parser, Entity::Ref, file, Role::File);
}

void AdvancingClause(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  if (!cursor.Accept(Word::Before) && !cursor.Accept(Word::After)) return;
  if (!cursor.Accept(Word::Advancing)) AcceptSpelled(parser, "POSITIONING");
  if (cursor.Accept(Word::Page)) return;
  if (!Need(parser, !parser.AtStatementEnd(), "ADVANCING lacks its operand.")) return;
  OperandOrWord(parser, Role::Other);
  if (!cursor.Accept(Word::Lines)) cursor.Accept(Word::Line);
}

bool AcceptThru(StatementParser& parser) {
  return parser.Cursor().Accept(Word::Thru) || parser.Cursor().Accept(Word::Through);
}

bool ProcedureRange(StatementParser& parser, Role role) {
  if (!Need(parser, parser.Operand().ProcedureName(role) != 0, "The name of a procedure is missing.")) return false;
  if (!AcceptThru(parser)) return true;
  return Need(parser, parser.Operand().ProcedureName(Role::Thru) != 0, "THRU lacks the name of a procedure.");
}

}  // namespace qmrules::workbench::codemodel::cobol
