#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/codemodel/expandedtext.h"
#include "workbench/codemodel/token.h"

namespace qmrules::workbench::codemodel::cobol {

// Tokens of a file within the expanded text: what to add to those that the file was read as.
struct Placement {
  std::uint32_t inclusion = 0;
  std::uint32_t composed = 0;  // the place of the file's first composed text

  Token operator()(Token token) const {
    token.inclusion += inclusion;
    if (token.Has(kComposed)) token.text += composed;
    return token;
  }
};

// One pair of REPLACING or REPLACE as it is written. The tokens are placed.
struct ReplacementPair {
  enum class Part : std::uint8_t { Whole, Leading, Trailing };
  Part part = Part::Whole;
  std::vector<Token> from;
  std::vector<Token> to;
};

// What is wrong with a statement. The rest of it is used all the same.
struct StatementFault {
  std::string text;       // "" for nothing
  std::size_t token = 0;  // index of the token where it shows
};

struct CopyStatement {
  std::string name;  // "" where it names none
  std::string library;
  std::vector<ReplacementPair> pairs;
  bool hasPeriod = false;
  std::size_t end = 0;  // index of the first token behind it
  StatementFault fault;
};

struct ReplaceStatement {
  bool off = false;
  bool last = false;  // OFF, for the newest REPLACE alone
  bool also = false;
  std::vector<ReplacementPair> pairs;
  std::size_t end = 0;
  StatementFault fault;
};

// Parses the statements that direct the compiler, out of the tokens of a file or of the expanded text.
class DirectingStatementParser {
 public:
  // The list of tokens is ended by End.
  DirectingStatementParser(std::span<const Token> tokens, Placement placement, const ExpandedText& text)
      : tokens_(tokens), placement_(placement), text_(text) {}

  // The word COPY stands at `first`.
  CopyStatement ParseCopy(std::size_t first);
  // True when the word REPLACE at `first` begins the statement of this name.
  static bool IsReplace(std::span<const Token> tokens, std::size_t first);
  ReplaceStatement ParseReplace(std::size_t first);
  // The text of the token at `index` and of all that touch it, without a full stop; `index` is moved behind them.
  std::string ParseName(std::size_t& index) const;

 private:
  bool IsAt(std::size_t index, TokenKind kind) const { return tokens_[index].kind == kind; }
  std::string_view TextAt(std::size_t index) const { return text_.Text(placement_(tokens_[index])); }
  bool IsPartialWord(std::size_t index) const;
  void ParsePairs(std::size_t& index, std::vector<ReplacementPair>& pairs, StatementFault& fault) const;
  static void Note(StatementFault& fault, std::string_view text, std::size_t token);
  bool TakeBy(std::size_t& index, ReplacementPair& pair, StatementFault& fault) const;
  bool ParseOperand(std::size_t& index, std::vector<Token>& operand, StatementFault& fault) const;
  void ParsePseudoText(std::size_t& index, std::vector<Token>& operand, StatementFault& fault) const;
  void ParseIdentifier(std::size_t& index, std::vector<Token>& operand) const;
  std::size_t EndAfterFault(std::size_t index) const;

  std::span<const Token> tokens_;
  Placement placement_;
  const ExpandedText& text_;
};

}  // namespace qmrules::workbench::codemodel::cobol
