#include "workbench/codemodel/cobol/procedure/terminalverbs.h"

#include <algorithm>
#include <iterator>

#include "workbench/codemodel/cobol/procedure/clauses.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

// How a field of the screen is shown and keyed in. Some of these words can be names elsewhere, so they are known by
// their spelling. In the order of the alphabet.
enum class Setting : std::uint8_t { Plain, Valued, OptionallyValued };
struct ScreenWord {
  std::string_view word;
  Setting setting = Setting::Plain;
};
constexpr ScreenWord kScreenWords[] = {
    {"AUTO"},
    {"AUTO-SKIP"},
    {"AUTOTERMINATE"},
    {"BACKGROUND-COLOR", Setting::Valued},
    {"BEEP"},
    {"BELL"},
    {"BLANK"},
    {"BLINK"},
    {"BLINKING"},
    {"COLOR", Setting::Valued},
    {"COLOUR", Setting::Valued},
    {"CONTROL", Setting::Valued},
    {"CONVERSION"},
    {"CONVERT"},
    {"CURSOR", Setting::OptionallyValued},
    {"ECHO"},
    {"EMPTY-CHECK"},
    {"EOL"},
    {"EOS"},
    {"ERASE"},
    {"FOREGROUND-COLOR", Setting::Valued},
    {"FULL"},
    {"GRID"},
    {"HIGH"},
    {"HIGHLIGHT"},
    {"LEFT-JUSTIFY"},
    {"LEFTLINE"},
    {"LENGTH-CHECK"},
    {"LOW"},
    {"LOWER"},
    {"LOWLIGHT"},
    {"NO-ECHO"},
    {"OFF"},
    {"OVERLINE"},
    {"PROMPT", Setting::OptionallyValued},
    {"PROTECTED", Setting::OptionallyValued},
    {"REQUIRED"},
    {"REVERSE"},
    {"REVERSE-VIDEO"},
    {"REVERSED"},
    {"RIGHT-JUSTIFY"},
    {"SCREEN"},
    {"SECURE"},
    {"SIZE", Setting::Valued},
    {"SPACE-FILL"},
    {"STANDARD"},
    {"TAB"},
    {"TIME-OUT", Setting::Valued},
    {"TIMEOUT", Setting::Valued},
    {"TRAILING-SIGN"},
    {"UNDERLINE"},
    {"UNDERLINED"},
    {"UPDATE"},
    {"UPPER"},
    {"ZERO-FILL"},
};

static_assert(std::is_sorted(std::begin(kScreenWords), std::end(kScreenWords),
                             [](const ScreenWord& a, const ScreenWord& b) { return a.word < b.word; }));

const ScreenWord* ScreenWordAt(StatementParser& parser) {
  const Token& token = parser.Cursor().Current();
  if (token.kind != TokenKind::Word || parser.Scope().IsDeclared(token.symbol)) return nullptr;
  const std::string_view text = parser.Symbols().Text(token.symbol);
  const ScreenWord* found = std::lower_bound(std::begin(kScreenWords), std::end(kScreenWords), text,
                                             [](const ScreenWord& a, std::string_view b) { return a.word < b; });
  return found != std::end(kScreenWords) && found->word == text ? found : nullptr;
}

// {LINE | COLUMN | COL | POSITION} [NUMBER] [IS] [PLUS | MINUS] operand
bool PlaceClause(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  using enum Word;
  if (cursor.At(TokenKind::Word) && parser.Scope().IsDeclared(cursor.Current().symbol)) return false;
  if (!cursor.Accept(Line) && !cursor.Accept(Column) && !cursor.Accept(Col) && !cursor.Accept(Position)) return false;
  cursor.Accept(Number);
  cursor.Accept(Is);
  if (!cursor.Accept(Plus) && !cursor.Accept(Minus) && !cursor.Accept(TokenKind::Plus)) cursor.Accept(TokenKind::Minus);
  Need(parser, parser.Operand().Expression(Role::Other), "The line or column lacks its number.");
  return true;
}

// SCROLL {UP | DOWN} [BY] operand [LINES]
bool ScrollClause(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  if (!AcceptSpelled(parser, "SCROLL")) return false;
  if (!cursor.Accept(Word::Up)) cursor.Accept(Word::Down);
  cursor.Accept(Word::By);
  parser.Operand().Operand(Role::Other);
  if (!cursor.Accept(Word::Lines)) cursor.Accept(Word::Line);
  return true;
}

