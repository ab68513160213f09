// The change journal: what each kind of write leaves in it, and how it is grouped.

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <random>
#include <set>

#include "platform/database.h"
#include "platform/error.h"
#include "platform/objectkey.h"
#include "support/errortext.h"
#include "support/teststore.h"
#include "workbench/repository/fetchrows.h"
#include "workbench/repository/storecontent.h"

namespace qmrules::test {
namespace {

using platform::MakeKey;
using platform::Value;
using Lines = std::vector<std::string>;

class Journal : public ::testing::Test {
 protected:
  Journal() { begin_ = LastJournalEntry(store.StorePath()); }
  Lines Entries() { return JournalEntries(store.StorePath(), begin_); }
  void Forget() { begin_ = LastJournalEntry(store.StorePath()); }
  // Entries as "number of the command's row, command, action, object"; rows count from 1 in order of appearance.
  std::string Groups() {
    return RunSql(
        store.StorePath(),
        "SELECT DENSE_RANK() OVER (ORDER BY j.CommandID), c.Command, j.Action, j.Object FROM VekJournalTbl j JOIN "
        "VekJournalCommandTbl c USING (CommandID) WHERE EntryID > " +
            std::to_string(begin_) + " ORDER BY EntryID",
        4);
  }
  TestStore store;

