#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "platform/linereader.h"

namespace qmrules::platform {

// A text file opened for reading line by line.
class TextStream {
 public:
  // `path` stands for the file in errors.
  TextStream(std::string path, std::string text) : path_(std::move(path)), text_(std::move(text)), lines_(text_) {}
  // The lines are views into the own text, which therefore stays in its place.
  TextStream(const TextStream&) = delete;
  TextStream& operator=(const TextStream&) = delete;

  // The next line without its line end; good as long as the stream. Throws Error, naming the file and the row, at the
  // end of the file.
  std::string_view ReadLine();
  // Passes over the next line. At the end of the file it does nothing.
  void SkipLine() { lines_.SkipLine(); }
  bool AtEndOfStream() const { return lines_.AtEnd(); }
  // The row, from 1, of the line last read or passed over; 0 before the first.
  std::size_t Row() const { return lines_.Row(); }

 private:
  std::string path_;
  std::string text_;
  LineReader lines_;
};

}  // namespace qmrules::platform
