#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "validation/linedictionary.h"

namespace qmrules::validation {

// What ends the numbers of a file's lines, and what stands before them.
inline constexpr std::int32_t kTerminator = -2;
inline constexpr std::int32_t kBeforeFirst = -1;

// The lines of a file that are not blank, as numbers: the text that the tree is made of.
class FileLines {
 public:
  FileLines() { LoadLineIds("", false, 0); }

  // Takes the text in and drops the one before; memory is kept. Each line goes through SafeText, loses the blanks at
  // its ends and, when `collapseSpaces`, has its runs of spaces collapsed. False, with no line held, when more than
  // `mostLines` are not blank.
  bool LoadLineIds(std::string_view fileText, bool collapseSpaces, std::int32_t mostLines);

  // The number that LoadLineIds gave to the line; 0 for a blank line and for one that is nowhere in the file.
  std::int32_t IdOf(std::string_view line);

  // 0 to N: kBeforeFirst, the number of each line in file order, kTerminator.
  std::span<const std::int32_t> LineIds() const { return lineIds_; }
  // The row, from 1 and over all lines, of the k-th line that is not blank, k from 1 to N - 1.
  std::int32_t LineRow(std::int32_t k) const { return lineRows_[static_cast<std::size_t>(k)]; }
  // N: the number of lines that are not blank, and one for the terminator.
  std::int32_t LineCount() const { return static_cast<std::int32_t>(lineIds_.size()) - 1; }
  // How many different lines there are.
  std::int32_t DistinctLines() const { return dictionary_.Count(); }
  // Bytes held, the texts of the distinct lines left out.
  std::size_t Bytes() const;

 private:
  bool Append(std::string_view fileText, std::int32_t mostLines);
  void Clear(std::size_t bytesToCome);
  std::string_view Key(std::string_view line);

  bool collapseSpaces_ = false;
  LineDictionary dictionary_;
  std::vector<std::int32_t> lineIds_;
  std::vector<std::int32_t> lineRows_;
  std::string collapsed_;  // the key made last, where lines are collapsed
};

}  // namespace qmrules::validation
