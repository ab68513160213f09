#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <string>

#include "errortext.h"
#include "platform/filesystem.h"
#include "temporaryfolder.h"

namespace qmrules::platform {
namespace {

using testing::ElementsAre;

// While it lives, a file can take no more than so many bytes.
class SmallDisk {
 public:
  explicit SmallDisk(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    ::getrlimit(RLIMIT_FSIZE, &former_);
    const rlimit limit{bytes, former_.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;
  ~SmallDisk() {
    ::setrlimit(RLIMIT_FSIZE, &former_);
    std::signal(SIGXFSZ, handler_);
  }

 private:
  void (*handler_)(int);
  rlimit former_{};
};

class DiskFileSystemTest : public testing::Test {
 protected:
  void Link(const std::string& to, const std::string& name) const {
    std::filesystem::create_symlink(to, folder_ / name);
  }

  TemporaryFolder folder_;
  DiskFileSystem files_;
};

TEST_F(DiskFileSystemTest, DateIsCutToWholeSeconds) {
  folder_.Put("a", "x");
  const timeval times[2] = {{1600000000, 0}, {1600000000, 999999}};
  ASSERT_EQ(::utimes((folder_ / "a").c_str(), times), 0);
  EXPECT_EQ(files_.DateLastModified(folder_ / "a"), Timestamp{1600000000});
}

TEST_F(DiskFileSystemTest, PermissionsOfAReplacedFileStay) {
  folder_.Put("a", "x");
  ASSERT_EQ(::chmod((folder_ / "a").c_str(), 0640), 0);
  files_.WriteFile(folder_ / "a", "y");
  struct stat status {};
  ASSERT_EQ(::stat((folder_ / "a").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0640U);
  EXPECT_EQ(folder_.Bytes("a"), "y");
}

TEST_F(DiskFileSystemTest, WritingThroughALinkKeepsTheLink) {
  folder_.Put("target", "x");
  Link("target", "link");
  files_.WriteFile(folder_ / "link", "y");
  EXPECT_TRUE(std::filesystem::is_symlink(folder_ / "link"));
  EXPECT_EQ(folder_.Bytes("target"), "y");
}

TEST_F(DiskFileSystemTest, FullDiskLeavesTheOldFileAndNoOther) {
  folder_.Put("a", "old");
  const SmallDisk small(1000);
  EXPECT_EQ(ErrorText([&] { files_.WriteFile(folder_ / "a", std::string(5000, 'x')); }),
            "The file \"" + (folder_ / "a") + "\" cannot be written: File too large.");
  EXPECT_EQ(folder_.Bytes("a"), "old");
  EXPECT_EQ(folder_.EntryCount(), 1U);
}

TEST_F(DiskFileSystemTest, NameThatIsTooLongIsRefusedAndLeavesNothing) {
  const std::string path = folder_ / std::string(256, 'n');
  EXPECT_EQ(ErrorText([&] { files_.WriteFile(path, "y"); }),
            "The file \"" + path + "\" cannot be written: File name too long.");
  EXPECT_EQ(folder_.EntryCount(), 0U);
}

TEST_F(DiskFileSystemTest, FileThatAnotherWriterLeftBehindIsNotTouched) {
  const std::string leftBehind = ".qmrules-" + std::to_string(::getpid()) + "-0.tmp";
  folder_.Put(leftBehind, "theirs");
  files_.WriteFile(folder_ / "a", "ours");
  EXPECT_EQ(folder_.Bytes(leftBehind), "theirs");
  EXPECT_EQ(folder_.Bytes("a"), "ours");
}

TEST_F(DiskFileSystemTest, PipeIsNotWaitedFor) {
  ASSERT_EQ(::mkfifo((folder_ / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(ErrorText([&] { files_.ReadFile(folder_ / "pipe"); }),
            "The file \"" + (folder_ / "pipe") + "\" cannot be read: it is not an ordinary file.");
}

TEST_F(DiskFileSystemTest, LinksInACircleAreRefused) {
  Link("two", "one");
  Link("one", "two");
  EXPECT_FALSE(files_.Exists(folder_ / "one"));
  EXPECT_EQ(ErrorText([&] { files_.ReadFile(folder_ / "one"); }),
            "The file \"" + (folder_ / "one") + "\" cannot be read: Too many levels of symbolic links.");
}

TEST_F(DiskFileSystemTest, LinkThatLeadsNowhereIsListedAsNoFolder) {
  Link("none", "link");
  EXPECT_THAT(files_.ListFolder(folder_.Path()), ElementsAre(FolderEntry{"link", false}));
}

TEST_F(DiskFileSystemTest, LinkOutOfTheRootIsRefused) {
  std::filesystem::create_directories(folder_ / "root");
  std::filesystem::create_directories(folder_ / "other");
  Link("../other", "root/out");
  const std::string root = folder_ / "root";
  for (const std::string name : {"out", "out/a.cbl", "out\\new\\a.cbl"}) {
    EXPECT_EQ(ErrorText([&] { files_.ResolveInside(root, name); }),
              "The file name \"" + name + "\" leads out of the folder \"" + root + "\" through a link, or nowhere.");
  }
}

TEST_F(DiskFileSystemTest, SiblingWhoseNameBeginsLikeTheRootIsOutside) {
  std::filesystem::create_directories(folder_ / "root");
  std::filesystem::create_directories(folder_ / "rootless");
  Link("../rootless", "root/out");
  const std::string root = folder_ / "root";
  EXPECT_EQ(ErrorText([&] { files_.ResolveInside(root, "out"); }),
            "The file name \"out\" leads out of the folder \"" + root + "\" through a link, or nowhere.");
}

TEST_F(DiskFileSystemTest, LinkThatLeadsNowhereIsRefusedAsATarget) {
  std::filesystem::create_directories(folder_ / "root");
  Link("../later", "root/out");
  const std::string root = folder_ / "root";
  EXPECT_EQ(ErrorText([&] { files_.ResolveInside(root, "out"); }),
            "The file name \"out\" leads out of the folder \"" + root + "\" through a link, or nowhere.");
}

TEST_F(DiskFileSystemTest, LinkWithinTheRootAndTheRootAsALinkAreTaken) {
  std::filesystem::create_directories(folder_ / "root/inner");
  Link("inner", "root/link");
  Link("root", "alias");
  EXPECT_EQ(files_.ResolveInside(folder_ / "root", "link/a"), folder_ / "root/link/a");
  EXPECT_EQ(files_.ResolveInside(folder_ / "alias", "link/a"), folder_ / "alias/link/a");
}

TEST_F(DiskFileSystemTest, RelativeRootStartsAtTheProcessFolder) {
  EXPECT_EQ(files_.ResolveInside("some/root", "a"), "some/root/a");
  EXPECT_EQ(files_.ResolveInside("", "a"), "a");
}

}  // namespace
}  // namespace qmrules::platform
