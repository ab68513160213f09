#include "workbench/databases/sqliterecordset.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "support/errortext.h"
#include "support/temporaryfolder.h"
#include "workbench/databases/databasefile.h"
#include "workbench/databases/sqlitedatabase.h"

namespace qmrules::workbench {
namespace {

using platform::Value;
using test::ErrorText;

class SqliteRecordsetTest : public testing::Test {
 protected:
  SqliteRecordsetTest() : path_(folder_.File("t.mdb")) {
    CreateDatabaseFile(path_, {.applicationID = 1},
                       "CREATE TABLE Names (OriginalName TEXT, BusinessName TEXT);"
                       "CREATE UNIQUE INDEX NamesPK ON Names (OriginalName);"
                       "CREATE INDEX ByUpper ON Names (upper(OriginalName));"
                       "INSERT INTO Names VALUES ('M', 'mu'), ('A', 'alpha'), ('T', 'tau'), (NULL, 'none');"
                       "CREATE TABLE Kinds (I INTEGER, R REAL, T TEXT, N, B BLOB);"
                       "INSERT INTO Kinds VALUES (9007199254740993, 1.5, 'caf\u00e9', NULL, x'00ff');"
                       "CREATE TABLE Numbers (N INTEGER, X TEXT);"
                       "CREATE INDEX NumbersN ON Numbers (N, X);"
                       "INSERT INTO Numbers VALUES (2, 'b'), (1, 'x'), (2, 'a'), (10, 'y')");
    database_ = std::make_unique<SqliteDatabase>(path_);
  }

  std::unique_ptr<platform::Recordset> Sought(std::string_view table, std::string_view index) {
    auto rows = database_->OpenRecordset(table);
    rows->SetIndex(index);
    return rows;
  }
  static std::string Rest(platform::Recordset& rows, std::string_view column) {
    std::string text;
    for (; !rows.Eof(); rows.MoveNext()) text += rows.Field(column).Text() + ",";
    return text;
  }
  std::string Told(std::string_view rest) const { return "The database \"" + path_ + "\": " + std::string(rest); }

