#include "workbench/codemodel/cobol/procedure/clauses.h"
#include "workbench/codemodel/cobol/procedure/communicationverbs.h"
#include "workbench/codemodel/cobol/procedure/sortverbs.h"
#include "workbench/codemodel/cobol/procedure/statementfamilies.h"
#include "workbench/codemodel/cobol/procedure/terminalverbs.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

// SHARING WITH {ALL OTHER | NO OTHER | READ ONLY}
void SharingClause(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  if (!cursor.Accept(Word::Sharing)) return;
  cursor.Accept(Word::With);
  if (cursor.Accept(Word::Read)) {
    AcceptSpelled(parser, "ONLY");
  } else {
    if (!cursor.Accept(Word::All)) cursor.Accept(Word::No);
    cursor.Accept(Word::Other);
  }
}

// RETRY {n TIMES | FOR n SECONDS | FOREVER}
void RetryClause(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  if (!cursor.Accept(Word::Retry)) return;
  if (AcceptSpelled(parser, "FOREVER")) return;
  cursor.Accept(Word::For);
  if (!Need(parser, parser.Operand().Expression(Role::Times), "RETRY lacks its operand.")) return;
  if (!cursor.Accept(Word::Times)) AcceptSpelled(parser, "SECONDS");
}

// What LOCK can be told with: WITH [KEPT | NO | IGNORE | EXCLUSIVE] LOCK, ADVANCING ON LOCK, WITH WAIT, NO WAIT.
bool LockWord(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  using enum Word;
  switch (cursor.WordAt()) {
    case Kept:
    case Ignore:
    case Exclusive:
    case Automatic:
    case Lock:
    case Wait:
    case Advancing:
      cursor.Next();
      return true;
    case No:
      if (cursor.WordAt(1) != Lock && cursor.WordAt(1) != Wait && cursor.WordAt(1) != Rewind) return false;
      cursor.Next();
      return true;
    case On:
      if (cursor.WordAt(1) != Lock) return false;
      cursor.Next();
      return true;
    case With:
      cursor.Next();
      return true;
    default:
      return AcceptSpelled(parser, "SKIP");
  }
}

void LockClauses(StatementParser& parser) {
  do {
    RetryClause(parser);
  } while (LockWord(parser));
}

struct OpenMode {
  Word word = Word::None;
  Role role = Role::File;
};
constexpr OpenMode kOpenModes[] = {
    {Word::Input, Role::Input}, {Word::Output, Role::Output}, {Word::Extend, Role::Output}, {Word::IO, Role::Both}};

bool OpenFiles(StatementParser& parser, Role role) {
  TokenCursor& cursor = parser.Cursor();
  SharingClause(parser);
  RetryClause(parser);
  if (!Need(parser, parser.Operand().FileName(role) != 0, "OPEN lacks the name of a file.")) return false;
  do {
    cursor.Accept(Word::Reversed);
    while (LockWord(parser) || cursor.Accept(Word::Rewind)) {
    }
    SharingClause(parser);
  } while (parser.Operand().FileName(role) != 0);
  return true;
}

void ParseOpen(StatementParser& parser, NodeId) {
  TokenCursor& cursor = parser.Cursor();
  cursor.Accept(Word::Exclusive);
  bool some = false;
  for (;;) {
    const OpenMode* found = nullptr;
    for (const OpenMode& mode : kOpenModes) {
      if (cursor.At(mode.word)) found = &mode;
    }
    if (found == nullptr) break;
    cursor.Next();
    some = true;
    if (!OpenFiles(parser, found->role)) return;
  }
  Need(parser, some, "OPEN lacks INPUT, OUTPUT, I-O or EXTEND.");
}

void ParseClose(StatementParser& parser, NodeId) {
  TokenCursor& cursor = parser.Cursor();
  if (!Need(parser, parser.Operand().FileName(Role::File) != 0, "CLOSE lacks the name of a file.")) return;
  do {
    if (cursor.Accept(Word::Reel) || cursor.Accept(Word::Unit)) {
      if (cursor.At(Word::For) && cursor.WordAt(1) == Word::Removal) cursor.Next();
      cursor.Accept(Word::Removal);
    }
    while (LockWord(parser) || cursor.Accept(Word::Rewind)) {
    }
  } while (parser.Operand().FileName(Role::File) != 0);
}

