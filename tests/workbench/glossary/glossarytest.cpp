#include "workbench/glossary/glossary.h"

#include <gtest/gtest.h>

#include "support/errortext.h"
#include "support/temporaryfolder.h"
#include "workbench/databases/sqlitedatabase.h"

namespace qmrules::workbench {
namespace {

using test::ErrorText;

class GlossaryTest : public testing::Test {
 protected:
  GlossaryTest() : path_(folder_.File("Glossary.mdb")) { CreateGlossary(path_); }

  test::TemporaryFolder folder_;
  std::string path_;
};

TEST_F(GlossaryTest, ANewGlossaryHasNoNames) {
  EXPECT_TRUE(SqliteDatabase(path_).OpenRecordset("Names")->Eof());
}

TEST_F(GlossaryTest, ANameIsLookedUpWithItsQuoteDoubled) {
  SqliteDatabase glossary(path_);
  glossary.Execute("insert into Names (OriginalName, BusinessName, Description) values ('O''NEIL', 'Broker', 'Name')");
  const auto row = glossary.OpenRecordset("select BusinessName, Description from Names where OriginalName='O''NEIL'");
  ASSERT_FALSE(row->Eof());
  EXPECT_EQ(row->Field("BusinessName").Text(), "Broker");
  EXPECT_EQ(row->Field("Description").Text(), "Name");
}

TEST_F(GlossaryTest, ANameIsSoughtByItsPrimaryIndex) {
  SqliteDatabase glossary(path_);
  glossary.Execute("insert into Names (OriginalName, BusinessName) values ('POLICY-NO', 'Policy number')");
  const auto names = glossary.OpenRecordset("Names");
  names->SetIndex("NamesPK");
  EXPECT_TRUE(names->Seek("=", "POLICY-NO"));
  EXPECT_EQ(names->Field("BusinessName").Text(), "Policy number");
  EXPECT_EQ(names->Field("SourceOfBusinessName").Text(), "");
  EXPECT_FALSE(names->Seek("=", "policy-no"));
}

TEST_F(GlossaryTest, ANameStandsOnce) {
  SqliteDatabase glossary(path_);
  const std::string statement = "insert into Names (OriginalName) values ('A')";
  glossary.Execute(statement);
  EXPECT_EQ(ErrorText([&] { glossary.Execute(statement); }), "The database \"" + path_ + "\" refused the statement \"" +
                                                                 statement +
                                                                 "\": UNIQUE constraint failed: Names.OriginalName.");
}

TEST_F(GlossaryTest, TheStatementOfASynchronisationUpdatesTheName) {
  SqliteDatabase glossary(path_);
  glossary.Execute("insert into Names (OriginalName) values ('A')");
  glossary.Execute(
      "update Names set BusinessName='B',     Description='C',     SourceOfBusinessName='Auto Propagation' where "
      "OriginalName='A'");
  EXPECT_EQ(glossary.RecordsAffected(), 1);
}

TEST_F(GlossaryTest, AnExistingGlossaryStays) {
  EXPECT_EQ(ErrorText([&] { CreateGlossary(path_); }),
            "The database \"" + path_ + "\" cannot be made: a file of this name exists. Move it away.");
}

}  // namespace
}  // namespace qmrules::workbench
