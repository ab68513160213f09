#include "workbench/codemodel/cobol/procedure/stringverbs.h"

#include "workbench/codemodel/cobol/procedure/clauses.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

// [WITH] POINTER item
void PointerClause(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  if (cursor.At(Word::With) && cursor.WordAt(1) == Word::Pointer) cursor.Next();
  if (!cursor.Accept(Word::Pointer)) return;
  Need(parser, parser.Operand().Variable(Role::Pointer, VarUsage::InOut) != 0, "POINTER lacks its operand.");
}

// [INITIAL] {BEFORE | AFTER} operand, any number
void BoundaryClauses(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  while (cursor.Accept(Word::Before) || cursor.Accept(Word::After)) {
    cursor.Accept(Word::Initial);
    if (!Need(parser, parser.Operand().Operand(Role::Delimiter) != 0, "BEFORE or AFTER lacks its operand.")) return;
  }
}

bool AtExtent(const TokenCursor& cursor) {
  return cursor.At(Word::All) || cursor.At(Word::Leading) || cursor.At(Word::First) || cursor.At(Word::Trailing);
}

bool AcceptExtent(TokenCursor& cursor) {
  if (!AtExtent(cursor)) return false;
  cursor.Next();
  return true;
}

// counter FOR {CHARACTERS | {ALL | LEADING | TRAILING} operand …} …, any number. That an operand is the next counter
// is told by the FOR behind it.
void TallyingClause(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  Operands& operands = parser.Operand();
  if (!Need(parser, operands.AtVariable(), "TALLYING lacks its counter.")) return;
  while (operands.AtOperand() || cursor.At(Word::Characters) || AtExtent(cursor)) {
    if (cursor.Accept(Word::Characters)) {
      BoundaryClauses(parser);
      continue;
    }
    AcceptExtent(cursor);
    const NodeId operand = operands.Operand(Role::Other);
    if (!Need(parser, operand != 0, "TALLYING lacks an operand.")) return;
    if (cursor.Accept(Word::For)) {
      Turn(parser, operand, Role::Tally, VarUsage::InOut);
    } else {
      BoundaryClauses(parser);
    }
  }
}

// {CHARACTERS | {ALL | LEADING | FIRST | TRAILING} operand} BY operand …, any number
void ReplacingClause(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  Operands& operands = parser.Operand();
  do {
    if (!cursor.Accept(Word::Characters)) {
      AcceptExtent(cursor);
      if (!Need(parser, operands.Operand(Role::Other) != 0, "REPLACING lacks an operand.")) return;
    }
    if (!Need(parser, cursor.Accept(Word::By), "REPLACING lacks BY.")) return;
    if (!Need(parser, operands.Operand(Role::Source) != 0, "BY lacks its operand.")) return;
    BoundaryClauses(parser);
  } while (!parser.AtStatementEnd());
}

void ConvertingClause(StatementParser& parser) {
  Operands& operands = parser.Operand();
  if (!Need(parser, operands.Operand(Role::Other) != 0, "CONVERTING lacks an operand.")) return;
  if (!Need(parser, parser.Cursor().Accept(Word::To), "CONVERTING lacks TO.")) return;
  if (!Need(parser, operands.Operand(Role::Source) != 0, "TO lacks its operand.")) return;
  BoundaryClauses(parser);
}

// One receiving item of UNSTRING with its DELIMITER IN and COUNT IN.
bool UnstringTarget(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  Operands& operands = parser.Operand();
  if (operands.Variable(Role::Target, VarUsage::In) == 0) return false;
  if (cursor.Accept(Word::Delimiter)) {
    cursor.Accept(Word::In);
    if (!Need(parser, operands.Variable(Role::Target, VarUsage::In) != 0, "DELIMITER lacks its operand.")) return false;
  }
  if (cursor.Accept(Word::Count)) {
    cursor.Accept(Word::In);
    if (!Need(parser, operands.Variable(Role::Count, VarUsage::In) != 0, "COUNT lacks its operand.")) return false;
  }
  return true;
}

}  // namespace

void ParseString(StatementParser& parser, NodeId) {
  TokenCursor& cursor = parser.Cursor();
  Operands& operands = parser.Operand();
  if (!Need(parser, operands.AtOperand(), "STRING lacks its sending items.")) return;
  while (operands.OperandList(Role::Source) > 0) {
    if (!cursor.Accept(Word::Delimited)) continue;
    cursor.Accept(Word::By);
    if (cursor.Accept(Word::Size)) continue;
    if (!Need(parser, operands.Operand(Role::Delimiter) != 0, "DELIMITED lacks its operand.")) return;
  }
  if (!Need(parser, cursor.Accept(Word::Into), "STRING lacks INTO.")) return;
  // What lies behind the characters put in keeps its value.
  if (!Need(parser, operands.Variable(Role::Target, VarUsage::InOut) != 0, "INTO lacks its operand.")) return;
  PointerClause(parser);
}

