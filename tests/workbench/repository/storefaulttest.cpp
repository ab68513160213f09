// A failure at every single writing statement, one after another.

#include <gtest/gtest.h>

#include <functional>

#include "platform/database.h"
#include "platform/error.h"
#include "platform/objectkey.h"
#include "support/errortext.h"
#include "support/faultyconnection.h"
#include "support/teststore.h"
#include "workbench/repository/sqliteconnection.h"
#include "workbench/repository/store.h"
#include "workbench/repository/storecontent.h"

namespace qmrules::test {
namespace {

namespace repository = workbench::repository;
using platform::MakeKey;

repository::ConnectionFactory FaultyFactory(std::shared_ptr<Fault> fault) {
  return [fault](const std::string& path) {
    return MakeFaulty(repository::OpenSqliteConnection(path, repository::Durability::Relaxed), fault);
  };
}

// A store whose connection fails where it is told to.
struct FaultyStore {
  std::shared_ptr<Fault> fault = std::make_shared<Fault>();
  TestStore store{"", FaultyFactory(fault)};
};

struct Write {
  const char* name;
  std::function<void(platform::Repository&)> run;
};

void Put(platform::Repository& store, const std::string& key, const std::string& attribute,
         const platform::Value& value) {
  const auto object = store.object(key);
  object->Edit();
  object->Attrs(attribute, value);
  object->Post();
}

// Several writes that belong together.
void FillRule(platform::Repository& store, const std::string& name) {
  const auto rule = store.NewObject("RULE", name);
  rule->Link("BelongsToRuleSet", "RULESET#1");
  rule->Link("Has", store.NewObject("RULEIO", name)->Key());
  Put(store, rule->Key(), "RuleName", name);
  rule->Link("BelongsToRuleSet", "RULESET#1");
}

const std::vector<Write>& AllKindsOfWrites() {
  static const std::vector<Write> steps = {
      {"create", [](auto& store) { store.NewObject("RULESET", "S"); }},
      {"create a function", [](auto& store) { store.NewObject("BUSINESSFUNC", "F"); }},
      {"create a call", [](auto& store) { store.NewObject("RULESETCALL", "c"); }},
      {"link to the project", [](auto& store) { store.object("RULESET#1")->Link("BelongsTo", "PROJECT#1"); }},
      {"link the call", [](auto& store) { store.object("RULESETCALL#1")->Link("IsTriggeredBy", "BUSINESSFUNC#1"); }},
      {"link the rule set", [](auto& store) { store.object("RULESETCALL#1")->Link("Refers", "RULESET#1"); }},
      {"link again", [](auto& store) { store.object("RULESETCALL#1")->Link("Refers", "RULESET#1"); }},
      {"change", [](auto& store) { Put(store, "RULESET#1", "Description", "text"); }},
      {"rename", [](auto& store) { Put(store, "RULESET#1", "Name", "T"); }},
      {"a command",
       [](auto& store) {
         const auto command = store.BeginCommand("Rename");
         Put(store, "RULESET#1", "Name", "U");
       }},
      {"a transaction",
       [](auto& store) {
         const auto transaction = store.BeginTransaction();
         FillRule(store, "in a transaction");
         transaction->Commit();
       }},
      {"a transaction in a command",
       [](auto& store) {
         const auto command = store.BeginCommand("Import");
         const auto transaction = store.BeginTransaction();
         FillRule(store, "first");
         const auto inner = store.BeginTransaction();
         FillRule(store, "second");
         inner->Commit();
         transaction->Commit();
       }},
      {"a direct update",
       [](auto& store) {
         store.Database().Execute("update VekRULETbl set Valid='Valid' where ObjectID in (0,1,2,3)");
       }},
      {"unlink", [](auto& store) { store.object("RULE#1")->UnLink("BelongsToRuleSet", "RULESET#1"); }},
      {"delete a rule with its element", [](auto& store) { store.object("RULE#2")->Delete(); }},
      {"delete the function with its call", [](auto& store) { store.object("BUSINESSFUNC#1")->Delete(); }},
      {"delete in a transaction",
       [](auto& store) {
         const auto transaction = store.BeginTransaction();
         store.object("RULE#3")->Delete();
         store.object("RULESET#1")->Delete();
         transaction->Commit();
       }},
      {"create at the end", [](auto& store) { store.NewObject("RULE", "last"); }},
  };
  return steps;
}

TEST(StoreUnderFaults, AFailingCallLeavesTheStoreAsItWasAndLaterCallsWork) {
  // How many statements each step runs, and what comes out, when nothing fails.
  std::vector<int> statements;
  StoreContent expected;
  {
    FaultyStore faulty;
    for (const auto& step : AllKindsOfWrites()) {
      faulty.fault->Arm(0);
      step.run(faulty.store.Repository());
      statements.push_back(faulty.fault->seen);
    }
    expected = ReadContent(faulty.store.StorePath());
  }
  int faults = 0;
  for (std::size_t failing = 0; failing < statements.size(); ++failing) {
    ASSERT_GE(statements[failing], 3) << AllKindsOfWrites()[failing].name;
    FaultyStore faulty;
    const auto path = faulty.store.StorePath();
    for (std::size_t i = 0; i < failing; ++i) AllKindsOfWrites()[i].run(faulty.store.Repository());
    const auto before = ReadContent(path);
    for (int statement = 1; statement <= statements[failing]; ++statement) {
      SCOPED_TRACE(AllKindsOfWrites()[failing].name + std::string(", statement ") + std::to_string(statement));
      faulty.fault->Arm(statement);
      EXPECT_EQ(ErrorText([&] { AllKindsOfWrites()[failing].run(faulty.store.Repository()); }), kFaultText);
      ASSERT_EQ(ReadContent(path), before);
      ++faults;
    }
    faulty.fault->Arm(0);
    for (std::size_t i = failing; i < statements.size(); ++i) AllKindsOfWrites()[i].run(faulty.store.Repository());
    EXPECT_EQ(ReadContent(path), expected) << AllKindsOfWrites()[failing].name;
    faulty.store.Reopen();
    EXPECT_EQ(RunSql(path, "PRAGMA integrity_check", 1), "ok");
    EXPECT_EQ(ReadContent(path), expected);
  }
  EXPECT_GT(faults, 100);
}

// Repeats a call that fails once. True when it failed.
bool RunWithRepetition(const std::function<void()>& call) {
  try {
    call();
    return false;
  } catch (const platform::Error& failure) {
    EXPECT_EQ(std::string(failure.what()), kFaultText);
  }
  call();
  return true;
}

// A transaction whose caller goes on after the failure of one call, and gives up when it cannot be committed. Returns
// how many calls failed.
int WriteInATransaction(platform::Repository& store) {
  const auto command = store.BeginCommand("Import");
  std::unique_ptr<platform::Transaction> transaction;
  const std::vector<std::function<void()>> calls = {
      [&] { transaction = store.BeginTransaction(); },
      [&] { store.NewObject("RULESET", "S"); },
      [&] { store.NewObject("RULE", "n"); },
      [&] { store.object("RULESET#1")->Link("Has", "RULE#1"); },
      [&] { Put(store, "RULE#1", "RuleName", "x"); },
      [&] { store.Database().Execute("update VekRULETbl set Valid='Valid' where ObjectID in (0,1)"); },
      [&] { store.object("RULESET#1")->UnLink("Has", "RULE#1"); },
      [&] { store.NewObject("RULE", "gone"); },
      [&] { store.object("RULE#2")->Delete(); },
      [&] { Put(store, "RULE#1", "RuleName", "y"); }};
  int failures = 0;
  for (const auto& call : calls) failures += RunWithRepetition(call) ? 1 : 0;
  transaction->Commit();
  return failures;
}

TEST(StoreUnderFaults, WithinATransactionOnlyTheFailingCallIsUndone) {
  FaultyStore whole;
  whole.fault->Arm(0);
  const auto before = ReadContent(whole.store.StorePath());
  EXPECT_EQ(WriteInATransaction(whole.store.Repository()), 0);
  const int statements = whole.fault->seen;
  const auto expected = ReadContent(whole.store.StorePath());
  int refusedCommits = 0;
  for (int statement = 1; statement <= statements; ++statement) {
    SCOPED_TRACE(statement);
    FaultyStore faulty;
    faulty.fault->Arm(statement);
    try {
      EXPECT_EQ(WriteInATransaction(faulty.store.Repository()), 1);
      ASSERT_EQ(ReadContent(faulty.store.StorePath()), expected);
    } catch (const platform::Error& failure) {
      ++refusedCommits;
      EXPECT_EQ(std::string(failure.what()), kFaultText);
      ASSERT_EQ(ReadContent(faulty.store.StorePath()), before);
    }
  }
  EXPECT_GT(statements - refusedCommits, 10);
}

TEST(StoreUnderFaults, ARefusedCommitLeavesNothingOfTheTransaction) {
  FaultyStore faulty;
  const auto before = ReadContent(faulty.store.StorePath());
  auto transaction = faulty.store.Repository().BeginTransaction();
  faulty.store.Repository().NewObject("RULE", "n");
  faulty.fault->Arm(1);
  EXPECT_EQ(ErrorText([&] { transaction->Commit(); }), kFaultText);
  EXPECT_EQ(ReadContent(faulty.store.StorePath()), before);
  EXPECT_EQ(ErrorText([&] { transaction->Commit(); }), "A transaction is committed once.");
  transaction.reset();
  EXPECT_EQ(faulty.store.Repository().NewObject("RULE", "n")->Key(), "RULE#1");
}

TEST(StoreUnderFaults, AnInnerTransactionThatIsGivenUpTakesTheOuterAlong) {
  TestStore store;
  const auto before = ReadContent(store.StorePath());
  const auto outer = store.Repository().BeginTransaction();
  store.Repository().NewObject("RULE", "outer");
  {
    const auto inner = store.Repository().BeginTransaction();
    store.Repository().NewObject("RULE", "inner");
  }
  EXPECT_EQ(ErrorText([&] { outer->Commit(); }), "The transaction on \"" + store.StorePath() +
                                                     "\" was given up after a failure; nothing of it was written.");
  EXPECT_EQ(ReadContent(store.StorePath()), before);
  EXPECT_EQ(store.Repository().NewObject("RULE", "n")->Key(), "RULE#1");
}

TEST(StoreUnderFaults, NoEventTellsOfWhatFailed) {
  FaultyStore faulty;
  auto& store = faulty.store.Repository();
  store.NewObject("RULESET", "S");
  store.NewObject("RULE", "n");
  int told = 0;
  const platform::Subscription subscriptions[] = {
      store.OnObjectAdded([&](const auto&) { ++told; }), store.OnObjectDeleted([&](const auto&) { ++told; }),
      store.OnLinked([&](const auto&, const auto&, const auto&) { ++told; })};
  const std::vector<std::function<void()>> calls = {[&] { store.NewObject("RULE", "x"); },
                                                    [&] { store.object("RULESET#1")->Link("Has", "RULE#1"); },
                                                    [&] { store.object("RULE#1")->Delete(); }};
  for (const auto& call : calls) {
    for (int statement = 1; statement <= 4; ++statement) {
      faulty.fault->Arm(statement);
      EXPECT_EQ(ErrorText(call), kFaultText);
    }
  }
  EXPECT_EQ(told, 0);
}

class StoreInTheMaking : public ::testing::Test {
 protected:
  void Open(int failingStatement) {
    fault->Arm(failingStatement);
    repository::OpenStore(
        {folder.File("catalogue.db"), folder.File("User.Repstry.xml"), "analyst", FaultyFactory(fault)}, clock)
        ->NewObject("RULE", "n");
  }
  TemporaryFolder folder;
  std::shared_ptr<Fault> fault = std::make_shared<Fault>();
  platform::FixedClock clock{{}};
};

TEST_F(StoreInTheMaking, AFailureLeavesAFileInWhichTheStoreIsMadeNextTime) {
  Open(0);
  const int statements = fault->seen;
  const auto expected = ReadContent(folder.File("catalogue.db"));
  EXPECT_GT(statements, 50);
  for (int statement = 1; statement <= statements; statement += 5) {
    std::filesystem::remove(folder.File("catalogue.db"));
    EXPECT_EQ(ErrorText([&] { Open(statement); }), kFaultText);
    Open(0);
    EXPECT_EQ(ReadContent(folder.File("catalogue.db")), expected) << statement;
  }
}

TEST_F(StoreInTheMaking, AFailureInAddingColumnsLeavesTheOldFormWhole) {
  Open(0);
  const auto before = ReadContent(folder.File("catalogue.db"));
  folder.Write(
      "User.Repstry.xml",
      "<repstry><entities><entity name='RULE'><entityattrs><entityattr name='A' type='CHAR'/><entityattr name='B' "
      "type='INTEGER'/></entityattrs></entity></entities></repstry>");
  // BEGIN, the version, the columns with their registration, the relations, COMMIT: the first that does not fail ends
  // it.
  int statement = 1;
  for (;; ++statement) {
    fault->Arm(statement);
    try {
      repository::OpenStore(
          {folder.File("catalogue.db"), folder.File("User.Repstry.xml"), "analyst", FaultyFactory(fault)}, clock);
      break;
    } catch (const platform::Error& failure) {
      ASSERT_EQ(std::string(failure.what()), kFaultText);
      ASSERT_EQ(ReadContent(folder.File("catalogue.db")), before) << statement;
    }
  }
  EXPECT_GT(statement, 8);
  EXPECT_EQ(RunSql(folder.File("catalogue.db"), "SELECT A, B FROM VekRULETbl", 2), "(null)|(null)");
}

}  // namespace
}  // namespace qmrules::test
