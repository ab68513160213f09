#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Which names a typed text finds, and in which order.
//
// A text finds the names in which each of its words occurs, wherever and in whatever case. A match is better when every
// word stands at the beginning of a word of the name, as "calc" does in "Policy calculation", "POL-CALC" and
// "PolicyCalc"; then when the name is shorter; then by the alphabet.
namespace qmrules::desktop {

// A run of characters (UTF-16) of a name.
struct MarkedRun {
  std::size_t begin = 0;
  std::size_t length = 0;
  friend bool operator==(const MarkedRun&, const MarkedRun&) = default;
};

struct NameMatch {
  bool atWordStarts = false;     // every word of the text
  std::size_t nameLength = 0;    // characters
  std::vector<MarkedRun> marks;  // where the words of the text stand, from left to right, apart from each other
};

class LocatorQuery {
 public:
  explicit LocatorQuery(std::string_view text);

  // True for a text without a word, which finds nothing.
  bool IsEmpty() const { return words_.empty(); }
  // Nothing when a word does not occur.
  std::optional<NameMatch> Match(std::string_view name) const;
  // Like-patterns, for a fetch: a name matches when it meets all of them.
  std::vector<std::string> Patterns() const;

 private:
  std::vector<std::u32string> words_;  // folded
};

}  // namespace qmrules::desktop
