#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "platform/linereader.h"
#include "shell/casefold.h"
#include "shell/trim.h"
#include "validation/plainrelocation.h"
#include "validation/recordprinting.h"
#include "validation/segmentrelocation.h"

// The fast relocation against the plain one, on files of few different lines with blanks, repeats and lines that differ
// only in case or in their spaces. QMRULES_PROPERTY_CASES sets how many files are tried.

namespace qmrules::validation {
namespace {

using test::PlainRelocation;

constexpr int kUsualCases = 10'000;

int Cases() {
  const char* text = std::getenv("QMRULES_PROPERTY_CASES");
  return text == nullptr ? kUsualCases : std::atoi(text);
}

class Case {
 public:
  explicit Case(unsigned seed) : random_(seed) {
    collapseSpaces = Below(2) == 1;
    alphabet_ = 1 + Below(5);
    blanks_ = Below(4);
    varies_ = Below(3) == 0;
    const int count = Below(10) == 0 ? Below(120) : Below(24);
    for (int row = 0; row < count; ++row) {
      // Now and then a stretch once more, so that long runs repeat as well.
      if (!lines_.empty() && Below(8) == 0) {
        Repeat();
      } else {
        lines_.push_back(Line());
      }
    }
    for (const auto& line : lines_) text += line + "\n";
    for (int record = 0; record < 4; ++record) records.push_back(Record(record));
  }

  bool collapseSpaces = false;
  std::string text;
  std::vector<RuleRecord> records;

 private:
  int Below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }

  std::string Line() {
    if (Below(10) < blanks_) return std::string(static_cast<std::size_t>(Below(3)), ' ');
    const char letter = static_cast<char>('A' + Below(alphabet_));
    if (!varies_ || Below(3) != 0) return std::string("L ") + letter;
    const std::string indent(static_cast<std::size_t>(Below(3)), ' ');
    const std::string gap(static_cast<std::size_t>(1 + Below(3)), ' ');
    return indent + (Below(2) == 0 ? "L" : "l") + gap + letter + (Below(4) == 0 ? "  " : "");
  }

  void Repeat() {
    const auto from = static_cast<std::size_t>(Below(static_cast<int>(lines_.size())));
    const auto to = std::min(lines_.size(), from + static_cast<std::size_t>(1 + Below(12)));
    const std::vector<std::string> stretch(lines_.begin() + static_cast<std::ptrdiff_t>(from),
                                           lines_.begin() + static_cast<std::ptrdiff_t>(to));
    lines_.insert(lines_.end(), stretch.begin(), stretch.end());
  }

  RuleRecord Record(int number) {
    RuleRecord record{std::to_string(number), 1 + Below(40), 0, "", false};
    const int length = 1 + Below(Below(4) == 0 ? 12 : 4);
    const bool fromFile = !lines_.empty() && Below(4) != 0;
    const auto begin = static_cast<std::size_t>(fromFile ? Below(static_cast<int>(lines_.size())) : 0);
    for (int line = 0; line < length; ++line) {
      const std::size_t at = begin + static_cast<std::size_t>(line);
      if (Below(20) == 0) continue;
      record.SegText += (fromFile && at < lines_.size() && Below(20) != 0 ? lines_[at] : Line()) + "\n";
    }
    // Mostly as many rows as lines, sometimes more or fewer.
    record.ToRow = record.FromRow + length - 1 + (Below(10) == 0 ? Below(3) - 1 : 0);
    return record;
  }

