#include "platform/diskfolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>

#include "support/temporaryfolder.h"

namespace qmrules::platform {
namespace {

namespace fs = std::filesystem;

class DiskFolderTest : public testing::Test {
 protected:
  using Entries = std::map<std::string, DiskEntryKind, std::less<>>;
  Entries EntriesOf(const std::string& path) {
    Entries entries;
    failed_ = VisitDiskFolder(path, [&](std::string_view name, DiskEntryKind kind) {
      EXPECT_TRUE(entries.emplace(name, kind).second) << name;
    });
    return entries;
  }

  test::TemporaryFolder folder_;
  std::error_code failed_;
};

TEST_F(DiskFolderTest, EntriesComeWithTheirKinds) {
  folder_.Write("a.cbl", "x");
  folder_.Write(".hidden", "");
  folder_.Write("in/b.cbl", "x");
  fs::create_symlink("a.cbl", folder_.File("tofile"));
  fs::create_directory_symlink("in", folder_.File("tofolder"));
  fs::create_symlink("nothing", folder_.File("tonothing"));
  ASSERT_EQ(::mkfifo(folder_.File("pipe").c_str(), 0600), 0);
  const Entries expected{{"a.cbl", DiskEntryKind::File},    {".hidden", DiskEntryKind::File},
                         {"in", DiskEntryKind::Folder},     {"tofile", DiskEntryKind::Link},
                         {"tofolder", DiskEntryKind::Link}, {"tonothing", DiskEntryKind::Link},
                         {"pipe", DiskEntryKind::File}};
  EXPECT_EQ(EntriesOf(folder_.Path().string()), expected);
  EXPECT_FALSE(failed_);
}

TEST_F(DiskFolderTest, AnEmptyFolderHasNoEntries) {
  EXPECT_EQ(EntriesOf(folder_.Path().string()), Entries());
  EXPECT_FALSE(failed_);
}

TEST_F(DiskFolderTest, WhatIsNoFolderIsTold) {
  EXPECT_EQ(EntriesOf(folder_.File("none")), Entries());
  EXPECT_EQ(failed_, std::errc::no_such_file_or_directory);
  EXPECT_EQ(EntriesOf(folder_.Write("a", "x")), Entries());
  EXPECT_EQ(failed_, std::errc::not_a_directory);
}

TEST_F(DiskFolderTest, ABackslashIsAPartOfAName) {
  folder_.Write("in/a", "x");
  folder_.Write("in\\deep/b", "x");
  EXPECT_EQ(EntriesOf(folder_.File("in\\deep")), (Entries{{"b", DiskEntryKind::File}}));
  EXPECT_EQ(EntriesOf(folder_.Path().string() + "\\in"), Entries());
  EXPECT_EQ(failed_, std::errc::no_such_file_or_directory);
}

TEST_F(DiskFolderTest, WhatTheVisitorThrowsGoesOnAndLeavesNothingOpen) {
  folder_.Write("a", "x");
  const auto openFiles = [] {
    return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
  };
  const auto before = openFiles();
  const auto refuse = [](std::string_view, DiskEntryKind) { throw std::runtime_error("enough"); };
  EXPECT_THROW(EXPECT_FALSE(VisitDiskFolder(folder_.Path().string(), refuse)), std::runtime_error);
  EXPECT_EQ(openFiles(), before);
}

}  // namespace
}  // namespace qmrules::platform
