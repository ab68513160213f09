#include "platform/filesystem.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "platform/memoryfilesystem.h"
#include "support/errortext.h"
#include "support/temporaryfolder.h"

// What every file system holds, whatever is behind it. To add one: give it a place below and name it in `Places`.

namespace qmrules::platform {
namespace {

using test::TemporaryFolder;

using test::ErrorText;

using namespace std::string_view_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class DiskPlace {
 public:
  std::string Root() const { return folder_.Path().string(); }
  std::unique_ptr<FileSystem> Open(FileSystemOptions options = {}) const {
    return std::make_unique<DiskFileSystem>(std::move(options));
  }
  Timestamp Earliest() const { return opened_; }

 private:
  Timestamp opened_ = SystemClock().Now();
  TemporaryFolder folder_;
};

class MemoryPlace {
 public:
  std::string Root() const { return "/work"; }
  std::unique_ptr<FileSystem> Open(FileSystemOptions options = {}) const {
    auto files = std::make_unique<MemoryFileSystem>(clock_, std::move(options));
    files->CreateFolder("/work");
    return files;
  }
  Timestamp Earliest() const { return clock_.Now(); }

 private:
  FixedClock clock_{Timestamp{1700000000}};
};

template <class Place>
class FileSystemContract : public testing::Test {
 protected:
  std::string At(std::string_view name) const { return place_.Root() + "/" + std::string(name); }

