#include "validation/filelines.h"

#include <gtest/gtest.h>

#include <string>

#include "validation/preparedline.h"

namespace qmrules::validation {
namespace {

constexpr std::int32_t kMany = 1'000'000;

std::vector<std::int32_t> Ids(const FileLines& lines) {
  return {lines.LineIds().begin(), lines.LineIds().end()};
}

std::vector<std::int32_t> IdsOf(std::string_view text, bool collapseSpaces = false) {
  FileLines lines;
  EXPECT_TRUE(lines.LoadLineIds(text, collapseSpaces, kMany));
  return Ids(lines);
}

using Numbers = std::vector<std::int32_t>;

TEST(FileLines, AreNumberedInTheOrderOfFirstAppearance) {
  EXPECT_EQ(IdsOf("B\nA\nB\nC\n"), (Numbers{-1, 1, 2, 1, 3, -2}));
}

TEST(FileLines, AreEqualWithoutRegardToCaseAndToBlanksAtTheirEnds) {
  EXPECT_EQ(IdsOf("Move Ä\n  MOVE ä  \n\tMOVE ä\n"), (Numbers{-1, 1, 1, 2, -2}));
}

TEST(FileLines, DifferInTheirSpacesUnlessTheseAreCollapsed) {
  EXPECT_EQ(IdsOf("A B\nA  B\nA   B\nAB\n"), (Numbers{-1, 1, 2, 3, 4, -2}));
  EXPECT_EQ(IdsOf("A B\nA  B\nA   B\nAB\n", true), (Numbers{-1, 1, 1, 1, 2, -2}));
}

TEST(FileLines, ThatAreBlankAreLeftOutButCountAsRows) {
  FileLines lines;
  ASSERT_TRUE(lines.LoadLineIds("\nA\n   \n\nB", false, kMany));
  EXPECT_EQ(Ids(lines), (Numbers{-1, 1, 2, -2}));
  EXPECT_EQ(lines.LineRow(0), 0);
  EXPECT_EQ(lines.LineRow(1), 2);
  EXPECT_EQ(lines.LineRow(2), 5);
  EXPECT_EQ(lines.LineRow(3), 0);
  EXPECT_EQ(lines.LineCount(), 3);
}

TEST(FileLines, OfAnEmptyFileAreTheEndsAlone) {
  EXPECT_EQ(IdsOf(""), (Numbers{-1, -2}));
  EXPECT_EQ(IdsOf("\n \n"), (Numbers{-1, -2}));
}

TEST(FileLines, AreLookedUpAsTheyAreNumbered) {
  FileLines lines;
  lines.LoadLineIds("A B\nC\n", true, kMany);
  EXPECT_EQ(lines.IdOf("a   b"), 1);
  EXPECT_EQ(lines.IdOf("c"), 2);
  EXPECT_EQ(lines.IdOf("D"), 0);
  EXPECT_EQ(lines.IdOf(""), 0);
  EXPECT_EQ(lines.IdOf("D"), 0) << "looking up enters nothing";
}

TEST(FileLines, ThatOneEndsAnotherAreToldApart) {
  EXPECT_EQ(IdsOf("AB\nB\nA\nABB\n"), (Numbers{-1, 1, 2, 3, 4, -2}));
}

TEST(FileLines, OfManyTextsKeepTheirNumbersWhileTheDictionaryGrows) {
  std::string text;
  Numbers expected{-1};
  for (std::int32_t row = 0; row < 20'000; ++row) {
    text += "LINE " + std::to_string(row % 7001) + "\n";
    expected.push_back(row % 7001 + 1);
  }
  expected.push_back(-2);
  EXPECT_EQ(IdsOf(text), expected);
}

TEST(FileLines, OfTheNextFileStartAnew) {
  FileLines lines;
  lines.LoadLineIds("A\nB\nC\n", false, kMany);
  lines.LoadLineIds("C\n", false, kMany);
  EXPECT_EQ(Ids(lines), (Numbers{-1, 1, -2}));
  EXPECT_EQ(lines.IdOf("A"), 0);
  EXPECT_EQ(lines.DistinctLines(), 1);
}

TEST(FileLines, OfMoreThanTheMostAreRefusedAndNoneIsHeld) {
  FileLines lines;
  EXPECT_TRUE(lines.LoadLineIds("A\nB\n\nC\n", false, 3));
  EXPECT_FALSE(lines.LoadLineIds("A\nB\n\nC\n", false, 2));
  EXPECT_EQ(Ids(lines), (Numbers{-1, -2}));
  EXPECT_EQ(lines.IdOf("A"), 0);
}

TEST(FileLines, OfManyMegabytesAreTaken) {
  const std::string longLine(20'000'000, 'x');
  EXPECT_EQ(IdsOf(longLine + "\nA\n" + longLine + "\n"), (Numbers{-1, 1, 2, 1, -2}));
}

TEST(PreparedLine, IsSafeAndTrimmed) {
  std::string buffer;
  EXPECT_EQ(PrepareLine("  A \t ", buffer), "A \t");
  EXPECT_EQ(PrepareLine("  A\x01 ", buffer), "A&#64999;");
  EXPECT_EQ(PrepareLine(std::string_view("\0 \0A", 4), buffer), "A");
  EXPECT_EQ(PrepareLine("A\r", buffer), "A\r");
  EXPECT_EQ(PrepareLine("   ", buffer), "");
}

TEST(CollapsedRuns, AreOneSpaceEach) {
  const auto collapsed = [](std::string text, bool collapseSpaces) {
    CollapseRuns(text, collapseSpaces);
    return text;
  };
  EXPECT_EQ(collapsed("A  B   C D", true), "A B C D");
  EXPECT_EQ(collapsed("    ", true), " ");
  EXPECT_EQ(collapsed("A\t\tB", true), "A\t\tB");
  EXPECT_EQ(collapsed("A  B", false), "A  B");
}

}  // namespace
}  // namespace qmrules::validation
