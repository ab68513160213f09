#include "cli/clifixture.h"

namespace qmrules::test {

using nlohmann::json;

namespace {

class FunctionCreate : public CliTest {
 protected:
  FunctionCreate() { MakeWorkspace(); }
  std::string Description(const std::string& key) {
    return DoJson({"show", key})["attributes"]["Description"]["value"].get<std::string>();
  }
};

TEST_F(FunctionCreate, PrintsTheKeyAndStoresTheDescription) {
  EXPECT_EQ(Do({"function", "create", "Billing", "--description", "All of it"}), "BUSINESSFUNC#1\n");
  EXPECT_EQ(Description("Billing"), "All of it");
}

TEST_F(FunctionCreate, PrintsTheKeyAsJson) {
  EXPECT_EQ(DoJson({"function", "create", "Billing"}), json::parse(R"({"key":"BUSINESSFUNC#1"})"));
  EXPECT_EQ(DoJson({"ruleset", "create", "Fees", "--function", "Billing"}), json::parse(R"({"key":"RULESET#1"})"));
  EXPECT_EQ(DoJson({"rule", "create", "Fee", "--ruleset", "Fees"}), json::parse(R"({"key":"RULE#1"})"));
}

TEST_F(FunctionCreate, TextsMayBeEmptyBeginWithADashOrLookLikeAList) {
  Do({"function", "create", "A", "--description", ""});
  Do({"function", "create", "B", "--description", "-5 %"});
  Do({"function", "create", "--description=[a,b]", "--", "--C"});
  EXPECT_EQ(Description("A"), "");
  EXPECT_EQ(Description("B"), "-5 %");
  EXPECT_EQ(Description("BUSINESSFUNC#3"), "[a,b]");
  EXPECT_TRUE(Do({"list"}).starts_with("--C  BUSINESSFUNC#3\n"));
}

TEST_F(FunctionCreate, RefusesATakenName) {
  Do({"function", "create", "Billing"});
  const auto before = Files();
  EXPECT_EQ(Run({"function", "create", "Billing"}),
            (CliRun{1, "", "qmrules: Cannot create business function.\nProbably it already exists.\n"}));
  EXPECT_EQ(Files(), before);
}

TEST_F(FunctionCreate, RefusesANameOfBlanks) {
  EXPECT_EQ(Run({"function", "create", "  "}), (CliRun{1, "", "qmrules: Please, enter business function name.\n"}));
}

TEST_F(FunctionCreate, TheDefaultFunctionGetsItsDescriptionFromTheOptions) {
  EXPECT_EQ(Do({"function", "create", "Unassigned Business Function"}), "BUSINESSFUNC#1\n");
  EXPECT_EQ(Description("BUSINESSFUNC#1"), "Holds rule sets that belong to no other business function.");
}

TEST_F(FunctionCreate, TheDefaultFunctionThatStandsIsTakenAsItIs) {
  Do({"function", "create", "Unassigned Business Function", "--description", "Ours"});
  EXPECT_EQ(
      Run({"function", "create", "Unassigned Business Function"}),
      (CliRun{0, "BUSINESSFUNC#1\n", "qmrules: Unassigned Business Function business function already exists.\n"}));
  EXPECT_EQ(Description("BUSINESSFUNC#1"), "Ours");
}

TEST_F(FunctionCreate, IsOneCommandOfTheJournalUnderItsOwnWords) {
  Do({"function", "create", "Billing"});
  EXPECT_NE(ReadBytes(folder_.File(".qmrules/repository.db")).find("function create"), std::string::npos);
}

class RuleSetCreate : public CliTest {
 protected:
  RuleSetCreate() { MakeCatalogue(); }
};

TEST_F(RuleSetCreate, GoesToTheEndOrBehindAnotherOne) {
  EXPECT_EQ(Do({"ruleset", "create", "Dunning", "--function", "Billing", "--after", "Late fees"}), "RULESET#3\n");
  const auto sets = DoJson({"list"})["functions"][0]["ruleSets"];
  ASSERT_EQ(sets.size(), 3U);
  EXPECT_EQ(sets[0]["name"], "Late fees");
  EXPECT_EQ(sets[1]["name"], "Dunning");
  EXPECT_EQ(sets[1]["seqNo"], 2);
  EXPECT_EQ(sets[2]["name"], "Lapse");
  EXPECT_EQ(sets[2]["seqNo"], 3);
}

TEST_F(RuleSetCreate, RefusesANameOfTheProject) {
  const auto before = Files();
  EXPECT_EQ(Run({"ruleset", "create", "Lapse", "--function", "Claims", "--description", "Another"}),
            (CliRun{1, "", "qmrules: Lapse rule set already exists.\n"}));
  EXPECT_EQ(Files(), before);
}

TEST_F(RuleSetCreate, RefusesANameOfAnotherProject) {
  Do({"project", "create", "Other"});
  Do({"function", "create", "Elsewhere"});
  EXPECT_EQ(Run({"ruleset", "create", "Lapse", "--function", "Elsewhere"}),
            (CliRun{1, "", "qmrules: Lapse rule set already exists in another project.\n"}));
}

TEST_F(RuleSetCreate, RefusesAFunctionOfAnotherProject) {
  Do({"project", "create", "Other"});
  EXPECT_EQ(Run({"ruleset", "create", "New", "--function", "BUSINESSFUNC#1"}),
            (CliRun{1, "", "qmrules: A new object can be created within the current project only.\n"}));
}

TEST_F(RuleSetCreate, RefusesTheDefaultNameUnderAnotherFunction) {
  EXPECT_EQ(Run({"ruleset", "create", "Unassigned Rule Set", "--function", "Billing"}),
            (CliRun{1, "",
                    "qmrules: Unassigned Rule Set rule set cannot be created outside of Unassigned Business Function "
                    "business function.\n"}));
}

TEST_F(RuleSetCreate, TheDefaultRuleSetThatStandsIsTakenAsItIs) {
  Do({"function", "create", "Unassigned Business Function"});
  const std::vector<std::string> line{"ruleset", "create", "Unassigned Rule Set", "--function",
                                      "Unassigned Business Function"};
  EXPECT_EQ(Do(line), "RULESET#3\n");
  EXPECT_EQ(Run(line), (CliRun{0, "RULESET#3\n", "qmrules: Unassigned Rule Set rule set already exists.\n"}));
  EXPECT_EQ(DoJson({"show", "RULESET#3"})["attributes"]["Description"]["value"],
            "Holds rules that belong to no other rule set.");
}

TEST_F(RuleSetCreate, RefusesTheDefaultRuleSetOfAnotherProjectAndLeavesItsDescription) {
  Do({"function", "create", "Unassigned Business Function"});
  Do({"ruleset", "create", "Unassigned Rule Set", "--function", "Unassigned Business Function"});
  Do({"project", "create", "Other"});
  EXPECT_EQ(Run({"ruleset", "create", "Unassigned Rule Set", "--function", "BUSINESSFUNC#3", "--description", "New"}),
            (CliRun{1, "", "qmrules: A new object can be created within the current project only.\n"}));
}

TEST_F(RuleSetCreate, RefusesAPlaceBehindARuleSetOfAnotherFunction) {
  EXPECT_EQ(
      Run({"ruleset", "create", "New", "--function", "Claims", "--after", "Lapse"}),
      (CliRun{1, "",
              "qmrules: RULESET#2 is not triggered by BUSINESSFUNC#2; \"qmrules list\" shows the rule sets of each "
              "function.\n"}));
}

TEST_F(RuleSetCreate, TellsWhenTheFunctionIsNotThere) {
  EXPECT_EQ(Run({"ruleset", "create", "New", "--function", "Nothing"}),
            (CliRun{1, "",
                    "qmrules: The project has no business function \"Nothing\"; \"qmrules list\" shows the functions, "
                    "rule sets and rules with their keys.\n"}));
  EXPECT_EQ(Run({"ruleset", "create", "New", "--function", "RULESET#1"}),
            (CliRun{1, "",
                    "qmrules: \"RULESET#1\" names RULESET#1, and a BUSINESSFUNC is wanted here; \"qmrules list\" shows "
                    "the functions, rule sets and rules with their keys.\n"}));
}

class RuleCreate : public CliTest {
 protected:
  RuleCreate() { MakeCatalogue(); }

  void AddSource() {
    folder_.Write("cobol/two.cbl",
                  "       PROGRAM-ID. FIRST.\n       PROCEDURE DIVISION.\n           STOP RUN.\n"
                  "       END PROGRAM FIRST.\n       PROGRAM-ID. SECOND.\n       PROCEDURE DIVISION.\n"
                  "           GOBACK.\n");
    folder_.Write("cobol/one.cbl", "       PROGRAM-ID. ALONE.\n       PROCEDURE DIVISION.\n           STOP RUN.\n");
    Do({"source", "add", "cobol"});
  }
  json Value(const std::string& key, const std::string& attribute) {
    return DoJson({"show", key})["attributes"][attribute]["value"];
  }
};

TEST_F(RuleCreate, TakesItsLinesFromTheSource) {
  AddSource();
  EXPECT_EQ(Do({"rule", "create", "Stop", "--ruleset", "Lapse", "--segment", "cobol/one.cbl:2-3", "--description",
                "Ends here"}),
            "RULE#3\n");
  const auto shown = DoJson({"show", "RULE#3"});
  EXPECT_EQ(shown["sourceText"], "       PROCEDURE DIVISION.\n           STOP RUN.\n");
  const auto& attributes = shown["attributes"];
  EXPECT_EQ(attributes["Model"]["value"], "COBOL");
  EXPECT_EQ(attributes["Program"]["value"], "ALONE");
  EXPECT_EQ(attributes["FileName"]["value"], "cobol/one.cbl");
  EXPECT_EQ(attributes["FromRow"]["value"], 2);
  EXPECT_EQ(attributes["ToRow"]["value"], 3);
  EXPECT_EQ(attributes["Valid"]["value"], "Valid");
  EXPECT_EQ(attributes["Validated"]["value"], "2026-01-31 12:00:00");
  EXPECT_EQ(attributes["AssignedTo"]["value"], "analyst");
  EXPECT_EQ(attributes["Description"]["value"], "Ends here");
  EXPECT_EQ(attributes["SID"]["value"], "RULESET#2");
}

TEST_F(RuleCreate, FindsTheFileFromTheCurrentFolderToo) {
  AddSource();
  currentFolder_ = folder_.File("cobol");
  Do({"rule", "create", "Stop", "--ruleset", "Lapse", "--segment", "one.cbl:3"});
  EXPECT_EQ(Value("RULE#3", "FileName"), "cobol/one.cbl");
  EXPECT_EQ(Value("RULE#3", "ToRow"), 3);
}

TEST_F(RuleCreate, KeepsALastRowBehindTheEndOfTheFile) {
  AddSource();
  Do({"rule", "create", "Stop", "--ruleset", "Lapse", "--segment", "cobol/one.cbl:3-30"});
  EXPECT_EQ(Value("RULE#3", "ToRow"), 30);
  EXPECT_EQ(DoJson({"show", "RULE#3"})["sourceText"], "           STOP RUN.\n");
}

TEST_F(RuleCreate, RefusesLinesBehindTheEndOfTheFile) {
  AddSource();
  const auto before = Files();
  EXPECT_EQ(Run({"rule", "create", "Stop", "--ruleset", "Lapse", "--segment", "cobol/one.cbl:4-5"}),
            (CliRun{1, "", "qmrules: cobol/one.cbl ends before line 4.\n"}));
  EXPECT_EQ(Files(), before);
}

TEST_F(RuleCreate, AsksForTheProgramOfAFileWithSeveral) {
  AddSource();
  const std::vector<std::string> line{"rule", "create", "Stop", "--ruleset", "Lapse", "--segment", "cobol/two.cbl:7-7"};
  EXPECT_EQ(
      Run(line),
      (CliRun{1, "", "qmrules: cobol/two.cbl holds several programs: FIRST, SECOND; name one with --program NAME.\n"}));
  auto named = line;
  named.insert(named.end(), {"--program", "second"});
  EXPECT_EQ(Do(named), "RULE#3\n");
  EXPECT_EQ(Value("RULE#3", "Program"), "SECOND");
  named.back() = "THIRD";
  EXPECT_EQ(Run(named),
            (CliRun{1, "", "qmrules: cobol/two.cbl holds no program \"THIRD\"; it holds: FIRST, SECOND.\n"}));
}

TEST_F(RuleCreate, RefusesAFileThatIsNotRegistered) {
  folder_.Write("other.cbl", "       PROGRAM-ID. OTHER.\n");
  EXPECT_EQ(
      Run({"rule", "create", "Stop", "--ruleset", "Lapse", "--segment", "other.cbl:1-1"}),
      (CliRun{1, "",
              "qmrules: other.cbl is no source of the project; \"qmrules source add other.cbl\" makes it one.\n"}));
}

TEST_F(RuleCreate, RefusesASegmentThatIsTooLong) {
  std::string text = "       PROGRAM-ID. LONG.\n";
  for (int line = 0; line < 500; ++line) text += std::string(79, 'X') + "\n";
  folder_.Write("long.cbl", text);
  Do({"source", "add", "long.cbl"});
  EXPECT_EQ(Do({"rule", "create", "Fits", "--ruleset", "Lapse", "--segment", "long.cbl:2-376"}), "RULE#3\n");
  EXPECT_EQ(Run({"rule", "create", "Stop", "--ruleset", "Lapse", "--segment", "long.cbl:2-377"}),
            (CliRun{1, "",
                    "qmrules: The lines 2-377 of long.cbl have 30080 characters, and a segment has at most 30000; name "
                    "fewer lines.\n"}));
}

TEST_F(RuleCreate, TellsTheFormOfASegment) {
  for (const std::string text : {"one.cbl", "one.cbl:", ":1-2", "one.cbl:0-2", "one.cbl:5-4", "one.cbl:1-2-3",
                                 "one.cbl:a-b", "one.cbl:1-99999999999"}) {
    EXPECT_EQ(Run({"rule", "create", "Stop", "--ruleset", "Lapse", "--segment", text}),
              (CliRun{2, "",
                      "qmrules: \"" + text +
                          "\" names no lines: write FILE:FROM-TO, with rows from 1, as \"billing.cbl:437-460\".\n"
                          "See \"qmrules rule create --help\".\n"}));
  }
}

TEST_F(RuleCreate, ProgramNeedsASegment) {
  EXPECT_EQ(Run({"rule", "create", "Stop", "--ruleset", "Lapse", "--program", "ALONE"}),
            (CliRun{2, "",
                    "qmrules: --program tells the program of a segment; give --segment too.\nSee \"qmrules rule create "
                    "--help\".\n"}));
}

TEST_F(RuleCreate, GoesBehindTheNamedRule) {
  Do({"rule", "create", "Between", "--ruleset", "Late fees", "--after", "Grace period"});
  EXPECT_EQ(
      DoJson({"list"})["functions"][0]["ruleSets"][0]["rules"],
      json::parse(R"([{"key":"RULE#1","name":"Grace period","seqNo":1},{"key":"RULE#3","name":"Between","seqNo":2},
                            {"key":"RULE#2","name":"Fee","seqNo":3}])"));
}

TEST_F(RuleCreate, RefusesAPlaceBehindARuleOfAnotherSet) {
  EXPECT_EQ(
      Run({"rule", "create", "New", "--ruleset", "Lapse", "--after", "RULE#1"}),
      (CliRun{1, "",
              "qmrules: RULE#1 is no rule of RULESET#2; \"qmrules list\" shows the functions, rule sets and rules "
              "with their keys.\n"}));
}

TEST_F(RuleCreate, ChecksTheFunctionOfTheRuleSet) {
  EXPECT_EQ(Do({"rule", "create", "New", "--ruleset", "Lapse", "--function", "Billing"}), "RULE#3\n");
  EXPECT_EQ(
      Run({"rule", "create", "New", "--ruleset", "Lapse", "--function", "Claims"}),
      (CliRun{1, "",
              "qmrules: RULESET#2 is not triggered by BUSINESSFUNC#2; \"qmrules list\" shows the rule sets of each "
              "function.\n"}));
}

TEST_F(RuleCreate, RefusesANameOfBlanks) {
  EXPECT_EQ(Run({"rule", "create", " ", "--ruleset", "Lapse"}), (CliRun{1, "", "qmrules: Please, enter rule name.\n"}));
}

TEST_F(RuleCreate, RefusesARuleSetOfAnotherProject) {
  Do({"project", "create", "Other"});
  EXPECT_EQ(Run({"rule", "create", "New", "--ruleset", "RULESET#1"}),
            (CliRun{1, "", "qmrules: A new object can be created within the current project only.\n"}));
}

TEST_F(RuleCreate, LogsItsCreation) {
  EXPECT_EQ(DoJson({"log", "RULE#1"}),
            json::parse(R"([{"activity":"Created","userName":"analyst","when":"2026-01-31 12:00:00"}])"));
}

}  // namespace
}  // namespace qmrules::test
