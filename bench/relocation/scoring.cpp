#include "relocation/scoring.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "shell/casefold.h"
#include "shell/text.h"
#include "shell/trim.h"

namespace qmrules::bench {

namespace {

// The form in which lines are compared, made by other means than those that are judged.
std::string KeyOf(std::string_view line, bool collapseSpaces) {
  std::string key;
  const std::string folded = shell::FoldCase(shell::SafeText(line));
  for (const char character : shell::TrimBlanks(folded)) {
    if (!collapseSpaces || character != ' ' || !key.ends_with(' ')) key += character;
  }
  return key;
}

}  // namespace

Score& Score::operator+=(const Score& other) {
  segments += other.segments;
  present += other.present;
  moved += other.moved;
  correct += other.correct;
  absentMoved += other.absentMoved;
  seconds += other.seconds;
  return *this;
}

Judge::Judge(const Version& first, const Version& second, bool collapseSpaces)
    : first_(LinesOf(first, collapseSpaces)), second_(LinesOf(second, collapseSpaces)) {}

std::vector<Judge::Line> Judge::LinesOf(const Version& version, bool collapseSpaces) {
  std::vector<Line> lines;
  for (std::int32_t row = 1; const auto& line : version) {
    if (!IsBlankLine(line.text)) lines.push_back({KeyOf(line.text, collapseSpaces), line.origin, row});
    ++row;
  }
  return lines;
}

std::vector<Judge::Line> Judge::LinesOf(const CutSegment& segment) const {
  std::vector<Line> lines;
  std::ranges::copy_if(first_, std::back_inserter(lines),
                       [&](const Line& line) { return line.row >= segment.fromRow && line.row <= segment.toRow; });
  return lines;
}

void Judge::Count(const CutSegment& segment, const Place& given, Score& score) const {
  const auto lines = LinesOf(segment);
  const Place truth = TruePlace(lines);
  ++score.segments;
  score.present += truth ? 1 : 0;
  if (!given) return;
  ++score.moved;
  score.correct += truth == given ? 1 : 0;
  score.absentMoved += IsAnywhere(lines) ? 0 : 1;
}

Place Judge::TruePlace(const std::vector<Line>& segment) const {
  const auto begin = std::ranges::find(second_, segment.front().origin, &Line::origin);
  if (second_.end() - begin < std::ssize(segment)) return std::nullopt;
  const bool isWhole = std::equal(segment.begin(), segment.end(), begin, [](const Line& old, const Line& now) {
    return old.origin == now.origin && old.key == now.key;
  });
  if (!isWhole) return std::nullopt;
  return validation::RowRange{begin->row, (begin + (std::ssize(segment) - 1))->row};
}

bool Judge::IsAnywhere(const std::vector<Line>& segment) const {
  const auto areSame = [](const Line& left, const Line& right) { return left.key == right.key; };
  return std::search(second_.begin(), second_.end(), segment.begin(), segment.end(), areSame) != second_.end();
}

Place PlaceByBlame(const std::vector<std::int32_t>& blame, const Version& first, const Version& second,
                   const CutSegment& segment) {
  struct Attributed {
    std::int32_t row = 0;
    std::int32_t origin = 0;
  };
  std::vector<Attributed> lines;
  for (std::size_t at = 0; at < second.size() && at < blame.size(); ++at) {
    if (!IsBlankLine(second[at].text)) lines.push_back({static_cast<std::int32_t>(at) + 1, blame[at]});
  }
  std::vector<std::int32_t> wanted;
  for (std::int32_t row = segment.fromRow; row <= segment.toRow; ++row) {
    if (!IsBlankLine(first[static_cast<std::size_t>(row - 1)].text)) wanted.push_back(row);
  }
  Place nearest;
  const auto isOf = [](const Attributed& line, std::int32_t row) { return line.origin == row; };
  for (auto from = lines.begin();;) {
    const auto found = std::search(from, lines.end(), wanted.begin(), wanted.end(), isOf);
    if (found == lines.end()) return nearest;
    const validation::RowRange rows{found->row, (found + (std::ssize(wanted) - 1))->row};
    if (!nearest || std::abs(rows.FromRow - segment.fromRow) < std::abs(nearest->FromRow - segment.fromRow)) {
      nearest = rows;
    }
    from = found + 1;
  }
}

}  // namespace qmrules::bench
