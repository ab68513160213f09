#pragma once

#include <cstddef>
#include <string_view>

#include "platform/error.h"

// What the repository's query languages share: what a name is, and how a mistake is told to the reader.

namespace qmrules::workbench::repository {

// A text in one of the query languages, with the name of the language as errors tell it ("filter", "fetch list").
struct QueryText {
  std::string_view language;
  std::string_view text;
};

// Of a text that an error quotes; what is longer is cut.
inline constexpr std::size_t kShownCharacters = 200;

// The error for a mistake at byte `position` (at most the text's length), to be thrown by the caller:
//
//   filter "ID=1&" column 6: a comparison is expected
//
// A text longer than 200 characters is cut. The column counts characters from 1.
platform::Error SyntaxError(const QueryText& query, std::size_t position, std::string_view expectation);

// The same for a mistake at a column that is known already.
platform::Error ColumnError(const QueryText& query, std::size_t column, std::string_view reason);

// The byte behind the name that begins at byte `position`; `position` itself when no name begins there. A name is a run
// of letters, digits, "_", "-", "." and characters beyond ASCII.
std::size_t NameEnd(std::string_view text, std::size_t position);

// Turns byte positions into columns (characters, from 1). Positions are asked for in rising order, so that a long text
// is counted once and not anew for each of its items.
class ColumnCounter {
 public:
  explicit ColumnCounter(std::string_view text) : text_(text) {}
  // `position` is at least that of the call before and at most the text's length.
  std::size_t ColumnAt(std::size_t position);

 private:
  std::string_view text_;
  std::size_t position_ = 0;
  std::size_t column_ = 1;
};

}  // namespace qmrules::workbench::repository
