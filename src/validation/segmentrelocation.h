#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "validation/fileindex.h"
#include "validation/segmentcomparison.h"

// The method MultipleMatching: all segments of a file are looked for in one index of it (fileindex.h), and each goes to
// the place nearest to its old rows.
//
// A run over many files:
//
//   SegmentRelocation relocation({.collapseSpaces = …, .processEvents = …});
//   for each file, in any order (FileGroups says which names are one file):
//     const auto text = ReadSourceText(fileSystem, folder, fileName);              // once
//     moved += relocation.RelocateSegments(text.value_or(""), records, watcher);   // one index for all its records
//
// The index keeps its memory from file to file; nothing else is kept.
namespace qmrules::validation {

// A rule on its way through relocation.
struct RuleRecord {
  std::string RuleID;
  std::int32_t FromRow = 0;  // stored rows; the new ones when relocated
  std::int32_t ToRow = 0;
  std::string SegText;  // stored text; the new one when relocated
  bool Valid = false;   // relocated
  friend bool operator==(const RuleRecord&, const RuleRecord&) = default;
};

// One place at which a segment stands.
struct MatchRecord {
  std::string RuleID;  // always empty
  std::int32_t FromRow = 0;
  std::int32_t ToRow = 0;
  std::string SegText;
  friend bool operator==(const MatchRecord&, const MatchRecord&) = default;
};

struct RowRange {
  std::int32_t FromRow = 0;
  std::int32_t ToRow = 0;
  friend bool operator==(const RowRange&, const RowRange&) = default;
};

enum class RelocationOutcome {
  Relocated,     // to its old rows, too, when it stands there in other case or with other blanks
  NotFound,      // its lines stand nowhere in this order
  RowsDisagree,  // its text has more lines than rows, or there are no rows
  TooManyLines,  // the file has more than kMostLines lines that are not blank
};

// Where one segment stands: all places, in the order in which the index holds them.
class Matches {
 public:
  Matches() = default;
  // `starts`: numbers of the first lines. `lines` and `segment` must outlive the matches.
  Matches(const FileLines& lines, const SegmentLines& segment, std::span<const std::int32_t> starts)
      : lines_(&lines), segment_(&segment), starts_(starts) {}

  std::size_t Count() const { return starts_.size(); }
  // `place` from 0 to Count() - 1.
  RowRange Rows(std::size_t place) const;
  // The same with its text: the segment's own lines, trimmed, and an empty line for each blank one that stands between
  // them in the file. Costs the length of the text.
  MatchRecord Record(std::size_t place) const;
  // The place of the match nearest to the row, of equally near ones the first. At least one match is needed.
  std::size_t Nearest(std::int32_t row) const;

 private:
  const FileLines* lines_ = nullptr;
  const SegmentLines* segment_ = nullptr;
  std::span<const std::int32_t> starts_;
};

// What became of one record. The matches are good during the call only.
struct RelocationFinding {
  RelocationOutcome outcome = RelocationOutcome::NotFound;
  Matches matches;         // empty unless Relocated
  std::size_t chosen = 0;  // place of the one that the record was moved to
};

// Called for each record in order, `index` from 0, when it is done with and before it is changed: the record still has
// its old rows and text.
using RelocationWatcher =
    std::function<void(std::size_t index, const RuleRecord& record, const RelocationFinding& finding)>;

class SegmentRelocation {
 public:
  explicit SegmentRelocation(FileIndexOptions options = {});

  // Looks for each record's segment in the file and puts the new rows, the new text and true into those that are found;
  // the others stay as they are. Returns how many were found. Two records with the same rows and text get the same
  // place. What the watcher throws passes through; the records before that one are done, the others as they were.
  std::int32_t RelocateSegments(std::string_view fileText, std::span<RuleRecord> records,
                                const RelocationWatcher& watcher = {});

  // The index of the file last given.
  const FileIndex& Index() const { return index_; }

 private:
  RelocationFinding Find(const SegmentLines& segment, std::int32_t fromRow);

  FileIndex index_;
  std::vector<std::int32_t> segmentIds_;
  std::vector<std::int32_t> starts_;
};

}  // namespace qmrules::validation
