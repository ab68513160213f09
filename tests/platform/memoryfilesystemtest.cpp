#include "platform/memoryfilesystem.h"
#include "support/errortext.h"

#include <gtest/gtest.h>

namespace qmrules::platform {
namespace {

using test::ErrorText;

class MemoryFileSystemTest : public testing::Test {
 protected:
  FixedClock clock_{Timestamp{1000}};
  MemoryFileSystem files_{clock_};
};

TEST_F(MemoryFileSystemTest, FilesAreDatedByTheClock) {
  files_.WriteFile("a", "x");
  clock_.Set(Timestamp{2000});
  EXPECT_EQ(files_.DateLastModified("a"), Timestamp{1000});
  files_.WriteFile("a", "y");
  EXPECT_EQ(files_.DateLastModified("a"), Timestamp{2000});
}

TEST_F(MemoryFileSystemTest, DateCanBeSet) {
  files_.WriteFile("a", "x");
  files_.SetDateLastModified("a", Timestamp{5});
  EXPECT_EQ(files_.DateLastModified("a"), Timestamp{5});
  EXPECT_EQ(ErrorText([&] { files_.SetDateLastModified("b", Timestamp{5}); }),
            "The file \"b\" cannot be read: there is no such file.");
}

TEST_F(MemoryFileSystemTest, UnreadableFileIsThereButCannotBeRead) {
  files_.WriteFile("a", "text");
  files_.SetReadable("a", false);
  EXPECT_TRUE(files_.Exists("a"));
  EXPECT_EQ(files_.FileSize("a"), 4U);
  EXPECT_EQ(files_.DateLastModified("a"), Timestamp{1000});
  EXPECT_EQ(ErrorText([&] { files_.ReadFile("a"); }), "The file \"a\" cannot be read: access is denied.");
  EXPECT_EQ(ErrorText([&] { files_.OpenTextFile("a"); }), "The file \"a\" cannot be read: access is denied.");
  files_.SetReadable("a", true);
  EXPECT_EQ(files_.ReadFile("a"), "text");
}

TEST_F(MemoryFileSystemTest, RelativeAndAbsolutePathsDiffer) {
  files_.WriteFile("a", "relative");
  files_.WriteFile("/a", "absolute");
  EXPECT_EQ(files_.ReadFile("./a"), "relative");
  EXPECT_EQ(files_.ReadFile("\\a"), "absolute");
  EXPECT_EQ(files_.ListFolder("."), (std::vector<FolderEntry>{{"a", false}}));
  EXPECT_EQ(files_.ListFolder("/"), (std::vector<FolderEntry>{{"a", false}}));
}

}  // namespace
}  // namespace qmrules::platform