 private:
  std::int64_t begin_ = 0;
};

TEST_F(Journal, ANewObjectIsJournaledWithAllItsValues) {
  store.Repository().NewObject("RULE", "n\"1\"");
  EXPECT_EQ(Entries(), (Lines{"ADD RULE#1 {\"Name\":[null,\"n\\\"1\\\"\"],\"Created\":[null,\"2026-01-31 12:00:00\"],"
                              "\"CreatedBy\":[null,\"analyst\"],\"Modified\":[null,\"2026-01-31 12:00:00\"],"
                              "\"ModifiedBy\":[null,\"analyst\"]}"}));
}

TEST_F(Journal, AnEditIsJournaledWithOldAndNewValuesOfWhatChanged) {
  const auto key = store.Repository().NewObject("RULE", "n")->Key();
  store.Put(key, "RuleName", "old\r\n\xC3\xA4");
  Forget();
  store.Clock().Set(*platform::ParseTimestamp("2026-02-01"));
  const auto rule = store.Repository().object(key);
  rule->Edit();
  rule->Attrs("RuleName", "new");
  rule->Attrs("SeqNo", 7);
  rule->Attrs("Valid", Value());
  rule->Post();
  EXPECT_EQ(Entries(), (Lines{"EDIT RULE#1 {\"RuleName\":[\"old\\r\\n\xC3\xA4\",\"new\"],\"SeqNo\":[null,7],"
                              "\"Modified\":[\"2026-01-31 12:00:00\",\"2026-02-01 00:00:00\"]}"}));
}

TEST_F(Journal, LinksAreJournaledInTheRelationsOwnDirection) {
  store.Repository().NewObject("RULESET", "s");
  store.Repository().NewObject("RULE", "n");
  Forget();
  store.Repository().object("RULE#1")->Link("BelongsToRuleSet", "RULESET#1");
  store.Repository().object("RULESET#1")->UnLink("Has", "RULE#1");
  EXPECT_EQ(Entries(), (Lines{"LINK RULESET#1 RULE#1 {\"Relation\":\"RuleSetHasRule\"}",
                              "UNLINK RULESET#1 RULE#1 {\"Relation\":\"RuleSetHasRule\"}"}));
}

TEST_F(Journal, ADeletionIsJournaledWithItsLinksItsOwnedObjectsAndAllOldValues) {
  const auto rule = store.Repository().NewObject("RULE", "n");
  rule->Link("Has", store.Repository().NewObject("RULEIO", "io")->Key());
  store.Put("RULE#1", "SeqNo", 3);
  Forget();
  rule->Delete();
  const std::string system =
      "\"Created\":[\"2026-01-31 12:00:00\",null],\"CreatedBy\":[\"analyst\",null],"
      "\"Modified\":[\"2026-01-31 12:00:00\",null],\"ModifiedBy\":[\"analyst\",null]}";
  EXPECT_EQ(Entries(), (Lines{"UNLINK RULE#1 RULEIO#1 {\"Relation\":\"RuleHasRuleIO\"}",
                              "DELETE RULEIO#1 {\"Name\":[\"io\",null]," + system,
                              "DELETE RULE#1 {\"Name\":[\"n\",null],\"SeqNo\":[3,null]," + system}));
}

TEST_F(Journal, WhoAndWhenStandWithTheCommand) {
  store.Clock().Set(*platform::ParseTimestamp("2026-03-04 05:06:07"));
  {
    const auto command = store.Repository().BeginCommand("NewRule");
    store.Repository().NewObject("RULE", "n");
  }
  EXPECT_EQ(RunSql(store.StorePath(),
                   "SELECT At, UserName, Command FROM VekJournalCommandTbl ORDER BY CommandID DESC LIMIT 1", 3),
            "2026-03-04 05:06:07|analyst|NewRule");
}

TEST_F(Journal, TheWritesOfOneCommandShareItsRow) {
  {
    const auto command = store.Repository().BeginCommand("NewRule");
    store.Repository().NewObject("RULE", "n");
    store.Put("RULE#1", "SeqNo", 1);
  }
  {
    const auto command = store.Repository().BeginCommand("Rename");
    store.Put("RULE#1", "RuleName", "x");
  }
  EXPECT_EQ(Groups(), "1|NewRule|ADD|RULE#1;1|NewRule|EDIT|RULE#1;2|Rename|EDIT|RULE#1");
}

TEST_F(Journal, AWriteOutsideAnyCommandHasARowOfItsOwn) {
  store.Repository().NewObject("RULE", "n");
  store.Put("RULE#1", "SeqNo", 1);
  EXPECT_EQ(Groups(), "1||ADD|RULE#1;2||EDIT|RULE#1");
}

TEST_F(Journal, OneCallThatWritesSeveralEntriesHasOneRow) {
  const auto rule = store.Repository().NewObject("RULE", "n");
  rule->Link("Has", store.Repository().NewObject("RULEIO", "io")->Key());
  Forget();
  rule->Delete();
  EXPECT_EQ(Groups(), "1||UNLINK|RULE#1;1||DELETE|RULEIO#1;1||DELETE|RULE#1");
}

TEST_F(Journal, AnInnerCommandIsPartOfTheOuter) {
  {
    const auto outer = store.Repository().BeginCommand("Import");
    store.Repository().NewObject("RULE", "a");
    {
      const auto inner = store.Repository().BeginCommand("NewRule");
      store.Repository().NewObject("RULE", "b");
    }
    store.Repository().NewObject("RULE", "c");
  }
  store.Repository().NewObject("RULE", "d");
  EXPECT_EQ(Groups(), "1|Import|ADD|RULE#1;1|Import|ADD|RULE#2;1|Import|ADD|RULE#3;2||ADD|RULE#4");
}

TEST_F(Journal, ACommandThatWritesNothingLeavesNoRow) {
  const auto rows = RunSql(store.StorePath(), "SELECT count(*) FROM VekJournalCommandTbl", 1);
  { const auto command = store.Repository().BeginCommand("Look"); }
  EXPECT_EQ(RunSql(store.StorePath(), "SELECT count(*) FROM VekJournalCommandTbl", 1), rows);
}

TEST_F(Journal, ATransactionThatIsGivenUpLeavesNothing) {
  const auto before = ReadContent(store.StorePath());
  {
    const auto command = store.Repository().BeginCommand("Import");
    {
      const auto transaction = store.Repository().BeginTransaction();
      store.Repository().NewObject("RULE", "a");
    }
    EXPECT_EQ(ReadContent(store.StorePath()), before);
    store.Repository().NewObject("RULE", "b");
  }
  EXPECT_EQ(Groups(), "1|Import|ADD|RULE#1");
}

TEST_F(Journal, ACommandKeepsItsRowOverSeveralTransactions) {
  const auto command = store.Repository().BeginCommand("Import");
  for (int i = 0; i < 2; ++i) {
    const auto transaction = store.Repository().BeginTransaction();
    store.Repository().NewObject("RULE", "n");
    transaction->Commit();
  }
  { const auto givenUp = store.Repository().BeginTransaction(); }
  store.Repository().NewObject("RULE", "n");
  EXPECT_EQ(Groups(), "1|Import|ADD|RULE#1;1|Import|ADD|RULE#2;1|Import|ADD|RULE#3");
}

TEST_F(Journal, ALinkThatStandsAndARefusedCallDoNotSplitTheCommand) {
  store.Repository().NewObject("RULESET", "taken");
  store.Repository().NewObject("RULE", "n");
  store.Repository().object("RULESET#1")->Link("Has", "RULE#1");
  Forget();
  {
    const auto command = store.Repository().BeginCommand("Import");
    const auto transaction = store.Repository().BeginTransaction();
    store.Repository().NewObject("RULE", "a");
    store.Repository().object("RULESET#1")->Link("Has", "RULE#1");
    EXPECT_EQ(ErrorText([&] { store.Repository().NewObject("RULESET", "taken"); }),
              "Rule Set \"taken\" exists already as RULESET#1; choose another name.");
    store.Repository().NewObject("RULE", "b");
    transaction->Commit();
  }
  EXPECT_EQ(Groups(), "1|Import|ADD|RULE#2;1|Import|ADD|RULE#3");
}

TEST_F(Journal, WritesOfObserversBelongToTheCommand) {
  const auto subscription = store.Repository().OnObjectAdded([&](const std::string& key) {
    if (key.starts_with("RULE#")) store.Repository().NewObject("RULELOG", "log");
  });
  {
    const auto command = store.Repository().BeginCommand("NewRule");
    store.Repository().NewObject("RULE", "n");
  }
  EXPECT_EQ(Groups(), "1|NewRule|ADD|RULE#1;1|NewRule|ADD|RULELOG#1");
}

TEST_F(Journal, EntriesOfCommandsFollowInTheOrderOfTheirWriting) {
  for (int i = 0; i < 5; ++i) store.Repository().NewObject("RULE", "n");
  store.Reopen();
  for (int i = 0; i < 5; ++i) store.Repository().NewObject("RULE", "n");
  EXPECT_EQ(
      RunSql(store.StorePath(),
             "SELECT count(*) FROM VekJournalTbl a JOIN VekJournalTbl b ON b.EntryID > a.EntryID AND b.CommandID < "
             "a.CommandID",
             1),
      "0");
  EXPECT_EQ(RunSql(store.StorePath(),
                   "SELECT count(*) FROM VekJournalTbl WHERE CommandID NOT IN (SELECT CommandID FROM "
                   "VekJournalCommandTbl)",
                   1),
            "0");
}

// What the store holds: set attributes by object, and links.
struct Content {
  std::map<std::string, std::map<std::string, std::string>> objects;
  std::set<std::string> links;
};

Content ContentOf(TestStore& store) {
  Content content;
  for (const auto* entity : store.Repository().Schema().Entities()) {
    std::string list = "ID";
    for (const auto* attribute : entity->Attrs()) list += "," + attribute->Name();
    const auto fetch = store.Repository().NewFetch();
    fetch->SetRoot(fetch->AddObject(false, entity->Name(), list));
    for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) {
      auto& object = content.objects[entity->Name() + "#" + fetch->Row().Item("ID").Text()];
      for (const auto* attribute : entity->Attrs()) {
        const auto field = fetch->Row().Item(attribute->Name());
        if (!field.Value().IsAbsent()) object[attribute->Name()] = field.Text();
      }
    }
  }
  auto tables = ReadContent(store.StorePath());
  for (const auto& [relation, from, to] : {std::tuple{"RuleSetHasRule", "RULESET", "RULE"},
                                           {"RuleHasRuleIO", "RULE", "RULEIO"},
                                           {"RuleTriggersRuleSet", "RULE", "RULESET"},
                                           {"RuleLogLogsRule", "RULELOG", "RULE"}}) {
    for (const auto& row : tables["Vek" + std::string(relation) + "Tbl"]) {
      const auto bar = row.find('|');
      content.links.insert(std::string(relation) + " " + from + "#" + row.substr(0, bar) + " " + to + "#" +
                           row.substr(bar + 1));
    }
  }
  return content;
}

// Plays the journal over an empty store, and checks each old value against what stands there.
Content Replay(const std::string& path) {
  Content content;
  for (const auto& entry : JournalEntries(path)) {
    const auto changes = nlohmann::json::parse(entry.substr(entry.find(" {") + 1));
    const auto action = entry.substr(0, entry.find(' '));
    const auto keys = entry.substr(action.size() + 1, entry.find(" {") - action.size() - 1);
    if (action == "LINK") {
      EXPECT_TRUE(content.links.insert(changes["Relation"].get<std::string>() + " " + keys).second) << entry;
    } else if (action == "UNLINK") {
      EXPECT_EQ(content.links.erase(changes["Relation"].get<std::string>() + " " + keys), 1u) << entry;
    } else {
      EXPECT_EQ(content.objects.contains(keys), action != "ADD") << entry;
      auto& object = content.objects[keys];
      for (const auto& [name, values] : changes.items()) {
        const auto text = [](const auto& value) {
          return value.is_string() ? value.template get<std::string>() : value.dump();
        };
        EXPECT_EQ(object.contains(name) ? object[name] : "null", text(values[0])) << entry;
        object.erase(name);
        if (!values[1].is_null()) object[name] = text(values[1]);
      }
      if (action != "DELETE") continue;
      EXPECT_TRUE(object.empty()) << entry;
      content.objects.erase(keys);
    }
  }
  return content;
}

// One random write; those that the store refuses are part of the game.
void WriteAtRandom(TestStore& store, std::mt19937& random) {
  const auto roll = [&](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
  const auto id = [&] { return std::to_string(1 + roll(12)); };
  static const char* const entities[] = {"RULESET", "RULE", "RULEIO", "RULELOG"};
  static const char* const texts[] = {"", "a", "it's", "\"q\"\\", "\xC3\xA4\r\n", "a"};
  const auto key = std::string(entities[roll(4)]) + "#" + id();
  auto& repository = store.Repository();
  switch (roll(8)) {
    case 0:
    case 1:
      repository.NewObject(entities[roll(4)], "n" + std::to_string(roll(40)));
      break;
    case 2:
      store.Put("RULE#" + id(), roll(2) == 0 ? "RuleName" : "Description", texts[roll(6)]);
      break;
    case 3:
      store.Put("RULE#" + id(), "SeqNo", roll(3) == 0 ? Value() : Value(roll(3)));
      break;
    case 4:
      repository.object("RULESET#" + id())->Link("Has", "RULE#" + id());
      break;
    case 5:
      repository.object("RULE#" + id())
          ->Link(roll(2) == 0 ? "Has" : "Logs", (roll(2) == 0 ? "RULEIO#" : "RULELOG#") + id());
      break;
    case 6:
      repository.Database().Execute("update VekRULETbl set RuleName='it''s' where ObjectID in (" + id() + "," + id() +
                                    ")");
      break;
    default:
      if (roll(3) == 0)
        repository.object(key)->Delete();
      else
        repository.object("RULESET#" + id())->UnLink("Has", "RULE#" + id());
  }
}

TEST_F(Journal, ReplayedOverNothingItGivesTheContentOfTheStore) {
  std::mt19937 random(7);
  int refused = 0;
  for (int step = 0; step < 600; ++step) {
    store.Clock().Set({platform::ParseTimestamp("2026-02-01")->seconds + step});
    std::unique_ptr<platform::Transaction> transaction;
    if (random() % 4 == 0) transaction = store.Repository().BeginTransaction();
    try {
      WriteAtRandom(store, random);
      if (transaction && random() % 2 == 0) {
        WriteAtRandom(store, random);
        transaction->Commit();
      }
    } catch (const platform::Error&) {
      ++refused;
    }
  }
  const auto content = ContentOf(store);
  EXPECT_GT(content.objects.size(), 20u);
  EXPECT_GT(content.links.size(), 3u);
  EXPECT_GT(refused, 20);
  const auto replayed = Replay(store.StorePath());
  EXPECT_EQ(replayed.objects, content.objects);
  EXPECT_EQ(replayed.links, content.links);
}

}  // namespace
}  // namespace qmrules::test
