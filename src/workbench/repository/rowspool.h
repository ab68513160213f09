#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <vector>

#include "workbench/repository/storedvalue.h"

namespace qmrules::workbench::repository {

// Rows put aside in a file of their own, written once and then read once in the same order, so that a walk of any
// length takes no memory. The file has no name and goes with the spool.
class RowSpool {
 public:
  // Throws platform::Error when no file can be made.
  RowSpool();

  // Throws platform::Error when the file cannot take the row.
  void Write(const std::vector<StoredValue>& row);
  // Ends the writing; rows are read from the first one on.
  void Rewind();
  // The next row, of as many columns as were written, into `row`; false past the last one.
  bool Read(std::vector<StoredValue>& row);

 private:
  struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  void WriteBytes(const void* bytes, std::size_t count);
  void ReadBytes(void* bytes, std::size_t count);

  std::unique_ptr<std::FILE, CloseFile> file_;
  std::uint64_t rows_ = 0;
};

}  // namespace qmrules::workbench::repository
