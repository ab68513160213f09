// What a process is told of the writes of others.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/objectkey.h"
#include "support/temporaryfolder.h"
#include "workbench/repository/sqliteconnection.h"
#include "workbench/repository/store.h"

namespace qmrules::test {
namespace {

using platform::MakeKey;
using testing::ElementsAre;
using testing::IsEmpty;

// Two connections on one store stand for two processes: what matters is that neither made the other's writes.
class ForeignChangesTest : public testing::Test {
 protected:
  ForeignChangesTest() {
    added_ = here->OnObjectAdded([this](const std::string& key) { told.push_back("added " + key); });
    deleted_ = here->OnObjectDeleted([this](const std::string& key) { told.push_back("deleted " + key); });
    linked_ = here->OnLinked([this](const std::string& from, const std::string& to, const platform::RelationDef& by) {
      told.push_back(from + " " + by.Name() + " " + to);
    });
    unLinked_ =
        here->OnUnLinked([this](const std::string& from, const std::string& to, const platform::RelationDef& by) {
          told.push_back(from + " not " + by.Name() + " " + to);
        });
  }

  std::unique_ptr<platform::Repository> Open() {
    return workbench::repository::OpenStore(
        {.path = folder_.File("repository.db"), .extensionPath = "", .userName = "analyst", .connect = {}}, clock_);
  }
  static void Put(platform::Repository& repository, const std::string& key, const std::string& description) {
    const auto object = repository.object(key);
    object->Edit();
    object->Attrs("Description", platform::Value(description));
    object->Post();
  }

 private:
  TemporaryFolder folder_;
  platform::FixedClock clock_{platform::ParseTimestamp("2026-01-31 12:00:00").value()};

 protected:
  std::unique_ptr<platform::Repository> here = Open();
  std::unique_ptr<platform::Repository> there = Open();
  std::vector<std::string> told;

 private:
  platform::Subscription added_;
  platform::Subscription deleted_;
  platform::Subscription linked_;
  platform::Subscription unLinked_;
};

TEST_F(ForeignChangesTest, NothingIsToldWhenNothingWasWritten) {
  EXPECT_THAT(here->TakeForeignChanges().objects, IsEmpty());
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(ForeignChangesTest, OwnWritesAreNotToldASecondTime) {
  here->NewObject("RULESET", "Fees");
  const auto command = here->BeginCommand("Own");
  here->NewObject("RULESET", "Taxes");
  told.clear();
  there->NewObject("RULESET", "Discounts");
  EXPECT_THAT(here->TakeForeignChanges().objects, ElementsAre("RULESET#3"));
  // The command goes on, in the row that it has.
  here->NewObject("RULESET", "Claims");
  there->NewObject("RULESET", "Lapses");
  told.clear();
  EXPECT_THAT(here->TakeForeignChanges().objects, ElementsAre("RULESET#5"));
  EXPECT_THAT(told, ElementsAre("added RULESET#5"));
}

TEST_F(ForeignChangesTest, EventsAreRaisedInTheOrderOfTheChangesAndOnce) {
  const auto function = there->NewObject("BUSINESSFUNC", "Billing")->Key();
  const auto call = there->NewObject("RULESETCALL", "Call")->Key();
  there->object(function)->Link("Triggers", call);
  there->object(function)->UnLink("Triggers", call);
  there->object(call)->Delete();
  EXPECT_THAT(here->TakeForeignChanges().objects, ElementsAre(function, call));
  EXPECT_THAT(told,
              ElementsAre("added " + function, "added " + call, function + " BusinessFunctionTriggersRuleSet " + call,
                          function + " not BusinessFunctionTriggersRuleSet " + call, "deleted " + call));
  told.clear();
  EXPECT_THAT(here->TakeForeignChanges().objects, IsEmpty());
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(ForeignChangesTest, AChangedAttributeGivesTheObjectWithoutAnEvent) {
  const auto set = here->NewObject("RULESET", "Fees")->Key();
  told.clear();
  Put(*there, set, "What late payers owe");
  EXPECT_THAT(here->TakeForeignChanges().objects, ElementsAre(set));
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(ForeignChangesTest, WhatWasThereAtTheOpeningIsKnown) {
  there->NewObject("RULESET", "Fees");
  const auto late = Open();
  EXPECT_THAT(late->TakeForeignChanges().objects, IsEmpty());
}

TEST_F(ForeignChangesTest, WhatWasTakenBackIsNotTold) {
  {
    const auto transaction = there->BeginTransaction();
    there->NewObject("RULESET", "Fees");
  }
  EXPECT_THAT(here->TakeForeignChanges().objects, IsEmpty());
  // The numbers of the undone rows are free again for either of the two.
  {
    const auto undone = here->BeginTransaction();
    here->NewObject("RULESET", "Taxes");
  }
  told.clear();
  there->NewObject("RULESET", "Claims");
  EXPECT_THAT(here->TakeForeignChanges().objects, ElementsAre("RULESET#1"));
}

TEST_F(ForeignChangesTest, NothingIsToldWithinATransaction) {
  there->NewObject("RULESET", "Fees");
  {
    const auto transaction = here->BeginTransaction();
    EXPECT_THAT(here->TakeForeignChanges().objects, IsEmpty());
  }
  EXPECT_THAT(here->TakeForeignChanges().objects, ElementsAre("RULESET#1"));
}

TEST_F(ForeignChangesTest, TooManyChangesAreOneThatTellsNothing) {
  const auto command = there->BeginCommand("Import");
  for (std::size_t set = 0; set <= platform::kMostForeignChanges; ++set) {
    there->NewObject("RULESET", "Set " + std::to_string(set));
  }
  const auto changes = here->TakeForeignChanges();
  EXPECT_TRUE(changes.areTooMany);
  EXPECT_THAT(changes.objects, IsEmpty());
  EXPECT_THAT(told, IsEmpty());
  EXPECT_FALSE(here->TakeForeignChanges().areTooMany);
}

TEST_F(ForeignChangesTest, AnObserverMayWrite) {
  const auto subscription = here->OnObjectAdded([this](const std::string& key) {
    if (key == "RULESET#1") here->NewObject("RULESET", "Answer");
  });
  there->NewObject("RULESET", "Question");
  EXPECT_THAT(here->TakeForeignChanges().objects, ElementsAre("RULESET#1"));
  EXPECT_THAT(here->TakeForeignChanges().objects, IsEmpty());
  EXPECT_EQ(here->CountObjects("RULESET", {}), 2);
}

}  // namespace
}  // namespace qmrules::test
