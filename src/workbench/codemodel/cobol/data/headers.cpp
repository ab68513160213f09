#include "workbench/codemodel/cobol/data/headers.h"

#include "workbench/codemodel/cobol/data/dataentry.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

Header DivisionNamed(Word word) {
  switch (word) {
    case Word::Identification:
    case Word::Id:
      return Header::Identification;
    case Word::Environment:
      return Header::Environment;
    case Word::Data:
      return Header::Data;
    case Word::Procedure:
      return Header::Procedure;
    default:
      return Header::None;
  }
}

Header SectionNamed(Word word) {
  switch (word) {
    case Word::Configuration:
      return Header::Configuration;
    case Word::InputOutput:
      return Header::InputOutput;
    case Word::File:
      return Header::FileSection;
    case Word::WorkingStorage:
      return Header::WorkingStorage;
    case Word::LocalStorage:
      return Header::LocalStorage;
    case Word::Linkage:
      return Header::Linkage;
    case Word::Screen:
      return Header::Screen;
    case Word::Report:
      return Header::ReportSection;
    case Word::Communication:
      return Header::Communication;
    default:
      return Header::None;
  }
}

Header ParagraphNamed(Word word) {
  switch (word) {
    case Word::SourceComputer:
      return Header::SourceComputer;
    case Word::ObjectComputer:
      return Header::ObjectComputer;
    case Word::SpecialNames:
      return Header::SpecialNames;
    case Word::Repository:
      return Header::Repository;
    case Word::FileControl:
      return Header::FileControl;
    case Word::IOControl:
      return Header::IOControl;
    default:
      return Header::None;
  }
}

bool IsProgramId(Word word) {
  switch (word) {
    case Word::ProgramId:
    case Word::FunctionId:
    case Word::ClassId:
    case Word::MethodId:
    case Word::InterfaceId:
      return true;
    default:
      return false;
  }
}

// A division's header in which a word is garbled: what follows tells which one it is.
Header GarbledDivision(const HeadContext& context, std::uint32_t behind) {
  if (context.cursor.Ahead(behind).kind == TokenKind::Period) ++behind;
  const Word next = context.cursor.WordAt(behind);
  if (IsProgramId(next)) return Header::Identification;
  if (context.cursor.WordAt(behind + 1) == Word::Section) {
    const Header section = SectionNamed(next);
    if (IsDataSection(section)) return Header::Data;
    if (IsEnvironmentPart(section)) return Header::Environment;
  }
  if (ParagraphNamed(next) != Header::None) return Header::Environment;
  return Header::Procedure;
}

Header DivisionAt(const HeadContext& context, Word word, bool first) {
  const TokenCursor& cursor = context.cursor;
  const Header named = DivisionNamed(word);
  const Word next = cursor.WordAt(1);
  if (named != Header::None) {
    if (next == Word::Division) return named;
    if (first && word != Word::Id && cursor.Ahead(1).kind == TokenKind::Period) return named;
    if (first && named == Header::Procedure) return named;  // the word begins nothing else, so DIVISION is garbled
  }
  // Without its first word a header begins wherever that stood.
  const bool behindStop = cursor.Source().tokens[cursor.Previous()].kind == TokenKind::Period;
  if (word == Word::Division && (first || behindStop)) return GarbledDivision(context, 1);
  if (!first) return Header::None;
  if (next == Word::Division) return GarbledDivision(context, 2);
  return Header::None;
}

Header SectionAt(const HeadContext& context, Word word, bool first) {
  const TokenCursor& cursor = context.cursor;
  const Header named = SectionNamed(word);
  const bool hasSection = cursor.WordAt(1) == Word::Section;
  if (named != Header::None && hasSection) return named;
  if (!first) return Header::None;
  if (named != Header::None && cursor.Ahead(1).kind == TokenKind::Period) return named;
  const bool isGarbledSection = cursor.Current().Has(kAreaA) && cursor.Ahead(1).kind == TokenKind::Word &&
                                cursor.Ahead(2).kind == TokenKind::Period;
  if (named != Header::None && isGarbledSection) return named;
  const bool isGarbled = (hasSection && cursor.Ahead(2).kind == TokenKind::Period) ||
                         (word == Word::Section && cursor.Ahead(1).kind == TokenKind::Period);
  return isGarbled ? Header::UnknownSection : Header::None;
}

}  // namespace

Header HeaderAt(const HeadContext& context) {
  const TokenCursor& cursor = context.cursor;
  const Token& token = cursor.Current();
  if (token.kind == TokenKind::End) return Header::End;
  if (token.kind != TokenKind::Word) return Header::None;
  const bool first = token.Has(kFirstOnRow) || token.Has(kAreaA);
  const Word word = cursor.WordAt();
  // Names do not begin headers, but garbled words can.
  if (word == Word::None && !first) return Header::None;
  if (const Header division = DivisionAt(context, word, first); division != Header::None) return division;
  if (const Header section = SectionAt(context, word, first); section != Header::None) return section;
  if (first && IsProgramId(word)) return Header::Program;
  if (word == Word::End && (cursor.WordAt(1) == Word::Program || cursor.WordAt(1) == Word::Function)) {
    return Header::EndProgram;
  }
  const Header paragraph = ParagraphNamed(word);
  return first || cursor.Ahead(1).kind == TokenKind::Period ? paragraph : Header::None;
}

void PassHeader(HeadContext& context) {
  TokenCursor& cursor = context.cursor;
  if (!cursor.At(Word::Division) && !cursor.At(Word::Section)) cursor.Next();
  const bool isGarbled =
      cursor.At(TokenKind::Word) && cursor.Ahead(1).kind == TokenKind::Period && !cursor.Current().Has(kFirstOnRow);
  if (isGarbled || cursor.At(Word::Division) || cursor.At(Word::Section)) cursor.Next();
  cursor.Accept(TokenKind::Period);
}

void SkipSentence(HeadContext& context) {
  TokenCursor& cursor = context.cursor;
  do {
    if (cursor.Accept(TokenKind::Period)) return;
    if (HeaderAt(context) != Header::None) return;
    cursor.Next();
  } while (!(cursor.Current().Has(kFirstOnRow) && AtEntry(context)));
}

bool PassEmbedded(HeadContext& context) {
  TokenCursor& cursor = context.cursor;
  if (!cursor.At(Word::Exec) && !cursor.At(Word::Execute)) return false;
  while (!cursor.AtEnd() && !cursor.Accept(Word::EndExec)) {
    cursor.Next();
    if (cursor.Current().Has(kAreaA) && HeaderAt(context) == Header::Procedure) return true;
  }
  cursor.Accept(TokenKind::Period);
  return true;
}

}  // namespace qmrules::workbench::codemodel::cobol
