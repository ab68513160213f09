#include "workbench/codemodel/cobol/procedure/setverb.h"

#include "workbench/codemodel/cobol/procedure/clauses.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

// What stands behind TO.
bool Value(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  if (cursor.Accept(Word::True) || cursor.Accept(Word::False) || cursor.Accept(Word::On) || cursor.Accept(Word::Off)) {
    return true;
  }
  if (cursor.At(Word::Self)) return parser.Operand().OtherName(Role::Source) != 0;
  if (cursor.Accept(Word::Entry)) {
    return Need(parser, parser.Operand().Operand(Role::Program) != 0, "ENTRY lacks the name of a program.");
  }
  return Need(parser, parser.Operand().Expression(Role::Source), "TO lacks its operand.");
}

bool SetEnvironment(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  if (!cursor.Accept(Word::Environment)) return false;
  if (!Need(parser, parser.Operand().Operand(Role::Other) != 0, "ENVIRONMENT lacks the name of a variable."))
    return true;
  if (!cursor.Accept(Word::By) && !Need(parser, cursor.Accept(Word::To), "SET lacks TO.")) return true;
  Need(parser, parser.Operand().Operand(Role::Source) != 0, "TO lacks its operand.");
  return true;
}

// LAST EXCEPTION TO OFF
bool SetException(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  if (!cursor.At(Word::Last) || cursor.WordAt(1) != Word::Exception) return false;
  cursor.Next();
  cursor.Next();
  if (Need(parser, cursor.Accept(Word::To), "SET lacks TO.")) {
    Need(parser, cursor.Accept(Word::Off), "LAST EXCEPTION can only be set to OFF.");
  }
  return true;
}

}  // namespace

void ParseSet(StatementParser& parser, NodeId) {
  TokenCursor& cursor = parser.Cursor();
  if (SetEnvironment(parser) || SetException(parser)) return;
  do {
    const NodeId first = parser.Model().LastNode() + 1;
    // ADDRESS OF an item lays it over other storage, so data comes into it like into the others.
    const int count = parser.Operand().Variables(Role::Target, VarUsage::In);
    if (!Need(parser, count > 0, "SET lacks what is set.")) return;
    if (cursor.Accept(Word::To)) {
      if (!Value(parser)) return;
    } else if (cursor.Accept(Word::Up) || cursor.Accept(Word::Down)) {
      TurnFrom(parser, first, Role::Both, VarUsage::InOut);
      if (!Need(parser, cursor.Accept(Word::By), "SET lacks BY.")) return;
      if (!Need(parser, parser.Operand().Expression(Role::Source), "BY lacks its operand.")) return;
    } else {
      Need(parser, false, "SET lacks TO.");
      return;
    }
  } while (!parser.AtStatementEnd());
}

}  // namespace qmrules::workbench::codemodel::cobol