void ParseUnstring(StatementParser& parser, NodeId) {
  TokenCursor& cursor = parser.Cursor();
  Operands& operands = parser.Operand();
  if (!Need(parser, operands.Operand(Role::Source) != 0, "UNSTRING lacks its sending item.")) return;
  if (cursor.Accept(Word::Delimited)) {
    cursor.Accept(Word::By);
    do {
      if (cursor.At(Word::All)) cursor.Next();
      if (!Need(parser, operands.Operand(Role::Delimiter) != 0, "DELIMITED lacks its operand.")) return;
    } while (cursor.Accept(Word::Or));
  }
  if (!Need(parser, cursor.Accept(Word::Into), "UNSTRING lacks INTO.")) return;
  if (!Need(parser, operands.AtVariable(), "INTO lacks its operand.")) return;
  while (UnstringTarget(parser)) {
  }
  PointerClause(parser);
  if (!cursor.Accept(Word::Tallying)) return;
  cursor.Accept(Word::In);
  Need(parser, operands.Variable(Role::Tally, VarUsage::InOut) != 0, "TALLYING lacks its operand.");
}

void ParseInspect(StatementParser& parser, NodeId) {
  TokenCursor& cursor = parser.Cursor();
  const NodeId inspected = parser.Operand().Operand(Role::Source);
  if (!Need(parser, inspected != 0, "INSPECT lacks its item.")) return;
  const bool tallying = cursor.Accept(Word::Tallying);
  if (tallying) TallyingClause(parser);
  if (cursor.Accept(Word::Replacing)) {
    Turn(parser, inspected, Role::Both, VarUsage::InOut);
    ReplacingClause(parser);
  } else if (cursor.Accept(Word::Converting)) {
    Turn(parser, inspected, Role::Both, VarUsage::InOut);
    ConvertingClause(parser);
  } else if (!tallying) {
    Need(parser, false, "INSPECT lacks TALLYING, REPLACING or CONVERTING.");
  }
}

void ParseExamine(StatementParser& parser, NodeId) {
  TokenCursor& cursor = parser.Cursor();
  Operands& operands = parser.Operand();
  const NodeId examined = operands.Operand(Role::Source);
  if (!Need(parser, examined != 0, "EXAMINE lacks its item.")) return;
  const bool tallying = cursor.Accept(Word::Tallying);
  if (!Need(parser, tallying || cursor.Accept(Word::Replacing), "EXAMINE lacks TALLYING or REPLACING.")) return;
  if (tallying) {
    const auto symbol = static_cast<std::uint32_t>(Word::Tally);
    const std::uint32_t token = cursor.Previous();
    ModelBuilder& model = parser.Model();
    const TextId name = model.SymbolText(symbol, parser.Symbols().Text(symbol));
    const NodeId tally = model.Leaf(Entity::Var, token, token);
    model.Node(tally).name = name;
    model.Node(tally).flags |= kImplicit;
    Turn(parser, tally, Role::Tally, VarUsage::In);
    parser.Scope().UseRegister(tally, symbol);
  }
  cursor.Accept(Word::Until);
  AcceptExtent(cursor);
  if (!Need(parser, operands.Operand(Role::Other) != 0, "EXAMINE lacks an operand.")) return;
  if (tallying && !cursor.Accept(Word::Replacing)) return;
  Turn(parser, examined, Role::Both, VarUsage::InOut);
  if (!Need(parser, cursor.Accept(Word::By), "REPLACING lacks BY.")) return;
  Need(parser, operands.Operand(Role::Source) != 0, "BY lacks its operand.");
}

void ParseTransform(StatementParser& parser, NodeId) {
  TokenCursor& cursor = parser.Cursor();
  Operands& operands = parser.Operand();
  if (!Need(parser, operands.Variable(Role::Both, VarUsage::InOut) != 0, "TRANSFORM lacks its item.")) return;
  if (!cursor.Accept(Word::Characters)) cursor.Accept(Word::Character);
  if (!Need(parser, cursor.Accept(Word::From), "TRANSFORM lacks FROM.")) return;
  if (!Need(parser, operands.Operand(Role::Other) != 0, "FROM lacks its operand.")) return;
  if (!Need(parser, cursor.Accept(Word::To), "TRANSFORM lacks TO.")) return;
  Need(parser, operands.Operand(Role::Source) != 0, "TO lacks its operand.");
}

}  // namespace qmrules::workbench::codemodel::cobol
