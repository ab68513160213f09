#include "validation/findinglist.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace qmrules::validation {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

RuleFinding Finding(std::int32_t ruleID, Verdict verdict, std::string name, std::string file, RowRange rows,
                    std::vector<RowRange> candidates = {}) {
  RuleFinding finding;
  finding.ruleID = ruleID;
  finding.verdict = verdict;
  finding.ruleName = std::move(name);
  finding.fileName = std::move(file);
  finding.rows = rows;
  finding.candidates = std::move(candidates);
  return finding;
}

class FindingListTest : public testing::Test {
 protected:
  FindingListTest() {
    auto report = std::make_shared<ValidationReport>();
    report->findings = {
        Finding(1, Verdict::Unchanged, "Fee", "PAY.cbl", {100, 101}),
        Finding(2, Verdict::Moved, "late fee", "pay.cbl", {9, 10}, {{12, 13}}),
        Finding(3, Verdict::NotFound, "Grace", "RATE.cbl", {20, 20}),
        Finding(4, Verdict::Ambiguous, "Äußeres", "rate.cbl", {30, 30}, {{40, 40}, {28, 28}, {2, 2}}),
        Finding(5, Verdict::NoSegment, "Empty", "", {0, 0}),
    };
    report->findings[3].chosen = 1;
    list.SetWords({"unchanged", "in place", "no segment", "moved", "ambiguous", "not found", "rows disagree",
                   "file missing", "changed"});
    list.SetReport(report);
  }
  std::vector<int> Shown() const {
    std::vector<int> ids;
    for (std::size_t row = 0; row < list.Count(); ++row) ids.push_back(list.At(row).ruleID);
    return ids;
  }

  FindingList list;
};

TEST_F(FindingListTest, BeginsWithWhatAsksForALookSoonest) {
  EXPECT_THAT(Shown(), ElementsAre(3, 4, 2, 1, 5));
}

TEST_F(FindingListTest, IsSortedByEachColumn) {
  list.SortBy(FindingColumn::Rule, false);
  EXPECT_THAT(Shown(), ElementsAre(5, 1, 3, 2, 4)) << "names without regard to case";
  list.SortBy(FindingColumn::File, false);
  EXPECT_THAT(Shown(), ElementsAre(5, 1, 2, 3, 4));
  list.SortBy(FindingColumn::OldRows, false);
  EXPECT_THAT(Shown(), ElementsAre(5, 2, 3, 4, 1)) << "rows are numbers";
  list.SortBy(FindingColumn::NewRows, true);
  EXPECT_THAT(Shown(), ElementsAre(4, 2, 1, 3, 5)) << "equal ones stay in the order of the run";
}

TEST_F(FindingListTest, ShowsWhatIsSearchedForInAnyCase) {
  list.SetFilter("FEE");
  EXPECT_THAT(Shown(), ElementsAre(2, 1));
  list.SetFilter("äUSS");
  EXPECT_THAT(Shown(), IsEmpty());
  list.SetFilter("ÄU");
  EXPECT_THAT(Shown(), ElementsAre(4));
  list.SetFilter("rate not");
  EXPECT_THAT(Shown(), ElementsAre(3)) << "each word, wherever it stands";
  list.SetFilter("rule#5");
  EXPECT_THAT(Shown(), ElementsAre(5));
  list.SetFilter("  ");
  EXPECT_EQ(list.Count(), 5U);
}

TEST_F(FindingListTest, KeepsOrderAndFilterForTheNextRun) {
  list.SortBy(FindingColumn::Rule, true);
  list.SetFilter("cbl");
  auto next = std::make_shared<ValidationReport>();
  next->findings = {Finding(6, Verdict::Moved, "A", "a.cbl", {1, 1}), Finding(7, Verdict::Moved, "B", "b.cbl", {1, 1}),
                    Finding(8, Verdict::Moved, "C", "c.txt", {1, 1})};
  list.SetReport(next);
  EXPECT_THAT(Shown(), ElementsAre(7, 6));
  EXPECT_EQ(list.CountOf(Verdict::Moved), 3U);
  EXPECT_EQ(list.CountOf(Verdict::NotFound), 0U);
}

TEST_F(FindingListTest, CountsEachVerdictWhateverIsShown) {
  list.SetFilter("nothing has this");
  EXPECT_EQ(list.CountOf(Verdict::Moved), 1U);
  EXPECT_EQ(list.CountOf(Verdict::FileMissing), 0U);
  EXPECT_EQ(list.CountOfAll(), 5U);
}

TEST_F(FindingListTest, TellsOldAndNewRows) {
  const auto row = [this](std::size_t place) {
    std::vector<std::string> texts;
    for (std::size_t column = 0; column < kFindingColumns; ++column) {
      texts.push_back(list.Text(place, static_cast<FindingColumn>(column)));
    }
    return texts;
  };
  EXPECT_THAT(row(0), ElementsAre("not found", "Grace", "RATE.cbl", "20", ""));
  EXPECT_THAT(row(1), ElementsAre("ambiguous", "Äußeres", "rate.cbl", "30", "28 (+2)"));
  EXPECT_THAT(row(2), ElementsAre("moved", "late fee", "pay.cbl", "9-10", "12-13"));
  EXPECT_THAT(row(4), ElementsAre("no segment", "Empty", "", "", ""));
}

TEST_F(FindingListTest, OtherWordsAreSearched) {
  list.SetWords({"g", "h", "i", "verschoben", "k", "l", "m", "n", "o"});
  list.SetFilter("verschoben");
  EXPECT_THAT(Shown(), ElementsAre(2));
}

TEST_F(FindingListTest, WithoutARunIsEmpty) {
  list.SetReport(nullptr);
  EXPECT_EQ(list.Count(), 0U);
  list.SortBy(FindingColumn::File, true);
  EXPECT_EQ(list.CountOfAll(), 0U);
}

TEST(VerdictsByNeed, NameEachVerdictOnce) {
  auto verdicts = VerdictsByNeed();
  std::ranges::sort(verdicts);
  for (std::size_t verdict = 0; verdict < kVerdicts; ++verdict)
    EXPECT_EQ(static_cast<std::size_t>(verdicts[verdict]), verdict);
}

}  // namespace
}  // namespace qmrules::validation
