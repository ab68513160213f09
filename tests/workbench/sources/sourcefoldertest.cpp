#include "workbench/sources/sourcefolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "platform/encoding.h"
#include "support/errortext.h"
#include "support/temporaryfolder.h"

namespace qmrules::workbench {
namespace {

using test::ErrorText;
namespace fs = std::filesystem;

class SourceFolderTest : public testing::Test {
 protected:
  SourceFolderTest() : base_(fs::canonical(folder_.Path()).string()), root_(base_ + "/ws") {
    fs::create_directory(root_);
  }

  static std::string Program(const std::string& name) {
    return "       IDENTIFICATION DIVISION.\n       PROGRAM-ID. " + name + ".\n       PROCEDURE DIVISION.\n";
  }
  void Source(const std::string& file, const std::string& content) const { folder_.Write("ws/" + file, content); }

  SourceScanResult Scan(const std::string& path = "") const {
    SourceScan scan;
    scan.root = root_;
    scan.path = root_ + (path.empty() ? "" : "/") + path;
    return ScanSources(scan);
  }
  // "NAME file lines" for each program.
  static std::string Programs(const SourceScanResult& result) {
    std::string text;
    for (const auto& program : result.programs) {
      text += program.programId + " " + program.file + " " + std::to_string(program.lines) + "\n";
    }
    return text;
  }
  static std::string Problems(const SourceScanResult& result) {
    std::string text;
    for (const auto& problem : result.problems) text += problem.file + ": " + problem.text + "\n";
    return text;
  }

