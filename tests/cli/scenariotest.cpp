#include <gtest/gtest.h>

#include <sys/wait.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>

#include "support/temporaryfolder.h"

// The installed program on a copy of the demo workspace, as a user runs it: from a shell, by its name.
namespace qmrules::test {
namespace {

namespace fs = std::filesystem;

class DemoScenario : public ::testing::Test {
 protected:
  DemoScenario() {
    const std::string install = std::string("'") + QMRULES_CMAKE + "' --install '" + QMRULES_BUILD +
                                "' --component cli --prefix '" + folder_.File("installed") + "' > '" +
                                folder_.File("install.log") + "' 2>&1";
    EXPECT_EQ(std::system(install.c_str()), 0) << ReadBytes(folder_.File("install.log"));
    fs::copy(QMRULES_SAMPLES, folder_.File("demo"), fs::copy_options::recursive);
  }

  // What the command line prints; it has to end with the exit code.
  std::string Shell(const std::string& line, int code = 0) {
    const std::string script = folder_.Write(
        "line.sh", "cd '" + folder_.File("demo") + "' && export LC_ALL=C.UTF-8 HOME='" + folder_.File("home") +
                       "' PATH='" + folder_.File("installed/bin") + "':\"$PATH\"\n" + line + "\n");
    std::FILE* const pipe = ::popen(("sh '" + script + "' 2>&1").c_str(), "r");
    std::string printed;
    std::array<char, 4096> part{};
    while (std::fgets(part.data(), part.size(), pipe) != nullptr) printed += part.data();
    const int status = ::pclose(pipe);
    EXPECT_EQ(WIFEXITED(status) ? WEXITSTATUS(status) : -1, code) << line << "\n" << printed;
    return printed;
  }
  nlohmann::json ShellJson(const std::string& line) { return nlohmann::json::parse(Shell(line + " --json")); }

  TemporaryFolder folder_;
};

TEST_F(DemoScenario, AnAnalystCataloguesTheBillingProgram) {
  EXPECT_EQ(Shell("qmrules init --project 'Policy Billing'"), fs::canonical(folder_.File("demo")).string() + "\n");
  EXPECT_EQ(ShellJson("qmrules source add policybilling").size(), 11U);
  EXPECT_EQ(Shell("qmrules function create Billing --description 'From invoice to lapse'"), "BUSINESSFUNC#1\n");
  EXPECT_EQ(Shell("qmrules ruleset create 'Grace and lapse' --function Billing"), "RULESET#1\n");
  EXPECT_EQ(Shell("qmrules ruleset create 'Late fees' --function Billing"), "RULESET#2\n");
  EXPECT_EQ(Shell("qmrules rule create 'Grace period' --ruleset 'Grace and lapse' "
                  "--segment policybilling/cobol/pbbill01.cbl:437-460"),
            "RULE#1\n");
  EXPECT_EQ(Shell("cd policybilling/cobol && qmrules rule create 'Late fee' --ruleset 'Late fees' "
                  "--segment pbfee01.cbl:60-80"),
            "RULE#2\n");
  EXPECT_EQ(Shell("qmrules list"),
            "Billing               BUSINESSFUNC#1\n"
            "  1. Grace and lapse  RULESET#1\n"
            "    1. Grace period   RULE#1\n"
            "  2. Late fees        RULESET#2\n"
            "    1. Late fee       RULE#2\n");

  const auto rule = ShellJson("qmrules show 'Billing/Grace and lapse/Grace period'");
  EXPECT_TRUE(rule["sourceText"].get<std::string>().starts_with("       3600-GRACE-PERIOD.\n"));
  EXPECT_EQ(rule["attributes"]["Program"]["value"], "PBBILL01");
  EXPECT_EQ(rule["attributes"]["Valid"]["value"], "Valid");

  Shell("qmrules set RULE#1 'Business Description=A policy lapses when the grace days are over'");
  EXPECT_EQ(ShellJson("qmrules log RULE#1")[1]["activity"],
            "Business Description changed to A policy lapses when the grace days are over");
  EXPECT_EQ(Shell("qmrules move up 'Billing/Late fees'"), "RULESET#2 SeqNo = 1\n");
}

TEST_F(DemoScenario, TheSweepFindsAChangedAndAMissingSource) {
  Shell(
      "qmrules init --project Demo && qmrules source add policybilling && qmrules function create Billing && "
      "qmrules ruleset create Fees --function Billing");
  for (const std::string file : {"pbbill01", "pbfee01", "pbtax01"}) {
    Shell("qmrules rule create " + file + " --ruleset Fees --segment policybilling/cobol/" + file + ".cbl:10-20");
  }
  fs::last_write_time(folder_.File("demo/policybilling/cobol/pbbill01.cbl"),
                      fs::file_time_type::clock::now() + std::chrono::hours(1));
  fs::remove(folder_.File("demo/policybilling/cobol/pbfee01.cbl"));
  EXPECT_EQ(ShellJson("qmrules sweep"), nlohmann::json::parse(R"({"looked":3,"invalid":1,"potentiallyInvalid":1})"));
  EXPECT_EQ(ShellJson("qmrules fetch --node 'RULE;RuleName,Valid;~Valid=Valid'"),
            nlohmann::json::parse(R"([{"RuleName":"pbbill01","Valid":"Potentially invalid"},
                                      {"RuleName":"pbfee01","Valid":"Invalid"}])"));
}

TEST_F(DemoScenario, RefusalsHaveTheirExitCodes) {
  Shell("qmrules list", 1);
  Shell("qmrules init --project Demo");
  Shell("qmrules show RULE#1", 1);
  Shell("qmrules nothing", 2);
  EXPECT_EQ(Shell("qmrules list > /dev/full", 0), "");
  Shell("qmrules man > /dev/full", 1);
}

TEST_F(DemoScenario, TheExitCodeOfAFullDiskIsAFailure) {
  EXPECT_EQ(Shell("qmrules man > /dev/full", 1), "qmrules: The output cannot be written.\n");
}

}  // namespace
}  // namespace qmrules::test
