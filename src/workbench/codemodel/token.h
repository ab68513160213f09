#pragma once

#include <cstdint>

namespace qmrules::workbench::codemodel {

// What a token is, in any of the languages.
enum class TokenKind : std::uint8_t {
  End,      // behind the last one; every list of tokens has it
  Word,     // a reserved word or a name; `symbol` is its number in the SymbolTable
  Number,   // numeric literal without sign, "1", "1.50", "1.5E3"
  Literal,  // between quotes, with its prefix: 'A', X"0D", N"…", Z'…', G'…'
  Picture,  // the character-string behind PICTURE
  Period,   // full stop that ends a sentence
  Open,     // (
  Close,    // )
  Colon,
  Comma,  // only within EXEC … END-EXEC; elsewhere it parts words like a blank
  Plus,
  Minus,
  Star,
  Slash,
  Power,  // **
  Less,
  Greater,
  Equal,
  LessEqual,
  GreaterEqual,
  NotEqual,  // <>
  Ampersand,
  PseudoText,  // ==, the delimiter; only while COPY and REPLACE are worked off
  Other,       // a character, or a run of bytes, that the language has no use for
};

// Facts about where a token stands.
enum TokenFlags : std::uint8_t {
  kAreaA = 1,       // fixed form: begins in columns 8 to 11; free form: first on its row
  kFirstOnRow = 2,  // nothing but blanks before it on its row (in the program text area)
  kAdjacent = 4,    // touches the token before it: no blank, separator or line end between the two
  kComposed = 8,    // its text is not the bytes at its place, but ExpandedText::composed[text]
  kReplaced = 16,   // put in by REPLACING or REPLACE; its place is that of the text which it replaces
  kUnclosed = 32,   // a literal whose closing quote is missing; it ends with its line
};

// A token of the expanded text, with the physical place that it was read from.
struct Token {
  TokenKind kind = TokenKind::End;
  std::uint8_t flags = 0;
  std::uint32_t inclusion = 0;  // index in ExpandedText::inclusions; 0 is the program's own file
  std::uint32_t offset = 0;     // of its first byte in the file's text
  std::uint32_t length = 0;     // bytes up to the end of its last character; over lines for a continued one
  std::uint32_t row = 0;        // of its first byte, from 1
  std::uint32_t symbol = 0;     // Word: number in the SymbolTable
  std::uint32_t text = 0;       // kComposed: index in ExpandedText::composed

  bool Has(TokenFlags flag) const { return (flags & flag) != 0; }
};

// +, -, *, / and **.
inline bool IsArithmeticOperator(TokenKind kind) {
  using enum TokenKind;
  return kind == Plus || kind == Minus || kind == Star || kind == Slash || kind == Power;
}

}  // namespace qmrules::workbench::codemodel
