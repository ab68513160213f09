#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace qmrules::cli {

// The number of columns that the text takes on a terminal: two for the wide characters of East Asian scripts, none for
// characters that combine with the one before.
std::size_t DisplayWidth(std::string_view text);

// The longest beginning of the text that takes at most `columns`.
std::string LeftColumns(std::string_view text, std::size_t columns);

// The text as one line that is safe to show: line breaks, tabs and control characters become blanks, so that no stored
// text can act on the reader's terminal; bytes that are no text become "?".
std::string OneLine(std::string_view text);

// The lines of a text, each of them safe to show; without an empty one behind the last line break.
std::string IndentedLines(std::string_view text, std::string_view indent);

}  // namespace qmrules::cli
