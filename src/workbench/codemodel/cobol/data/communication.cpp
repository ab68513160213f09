#include <fmt/format.h>

#include <span>
#include <string_view>

#include "workbench/codemodel/cobol/data/dataentry.h"
#include "workbench/codemodel/cobol/data/divisions.h"
#include "workbench/codemodel/cobol/data/headers.h"
#include "workbench/codemodel/cobol/data/layout.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

using enum Word;

// A part of the record that a communication description stands for.
struct Part {
  Word first, second;  // the words of its clause
  std::string_view picture;
};

constexpr Part kInput[] = {
    {Queue, None, "X(12)"},  {SubQueue1, None, "X(12)"}, {SubQueue2, None, "X(12)"}, {SubQueue3, None, "X(12)"},
    {Message, Date, "9(6)"}, {Message, Time, "9(8)"},    {Source, None, "X(12)"},    {Text, Length, "9(4)"},
    {End, Key, "X"},         {Status, Key, "X(2)"},      {Message, Count, "9(6)"},
};
constexpr Part kOutput[] = {
    {Destination, Count, "9(4)"}, {Text, Length, "9(4)"}, {Status, Key, "X(2)"}, {Error, Key, "X"},
    {Destination, None, "X(12)"},
};
constexpr Part kInputOutput[] = {
    {Message, Date, "9(6)"}, {Message, Time, "9(8)"}, {Terminal, None, "X(12)"},
    {Text, Length, "9(4)"},  {End, Key, "X"},         {Status, Key, "X(2)"},
};

// The clauses of one CD, which name the parts of its record.
class CommunicationParser {
 public:
  CommunicationParser(HeadContext& context, NodeId description)
      : context_(context), cursor_(context.cursor), description_(description) {}
  void Parse();

 private:
  void ReadDirection();
  bool ParseClause();
  bool ParseTable();
  void Declare(std::size_t part);
  void LayOut();

  HeadContext& context_;
  TokenCursor& cursor_;
  NodeId description_;
  NodeId record_ = 0;
  std::span<const Part> parts_ = kInput;
  std::size_t next_ = 0;  // the part that a name without words is for
  std::uint32_t occurs_ = 1;
  bool isTold_ = false;
};

void CommunicationParser::ReadDirection() {
  context_.PassOver({For, Initial});
  if (cursor_.Accept(Output)) parts_ = kOutput;
  if (cursor_.Accept(IO)) parts_ = kInputOutput;
  cursor_.Accept(Input);
}

void CommunicationParser::Parse() {
  ReadDirection();
  ModelBuilder& model = context_.model;
  record_ = model.Open(Entity::Decl, cursor_.Index());
  model.Node(record_).flags |= kImplicit;
  DeclRecord& record = model.AddDecl(record_);
  record.area = record_;
  record.level = 1;
  record.flags = kFiller;
  record.section = static_cast<std::uint8_t>(DataSectionKind::Communication);
  FileRecord& file = model.File(description_);
  file.firstRecord = record_;
  file.organization = model.Text("COMMUNICATION");
  while (!cursor_.Accept(TokenKind::Period)) {
    if (HeaderAt(context_) != Header::None || cursor_.At(Cd) ||
        (cursor_.At(TokenKind::Number) && cursor_.Current().Has(kFirstOnRow) && AtEntry(context_))) {
      if (!isTold_) context_.Report("The full stop of the communication description before this is missing.");
      break;
    }
    if (ParseClause()) continue;
    if (!isTold_) context_.Report("This is no clause of a communication description.");
    isTold_ = true;
    cursor_.Next();
  }
  LayOut();
  model.Close(record_, cursor_.Previous());
}

bool CommunicationParser::ParseTable() {
  if (!cursor_.At(Destination) || cursor_.WordAt(1) != Table) return false;
  context_.PassOver({Destination, Table, Occurs});
  if (cursor_.At(TokenKind::Number)) {
    occurs_ = 0;
    for (const char digit : cursor_.Text().substr(0, 4)) {
      if (digit >= '0' && digit <= '9') occurs_ = occurs_ * 10 + static_cast<std::uint32_t>(digit - '0');
    }
    cursor_.Next();
  }
  cursor_.Accept(Times);
  if (!cursor_.Accept(Indexed)) return true;
  cursor_.Accept(By);
  while (context_.AtName()) {
    const std::uint32_t token = cursor_.Index();
    const NodeId node = context_.model.Leaf(Entity::Decl, token, token);
    context_.model.Node(node).name = context_.NameText(token);
    DeclRecord& decl = context_.model.AddDecl(node);
    decl.area = node;
    decl.size = 4;
    decl.usage = DataUsage::Index;
    decl.flags = kIndexName | kNumeric | kSigned;
    decl.section = static_cast<std::uint8_t>(DataSectionKind::Communication);
    context_.scope.Declare(cursor_.Current().symbol, node);
    cursor_.Next();
  }
  return true;
}

bool CommunicationParser::ParseClause() {
  if (cursor_.Accept(Symbolic)) return true;
  if (ParseTable()) return true;
  for (std::size_t part = 0; part < parts_.size(); ++part) {
    if (!cursor_.At(parts_[part].first)) continue;
    if (parts_[part].second != None && cursor_.WordAt(1) != parts_[part].second) continue;
    cursor_.Next();
    if (parts_[part].second != None) cursor_.Next();
    cursor_.Accept(Is);
    if (context_.AtName()) Declare(part);
    return true;
  }
  if (cursor_.At(Filler) && next_ < parts_.size()) {
    cursor_.Next();
    ++next_;
    return true;
  }
  if (!context_.AtName() || next_ >= parts_.size()) return false;
  Declare(next_++);
  return true;
}

void CommunicationParser::Declare(std::size_t part) {
  const std::uint32_t token = cursor_.Index();
  ModelBuilder& model = context_.model;
  const NodeId node = model.Leaf(Entity::Decl, token, token);
  model.Node(node).name = context_.NameText(token);
  DeclRecord& decl = model.AddDecl(node);
  decl.area = record_;
  decl.level = 2;
  decl.usage = DataUsage::Display;
  decl.section = static_cast<std::uint8_t>(DataSectionKind::Communication);
  decl.picture = model.Text(parts_[part].picture);
  for (std::size_t before = 0; before < part; ++before) {
    decl.offset += ParsePicture(parts_[before].picture)->characters;
  }
  const PictureFacts picture = *ParsePicture(parts_[part].picture);
  decl.size = picture.characters;
  DescribePicture(decl, picture);
  context_.scope.Declare(cursor_.Current().symbol, node);
  cursor_.Next();
}

// The size of the record; a table of destinations repeats the error key and the name.
void CommunicationParser::LayOut() {
  constexpr std::size_t kTable = 3;
  DeclRecord& record = context_.model.Decl(record_);
  record.usage = DataUsage::Group;
  for (std::size_t part = 0; part < parts_.size(); ++part) {
    const bool repeats = parts_.data() == kOutput && part >= kTable;
    record.size += ParsePicture(parts_[part].picture)->characters * (repeats ? occurs_ : 1ULL);
  }
}

}  // namespace

void ParseCommunicationDescription(HeadContext& context, NodeId description) {
  CommunicationParser(context, description).Parse();
}

}  // namespace qmrules::workbench::codemodel::cobol
