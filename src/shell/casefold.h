#pragma once

#include <string>
#include <string_view>

namespace qmrules::shell {

/// Comparison without regard to case, for all of Unicode and independent of the user's locale. Each letter maps to one
/// letter, so "STRASSE" and "straße" differ. Bytes that are not well-formed UTF-8 are kept and equal only themselves.

/// `text` with each letter replaced by the one that stands for all its cases. Two texts are equal ignoring case exactly
/// when their folded texts are the same bytes: this is the text to key a map with.
[[nodiscard]] std::string FoldCase(std::string_view text);

/// -1, 0 or 1 as `left` stands before, level with or behind `right`: the order of the bytes of the folded texts, which
/// is the order of their code points. Allocates nothing.
[[nodiscard]] int CompareIgnoringCase(std::string_view left, std::string_view right);

/// True when `CompareIgnoringCase` gives 0.
[[nodiscard]] bool EqualIgnoringCase(std::string_view left, std::string_view right);

/// `text` with each letter replaced by its capital where that is one letter; "ß" stays.
[[nodiscard]] std::string ToUpper(std::string_view text);

}  // namespace qmrules::shell
