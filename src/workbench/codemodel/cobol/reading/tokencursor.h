#pragma once

#include <cstdint>
#include <string_view>

#include "workbench/codemodel/cobol/reading/words.h"
#include "workbench/codemodel/expandedtext.h"

namespace qmrules::workbench::codemodel::cobol {

// A place in the tokens of a program. Never leaves them: behind the last one there is End for ever.
class TokenCursor {
 public:
  explicit TokenCursor(const ExpandedText& text) : text_(&text) {}

  const Token& Current() const { return text_->tokens[index_]; }
  const Token& Ahead(std::uint32_t count) const {
    const auto last = static_cast<std::uint32_t>(text_->tokens.size()) - 1;
    return text_->tokens[count > last - index_ ? last : index_ + count];
  }
  std::uint32_t Index() const { return index_; }
  // The token before the current one; the first one at the start.
  std::uint32_t Previous() const { return index_ == 0 ? 0 : index_ - 1; }
  void Next() {
    if (Current().kind != TokenKind::End) ++index_;
  }
  void MoveTo(std::uint32_t index) { index_ = index; }

  bool AtEnd() const { return Current().kind == TokenKind::End; }
  bool At(TokenKind kind) const { return Current().kind == kind; }
  bool At(Word word) const { return WordAt() == word; }
  // The current token's Word; None for a name and for what is no word.
  Word WordAt(std::uint32_t ahead = 0) const {
    const Token& token = Ahead(ahead);
    return token.kind == TokenKind::Word ? WordOf(token.symbol) : Word::None;
  }
  bool Accept(Word word) { return At(word) && (Next(), true); }
  bool Accept(TokenKind kind) { return At(kind) && (Next(), true); }
  std::string_view Text() const { return text_->Text(Current()); }
  const ExpandedText& Source() const { return *text_; }

 private:
  const ExpandedText* text_;
  std::uint32_t index_ = 0;
};

}  // namespace qmrules::workbench::codemodel::cobol
