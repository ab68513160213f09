#include "workbench/codemodel/cobol/reading/filelexer.h"

#include <algorithm>
#include <utility>

#include "workbench/codemodel/cobol/reading/characters.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

// Bytes of text for which room is made for one token.
constexpr std::size_t kBytesPerToken = 8;

// X"0D", N'…', NX, Z, G, B, BX, H, U, UX.
bool IsLiteralPrefix(const char* begin, const char* end) {
  const char first = UpperOf(*begin);
  if (end - begin == 1) return std::string_view("XBNZGUH").find(first) != std::string_view::npos;
  return end - begin == 2 && UpperOf(begin[1]) == 'X' && (first == 'N' || first == 'B' || first == 'U');
}

LexedFile NotLexedYet(std::shared_ptr<const SourceFile> file, const LexerOptions& options) {
  LexedFile lexed;
  lexed.format = options.format ? *options.format : DetectFormat(*file);
  lexed.tokens.reserve(file->Text().size() / kBytesPerToken + 16);
  lexed.file = std::move(file);
  return lexed;
}

}  // namespace

FileLexer::FileLexer(std::shared_ptr<const SourceFile> file, const LexerOptions& options, SymbolTable& symbols)
    : options_(options),
      symbols_(symbols),
      lexed_(NotLexedYet(std::move(file), options)),
      rows_(lexed_, options),
      text_(lexed_.file->Text().data()),
      decimalPoint_(options.decimalComma ? ',' : '.') {}

LexedFile FileLexer::Run() {
  while (NextRow()) {
    if (row_.continuation) ContinueToken();
    LexRow();
  }
  Push(TokenKind::End, row_.end, row_.end).flags = 0;
  lexed_.tokens.back().row = std::max(lexed_.file->Rows(), std::uint32_t{1});
  lexed_.commentRows = std::make_shared<const std::vector<std::uint32_t>>(rows_.TakeCommentRows());
  return std::move(lexed_);
}

bool FileLexer::NextRow() {
  const bool found = rows_.Next(row_);
  at_ = row_.begin;
  end_ = row_.end;
  previousEnd_ = nullptr;
  firstOnRow_ = true;
  return found;
}

void FileLexer::LexRow() {
  using enum CharacterClass;
  while (true) {
    at_ = SkipBlanks(at_, end_);
    if (at_ == end_) return;
    if (expectsPicture_) {
      LexPicture();
      continue;
    }
    const CharacterClass kind = ClassOf(*at_);
    switch (kind) {
      case Letter:
        LexWord();
        break;
      case Digit:
        LexNumber();
        break;
      case Quote:
        LexLiteral(at_);
        break;
      case Period:
        LexPeriod();
        break;
      case Comma:
      case Semicolon:
        LexComma();
        break;
      default:
        LexSign(kind);
        break;
    }
  }
}

void FileLexer::LexSign(CharacterClass kind) {
  using enum CharacterClass;
  switch (kind) {
    case Open:
      Push(TokenKind::Open, at_, at_ + 1);
      break;
    case Close:
      Push(TokenKind::Close, at_, at_ + 1);
      break;
    case Colon:
      Push(TokenKind::Colon, at_, at_ + 1);
      break;
    case Hyphen:
      if (firstOnRow_ && TakeLine(at_)) break;
      if (exec_ == Exec::Sql && end_ - at_ > 1 && at_[1] == '-') {
        at_ = end_;
        break;
      }
      Push(TokenKind::Minus, at_, at_ + 1);
      break;
    case Plus:
      if (!firstOnRow_ || !TakeLine(at_)) Push(TokenKind::Plus, at_, at_ + 1);
      break;
    case Dollar:
      if (!firstOnRow_ || !TakeLine(at_)) LexWord();
      break;
    case Star:
      LexStar();
      break;
    case Slash:
      Push(TokenKind::Slash, at_, at_ + 1);
      break;
    case Less:
    case Greater:
    case Equal:
      LexRelation(*at_);
      break;
    case Ampersand:
      Push(TokenKind::Ampersand, at_, at_ + 1);
      break;
    default:
      LexOther(kind == Control);
      break;
  }
}

// Takes the line as one for the compiler if it is that.
bool FileLexer::TakeLine(const char* at) {
  if (exec_ != Exec::None || !IsDirectiveWord(at, end_)) return false;
  rows_.TakeDirective(row_, at);
  at_ = row_.begin;
  return true;
}

Token& FileLexer::Push(TokenKind kind, const char* begin, const char* end) {
  Token& token = lexed_.tokens.emplace_back();
  token.kind = kind;
  token.flags = static_cast<std::uint8_t>((begin < row_.areaB ? kAreaA : 0) | (firstOnRow_ ? kFirstOnRow : 0) |
                                          (begin == previousEnd_ ? kAdjacent : 0));
  token.offset = static_cast<std::uint32_t>(begin - text_);
  token.length = static_cast<std::uint32_t>(end - begin);
  token.row = row_.row;
  firstOnRow_ = false;
  separated_ = false;
  previousEnd_ = at_ = end;
  return token;
}

void FileLexer::DropToken() {
  lexed_.tokens.pop_back();
  const auto count = static_cast<std::uint32_t>(lexed_.tokens.size());
  auto& directives = lexed_.directives;
  for (auto last = directives.rbegin(); last != directives.rend() && last->token > count; ++last) last->token = count;
}

