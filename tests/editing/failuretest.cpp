#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "catalogue/activitylog.h"
#include "catalogue/gateway.h"
#include "catalogue/sequence.h"
#include "editing/businessfunctions.h"
#include "editing/rules.h"
#include "editing/rulesets.h"
#include "platform/error.h"
#include "support/faultyconnection.h"
#include "support/teststore.h"
#include "workbench/repository/sqliteconnection.h"

namespace qmrules::editing {
namespace {

using catalogue::MakeKey;

// A small catalogue on a store of which one write can fail.
struct Catalogue {
  std::shared_ptr<test::Fault> fault = std::make_shared<test::Fault>();
  test::TestStore store{"", [fault = fault](const std::string& path) {
                          namespace repository = workbench::repository;
                          return test::MakeFaulty(
                              repository::OpenSqliteConnection(path, repository::Durability::Relaxed), fault);
                        }};
  platform::Repository& repository = store.Repository();
  platform::TesselGlobals globals;
  EditingContext context{store.FE(), store.Clock(), shell::StringTableFor(shell::Language::English), globals};
  std::int32_t function = store.AddFunction("Billing");
  std::int32_t first = store.AddRuleSet("First");
  std::int32_t second = store.AddRuleSet("Second");
  std::int32_t firstCall = store.AddCall(function, first, 1);
  std::int32_t secondCall = store.AddCall(function, second, 2);
  std::int32_t rule = store.AddRule(first, "Late fee", 1);
  std::int32_t nextRule = store.AddRule(first, "Next", 2);
  std::int32_t lastRule = store.AddRule(first, "Last", 3);

  // Every attribute of every object, and every link.
  std::vector<std::string> Content() {
    std::vector<std::string> content;
    for (const auto* entity : repository.Schema().Entities()) {
      const auto fetch = catalogue::NewQuery(repository);
      fetch->SetRoot(fetch->AddObject(false, entity->Name(), "ID"));
      for (fetch->Execute(""); !fetch->Eof(); fetch->MoveNext()) {
        const auto object = repository.object(MakeKey(entity->Name(), catalogue::IDField(fetch->Row(), "ID")));
        std::string line = object->Key();
        for (const auto* attribute : entity->Attrs()) line += "|" + object->Attrs(attribute->Name()).Text();
        for (const std::string& project : {store.ProjectKey(), store.OtherProjectKey()}) {
          line += object->BelongsToProject(project) ? "|in" : "|out";
        }
        content.push_back(line);
      }
    }
    return content;
  }
};

// Runs the step with each of its writes failing in turn; a failed step must leave the catalogue as it was. `step` tells
// whether it succeeded; throwing Error is a failure as well.
void ExpectAllOrNothing(const std::function<bool(Catalogue&)>& step) {
  int failures = 0;
  for (int write = 1;; ++write) {
    Catalogue catalogue;
    const auto before = catalogue.Content();
    catalogue.fault->Arm(write);
    bool done = false;
    try {
      done = step(catalogue);
    } catch (const platform::Error& error) {
      EXPECT_STREQ(error.what(), test::kFaultText);
    }
    const bool failed = catalogue.fault->seen >= write;
    catalogue.fault->Arm(0);
    if (!failed) {
      EXPECT_TRUE(done);
      EXPECT_NE(catalogue.Content(), before);
      break;
    }
    ++failures;
    EXPECT_FALSE(done) << "write " << write << " failed unnoticed";
    EXPECT_EQ(catalogue.Content(), before) << "write " << write;
  }
  EXPECT_GT(failures, 0);
}

TEST(FailedWrites, LeaveNoHalfMadeFunction) {
  ExpectAllOrNothing([](Catalogue& catalogue) {
    const auto outcome = CreateBusinessFunction(catalogue.context, {"Claims", "All claims."});
    if (const auto* refused = std::get_if<Refused>(&outcome)) {
      EXPECT_TRUE(refused->notice.text.starts_with("Cannot create business function.\r\n")) << refused->notice.text;
    }
    return std::holds_alternative<Created>(outcome);
  });
}

TEST(FailedWrites, LeaveNoHalfMadeRuleSetAndNoMovedCalls) {
  ExpectAllOrNothing([](Catalogue& catalogue) {
    const auto outcome =
        CreateRuleSet(catalogue.context, {catalogue.function, "Between", "Some rules.", catalogue.first});
    return std::holds_alternative<CreatedRuleSet>(outcome);
  });
}

TEST(FailedWrites, LeaveTheNameOfARuleSetAndOfItsCalls) {
  ExpectAllOrNothing([](Catalogue& catalogue) {
    const auto outcome = Rename(catalogue.context, MakeKey("RULESET", catalogue.first), "Fees");
    return std::holds_alternative<Changed>(outcome);
  });
}

TEST(FailedWrites, LeaveNoRecordWithoutItsRule) {
  ExpectAllOrNothing([](Catalogue& catalogue) {
    catalogue::AddActivity(catalogue.store.FE(), catalogue.store.Clock(), catalogue.rule, "Exported");
    return true;
  });
}

TEST(FailedWrites, LeaveTheNumbersOfARunAsTheyWere) {
  ExpectAllOrNothing([](Catalogue& catalogue) {
    return catalogue::NextSeqNo(catalogue.repository, {"RULESET", catalogue.first, "Has", "RULE", catalogue.rule}) == 2;
  });
}

TEST(FailedWrites, ASwapThatFailsBetweenItsWritesLeavesTheFirst) {
  std::vector<std::vector<std::int64_t>> seen;
  for (int write = 1;; ++write) {
    Catalogue catalogue;
    catalogue.fault->Arm(write);
    bool failed = false;
    try {
      catalogue::SwapRules(catalogue.repository, catalogue.rule, catalogue.nextRule);
    } catch (const platform::Error&) {
      failed = true;
    }
    catalogue.fault->Arm(0);
    const std::vector<std::int64_t> numbers{
        catalogue.store.Get(MakeKey("RULE", catalogue.rule), "SeqNo").Integer(),
        catalogue.store.Get(MakeKey("RULE", catalogue.nextRule), "SeqNo").Integer()};
    if (seen.empty() || seen.back() != numbers) seen.push_back(numbers);
    if (!failed) break;
  }
  EXPECT_EQ(seen, (std::vector<std::vector<std::int64_t>>{{1, 2}, {2, 2}, {2, 1}}));
}

}  // namespace
}  // namespace qmrules::editing
