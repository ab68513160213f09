#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qmrules::test {

// A place marked in a source text. Rows and columns count from 1, offsets are bytes of the clean text.
struct SourceMark {
  std::string name;
  std::uint32_t offset = 0, end = 0;  // the end is that of the last byte and one; the offset itself for a point
  std::uint32_t row = 0, column = 0;
};

// A source text with marks in it: `$name[[text]]` marks a range, `$name^` a point. Ranges may hold other marks.
//
//   MOVE $from[[A]] TO $to[[B ($index[[I]])]]
struct AnnotatedSource {
  std::string text;  // without the marks
  std::vector<SourceMark> marks;

  // Throws std::out_of_range, naming the mark, when there is none.
  const SourceMark& At(std::string_view mark) const;
};

// Throws std::invalid_argument for a range that is not closed.
AnnotatedSource Annotated(std::string_view text);

}  // namespace qmrules::test
