#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace qmrules::shell {

/// Lengths and cuts in characters, a character being one UTF-16 code unit: a code point from U+10000 on counts as two.
/// Each byte that is not well-formed UTF-8 counts as one.

/// Number of characters of `utf8`.
[[nodiscard]] std::size_t CharacterCount(std::string_view utf8);

/// The longest beginning of `utf8` of at most `count` characters. A code point is never split: where only the first
/// half of a surrogate pair would fit, the result is one character shorter. A text short enough comes back whole.
[[nodiscard]] std::string LeftCharacters(std::string_view utf8, std::size_t count);

/// A text of at most `limit` characters as it is; a longer one as its first `limit` characters and "..." behind them.
/// So the result has up to `limit` + 3 characters.
[[nodiscard]] std::string CutWithEllipsis(std::string_view utf8, std::size_t limit);

/// The same with a shorter rest: a text longer than `limit` characters becomes its first `kept` characters and "...".
[[nodiscard]] std::string CutWithEllipsis(std::string_view utf8, std::size_t limit, std::size_t kept);

}  // namespace qmrules::shell
