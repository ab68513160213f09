// Direct updates of the entities' tables.

#include <gtest/gtest.h>

#include "platform/database.h"
#include "support/errortext.h"
#include "support/teststore.h"
#include "workbench/repository/fetchrows.h"
#include "workbench/repository/storecontent.h"

namespace qmrules::test {
namespace {

using platform::Value;

const std::string kUpdatedAttributes =
    "<repstry><entities><entity name='RULE'><entityattrs>"
    "<entityattr name='Priority' type='CHAR'/><entityattr name='Billable' type='BOOLEAN'/>"
    "<entityattr name='1A' type='CHAR'/><entityattr name='Order' type='CHAR'/><entityattr name='Weight' "
    "type='INTEGER'/>"
    "<entityattr name='Due' type='TIMESTAMP'/>"
    "</entityattrs></entity></entities></repstry>";

class DirectUpdate : public ::testing::Test {
 protected:
  DirectUpdate() {
    for (const auto* priority : {"Low", "High", "Odd"}) store.Add("RULE", "n", {{"Priority", priority}});
    store.Add("RULE", "n");
  }
  std::int64_t Run(const std::string& statement) {
    auto& database = store.Repository().Database();
    database.Execute(statement);
    return database.RecordsAffected();
  }
  std::string All(std::string_view attribute) { return Select(store.Repository(), "RULE", attribute, {}, {attribute}); }
  std::string Failure(const std::string& statement) {
    return ErrorText([&] { store.Repository().Database().Execute(statement); });
  }
  TestStore store{kUpdatedAttributes};
};

TEST_F(DirectUpdate, ValuesThatLeftTheListFallBackToTheDefault) {
  EXPECT_EQ(Run("update VekRULETbl set Priority='Low' where Priority not in ('Low','High')"), 1);
  EXPECT_EQ(All("Priority"), "Low;High;Low;");
}

TEST_F(DirectUpdate, AnUnsetValueMeetsNeitherInNorNotIn) {
  EXPECT_EQ(Run("update VekRULETbl set Priority='Low' where Priority not in ('none')"), 3);
  EXPECT_TRUE(store.Get("RULE#4", "Priority").IsAbsent());
  EXPECT_EQ(Run("update VekRULETbl set Priority='x' where Priority in ('Low','')"), 3);
  EXPECT_TRUE(store.Get("RULE#4", "Priority").IsAbsent());
}

TEST_F(DirectUpdate, RulesAreNamedByTheirIDs) {
  EXPECT_EQ(Run("update VekRULETbl set Billable=true where ObjectID in (0,2,4,4,99)"), 2);
  EXPECT_EQ(All("Billable"), ";true;;true");
}

TEST_F(DirectUpdate, TheOldValueMayBeAskedForToo) {
  Run("update VekRULETbl set Billable=false where ObjectID in (0,1,2)");
  EXPECT_EQ(Run("update VekRULETbl set Billable=true where ObjectID in (0,1,3) and Billable=false"), 1);
  EXPECT_EQ(All("Billable"), "true;false;;");
  EXPECT_EQ(Run("update VekRULETbl set Priority='New' where ObjectID in (0,1,2) and Priority='High'"), 1);
  EXPECT_EQ(All("Priority"), "Low;New;Odd;");
}

TEST_F(DirectUpdate, ABooleanStandsBareOrQuotedInAnyCase) {
  Run("update VekRULETbl set Billable='TRUE' where ObjectID in (1)");
  Run("update VekRULETbl set Billable=False where ObjectID in (2)");
  EXPECT_EQ(store.Get("RULE#1", "Billable"), Value(true));
  EXPECT_EQ(store.Get("RULE#2", "Billable"), Value(false));
  EXPECT_EQ(Run("update VekRULETbl set Priority='b' where Billable in ('True')"), 1);
  EXPECT_EQ(All("Priority"), "b;High;Odd;");
}

TEST_F(DirectUpdate, NumbersAndDatesAreWrittenInTheirType) {
  Run("update VekRULETbl set Weight='042' where ObjectID in (1)");
  Run("update VekRULETbl set Weight=7 where ObjectID in (2)");
  Run("update VekRULETbl set Due='2026-01-01' where ObjectID in (1)");
  EXPECT_EQ(store.Get("RULE#1", "Weight"), Value(42));
  EXPECT_EQ(store.Get("RULE#2", "Weight"), Value(7));
  EXPECT_EQ(store.Get("RULE#1", "Due"), Value(*platform::ParseTimestamp("2026-01-01")));
  EXPECT_EQ(Run("update VekRULETbl set Weight=0 where Weight not in (42)"), 1);
  EXPECT_EQ(IDs(store.Repository(), "RULE", "Weight>7"), "1");
}

TEST_F(DirectUpdate, NamesThatSqlWouldMisreadAreTaken) {
  Run("update VekRULETbl set 1A='x' where ObjectID in (1)");
  EXPECT_EQ(Run("update VekRULETbl set 1A='y' where 1A not in ('y')"), 1);
  Run("update VekRULETbl set Order='first' where ObjectID in (1,2)");
  EXPECT_EQ(Run("update VekRULETbl set Order='last' where Order in ('first') and 1A='y'"), 1);
  EXPECT_EQ(All("1A"), "y;;;");
  EXPECT_EQ(All("Order"), "last;first;;");
}

TEST_F(DirectUpdate, ADoubledQuoteIsOne) {
  Run("update VekRULETbl set Priority='it''s ''so''' where Priority in ('Low')");
  EXPECT_EQ(store.Get("RULE#1", "Priority"), Value("it's 'so'"));
  EXPECT_EQ(Run("update VekRULETbl set Priority='' where Priority not in ('it''s ''so''','High','Odd')"), 0);
  EXPECT_EQ(Run("update VekRULETbl set Priority='''' where Priority in ('it''s ''so''')"), 1);
  EXPECT_EQ(store.Get("RULE#1", "Priority"), Value("'"));
}

TEST_F(DirectUpdate, WhatStandsInAQuotedValueIsData) {
  const std::string text = "x') or 1=1; delete from VekRULETbl -- \xC3\xA4";
  Run("update VekRULETbl set Priority='x'') or 1=1; delete from VekRULETbl -- \xC3\xA4' where ObjectID in (1)");
  EXPECT_EQ(store.Get("RULE#1", "Priority"), Value(text));
  EXPECT_EQ(store.Repository().CountObjects("RULE", {}), 4);
}

TEST_F(DirectUpdate, WordsAndNamesStandInAnyCaseWithAnyBlanks) {
  EXPECT_EQ(Run("UPDATE  vekruletbl\r\n SET priority = 'z'\tWHERE objectid IN ( 0 , 1 ) AND PRIORITY = 'Low' "), 1);
  EXPECT_EQ(All("Priority"), "z;High;Odd;");
}

TEST_F(DirectUpdate, RowsThatHaveTheValueAlreadyCountAsAffected) {
  EXPECT_EQ(Run("update VekRULETbl set Priority='Low' where ObjectID in (1,2)"), 2);
}

TEST_F(DirectUpdate, EachChangedObjectIsJournaled) {
  const auto before = LastJournalEntry(store.StorePath());
  Run("update VekRULETbl set Priority='Low' where ObjectID in (1,2,3,4)");
  EXPECT_EQ(JournalEntries(store.StorePath(), before),
            (std::vector<std::string>{"EDIT RULE#2 {\"Priority\":[\"High\",\"Low\"]}",
                                      "EDIT RULE#3 {\"Priority\":[\"Odd\",\"Low\"]}",
                                      "EDIT RULE#4 {\"Priority\":[null,\"Low\"]}"}));
}

TEST_F(DirectUpdate, NoEventTellsOfIt) {
  int told = 0;
  const auto object = [&](const std::string&) { ++told; };
  const auto relation = [&](const std::string&, const std::string&, const platform::RelationDef&) { ++told; };
  auto& repository = store.Repository();
  const platform::Subscription subscriptions[] = {repository.OnObjectAdded(object), repository.OnObjectDeleted(object),
                                                  repository.OnLinked(relation), repository.OnUnLinked(relation)};
  Run("update VekRULETbl set Priority='Low' where ObjectID in (1,2,3,4)");
  EXPECT_EQ(told, 0);
}

TEST_F(DirectUpdate, ItIsPartOfTheTransactionAroundIt) {
  {
    const auto transaction = store.Repository().BeginTransaction();
    EXPECT_EQ(Run("update VekRULETbl set Priority='x' where ObjectID in (1,2,3,4)"), 4);
  }
  EXPECT_EQ(All("Priority"), "Low;High;Odd;");
}

TEST_F(DirectUpdate, AThousandIDsStandInOneStatement) {
  std::string list = "0";
  for (int id = 1; id <= 1000; ++id) list += "," + std::to_string(id);
  EXPECT_EQ(Run("update VekRULETbl set Billable=true where ObjectID in (" + list + ")"), 4);
}

TEST_F(DirectUpdate, AnyOtherStatementIsRefusedWithItsTextAndColumn) {
  const auto before = ReadContent(store.StorePath());
  const std::pair<std::string, std::string> refused[] = {
      {"delete from VekRULETbl", "column 1: \"update\" is expected"},
      {"insert into VekRULETbl values (1)", "column 1: \"update\" is expected"},
      {"", "column 1: \"update\" is expected"},
      {"drop table VekRULETbl", "column 1: \"update\" is expected"},
      {"update VekRULETbl set Priority='x'", "column 35: \"where\" is expected"},
      {"update VekRULETbl set Priority='x' where 1=1", "column 43: \"in\" is expected"},
      {"update VekRULETbl set Priority='x' where ObjectID in ()", "column 55: a value is expected"},
      {"update VekRULETbl set Priority='x' where ObjectID in (1", "column 56: \")\" is expected"},
      {"update VekRULETbl set Priority='x where ObjectID in (1)", "column 56: \"'\" is expected"},
      {"update VekRULETbl set Priority='x',Valid='y' where ObjectID in (1)", "column 35: \"where\" is expected"},
      {"update VekRULETbl set Priority='x' where ObjectID in (select 1)", "column 62: \")\" is expected"},
      {"update VekRULETbl set Priority='x' where ObjectID in (1); delete from VekRULETbl",
       "column 57: the end of the statement is expected"},
      {"update VekRULETbl set Priority='x' where ObjectID in (1) -- all",
       "column 58: the end of the statement is expected"},
      {"update VekRULETbl set Priority='x' where ObjectID in (1) or 1=1",
       "column 58: the end of the statement is expected"},
      {"update VekRULETbl set Priority='x' where ObjectID in (1) and 1A='a' and 1A='b'",
       "column 69: the end of the statement is expected"},
      {"update VekRULETbl /* all */ set Priority='x' where ObjectID in (1)", "column 19: \"set\" is expected"},
  };
  for (const auto& [statement, reason] : refused) {
    EXPECT_EQ(Failure(statement), "statement \"" + statement + "\" " + reason);
  }
  EXPECT_EQ(ReadContent(store.StorePath()), before);
}

TEST_F(DirectUpdate, UnknownTablesAndColumnsAreRefused) {
  EXPECT_EQ(Failure("update sqlite_master set Name='x' where Name in ('y')"),
            "The catalogue has no table \"sqlite_master\".");
  EXPECT_EQ(Failure("update VekJournalTbl set Action='x' where Action in ('ADD')"),
            "The catalogue has no table \"VekJournalTbl\".");
  EXPECT_EQ(Failure("update VekRULETbl set Colour='x' where ObjectID in (1)"),
            "The entity RULE has no attribute \"Colour\".");
  EXPECT_EQ(Failure("update VekRULETbl set Priority='x' where Colour in (1)"),
            "The entity RULE has no attribute \"Colour\".");
  EXPECT_EQ(Failure("update VekRULETbl set Priority='x' where ObjectID in (1) and Colour='y'"),
            "The entity RULE has no attribute \"Colour\".");
  EXPECT_EQ(Failure("update VekRULETbl set ObjectID=7 where ObjectID in (1)"), "ObjectID cannot be changed.");
}

TEST_F(DirectUpdate, ValuesThatTheTypeDoesNotTakeAreRefused) {
  EXPECT_EQ(Failure("update VekRULETbl set Weight='heavy' where ObjectID in (1)"),
            "Weight (INTEGER): \"heavy\" is not a whole number.");
  EXPECT_EQ(Failure("update VekRULETbl set Billable=maybe where ObjectID in (1)"),
            "Billable (BOOLEAN): \"maybe\" is neither true nor false.");
  EXPECT_EQ(Failure("update VekRULETbl set Priority='x' where ObjectID in ('one')"), "\"one\" is not a whole number.");
  EXPECT_EQ(Failure("update VekRULETbl set Due='soon' where ObjectID in (1)"),
            "Due (TIMESTAMP): \"soon\" is not a date and time such as \"2026-01-31 18:30:00\".");
}

TEST_F(DirectUpdate, ARefusedStatementAffectedNoRecord) {
  EXPECT_EQ(Run("update VekRULETbl set Priority='x' where ObjectID in (1)"), 1);
  EXPECT_NE(Failure("update VekRULETbl set Weight='heavy' where ObjectID in (1)"), "");
  EXPECT_EQ(store.Repository().Database().RecordsAffected(), 0);
}

TEST_F(DirectUpdate, ANameThatMustBeUniqueStaysSo) {
  store.Add("RULESET", "A");
  store.Add("RULESET", "B");
  EXPECT_EQ(Failure("update VekRULESETTbl set Name='A' where ObjectID in (2)"),
            "The Name of a Rule Set is changed through the object, not by a statement.");
  EXPECT_EQ(store.Get("RULESET#2", "Name"), Value("B"));
}

TEST_F(DirectUpdate, TablesAreNotRead) {
  EXPECT_EQ(ErrorText([&] { store.Repository().Database().OpenRecordset("VekRULETbl"); }),
            "The catalogue does not run \"VekRULETbl\": its tables are read through a fetch.");
  EXPECT_EQ(ErrorText([&] { store.Repository().Database().OpenRecordset("select * from VekRULETbl"); }),
            "The catalogue does not run \"select * from VekRULETbl\": its tables are read through a fetch.");
}

}  // namespace
}  // namespace qmrules::test
