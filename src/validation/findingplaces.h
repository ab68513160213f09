#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "validation/linealignment.h"
#include "validation/validationrun.h"

// What a reader is shown of one finding: the text that the rule had, beside the places of the file that it leads to.
namespace qmrules::validation {

enum class PlaceKind {
  Chosen,     // the text stands here, and the rule follows it here
  Candidate,  // it stands here, too
  Near,       // it stands nowhere; something like it stands here
  OldRows,    // what stands at the stored rows now
};

struct FindingPlace {
  PlaceKind kind = PlaceKind::OldRows;
  RowRange rows;
  std::int64_t distance = 0;  // of Near: characters to insert, delete or substitute
  friend bool operator==(const FindingPlace&, const FindingPlace&) = default;
};

// The places, by row; at least one, and more than one only where the text stands at several. For a text that stands
// nowhere the nearest place is looked for now, which costs a walk through the file. `finding` bears its texts.
[[nodiscard]] std::vector<FindingPlace> PlacesOf(const RuleFinding& finding, std::string_view fileText);

// The place that is shown first: the chosen one, or the only one.
[[nodiscard]] std::size_t FirstPlaceShown(const std::vector<FindingPlace>& places);

struct ComparedLine {
  LinePairKind kind = LinePairKind::Same;
  std::int32_t leftRow = 0;  // row in the file, from 1; 0 where this side has no line
  std::int32_t rightRow = 0;
  std::vector<LinePiece> left = {};  // as SafeText leaves the line
  std::vector<LinePiece> right = {};
};

struct Comparison {
  std::vector<ComparedLine> lines = {};
  std::size_t differing = 0;  // lines that are not Same
  bool isCut = false;         // of one side only the first kMostLinesCompared lines are there
};

inline constexpr std::size_t kMostLinesCompared = 20'000;

// The stored text on the left, in its stored rows, and on the right what stands at the rows of the file; rows that the
// file lacks hold nothing. Without a file the right side is empty.
[[nodiscard]] Comparison CompareWithPlace(const RuleFinding& finding, std::optional<std::string_view> fileText,
                                          const RowRange& rows);

}  // namespace qmrules::validation
