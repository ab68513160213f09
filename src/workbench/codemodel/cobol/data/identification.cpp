#include <string>

#include "workbench/codemodel/cobol/data/divisions.h"
#include "workbench/codemodel/cobol/data/headers.h"
#include "workbench/codemodel/cobol/reading/commentblock.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

std::string WithoutQuotes(std::string_view text) {
  if (text.size() >= 2 && (text.front() == '"' || text.front() == '\'')) text = text.substr(1, text.size() - 2);
  return std::string(text);
}

// PROGRAM-ID. NAME [AS "…"] [IS COMMON INITIAL RECURSIVE PROGRAM].
void ParseProgramId(HeadContext& context, ProgramHead& head) {
  TokenCursor& cursor = context.cursor;
  head.isFunction = cursor.At(Word::FunctionId);
  head.isClass = cursor.At(Word::ClassId) || cursor.At(Word::MethodId) || cursor.At(Word::InterfaceId);
  cursor.Next();
  cursor.Accept(TokenKind::Period);
  if (cursor.At(TokenKind::Word) || cursor.At(TokenKind::Literal)) {
    const bool isHeader = HeaderAt(context) != Header::None;
    if (!isHeader) {
      head.spelled = WithoutQuotes(cursor.Text());
      head.name = context.symbols.Intern(head.spelled);
      cursor.Next();
    }
  }
  if (head.name == SymbolTable::kNone) context.Report("The name of the program is missing here.");
  while (!cursor.At(TokenKind::Period) && HeaderAt(context) == Header::None) {
    head.common = head.common || cursor.At(Word::Common);
    head.initial = head.initial || cursor.At(Word::Initial);
    head.recursive = head.recursive || cursor.At(Word::Recursive);
    cursor.Next();
  }
  cursor.Accept(TokenKind::Period);
}

// A program name's place when the word before it is garbled.
bool AtGarbledProgramId(const HeadContext& context) {
  const TokenCursor& cursor = context.cursor;
  return cursor.At(TokenKind::Word) && cursor.Current().Has(kAreaA) && cursor.Ahead(1).kind == TokenKind::Period &&
         context.AtName(2) && cursor.Ahead(3).kind == TokenKind::Period && !cursor.Ahead(2).Has(kAreaA);
}

bool IsRemark(Word word) {
  switch (word) {
    case Word::Author:
    case Word::Installation:
    case Word::DateWritten:
    case Word::DateCompiled:
    case Word::Security:
    case Word::Remarks:
      return true;
    default:
      return false;
  }
}

}  // namespace

void ParseIdentification(HeadContext& context, ProgramHead& head) {
  TokenCursor& cursor = context.cursor;
  ModelBuilder& model = context.model;
  const std::uint32_t first = cursor.Index();
  const NodeId node = model.Open(Entity::Identification, first);
  head.identification = node;
  if (HeaderAt(context) == Header::Identification) PassHeader(context);
  while (!head.isClass || head.name == SymbolTable::kNone) {
    const Header header = HeaderAt(context);
    const bool isKnown = head.name != SymbolTable::kNone;
    if (header == Header::Program && !isKnown) {
      ParseProgramId(context, head);
    } else if (header != Header::None || (cursor.Index() == first && IsVerb(cursor.WordAt()))) {
      break;
    } else if (IsRemark(cursor.WordAt()) || cursor.At(TokenKind::Period)) {
      cursor.Next();
    } else if (!isKnown && AtGarbledProgramId(context)) {
      context.Report("PROGRAM-ID is missing here.");
      ParseProgramId(context, head);
    } else {
      context.Report("This is no part of the identification division.");
      SkipSentence(context);
    }
  }
  NodeRecord& record = model.Node(node);
  if (cursor.Index() == first) record.flags |= kImplicit;
  record.name = model.Text(head.spelled);
  if (cursor.Index() != first) {
    record.detail = model.Text(CommentsBetween(cursor.Source(), first, cursor.Index()));
  }
  model.Close(node, cursor.Index() == first ? first : cursor.Previous());
}

}  // namespace qmrules::workbench::codemodel::cobol
