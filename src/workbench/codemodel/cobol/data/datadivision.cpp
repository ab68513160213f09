#include "workbench/codemodel/cobol/data/datadivision.h"

#include "workbench/codemodel/cobol/data/dataentry.h"
#include "workbench/codemodel/cobol/data/divisions.h"
#include "workbench/codemodel/cobol/data/headers.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

DataSectionKind KindOf(Header header) {
  switch (header) {
    case Header::FileSection:
      return DataSectionKind::File;
    case Header::LocalStorage:
      return DataSectionKind::LocalStorage;
    case Header::Linkage:
      return DataSectionKind::Linkage;
    case Header::Screen:
      return DataSectionKind::Screen;
    case Header::ReportSection:
      return DataSectionKind::Report;
    case Header::Communication:
      return DataSectionKind::Communication;
    default:
      return DataSectionKind::WorkingStorage;
  }
}

// The entries of one section, up to the next header.
class SectionParser {
 public:
  SectionParser(HeadContext& context, DataSectionKind kind) : context_(context), kind_(kind), items_(context) {}
  void Parse();

 private:
  bool AtFileEntry() const;
  void ParseFileEntry();
  void CloseFile();

  HeadContext& context_;
  DataSectionKind kind_;
  ItemStack items_;
  NodeId file_ = 0;
};

bool SectionParser::AtFileEntry() const {
  const TokenCursor& cursor = context_.cursor;
  const bool isEntry = cursor.At(Word::Fd) || cursor.At(Word::Sd) || cursor.At(Word::Rd) || cursor.At(Word::Cd);
  return isEntry && context_.AtName(1);
}

void SectionParser::Parse() {
  items_.Begin(kind_, 0);
  bool isTold = false;
  while (HeaderAt(context_) == Header::None) {
    if (AtFileEntry()) {
      ParseFileEntry();
    } else if (AtBrokenEntry(context_)) {
      ParseDataEntry(context_, items_);
    } else if (context_.cursor.Accept(TokenKind::Period) || PassEmbedded(context_)) {
      isTold = false;
      continue;
    } else {
      if (IsVerb(context_.cursor.WordAt()) && !context_.cursor.Current().Has(kAreaA)) break;
      if (!isTold) context_.Report("This is no data description.");
      isTold = true;
      SkipSentence(context_);
      continue;
    }
    isTold = false;
  }
  CloseFile();
}

void SectionParser::CloseFile() {
  items_.CloseAll();
  if (file_ != 0) context_.model.Close(file_, context_.cursor.Previous());
  file_ = 0;
}

void SectionParser::ParseFileEntry() {
  CloseFile();
  ModelBuilder& model = context_.model;
  TokenCursor& cursor = context_.cursor;
  const Word word = cursor.WordAt();
  file_ = model.Open(Entity::File, cursor.Index());
  cursor.Next();
  const std::uint32_t token = cursor.Index();
  model.Node(file_).name = context_.NameText(token);
  FileRecord& record = model.AddFile(file_);
  record.isSort = word == Word::Sd ? 1 : 0;
  context_.scope.Declare(cursor.Current().symbol, file_);
  context_.scope.files.push_back(file_);
  cursor.Next();
  if (word == Word::Rd) {
    ParseReportDescription(context_, file_);
    items_.Begin(DataSectionKind::Report, 0);
  } else if (word == Word::Cd) {
    items_.Begin(DataSectionKind::Communication, file_);
    ParseCommunicationDescription(context_, file_);
  } else {
    ParseFileDescription(context_, file_);
    items_.Begin(kind_, file_);
  }
}

void ParseSection(HeadContext& context, Header header) {
  ModelBuilder& model = context.model;
  const NodeId section = model.Open(Entity::DataSection, context.cursor.Index());
  model.Node(section).name = context.NameText(context.cursor.Index());
  if (header == Header::UnknownSection) context.Report("This is no section of the data division.");
  PassHeader(context);
  SectionParser(context, KindOf(header)).Parse();
  model.Close(section, context.cursor.Previous());
}

}  // namespace

void ParseDataDivision(HeadContext& context) {
  ModelBuilder& model = context.model;
  const NodeId division = model.Open(Entity::Data, context.cursor.Index());
  if (HeaderAt(context) == Header::Data) PassHeader(context);
  for (;;) {
    const Header header = HeaderAt(context);
    if (IsDataSection(header)) {
      ParseSection(context, header);
      continue;
    }
    if (header != Header::None) break;
    const bool isFile = context.cursor.At(Word::Fd) || context.cursor.At(Word::Sd);
    if (isFile || AtBrokenEntry(context)) {
      context.Report("The header of a section of the data division is missing before this.");
      SectionParser(context, isFile ? DataSectionKind::File : DataSectionKind::WorkingStorage).Parse();
      if (HeaderAt(context) == Header::None) break;
      continue;
    }
    if (PassEmbedded(context) || context.cursor.Accept(TokenKind::Period)) continue;
    if (IsVerb(context.cursor.WordAt())) break;
    context.Report("This is no part of the data division.");
    SkipSentence(context);
  }
  model.Close(division, context.cursor.Previous());
}

ProgramHead ParseProgramHead(TokenCursor& cursor, ModelBuilder& model, ProgramScope& scope, SymbolTable& symbols) {
  HeadContext context(cursor, model, scope, symbols);
  scope.cicsCommArea = symbols.Find("DFHCOMMAREA");
  ProgramHead head;
  ParseIdentification(context, head);
  for (;;) {
    const Header header = HeaderAt(context);
    if (EndsHead(header)) break;
    if (header == Header::Environment || IsEnvironmentPart(header)) {
      ParseEnvironment(context);
      continue;
    }
    if (header == Header::Data || IsDataSection(header)) {
      ParseDataDivision(context);
      continue;
    }
    if (PassEmbedded(context) || cursor.Accept(TokenKind::Period)) continue;
    if (IsVerb(cursor.WordAt())) break;
    if (AtBrokenEntry(context) && cursor.At(TokenKind::Number)) {
      ParseDataDivision(context);
      continue;
    }
    context.Report("This is no part of a division.");
    SkipSentence(context);
  }
  context.TiePending();
  return head;
}

}  // namespace qmrules::workbench::codemodel::cobol