  Place place_;
  std::unique_ptr<FileSystem> files_ = place_.Open();
};

using Places = testing::Types<DiskPlace, MemoryPlace>;
TYPED_TEST_SUITE(FileSystemContract, Places);

TYPED_TEST(FileSystemContract, WrittenFileIsReadBackByteByByte) {
  const std::string bytes("a\r\n\0\xFF\x80z", 7);
  this->files_->WriteFile(this->At("a.bin"), bytes);
  EXPECT_EQ(this->files_->ReadFile(this->At("a.bin")), bytes);
  EXPECT_EQ(this->files_->FileSize(this->At("a.bin")), 7U);
}

TYPED_TEST(FileSystemContract, EmptyFileIsAFile) {
  this->files_->WriteFile(this->At("empty"), "");
  EXPECT_TRUE(this->files_->Exists(this->At("empty")));
  EXPECT_EQ(this->files_->ReadFile(this->At("empty")), "");
  EXPECT_EQ(this->files_->FileSize(this->At("empty")), 0U);
  EXPECT_TRUE(this->files_->OpenTextFile(this->At("empty"))->AtEndOfStream());
}

TYPED_TEST(FileSystemContract, WritingReplacesTheWholeFileAndLeavesNoOther) {
  this->files_->WriteFile(this->At("a.txt"), "a long first text");
  this->files_->WriteFile(this->At("a.txt"), "short");
  EXPECT_EQ(this->files_->ReadFile(this->At("a.txt")), "short");
  EXPECT_THAT(this->files_->ListFolder(this->place_.Root()), ElementsAre(FolderEntry{"a.txt", false}));
}

TYPED_TEST(FileSystemContract, FileOfTheLongestNameCanBeWritten) {
  const std::string name(255, 'n');
  this->files_->WriteFile(this->At(name), "x");
  EXPECT_EQ(this->files_->ReadFile(this->At(name)), "x");
}

TYPED_TEST(FileSystemContract, BackslashSeparatesToo) {
  this->files_->CreateFolder(this->At("cobol\\deep"));
  this->files_->WriteFile(this->place_.Root() + "\\cobol\\deep\\a.cbl", "x");
  EXPECT_EQ(this->files_->ReadFile(this->At("cobol/deep/a.cbl")), "x");
  EXPECT_TRUE(this->files_->Exists(this->At("cobol\\deep/a.cbl")));
}

TYPED_TEST(FileSystemContract, CaseOfNamesMatters) {
  this->files_->WriteFile(this->At("Name.CBL"), "upper");
  EXPECT_FALSE(this->files_->Exists(this->At("name.cbl")));
  this->files_->WriteFile(this->At("name.cbl"), "lower");
  EXPECT_EQ(this->files_->ReadFile(this->At("Name.CBL")), "upper");
}

TYPED_TEST(FileSystemContract, SameFileIsKnownWhateverItsSpelling) {
  this->files_->CreateFolder(this->At("deep"));
  this->files_->WriteFile(this->At("deep/a.cbl"), "x");
  this->files_->WriteFile(this->At("deep/A.cbl"), "x");
  EXPECT_TRUE(this->files_->IsSameFile(this->At("deep/a.cbl"), this->At("deep\\..\\deep/./a.cbl")));
  EXPECT_FALSE(this->files_->IsSameFile(this->At("deep/a.cbl"), this->At("deep/A.cbl")));
  EXPECT_FALSE(this->files_->IsSameFile(this->At("none"), this->At("none")));
  EXPECT_FALSE(this->files_->IsSameFile(this->At("deep"), this->At("deep")));
}

TYPED_TEST(FileSystemContract, MissingFileIsNamedWithTheReason) {
  const std::string path = this->At("none.cbl");
  const std::string expected = "The file \"" + path + "\" cannot be read: there is no such file.";
  EXPECT_FALSE(this->files_->Exists(path));
  EXPECT_FALSE(this->files_->IsFolder(path));
  EXPECT_EQ(ErrorText([&] { this->files_->ReadFile(path); }), expected);
  EXPECT_EQ(ErrorText([&] { this->files_->ReadTextFile(path); }), expected);
  EXPECT_EQ(ErrorText([&] { this->files_->OpenTextFile(path); }), expected);
  EXPECT_EQ(ErrorText([&] { this->files_->FileSize(path); }), expected);
  EXPECT_EQ(ErrorText([&] { this->files_->DateLastModified(path); }), expected);
}

TYPED_TEST(FileSystemContract, EmptyPathIsNoFile) {
  EXPECT_FALSE(this->files_->Exists(""));
  EXPECT_FALSE(this->files_->IsFolder(""));
  EXPECT_EQ(ErrorText([&] { this->files_->ReadFile(""); }), "The file \"\" cannot be read: there is no such file.");
  EXPECT_EQ(ErrorText([&] { this->files_->WriteFile("", "x"); }),
            "The file \"\" cannot be written: the path names no file.");
  EXPECT_EQ(ErrorText([&] { this->files_->ListFolder(""); }),
            "The folder \"\" cannot be read: there is no such folder.");
  EXPECT_EQ(ErrorText([&] { this->files_->CreateFolder(""); }),
            "The folder \"\" cannot be made: there is no such folder.");
}

TYPED_TEST(FileSystemContract, FileIsNoFolderForThatWhichLiesBeneath) {
  this->files_->WriteFile(this->At("a"), "x");
  const std::string beneath = this->At("a/b");
  EXPECT_EQ(ErrorText([&] { this->files_->ReadFile(beneath); }),
            "The file \"" + beneath + "\" cannot be read: there is no such file.");
  EXPECT_EQ(ErrorText([&] { this->files_->ReadFile(this->At("a/")); }),
            "The file \"" + this->At("a/") + "\" cannot be read: there is no such file.");
  EXPECT_EQ(ErrorText([&] { this->files_->WriteFile(beneath, "y"); }),
            "The file \"" + beneath + "\" cannot be written: there is no such folder.");
}

TYPED_TEST(FileSystemContract, FolderIsNoFile) {
  const std::string path = this->At("folder");
  this->files_->CreateFolder(path);
  EXPECT_FALSE(this->files_->Exists(path));
  EXPECT_TRUE(this->files_->IsFolder(path));
  EXPECT_TRUE(this->files_->IsFolder(path + "/"));
  EXPECT_EQ(ErrorText([&] { this->files_->ReadFile(path); }),
            "The file \"" + path + "\" cannot be read: it is a folder.");
  EXPECT_EQ(ErrorText([&] { this->files_->DateLastModified(path); }),
            "The file \"" + path + "\" cannot be read: it is a folder.");
  EXPECT_EQ(ErrorText([&] { this->files_->WriteFile(path, "x"); }),
            "The file \"" + path + "\" cannot be written: it is a folder.");
}

TYPED_TEST(FileSystemContract, WritingMakesNoFolders) {
  const std::string path = this->At("none/a.txt");
  EXPECT_EQ(ErrorText([&] { this->files_->WriteFile(path, "x"); }),
            "The file \"" + path + "\" cannot be written: there is no such folder.");
  EXPECT_FALSE(this->files_->IsFolder(this->At("none")));
}

TYPED_TEST(FileSystemContract, PathWithSeparatorAtTheEndNamesNoFileToWrite) {
  const std::string path = this->At("new/");
  EXPECT_EQ(ErrorText([&] { this->files_->WriteFile(path, "x"); }),
            "The file \"" + path + "\" cannot be written: the path names no file.");
}

TYPED_TEST(FileSystemContract, DateIsThatOfTheLastChange) {
  this->files_->WriteFile(this->At("a.txt"), "x");
  const Timestamp date = this->files_->DateLastModified(this->At("a.txt"));
  EXPECT_GE(date, this->place_.Earliest());
  EXPECT_LE(date.seconds, SystemClock().Now().seconds);
}

TYPED_TEST(FileSystemContract, FolderIsListedByName) {
  this->files_->WriteFile(this->At("b.txt"), "");
  this->files_->WriteFile(this->At("A.txt"), "");
  this->files_->CreateFolder(this->At("a/inner"));
  this->files_->WriteFile(this->At("a/inner/deep.txt"), "");
  EXPECT_THAT(this->files_->ListFolder(this->place_.Root()),
              ElementsAre(FolderEntry{"A.txt", false}, FolderEntry{"a", true}, FolderEntry{"b.txt", false}));
  EXPECT_THAT(this->files_->ListFolder(this->At("a\\")), ElementsAre(FolderEntry{"inner", true}));
}

TYPED_TEST(FileSystemContract, NewFolderIsEmpty) {
  this->files_->CreateFolder(this->At("new"));
  EXPECT_THAT(this->files_->ListFolder(this->At("new")), IsEmpty());
}

TYPED_TEST(FileSystemContract, OnlyFoldersAreListed) {
  EXPECT_EQ(ErrorText([&] { this->files_->ListFolder(this->At("none")); }),
            "The folder \"" + this->At("none") + "\" cannot be read: there is no such folder.");
  this->files_->WriteFile(this->At("a"), "x");
  EXPECT_EQ(ErrorText([&] { this->files_->ListFolder(this->At("a")); }),
            "The folder \"" + this->At("a") + "\" cannot be read: it is not a folder.");
}

TYPED_TEST(FileSystemContract, FoldersAreMadeWithThoseAbove) {
  this->files_->CreateFolder(this->At("one/two/three/"));
  EXPECT_TRUE(this->files_->IsFolder(this->At("one/two/three")));
  this->files_->WriteFile(this->At("one/two/three/a"), "kept");
  this->files_->CreateFolder(this->At("one/two/three"));
  EXPECT_EQ(this->files_->ReadFile(this->At("one/two/three/a")), "kept");
}

TYPED_TEST(FileSystemContract, FileInTheWayOfAFolderIsRefused) {
  this->files_->WriteFile(this->At("a"), "x");
  for (const auto* name : {"a", "a/b"}) {
    EXPECT_EQ(ErrorText([&] { this->files_->CreateFolder(this->At(name)); }),
              "The folder \"" + this->At(name) + "\" cannot be made: a file stands in the way.");
  }
  EXPECT_EQ(this->files_->ReadFile(this->At("a")), "x");
}

TYPED_TEST(FileSystemContract, DotsInPathsAreFollowed) {
  this->files_->CreateFolder(this->At("a"));
  this->files_->WriteFile(this->At("b.txt"), "x");
  EXPECT_EQ(this->files_->ReadFile(this->At("a/../b.txt")), "x");
  EXPECT_EQ(this->files_->ReadFile(this->At("./a/.././b.txt")), "x");
}

TYPED_TEST(FileSystemContract, FileOfTheLimitIsReadAndALargerOneIsNot) {
  const auto files = this->place_.Open({"", 10});
  files->WriteFile(this->At("ten"), "0123456789");
  files->WriteFile(this->At("eleven"), "0123456789X");
  EXPECT_EQ(files->ReadFile(this->At("ten")), "0123456789");
  const std::string expected =
      "The file \"" + this->At("eleven") + "\" cannot be read: it has 11 bytes, and at most 10 are read.";
  EXPECT_EQ(ErrorText([&] { files->ReadFile(this->At("eleven")); }), expected);
  EXPECT_EQ(ErrorText([&] { files->OpenTextFile(this->At("eleven")); }), expected);
  EXPECT_EQ(files->FileSize(this->At("eleven")), 11U);
}

TYPED_TEST(FileSystemContract, TextFilesAreReadByTheSourceEncoding) {
  const auto files = this->place_.Open({"SHIFT_JIS"});
  EXPECT_EQ(files->SourceEncoding(), "SHIFT_JIS");
  files->WriteFile(this->At("a.cbl"), "\x93\xFA\r\n\x96\x7B");
  EXPECT_EQ(files->ReadTextFile(this->At("a.cbl")), "日\r\n本");
  const auto stream = files->OpenTextFile(this->At("a.cbl"));
  EXPECT_EQ(stream->ReadLine(), "日");
  EXPECT_EQ(stream->ReadLine(), "本");
  EXPECT_TRUE(stream->AtEndOfStream());
}

TYPED_TEST(FileSystemContract, DefaultEncodingTakesAnyBytes) {
  this->files_->WriteFile(this->At("a.cbl"), "\xEF\xBB\xBFgr\xC3\xBCn");
  this->files_->WriteFile(this->At("b.cbl"), "gr\xFCn");
  EXPECT_EQ(this->files_->ReadTextFile(this->At("a.cbl")), "grün");
  EXPECT_EQ(this->files_->ReadTextFile(this->At("b.cbl")), "grün");
}

TYPED_TEST(FileSystemContract, TextInAnotherEncodingIsRefusedWithFileAndByte) {
  const auto files = this->place_.Open({"UTF-8"});
  files->WriteFile(this->At("b.cbl"), "gr\xFCn");
  EXPECT_EQ(ErrorText([&] { files->ReadTextFile(this->At("b.cbl")); }),
            this->At("b.cbl") + ": the byte 0xFC at offset 2 is no text in UTF-8. Choose another encoding.");
}

TYPED_TEST(FileSystemContract, UnknownSourceEncodingIsRefusedAtOnce) {
  EXPECT_EQ(ErrorText([&] { this->place_.Open({"FOO"}); }),
            "The encoding \"FOO\" is not known. Name one such as UTF-8, ISO-8859-1, CP1252, SHIFT_JIS, EUC-KR, IBM037 "
            "or IBM1047.");
}

TYPED_TEST(FileSystemContract, NamesWithinTheRootAreResolved) {
  const std::string root = this->place_.Root();
  for (const auto& [name, expected] :
       {std::pair{"a.cbl", "/a.cbl"}, std::pair{"Cobol\\Deep\\A.CBL", "/Cobol/Deep/A.CBL"},
        std::pair{"./a//b/", "/a/b"}, std::pair{"a/../b", "/b"}, std::pair{"..a", "/..a"}, std::pair{"a/b:c", "/a/b:c"},
        std::pair{"", ""}, std::pair{".", ""}, std::pair{"a/..", ""}}) {
    EXPECT_EQ(this->files_->ResolveInside(root, name), root + expected) << name;
  }
  EXPECT_EQ(this->files_->ResolveInside(root + "/", "a"), root + "/a");
  EXPECT_EQ(this->files_->ResolveInside(root + "\\", "a"), root + "/a");
}

TYPED_TEST(FileSystemContract, NamesThatLeaveTheRootAreRefused) {
  for (const auto* name : {"..", "../a", "a/../../b", "..\\a", "a\\..\\..\\b", "./.."}) {
    EXPECT_EQ(ErrorText([&] { this->files_->ResolveInside(this->place_.Root(), name); }),
              "The file name \"" + std::string(name) + "\" leads out of the folder \"" + this->place_.Root() + "\".");
  }
}

TYPED_TEST(FileSystemContract, AbsoluteNamesAndDrivesAreRefused) {
  for (const auto* name : {"/etc/passwd", "\\a", "\\\\server\\share", "C:\\a", "c:/a", "C:a", "z:"}) {
    EXPECT_EQ(ErrorText([&] { this->files_->ResolveInside(this->place_.Root(), name); }),
              "The file name \"" + std::string(name) + "\" is absolute; it has to be relative to the folder \"" +
                  this->place_.Root() + "\".");
  }
}

TYPED_TEST(FileSystemContract, NameWithNulIsRefused) {
  EXPECT_EQ(ErrorText([&] { this->files_->ResolveInside(this->place_.Root(), "a.cbl\0/../../b"sv); }),
            "The file name \"a.cbl\" holds a NUL character behind these; name the file anew.");
}

}  // namespace
}  // namespace qmrules::platform
