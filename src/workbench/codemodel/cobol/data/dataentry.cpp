#include "workbench/codemodel/cobol/data/dataentry.h"

#include <fmt/format.h>

#include "workbench/codemodel/cobol/data/dataclauses.h"
#include "workbench/codemodel/cobol/data/headers.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

constexpr int kNoLevel = -1;

int LevelAt(const HeadContext& context, std::uint32_t ahead) {
  const Token& token = context.cursor.Ahead(ahead);
  if (token.kind != TokenKind::Number) return kNoLevel;
  const std::string_view text = context.cursor.Source().Text(token);
  if (text.empty() || text.size() > 2) return kNoLevel;
  int level = 0;
  for (const char digit : text) {
    if (digit < '0' || digit > '9') return kNoLevel;
    level = level * 10 + (digit - '0');
  }
  return level;
}

bool IsLevel(int level) {
  return (level >= 1 && level <= kDeepestLevel) || level == kRenamesLevel || level == kSingleLevel ||
         level == kConstantLevel || level == kConditionLevel;
}

// True for what can stand behind a level number, and not behind any other number.
bool NameFollows(const HeadContext& context) {
  const Token& next = context.cursor.Ahead(1);
  if (next.kind == TokenKind::Period) return true;
  return next.kind == TokenKind::Word && (context.cursor.WordAt(1) == Word::Filler || context.AtName(1));
}

// The clauses of one entry.
class EntryParser {
 public:
  EntryParser(HeadContext& context, ItemStack& items) : context_(context), items_(items), cursor_(context.cursor) {}
  void Parse();

 private:
  void ReadLevel();
  bool ConstantGoesOn() const;
  void ReadName();
  bool IsNameless() const;
  void ReadClauses();
  bool AtNextEntry() const;
  bool ReadClause();
  void PassOverFault();
  void Fault(std::string text);
  void Finish();

  HeadContext& context_;
  ItemStack& items_;
  TokenCursor& cursor_;
  ItemDescription item_;
};

void EntryParser::Fault(std::string text) {
  if (!item_.isFaulty) context_.Report(std::move(text));
  item_.isFaulty = true;
}

void EntryParser::Parse() {
  item_.firstToken = cursor_.Index();
  item_.section = items_.Section();
  ReadLevel();
  item_.node = items_.Open(item_.level, item_.firstToken);
  ReadName();
  ReadClauses();
  Finish();
}

// A level number's place; where it is lost, the item goes on at the level of the last one.
void EntryParser::ReadLevel() {
  const int level = LevelAt(context_, 0);
  if (level == kNoLevel) {
    item_.level = items_.NextLevel();
    Fault("The level number of this item is missing.");
    if (!cursor_.At(TokenKind::Word) || context_.AtName(1)) cursor_.Next();
    return;
  }
  item_.level = static_cast<std::uint8_t>(level);
  if (!IsLevel(level)) {
    Fault(fmt::format("{} is no level number.", level));
    item_.level = items_.NextLevel();
  }
  if (level == 1 && cursor_.WordAt(2) == Word::Constant) item_.level = kConstantLevel;
  cursor_.Next();
  if (item_.level == kConstantLevel && !ConstantGoesOn()) items_.CloseAll();
}

// A constant can stand among the items of a group: the entry behind it tells.
bool EntryParser::ConstantGoesOn() const {
  constexpr std::uint32_t kFar = 64;
  for (std::uint32_t ahead = 0; ahead < kFar; ++ahead) {
    if (cursor_.Ahead(ahead).kind != TokenKind::Period) continue;
    const int level = LevelAt(context_, ahead + 1);
    if (level != kConstantLevel) return level > 1 && level <= kDeepestLevel;
  }
  return false;
}

