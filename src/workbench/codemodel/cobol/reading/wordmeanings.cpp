// Words that tell how the text behind them is to be read.
#include <algorithm>

#include "workbench/codemodel/cobol/reading/characters.h"
#include "workbench/codemodel/cobol/reading/filelexer.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

bool IsCommentHeader(Word word) {
  using enum Word;
  switch (word) {
    case Author:
    case DateCompiled:
    case DateWritten:
    case Installation:
    case Remarks:
    case Security:
      return true;
    default:
      return false;
  }
}

// Headers of divisions, and of sections that show that a division has begun whose header is missing.
bool IsDivisionOrSection(Word word) {
  using enum Word;
  switch (word) {
    case Configuration:
    case Data:
    case Environment:
    case File:
    case Id:
    case Identification:
    case InputOutput:
    case Linkage:
    case LocalStorage:
    case Procedure:
    case WorkingStorage:
      return true;
    default:
      return false;
  }
}

}  // namespace

void FileLexer::TakeWord(Word word) {
  using enum Word;
  if (exec_ != Exec::None) {
    if (word == EndExec) exec_ = Exec::None;
    return;
  }
  switch (word) {
    case Pic:
    case Picture:
      expectsPicture_ = true;
      break;
    case Exec:
    case Execute:
      exec_ = FileLexer::Exec::Head;
      break;
    case Division:
      TakeDivision();
      break;
    case Section:
      inIdentification_ = false;
      break;
    case ProgramId:
      inIdentification_ = true;
      ++programs_;
      break;
    case Program:
      if (WordBefore(1) == End) EndProgram();
      break;
    case Comma:
      if (WordBefore(1) != DecimalPoint && (WordBefore(1) != Is || WordBefore(2) != DecimalPoint)) break;
      decimalPoint_ = ',';
      lexed_.decimalComma = true;
      break;
    case Mode:
      if (WordBefore(1) != Debugging) break;
      rows_.TakeDebuggingLines(true);
      lexed_.debuggingMode = true;
      break;
    case Eject:
    case Skip1:
    case Skip2:
    case Skip3:
    case Title:
      TakeListing(word);
      break;
    default:
      if (inIdentification_ && IsCommentHeader(word)) SkipCommentEntry();
      break;
  }
}

// The word `count` tokens before the last one.
Word FileLexer::WordBefore(std::size_t count) const {
  if (lexed_.tokens.size() <= count) return Word::None;
  const Token& token = lexed_.tokens[lexed_.tokens.size() - 1 - count];
  return token.kind == TokenKind::Word ? WordOf(token.symbol) : Word::None;
}

void FileLexer::TakeDivision() {
  inIdentification_ = WordBefore(1) == Word::Identification || WordBefore(1) == Word::Id;
}

// What SPECIAL-NAMES and the like say ends with the outermost program.
void FileLexer::EndProgram() {
  programEnds_ = true;
  inIdentification_ = false;
  if (programs_ > 0) --programs_;
  if (programs_ > 0) return;
  decimalPoint_ = options_.decimalComma ? ',' : '.';
  rows_.TakeDebuggingLines(options_.debuggingLines);
}

// Passes over a line that only lays out the listing: EJECT, SKIP1, TITLE 'x'.
void FileLexer::TakeListing(Word word) {
  if (!lexed_.tokens.back().Has(kFirstOnRow)) return;
  const char* behind = SkipBlanks(at_, end_);
  if (word == Word::Title) {
    if (behind == end_ || ClassOf(*behind) != CharacterClass::Quote) return;
  } else {
    if (behind != end_ && *behind == '.') behind = SkipBlanks(behind + 1, end_);
    if (behind != end_) return;
  }
  DropToken();
  at_ = end_;
  previousEnd_ = nullptr;
}

// Behind AUTHOR and its like: any text, which ends before the next word in area A.
void FileLexer::SkipCommentEntry() {
  const Token& header = lexed_.tokens.back();
  if (!header.Has(kFirstOnRow) || !header.Has(kAreaA)) return;
  at_ = SkipBlanks(at_, end_);
  if (at_ != end_ && *at_ == '.') Push(TokenKind::Period, at_, at_ + 1);
  separated_ = true;
  do {
    at_ = end_;
  } while (NextRow() && (row_.continuation || !EndsCommentEntry()));
}

// True when the line, which is a new one, no longer belongs to a comment entry.
bool FileLexer::EndsCommentEntry() const {
  const char* const begin = SkipBlanks(at_, end_);
  if (begin == end_) return false;
  if (rows_.Format() != SourceFormat::Free) return begin < row_.areaB;
  const char* const end = SkipWord(begin, end_);
  const auto wordOf = [this](const char* from, const char* to) {
    return WordOf(symbols_.Find(std::string_view(from, static_cast<std::size_t>(to - from))));
  };
  const Word word = wordOf(begin, end);
  if (word == Word::ProgramId) return true;
  const char* const next = SkipBlanks(end, end_);
  if (IsCommentHeader(word)) return next != end_ && *next == '.';
  if (!IsDivisionOrSection(word)) return false;
  const Word second = wordOf(next, SkipWord(next, end_));
  return second == Word::Division || second == Word::Section;
}

}  // namespace qmrules::workbench::codemodel::cobol
