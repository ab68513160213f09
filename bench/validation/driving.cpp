#include "validation/driving.h"

#include <fmt/format.h>
#include <xxhash.h>

#include <cstdio>
#include <filesystem>
#include <stdexcept>

#include "catalogue/catalogue.h"
#include "catalogue/gateway.h"
#include "catalogue/rawstore.h"
#include "catalogue/walk.h"
#include "platform/linereader.h"
#include "shell/casefold.h"
#include "shell/casemapping.h"
#include "stopwatch.h"
#include "validation/preparedline.h"
#include "validation/validationoptions.h"
#include "validation/validationrun.h"
#include "validation/validationwriter.h"

namespace qmrules::bench {

namespace {

namespace fs = std::filesystem;

constexpr double kComparingLimit = 3;
constexpr double kMovingLimit = 4;
constexpr double kWritingLimit = 3;

struct Times {
  std::vector<double> ours = {};
  std::vector<double> bare = {};
};

void Print(const char* name, const Times& times, double limit, Bars& bars) {
  const double ours = Median(times.ours);
  const double bare = Median(times.bare);
  fmt::print("{:<22} {:.2f} s, beside {:.2f} s\n", name, ours, bare);
  std::fflush(stdout);
  bars.Add(name, ours / bare, limit);
}

validation::ValidationServices ServicesOf(workbench::EmbeddedHost& host) {
  return {host, host.FileSystem(), BenchClock(), shell::StringTableFor(shell::Language::English), host.Globals(), {}};
}

// Seconds of a run that writes nothing.
double Validate(Workload& workload, const std::vector<std::int32_t>& rules, const char* action) {
  validation::ValidationRequest request;
  for (const std::int32_t rule : rules) catalogue::AddKeyed(request.ruleIDs, std::to_string(rule));
  request.action = action;
  request.writes = false;
  const Stopwatch stopwatch;
  const auto report = validation::ValidateRules(ServicesOf(workload.Host()), request, nullptr);
  const double seconds = stopwatch.Seconds();
  const auto expected = static_cast<std::int32_t>(rules.size());
  const bool isRight =
      action == validation::kRepair ? report.counts.validated == expected : report.counts.correct == expected;
  if (!isRight) throw std::runtime_error("The validation did not find what was made: " + report.message);
  return seconds;
}

// Seconds of reading each file and doing something with its lines.
template <class Take>
double ReadFiles(Workload& workload, const Take& take) {
  auto& files = workload.Host().FileSystem();
  std::uint64_t sum = 0;
  const Stopwatch stopwatch;
  for (const std::string& name : workload.Files()) {
    const std::string text = files.ReadTextFile(workload.Host().PathOf(name));
    for (const std::string_view line : platform::SplitLines(text)) sum += take(line);
  }
  const double seconds = stopwatch.Seconds();
  if (sum == 0) throw std::runtime_error("The files are empty.");
  return seconds;
}

// Trims the line, folds it and gives its hash.
class LineHash {
 public:
  std::uint64_t operator()(std::string_view line) {
    const std::string_view prepared = validation::PrepareLine(line, safe_);
    folded_.resize(prepared.size());
    unsigned char bits = 0;
    for (std::size_t at = 0; at < prepared.size(); ++at) {
      const auto byte = static_cast<unsigned char>(prepared[at]);
      bits = static_cast<unsigned char>(bits | byte);
      folded_[at] = static_cast<char>(shell::FoldAscii(byte));
    }
    if (bits >= 0x80) folded_ = shell::FoldCase(prepared);
    return XXH3_64bits(folded_.data(), folded_.size());
  }

 private:
  std::string safe_;
  std::string folded_;
};

// A copy of the catalogue, gone at the end.
class StoreCopy {
 public:
  StoreCopy(const std::string& path, const char* name) : path_(path + name) {
    Remove();
    fs::copy_file(path, path_);
  }
  StoreCopy(const StoreCopy&) = delete;
  StoreCopy& operator=(const StoreCopy&) = delete;
  ~StoreCopy() { Remove(); }
  const std::string& Path() const { return path_; }

 private:
  void Remove() const {
    for (const char* suffix : {"", "-wal", "-shm"}) fs::remove(path_ + suffix);
  }
  std::string path_;
};

// A front end whose catalogue is another one.
class OtherCatalogue final : public platform::FrontEnd {
 public:
  OtherCatalogue(workbench::EmbeddedHost& host, platform::Repository& repository)
      : host_(host), repository_(repository) {}
  platform::Repository& Repository() override { return repository_; }
  std::unique_ptr<platform::Object> ProjectObject() override { return host_.ProjectObject(); }
  platform::Options& ProjectOptions() override { return host_.ProjectOptions(); }
  platform::Options& GlobalOptions() override { return host_.GlobalOptions(); }
  std::string UserName() const override { return host_.UserName(); }
  std::string GetFerrowoodName(int number) const override { return host_.GetFerrowoodName(number); }
  std::string HelpFile() const override { return {}; }

