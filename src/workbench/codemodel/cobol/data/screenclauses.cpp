#include "workbench/codemodel/cobol/data/dataclauses.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

using enum Word;

// LINE NUMBER IS PLUS 2: a number or an item.
void ParseScreenPlace(HeadContext& context) {
  TokenCursor& cursor = context.cursor;
  context.PassOver({Number, Is, Plus, Minus});
  if (cursor.At(TokenKind::Plus) || cursor.At(TokenKind::Minus)) cursor.Next();
  if (cursor.At(TokenKind::Number)) {
    context.ReadLiteral(Role::Other);
  } else if (!BeginsDataClause(cursor.WordAt())) {
    context.ReadVariable(Role::Other, VarUsage::Out);
  }
}

bool IsAttribute(const HeadContext& context) {
  switch (context.cursor.WordAt()) {
    case Auto:
    case Automatic:
    case Beep:
    case Bell:
    case Blink:
    case Full:
    case Highlight:
    case Lowlight:
    case Required:
    case ReverseVideo:
    case Secure:
    case Underline:
    case Initial:
    case Update:
    case Eol:
    case Eos:
      return true;
    default:
      break;
  }
  for (const std::string_view word :
       {"OVERLINE", "LEFTLINE", "NO-ECHO", "GRID", "TAB", "LENGTH-CHECK", "EMPTY-CHECK", "REVERSED", "STANDARD"}) {
    if (context.AtText(word)) return true;
  }
  return false;
}

}  // namespace

bool BeginsScreenClause(const HeadContext& context) {
  switch (context.cursor.WordAt()) {
    case Blank:
    case Erase:
    case Line:
    case Column:
    case Col:
    case Position:
    case ForegroundColor:
    case BackgroundColor:
    case Size:
    case From:
    case To:
    case Using:
    case Prompt:
      return true;
    default:
      return IsAttribute(context);
  }
}

bool ParseScreenClause(HeadContext& context, ItemDescription&) {
  TokenCursor& cursor = context.cursor;
  switch (cursor.WordAt()) {
    case Blank:
      if (cursor.WordAt(1) != Screen && cursor.WordAt(1) != Line) return false;
      cursor.Next();
      cursor.Next();
      return true;
    case Erase:
      cursor.Next();
      context.PassOver({Eol, Eos, Line, Screen, To, End, Of});
      return true;
    case Line:
    case Column:
    case Col:
    case Position:
    case ForegroundColor:
    case BackgroundColor:
    case Size:
      cursor.Next();
      ParseScreenPlace(context);
      return true;
    case From:
      cursor.Next();
      context.ReadOperand(Role::From);
      return true;
    case To:
      cursor.Next();
      context.ReadVariable(Role::Target, VarUsage::In);
      return true;
    case Using:
      cursor.Next();
      context.ReadVariable(Role::Both, VarUsage::InOut);
      return true;
    case Prompt:
      cursor.Next();
      context.PassOver({Character, Is});
      if (context.AtLiteral()) context.ReadLiteral(Role::Other);
      return true;
    case Control:
    case Attribute:
      cursor.Next();
      cursor.Accept(Is);
      context.ReadOperand(Role::Other);
      return true;
    default:
      break;
  }
  if (!IsAttribute(context)) return false;
  cursor.Next();
  return true;
}

}  // namespace qmrules::workbench::codemodel::cobol
