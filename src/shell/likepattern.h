#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace qmrules::shell {

/// The system's "like". A pattern covers the whole text and ignores case:
///
///   *        any run of characters, also none
///   ?        any one character (code point)
///   #        one of the digits 0 to 9
///   [list]   one character of the list; "a-z" in it is a range
///   [!list]  one character that is not in the list
///   other    that character
///
/// In a list "*", "?", "#" and "[" are plain characters, so "[*]" finds an asterisk; so is "-" at the list's beginning
/// or end and "!" anywhere but at its beginning. "[]" stands for no character at all, "[!]" for the exclamation mark.
/// "]" outside a list is a plain character. A character is in a range when it or its other case is.
///
/// Compile once and match often: a match allocates nothing and never takes more steps than the text's length times the
/// pattern's.
class LikePattern {
 public:
  /// Throws std::invalid_argument for a list without its "]" and for a range that runs backwards; the text names the
  /// pattern and the column, in characters from 1.
  explicit LikePattern(std::string_view pattern);

  [[nodiscard]] bool Matches(std::string_view text) const;

 private:
  enum class Kind { Literal, AnyCharacter, Digit, List, AnyRun };

  struct Token {
    Kind kind = Kind::Literal;
    char32_t literal = 0;  ///< folded
    bool isNegated = false;
    std::size_t firstRange = 0;
    std::size_t endRange = 0;
  };

  struct Range {
    char32_t first = 0;
    char32_t last = 0;
  };

  /// What the pattern comes down to. All but General need only `literal_`.
  enum class Shape { Whole, Beginning, Anywhere, General };

  /// Reads the list that opens at byte `position` of `pattern`; returns the place behind its "]".
  std::size_t AddList(std::string_view pattern, std::size_t position);
  void AddRun();
  void ChooseShape();

  [[nodiscard]] bool Accepts(const Token& token, char32_t value) const;
  [[nodiscard]] bool IsInList(const Token& token, char32_t value) const;
  [[nodiscard]] bool MatchesTokens(std::string_view text) const;
  /// Where the literal ends that begins at byte `position`; npos when it does not stand there.
  [[nodiscard]] std::size_t LiteralEnd(std::string_view text, std::size_t position) const;
  [[nodiscard]] bool HoldsLiteral(std::string_view text) const;

  std::vector<Token> tokens_;
  std::vector<Range> ranges_;
  std::u32string literal_;  ///< folded
  Shape shape_ = Shape::General;
};

/// One match of a pattern that is used once. Throws as the constructor of LikePattern does.
[[nodiscard]] bool MatchesPattern(std::string_view text, std::string_view pattern);

}  // namespace qmrules::shell
