#pragma once

#include <string>
#include <string_view>

#include "workbench/codemodel/cobol/reading/lexer.h"

namespace qmrules::workbench::codemodel::cobol {

// A text as the lexer reads it, from a file named PROG.cbl.
LexedFile LexText(std::string_view text, LexerOptions options = {});
LexedFile LexFixed(std::string_view text);
LexedFile LexFree(std::string_view text);

// The tokens as text, "|" before the first one of a row and a blank before others: words, literals and signs as they
// are read, numbers as #1.5, pictures as {X(5)}, the sign of pseudo-text as ==, what has no use as ?x. The text of an
// unclosed literal is followed by "!".
std::string Shown(const LexedFile& lexed);
std::string Fixed(std::string_view text);
std::string Free(std::string_view text);

// The tokens with this flag, as text, parted by blanks.
std::string Flagged(const LexedFile& lexed, TokenFlags flag);
// "1:8 warning: …" for each diagnostic, a line each.
std::string Diagnosed(const LexedFile& lexed);

}  // namespace qmrules::workbench::codemodel::cobol
