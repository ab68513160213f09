#include "workbench/codemodel/cobol/procedure/performstatement.h"

#include <fmt/format.h>

namespace qmrules::workbench::codemodel::cobol {
namespace {

// True when the cursor stands at a procedure's name rather than at the count of an inline PERFORM … TIMES.
bool NamesProcedure(const StatementParser& parser, Operands& operands, const TokenCursor& cursor) {
  if (parser.AtVerb() || !operands.AtProcedureName()) return false;
  if (cursor.WordAt(1) == Word::Times) return false;
  // A count with qualifiers or subscripts.
  std::uint32_t ahead = 1;
  while ((cursor.WordAt(ahead) == Word::Of || cursor.WordAt(ahead) == Word::In)) ahead += 2;
  return cursor.Ahead(ahead).kind != TokenKind::Open && cursor.WordAt(ahead) != Word::Times;
}

// [WITH] TEST {BEFORE | AFTER}
void Test(StatementParser& parser, NodeId node) {
  TokenCursor& cursor = parser.Cursor();
  const std::uint32_t with = cursor.At(Word::With) ? 1 : 0;
  if (cursor.WordAt(with) != Word::Test) return;
  cursor.MoveTo(cursor.Index() + with + 1);
  if (cursor.Accept(Word::Before)) return;
  if (cursor.Accept(Word::After)) parser.Model().Node(node).flags |= kTestAfter;
}

// UNTIL condition; UNTIL EXIT has none.
bool Until(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  if (!cursor.Accept(Word::Until)) return false;
  const std::uint32_t first = cursor.Index();
  if (cursor.Accept(Word::Exit)) {
    parser.PlainCondition(first, "EXIT");
  } else {
    parser.Condition();
  }
  return true;
}

// counter FROM operand BY operand UNTIL condition
void Counter(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  if (parser.Operand().Variable(Role::Varying, VarUsage::InOut) == 0)
    return parser.Skip("The counter of VARYING is missing.");
  if (cursor.Accept(Word::From)) parser.Operand().Expression(Role::From);
  if (cursor.Accept(Word::By)) parser.Operand().Expression(Role::By);
  if (!Until(parser)) parser.Skip("UNTIL is missing behind VARYING.");
}

// TIMES, UNTIL, VARYING … AFTER, with or without TEST.
void Control(StatementParser& parser, NodeId node) {
  TokenCursor& cursor = parser.Cursor();
  Test(parser, node);
  if (cursor.Accept(Word::Varying)) {
    Counter(parser);
    while (cursor.Accept(Word::After)) Counter(parser);
    return;
  }
  if (Until(parser)) return;
  if (parser.AtStatementEnd() || !parser.Operand().AtOperand()) return;
  parser.Operand().Operand(Role::Times);
  if (!cursor.Accept(Word::Times)) parser.Skip("TIMES is missing.");
}

}  // namespace

void ParsePerform(StatementParser& parser, NodeId node) {
  TokenCursor& cursor = parser.Cursor();
  Operands& operands = parser.Operand();
  if (NamesProcedure(parser, operands, cursor)) {
    operands.ProcedureName(Role::None);
    if ((cursor.Accept(Word::Thru) || cursor.Accept(Word::Through)) && operands.ProcedureName(Role::Thru) == 0) {
      return parser.Skip("The name behind THRU is missing.");
    }
    return Control(parser, node);
  }
  parser.Model().Node(node).entity = Entity::Block;
  Control(parser, node);
  if (!parser.AtStatementEnd()) {
    parser.Skip(fmt::format("{} does not fit into the PERFORM statement.", cursor.Text()));
  }
  parser.Block(Role::Body);
  if (!cursor.At(Word::EndPerform) && !parser.IsFlattened()) {
    parser.Model().Report(Severity::Warning, cursor.Index(), "END-PERFORM is missing before this.");
  }
}

}  // namespace qmrules::workbench::codemodel::cobol
