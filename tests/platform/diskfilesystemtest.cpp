#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <string>

#include "platform/diskfile.h"
#include "platform/filesystem.h"
#include "support/errortext.h"
#include "support/temporaryfolder.h"

namespace qmrules::platform {
namespace {

using test::TemporaryFolder;

using test::ErrorText;

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
    std::filesystem::create_symlink(to, folder_.File(name));
  }

  TemporaryFolder folder_;
  DiskFileSystem files_;
};

TEST_F(DiskFileSystemTest, DateIsCutToWholeSeconds) {
  folder_.Write("a", "x");
  const timeval times[2] = {{1600000000, 0}, {1600000000, 999999}};
  ASSERT_EQ(::utimes((folder_.File("a")).c_str(), times), 0);
  EXPECT_EQ(files_.DateLastModified(folder_.File("a")), Timestamp{1600000000});
}

TEST_F(DiskFileSystemTest, PermissionsOfAReplacedFileStay) {
  folder_.Write("a", "x");
  ASSERT_EQ(::chmod((folder_.File("a")).c_str(), 0640), 0);
  files_.WriteFile(folder_.File("a"), "y");
  struct stat status {};
  ASSERT_EQ(::stat((folder_.File("a")).c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0640U);
  EXPECT_EQ(folder_.Read("a"), "y");
}

TEST_F(DiskFileSystemTest, WritingThroughALinkKeepsTheLink) {
  folder_.Write("target", "x");
  Link("target", "link");
  files_.WriteFile(folder_.File("link"), "y");
  EXPECT_TRUE(std::filesystem::is_symlink(folder_.File("link")));
  EXPECT_EQ(folder_.Read("target"), "y");
}

TEST_F(DiskFileSystemTest, FullDiskLeavesTheOldFileAndNoOther) {
  folder_.Write("a", "old");
  const SmallDisk small(1000);
  EXPECT_EQ(ErrorText([&] { files_.WriteFile(folder_.File("a"), std::string(5000, 'x')); }),
            "The file \"" + (folder_.File("a")) + "\" cannot be written: File too large.");
  EXPECT_EQ(folder_.Read("a"), "old");
  EXPECT_EQ(folder_.EntryCount(), 1U);
}

TEST_F(DiskFileSystemTest, NameThatIsTooLongIsRefusedAndLeavesNothing) {
  const std::string path = folder_.File(std::string(256, 'n'));
  EXPECT_EQ(ErrorText([&] { files_.WriteFile(path, "y"); }),
            "The file \"" + path + "\" cannot be written: File name too long.");
  EXPECT_EQ(folder_.EntryCount(), 0U);
}

TEST_F(DiskFileSystemTest, FileThatAnotherWriterLeftBehindIsNotTouched) {
  const std::string leftBehind = ".qmrules-" + std::to_string(::getpid()) + "-0.tmp";
  folder_.Write(leftBehind, "theirs");
  files_.WriteFile(folder_.File("a"), "ours");
  EXPECT_EQ(folder_.Read(leftBehind), "theirs");
  EXPECT_EQ(folder_.Read("a"), "ours");
}

TEST_F(DiskFileSystemTest, PipeIsNotWaitedFor) {
  ASSERT_EQ(::mkfifo((folder_.File("pipe")).c_str(), 0600), 0);
  EXPECT_EQ(ErrorText([&] { files_.ReadFile(folder_.File("pipe")); }),
            "The file \"" + (folder_.File("pipe")) + "\" cannot be read: it is not an ordinary file.");
}

TEST_F(DiskFileSystemTest, StartOfAFileComesWithTheSizeOfTheWhole) {
  const std::string path = folder_.Write("a", "abcdefgh");
  const DiskFileStart part = ReadDiskFileStart(path, 3);
  EXPECT_EQ(part.bytes, "abc");
  EXPECT_EQ(part.size, 8U);
  const DiskFileStart all = ReadDiskFileStart(path, 100);
  EXPECT_EQ(all.bytes, "abcdefgh");
  EXPECT_EQ(all.size, 8U);
  EXPECT_EQ(ReadDiskFileStart(folder_.Write("b", ""), 100).bytes, "");
  EXPECT_EQ(ErrorText([&] { ReadDiskFileStart(folder_.File("none"), 3); }),
            "The file \"" + folder_.File("none") + "\" cannot be read: there is no such file.");
  EXPECT_EQ(ErrorText([&] { ReadDiskFileStart(folder_.Path().string(), 3); }),
            "The file \"" + folder_.Path().string() + "\" cannot be read: it is a folder.");
}

TEST_F(DiskFileSystemTest, AFileIsGivenPieceByPiece) {
  const auto visited = [&](const std::string& path, std::size_t limit) {
    std::string bytes;
    VisitDiskFile(path, limit, [&](std::string_view piece) { bytes += piece; });
    return bytes;
  };
  std::string content;
  for (int at = 0; at < 200'000; ++at) content += static_cast<char>(at % 251);
  const std::string path = folder_.Write("a", content);
  EXPECT_EQ(visited(path, content.size()), content);
  EXPECT_EQ(visited(folder_.Write("b", ""), 0), "");
  EXPECT_EQ(ErrorText([&] { visited(path, content.size() - 1); }),
            ErrorText([&] { ReadDiskFile(path, content.size() - 1); }));
  EXPECT_EQ(ErrorText([&] { visited(folder_.File("none"), 3); }),
            "The file \"" + folder_.File("none") + "\" cannot be read: there is no such file.");
}

TEST_F(DiskFileSystemTest, AFileThatIsALinkCanBeLeftAlone) {
  std::string bytes;
  const auto visits = [&](const std::string& path, std::size_t limit = 10) {
    bytes.clear();
    return VisitUnlinkedDiskFile(path, limit, [&](std::string_view piece) { bytes += piece; });
  };
  folder_.Write("in/a", "abc");
  Link("in/a", "link");
  Link("nothing", "broken");
  Link("circle", "circle");
  Link("in", "linked");
  for (const char* name : {"in/a", "in\\a", "linked/a"}) {
    EXPECT_TRUE(visits(folder_.File(name))) << name;
    EXPECT_EQ(bytes, "abc") << name;
  }
  for (const char* name : {"link", "broken", "circle", "linked", "circle/a"}) {
    EXPECT_FALSE(visits(folder_.File(name))) << name;
    EXPECT_EQ(bytes, "") << name;
  }
  for (const char* name : {"none", "in", "in/a/b"}) {
    EXPECT_EQ(ErrorText([&] { visits(folder_.File(name)); }), ErrorText([&] { ReadDiskFile(folder_.File(name), 10); }));
  }
  EXPECT_EQ(ErrorText([&] { visits(folder_.File("in/a"), 2); }),
            "The file \"" + folder_.File("in/a") + "\" cannot be read: it has 3 bytes, and at most 2 are read.");
}

TEST_F(DiskFileSystemTest, MappedFileStaysAsItWasWhenANewOneTakesItsPlace) {
  const std::string path = folder_.Write("a", "abcdefgh");
  const MappedDiskFile mapped(path);
  WriteDiskFile(path, "other", WriteSafety::Rebuildable);
  EXPECT_EQ(mapped.Bytes(), "abcdefgh");
  EXPECT_EQ(MappedDiskFile(path).Bytes(), "other");
  EXPECT_EQ(MappedDiskFile(folder_.Write("b", "")).Bytes(), "");
  EXPECT_EQ(ErrorText([&] { MappedDiskFile(folder_.File("none")); }),
            "The file \"" + folder_.File("none") + "\" cannot be read: there is no such file.");
  EXPECT_EQ(ErrorText([&] { MappedDiskFile(folder_.Path().string()); }),
            "The file \"" + folder_.Path().string() + "\" cannot be read: it is a folder.");
}

TEST_F(DiskFileSystemTest, LinksInACircleAreRefused) {
  Link("two", "one");
  Link("one", "two");
  EXPECT_FALSE(files_.Exists(folder_.File("one")));
  EXPECT_EQ(ErrorText([&] { files_.ReadFile(folder_.File("one")); }),
            "The file \"" + (folder_.File("one")) + "\" cannot be read: Too many levels of symbolic links.");
}

TEST_F(DiskFileSystemTest, LinkThatLeadsNowhereIsListedAsNoFolder) {
  Link("none", "link");
  EXPECT_THAT(files_.ListFolder(folder_.Path().string()), ElementsAre(FolderEntry{"link", false}));
}

TEST_F(DiskFileSystemTest, LinkOutOfTheRootIsRefused) {
  std::filesystem::create_directories(folder_.File("root"));
  std::filesystem::create_directories(folder_.File("other"));
  Link("../other", "root/out");
  const std::string root = folder_.File("root");
  for (const std::string name : {"out", "out/a.cbl", "out\\new\\a.cbl"}) {
    EXPECT_EQ(ErrorText([&] { files_.ResolveInside(root, name); }),
              "The file name \"" + name + "\" leads out of the folder \"" + root + "\" through a link, or nowhere.");
  }
}

TEST_F(DiskFileSystemTest, SiblingWhoseNameBeginsLikeTheRootIsOutside) {
  std::filesystem::create_directories(folder_.File("root"));
  std::filesystem::create_directories(folder_.File("rootless"));
  Link("../rootless", "root/out");
  const std::string root = folder_.File("root");
  EXPECT_EQ(ErrorText([&] { files_.ResolveInside(root, "out"); }),
            "The file name \"out\" leads out of the folder \"" + root + "\" through a link, or nowhere.");
}

TEST_F(DiskFileSystemTest, LinkThatLeadsNowhereIsRefusedAsATarget) {
  std::filesystem::create_directories(folder_.File("root"));
  Link("../later", "root/out");
  const std::string root = folder_.File("root");
  EXPECT_EQ(ErrorText([&] { files_.ResolveInside(root, "out"); }),
            "The file name \"out\" leads out of the folder \"" + root + "\" through a link, or nowhere.");
}

TEST_F(DiskFileSystemTest, LinkWithinTheRootAndTheRootAsALinkAreTaken) {
  std::filesystem::create_directories(folder_.File("root/inner"));
  Link("inner", "root/link");
  Link("root", "alias");
  EXPECT_EQ(files_.ResolveInside(folder_.File("root"), "link/a"), folder_.File("root/link/a"));
  EXPECT_EQ(files_.ResolveInside(folder_.File("alias"), "link/a"), folder_.File("alias/link/a"));
}

TEST_F(DiskFileSystemTest, RelativeRootStartsAtTheProcessFolder) {
  EXPECT_EQ(files_.ResolveInside("some/base", "a"), "some/base/a");
  EXPECT_EQ(files_.ResolveInside("", "a"), "a");
}

}  // namespace
}  // namespace qmrules::platform