// KEY [IS] name
void KeyClause(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  if (!cursor.Accept(Word::Key)) return;
  cursor.Accept(Word::Is);
  Need(parser, parser.Operand().Variable(Role::Key, VarUsage::Out) != 0, "KEY lacks its operand.");
}

void ParseRead(StatementParser& parser, NodeId) {
  TokenCursor& cursor = parser.Cursor();
  const NodeId file = parser.Operand().FileName(Role::File);
  if (!Need(parser, file != 0, "READ lacks the name of a file.")) return;
  ImplicitRecord(parser, file);
  if (!cursor.Accept(Word::Next)) cursor.Accept(Word::Previous);
  cursor.Accept(Word::Record);
  LockClauses(parser);
  IntoClause(parser);
  LockClauses(parser);
  KeyClause(parser);
  LockClauses(parser);
}

// The record, or FILE and the file's name. FROM, when it comes, changes the record first.
bool RecordOperand(StatementParser& parser, std::string_view missing) {
  TokenCursor& cursor = parser.Cursor();
  NodeId record = 0;
  if (cursor.Accept(Word::File)) {
    record = parser.Operand().FileName(Role::File);
  } else {
    record = parser.Operand().Variable(Role::Record, VarUsage::Out);
    if (record != 0) ImplicitFile(parser, record);
  }
  if (!Need(parser, record != 0, missing)) return false;
  cursor.Accept(Word::Record);
  if (cursor.At(Word::From) && parser.Model().Node(record).entity == Entity::Var) {
    Turn(parser, record, Role::Record, VarUsage::InOut);
  }
  FromClause(parser);
  return true;
}

void ParseWrite(StatementParser& parser, NodeId) {
  if (!RecordOperand(parser, "WRITE lacks the name of a record.")) return;
  AdvancingClause(parser);
  LockClauses(parser);
}

void ParseRewrite(StatementParser& parser, NodeId) {
  if (!RecordOperand(parser, "REWRITE lacks the name of a record.")) return;
  LockClauses(parser);
}

void ParseDelete(StatementParser& parser, NodeId) {
  TokenCursor& cursor = parser.Cursor();
  Operands& operands = parser.Operand();
  const bool whole = cursor.Accept(Word::File);
  if (!Need(parser, operands.FileName(Role::File) != 0, "DELETE lacks the name of a file.")) return;
  while (whole && operands.FileName(Role::File) != 0) {
  }
  cursor.Accept(Word::Record);
  LockClauses(parser);
}

bool AcceptRelationWord(TokenCursor& cursor) {
  using enum Word;
  switch (cursor.WordAt()) {
    case Is:
    case Not:
    case Greater:
    case Less:
    case Equal:
    case Equals:
    case Than:
    case To:
    case Or:
    case Exceeds:
    case Unequal:
    case First:
    case Last:
      cursor.Next();
      return true;
    default:
      break;
  }
  for (const TokenKind kind : {TokenKind::Less, TokenKind::Greater, TokenKind::Equal, TokenKind::LessEqual,
                               TokenKind::GreaterEqual, TokenKind::NotEqual}) {
    if (cursor.Accept(kind)) return true;
  }
  return false;
}

