#include <fmt/format.h>

#include <string>

#include "workbench/codemodel/cobol/data/divisions.h"
#include "workbench/codemodel/cobol/data/headers.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

using enum Word;

// One SELECT entry.
class SelectParser {
 public:
  explicit SelectParser(HeadContext& context) : context_(context), cursor_(context.cursor) {}
  void Parse();

 private:
  bool ParseClause();
  bool ParseOrganization();
  void ParseAssign();
  void ParseAccess();
  void ParseRecordKey();
  void ParseLock();
  void ParsePadding();
  bool AtClause() const;
  void ReadKey(Role role, VarUsage usage, PendingName::Patch patch);
  void ReadSplitKey();

  HeadContext& context_;
  TokenCursor& cursor_;
  std::uint32_t selection_ = 0;
  bool isTold_ = false;
};

void SelectParser::Parse() {
  cursor_.Next();
  context_.PassOver({Not, Optional});
  selection_ = static_cast<std::uint32_t>(context_.selections.size());
  context_.selections.emplace_back();
  if (context_.AtName()) {
    context_.selectionOf.try_emplace(cursor_.Current().symbol, selection_);
    context_.selections.back().select = context_.ReadReference(Role::File, PendingName::Kind::File);
  } else {
    context_.Report("The name of the file is missing here.");
    isTold_ = true;
  }
  while (!cursor_.Accept(TokenKind::Period)) {
    if (HeaderAt(context_) != Header::None || cursor_.At(Select)) {
      if (!isTold_) context_.Report("The full stop of the SELECT before this is missing.");
      return;
    }
    if (ParseClause()) continue;
    if (!isTold_) context_.Report("This is no clause of a SELECT.");
    isTold_ = true;
    cursor_.Next();
  }
}

bool SelectParser::AtClause() const {
  switch (cursor_.WordAt()) {
    case Assign:
    case Organization:
    case Access:
    case Record:
    case Alternate:
    case Relative:
    case File:
    case Status:
    case Reserve:
    case Padding:
    case Lock:
    case Sharing:
    case Password:
    case Collating:
    case Sequential:
    case Indexed:
    case Line:
    case Select:
    case Key:
      return true;
    default:
      return false;
  }
}

bool SelectParser::ParseClause() {
  switch (cursor_.WordAt()) {
    case Assign:
      cursor_.Next();
      ParseAssign();
      return true;
    case Access:
      cursor_.Next();
      ParseAccess();
      return true;
    case Record:
      ParseRecordKey();
      return true;
    case Alternate:
      cursor_.Next();
      context_.PassOver({Record, Key, Is});
      ReadKey(Role::Key, VarUsage::Out, PendingName::Patch::None);
      ReadSplitKey();
      return true;
    case File:
    case Status:
      cursor_.Next();
      context_.PassOver({Status, Is});
      ReadKey(Role::Status, VarUsage::In, PendingName::Patch::FileStatus);
      if (context_.AtName() && !AtClause()) ReadKey(Role::Status, VarUsage::In, PendingName::Patch::None);
      return true;
    case Reserve:
      cursor_.Next();
      context_.PassOver({Is, No, Alternate});
      if (cursor_.At(TokenKind::Number)) cursor_.Next();
      context_.PassOver({Alternate, Area, Areas});
      return true;
    case Padding:
      cursor_.Next();
      ParsePadding();
      return true;
    case Lock:
    case Sharing:
      cursor_.Next();
      ParseLock();
      return true;
    case Password:
      cursor_.Next();
      cursor_.Accept(Is);
      ReadKey(Role::Other, VarUsage::Out, PendingName::Patch::None);
      return true;
    case Collating:
      cursor_.Next();
      context_.PassOver({Sequence, Is});
      context_.ReadReference(Role::Other, PendingName::Kind::Program);
      return true;
    case For:
    case Multiple:
      context_.PassOver({For, Multiple, Reel, Unit});
      return true;
    default:
      return ParseOrganization();
  }
}

// What the file is on, up to the next clause: it is not looked into.
void SelectParser::ParseAssign() {
  context_.PassOver({To, Using});
  std::string target;
  while (!AtClause() && !cursor_.At(TokenKind::Period) && HeaderAt(context_) == Header::None && !cursor_.At(For)) {
    if (!target.empty()) target += ' ';
    target += cursor_.Text();
    const bool isVariable = cursor_.At(Varying) || cursor_.At(Dynamic);
    cursor_.Next();
    if (isVariable && context_.AtName()) {
      target += ' ';
      target += cursor_.Text();
      context_.ReadVariable(Role::Other, VarUsage::Out);
    }
  }
  context_.selections[selection_].assign = context_.model.Text(target);
  if (cursor_.Accept(For)) context_.PassOver({Multiple, Reel, Unit});
}

