#include <fmt/format.h>

#include <array>

#include "workbench/codemodel/cobol/procedure/clauses.h"
#include "workbench/codemodel/cobol/procedure/correspondingitems.h"
#include "workbench/codemodel/cobol/procedure/statementfamilies.h"

// ADD, SUBTRACT, MULTIPLY, DIVIDE, COMPUTE.
namespace qmrules::workbench::codemodel::cobol {
namespace {

// ROUNDED [MODE [IS] mode] behind a variable.
void Rounded(StatementParser& parser, NodeId variable) {
  TokenCursor& cursor = parser.Cursor();
  if (!cursor.Accept(Word::Rounded)) return;
  parser.Model().Node(variable).flags |= kRounded;
  if (!cursor.Accept(Word::Mode)) return;
  cursor.Accept(Word::Is);
  if (!parser.AtStatementEnd() && cursor.At(TokenKind::Word)) cursor.Next();
}

// {operand [ROUNDED]} …; false when there is none.
bool Results(StatementParser& parser, Role role, VarUsage usage) {
  bool any = false;
  while (const NodeId node = parser.Operand().Operand(role, usage)) {
    any = true;
    Rounded(parser, node);
  }
  return any;
}

// GIVING variables. What stands before it from `changed` on is only read then.
void Giving(StatementParser& parser, NodeId changed) {
  if (!parser.Cursor().Accept(Word::Giving)) return;
  TurnFrom(parser, changed, Role::Source, VarUsage::Out);
  Need(parser, Results(parser, Role::Target, VarUsage::In), "GIVING lacks its operand.");
}

// CORRESPONDING group {TO | FROM} group [ROUNDED]
bool Corresponding(StatementParser& parser, Word word) {
  TokenCursor& cursor = parser.Cursor();
  if (!cursor.Accept(Word::Corresponding) && !cursor.Accept(Word::Corr)) return false;
  const NodeId from = parser.Operand().Variable(Role::Source, VarUsage::Out);
  if (!Need(parser, from != 0, "CORRESPONDING lacks its group.")) return true;
  parser.Model().Node(from).flags |= kCorresponding;
  if (!Need(parser, cursor.Accept(word), "CORRESPONDING lacks its second group.")) return true;
  const NodeId to = parser.Operand().Variable(Role::Both, VarUsage::InOut);
  if (!Need(parser, to != 0, "CORRESPONDING lacks its second group.")) return true;
  parser.Model().Node(to).flags |= kCorresponding;
  Rounded(parser, to);
  CorrespondingItems(parser, {.from = from, .to = to, .role = Role::Both, .usage = VarUsage::InOut, .computes = true});
  return true;
}

// operand … {TO | FROM} {operand [ROUNDED]} … [GIVING …]
void SumOrDifference(StatementParser& parser, Word word, std::string_view missing) {
  if (Corresponding(parser, word)) return;
  const NodeId first = parser.Model().LastNode() + 1;
  if (!Need(parser, parser.Operand().OperandList(Role::Source) > 0, "An operand is missing.")) return;
  const NodeId changed = parser.Model().LastNode() + 1;
  if (parser.Cursor().Accept(word)) {
    if (!Need(parser, Results(parser, Role::Both, VarUsage::InOut), "The operand to be changed is missing.")) return;
  } else if (!parser.Cursor().At(Word::Giving)) {
    return parser.Skip(std::string(missing));
  }
  Giving(parser, parser.Cursor().At(Word::Giving) ? changed : first);
}

void ParseAdd(StatementParser& parser, NodeId) {
  SumOrDifference(parser, Word::To, "ADD lacks TO.");
}

void ParseSubtract(StatementParser& parser, NodeId) {
  SumOrDifference(parser, Word::From, "SUBTRACT lacks FROM.");
}

// operand BY {operand [ROUNDED]} … [GIVING …]
void ParseMultiply(StatementParser& parser, NodeId) {
  if (!Need(parser, parser.Operand().Operand(Role::Source) != 0, "An operand is missing.")) return;
  if (!Need(parser, parser.Cursor().Accept(Word::By), "MULTIPLY lacks BY.")) return;
  const NodeId changed = parser.Model().LastNode() + 1;
  if (!Need(parser, Results(parser, Role::Both, VarUsage::InOut), "The operand to be changed is missing.")) return;
  Giving(parser, changed);
}

// A number with a digit that is not zero: to divide by it cannot fail.
bool IsDivisor(const TokenCursor& cursor, std::uint32_t index) {
  const Token& token = cursor.Source().tokens[index];
  if (token.kind != TokenKind::Number) return false;
  const std::string_view text = cursor.Source().Text(token);
  const std::string_view digits = text.substr(0, text.find_first_of("Ee"));
  return digits.find_first_of("123456789") != std::string_view::npos;
}

// operand INTO {operand [ROUNDED]} … [GIVING …] or operand BY operand GIVING …, and REMAINDER
void ParseDivide(StatementParser& parser, NodeId node) {
  TokenCursor& cursor = parser.Cursor();
  std::uint32_t divisor = cursor.Index();
  if (!Need(parser, parser.Operand().Operand(Role::Source) != 0, "An operand is missing.")) return;
  const NodeId changed = parser.Model().LastNode() + 1;
  if (cursor.Accept(Word::By)) {
    divisor = cursor.Index();
    if (!Need(parser, parser.Operand().Operand(Role::Source) != 0, "BY lacks its operand.")) return;
    if (!Need(parser, cursor.At(Word::Giving), "DIVIDE lacks GIVING.")) return;
  } else {
    if (!Need(parser, cursor.Accept(Word::Into), "DIVIDE lacks INTO or BY.")) return;
    if (!Need(parser, Results(parser, Role::Both, VarUsage::InOut), "The operand to be changed is missing.")) return;
  }
  if (!IsDivisor(cursor, divisor)) parser.Model().Node(node).flags |= kDivides;
  Giving(parser, changed);
  if (!cursor.Accept(Word::Remainder)) return;
  const NodeId remainder = parser.Operand().Variable(Role::Remainder, VarUsage::In);
  if (Need(parser, remainder != 0, "REMAINDER lacks its operand.")) Rounded(parser, remainder);
}

// True for a / or ** among the tokens up to the cursor, except for a / before a number that is not zero.
bool Divides(const TokenCursor& cursor, std::uint32_t first) {
  for (std::uint32_t at = first; at < cursor.Index(); ++at) {
    const TokenKind kind = cursor.Source().tokens[at].kind;
    if (kind == TokenKind::Power || (kind == TokenKind::Slash && !IsDivisor(cursor, at + 1))) return true;
  }
  return false;
}

// {variable [ROUNDED]} … = expression
void ParseCompute(StatementParser& parser, NodeId node) {
  TokenCursor& cursor = parser.Cursor();
  bool any = false;
  while (const NodeId result = parser.Operand().Variable(Role::Target, VarUsage::In)) {
    any = true;
    Rounded(parser, result);
  }
  if (!Need(parser, any, "COMPUTE lacks its result.")) return;
  const bool equals = cursor.Accept(TokenKind::Equal) || cursor.Accept(Word::Equal) || cursor.Accept(Word::Equals);
  if (!Need(parser, equals, "COMPUTE lacks its =.")) return;
  const std::uint32_t first = cursor.Index();
  Need(parser, parser.Operand().Expression(Role::Source), "The expression is missing.");
  if (Divides(cursor, first)) parser.Model().Node(node).flags |= kDivides;
}

constexpr std::array kArithmeticVerbs = std::to_array<VerbSpec>({
    {Word::Add, Verb::Add, Entity::Stat, ParseAdd, Word::EndAdd, true},
    {Word::Subtract, Verb::Subtract, Entity::Stat, ParseSubtract, Word::EndSubtract, true},
    {Word::Multiply, Verb::Multiply, Entity::Stat, ParseMultiply, Word::EndMultiply, true},
    {Word::Divide, Verb::Divide, Entity::Stat, ParseDivide, Word::EndDivide, true},
    {Word::Compute, Verb::Compute, Entity::Stat, ParseCompute, Word::EndCompute, true},
});

}  // namespace

std::span<const VerbSpec> ArithmeticVerbs() {
  return kArithmeticVerbs;
}

}  // namespace qmrules::workbench::codemodel::cobol
