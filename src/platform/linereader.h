#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace qmrules::platform {

// The lines of a text: the one place that decides what a line is, so that rows mean the same in segments, validation,
// the source viewer and the code models.
//
// A line ends at LF or at CR LF; a CR that no LF follows belongs to the line. What ends a line is no part of it. A line
// end at the end of the text starts no further line, so "a\n" and "a" both have one line and the empty text has none.
// The lines are views into the text, which must outlive them.
class LineReader {
 public:
  explicit LineReader(std::string_view text) : rest_(text) {}

  // The next line, or nothing at the end.
  std::optional<std::string_view> Next();
  // Passes over the next line; false, with nothing changed, at the end.
  bool SkipLine() { return Next().has_value(); }
  bool AtEnd() const { return rest_.empty(); }
  // The row, from 1, of the line last given or passed over; 0 before the first.
  std::size_t Row() const { return row_; }

 private:
  std::string_view rest_;
  std::size_t row_ = 0;
};

// All lines of the text, as views into it.
std::vector<std::string_view> SplitLines(std::string_view text);

}  // namespace qmrules::platform
