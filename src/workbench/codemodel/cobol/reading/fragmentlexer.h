#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/codemodel/cobol/reading/lexer.h"
#include "workbench/codemodel/symboltable.h"
#include "workbench/codemodel/token.h"

namespace qmrules::workbench::codemodel::cobol {

// Where a piece of text stands; the same characters are other tokens elsewhere.
enum class FragmentContext : std::uint8_t { Plain, Picture, Exec };

// Puts the tokens of a text without blanks into `tokens`. Their offsets count from its start, their texts stand there.
// There is at least one: what is no token of the language is one of the kind Other.
void LexFragment(std::string_view text, FragmentContext context, const LexerOptions& options, SymbolTable& symbols,
                 std::vector<Token>& tokens);

}  // namespace qmrules::workbench::codemodel::cobol