bool SettingClause(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  const ScreenWord* word = ScreenWordAt(parser);
  if (word == nullptr) return false;
  cursor.Next();
  if (word->word == "BLANK" || word->word == "ERASE") {
    // What is blanked.
    if (!cursor.Accept(Word::Line) && !cursor.Accept(Word::Screen) && !cursor.Accept(Word::Eol))
      cursor.Accept(Word::Eos);
    return true;
  }
  if (word->setting == Setting::Plain) return true;
  if (!cursor.Accept(Word::Character)) cursor.Accept(Word::After);
  cursor.Accept(Word::Is);
  if (word->setting == Setting::Valued || (parser.Operand().AtOperand() && ScreenWordAt(parser) == nullptr)) {
    return Need(parser, parser.Operand().Operand(Role::Other) != 0, "An attribute of the screen lacks its operand.");
  }
  return true;
}

// AT, LINE, COLUMN, WITH and the attributes behind them, in any order.
void ScreenClauses(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  for (;;) {
    if (cursor.At(Word::At) && !parser.AtPhrase()) {
      cursor.Next();
      if (PlaceClause(parser)) continue;
      if (!Need(parser, parser.Operand().Operand(Role::Other) != 0, "AT lacks its operand.")) return;
    } else if (cursor.At(Word::With) && !parser.AtPhrase()) {
      cursor.Next();
      if (cursor.Accept(Word::No)) AcceptSpelled(parser, "ECHO");
      cursor.Accept(Word::Advancing);
    } else if (cursor.At(Word::No) && (cursor.WordAt(1) == Word::Advancing || AtSpelled(parser, "ECHO", 1))) {
      cursor.Next();
      cursor.Next();
    } else if (!PlaceClause(parser) && !ScrollClause(parser) && !SettingClause(parser)) {
      return;
    }
  }
}

// What ACCEPT can take besides an operator's answer, when it is more than one word.
void AcceptSource(StatementParser& parser) {
  TokenCursor& cursor = parser.Cursor();
  const Word source = cursor.WordAt();
  // These two could begin a phrase as well.
  const bool escape = source == Word::Escape && cursor.WordAt(1) == Word::Key;
  const bool exception = source == Word::Exception && cursor.WordAt(1) == Word::Status;
  const bool some = cursor.At(TokenKind::Word) && (escape || exception || !parser.AtStatementEnd());
  if (!Need(parser, some, "FROM lacks its operand.")) return;
  parser.Operand().OtherName(Role::Source);
  if (source == Word::Date) cursor.Accept(Word::Yyyymmdd);
  if (source == Word::Day) cursor.Accept(Word::Yyyyddd);
  if (escape) cursor.Accept(Word::Key);
  if (exception) cursor.Accept(Word::Status);
  if (source == Word::Environment) {
    Need(parser, parser.Operand().Operand(Role::Other) != 0, "ENVIRONMENT lacks the name of a variable.");
  } else if (source == Word::None && cursor.At(Word::Name)) {
    cursor.Next();  // USER NAME
  }
}

}  // namespace

void ParseAccept(StatementParser& parser, NodeId) {
  TokenCursor& cursor = parser.Cursor();
  Operands& operands = parser.Operand();
  if (cursor.WordAt(1) == Word::Message || (cursor.WordAt(1) == Word::Count && !parser.AtStatementEnd())) {
    // How many messages wait is put into the communication description.
    operands.OtherName(Role::File);
    cursor.Accept(Word::Message);
    cursor.Accept(Word::Count);
    return;
  }
  if (!cursor.Accept(Word::Omitted)) {
    if (!Need(parser, operands.Variable(Role::Target, VarUsage::In) != 0, "ACCEPT lacks its item.")) return;
  }
  ScreenClauses(parser);
  if (cursor.Accept(Word::From)) AcceptSource(parser);
  ScreenClauses(parser);
}

void ParseDisplay(StatementParser& parser, NodeId) {
  TokenCursor& cursor = parser.Cursor();
  Operands& operands = parser.Operand();
  bool some = cursor.Accept(Word::Omitted);
  for (;;) {
    const int count = operands.OperandList(Role::Source);
    some = some || count > 0;
    const std::uint32_t before = cursor.Index();
    ScreenClauses(parser);
    if (cursor.Accept(Word::Upon)) {
      if (!Need(parser, !parser.AtStatementEnd() || cursor.At(Word::Display), "UPON lacks a device.")) return;
      parser.Operand().OtherName(Role::Other);
    }
    if (count == 0 && cursor.Index() == before) break;
  }
  Need(parser, some, "DISPLAY lacks its operand.");
}

void ParseExhibit(StatementParser& parser, NodeId) {
  TokenCursor& cursor = parser.Cursor();
  AcceptSpelled(parser, "CHANGED");
  cursor.Accept(Word::Named);
  Need(parser, parser.Operand().OperandList(Role::Source) > 0, "EXHIBIT lacks its operand.");
}

void ParseTrace(StatementParser& parser, NodeId) {
  Need(parser, parser.Cursor().Accept(Word::Trace), "TRACE is missing.");
}

}  // namespace qmrules::workbench::codemodel::cobol
