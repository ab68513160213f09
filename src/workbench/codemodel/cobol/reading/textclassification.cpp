#include "workbench/codemodel/cobol/reading/textclassification.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "shell/utf16.h"
#include "workbench/codemodel/cobol/reading/characters.h"
#include "workbench/codemodel/cobol/reading/coderows.h"
#include "workbench/codemodel/cobol/reading/words.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

// Tells the classes of tokens, one after the other.
class TokenClasses {
 public:
  explicit TokenClasses(const std::vector<Token>& tokens) : tokens_(tokens) {}
  // Of the next token; it is not End.
  std::optional<TextClass> Next();

 private:
  std::optional<TextClass> ClassOfWord(const Token& token, Word word);
  std::optional<TextClass> ClassOfEmbedded(const Token& token, Word word);
  std::optional<TextClass> ClassOfInclusion(Word word) const;
  bool IsHeading() const;
  bool IsLabel() const;
  void TakeSign(TokenKind kind);

  TokenKind KindBefore(std::size_t count) const { return count > index_ ? TokenKind::Period : At(index_ - count).kind; }
  Word WordAt(std::size_t index) const {
    return At(index).kind == TokenKind::Word ? WordOf(At(index).symbol) : Word::None;
  }
  Word WordBefore() const { return index_ == 0 ? Word::None : WordAt(index_ - 1); }
  // The last token is End; nothing is asked behind it.
  const Token& At(std::size_t index) const { return tokens_[std::min(index, tokens_.size() - 1)]; }

  const std::vector<Token>& tokens_;
  std::size_t index_ = 0;
  std::size_t headingEnd_ = 0;  // behind the words of a heading
  bool embedded_ = false;       // between EXEC and its end
  bool hostVariable_ = false;   // the last word there was a part of one
  bool inclusion_ = false;      // in COPY or REPLACE
  bool pseudoText_ = false;     // between == and ==
};

std::optional<TextClass> TokenClasses::Next() {
  const Token& token = At(index_);
  if (!embedded_ && IsHeading()) headingEnd_ = index_ + 2;
  std::optional<TextClass> kind;
  switch (token.kind) {
    case TokenKind::Literal:
      kind = inclusion_ && WordBefore() == Word::Copy ? TextClass::Inclusion : TextClass::Literal;
      break;
    case TokenKind::Number:
      kind = IsLabel() ? TextClass::Label : TextClass::Number;
      break;
    case TokenKind::Picture:
      kind = TextClass::Picture;
      break;
    case TokenKind::Word:
      kind = ClassOfWord(token, WordOf(token.symbol));
      break;
    default:
      TakeSign(token.kind);
      break;
  }
  ++index_;
  return kind;
}

// X DIVISION, X SECTION.
bool TokenClasses::IsHeading() const {
  const Token& token = At(index_);
  if (!token.Has(kFirstOnRow) || (token.kind != TokenKind::Word && token.kind != TokenKind::Number)) return false;
  const Word next = WordAt(index_ + 1);
  return (next == Word::Division || next == Word::Section) && !IsVerb(WordAt(index_)) &&
         KindBefore(1) == TokenKind::Period;
}

bool TokenClasses::IsLabel() const {
  const Token& token = At(index_);
  return token.Has(kFirstOnRow) && token.Has(kAreaA) && At(index_ + 1).kind == TokenKind::Period &&
         KindBefore(1) == TokenKind::Period;
}

std::optional<TextClass> TokenClasses::ClassOfWord(const Token& token, Word word) {
  if (embedded_) return ClassOfEmbedded(token, word);
  if (word == Word::Exec || word == Word::Execute) {
    embedded_ = true;
    hostVariable_ = false;
    return TextClass::Embedded;
  }
  if (index_ < headingEnd_) return TextClass::Heading;
  if (word == Word::Copy || word == Word::Replace) inclusion_ = true;
  if (inclusion_ && !pseudoText_) {
    if (const auto kind = ClassOfInclusion(word)) return kind;
  }
  if (IsScopeEnd(word) || (IsVerb(word) && (IsReserved(word) || token.Has(kFirstOnRow)))) return TextClass::Verb;
  if (IsReserved(word)) return TextClass::Reserved;
  if (IsLabel()) return TextClass::Label;
  return std::nullopt;
}

