// Fetches of several nodes: relations, orders across nodes, projects, counts and walks over owners.

#include <gtest/gtest.h>

#include "platform/objectkey.h"
#include "support/errortext.h"
#include "support/teststore.h"
#include "workbench/repository/fetchrows.h"

namespace qmrules::test {
namespace {

using platform::Fetch;
using platform::Filter;
using platform::MakeKey;
using platform::ObjectNode;

// The catalogue
//
//   Alpha  -> 1 Rates (r1 r2), 2 Fees (f1), 3 Empty
//   beta   -> 1 Fees
//   Gamma  (nothing)
//
// with Fees in both projects and Foreign, a rule set with a rule, in the other project only.
class Catalogue : public ::testing::Test {
 protected:
  Catalogue() {
    alpha = store.AddFunction("Alpha");
    beta = store.AddFunction("beta");
    gamma = store.AddFunction("Gamma");
    rates = store.AddRuleSet("Rates");
    fees = store.AddRuleSet("Fees");
    empty = store.AddRuleSet("Empty");
    foreign = store.Add("RULESET", "Foreign");
    Object("RULESET", fees)->Link("BelongsTo", store.OtherProjectKey());
    Object("RULESET", foreign)->Link("BelongsTo", store.OtherProjectKey());
    store.AddCall(alpha, fees, 2);
    store.AddCall(alpha, rates, 1);
    store.AddCall(alpha, empty, 3);
    store.AddCall(beta, fees, 1);
    r2 = store.AddRule(rates, "r2", 2);
    r1 = store.AddRule(rates, "r1", 1);
    f1 = store.AddRule(fees, "f1", 1);
    x1 = store.AddRule(foreign, "x1", 1);
  }
  std::unique_ptr<platform::Object> Object(const std::string& entity, std::int32_t id) {
    return store.Repository().object(MakeKey(entity, id));
  }
  std::unique_ptr<Fetch> NewFetch() { return store.Repository().NewFetch(); }

