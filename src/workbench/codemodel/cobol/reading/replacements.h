#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "workbench/codemodel/cobol/reading/copystatement.h"
#include "workbench/codemodel/expandedtext.h"

namespace qmrules::workbench::codemodel::cobol {

// The pairs of one REPLACING or REPLACE, made ready for being looked for in many places.
class Replacements {
 public:
  // A word of the text to be replaced.
  struct PatternWord {
    TokenKind kind = TokenKind::Word;
    bool adjacent = false;
    std::uint32_t symbol = 0;
    std::string text;
  };
  struct Pair {
    ReplacementPair::Part part = ReplacementPair::Part::Whole;
    std::vector<PatternWord> from;
    std::string partialWord;  // Leading, Trailing: what `from` spells
    std::vector<Token> to;    // each with its text among the composed ones
    bool picture = false;     // `to` can be a PICTURE
    bool tag = false;         // `from` can stand in the middle of a PICTURE: ":LEN:", "(LEN)"
  };

  // The texts of the pairs' second parts are added to the composed ones of `text`.
  Replacements(std::span<const ReplacementPair> pairs, ExpandedText& text);

  bool Empty() const { return pairs_.empty(); }
  const Pair& At(std::uint32_t index) const { return pairs_[index]; }
  // Indices of the pairs that can match from the token on, in the order in which they are to be tried: added to
  // `candidates`, which is emptied first.
  void FindCandidates(const Token& token, std::vector<std::uint32_t>& candidates) const;
  // False for most tokens for which there is none.
  bool MayMatch(const Token& token) const {
    return ((mask_ >> (KeyOf(token.kind, token.symbol) & 63)) & 1) != 0 ||
           (token.kind == TokenKind::Word && !partial_.empty());
  }
  // Pairs that can match within a PICTURE, or as the whole of it.
  const std::vector<std::uint32_t>& InPictures() const { return inPictures_; }

 private:
  static std::uint32_t KeyOf(TokenKind kind, std::uint32_t symbol) {
    return kind == TokenKind::Word ? symbol + 32 : static_cast<std::uint32_t>(kind);
  }

  std::vector<Pair> pairs_;
  std::vector<std::pair<std::uint32_t, std::uint32_t>> whole_;  // key of the first word, index; ascending
  std::vector<std::uint32_t> partial_;
  std::vector<std::uint32_t> inPictures_;
  std::uint64_t mask_ = 0;  // of the keys' low bits
};

}  // namespace qmrules::workbench::codemodel::cobol
