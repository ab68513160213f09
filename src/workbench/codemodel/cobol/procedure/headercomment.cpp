#include "workbench/codemodel/cobol/procedure/headercomment.h"

#include <algorithm>
#include <span>

#include "workbench/codemodel/cobol/reading/commentblock.h"

namespace qmrules::workbench::codemodel::cobol {
namespace {

// Of a longer block of comments the last rows count.
constexpr std::ptrdiff_t kMostRows = 200;

}  // namespace

std::string CommentAbove(const ExpandedText& text, std::uint32_t token) {
  const Token& header = text.tokens[token];
  const std::uint32_t index = text.inclusions[header.inclusion].file;
  if (index >= text.commentRows.size() || text.commentRows[index] == nullptr) return {};
  const std::vector<std::uint32_t>& rows = *text.commentRows[index];
  const auto last = std::lower_bound(rows.begin(), rows.end(), header.row);
  auto first = last;
  for (std::uint32_t row = header.row; first != rows.begin() && *std::prev(first) + 1 == row; --row) {
    if (last - first == kMostRows) break;
    --first;
  }
  return first == last ? std::string() : CommentText(*text.files[index], std::span(first, last));
}

}  // namespace qmrules::workbench::codemodel::cobol
