#include "validation/findingplaces.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace qmrules::validation {
namespace {

using testing::ElementsAre;

RuleFinding Finding(Verdict verdict, RowRange rows, std::string storedText) {
  RuleFinding finding;
  finding.verdict = verdict;
  finding.rows = rows;
  finding.storedText = std::move(storedText);
  return finding;
}

// Each line as "row|row" with its sign before it.
std::vector<std::string> Rows(const Comparison& comparison) {
  std::vector<std::string> rows;
  for (const ComparedLine& line : comparison.lines) {
    rows.push_back("=~<>"[static_cast<int>(line.kind)] + std::to_string(line.leftRow) + "|" +
                   std::to_string(line.rightRow));
  }
  return rows;
}

std::string Text(const std::vector<LinePiece>& pieces) {
  std::string text;
  for (const LinePiece& piece : pieces) text += piece.text;
  return text;
}

TEST(FindingPlaces, OfAnAmbiguousTextAreAllCandidatesByRow) {
  auto finding = Finding(Verdict::Ambiguous, {5, 5}, "a\n");
  finding.candidates = {{9, 9}, {4, 4}, {1, 1}};
  finding.chosen = 1;
  const auto places = PlacesOf(finding, "");
  EXPECT_THAT(places,
              ElementsAre(FindingPlace{PlaceKind::Candidate, {1, 1}, 0}, FindingPlace{PlaceKind::Chosen, {4, 4}, 0},
                          FindingPlace{PlaceKind::Candidate, {9, 9}, 0}));
  EXPECT_EQ(FirstPlaceShown(places), 1U);
}

TEST(FindingPlaces, OfATextThatIsNowhereIsTheNearestWithItsDistance) {
  const auto finding = Finding(Verdict::NotFound, {1, 2}, "move 12 to rate\ncompute x\n");
  EXPECT_THAT(PlacesOf(finding, "zero\nmove 10 to rate\ncompute x\n"),
              ElementsAre(FindingPlace{PlaceKind::Near, {2, 3}, 1}));
}

TEST(FindingPlaces, TakeAHintThatIsThereAlready) {
  auto finding = Finding(Verdict::NotFound, {1, 1}, "gone\n");
  finding.near = NearPlace{{7, 8}, 3};
  EXPECT_THAT(PlacesOf(finding, "gone\n"), ElementsAre(FindingPlace{PlaceKind::Near, {7, 8}, 3}));
}

TEST(FindingPlaces, AreTheOldRowsWhereThereIsNothingElse) {
  const FindingPlace oldRows{PlaceKind::OldRows, {2, 3}, 0};
  EXPECT_THAT(PlacesOf(Finding(Verdict::NotFound, {2, 3}, "something else altogether\n"), "one\ntwo\n"),
              ElementsAre(oldRows));
  EXPECT_THAT(PlacesOf(Finding(Verdict::Unchanged, {2, 3}, "two\nthree\n"), "one\ntwo\nthree\n"), ElementsAre(oldRows));
  EXPECT_THAT(PlacesOf(Finding(Verdict::RowsDisagree, {2, 3}, "a\nb\nc\n"), ""), ElementsAre(oldRows));
}

TEST(Comparison, HasTheStoredRowsOnTheLeftAndThoseOfThePlaceOnTheRight) {
  const auto comparison =
      CompareWithPlace(Finding(Verdict::Moved, {10, 11}, "one\ntwo\n"), "zero\none\n\n  two\n", {2, 4});
  EXPECT_THAT(Rows(comparison), ElementsAre("=10|2", ">0|3", "=11|4"));
  EXPECT_EQ(comparison.differing, 1U);
  EXPECT_EQ(Text(comparison.lines.at(2).right), "  two");
  EXPECT_FALSE(comparison.isCut);
}

TEST(Comparison, MarksTheWordsOfAChangedLine) {
  const auto comparison =
      CompareWithPlace(Finding(Verdict::NotFound, {1, 1}, "ADD 1 TO FEE\n"), "     ADD 2 TO FEE\n", {1, 1});
  ASSERT_EQ(comparison.lines.size(), 1U);
  EXPECT_THAT(comparison.lines[0].left,
              ElementsAre(LinePiece{"ADD ", false}, LinePiece{"1", true}, LinePiece{" TO FEE", false}));
  EXPECT_THAT(comparison.lines[0].right,
              ElementsAre(LinePiece{"     ADD ", false}, LinePiece{"2", true}, LinePiece{" TO FEE", false}));
}

TEST(Comparison, WithoutAFileHasTheLeftSideAlone) {
  const auto comparison = CompareWithPlace(Finding(Verdict::FileMissing, {3, 4}, "a\nb\n"), std::nullopt, {3, 4});
  EXPECT_THAT(Rows(comparison), ElementsAre("<3|0", "<4|0"));
}

TEST(Comparison, RowsThatTheFileLacksHoldNothing) {
  const auto stored = Finding(Verdict::NotFound, {2, 3}, "a\nb\n");
  EXPECT_THAT(Rows(CompareWithPlace(stored, "x\na\n", {2, 3})), ElementsAre("=2|2", "<3|0"));
  EXPECT_THAT(Rows(CompareWithPlace(stored, "x\n", {2'000'000'000, 2'000'000'001})), ElementsAre("<2|0", "<3|0"));
  EXPECT_THAT(Rows(CompareWithPlace(stored, "x\n", {5, 2})), ElementsAre("<2|0", "<3|0"));
}

TEST(Comparison, RowsThatNoFileHasAreTakenAsTheyAre) {
  const auto lowest = std::numeric_limits<std::int32_t>::min();
  const auto highest = std::numeric_limits<std::int32_t>::max();
  EXPECT_THAT(Rows(CompareWithPlace(Finding(Verdict::NotFound, {0, 0}, "a\n"), "a\n", {0, 0})), ElementsAre("=0|1"));
  const auto all = CompareWithPlace(Finding(Verdict::NotFound, {lowest, highest}, "a\n"), "a\nb\n", {lowest, highest});
  EXPECT_EQ(all.lines.size(), 2U);
  EXPECT_EQ(CompareWithPlace(Finding(Verdict::NotFound, {highest, highest}, "a\nb\n"), "", {1, 1}).lines.size(), 2U);
}

TEST(Comparison, OfAHugeSegmentIsCut) {
  std::string text;
  for (std::size_t line = 0; line <= kMostLinesCompared; ++line) text += "x\n";
  const auto rows = static_cast<std::int32_t>(kMostLinesCompared + 1);
  const auto comparison = CompareWithPlace(Finding(Verdict::Moved, {1, rows}, text), text, {1, rows});
  EXPECT_TRUE(comparison.isCut);
  EXPECT_EQ(comparison.lines.size(), kMostLinesCompared);
  text.resize(text.size() - 2);
  EXPECT_FALSE(CompareWithPlace(Finding(Verdict::Moved, {1, rows}, text), text, {1, rows}).isCut);
}

}  // namespace
}  // namespace qmrules::validation