 private:
  workbench::EmbeddedHost& host_;
  platform::Repository& repository_;
};

// What is written for a rule, the same on both sides.
struct Result {
  std::int32_t rule = 0;
  int fromRow = 0;
  int toRow = 0;
  std::string text;
};

std::vector<Result> MakeResults(const std::vector<std::int32_t>& rules) {
  std::vector<Result> results;
  for (const std::int32_t rule : rules) {
    Result& result = results.emplace_back(Result{rule, rule % 9'000 + 1, rule % 9'000 + 5, {}});
    for (int line = 0; line < 5; ++line) result.text += fmt::format("MOVE WS-FIELD-{} TO WS-TARGET-{}.\n", rule, line);
  }
  return results;
}

double WriteThroughTheWriter(Workload& workload, const std::string& path, const std::vector<Result>& results) {
  const auto repository = OpenRepository(path);
  OtherCatalogue frontEnd(workload.Host(), *repository);
  auto services = ServicesOf(workload.Host());
  const validation::ValidationServices own{frontEnd,       services.fileSystem, services.clock,
                                           services.texts, services.globals,    {}};
  validation::ValidationWriter writer(own);
  const Stopwatch stopwatch;
  const auto command = repository->BeginCommand("validate");
  for (const Result& result : results) {
    writer.WriteValidationResult(result.rule, true, result.fromRow, result.toRow, result.text);
  }
  writer.Finish();
  return stopwatch.Seconds();
}

double WriteByHand(const std::string& path, const std::vector<Result>& results) {
  constexpr std::size_t together = validation::ValidationWriter::kRulesTogether;
  const std::string now = platform::FormatTimestamp(BenchClock().Now());
  RawStore store(path);
  auto rule = store.Prepare(
      "UPDATE VekRULETbl SET FromRow = ?1, ToRow = ?2, SourceText = ?3, Valid = 'Valid', Validated = ?4, "
      "Modified = ?4, ModifiedBy = ?5 WHERE ObjectID = ?6");
  auto sid = store.Prepare("SELECT SID FROM VekRULETbl WHERE ObjectID = ?1");
  auto log = store.Prepare(
      "INSERT INTO VekRULELOGTbl (Name, Created, CreatedBy, Modified, ModifiedBy, \"When\", UserName, Activity, SID) "
      "VALUES (?1, ?2, ?3, ?2, ?3, ?2, ?3, 'Validated', ?4)");
  auto link = store.Prepare("INSERT INTO VekRuleLogLogsRuleTbl (FromID, ToID) VALUES (?1, ?2)");
  const Stopwatch stopwatch;
  for (std::size_t at = 0; at < results.size(); ++at) {
    if (at % together == 0) store.Execute("BEGIN IMMEDIATE");
    const Result& result = results[at];
    rule.Bind(1, result.fromRow);
    rule.Bind(2, result.toRow);
    rule.Bind(3, result.text);
    rule.Bind(4, now);
    rule.Bind(5, kUser);
    rule.Bind(6, result.rule);
    rule.Run();
    sid.Bind(1, result.rule);
    if (!sid.Step()) throw std::runtime_error("A rule is missing.");
    const std::string ofRule = sid.Text(0);
    sid.Run();
    const std::string name = fmt::format("log{}", at);
    log.Bind(1, name);
    log.Bind(2, now);
    log.Bind(3, kUser);
    log.Bind(4, ofRule);
    log.Run();
    link.Bind(1, store.LastID());
    link.Bind(2, result.rule);
    link.Run();
    if (at % together + 1 == together || at + 1 == results.size()) store.Execute("COMMIT");
  }
  return stopwatch.Seconds();
}

// Every rule and log record but for the records' names, which each writer makes for itself.
RowSink SumOf(const std::string& path) {
  RowSink sink(RowSink::Mode::Checking);
  RawStore store(path);
  auto rules = store.Prepare(
      "SELECT ObjectID, FromRow, ToRow, SourceText, Valid, Validated, Modified, ModifiedBy FROM VekRULETbl ORDER BY 1");
  Walk(rules, 8, sink);
  auto logs = store.Prepare(
      "SELECT ObjectID, ToID, Created, CreatedBy, Modified, ModifiedBy, \"When\", UserName, Activity, SID "
      "FROM VekRULELOGTbl, VekRuleLogLogsRuleTbl WHERE FromID = ObjectID ORDER BY 1");
  Walk(logs, 10, sink);
  return sink;
}

}  // namespace

void MeasureComparing(Workload& workload, int rounds, Bars& bars) {
  Times times;
  for (int round = 0; round < rounds; ++round) {
    times.bare.push_back(ReadFiles(workload, [](std::string_view line) { return line.size(); }));
    times.ours.push_back(Validate(workload, workload.Standing(), validation::kLeave));
  }
  Print("comparing", times, kComparingLimit, bars);
}

void MeasureMoving(Workload& workload, int rounds, Bars& bars) {
  Times times;
  LineHash hash;
  for (int round = 0; round < rounds; ++round) {
    times.bare.push_back(ReadFiles(workload, [&hash](std::string_view line) { return hash(line); }));
    times.ours.push_back(Validate(workload, workload.Astray(), validation::kRepair));
  }
  Print("moving", times, kMovingLimit, bars);
}

void MeasureWriting(Workload& workload, int rounds, Bars& bars) {
  const auto results = MakeResults(workload.Astray());
  Times times;
  for (int round = 0; round < rounds; ++round) {
    const StoreCopy ours(workload.StorePath(), "-ours");
    const StoreCopy byHand(workload.StorePath(), "-byhand");
    times.bare.push_back(WriteByHand(byHand.Path(), results));
    times.ours.push_back(WriteThroughTheWriter(workload, ours.Path(), results));
    if (!(SumOf(ours.Path()) == SumOf(byHand.Path()))) {
      throw std::runtime_error("The two sides have written different rows.");
    }
  }
  Print("writing", times, kWritingLimit, bars);
}

}  // namespace qmrules::bench
