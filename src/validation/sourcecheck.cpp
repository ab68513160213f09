#include "validation/sourcecheck.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "shell/text.h"

namespace qmrules::validation {

namespace {

// True for a line that SafeText may change; nearly every line is as it is.
bool HasControls(std::string_view line) {
  return std::any_of(line.begin(), line.end(),
                     [](char character) { return static_cast<unsigned char>(character) < 32; });
}

// Takes the line with its line feed off the beginning of the text; false when the text does not begin so.
bool TakeLine(std::string_view& text, std::string_view line) {
  if (!text.starts_with(line) || text.size() == line.size() || text[line.size()] != '\n') return false;
  text.remove_prefix(line.size() + 1);
  return true;
}

}  // namespace

SourceCheck CheckSource(const std::vector<std::string_view>& lines, std::int32_t fromRow, std::int32_t toRow,
                        std::string_view sourceText) {
  const auto count = static_cast<std::int64_t>(lines.size());
  const std::int64_t skipped = std::max<std::int64_t>(0, std::int64_t{fromRow} - 1);
  SourceCheck check;
  check.pastEnd = skipped > 0 && skipped >= count;
  if (check.pastEnd) return check;
  const std::int64_t rows = std::max<std::int64_t>(0, std::int64_t{toRow} - fromRow + 1);
  const std::int64_t end = std::min(count, skipped + rows);
  std::string_view rest = sourceText;
  std::string safe;
  for (std::int64_t row = skipped; row < end; ++row) {
    std::string_view line = lines[static_cast<std::size_t>(row)];
    if (HasControls(line)) {
      safe = shell::SafeText(line);
      line = safe;
    }
    const bool lacksLastLineFeed = row + 1 == end && rest == line;
    if (lacksLastLineFeed) {
      rest = {};
    } else if (!TakeLine(rest, line)) {
      return check;
    }
  }
  check.stands = rest.empty();
  return check;
}

}  // namespace qmrules::validation