  test::TemporaryFolder folder_;
  std::string base_;
  std::string root_;
};

TEST_F(SourceFolderTest, AFolderIsSearchedRecursivelyInTheOrderOfItsPaths) {
  Source("cobol/pbtax01.cbl", Program("PBTAX01"));
  Source("cobol/a/pbrate01.CBL", Program("pbrate01") + "           STOP RUN.");
  Source("b.cob", Program("B"));
  Source("c.Cobol", Program("C"));
  Source("d.pco", Program("D"));
  const auto result = Scan();
  EXPECT_EQ(Programs(result),
            "B b.cob 3\nC c.Cobol 3\nPBRATE01 cobol/a/pbrate01.CBL 4\nPBTAX01 cobol/pbtax01.cbl 3\nD d.pco 3\n");
  EXPECT_EQ(Problems(result), "");
  EXPECT_EQ(result.programs.front().language, "COBOL");
  EXPECT_TRUE(result.programs.front().onlyOneOfFile);
}

TEST_F(SourceFolderTest, TheOrderIsThatOfTheBytesOfThePaths) {
  for (const char* file : {"a/x.cbl", "a.b/x.cbl", "a-b.cbl", "a/b/x.cbl", "B.cbl"}) Source(file, Program("A"));
  EXPECT_EQ(Programs(Scan()), "A B.cbl 3\nA a-b.cbl 3\nA a.b/x.cbl 3\nA a/b/x.cbl 3\nA a/x.cbl 3\n");
  const auto list = ListSources({.root = root_, .path = root_ + "/a", .encoding = {}, .limits = {}});
  EXPECT_EQ(list.scope, "a");
  EXPECT_EQ(list.files, (std::vector<std::string>{"a/b/x.cbl", "a/x.cbl"}));
}

TEST_F(SourceFolderTest, OtherSuffixesAreNoSourcesOfAFolder) {
  Source("a.cpp", Program("A"));
  Source("b.cpy", Program("B"));
  Source("c.txt", Program("C"));
  Source("d", Program("D"));
  EXPECT_EQ(Programs(Scan()), "");
}

TEST_F(SourceFolderTest, AFileThatIsNamedItselfMayHaveAnySuffix) {
  Source("d", Program("D"));
  Source("c.txt", Program("C"));
  EXPECT_EQ(Programs(Scan("d")), "D d 3\n");
  EXPECT_EQ(Programs(Scan("c.txt")), "C c.txt 3\n");
}

TEST_F(SourceFolderTest, CopybooksOfAFolderArePassedOverAndCounted) {
  Source("a.cbl", Program("A"));
  Source("rec.cbl", "       01 REC.\n");
  const auto result = Scan();
  EXPECT_EQ(Programs(result), "A a.cbl 3\n");
  EXPECT_EQ(Problems(result), "");
  EXPECT_EQ(result.withoutProgram, 1U);
}

TEST_F(SourceFolderTest, ACopybookThatIsNamedItselfIsTold) {
  Source("rec.cpy", "       01 REC.\n");
  EXPECT_EQ(Problems(Scan("rec.cpy")),
            "rec.cpy: the file holds no PROGRAM-ID; a copybook is read with the programs that copy it\n");
}

TEST_F(SourceFolderTest, ABinaryFileIsToldAndTheOthersAreTaken) {
  Source("a.cbl", Program("A"));
  Source("b.cbl", std::string("\x7f"
                              "ELF\0\0\0\0",
                              8) +
                      Program("B"));
  const auto result = Scan();
  EXPECT_EQ(Programs(result), "A a.cbl 3\n");
  EXPECT_EQ(Problems(result), "b.cbl: this is no text file\n");
}

TEST_F(SourceFolderTest, SourcesAreDecodedByTheGivenEncoding) {
  Source("a.cbl", platform::EncodeText(Program("EBCDIC1"), "IBM1047"));
  SourceScan scan{root_, root_, "IBM1047", {}};
  EXPECT_EQ(Programs(ScanSources(scan)), "EBCDIC1 a.cbl 3\n");
}

TEST_F(SourceFolderTest, AFileThatCannotBeDecodedIsTold) {
  Source("a.cbl", Program("A") + "\xff\xff");
  const SourceScan scan{root_, root_, "UTF-8", {}};
  const auto result = ScanSources(scan);
  EXPECT_EQ(Programs(result), "");
  const auto offset = std::to_string(Program("A").size());
  EXPECT_EQ(Problems(result),
            "a.cbl: the byte 0xFF at offset " + offset + " is no text in UTF-8. Choose another encoding.\n");
}

TEST_F(SourceFolderTest, SeveralProgramsOfAFileAreListed) {
  Source("a.cbl",
         "       PROGRAM-ID. A1.\n       PROGRAM-ID. A2.\n       END PROGRAM A2.\n       END PROGRAM A1.\n"
         "       PROGRAM-ID. B1.\n");
  const auto result = Scan();
  EXPECT_EQ(Programs(result), "A1 a.cbl 5\nB1 a.cbl 5\n");
  EXPECT_EQ(result.programs.front().nested, std::vector<std::string>{"A2"});
  EXPECT_FALSE(result.programs.front().onlyOneOfFile);
}

TEST_F(SourceFolderTest, ARepeatedProgramOfAFileIsTold) {
  Source("a.cbl", "       PROGRAM-ID. A1.\n       END PROGRAM A1.\n       PROGRAM-ID. a1.\n");
  const auto result = Scan();
  EXPECT_EQ(Programs(result), "A1 a.cbl 3\n");
  EXPECT_EQ(Problems(result), "a.cbl: line 3: the file has an earlier program A1\n");
}

TEST_F(SourceFolderTest, AHeadingWithoutANameIsTold) {
  Source("a.cbl", "       ID DIVISION.\n       PROGRAM-ID.\n       DATA DIVISION.\n");
  EXPECT_EQ(Problems(Scan()), "a.cbl: line 2: PROGRAM-ID names no program\n");
}

TEST_F(SourceFolderTest, APathOutsideTheWorkspaceIsRefused) {
  const auto outside = folder_.Write("other/a.cbl", Program("A"));
  SourceScan scan;
  scan.root = root_;
  for (const std::string& path : {base_ + "/other/a.cbl", base_ + "/other", root_ + "/../other/a.cbl", base_}) {
    scan.path = path;
    EXPECT_EQ(ErrorText([&] { ScanSources(scan); }), "\"" + path + "\" lies outside the workspace " + root_ +
                                                         "; copy it into the workspace and name it there.");
  }
}

TEST_F(SourceFolderTest, AFolderWhoseNameBeginsAlikeIsOutside) {
  folder_.Write("ws2/a.cbl", Program("A"));
  SourceScan scan;
  scan.root = root_;
  scan.path = base_ + "/ws2";
  EXPECT_EQ(ErrorText([&] { ScanSources(scan); }), "\"" + scan.path + "\" lies outside the workspace " + root_ +
                                                       "; copy it into the workspace and name it there.");
}

TEST_F(SourceFolderTest, ALinkThatLeadsOutOfTheWorkspaceIsNotFollowed) {
  folder_.Write("other/a.cbl", Program("A"));
  fs::create_symlink(base_ + "/other/a.cbl", root_ + "/a.cbl");
  fs::create_directory_symlink(base_ + "/other", root_ + "/linked");
  const auto result = Scan();
  EXPECT_EQ(Programs(result), "");
  EXPECT_EQ(Problems(result), "a.cbl: the link leads out of the workspace; put a copy of the file in its place\n");
}

TEST_F(SourceFolderTest, FoldersLinkedInACircleEnd) {
  Source("in/a.cbl", Program("A"));
  fs::create_directory_symlink(root_, root_ + "/in/again");
  EXPECT_EQ(Programs(Scan()), "A in/a.cbl 3\n");
}

TEST_F(SourceFolderTest, ALinkedFolderIsNoSourceWhateverItsName) {
  fs::create_directory(root_ + "/in");
  fs::create_directory_symlink(root_ + "/in", root_ + "/linked.cbl");
  fs::create_directory(root_ + "/folder.cbl");
  const auto result = Scan();
  EXPECT_EQ(Programs(result) + Problems(result), "");
}

TEST_F(SourceFolderTest, ALinkToItselfIsTold) {
  Source("b.cbl", Program("B"));
  fs::create_symlink("a.cbl", root_ + "/a.cbl");
  const auto result = Scan();
  EXPECT_EQ(Programs(result), "B b.cbl 3\n");
  EXPECT_EQ(Problems(result), "a.cbl: the file cannot be read: Too many levels of symbolic links\n");
}

TEST_F(SourceFolderTest, ABrokenLinkIsTold) {
  fs::create_symlink(root_ + "/gone.cbl", root_ + "/a.cbl");
  EXPECT_EQ(Problems(Scan()), "a.cbl: the file cannot be read: No such file or directory\n");
}

TEST_F(SourceFolderTest, HiddenFoldersArePassedOver) {
  Source(".qmrules/a.cbl", Program("A"));
  Source("in/.old/b.cbl", Program("B"));
  EXPECT_EQ(Programs(Scan()), "");
}

TEST_F(SourceFolderTest, AMissingPathIsTold) {
  EXPECT_EQ(ErrorText([&] { Scan("none.cbl"); }),
            "The source \"" + root_ + "/none.cbl\" cannot be read: No such file or directory.");
}

TEST_F(SourceFolderTest, BackslashesAreTakenInThePath) {
  Source("in/a.cbl", Program("A"));
  SourceScan scan;
  scan.root = root_;
  scan.path = root_ + "\\in\\a.cbl";
  EXPECT_EQ(Programs(ScanSources(scan)), "A in/a.cbl 3\n");
}

TEST_F(SourceFolderTest, TheSearchIsBounded) {
  Source("a.cbl", Program("A"));
  Source("one/b.cbl", Program("B"));
  Source("one/two/c.cbl", Program("C"));
  SourceScan scan{root_, root_, "", {.depth = 2, .files = 3, .fileBytes = 1000}};
  const auto shallow = ScanSources(scan);
  EXPECT_EQ(Programs(shallow), "A a.cbl 3\nB one/b.cbl 3\n");
  EXPECT_EQ(Problems(shallow), "one/two: folders more than 2 deep are not searched\n");

  scan.limits = {.depth = 3, .files = 2, .fileBytes = 1000};
  EXPECT_EQ(ErrorText([&] { ScanSources(scan); }),
            "There are more than 2 files below \"" + root_ + "\"; name a folder further down.");

  Source("a.cbl", Program("A") + std::string(1000, ' '));
  scan.limits = {.depth = 3, .files = 3, .fileBytes = 1000};
  const auto large = ScanSources(scan);
  EXPECT_EQ(Programs(large), "B one/b.cbl 3\nC one/two/c.cbl 3\n");
  EXPECT_EQ(Problems(large), "a.cbl: The file \"" + root_ + "/a.cbl\" cannot be read: it has " +
                                 std::to_string(Program("A").size() + 1000) + " bytes, and at most 1000 are read.\n");
}

}  // namespace
}  // namespace qmrules::workbench
