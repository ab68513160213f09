#include <gtest/gtest.h>

#include "platform/objectkey.h"
#include "support/errortext.h"
#include "support/teststore.h"
#include "workbench/repository/fetchrows.h"
#include "workbench/repository/storecontent.h"

namespace qmrules::test {
namespace {

using platform::MakeKey;

// Writes down every event, in order: "linked RuleSetHasRule RULESET#1 RULE#1".
class EventLog {
 public:
  explicit EventLog(platform::Repository& repository) {
    subscriptions_.push_back(repository.OnObjectAdded([&](const auto& key) { Note("added " + key); }));
    subscriptions_.push_back(repository.OnObjectDeleted([&](const auto& key) { Note("deleted " + key); }));
    subscriptions_.push_back(repository.OnLinked([&](const auto& from, const auto& to, const auto& relation) {
      Note("linked " + relation.Name() + " " + from + " " + to);
    }));
    subscriptions_.push_back(repository.OnUnLinked([&](const auto& from, const auto& to, const auto& relation) {
      Note("unlinked " + relation.Name() + " " + from + " " + to);
    }));
  }
  std::string Take() { return std::exchange(text_, {}); }

 private:
  void Note(const std::string& line) { text_ += (text_.empty() ? "" : "\n") + line; }
  std::vector<platform::Subscription> subscriptions_;
  std::string text_;
};

// One object of each entity of the catalogue, not linked.
class Loose : public ::testing::Test {
 protected:
  Loose() {
    for (const auto* entity : {"BUSINESSFUNC", "RULESETCALL", "RULESET", "RULE", "RULEIO", "RULECOND", "RULELOG"}) {
      store.Repository().NewObject(entity, "x");
    }
  }
  void Link(const std::string& from, const std::string& relation, const std::string& to) {
    store.Repository().object(from)->Link(relation, to);
  }
  void UnLink(const std::string& from, const std::string& relation, const std::string& to) {
    store.Repository().object(from)->UnLink(relation, to);
  }
  // The number of links in the relation's table.
  std::string Links(const std::string& relation) {
    return RunSql(store.StorePath(), "SELECT count(*) FROM Vek" + relation + "Tbl", 1);
  }
  TestStore store;
};

TEST_F(Loose, EveryRelationIsLinkedAndUnlinkedFromBothEndsInBothSpellings) {
  const struct {
    const char* name;
    const char* from;
    const char* directed;
    const char* to;
    const char* inverse;
  } relations[] = {
      {"BusinessFunctionTriggersRuleSet", "BUSINESSFUNC#1", "Triggers", "RULESETCALL#1", "IsTriggeredBy"},
      {"RuleSetCallRefersRuleSet", "RULESETCALL#1", "Refers", "RULESET#1", "IsRefferedBy"},
      {"RuleSetHasRule", "RULESET#1", "Has", "RULE#1", "BelongsToRuleSet"},
      {"RuleHasRuleIO", "RULE#1", "Has", "RULEIO#1", "BelongsToRule"},
      {"RuleIsControlledByCond", "RULE#1", "IsControlledBy", "RULECOND#1", "Controls"},
      {"RuleTriggersRuleSet", "RULE#1", "Triggers", "RULESET#1", "IsTriggeredBy"},
      {"RuleLogLogsRule", "RULELOG#1", "Logs", "RULE#1", "LoggedIn"},
      {"BusinessFunctionBelongsToProject", "BUSINESSFUNC#1", "BelongsTo", "PROJECT#1", "Contains"},
      {"RuleSetBelongsToProject", "RULESET#1", "BelongsTo", "PROJECT#2", "Contains"},
  };
  EventLog events(store.Repository());
  for (const auto& relation : relations) {
    const std::string keys = std::string(relation.name) + " " + relation.from + " " + relation.to;
    for (const auto* spelling : {relation.directed, relation.inverse}) {
      for (const bool isFromNear : {true, false}) {
        const auto* near = isFromNear ? relation.from : relation.to;
        const auto* far = isFromNear ? relation.to : relation.from;
        Link(near, spelling, far);
        EXPECT_EQ(events.Take(), "linked " + keys);
        EXPECT_EQ(Links(relation.name), "1");
        UnLink(near, spelling, far);
        EXPECT_EQ(events.Take(), "unlinked " + keys);
        EXPECT_EQ(Links(relation.name), "0");
      }
    }
  }
}

TEST_F(Loose, ARelationIsNamedInAnyCase) {
  Link("RULE#1", "belongstoruleset", "ruleset#1");
  EXPECT_EQ(Links("RuleSetHasRule"), "1");
}

TEST_F(Loose, ARelationThatTheTwoEntitiesDoNotHaveIsRefused) {
  EXPECT_EQ(ErrorText([&] { Link("RULE#1", "Owns", "RULEIO#1"); }),
            "RULE#1 and RULEIO#1 cannot be linked by \"Owns\": RULE and RULEIO have no such relation.");
  EXPECT_EQ(ErrorText([&] { Link("RULESET#1", "Has", "RULEIO#1"); }),
            "RULESET#1 and RULEIO#1 cannot be linked by \"Has\": RULESET and RULEIO have no such relation.");
  EXPECT_EQ(ErrorText([&] { UnLink("RULE#1", "BelongsTo", "PROJECT#1"); }),
            "RULE#1 and PROJECT#1 cannot be linked by \"BelongsTo\": RULE and PROJECT have no such relation.");
  EXPECT_EQ(ErrorText([&] { Link("RULE#1", "", "RULEIO#1"); }),
            "RULE#1 and RULEIO#1 cannot be linked by \"\": RULE and RULEIO have no such relation.");
}

TEST_F(Loose, AnObjectThatIsMissingCannotBeLinked) {
  EXPECT_EQ(ErrorText([&] { Link("RULE#1", "Has", "RULEIO#9"); }), "There is no object RULEIO#9 to link.");
  EXPECT_EQ(ErrorText([&] { Link("RULE#1", "Has", "RULEIO"); }),
            "\"RULEIO\" is not an object key. A key is an entity name, \"#\" and a number, as RULE#17.");
  const auto handle = store.Repository().object("RULE#1");
  store.Repository().object("RULE#1")->Delete();
  EXPECT_EQ(ErrorText([&] { handle->Link("Has", "RULEIO#1"); }), "There is no object RULE#1 to link.");
  EXPECT_EQ(Links("RuleHasRuleIO"), "0");
}

TEST_F(Loose, ALinkThatStandsIsLeftAsItIsWithoutAnEvent) {
  Link("RULESET#1", "Has", "RULE#1");
  const auto entry = LastJournalEntry(store.StorePath());
  EventLog events(store.Repository());
  Link("RULESET#1", "Has", "RULE#1");
  Link("RULE#1", "BelongsToRuleSet", "RULESET#1");
  EXPECT_EQ(events.Take(), "");
  EXPECT_EQ(Links("RuleSetHasRule"), "1");
  EXPECT_EQ(LastJournalEntry(store.StorePath()), entry);
}

TEST_F(Loose, WhatIsNotLinkedCannotBeUnlinked) {
  EventLog events(store.Repository());
  EXPECT_EQ(ErrorText([&] { UnLink("RULE#1", "Has", "RULEIO#1"); }), "RULE#1 and RULEIO#1 are not linked by \"Has\".");
  EXPECT_EQ(events.Take(), "");
}

TEST_F(Loose, TriggersOfARuleAndOfAFunctionAreDifferentRelations) {
  Link("RULE#1", "Triggers", "RULESET#1");
  Link("BUSINESSFUNC#1", "Triggers", "RULESETCALL#1");
  EXPECT_EQ(Links("RuleTriggersRuleSet"), "1");
  EXPECT_EQ(Links("BusinessFunctionTriggersRuleSet"), "1");
  UnLink("RULESETCALL#1", "IsTriggeredBy", "BUSINESSFUNC#1");
  EXPECT_EQ(Links("RuleTriggersRuleSet"), "1");
}

TEST_F(Loose, AddedIsToldAfterTheObjectStands) {
  std::string seen;
  const auto subscription = store.Repository().OnObjectAdded(
      [&](const std::string& key) { seen += key + "=" + store.Get(key, "Name").Text(); });
  store.Repository().NewObject("RULE", "fresh");
  EXPECT_EQ(seen, "RULE#2=fresh");
}

TEST_F(Loose, LinkedIsToldAfterTheLinkStands) {
  std::string seen;
  const auto subscription = store.Repository().OnLinked(
      [&](const auto&, const auto&, const auto& relation) { seen += Links(relation.Name()); });
  Link("RULESET#1", "Has", "RULE#1");
  EXPECT_EQ(seen, "1");
}

TEST_F(Loose, DeletedIsToldAfterTheObjectIsGone) {
  std::string seen;
  const auto subscription = store.Repository().OnObjectDeleted(
      [&](const std::string& key) { seen += ErrorText([&] { store.Repository().object(key); }); });
  store.Repository().object("RULE#1")->Delete();
  EXPECT_EQ(seen, "There is no object RULE#1; it may have been deleted.");
}

TEST_F(Loose, ASubscriptionEndsWithItsScope) {
  int told = 0;
  {
    const auto subscription = store.Repository().OnObjectAdded([&](const auto&) { ++told; });
    store.Repository().NewObject("RULE", "a");
  }
  store.Repository().NewObject("RULE", "b");
  EXPECT_EQ(told, 1);
}

TEST_F(Loose, AnObserverMayUnsubscribeItself) {
  int told = 0;
  platform::Subscription subscription;
  subscription = store.Repository().OnObjectAdded([&](const auto&) {
    ++told;
    subscription = {};
  });
  store.Repository().NewObject("RULE", "a");
  store.Repository().NewObject("RULE", "b");
  EXPECT_EQ(told, 1);
}

TEST_F(Loose, AnObserverMayWriteAndItsWritesAreTold) {
  EventLog events(store.Repository());
  const auto subscription = store.Repository().OnObjectAdded([&](const std::string& key) {
    if (!key.starts_with("RULE#")) return;
    const auto io = store.Repository().NewObject("RULEIO", "made by the observer");
    store.Repository().object(key)->Link("Has", io->Key());
  });
  store.Repository().NewObject("RULE", "a");
  EXPECT_EQ(events.Take(), "added RULE#2\nadded RULEIO#2\nlinked RuleHasRuleIO RULE#2 RULEIO#2");
}

TEST_F(Loose, AnObserverOfADeletionMayWriteInTheMidstOfIt) {
  Link("RULE#1", "Has", "RULEIO#1");
  const auto subscription = store.Repository().OnUnLinked(
      [&](const auto&, const auto&, const auto&) { store.Put("RULESET#1", "Description", "noted"); });
  store.Repository().object("RULE#1")->Delete();
  EXPECT_EQ(store.Get("RULESET#1", "Description").Text(), "noted");
  EXPECT_EQ(IDs(store.Repository(), "RULEIO", {}), "");
}

TEST_F(Loose, AnObserverThatGivesUpATransactionInTheMidstOfADeletionUndoesTheWhole) {
  Link("RULE#1", "Has", "RULEIO#1");
  const auto before = ReadContent(store.StorePath());
  {
    const auto subscription = store.Repository().OnUnLinked([&](const auto&, const auto&, const auto&) {
      const auto transaction = store.Repository().BeginTransaction();
      store.Put("RULESET#1", "Description", "given up");
    });
    EXPECT_EQ(
        ErrorText([&] { store.Repository().object("RULE#1")->Delete(); }),
        "The transaction on \"" + store.StorePath() + "\" was given up after a failure; nothing of it was written.");
  }
  EXPECT_EQ(ReadContent(store.StorePath()), before);
  store.Repository().object("RULE#1")->Delete();
  EXPECT_EQ(IDs(store.Repository(), "RULE", {}), "");
}

TEST_F(Loose, AnObserverThatFailsInTheMidstOfADeletionUndoesTheWhole) {
  Link("RULE#1", "Has", "RULEIO#1");
  const auto before = ReadContent(store.StorePath());
  const auto subscription =
      store.Repository().OnUnLinked([&](const auto&, const auto&, const auto&) { throw platform::Error("not now"); });
  EXPECT_EQ(ErrorText([&] { store.Repository().object("RULE#1")->Delete(); }), "not now");
  EXPECT_EQ(ReadContent(store.StorePath()), before);
}

TEST_F(Loose, AnObserverMayDeleteTheOwnedObjectFirst) {
  Link("RULE#1", "Has", "RULEIO#1");
  const auto subscription = store.Repository().OnUnLinked(
      [&](const auto&, const std::string& to, const auto&) { store.Repository().object(to)->Delete(); });
  store.Repository().object("RULE#1")->Delete();
  EXPECT_EQ(IDs(store.Repository(), "RULE", {}), "");
  EXPECT_EQ(IDs(store.Repository(), "RULEIO", {}), "");
}

TEST(StoreDeletion, ARuleTakesItsElementsConditionsAndLogAlong) {
  TestStore store;
  const auto set = store.AddRuleSet("S");
  const auto rule = MakeKey("RULE", store.AddRule(set, "R", 1));
  const auto kept = MakeKey("RULE", store.AddRule(set, "Kept", 2));
  for (const auto& [key, name] : {std::pair{rule, "a"}, {kept, "b"}}) {
    const auto object = store.Repository().object(key);
    object->Link("Has", MakeKey("RULEIO", store.Add("RULEIO", name)));
    object->Link("IsControlledBy", MakeKey("RULECOND", store.Add("RULECOND", name)));
    object->Link("Logs", MakeKey("RULELOG", store.Add("RULELOG", name)));
    object->Link("Triggers", MakeKey("RULESET", set));
  }
  EventLog events(store.Repository());
  store.Repository().object(rule)->Delete();
  EXPECT_EQ(events.Take(),
            "unlinked RuleSetHasRule RULESET#1 RULE#1\n"
            "unlinked RuleHasRuleIO RULE#1 RULEIO#1\n"
            "unlinked RuleIsControlledByCond RULE#1 RULECOND#1\n"
            "unlinked RuleTriggersRuleSet RULE#1 RULESET#1\n"
            "unlinked RuleLogLogsRule RULELOG#1 RULE#1\n"
            "deleted RULEIO#1\ndeleted RULECOND#1\ndeleted RULELOG#1\ndeleted RULE#1");
  for (const auto* entity : {"RULE", "RULEIO", "RULECOND", "RULELOG"}) {
    EXPECT_EQ(IDs(store.Repository(), entity, {}), "2") << entity;
  }
  EXPECT_EQ(IDs(store.Repository(), "RULESET", {}), "1");
}

TEST(StoreDeletion, AnElementLogOrConditionDoesNotTakeItsRule) {
  TestStore store;
  const auto rule = MakeKey("RULE", store.AddRule(store.AddRuleSet("S"), "R", 1));
  for (const auto* entity : {"RULEIO", "RULECOND", "RULELOG"}) {
    const auto key = MakeKey(entity, store.Add(entity, "x"));
    const auto* relation = key.starts_with("RULEIO") ? "Has" : key.starts_with("RULEL") ? "Logs" : "Controls";
    store.Repository().object(rule)->Link(relation, key);
    store.Repository().object(key)->Delete();
  }
  EXPECT_EQ(IDs(store.Repository(), "RULE", {}), "1");
}

TEST(StoreDeletion, AFunctionTakesItsCallsAndNoRuleSet) {
  TestStore store;
  const auto one = store.AddFunction("One");
  const auto two = store.AddFunction("Two");
  const auto set = store.AddRuleSet("S");
  store.AddRule(set, "R", 1);
  store.AddCall(one, set, 1);
  store.AddCall(one, set, 2);
  store.AddCall(two, set, 1);
  store.Repository().object(MakeKey("BUSINESSFUNC", one))->Delete();
  EXPECT_EQ(IDs(store.Repository(), "RULESETCALL", {}), "3");
  EXPECT_EQ(IDs(store.Repository(), "RULESET", {}), "1");
  EXPECT_EQ(IDs(store.Repository(), "RULE", {}), "1");
  EXPECT_EQ(IDs(store.Repository(), "BUSINESSFUNC", {}), "2");
}

TEST(StoreDeletion, ARuleSetLeavesItsRulesAndCallsStanding) {
  TestStore store;
  const auto function = store.AddFunction("F");
  const auto set = store.AddRuleSet("S");
  store.AddRule(set, "R", 1);
  store.AddCall(function, set, 1);
  store.Repository().object(MakeKey("RULESET", set))->Delete();
  EXPECT_EQ(IDs(store.Repository(), "RULE", {}), "1");
  EXPECT_EQ(IDs(store.Repository(), "RULESETCALL", {}), "1");
  EXPECT_EQ(IDs(store.Repository(), "BUSINESSFUNC", {}), "1");
  EXPECT_EQ(RunSql(store.StorePath(), "SELECT count(*) FROM VekRuleSetHasRuleTbl", 1), "0");
  EXPECT_EQ(RunSql(store.StorePath(), "SELECT count(*) FROM VekRuleSetCallRefersRuleSetTbl", 1), "0");
}

TEST(StoreDeletion, ACallTakesNeitherItsFunctionNorItsRuleSet) {
  TestStore store;
  const auto call = store.AddCall(store.AddFunction("F"), store.AddRuleSet("S"), 1);
  store.Repository().object(MakeKey("RULESETCALL", call))->Delete();
  EXPECT_EQ(IDs(store.Repository(), "BUSINESSFUNC", {}), "1");
  EXPECT_EQ(IDs(store.Repository(), "RULESET", {}), "1");
}

TEST(StoreDeletion, AProgramTakesTheSourceThatItProduces) {
  TestStore store;
  const auto program = store.Repository().object(MakeKey("PROGRAM", store.Add("PROGRAM", "P")));
  program->Link("Produces", MakeKey("COBOL", store.Add("COBOL", "P")));
  program->Delete();
  EXPECT_EQ(IDs(store.Repository(), "COBOL", {}), "");
}

// The rule set's node under the function is found by way of the call.
TEST(StoreDeletion, UnlinkedOfACallIsToldWhileTheCallStillRefersToItsRuleSet) {
  TestStore store;
  const auto function = store.AddFunction("F");
  const auto set = store.AddRuleSet("S");
  store.AddCall(function, set, 1);
  std::string seen;
  const auto subscription =
      store.Repository().OnUnLinked([&](const std::string&, const std::string& to, const auto& relation) {
        if (relation.Name() != "BusinessFunctionTriggersRuleSet") return;
        const auto fetch = store.Repository().NewFetch();
        const auto ruleSet = fetch->AddObject(false, "RULESET", "ID");
        const auto refers = fetch->AddRelation("Refers", false, "", ruleSet);
        const auto id = std::to_string(platform::SplitKey(to).id);
        fetch->SetRoot(fetch->AddObject(false, "RULESETCALL", "", "ID=" + id, refers));
        seen += Rows(*fetch, "", {"ID"});
      });
  store.Repository().object("RULESETCALL#1")->Delete();
  EXPECT_EQ(seen, "1");
  store.AddCall(function, set, 1);
  store.Repository().object(MakeKey("BUSINESSFUNC", function))->Delete();
  EXPECT_EQ(seen, "11");
}

TEST(StoreMembership, EveryEntityIsInTheProjectOfWhatHoldsIt) {
  TestStore store;
  auto& repository = store.Repository();
  const auto function = store.AddFunction("F");
  const auto set = store.AddRuleSet("S");
  const auto call = store.AddCall(function, set, 1);
  const auto rule = repository.object(MakeKey("RULE", store.AddRule(set, "R", 1)));
  std::vector<std::string> keys = {MakeKey("BUSINESSFUNC", function), MakeKey("RULESET", set),
                                   MakeKey("RULESETCALL", call), rule->Key()};
  for (const auto& [entity, relation] :
       {std::pair{"RULEIO", "Has"}, {"RULECOND", "IsControlledBy"}, {"RULELOG", "Logs"}}) {
    keys.push_back(MakeKey(entity, store.Add(entity, "x")));
    rule->Link(relation, keys.back());
  }
  for (const auto* entity : {"PROGRAM", "COBOL", "NATURAL", "PLI", "RPG", "JCL"}) {
    keys.push_back(repository.NewObject(entity, "x")->Key());
    repository.object(keys.back())->Link("BelongsTo", store.ProjectKey());
  }
  for (const auto& key : keys) {
    EXPECT_TRUE(repository.object(key)->BelongsToProject(store.ProjectKey())) << key;
    EXPECT_FALSE(repository.object(key)->BelongsToProject(store.OtherProjectKey())) << key;
  }
}

TEST(StoreMembership, WhatNothingHoldsIsInNoProject) {
  TestStore store;
  for (const auto* entity : {"BUSINESSFUNC", "RULESET", "RULESETCALL", "RULE", "RULEIO", "RULECOND", "RULELOG", "COBOL",
                             "PROGRAM", "PROGRAMCODE", "PROJECT"}) {
    EXPECT_FALSE(store.Repository().NewObject(entity, "x")->BelongsToProject(store.ProjectKey())) << entity;
  }
}

TEST(StoreMembership, ASharedRuleSetIsInBothProjectsAndSoAreItsRules) {
  TestStore store;
  const auto set = store.AddRuleSet("S");
  const auto rule = store.AddRule(set, "R", 1);
  store.Repository().object(MakeKey("RULESET", set))->Link("BelongsTo", store.OtherProjectKey());
  for (const auto& project : {store.ProjectKey(), store.OtherProjectKey()}) {
    EXPECT_TRUE(store.Repository().object(MakeKey("RULE", rule))->BelongsToProject(project));
  }
}

TEST(StoreMembership, WhatIsNoProjectIsRefused) {
  TestStore store;
  const auto set = store.Repository().object(MakeKey("RULESET", store.AddRuleSet("S")));
  EXPECT_EQ(ErrorText([&] { set->BelongsToProject("RULESET#1"); }), "RULESET#1 is no project.");
  EXPECT_EQ(ErrorText([&] { set->BelongsToProject(""); }),
            "\"\" is not an object key. A key is an entity name, \"#\" and a number, as RULE#17.");
}

}  // namespace
}  // namespace qmrules::test
