#include "workbench/dataflow/dataflowdatabase.h"

#include <gtest/gtest.h>

#include "support/errortext.h"
#include "support/temporaryfolder.h"
#include "workbench/databases/sqlitedatabase.h"

namespace qmrules::workbench {
namespace {

using test::ErrorText;

class DataflowDatabaseTest : public testing::Test {
 protected:
  DataflowDatabaseTest() : path_(folder_.File("Demo.mdb")) { CreateDataflowDatabase(path_); }

  test::TemporaryFolder folder_;
  std::string path_;
};

TEST_F(DataflowDatabaseTest, TheReportIsReadByItsStatement) {
  SqliteDatabase dataflow(path_);
  dataflow.Execute(
      "insert into Report (ID, PrevID, Sid, ObjName, QMID, Context, Offset, Size, RelType, PortFlag, Duplicate) values "
      "(2, 1, 'COBOL#7', 'PREMIUM', 12, 'c', 4, 8, 'used', 'n', ''), (1, -1, 'COBOL#7', 'RATE', 11, '', 0, 4, "
      "'const.move', 'i', 'Y')");
  const auto rows = dataflow.OpenRecordset(
      "select ID, PrevID, Sid, ObjName, QMID, Context, Offset, Size, RelType, PortFlag, Duplicate from Report  order "
      "by ID");
  EXPECT_EQ(rows->Field("ObjName").Text(), "RATE");
  EXPECT_EQ(rows->Field("PrevID").Integer(), -1);
  rows->MoveNext();
  EXPECT_EQ(rows->Field("Offset").Integer(), 4);
  EXPECT_EQ(rows->Field("Size").Integer(), 8);
  rows->MoveNext();
  EXPECT_TRUE(rows->Eof());
}

TEST_F(DataflowDatabaseTest, ExternalRelationshipsAreReadByTheirStatement) {
  SqliteDatabase dataflow(path_);
  dataflow.Execute("insert into ExternalRelationships values ('VAR#3', 'IN'), ('VAR#3', 'INOUT'), ('VAR#4', 'OUT')");
  const auto rows = dataflow.OpenRecordset("select Dir from   ExternalRelationships where  VarQMID='VAR#3'");
  EXPECT_EQ(rows->Field("Dir").Text(), "IN");
  rows->MoveNext();
  EXPECT_EQ(rows->Field("Dir").Text(), "INOUT");
}

TEST_F(DataflowDatabaseTest, AnUnknownDirectionIsRefused) {
  SqliteDatabase dataflow(path_);
  const std::string statement = "insert into ExternalRelationships values ('VAR#3', 'UP')";
  EXPECT_EQ(ErrorText([&] { dataflow.Execute(statement); }),
            "The database \"" + path_ + "\" refused the statement \"" + statement +
                "\": CHECK constraint failed: Dir IN ('IN', 'OUT', 'INOUT').");
}

}  // namespace
}  // namespace qmrules::workbench
