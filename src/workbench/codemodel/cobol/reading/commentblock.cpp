#include "workbench/codemodel/cobol/reading/commentblock.h"

#include <algorithm>
#include <vector>

namespace qmrules::workbench::codemodel::cobol {

namespace {

constexpr std::string_view kFrame = "*-=/+|# \t\r\f";
constexpr std::ptrdiff_t kMostRows = 200;
constexpr std::size_t kIndicator = 6;
constexpr std::size_t kTextEnd = 72;
constexpr std::size_t kCardEnd = 80;

// The comment's text without its mark, the sequence area and the identification area.
std::string_view Content(std::string_view row) {
  if (row.size() > kIndicator && (row[kIndicator] == '*' || row[kIndicator] == '/')) {
    // Fixed form; longer rows than a card has are of the wide one.
    if (row.size() > kTextEnd && row.size() <= kCardEnd) row = row.substr(0, kTextEnd);
    row.remove_prefix(kIndicator + 1);
  }
  std::size_t first = row.find_first_not_of(kFrame);
  if (first != std::string_view::npos && row[first] == '>') first = row.find_first_not_of(kFrame, first + 1);
  if (first == std::string_view::npos) return {};
  return row.substr(first, row.find_last_not_of(kFrame) - first + 1);
}

}  // namespace

std::string CommentText(const SourceFile& file, std::span<const std::uint32_t> rows) {
  std::string comment;
  for (const std::uint32_t row : rows) {
    const std::string_view content = Content(file.Row(row));
    if (content.empty()) continue;
    if (!comment.empty()) comment += '\n';
    comment += content;
  }
  return comment;
}

std::string CommentsBetween(const ExpandedText& text, std::uint32_t firstToken, std::uint32_t behindToken) {
  const Token& first = text.tokens[firstToken];
  const Token& behind = text.tokens[behindToken];
  const std::uint32_t index = text.inclusions[first.inclusion].file;
  if (index >= text.commentRows.size() || text.commentRows[index] == nullptr) return {};
  const std::vector<std::uint32_t>& rows = *text.commentRows[index];
  const auto from = std::upper_bound(rows.begin(), rows.end(), first.row);
  auto to = rows.end();
  if (behind.kind != TokenKind::End && behind.inclusion == first.inclusion) {
    to = std::lower_bound(from, rows.end(), behind.row);
  }
  const auto count = std::min(to - from, kMostRows);
  return CommentText(*text.files[index], std::span(rows).subspan(static_cast<std::size_t>(from - rows.begin()),
                                                                 static_cast<std::size_t>(count)));
}

}  // namespace qmrules::workbench::codemodel::cobol