  TestStore store;
  std::int32_t alpha, beta, gamma, rates, fees, empty, foreign, r1, r2, f1, x1;
};

std::string IDIs(std::int32_t id) {
  return "ID=" + std::to_string(id);
}

// One step: the node `near`, from which `relation` leads to the node `far`.
ObjectNode Step(Fetch& fetch, ObjectNode far, std::string_view relation, std::optional<std::string_view> near,
                std::string_view list = "", const Filter& filter = {}, bool inProject = false) {
  return fetch.AddObject(inProject, near, list, filter, fetch.AddRelation(relation, false, "", far));
}

// The catalogue in its reading order.
void DeclareWhole(Fetch& fetch, bool inProject) {
  const auto rule = fetch.AddObject(false, "RULE", ">SeqNo,ID:RuleID,RuleName");
  const auto set = Step(fetch, rule, "Has", "RULESET", "Name:SetName,ID:SetID", {}, inProject);
  const auto call = Step(fetch, set, "Refers", "RULESETCALL", ">SeqNo:CallSeqNo,ID:CallID");
  fetch.SetRoot(Step(fetch, call, "Triggers", "BUSINESSFUNC", ">Name:FuncName,ID:FuncID", {}, inProject));
}

TEST_F(Catalogue, TheWholeComesInReadingOrder) {
  const auto fetch = NewFetch();
  DeclareWhole(*fetch, true);
  EXPECT_EQ(Rows(*fetch, store.ProjectKey(), {"FuncName", "CallSeqNo", "SetName", "SeqNo", "RuleName"}),
            "Alpha|1|Rates|1|r1;Alpha|1|Rates|2|r2;Alpha|2|Fees|1|f1;beta|1|Fees|1|f1");
}

TEST_F(Catalogue, SortItemsApplyFromTheRootOutwardHoweverTheNodesAreDeclared) {
  const auto fetch = NewFetch();
  const auto function = fetch->AddObject(false, "BUSINESSFUNC", ">Name:FuncName");
  const auto call = Step(*fetch, function, "IsTriggeredBy", "RULESETCALL", "<SeqNo");
  const auto set = Step(*fetch, call, "IsRefferedBy", "RULESET", ">Name:SetName");
  fetch->SetRoot(set);
  EXPECT_EQ(Rows(*fetch, "", {"SetName", "SeqNo", "FuncName"}), "Empty|3|Alpha;Fees|2|Alpha;Fees|1|beta;Rates|1|Alpha");
}

TEST_F(Catalogue, TiesGoByTheIDsFromTheRootOutwardInTheLastItemsDirection) {
  const auto fetch = NewFetch();
  const auto set = fetch->AddObject(false, "RULESET", "ID:SetID");
  const auto call = Step(*fetch, set, "Refers", "RULESETCALL", "ID:CallID");
  fetch->SetRoot(Step(*fetch, call, "Triggers", "BUSINESSFUNC", "<BusinessArea,ID:FuncID"));
  EXPECT_EQ(Rows(*fetch, "", {"FuncID", "CallID", "SetID"}), "2|4|2;1|3|3;1|2|1;1|1|2");
}

TEST_F(Catalogue, TheRuleSetsOfOneFunctionComeInSequence) {
  const auto fetch = NewFetch();
  const auto set = fetch->AddObject(false, "RULESET", "ID,Name");
  const auto call = Step(*fetch, set, "Refers", "RULESETCALL", ">SeqNo");
  fetch->SetRoot(Step(*fetch, call, "Triggers", "BUSINESSFUNC", "", IDIs(alpha)));
  EXPECT_EQ(Rows(*fetch, "", {"ID", "Name"}), "1|Rates;2|Fees;3|Empty");
}

TEST_F(Catalogue, ARelationIsFoundByItsInverseNameAndFromTheWrongSide) {
  for (const auto* name : {"Has", "BelongsToRuleSet", "has"}) {
    auto fetch = NewFetch();
    fetch->SetRoot(Step(*fetch, fetch->AddObject(false, "RULE", ">SeqNo,ID"), name, "RULESET", "", IDIs(rates)));
    EXPECT_EQ(Rows(*fetch, "", {"ID"}), "2;1") << name;
    fetch = NewFetch();
    fetch->SetRoot(Step(*fetch, fetch->AddObject(false, "RULESET", "ID"), name, "RULE", "", IDIs(f1)));
    EXPECT_EQ(Rows(*fetch, "", {"ID"}), "2") << name;
  }
}

TEST_F(Catalogue, ANodeWithoutAnEntityTakesTheOneThatTheRelationLeadsTo) {
  auto fetch = NewFetch();
  fetch->SetRoot(
      Step(*fetch, fetch->AddObject(false, std::nullopt, "Type,ID,Name"), "Refers", "RULESETCALL", "", "ID=1"));
  EXPECT_EQ(Rows(*fetch, "", {"Type", "ID", "Name"}), "RULESET|2|Fees");
  fetch = NewFetch();
  fetch->SetRoot(Step(*fetch, fetch->AddObject(false, std::nullopt, "ID"), "Has", "RULE"));
  EXPECT_EQ(ErrorText([&] { fetch->Execute(""); }),
            "relation \"Has\" column 1: RULE has more than one relation \"Has\"");
}

TEST_F(Catalogue, OfOneNameTheNodeNearerToTheFarEndIsRead) {
  const auto fetch = NewFetch();
  const auto rule = fetch->AddObject(false, "RULE", "ID,Name");
  fetch->SetRoot(Step(*fetch, rule, "Has", "RULESET", "ID,Name:SetName", IDIs(fees)));
  EXPECT_EQ(Rows(*fetch, "", {"ID", "SetName"}), std::to_string(f1) + "|Fees");
}

TEST_F(Catalogue, FiltersStandOnEveryNode) {
  const auto fetch = NewFetch();
  const auto rule = fetch->AddObject(false, "RULE", "RuleName", "~ID in " + std::to_string(r1));
  const auto set = Step(*fetch, rule, "Has", "RULESET", "", "(ID=" + std::to_string(rates) + "|Name=Fees)");
  const auto call = Step(*fetch, set, "Refers", "RULESETCALL", "", "SeqNo>=1");
  fetch->SetRoot(Step(*fetch, call, "Triggers", "BUSINESSFUNC", ">Name:F", "Name like *a"));
  EXPECT_EQ(Rows(*fetch, "", {"F", "RuleName"}), "Alpha|f1;Alpha|r2;beta|f1");
}

TEST_F(Catalogue, AnIDListOnANodeBehindTheRootGivesItsOrder) {
  const auto fetch = NewFetch();
  const auto rule = fetch->AddObject(false, "RULE", "ID", "ID in 0,3,1,2");
  fetch->SetRoot(Step(*fetch, rule, "Has", "RULESET"));
  EXPECT_EQ(Rows(*fetch, "", {"ID"}), "3;1;2");
}

TEST_F(Catalogue, ListsOnTwoNodesGiveTheirOrdersFromTheRootOutward) {
  const auto fetch = NewFetch();
  const auto rule = fetch->AddObject(false, "RULE", "RuleName", "ID in 1,2,3");
  fetch->SetRoot(Step(*fetch, rule, "Has", "RULESET", "", "ID in 2,1"));
  EXPECT_EQ(Rows(*fetch, "", {"RuleName"}), "f1;r2;r1");
}

TEST_F(Catalogue, ThePathOfATriggerFromARuleIsItsOwn) {
  Object("RULE", r1)->Link("Triggers", MakeKey("RULESET", fees));
  auto fetch = NewFetch();
  fetch->SetRoot(Step(*fetch, fetch->AddObject(false, "RULESET", "ID"), "Triggers", "RULE", "", IDIs(r1)));
  EXPECT_EQ(Rows(*fetch, "", {"ID"}), "2");
  fetch = NewFetch();
  const auto rule = fetch->AddObject(false, "RULE", "ID:RuleID", "~ID in 0");
  fetch->SetRoot(Step(*fetch, rule, "IsTriggeredBy", "RULESET", "ID:SetID", "ID in 0,1,2"));
  EXPECT_EQ(Rows(*fetch, "", {"RuleID", "SetID"}), "2|2");
}

TEST_F(Catalogue, ASharedRuleSetShowsItsRulesThroughEitherProject) {
  for (const auto& [project, rules] : {std::pair{store.ProjectKey(), "r2;r1;f1"}, {store.OtherProjectKey(), "f1;x1"}}) {
    const auto fetch = NewFetch();
    const auto rule = fetch->AddObject(false, "RULE", "RuleName,>ID");
    fetch->SetRoot(Step(*fetch, rule, "Has", "RULESET", "", {}, true));
    EXPECT_EQ(Rows(*fetch, project, {"RuleName"}), rules);
  }
}

TEST_F(Catalogue, TheStandardPathScopesOnBothItsNodes) {
  auto fetch = NewFetch();
  DeclareWhole(*fetch, true);
  EXPECT_EQ(Rows(*fetch, store.OtherProjectKey(), {"RuleName"}), "");
  fetch = NewFetch();
  DeclareWhole(*fetch, true);
  EXPECT_EQ(Rows(*fetch, "", {"FuncName", "RuleName"}), "Alpha|r1;Alpha|r2;Alpha|f1;beta|f1");
}

TEST_F(Catalogue, EveryEntityIsScopedThroughWhatHoldsIt) {
  const auto count = [&](const char* entity, const std::string& project) {
    const auto fetch = NewFetch();
    fetch->SetRoot(fetch->AddObject(true, entity, "ID"));
    int rows = 0;
    for (fetch->Execute(project); !fetch->Eof(); fetch->MoveNext()) ++rows;
    return rows;
  };
  Object("RULE", x1)->Link("Has", MakeKey("RULEIO", store.Add("RULEIO", "a")));
  Object("RULE", r1)->Link("Has", MakeKey("RULEIO", store.Add("RULEIO", "b")));
  Object("COBOL", store.Add("COBOL", "P"))->Link("BelongsTo", store.ProjectKey());
  const std::map<std::string, std::pair<int, int>> expected = {
      {"BUSINESSFUNC", {3, 0}}, {"RULESET", {3, 2}}, {"RULESETCALL", {4, 0}}, {"RULE", {3, 2}},
      {"RULEIO", {1, 1}},       {"COBOL", {1, 0}},   {"PROJECT", {0, 0}},     {"PROGRAMCODE", {0, 0}}};
  for (const auto& [entity, counts] : expected) {
    EXPECT_EQ(count(entity.c_str(), store.ProjectKey()), counts.first) << entity;
    EXPECT_EQ(count(entity.c_str(), store.OtherProjectKey()), counts.second) << entity;
  }
}

TEST_F(Catalogue, WhatIsNoProjectIsRefused) {
  const auto fetch = NewFetch();
  fetch->SetRoot(fetch->AddObject(true, "RULE", "ID"));
  EXPECT_EQ(ErrorText([&] { fetch->Execute("RULESET#1"); }), "RULESET#1 is no project.");
  EXPECT_EQ(ErrorText([&] { fetch->Execute("Demo"); }),
            "\"Demo\" is not an object key. A key is an entity name, \"#\" and a number, as RULE#17.");
  EXPECT_TRUE(fetch->Execute("PROJECT#99"));
}

TEST_F(Catalogue, ACountTellsHowManyObjectsLieBehindTheRelation) {
  const auto fetch = NewFetch();
  const auto children = fetch->AddCount("Has", false, "Children");
  const auto set = fetch->AddObject(false, "RULESET", "Name", {}, children);
  const auto call = Step(*fetch, set, "Refers", "RULESETCALL", ">SeqNo");
  fetch->SetRoot(Step(*fetch, call, "Triggers", "BUSINESSFUNC", "", IDIs(alpha)));
  EXPECT_EQ(Rows(*fetch, "", {"Name", "Children"}), "Rates|2;Fees|1;Empty|0");
  fetch->Execute("");
  EXPECT_EQ(fetch->Row().Item("children").Value(), platform::Value(2));
}

TEST_F(Catalogue, ACountStandsOnARootAsWell) {
  const auto fetch = NewFetch();
  fetch->SetRoot(fetch->AddObject(true, "BUSINESSFUNC", ">Name", {}, fetch->AddCount("Triggers", false, "Children")));
  EXPECT_EQ(Rows(*fetch, store.ProjectKey(), {"Name", "Children"}), "Alpha|3;beta|1;Gamma|0");
}

TEST_F(Catalogue, ACountInProjectCountsOnlyWhatIsInIt) {
  for (const auto& [project, rows] :
       {std::pair{store.ProjectKey(), "Rates|1;Fees|2;Empty|1"}, {store.OtherProjectKey(), "Fees|0;Foreign|0"}}) {
    const auto fetch = NewFetch();
    fetch->SetRoot(fetch->AddObject(true, "RULESET", "Name", {}, fetch->AddCount("IsRefferedBy", true, "Calls")));
    EXPECT_EQ(Rows(*fetch, project, {"Name", "Calls"}), rows);
  }
}

TEST_F(Catalogue, ANegatedLinkAsksThatNoneExists) {
  auto fetch = NewFetch();
  fetch->SetRoot(Step(*fetch, fetch->AddObject(false, "RULE", ""), "~Has", "RULESET", "Name"));
  EXPECT_EQ(Rows(*fetch, "", {"Name"}), "Empty");
  fetch = NewFetch();
  const auto rule = fetch->AddObject(false, "RULE", "", "RuleName like r*");
  const auto set = Step(*fetch, rule, "~Has", "RULESET", "Name");
  const auto call = Step(*fetch, set, "Refers", "RULESETCALL", ">SeqNo");
  fetch->SetRoot(Step(*fetch, call, "Triggers", "BUSINESSFUNC", "", IDIs(alpha)));
  EXPECT_EQ(Rows(*fetch, "", {"Name"}), "Fees;Empty");
}

TEST_F(Catalogue, ANegatedLinkCoversTheWholePathBehindIt) {
  const auto fetch = NewFetch();
  const auto function = fetch->AddObject(false, "BUSINESSFUNC", "", IDIs(beta));
  const auto call = Step(*fetch, function, "IsTriggeredBy", "RULESETCALL");
  fetch->SetRoot(Step(*fetch, call, "~IsRefferedBy", "RULESET", "Name"));
  EXPECT_EQ(Rows(*fetch, "", {"Name"}), "Rates;Empty;Foreign");
}

TEST_F(Catalogue, ANegatedLinkWithinANegatedLinkDemandsAll) {
  // The functions all of whose calls refer to a rule set that has rules.
  const auto fetch = NewFetch();
  const auto rule = fetch->AddObject(false, "RULE", "");
  const auto set = Step(*fetch, rule, "~Has", "RULESET");
  const auto call = Step(*fetch, set, "Refers", "RULESETCALL");
  fetch->SetRoot(Step(*fetch, call, "~Triggers", "BUSINESSFUNC", "Name"));
  EXPECT_EQ(Rows(*fetch, "", {"Name"}), "beta;Gamma");
}

TEST_F(Catalogue, NothingIsDeliveredFromBehindANegatedLink) {
  const auto fetch = NewFetch();
  fetch->SetRoot(Step(*fetch, fetch->AddObject(false, "RULE", "ID"), "~Has", "RULESET", "Name"));
  EXPECT_EQ(
      ErrorText([&] { fetch->Execute(""); }),
      "relation \"~Has\" column 1: a node behind a link that must not exist delivers nothing; its fetch list must be "
      "empty");
}

class Owners : public Catalogue {
 protected:
  Owners() {
    const auto rule = Object("RULE", r1);
    store.Add("RULECOND", "not linked");
    rule->Link("Has", MakeKey("RULEIO", store.Add("RULEIO", "io1")));
    rule->Link("IsControlledBy", MakeKey("RULECOND", store.Add("RULECOND", "cond")));
    rule->Link("Has", MakeKey("RULEIO", store.Add("RULEIO", "io2")));
    const auto program =
        Object("PROGRAM", store.Add("PROGRAM", "GSS", {{"BREInfo", "GSS.trace"}, {"Source", "GSS.cbl"}}));
    store.Add("COBOL", "other");
    program->Link("Produces", MakeKey("COBOL", store.Add("COBOL", "GSS1")));
  }
};

TEST_F(Owners, AWalkToAnyEntityDeliversTypeAndID) {
  const auto fetch = NewFetch();
  fetch->SetRoot(Step(*fetch, fetch->AddObject(false, std::nullopt, ">Type,>ID"), "*PRODUCE", "RULE", "", IDIs(r1)));
  EXPECT_EQ(Rows(*fetch, "", {"Type", "ID"}), "RULECOND|2;RULEIO|1;RULEIO|2");
}

TEST_F(Owners, AWalkToAnyEntityDeliversAttributesThatAllEndsHave) {
  auto fetch = NewFetch();
  fetch->SetRoot(Step(*fetch, fetch->AddObject(false, std::nullopt, ">Name,ID,SID", "Name like *o*"), "*produce",
                      "RULE", "", IDIs(r1)));
  EXPECT_EQ(Rows(*fetch, "", {"Name"}), "cond;io1;io2");
  fetch = NewFetch();
  fetch->SetRoot(Step(*fetch, fetch->AddObject(false, std::nullopt, "IOName"), "*PRODUCE", "RULE"));
  EXPECT_EQ(ErrorText([&] { fetch->Execute(""); }),
            "fetch list \"IOName\" column 1: RULECOND, which the relation may lead to, has no attribute \"IOName\"");
}

TEST_F(Owners, AWalkToAGivenEntityLeavesTheOthersOut) {
  const auto fetch = NewFetch();
  fetch->SetRoot(Step(*fetch, fetch->AddObject(false, "RULEIO", "Type,IOName,Name"), "*PRODUCE", "RULE", "", IDIs(r1)));
  EXPECT_EQ(Rows(*fetch, "", {"Type", "Name"}), "RULEIO|io1;RULEIO|io2");
}

TEST_F(Owners, AWalkBackwardsLeadsFromOwnedToOwner) {
  auto fetch = NewFetch();
  const auto program = fetch->AddObject(false, "PROGRAM", "Name,BREInfo,Source");
  fetch->SetRoot(Step(*fetch, program, "*<PRODUCE", "COBOL", "", "ID=2"));
  EXPECT_EQ(Rows(*fetch, "", {"Name", "BREInfo", "Source"}), "GSS|GSS.trace|GSS.cbl");
  fetch = NewFetch();
  fetch->SetRoot(Step(*fetch, fetch->AddObject(false, std::nullopt, "Type,ID"), "*<PRODUCE", "RULECOND"));
  EXPECT_EQ(Rows(*fetch, "", {"Type", "ID"}), "RULE|" + std::to_string(r1));
}

TEST_F(Owners, AWalkScopesItsEndToTheProject) {
  Object("PROGRAM", 1)->Link("BelongsTo", store.OtherProjectKey());
  for (const auto& [project, rows] : {std::pair{store.ProjectKey(), ""}, {store.OtherProjectKey(), "GSS"}}) {
    const auto fetch = NewFetch();
    fetch->SetRoot(Step(*fetch, fetch->AddObject(true, "PROGRAM", "Name"), "*<PRODUCE", "COBOL", "", "ID=2"));
    EXPECT_EQ(Rows(*fetch, project, {"Name"}), rows);
  }
}

TEST_F(Owners, ANegatedWalkFindsWhatOwnsNothing) {
  const auto fetch = NewFetch();
  fetch->SetRoot(Step(*fetch, fetch->AddObject(false, std::nullopt, ""), "~*PRODUCE", "RULE", "RuleName"));
  EXPECT_EQ(Rows(*fetch, "", {"RuleName"}), "r2;f1;x1");
}

TEST_F(Owners, AWalkThatLeadsNowhereIsRefused) {
  auto fetch = NewFetch();
  fetch->SetRoot(Step(*fetch, fetch->AddObject(false, "RULESET", "ID"), "*PRODUCE", "RULE"));
  EXPECT_EQ(ErrorText([&] { fetch->Execute(""); }),
            "relation \"*PRODUCE\" column 1: no such walk leads from RULE to RULESET");
  fetch = NewFetch();
  fetch->SetRoot(Step(*fetch, fetch->AddObject(false, std::nullopt, "ID"), "*<USE", "RULE"));
  EXPECT_EQ(ErrorText([&] { fetch->Execute(""); }),
            "relation \"*<USE\" column 1: no such walk leads from RULE to any entity");
}

TEST_F(Catalogue, RelationsThatDoNotFitAreRefused) {
  auto fetch = NewFetch();
  fetch->SetRoot(Step(*fetch, fetch->AddObject(false, "RULE", "ID"), "Refers", "RULESET"));
  EXPECT_EQ(ErrorText([&] { fetch->Execute(""); }),
            "relation \"Refers\" column 1: RULESET and RULE have no relation \"Refers\"");
  fetch = NewFetch();
  const auto rule = fetch->AddObject(false, "RULE", "ID");
  EXPECT_EQ(ErrorText([&] { fetch->AddRelation("Has Rule", false, "", rule); }),
            "relation \"Has Rule\" column 4: the end of the name is expected");
  EXPECT_EQ(ErrorText([&] { fetch->AddRelation("Has", false, "ID", rule); }),
            "The relation \"Has\" delivers nothing; its fetch list is always empty.");
  EXPECT_EQ(ErrorText([&] { fetch->AddCount("*PRODUCE", false, "Children"); }),
            "The relation \"*PRODUCE\" cannot be counted: a count follows one plain relation.");
  fetch->SetRoot(fetch->AddObject(false, "RULE", "ID", {}, fetch->AddCount("Refers", false, "Children")));
  EXPECT_EQ(ErrorText([&] { fetch->Execute(""); }), "relation \"Refers\" column 1: RULE has no relation \"Refers\"");
}

TEST_F(Catalogue, NodesOfAnotherFetchAreRefused) {
  const auto fetch = NewFetch();
  EXPECT_EQ(ErrorText([&] { fetch->AddRelation("Has", false, "", {7}); }),
            "The relation \"Has\" leads to a node of another fetch.");
  EXPECT_EQ(ErrorText([&] { fetch->AddObject(false, "RULE", "", {}, platform::RelationNode{7}); }),
            "A fetch node starts from a relation of another fetch.");
  EXPECT_EQ(ErrorText([&] { fetch->SetRoot({7}); }), "The root of a fetch is a node of another fetch.");
}

TEST_F(Catalogue, TheRootNeedsAnEntity) {
  const auto fetch = NewFetch();
  fetch->SetRoot(fetch->AddObject(false, std::nullopt, "ID"));
  EXPECT_EQ(ErrorText([&] { fetch->Execute(""); }), "The root of a fetch needs an entity.");
}

}  // namespace
}  // namespace qmrules::test
