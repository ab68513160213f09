#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "relocation/mutation.h"
#include "validation/segmentrelocation.h"

namespace qmrules::bench {

// How one method did on one kind of edit.
struct Score {
  int segments = 0;
  int present = 0;      // still there: the same lines in the same order, with nothing but blank lines between them
  int moved = 0;        // given a place
  int correct = 0;      // of these: the true one
  int absentMoved = 0;  // of these: the text is nowhere in the file
  double seconds = 0;

  double Precision() const { return moved == 0 ? 1 : static_cast<double>(correct) / moved; }
  double Recall() const { return present == 0 ? 1 : static_cast<double>(correct) / present; }
  Score& operator+=(const Score& other);
};

using Place = std::optional<validation::RowRange>;

// Judges the places that methods give to the segments of one program. `collapseSpaces`: lines that differ only in runs
// of spaces are the same.
class Judge {
 public:
  Judge(const Version& first, const Version& second, bool collapseSpaces);

  void Count(const CutSegment& segment, const Place& given, Score& score) const;

 private:
  struct Line {
    std::string key;
    std::int32_t origin = 0;
    std::int32_t row = 0;
  };
  static std::vector<Line> LinesOf(const Version& version, bool collapseSpaces);
  std::vector<Line> LinesOf(const CutSegment& segment) const;
  Place TruePlace(const std::vector<Line>& segment) const;
  bool IsAnywhere(const std::vector<Line>& segment) const;

  std::vector<Line> first_, second_;  // those that are not blank
};

// The rows that a blame gives to the segment: of the runs of lines (blank ones left out) that are attributed to its
// lines one after the other and to all of them, the one nearest to its old rows.
Place PlaceByBlame(const std::vector<std::int32_t>& blame, const Version& first, const Version& second,
                   const CutSegment& segment);

}  // namespace qmrules::bench
