#include "validation/segmentlines.h"

#include "shell/trim.h"

namespace qmrules::validation {

namespace {

// What stands before the first line feed of `text`, which loses it and the line feed.
std::string_view TakeLine(std::string_view& text) {
  const std::size_t end = text.find('\n');
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  return line;
}

}  // namespace

std::optional<SegmentLines> SplitSegmentLines(std::string_view segText, ComparisonMethod method, std::int64_t& count,
                                              std::int32_t& firstRow) {
  if (count < 1) return std::nullopt;
  const bool keepsBlankLines = method == ComparisonMethod::Simple;
  const bool dropsBlankLines =
      method == ComparisonMethod::IgnoreBlankLines || method == ComparisonMethod::ApproximateLineComparing;
  std::vector<std::string_view> lines;
  std::string_view last;  // the line in the slot behind `lines`, which the next one overwrites
  for (std::string_view rest = segText; !shell::IsBlank(rest);) {
    if (static_cast<std::int64_t>(lines.size()) == count) return std::nullopt;
    last = shell::TrimBlanks(TakeLine(rest));
    if (keepsBlankLines || (dropsBlankLines && !last.empty())) {
      lines.push_back(last);
      last = {};
    } else if (dropsBlankLines && lines.empty()) {
      ++firstRow;
    }
  }
  if (dropsBlankLines && !lines.empty()) count = static_cast<std::int64_t>(lines.size());
  if (!last.empty()) lines.push_back(last);
  return SegmentLines(std::move(lines), count);
}

}  // namespace qmrules::validation