std::optional<TextClass> TokenClasses::ClassOfEmbedded(const Token& token, Word word) {
  if (word == Word::EndExec) {
    embedded_ = false;
    return TextClass::Embedded;
  }
  // :GROUP.ITEM is one host variable.
  const bool goesOn = hostVariable_ && token.Has(kAdjacent) && KindBefore(1) == TokenKind::Other;
  hostVariable_ = goesOn || KindBefore(1) == TokenKind::Colon;
  if (hostVariable_) return std::nullopt;
  return TextClass::Embedded;
}

std::optional<TextClass> TokenClasses::ClassOfInclusion(Word word) const {
  switch (word) {
    case Word::By:
    case Word::Copy:
    case Word::In:
    case Word::Leading:
    case Word::Of:
    case Word::Replace:
    case Word::Replacing:
    case Word::Suppress:
    case Word::Trailing:
      return TextClass::Inclusion;
    default:
      break;
  }
  const Word before = WordBefore();
  const bool isName = before == Word::Copy || before == Word::Of || before == Word::In;
  return isName ? std::optional(TextClass::Inclusion) : std::nullopt;
}

void TokenClasses::TakeSign(TokenKind kind) {
  if (kind == TokenKind::Period) {
    embedded_ = false;
    if (!pseudoText_) inclusion_ = false;
  } else if (kind == TokenKind::PseudoText && inclusion_) {
    pseudoText_ = !pseudoText_;
  }
}

// The runs of one row, found from left to right.
class RowRuns {
 public:
  RowRuns(const SourceFile& file, std::uint32_t row, ClassedText& classed)
      : row_(row), classed_(classed), at_(file.Text().data() + file.RowStart(row)), isAscii_(file.IsAscii()) {}

  void Add(const char* begin, const char* end, TextClass kind) {
    if (begin == end) return;
    column_ += Characters(at_, begin);
    const std::uint32_t length = Characters(begin, end);
    classed_.Add(row_, {column_, length, kind});
    column_ += length;
    at_ = end;
  }

 private:
  std::uint32_t Characters(const char* begin, const char* end) const {
    const std::string_view text(begin, static_cast<std::size_t>(end - begin));
    return static_cast<std::uint32_t>(isAscii_ ? text.size() : shell::CharacterCount(text));
  }

  std::uint32_t row_;
  ClassedText& classed_;
  const char* at_;
  std::uint32_t column_ = 1;
  bool isAscii_;
};

bool IsSeparator(char byte) {
  return IsBlank(byte) || byte == ',' || byte == ';';
}

// Goes through the rows of a lexed file. What stands in the text area and is no token is a comment, a comment entry or
// a line for the listing.
class Classification {
 public:
  Classification(const LexedFile& lexed, LexerOptions options, const SymbolTable& symbols)
      : lexed_(lexed), symbols_(symbols), tokenClasses_(lexed.tokens), areas_(AreasOf(lexed)), rows_(areas_, [&] {
          options.format = lexed.format;
          options.debuggingLines = true;
          return options;
        }()) {}

  ClassedText Run();

 private:
  // A file of its own for the areas of the rows. With a token in it, no row is taken for compiler options unasked.
  static LexedFile AreasOf(const LexedFile& lexed) {
    LexedFile areas;
    areas.file = lexed.file;
    areas.format = lexed.format;
    areas.tokens.emplace_back();
    return areas;
  }

  void ClassifyPassedOver(std::uint32_t row);
  void ClassifyCode(const CodeRow& row);
  void ClassifyGap(const char* begin, const char* end, bool isWholeRow);
  bool IsOptionsLine(std::string_view text) const;
  void TakeToken() { tokenClass_ = lexed_.tokens[token_].kind == TokenKind::End ? std::nullopt : tokenClasses_.Next(); }

  const LexedFile& lexed_;
  const SymbolTable& symbols_;
  TokenClasses tokenClasses_;
  LexedFile areas_;
  CodeRows rows_;
  ClassedText classed_;
  std::optional<RowRuns> runs_;  // of the row
  std::size_t comment_ = 0;      // index of the next comment row
  std::size_t token_ = 0;        // the next token, or the one that goes on
  std::optional<TextClass> tokenClass_;
};

