#include "validation/linedistance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace qmrules::validation {
namespace {

TEST(LineDistance, OfEqualLinesIsNone) {
  EXPECT_EQ(LineEditDistance("MOVE A TO B", "MOVE A TO B"), 0);
  EXPECT_EQ(LineEditDistance("", ""), 0);
}

TEST(LineDistance, ToAnEmptyLineIsTheLength) {
  EXPECT_EQ(LineEditDistance("MOVE", ""), 4);
  EXPECT_EQ(LineEditDistance("", "MOVE"), 4);
}

TEST(LineDistance, CountsInsertionDeletionAndSubstitution) {
  EXPECT_EQ(LineEditDistance("MOVE A", "MOVE AB"), 1);
  EXPECT_EQ(LineEditDistance("MOVE A", "MOE A"), 1);
  EXPECT_EQ(LineEditDistance("MOVE A", "MOVE B"), 1);
  EXPECT_EQ(LineEditDistance("kitten", "sitting"), 3);
  EXPECT_EQ(LineEditDistance("AB", "BA"), 2);
}

TEST(LineDistance, CaseCounts) {
  EXPECT_EQ(LineEditDistance("move", "MOVE"), 4);
}

TEST(LineDistance, IsOfCharactersAndNotOfBytes) {
  EXPECT_EQ(LineEditDistance("Gebühr", "Gebuhr"), 1);
  EXPECT_EQ(LineEditDistance("あいう", "あいえ"), 1);
}

TEST(LineDistance, CountsACharacterOutsideTheBasicPlaneAsTwo) {
  EXPECT_EQ(LineEditDistance("", "\U0001F600"), 2);
  EXPECT_EQ(LineEditDistance("\U0001F600", "\U0001F601"), 1);  // the first halves are the same
}

TEST(LineDistance, TakesAMalformedByteForACharacterOfItsOwn) {
  EXPECT_EQ(LineEditDistance("A\xff", "Aÿ"), 1);
  EXPECT_EQ(LineEditDistance("A\xff", "A\xff"), 0);
}

TEST(LineDistance, WithALimitIsCutOffAboveIt) {
  EXPECT_EQ(LineEditDistanceUpTo("ABCDEF", "ABCXYZ", 3), 3);
  EXPECT_EQ(LineEditDistanceUpTo("ABCDEF", "ABWXYZ", 3), 4);
  EXPECT_EQ(LineEditDistanceUpTo("ABCDEF", "A", 3), 4);
  EXPECT_EQ(LineEditDistanceUpTo("A", "B", 0), 1);
  EXPECT_EQ(LineEditDistanceUpTo("A", "A", 0), 0);
}

// The whole table, as it is drawn on paper.
std::int32_t PlainDistance(const std::string& a, const std::string& b) {
  std::vector<std::vector<std::int32_t>> table(a.size() + 1, std::vector<std::int32_t>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) table[i][0] = static_cast<std::int32_t>(i);
  for (std::size_t j = 0; j <= b.size(); ++j) table[0][j] = static_cast<std::int32_t>(j);
  for (std::size_t i = 1; i <= a.size(); ++i) {
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::int32_t cost = a[i - 1] == b[j - 1] ? 0 : 1;
      table[i][j] = std::min({table[i][j - 1] + 1, table[i - 1][j] + 1, table[i - 1][j - 1] + cost});
    }
  }
  return table[a.size()][b.size()];
}

TEST(LineDistance, IsThatOfTheWholeTable) {
  std::mt19937 random(1);
  const auto below = [&random](int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random); };
  for (int round = 0; round < 20'000; ++round) {
    std::string a, b;
    const int letters = 1 + below(4);
    for (int length = below(14); length > 0; --length) a += static_cast<char>('A' + below(letters));
    if (below(2) == 0) b = a;
    for (int edits = below(6); edits > 0; --edits) {
      const auto at = static_cast<std::size_t>(below(static_cast<int>(b.size()) + 1));
      if (below(2) == 0) {
        b.insert(at, 1, static_cast<char>('A' + below(letters)));
      } else if (at < b.size()) {
        b.erase(at, 1);
      }
    }
    const std::int32_t expected = PlainDistance(a, b);
    ASSERT_EQ(LineEditDistance(a, b), expected) << a << " " << b;
    for (std::int32_t limit = 0; limit < 6; ++limit) {
      ASSERT_EQ(LineEditDistanceUpTo(a, b, limit), std::min(expected, limit + 1)) << a << " " << b << " " << limit;
    }
  }
}

TEST(LineDistance, OfLinesOfMegabytesIsCutOffAtOnceOrNearTheDiagonal) {
  const std::string line(4'000'000, 'A');
  EXPECT_EQ(LineEditDistanceUpTo(line, "A", 3), 4);
  EXPECT_EQ(LineEditDistanceUpTo("B" + line + "B", "C" + line + "D", 3), 2);
}

}  // namespace
}  // namespace qmrules::validation
