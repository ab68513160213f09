#include "cli/clifixture.h"

#include <filesystem>
#include <memory>
#include <ostream>
#include <sstream>

#include "cli/cli.h"
#include "workbench/repository/sqliteconnection.h"

namespace qmrules::test {

namespace {

namespace fs = std::filesystem;

bool IsSharedDatabaseState(const fs::path& path) {
  return path.string().ends_with("-wal") || path.string().ends_with("-shm");
}

// The exit code of a program that is run.
constexpr int kStartedEnds = 7;

class KnownInterrupt final : public cli::InterruptWatch {
 public:
  explicit KnownInterrupt(bool isInterrupted) : isInterrupted_(isInterrupted) {}
  bool Interrupted() override { return isInterrupted_; }

 private:
  bool isInterrupted_;
};

}  // namespace

void PrintTo(const CliRun& run, std::ostream* out) {
  *out << "exit code " << run.code << "\nout: " << run.out << "\nerr: " << run.err;
}

CliTest::CliTest() : clock_(*platform::ParseTimestamp("2026-01-31 12:00:00")), currentFolder_(Root()) {
  connect_ = [](const std::string& path) {
    return workbench::repository::OpenSqliteConnection(path, workbench::repository::Durability::Relaxed);
  };
}

CliRun CliTest::Run(const std::vector<std::string>& args) {
  std::ostringstream out;
  std::ostringstream err;
  cli::CliEnvironment environment{
      .out = out,
      .err = err,
      .clock = clock_,
      .currentFolder = currentFolder_,
      .variables = variables_,
      .userName = "analyst",
      .settingsPath = folder_.File("home/settings.json"),
      .registryPath = folder_.File("home/registry.json"),
      .connect = connect_,
      .outIsTerminal = outIsTerminal_,
      .errIsTerminal = errIsTerminal_,
      .programFolder = programFolder_,
      .runProgram =
          [this](const std::string& path, const std::vector<std::string>& arguments) {
            started_ = arguments;
            started_.insert(started_.begin(), path);
            return kStartedEnds;
          },
      .watchInterrupts = [this] { return std::make_unique<KnownInterrupt>(isInterrupted_); }};
  const int code = cli::RunCli(args, environment);
  return {code, out.str(), err.str()};
}

std::string CliTest::Do(const std::vector<std::string>& args) {
  const auto run = Run(args);
  EXPECT_EQ(run.code, cli::kDone) << run.err;
  EXPECT_EQ(run.err, "");
  return run.out;
}

nlohmann::json CliTest::DoJson(std::vector<std::string> args) {
  args.emplace_back("--json");
  const std::string text = Do(args);
  EXPECT_TRUE(text.ends_with('\n'));
  return nlohmann::json::parse(text);
}

void CliTest::MakeWorkspace() {
  EXPECT_EQ(Do({"init", "--project", "Demo"}), Root() + "\n");
}

void CliTest::MakeCatalogue() {
  MakeWorkspace();
  EXPECT_EQ(Do({"function", "create", "Billing"}), "BUSINESSFUNC#1\n");
  EXPECT_EQ(Do({"function", "create", "Claims"}), "BUSINESSFUNC#2\n");
  EXPECT_EQ(Do({"ruleset", "create", "Late fees", "--function", "Billing"}), "RULESET#1\n");
  EXPECT_EQ(Do({"ruleset", "create", "Lapse", "--function", "Billing"}), "RULESET#2\n");
  EXPECT_EQ(Do({"rule", "create", "Grace period", "--ruleset", "Late fees"}), "RULE#1\n");
  EXPECT_EQ(Do({"rule", "create", "Fee", "--ruleset", "Late fees"}), "RULE#2\n");
}

std::map<std::string, std::string> CliTest::Files() const {
  std::map<std::string, std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(folder_.Path())) {
    const std::string name = entry.path().lexically_relative(folder_.Path()).string();
    if (entry.is_directory()) {
      files[name + "/"] = "";
    } else if (!IsSharedDatabaseState(entry.path())) {
      files[name] = ReadBytes(entry.path().string());
    }
  }
  return files;
}

}  // namespace qmrules::test
