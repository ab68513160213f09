#include <string>

#include "workbench/codemodel/cobol/procedure/clauses.h"
#include "workbench/codemodel/cobol/procedure/statementfamilies.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

enum class Passing : std::uint8_t { Reference, Content, Value };

// [BY] {REFERENCE | CONTENT | VALUE}: holds for all arguments behind it.
bool PassingPhrase(TokenCursor& cursor, Passing& passing) {
  const std::uint32_t ahead = cursor.At(Word::By) ? 1 : 0;
  switch (cursor.WordAt(ahead)) {
    case Word::Reference:
      passing = Passing::Reference;
      break;
    case Word::Content:
      passing = Passing::Content;
      break;
    case Word::Value:
      passing = Passing::Value;
      break;
    default:
      return false;
  }
  cursor.MoveTo(cursor.Index() + ahead + 1);
  return true;
}

// [UNSIGNED] [SIZE {n | AUTO | DEFAULT}] before an argument by value.
void ValueSize(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  cursor.Accept(Word::Unsigned);
  if (!cursor.Accept(Word::Size)) return;
  if (cursor.Accept(Word::Auto) || cursor.Accept(Word::Default)) return;
  cursor.Accept(Word::Is);
  Need(parser, parser.Operand().Literal(Role::Other) != 0, "SIZE lacks its number.");
}

bool AtFileArgument(StatementParser& parser) {
  const Token& token = parser.Cursor().Current();
  return token.kind == TokenKind::Word && WordOf(token.symbol) == Word::None &&
         parser.Scope().ResolveFile(token.symbol).found != Resolution::Found::None;
}

bool Argument(StatementParser& parser, Passing passing) {
  TokenCursor& cursor = parser.Cursor();
  ModelBuilder& model = parser.Model();
  if (cursor.At(Word::Omitted)) {
    const NodeId omitted = parser.Operand().OtherName(Role::Argument);
    model.Node(omitted).flags |= kOmitted;
    return true;
  }
  if (passing == Passing::Value) ValueSize(parser);
  if (AtFileArgument(parser)) return parser.Operand().FileName(Role::Argument) != 0;
  const bool changed = passing == Passing::Reference;
  const NodeId argument = parser.Operand().Operand(Role::Argument, changed ? VarUsage::InOut : VarUsage::Out);
  if (argument == 0) return false;
  if (!changed) model.Node(argument).flags |= kByContent;
  return true;
}

void Arguments(StatementParser& parser, Passing passing) {
  TokenCursor& cursor = parser.Cursor();
  bool some = false;
  while (PassingPhrase(cursor, passing) || Argument(parser, passing)) some = true;
  Need(parser, some, "USING lacks its arguments.");
}

// {RETURNING | GIVING} [INTO] item
void ReturningClause(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  if (!cursor.Accept(Word::Returning) && !cursor.Accept(Word::Giving)) return;
  cursor.Accept(Word::Into);
  if (cursor.Accept(Word::Omitted) || cursor.Accept(Word::Null)) return;
  const bool address = cursor.At(Word::Address);
  const NodeId item = parser.Operand().Variable(Role::Returning, VarUsage::In);
  if (!Need(parser, item != 0, "RETURNING lacks its operand.")) return;
  if (address) Turn(parser, item, Role::Returning, VarUsage::In);
}

// The program's name, which the PORT keeps where it is a literal.
bool ProgramName(StatementParser& parser, NodeId port, std::string_view missing) {
  TokenCursor& cursor = parser.Cursor();
  if (cursor.At(TokenKind::Literal)) SetProgram(parser, port, cursor.Text());
  return Need(parser, parser.Operand().Operand(Role::Program) != 0, missing);
}

