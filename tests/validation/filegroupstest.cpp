#include "validation/filegroups.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/clock.h"
#include "platform/memoryfilesystem.h"
#include "support/temporaryfolder.h"

namespace qmrules::validation {
namespace {

TEST(FileGroups, AreInTheOrderOfFirstAppearance) {
  platform::FixedClock clock{platform::Timestamp{0}};
  const platform::MemoryFileSystem files(clock);
  FileGroups groups(files, "/src");
  EXPECT_EQ(groups.GroupOf("B.cbl"), 0U);
  EXPECT_EQ(groups.GroupOf("A.cbl"), 1U);
  EXPECT_EQ(groups.GroupOf("B.cbl"), 0U);
  EXPECT_EQ(groups.Count(), 2U);
  EXPECT_EQ(groups.Name(1), "A.cbl");
}

TEST(FileGroups, KeepFilesApartThatDifferInCase) {
  const test::TemporaryFolder folder;
  folder.Write("FEE.cbl", "A\n");
  folder.Write("fee.cbl", "A\n");
  const platform::DiskFileSystem files;
  FileGroups groups(files, folder.Path().string());
  EXPECT_EQ(groups.GroupOf("FEE.cbl"), 0U);
  EXPECT_EQ(groups.GroupOf("fee.cbl"), 1U);
  EXPECT_EQ(groups.GroupOf("Fee.cbl"), 2U) << "no file has this name";
  EXPECT_EQ(groups.GroupOf("fee.cbl"), 1U);
}

TEST(FileGroups, JoinNamesInOtherCaseThatOpenOneFile) {
  const test::TemporaryFolder folder;
  folder.Write("FEE.cbl", "A\n");
  std::filesystem::create_symlink("FEE.cbl", folder.Path() / "fee.cbl");
  const platform::DiskFileSystem files;
  FileGroups groups(files, folder.Path().string());
  EXPECT_EQ(groups.GroupOf("FEE.cbl"), 0U);
  EXPECT_EQ(groups.GroupOf("fee.cbl"), 0U);
  EXPECT_EQ(groups.Count(), 1U);
  EXPECT_EQ(groups.Name(0), "FEE.cbl");
}

TEST(FileGroups, KeepOtherNamesOfOneFileApart) {
  const test::TemporaryFolder folder;
  folder.Write("FEE.cbl", "A\n");
  std::filesystem::create_symlink("FEE.cbl", folder.Path() / "RATE.cbl");
  const platform::DiskFileSystem files;
  FileGroups groups(files, folder.Path().string());
  EXPECT_EQ(groups.GroupOf("FEE.cbl"), 0U);
  EXPECT_EQ(groups.GroupOf("RATE.cbl"), 1U);
}

TEST(FileGroups, TakeNamesThatLeadOutOfTheFolder) {
  const test::TemporaryFolder folder;
  folder.Write("secret", "A\n");
  folder.Write("src/FEE.cbl", "A\n");
  const platform::DiskFileSystem files;
  FileGroups groups(files, folder.File("src"));
  EXPECT_EQ(groups.GroupOf("..\\secret"), 0U);
  EXPECT_EQ(groups.GroupOf("..\\SECRET"), 1U);
}

}  // namespace
}  // namespace qmrules::validation
