// A search condition document as the filter of a fetch.

#include <gtest/gtest.h>

#include "platform/objectkey.h"
#include "support/errortext.h"
#include "support/teststore.h"
#include "workbench/repository/fetchrows.h"

namespace qmrules::test {
namespace {

using platform::MakeKey;
using platform::Value;

std::string Attr(const std::string& name, const std::string& op, const std::string& arg, bool isNegated = false) {
  const std::string negate = isNegated ? " negate=\"true\"" : "";
  return "<attr name=\"" + name + "\" op=\"" + op + "\" arg=\"" + arg + "\"" + negate + "/>";
}

std::string Related(const std::string& relation, const std::string& entity, const std::string& condition,
                    const std::string& attributes = "") {
  return "<related" + attributes + "><reltype><rel name=\"" + relation +
         "\"/></reltype><object><objecttype><type name=\"" + entity + "\"/></objecttype><cond>" + condition +
         "</cond></object></related>";
}

class ConditionOnRules : public ::testing::Test {
 protected:
  // Three rules: 1 has SeqNo 5, 2 has SeqNo 10 and a lower-case name, 3 has neither name nor number.
  ConditionOnRules() {
    set = store.AddRuleSet("S");
    store.AddRule(set, "Rate", 5);
    store.AddRule(set, "rate two", 10);
    store.AddRule(set, "", 0);
    store.Put("RULE#3", "SeqNo", Value());
    store.Put("RULE#3", "RuleName", Value());
    store.Put("RULE#1", "Validated", "2026-01-01 10:00:00");
  }
  void AddElement(std::int32_t rule, const std::string& ioName) {
    store.Repository()
        .object(MakeKey("RULE", rule))
        ->Link("Has", MakeKey("RULEIO", store.Add("RULEIO", "n", {{"IOName", ioName}})));
  }
  platform::Filter Document(const std::string& condition, const std::string& delivered = "") {
    document.loadXML("<object><objecttype><type name=\"RULE\"/></objecttype>" + delivered + "<cond>" + condition +
                     "</cond></object>");
    return document.documentElement();
  }
  std::string Passing(const std::string& condition) { return IDs(store.Repository(), "RULE", Document(condition)); }
  std::string Failure(const std::string& condition) {
    return ErrorText([&] { Passing(condition); });
  }
  TestStore store;
  std::int32_t set = 0;
  platform::XmlDocument document;
};

TEST_F(ConditionOnRules, AnEmptyConditionPassesAll) {
  EXPECT_EQ(Passing(""), "1;2;3");
}

TEST_F(ConditionOnRules, EveryOperatorHasItsMeaning) {
  EXPECT_EQ(Passing(Attr("RuleName", "=", "Rate")), "1");
  EXPECT_EQ(Passing(Attr("RuleName", "&lt;&gt;", "Rate")), "2;3");
  EXPECT_EQ(Passing(Attr("SeqNo", "&lt;", "10")), "1;3");
  EXPECT_EQ(Passing(Attr("SeqNo", "&gt;", "5")), "2");
  EXPECT_EQ(Passing(Attr("SeqNo", "&lt;=", "5")), "1;3");
  EXPECT_EQ(Passing(Attr("SeqNo", "&gt;=", "5")), "1;2");
  EXPECT_EQ(Passing(Attr("RuleName", "like", "RATE*")), "1;2");
  EXPECT_EQ(Passing(Attr("RuleName", "not like", "*two")), "1;3");
  EXPECT_EQ(Passing(Attr("SeqNo", "in", "10, 5,7")), "1;2");
  EXPECT_EQ(Passing(Attr("SeqNo", "not in", "10")), "1;3");
  EXPECT_EQ(Passing(Attr("RuleName", "in", "Rate,")), "1;3");
  EXPECT_EQ(Passing(Attr("ID", "in", "1,3")), "1;3");
  EXPECT_EQ(Passing(Attr("Validated", "&gt;=", "2026-01-01")), "1");
}

// The forms in which the search dialog writes "<=", ">=", "<>", "not like" and "not in".
TEST_F(ConditionOnRules, ANegatedOperatorIsTheComplement) {
  for (const auto& [name, op, arg] : {std::tuple{"RuleName", "=", "Rate"},
                                      {"SeqNo", "&lt;", "10"},
                                      {"SeqNo", "&gt;", "5"},
                                      {"RuleName", "like", "rate*"},
                                      {"SeqNo", "in", "5,10"},
                                      {"RuleName", "=", ""},
                                      {"RuleName", "in", "a,"},
                                      {"SeqNo", "&lt;=", "5"},
                                      {"Validated", "&gt;", "2020-01-01"}}) {
    const auto plain = Attr(name, op, arg);
    const auto negated = Attr(name, op, arg, true);
    const auto count = [&](const std::string& condition) {
      return store.Repository().CountObjects("RULE", Document(condition));
    };
    EXPECT_EQ(count(plain) + count(negated), 3) << plain;
    EXPECT_EQ(count("<and>" + plain + negated + "</and>"), 0) << plain;
  }
  EXPECT_EQ(Passing(Attr("SeqNo", "&gt;", "5", true)), "1;3");
}

TEST_F(ConditionOnRules, AndAndOrAreRunAndNegated) {
  const auto one = Attr("ID", "=", "1");
  const auto two = Attr("ID", "=", "2");
  EXPECT_EQ(Passing("<or>" + one + two + "</or>"), "1;2");
  EXPECT_EQ(Passing("<or negate=\"true\">" + one + two + "</or>"), "3");
  EXPECT_EQ(Passing("<and>" + one + two + "</and>"), "");
  EXPECT_EQ(Passing("<and negate=\"true\">" + one + two + "</and>"), "1;2;3");
  EXPECT_EQ(Passing("<and><or>" + one + two + "</or>" + Attr("SeqNo", "&gt;", "5") + "</and>"), "2");
  EXPECT_EQ(Passing("<and>" + one + "</and>"), "1");
}

TEST_F(ConditionOnRules, TheLocationOfASegmentIsAsked) {
  for (const auto& [rule, from, to] : {std::tuple{"RULE#1", 10, 20}, {"RULE#2", 15, 15}}) {
    store.Put(rule, "FileName", "a.cbl");
    store.Put(rule, "FromRow", from);
    store.Put(rule, "ToRow", to);
  }
  const auto covering = [&](const std::string& row) {
    return Passing("<and>" + Attr("FileName", "=", "a.cbl") + Attr("FromRow", "&gt;", row, true) +
                   Attr("ToRow", "&lt;", row, true) + "</and>");
  };
  EXPECT_EQ(covering("15"), "1;2");
  EXPECT_EQ(covering("20"), "1");
  EXPECT_EQ(covering("21"), "");
}

TEST_F(ConditionOnRules, ARelatedObjectMustExist) {
  AddElement(1, "ACC-1");
  AddElement(1, "BAL-1");
  AddElement(2, "BAL-1");
  EXPECT_EQ(Passing(Related("Has", "RULEIO", Attr("IOName", "like", "acc*"))), "1");
  EXPECT_EQ(Passing(Related("Has", "RULEIO", "")), "1;2");
  EXPECT_EQ(Passing(Related("BelongsToRule", "RULEIO", Attr("ID", "=", "3"))), "2");
  EXPECT_EQ(Passing(Related("Has", "RULEIO", Attr("IOName", "like", "acc*"), " negate=\"true\"")), "2;3");
}

TEST_F(ConditionOnRules, NotLikeOnARelatedObjectAsksForOneThatIsNotLike) {
  AddElement(1, "ACC-1");
  AddElement(2, "ACC-1");
  AddElement(2, "BAL-1");
  EXPECT_EQ(Passing(Related("Has", "RULEIO", Attr("IOName", "like", "ACC*", true))), "2");
}

TEST_F(ConditionOnRules, RelatedObjectsNest) {
  store.Repository().object("RULE#1")->Link("Triggers", MakeKey("RULESET", store.AddRuleSet("Triggered")));
  const auto triggered = Related("Triggers", "RULESET", Attr("Name", "=", "Triggered"));
  EXPECT_EQ(Passing(triggered), "1");
  EXPECT_EQ(Passing(Related("Has", "RULESET", Related("Has", "RULE", triggered))), "1;2;3");
  EXPECT_EQ(Passing("<and>" + triggered + Related("BelongsToRuleSet", "RULESET", Attr("Name", "=", "S")) + "</and>"),
            "1");
}

TEST_F(ConditionOnRules, RelatedObjectsNestUpToABound) {
  std::string condition = Attr("Name", "=", "S");
  for (int level = 0; level < 5; ++level) condition = Related("Has", level % 2 == 0 ? "RULESET" : "RULE", condition);
  EXPECT_EQ(Passing(condition), "1;2;3");
  condition = Related("Has", "RULESET", Related("Has", "RULE", condition));
  EXPECT_EQ(Failure(condition),
            "search condition: conditions stand too deep within each other; state it with fewer levels");
}

TEST_F(ConditionOnRules, TheDocumentDeliversWhatItNamesInItsOrder) {
  const auto fetch = store.Repository().NewFetch();
  const auto rule = fetch->AddObject(
      false, "RULE", "",
      Document("",
               "<fetchid as=\"RuleID\"/><fetchattr name=\"SeqNo\" as=\"RuleSeqNo\" order=\"desc\"/><fetchattr "
               "name=\"RuleName\"/>"));
  fetch->SetRoot(fetch->AddObject(false, "RULESET", "ID:SetID", {}, fetch->AddRelation("Has", false, "", rule)));
  EXPECT_EQ(Rows(*fetch, "", {"SetID", "RuleID", "RuleSeqNo", "RuleName"}), "1|2|10|rate two;1|1|5|Rate;1|3||");
  fetch->Execute("");
  EXPECT_EQ(ErrorText([&] { fetch->Row().Item("SeqNo"); }), "The fetch delivers no field \"SeqNo\".");
  EXPECT_EQ(ErrorText([&] { fetch->Row().Item("ID"); }), "The fetch delivers no field \"ID\".");
}

TEST_F(ConditionOnRules, TheDocumentsItemsComeBehindThoseOfTheList) {
  const auto filter = Document("", "<fetchid/><fetchattr name=\"RuleName\" order=\"asc\"/>");
  EXPECT_EQ(Select(store.Repository(), "RULE", "<SeqNo", filter, {"ID", "SeqNo", "RuleName"}),
            "2|10|rate two;1|5|Rate;3||");
  EXPECT_EQ(Select(store.Repository(), "rule", "", filter, {"ID"}), "3;1;2");
}

TEST_F(ConditionOnRules, TheSearchRunsOverTheStandardPath) {
  const auto function = store.AddFunction("F");
  store.AddCall(function, set, 1);
  store.AddCall(store.AddFunction("A"), set, 4);
  AddElement(2, "ACC");
  const auto fetch = store.Repository().NewFetch();
  const auto rule =
      fetch->AddObject(false, "RULE", "",
                       Document("<and>" + Attr("RuleName", "like", "rate*") +
                                    Related("Has", "RULEIO", Attr("IOName", "=", "ACC")) + "</and>",
                                "<fetchid as=\"RuleID\"/><fetchattr name=\"SeqNo\" as=\"RuleSeqNo\" order=\"asc\"/>"));
  const auto ruleSet = fetch->AddObject(true, "RULESET", "ID:SetID", {}, fetch->AddRelation("Has", false, "", rule));
  const auto call =
      fetch->AddObject(false, "RULESETCALL", ">SeqNo:CallSeqNo", {}, fetch->AddRelation("Refers", false, "", ruleSet));
  fetch->SetRoot(
      fetch->AddObject(true, "BUSINESSFUNC", "ID:FuncID,>Name", {}, fetch->AddRelation("Triggers", false, "", call)));
  EXPECT_EQ(Rows(*fetch, store.ProjectKey(), {"Name", "FuncID", "CallSeqNo", "SetID", "RuleID"}),
            "A|2|4|1|2;F|1|1|1|2");
  fetch->Execute(store.OtherProjectKey());
  EXPECT_TRUE(fetch->Eof());
}

TEST_F(ConditionOnRules, CountObjectsTakesTheDocument) {
  EXPECT_EQ(store.Repository().CountObjects("RULE", Document(Attr("SeqNo", "&gt;", "5"))), 1);
}

TEST_F(ConditionOnRules, AnEntityThatIsNotTheNodesIsRefused) {
  const auto filter = Document("");
  EXPECT_EQ(ErrorText([&] { IDs(store.Repository(), "RULEIO", filter); }),
            "The search condition is on RULE, but the node that it filters is RULEIO.");
}

TEST_F(ConditionOnRules, UnknownNamesAndBadValuesAreToldWhole) {
  EXPECT_EQ(Failure(Attr("Colour", "=", "red")), "search condition on \"Colour\": RULE has no attribute \"Colour\"");
  EXPECT_EQ(Failure(Attr("SeqNo", "&gt;", "five")), "search condition on \"SeqNo\": \"five\" is not a whole number.");
  EXPECT_EQ(
      Failure(Attr("RuleName", "like", "[a")),
      "search condition on \"RuleName\": The pattern \"[a\" opens a list with \"[\" at column 1 and does not close it. "
      "Add \"]\", or write \"[[]\" for the character itself.");
  EXPECT_EQ(Failure(Related("Owns", "RULEIO", "")), "search condition: RULE and RULEIO have no relation \"Owns\"");
  EXPECT_EQ(Failure(Related("Has", "TABLE", "")), "The repository has no entity \"TABLE\".");
  EXPECT_EQ(Failure(Related("Has", "RULEIO", Attr("Colour", "=", "red"))),
            "search condition on \"Colour\": The entity RULEIO has no attribute \"Colour\".");
  EXPECT_EQ(
      Failure("<attr name=\"SeqNo\" op=\"~\" arg=\"1\"/>"),
      "search condition object/cond/attr: the attribute \"op\" has the value \"~\"; =, <, >, <>, <=, >=, like, not "
      "like, in or not in is expected");
  EXPECT_EQ(ErrorText([&] { IDs(store.Repository(), "RULE", Document("", "<fetchattr name=\"Colour\"/>")); }),
            "search condition on \"Colour\": RULE has no attribute \"Colour\"");
}

}  // namespace
}  // namespace qmrules::test
