#include "validation/segmentcomparison.h"

#include <algorithm>
#include <cstddef>
#include <limits>

#include "catalogue/ignorederrors.h"
#include "platform/linereader.h"
#include "validation/linedistance.h"
#include "validation/preparedline.h"

namespace qmrules::validation {

namespace {

constexpr std::int32_t kFarthest = 999999999;
constexpr std::int32_t kStartingScore = 100;

std::int64_t RowCount(const SegmentPlace& place) {
  return std::int64_t{place.ToRow} - place.FromRow + 1;
}

std::int32_t ToRowNumber(std::int64_t row) {
  constexpr std::int64_t least = std::numeric_limits<std::int32_t>::min();
  constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(std::clamp(row, least, most));
}

// False for a segment of more lines than the file has, which stored rows can ask for without a text of that length.
bool CanHold(std::string_view fileText, const SegmentLines& segment) {
  constexpr std::int64_t alwaysTried = 100'000;
  return segment.Count() <= alwaysTried || segment.Count() <= std::ranges::count(fileText, '\n') + 1;
}

// How many lines of the segment, from its first, the lines read last agree with.
class PrefixSearch {
 public:
  PrefixSearch(const SegmentLines& segment, ComparisonMethod method, std::int32_t maxDistance)
      : segment_(segment), table_(BuildLinePrefixTable(segment, method, maxDistance)) {}

  std::int32_t Matched() const { return matched_; }
  bool IsComplete() const { return matched_ == segment_.Count(); }
  std::string_view NextLine() const { return segment_.Line(matched_ + 1); }
  void Advance() { ++matched_; }
  void FallBack() { matched_ = table_[static_cast<std::size_t>(matched_ - 1)]; }
  void Restart() { matched_ = 0; }

  // Takes the line in when it is equal to the next of what is left after falling back as often as need be.
  bool TakeEqual(std::string_view line) {
    while (matched_ >= 1 && line != NextLine()) FallBack();
    if (line != NextLine()) return false;
    Advance();
    return true;
  }

 private:
  const SegmentLines& segment_;
  std::vector<std::int32_t> table_;
  std::int32_t matched_ = 0;
};

// Lines gathered for the new text. Kept as they are when a search falls back to a shorter beginning.
class GatheredText {
 public:
  void AddLine(std::string_view line, std::int32_t matched, std::int32_t row) {
    if (matched == 1) {
      start_ = row;
      text_.clear();
    }
    text_ += line;
    text_ += '\n';
  }
  void AddBlankLine() {
    if (!text_.empty()) text_ += '\n';
  }
  std::int32_t Start() const { return start_; }
  const std::string& Text() const { return text_; }

 private:
  std::int32_t start_ = 0;
  std::string text_;
};

// The last lines of a file that were not blank, as many as the segment has.
class LastLines {
 public:
  explicit LastLines(const SegmentLines& segment) : segment_(segment) {}

  void Add(std::string_view line) {
    const auto most = static_cast<std::size_t>(segment_.Count());
    if (lines_.size() < most) {
      lines_.emplace_back(line);
    } else {
      lines_[next_] = line;
    }
    next_ = (next_ + 1) % most;
  }

  // Their distances to the lines of the segment, each counted up to kStartingScore.
  std::int64_t Distance() const {
    std::int64_t sum = 0;
    for (std::size_t j = 0; j < lines_.size(); ++j) {
      sum += LineEditDistanceUpTo(lines_[(next_ + j) % lines_.size()], segment_.Line(static_cast<std::int64_t>(j) + 1),
                                  kStartingScore - 1);
    }
    return sum;
  }

