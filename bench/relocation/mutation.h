#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace qmrules::bench {

// A line of a program, and the row of the first version that it comes from: 0 for a line that is new.
struct VersionLine {
  std::string text;
  std::int32_t origin = 0;
};

using Version = std::vector<VersionLine>;

Version FirstVersion(std::string_view programText);
std::string TextOf(const Version& version);
bool IsBlankLine(const std::string& line);

// A segment of the first version; rows from 1. Its first and its last line are not blank.
struct CutSegment {
  std::int32_t fromRow = 0;
  std::int32_t toRow = 0;
};

// Segments of 3 to 15 rows, cut at random; they may overlap.
std::vector<CutSegment> CutSegments(const Version& first, int count, std::mt19937& random);

// What is done to a program. Besides, lines come and go around the segments each time.
enum class Edit {
  Around,      // nothing else
  Moved,       // each segment goes to another place
  Reindented,  // its lines go some columns to the right
  BlankLines,  // blank lines come into it and go
  Copied,      // a copy of it stands elsewhere
  Realigned,   // runs of spaces inside its lines change
  Changed,     // one of its lines is another
  Mixed,       // each of these for a part of the segments
};

inline constexpr Edit kEdits[] = {Edit::Around, Edit::Moved,     Edit::Reindented, Edit::BlankLines,
                                  Edit::Copied, Edit::Realigned, Edit::Changed,    Edit::Mixed};
std::string_view NameOf(Edit edit);

// The program after the edits.
Version Mutate(Version version, const std::vector<CutSegment>& segments, Edit edit, std::mt19937& random);

}  // namespace qmrules::bench
