#include "workbench/codemodel/cobol/procedure/proceduredivision.h"

#include <fmt/format.h>

#include <algorithm>

#include "workbench/codemodel/cobol/procedure/fallthrough.h"
#include "workbench/codemodel/cobol/procedure/headercomment.h"

namespace qmrules::workbench::codemodel::cobol {

ProcedureDivision::ProcedureDivision(StatementParser& parser, std::string_view programName)
    : parser_(parser),
      cursor_(parser.Cursor()),
      model_(parser.Model()),
      programName_(programName),
      labels_(parser.Model(), parser.Symbols()) {}

NodeId ProcedureDivision::Parse() {
  const NodeId division = model_.Open(Entity::Division, cursor_.Index());
  model_.Node(division).name = model_.Text("PROCEDURE");
  parser_.Operand().Pending().clear();
  Header();
  entry_ = model_.LastNode() + 1;
  Body();
  CloseSection();
  End(division);
  parser_.Close(division);
  return division;
}

// PROCEDURE DIVISION [USING …] [RETURNING …]. and the entry.
void ProcedureDivision::Header() {
  const NodeId port = model_.Open(Entity::Port, cursor_.Index());
  parser_.SetVerb(port, Verb::Entry);
  model_.Node(port).detail = model_.Text(programName_);
  if (!cursor_.Accept(Word::Procedure)) {
    model_.Report(Severity::Warning, cursor_.Index(), "PROCEDURE DIVISION is missing here.");
    if (cursor_.WordAt(1) != Word::Division) return parser_.Close(port);
    cursor_.Next();
  }
  cursor_.Accept(Word::Division);
  parser_.Ports().Enter(port);
  if (!parser_.AtStatementEnd() && !AtSectionOrParagraph() && !cursor_.At(Word::Declaratives)) {
    parser_.Skip(fmt::format("{} does not fit into the division's header.", cursor_.Text()));
  }
  parser_.Close(port);
  if (!cursor_.Accept(TokenKind::Period)) {
    model_.Report(Severity::Warning, cursor_.Index(), "A full stop is missing before this.");
  }
}

void ProcedureDivision::Body() {
  for (;;) {
    if (cursor_.Accept(TokenKind::Period)) continue;
    if (cursor_.At(Word::Declaratives)) {
      cursor_.Next();
      cursor_.Accept(TokenKind::Period);
    } else if (cursor_.At(Word::End) && cursor_.WordAt(1) == Word::Declaratives) {
      LeaveDeclaratives();
    } else if (parser_.AtDivisionEnd()) {
      return;
    } else if (AtSectionOrParagraph() || HasHeaderWithoutStop()) {
      SectionOrParagraph();
    } else {
      if (paragraph_ == 0) OpenImplicitParagraph();
      parser_.Sentence();
    }
  }
}

void ProcedureDivision::LeaveDeclaratives() {
  CloseSection();
  cursor_.Next();
  cursor_.Next();
  cursor_.Accept(TokenKind::Period);
  entry_ = model_.LastNode() + 1;
}

// At the beginning of a sentence any word that is no verb, and any number, can be a paragraph's name.
bool ProcedureDivision::AtSectionOrParagraph() const {
  const Token& token = cursor_.Current();
  if (!token.Has(kAreaA) || !token.Has(kFirstOnRow)) return false;
  if (token.kind != TokenKind::Word && token.kind != TokenKind::Number) return false;
  if (cursor_.WordAt(1) == Word::Section) return true;
  if (cursor_.Ahead(1).kind != TokenKind::Period || parser_.AtVerb()) return false;
  const Word word = cursor_.WordAt();
  return !IsScopeEnd(word) && word != Word::Else;
}

// A name alone on its row in area A, a verb behind it: its full stop is missing.
bool ProcedureDivision::HasHeaderWithoutStop() const {
  const Token& token = cursor_.Current();
  const Token& next = cursor_.Ahead(1);
  if (token.kind != TokenKind::Word || !token.Has(kAreaA) || !token.Has(kFirstOnRow)) return false;
  if (cursor_.WordAt() != Word::None || !next.Has(kFirstOnRow) || next.Has(kAreaA)) return false;
  return IsVerb(cursor_.WordAt(1)) && !parser_.Scope().IsDeclared(token.symbol);
}

void ProcedureDivision::SectionOrParagraph() {
  CloseParagraph();
  if (cursor_.WordAt(1) == Word::Section) {
    CloseSection();
    OpenLabel(Entity::Section, section_);
    cursor_.Next();
    cursor_.Accept(TokenKind::Number);  // the segment's
  } else {
    OpenLabel(Entity::Par, paragraph_);
  }
  if (cursor_.Accept(TokenKind::Period)) return;
  // USING of a section that an event calls, or what is left of a damaged header.
  if (!parser_.AtStatementEnd()) {
    parser_.Skip(fmt::format("{} does not fit into the header.", cursor_.Text()));
    cursor_.Accept(TokenKind::Period);
  } else {
    model_.Report(Severity::Warning, cursor_.Index(), "A full stop is missing before this.");
  }
}

void ProcedureDivision::OpenLabel(Entity entity, NodeId& open) {
  const std::uint32_t token = cursor_.Index();
  const std::uint32_t symbol =
      cursor_.At(TokenKind::Number) ? parser_.Symbols().Intern(cursor_.Text()) : cursor_.Current().symbol;
  open = model_.Open(entity, token);
  const TextId name = model_.Text(cursor_.Text());
  const std::string comment = CommentAbove(cursor_.Source(), token);
  const TextId description = comment.empty() ? 0 : model_.Text(comment);
  model_.Node(open).name = name;
  model_.Node(open).detail = description;
  labels_.Add(symbol, open, entity == Entity::Par ? section_ : 0);
  cursor_.Next();
}

void ProcedureDivision::OpenImplicitParagraph() {
  paragraph_ = model_.Open(Entity::Par, cursor_.Index());
  const TextId name = section_ != 0 ? model_.Node(section_).name : model_.Text(programName_);
  model_.Node(paragraph_).name = name;
  model_.Node(paragraph_).flags |= kImplicit;
}

void ProcedureDivision::CloseParagraph() {
  if (paragraph_ != 0) parser_.Close(paragraph_);
  paragraph_ = 0;
}

void ProcedureDivision::CloseSection() {
  CloseParagraph();
  if (section_ != 0) parser_.Close(section_);
  section_ = 0;
}

void ProcedureDivision::End(NodeId division) {
  labels_.Resolve(parser_.Operand().Pending());
  parser_.Operand().Pending().clear();
  if (ReachesEnd(model_, division, entry_)) {
    const std::uint32_t last = std::max(cursor_.Previous(), model_.FirstToken(division));
    const NodeId port = model_.Open(Entity::Port, last);
    parser_.SetVerb(port, Verb::Goback);
    model_.Node(port).flags |= kImplicit;
    parser_.Ports().Leave(port);
    model_.Close(port, last);
  }
  parser_.Ports().TellDirections(division);
}

}  // namespace qmrules::workbench::codemodel::cobol