 private:
  const SegmentLines& segment_;
  std::vector<std::string> lines_;
  std::size_t next_ = 0;
};

// The segment's lines without the blank ones; nothing when its rows disagree with its text.
std::optional<SegmentLines> SplitWithoutBlanks(const SegmentPlace& place, ComparisonMethod method) {
  std::int64_t count = RowCount(place);
  std::int32_t firstRow = place.FromRow;
  return SplitSegmentLines(place.SegText, method, count, firstRow);
}

}  // namespace

std::optional<std::string> ReadSourceText(const platform::FileSystem& fileSystem, std::string_view folder,
                                          std::string_view fileName) {
  std::optional<std::string> text;
  catalogue::WithErrorsIgnored([&] { text = fileSystem.ReadTextFile(fileSystem.ResolveInside(folder, fileName)); });
  return text;
}

std::vector<std::int32_t> BuildLinePrefixTable(const SegmentLines& lines, ComparisonMethod method,
                                               std::int32_t maxDistance) {
  const auto areSame = [&](std::int32_t a, std::int32_t b) {
    if (method != ComparisonMethod::ApproximateLineComparing) return lines.Line(a) == lines.Line(b);
    return LineEditDistanceUpTo(lines.Line(a), lines.Line(b), maxDistance) <= maxDistance;
  };
  std::vector<std::int32_t> table(static_cast<std::size_t>(lines.Count()));
  std::int32_t k = 0;
  for (std::int32_t i = 2; i <= lines.Count();) {
    const bool same = areSame(i, k + 1);
    if (same || k < 1) {
      if (same) ++k;
      table[static_cast<std::size_t>(i - 1)] = k;
      ++i;
    } else {
      k = table[static_cast<std::size_t>(k - 1)];
    }
  }
  return table;
}

SearchOutcome FindSegmentSimple(std::string_view fileText, SegmentPlace& place) {
  std::int64_t count = RowCount(place);
  std::int32_t firstRow = place.FromRow;
  const auto segment = SplitSegmentLines(place.SegText, ComparisonMethod::Simple, count, firstRow);
  if (!segment) return SearchOutcome::RowsDisagree;

  std::int64_t best = 0;
  std::int64_t nearest = kFarthest;
  if (CanHold(fileText, *segment)) {
    PrefixSearch search(*segment, ComparisonMethod::Simple, 0);
    std::string safe;
    platform::LineReader reader(fileText);
    while (const auto line = reader.Next()) {
      search.TakeEqual(PrepareLine(*line, safe));
      const std::int64_t start = static_cast<std::int64_t>(reader.Row()) - count + 1;
      if (search.IsComplete()) {
        if (const std::int64_t distance = std::abs(start - place.FromRow); distance < nearest) {
          nearest = distance;
          best = start;
        }
        search.Restart();
      }
      // Every later occurrence can only be farther away.
      if (best != 0 && std::abs(start + 1 - place.FromRow) > nearest) break;
    }
  }
  place.FromRow = ToRowNumber(best);
  place.ToRow = ToRowNumber(best + count - 1);
  return best != 0 ? SearchOutcome::Found : SearchOutcome::NotFound;
}

SearchOutcome FindSegmentIgnoringBlanks(std::string_view fileText, SegmentPlace& place) {
  const auto segment = SplitWithoutBlanks(place, ComparisonMethod::IgnoreBlankLines);
  if (!segment) return SearchOutcome::RowsDisagree;

  std::int32_t found = 0;
  std::int32_t end = 0;
  GatheredText text;
  if (CanHold(fileText, *segment)) {
    PrefixSearch search(*segment, ComparisonMethod::IgnoreBlankLines, 0);
    std::string safe;
    platform::LineReader reader(fileText);
    while (const auto raw = reader.Next()) {
      const std::string_view line = PrepareLine(*raw, safe);
      const auto row = static_cast<std::int32_t>(reader.Row());
      if (line.empty()) {
        text.AddBlankLine();
      } else if (search.TakeEqual(line)) {
        text.AddLine(line, search.Matched(), row);
        if (search.IsComplete()) {
          found = text.Start();
          end = row;
          break;
        }
      }
    }
  }
  // The views of the segment into the old text are no longer needed.
  if (found != 0) place.SegText = text.Text();
  place.FromRow = found;
  place.ToRow = end;
  return found != 0 ? SearchOutcome::Found : SearchOutcome::NotFound;
}

namespace {

// One search of FindSegmentApproximately.
class ApproximateSearch {
 public:
  explicit ApproximateSearch(const SegmentLines& segment)
      : search_(segment, ComparisonMethod::ApproximateLineComparing, kMaxLineDistance), lastLines_(segment) {}

  // Looks at all lines of the file. The accepted place, or nothing.
  std::optional<SegmentPlace> Run(std::string_view fileText) {
    std::string safe;
    platform::LineReader reader(fileText);
    while (const auto raw = reader.Next()) {
      const std::string_view line = PrepareLine(*raw, safe);
      if (line.empty()) {
        text_.AddBlankLine();
      } else {
        Take(line, static_cast<std::int32_t>(reader.Row()));
      }
    }
    return std::move(accepted_);
  }

  const ApproximateMatch& Match() const { return match_; }

 private:
  void Take(std::string_view line, std::int32_t row) {
    lastLines_.Add(line);
    std::int32_t distance = DistanceToNext(line);
    while (distance > kMaxLineDistance && search_.Matched() >= 1) {
      search_.FallBack();
      distance = DistanceToNext(line);
    }
    if (distance > kMaxLineDistance) return;
    search_.Advance();
    text_.AddLine(line, search_.Matched(), row);
    // Never set back, neither behind an occurrence nor behind an attempt that was given up.
    lowest_ = std::min(lowest_, distance);
    if (!search_.IsComplete()) return;
    if (lowest_ < bestScore_) {
      bestScore_ = lowest_;
      accepted_ = SegmentPlace{text_.Start(), row, text_.Text()};
      match_ = {lowest_, lastLines_.Distance()};
    }
    search_.Restart();
  }

  std::int32_t DistanceToNext(std::string_view line) const {
    return LineEditDistanceUpTo(line, search_.NextLine(), kMaxLineDistance);
  }

  PrefixSearch search_;
  LastLines lastLines_;
  GatheredText text_;
  std::int32_t bestScore_ = kStartingScore;
  std::int32_t lowest_ = kStartingScore;
  std::optional<SegmentPlace> accepted_;
  ApproximateMatch match_;
};

}  // namespace

SearchOutcome FindSegmentApproximately(std::string_view fileText, SegmentPlace& place, ApproximateMatch* match) {
  const auto segment = SplitWithoutBlanks(place, ComparisonMethod::ApproximateLineComparing);
  if (!segment) return SearchOutcome::RowsDisagree;
  if (!CanHold(fileText, *segment)) return SearchOutcome::NotFound;
  ApproximateSearch search(*segment);
  auto accepted = search.Run(fileText);
  if (!accepted) return SearchOutcome::NotFound;
  if (match != nullptr) *match = search.Match();
  place = std::move(*accepted);
  return SearchOutcome::Found;
}

SearchOutcome FindSegmentBy(ComparisonMethod method, std::string_view fileText, SegmentPlace& place) {
  switch (method) {
    case ComparisonMethod::Simple:
      return FindSegmentSimple(fileText, place);
    case ComparisonMethod::IgnoreBlankLines:
      return FindSegmentIgnoringBlanks(fileText, place);
    case ComparisonMethod::ApproximateLineComparing:
      return FindSegmentApproximately(fileText, place);
    case ComparisonMethod::MultipleMatching:
      return SearchOutcome::NotFound;
  }
  return SearchOutcome::NotFound;
}

}  // namespace qmrules::validation