  std::mt19937 random_;
  int alphabet_ = 0;
  int blanks_ = 0;
  bool varies_ = false;
  std::vector<std::string> lines_;
};

PlainRelocation::Node AsPlain(const SuffixTree& tree, std::int32_t number) {
  const SuffixNode& node = tree.Node(number);
  const NodeKind kind = tree.Kind(number);
  PlainRelocation::Node plain{kind == NodeKind::Root       ? "root"
                              : kind == NodeKind::Internal ? "internal"
                                                           : "leaf",
                              node.Suffix,
                              {},
                              node.SuffixLink,
                              node.Parent,
                              node.BackLink,
                              node.EdgeStart,
                              node.EdgeLength,
                              node.Depth};
  for (std::int32_t child = node.firstChild; child != 0; child = tree.Node(child).nextSibling) {
    plain.Children.push_back(child);
  }
  return plain;
}

void ExpectSameTree(const PlainRelocation& plain, const FileIndex& index) {
  ASSERT_EQ(std::vector(index.Lines().LineIds().begin(), index.Lines().LineIds().end()), plain.LineIds());
  for (std::int32_t k = 0; k <= index.Lines().LineCount(); ++k) {
    ASSERT_EQ(index.Lines().LineRow(k), plain.LineRows()[static_cast<std::size_t>(k)]);
  }
  ASSERT_EQ(static_cast<std::size_t>(index.Tree().NodeCount()) + 1, plain.SuffixNodes().size());
  for (std::int32_t node = 1; node <= index.Tree().NodeCount(); ++node) {
    ASSERT_EQ(AsPlain(index.Tree(), node), plain.SuffixNodes()[static_cast<std::size_t>(node)]) << "node " << node;
  }
}

// The form in which two lines are compared; empty for a blank line.
std::string Key(std::string_view line, bool collapseSpaces) {
  std::string key;
  for (const char character : shell::FoldCase(shell::TrimBlanks(line))) {
    if (!collapseSpaces || character != ' ' || !key.ends_with(' ')) key += character;
  }
  return key;
}

struct KeyedLine {
  std::string key;
  std::int32_t row = 0;
};

std::vector<KeyedLine> KeyedLines(std::string_view text, bool collapseSpaces) {
  std::vector<KeyedLine> lines;
  std::int32_t row = 0;
  for (const auto line : platform::SplitLines(text)) {
    ++row;
    if (auto key = Key(line, collapseSpaces); !key.empty()) lines.push_back({std::move(key), row});
  }
  return lines;
}

// Every place of the file tried, from above.
std::vector<RowRange> Scan(const Case& given, const RuleRecord& record) {
  const auto lines = KeyedLines(given.text, given.collapseSpaces);
  const auto segment = KeyedLines(record.SegText, given.collapseSpaces);
  std::vector<RowRange> places;
  for (std::size_t at = 0; !segment.empty() && at + segment.size() <= lines.size(); ++at) {
    std::size_t same = 0;
    while (same < segment.size() && lines[at + same].key == segment[same].key) ++same;
    if (same == segment.size()) places.push_back({lines[at].row, lines[at + same - 1].row});
  }
  return places;
}

void ExpectSameMatches(PlainRelocation& plain, const Case& given, const RuleRecord& record,
                       const RelocationFinding& finding) {
  const auto expected = plain.MatchesOf(record);
  std::vector<MatchRecord> matches;
  std::vector<RowRange> places;
  for (std::size_t place = 0; place < finding.matches.Count(); ++place) {
    matches.push_back(finding.matches.Record(place));
    places.push_back(finding.matches.Rows(place));
  }
  ASSERT_EQ(matches, expected);
  if (finding.outcome == RelocationOutcome::RowsDisagree) return;
  std::ranges::sort(places, {}, &RowRange::FromRow);
  ASSERT_EQ(places, Scan(given, record));
}

TEST(Relocation, IsThatOfThePlainForm) {
  SegmentRelocation withSpaces({.collapseSpaces = false, .processEvents = {}});
  SegmentRelocation withoutSpaces({.collapseSpaces = true, .processEvents = {}});
  const int cases = Cases();
  ASSERT_GT(cases, 0);
  int found = 0, ambiguous = 0, disagreeing = 0;
  for (int seed = 0; seed < cases; ++seed) {
    const Case given(static_cast<unsigned>(seed));
    PlainRelocation plain(given.text, given.collapseSpaces);
    auto expected = given.records;
    auto records = given.records;
    auto& relocation = given.collapseSpaces ? withoutSpaces : withSpaces;
    const std::int32_t moved = relocation.RelocateSegments(
        given.text, records, [&](std::size_t, const RuleRecord& record, const RelocationFinding& finding) {
          ExpectSameMatches(plain, given, record, finding);
          found += finding.outcome == RelocationOutcome::Relocated ? 1 : 0;
          ambiguous += finding.matches.Count() > 1 ? 1 : 0;
          disagreeing += finding.outcome == RelocationOutcome::RowsDisagree ? 1 : 0;
        });
    EXPECT_EQ(moved, plain.RelocateSegments(expected));
    EXPECT_EQ(records, expected);
    ExpectSameTree(plain, relocation.Index());
    if (testing::Test::HasFailure()) FAIL() << "seed " << seed << "\n" << given.text;
  }
  // The cases are worth something only when all of these occur often.
  EXPECT_GT(found, cases);
  EXPECT_GT(ambiguous, cases / 2);
  EXPECT_GT(disagreeing, cases / 100);
}

}  // namespace
}  // namespace qmrules::validation
