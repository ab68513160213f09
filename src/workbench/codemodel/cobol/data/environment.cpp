#include "workbench/codemodel/cobol/data/divisions.h"
#include "workbench/codemodel/cobol/data/headers.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

// Passes over a paragraph up to the next header.
void PassParagraph(HeadContext& context) {
  while (HeaderAt(context) == Header::None) context.cursor.Next();
}

// OBJECT-COMPUTER: only the alphabet for comparisons means something today.
void ParseObjectComputer(HeadContext& context) {
  TokenCursor& cursor = context.cursor;
  while (HeaderAt(context) == Header::None) {
    if (cursor.Accept(Word::Sequence)) {
      cursor.Accept(Word::Is);
      context.ReadReference(Role::Other, PendingName::Kind::Program);
    } else {
      cursor.Next();
    }
  }
}

}  // namespace

void ParseEnvironment(HeadContext& context) {
  ModelBuilder& model = context.model;
  const NodeId division = model.Open(Entity::Environment, context.cursor.Index());
  if (HeaderAt(context) == Header::Environment) PassHeader(context);
  for (;;) {
    const Header header = HeaderAt(context);
    if (IsEnvironmentPart(header)) {
      PassHeader(context);
    } else if (header != Header::None) {
      break;
    } else if (context.cursor.At(Word::Select)) {
      ParseFileControl(context);
      continue;
    } else if (!context.cursor.Accept(TokenKind::Period)) {
      context.Report("This is no part of the environment division.");
      SkipSentence(context);
    }
    switch (header) {
      case Header::SourceComputer:
        PassParagraph(context);
        break;
      case Header::ObjectComputer:
        ParseObjectComputer(context);
        break;
      case Header::Repository:
        PassParagraph(context);
        break;
      case Header::SpecialNames:
        ParseSpecialNames(context);
        break;
      case Header::FileControl:
        ParseFileControl(context);
        break;
      case Header::IOControl:
        ParseIOControl(context);
        break;
      default:
        break;
    }
  }
  model.Close(division, context.cursor.Previous());
}

}  // namespace qmrules::workbench::codemodel::cobol
