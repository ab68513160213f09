#include "validation/validationrun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "catalogue/activitylog.h"
#include "catalogue/gateway.h"
#include "platform/error.h"
#include "platform/recordingprogress.h"
#include "support/faultyconnection.h"
#include "support/teststore.h"
#include "validation/validationoptions.h"
#include "workbench/repository/sqliteconnection.h"

namespace qmrules::validation {
namespace {

using catalogue::MakeKey;
using platform::Value;
using testing::ElementsAre;
using testing::IsEmpty;

namespace repository = workbench::repository;

constexpr const char* kOptions =
    "<OPTIONS><CASE NAME='Ferrowood'><LIST NAME='FW'><CASE NAME='CRD'><LIST NAME='CRDOptions'>"
    "<CASE NAME='RuleValidation'><LIST NAME='SegmentValidation' VALUE='leave'/>"
    "<BOOL NAME='CollapseSpaces' VALUE='false'/></CASE></LIST></CASE></LIST></CASE></OPTIONS>";

// Counts how often each file is read.
class CountingFiles final : public platform::FileSystem {
 public:
  bool Exists(std::string_view path) const override { return disk_.Exists(path); }
  bool IsFolder(std::string_view path) const override { return disk_.IsFolder(path); }
  bool IsSameFile(std::string_view left, std::string_view right) const override {
    return disk_.IsSameFile(left, right);
  }
  std::uint64_t FileSize(std::string_view path) const override { return disk_.FileSize(path); }
  platform::Timestamp DateLastModified(std::string_view path) const override { return disk_.DateLastModified(path); }
  std::string ReadFile(std::string_view path) const override {
    ++reads;
    return disk_.ReadFile(path);
  }
  void WriteFile(std::string_view path, std::string_view bytes) override { disk_.WriteFile(path, bytes); }
  std::vector<platform::FolderEntry> ListFolder(std::string_view path) const override { return disk_.ListFolder(path); }
  void CreateFolder(std::string_view path) override { disk_.CreateFolder(path); }
  std::string ResolveInside(std::string_view root, std::string_view name) const override {
    return disk_.ResolveInside(root, name);
  }
  const std::string& SourceEncoding() const override { return disk_.SourceEncoding(); }

  mutable int reads = 0;

 private:
  platform::DiskFileSystem disk_;
};

class ValidationRunTest : public testing::Test {
 protected:
  ValidationRunTest() { store.FE().ProjectOptions().Document().loadXML(kOptions, "options"); }

  std::int32_t AddRule(const std::string& file, int fromRow, int toRow, const std::string& text) {
    ++rules_;
    const auto rule = store.AddRule(set, "Rule " + std::to_string(rules_), rules_);
    const std::string key = MakeKey("RULE", rule);
    store.Put(key, "Program", Value("PROG"));
    store.Put(key, "Model", Value("COBOL"));
    store.Put(key, "FileName", Value(file));
    store.Put(key, "FromRow", Value(fromRow));
    store.Put(key, "ToRow", Value(toRow));
    store.Put(key, "SourceText", Value(text));
    store.Put(key, "Valid", Value("Potentially invalid"));
    return rule;
  }
  std::int32_t AddRuleWithoutSegment() { return AddRule("", 0, 0, ""); }

  ValidationReport Run(const std::string& action, const std::vector<std::int32_t>& ids,
                       const std::function<void(ValidationRequest&)>& change = {}) {
    ValidationRequest request;
    for (const auto id : ids) catalogue::AddKeyed(request.ruleIDs, std::to_string(id));
    request.action = action;
    if (change) change(request);
    return ValidateRules(services, request, &progress);
  }

