#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

#include "validation/filelines.h"
#include "validation/segmentlines.h"
#include "validation/suffixtree.h"

namespace qmrules::validation {

struct FileIndexOptions {
  bool collapseSpaces = false;          // lines that differ only in the length of their runs of spaces are the same
  std::function<void()> processEvents;  // lets the host take pending events; called once for each line of the tree.
                                        // It must not come back into the index.
};

// The most lines that are not blank that an index is made of: it takes up to about 150 bytes for each, and the texts of
// the distinct ones.
inline constexpr std::int32_t kMostLines = 1 << 25;

// The lines of one file that are not blank, each reduced to a number, and the tree of all that follows on each.
class FileIndex {
 public:
  explicit FileIndex(FileIndexOptions options) : options_(std::move(options)) {}
  // The tree looks into the lines.
  FileIndex(const FileIndex&) = delete;
  FileIndex& operator=(const FileIndex&) = delete;

  // Takes the text in and drops the file before; memory is kept. False, with an empty index, for a file of more than
  // kMostLines lines. An exception (of processEvents, or for want of memory) leaves an index that only Load may be
  // called on.
  bool Load(std::string_view fileText);

  // The numbers of the segment's lines; empty when one of them is blank or nowhere in the file.
  void SegmentIds(const SegmentLines& segment, std::vector<std::int32_t>& ids);

  const FileLines& Lines() const { return lines_; }
  const SuffixTree& Tree() const { return tree_; }

 private:
  FileIndexOptions options_;
  FileLines lines_;
  SuffixTree tree_;
};

}  // namespace qmrules::validation