// True when a clause stands where the name would.
bool EntryParser::IsNameless() const {
  if (!context_.AtName()) return true;
  const Word word = cursor_.WordAt();
  if (item_.section == DataSectionKind::Report && BeginsReportClause(word)) return true;
  if (item_.section == DataSectionKind::Screen && BeginsScreenClause(context_)) return true;
  return BeginsDataClause(word) && cursor_.Ahead(1).kind == TokenKind::Picture;
}

void EntryParser::ReadName() {
  ModelBuilder& model = context_.model;
  if (cursor_.At(Word::Filler) || IsNameless()) {
    cursor_.Accept(Word::Filler);
    item_.flags |= kFiller;
    return;
  }
  const std::uint32_t token = cursor_.Index();
  item_.name = cursor_.Current().symbol;
  model.Node(item_.node).name = context_.NameText(token);
  context_.scope.Declare(item_.name, item_.node);
  if (item_.level == kConstantLevel) {
    context_.scope.DeclareSpecial(item_.name, ProgramScope::SpecialKind::Constant, item_.node);
  }
  cursor_.Next();
}

bool EntryParser::ReadClause() {
  if (item_.section == DataSectionKind::Report && ParseReportClause(context_, item_)) return true;
  if (item_.section == DataSectionKind::Screen && ParseScreenClause(context_, item_)) return true;
  return ParseDataClause(context_, items_, item_);
}

// An entry of any kind that begins although the last one has no full stop.
bool EntryParser::AtNextEntry() const {
  if (cursor_.At(TokenKind::Number)) return AtEntry(context_);
  if (!cursor_.At(TokenKind::Word) || !cursor_.Current().Has(kFirstOnRow)) return false;
  const Word word = cursor_.WordAt();
  return (word == Word::Fd || word == Word::Sd || word == Word::Rd || word == Word::Cd) && context_.AtName(1);
}

void EntryParser::ReadClauses() {
  while (!cursor_.Accept(TokenKind::Period)) {
    if (HeaderAt(context_) != Header::None) {
      Fault("The full stop of the data description before this is missing.");
      return;
    }
    if (AtNextEntry()) {
      Fault("The full stop of the data description before this is missing.");
      return;
    }
    if (!ReadClause()) PassOverFault();
  }
}

// What stands at the cursor is no clause.
void EntryParser::PassOverFault() {
  const Token& token = cursor_.Current();
  if (token.kind == TokenKind::Word) {
    Fault(fmt::format("{} is no clause of a data description.", cursor_.Text()));
  } else {
    Fault("This is no clause of a data description.");
  }
  do {
    cursor_.Next();
    if (cursor_.At(TokenKind::Period) || HeaderAt(context_) != Header::None) return;
    if (AtNextEntry()) return;
  } while (!BeginsDataClause(cursor_.WordAt()));
}

void EntryParser::Finish() {
  if (item_.name != SymbolTable::kNone && item_.number >= 0 && item_.level == kConstantLevel) {
    context_.scope.SetConstant(item_.name, item_.number);
  }
  items_.Describe(item_, cursor_.Previous());
}

}  // namespace

bool AtEntry(const HeadContext& context) {
  if (!IsLevel(LevelAt(context, 0))) return false;
  return NameFollows(context) ||
         (context.cursor.Current().Has(kFirstOnRow) && BeginsDataClause(context.cursor.WordAt(1)));
}

bool AtBrokenEntry(const HeadContext& context) {
  const TokenCursor& cursor = context.cursor;
  if (LevelAt(context, 0) != kNoLevel) return true;
  const std::uint32_t name = cursor.At(TokenKind::Word) && context.AtName(1) ? 1 : 0;
  if (!context.AtName(name) && cursor.WordAt(name) != Word::Filler) return false;
  return cursor.Ahead(name + 1).kind == TokenKind::Word && BeginsDataClause(cursor.WordAt(name + 1));
}

void ParseDataEntry(HeadContext& context, ItemStack& items) {
  EntryParser(context, items).Parse();
}

}  // namespace qmrules::workbench::codemodel::cobol
