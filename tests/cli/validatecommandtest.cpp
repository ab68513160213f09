#include "cli/clifixture.h"

namespace qmrules::test {
namespace {

using nlohmann::json;

// A catalogue with a rule on lines 2 and 3 of a file, which then changes.
class ValidateCommandTest : public CliTest {
 protected:
  ValidateCommandTest() {
    MakeWorkspace();
    folder_.Write("cobol/fee.cbl", kBefore);
    Do({"source", "add", "cobol"});
    Do({"function", "create", "Billing"});
    Do({"ruleset", "create", "Fees", "--function", "Billing"});
    Do({"ruleset", "create", "Taxes", "--function", "Billing"});
    Do({"rule", "create", "Late fee", "--ruleset", "Fees", "--segment", "cobol/fee.cbl:5-6"});
    Do({"rule", "create", "Tax", "--ruleset", "Taxes", "--segment", "cobol/fee.cbl:7-7"});
    Do({"rule", "create", "Unwritten", "--ruleset", "Taxes"});
  }

  static constexpr const char* kBefore =
      "       IDENTIFICATION DIVISION.\n"
      "       PROGRAM-ID. FEE.\n"
      "       PROCEDURE DIVISION.\n"
      "       MAIN.\n"
      "           ADD 1 TO WS-FEE\n"
      "           ADD 2 TO WS-FEE\n"
      "           ADD 3 TO WS-TAX\n"
      "           STOP RUN.\n";
  // The fee has moved down by one and a blank line stands in it; the tax is another one.
  void ChangeFile() {
    folder_.Write("cobol/fee.cbl",
                  "       IDENTIFICATION DIVISION.\n"
                  "       PROGRAM-ID. FEE.\n"
                  "       PROCEDURE DIVISION.\n"
                  "       MAIN.\n"
                  "           MOVE 0 TO WS-FEE\n"
                  "           ADD 1 TO WS-FEE\n"
                  "\n"
                  "           ADD 2 TO WS-FEE\n"
                  "           ADD 4 TO WS-TAX\n"
                  "           STOP RUN.\n");
  }
  json Attributes(const std::string& key) { return DoJson({"show", key})["attributes"]; }
};

TEST_F(ValidateCommandTest, TellsAVerdictForEachRule) {
  EXPECT_EQ(Do({"validate", "--dry-run"}),
            "Verdict     Key     Rule       File           Rows  Place\n"
            "unchanged   RULE#1  Late fee   cobol/fee.cbl  5-6\n"
            "unchanged   RULE#2  Tax        cobol/fee.cbl  7-7\n"
            "no segment  RULE#3  Unwritten\n"
            "3 rules were already correct.\n"
            "One of them has no segment.\n"
            "Nothing was written.\n");
  ChangeFile();
  EXPECT_EQ(Do({"validate", "--dry-run", "--changed", "--action", "valid"}),
            "Verdict    Key     Rule      File           Rows  Place\n"
            "moved      RULE#1  Late fee  cobol/fee.cbl  5-6   now 6-8\n"
            "not found  RULE#2  Tax       cobol/fee.cbl  7-7   near 9, 1 character off\n"
            "One rule was already correct.\n"
            "One of them has no segment.\n"
            "One segment was validated.\n"
            "One segment was not validated.\n"
            "Nothing was written.\n");
}

TEST_F(ValidateCommandTest, MovesASegmentToItsNewPlace) {
  ChangeFile();
  Do({"validate", "--action", "valid"});
  const auto fee = Attributes("RULE#1");
  EXPECT_EQ(fee["FromRow"]["value"], 6);
  EXPECT_EQ(fee["ToRow"]["value"], 8);
  EXPECT_EQ(fee["Valid"]["value"], "Valid");
  EXPECT_EQ(Attributes("RULE#2")["Valid"]["value"], "Invalid");
  const auto log = DoJson({"log", "RULE#1"});
  EXPECT_EQ(log.back()["activity"], "Validated");
  // Its text lost the indentation on the way, which is no change of the program.
  const auto again = Do({"validate", "RULE#1", "--dry-run"});
  EXPECT_NE(again.find("in place  RULE#1"), std::string::npos) << again;
  EXPECT_EQ(Run({"validate", "RULE#1", "--dry-run", "--strict"}).code, 0);
}

TEST_F(ValidateCommandTest, ADryRunWritesNothing) {
  ChangeFile();
  const auto before = Files();
  for (const char* action : {"leave", "delete", "valid"}) Do({"validate", "--dry-run", "--action", action});
  EXPECT_EQ(Files(), before);
}

TEST_F(ValidateCommandTest, GoesByTheOptionOfTheProjectWithoutAnAction) {
  ChangeFile();
  EXPECT_EQ(DoJson({"validate"})["action"], "leave");
  EXPECT_EQ(Attributes("RULE#1")["Valid"]["value"], "Invalid");
  EXPECT_EQ(Attributes("RULE#1")["FromRow"]["value"], 5);
}

TEST_F(ValidateCommandTest, TakesRulesRuleSetsAndFunctions) {
  const auto rulesOf = [&](const std::vector<std::string>& keys) {
    std::vector<std::string> args = {"validate", "--dry-run"};
    args.insert(args.end(), keys.begin(), keys.end());
    std::string rules;
    const auto document = DoJson(args);
    for (const auto& rule : document["rules"]) rules += rule["rule"].get<std::string>() + ";";
    return rules;
  };
  EXPECT_EQ(rulesOf({"RULE#2"}), "Tax;");
  EXPECT_EQ(rulesOf({"Billing/Taxes"}), "Tax;Unwritten;");
  EXPECT_EQ(rulesOf({"Billing/Fees", "RULE#1"}), "Late fee;");
  EXPECT_EQ(rulesOf({"Billing"}), rulesOf({}));
}

TEST_F(ValidateCommandTest, JsonTellsAllCandidatesAndTheNearestPlace) {
  folder_.Write("cobol/fee.cbl",
                "           ADD 1 TO WS-FEE\n"
                "           ADD 2 TO WS-FEE\n"
                "           ADD 1 TO WS-FEE\n"
                "           ADD 2 TO WS-FEE\n"
                "           ADD 4 TO WS-TAX\n");
  const auto document = DoJson({"validate", "--dry-run", "--action", "valid"});
  EXPECT_EQ(document["counts"], json::parse(R"({"rules":3,"correct":1,"noSegment":1,"validated":1,"notValidated":1})"));
  EXPECT_EQ(document["dryRun"], true);
  for (const auto& rule : document["rules"]) {
    if (rule["key"] == "RULE#1") {
      EXPECT_EQ(rule["verdict"], "ambiguous");
      EXPECT_EQ(rule["newRows"], json::parse(R"({"from":3,"to":4})"));
      EXPECT_EQ(rule["candidates"].size(), 2U);
    }
    if (rule["key"] == "RULE#2") {
      EXPECT_EQ(rule["verdict"], "not found");
      EXPECT_EQ(rule["nearest"], json::parse(R"({"from":5,"to":5,"distance":1})"));
    }
  }
}

TEST_F(ValidateCommandTest, StrictEndsWithThreeWhileARuleIsNotValid) {
  EXPECT_EQ(Run({"validate", "--strict"}).code, 0);
  ChangeFile();
  EXPECT_EQ(Run({"validate"}).code, 0);
  EXPECT_EQ(Run({"validate", "--strict"}).code, 3);
  EXPECT_EQ(Run({"validate", "RULE#1", "--strict", "--dry-run", "--action", "valid"}).code, 3);
  EXPECT_EQ(Run({"validate", "RULE#1", "--strict", "--action", "valid"}).code, 0);
  EXPECT_EQ(Run({"validate", "--strict", "--action", "valid"}).code, 3);
  EXPECT_EQ(Run({"validate", "--strict", "--action", "delete"}).code, 0);
}

TEST_F(ValidateCommandTest, WritesTheVerdictsForPipelines) {
  ChangeFile();
  Do({"validate", "--dry-run", "--junit", "rules.xml", "--sarif", "rules.sarif"});
  EXPECT_EQ(folder_.Read("rules.xml"),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<testsuites><testsuite name=\"qmrules validate\" tests=\"3\" failures=\"2\" errors=\"0\" skipped=\"1\">"
            "<testcase classname=\"cobol/fee.cbl\" name=\"RULE#1 Late fee\">"
            "<failure type=\"moved\" message=\"RULE#1 &quot;Late fee&quot;, cobol/fee.cbl:5-6: The text of the rule's "
            "segment stands at other lines of the file. (now 6-8)\"/></testcase>"
            "<testcase classname=\"cobol/fee.cbl\" name=\"RULE#2 Tax\">"
            "<failure type=\"not found\" message=\"RULE#2 &quot;Tax&quot;, cobol/fee.cbl:7: The text of the rule's "
            "segment is no longer in the file. (near 9, 1 character off)\"/></testcase>"
            "<testcase classname=\"\" name=\"RULE#3 Unwritten\"><skipped message=\"The rule has no segment.\"/>"
            "</testcase></testsuite></testsuites>\n");
  const auto sarif = json::parse(folder_.Read("rules.sarif"));
  EXPECT_EQ(sarif["version"], "2.1.0");
  const auto& results = sarif["runs"][0]["results"];
  ASSERT_EQ(results.size(), 2U);
  EXPECT_EQ(results[0]["ruleId"], "segment-moved");
  EXPECT_EQ(results[0]["level"], "warning");
  EXPECT_EQ(results[0]["locations"][0]["physicalLocation"],
            json::parse(R"({"artifactLocation":{"uri":"cobol/fee.cbl"},"region":{"startLine":5,"endLine":6}})"));
  EXPECT_EQ(results[1]["ruleId"], "segment-not-found");
  EXPECT_EQ(results[1]["level"], "error");
}

TEST_F(ValidateCommandTest, AFileThatIsGoneIsNamed) {
  std::filesystem::remove(folder_.File("cobol/fee.cbl"));
  const auto run = Run({"validate", "RULE#1", "--action", "valid"});
  EXPECT_EQ(run.code, 0);
  EXPECT_NE(run.out.find("file missing  RULE#1"), std::string::npos) << run.out;
}

TEST_F(ValidateCommandTest, AnUnknownActionIsWrongUsage) {
  EXPECT_EQ(Run({"validate", "--action", "repair"}).code, 2);
}

}  // namespace
}  // namespace qmrules::test