  std::string Get(std::int32_t rule, const std::string& attribute) {
    return store.Get(MakeKey("RULE", rule), attribute).Text();
  }
  std::string Place(std::int32_t rule) {
    return Get(rule, "FileName") + ":" + Get(rule, "FromRow") + "-" + Get(rule, "ToRow") + " " + Get(rule, "Valid");
  }
  std::vector<std::string> Log(std::int32_t rule) {
    std::vector<std::string> texts;
    for (const auto& row : catalogue::ReadRuleLog(store.Repository(), services.texts, rule).rows) {
      texts.push_back(row.Activity);
    }
    return texts;
  }
  std::vector<std::string> Steps() const {
    using enum platform::RecordingProgress::Call;
    std::vector<std::string> steps;
    for (const auto& entry : progress.Entries()) {
      EXPECT_FALSE(entry.canCancel);
      if (entry.call == StartProgress) steps.push_back("start " + entry.text + " " + std::to_string(entry.amount));
      if (entry.call == StartStep) steps.push_back("step " + entry.text);
      if (entry.call == FinishStep) steps.push_back("finished " + std::to_string(entry.amount));
      if (entry.call == FinishProgress) steps.emplace_back("end");
    }
    return steps;
  }
  std::int32_t AddDataElement(std::int32_t rule) {
    const auto id = store.Add("RULEIO", "io" + std::to_string(rule));
    store.Repository().object(MakeKey("RULE", rule))->Link("Has", MakeKey("RULEIO", id));
    return id;
  }

  std::shared_ptr<test::Fault> fault = std::make_shared<test::Fault>();
  test::TestStore store{"", [fault = fault](const std::string& path) {
                          return test::MakeFaulty(
                              repository::OpenSqliteConnection(path, repository::Durability::Relaxed), fault);
                        }};
  const std::int32_t set = store.AddRuleSet("Fees");
  CountingFiles files;
  platform::TesselGlobals globals;
  ValidationServices services{store.FE(), files, store.Clock(), shell::StringTableFor(shell::Language::English),
                              globals,    {}};
  platform::RecordingProgress progress;