void ParseCall(StatementParser& parser, NodeId node) {
  TokenCursor& cursor = parser.Cursor();
  // How the program is called, by a name of SPECIAL-NAMES or a word of some compilers.
  const Token& token = cursor.Current();
  const bool more = cursor.Ahead(1).kind == TokenKind::Literal || cursor.Ahead(1).kind == TokenKind::Word;
  if (token.kind == TokenKind::Word && more && !parser.Scope().IsDeclared(token.symbol)) {
    const bool convention = parser.Scope().Special(token.symbol) == ProgramScope::SpecialKind::Mnemonic;
    if (convention || AtSpelled(parser, "STATIC") || AtSpelled(parser, "STDCALL"))
      parser.Operand().OtherName(Role::Other);
  }
  if (!ProgramName(parser, node, "CALL lacks the name of a program.")) return;
  if (AcceptSpelled(parser, "AS")) cursor.Accept(Word::Nested);
  if (cursor.Accept(Word::Using)) Arguments(parser, Passing::Reference);
  ReturningClause(parser);
}

void ParseCancel(StatementParser& parser, NodeId) {
  const int count = parser.Operand().OperandList(Role::Program);
  Need(parser, count > 0, "CANCEL lacks the name of a program.");
}

void ParseEntry(StatementParser& parser, NodeId node) {
  parser.Model().Node(node).flags |= kPortUsing;
  if (ProgramName(parser, node, "ENTRY lacks its name.")) parser.Ports().Enter(node);
}

// {object | class | SELF | SUPER} {method | NEW} [USING …] [RETURNING item]
void ParseInvoke(StatementParser& parser, NodeId node) {
  TokenCursor& cursor = parser.Cursor();
  if (!Need(parser, cursor.At(TokenKind::Word) && !parser.AtStatementEnd(), "INVOKE lacks its object.")) return;
  if (cursor.At(Word::Self) || cursor.At(Word::Super)) {
    parser.Operand().OtherName(Role::Other);
    if (cursor.Accept(Word::Of)) parser.Operand().OtherName(Role::Other);
  } else {
    OperandOrWord(parser, Role::Other);
  }
  if (cursor.At(TokenKind::Literal)) {
    SetProgram(parser, node, cursor.Text());
    parser.Operand().Literal(Role::Program);
  } else if (!parser.AtStatementEnd()) {
    OperandOrWord(parser, Role::Program);
  }
  if (cursor.Accept(Word::Using)) Arguments(parser, Passing::Reference);
  ReturningClause(parser);
}

// RAISE [EXCEPTION] name
void ParseRaise(StatementParser& parser, NodeId) {
  parser.Cursor().Accept(Word::Exception);
  const bool named = !parser.AtStatementEnd();
  if (Need(parser, named, "RAISE lacks its exception.")) OperandOrWord(parser, Role::Other);
}

// RESUME [AT] {NEXT STATEMENT | procedure}
void ParseResume(StatementParser& parser, NodeId) {
  TokenCursor& cursor = parser.Cursor();
  cursor.Accept(Word::At);
  if (cursor.Accept(Word::Next)) {
    AcceptSpelled(parser, "STATEMENT");
    return;
  }
  Need(parser, parser.Operand().ProcedureName(Role::None) != 0, "RESUME lacks the name of a procedure.");
}

constexpr VerbSpec kCallVerbs[] = {
    {Word::Call, Verb::Call, Entity::Port, ParseCall, Word::EndCall, true},
    {Word::Cancel, Verb::Cancel, Entity::Stat, ParseCancel},
    {Word::Entry, Verb::Entry, Entity::Port, ParseEntry},
    {Word::Invoke, Verb::Invoke, Entity::Port, ParseInvoke, Word::EndInvoke, true},
    {Word::Raise, Verb::Raise, Entity::Stat, ParseRaise},
    {Word::Resume, Verb::Resume, Entity::Stat, ParseResume},
};

}  // namespace

std::span<const VerbSpec> CallVerbs() {
  return kCallVerbs;
}

}  // namespace qmrules::workbench::codemodel::cobol
