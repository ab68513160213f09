#pragma once

#include <gtest/gtest.h>

#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/environment.h"
#include "platform/clock.h"
#include "support/temporaryfolder.h"

namespace qmrules::test {

struct CliRun {
  int code = 0;
  std::string out;
  std::string err;
  friend bool operator==(const CliRun&, const CliRun&) = default;
};

void PrintTo(const CliRun& run, std::ostream* out);

// Runs the program in process, as the user "analyst" at 2026-01-31 12:00:00, in a temporary folder.
class CliTest : public ::testing::Test {
 protected:
  CliTest();

  // Runs it in the current folder, which is at first the temporary one.
  CliRun Run(const std::vector<std::string>& args);
  // The same for a command that has to be done: gives what it printed.
  std::string Do(const std::vector<std::string>& args);
  // The same with --json.
  nlohmann::json DoJson(std::vector<std::string> args);

  // Makes the workspace "Demo" in the temporary folder.
  void MakeWorkspace();
  // The same with functions, rule sets and rules:
  //   Billing  BUSINESSFUNC#1
  //     1. Late fees  RULESET#1 with 1. Grace period RULE#1, 2. Fee RULE#2
  //     2. Lapse      RULESET#2
  //   Claims   BUSINESSFUNC#2
  void MakeCatalogue();

  std::string Root() const { return folder_.Path().string(); }
  // Every file of the workspace with its bytes; not those by which SQLite shares an open database.
  std::map<std::string, std::string> Files() const;

  TemporaryFolder folder_;
  platform::FixedClock clock_;
  std::string currentFolder_;
  std::map<std::string, std::string> variables_;
  workbench::repository::ConnectionFactory connect_;
  bool outIsTerminal_ = false;
  bool errIsTerminal_ = false;
  bool isInterrupted_ = false;  // the user has asked to stop
  std::string programFolder_;
  std::vector<std::string> started_;  // the program that was run, and its arguments
};

}  // namespace qmrules::test
