#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qmrules::workbench::codemodel {

// One physical file of a program, decoded: the program's own, or a copybook. Shared by the programs of a scan, so it
// never changes once it is read.
//
// Offsets are bytes of the UTF-8 text from 0, rows and columns count from 1, characters are UTF-16 code units.
class SourceFile {
 public:
  // The name is relative to the source folder, with "/". Throws platform::Error for a text of 4 GiB or more.
  SourceFile(std::string name, std::string text);

  const std::string& Name() const { return name_; }
  std::string_view Text() const { return text_; }
  // Rows end with LF, CR LF or CR. The text behind the last line end is a row when it is not empty.
  std::uint32_t Rows() const { return static_cast<std::uint32_t>(rowStarts_.size()) - 1; }
  // Offset of the row's first byte; that of Rows() + 1 is the end of the text.
  std::uint32_t RowStart(std::uint32_t row) const { return rowStarts_[row - 1]; }
  // The row without its line end.
  std::string_view Row(std::uint32_t row) const;
  std::uint32_t RowOf(std::uint32_t offset) const;
  // Characters before the offset, in the whole text and in its row; the second counts from 1.
  std::uint32_t Character(std::uint32_t offset) const {
    return rowCharacters_.empty() ? offset : CharacterInRow(offset, RowOf(offset));
  }
  // The same where the row of the offset is known: quicker.
  std::uint32_t Character(std::uint32_t offset, std::uint32_t row) const {
    return rowCharacters_.empty() ? offset : CharacterInRow(offset, row);
  }
  std::uint32_t Column(std::uint32_t offset) const;
  bool IsAscii() const { return rowCharacters_.empty(); }
  // The way back from Character: the byte where this character of the text begins; the text's end for one past it.
  std::uint32_t Offset(std::uint32_t character) const;

 private:
  std::uint32_t CharacterInRow(std::uint32_t offset, std::uint32_t row) const;

  std::string name_;
  std::string text_;
  std::vector<std::uint32_t> rowStarts_;      // and the end of the text
  std::vector<std::uint32_t> rowCharacters_;  // characters before each row; empty where each byte is one
};

}  // namespace qmrules::workbench::codemodel
