#include "workbench/codemodel/cobol/programtranslation.h"

#include <algorithm>

#include "workbench/codemodel/cobol/procedure/proceduredivision.h"

namespace qmrules::workbench::codemodel::cobol {
namespace {

// Programs within programs; what is nested deeper is taken for a sibling.
constexpr int kMostNested = 50;

std::string UpperCase(std::string_view text) {
  std::string upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(),
                 [](char each) { return each >= 'a' && each <= 'z' ? static_cast<char>(each - 'a' + 'A') : each; });
  return upper;
}

bool AtProcedureDivision(const TokenCursor& cursor) {
  return cursor.At(Word::Procedure) && cursor.WordAt(1) == Word::Division;
}

// From the first statement of a procedure division whose header is missing to the headers right before it.
void BackToHeaders(TokenCursor& cursor) {
  const std::vector<Token>& tokens = cursor.Source().tokens;
  std::uint32_t at = cursor.Index();
  const auto isName = [&](std::uint32_t index) {
    const Token& token = tokens[index];
    return token.kind == TokenKind::Word && token.Has(kAreaA) && token.Has(kFirstOnRow);
  };
  const auto isSection = [&](std::uint32_t index) {
    return tokens[index].kind == TokenKind::Word && WordOf(tokens[index].symbol) == Word::Section;
  };
  while (at >= 2 && tokens[at - 1].kind == TokenKind::Period) {
    if (isName(at - 2)) {
      at -= 2;
    } else if (at >= 3 && isSection(at - 2) && isName(at - 3)) {
      at -= 3;
    } else {
      break;
    }
  }
  cursor.MoveTo(at);
}

}  // namespace

ProgramBounds::ProgramBounds(const ExpandedText& text, SymbolTable& symbols) : text_(text), symbols_(symbols) {
  TokenCursor cursor(text);
  for (std::uint32_t at = 0; at + 1 < text.tokens.size(); ++at) {
    const Token& token = text.tokens[at];
    if (token.kind != TokenKind::Word || WordOf(token.symbol) != Word::End) continue;
    cursor.MoveTo(at);
    if (AtEndOfProgram(cursor)) lastEnds_[NameAtEnd(cursor)] = at;
  }
}

std::uint32_t ProgramBounds::NameOf(const Token& token) const {
  if (token.kind == TokenKind::Word) return token.symbol;
  if (token.kind != TokenKind::Literal) return SymbolTable::kNone;
  const std::string_view text = text_.Text(token);
  return text.size() > 2 ? symbols_.Intern(text.substr(1, text.size() - 2)) : SymbolTable::kNone;
}

bool ProgramBounds::AtProgram(const TokenCursor& cursor) {
  switch (cursor.WordAt()) {
    case Word::Identification:
    case Word::Id:
    case Word::Environment:
    case Word::Data:
    case Word::Procedure:
      return cursor.WordAt(1) == Word::Division;
    case Word::ProgramId:
    case Word::FunctionId:
    case Word::ClassId:
    case Word::MethodId:
    case Word::InterfaceId:
      return cursor.Current().Has(kFirstOnRow);
    default:
      return false;
  }
}

bool ProgramBounds::PassToProgram(TokenCursor& cursor) {
  while (!cursor.AtEnd() && !AtProgram(cursor)) cursor.Next();
  return !cursor.AtEnd();
}

bool ProgramBounds::IsEndedBehind(const TokenCursor& cursor, std::uint32_t name) const {
  const auto found = lastEnds_.find(name);
  return found != lastEnds_.end() && found->second >= cursor.Index();
}

bool ProgramBounds::AtEndOfProgram(const TokenCursor& cursor) {
  if (!cursor.At(Word::End)) return false;
  switch (cursor.WordAt(1)) {
    case Word::Program:
    case Word::Function:
    case Word::Class:
    case Word::Method:
    case Word::Factory:
    case Word::Object:
      return true;
    default:
      return false;
  }
}

std::uint32_t ProgramBounds::NameAtEnd(const TokenCursor& cursor) const {
  return NameOf(cursor.Ahead(2));
}

void ProgramBounds::PassEndOfProgram(TokenCursor& cursor) {
  cursor.Next();
  cursor.Next();
  if (cursor.At(TokenKind::Word) || cursor.At(TokenKind::Literal)) cursor.Next();
  cursor.Accept(TokenKind::Period);
}

ProgramTranslation::ProgramTranslation(TokenCursor& cursor, SymbolTable& symbols, const ProgramBounds& bounds,
                                       Diagnostics diagnostics)
    : cursor_(cursor),
      symbols_(symbols),
      bounds_(bounds),
      diagnostics_(std::move(diagnostics)),
      model_(cursor.Source(), diagnostics_),
      parser_(cursor, model_, scope_, symbols) {}

FrontEnd::Program ProgramTranslation::Translate() {
  Unit(0, 0);
  FrontEnd::Program program;
  program.name = UpperCase(name_);
  program.model = model_.Take("COBOL");
  program.model.rows = cursor_.Source().files[0]->Rows();
  return program;
}

void ProgramTranslation::Unit(std::uint32_t parent, int depth) {
  const auto unit = static_cast<std::uint32_t>(model_.Units().size());
  const bool isNested = unit > 0;
  model_.Units().push_back({});
  model_.Units()[unit].parent = isNested ? parent : 0;
  const NodeId node = isNested ? model_.Open(Entity::Program, cursor_.Index()) : 0;
  model_.Units()[unit].node = node;
  model_.Units()[unit].firstNode = model_.LastNode() + (isNested ? 0 : 1);
  Contents(unit, depth);
  if (isNested) {
    model_.Node(node).name = model_.Units()[unit].name;
    model_.Close(node, std::max(cursor_.Previous(), model_.FirstToken(node)));
  }
  model_.Units()[unit].lastNode = model_.LastNode();
}

void ProgramTranslation::Contents(std::uint32_t unit, int depth) {
  ProgramScope* const around = scope_;
  ProgramScope scope(model_, symbols_, around);
  scope_ = &scope;
  const std::uint32_t first = cursor_.Index();
  const ProgramHead head = ParseProgramHead(cursor_, model_, scope, symbols_);
  if (unit == 0) name_ = head.spelled;
  const TextId name = model_.Text(head.spelled);
  model_.Units()[unit].name = name;
  model_.Units()[unit].identification = head.identification;
  if (!AtProcedureDivision(cursor_) && IsVerb(cursor_.WordAt())) BackToHeaders(cursor_);
  if (AtProcedureDivision(cursor_) ||
      (!cursor_.AtEnd() && !ProgramBounds::AtProgram(cursor_) && !ProgramBounds::AtEndOfProgram(cursor_))) {
    const NodeId division = ProcedureDivision(parser_, head.spelled).Parse();
    model_.Units()[unit].division = division;
  }
  while (ProgramBounds::AtProgram(cursor_) && cursor_.Index() > first && depth < kMostNested &&
         bounds_.IsEndedBehind(cursor_, head.name)) {
    Unit(unit, depth + 1);
  }
  if (ProgramBounds::AtEndOfProgram(cursor_)) {
    // Another name is that of a program around this one, whose own end is missing.
    const std::uint32_t ended = bounds_.NameAtEnd(cursor_);
    if (ended == head.name || depth == 0 || ended == SymbolTable::kNone) ProgramBounds::PassEndOfProgram(cursor_);
  }
  scope.MakeRegisters(cursor_.Previous());
  scope_ = around;
}

}  // namespace qmrules::workbench::codemodel::cobol
