#include <fmt/format.h>

#include "workbench/codemodel/cobol/data/divisions.h"
#include "workbench/codemodel/cobol/data/headers.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

using enum Word;
using Kind = ProgramScope::SpecialKind;

// The clauses of SPECIAL-NAMES. Names declared here are REFs that name themselves: occurrences lead to them.
class SpecialNamesParser {
 public:
  explicit SpecialNamesParser(HeadContext& context) : context_(context), cursor_(context.cursor) {}
  void Parse();

 private:
  bool ParseClause();
  bool ParseStatus();
  void ParseSwitch();
  void ParseAlphabet();
  void ParseClass();
  void ParseSymbolic();
  void ParseCurrency();
  void ParseNumericSign();
  void ReadLiterals();
  NodeId DeclareName(Kind kind);

  HeadContext& context_;
  TokenCursor& cursor_;
};

void SpecialNamesParser::Parse() {
  bool isTold = false;
  while (HeaderAt(context_) == Header::None && !cursor_.At(Word::Select)) {
    if (cursor_.Accept(TokenKind::Period)) {
      isTold = false;
      continue;
    }
    if (ParseClause()) continue;
    if (!isTold) context_.Report("This is no clause of SPECIAL-NAMES.");
    isTold = true;
    cursor_.Next();
  }
}

bool SpecialNamesParser::ParseClause() {
  switch (cursor_.WordAt()) {
    case Alphabet:
      cursor_.Next();
      ParseAlphabet();
      return true;
    case Class:
      cursor_.Next();
      ParseClass();
      return true;
    case Symbolic:
      cursor_.Next();
      ParseSymbolic();
      return true;
    case Currency:
      cursor_.Next();
      ParseCurrency();
      return true;
    case DecimalPoint:
      cursor_.Next();
      cursor_.Accept(Is);
      if (cursor_.Accept(Comma)) context_.scope.decimalComma = true;
      return true;
    case Crt:
    case Cursor:
      cursor_.Next();
      context_.PassOver({Status, Is});
      context_.ReadVariable(Role::Status, VarUsage::In);
      return true;
    case Numeric:
      if (cursor_.WordAt(1) != Sign) return false;
      ParseNumericSign();
      return true;
    case Locale:
      cursor_.Next();
      context_.PassOver({Is});
      DeclareName(Kind::Mnemonic);
      return true;
    case On:
    case Off:
      return ParseStatus();
    default:
      break;
  }
  if (!cursor_.At(TokenKind::Word)) return false;
  ParseSwitch();
  return true;
}

NodeId SpecialNamesParser::DeclareName(Kind kind) {
  if (!cursor_.At(TokenKind::Word)) return 0;
  const std::uint32_t token = cursor_.Index();
  const NodeId node = context_.model.Leaf(Entity::Ref, token, token);
  NodeRecord& record = context_.model.Node(node);
  record.name = context_.NameText(token);
  record.declaration = node;
  record.role = Role::Other;
  context_.scope.DeclareSpecial(cursor_.Current().symbol, kind, node);
  cursor_.Next();
  return node;
}

// ON STATUS IS NAME, OFF STATUS IS NAME.
bool SpecialNamesParser::ParseStatus() {
  bool isAny = false;
  while (cursor_.At(On) || cursor_.At(Off)) {
    cursor_.Next();
    context_.PassOver({Status, Is});
    DeclareName(Kind::SwitchStatus);
    isAny = true;
  }
  return isAny;
}

// UPSI-0 IS SW-A ON STATUS IS SW-A-ON OFF STATUS IS SW-A-OFF; C01 IS TOP-OF-PAGE; an alphabet without its word.
void SpecialNamesParser::ParseSwitch() {
  cursor_.Next();
  const bool isNamed = cursor_.Accept(Is) || (context_.AtName() && !cursor_.Current().Has(kFirstOnRow));
  if (isNamed && cursor_.At(TokenKind::Word) && !cursor_.At(On) && !cursor_.At(Off)) DeclareName(Kind::Mnemonic);
  ParseStatus();
}

void SpecialNamesParser::ReadLiterals() {
  for (;;) {
    if (context_.AtLiteral()) {
      context_.ReadLiteral(Role::Value);
    } else if (cursor_.At(Thru) || cursor_.At(Through) || cursor_.At(Also)) {
      cursor_.Next();
    } else {
      return;
    }
  }
}

// Up to what follows its literals: an alphabet's own names are words of the language or of the vendor.
void SpecialNamesParser::ParseAlphabet() {
  DeclareName(Kind::Alphabet);
  if (cursor_.Accept(For)) context_.PassOver({Alphanumeric, National});
  cursor_.Accept(Is);
  if (cursor_.At(TokenKind::Word) && !context_.AtLiteral()) cursor_.Next();
  ReadLiterals();
}

void SpecialNamesParser::ParseClass() {
  DeclareName(Kind::Class);
  if (cursor_.Accept(For)) context_.PassOver({Alphanumeric, National});
  cursor_.Accept(Is);
  ReadLiterals();
  if (cursor_.Accept(In)) context_.ReadReference(Role::Other, PendingName::Kind::Program);
}

// SYMBOLIC CHARACTERS A B ARE 1 2 [IN alphabet].
void SpecialNamesParser::ParseSymbolic() {
  context_.PassOver({Character, Characters, For, Alphanumeric, National, Is, Are});
  while (context_.AtName()) {
    while (context_.AtName()) DeclareName(Kind::SymbolicCharacter);
    context_.PassOver({Is, Are});
    if (!cursor_.At(TokenKind::Number)) break;
    while (cursor_.At(TokenKind::Number)) context_.ReadLiteral(Role::Value);
  }
  if (cursor_.Accept(In)) context_.ReadReference(Role::Other, PendingName::Kind::Program);
}

// CURRENCY SIGN IS "EUR" WITH PICTURE SYMBOL "E".
void SpecialNamesParser::ParseCurrency() {
  const auto symbolOf = [this] {
    const std::string_view text = cursor_.Text();
    if (cursor_.At(TokenKind::Literal) && text.size() >= 3) context_.scope.currencySymbol = text[1];
    context_.ReadLiteral(Role::Value);
  };
  context_.PassOver({Sign, Is});
  symbolOf();
  cursor_.Accept(With);
  if (cursor_.Accept(Picture) || cursor_.Accept(Pic)) {
    if (!context_.AcceptText("SYMBOL")) cursor_.Accept(TokenKind::Picture);
    symbolOf();
  }
}

// NUMERIC SIGN IS TRAILING SEPARATE: of all items that do not tell.
void SpecialNamesParser::ParseNumericSign() {
  cursor_.Next();
  context_.PassOver({Sign, Is});
  if (cursor_.Accept(Leading)) {
    context_.defaultSign |= kSignLeading;
  } else {
    cursor_.Accept(Trailing);
  }
  if (cursor_.Accept(Separate)) context_.defaultSign |= kSignSeparate;
  cursor_.Accept(Character);
}

}  // namespace

void ParseSpecialNames(HeadContext& context) {
  SpecialNamesParser(context).Parse();
}

}  // namespace qmrules::workbench::codemodel::cobol