ClassedText Classification::Run() {
  TakeToken();
  std::uint32_t done = 0;
  CodeRow row;
  while (rows_.Next(row)) {
    while (++done < row.row) ClassifyPassedOver(done);
    ClassifyCode(row);
  }
  while (++done <= lexed_.file->Rows()) ClassifyPassedOver(done);
  return std::move(classed_);
}

// A row without code: blank, a comment, a line for the compiler, or a sequence number alone.
void Classification::ClassifyPassedOver(std::uint32_t row) {
  const std::string_view text = lexed_.file->Row(row);
  const char* const end = TrimBlanks(text.data(), text.data() + text.size());
  const char* const begin = SkipBlanks(text.data(), end);
  if (begin == end) return;
  const std::vector<std::uint32_t>& comments = *lexed_.commentRows;
  while (comment_ < comments.size() && comments[comment_] < row) ++comment_;
  TextClass kind = TextClass::Directive;
  if (comment_ < comments.size() && comments[comment_] == row) {
    kind = TextClass::Comment;
  } else if (std::all_of(begin, end, [](char byte) { return IsWordCharacter(byte) || IsBlank(byte); })) {
    kind = TextClass::Margin;
  }
  runs_.emplace(*lexed_.file, row, classed_);
  runs_->Add(begin, end, kind);
}

void Classification::ClassifyCode(const CodeRow& row) {
  const SourceFile& file = *lexed_.file;
  const char* const text = file.Text().data();
  const char* const rowBegin = text + file.RowStart(row.row);
  const std::string_view whole = file.Row(row.row);
  const char* const rowEnd = TrimBlanks(rowBegin, rowBegin + whole.size());
  runs_.emplace(file, row.row, classed_);
  const char* const margin = SkipBlanks(rowBegin, row.begin);
  runs_->Add(margin, std::max(margin, TrimBlanks(margin, row.begin)), TextClass::Margin);
  const char* at = row.begin;
  while (lexed_.tokens[token_].kind != TokenKind::End) {
    const Token& token = lexed_.tokens[token_];
    const char* const end = text + token.offset + token.length;
    // One that goes on over rows is without the blanks around its pieces.
    const bool goesOn = text + token.offset < row.begin;
    const char* const begin = goesOn ? SkipBlanks(row.begin, std::clamp(end, row.begin, row.end)) : text + token.offset;
    if (begin >= row.end && !goesOn) break;
    ClassifyGap(at, std::max(at, begin), false);
    at = std::clamp(end, std::max(at, begin), row.end);
    if (tokenClass_) runs_->Add(begin, end > row.end ? TrimBlanks(begin, at) : at, *tokenClass_);
    if (end > row.end) break;
    ++token_;
    TakeToken();
  }
  ClassifyGap(at, row.end, at == row.begin);
  const char* const behind = SkipBlanks(row.end, std::max(row.end, rowEnd));
  runs_->Add(behind, std::max(behind, rowEnd), TextClass::Margin);
}

void Classification::ClassifyGap(const char* begin, const char* end, bool isWholeRow) {
  while (begin != end && IsSeparator(*begin)) ++begin;
  end = TrimBlanks(begin, end);
  if (begin == end) return;
  const std::string_view text(begin, static_cast<std::size_t>(end - begin));
  runs_->Add(begin, end, isWholeRow && IsOptionsLine(text) ? TextClass::Directive : TextClass::Comment);
}

// CBL and PROCESS, with options for the compiler.
bool Classification::IsOptionsLine(std::string_view text) const {
  const char* const end = SkipWord(text.data(), text.data() + text.size());
  const Word word = WordOf(symbols_.Find({text.data(), static_cast<std::size_t>(end - text.data())}));
  return word == Word::Cbl || word == Word::Process;
}

}  // namespace

ClassedText ClassifyText(std::shared_ptr<const SourceFile> file, const LexerOptions& options) {
  SymbolTable symbols(CobolWordList());
  const LexedFile lexed = Lex(std::move(file), options, symbols);
  return Classification(lexed, options, symbols).Run();
}

}  // namespace qmrules::workbench::codemodel::cobol
