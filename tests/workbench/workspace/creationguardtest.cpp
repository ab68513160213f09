#include "workbench/workspace/creationguard.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/temporaryfolder.h"

namespace qmrules::workbench {
namespace {

namespace fs = std::filesystem;

TEST(CreationGuard, RemovesWhatWasMadeWithTheFoldersOnTheWay) {
  const test::TemporaryFolder folder;
  {
    CreationGuard guard;
    guard.Watch(folder.File("a/b/c.txt"));
    folder.Write("a/b/c.txt", "x");
  }
  EXPECT_TRUE(fs::is_empty(folder.Path()));
}

TEST(CreationGuard, WhatWasThereBeforeStays) {
  const test::TemporaryFolder folder;
  folder.Write("a/old.txt", "x");
  CreationGuard guard;
  guard.Watch(folder.File("a"));
  guard.Watch(folder.File("a/old.txt"));
  guard.Watch(folder.File("a/new/deep.txt"));
  folder.Write("a/new/deep.txt", "x");
  EXPECT_TRUE(guard.Undo().empty());
  EXPECT_TRUE(fs::exists(folder.Path() / "a/old.txt"));
  EXPECT_FALSE(fs::exists(folder.Path() / "a/new"));
}

TEST(CreationGuard, WhatIsKeptStays) {
  const test::TemporaryFolder folder;
  {
    CreationGuard guard;
    guard.Watch(folder.File("a.txt"));
    folder.Write("a.txt", "x");
    guard.Keep();
  }
  EXPECT_TRUE(fs::exists(folder.Path() / "a.txt"));
}

TEST(CreationGuard, WhatWasNeverMadeIsNoFailure) {
  const test::TemporaryFolder folder;
  CreationGuard guard;
  guard.Watch(folder.File("never.txt"));
  EXPECT_TRUE(guard.Undo().empty());
}

}  // namespace
}  // namespace qmrules::workbench
