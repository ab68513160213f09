// Words and literals that go on over lines.
#include <algorithm>
#include <utility>

#include "workbench/codemodel/cobol/reading/characters.h"
#include "workbench/codemodel/cobol/reading/filelexer.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

constexpr std::size_t kLastTextColumn = 72;

// The quote that ends a literal whose text begins at `from`, or nullptr. Doubled, it stands for itself.
const char* ClosingQuote(const char* from, const char* end, char quote) {
  while (from != end) {
    const auto* const found = static_cast<const char*>(std::memchr(from, quote, static_cast<std::size_t>(end - from)));
    if (found == nullptr || found + 1 == end || found[1] != quote) return found;
    from = found + 2;
  }
  return nullptr;
}

// The quote around a literal with its prefix.
char QuoteOf(std::string_view literal) {
  return literal[literal.find_first_of("'\"")];
}

}  // namespace

// `begin` is the place of the literal's prefix or quote, the cursor stands at the quote.
void FileLexer::LexLiteral(const char* begin) {
  const char* const from = at_ + 1;
  if (const char* const close = ClosingQuote(from, end_, *at_)) {
    Push(TokenKind::Literal, begin, close + 1);
    if (at_ != end_ && *at_ == '-') ConcatenateLiteral();
    return;
  }
  const char* const lastEnd = TrimBlanks(from, end_);
  std::string text(begin, end_);
  if (rows_.Format() == SourceFormat::Fixed) text.append(row_.missing, ' ');
  Push(TokenKind::Literal, begin, lastEnd);
  GatherLiteral(std::move(text), lastEnd);
}

// Takes the text of the last literal on the line from `from` on. True when it ends there.
bool FileLexer::TakeLiteralRow(std::string& text, const char* from, const char*& lastEnd) {
  firstOnRow_ = false;
  if (const char* const close = ClosingQuote(from, end_, QuoteOf(text))) {
    text.append(from, close + 1);
    Compose(std::move(text), close + 1);
    at_ = previousEnd_ = close + 1;
    return true;
  }
  text.append(from, end_);
  if (rows_.Format() == SourceFormat::Fixed) text.append(row_.missing, ' ');
  lastEnd = TrimBlanks(from, end_);
  at_ = end_;
  return false;
}

// Takes the continuation lines of the last literal, which is open.
void FileLexer::GatherLiteral(std::string text, const char* lastEnd) {
  const Token& token = lexed_.tokens.back();
  const char* const firstEnd = text_ + token.offset + token.length;
  while (NextContinuation()) {
    if (at_ == end_) continue;
    if (*at_ != QuoteOf(text)) break;
    if (TakeLiteralRow(text, at_ + 1, lastEnd)) return;
  }
  if (lastEnd != firstEnd || token.Has(kComposed)) {
    text.erase(std::min(text.find_last_not_of(' ') + 1, text.size()));
    Compose(std::move(text), lastEnd);
  }
  lexed_.tokens.back().flags |= kUnclosed;
  rows_.Warn(token.row, text_ + token.offset, "The literal has no closing quote. It is taken to end with its line.");
}

// "abc"-   goes on with the literal of the next line.
//    "def"
void FileLexer::ConcatenateLiteral() {
  while (SkipBlanks(at_ + 1, end_) == end_) {
    Push(TokenKind::Minus, at_, at_ + 1);
    if (!NextRow()) return;
    at_ = SkipBlanks(at_, end_);
    const char quote = QuoteOf(lexed_.Text(lexed_.tokens[lexed_.tokens.size() - 2]));
    if (at_ == end_ || *at_ != quote) return;
    DropToken();
    std::string text = TakeText(lexed_.tokens.back());
    text.pop_back();
    const char* lastEnd = nullptr;
    if (!TakeLiteralRow(text, at_ + 1, lastEnd)) {
      GatherLiteral(std::move(text), lastEnd);
      return;
    }
    if (at_ == end_ || *at_ != '-') return;
  }
}

// A quote in the last column and one more at the beginning of the continuation are one doubled quote.
bool FileLexer::ReopenLiteral() {
  const Token& token = lexed_.tokens.back();
  const std::uint32_t end = token.offset + token.length;
  const SourceFile& file = *lexed_.file;
  if (token.Has(kUnclosed) || rows_.Format() != SourceFormat::Fixed) return false;
  if (end - file.RowStart(file.RowOf(end - 1)) < kLastTextColumn) return false;
  const char quote = QuoteOf(lexed_.Text(token));
  if (end_ - at_ < 2 || at_[0] != quote || at_[1] != quote) return false;
  std::string text = TakeText(lexed_.tokens.back());
  text += quote;
  const char* lastEnd = nullptr;
  if (!TakeLiteralRow(text, at_ + 2, lastEnd)) GatherLiteral(std::move(text), lastEnd);
  return true;
}

