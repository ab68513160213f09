#include <sqlite3.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <regex>

#include "cli/clifixture.h"
#include "support/faultyconnection.h"

namespace qmrules::test {
namespace {

namespace fs = std::filesystem;

struct CloseDatabase {
  void operator()(sqlite3* database) const { sqlite3_close(database); }
};

// All rows that a query gives, one line each.
std::vector<std::string> Rows(sqlite3* database, const std::string& query) {
  std::vector<std::string> rows;
  const auto take = [](void* into, int count, char** cells, char**) {
    std::string row;
    for (int cell = 0; cell < count; ++cell) row += (cells[cell] == nullptr ? "NULL" : cells[cell]) + std::string("|");
    static_cast<std::vector<std::string>*>(into)->push_back(row);
    return 0;
  };
  EXPECT_EQ(sqlite3_exec(database, query.c_str(), take, &rows, nullptr), SQLITE_OK) << sqlite3_errmsg(database);
  return rows;
}

// The whole content of a catalogue, which has to be undamaged.
std::map<std::string, std::vector<std::string>> Dump(const std::string& path) {
  sqlite3* opened = nullptr;
  EXPECT_EQ(sqlite3_open(path.c_str(), &opened), SQLITE_OK);
  const std::unique_ptr<sqlite3, CloseDatabase> database(opened);
  EXPECT_EQ(Rows(opened, "PRAGMA integrity_check"), std::vector<std::string>{"ok|"});
  std::map<std::string, std::vector<std::string>> content;
  for (const auto& name : Rows(opened, "SELECT name FROM sqlite_master WHERE type = 'table'")) {
    const std::string table = name.substr(0, name.size() - 1);
    content[table] = Rows(opened, "SELECT * FROM \"" + table + "\"");
    std::ranges::sort(content[table]);
  }
  return content;
}

using Content = std::map<std::string, std::vector<std::string>>;

// The names of objects without one of their own differ from run to run.
Content WithoutUniqueNames(Content content) {
  static const std::regex uniqueName("n[0-9]+\\.[0-9]{12}\\.[0-9]+");
  for (auto& [table, rows] : content) {
    for (auto& row : rows) row = std::regex_replace(row, uniqueName, "n");
    std::ranges::sort(rows);
  }
  return content;
}

// The commands of a first session, each failing once at each of its writes.
class FaultAtEveryWrite : public CliTest {
 protected:
  FaultAtEveryWrite() {
    const auto plain = connect_;
    connect_ = [plain, fault = fault_](const std::string& path) { return MakeFaulty(plain(path), fault); };
  }

  // Makes a workspace in a folder of this name, which becomes the current one.
  void MakeWorkspaceIn(const std::string& name) {
    for (const std::string program : {"ONE", "TWO"}) {
      folder_.Write(name + "/cobol/" + program + ".cbl",
                    "       PROGRAM-ID. " + program + ".\n       PROCEDURE DIVISION.\n           STOP RUN.\n");
    }
    currentFolder_ = folder_.File(name);
    Do({"init", "--project", "Demo"});
  }

  Content StoreContent() const { return Dump(currentFolder_ + "/.qmrules/repository.db"); }

  // All files besides the catalogue, whose bytes may differ though its rows do not.
  std::map<std::string, std::string> OtherFiles() const {
    auto files = Files();
    std::erase_if(files, [](const auto& file) { return file.first.ends_with("repository.db"); });
    return files;
  }

  // Lets the command fail at its first write, its second and so on, until it has no further one and is done. Gives the
  // number of failures.
  int RunWithFaults(const std::vector<std::string>& command) {
    for (int at = 1;; ++at) {
      const auto content = StoreContent();
      const auto files = OtherFiles();
      fault_->Arm(at);
      const auto run = Run(command);
      const bool failed = fault_->seen >= at;
      fault_->Arm(0);
      if (!failed) {
        EXPECT_EQ(run.code, 0) << command[0] << ": " << run.err;
        return at - 1;
      }
      EXPECT_EQ(run.code, 1) << command[0] << " at write " << at;
      EXPECT_EQ(run.out, "") << command[0] << " at write " << at;
      EXPECT_TRUE(run.err.starts_with("qmrules: ")) << run.err;
      EXPECT_EQ(StoreContent(), content) << command[0] << " at write " << at;
      EXPECT_EQ(OtherFiles(), files) << command[0] << " at write " << at;
      if (HasFailure()) return at;
    }
  }

  std::shared_ptr<Fault> fault_ = std::make_shared<Fault>();
};

TEST_F(FaultAtEveryWrite, LeavesEachCommandDoneOrUndone) {
  const std::vector<std::vector<std::string>> commands{
      {"source", "add", "cobol"},
      {"function", "create", "Billing", "--description", "All of it"},
      {"ruleset", "create", "Late fees", "--function", "Billing"},
      {"ruleset", "create", "Lapse", "--function", "Billing"},
      {"ruleset", "create", "Dunning", "--function", "Billing", "--after", "Late fees"},
      {"rule", "create", "Fee", "--ruleset", "Lapse", "--segment", "cobol/ONE.cbl:2-3"},
      {"rule", "create", "Grace period", "--ruleset", "Lapse"},
      {"rule", "create", "Between", "--ruleset", "Lapse", "--after", "Fee"},
      {"set", "RULE#1", "Description=New", "AssignedTo=miller", "Name=Late fee"},
      {"set", "Billing/Lapse", "Name=Lapse and more"},
      {"move", "down", "RULE#1"},
      {"move", "up", "Billing/Dunning"},
      {"project", "create", "Claims"},
      {"function", "create", "Claims"},
      {"project", "use", "Demo"},
  };
  std::vector<Content> contentAfter;
  MakeWorkspaceIn("faultless");
  for (const auto& command : commands) {
    Do(command);
    contentAfter.push_back(WithoutUniqueNames(StoreContent()));
  }

  MakeWorkspaceIn("faulty");
  int failures = 0;
  for (std::size_t at = 0; at < commands.size(); ++at) {
    const int ofThis = RunWithFaults(commands[at]);
    EXPECT_GT(ofThis, 0) << commands[at][0];
    EXPECT_EQ(WithoutUniqueNames(StoreContent()), contentAfter[at]) << commands[at][0];
    failures += ofThis;
    ASSERT_FALSE(HasFailure());
  }
  EXPECT_GT(failures, 200);
}

TEST_F(FaultAtEveryWrite, LeavesTheSweepDoneOrUndone) {
  MakeWorkspaceIn("faulty");
  Do({"source", "add", "cobol"});
  Do({"function", "create", "Billing"});
  Do({"ruleset", "create", "Lapse", "--function", "Billing"});
  for (const std::string row : {"1", "2", "3"}) {
    Do({"rule", "create", "Rule " + row, "--ruleset", "Lapse", "--segment", "cobol/ONE.cbl:" + row});
  }
  fs::remove(folder_.File("faulty/cobol/ONE.cbl"));
  EXPECT_GT(RunWithFaults({"sweep"}), 6);
  EXPECT_EQ(DoJson({"fetch", "--node", "RULE;ID;Valid=Invalid"}).size(), 3U);
}

}  // namespace
}  // namespace qmrules::test
