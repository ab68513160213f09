#include "cli/texttable.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "cli/displaywidth.h"

namespace qmrules::cli {

namespace {

constexpr std::string_view kCut = "...";
constexpr std::string_view kGap = "  ";
constexpr std::string_view kBold = "\x1b[1m";
constexpr std::string_view kPlain = "\x1b[0m";

std::string Cell(const std::string& text) {
  std::string line = OneLine(text);
  if (DisplayWidth(line) <= TextTable::kWidestColumn) return line;
  return LeftColumns(line, TextTable::kWidestColumn - kCut.size()) + std::string(kCut);
}

std::string Line(const std::vector<std::string>& cells, const std::vector<std::size_t>& widths) {
  std::string line;
  for (std::size_t column = 0; column < cells.size(); ++column) {
    if (column > 0) line += kGap;
    line += cells[column];
    line.append(widths[column] - DisplayWidth(cells[column]), ' ');
  }
  line.erase(line.find_last_not_of(' ') + 1);
  return line;
}

}  // namespace

void TextTable::Add(std::vector<std::string> cells) {
  for (auto& cell : cells) cell = Cell(cell);
  rows_.push_back(std::move(cells));
}

std::vector<std::size_t> TextTable::Widths() const {
  std::vector<std::size_t> widths;
  const auto take = [&widths](const std::vector<std::string>& cells) {
    if (widths.size() < cells.size()) widths.resize(cells.size());
    for (std::size_t column = 0; column < cells.size(); ++column) {
      widths[column] = std::max(widths[column], DisplayWidth(cells[column]));
    }
  };
  take(titles_);
  for (const auto& row : rows_) take(row);
  return widths;
}

void TextTable::Print(std::ostream& out, bool boldTitles, const std::string& indent) const {
  const auto widths = Widths();
  if (!titles_.empty()) {
    out << indent << (boldTitles ? kBold : "") << Line(titles_, widths) << (boldTitles ? kPlain : "") << '\n';
  }
  for (const auto& row : rows_) out << indent << Line(row, widths) << '\n';
}

}  // namespace qmrules::cli
