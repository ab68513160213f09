#include "workbench/scan/workspacesources.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "platform/error.h"
#include "support/errortext.h"
#include "support/temporaryfolder.h"

namespace qmrules::test {
namespace {

namespace fs = std::filesystem;
using workbench::SourceLimits;
using workbench::WorkspaceSources;

class WorkspaceSourcesTest : public testing::Test {
 protected:
  WorkspaceSources Open(std::vector<std::string> copybookFolders = {}, std::string encoding = "") const {
    return WorkspaceSources(
        {.root = folder_.File("ws"), .encoding = std::move(encoding), .copybookFolders = std::move(copybookFolders)});
  }
  void Write(std::string_view name, std::string_view text = "A") const {
    folder_.Write("ws/" + std::string(name), text);
  }
  // What a COPY in the program finds; "-" for nothing.
  static std::string Found(WorkspaceSources& sources, std::string_view name, std::string_view library = "",
                           std::string_view program = "cobol/p.cbl") {
    return sources.FindCopybook(name, library, program).value_or("-");
  }

  TemporaryFolder folder_;
};

TEST_F(WorkspaceSourcesTest, AFileIsDecodedAndHashed) {
  Write("cobol/p.cbl", "MOVE 'caf\xE9' TO A.\n");
  WorkspaceSources sources = Open({}, "ISO-8859-1");
  const auto source = sources.Read("cobol/p.cbl");
  EXPECT_EQ(source.file->Name(), "cobol/p.cbl");
  EXPECT_EQ(source.file->Text(), "MOVE 'café' TO A.\n");
  const auto hash = sources.Hash("cobol/p.cbl");
  EXPECT_EQ(hash[0], source.hash[0]);
  EXPECT_EQ(hash[1], source.hash[1]);
  Write("cobol/q.cbl", "MOVE 'caf\xE8' TO A.\n");
  EXPECT_NE(sources.Hash("cobol/q.cbl"), hash);
}

TEST_F(WorkspaceSourcesTest, ATextThatIsInUseIsNotReadAgain) {
  Write("p.cbl");
  WorkspaceSources sources = Open();
  const auto first = sources.Read("p.cbl");
  Write("p.cbl", "B");
  EXPECT_EQ(sources.Read("p.cbl").file, first.file);
  EXPECT_EQ(sources.Hash("p.cbl")[0], first.hash[0]);
}

TEST_F(WorkspaceSourcesTest, WhatIsNoTextIsRefused) {
  folder_.Write("outside.cbl", "A");
  Write("binary.cbl", std::string("A\0B", 3));
  Write("large.cbl", "AAAA");
  fs::create_symlink(folder_.Path() / "outside.cbl", folder_.Path() / "ws/link.cbl");
  fs::create_directory(folder_.Path() / "ws/folder.cbl");
  WorkspaceSources sources(
      {.root = folder_.File("ws"), .encoding = "", .copybookFolders = {}, .limits = {.fileBytes = 3}});
  struct Defect {
    std::string file, problem;
  };
  const std::string root = fs::canonical(folder_.Path() / "ws").string();
  const std::vector<Defect> defects = {
      {"binary.cbl", "binary.cbl: this is no text file"},
      {"large.cbl", "The file \"" + root + "/large.cbl\" cannot be read: it has 4 bytes, and at most 3 are read."},
      {"none.cbl", "The file \"" + root + "/none.cbl\" cannot be read: there is no such file."},
      {"folder.cbl", "The file \"" + root + "/folder.cbl\" cannot be read: it is a folder."},
      {"link.cbl", "The file name \"link.cbl\" leads out of the folder \"" + root + "\" through a link, or nowhere."},
      {"../outside.cbl", "The file name \"../outside.cbl\" leads out of the folder \"" + root + "\"."},
      {"/etc/hosts", "The file name \"/etc/hosts\" is absolute; it has to be relative to the folder \"" + root + "\"."},
  };
  for (const Defect& defect : defects) {
    EXPECT_EQ(ErrorText([&] { sources.Read(defect.file); }), defect.problem) << defect.file;
  }
  // Once its folder is known, a link is still followed up.
  Write("good.cbl");
  sources.Read("good.cbl");
  EXPECT_EQ(ErrorText([&] { sources.Read("link.cbl"); }), defects[4].problem);
}

TEST_F(WorkspaceSourcesTest, LinksAreFollowedUpForEachFileThatIsHashed) {
  folder_.Write("outside.cbl", "A");
  Write("in/a.cbl", "A");
  Write("in/b.cbl", "B");
  fs::create_symlink("a.cbl", folder_.Path() / "ws/in/inside.cbl");
  fs::create_symlink(folder_.Path() / "outside.cbl", folder_.Path() / "ws/in/link.cbl");
  fs::create_symlink("nothing", folder_.Path() / "ws/in/broken.cbl");
  fs::create_directory_symlink("in", folder_.Path() / "ws/linked");
  WorkspaceSources sources = Open();
  const auto hash = sources.Hash("in/a.cbl");
  EXPECT_NE(sources.Hash("in/b.cbl"), hash);
  EXPECT_EQ(sources.Hash("in/inside.cbl"), hash);
  EXPECT_EQ(sources.Hash("linked/a.cbl"), hash);
  EXPECT_EQ(sources.Hash("linked/inside.cbl"), hash);
  for (const std::string file : {"in/link.cbl", "linked/link.cbl", "in/broken.cbl"}) {
    EXPECT_EQ(ErrorText([&] { sources.Hash(file); }), "The file name \"" + file + "\" leads out of the folder \"" +
                                                          fs::canonical(folder_.Path() / "ws").string() +
                                                          "\" through a link, or nowhere.");
  }
}

TEST_F(WorkspaceSourcesTest, ACopybookIsFoundByItsNameInAnyCase) {
  Write("cobol/p.cbl");
  Write("copy/POLICY.cpy");
  Write("copy/Rate.CPY");
  Write("copy/plain");
  Write("copy/decl.dcl");
  Write("copy/book.txt");
  WorkspaceSources sources = Open();
  EXPECT_EQ(Found(sources, "policy"), "copy/POLICY.cpy");
  EXPECT_EQ(Found(sources, "POLICY.CPY"), "copy/POLICY.cpy");
  EXPECT_EQ(Found(sources, "RATE"), "copy/Rate.CPY");
  EXPECT_EQ(Found(sources, "PLAIN"), "copy/plain");
  EXPECT_EQ(Found(sources, "DECL"), "copy/decl.dcl");
  EXPECT_EQ(Found(sources, "book.txt"), "copy/book.txt");
  EXPECT_EQ(Found(sources, "BOOK"), "-");
  EXPECT_EQ(Found(sources, "NONE"), "-");
}

TEST_F(WorkspaceSourcesTest, TheProgramsOwnFolderComesFirst) {
  Write("cobol/p.cbl");
  Write("cobol/A.cpy");
  Write("aaa/A.cpy");
  Write("bbb/A.cpy");
  WorkspaceSources sources = Open();
  EXPECT_EQ(Found(sources, "A"), "cobol/A.cpy");
  EXPECT_EQ(Found(sources, "A", "", "other/p.cbl"), "aaa/A.cpy");
  EXPECT_EQ(Found(sources, "A", "", "bbb/p.cbl"), "bbb/A.cpy");
}

TEST_F(WorkspaceSourcesTest, NamedFoldersAreSearchedInTheirOrder) {
  Write("cobol/p.cbl");
  Write("one/A.cpy");
  Write("two/A.cpy");
  Write("two/B");
  Write("three/C.cpy");
  Write(".hidden/D.cpy");
  WorkspaceSources sources = Open({"two", folder_.File("ws/one"), ".hidden"});
  EXPECT_EQ(Found(sources, "A"), "two/A.cpy");
  EXPECT_EQ(Found(sources, "B"), "two/B");
  EXPECT_EQ(Found(sources, "C"), "-");
  EXPECT_EQ(Found(sources, "D"), ".hidden/D.cpy");
}

TEST_F(WorkspaceSourcesTest, ALibraryIsAFolderOfItsName) {
  Write("cobol/A.cpy");
  Write("x/lib1/A.cpy");
  Write("x/lib2/A.cpy");
  Write("x/lib2/B.cpy");
  WorkspaceSources sources = Open();
  EXPECT_EQ(Found(sources, "A", "LIB2"), "x/lib2/A.cpy");
  EXPECT_EQ(Found(sources, "A", "x/LIB1"), "x/lib1/A.cpy");
  EXPECT_EQ(Found(sources, "A", "NONE"), "cobol/A.cpy");
  EXPECT_EQ(Found(sources, "B", "LIB1"), "x/lib2/B.cpy");
}

TEST_F(WorkspaceSourcesTest, AProgramIsTheLastChoice) {
  Write("cobol/p.cbl");
  Write("cobol/DATE.cbl");
  Write("copy/DATE.cpy");
  Write("cobol/ONLY.cbl");
  WorkspaceSources sources = Open();
  EXPECT_EQ(Found(sources, "DATE"), "copy/DATE.cpy");
  EXPECT_EQ(Found(sources, "ONLY"), "cobol/ONLY.cbl");
  EXPECT_EQ(Found(sources, "P"), "-");
  WorkspaceSources named = Open({"cobol", "copy"});
  EXPECT_EQ(Found(named, "DATE"), "cobol/DATE.cbl");
}

TEST_F(WorkspaceSourcesTest, ANameCanHoldFolders) {
  Write("cobol/sub/A.cpy");
  Write("copy/b/B.cpy");
  Write("copy/C.cpy");
  WorkspaceSources sources = Open();
  EXPECT_EQ(Found(sources, "sub/A.cpy"), "cobol/sub/A.cpy");
  EXPECT_EQ(Found(sources, "b\\B.cpy"), "copy/b/B.cpy");
  EXPECT_EQ(Found(sources, "copy/C"), "copy/C.cpy");
}

TEST_F(WorkspaceSourcesTest, ANameThatLeadsOutIsNotFound) {
  folder_.Write("outside/X.cpy", "A");
  Write("cobol/A.cpy");
  fs::create_symlink(folder_.Path() / "outside", folder_.Path() / "ws/linked");
  fs::create_symlink(folder_.Path() / "outside/X.cpy", folder_.Path() / "ws/cobol/X.cpy");
  fs::create_symlink(folder_.Path() / "ws/cobol/A.cpy", folder_.Path() / "ws/cobol/INSIDE.cpy");
  WorkspaceSources sources = Open();
  for (const char* name : {"../outside/X", "../cobol/A", "/etc/hosts", "cobol/../cobol/A", "./A", "", "C:A", "X",
                           "linked/X", "A/", "//A"}) {
    EXPECT_EQ(Found(sources, name), "-") << name;
  }
  EXPECT_EQ(Found(sources, std::string_view("A\0B", 3)), "-");
  EXPECT_EQ(Found(sources, "INSIDE"), "cobol/INSIDE.cpy");
}

TEST_F(WorkspaceSourcesTest, FoldersThatAreNoneAreErrors) {
  Write("p.cbl");
  folder_.Write("outside/X.cpy", "A");
  EXPECT_EQ(ErrorText([&] { Open({"none"}); }),
            "The copybook folder \"none\" cannot be read: No such file or directory.");
  EXPECT_EQ(ErrorText([&] { Open({"p.cbl"}); }), "The copybook folder \"p.cbl\" cannot be read: Not a directory.");
  EXPECT_EQ(ErrorText([&] { Open({"../outside"}); }), "The copybook folder \"../outside\" lies outside the workspace " +
                                                          fs::canonical(folder_.Path() / "ws").string() +
                                                          "; copy it into the workspace and name it there.");
  EXPECT_EQ(ErrorText([&] { WorkspaceSources({.root = folder_.File("none"), .encoding = "", .copybookFolders = {}}); }),
            "The source folder \"" + folder_.File("none") + "\" cannot be read: No such file or directory.");
}

TEST_F(WorkspaceSourcesTest, TooManyFilesAreAnErrorEachTime) {
  Write("a");
  Write("b");
  Write("c");
  WorkspaceSources sources({.root = folder_.File("ws"), .encoding = "", .copybookFolders = {}, .limits = {.files = 2}});
  const std::string problem = "There are more than 2 files below \"" + fs::canonical(folder_.Path() / "ws").string() +
                              "\"; move what is no source out of the workspace.";
  EXPECT_EQ(ErrorText([&] { Found(sources, "a"); }), problem);
  EXPECT_EQ(ErrorText([&] { Found(sources, "b"); }), problem);
}

TEST_F(WorkspaceSourcesTest, TheRootItselfCanBeNamedAndCountsOnce) {
  Write("A.cpy");
  Write("in/B.cpy");
  Write("p.cbl");
  WorkspaceSources sources(
      {.root = folder_.File("ws"), .encoding = "", .copybookFolders = {"in", "."}, .limits = {.files = 3}});
  EXPECT_EQ(Found(sources, "A"), "A.cpy");
  EXPECT_EQ(Found(sources, "B"), "in/B.cpy");
  EXPECT_EQ(Found(sources, "P"), "p.cbl");
}

TEST_F(WorkspaceSourcesTest, FoldersBelowTheDepthAreNotSearched) {
  Write("one/A.cpy");
  Write("one/two/B.cpy");
  WorkspaceSources sources({.root = folder_.File("ws"), .encoding = "", .copybookFolders = {}, .limits = {.depth = 2}});
  EXPECT_EQ(Found(sources, "A"), "one/A.cpy");
  EXPECT_EQ(Found(sources, "B"), "-");
}

TEST_F(WorkspaceSourcesTest, ManyThreadsGetTheSame) {
  for (int number = 0; number < 20; ++number) Write("copy/B" + std::to_string(number) + ".cpy", std::to_string(number));
  WorkspaceSources sources = Open();
  std::vector<std::string> texts(4);
  {
    std::vector<std::jthread> threads;
    for (std::string& text : texts) {
      threads.emplace_back([&sources, &text] {
        for (int number = 0; number < 20; ++number) {
          text += sources.Read(Found(sources, "B" + std::to_string(number))).file->Text();
        }
      });
    }
  }
  EXPECT_EQ(texts[0], "012345678910111213141516171819");
  EXPECT_EQ(std::ranges::count(texts, texts[0]), 4);
}

}  // namespace
}  // namespace qmrules::test
