#include <memory>

#include "cli/clifixture.h"
#include "platform/repository.h"
#include "workbench/repository/store.h"

namespace qmrules::test {

using nlohmann::json;

namespace {

constexpr const char* kSeeList = "; \"qmrules list\" shows the functions, rule sets and rules with their keys.\n";

class ListCommand : public CliTest {};

TEST_F(ListCommand, OfAnEmptyProjectIsEmpty) {
  MakeWorkspace();
  EXPECT_EQ(Do({"list"}), "");
  EXPECT_EQ(DoJson({"list"}), json::parse(R"({"functions":[],"ruleSetsWithoutFunction":[]})"));
}

TEST_F(ListCommand, ShowsTheCatalogueInReadingOrderWithNumbers) {
  MakeCatalogue();
  EXPECT_EQ(Do({"list"}),
            "Billing              BUSINESSFUNC#1\n"
            "  1. Late fees       RULESET#1\n"
            "    1. Grace period  RULE#1\n"
            "    2. Fee           RULE#2\n"
            "  2. Lapse           RULESET#2\n"
            "Claims               BUSINESSFUNC#2\n");
}

TEST_F(ListCommand, NestsTheJson) {
  MakeCatalogue();
  EXPECT_EQ(DoJson({"list"}), json::parse(R"({
    "functions": [
      {"key":"BUSINESSFUNC#1","name":"Billing","ruleSets":[
        {"key":"RULESET#1","name":"Late fees","seqNo":1,"rules":[
          {"key":"RULE#1","name":"Grace period","seqNo":1},{"key":"RULE#2","name":"Fee","seqNo":2}]},
        {"key":"RULESET#2","name":"Lapse","seqNo":2,"rules":[]}]},
      {"key":"BUSINESSFUNC#2","name":"Claims","ruleSets":[]}],
    "ruleSetsWithoutFunction": []})"));
}

// The catalogue with objects that the program does not make (yet), written through the store itself.
class StoredCatalogue : public CliTest {
 protected:
  StoredCatalogue() { MakeCatalogue(); }
  std::unique_ptr<platform::Repository> Open() {
    return workbench::repository::OpenStore(
        {folder_.File(".qmrules/repository.db"), folder_.File(".qmrules/User.Repstry.xml"), "analyst", connect_},
        clock_);
  }
  static std::string Add(platform::Repository& store, const std::string& entity, const std::string& name,
                         const std::map<std::string, platform::Value>& attributes) {
    const auto object = store.NewObject(entity, name);
    object->Edit();
    for (const auto& [attribute, value] : attributes) object->Attrs(attribute, value);
    object->Post();
    return object->Key();
  }
};

TEST_F(StoredCatalogue, ListShowsRuleSetsWithoutAFunctionBehindTheOthers) {
  {
    const auto store = Open();
    const auto set = Add(*store, "RULESET", "Alone", {});
    store->object(set)->Link("BelongsTo", "PROJECT#1");
    store->object(set)->Link("Has", Add(*store, "RULE", "n1", {{"RuleName", "Stray"}, {"SeqNo", 7}}));
  }
  EXPECT_TRUE(Do({"list"}).ends_with(
      "Claims               BUSINESSFUNC#2\n(none)\n  Alone              RULESET#3\n    7. Stray         RULE#3\n"));
  EXPECT_EQ(DoJson({"list"})["ruleSetsWithoutFunction"],
            json::parse(R"([{"key":"RULESET#3","name":"Alone","rules":[{"key":"RULE#3","name":"Stray","seqNo":7}]}])"));
  EXPECT_EQ(DoJson({"show", "/Alone/Stray"})["key"], "RULE#3");
}

TEST_F(StoredCatalogue, ListShowsASharedRuleSetUnderEachFunction) {
  {
    const auto store = Open();
    const auto call = Add(*store, "RULESETCALL", "c", {{"SeqNo", 4}});
    store->object(call)->Link("Refers", "RULESET#1");
    store->object("BUSINESSFUNC#2")->Link("Triggers", call);
  }
  EXPECT_TRUE(Do({"list"}).ends_with(
      "Claims               BUSINESSFUNC#2\n  4. Late fees       RULESET#1\n    1. Grace period  RULE#1\n"
      "    2. Fee           RULE#2\n"));
  EXPECT_EQ(DoJson({"show", "Claims/Late fees"})["key"], "RULESET#1");
  EXPECT_EQ(Run({"move", "up", "RULESET#1"}),
            (CliRun{1, "",
                    "qmrules: RULESET#1 is triggered by several functions (BUSINESSFUNC#1, BUSINESSFUNC#2); name it by "
                    "its path \"Function/Rule set\".\n"}));
  EXPECT_EQ(Do({"move", "down", "Billing/Late fees"}), "RULESET#1 SeqNo = 2\n");
  EXPECT_EQ(DoJson({"list"})["functions"][1]["ruleSets"][0]["seqNo"], 4);
}

TEST_F(StoredCatalogue, ShowListsDataElementsConditionsAndTriggers) {
  {
    const auto store = Open();
    const auto rule = store->object("RULE#1");
    rule->Link("Has",
               Add(*store, "RULEIO", "n1", {{"IOName", "WS-DAYS"}, {"Kind", "Input"}, {"BusinessName", "Days"}}));
    rule->Link("IsControlledBy",
               Add(*store, "RULECOND", "n2", {{"CondName", "WS-STATE"}, {"Operator", "="}, {"Argument", "'NY'"}}));
    rule->Link("Triggers", "RULESET#2");
  }
  const std::string text = Do({"show", "RULE#1"});
  EXPECT_NE(text.find("\nI/O Data Elements\n"
                      "  Key       Name     Kind   Business Name  Description\n"
                      "  RULEIO#1  WS-DAYS  Input  Days\n"
                      "\nControl Conditions\n"
                      "  Key         Name      Operator  Argument  Description\n"
                      "  RULECOND#1  WS-STATE  =         'NY'\n"
                      "\nTriggers\n"
                      "  Key        Name\n"
                      "  RULESET#2  Lapse\n"),
            std::string::npos)
      << text;
  const auto shown = DoJson({"show", "RULE#1"});
  EXPECT_EQ(shown["dataElements"], json::parse(R"([{"Key":"RULEIO#1","IOName":"WS-DAYS","Kind":"Input",
                                                     "BusinessName":"Days","Description":""}])"));
  EXPECT_EQ(shown["conditions"], json::parse(R"([{"Key":"RULECOND#1","CondName":"WS-STATE","Operator":"=",
                                                   "Argument":"'NY'","Description":""}])"));
  EXPECT_EQ(shown["triggers"], json::parse(R"([{"Key":"RULESET#2","Name":"Lapse"}])"));
  EXPECT_EQ(DoJson({"show", "RULESET#2"})["triggeredBy"],
            json::parse(R"([{"RuleName":"Grace period","Name":"Late fees","Key":"RULESET#1"}])"));
}

class ShowCommand : public CliTest {};

TEST_F(ShowCommand, ShowsARuleWithItsSegmentAndRowNumbers) {
  MakeCatalogue();
  folder_.Write("one.cbl", "       PROGRAM-ID. ALONE.\n       PROCEDURE DIVISION.\n           STOP RUN.\n");
  Do({"source", "add", "one.cbl"});
  Do({"rule", "create", "Stop", "--ruleset", "Lapse", "--segment", "one.cbl:2-3", "--description", "First\nSecond"});
  EXPECT_EQ(Do({"show", "RULE#3"}),
            "RULE#3  Stop\n"
            "  Name                   Stop\n"
            "  Sequence Number        1\n"
            "  Technical Description  First\n"
            "                         Second\n"
            "  Business Description\n"
            "  Assigned To            analyst\n"
            "  Model                  COBOL\n"
            "  Program                ALONE\n"
            "  File Name              one.cbl\n"
            "  From Row               2\n"
            "  To Row                 3\n"
            "  Validity               Valid\n"
            "  Validated              2026-01-31 12:00:00\n"
            "  SID                    RULESET#2\n"
            "  Created                2026-01-31 12:00:00\n"
            "  Created By             analyst\n"
            "  Modified               2026-01-31 12:00:00\n"
            "  Modified By            analyst\n"
            "\nSegment\n"
            "  2         PROCEDURE DIVISION.\n"
            "  3             STOP RUN.\n");
}

TEST_F(ShowCommand, MarksWhatMayBeChanged) {
  MakeCatalogue();
  const auto attributes = DoJson({"show", "RULE#1"})["attributes"];
  EXPECT_FALSE(attributes.contains("Name"));
  EXPECT_EQ(attributes["RuleName"], json::parse(R"({"caption":"Name","value":"Grace period","editable":true})"));
  EXPECT_EQ(attributes["Valid"], json::parse(R"({"caption":"Validity","value":"Valid","editable":false})"));
  EXPECT_EQ(attributes["BusinessDescription"]["value"], nullptr);
}

TEST_F(ShowCommand, ShowsAFunctionAndARuleSetWithTheirParts) {
  MakeCatalogue();
  EXPECT_EQ(
      DoJson({"show", "Billing"})["ruleSets"],
      json::parse(
          R"([{"Key":"RULESET#1","SeqNo":"1","Name":"Late fees"},{"Key":"RULESET#2","SeqNo":"2","Name":"Lapse"}])"));
  EXPECT_EQ(
      DoJson({"show", "Billing/Late fees"})["rules"],
      json::parse(
          R"([{"Key":"RULE#1","SeqNo":"1","RuleName":"Grace period"},{"Key":"RULE#2","SeqNo":"2","RuleName":"Fee"}])"));
}

TEST_F(ShowCommand, TakesAnyEntityByItsKeyInAnyCase) {
  MakeCatalogue();
  EXPECT_EQ(DoJson({"show", "project#1"})["name"], "Demo");
  EXPECT_EQ(DoJson({"show", "rule#2"})["key"], "RULE#2");
}

TEST_F(ShowCommand, ChangesNothingOnTheDisk) {
  MakeCatalogue();
  const auto before = Files();
  Do({"show", "RULE#1"});
  Do({"list"});
  Do({"log", "RULE#1"});
  Do({"fetch", "--node", "RULE;ID"});
  EXPECT_EQ(Files(), before);
}

TEST_F(ShowCommand, LetsNoStoredTextActOnTheTerminal) {
  MakeCatalogue();
  Do({"set", "RULE#1", "Description=red \x1b[31m and \xC2\x9B more"});
  const std::string text = Do({"show", "RULE#1"});
  EXPECT_EQ(text.find('\x1b'), std::string::npos);
  EXPECT_EQ(text.find("\xC2\x9B"), std::string::npos);
}

TEST_F(ShowCommand, PrintsTitlesInBoldOnATerminalOnly) {
  MakeCatalogue();
  EXPECT_EQ(Do({"show", "RULE#1"}).find('\x1b'), std::string::npos);
  outIsTerminal_ = true;
  EXPECT_TRUE(Do({"show", "RULE#1"}).starts_with("\x1b[1mRULE#1  Grace period\x1b[0m\n"));
  variables_["NO_COLOR"] = "1";
  EXPECT_EQ(Do({"show", "RULE#1"}).find('\x1b'), std::string::npos);
}

class ObjectNames : public CliTest {
 protected:
  ObjectNames() { MakeCatalogue(); }
};

TEST_F(ObjectNames, APathLeadsThroughTheNames) {
  EXPECT_EQ(DoJson({"show", "Billing/Late fees/Fee"})["key"], "RULE#2");
}

TEST_F(ObjectNames, AnEscapedSlashIsPartOfAName) {
  Do({"function", "create", "In/Out\\Back"});
  Do({"ruleset", "create", "A/B", "--function", "In\\/Out\\\\Back"});
  Do({"rule", "create", "C#1", "--ruleset", "A\\/B"});
  EXPECT_EQ(DoJson({"show", "In\\/Out\\\\Back/A\\/B/C#1"})["key"], "RULE#3");
}

TEST_F(ObjectNames, FilterSignsInANameAreData) {
  Do({"function", "create", "A&B|~(C),*"});
  EXPECT_EQ(DoJson({"show", "A&B|~(C),*"})["key"], "BUSINESSFUNC#3");
}

TEST_F(ObjectNames, AnAmbiguousPathTellsItsKeys) {
  Do({"rule", "create", "Fee", "--ruleset", "Late fees"});
  EXPECT_EQ(Run({"show", "Billing/Late fees/Fee"}),
            (CliRun{1, "", "qmrules: \"Billing/Late fees/Fee\" can mean RULE#2, RULE#3; name it by its key.\n"}));
}

TEST_F(ObjectNames, ManyMeaningsAreCutShort) {
  for (int rule = 0; rule < 11; ++rule) Do({"rule", "create", "Fee", "--ruleset", "Lapse"});
  EXPECT_EQ(Run({"show", "Billing/Lapse/Fee"}),
            (CliRun{1, "",
                    "qmrules: \"Billing/Lapse/Fee\" can mean RULE#3, RULE#4, RULE#5, RULE#6, RULE#7, RULE#8, RULE#9, "
                    "RULE#10, RULE#11, RULE#12 and 1 more; name it by its key.\n"}));
}

TEST_F(ObjectNames, AnUnknownNameTellsHowFarThePathLed) {
  EXPECT_EQ(Run({"show", "Nothing/Late fees"}).err,
            std::string("qmrules: The project has no business function \"Nothing\"") + kSeeList);
  EXPECT_EQ(Run({"show", "Billing/Nothing"}).err,
            std::string("qmrules: The function \"Billing\" has no rule set \"Nothing\"") + kSeeList);
  EXPECT_EQ(Run({"show", "Billing/Lapse/Nothing"}).err,
            std::string("qmrules: The rule set \"Lapse\" has no rule \"Nothing\"") + kSeeList);
  EXPECT_EQ(Run({"show", "/Lapse"}).err,
            std::string("qmrules: The project has no rule set \"Lapse\" without a function") + kSeeList);
}

TEST_F(ObjectNames, AnUnknownKeyTellsWhatToDo) {
  EXPECT_EQ(Run({"show", "RULE#99"}), (CliRun{1, "", std::string("qmrules: There is no object RULE#99") + kSeeList}));
}

TEST_F(ObjectNames, AMalformedTextTellsTheForms) {
  for (const std::string text : {"a/b/c/d", "Billing/", "/", ""}) {
    EXPECT_EQ(Run({"show", text}),
              (CliRun{1, "",
                      "qmrules: \"" + text +
                          "\" is neither a key nor a path: write \"RULE#12\" or \"Function/Rule set/Rule\"; \"\\/\" "
                          "stands for a \"/\" in a name.\n"}));
  }
}

TEST_F(ObjectNames, AnIdThatIsTooLargeIsRefused) {
  const auto run = Run({"show", "RULE#99999999999"});
  EXPECT_EQ(run.code, 1);
  EXPECT_NE(run.err.find("RULE#99999999999"), std::string::npos);
}

}  // namespace
}  // namespace qmrules::test