void ParseStart(StatementParser& parser, NodeId) {
  TokenCursor& cursor = parser.Cursor();
  Operands& operands = parser.Operand();
  if (!Need(parser, operands.FileName(Role::File) != 0, "START lacks the name of a file.")) return;
  bool wholeFile = cursor.At(Word::First) || cursor.At(Word::Last);
  if (cursor.Accept(Word::Key) || wholeFile) {
    bool related = false;
    while (AcceptRelationWord(cursor)) related = true;
    const Word before = cursor.Source().tokens[cursor.Previous()].kind == TokenKind::Word
                            ? WordOf(cursor.Source().tokens[cursor.Previous()].symbol)
                            : Word::None;
    wholeFile = before == Word::First || before == Word::Last;
    if (!Need(parser, related, "KEY lacks its relation.")) return;
    if (!wholeFile && !Need(parser, operands.Variable(Role::Key, VarUsage::Out) != 0, "KEY lacks its operand.")) return;
  }
  if (cursor.At(Word::With) && (cursor.WordAt(1) == Word::Length || cursor.WordAt(1) == Word::Size)) cursor.Next();
  if (!cursor.Accept(Word::Length) && !cursor.Accept(Word::Size)) return;
  Need(parser, operands.Expression(Role::Other), "LENGTH lacks its operand.");
}

void ParseUnlock(StatementParser& parser, NodeId) {
  TokenCursor& cursor = parser.Cursor();
  if (!Need(parser, parser.Operand().FileName(Role::File) != 0, "UNLOCK lacks the name of a file.")) return;
  if (!cursor.Accept(Word::Record)) cursor.Accept(Word::Records);
}

void ParseAlone(StatementParser&, NodeId) {}

constexpr VerbSpec kFileVerbs[] = {
    {Word::Open, Verb::Open, Entity::IoStat, ParseOpen},
    {Word::Close, Verb::Close, Entity::IoStat, ParseClose},
    {Word::Read, Verb::Read, Entity::IoStat, ParseRead, Word::EndRead, true},
    {Word::Write, Verb::Write, Entity::IoStat, ParseWrite, Word::EndWrite, true},
    {Word::Rewrite, Verb::Rewrite, Entity::IoStat, ParseRewrite, Word::EndRewrite, true},
    {Word::Delete, Verb::Delete, Entity::IoStat, ParseDelete, Word::EndDelete, true},
    {Word::Start, Verb::Start, Entity::IoStat, ParseStart, Word::EndStart, true},
    {Word::Unlock, Verb::Unlock, Entity::IoStat, ParseUnlock},
    {Word::Commit, Verb::Commit, Entity::Stat, ParseAlone},
    {Word::Rollback, Verb::Rollback, Entity::Stat, ParseAlone},
    {Word::Sort, Verb::Sort, Entity::IoStat, ParseSort},
    {Word::Merge, Verb::Merge, Entity::IoStat, ParseMerge},
    {Word::Release, Verb::Release, Entity::IoStat, ParseRelease},
    {Word::Return, Verb::Return, Entity::IoStat, ParseReturn, Word::EndReturn, true},
    {Word::Accept, Verb::Accept, Entity::IoStat, ParseAccept, Word::EndAccept, true},
    {Word::Display, Verb::Display, Entity::IoStat, ParseDisplay, Word::EndDisplay, true},
    {Word::Exhibit, Verb::Exhibit, Entity::IoStat, ParseExhibit},
    {Word::Ready, Verb::Ready, Entity::Stat, ParseTrace},
    {Word::Reset, Verb::Reset, Entity::Stat, ParseTrace},
    {Word::Send, Verb::Send, Entity::IoStat, ParseSend},
    {Word::Receive, Verb::Receive, Entity::IoStat, ParseReceive, Word::None, true},
    {Word::Enable, Verb::Enable, Entity::IoStat, ParseEnable},
    {Word::Disable, Verb::Disable, Entity::IoStat, ParseEnable},
    {Word::Purge, Verb::Purge, Entity::IoStat, ParsePurge},
    {Word::Initiate, Verb::Initiate, Entity::IoStat, ParseInitiate},
    {Word::Generate, Verb::Generate, Entity::IoStat, ParseGenerate},
    {Word::Terminate, Verb::Terminate, Entity::IoStat, ParseInitiate},
    {Word::Suppress, Verb::Suppress, Entity::IoStat, ParseSuppress},
};

}  // namespace

std::span<const VerbSpec> FileVerbs() {
  return kFileVerbs;
}

}  // namespace qmrules::workbench::codemodel::cobol
