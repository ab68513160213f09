#include "workbench/codemodel/cobol/procedure/embeddedcode.h"

#include "workbench/codemodel/cobol/procedure/clauses.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

Word WordAt(const ExpandedText& text, std::uint32_t index) {
  const Token& token = text.tokens[index];
  return token.kind == TokenKind::Word ? WordOf(token.symbol) : Word::None;
}

// A full stop that ends a sentence, as opposed to the one between the parts of a name.
bool IsFullStop(const ExpandedText& text, std::uint32_t index) {
  return text.tokens[index].kind == TokenKind::Period && !text.tokens[index + 1].Has(kAdjacent);
}

bool IsExec(const ExpandedText& text, std::uint32_t index) {
  const Word word = WordAt(text, index);
  if (word != Word::Exec && word != Word::Execute) return false;
  const Word language = WordAt(text, index + 1);
  return language == Word::Cics || language == Word::Sql || language == Word::Dli;
}

bool BeginsStatement(const ExpandedText& text, std::uint32_t index) {
  const Token& token = text.tokens[index];
  const Word word = WordAt(text, index);
  return token.Has(kFirstOnRow) && (IsVerb(word) || IsScopeEnd(word) || word == Word::Else || word == Word::When);
}

// A paragraph's or section's name.
bool IsHeader(const ExpandedText& text, std::uint32_t index) {
  const Token& token = text.tokens[index];
  if (!token.Has(kAreaA) || !token.Has(kFirstOnRow) || token.kind != TokenKind::Word) return false;
  return WordAt(text, index + 1) == Word::Section || IsFullStop(text, index + 1);
}

}  // namespace

EmbeddedEnd EndOfEmbedded(const ExpandedText& text, std::uint32_t exec) {
  std::uint32_t statement = 0;  // the first one that stands in the block, if its end is missing
  std::uint32_t index = exec + 1;
  for (; text.tokens[index].kind != TokenKind::End && !IsFullStop(text, index) && !IsExec(text, index); ++index) {
    if (WordAt(text, index) == Word::EndExec) return {index, true};
    if (statement == 0 && index > exec + 2 && (BeginsStatement(text, index) || IsHeader(text, index)))
      statement = index;
  }
  return {statement != 0 ? statement : index, false};
}

void NameEmbedded(StatementParser& parser, NodeId node, std::string_view language, std::string_view command) {
  std::string name = "EXEC ";
  name.append(language);
  if (!command.empty()) name.append(" ").append(command);
  const TextId text = parser.Model().Text(name);
  parser.Model().Node(node).name = text;
}

std::string_view WordBefore(StatementParser& parser, std::uint32_t end, std::uint32_t ahead) {
  const TokenCursor& cursor = parser.Cursor();
  if (cursor.Index() + ahead >= end) return {};
  const Token& token = cursor.Ahead(ahead);
  return token.kind == TokenKind::Word ? parser.Symbols().Text(token.symbol) : std::string_view();
}

NodeId NamedReference(StatementParser& parser, std::uint32_t first, std::uint32_t last, std::string_view name,
                      Role role) {
  ModelBuilder& model = parser.Model();
  const TextId text = model.Text(name);
  const NodeId node = model.Leaf(Entity::Ref, first, last);
  model.Node(node).name = text;
  model.Node(node).role = role;
  return node;
}

void LeaveParentheses(StatementParser& parser, std::uint32_t end) {
  TokenCursor& cursor = parser.Cursor();
  int depth = 1;
  for (; cursor.Index() < end; cursor.Next()) {
    if (cursor.At(TokenKind::Open)) ++depth;
    if (cursor.At(TokenKind::Close) && --depth == 0) {
      cursor.Next();
      return;
    }
  }
}

void OptionValue(StatementParser& parser, std::uint32_t end, Role role, VarUsage usage) {
  TokenCursor& cursor = parser.Cursor();
  int depth = 1;
  while (cursor.Index() < end) {
    if (parser.Operand().Operand(role, usage) != 0) continue;
    if (cursor.At(TokenKind::Open)) ++depth;
    const bool closes = cursor.At(TokenKind::Close) && --depth == 0;
    cursor.Next();
    if (closes) return;
  }
}

void OptionName(StatementParser& parser, std::uint32_t end, Role role) {
  TokenCursor& cursor = parser.Cursor();
  if (cursor.Index() < end && cursor.At(TokenKind::Literal)) {
    const std::uint32_t token = cursor.Index();
    std::string name = LiteralValue(cursor.Text());
    name.erase(name.find_last_not_of(' ') + 1);
    cursor.Next();
    NamedReference(parser, token, token, name, role);
    LeaveParentheses(parser, end);
  } else {
    OptionValue(parser, end, role, VarUsage::Out);
  }
}

}  // namespace qmrules::workbench::codemodel::cobol
