#include "workbench/codemodel/cobol/procedure/sortverbs.h"

#include "workbench/codemodel/cobol/procedure/clauses.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

// {[ON] {ASCENDING | DESCENDING} [KEY] [IS] key …} …
bool KeyClauses(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  while (cursor.At(Word::On) || cursor.At(Word::Ascending) || cursor.At(Word::Descending)) {
    cursor.Accept(Word::On);
    const bool ordered = cursor.Accept(Word::Ascending) || cursor.Accept(Word::Descending);
    if (!Need(parser, ordered, "ON lacks ASCENDING or DESCENDING.")) return false;
    cursor.Accept(Word::Key);
    cursor.Accept(Word::Is);
    // The table itself can be its own key, without a name.
    parser.Operand().Variables(Role::Key, VarUsage::Out);
  }
  return true;
}

// [[WITH] DUPLICATES [IN] [ORDER]] [[COLLATING] SEQUENCE [IS] alphabet]
void OrderClauses(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  if (cursor.At(Word::With) && cursor.WordAt(1) == Word::Duplicates) cursor.Next();
  if (cursor.Accept(Word::Duplicates)) {
    cursor.Accept(Word::In);
    cursor.Accept(Word::Order);
  }
  const bool collating = cursor.Accept(Word::Collating);
  if (!cursor.Accept(Word::Sequence) && !collating) return;
  cursor.Accept(Word::Is);
  Need(parser, parser.Operand().OtherName(Role::Other) != 0, "SEQUENCE lacks the name of an alphabet.");
}

bool FileList(StatementParser& parser, Role role, std::string_view missing) {
  bool some = false;
  while (parser.Operand().FileName(role) != 0) some = true;
  return Need(parser, some, missing);
}

// {INPUT PROCEDURE [IS] range | USING file …}
bool InputClause(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  if (cursor.Accept(Word::Using)) return FileList(parser, Role::Input, "USING lacks the name of a file.");
  if (!cursor.Accept(Word::Input)) return true;
  cursor.Accept(Word::Procedure);
  cursor.Accept(Word::Is);
  return ProcedureRange(parser, Role::Input);
}

// {OUTPUT PROCEDURE [IS] range | GIVING file …}
bool OutputClause(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  if (cursor.Accept(Word::Giving)) return FileList(parser, Role::Output, "GIVING lacks the name of a file.");
  if (!cursor.Accept(Word::Output)) return true;
  cursor.Accept(Word::Procedure);
  cursor.Accept(Word::Is);
  return ProcedureRange(parser, Role::Output);
}

bool AtFile(StatementParser& parser) {
  const Token& token = parser.Cursor().Current();
  return token.kind == TokenKind::Word && parser.Scope().ResolveFile(token.symbol).found != Resolution::Found::None;
}

}  // namespace

void ParseSort(StatementParser& parser, NodeId node) {
  Operands& operands = parser.Operand();
  if (AtFile(parser)) {
    operands.FileName(Role::File);
  } else {
    // The items of a table change their places. No file is touched.
    if (!Need(parser, operands.Variable(Role::Both, VarUsage::InOut) != 0, "SORT lacks the name of a file.")) return;
    parser.Model().Node(node).entity = Entity::Stat;
  }
  if (!KeyClauses(parser)) return;
  OrderClauses(parser);
  if (InputClause(parser)) OutputClause(parser);
}

void ParseMerge(StatementParser& parser, NodeId) {
  if (!Need(parser, parser.Operand().FileName(Role::File) != 0, "MERGE lacks the name of a file.")) return;
  if (!KeyClauses(parser)) return;
  OrderClauses(parser);
  if (InputClause(parser)) OutputClause(parser);
}

void ParseRelease(StatementParser& parser, NodeId) {
  const NodeId record = parser.Operand().Variable(Role::Record, VarUsage::Out);
  if (!Need(parser, record != 0, "RELEASE lacks the name of a record.")) return;
  ImplicitFile(parser, record);
  if (parser.Cursor().At(Word::From)) Turn(parser, record, Role::Record, VarUsage::InOut);
  FromClause(parser);
}

void ParseReturn(StatementParser& parser, NodeId) {
  const NodeId file = parser.Operand().FileName(Role::File);
  if (!Need(parser, file != 0, "RETURN lacks the name of a file.")) return;
  ImplicitRecord(parser, file);
  parser.Cursor().Accept(Word::Record);
  IntoClause(parser);
}

}  // namespace qmrules::workbench::codemodel::cobol
