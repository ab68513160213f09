#include "workbench/codemodel/cobol/reading/copybooks.h"

#include <algorithm>
#include <utility>

#include "workbench/codemodel/cobol/reading/copystatement.h"
#include "workbench/codemodel/cobol/reading/words.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

constexpr std::size_t kMostTokens = 2'000'000;

// True when nothing tells fixed form from free: no line has something both in columns 1 to 7 and behind them.
bool IsOfAnyFormat(const SourceFile& file) {
  const auto isBlank = [](std::string_view text) { return text.find_first_not_of(" \t") == text.npos; };
  for (std::uint32_t row = 1; row <= file.Rows(); ++row) {
    const std::string_view text = file.Row(row);
    if (!isBlank(text.substr(0, 7)) && text.size() > 7 && !isBlank(text.substr(7))) return false;
  }
  return true;
}

// Finds the places of a file in one walk over its tokens.
class PlaceFinder {
 public:
  explicit PlaceFinder(const LexedFile& lexed) : lexed_(lexed), tokens_(lexed.tokens) {}

  std::vector<DirectingPlace> Find() {
    const auto count = static_cast<std::uint32_t>(tokens_.size());
    for (std::uint32_t index = 0; index < count; ++index) {
      const Token& token = tokens_[index];
      if (token.kind != TokenKind::Word) continue;
      switch (WordOf(token.symbol)) {
        case Word::Copy:
          if (tokens_[index + 1].kind != TokenKind::PseudoText) Add(DirectingPlace::Kind::Copy, index);
          break;
        case Word::Replace:
          if (IsReplace(index)) Add(DirectingPlace::Kind::Replace, index);
          break;
        case Word::Exec:
        case Word::Execute:
          index = BehindExec(index) - 1;
          break;
        default:
          break;
      }
    }
    AddDirectives(count);
    return std::move(places_);
  }

 private:
  // Adds the place, and the directives that stand before it.
  void Add(DirectingPlace::Kind kind, std::uint32_t token) {
    AddDirectives(token);
    places_.push_back({kind, token, 0});
  }

  void AddDirectives(std::uint32_t upToToken) {
    for (; directive_ < lexed_.directives.size() && lexed_.directives[directive_].token <= upToToken; ++directive_) {
      places_.push_back({DirectingPlace::Kind::Directive, lexed_.directives[directive_].token, directive_});
    }
  }

  bool IsReplace(std::uint32_t index) const { return DirectingStatementParser::IsReplace(tokens_, index); }

  // The token behind the block's END-EXEC, or behind EXEC where it has none.
  std::uint32_t BehindExec(std::uint32_t exec) {
    const bool isInclude = IsWord(tokens_[exec + 1], Word::Sql) && IsWord(tokens_[exec + 2], Word::Include);
    if (isInclude) Add(DirectingPlace::Kind::SqlInclude, exec);
    for (std::uint32_t index = exec + 1; tokens_[index].kind != TokenKind::End; ++index) {
      if (IsWord(tokens_[index], Word::EndExec)) return index + 1;
      const bool isNext = IsWord(tokens_[index], Word::Exec) || IsWord(tokens_[index], Word::Execute);
      if (isNext || tokens_[index].kind == TokenKind::Period) break;
    }
    return exec + 1;
  }

  const LexedFile& lexed_;
  const std::vector<Token>& tokens_;
  std::uint32_t directive_ = 0;
  std::vector<DirectingPlace> places_;
};

}  // namespace

ReadFile LexSource(const SourceProvider::Source& source, const LexerOptions& options, SymbolTable& symbols) {
  ReadFile read;
  read.lexed = Lex(source.file, options, symbols);
  std::copy(std::begin(source.hash), std::end(source.hash), std::begin(read.hash));
  read.places = PlaceFinder(read.lexed).Find();
  return read;
}

std::shared_ptr<const ReadFile> Copybooks::Get(const std::string& file, const LexerOptions& options,
                                               SourceFormat programFormat) {
  std::string key = file;
  key += '\0';
  key += static_cast<char>('0' + (options.debuggingLines ? 1 : 0) + (options.decimalComma ? 2 : 0));
  key += NameOf(options.format.value_or(programFormat));
  if (const auto found = entries_.find(key); found != entries_.end()) return found->second;
  const SourceProvider::Source source = provider_.Read(file);
  LexerOptions own = options;
  if (!own.format && IsOfAnyFormat(*source.file)) own.format = programFormat;
  auto entry = std::make_shared<const ReadFile>(LexSource(source, own, symbols_));
  Keep(std::move(key), entry);
  return entry;
}

// Forgets the oldest entries where there is no room for the new one. A text that would leave none is not kept.
void Copybooks::Keep(std::string key, Entry entry) {
  const std::size_t tokens = entry->lexed.tokens.size();
  if (tokens > kMostTokens / 2) return;
  while (tokens_ + tokens > kMostTokens) {
    const auto oldest = entries_.find(keys_.front());
    tokens_ -= oldest->second->lexed.tokens.size();
    entries_.erase(oldest);
    keys_.pop_front();
  }
  tokens_ += tokens;
  keys_.push_back(key);
  entries_.emplace(std::move(key), std::move(entry));
}

}  // namespace qmrules::workbench::codemodel::cobol
