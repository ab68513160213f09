#include "validation/findingplaces.h"

#include <algorithm>
#include <utility>

#include "platform/linereader.h"
#include "shell/text.h"
#include "validation/segmentcomparison.h"

namespace qmrules::validation {

namespace {

// The first so many lines, and whether there are more.
struct SomeLines {
  std::vector<std::string_view> lines;
  bool isCut = false;
};

SomeLines TakeLines(platform::LineReader& reader, std::int64_t most) {
  SomeLines taken;
  for (std::int64_t row = 0; row < most; ++row) {
    const auto line = reader.Next();
    if (!line) return taken;
    if (taken.lines.size() == kMostLinesCompared) {
      taken.isCut = true;
      return taken;
    }
    taken.lines.push_back(*line);
  }
  return taken;
}

SomeLines LinesAt(std::string_view fileText, const RowRange& rows) {
  platform::LineReader reader(fileText);
  for (std::int32_t row = 1; row < rows.FromRow; ++row) {
    if (!reader.SkipLine()) return {};
  }
  return TakeLines(reader, std::int64_t{rows.ToRow} - rows.FromRow + 1);
}

std::int32_t RowOf(std::int32_t fromRow, std::size_t place) {
  return static_cast<std::int32_t>(std::int64_t{fromRow} + static_cast<std::int64_t>(place));
}

std::vector<LinePiece> Whole(std::string line) {
  if (line.empty()) return {};
  return {{std::move(line), false}};
}

std::optional<FindingPlace> NearPlaceOf(const RuleFinding& finding, std::string_view fileText) {
  if (finding.near) return FindingPlace{PlaceKind::Near, finding.near->rows, finding.near->distance};
  SegmentPlace place{finding.rows.FromRow, finding.rows.ToRow, finding.storedText};
  ApproximateMatch match;
  if (FindSegmentApproximately(fileText, place, &match) != SearchOutcome::Found) return std::nullopt;
  return FindingPlace{PlaceKind::Near, {place.FromRow, place.ToRow}, match.totalDistance};
}

}  // namespace

std::vector<FindingPlace> PlacesOf(const RuleFinding& finding, std::string_view fileText) {
  std::vector<FindingPlace> places;
  for (std::size_t candidate = 0; candidate < finding.candidates.size(); ++candidate) {
    const bool isChosen = candidate == finding.chosen;
    places.push_back({isChosen ? PlaceKind::Chosen : PlaceKind::Candidate, finding.candidates[candidate], 0});
  }
  std::ranges::stable_sort(places, {}, [](const FindingPlace& place) { return place.rows.FromRow; });
  if (!places.empty()) return places;
  if (finding.verdict == Verdict::NotFound) {
    if (const auto near = NearPlaceOf(finding, fileText)) return {*near};
  }
  return {{PlaceKind::OldRows, finding.rows, 0}};
}

std::size_t FirstPlaceShown(const std::vector<FindingPlace>& places) {
  const auto chosen = std::ranges::find(places, PlaceKind::Chosen, &FindingPlace::kind);
  return chosen == places.end() ? 0 : static_cast<std::size_t>(chosen - places.begin());
}

Comparison CompareWithPlace(const RuleFinding& finding, std::optional<std::string_view> fileText,
                            const RowRange& rows) {
  platform::LineReader stored(finding.storedText);
  const SomeLines left = TakeLines(stored, kMostLinesCompared + 1);
  const SomeLines right = fileText ? LinesAt(*fileText, rows) : SomeLines();
  Comparison comparison{.isCut = left.isCut || right.isCut};
  const std::int32_t firstRow = std::max(rows.FromRow, 1);
  for (const LinePair& pair : AlignLines(left.lines, right.lines)) {
    ComparedLine line{.kind = pair.kind};
    std::string leftText = pair.left ? shell::SafeText(left.lines[*pair.left]) : std::string();
    std::string rightText = pair.right ? shell::SafeText(right.lines[*pair.right]) : std::string();
    if (pair.left) line.leftRow = RowOf(finding.rows.FromRow, *pair.left);
    if (pair.right) line.rightRow = RowOf(firstRow, *pair.right);
    if (pair.kind == LinePairKind::Changed) {
      auto words = CompareWords(leftText, rightText);
      line.left = std::move(words.left);
      line.right = std::move(words.right);
    } else {
      line.left = Whole(std::move(leftText));
      line.right = Whole(std::move(rightText));
    }
    if (pair.kind != LinePairKind::Same) ++comparison.differing;
    comparison.lines.push_back(std::move(line));
  }
  return comparison;
}

}  // namespace qmrules::validation
