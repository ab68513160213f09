#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/filesystem.h"
#include "validation/comparisonmethod.h"
#include "validation/segmentlines.h"

// The search for one segment, line by line through the text of its file. A file's text is what ReadSourceText gives;
// whoever looks for several segments of one file reads it once.
//
// These searches keep oddities that their users know. They are told where they stand, and tests hold them.
namespace qmrules::validation {

// The most that two lines may differ by and still be the same in ApproximateLineComparing.
inline constexpr std::int32_t kMaxLineDistance = 3;

// The text of folder & "\" & file name; nothing when it cannot be read: missing, unreadable, too large, no text in the
// encoding of the sources, or a name that leads out of the folder.
std::optional<std::string> ReadSourceText(const platform::FileSystem& fileSystem, std::string_view folder,
                                          std::string_view fileName);

// A segment on its way through a search: in with the stored rows and text, out with the new ones.
struct SegmentPlace {
  std::int32_t FromRow = 0;  // first and last row, from 1, both inclusive
  std::int32_t ToRow = 0;
  std::string SegText;  // each line with a line feed behind it
  friend bool operator==(const SegmentPlace&, const SegmentPlace&) = default;
};

enum class SearchOutcome {
  Found,
  NotFound,
  RowsDisagree,  // the text has more lines than rows, or there are no rows: nothing was looked for or changed
};

// For each place j from 1 (at index j - 1) the length of the longest proper beginning of lines 1 to j that also ends
// them. Lines are the same when their LineEditDistance is at most `maxDistance` for ApproximateLineComparing, and for
// any other method when they are equal.
std::vector<std::int32_t> BuildLinePrefixTable(const SegmentLines& lines, ComparisonMethod method,
                                               std::int32_t maxDistance);

// The occurrence nearest to the old rows, of two equally near ones the upper; occurrences that overlap one found before
// are not seen. Found: the new rows, the text as it was. NotFound: FromRow is 0 and ToRow the number of rows less 1.
SearchOutcome FindSegmentSimple(std::string_view fileText, SegmentPlace& place);

// The first occurrence. Found: its rows, and as text its lines, prepared, with the blank ones between them. NotFound:
// both rows are 0 and the text is as it was.
//
// Rows and text begin where the search last began with the segment's first line. A search that falls back to a shorter
// beginning of the segment does not begin anew: for the segment A, A, B and the file A, A, A, B they are rows 1 to 4.
SearchOutcome FindSegmentIgnoringBlanks(std::string_view fileText, SegmentPlace& place);

// What FindSegmentApproximately knows of the place that it found.
struct ApproximateMatch {
  // The least distance of a line seen from the beginning of the file to the end of this place: what it was accepted by.
  std::int32_t lowestDistance = 0;
  // The LineEditDistance of the segment's lines to the last lines of the place, added up, a line counting 100 at most:
  // how far the text is off.
  std::int64_t totalDistance = 0;
};

// An occurrence whose lines each differ by at most kMaxLineDistance. It begins as in FindSegmentIgnoringBlanks. Found:
// its rows and its lines. NotFound: nothing has changed. `match` (may be null) tells of the place found.
//
// The first occurrence is taken, and a later one in its stead only when a line closer than every line accepted before
// has been seen since: in it or in an attempt that was given up. So once a line was equal, nothing is replaced any
// more.
SearchOutcome FindSegmentApproximately(std::string_view fileText, SegmentPlace& place,
                                       ApproximateMatch* match = nullptr);

// The search of the method. MultipleMatching, which is not for one segment alone, is no search here: NotFound.
SearchOutcome FindSegmentBy(ComparisonMethod method, std::string_view fileText, SegmentPlace& place);

}  // namespace qmrules::validation
