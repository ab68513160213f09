#include "workbench/codemodel/cobol/procedure/conditions.h"

namespace qmrules::workbench::codemodel::cobol {
namespace {

// Words that test what a value is: class and sign conditions, OMITTED.
bool IsTest(Word word) {
  using enum Word;
  switch (word) {
    case Numeric:
    case Alphabetic:
    case AlphabeticLower:
    case AlphabeticUpper:
    case Dbcs:
    case Kanji:
    case Positive:
    case Negative:
    case Zero:
    case Zeros:
    case Zeroes:
    case Omitted:
      return true;
    default:
      return false;
  }
}

}  // namespace

void Conditions::Put(std::string_view word, bool tight) {
  if (!tight && !tight_) *text_ += ' ';
  *text_ += word;
  tight_ = false;
}

// The operand's tokens from `first` to the one before the cursor. A parenthesis stands tight behind a name, since it
// holds subscripts there.
void Conditions::PutOperand(std::uint32_t first) {
  const ExpandedText& source = cursor_.Source();
  bool afterName = false;
  for (std::uint32_t at = first; at < cursor_.Index(); ++at) {
    const Token& token = source.tokens[at];
    const bool opens = token.kind == TokenKind::Open, closes = token.kind == TokenKind::Close;
    const bool colon = token.kind == TokenKind::Colon;
    const bool signedNumber = token.kind == TokenKind::Number && token.Has(kAdjacent) && at == first + 1;
    Put(source.Text(token), (opens && afterName) || closes || colon || signedNumber);
    tight_ = opens || colon;
    afterName = token.kind == TokenKind::Word || closes;
  }
}

bool Conditions::OperandHere(Role role) {
  const std::uint32_t first = cursor_.Index();
  if (operands_.Operand(role) == 0) return false;
  PutOperand(first);
  wanted_ = afterLogical_ = false;
  return true;
}

std::string_view Conditions::OrEqual(std::string_view orEqual, std::string_view alone) {
  const bool follows =
      cursor_.At(Word::Or) && (cursor_.WordAt(1) == Word::Equal || cursor_.Ahead(1).kind == TokenKind::Equal);
  if (!follows) return alone;
  cursor_.Next();
  cursor_.Next();
  cursor_.Accept(Word::To);
  return orEqual;
}

// The relation at the cursor as a symbol, consumed; "" for none.
std::string_view Conditions::RelationSymbol() {
  switch (cursor_.Current().kind) {
    case TokenKind::Equal:
      cursor_.Next();
      cursor_.Accept(Word::To);
      return "=";
    case TokenKind::Less:
      cursor_.Next();
      cursor_.Accept(Word::Than);
      if (cursor_.Accept(TokenKind::Equal)) return "<=";
      if (cursor_.Accept(TokenKind::Greater)) return "<>";
      return OrEqual("<=", "<");
    case TokenKind::Greater:
      cursor_.Next();
      cursor_.Accept(Word::Than);
      return cursor_.Accept(TokenKind::Equal) ? ">=" : OrEqual(">=", ">");
    case TokenKind::LessEqual:
      cursor_.Next();
      return "<=";
    case TokenKind::GreaterEqual:
      cursor_.Next();
      return ">=";
    case TokenKind::NotEqual:
      cursor_.Next();
      return "<>";
    case TokenKind::Word:
      break;
    default:
      return {};
  }
  switch (cursor_.WordAt()) {
    case Word::Equal:
    case Word::Equals:
      cursor_.Next();
      cursor_.Accept(Word::To);
      return "=";
    case Word::Unequal:
      cursor_.Next();
      cursor_.Accept(Word::To);
      return "NOT =";
    case Word::Exceeds:
      cursor_.Next();
      return ">";
    case Word::Greater:
      cursor_.Next();
      cursor_.Accept(Word::Than);
      return OrEqual(">=", ">");
    case Word::Less:
      cursor_.Next();
      cursor_.Accept(Word::Than);
      return OrEqual("<=", "<");
    default:
      return {};
  }
}

// NUMERIC, POSITIVE, the name of a class and the like, behind an operand.
bool Conditions::Test(bool negated) {
  if (!cursor_.At(TokenKind::Word)) return false;
  const bool isClass = scope_->Special(cursor_.Current().symbol) == ProgramScope::SpecialKind::Class;
  if (!isClass && !IsTest(cursor_.WordAt())) return false;
  if (negated) Put("NOT");
  Put(cursor_.Text());
  if (isClass) {
    operands_.OtherName(Role::Other);
  } else {
    cursor_.Next();
  }
  shape_.isCondition = true;
  wanted_ = false;
  return true;
}

// [IS] [NOT] relation or test.
bool Conditions::Relation() {
  const std::uint32_t first = cursor_.Index();
  if (!cursor_.Accept(Word::Is)) cursor_.Accept(Word::Are);
  const bool negated = cursor_.Accept(Word::Not);
  if (const std::string_view symbol = RelationSymbol(); !symbol.empty()) {
    if (negated) Put("NOT");
    Put(symbol);
    wanted_ = shape_.isCondition = true;
    return true;
  }
  if (Test(negated)) return true;
  cursor_.MoveTo(first);
  return false;
}

// Takes what may stand where an operand must come.
bool Conditions::Wanted(Role role, bool partial, bool atStart) {
  const Token& token = cursor_.Current();
  if (token.kind == TokenKind::Open) {
    ++depth_;
    Put("(");
    tight_ = true;
    cursor_.Next();
    return true;
  }
  if (OperandHere(role)) {
    shape_.isEmpty = false;
    return true;
  }
  if (token.kind == TokenKind::Plus || token.kind == TokenKind::Minus) {
    Put(cursor_.Text());
    cursor_.Next();
    tight_ = cursor_.Current().Has(kAdjacent);
    return true;
  }
  if (cursor_.At(Word::Not)) {
    Put("NOT");
    cursor_.Next();
    afterLogical_ = shape_.isCondition = true;
    return true;
  }
  if (!afterLogical_ && !(partial && atStart)) return false;
  if (atStart) shape_.isPartial = true;
  if (!Relation()) return false;
  afterLogical_ = false;
  return true;
}

bool Conditions::ParenthesisHere() {
  if (depth_ == 0 || !cursor_.At(TokenKind::Close)) return false;
  --depth_;
  Put(")", true);
  cursor_.Next();
  return true;
}

// Takes what may stand behind an operand.
bool Conditions::Continued() {
  const Token& token = cursor_.Current();
  if (ParenthesisHere()) return true;
  if (IsArithmeticOperator(token.kind)) {
    Put(cursor_.Text());
    cursor_.Next();
    wanted_ = true;
    return true;
  }
  if (cursor_.At(Word::And) || cursor_.At(Word::Or)) {
    Put(cursor_.At(Word::And) ? "AND" : "OR");
    cursor_.Next();
    wanted_ = afterLogical_ = shape_.isCondition = shape_.isCompound = true;
    return true;
  }
  return Relation();
}

Conditions::Shape Conditions::Read(Role role, std::string& text, bool partial) {
  text_ = &text;
  shape_ = {};
  depth_ = 0;
  wanted_ = true;
  afterLogical_ = false;
  tight_ = true;
  const std::uint32_t first = cursor_.Index();
  for (;;) {
    if (wanted_) {
      if (Wanted(role, partial, cursor_.Index() == first)) continue;
      if (cursor_.Index() != first)
        model_.Report(Severity::Gap, cursor_.Index(), "An operand is missing in the condition.");
      break;
    }
    if (!Continued()) break;
  }
  if (depth_ > 0) model_.Report(Severity::Gap, cursor_.Index(), "A closing parenthesis is missing.");
  return shape_;
}

}  // namespace qmrules::workbench::codemodel::cobol
