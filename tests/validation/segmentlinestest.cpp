#include "validation/segmentlines.h"

#include <gtest/gtest.h>

#include <limits>

namespace qmrules::validation {
namespace {

struct Split {
  std::vector<std::string> lines;  // 1 to count
  std::int64_t count = 0;
  std::int32_t firstRow = 0;
  friend bool operator==(const Split&, const Split&) = default;
};

std::optional<Split> SplitAt10(std::string_view text, ComparisonMethod method, std::int64_t rows) {
  Split split{{}, rows, 10};
  const auto lines = SplitSegmentLines(text, method, split.count, split.firstRow);
  if (!lines) return std::nullopt;
  EXPECT_EQ(lines->Count(), split.count);
  for (std::int64_t j = 1; j <= lines->Count(); ++j) split.lines.emplace_back(lines->Line(j));
  return split;
}

void PrintTo(const Split& split, std::ostream* out) {
  *out << testing::PrintToString(split.lines) << " count " << split.count << " first row " << split.firstRow;
}

using enum ComparisonMethod;

TEST(SegmentLines, AreTrimmedOfBlanksAndOfNothingElse) {
  EXPECT_EQ(SplitAt10("  A B  \n\tC\n", Simple, 2), (Split{{"A B", "\tC"}, 2, 10}));
}

TEST(SegmentLines, LastLineNeedsNoLineFeed) {
  EXPECT_EQ(SplitAt10("A\nB", Simple, 2), (Split{{"A", "B"}, 2, 10}));
}

TEST(SegmentLines, SimpleKeepsBlankLinesAndFillsUpWithThem) {
  EXPECT_EQ(SplitAt10("\nA\n\nB\n", Simple, 6), (Split{{"", "A", "", "B", "", ""}, 6, 10}));
}

TEST(SegmentLines, BlankLinesAreLeftOutAndTheCountFalls) {
  for (const auto method : {IgnoreBlankLines, ApproximateLineComparing}) {
    EXPECT_EQ(SplitAt10("A\n   \n\nB\n\n", method, 5), (Split{{"A", "B"}, 2, 10}));
  }
}

TEST(SegmentLines, BlankLinesBeforeTheFirstMoveTheFirstRow) {
  EXPECT_EQ(SplitAt10("\n  \nA\n\nB\n", IgnoreBlankLines, 5), (Split{{"A", "B"}, 2, 12}));
}

TEST(SegmentLines, OfBlankLinesAloneAreAsManyAsThereAreRows) {
  for (const auto method : {IgnoreBlankLines, ApproximateLineComparing}) {
    EXPECT_EQ(SplitAt10("\n\n\n", method, 3), (Split{{"", "", ""}, 3, 13}));
  }
}

TEST(SegmentLines, BlanksAtTheEndOfTheTextAreNoLine) {
  EXPECT_EQ(SplitAt10("A\n   ", Simple, 1), (Split{{"A"}, 1, 10}));
}

TEST(SegmentLines, OtherMethodsPutEachLineInThePlaceOfTheOneBefore) {
  EXPECT_EQ(SplitAt10("A\nB\nC\n", MultipleMatching, 2), (Split{{"C", ""}, 2, 10}));
  EXPECT_EQ(SplitAt10("A\nB\n\n", MultipleMatching, 2), (Split{{"", ""}, 2, 10}));
}

TEST(SegmentLines, MoreOfThemThanRowsAreRefused) {
  for (const auto method : {Simple, IgnoreBlankLines, ApproximateLineComparing}) {
    EXPECT_EQ(SplitAt10("A\nB\nC\n", method, 2), std::nullopt);
    EXPECT_EQ(SplitAt10("A\nB\n\n", method, 2), std::nullopt) << "a blank line needs a place as well";
  }
}

TEST(SegmentLines, BlankLinesBetweenNeedNoRowsOfTheirOwn) {
  EXPECT_EQ(SplitAt10("A\n\n\nB\n", IgnoreBlankLines, 2), (Split{{"A", "B"}, 2, 10}));
}

TEST(SegmentLines, OfNoRowsAreRefused) {
  EXPECT_EQ(SplitAt10("A\n", Simple, 0), std::nullopt);
  EXPECT_EQ(SplitAt10("", IgnoreBlankLines, -3), std::nullopt);
}

TEST(SegmentLines, OfBillionsOfRowsTakeNoMemory) {
  std::int64_t count = std::numeric_limits<std::int64_t>::max();
  std::int32_t firstRow = 1;
  const auto lines = SplitSegmentLines("A\n", Simple, count, firstRow);
  ASSERT_TRUE(lines);
  EXPECT_EQ(lines->Line(1), "A");
  EXPECT_EQ(lines->Line(4'000'000'000), "");
}

}  // namespace
}  // namespace qmrules::validation
