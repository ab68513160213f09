// A walk shows the store as at its Execute, whatever is written meanwhile.

#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/resource.h>

#include "platform/database.h"
#include "platform/objectkey.h"
#include "support/errortext.h"
#include "support/teststore.h"
#include "workbench/repository/fetchrows.h"
#include "workbench/repository/sqliteconnection.h"
#include "workbench/repository/storecontent.h"

namespace qmrules::test {
namespace {

using platform::MakeKey;

class WalkOfRules : public ::testing::Test {
 protected:
  WalkOfRules() {
    for (int i = 1; i <= 5; ++i) {
      store.Add("RULE", "n", {{"RuleName", "rule " + std::to_string(i)}, {"SeqNo", i}});
    }
  }
  std::unique_ptr<platform::Fetch> Walk(std::string_view list = "ID,RuleName,>SeqNo") {
    auto fetch = store.Repository().NewFetch();
    fetch->SetRoot(fetch->AddObject(false, "RULE", list));
    fetch->Execute("");
    return fetch;
  }
  TestStore store;
};

const std::string kAsBefore = "1|rule 1|1;2|rule 2|2;3|rule 3|3;4|rule 4|4;5|rule 5|5";

TEST_F(WalkOfRules, ChangedSortKeysNeitherBringRowsBackNorHideThem) {
  std::string seen;
  for (const auto fetch = Walk(); !fetch->Eof(); fetch->MoveNext()) {
    seen += RowText(*fetch, {"ID", "RuleName", "SeqNo"}) + ";";
    store.Put(MakeKey("RULE", static_cast<std::int32_t>(fetch->Row().Item("ID").Value().Integer())), "SeqNo", 100);
    seen += fetch->Row().Item("SeqNo").Text() + ";";
  }
  EXPECT_EQ(seen, "1|rule 1|1;1;2|rule 2|2;2;3|rule 3|3;3;4|rule 4|4;4;5|rule 5|5;5;");
  EXPECT_EQ(store.Repository().CountObjects("RULE", "SeqNo=100"), 5);
}

TEST_F(WalkOfRules, RowsToComeKeepTheValuesOfExecute) {
  const auto fetch = Walk();
  for (int id = 1; id <= 5; ++id) store.Put(MakeKey("RULE", id), "RuleName", "changed");
  EXPECT_EQ(RestOfRows(*fetch, {"ID", "RuleName", "SeqNo"}), kAsBefore);
}

TEST_F(WalkOfRules, DeletedObjectsStayInTheWalk) {
  const auto fetch = Walk();
  for (int id = 1; id <= 5; ++id) store.Repository().object(MakeKey("RULE", id))->Delete();
  EXPECT_EQ(RestOfRows(*fetch, {"ID", "RuleName", "SeqNo"}), kAsBefore);
  EXPECT_EQ(store.Repository().CountObjects("RULE", {}), 0);
}

TEST_F(WalkOfRules, NewObjectsDoNotComeIntoTheWalk) {
  const auto fetch = Walk("ID,RuleName,SeqNo");
  for (int i = 0; i < 3; ++i) store.Add("RULE", "n", {{"SeqNo", 0}});
  EXPECT_EQ(RestOfRows(*fetch, {"ID", "RuleName", "SeqNo"}), kAsBefore);
}

TEST_F(WalkOfRules, TheOwnWritesBeforeExecuteAreSeen) {
  store.Put("RULE#3", "SeqNo", 0);
  store.Repository().object("RULE#4")->Delete();
  EXPECT_EQ(RestOfRows(*Walk("ID,>SeqNo"), {"ID"}), "3;1;2;5");
}

TEST_F(WalkOfRules, UncommittedOwnWritesAreSeenWithinTheTransaction) {
  const auto transaction = store.Repository().BeginTransaction();
  store.Put("RULE#3", "SeqNo", 0);
  EXPECT_EQ(RestOfRows(*Walk("ID,>SeqNo"), {"ID"}), "3;1;2;4;5");
}

TEST_F(WalkOfRules, AWalkOutlivesTheCommitOfItsTransaction) {
  auto transaction = store.Repository().BeginTransaction();
  store.Put("RULE#1", "RuleName", "within");
  const auto fetch = Walk();
  fetch->MoveNext();
  transaction->Commit();
  store.Put("RULE#5", "RuleName", "later");
  EXPECT_EQ(RestOfRows(*fetch, {"ID", "RuleName"}), "2|rule 2;3|rule 3;4|rule 4;5|rule 5");
}

TEST_F(WalkOfRules, AWalkOutlivesTheEndOfATransactionThatIsGivenUp) {
  auto transaction = store.Repository().BeginTransaction();
  store.Put("RULE#1", "RuleName", "given up");
  const auto fetch = Walk("ID,RuleName");
  transaction.reset();
  EXPECT_EQ(RestOfRows(*fetch, {"ID", "RuleName"}), "1|given up;2|rule 2;3|rule 3;4|rule 4;5|rule 5");
  EXPECT_EQ(store.Get("RULE#1", "RuleName").Text(), "rule 1");
}

TEST_F(WalkOfRules, AWalkOfBeforeATransactionOutlivesItsEnd) {
  const auto fetch = Walk("ID,RuleName");
  fetch->MoveNext();
  {
    const auto transaction = store.Repository().BeginTransaction();
    store.Put("RULE#3", "RuleName", "given up");
    fetch->MoveNext();
    EXPECT_EQ(RowText(*fetch, {"RuleName"}), "rule 3");
  }
  EXPECT_EQ(RestOfRows(*fetch, {"ID", "RuleName"}), "3|rule 3;4|rule 4;5|rule 5");
}

TEST_F(WalkOfRules, AFailedWriteLeavesTheWalkWhole) {
  store.Add("RULESET", "taken");
  const auto fetch = Walk();
  EXPECT_EQ(ErrorText([&] { store.Repository().NewObject("RULESET", "taken"); }),
            "Rule Set \"taken\" exists already as RULESET#1; choose another name.");
  EXPECT_EQ(RestOfRows(*fetch, {"ID", "RuleName", "SeqNo"}), kAsBefore);
}

TEST_F(WalkOfRules, WalksNestAndEachKeepsItsMoment) {
  std::string seen;
  for (const auto outer = Walk("ID"); !outer->Eof(); outer->MoveNext()) {
    const auto inner = Walk("ID,RuleName");
    seen += RowText(*outer, {"ID"}) + ":";
    store.Put("RULE#" + outer->Row().Item("ID").Text(), "RuleName", "x");
    seen += std::to_string(store.Repository().CountObjects("RULE", "RuleName=x"));
    int unchanged = 0;
    for (; !inner->Eof(); inner->MoveNext()) unchanged += inner->Row().Item("RuleName").Text() == "x" ? 0 : 1;
    seen += "/" + std::to_string(unchanged) + " ";
  }
  EXPECT_EQ(seen, "1:1/5 2:2/4 3:3/3 4:4/2 5:5/1 ");
}

TEST_F(WalkOfRules, TwoWalksOfOneStatementAreApart) {
  const auto one = Walk();
  const auto other = Walk();
  one->MoveNext();
  EXPECT_EQ(RowText(*one, {"ID"}), "2");
  EXPECT_EQ(RowText(*other, {"ID"}), "1");
  store.Put("RULE#1", "RuleName", "x");
  EXPECT_EQ(RestOfRows(*one, {"ID"}), "2;3;4;5");
  EXPECT_EQ(RestOfRows(*other, {"ID"}), "1;2;3;4;5");
}

TEST_F(WalkOfRules, ATypedValueAndAnUnsetOneComeBackFromAside) {
  store.Put("RULE#1", "Validated", "2026-01-01 10:00:00");
  const auto fetch = Walk("SeqNo,Validated,Description,RuleName,>ID");
  store.Put("RULE#1", "Validated", "2027-01-01");
  EXPECT_EQ(fetch->Row().Item("SeqNo").Value(), platform::Value(1));
  EXPECT_EQ(fetch->Row().Item("Validated").Value(), platform::Value(*platform::ParseTimestamp("2026-01-01 10:00:00")));
  EXPECT_TRUE(fetch->Row().Item("Description").Value().IsAbsent());
  EXPECT_EQ(fetch->Row().Item("SeqNo").Text() + fetch->Row().Item("Description").Text(), "1");
}

TEST_F(WalkOfRules, ADirectUpdateLeavesTheWalkWhole) {
  const auto fetch = Walk();
  store.Repository().Database().Execute("update VekRULETbl set RuleName='x' where ObjectID in (0,1,2,3,4,5)");
  EXPECT_EQ(RestOfRows(*fetch, {"ID", "RuleName", "SeqNo"}), kAsBefore);
}

TEST_F(WalkOfRules, AWalkGivenUpInTheMiddleHoldsNothingUp) {
  {
    const auto fetch = Walk();
    fetch->MoveNext();
  }
  const auto fetch = Walk();
  fetch->MoveNext();
  fetch->Reset();
  store.Put("RULE#1", "RuleName", "x");
  EXPECT_EQ(RunSql(store.StorePath(), "PRAGMA wal_checkpoint(TRUNCATE)", 1), "0");  // nobody reads any more
}

// Without a free file descriptor no file can be made for the rows.
TEST_F(WalkOfRules, RowsThatCannotBePutAsideFailTheWalkAndNotTheWrite) {
  const auto fetch = Walk();
  rlimit limit{};
  ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &limit), 0);
  store.Put("RULE#5", "SeqNo", 6);  // all files of the database are open now
  fetch->Execute("");
  const rlimit none{0, limit.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
  store.Put("RULE#1", "RuleName", "written");
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &limit), 0);
  const std::string text =
      "Rows cannot be put aside in the folder for temporary files: no file could be made (Too many open files).";
  EXPECT_FALSE(fetch->Eof());
  EXPECT_EQ(ErrorText([&] { fetch->Row(); }), text);
  EXPECT_EQ(ErrorText([&] { fetch->MoveNext(); }), text);
  EXPECT_EQ(store.Get("RULE#1", "RuleName").Text(), "written");
  fetch->Execute("");
  EXPECT_EQ(RowText(*fetch, {"ID", "RuleName"}), "1|written");
}

