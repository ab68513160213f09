#include "validation/workload.h"

#include <fmt/format.h>

#include <cstdio>
#include <filesystem>
#include <random>

#include "catalogue/catalogue.h"
#include "catalogue/gateway.h"
#include "platform/linereader.h"
#include "stopwatch.h"

namespace qmrules::bench {

namespace {

namespace fs = std::filesystem;
using workbench::EmbeddedHost;

constexpr int kShift = 7;  // rows between a rule that is astray and its text
constexpr int kFewestLines = 3;
constexpr int kMostLines = 12;

workbench::HostServices ServicesIn(const std::string& folder) {
  return {.clock = BenchClock(),
          .userName = kUser,
          .settingsPath = folder + "/settings.json",
          .registryPath = folder + "/registry.json",
          .connect = {}};
}

// About half of the lines are distinct; one in ten is blank.
std::string SourceText(int file) {
  std::mt19937_64 random(static_cast<std::uint64_t>(file) + 1);
  std::string text;
  for (int line = 0; line < Workload::kLinesPerFile; ++line) {
    const auto number = random() % 6'300;
    if (number % 10 == 0) {
      text += '\n';
    } else {
      text += fmt::format("{:06}     MOVE WS-FIELD-{} TO WS-TARGET-{}.\n", number * 10, number, number % 97);
    }
  }
  return text;
}

}  // namespace

Workload::Workload(const std::string& folder, int files)
    : folder_(fs::absolute(fmt::format("{}/validation-{}", folder, files)).string()) {
  for (int file = 0; file < files; ++file) files_.push_back(fmt::format("cobol/p{:04}.cbl", file));
  const bool isNew = !fs::exists(folder_ + "/complete");
  if (isNew) {
    fs::remove_all(folder_);
    fs::create_directories(folder_);
    EmbeddedHost::CreateWorkspace({.folder = folder_, .projectName = kProject, .sourceEncoding = ""},
                                  ServicesIn(folder_));
  }
  host_ = std::make_unique<EmbeddedHost>(folder_, ServicesIn(folder_));
  storePath_ = host_->Folder().RepositoryPath();
  if (isNew) {
    const Stopwatch stopwatch;
    MakeSources();
    MakeRules();
    // Closed, the store is in one file, of which copies can be made.
    host_.reset();
    host_ = std::make_unique<EmbeddedHost>(folder_, ServicesIn(folder_));
    host_->FileSystem().WriteFile(folder_ + "/complete", "");
    fmt::print("Generated {} sources and {} rules in {:.1f} s.\n", files, 2 * files * kRulesPerFile,
               stopwatch.Seconds());
    std::fflush(stdout);
  }
  ReadRules();
}

void Workload::MakeSources() {
  auto& disk = host_->FileSystem();
  for (std::size_t file = 0; file < files_.size(); ++file) {
    const std::string path = host_->PathOf(files_[file]);
    if (file == 0) disk.CreateFolder(fs::path(path).parent_path().string());
    disk.WriteFile(path, SourceText(static_cast<int>(file)));
  }
}

void Workload::MakeRules() {
  auto& repository = host_->Repository();
  const auto command = repository.BeginCommand("Generate");
  const auto set = repository.NewObject("RULESET", "Segments");
  for (std::size_t file = 0; file < files_.size(); ++file) {
    const std::string text = SourceText(static_cast<int>(file));
    const auto lines = platform::SplitLines(text);
    std::mt19937_64 random(file);
    const auto transaction = repository.BeginTransaction();
    for (int number = 0; number < 2 * kRulesPerFile; ++number) {
      const int length = kFewestLines + static_cast<int>(random() % (kMostLines - kFewestLines + 1));
      int from = 0;
      // A segment of blank lines alone is nowhere to be found.
      do {
        from = kShift + 1 + static_cast<int>(random() % (kLinesPerFile - kShift - kMostLines));
      } while (lines[static_cast<std::size_t>(from - 1)].empty());
      std::string segment;
      for (int row = from; row < from + length; ++row) {
        segment += lines[static_cast<std::size_t>(row - 1)];
        segment += '\n';
      }
      const bool isAstray = number >= kRulesPerFile;
      const auto rule = repository.NewObject("RULE", fmt::format("{}-{}", file, number));
      rule->Edit();
      rule->Attrs("RuleName", fmt::format("Rule {} of {}", number, files_[file]));
      rule->Attrs("SID", set->Key());
      rule->Attrs("Model", "COBOL");
      rule->Attrs("Program", fmt::format("P{:04}", file));
      rule->Attrs("FileName", files_[file]);
      rule->Attrs("FromRow", isAstray ? from - kShift : from);
      rule->Attrs("ToRow", (isAstray ? from - kShift : from) + length - 1);
      rule->Attrs("SourceText", segment);
      rule->Attrs("Valid", isAstray ? "Potentially invalid" : "Valid");
      rule->Attrs("Validated", BenchClock().Now());
      rule->Post();
      set->Link("Has", rule->Key());
    }
    transaction->Commit();
  }
}

void Workload::ReadRules() {
  const auto fetch = catalogue::NewQuery(host_->Repository());
  fetch->SetRoot(fetch->AddObject(false, catalogue::kRule, ">ID,Valid"));
  for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) {
    const bool isStanding = fetch->Row().Item("Valid").Text() == "Valid";
    (isStanding ? standing_ : astray_).push_back(catalogue::IDField(fetch->Row(), "ID"));
  }
}

}  // namespace qmrules::bench