void FileLexer::LexWord() {
  const char* const begin = at_;
  const char* end = SkipWord(begin, end_);
  if (end != end_ && end - begin <= 2 && ClassOf(*end) == CharacterClass::Quote && IsLiteralPrefix(begin, end)) {
    at_ = end;
    LexLiteral(begin);
    return;
  }
  if (end[-1] == '-' && (end == end_ || *end != ':')) {
    while (end[-1] == '-') --end;
  }
  const std::uint32_t symbol = symbols_.Intern(std::string_view(begin, static_cast<std::size_t>(end - begin)));
  Push(TokenKind::Word, begin, end).symbol = symbol;
  const Word word = WordOf(symbol);
  if (exec_ == Exec::Head) exec_ = word == Word::Sql ? Exec::Sql : Exec::Other;
  if (word != Word::None) TakeWord(word);
}

void FileLexer::LexNumber() {
  const char* end = SkipDigits(at_, end_);
  if (end != end_ && IsWordCharacter(*end)) {
    const char* run = SkipWord(end, end_);
    while (run[-1] == '-' && (run == end_ || *run != ':')) --run;
    if (run > end) {
      LexWord();
      return;
    }
  }
  Push(TokenKind::Number, at_, SkipFraction(end));
}

// Behind the decimal point and what follows it, where a number goes on with one at `at`; otherwise `at`.
const char* FileLexer::SkipFraction(const char* at) const {
  if (end_ - at < 2 || *at != decimalPoint_ || !IsDigit(at[1])) return at;
  at = SkipDigits(at + 1, end_);
  if (end_ - at < 2 || UpperOf(*at) != 'E') return at;
  const char* digits = at + 1;
  if (*digits == '+' || *digits == '-') ++digits;
  const char* const end = SkipDigits(digits, end_);
  return end == digits || (end != end_ && IsWordCharacter(*end)) ? at : end;
}

// True when the character touches something that a decimal point cannot follow.
bool FileLexer::TouchesOperand() const {
  if (at_ != previousEnd_) return false;
  switch (lexed_.tokens.back().kind) {
    case TokenKind::Word:
    case TokenKind::Number:
    case TokenKind::Literal:
    case TokenKind::Picture:
    case TokenKind::Close:
      return true;
    default:
      return false;
  }
}

void FileLexer::LexPeriod() {
  if (decimalPoint_ == '.' && !TouchesOperand()) {
    const char* const end = SkipFraction(at_);
    if (end != at_) {
      Push(TokenKind::Number, at_, end);
      return;
    }
  }
  if (exec_ != Exec::None) {
    if (SkipBlanks(at_ + 1, end_) != end_) {
      Push(TokenKind::Other, at_, at_ + 1);
      return;
    }
    exec_ = Exec::None;
  }
  Push(TokenKind::Period, at_, at_ + 1);
  if (programEnds_) {
    programEnds_ = false;
    rows_.ExpectProgram();
  }
}

void FileLexer::LexComma() {
  if (*at_ == ',' && decimalPoint_ == ',' && !TouchesOperand()) {
    const char* const end = SkipFraction(at_);
    if (end != at_) {
      Push(TokenKind::Number, at_, end);
      return;
    }
  }
  if (exec_ != Exec::None) {
    Push(*at_ == ',' ? TokenKind::Comma : TokenKind::Other, at_, at_ + 1);
    return;
  }
  separated_ = true;
  ++at_;
}

void FileLexer::LexStar() {
  const char next = end_ - at_ > 1 ? at_[1] : ' ';
  if (next == '>') {
    if (firstOnRow_) rows_.TakeComment(row_);
    separated_ = true;
    at_ = end_;
    return;
  }
  if (next == '*') {
    Push(TokenKind::Power, at_, at_ + 2);
  } else {
    Push(TokenKind::Star, at_, at_ + 1);
  }
}

void FileLexer::LexRelation(char sign) {
  const char next = end_ - at_ > 1 ? at_[1] : ' ';
  if (sign == '>' && next == '>' && firstOnRow_ && exec_ == Exec::None) {
    rows_.TakeDirective(row_, at_);
    at_ = row_.begin;
  } else if (sign == '=' && next == '=') {
    Push(TokenKind::PseudoText, at_, at_ + 2);
  } else if (sign == '<' && next == '>') {
    Push(TokenKind::NotEqual, at_, at_ + 2);
  } else if (sign != '=' && next == '=') {
    Push(sign == '<' ? TokenKind::LessEqual : TokenKind::GreaterEqual, at_, at_ + 2);
  } else {
    Push(sign == '=' ? TokenKind::Equal : sign == '<' ? TokenKind::Less : TokenKind::Greater, at_, at_ + 1);
  }
}

void FileLexer::LexOther(bool control) {
  const char* end = at_ + 1;
  while (control && end != end_ && ClassOf(*end) == CharacterClass::Control) ++end;
  Push(TokenKind::Other, at_, end);
}

LexedFile Lex(std::shared_ptr<const SourceFile> file, const LexerOptions& options, SymbolTable& symbols) {
  return FileLexer(std::move(file), options, symbols).Run();
}

}  // namespace qmrules::workbench::codemodel::cobol