// Goes on to the next line. True, with the cursor at its text, when it is a continuation line.
bool FileLexer::NextContinuation() {
  if (!NextRow() || !row_.continuation) return false;
  at_ = SkipBlanks(at_, end_);
  return true;
}

// Ties the beginning of a continuation line to the last token.
void FileLexer::ContinueToken() {
  at_ = SkipBlanks(at_, end_);
  if (at_ == end_ || lexed_.tokens.empty() || separated_) return;
  const Token& last = lexed_.tokens.back();
  const std::size_t count = lexed_.tokens.size();
  const TokenKind before = last.Has(kAdjacent) && count > 1 ? lexed_.tokens[count - 2].kind : TokenKind::End;
  previousEnd_ = at_;
  switch (last.kind) {
    case TokenKind::Literal:
      ReopenLiteral();
      break;
    case TokenKind::Word:
      if (IsWordCharacter(*at_)) ContinueWord("");
      break;
    case TokenKind::Number:
      if (IsWordCharacter(*at_) || SkipFraction(at_) != at_) ContinueWord("");
      break;
    case TokenKind::Picture:
      ContinuePicture();
      break;
    case TokenKind::Minus:
      if (before != TokenKind::Word || !IsWordCharacter(*at_)) break;
      DropToken();
      ContinueWord("-");
      break;
    case TokenKind::Period:
      if (before != TokenKind::Number || decimalPoint_ != '.' || !IsDigit(*at_)) break;
      DropToken();
      ContinueWord(".");
      break;
    default:
      break;
  }
}

// Goes on with the last token, a word or a number, and what stood between it and the end of its line.
void FileLexer::ContinueWord(std::string_view joint) {
  bool letters = lexed_.tokens.back().kind == TokenKind::Word;
  std::string text = TakeText(lexed_.tokens.back());
  text += joint;
  bool fraction = !letters && text.find(decimalPoint_) != std::string::npos;
  expectsPicture_ = false;
  const char* last = at_;
  while (true) {
    const char* stop = fraction ? SkipDigits(at_, end_) : SkipWord(at_, end_);
    const bool goesOn = SkipBlanks(stop, end_) == end_;
    while (!goesOn && *stop != ':' && stop != at_ && stop[-1] == '-') --stop;
    letters = letters || !std::all_of(at_, stop, IsDigit);
    if (!letters && !fraction) {
      const char* const behind = SkipFraction(stop);
      fraction = behind != stop;
      stop = behind;
    }
    text.append(at_, stop);
    if (stop != at_) {
      last = stop;
      firstOnRow_ = false;
    }
    at_ = stop;
    if (SkipBlanks(stop, end_) != end_ || !NextContinuation()) break;
  }
  previousEnd_ = row_.continuation ? at_ : nullptr;
  Token& token = lexed_.tokens.back();
  token.kind = letters ? TokenKind::Word : TokenKind::Number;
  token.symbol = letters ? symbols_.Intern(text) : 0;
  const Word word = letters ? WordOf(token.symbol) : Word::None;
  Compose(std::move(text), last);
  if (word != Word::None) TakeWord(word);
}

void FileLexer::ContinuePicture() {
  std::string text = TakeText(lexed_.tokens.back());
  const char* last = at_;
  while (true) {
    const char* const stop = PictureEnd(at_);
    text.append(at_, stop);
    if (stop != at_) {
      last = stop;
      firstOnRow_ = false;
    }
    at_ = stop;
    if (SkipBlanks(stop, end_) != end_ || !NextContinuation()) break;
  }
  previousEnd_ = row_.continuation ? at_ : nullptr;
  Compose(std::move(text), last);
}

// The text of a token, which is then to be composed anew.
std::string FileLexer::TakeText(Token& token) {
  if (!token.Has(kComposed)) return std::string(lexed_.Text(token));
  token.flags &= static_cast<std::uint8_t>(~kComposed);
  std::string text = std::move(lexed_.composed[token.text]);
  if (token.text + 1 == lexed_.composed.size()) lexed_.composed.pop_back();
  return text;
}

// Gives the last token this text, up to the physical place `end`.
void FileLexer::Compose(std::string text, const char* end) {
  Token& token = lexed_.tokens.back();
  token.flags |= kComposed;
  token.length = static_cast<std::uint32_t>(end - text_) - token.offset;
  token.text = static_cast<std::uint32_t>(lexed_.composed.size());
  lexed_.composed.push_back(std::move(text));
}

}  // namespace qmrules::workbench::codemodel::cobol
