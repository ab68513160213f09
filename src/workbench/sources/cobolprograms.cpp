#include "workbench/sources/cobolprograms.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <utility>

#include "shell/casefold.h"
#include "workbench/codemodel/cobol/reading/lexer.h"
#include "workbench/codemodel/cobol/reading/words.h"

namespace qmrules::workbench {

namespace {

using codemodel::Token;
using codemodel::TokenKind;
using codemodel::cobol::Word;

// Words that follow a PROGRAM-ID without a name.
bool FollowsTheName(Word word) {
  constexpr std::array<Word, 10> words{Word::Author,      Word::Data,         Word::DateCompiled, Word::DateWritten,
                                       Word::Environment, Word::Installation, Word::Is,           Word::Procedure,
                                       Word::Remarks,     Word::Security};
  return std::ranges::find(words, word) != words.end();
}

// Without its quotes, a doubled one being one.
std::string LiteralText(std::string_view literal, bool isUnclosed) {
  const std::size_t open = literal.find_first_of("'\"");
  if (open == std::string_view::npos) return std::string(literal);
  const char quote = literal[open];
  literal.remove_prefix(open + 1);
  if (!isUnclosed && literal.ends_with(quote)) literal.remove_suffix(1);
  std::string text;
  for (std::size_t at = 0; at < literal.size(); ++at) {
    text += literal[at];
    if (literal[at] == quote) ++at;
  }
  return text;
}

class ProgramFinder {
 public:
  explicit ProgramFinder(std::string_view text)
      : symbols_(codemodel::cobol::CobolWordList()),
        lexed_(codemodel::cobol::Lex(std::make_shared<const codemodel::SourceFile>("", std::string(text)), {},
                                     symbols_)) {}

  CobolPrograms Find() {
    while (Current().kind != TokenKind::End) {
      if (AtProgramID()) {
        ReadProgramID();
      } else if (At(Word::End)) {
        Advance();
        if (At(Word::Program)) ReadEndProgram();
      } else {
        Advance();
      }
    }
    return std::move(found_);
  }

 private:
  const Token& Current() const { return lexed_.tokens[at_]; }
  void Advance() {
    if (Current().kind != TokenKind::End) ++at_;
  }
  bool At(Word word) const {
    return Current().kind == TokenKind::Word && codemodel::cobol::WordOf(Current().symbol) == word;
  }

  // The heading of a paragraph, and not the word in a running remark.
  bool AtProgramID() const {
    const bool afterPeriod = at_ == 0 || lexed_.tokens[at_ - 1].kind == TokenKind::Period;
    return At(Word::ProgramId) && (afterPeriod || Current().Has(codemodel::kFirstOnRow));
  }

  // The name at the current token, in upper case.
  std::optional<std::string> Name() const {
    const Token& token = Current();
    std::string text(lexed_.Text(token));
    if (token.kind == TokenKind::Literal) {
      text = LiteralText(text, token.Has(codemodel::kUnclosed));
    } else if (token.kind != TokenKind::Number &&
               (token.kind != TokenKind::Word || FollowsTheName(codemodel::cobol::WordOf(token.symbol)))) {
      return std::nullopt;
    }
    const auto first = text.find_first_not_of(' ');
    if (first == std::string::npos) return std::nullopt;
    return shell::ToUpper(std::string_view(text).substr(first, text.find_last_not_of(' ') - first + 1));
  }

  void ReadProgramID() {
    const std::size_t row = Current().row;
    Advance();
    if (Current().kind == TokenKind::Period) Advance();
    auto name = Name();
    if (!name) {
      found_.nameless.push_back(row);
      return;
    }
    if (open_.empty()) {
      found_.programs.push_back({*name, Current().row, {}});
    } else {
      found_.programs.back().nested.push_back(*name);
    }
    open_.push_back(std::move(*name));
    Advance();
  }

  // Ends the innermost open program of this name with those in it; the innermost one when none has the name.
  void ReadEndProgram() {
    Advance();
    const auto name = Name();
    if (open_.empty()) return;
    auto ended = open_.end() - 1;
    if (name) {
      const auto match = std::find(open_.rbegin(), open_.rend(), *name);
      if (match != open_.rend()) ended = match.base() - 1;
    }
    open_.erase(ended, open_.end());
  }

  codemodel::SymbolTable symbols_;
  codemodel::cobol::LexedFile lexed_;
  std::size_t at_ = 0;
  std::vector<std::string> open_;  // names of the programs that have not ended, the innermost last
  CobolPrograms found_;
};

}  // namespace

CobolPrograms FindPrograms(std::string_view text) {
  return ProgramFinder(text).Find();
}

}  // namespace qmrules::workbench