std::size_t HeapInUse() {
  return mallinfo2().uordblks + mallinfo2().hblkhd;
}

// 100,000 rules with 1 KB of text each, in a store whose page cache is small enough not to hide what a walk takes.
class LongWalk : public ::testing::Test {
 protected:
  LongWalk()
      : store("", [](const std::string& path) {
          auto connection =
              workbench::repository::OpenSqliteConnection(path, workbench::repository::Durability::Relaxed);
          connection->Execute("PRAGMA cache_size = -512");
          return connection;
        }) {
    RunSql(store.StorePath(),
           "INSERT INTO VekRULETbl (Name, SeqNo, Description) WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 "
           "FROM n WHERE i < 100000) SELECT 'n' || i, i, printf('%01000d', i) FROM n");
  }

  // Walks to the end; the most heap that was in use on the way beyond that at the start.
  std::size_t Growth(platform::Fetch& fetch, std::size_t start) {
    std::size_t most = start;
    std::int64_t rows = 0;
    for (; !fetch.Eof(); fetch.MoveNext()) {
      ++rows;
      if (fetch.Row().Item("Description").Text().size() != 1000) ADD_FAILURE() << "row " << rows;
      if (rows % 1000 == 0) most = std::max(most, HeapInUse());
    }
    EXPECT_EQ(rows, 100000);
    return most - start;
  }
  std::unique_ptr<platform::Fetch> NewWalk() {
    auto fetch = store.Repository().NewFetch();
    fetch->SetRoot(fetch->AddObject(false, "RULE", "ID,Description"));
    return fetch;
  }
  TestStore store;
};

constexpr std::size_t kAllowedGrowth = std::size_t{8} * 1024 * 1024;

TEST_F(LongWalk, TakesNoMemoryForItsRowsWhetherLiveOrPutAside) {
  const auto fetch = NewWalk();
  auto start = HeapInUse();
  fetch->Execute("");
  EXPECT_LT(Growth(*fetch, start), kAllowedGrowth);

  start = HeapInUse();
  fetch->Execute("");
  store.Put("RULE#1", "SeqNo", 0);
  EXPECT_LT(HeapInUse() - std::min(start, HeapInUse()), kAllowedGrowth);
  EXPECT_LT(Growth(*fetch, start), kAllowedGrowth);
}

}  // namespace
}  // namespace qmrules::test
