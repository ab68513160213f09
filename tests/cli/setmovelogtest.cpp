#include "cli/clifixture.h"

namespace qmrules::test {

using nlohmann::json;

namespace {

// The site's schema document with an attribute of each type.
constexpr const char* kSchema = R"(<repstry><entities><entity name="RULE"><entityattrs>
<entityattr name="RuleName" description="Name" system="true" type="CHAR"/>
<entityattr name="Priority" description="Rule Priority" system="false" type="CHAR" default="Low">
  <const value="Low"/><const value="High"/></entityattr>
<entityattr name="Code" description="Code" system="false" type="CHAR" length="3"/>
<entityattr name="Weight" description="Weight" system="false" type="INTEGER"/>
<entityattr name="Billable" description="Billable" system="false" type="BOOLEAN"/>
</entityattrs></entity></entities></repstry>
)";

class SetCommand : public CliTest {
 protected:
  SetCommand() {
    MakeWorkspace();
    folder_.Write(".qmrules/User.Repstry.xml", kSchema);
    Do({"function", "create", "Billing"});
    Do({"ruleset", "create", "Lapse", "--function", "Billing"});
    Do({"rule", "create", "Grace", "--ruleset", "Lapse"});
    Do({"project", "create", "Other"});
    Do({"project", "use", "Demo"});
  }
  json Value(const std::string& key, const std::string& attribute) {
    return DoJson({"show", key})["attributes"][attribute]["value"];
  }
};

TEST_F(SetCommand, ChangesAttributesByNameAndCaptionInAnyCaseAndLogsThem) {
  EXPECT_EQ(Do({"set", "RULE#1", "assignedto=miller", "business description=Within 30 days", "NAME=Grace period"}),
            "RULE#1 AssignedTo = miller\n"
            "RULE#1 BusinessDescription = Within 30 days\n"
            "RULE#1 RuleName = Grace period\n");
  EXPECT_EQ(Value("RULE#1", "AssignedTo"), "miller");
  const auto log = DoJson({"log", "RULE#1"});
  ASSERT_EQ(log.size(), 4U);
  EXPECT_EQ(log[1]["activity"], "Assigned To changed to miller");
  EXPECT_EQ(log[2]["activity"], "Business Description changed to Within 30 days");
  EXPECT_EQ(log[3]["activity"], "Name changed to Grace period");
}

TEST_F(SetCommand, TakesTheSitesOwnAttributes) {
  EXPECT_EQ(Value("RULE#1", "Priority"), "Low");
  EXPECT_EQ(
      DoJson({"set", "RULE#1", "rule priority=High", "Code=abc", "Weight=12", "Billable=true"}),
      json::parse(R"({"key":"RULE#1","changed":{"Priority":"High","Code":"abc","Weight":"12","Billable":"true"}})"));
  EXPECT_EQ(Value("RULE#1", "Weight"), 12);
  EXPECT_EQ(Value("RULE#1", "Billable"), true);
}

TEST_F(SetCommand, RefusesInadmissibleValuesAndKeepsAllOfTheOthers) {
  const auto before = Files();
  for (const std::string assignment : {"Priority=Medium", "Code=abcd", "Weight=1.5", "Billable=maybe"}) {
    EXPECT_EQ(Run({"set", "RULE#1", "Description=New", assignment}),
              (CliRun{1, "",
                      "qmrules: " + assignment.substr(0, assignment.find('=')) +
                          ": The value you entered is not admissible for this attribute.\n"}));
  }
  EXPECT_EQ(Value("RULE#1", "Description"), "");
  EXPECT_EQ(DoJson({"log", "RULE#1"}).size(), 1U);
  EXPECT_EQ(Files().at(".qmrules/User.Repstry.xml"), before.at(".qmrules/User.Repstry.xml"));
}

TEST_F(SetCommand, RefusesAttributesThatCannotBeChanged) {
  EXPECT_EQ(Run({"set", "RULE#1", "valid=Invalid"}),
            (CliRun{1, "",
                    "qmrules: The attribute Valid of RULE#1 cannot be changed. These can: RuleName, Description, "
                    "BusinessDescription, AssignedTo, Priority, Code, Weight, Billable.\n"}));
  EXPECT_EQ(Run({"set", "BUSINESSFUNC#1", "Created=2026-01-01"}),
            (CliRun{1, "",
                    "qmrules: The attribute Created of BUSINESSFUNC#1 cannot be changed. These can: Name, Description, "
                    "BusinessArea.\n"}));
}

TEST_F(SetCommand, RefusesUnknownAttributes) {
  EXPECT_EQ(Run({"set", "RULE#1", "Nothing=1"}),
            (CliRun{1, "",
                    "qmrules: The attribute Nothing of RULE#1 cannot be changed. These can: RuleName, Description, "
                    "BusinessDescription, AssignedTo, Priority, Code, Weight, Billable.\n"}));
  EXPECT_EQ(Run({"set", "RULESET#1", "Nothing=1"}), (CliRun{1, "", "qmrules: RULESET has no attribute Nothing.\n"}));
}

TEST_F(SetCommand, RefusesANameOfBlanksAndATakenName) {
  EXPECT_EQ(Run({"set", "RULE#1", "Name= "}), (CliRun{1, "", "qmrules: Name: Name cannot be empty.\n"}));
  Do({"ruleset", "create", "Fees", "--function", "Billing"});
  const auto run = Run({"set", "RULESET#1", "Description=Lost", "Name=Fees"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(Value("RULESET#1", "Description"), "");
}

TEST_F(SetCommand, RenamesFunctionsAndRuleSets) {
  EXPECT_EQ(Do({"set", "Billing/Lapse", "Name=Lapse and dunning"}), "RULESET#1 Name = Lapse and dunning\n");
  EXPECT_EQ(Do({"set", "Billing", "business area=Money"}), "BUSINESSFUNC#1 BusinessArea = Money\n");
  EXPECT_EQ(Value("BUSINESSFUNC#1", "BusinessArea"), "Money");
}

TEST_F(SetCommand, TellsWhenThereIsNothingToChange) {
  EXPECT_EQ(Do({"set", "RULE#1", "Name=Grace"}), "Nothing to change.\n");
  EXPECT_EQ(DoJson({"set", "RULE#1", "Name=Grace"}), json::parse(R"({"key":"RULE#1","changed":{}})"));
  EXPECT_EQ(DoJson({"log", "RULE#1"}).size(), 1U);
}

TEST_F(SetCommand, AValueMayHoldAnEqualsSignAndBeEmpty) {
  Do({"set", "RULE#1", "Description=a=b"});
  EXPECT_EQ(Value("RULE#1", "Description"), "a=b");
  Do({"set", "RULE#1", "Description="});
  EXPECT_EQ(Value("RULE#1", "Description"), "");
}

TEST_F(SetCommand, TellsTheFormOfAnAssignment) {
  for (const std::string text : {"Name", "=x"}) {
    EXPECT_EQ(Run({"set", "RULE#1", text}),
              (CliRun{2, "",
                      "qmrules: \"" + text +
                          "\" sets nothing: write ATTRIBUTE=VALUE, as \"AssignedTo=miller\".\nSee \"qmrules set "
                          "--help\".\n"}));
  }
}

TEST_F(SetCommand, RefusesObjectsOfOtherProjectsAndOtherKinds) {
  Do({"project", "use", "Other"});
  EXPECT_EQ(
      Run({"set", "RULE#1", "Name=New"}),
      (CliRun{1, "",
              "qmrules: RULE#1 is not part of the current project \"Other\"; make its project the current one with "
              "\"qmrules project use NAME\".\n"}));
  EXPECT_EQ(Run({"set", "PROJECT#2", "Name=New"}).code, 1);
}

TEST_F(SetCommand, RepairsAttributesOnceAfterAChangeOfTheSchema) {
  Do({"set", "RULE#1", "Priority=High"});
  std::string schema = kSchema;
  schema.replace(schema.find("<const value=\"High\"/>"), 21, "");
  folder_.Write(".qmrules/User.Repstry.xml", schema);
  EXPECT_EQ(Value("RULE#1", "Priority"), "Low");
  const auto repaired = Files();
  EXPECT_EQ(Value("RULE#1", "Priority"), "Low");
  EXPECT_EQ(Files(), repaired);
}

class MoveCommand : public CliTest {
 protected:
  MoveCommand() { MakeCatalogue(); }
};

TEST_F(MoveCommand, MovesARuleInItsSet) {
  EXPECT_EQ(Do({"move", "down", "RULE#1"}), "RULE#1 SeqNo = 2\n");
  const auto rules = DoJson({"list"})["functions"][0]["ruleSets"][0]["rules"];
  EXPECT_EQ(rules[0]["key"], "RULE#2");
  EXPECT_EQ(rules[1]["key"], "RULE#1");
  EXPECT_EQ(DoJson({"move", "up", "RULE#1"}), json::parse(R"({"key":"RULE#1","seqNo":1})"));
}

TEST_F(MoveCommand, MovesARuleSetInItsFunction) {
  EXPECT_EQ(Do({"move", "up", "Billing/Lapse"}), "RULESET#2 SeqNo = 1\n");
  EXPECT_EQ(DoJson({"list"})["functions"][0]["ruleSets"][0]["key"], "RULESET#2");
  EXPECT_EQ(Do({"move", "down", "RULESET#2"}), "RULESET#2 SeqNo = 2\n");
}

TEST_F(MoveCommand, RefusesToLeaveTheSequence) {
  const auto before = Files();
  EXPECT_EQ(Run({"move", "up", "RULE#1"}),
            (CliRun{1, "", "qmrules: RULE#1 is the first of RULESET#1 and cannot be moved up.\n"}));
  EXPECT_EQ(Run({"move", "down", "RULESET#2"}),
            (CliRun{1, "", "qmrules: RULESET#2 is the last of BUSINESSFUNC#1 and cannot be moved down.\n"}));
  EXPECT_EQ(Files(), before);
}

TEST_F(MoveCommand, RefusesAFunction) {
  EXPECT_EQ(Run({"move", "up", "Billing"}),
            (CliRun{1, "", "qmrules: BUSINESSFUNC#1: The action is not available in this context.\n"}));
}

TEST_F(MoveCommand, RefusesAnotherDirection) {
  const auto run = Run({"move", "left", "RULE#1"});
  EXPECT_EQ(run.code, 2);
  EXPECT_EQ(run.err, "qmrules: DIRECTION: left not in {up,down}\nSee \"qmrules move --help\".\n");
}

class LogCommand : public CliTest {
 protected:
  LogCommand() { MakeCatalogue(); }
};

TEST_F(LogCommand, ShowsTheCaptionAndTheRecords) {
  Do({"set", "RULE#1", "AssignedTo=miller"});
  EXPECT_EQ(Do({"log", "Billing/Late fees/Grace period"}),
            "Activity Log for Rule Grace period\n"
            "Activity                       Who changed  When changed\n"
            "Created                        analyst      2026-01-31 12:00:00\n"
            "Assigned To changed to miller  analyst      2026-01-31 12:00:00\n");
}

TEST_F(LogCommand, RefusesWhatHasNoLog) {
  EXPECT_EQ(Run({"log", "Billing"}),
            (CliRun{1, "", "qmrules: BUSINESSFUNC#1 is no rule; only rules have an activity log.\n"}));
}

TEST_F(LogCommand, CutsLongTextsInTheTableOnly) {
  Do({"set", "RULE#1", "Description=" + std::string(300, 'x')});
  EXPECT_NE(Do({"log", "RULE#1"}).find("xxx...  analyst"), std::string::npos);
  EXPECT_EQ(DoJson({"log", "RULE#1"})[1]["activity"],
            "Technical Description changed to " + std::string(255, 'x') + "...");
}

}  // namespace
}  // namespace qmrules::test
