#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/codemodel/cobol/reading/lexer.h"
#include "workbench/codemodel/cobol/reading/replacements.h"
#include "workbench/codemodel/expandedtext.h"
#include "workbench/codemodel/symboltable.h"

namespace qmrules::workbench::codemodel::cobol {

// What the expansion of one program may still cost. Each is counted down.
struct ExpansionBudget {
  std::size_t tokens = 0;       // taken from files or put in by replacing
  std::size_t bytes = 0;        // of texts that are made by replacing
  std::size_t comparisons = 0;  // of words with words of pairs

  bool IsSpent() const { return tokens == 0 || bytes == 0 || comparisons == 0; }
};

// Replaces tokens by the pairs of a REPLACING or REPLACE. What then touches without a blank becomes one word:
// ":TAG:-NAME" with :TAG: replaced by PM is PM-NAME.
class Replacer {
 public:
  // Texts that are made are added to the composed ones of `text`.
  Replacer(ExpandedText& text, SymbolTable& symbols, const LexerOptions& options, ExpansionBudget& budget)
      : text_(text), symbols_(symbols), options_(options), budget_(budget) {}

  // Adds the tokens to `out`. When the budget is spent, the rest of them is added as it stands and false returned.
  bool Apply(const Replacements& replacements, std::span<const Token> in, std::vector<Token>& out);

 private:
  // Between tokens, or within the text of a PICTURE.
  struct Place {
    std::size_t token = 0;
    std::size_t offset = 0;
  };
  struct Match {
    std::uint32_t pair = 0;
    Place end;
  };

  std::optional<Match> Find(Place at);
  std::optional<Match> FindInPicture(Place at);
  std::optional<Place> MatchWhole(const Replacements::Pair& pair, Place at);
  bool MatchesPartly(const Replacements::Pair& pair, const Token& token);
  void TakePicture(Place& at);
  void Put(const Match& match, Place at);
  void PutWhole(const Replacements::Pair& pair, const Token& place);
  void Emit(Token token);
  void EmitFragment(const Token& token, std::size_t from, std::size_t to);
  void FinishRun();
  bool NeedsGlue() const;
  bool IsPictureDue() const;
  void Glue();
  void PutGlued();
  void Compose(Token& token, const Token& last, std::string text);

  ExpandedText& text_;
  SymbolTable& symbols_;
  const LexerOptions& options_;
  ExpansionBudget& budget_;

  // Of one Apply.
  const Replacements* replacements_ = nullptr;
  std::span<const Token> in_;
  std::vector<Token>* out_ = nullptr;
  std::vector<std::uint32_t> candidates_;
  // The run: the last tokens of `out_`, each touching the one before it.
  std::size_t runStart_ = 0;
  bool runChanged_ = false;  // something in it was replaced
  bool runCut_ = false;      // something in it was removed or divided
  bool apart_ = false;       // the next token does not touch what is before it, whatever it says itself
  bool inExec_ = false;
  // Of one Glue.
  std::vector<Token> pieces_;
  std::string glued_;
  std::vector<std::size_t> ends_;  // of the pieces in it
  std::vector<Token> glueTokens_;
};

}  // namespace qmrules::workbench::codemodel::cobol
