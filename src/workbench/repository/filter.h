#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

// The filter of an entity node: comparisons joined by "&" (binds tighter) and "|", negated by "~", grouped by "( )".
//
//   (Model=COBOL&Program=GSS1&~FileName=)|ID in 0,17,42
//
// Values stand bare, so what ends a value is the hard part. A value runs up to the first "&", "|" or ")" that is
// neither escaped nor inside a pair of parentheses which the value itself opened:
//
//   (Name=f(a&b)|Name=x)     the first value is "f(a&b)", the second "x"
//   Name=R\&D                "R&D": "\" makes the next character data
//   Name==a ~ b              "=a ~ b": behind its operator nothing but the above is syntax, and blanks are kept
//
// Blanks around a name, a "~", a group and the words "in" and "like" are passed over. So a value with blanks at its
// beginning stands behind "=" as it is, but behind a word its first blank must be escaped; likewise a value that begins
// with "=" or ">" behind "<" or ">".

namespace qmrules::workbench::repository {

enum class FilterOperator { Equal, NotEqual, Less, LessEqual, Greater, GreaterEqual, Like, In };

// What is longer or deeper is refused.
inline constexpr std::size_t kFilterBytes = std::size_t{64} * 1024 * 1024;
inline constexpr int kFilterComparisons = 10000;
inline constexpr int kFilterDepth = 200;  // "(" and "~" within each other; parentheses of a value do not count

// One item of an "in" list.
struct ListItem {
  std::string text;        // unescaped, with its blanks
  std::size_t column = 0;  // characters from 1

  friend bool operator==(const ListItem& a, const ListItem& b) { return a.text == b.text; }
};

// One comparison. Of the last three of its data, `ids` is filled by "ID in", `items` by "in" on any other attribute,
// and `value` by every other operator.
struct Comparison {
  std::string name;
  FilterOperator op = FilterOperator::Equal;
  std::size_t nameColumn = 0;     // characters from 1
  std::size_t valueColumn = 0;    // of the value's or the list's first character
  std::string value;              // unescaped
  std::vector<ListItem> items;    // at least one
  std::vector<std::int64_t> ids;  // at least one; in the order of the list, without duplicates
};

struct FilterExpression;

struct FilterNot {
  std::unique_ptr<FilterExpression> operand;
};
struct FilterAnd {
  std::vector<FilterExpression> children;  // two or more
};
struct FilterOr {
  std::vector<FilterExpression> children;  // two or more
};

struct FilterExpression {
  std::variant<Comparison, FilterNot, FilterAnd, FilterOr> node;
};

// Equal trees say the same in the same shape; columns do not count.
bool operator==(const FilterExpression& a, const FilterExpression& b);

// Reads a filter; nothing for an empty or blank text, which filters nothing. The list behind "in" may stand in
// parentheses; a comma in it that is escaped or inside parentheses of an item is data, and an empty item stands for the
// empty text, but a list is never empty as a whole. Throws Error, naming filter and column, for a malformed one.
std::unique_ptr<FilterExpression> ParseFilter(std::string_view text);

// A filter that ParseFilter reads as an equal tree.
std::string ToText(const FilterExpression& expression);

}  // namespace qmrules::workbench::repository
