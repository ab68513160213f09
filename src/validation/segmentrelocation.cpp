#include "validation/segmentrelocation.h"

#include <cstdlib>
#include <utility>

namespace qmrules::validation {

RowRange Matches::Rows(std::size_t place) const {
  const std::int32_t start = starts_[place];
  return {lines_->LineRow(start), lines_->LineRow(start + static_cast<std::int32_t>(segment_->Count()) - 1)};
}

MatchRecord Matches::Record(std::size_t place) const {
  const auto [fromRow, toRow] = Rows(place);
  MatchRecord record{"", fromRow, toRow, ""};
  std::int32_t lastRow = fromRow - 1;
  for (std::int32_t j = 0; j < segment_->Count(); ++j) {
    const std::int32_t row = lines_->LineRow(starts_[place] + j);
    record.SegText.append(static_cast<std::size_t>(row - lastRow - 1), '\n');
    record.SegText += segment_->Line(j + 1);
    record.SegText += '\n';
    lastRow = row;
  }
  return record;
}

std::size_t Matches::Nearest(std::int32_t row) const {
  const auto distance = [&](std::size_t place) {
    return std::abs(std::int64_t{lines_->LineRow(starts_[place])} - row);
  };
  std::size_t best = 0;
  std::int64_t nearest = distance(0);
  for (std::size_t place = 1; place < starts_.size(); ++place) {
    const std::int64_t next = distance(place);
    if (nearest <= next) continue;
    nearest = next;
    best = place;
  }
  return best;
}

SegmentRelocation::SegmentRelocation(FileIndexOptions options) : index_(std::move(options)) {}

std::int32_t SegmentRelocation::RelocateSegments(std::string_view fileText, std::span<RuleRecord> records,
                                                 const RelocationWatcher& watcher) {
  const bool isLoaded = index_.Load(fileText);
  std::int32_t relocated = 0;
  for (std::size_t index = 0; index < records.size(); ++index) {
    RuleRecord& record = records[index];
    std::int64_t count = std::int64_t{record.ToRow} - record.FromRow + 1;
    std::int32_t firstRow = record.FromRow;
    const auto segment = SplitSegmentLines(record.SegText, ComparisonMethod::IgnoreBlankLines, count, firstRow);
    RelocationFinding finding;
    if (!segment) {
      finding.outcome = RelocationOutcome::RowsDisagree;
    } else if (!isLoaded) {
      finding.outcome = RelocationOutcome::TooManyLines;
    } else {
      finding = Find(*segment, record.FromRow);
    }
    if (watcher) watcher(index, record, finding);
    if (finding.outcome != RelocationOutcome::Relocated) continue;
    MatchRecord match = finding.matches.Record(finding.chosen);
    record.FromRow = match.FromRow;
    record.ToRow = match.ToRow;
    record.SegText = std::move(match.SegText);
    record.Valid = true;
    ++relocated;
  }
  return relocated;
}

RelocationFinding SegmentRelocation::Find(const SegmentLines& segment, std::int32_t fromRow) {
  RelocationFinding finding;
  index_.SegmentIds(segment, segmentIds_);
  const std::int32_t node = index_.Tree().FindSegment(segmentIds_);
  if (node == 0) return finding;
  starts_.clear();
  index_.Tree().CollectLeaves(node, starts_);
  finding.outcome = RelocationOutcome::Relocated;
  finding.matches = Matches(index_.Lines(), segment, starts_);
  finding.chosen = finding.matches.Nearest(fromRow);
  return finding;
}

}  // namespace qmrules::validation
