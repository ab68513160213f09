#include "catalogue/activitylog.h"

#include <gtest/gtest.h>

#include "catalogue/gateway.h"
#include "platform/error.h"
#include "support/teststore.h"

namespace qmrules::catalogue {
namespace {

class ActivityLog : public testing::Test {
 protected:
  void Log(std::string_view text) { AddActivity(store.FE(), store.Clock(), rule, text); }

  test::TestStore store;
  platform::Repository& repository = store.Repository();
  const shell::StringTable& texts = shell::StringTableFor(shell::Language::English);
  std::int32_t set = store.AddRuleSet("Fees");
  std::int32_t rule = store.AddRule(set, "Late fee", 1);
};

TEST_F(ActivityLog, ARecordTellsWhoWhenAndWhat) {
  Log("Created");
  EXPECT_EQ(ReadRuleLog(repository, texts, rule).rows,
            (std::vector<RuleLogRow>{{"Created", "analyst", "2026-01-31 12:00:00"}}));
}

TEST_F(ActivityLog, ARecordHasTheKeyOfTheRulesSet) {
  Log("Created");
  const auto fetch = NewQuery(repository);
  fetch->SetRoot(fetch->AddObject(false, kRuleLog, "SID"));
  ASSERT_FALSE(fetch->Execute(""));
  EXPECT_EQ(fetch->Row().Item("SID").Text(), MakeKey(kRuleSet, set));
}

TEST_F(ActivityLog, TheCaptionNamesTheRule) {
  Log("Created");
  EXPECT_EQ(ReadRuleLog(repository, texts, rule).caption, "Activity Log for Rule Late fee");
}

TEST_F(ActivityLog, ARuleWithoutRecordsHasNoRows) {
  const auto log = ReadRuleLog(repository, texts, rule);
  EXPECT_TRUE(log.rows.empty());
  EXPECT_EQ(log.caption, "");
}

TEST_F(ActivityLog, HoldsTheRecordsOfItsOwnRuleOnly) {
  const auto other = store.AddRule(set, "Other", 2);
  AddActivity(store.FE(), store.Clock(), other, "Exported");
  Log("Created");
  Log("Validated");
  EXPECT_EQ(ReadRuleLog(repository, texts, rule).rows.size(), 2U);
  EXPECT_EQ(ReadRuleLog(repository, texts, other).rows.size(), 1U);
}

TEST_F(ActivityLog, ARuleOfAnotherProjectOpensTheSameWay) {
  const auto foreignSet = store.Add("RULESET", "Foreign");
  const auto foreignRule = store.AddRule(foreignSet, "Abroad", 1);
  AddActivity(store.FE(), store.Clock(), foreignRule, "Created");
  const auto log = ReadRuleLog(repository, texts, foreignRule);
  EXPECT_EQ(log.caption, "Activity Log for Rule Abroad");
  EXPECT_EQ(log.rows.size(), 1U);
}

TEST_F(ActivityLog, AMissingRuleGetsNoRecord) {
  EXPECT_THROW(AddActivity(store.FE(), store.Clock(), 4711, "Created"), platform::Error);
  EXPECT_EQ(repository.CountObjects(kRuleLog, {}), 0);
}

TEST_F(ActivityLog, AValueOf255CharactersIsLoggedWhole) {
  EXPECT_EQ(ChangedActivity(texts, "Technical Description", std::string(255, 'x')),
            "Technical Description changed to " + std::string(255, 'x'));
}

TEST_F(ActivityLog, AValueOf256CharactersIsCutTo255) {
  EXPECT_EQ(ChangedActivity(texts, "Technical Description", std::string(256, 'x')),
            "Technical Description changed to " + std::string(255, 'x') + "...");
}

TEST_F(ActivityLog, APlaceholderInAValueIsData) {
  EXPECT_EQ(ChangedActivity(texts, "Name", "%1 and %2"), "Name changed to %1 and %2");
}

}  // namespace
}  // namespace qmrules::catalogue
