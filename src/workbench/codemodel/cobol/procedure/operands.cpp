#include "workbench/codemodel/cobol/procedure/operands.h"

#include <fmt/format.h>

#include <algorithm>

#include "workbench/codemodel/cobol/reading/figurativeconstants.h"

namespace qmrules::workbench::codemodel::cobol {
namespace {

// Parentheses within parentheses of subscripts and arguments; no program has more than a handful.
constexpr int kMostNesting = 100;

// `upper` is in upper case already.
bool SameWord(std::string_view text, std::string_view upper) {
  return text.size() == upper.size() && std::equal(text.begin(), text.end(), upper.begin(), [](char a, char b) {
           return (a >= 'a' && a <= 'z' ? static_cast<char>(a - 'a' + 'A') : a) == b;
         });
}

}  // namespace

Operands::Operands(TokenCursor& cursor, ModelBuilder& model, ProgramScope*& scope, SymbolTable& symbols)
    : cursor_(cursor),
      model_(model),
      scope_(scope),
      symbols_(symbols),
      dfhresp_(symbols.Intern("DFHRESP")),
      dfhvalue_(symbols.Intern("DFHVALUE")) {}

bool Operands::AtHeader() const {
  const Token& token = cursor_.Current();
  if (!token.Has(kAreaA) || !token.Has(kFirstOnRow)) return false;
  if (token.kind == TokenKind::Number) {
    if (cursor_.WordAt(1) == Word::Section) return true;
    return cursor_.Ahead(1).kind == TokenKind::Period && !cursor_.Source().isFreeForm && !IsExpected();
  }
  if (token.kind != TokenKind::Word) return false;
  if (cursor_.Ahead(1).kind != TokenKind::Period && cursor_.WordAt(1) != Word::Section) return false;
  const Word word = WordOf(token.symbol);
  if (word != Word::None && (IsReserved(word) || IsScopeEnd(word))) return false;
  if (scope_->IsDeclared(token.symbol) || scope_->IsRegister(token.symbol)) return false;
  return !cursor_.Source().isFreeForm || !IsExpected();
}

// True when the word before the cursor, TO or THRU for one, wants something behind it.
bool Operands::IsExpected() const {
  using enum Word;
  if (cursor_.Index() == 0) return false;
  const Token& before = cursor_.Source().tokens[cursor_.Previous()];
  if (before.kind != TokenKind::Word) {
    return before.kind != TokenKind::Period && before.kind != TokenKind::Close && before.kind != TokenKind::Number &&
           before.kind != TokenKind::Literal;
  }
  const Word word = WordOf(before.symbol);
  if (word == None || !IsReserved(word) || IsScopeEnd(word)) return false;
  switch (word) {
    case Exit:
    case Continue:
    case Goback:
    case Run:
    case Sentence:
    case Program:
    case Paragraph:
    case Section:
    case Rounded:
    case Size:
    case Zero:
    case Zeros:
    case Zeroes:
    case Space:
    case Spaces:
    case True:
    case False:
      return false;
    default:
      return true;
  }
}

bool Operands::AtVariable() const {
  const Token& token = cursor_.Current();
  if (token.kind != TokenKind::Word) return false;
  const Word word = WordOf(token.symbol);
  if (word == Word::None) return !AtHeader();
  if (word == Word::Length || word == Word::Address) {
    if (cursor_.WordAt(1) == Word::Of) return true;
  }
  if (IsVerb(word) && IsReserved(word)) return false;
  return scope_->IsRegister(token.symbol) || (!IsReserved(word) && scope_->IsDeclared(token.symbol));
}

bool Operands::AtFigurative() const {
  return IsFigurativeConstant(cursor_.WordAt());
}

bool Operands::AtOperand() const {
  switch (cursor_.Current().kind) {
    case TokenKind::Number:
      return !AtHeader();
    case TokenKind::Literal:
      return true;
    case TokenKind::Plus:
    case TokenKind::Minus:
      return cursor_.Ahead(1).kind == TokenKind::Number && cursor_.Ahead(1).Has(kAdjacent);
    case TokenKind::Word: {
      const Word word = cursor_.WordAt();
      return AtVariable() || word == Word::Function || word == Word::All || AtFigurative();
    }
    default:
      return false;
  }
}

TextId Operands::TextFrom(std::uint32_t first) {
  scratch_.clear();
  const ExpandedText& text = cursor_.Source();
  for (std::uint32_t at = first; at < cursor_.Index(); ++at) {
    const Token& token = text.tokens[at];
    if (at > first && !token.Has(kAdjacent)) scratch_ += ' ';
    scratch_ += text.Text(token);
  }
  return model_.Text(scratch_);
}

NodeId Operands::Constant(std::uint32_t first, Role role, TextId name) {
  const NodeId node = model_.Leaf(Entity::Const, first, cursor_.Previous());
  NodeRecord& record = model_.Node(node);
  record.name = name;
  record.role = role;
  return node;
}

// DFHRESP (NORMAL): a number that the CICS translator knows.
NodeId Operands::FixedConstant(Role role) {
  const std::uint32_t first = cursor_.Index();
  cursor_.MoveTo(first + 4);
  return Constant(first, role, TextFrom(first));
}

NodeId Operands::Literal(Role role) {
  const std::uint32_t first = cursor_.Index();
  const Token& token = cursor_.Current();
  if (token.kind == TokenKind::Plus || token.kind == TokenKind::Minus) {
    if (cursor_.Ahead(1).kind != TokenKind::Number || !cursor_.Ahead(1).Has(kAdjacent)) return 0;
    cursor_.MoveTo(first + 2);
    return Constant(first, role, TextFrom(first));
  }
  if (token.kind == TokenKind::Word) {
    if ((token.symbol == dfhresp_ || token.symbol == dfhvalue_) && cursor_.Ahead(1).kind == TokenKind::Open &&
        cursor_.Ahead(2).kind == TokenKind::Word && cursor_.Ahead(3).kind == TokenKind::Close) {
      return FixedConstant(role);
    }
    if (cursor_.Accept(Word::All)) {
      const bool isSymbolic = cursor_.At(TokenKind::Word) &&
                              scope_->Special(cursor_.Current().symbol) == ProgramScope::SpecialKind::SymbolicCharacter;
      if (cursor_.At(TokenKind::Literal) || AtFigurative() || isSymbolic) {
        cursor_.Next();
      } else {
        model_.Report(Severity::Gap, cursor_.Index(), "A literal is missing behind ALL.");
      }
      return Constant(first, role, TextFrom(first));
    }
    if (!AtFigurative()) return 0;
    const TextId name = model_.SymbolText(token.symbol, cursor_.Text());
    cursor_.Next();
    return Constant(first, role, name);
  }
  if ((token.kind != TokenKind::Number && token.kind != TokenKind::Literal) || AtHeader()) return 0;
  const bool joined = token.kind == TokenKind::Literal && cursor_.Ahead(1).kind == TokenKind::Ampersand;
  const TextId name = joined ? 0 : model_.Text(cursor_.Text());
  cursor_.Next();
  if (!joined) return Constant(first, role, name);
  while (cursor_.At(TokenKind::Ampersand) && cursor_.Ahead(1).kind == TokenKind::Literal) {
    cursor_.Next();
    cursor_.Next();
  }
  return Constant(first, role, TextFrom(first));
}

NodeId Operands::Operand(Role role, VarUsage usage) {
  if (cursor_.At(TokenKind::Word)) {
    const Word word = cursor_.WordAt();
    if (word == Word::Function) return Function(role);
    const std::uint32_t symbol = cursor_.Current().symbol;
    if (symbol == dfhresp_ || symbol == dfhvalue_) {
      if (const NodeId node = Literal(role)) return node;
    }
    if (AtVariable()) return Variable(role, usage);
  }
  return Literal(role);
}

int Operands::Variables(Role role, VarUsage usage) {
  int count = 0;
  while (Variable(role, usage) != 0) ++count;
  return count;
}

int Operands::OperandList(Role role, VarUsage usage) {
  int count = 0;
  while (Operand(role, usage) != 0) ++count;
  return count;
}

bool Operands::Expression(Role role) {
  const std::uint32_t first = cursor_.Index();
  int depth = 0;
  bool wanted = true;
  for (;;) {
    const TokenKind kind = cursor_.Current().kind;
    if (wanted) {
      if (kind == TokenKind::Open) {
        ++depth;
        cursor_.Next();
      } else if (Operand(role) != 0) {
        wanted = false;
      } else if (kind == TokenKind::Plus || kind == TokenKind::Minus) {
        cursor_.Next();
      } else {
        if (cursor_.Index() == first) return false;
        model_.Report(Severity::Gap, cursor_.Index(), "An operand is missing in the expression.");
        return true;
      }
    } else if (kind == TokenKind::Close && depth > 0) {
      --depth;
      cursor_.Next();
    } else if (IsArithmeticOperator(kind)) {
      wanted = true;
      cursor_.Next();
    } else {
      if (depth > 0) model_.Report(Severity::Gap, cursor_.Index(), "A closing parenthesis is missing.");
      return true;
    }
  }
}

void Operands::Qualifiers() {
  qualifiers_.clear();
  while ((cursor_.At(Word::Of) || cursor_.At(Word::In)) && cursor_.Ahead(1).kind == TokenKind::Word) {
    const Word word = cursor_.WordAt(1);
    if (word != Word::None && IsReserved(word)) return;
    qualifiers_.push_back(cursor_.Ahead(1).symbol);
    cursor_.Next();
    cursor_.Next();
  }
}

void Operands::QualifierNodes(std::uint32_t first, NodeId declaration) {
  NodeId around = declaration == 0 ? 0 : model_.Node(declaration).parent;
  for (std::size_t at = 0; at < qualifiers_.size(); ++at) {
    const std::string_view name = symbols_.Text(qualifiers_[at]);
    while (around != 0 && !SameWord(model_.TextOf(model_.Node(around).name), name)) around = model_.Node(around).parent;
    const std::uint32_t token = first + 2 * static_cast<std::uint32_t>(at);
    const NodeId node = model_.Leaf(Entity::Ref, token, token);
    const TextId text = around != 0 ? model_.Node(around).name : model_.SymbolText(qualifiers_[at], name);
    model_.Node(node).name = text;
    model_.Node(node).declaration = around;
    model_.Node(node).role = Role::Qualifier;
    if (around != 0) around = model_.Node(around).parent;
  }
}

void Operands::Unresolved(std::uint32_t name, std::uint32_t token, std::string_view text) {
  std::string full(symbols_.Text(name));
  for (const std::uint32_t qualifier : qualifiers_) full.append(" OF ").append(symbols_.Text(qualifier));
  model_.Report(Severity::Gap, token, full.append(text));
}

// A name of SPECIAL-NAMES, or 0.
NodeId Operands::Special(std::uint32_t name, Meaning& meaning) const {
  using Kind = ProgramScope::SpecialKind;
  const Kind kind = scope_->Special(name);
  if (kind == Kind::None) return 0;
  const NodeId node = scope_->SpecialNode(name);
  const bool isData = node != 0 && IsKindOf(model_.Node(node).entity, Entity::Decl);
  if (!isData) meaning.entity = kind == Kind::SymbolicCharacter ? Entity::Const : Entity::Ref;
  return node;
}

Operands::Meaning Operands::MeaningOf(std::uint32_t name, std::uint32_t token) {
  Meaning meaning;
  const Resolution resolution = scope_->Resolve(name, qualifiers_);
  if (resolution.found == Resolution::Found::One) {
    meaning.declaration = resolution.node;
  } else if (resolution.found == Resolution::Found::Several) {
    Unresolved(name, token, " is ambiguous; qualify it.");
  } else if (qualifiers_.empty() && scope_->Special(name) != ProgramScope::SpecialKind::None) {
    meaning.declaration = Special(name, meaning);
  } else if (scope_->IsRegister(name)) {
    meaning.isRegister = true;
  } else {
    Unresolved(name, token, " is not declared.");
  }
  return meaning;
}

NodeId Operands::Variable(Role role, VarUsage usage) {
  if (!AtVariable()) return 0;
  const std::uint32_t first = cursor_.Index();
  const Word word = cursor_.WordAt();
  if ((word == Word::Length || word == Word::Address) && cursor_.WordAt(1) == Word::Of) {
    cursor_.MoveTo(first + 2);
    role = word == Word::Length ? Role::LengthOf : Role::AddressOf;
    if (word == Word::Length || usage == VarUsage::Out) usage = VarUsage::None;
    if (!AtVariable()) {
      if (const NodeId literal = Literal(role)) return literal;
      model_.Report(Severity::Gap, cursor_.Index(), "A name is missing here.");
      return Constant(first, role, TextFrom(first));
    }
  }
  return Identifier(first, role, usage);
}

NodeId Operands::Identifier(std::uint32_t first, Role role, VarUsage usage) {
  const std::uint32_t token = cursor_.Index();
  const std::uint32_t name = cursor_.Current().symbol;
  const std::string_view spelled = cursor_.Text();
  cursor_.Next();
  Qualifiers();
  const Meaning meaning = MeaningOf(name, token);
  const bool hasParts = cursor_.At(TokenKind::Open) || !qualifiers_.empty();
  const NodeId node =
      hasParts ? model_.Open(meaning.entity, first) : model_.Leaf(meaning.entity, first, cursor_.Previous());
  NodeRecord& record = model_.Node(node);
  record.declaration = meaning.declaration;
  record.name = model_.SymbolText(name, spelled);
  if (meaning.entity == Entity::Var) record.usage = usage;
  record.role = role;
  if (meaning.isRegister) {
    scope_->UseRegister(node, name, qualifiers_.size() == 1 ? qualifiers_.front() : SymbolTable::kNone);
  }
  if (hasParts) {
    QualifierNodes(token + 2, meaning.declaration);
    while (cursor_.At(TokenKind::Open)) Parenthesised(node, Role::Subscript);
    model_.Close(node, cursor_.Previous());
  }
  return node;
}

NodeId Operands::Function(Role role) {
  const std::uint32_t first = cursor_.Index();
  if (cursor_.Ahead(1).kind != TokenKind::Word) {
    model_.Report(Severity::Gap, first, "The function's name is missing.");
    cursor_.Next();
    return Constant(first, role, TextFrom(first));
  }
  cursor_.Next();
  const NodeId node = model_.Open(Entity::Func, first);
  model_.Node(node).name = model_.SymbolText(cursor_.Current().symbol, symbols_.Text(cursor_.Current().symbol));
  model_.Node(node).role = role;
  cursor_.Next();
  while (cursor_.At(TokenKind::Open)) Parenthesised(node, Role::Argument);
  model_.Close(node, cursor_.Previous());
  return node;
}

void Operands::PassParentheses() {
  int depth = 0;
  do {
    if (cursor_.At(TokenKind::Open)) ++depth;
    if (cursor_.At(TokenKind::Close)) --depth;
    cursor_.Next();
  } while (depth > 0 && !cursor_.At(TokenKind::Period) && !cursor_.AtEnd());
}

void Operands::Parenthesised(NodeId owner, Role role) {
  if (nesting_ >= kMostNesting) {
    model_.Report(Severity::Gap, cursor_.Index(), "Parentheses are nested too deeply here.");
    PassParentheses();
    return;
  }
  ++nesting_;
  InParentheses(owner, role, model_.LastNode());
  --nesting_;
}

void Operands::InParentheses(NodeId owner, Role& role, NodeId before) {
  int depth = 0;
  bool afterOperand = false;
  for (;;) {
    const TokenKind kind = cursor_.Current().kind;
    // "A (I - 1)" is a difference, but "MAX (I -1)" has two arguments.
    const bool isNext = role == Role::Argument && cursor_.Ahead(1).Has(kAdjacent) && !cursor_.Current().Has(kAdjacent);
    const bool isOperator = IsArithmeticOperator(kind) && afterOperand && !isNext;
    afterOperand = kind == TokenKind::Close;
    if (kind == TokenKind::Open) {
      ++depth;
      cursor_.Next();
    } else if (kind == TokenKind::Close) {
      cursor_.Next();
      if (--depth == 0) return;
    } else if (kind == TokenKind::Colon) {
      for (NodeId node = before + 1; node <= model_.LastNode(); ++node) {
        if (model_.Node(node).parent == owner) model_.Node(node).role = Role::Offset;
      }
      model_.Node(owner).flags |= kRefMod;
      role = Role::Length;
      before = model_.LastNode();
      cursor_.Next();
    } else if (cursor_.At(Word::All) && cursor_.Ahead(1).kind != TokenKind::Literal) {
      model_.Node(owner).flags |= kAllSubscript;
      cursor_.Next();
    } else if (!isOperator && Operand(role) != 0) {
      afterOperand = true;
    } else if (IsArithmeticOperator(kind) ||
               (kind == TokenKind::Word && role == Role::Argument && !IsVerb(cursor_.WordAt()))) {
      cursor_.Next();  // an operator, or LEADING and the like
    } else if (kind == TokenKind::Word || kind == TokenKind::Period || kind == TokenKind::End) {
      model_.Report(Severity::Gap, cursor_.Index(), "A closing parenthesis is missing.");
      return;
    } else {
      model_.Report(Severity::Gap, cursor_.Index(), fmt::format("{} is not understood here.", cursor_.Text()));
      cursor_.Next();
    }
  }
}

NodeId Operands::FileName(Role role) {
  if (!cursor_.At(TokenKind::Word) || AtHeader()) return 0;
  const Token& token = cursor_.Current();
  const Word word = WordOf(token.symbol);
  if (word != Word::None && (IsReserved(word) || !scope_->IsDeclared(token.symbol))) return 0;
  const std::uint32_t first = cursor_.Index();
  const Resolution resolution = scope_->ResolveFile(token.symbol);
  NodeId declaration = 0;
  qualifiers_.clear();
  if (resolution.found == Resolution::Found::One) {
    declaration = resolution.node;
  } else {
    Unresolved(
        token.symbol, first,
        resolution.found == Resolution::Found::None ? " is not a file of this program." : " is ambiguous; qualify it.");
  }
  const NodeId node = model_.Leaf(Entity::Ref, first, first);
  NodeRecord& record = model_.Node(node);
  record.name = declaration != 0 ? model_.Node(declaration).name : model_.SymbolText(token.symbol, cursor_.Text());
  record.declaration = declaration;
  record.role = role;
  cursor_.Next();
  return node;
}

bool Operands::AtProcedureName() const {
  const Token& token = cursor_.Current();
  if (token.kind == TokenKind::Number) return !AtHeader();
  if (token.kind != TokenKind::Word) return false;
  const Word word = WordOf(token.symbol);
  if (word == Word::None) return !AtHeader();
  return !IsReserved(word);
}

NodeId Operands::ProcedureName(Role role) {
  if (!AtProcedureName()) return 0;
  const std::uint32_t first = cursor_.Index();
  const Token& token = cursor_.Current();
  PendingLabel pending;
  pending.token = first;
  pending.name = token.kind == TokenKind::Number ? symbols_.Intern(cursor_.Text()) : token.symbol;
  const TextId name = model_.SymbolText(pending.name, cursor_.Text());
  cursor_.Next();
  if (cursor_.At(Word::Of) || cursor_.At(Word::In)) {
    const Token& section = cursor_.Ahead(1);
    if (section.kind == TokenKind::Word) {
      pending.section = section.symbol;
      cursor_.MoveTo(first + 3);
    }
  }
  pending.node = model_.Leaf(Entity::Ref, first, cursor_.Previous());
  model_.Node(pending.node).name = name;
  model_.Node(pending.node).role = role;
  pending_.push_back(pending);
  return pending.node;
}

NodeId Operands::OtherName(Role role) {
  if (!cursor_.At(TokenKind::Word)) return 0;
  const Token& token = cursor_.Current();
  const NodeId node = model_.Leaf(Entity::Ref, cursor_.Index(), cursor_.Index());
  NodeRecord& record = model_.Node(node);
  record.name = model_.SymbolText(token.symbol, cursor_.Text());
  record.role = role;
  if (scope_->Special(token.symbol) != ProgramScope::SpecialKind::None) {
    record.declaration = scope_->SpecialNode(token.symbol);
  }
  cursor_.Next();
  return node;
}

}  // namespace qmrules::workbench::codemodel::cobol
