#include "shell/validitysweep.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "catalogue/gateway.h"
#include "platform/error.h"
#include "platform/memoryfilesystem.h"
#include "platform/recordingprogress.h"
#include "support/teststore.h"
#include "workbench/repository/sqliteconnection.h"

namespace qmrules::shell {
namespace {

using platform::Timestamp;

// Counts how often the date of each file is asked for.
class CountingFiles final : public platform::FileSystem {
 public:
  explicit CountingFiles(const platform::FileSystem& files) : files_(files) {}
  bool Exists(std::string_view path) const override { return files_.Exists(path); }
  bool IsFolder(std::string_view path) const override { return files_.IsFolder(path); }
  std::uint64_t FileSize(std::string_view path) const override { return files_.FileSize(path); }
  Timestamp DateLastModified(std::string_view path) const override {
    ++asked[std::string(path)];
    return files_.DateLastModified(path);
  }
  std::string ReadFile(std::string_view path) const override { return files_.ReadFile(path); }
  void WriteFile(std::string_view path, std::string_view) override {
    throw platform::Error(std::string(path) + " is not to be written.");
  }
  std::vector<platform::FolderEntry> ListFolder(std::string_view path) const override {
    return files_.ListFolder(path);
  }
  void CreateFolder(std::string_view path) override {
    throw platform::Error(std::string(path) + " is not to be made.");
  }
  const std::string& SourceEncoding() const override { return files_.SourceEncoding(); }

  mutable std::map<std::string, int> asked;

 private:
  const platform::FileSystem& files_;
};

class ValiditySweep : public testing::Test {
 protected:
  static constexpr Timestamp kFileDate{1000000};

  ValiditySweep() {
    files.CreateFolder("/src");
    WriteSource("FEE.cbl");
  }

  void WriteSource(const std::string& name) {
    files.WriteFile("/src/" + name, "x\n");
    files.SetDateLastModified("/src/" + name, kFileDate);
  }

  std::int32_t Rule(const std::string& fileName, const platform::Value& validated, const std::string& valid = "Valid") {
    return store.Add("RULE", "rule" + std::to_string(++rules_),
                     {{"FileName", fileName}, {"Validated", validated}, {"Valid", valid}});
  }

  std::string ValidityOf(std::int32_t rule) { return store.Get(catalogue::MakeKey("RULE", rule), "Valid").Text(); }

  // The objects of all entries of the change journal, oldest first.
  std::vector<std::string> JournaledObjects() {
    const auto connection =
        workbench::repository::OpenSqliteConnection(store.StorePath(), workbench::repository::Durability::Relaxed);
    const auto entries = connection->Prepare("SELECT Object FROM VekJournalTbl ORDER BY EntryID");
    std::vector<std::string> objects;
    while (entries->Step()) objects.emplace_back(entries->Text(0));
    return objects;
  }

  SweepCounts Sweep() { return RunValiditySweep(store.Repository(), files, "/src", progress); }

  test::TestStore store;
  platform::MemoryFileSystem files{store.Clock()};
  platform::SilentProgress progress;

