#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "validation/comparisonmethod.h"

namespace qmrules::validation {

// The lines of a segment's text, trimmed, as views into it. Line(j) counts from 1; lines that the text lacks are blank.
class SegmentLines {
 public:
  SegmentLines(std::vector<std::string_view> lines, std::int64_t count) : lines_(std::move(lines)), count_(count) {}
  std::int64_t Count() const { return count_; }
  std::string_view Line(std::int64_t place) const {
    const auto index = static_cast<std::size_t>(place - 1);
    return index < lines_.size() ? lines_[index] : std::string_view();
  }

 private:
  std::vector<std::string_view> lines_;  // without the blank ones at the end, of which stored rows can ask for billions
  std::int64_t count_;
};

// Cuts a segment's text into lines. `count` comes in as the number of rows. For IgnoreBlankLines and
// ApproximateLineComparing blank lines are left out, `count` goes out as the number of the others (as it came when
// there is none), and `firstRow` goes up by the number of blank lines before the first. For Simple blank lines are kept
// and both stay. For any other method each line takes the place of the one before, and both stay. Nothing, with `count`
// and `firstRow` of no meaning, where the text has more lines than `count` has room for or `count` is below 1.
std::optional<SegmentLines> SplitSegmentLines(std::string_view segText, ComparisonMethod method, std::int64_t& count,
                                              std::int32_t& firstRow);

}  // namespace qmrules::validation
