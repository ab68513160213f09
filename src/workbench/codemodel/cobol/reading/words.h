#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "workbench/codemodel/cobol/reading/wordlist.h"
#include "workbench/codemodel/symboltable.h"
#include "workbench/codemodel/token.h"

namespace qmrules::workbench::codemodel::cobol {

enum class Word : std::uint32_t {
#define QMRULES_WORD(name, text) name,
  QMRULES_COBOL_WORDS(QMRULES_WORD)
#undef QMRULES_WORD
      None  // no word of the language
};

// In the order of Word: what a SymbolTable for COBOL begins with.
const std::vector<std::string_view>& CobolWordList();

// The word of a symbol, or Word::None for a name.
inline Word WordOf(std::uint32_t symbol) {
  return symbol < static_cast<std::uint32_t>(Word::None) ? static_cast<Word>(symbol) : Word::None;
}

// True when the token is this word; of Word::None, when it is any name.
inline bool IsWord(const Token& token, Word word) {
  return token.kind == TokenKind::Word && WordOf(token.symbol) == word;
}

namespace detail {

inline constexpr std::size_t kWords = static_cast<std::size_t>(Word::None) + 1;

enum WordFacts : std::uint8_t { kBeginsStatement = 1, kEndsScope = 2, kNoName = 4 };
extern const std::array<std::uint8_t, kWords> kFacts;

inline bool Has(Word word, WordFacts fact) {
  return (kFacts[static_cast<std::size_t>(word)] & fact) != 0;
}

}  // namespace detail

// True for a word that begins a statement.
inline bool IsVerb(Word word) {
  return detail::Has(word, detail::kBeginsStatement);
}
// True for END-IF and the like.
inline bool IsScopeEnd(Word word) {
  return detail::Has(word, detail::kEndsScope);
}
// True for a word that no compiler takes as the name of a data item, so that it ends a list of operands even when the
// program declares it: the words of COBOL 85 and what all later compilers took up. Words of later standards, of single
// compilers and of screens are none, and neither are those of the communication module but for its verbs.
inline bool IsReserved(Word word) {
  return detail::Has(word, detail::kNoName);
}

}  // namespace qmrules::workbench::codemodel::cobol
