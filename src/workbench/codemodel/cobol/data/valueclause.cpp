#include <algorithm>
#include <string>

#include "workbench/codemodel/cobol/data/dataclauses.h"
#include "workbench/codemodel/cobol/data/dataentry.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

using enum Word;

// What a value says of its item: a constant's number, the bytes of an item without a picture.
void Measure(HeadContext& context, ItemDescription& item, const Token& token) {
  const std::string_view text = context.cursor.Source().Text(token);
  if (token.kind == TokenKind::Number && text.size() <= 18 &&
      std::all_of(text.begin(), text.end(), [](char digit) { return digit >= '0' && digit <= '9'; })) {
    item.number = std::stoll(std::string(text));
  }
  if (token.kind == TokenKind::Literal && text.size() >= 2) item.literalBytes = text.size() - 2;
}

// A name, LENGTH OF or ADDRESS OF where a literal is expected.
bool ReadNamedValue(HeadContext& context, ItemDescription& item) {
  TokenCursor& cursor = context.cursor;
  if (cursor.At(Length) || cursor.At(Address)) {
    const Role role = cursor.At(Length) ? Role::LengthOf : Role::AddressOf;
    cursor.Next();
    cursor.Accept(Of);
    context.ReadVariable(role, VarUsage::None);
    return true;
  }
  if (!context.AtName() || BeginsDataClause(cursor.WordAt())) return false;
  const std::int64_t number = context.scope.Constant(cursor.Current().symbol);
  if (number >= 0) item.number = number;
  return context.ReadVariable(Role::Value, VarUsage::Out) != 0;
}

bool ReadValue(HeadContext& context, ItemDescription& item, Role role) {
  TokenCursor& cursor = context.cursor;
  if (cursor.At(TokenKind::Number) && AtEntry(context)) {
    // A number at the end of the entry looks like a level number before a full stop.
    if (cursor.Ahead(1).kind != TokenKind::Period || cursor.Current().Has(kAreaA)) return false;
  }
  if (context.AtLiteral()) {
    const bool isSigned = cursor.At(TokenKind::Plus) || cursor.At(TokenKind::Minus);
    if (!isSigned) Measure(context, item, cursor.Current());
    context.ReadLiteral(role);
    return true;
  }
  return ReadNamedValue(context, item);
}

// Arithmetic of constants: only what it names is of interest.
void ReadArithmetic(HeadContext& context, ItemDescription& item) {
  TokenCursor& cursor = context.cursor;
  for (;;) {
    switch (cursor.Current().kind) {
      case TokenKind::Plus:
      case TokenKind::Minus:
      case TokenKind::Star:
      case TokenKind::Slash:
      case TokenKind::Power:
      case TokenKind::Open:
      case TokenKind::Close:
      case TokenKind::Ampersand:
        item.number = -1;
        cursor.Next();
        break;
      default:
        return;
    }
    if (context.AtLiteral() || context.AtName()) context.ReadOperand(Role::Value);
  }
}

}  // namespace

void ParseValues(HeadContext& context, ItemDescription& item) {
  TokenCursor& cursor = context.cursor;
  context.PassOver({Is, Are});
  const std::uint32_t first = cursor.Index();
  while (ReadValue(context, item, Role::Value)) {
    if (item.level == kConstantLevel) ReadArithmetic(context, item);
    if (cursor.Accept(Thru) || cursor.Accept(Through)) ReadValue(context, item, Role::Thru);
  }
  if (cursor.Index() == first) {
    if (!item.isFaulty) context.Report("The value is missing here.");
    item.isFaulty = true;
    return;
  }
  item.value = context.model.Text(context.Joined(first, cursor.Index()));
  if (cursor.At(When) && (cursor.WordAt(1) == Set || cursor.WordAt(1) == False)) cursor.Next();
  cursor.Accept(Set);
  cursor.Accept(To);
  if (cursor.Accept(False)) {
    cursor.Accept(Is);
    ReadValue(context, item, Role::Other);
  }
  if (cursor.Accept(In)) context.ReadReference(Role::Other, PendingName::Kind::Program);
}

}  // namespace qmrules::workbench::codemodel::cobol
