#include "validation/segmentrelocation.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/error.h"
#include "validation/recordprinting.h"

namespace qmrules::validation {

namespace {

constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();

std::string Lines(int count, const std::string& line) {
  std::string text;
  for (int row = 0; row < count; ++row) text += line;
  return text;
}

// What one record becomes.
struct RelocationResult {
  RuleRecord record;
  RelocationOutcome outcome = RelocationOutcome::NotFound;
  std::vector<RowRange> matches;
  std::size_t chosen = 0;
};

RelocationResult Relocate(std::string_view file, RuleRecord record, FileIndexOptions options = {}) {
  SegmentRelocation relocation(std::move(options));
  RelocationResult result;
  std::vector<RuleRecord> records{std::move(record)};
  const std::int32_t moved = relocation.RelocateSegments(
      file, records, [&](std::size_t index, const RuleRecord&, const RelocationFinding& finding) {
        EXPECT_EQ(index, 0U);
        result.outcome = finding.outcome;
        result.chosen = finding.chosen;
        for (std::size_t at = 0; at < finding.matches.Count(); ++at) result.matches.push_back(finding.matches.Rows(at));
      });
  result.record = records[0];
  EXPECT_EQ(moved, result.record.Valid ? 1 : 0);
  EXPECT_EQ(result.outcome == RelocationOutcome::Relocated, result.record.Valid);
  return result;
}

RuleRecord Moved(std::string_view file, const RuleRecord& record, bool collapseSpaces = false) {
  return Relocate(file, record, {.collapseSpaces = collapseSpaces, .processEvents = {}}).record;
}

TEST(Relocation, SegmentOfOneLineFollowsItAHundredRowsDown) {
  EXPECT_EQ(Moved(Lines(109, "X\n") + "MOVE A TO B\nX\n", {"1", 10, 10, "MOVE A TO B\n", false}),
            (RuleRecord{"1", 110, 110, "MOVE A TO B\n", true}));
}

TEST(Relocation, BlankLineAddedInsideIsInTheNewText) {
  EXPECT_EQ(Moved("X\nA\n   \nB\n", {"1", 1, 2, "A\nB\n", false}), (RuleRecord{"1", 2, 4, "A\n\nB\n", true}));
}

TEST(Relocation, BlankLineRemovedInsideIsGoneFromTheNewText) {
  EXPECT_EQ(Moved("X\nA\nB\n", {"1", 1, 4, "A\n\n\nB\n", false}), (RuleRecord{"1", 2, 3, "A\nB\n", true}));
}

TEST(Relocation, CaseDoesNotCountAndTheStoredOneIsKept) {
  EXPECT_EQ(Moved("MOVE A\n", {"1", 1, 1, "move a\n", false}), (RuleRecord{"1", 1, 1, "move a\n", true}));
}

TEST(Relocation, CaseOfOtherAlphabetsDoesNotCountEither) {
  EXPECT_EQ(Moved("X\n* GEBÜHR\n", {"1", 1, 1, "* Gebühr\n", false}), (RuleRecord{"1", 2, 2, "* Gebühr\n", true}));
}

TEST(Relocation, IndentationIsDroppedFromTheNewText) {
  EXPECT_EQ(Moved("X\n     A\n  B  \n", {"1", 1, 2, "  A\n  B\n", false}), (RuleRecord{"1", 2, 3, "A\nB\n", true}));
}

TEST(Relocation, RealignedLineMatchesOnlyWithCollapsedSpaces) {
  const RuleRecord record{"1", 1, 1, "MOVE A    TO B\n", false};
  EXPECT_EQ(Moved("X\nMOVE  A TO  B\n", record, true), (RuleRecord{"1", 2, 2, "MOVE A    TO B\n", true}));
  EXPECT_EQ(Moved("X\nMOVE  A TO  B\n", record, false), record);
}

TEST(Relocation, OfEquallyNearPlacesTakesTheFirstInTheOrderOfTheIndex) {
  // Rows 5, 15 and 19 from row 10. The places stand in the order 15, 5, 19 because what follows the line at row 5 comes
  // back at row 19: that edge is split, and the node that splits it comes to the end.
  const std::string file = Lines(4, "X\n") + "A\nP\n" + Lines(8, "X\n") + "A\nQ\nX\nX\nA\nP\nY\n";
  const RelocationResult result = Relocate(file, {"1", 10, 10, "A\n", false});
  EXPECT_EQ(result.matches, (std::vector<RowRange>{{15, 15}, {5, 5}, {19, 19}}));
  EXPECT_EQ(result.chosen, 0U);
  EXPECT_EQ(result.record, (RuleRecord{"1", 15, 15, "A\n", true}));
}

TEST(Relocation, OfThreePlacesTakesTheNearest) {
  const std::string file = "A\nX\nX\nA\nX\nX\nX\nX\nA\n";
  const RelocationResult result = Relocate(file, {"1", 8, 8, "A\n", false});
  EXPECT_EQ(result.record.FromRow, 9);
  EXPECT_EQ(result.matches.size(), 3U);
  EXPECT_EQ(result.matches[result.chosen], (RowRange{9, 9}));
}

TEST(Relocation, DistanceCountsFromTheStoredRowAlsoWhereTheTextBeginsWithBlankLines) {
  EXPECT_EQ(Moved("X\nX\nA\nX\nX\nX\nX\nA\n", {"1", 5, 7, "\n\nA\n", false}).FromRow, 3);
}

TEST(Relocation, SegmentAtTheEndOfTheFileIsFound) {
  EXPECT_EQ(Moved("X\nA\nB", {"1", 1, 2, "A\nB\n", false}), (RuleRecord{"1", 2, 3, "A\nB\n", true}));
}

TEST(Relocation, SegmentThatGoesOnBehindTheEndOfTheFileIsNot) {
  const RuleRecord record{"1", 1, 2, "A\nB\n", false};
  EXPECT_EQ(Moved("X\nB\nA\n", record), record);
}

TEST(Relocation, NothingStandsInAFileOfBlankLines) {
  const RuleRecord record{"1", 1, 1, "A\n", false};
  EXPECT_EQ(Moved("\n   \n\n", record), record);
  EXPECT_EQ(Moved("", record), record);
}

TEST(Relocation, SegmentOfBlankLinesIsNotFound) {
  const RuleRecord record{"1", 1, 2, "\n  \n", false};
  EXPECT_EQ(Relocate("A\n\n\nB\n", record).outcome, RelocationOutcome::NotFound);
  EXPECT_EQ(Moved("A\n\n\nB\n", record), record);
}

TEST(Relocation, OfTwoEqualLinesInAThousandTakesTheNearest) {
  const RelocationResult result = Relocate(Lines(1000, "A\n"), {"1", 400, 401, "A\nA\n", false});
  EXPECT_EQ(result.matches.size(), 999U);
  EXPECT_EQ(result.record, (RuleRecord{"1", 400, 401, "A\nA\n", true}));
}

TEST(Relocation, LinesThatDoNotStandTogetherAreNotFound) {
  // Each line is in the file, and so is each pair of them, 1 3 apart and 3 1 together.
  const RuleRecord record{"1", 1, 3, "1\n3\n1\n", false};
  EXPECT_EQ(Moved("3\n1\n1\n2\n3\n", record), record);
}

TEST(Relocation, ControlCharactersAreComparedAsTheyAreStored) {
  EXPECT_EQ(Moved("X\nA\x0e\n", {"1", 1, 1, "A}\n", false}).FromRow, 2);
}

TEST(Relocation, EqualRecordsGoToOnePlace) {
  std::vector<RuleRecord> records{{"1", 5, 5, "A\n", false}, {"2", 5, 5, "A\n", false}, {"3", 5, 5, "B\n", false}};
  SegmentRelocation relocation;
  EXPECT_EQ(relocation.RelocateSegments("A\nX\nA\n", records), 2);
  EXPECT_EQ(records[0], (RuleRecord{"1", 3, 3, "A\n", true}));
  EXPECT_EQ(records[1], (RuleRecord{"2", 3, 3, "A\n", true}));
  EXPECT_EQ(records[2], (RuleRecord{"3", 5, 5, "B\n", false}));
}

TEST(Relocation, OneRunTakesManyFiles) {
  SegmentRelocation relocation;
  for (const int rows : {5000, 3, 700, 0, 20000, 1}) {
    std::vector<RuleRecord> records{{"1", 1, 1, "A\n", false}, {"2", 1, 1, "X\n", false}};
    EXPECT_EQ(relocation.RelocateSegments(Lines(rows, "X\n") + "A\n", records), rows > 0 ? 2 : 1);
    EXPECT_EQ(records[0].FromRow, rows + 1);
  }
}

TEST(Relocation, EventsAreProcessedOncePerLineThatIsNotBlank) {
  int calls = 0;
  Relocate("A\n\nB\nA\n", {"1", 1, 1, "A\n", false}, {.collapseSpaces = false, .processEvents = [&] { ++calls; }});
  EXPECT_EQ(calls, 3);
}

TEST(Relocation, FailureWhileEventsAreProcessedPassesThroughAndTheNextFileIsTaken) {
  bool fails = true;
  SegmentRelocation relocation({.collapseSpaces = false, .processEvents = [&] {
                                  if (fails) throw platform::Error("stop");
                                }});
  std::vector<RuleRecord> records{{"1", 1, 1, "A\n", false}};
  EXPECT_THROW(relocation.RelocateSegments("X\nA\n", records), platform::Error);
  EXPECT_FALSE(records[0].Valid);
  fails = false;
  EXPECT_EQ(relocation.RelocateSegments("X\nA\n", records), 1);
}

TEST(Relocation, FailureOfTheWatcherLeavesTheRecordsBehindAsTheyWere) {
  SegmentRelocation relocation;
  std::vector<RuleRecord> records(3, {"1", 1, 1, "A\n", false});
  EXPECT_THROW(relocation.RelocateSegments("X\nA\n", records,
                                           [](std::size_t index, const RuleRecord&, const RelocationFinding&) {
                                             if (index == 1) throw platform::Error("stop");
                                           }),
               platform::Error);
  EXPECT_TRUE(records[0].Valid);
  EXPECT_FALSE(records[1].Valid);
  EXPECT_FALSE(records[2].Valid);
}

TEST(Relocation, WatcherSeesTheRecordAsItWas) {
  SegmentRelocation relocation;
  std::vector<RuleRecord> records{{"1", 1, 1, "A\n", false}};
  relocation.RelocateSegments("X\nA\n", records, [](std::size_t, const RuleRecord& record, const RelocationFinding&) {
    EXPECT_EQ(record, (RuleRecord{"1", 1, 1, "A\n", false}));
  });
  EXPECT_EQ(records[0].FromRow, 2);
}

TEST(Matches, HaveTheFormOfAMatchRecord) {
  SegmentRelocation relocation;
  std::vector<RuleRecord> records{{"7", 1, 2, "A\nB\n", false}};
  int calls = 0;
  relocation.RelocateSegments("A\n\nB\n", records,
                              [&](std::size_t, const RuleRecord&, const RelocationFinding& finding) {
                                ++calls;
                                ASSERT_EQ(finding.matches.Count(), 1U);
                                EXPECT_EQ(finding.matches.Record(0), (MatchRecord{"", 1, 3, "A\n\nB\n"}));
                              });
  EXPECT_EQ(calls, 1);
}

TEST(DamagedRecord, OfMoreLinesThanRowsIsNamedAndLeftAlone) {
  for (const RuleRecord& record :
       {RuleRecord{"1", 3, 4, "A\nB\nC\n", false}, RuleRecord{"1", 4, 3, "A\n", false},
        RuleRecord{"1", 0, -5, "A\n", false}, RuleRecord{"1", kLargest, -kLargest, "A\n", false}}) {
    const RelocationResult result = Relocate("A\nB\nC\n", record);
    EXPECT_EQ(result.outcome, RelocationOutcome::RowsDisagree);
    EXPECT_EQ(result.record, record);
  }
}

TEST(DamagedRecord, OfFewerLinesThanRowsIsLookedForAsItIs) {
  EXPECT_EQ(Moved("X\nA\n", {"1", -kLargest, kLargest, "A\n", false}), (RuleRecord{"1", 2, 2, "A\n", true}));
}

TEST(DamagedRecord, OfNoTextIsNotFound) {
  EXPECT_EQ(Relocate("A\n", {"1", 1, kLargest, "", false}).outcome, RelocationOutcome::NotFound);
}

TEST(DamagedRecord, FarAwayRowsDoNotOverflowTheDistance) {
  EXPECT_EQ(Moved("A\nX\nA\n", {"1", -kLargest - 1, -kLargest - 1, "A\n", false}).FromRow, 1);
  EXPECT_EQ(Moved("A\nX\nA\n", {"1", kLargest, kLargest, "A\n", false}).FromRow, 3);
}

}  // namespace
}  // namespace qmrules::validation
