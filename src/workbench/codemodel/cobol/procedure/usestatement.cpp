#include "workbench/codemodel/cobol/procedure/usestatement.h"

namespace qmrules::workbench::codemodel::cobol {
namespace {

// The role of files that are opened in the mode; None for a word that is no mode.
Role RoleOfMode(Word word) {
  switch (word) {
    case Word::Input:
      return Role::Input;
    case Word::Output:
    case Word::Extend:
      return Role::Output;
    case Word::IO:
      return Role::Both;
    default:
      return Role::None;
  }
}

// INPUT, OUTPUT, I-O, EXTEND or files
void Files(StatementParser& parser) {
  while (!parser.AtStatementEnd()) {
    const Role role = RoleOfMode(parser.Cursor().WordAt());
    const NodeId name = role == Role::None ? parser.Operand().FileName(Role::File) : parser.Operand().OtherName(role);
    if (name == 0) return;
  }
}

// [ON] {ALL PROCEDURES | [ALL [REFERENCES OF]] name} …
void Debugged(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  cursor.Accept(Word::On);
  while (!parser.AtStatementEnd()) {
    if (cursor.Accept(Word::All)) {
      if (cursor.Accept(Word::Procedures)) continue;
      if (cursor.Accept(Word::References)) cursor.Accept(Word::Of);
    }
    const bool isDeclared = cursor.At(TokenKind::Word) && parser.Scope().IsDeclared(cursor.Current().symbol);
    const NodeId operand = isDeclared ? parser.Operand().Variable(Role::Other, VarUsage::Out)
                                      : parser.Operand().ProcedureName(Role::Other);
    if (operand == 0) return;
  }
}

}  // namespace

void ParseUse(StatementParser& parser, NodeId) {
  TokenCursor& cursor = parser.Cursor();
  cursor.Accept(Word::Global);
  if (cursor.Accept(Word::For) || cursor.At(Word::Debugging)) {
    cursor.Accept(Word::Debugging);
    return Debugged(parser);
  }
  if (cursor.Accept(Word::Before)) {
    cursor.Accept(Word::Reporting);
    if (parser.Operand().Variable(Role::Other, VarUsage::Out) == 0) parser.Skip("REPORTING lacks its group.");
    return;
  }
  cursor.Accept(Word::After);
  cursor.Accept(Word::Standard);
  if (!cursor.Accept(Word::Exception)) cursor.Accept(Word::Error);
  if (!cursor.Accept(Word::Procedure)) return parser.Skip("USE lacks PROCEDURE.");
  cursor.Accept(Word::On);
  Files(parser);
}

}  // namespace qmrules::workbench::codemodel::cobol