 private:
  int rules_ = 0;
};

TEST_F(ValiditySweep, AChangedFileDemotesToPotentiallyInvalid) {
  const auto rule = Rule("FEE.cbl", Timestamp{kFileDate.seconds - 1});
  EXPECT_EQ(Sweep(), (SweepCounts{1, 0, 1}));
  EXPECT_EQ(ValidityOf(rule), "Potentially invalid");
}

TEST_F(ValiditySweep, ARuleValidatedInTheSameSecondStaysValid) {
  const auto rule = Rule("FEE.cbl", kFileDate);
  EXPECT_EQ(Sweep(), (SweepCounts{1, 0, 0}));
  EXPECT_EQ(ValidityOf(rule), "Valid");
}

TEST_F(ValiditySweep, ARuleValidatedLaterStaysValid) {
  const auto rule = Rule("FEE.cbl", Timestamp{kFileDate.seconds + 1});
  Sweep();
  EXPECT_EQ(ValidityOf(rule), "Valid");
}

TEST_F(ValiditySweep, ARuleThatWasNeverValidatedIsPotentiallyInvalid) {
  const auto rule = Rule("FEE.cbl", {});
  Sweep();
  EXPECT_EQ(ValidityOf(rule), "Potentially invalid");
}

TEST_F(ValiditySweep, AMissingFileDemotesToInvalid) {
  const auto rule = Rule("GONE.cbl", kFileDate);
  EXPECT_EQ(Sweep(), (SweepCounts{1, 1, 0}));
  EXPECT_EQ(ValidityOf(rule), "Invalid");
}

TEST_F(ValiditySweep, ARuleWithoutAFileIsNotTouched) {
  const auto rule = Rule("", {});
  EXPECT_EQ(Sweep(), SweepCounts());
  EXPECT_EQ(ValidityOf(rule), "Valid");
}

TEST_F(ValiditySweep, RulesThatAreNotValidAreLeftAsTheyAre) {
  const auto invalid = Rule("FEE.cbl", Timestamp{0}, "Invalid");
  const auto potentially = Rule("GONE.cbl", Timestamp{0}, "Potentially invalid");
  EXPECT_EQ(Sweep(), SweepCounts());
  EXPECT_EQ(ValidityOf(invalid), "Invalid");
  EXPECT_EQ(ValidityOf(potentially), "Potentially invalid");
}

TEST_F(ValiditySweep, AFolderIsNoFile) {
  files.CreateFolder("/src/copy");
  const auto rule = Rule("copy", kFileDate);
  Sweep();
  EXPECT_EQ(ValidityOf(rule), "Invalid");
}

TEST_F(ValiditySweep, AFileNameThatLeadsOutOfTheSourcesCountsAsMissing) {
  files.WriteFile("/secret.txt", "x");
  const auto up = Rule("../secret.txt", kFileDate);
  const auto absolute = Rule("/secret.txt", kFileDate);
  const auto good = Rule("FEE.cbl", kFileDate);
  EXPECT_EQ(Sweep(), (SweepCounts{3, 2, 0}));
  EXPECT_EQ(ValidityOf(up), "Invalid");
  EXPECT_EQ(ValidityOf(absolute), "Invalid");
  EXPECT_EQ(ValidityOf(good), "Valid");
}

TEST_F(ValiditySweep, FileNamesOfOtherCaseAreOtherFiles) {
  const auto upper = Rule("FEE.cbl", kFileDate);
  const auto lower = Rule("fee.cbl", kFileDate);
  const auto upperAgain = Rule("FEE.cbl", kFileDate);
  Sweep();
  EXPECT_EQ(ValidityOf(upper), "Valid");
  EXPECT_EQ(ValidityOf(lower), "Invalid");
  EXPECT_EQ(ValidityOf(upperAgain), "Valid");
}

TEST_F(ValiditySweep, EitherSlashLeadsToTheFile) {
  files.CreateFolder("/src/cobol");
  WriteSource("cobol/TAX.cbl");
  const auto one = Rule("cobol\\TAX.cbl", kFileDate);
  const auto other = Rule("cobol/TAX.cbl", kFileDate);
  Sweep();
  EXPECT_EQ(ValidityOf(one), "Valid");
  EXPECT_EQ(ValidityOf(other), "Valid");
}

TEST_F(ValiditySweep, RulesOfEveryProjectAreLookedAt) {
  const auto foreign = store.Add("RULESET", "Abroad");
  store.Repository().object(catalogue::MakeKey("RULESET", foreign))->Link("BelongsTo", store.OtherProjectKey());
  const auto rule = Rule("GONE.cbl", kFileDate);
  store.Repository().object(catalogue::MakeKey("RULESET", foreign))->Link("Has", catalogue::MakeKey("RULE", rule));
  Sweep();
  EXPECT_EQ(ValidityOf(rule), "Invalid");
}

TEST_F(ValiditySweep, ASecondRunFindsNothingMore) {
  Rule("GONE.cbl", kFileDate);
  Rule("FEE.cbl", Timestamp{0});
  Sweep();
  EXPECT_EQ(Sweep(), SweepCounts());
}

TEST_F(ValiditySweep, NothingIsLogged) {
  Rule("GONE.cbl", kFileDate);
  Sweep();
  EXPECT_EQ(store.Repository().CountObjects("RULELOG", {}), 0);
}

TEST_F(ValiditySweep, EachFileIsLookedUpOnceForManyRules) {
  constexpr int kFiles = 20;
  constexpr int kRules = 5000;
  for (int file = 0; file < kFiles; ++file) WriteSource("P" + std::to_string(file) + ".cbl");
  {
    const auto transaction = store.Repository().BeginTransaction();
    for (int rule = 0; rule < kRules; ++rule) {
      Rule("P" + std::to_string(rule % kFiles) + ".cbl", Timestamp{kFileDate.seconds - rule % 2});
    }
    transaction->Commit();
  }
  const CountingFiles counting(files);
  EXPECT_EQ(RunValiditySweep(store.Repository(), counting, "/src", progress), (SweepCounts{kRules, 0, kRules / 2}));
  EXPECT_EQ(counting.asked.size(), static_cast<std::size_t>(kFiles));
  for (const auto& [path, times] : counting.asked) EXPECT_EQ(times, 1) << path;
  EXPECT_EQ(store.Repository().CountObjects("RULE", std::string("Valid=Potentially invalid")), kRules / 2);
}

TEST_F(ValiditySweep, LetsTheHostPaint) {
  constexpr int kRules = 1000;
  {
    const auto transaction = store.Repository().BeginTransaction();
    for (int rule = 0; rule < kRules; ++rule) Rule("FEE.cbl", {});
    transaction->Commit();
  }
  platform::RecordingProgress host;
  EXPECT_EQ(RunValiditySweep(store.Repository(), files, "/src", host), (SweepCounts{kRules, 0, kRules}));
  EXPECT_GE(host.Asked(), 2 * (kRules / 100));  // in the walk, and in the writes
  EXPECT_TRUE(host.Entries().empty());
}

// The file's name tells the order, in any case, and within a file the rules' numbers.
TEST_F(ValiditySweep, RulesAreDemotedFileByFile) {
  const auto late = Rule("TAX.cbl", {});
  const auto gone = Rule("Gone.cbl", {});
  const auto early = Rule("tax.cbl", {});
  const auto fee = Rule("FEE.cbl", {});
  const auto again = Rule("gone.CBL", {});
  const auto written = JournaledObjects().size();
  Sweep();
  auto demoted = JournaledObjects();
  demoted.erase(demoted.begin(), demoted.begin() + static_cast<std::ptrdiff_t>(written));
  std::vector<std::string> expected;
  for (const auto rule : {fee, gone, again, late, early}) expected.push_back(catalogue::MakeKey("RULE", rule));
  EXPECT_EQ(demoted, expected);
}

}  // namespace
}  // namespace qmrules::shell
