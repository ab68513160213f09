#include "platform/linereader.h"

namespace qmrules::platform {

std::optional<std::string_view> LineReader::Next() {
  if (rest_.empty()) return std::nullopt;
  ++row_;
  const std::size_t end = rest_.find('\n');
  std::string_view line = rest_.substr(0, end);
  if (end == std::string_view::npos) {
    rest_ = {};
    return line;
  }
  rest_.remove_prefix(end + 1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

std::vector<std::string_view> SplitLines(std::string_view text) {
  std::vector<std::string_view> lines;
  LineReader reader(text);
  while (const auto line = reader.Next()) lines.push_back(*line);
  return lines;
}

}  // namespace qmrules::platform
