#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Which lines of one text go with which of another, and which words of one line with which of another: what a reader
// needs to see two texts side by side.
namespace qmrules::validation {

enum class LinePairKind {
  Same,       // equal but for control characters and the blanks at their ends
  Changed,    // different lines that stand at the same place
  LeftOnly,   // the right has no line for it
  RightOnly,  // the left has none
};

struct LinePair {
  LinePairKind kind = LinePairKind::Same;
  std::optional<std::size_t> left;  // places of the lines, from 0
  std::optional<std::size_t> right;
  friend bool operator==(const LinePair&, const LinePair&) = default;
};

// All lines of both texts in their orders. As many as can be are Same (a longest common subsequence); what lies between
// two of these goes together from the top, as Changed, and the rest stands alone. Texts that differ over thousands of
// lines on both sides are not searched there: between the lines that they begin and end with in common, the lines go
// together from the top, and are Same where they are equal.
[[nodiscard]] std::vector<LinePair> AlignLines(const std::vector<std::string_view>& left,
                                               const std::vector<std::string_view>& right);

// A run of characters of a line.
struct LinePiece {
  std::string text;
  bool differs = false;
  friend bool operator==(const LinePiece&, const LinePiece&) = default;
};

struct WordDifferences {
  std::vector<LinePiece> left;  // together the whole line; no two neighbours are alike
  std::vector<LinePiece> right;
};

// The words, signs and blanks of which the other line has no like at that place. Blanks at the ends of a line never
// differ.
[[nodiscard]] WordDifferences CompareWords(std::string_view left, std::string_view right);

}  // namespace qmrules::validation
