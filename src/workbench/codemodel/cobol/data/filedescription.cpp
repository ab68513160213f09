#include <fmt/format.h>

#include "workbench/codemodel/cobol/data/dataentry.h"
#include "workbench/codemodel/cobol/data/divisions.h"
#include "workbench/codemodel/cobol/data/headers.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

using enum Word;

// The clauses of one FD or SD.
class FileDescriptionParser {
 public:
  FileDescriptionParser(HeadContext& context, NodeId file) : context_(context), cursor_(context.cursor), file_(file) {}
  void Parse();

 private:
  void TakeSelection();
  bool ParseClause();
  void ParseRecord();
  void ParseNumbers();
  void ParseLabel();
  void ParseValueOf();
  void ParseLinage();
  bool AtClause() const;

  HeadContext& context_;
  TokenCursor& cursor_;
  NodeId file_;
  bool isTold_ = false;
};

// What FILE-CONTROL says of the file.
void FileDescriptionParser::TakeSelection() {
  const std::uint32_t token = cursor_.Previous();
  const auto place = context_.selectionOf.find(cursor_.Source().tokens[token].symbol);
  if (place == context_.selectionOf.end()) return;
  Selection& selection = context_.selections[place->second];
  if (selection.file != 0) return;
  selection.file = file_;
  FileRecord& record = context_.model.File(file_);
  record.select = selection.select;
  record.assign = selection.assign;
  record.organization = selection.organization;
  record.access = selection.access;
}

void FileDescriptionParser::Parse() {
  TakeSelection();
  while (!cursor_.Accept(TokenKind::Period)) {
    const bool isNext = HeaderAt(context_) != Header::None || cursor_.At(Fd) || cursor_.At(Sd);
    if (isNext || (cursor_.At(TokenKind::Number) && cursor_.Current().Has(kFirstOnRow) && AtEntry(context_))) {
      if (!isTold_) context_.Report("The full stop of the file description before this is missing.");
      return;
    }
    if (ParseClause()) continue;
    if (!isTold_) context_.Report("This is no clause of a file description.");
    isTold_ = true;
    cursor_.Next();
  }
}

bool FileDescriptionParser::AtClause() const {
  switch (cursor_.WordAt()) {
    case Block:
    case Record:
    case Label:
    case Value:
    case Data:
    case Linage:
    case CodeSet:
    case Recording:
    case Report:
    case Reports:
    case External:
    case Global:
      return true;
    default:
      return false;
  }
}

bool FileDescriptionParser::ParseClause() {
  FileRecord& record = context_.model.File(file_);
  switch (cursor_.WordAt()) {
    case Is:
      cursor_.Next();
      return true;
    case External:
      record.flags |= kExternal;
      cursor_.Next();
      if (cursor_.Accept(As)) cursor_.Next();
      return true;
    case Global:
      record.flags |= kGlobal;
      cursor_.Next();
      return true;
    case Block:
      cursor_.Next();
      ParseNumbers();
      return true;
    case Record:
      cursor_.Next();
      ParseRecord();
      return true;
    case Label:
      cursor_.Next();
      ParseLabel();
      return true;
    case Value:
      cursor_.Next();
      ParseValueOf();
      return true;
    case Data:
      cursor_.Next();
      context_.PassOver({Record, Records, Is, Are});
      while (context_.AtName() && !AtClause()) context_.ReadReference(Role::Record, PendingName::Kind::Data);
      return true;
    case Linage:
      cursor_.Next();
      ParseLinage();
      return true;
    case CodeSet:
      cursor_.Next();
      context_.PassOver({Is});
      if (cursor_.At(TokenKind::Word)) cursor_.Next();
      return true;
    case Recording:
      cursor_.Next();
      context_.PassOver({Mode, Is});
      if (cursor_.At(TokenKind::Word)) cursor_.Next();
      return true;
    case Report:
    case Reports:
      cursor_.Next();
      context_.PassOver({Is, Are});
      while (context_.AtName() && !AtClause()) context_.ReadReference(Role::Other, PendingName::Kind::File);
      return true;
    default:
      return false;
  }
}

// CONTAINS 1 TO 20 RECORDS.
void FileDescriptionParser::ParseNumbers() {
  while (cursor_.At(TokenKind::Number) || cursor_.At(Contains) || cursor_.At(To) || cursor_.At(Records) ||
         cursor_.At(Characters)) {
    if (cursor_.At(TokenKind::Number) && cursor_.Current().Has(kFirstOnRow) && AtEntry(context_) &&
        cursor_.Ahead(1).kind != TokenKind::Period) {
      return;
    }
    cursor_.Next();
  }
}

// RECORD CONTAINS …, RECORD IS VARYING IN SIZE FROM … TO … DEPENDING ON NAME.
void FileDescriptionParser::ParseRecord() {
  context_.PassOver({Is});
  if (cursor_.Accept(Varying)) context_.PassOver({In, Size, From});
  if (cursor_.Accept(From)) ParseNumbers();
  ParseNumbers();
  if (cursor_.Accept(Depending)) {
    cursor_.Accept(On);
    context_.ReadVariable(Role::DependingOn, VarUsage::InOut);
  }
}

void FileDescriptionParser::ParseLabel() {
  if (!cursor_.Accept(Record)) cursor_.Accept(Records);
  context_.PassOver({Is, Are, Standard, Omitted});
  while (context_.AtName() && !AtClause()) context_.ReadReference(Role::Other, PendingName::Kind::Data);
}

// VALUE OF name IS literal or item.
void FileDescriptionParser::ParseValueOf() {
  cursor_.Accept(Of);
  while (context_.AtName() || cursor_.At(FileId)) {
    if (AtClause()) return;
    cursor_.Next();
    cursor_.Accept(Is);
    if (!AtClause()) context_.ReadOperand(Role::Other);
  }
}

// LINAGE IS n LINES WITH FOOTING AT n LINES AT TOP n LINES AT BOTTOM n.
void FileDescriptionParser::ParseLinage() {
  for (;;) {
    if (cursor_.At(TokenKind::Number) && cursor_.Current().Has(kFirstOnRow) && AtEntry(context_) &&
        cursor_.Ahead(1).kind != TokenKind::Period) {
      return;
    }
    context_.PassOver({Is, Lines, With, Footing, At, Top, Bottom});
    if (cursor_.At(TokenKind::Number)) {
      context_.ReadLiteral(Role::Other);
    } else if (!context_.AtName() || AtClause() || context_.ReadVariable(Role::Other, VarUsage::Out) == 0) {
      return;
    }
  }
}

}  // namespace

void ParseFileDescription(HeadContext& context, NodeId file) {
  FileDescriptionParser(context, file).Parse();
}

}  // namespace qmrules::workbench::codemodel::cobol
