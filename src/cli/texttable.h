#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace qmrules::cli {

// Rows under titles, in columns as wide as what stands in them. A cell is one line; one that is longer than a column
// may be is cut, with "..." at its end.
class TextTable {
 public:
  static constexpr std::size_t kWidestColumn = 60;

  // A table without titles has as many columns as its first row.
  explicit TextTable(std::vector<std::string> titles = {}) : titles_(std::move(titles)) {}

  // Cells that the row does not have are empty.
  void Add(std::vector<std::string> cells);
  bool Empty() const { return rows_.empty(); }

  // Writes each line behind `indent`, without blanks at its end; the titles in bold where that is asked for.
  void Print(std::ostream& out, bool boldTitles = false, const std::string& indent = "") const;

 private:
  std::vector<std::size_t> Widths() const;

  std::vector<std::string> titles_;
  std::vector<std::vector<std::string>> rows_;
};

}  // namespace qmrules::cli
