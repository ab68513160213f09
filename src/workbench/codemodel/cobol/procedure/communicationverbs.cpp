#include "workbench/codemodel/cobol/procedure/communicationverbs.h"

#include "workbench/codemodel/cobol/procedure/clauses.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

// The name of a communication description or a report.
bool DescriptionName(StatementParser& parser, std::string_view missing) {
  return Need(parser, !parser.AtStatementEnd() && parser.Operand().OtherName(Role::File) != 0, missing);
}

// [WITH] {ESI | EMI | EGI | item}
void EndIndicator(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  const bool with = cursor.Accept(Word::With);
  if (cursor.Accept(Word::Esi) || cursor.Accept(Word::Emi) || cursor.Accept(Word::Egi)) return;
  if (with) Need(parser, parser.Operand().Variable(Role::Other, VarUsage::Out) != 0, "WITH lacks its operand.");
}

}  // namespace

void ParseSend(StatementParser& parser, NodeId) {
  TokenCursor& cursor = parser.Cursor();
  if (!DescriptionName(parser, "SEND lacks the name of its description.")) return;
  FromClause(parser);
  EndIndicator(parser);
  AdvancingClause(parser);
  if (cursor.Accept(Word::Replacing)) cursor.Accept(Word::Line);
}

void ParseReceive(StatementParser& parser, NodeId) {
  TokenCursor& cursor = parser.Cursor();
  if (!DescriptionName(parser, "RECEIVE lacks the name of its description.")) return;
  if (!cursor.Accept(Word::Message)) cursor.Accept(Word::Segment);
  Need(parser, IntoClause(parser), "RECEIVE lacks INTO.");
}

void ParseEnable(StatementParser& parser, NodeId) {
  TokenCursor& cursor = parser.Cursor();
  const bool direction = cursor.Accept(Word::Input) || cursor.Accept(Word::Output) || cursor.Accept(Word::IO);
  if (direction) cursor.Accept(Word::Terminal);
  if (!DescriptionName(parser, "The name of the communication description is missing.")) return;
  cursor.Accept(Word::With);
  if (!cursor.Accept(Word::Key)) return;
  Need(parser, parser.Operand().Operand(Role::Key) != 0, "KEY lacks its operand.");
}

void ParsePurge(StatementParser& parser, NodeId) {
  DescriptionName(parser, "PURGE lacks the name of its description.");
}

void ParseInitiate(StatementParser& parser, NodeId) {
  if (!DescriptionName(parser, "The name of the report is missing.")) return;
  while (!parser.AtStatementEnd() && parser.Operand().OtherName(Role::File) != 0) {
  }
}

// A detail group's items are read; a report's name stands for all of them.
void ParseGenerate(StatementParser& parser, NodeId) {
  const Token& token = parser.Cursor().Current();
  const bool isWord = token.kind == TokenKind::Word && !parser.AtStatementEnd();
  if (!Need(parser, isWord, "GENERATE lacks the name of a report.")) return;
  const Resolution report = parser.Scope().Resolve(token.symbol, {});
  const bool isGroup =
      report.found != Resolution::Found::None && parser.Model().Node(report.node).entity == Entity::Decl;
  if (isGroup) {
    parser.Operand().Variable(Role::Source, VarUsage::Out);
  } else {
    parser.Operand().OtherName(Role::File);
  }
}

void ParseSuppress(StatementParser& parser, NodeId) {
  parser.Cursor().Accept(Word::Printing);
}

}  // namespace qmrules::workbench::codemodel::cobol