bool SelectParser::ParseOrganization() {
  const std::uint32_t start = cursor_.Index();
  if (cursor_.Accept(Organization)) cursor_.Accept(Is);
  const bool byRecords = cursor_.At(Record) && cursor_.WordAt(1) != Key;
  std::string_view kind;
  if (cursor_.Accept(Line) || (byRecords && cursor_.Accept(Record))) {
    kind = byRecords ? "SEQUENTIAL" : "LINE SEQUENTIAL";
    cursor_.Accept(Binary);
    cursor_.Accept(Sequential);
  } else if (cursor_.Accept(Sequential)) {
    kind = "SEQUENTIAL";
  } else if (cursor_.Accept(Indexed)) {
    kind = "INDEXED";
  } else if (cursor_.Accept(Relative)) {
    kind = "RELATIVE";
    cursor_.Accept(Key);
    cursor_.Accept(Is);
    if (context_.AtName() && !AtClause()) ReadKey(Role::Key, VarUsage::InOut, PendingName::Patch::FileKey);
  } else {
    return cursor_.Index() != start;
  }
  TextId& organization = context_.selections[selection_].organization;
  if (organization == 0) organization = context_.model.Text(kind);
  return true;
}

void SelectParser::ParseAccess() {
  context_.PassOver({Mode, Is});
  if (!cursor_.At(Sequential) && !cursor_.At(Random) && !cursor_.At(Dynamic)) return;
  context_.selections[selection_].access = context_.model.Text(context_.symbols.Text(cursor_.Current().symbol));
  cursor_.Next();
  if (cursor_.At(Relative) || cursor_.At(Key)) {
    cursor_.Accept(Relative);
    context_.PassOver({Key, Is});
    ReadKey(Role::Key, VarUsage::InOut, PendingName::Patch::FileKey);
  }
}

void SelectParser::ParseRecordKey() {
  cursor_.Next();
  if (cursor_.Accept(Delimiter)) {
    cursor_.Accept(Is);
    if (cursor_.At(TokenKind::Word)) cursor_.Next();
    return;
  }
  context_.PassOver({Key, Is});
  ReadKey(Role::Key, VarUsage::Out, PendingName::Patch::FileKey);
  ReadSplitKey();
}

// A key that is put together from several items: KEY IS NAME = ITEM ITEM, or NAME SOURCE IS ITEM ITEM.
void SelectParser::ReadSplitKey() {
  const bool isSplit = cursor_.Accept(TokenKind::Equal) || (cursor_.Accept(Source) && (cursor_.Accept(Is), true));
  while (isSplit && context_.AtName() && !AtClause()) ReadKey(Role::Key, VarUsage::Out, PendingName::Patch::None);
  cursor_.Accept(With);
  cursor_.Accept(Duplicates);
  if (cursor_.Accept(No)) cursor_.Accept(Duplicates);
  if (cursor_.Accept(Suppress)) {
    cursor_.Accept(When);
    cursor_.Accept(All);
    if (context_.AtLiteral()) context_.ReadLiteral(Role::Other);
  }
}

void SelectParser::ReadKey(Role role, VarUsage usage, PendingName::Patch patch) {
  const PendingName pending{.kind = PendingName::Kind::OfFile, .patch = patch, .selection = selection_};
  if (context_.ReadVariable(role, usage, pending) != 0) return;
  if (!isTold_) context_.Report("The name of a data item is missing here.");
  isTold_ = true;
}

void SelectParser::ParsePadding() {
  context_.PassOver({Character, Is});
  context_.ReadOperand(Role::Other);
}

void SelectParser::ParseLock() {
  context_.PassOver({Mode, Is, Manual, Automatic, Exclusive, With, Lock, On, Multiple, Record, Records, All, Other, No,
                     Read, Rollback});
  context_.AcceptText("ONLY");
}

}  // namespace

void ParseFileControl(HeadContext& context) {
  TokenCursor& cursor = context.cursor;
  bool isTold = false;
  while (HeaderAt(context) == Header::None) {
    if (cursor.At(Select)) {
      SelectParser(context).Parse();
      isTold = false;
    } else if (!cursor.Accept(TokenKind::Period)) {
      if (!isTold) context.Report("This is no SELECT.");
      isTold = true;
      SkipSentence(context);
    }
  }
}

// SAME AREA, RERUN and the like: the files that they name.
void ParseIOControl(HeadContext& context) {
  TokenCursor& cursor = context.cursor;
  bool takesFiles = false;
  while (HeaderAt(context) == Header::None) {
    if (cursor.Accept(TokenKind::Period)) {
      takesFiles = false;
    } else if (cursor.At(Same) || cursor.At(Rerun) || cursor.At(Multiple)) {
      takesFiles = cursor.At(Same);
      cursor.Next();
    } else if (context.AtText("APPLY")) {
      cursor.Next();
      takesFiles = false;
    } else if (cursor.At(On) || cursor.At(Of) || cursor.At(Tape) || cursor.At(Contains) || cursor.At(Area)) {
      takesFiles = true;
      cursor.Next();
    } else if (takesFiles && context.AtName() && context.selectionOf.contains(cursor.Current().symbol)) {
      context.ReadReference(Role::File, PendingName::Kind::File);
    } else {
      cursor.Next();
    }
  }
}

}  // namespace qmrules::workbench::codemodel::cobol
