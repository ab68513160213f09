#include "workbench/databases/sqlitedatabase.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <utility>
#include <vector>

#include "support/errortext.h"
#include "support/temporaryfolder.h"
#include "workbench/databases/databasefile.h"

namespace qmrules::workbench {
namespace {

using test::ErrorText;

class SqliteDatabaseTest : public testing::Test {
 protected:
  SqliteDatabaseTest() : path_(folder_.File("t.mdb")) {
    CreateDatabaseFile(path_, {.applicationID = 1},
                       "CREATE TABLE Names (OriginalName TEXT, BusinessName TEXT);"
                       "CREATE TABLE [Odd \"Table] (A);"
                       "INSERT INTO Names VALUES ('A', 'alpha'), ('B', 'beta'), ('C', 'gamma')");
    database_ = SqliteDatabaseEngine().OpenDatabase(path_);
  }

  std::string Count(std::string_view table) {
    return database_->OpenRecordset("select count(*) as N from " + std::string(table))->Field("N").Text();
  }
  std::string Refusal(std::string_view statement, std::string_view reason) const {
    return "The database \"" + path_ + "\" refused the statement \"" + std::string(statement) +
           "\": " + std::string(reason) + ".";
  }

  test::TemporaryFolder folder_;
  std::string path_;
  std::unique_ptr<platform::Database> database_;
};

TEST_F(SqliteDatabaseTest, AnUpdateTellsTheRowsThatItChanged) {
  EXPECT_EQ(database_->RecordsAffected(), 0);
  database_->Execute("update Names set BusinessName='x' where OriginalName>='B'");
  EXPECT_EQ(database_->RecordsAffected(), 2);
  database_->Execute("update Names set BusinessName='y' where OriginalName='none'");
  EXPECT_EQ(database_->RecordsAffected(), 0);
  database_->Execute("delete from Names");
  EXPECT_EQ(database_->RecordsAffected(), 3);
  database_->Execute("insert into Names values ('D', 'delta') returning OriginalName");
  EXPECT_EQ(database_->RecordsAffected(), 1);
}

TEST_F(SqliteDatabaseTest, AFailedStatementAffectsMissing) {
  database_->Execute("delete from Names where OriginalName='A'");
  const std::string statement = "update Names set Missing='x'";
  EXPECT_EQ(ErrorText([&] { database_->Execute(statement); }), Refusal(statement, "no such column: Missing"));
  EXPECT_EQ(database_->RecordsAffected(), 0);
  EXPECT_EQ(Count("Names"), "2");
}

TEST_F(SqliteDatabaseTest, ADoubledQuoteStandsForItself) {
  database_->Execute("update Names set BusinessName='customer''s name' where OriginalName='A'");
  EXPECT_EQ(database_->OpenRecordset("select BusinessName from Names where OriginalName='A'")->Field("businessname"),
            platform::Value("customer's name"));
}

TEST_F(SqliteDatabaseTest, TablesAreNamedInAnyCase) {
  EXPECT_FALSE(database_->OpenRecordset("NAMES")->Eof());
  EXPECT_FALSE(database_->OpenRecordset("select originalname from names")->Eof());
  EXPECT_TRUE(database_->OpenRecordset("odd \"table")->Eof());
}

TEST_F(SqliteDatabaseTest, AnUnknownTableIsTold) {
  EXPECT_EQ(ErrorText([&] { database_->OpenRecordset("Missing"); }),
            "The database \"" + path_ + "\" has no table \"Missing\".");
  EXPECT_EQ(ErrorText([&] { database_->OpenRecordset("select * from Missing"); }),
            Refusal("select * from Missing", "no such table: Missing"));
}

TEST_F(SqliteDatabaseTest, OneStatementIsTakenWithBlanksAndCommentsAroundIt) {
  EXPECT_EQ(database_->OpenRecordset(" /* all */ select count(*) as N from Names ; -- end\n")->Field("N").Integer(), 3);
  database_->Execute("delete from Names;");
  EXPECT_EQ(Count("Names"), "0");
}

TEST_F(SqliteDatabaseTest, ASecondStatementIsRefusedAndTheFirstNotRun) {
  const std::string two = "delete from Names where OriginalName='A'; delete from Names";
  EXPECT_EQ(ErrorText([&] { database_->Execute(two); }), Refusal(two, "there is a second statement behind the first"));
  EXPECT_EQ(Count("Names"), "3");
}

TEST_F(SqliteDatabaseTest, ATextWithoutAStatementIsRefused) {
  EXPECT_EQ(ErrorText([&] { database_->Execute(" -- nothing"); }),
            Refusal(" -- nothing", "there is no statement in it"));
  EXPECT_EQ(ErrorText([&] { database_->Execute(""); }), Refusal("", "there is no statement in it"));
  const std::string zero("delete from Names\0 where 1=0", 28);
  EXPECT_EQ(ErrorText([&] { database_->Execute(zero); }),
            Refusal("delete from Names", "behind this it holds the character 0"));
  EXPECT_EQ(Count("Names"), "3");
}

TEST_F(SqliteDatabaseTest, AnythingBeyondReadingAndChangingRowsIsRefused) {
  const std::string other = folder_.File("other.mdb");
  const std::vector<std::pair<std::string, std::string>> refused{
      {"attach database '" + other + "' as o", "other database files are not allowed here"},
      {"detach database main", "other database files are not allowed here"},
      {"pragma journal_mode=off", "settings are not allowed here"},
      {"select load_extension('x')", "loading extensions are not allowed here"},
      {"delete from Names where load_extension('x') is null", "loading extensions are not allowed here"},
      {"begin", "transactions are not allowed here"},
      {"savepoint s", "transactions are not allowed here"},
      {"create table T (A)", "changes of the tables' layout are not allowed here"},
      {"create temp table T (A)", "changes of the tables' layout are not allowed here"},
      {"drop table Names", "changes of the tables' layout are not allowed here"},
      {"alter table Names add column X", "changes of the tables' layout are not allowed here"},
      {"reindex", "it changes no rows; open a recordset to read them"},
  };
  for (const auto& [statement, reason] : refused) {
    EXPECT_EQ(ErrorText([&, &text = statement] { database_->Execute(text); }), Refusal(statement, reason));
  }
  EXPECT_FALSE(std::filesystem::exists(other));
  EXPECT_EQ(Count("Names"), "3");
}

TEST_F(SqliteDatabaseTest, ACopyOfTheFileIsRefused) {
  const std::string copy = folder_.File("copy.mdb");
  const std::string statement = "vacuum into '" + copy + "'";
  EXPECT_EQ(ErrorText([&] { database_->Execute(statement); }),
            Refusal(statement, "other database files are not allowed here"));
  EXPECT_FALSE(std::filesystem::exists(copy));
}

TEST_F(SqliteDatabaseTest, SettingsAreNotReadThroughATableEither) {
  const std::string statement = "select * from pragma_database_list";
  EXPECT_EQ(ErrorText([&] { database_->OpenRecordset(statement)->Eof(); }),
            Refusal(statement, "settings are not allowed here"));
}

TEST_F(SqliteDatabaseTest, OnlyASelectOpensARecordset) {
  for (const std::string statement : {"delete from Names", "explain select * from Names",
                                      "insert into Names values ('X', 'x') returning OriginalName"}) {
    EXPECT_EQ(ErrorText([&] { database_->OpenRecordset(statement); }),
              Refusal(statement, "only a table or a select statement can be opened"));
  }
  EXPECT_EQ(Count("Names"), "3");
}

TEST_F(SqliteDatabaseTest, ASelectIsNotExecuted) {
  EXPECT_EQ(ErrorText([&] { database_->Execute("select * from Names"); }),
            Refusal("select * from Names", "it changes no rows; open a recordset to read them"));
}

TEST_F(SqliteDatabaseTest, AMisspelledColumnInDoubleQuotesIsNoText) {
  const std::string statement = "select * from Names where \"Missing\"='A'";
  EXPECT_EQ(ErrorText([&] { database_->OpenRecordset(statement); }), Refusal(statement, "no such column: Missing"));
}

TEST_F(SqliteDatabaseTest, ALongStatementIsCutInTheMessage) {
  const std::string list(500, '7');
  const std::string statement = "delete from Missing where ID in (" + list + ")";
  EXPECT_EQ(ErrorText([&] { database_->Execute(statement); }),
            Refusal(statement.substr(0, 400) + "...", "no such table: Missing"));
}

TEST_F(SqliteDatabaseTest, ARecordsetOutlivesItsDatabase) {
  const auto rows = database_->OpenRecordset("Names");
  database_.reset();
  rows->MoveNext();
  EXPECT_EQ(rows->Field("OriginalName").Text(), "B");
}

TEST_F(SqliteDatabaseTest, ADatabaseThatIsNotThereIsTold) {
  const std::string path = folder_.File("none.mdb");
  EXPECT_EQ(ErrorText([&] { SqliteDatabaseEngine().OpenDatabase(path); }),
            "The database \"" + path + "\" cannot be opened: there is no such file.");
}

}  // namespace
}  // namespace qmrules::workbench