  test::TemporaryFolder folder_;
  std::string path_;
  std::unique_ptr<platform::Database> database_;
};

TEST_F(SqliteRecordsetTest, RowsAreWalkedFromTheFirstToTheLast) {
  const auto rows = database_->OpenRecordset("select OriginalName from Names where OriginalName<>'' order by 1");
  EXPECT_FALSE(rows->Eof());
  EXPECT_EQ(Rest(*rows, "OriginalName"), "A,M,T,");
  EXPECT_TRUE(rows->Eof());
}

TEST_F(SqliteRecordsetTest, AQueryWithoutRowsIsAtItsEndAtOnce) {
  EXPECT_TRUE(database_->OpenRecordset("select * from Names where OriginalName='none'")->Eof());
}

TEST_F(SqliteRecordsetTest, ValuesKeepTheirKind) {
  const auto rows = database_->OpenRecordset("Kinds");
  EXPECT_EQ(rows->Field("i"), Value(std::int64_t{9007199254740993}));
  EXPECT_EQ(rows->Field("R"), Value(1.5));
  EXPECT_EQ(rows->Field("t"), Value("caf\u00e9"));
  EXPECT_TRUE(rows->Field("N").IsAbsent());
  EXPECT_EQ(ErrorText([&] { rows->Field("B"); }), Told("the column B holds bytes, which are no text or number."));
}

TEST_F(SqliteRecordsetTest, AColumnIsReadUnderItsAliasInAnyCase) {
  const auto rows = database_->OpenRecordset("select count(*) as HowMany from Names");
  EXPECT_EQ(rows->Field("HOWMANY").Integer(), 4);
}

TEST_F(SqliteRecordsetTest, AnUnknownColumnIsTold) {
  const auto rows = database_->OpenRecordset("select OriginalName from Names");
  EXPECT_EQ(ErrorText([&] { rows->Field("BusinessName"); }),
            Told("the statement \"select OriginalName from Names\" gives no column BusinessName."));
}

TEST_F(SqliteRecordsetTest, PastTheLastRowNothingIsReadOrMoved) {
  const auto rows = database_->OpenRecordset("select OriginalName from Names where 1=0");
  EXPECT_EQ(ErrorText([&] { rows->Field("OriginalName"); }), Told("there is no row to read OriginalName of."));
  EXPECT_EQ(ErrorText([&] { rows->MoveNext(); }), Told("there is no row to move on from."));
}

TEST_F(SqliteRecordsetTest, AnIndexOrdersTheRowsAnew) {
  const auto rows = database_->OpenRecordset("Names");
  EXPECT_EQ(rows->Field("OriginalName").Text(), "M");
  rows->SetIndex("NAMESPK");
  EXPECT_EQ(Rest(*rows, "OriginalName"), ",A,M,T,");
}

TEST_F(SqliteRecordsetTest, SeekFindsTheEqualRowAndTheWalkGoesOnBehindIt) {
  const auto rows = Sought("Names", "NamesPK");
  EXPECT_TRUE(rows->Seek("=", "M"));
  EXPECT_EQ(rows->Field("BusinessName").Text(), "mu");
  EXPECT_EQ(Rest(*rows, "OriginalName"), "M,T,");
  EXPECT_TRUE(rows->Seek("=", "A"));
  EXPECT_EQ(rows->Field("BusinessName").Text(), "alpha");
}

TEST_F(SqliteRecordsetTest, SeekHeedsCase) {
  const auto rows = Sought("Names", "NamesPK");
  EXPECT_FALSE(rows->Seek("=", "m"));
}

TEST_F(SqliteRecordsetTest, SeekWithoutAMatchIsAtTheEnd) {
  const auto rows = Sought("Names", "NamesPK");
  EXPECT_FALSE(rows->Seek("=", "B"));
  EXPECT_TRUE(rows->Eof());
  EXPECT_TRUE(rows->Seek("=", "T"));
  EXPECT_FALSE(rows->Eof());
}

TEST_F(SqliteRecordsetTest, SeekKnowsEveryComparison) {
  struct Case {
    std::string comparison;
    std::string value;
    bool found;
    std::string rest;
  };
  const Case cases[] = {{">=", "M", true, "M,T,"}, {">=", "B", true, "M,T,"},  {">=", "U", false, ""},
                        {">", "M", true, "T,"},    {">", "T", false, ""},      {"<=", "A", true, "A,M,T,"},
                        {"<=", "0", false, ""},    {"<", "M", true, "A,M,T,"}, {"<", "A", false, ""}};
  const auto rows = Sought("Names", "NamesPK");
  for (const auto& [comparison, value, found, rest] : cases) {
    EXPECT_EQ(rows->Seek(comparison, value), found) << comparison << value;
    EXPECT_EQ(Rest(*rows, "OriginalName"), rest) << comparison << value;
  }
  EXPECT_EQ(ErrorText([&] { rows->Seek("<>", "A"); }), Told("Seek knows =, >=, >, <= and <, not \"<>\"."));
}

TEST_F(SqliteRecordsetTest, AnAbsentValueIsNeverFound) {
  const auto rows = Sought("Names", "NamesPK");
  EXPECT_FALSE(rows->Seek("=", Value()));
  EXPECT_FALSE(rows->Seek(">=", Value()));
}

TEST_F(SqliteRecordsetTest, SeekComparesNumbersAsNumbers) {
  const auto rows = Sought("Numbers", "NumbersN");
  EXPECT_TRUE(rows->Seek(">", 2));
  EXPECT_EQ(Rest(*rows, "X"), "y,");
  EXPECT_TRUE(rows->Seek("=", "2"));
  EXPECT_EQ(Rest(*rows, "X"), "a,b,y,");
}

TEST_F(SqliteRecordsetTest, AnIndexIsSetForTablesOnly) {
  const auto query = database_->OpenRecordset("select * from Names");
  EXPECT_EQ(ErrorText([&] { query->SetIndex("NamesPK"); }),
            Told("an index can be set for a table only, not for the statement \"select * from Names\"."));
  const auto table = database_->OpenRecordset("Names");
  EXPECT_EQ(ErrorText([&] { table->SetIndex("Other"); }), Told("the table Names has no index Other."));
  EXPECT_EQ(ErrorText([&] { table->SetIndex("ByUpper"); }), Told("the table Names has no index ByUpper."));
  EXPECT_EQ(ErrorText([&] { table->Seek("=", "A"); }), Told("an index must be set before a Seek."));
}

TEST_F(SqliteRecordsetTest, AClosedRecordsetIsAtItsEndAndRefusesTheRest) {
  const auto rows = database_->OpenRecordset("Names");
  rows->Close();
  EXPECT_TRUE(rows->Eof());
  EXPECT_EQ(ErrorText([&] { rows->MoveNext(); }), "A recordset was used after it had been closed.");
  rows->Close();
}

TEST_F(SqliteRecordsetTest, RowsMayBeChangedWhileTheyAreWalked) {
  const auto rows = database_->OpenRecordset("select rowid as R, OriginalName from Names where OriginalName<>''");
  for (; !rows->Eof(); rows->MoveNext()) {
    database_->Execute("update Names set BusinessName='done' where OriginalName='" +
                       rows->Field("OriginalName").Text() + "'");
  }
  EXPECT_EQ(database_->OpenRecordset("select count(*) as N from Names where BusinessName='done'")->Field("N").Integer(),
            3);
}

TEST_F(SqliteRecordsetTest, AFailedSeekDoesNotKeepOtherProcessesFromWriting) {
  const auto rows = Sought("Names", "NamesPK");
  EXPECT_FALSE(rows->Seek("=", "none"));
  SqliteDatabase other(path_);
  other.Execute("update Names set BusinessName='x'");
  EXPECT_EQ(other.RecordsAffected(), 4);
}

}  // namespace
}  // namespace qmrules::workbench