 private:
  int rules_ = 0;
};

TEST_F(ValidationRunTest, ATextThatStandsAtItsRowsIsCorrectUnderAnyAction) {
  store.Folder().Write("a.cbl", "one\ntwo\nthree\n");
  const auto rule = AddRule("a.cbl", 2, 3, "two\nthree\n");
  for (const char* action : {kLeave, kDelete, kRepair, "something else"}) {
    store.Put(MakeKey("RULE", rule), "Valid", Value("Invalid"));
    const auto report = Run(action, {rule});
    EXPECT_EQ(report.message, "One rule was already correct.");
    EXPECT_EQ(Place(rule), "a.cbl:2-3 Valid");
    EXPECT_EQ(report.findings.at(0).verdict, Verdict::Unchanged);
  }
  EXPECT_EQ(Get(rule, "Validated"), "2026-01-31 12:00:00");
  EXPECT_THAT(Log(rule), ElementsAre("Validated", "Validated", "Validated", "Validated"));
}

TEST_F(ValidationRunTest, ARuleWithoutASegmentIsCorrectUnderAnyAction) {
  const auto rule = AddRuleWithoutSegment();
  for (const char* action : {kLeave, kDelete, kRepair}) {
    store.Put(MakeKey("RULE", rule), "Valid", Value("Invalid"));
    EXPECT_EQ(Run(action, {rule}).message, "One rule was already correct.\r\nOne of them has no segment.");
    EXPECT_EQ(Get(rule, "Valid"), "Valid");
  }
  EXPECT_EQ(files.reads, 0);
  const auto other = AddRuleWithoutSegment();
  EXPECT_EQ(Run(kLeave, {rule, other}).message, "2 rules were already correct.\r\n2 of them have no segments.");
}

TEST_F(ValidationRunTest, ATextWithoutItsLastLineFeedIsCorrect) {
  store.Folder().Write("a.cbl", "one\ntwo\nthree\n");
  const auto rule = AddRule("a.cbl", 1, 2, "one\ntwo");
  EXPECT_EQ(Run(kLeave, {rule}).counts.correct, 1);
  const auto other = AddRule("a.cbl", 1, 2, "one\ntwo\n\n");
  EXPECT_EQ(Run(kLeave, {other}).counts.correct, 0);
}

TEST_F(ValidationRunTest, LinesAreComparedAsTheyWouldBeStored) {
  store.Folder().Write("a.cbl", std::string("on\x0e") + "e\ntwo  \n");
  EXPECT_EQ(Run(kLeave, {AddRule("a.cbl", 1, 2, "on}e\ntwo  \n")}).counts.correct, 1);
  EXPECT_EQ(Run(kLeave, {AddRule("a.cbl", 1, 2, "on}e\ntwo\n")}).counts.correct, 0);
}

TEST_F(ValidationRunTest, AFileThatEndsInsideTheSegmentIsSearchedAndHoldsItOnlyInFull) {
  store.Folder().Write("a.cbl", "one\ntwo\n");
  const auto rule = AddRule("a.cbl", 1, 3, "one\ntwo\nthree\n");
  EXPECT_EQ(Run(kRepair, {rule}).message, "\r\nOne segment was not validated.");
  EXPECT_EQ(Place(rule), "a.cbl:1-3 Invalid");
  store.Folder().Write("a.cbl", "zero\none\ntwo\nthree\n");
  EXPECT_EQ(Run(kRepair, {rule}).message, "\r\nOne segment was validated.");
  EXPECT_EQ(Place(rule), "a.cbl:2-4 Valid");
}

TEST_F(ValidationRunTest, LeaveMarksTheRuleAndKeepsItsRows) {
  store.Folder().Write("a.cbl", "zero\none\n");
  const auto rule = AddRule("a.cbl", 1, 1, "one\n");
  const auto other = AddRule("a.cbl", 2, 2, "two\n");
  EXPECT_EQ(Run(kLeave, {rule}).message, "\r\nOne segment was left invalid.");
  EXPECT_EQ(Run(kLeave, {rule, other}).message, "\r\n2 segments were left invalid.");
  EXPECT_EQ(Place(rule), "a.cbl:1-1 Invalid");
  EXPECT_EQ(Get(rule, "SourceText"), "one\n");
  EXPECT_THAT(Log(rule), ElementsAre("Validated", "Validated"));
}

TEST_F(ValidationRunTest, DeleteTakesTheSegmentAndItsDataElementsAway) {
  store.Folder().Write("a.cbl", "zero\none\n");
  const auto rule = AddRule("a.cbl", 1, 1, "one\n");
  AddDataElement(rule);
  EXPECT_EQ(Run(kDelete, {rule}).message, "\r\nOne segment was deleted.");
  EXPECT_EQ(Place(rule), ":0-0 Valid");
  EXPECT_EQ(Get(rule, "Program") + Get(rule, "Model") + Get(rule, "SourceText"), "");
  EXPECT_EQ(store.Repository().CountObjects("RULEIO", {}), 0);
  EXPECT_THAT(Log(rule), ElementsAre("Validated", "Segment deleted"));
}

TEST_F(ValidationRunTest, AnyOtherActionLeavesTheRuleAsItIsAndSaysNothing) {
  store.Folder().Write("a.cbl", "zero\none\n");
  const auto rule = AddRule("a.cbl", 1, 1, "one\n");
  EXPECT_EQ(Run("ask", {rule}).message, "");
  EXPECT_EQ(Place(rule), "a.cbl:1-1 Potentially invalid");
  EXPECT_THAT(Log(rule), IsEmpty());
}

TEST_F(ValidationRunTest, AnUnreadableFileCountsAsNotValidatedAndDoesNotGoToTheIndex) {
  const auto rule = AddRule("gone.cbl", 1, 1, "one\n");
  const auto outside = AddRule("../a.cbl", 1, 1, "one\n");
  const auto report = Run(kRepair, {rule, outside});
  EXPECT_EQ(report.counts.notValidated, 2);
  EXPECT_EQ(report.message, "\r\n2 segments were not validated.");
  EXPECT_EQ(Get(rule, "Valid"), "Invalid");
  EXPECT_EQ(report.findings.at(0).verdict, Verdict::FileMissing);
  EXPECT_THAT(Steps(), ElementsAre("start Validating rules... 2", "step ", "finished 1", "end"));
}

TEST_F(ValidationRunTest, SeveralRulesOfOneFileCostOneReading) {
  store.Folder().Write("a.cbl", "zero\none\ntwo\nthree\n");
  const std::vector<std::int32_t> ids = {AddRule("a.cbl", 1, 1, "one\n"), AddRule("a.cbl", 2, 3, "two\nthree\n"),
                                         AddRule("a.cbl", 3, 3, "two\n"), AddRule("a.cbl", 9, 9, "nowhere\n")};
  const auto report = Run(kRepair, ids);
  EXPECT_EQ(files.reads, 1);
  EXPECT_EQ(report.message,
            "One rule was already correct.\r\n2 segments were validated.\r\nOne segment was not validated.");
  EXPECT_EQ(Place(ids[0]), "a.cbl:2-2 Valid");
  EXPECT_EQ(Place(ids[1]), "a.cbl:3-4 Valid");
  EXPECT_EQ(Place(ids[3]), "a.cbl:9-9 Invalid");
  EXPECT_THAT(Steps(), ElementsAre("start Validating rules... 4", "step ", "finished 3", "step ", "finished 1", "end"));
}

TEST_F(ValidationRunTest, SeveralRulesOfOneFileCostOneIndex) {
  store.Folder().Write("a.cbl", "zero\none\n\ntwo\nthree\n");
  int events = 0;
  services.processEvents = [&events] { ++events; };
  Run(kRepair,
      {AddRule("a.cbl", 1, 1, "one\n"), AddRule("a.cbl", 1, 2, "two\nthree\n"), AddRule("a.cbl", 9, 9, "x\n")});
  EXPECT_EQ(events, 4 + 1) << "one for each line of the index that is not blank, and one for the file";
}

TEST_F(ValidationRunTest, AnUnreadableFileIsAChangedSegmentUnderTheOtherActions) {
  const auto rule = AddRule("gone.cbl", 1, 1, "one\n");
  EXPECT_EQ(Run(kLeave, {rule}).message, "\r\nOne segment was left invalid.");
  EXPECT_EQ(Place(rule), "gone.cbl:1-1 Invalid");
  const auto report = Run(kDelete, {rule});
  EXPECT_EQ(report.message, "\r\nOne segment was deleted.");
  EXPECT_EQ(report.counts.notValidated, 0);
  EXPECT_EQ(Place(rule), ":0-0 Valid");
}

TEST_F(ValidationRunTest, ATextInOtherCaseIsNotCorrectAndIsFoundInItsPlace) {
  store.Folder().Write("a.cbl", "zero\nMOVE A\n");
  const auto rule = AddRule("a.cbl", 2, 2, "move a\n");
  const auto report = Run(kRepair, {rule});
  EXPECT_EQ(report.findings.at(0).verdict, Verdict::InPlace);
  EXPECT_EQ(report.message, "\r\nOne segment was validated.");
  EXPECT_EQ(Place(rule), "a.cbl:2-2 Valid");
  EXPECT_EQ(Get(rule, "SourceText"), "move a\n");
}

// The text that the file's end cut off is remembered until another file is opened, and no file is opened for a rule
// without a segment.
TEST_F(ValidationRunTest, BehindAFirstRowPastTheEndARuleWithoutASegmentIsNotCorrect) {
  store.Folder().Write("a.cbl", "one\n");
  const auto past = AddRule("a.cbl", 9, 9, "one\n");
  const auto empty = AddRuleWithoutSegment();
  const auto alsoEmpty = AddRuleWithoutSegment();
  const auto opened = AddRule("a.cbl", 1, 1, "one\n");
  const auto emptyAgain = AddRuleWithoutSegment();
  // Packing the IDs turns five of them so that the third is the first to be worked off.
  const auto report = Run(kLeave, {opened, emptyAgain, past, empty, alsoEmpty});
  EXPECT_EQ(report.counts.correct, 2);
  EXPECT_EQ(report.counts.noSegment, 3);
  EXPECT_EQ(Get(empty, "Valid"), "Invalid");
  EXPECT_EQ(Get(alsoEmpty, "Valid"), "Invalid");
  EXPECT_EQ(Get(emptyAgain, "Valid"), "Valid");
  EXPECT_EQ(Run(kRepair, {past, empty}).message, "\r\nOne segment was validated.\r\nOne segment was not validated.");
  EXPECT_EQ(Get(empty, "Valid"), "Invalid");
}

TEST_F(ValidationRunTest, AFileThatCannotBeOpenedForgetsNoFirstRowPastTheEnd) {
  store.Folder().Write("a.cbl", "one\n");
  const auto past = AddRule("a.cbl", 9, 9, "one\n");
  const auto lost = AddRule("gone.cbl", 1, 1, "one\n");
  const auto empty = AddRuleWithoutSegment();
  // Packing the IDs turns three of them so that the third is the first to be worked off.
  const auto report = Run(kLeave, {lost, empty, past});
  ASSERT_EQ(report.findings.at(0).ruleID, past);
  ASSERT_EQ(report.findings.at(1).ruleID, lost);
  EXPECT_EQ(Get(empty, "Valid"), "Invalid");
}

TEST_F(ValidationRunTest, TheSegmentGoesToTheNearestPlaceAndTheFindingNamesAll) {
  store.Folder().Write("a.cbl", "same\nx\nsame\ny\nsame\n");
  const auto rule = AddRule("a.cbl", 4, 4, "same\n");
  const auto report = Run(kRepair, {rule});
  const auto& finding = report.findings.at(0);
  EXPECT_EQ(finding.verdict, Verdict::Ambiguous);
  EXPECT_THAT(finding.candidates, ElementsAre(RowRange{1, 1}, RowRange{3, 3}, RowRange{5, 5}));
  EXPECT_EQ(finding.candidates[finding.chosen], (RowRange{3, 3}));
  EXPECT_EQ(Place(rule), "a.cbl:3-3 Valid");
}

TEST_F(ValidationRunTest, ATextThatStandsAtItsRowsWithOtherBlanksIsInPlaceAndNotCorrect) {
  store.Folder().Write("a.cbl", "zero\n  one\n");
  const auto rule = AddRule("a.cbl", 1, 1, "  one\n");
  EXPECT_EQ(Run(kRepair, {rule}).findings.at(0).verdict, Verdict::Moved);
  EXPECT_EQ(Get(rule, "SourceText"), "one\n");
  const auto report = Run(kRepair, {rule});
  EXPECT_EQ(report.findings.at(0).verdict, Verdict::InPlace);
  EXPECT_EQ(report.message, "\r\nOne segment was validated.");
  EXPECT_EQ(Run(kLeave, {rule}).message, "\r\nOne segment was left invalid.");
}

TEST_F(ValidationRunTest, ATextWithMoreLinesThanRowsIsNamedAndNotValidated) {
  store.Folder().Write("a.cbl", "zero\none\ntwo\n");
  const auto rule = AddRule("a.cbl", 1, 1, "one\ntwo\n");
  const auto backwards = AddRule("a.cbl", 2, 1, "one\n");
  const auto report = Run(kRepair, {rule, backwards});
  EXPECT_EQ(report.findings.at(0).verdict, Verdict::RowsDisagree);
  EXPECT_EQ(report.findings.at(1).verdict, Verdict::RowsDisagree);
  EXPECT_EQ(report.counts.notValidated, 2);
}

TEST_F(ValidationRunTest, AHintTellsTheNearestPlaceAndIsNeverWritten) {
  store.Folder().Write("a.cbl", "zero\nmove 10 to rate\ncompute x\n");
  const auto rule = AddRule("a.cbl", 1, 2, "move 12 to rate\ncompute x\n");
  const auto report = Run(kRepair, {rule}, [](ValidationRequest& request) { request.wantsHints = true; });
  const auto& finding = report.findings.at(0);
  EXPECT_EQ(finding.verdict, Verdict::NotFound);
  ASSERT_TRUE(finding.near.has_value());
  EXPECT_EQ(finding.near->rows, (RowRange{2, 3}));
  EXPECT_EQ(finding.near->distance, 1);
  EXPECT_EQ(Place(rule), "a.cbl:1-2 Invalid");
}

TEST_F(ValidationRunTest, TheFindingsBearNamesAndTextsAsTheyWereBeforeTheRun) {
  store.Folder().Write("a.cbl", "zero\n  one\n");
  const std::vector<std::int32_t> ids = {AddRule("a.cbl", 1, 1, " one\n"), AddRule("gone.cbl", 1, 1, "two\n"),
                                         AddRuleWithoutSegment()};
  std::map<std::int32_t, std::string> texts;
  for (const auto& finding :
       Run(kRepair, ids, [](ValidationRequest& request) { request.wantsTexts = true; }).findings) {
    texts[finding.ruleID] = finding.ruleName + ":" + finding.storedText;
  }
  EXPECT_EQ(texts, (std::map<std::int32_t, std::string>{
                       {ids[0], "Rule 1: one\n"}, {ids[1], "Rule 2:two\n"}, {ids[2], "Rule 3:"}}));
  EXPECT_EQ(Get(ids[0], "SourceText"), "one\n") << "the run has moved it";
}

TEST_F(ValidationRunTest, PlacesAreToldAlsoWhereTheActionLooksForNone) {
  store.Folder().Write("a.cbl", "zero\none\n");
  const auto rule = AddRule("a.cbl", 1, 1, "one\n");
  EXPECT_EQ(Run(kLeave, {rule}).findings.at(0).verdict, Verdict::Changed);
  const auto report = Run(kLeave, {rule}, [](ValidationRequest& request) { request.wantsPlaces = true; });
  EXPECT_EQ(report.findings.at(0).verdict, Verdict::Moved);
  EXPECT_THAT(report.findings.at(0).candidates, ElementsAre(RowRange{2, 2}));
  EXPECT_EQ(Place(rule), "a.cbl:1-1 Invalid");
}

TEST_F(ValidationRunTest, WithoutWritingTheFindingsAreTheSameAndNothingChanges) {
  store.Folder().Write("a.cbl", "zero\none\n");
  const auto rule = AddRule("a.cbl", 1, 1, "one\n");
  const auto report = Run(kRepair, {rule}, [](ValidationRequest& request) { request.writes = false; });
  EXPECT_EQ(report.message, "\r\nOne segment was validated.");
  EXPECT_EQ(report.findings.at(0).candidates.at(0), (RowRange{2, 2}));
  EXPECT_EQ(Place(rule), "a.cbl:1-1 Potentially invalid");
  EXPECT_THAT(Log(rule), IsEmpty());
}

class EachMethod : public ValidationRunTest, public testing::WithParamInterface<ComparisonMethod> {};

TEST_P(EachMethod, MovesASegment) {
  store.Folder().Write("a.cbl", "zero\none\ntwo\n");
  const auto rule = AddRule("a.cbl", 1, 2, "one\ntwo\n");
  const auto lost = AddRule("a.cbl", 1, 1, "something else\n");
  const auto report = Run(kRepair, {rule, lost}, [](ValidationRequest& request) { request.method = GetParam(); });
  EXPECT_EQ(report.message, "\r\nOne segment was validated.\r\nOne segment was not validated.");
  EXPECT_EQ(Place(rule), "a.cbl:2-3 Valid");
  EXPECT_EQ(Place(lost), "a.cbl:1-1 Invalid");
}

INSTANTIATE_TEST_SUITE_P(Methods, EachMethod,
                         testing::Values(ComparisonMethod::Simple, ComparisonMethod::IgnoreBlankLines,
                                         ComparisonMethod::ApproximateLineComparing,
                                         ComparisonMethod::MultipleMatching));

// Gives the next rules numbers that a signed number of 16 bits cannot hold.
class LargeNumbers : public ValidationRunTest {
 protected:
  LargeNumbers() {
    const auto connection = repository::OpenSqliteConnection(store.StorePath(), repository::Durability::Relaxed);
    connection->Execute("INSERT INTO sqlite_sequence (name, seq) VALUES ('VekRULETbl', 32766)");
    store.Folder().Write("a.cbl", "zero\none\n");
    last = AddRule("a.cbl", 1, 1, "one\n");
    first = AddRule("a.cbl", 1, 1, "one\n");
    behind = AddRule("a.cbl", 1, 1, "one\n");
  }
  std::int32_t last = 0;   // the last number that fits
  std::int32_t first = 0;  // the first that does not
  std::int32_t behind = 0;
};

TEST_F(LargeNumbers, AreTakenWithoutTheSwitch) {
  ASSERT_EQ(last, 32767);
  EXPECT_EQ(Run(kLeave, {last, first, behind}).message, "\r\n3 segments were left invalid.");
  EXPECT_THAT(Log(first), ElementsAre("Validated"));
}

TEST_F(LargeNumbers, EndTheRunWithTheSwitchInEachStepThatLogsBySixteenBits) {
  globals.NarrowLogIds = true;
  const auto element = AddDataElement(first);
  const auto fails = [&](const char* action) {
    EXPECT_THROW(Run(action, {first, behind, last}), platform::Error);
    EXPECT_THAT(Log(first), IsEmpty());
    EXPECT_THAT(Log(behind), IsEmpty());
    EXPECT_EQ(Place(first), "a.cbl:1-1 Potentially invalid");
    EXPECT_FALSE(progress.IsOpen());
  };
  fails(kLeave);
  EXPECT_EQ(Place(last), "a.cbl:1-1 Invalid");
  EXPECT_THAT(Log(last), ElementsAre("Validated"));
  fails(kDelete);
  EXPECT_EQ(Place(last), ":0-0 Valid");
  EXPECT_THROW(store.Repository().object(MakeKey("RULEIO", element)), platform::Error)
      << "the data elements go before the rule is opened";
  store.Folder().Write("a.cbl", "one\n");
  fails(kLeave);  // now each of them is correct
  EXPECT_THAT(Log(last), ElementsAre("Validated", "Validated", "Segment deleted", "Validated"));
}

TEST_F(LargeNumbers, AreTakenByTheResultOfASearchWithTheSwitchToo) {
  globals.NarrowLogIds = true;
  EXPECT_EQ(Run(kRepair, {last, first, behind}).message, "\r\n3 segments were validated.");
  EXPECT_EQ(Place(first), "a.cbl:2-2 Valid");
  store.Put(MakeKey("RULE", first), "FileName", Value("gone.cbl"));
  EXPECT_THROW(Run(kRepair, {first}), platform::Error) << "an unreadable file is logged by sixteen bits";
}

TEST_F(ValidationRunTest, ARuleThatVanishesEndsTheRunAndThoseBeforeItStand) {
  store.Folder().Write("a.cbl", "zero\none\n");
  const auto first = AddRule("a.cbl", 1, 1, "one\n");
  const auto vanishing = AddRule("a.cbl", 1, 1, "one\n");
  const auto last = AddRule("a.cbl", 1, 1, "one\n");
  services.processEvents = [&] {
    services.processEvents = {};
    store.Repository().object(MakeKey("RULE", vanishing))->Delete();
  };
  const auto run = services;
  ValidationRequest request;
  // Packing the IDs turns three of them so that the third is the first to be worked off.
  for (const auto id : {vanishing, last, first}) catalogue::AddKeyed(request.ruleIDs, std::to_string(id));
  request.action = kLeave;
  EXPECT_THROW(ValidateRules(run, request, nullptr), platform::Error);
  EXPECT_EQ(Place(first), "a.cbl:1-1 Invalid");
  EXPECT_THAT(Log(first), ElementsAre("Validated"));
  EXPECT_EQ(Place(last), "a.cbl:1-1 Potentially invalid");
  EXPECT_THAT(Log(last), IsEmpty());
}

// One statement fails and works when it is tried again: nothing is lost and nothing is written twice.
TEST_F(ValidationRunTest, AWriteThatFailsOnceLeavesNoTrace) {
  store.Folder().Write("a.cbl", "zero\none\n");
  for (const char* action : {kLeave, kDelete, kRepair}) {
    bool isThrough = false;
    for (int statement = 1; !isThrough; ++statement) {
      const std::vector<std::int32_t> ids = {AddRule("a.cbl", 1, 1, "one\n"), AddRule("a.cbl", 2, 2, "one\n"),
                                             AddRule("gone.cbl", 1, 1, "one\n")};
      AddDataElement(ids[0]);
      fault->Arm(statement);
      const auto report = Run(action, ids);
      isThrough = fault->seen < statement;
      fault->Arm(0);
      EXPECT_EQ(report.counts.correct, 1);
      for (const auto id : ids) {
        const bool isDeleted = std::string(action) == kDelete && id != ids[1];
        EXPECT_EQ(Log(id).size(), isDeleted ? 2U : 1U) << action << " " << statement;
        EXPECT_EQ(Get(id, "Validated"), "2026-01-31 12:00:00");
      }
      ASSERT_LT(statement, 200);
    }
  }
}

TEST_F(ValidationRunTest, TheBatchTellsWhenTheProjectHasNoRule) {
  std::string message;
  BatchRuleValidation(services, store.ProjectKey(), message);
  EXPECT_EQ(message, "No rules were found.");
}

TEST_F(ValidationRunTest, TheBatchPassesOverRulesThatStandInNoRuleSet) {
  store.Folder().Write("a.cbl", "one\n");
  const auto loose = AddRule("a.cbl", 1, 1, "one\n");
  store.Repository().object(MakeKey("RULESET", set))->UnLink("Has", MakeKey("RULE", loose));
  std::string message;
  BatchRuleValidation(services, store.ProjectKey(), message);
  EXPECT_EQ(message, "No rules were found.");
  EXPECT_EQ(files.reads, 0);
  EXPECT_EQ(Place(loose), "a.cbl:1-1 Potentially invalid");
  EXPECT_THAT(Log(loose), IsEmpty());
}

TEST_F(ValidationRunTest, TheBatchDeletesWithoutAQuestionWhenTheOptionsSaySo) {
  store.Folder().Write("a.cbl", "zero\none\n");
  const auto rule = AddRule("a.cbl", 1, 1, "one\n");
  const auto elsewhere = store.Add("RULESET", "Elsewhere");
  store.Repository().object(MakeKey("RULESET", elsewhere))->Link("BelongsTo", store.OtherProjectKey());
  const auto foreign = store.AddRule(elsewhere, "Foreign", 1);
  auto list = store.FE().ProjectOptions().Document().selectSingleNode("//LIST[@NAME='SegmentValidation']");
  list.setAttribute("VALUE", "delete");
  std::string message;
  BatchRuleValidation(services, store.ProjectKey(), message);
  EXPECT_EQ(message, "\r\nOne segment was deleted.");
  EXPECT_EQ(Place(rule), ":0-0 Valid");
  EXPECT_THAT(Log(foreign), IsEmpty());
}

TEST_F(ValidationRunTest, RunsOfBlanksCountAsOneWhenTheOptionsSaySo) {
  store.Folder().Write("a.cbl", "zero\nmove  a   to b\n");
  const auto rule = AddRule("a.cbl", 1, 1, "move a to b\n");
  EXPECT_EQ(Run(kRepair, {rule}).counts.validated, 0);
  const auto report = Run(kRepair, {rule}, [](ValidationRequest& request) { request.collapseSpaces = true; });
  EXPECT_EQ(report.counts.validated, 1);
  EXPECT_EQ(Get(rule, "SourceText"), "move a to b\n");
}

}  // namespace
}  // namespace qmrules::validation
