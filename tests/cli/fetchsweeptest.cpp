#include <chrono>
#include <filesystem>

#include "cli/clifixture.h"

namespace qmrules::test {

using nlohmann::json;

namespace {

class FetchCommand : public CliTest {
 protected:
  FetchCommand() { MakeCatalogue(); }
};

TEST_F(FetchCommand, PrintsOneNodeAsATable) {
  EXPECT_EQ(Do({"fetch", "--node", "RULE;ID,<RuleName:Rule;SeqNo=1|SeqNo=2"}),
            "ID  Rule\n"
            "1   Grace period\n"
            "2   Fee\n");
}

TEST_F(FetchCommand, FollowsAPathFromTheRootOutward) {
  EXPECT_EQ(DoJson({"fetch", "--project", "--node", "BUSINESSFUNC;>Name:Function", "--relation", "Triggers", "--node",
                    "RULESETCALL;>SeqNo:Call", "--relation", "Refers", "--node", "RULESET;Name:Set,ID:SetID",
                    "--relation", "Has", "--node", "RULE;>SeqNo,RuleName,FileName"}),
            json::parse(R"([
              {"Function":"Billing","Call":1,"Set":"Late fees","SetID":1,"SeqNo":1,"RuleName":"Grace period","FileName":""},
              {"Function":"Billing","Call":1,"Set":"Late fees","SetID":1,"SeqNo":2,"RuleName":"Fee","FileName":""}])"));
}

TEST_F(FetchCommand, CountsBehindTheLastNode) {
  EXPECT_EQ(DoJson({"fetch", "--node", "RULESET;>Name", "--count", "Has:Rules"}),
            json::parse(R"([{"Name":"Lapse","Rules":0},{"Name":"Late fees","Rules":2}])"));
}

TEST_F(FetchCommand, TakesEntityAloneAndFiltersWithSemicolons) {
  Do({"set", "RULE#1", "Name=a;b"});
  EXPECT_EQ(DoJson({"fetch", "--node", "RULE;ID;RuleName=a;b"}), json::parse(R"([{"ID":1}])"));
  EXPECT_EQ(DoJson({"fetch", "--node", "RULE;;RuleName=a;b"}), json::parse("[{}]"));
  EXPECT_EQ(DoJson({"fetch", "--node", "BUSINESSFUNC"}), json::parse("[{},{}]"));
}

TEST_F(FetchCommand, TheNodeOfAnyEntityEndsAClosure) {
  EXPECT_EQ(DoJson({"fetch", "--node", "RULESET;;ID=1", "--relation", "Has", "--node", "RULE;>SeqNo", "--relation",
                    "LoggedIn", "--node", "RULELOG;Activity"}),
            json::parse(R"([{"SeqNo":1,"Activity":"Created"},{"SeqNo":2,"Activity":"Created"}])"));
}

TEST_F(FetchCommand, SeesTheCurrentProjectOnlyWhereAsked) {
  Do({"project", "create", "Other"});
  EXPECT_EQ(DoJson({"fetch", "--node", "RULESET;ID"}).size(), 2U);
  EXPECT_EQ(DoJson({"fetch", "--project", "--node", "RULESET;ID"}), json::array());
  EXPECT_EQ(Do({"fetch", "--project", "--node", "RULESET;ID,Name"}), "ID  Name\n");
}

TEST_F(FetchCommand, NamesTheMalformedText) {
  EXPECT_EQ(Run({"fetch", "--node", "RULE;ID,,Name"}),
            (CliRun{1, "", "qmrules: fetch list \"ID,,Name\" column 4: an attribute name is expected\n"}));
  EXPECT_EQ(Run({"fetch", "--node", "RULE;ID;ID=1&"}),
            (CliRun{1, "", "qmrules: filter \"ID=1&\" column 6: a comparison is expected\n"}));
  EXPECT_EQ(Run({"fetch", "--node", "NOTHING;ID"}).code, 1);
}

TEST_F(FetchCommand, NeedsARelationBetweenTwoNodes) {
  EXPECT_EQ(
      Run({"fetch", "--node", "RULESET;ID", "--node", "RULE;ID"}),
      (CliRun{2, "", "qmrules: 2 --node need 1 --relation between them, not 0.\nSee \"qmrules fetch --help\".\n"}));
  EXPECT_EQ(Run({"fetch"}), (CliRun{2, "", "qmrules: --node is required\nSee \"qmrules fetch --help\".\n"}));
}

TEST_F(FetchCommand, TellsTheFormOfACount) {
  for (const std::string text : {"Has", ":Rules", "Has:"}) {
    EXPECT_EQ(
        Run({"fetch", "--node", "RULESET;ID", "--count", text}),
        (CliRun{2, "",
                "qmrules: \"" + text +
                    "\" counts nothing: write RELATION:ALIAS, as \"Has:Rules\".\nSee \"qmrules fetch --help\".\n"}));
  }
}

class SweepCommand : public CliTest {
 protected:
  SweepCommand() {
    MakeCatalogue();
    folder_.Write("one.cbl", "       PROGRAM-ID. ALONE.\n       PROCEDURE DIVISION.\n           STOP RUN.\n");
    SetFileDate("2026-01-31 11:59:00");
    Do({"source", "add", "one.cbl"});
    Do({"rule", "create", "Stop", "--ruleset", "Lapse", "--segment", "one.cbl:3"});
  }
  void SetFileDate(const std::string& text) {
    using std::chrono::file_clock;
    using std::chrono::seconds;
    using std::chrono::sys_seconds;
    const sys_seconds moment(seconds(platform::ParseTimestamp(text)->seconds));
    std::filesystem::last_write_time(folder_.File("one.cbl"), file_clock::from_sys(moment));
  }
  std::string Validity() { return DoJson({"show", "RULE#3"})["attributes"]["Valid"]["value"].get<std::string>(); }
};

TEST_F(SweepCommand, LeavesARuleWhoseFileIsOlder) {
  EXPECT_EQ(Do({"sweep"}),
            "Rules looked at      1\n"
            "Invalid              0\n"
            "Potentially invalid  0\n");
  EXPECT_EQ(Validity(), "Valid");
}

TEST_F(SweepCommand, DemotesARuleWhoseFileIsYounger) {
  SetFileDate("2026-01-31 12:00:01");
  EXPECT_EQ(DoJson({"sweep"}), json::parse(R"({"looked":1,"invalid":0,"potentiallyInvalid":1})"));
  EXPECT_EQ(Validity(), "Potentially invalid");
}

TEST_F(SweepCommand, DemotesARuleWhoseFileIsMissing) {
  std::filesystem::remove(folder_.File("one.cbl"));
  EXPECT_EQ(DoJson({"sweep"}), json::parse(R"({"looked":1,"invalid":1,"potentiallyInvalid":0})"));
  EXPECT_EQ(Validity(), "Invalid");
}

TEST_F(SweepCommand, IsRunByNoOtherCommand) {
  std::filesystem::remove(folder_.File("one.cbl"));
  Do({"list"});
  EXPECT_EQ(Validity(), "Valid");
}

}  // namespace
}  // namespace qmrules::test
