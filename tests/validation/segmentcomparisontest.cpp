#include "validation/segmentcomparison.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/clock.h"
#include "platform/memoryfilesystem.h"
#include "validation/recordprinting.h"

namespace qmrules::validation {

namespace {

constexpr std::int32_t kFarthestRow = std::numeric_limits<std::int32_t>::max();

// What a search makes of the segment.
struct SearchResult {
  SearchOutcome outcome;
  SegmentPlace place;
  friend bool operator==(const SearchResult&, const SearchResult&) = default;
};

void PrintTo(const SearchResult& result, std::ostream* out) {
  *out << static_cast<int>(result.outcome) << " ";
  PrintTo(result.place, out);
}

SearchResult Found(std::int32_t fromRow, std::int32_t toRow, std::string text) {
  return {SearchOutcome::Found, {fromRow, toRow, std::move(text)}};
}

SearchResult NotFound(std::int32_t fromRow, std::int32_t toRow, std::string text) {
  return {SearchOutcome::NotFound, {fromRow, toRow, std::move(text)}};
}

SearchResult Search(ComparisonMethod method, std::string_view file, SegmentPlace place) {
  const SearchOutcome outcome = FindSegmentBy(method, file, place);
  return {outcome, place};
}

SearchResult Simply(std::string_view file, SegmentPlace place) {
  return Search(ComparisonMethod::Simple, file, std::move(place));
}

SearchResult IgnoringBlanks(std::string_view file, SegmentPlace place) {
  return Search(ComparisonMethod::IgnoreBlankLines, file, std::move(place));
}

SearchResult Approximately(std::string_view file, SegmentPlace place) {
  return Search(ComparisonMethod::ApproximateLineComparing, file, std::move(place));
}

std::vector<std::int32_t> PrefixTable(std::string_view text, ComparisonMethod method, std::int32_t maxDistance) {
  std::int64_t count = 8;
  std::int32_t firstRow = 1;
  const auto lines = SplitSegmentLines(text, ComparisonMethod::IgnoreBlankLines, count, firstRow);
  return BuildLinePrefixTable(*lines, method, maxDistance);
}

TEST(LinePrefixTable, HoldsTheLongestBeginningThatEndsTheLinesSoFar) {
  EXPECT_EQ(PrefixTable("A\nB\nA\nB\nC\nA\nB\nA\n", ComparisonMethod::Simple, 0),
            (std::vector<std::int32_t>{0, 0, 1, 2, 0, 1, 2, 3}));
}

TEST(LinePrefixTable, FallsBackOverSeveralBeginnings) {
  EXPECT_EQ(PrefixTable("A\nA\nB\nA\nA\nA\nB\n", ComparisonMethod::IgnoreBlankLines, 0),
            (std::vector<std::int32_t>{0, 1, 0, 1, 2, 2, 3}));
}

TEST(LinePrefixTable, OfOneLineIsZero) {
  EXPECT_EQ(PrefixTable("A\n", ComparisonMethod::Simple, 0), std::vector<std::int32_t>{0});
}

TEST(LinePrefixTable, TakesLinesWithinTheDistanceForTheSame) {
  constexpr std::string_view text = "MOVE A\nADD LONG TO\nMOVE BCD\n";
  EXPECT_EQ(PrefixTable(text, ComparisonMethod::ApproximateLineComparing, 3), (std::vector<std::int32_t>{0, 0, 1}));
  EXPECT_EQ(PrefixTable(text, ComparisonMethod::ApproximateLineComparing, 2), (std::vector<std::int32_t>{0, 0, 0}));
  EXPECT_EQ(PrefixTable(text, ComparisonMethod::IgnoreBlankLines, 3), (std::vector<std::int32_t>{0, 0, 0}));
}

TEST(SimpleSearch, TakesTheOccurrenceNearestToTheOldRows) {
  EXPECT_EQ(Simply("A\nX\nX\nX\nX\nA\nX\nA\n", {5, 5, "A\n"}), Found(6, 6, "A\n"));
}

TEST(SimpleSearch, OfTwoEquallyNearOnesKeepsTheUpper) {
  EXPECT_EQ(Simply("X\nA\nX\nA\n", {3, 3, "A\n"}), Found(2, 2, "A\n"));
}

TEST(SimpleSearch, LooksPastAnOccurrenceForANearerOne) {
  EXPECT_EQ(Simply("A\nA\nA\nX\nA\n", {5, 5, "A\n"}), Found(5, 5, "A\n"));
}

TEST(SimpleSearch, ReadsOnToAnOccurrenceAsFarAwayAsTheBestAndNoFarther) {
  EXPECT_EQ(Simply("X\nX\nA\nX\nX\nX\nA\nA\n", {5, 5, "A\n"}), Found(3, 3, "A\n"));
}

TEST(SimpleSearch, DoesNotSeeAnOccurrenceThatOverlapsOneFoundBefore) {
  EXPECT_EQ(Simply("A\nA\nA\n", {2, 3, "A\nA\n"}), Found(1, 2, "A\nA\n"));
}

TEST(SimpleSearch, FallsBackToAShorterBeginning) {
  EXPECT_EQ(Simply("A\nA\nA\nB\n", {1, 3, "A\nA\nB\n"}), Found(2, 4, "A\nA\nB\n"));
}

TEST(SimpleSearch, NeedsEveryBlankLine) {
  EXPECT_EQ(Simply("A\n\nB\n", {7, 9, "A\n\nB\n"}), Found(1, 3, "A\n\nB\n"));
  EXPECT_EQ(Simply("A\nB\n", {7, 9, "A\n\nB\n"}), NotFound(0, 2, "A\n\nB\n"));
}

TEST(SimpleSearch, ComparesTrimmedLinesInTheirCase) {
  EXPECT_EQ(Simply("  MOVE A  \n", {4, 4, "MOVE A\n"}), Found(1, 1, "MOVE A\n"));
  EXPECT_EQ(Simply("move a\n", {4, 4, "MOVE A\n"}), NotFound(0, 0, "MOVE A\n"));
  EXPECT_EQ(Simply("MOVE  A\n", {4, 4, "MOVE A\n"}), NotFound(0, 0, "MOVE A\n"));
}

TEST(SimpleSearch, DoesNotTakeATabForABlank) {
  EXPECT_EQ(Simply("\tA\n", {4, 4, "A\n"}), NotFound(0, 0, "A\n"));
}

TEST(SimpleSearch, ComparesControlCharactersAsTheyAreStored) {
  EXPECT_EQ(Simply("A\x01\n", {4, 4, "A&#64999;\n"}), Found(1, 1, "A&#64999;\n"));
}

TEST(SimpleSearch, OfBlankLinesTakesTheNearestRunOfThatLength) {
  EXPECT_EQ(Simply("\n\nA\nA\n\n\nA\n", {5, 6, "\n\n"}), Found(5, 6, "\n\n"));
  EXPECT_EQ(Simply("\n\nA\nA\n\nA\n", {5, 6, "\n\n"}), Found(1, 2, "\n\n"));
}

TEST(SimpleSearch, MissingLinesOfTheTextStandForBlankOnes) {
  EXPECT_EQ(Simply("X\nA\n\nX\n", {1, 2, "A\n"}), Found(2, 3, "A\n"));
  EXPECT_EQ(Simply("X\nA\nX\n", {1, 2, "A\n"}), NotFound(0, 1, "A\n"));
}

TEST(BlankIgnoringSearch, TakesTheFirstOccurrenceAndItsLinesAsText) {
  EXPECT_EQ(IgnoringBlanks("X\n  A \n B\nA\nB\n", {4, 5, "A\nB\n"}), Found(2, 3, "A\nB\n"));
}

TEST(BlankIgnoringSearch, BlankLineThatWasRemovedIsGoneFromTheText) {
  EXPECT_EQ(IgnoringBlanks("X\nA\nB\n", {7, 9, "A\n\nB\n"}), Found(2, 3, "A\nB\n"));
}

TEST(BlankIgnoringSearch, BlankLineThatWasAddedStandsInTheText) {
  EXPECT_EQ(IgnoringBlanks("A\n  \n\nB\n", {7, 8, "A\nB\n"}), Found(1, 4, "A\n\n\nB\n"));
}

TEST(BlankIgnoringSearch, BeginsAtTheFirstLineThatIsNotBlank) {
  EXPECT_EQ(IgnoringBlanks("\n\nA\nB\n", {5, 8, "\n\nA\nB\n"}), Found(3, 4, "A\nB\n"));
}

TEST(BlankIgnoringSearch, BeginsAnewWhenItFallsBackToNothing) {
  EXPECT_EQ(IgnoringBlanks("A\nA\nB\n", {7, 8, "A\nB\n"}), Found(2, 3, "A\nB\n"));
}

TEST(BlankIgnoringSearch, KeepsTheAbandonedBeginningWhenItFallsBackToAShorterOne) {
  EXPECT_EQ(IgnoringBlanks("A\nA\nA\nB\n", {7, 9, "A\nA\nB\n"}), Found(1, 4, "A\nA\nA\nB\n"));
}

TEST(BlankIgnoringSearch, OfBlankLinesFindsNothing) {
  EXPECT_EQ(IgnoringBlanks("A\n\n\nB\n", {2, 3, "\n\n"}), NotFound(0, 0, "\n\n"));
}

TEST(BlankIgnoringSearch, LeavesTheTextWhenNothingIsFound) {
  EXPECT_EQ(IgnoringBlanks("A\nX\nB\n", {7, 8, "A\nB\n"}), NotFound(0, 0, "A\nB\n"));
  EXPECT_EQ(IgnoringBlanks("a\nb\n", {7, 8, "A\nB\n"}), NotFound(0, 0, "A\nB\n"));
}

TEST(ApproximateSearch, TakesALineWithThreeChangedCharactersAndNotWithFour) {
  EXPECT_EQ(Approximately("MOVE ABC TO XYZ\n", {7, 7, "MOVE ABC TO DEF\n"}), Found(1, 1, "MOVE ABC TO XYZ\n"));
  EXPECT_EQ(Approximately("MOVE ABD TO XYZ\n", {7, 7, "MOVE ABC TO DEF\n"}), NotFound(7, 7, "MOVE ABC TO DEF\n"));
}

TEST(ApproximateSearch, CaseCounts) {
  EXPECT_EQ(Approximately("move\n", {7, 7, "MOVE\n"}), NotFound(7, 7, "MOVE\n"));
}

TEST(ApproximateSearch, LaterOccurrenceWithACloserLineReplacesTheFirst) {
  EXPECT_EQ(Approximately("FIRST-1\nSECOND-1\nX\nFIRST-LINE\nFIRST\nSECOND-2\n", {1, 2, "FIRST\nSECOND\n"}),
            Found(5, 6, "FIRST\nSECOND-2\n"));
}

TEST(ApproximateSearch, FirstOccurrenceWithAnEqualLineStays) {
  EXPECT_EQ(Approximately("FIRST\nSECOND-1\nFIRST\nSECOND\n", {3, 4, "FIRST\nSECOND\n"}),
            Found(1, 2, "FIRST\nSECOND-1\n"));
}

TEST(ApproximateSearch, LaterOccurrenceThatIsNoCloserChangesNothing) {
  EXPECT_EQ(Approximately("FIRST-1\nFIRST-2\n", {2, 2, "FIRST\n"}), Found(1, 1, "FIRST-1\n"));
}

// The first two lines are an attempt that is given up, but its equal line counts for the occurrence behind it, and no
// occurrence behind that one can be closer.
TEST(ApproximateSearch, LineOfAnAttemptThatWasGivenUpCounts) {
  EXPECT_EQ(Approximately("FIRST\nOTHER LINE\nFIRST-1\nSECOND-1\nFIRST\nSECOND\n", {5, 6, "FIRST\nSECOND\n"}),
            Found(3, 4, "FIRST-1\nSECOND-1\n"));
}

TEST(ApproximateSearch, KeepsTheAbandonedBeginningWhenItFallsBackToAShorterOne) {
  EXPECT_EQ(Approximately("AAAA-1\nAAAA-2\nAAAA-3\nBBBBBB\n", {7, 9, "AAAA\nAAAA\nBBBBBB\n"}),
            Found(1, 4, "AAAA-1\nAAAA-2\nAAAA-3\nBBBBBB\n"));
}

TEST(ApproximateSearch, BlankLinesInsideStandInTheText) {
  EXPECT_EQ(Approximately("FIRST-1\n\n\nSECOND-1\n", {7, 8, "FIRST\nSECOND\n"}),
            Found(1, 4, "FIRST-1\n\n\nSECOND-1\n"));
}

TEST(ApproximateSearch, OfABlankLineTakesALineOfThreeCharacters) {
  EXPECT_EQ(Approximately("\nLONG\nABC\n", {2, 2, "\n"}), Found(3, 3, "ABC\n"));
  EXPECT_EQ(Approximately("\nLONG\n", {2, 2, "\n"}), NotFound(2, 2, "\n"));
}

TEST(ApproximateSearch, TellsHowFarThePlaceIsOff) {
  SegmentPlace place{1, 2, "FIRST\nSECOND\n"};
  ApproximateMatch match;
  ASSERT_EQ(FindSegmentApproximately("X\nFIRST-1\n\nSECOND.\n", place, &match), SearchOutcome::Found);
  EXPECT_EQ(match.lowestDistance, 1);
  EXPECT_EQ(match.totalDistance, 3);
}

TEST(ApproximateSearch, TellsTheDistanceOfTheLastLinesWhenItFellBack) {
  SegmentPlace place{7, 9, "AAAA\nAAAA\nBBBBBB\n"};
  ApproximateMatch match;
  ASSERT_EQ(FindSegmentApproximately("AAAA-1\nAAAA-2\nAAAA-3\nBBBBBB\n", place, &match), SearchOutcome::Found);
  EXPECT_EQ(match.lowestDistance, 0);
  EXPECT_EQ(match.totalDistance, 4);
}

class EverySearch : public testing::TestWithParam<ComparisonMethod> {};

INSTANTIATE_TEST_SUITE_P(Methods, EverySearch,
                         testing::Values(ComparisonMethod::Simple, ComparisonMethod::IgnoreBlankLines,
                                         ComparisonMethod::ApproximateLineComparing));

TEST_P(EverySearch, FindsASegmentThatMoved) {
  EXPECT_EQ(Search(GetParam(), "XXXXX\nYYYYY\nAAAAA\nBBBBB\n", {1, 2, "AAAAA\nBBBBB\n"}),
            Found(3, 4, "AAAAA\nBBBBB\n"));
}

TEST_P(EverySearch, FindsALastLineWithoutALineEnd) {
  EXPECT_EQ(Search(GetParam(), "XXXXX\nAAAAA", {1, 1, "AAAAA\n"}), Found(2, 2, "AAAAA\n"));
}

TEST_P(EverySearch, FindsNothingInAnEmptyFile) {
  EXPECT_EQ(Search(GetParam(), "", {1, 1, "AAAAA\n"}).outcome, SearchOutcome::NotFound);
}

TEST_P(EverySearch, RefusesATextOfMoreLinesThanRowsAndChangesNothing) {
  const SegmentPlace place{3, 4, "AAAAA\nBBBBB\nCCCCC\n"};
  EXPECT_EQ(Search(GetParam(), "AAAAA\nBBBBB\nCCCCC\n", place), (SearchResult{SearchOutcome::RowsDisagree, place}));
}

TEST_P(EverySearch, RefusesRowsThatRunBackwards) {
  const SegmentPlace place{kFarthestRow, -kFarthestRow, "AAAAA\n"};
  EXPECT_EQ(Search(GetParam(), "AAAAA\n", place), (SearchResult{SearchOutcome::RowsDisagree, place}));
}

TEST_P(EverySearch, BillionsOfRowsTakeNoMemory) {
  EXPECT_EQ(Search(GetParam(), "AAAAA\n\n\n", {-kFarthestRow, kFarthestRow, "\n"}).outcome, SearchOutcome::NotFound);
}

TEST(BlankIgnoringSearch, BillionsOfRowsDoNotKeepItFromFinding) {
  EXPECT_EQ(IgnoringBlanks("X\nA\n", {-kFarthestRow, kFarthestRow, "A\n"}), Found(2, 2, "A\n"));
}

TEST(SearchByMethod, OfMultipleMatchingIsNone) {
  EXPECT_EQ(Search(ComparisonMethod::MultipleMatching, "A\n", {1, 1, "A\n"}), NotFound(1, 1, "A\n"));
}

TEST(ComparisonMethod, OfValidationIsMultipleMatching) {
  EXPECT_EQ(kComparisonMethod, ComparisonMethod::MultipleMatching);
}

class SourceText : public testing::Test {
 protected:
  SourceText() { files.CreateFolder("/src"); }
  platform::FixedClock clock{platform::Timestamp{0}};
  platform::MemoryFileSystem files{clock};
};

TEST_F(SourceText, IsThatOfTheFileBelowTheFolder) {
  files.WriteFile("/src/FEE.cbl", "A\nB\n");
  EXPECT_EQ(ReadSourceText(files, "/src", "FEE.cbl"), "A\nB\n");
}

TEST_F(SourceText, IsDecoded) {
  files.WriteFile("/src/FEE.cbl", "Geb\xfchr\n");
  EXPECT_EQ(ReadSourceText(files, "\\src", "FEE.cbl"), "Gebühr\n");
}

TEST_F(SourceText, OfAFileThatCannotBeReadIsNone) {
  EXPECT_EQ(ReadSourceText(files, "/src", "NONE.cbl"), std::nullopt);
  files.WriteFile("/src/FEE.cbl", "A\n");
  files.SetReadable("/src/FEE.cbl", false);
  EXPECT_EQ(ReadSourceText(files, "/src", "FEE.cbl"), std::nullopt);
}

TEST_F(SourceText, OfANameThatLeadsOutOfTheFolderIsNone) {
  files.WriteFile("/secret", "A\n");
  EXPECT_EQ(ReadSourceText(files, "/src", "..\\secret"), std::nullopt);
}

TEST_F(SourceText, OfATooLargeFileIsNone) {
  platform::MemoryFileSystem small(clock, {.sourceEncoding = "", .largestFile = 3});
  small.WriteFile("/FEE.cbl", "A\nB\n");
  EXPECT_EQ(ReadSourceText(small, "/", "FEE.cbl"), std::nullopt);
}

}  // namespace
}  // namespace qmrules::validation
