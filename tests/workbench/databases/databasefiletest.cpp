#include "workbench/databases/databasefile.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/errortext.h"
#include "support/temporaryfolder.h"

namespace qmrules::workbench {
namespace {

using test::ErrorText;
using test::TemporaryFolder;

constexpr DatabaseFormat format{.applicationID = 0x514D5453, .version = 3};

int Number(sqlite3* connection, const char* question) {
  sqlite3_stmt* handle = nullptr;
  EXPECT_EQ(sqlite3_prepare_v2(connection, question, -1, &handle, nullptr), SQLITE_OK);
  const SqliteStatement statement(handle);
  EXPECT_EQ(sqlite3_step(handle), SQLITE_ROW);
  return sqlite3_column_int(handle, 0);
}

TEST(DatabaseFile, ANewFileHasItsTablesItsKindAndItsVersion) {
  const TemporaryFolder folder;
  CreateDatabaseFile(folder.File("a.mdb"), format, "CREATE TABLE T (A); INSERT INTO T VALUES (7)");
  const auto connection = OpenDatabaseFile(folder.File("a.mdb"));
  EXPECT_EQ(Number(connection.get(), "SELECT A FROM T"), 7);
  EXPECT_EQ(Number(connection.get(), "PRAGMA application_id"), 0x514D5453);
  EXPECT_EQ(Number(connection.get(), "PRAGMA user_version"), 3);
}

TEST(DatabaseFile, AnExistingFileIsNotOverwritten) {
  const TemporaryFolder folder;
  const auto path = folder.Write("a.mdb", "mine");
  EXPECT_EQ(ErrorText([&] { CreateDatabaseFile(path, format, "CREATE TABLE T (A)"); }),
            "The database \"" + path + "\" cannot be made: a file of this name exists. Move it away.");
  EXPECT_EQ(test::ReadBytes(path), "mine");
}

TEST(DatabaseFile, AFailedCreationLeavesNoFile) {
  const TemporaryFolder folder;
  const auto path = folder.File("a.mdb");
  EXPECT_EQ(ErrorText([&] { CreateDatabaseFile(path, format, "CREATE TABLE T (A); CREATE TABLE T (B)"); }),
            "The database \"" + path + "\" cannot be made: table T already exists.");
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(DatabaseFile, AMissingFolderIsTold) {
  const TemporaryFolder folder;
  const auto path = folder.File("none/a.mdb");
  EXPECT_EQ(ErrorText([&] { CreateDatabaseFile(path, format, "CREATE TABLE T (A)"); }),
            "The database \"" + path + "\" cannot be opened: unable to open database file.");
}

TEST(DatabaseFile, BackslashesAreTakenInAPath) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder.Path() / "in");
  CreateDatabaseFile(folder.Path().string() + "\\in\\a.mdb", format, "CREATE TABLE T (A)");
  EXPECT_TRUE(std::filesystem::exists(folder.Path() / "in" / "a.mdb"));
  EXPECT_NE(OpenDatabaseFile(folder.Path().string() + "\\in\\a.mdb"), nullptr);
}

TEST(DatabaseFile, AnAddressFormOfAPathIsAPlainName) {
  const TemporaryFolder folder;
  const auto path = folder.File("file:a.mdb?mode=memory");
  CreateDatabaseFile(path, format, "CREATE TABLE T (A)");
  EXPECT_TRUE(std::filesystem::exists(path));
}

TEST(DatabaseFile, OpeningDoesNotMakeAFile) {
  const TemporaryFolder folder;
  const auto path = folder.File("a.mdb");
  EXPECT_EQ(ErrorText([&] { OpenDatabaseFile(path); }),
            "The database \"" + path + "\" cannot be opened: there is no such file.");
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(DatabaseFile, AFolderAnEmptyFileAndAnotherKindOfFileAreRefused) {
  const TemporaryFolder folder;
  const auto opening = [](const std::string& path) { return ErrorText([&] { OpenDatabaseFile(path); }); };
  const auto prefix = [](const std::string& path) { return "The database \"" + path + "\" cannot be opened: "; };
  const auto inFolder = folder.Path().string();
  EXPECT_EQ(opening(inFolder), prefix(inFolder) + "it is not an ordinary file.");
  const auto empty = folder.Write("empty.mdb", "");
  EXPECT_EQ(opening(empty), prefix(empty) + "the file is empty.");
  const auto text = folder.Write("text.mdb", "this is no database, but long enough to look at");
  EXPECT_EQ(opening(text), prefix(text) + "file is not a database.");
}

}  // namespace
}  // namespace qmrules::workbench
