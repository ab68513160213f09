#include "workbench/workspace/workspacefolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <stdexcept>

#include "platform/clock.h"
#include "platform/diskfile.h"
#include "support/errortext.h"
#include "support/temporaryfolder.h"
#include "workbench/databases/sqlitedatabase.h"
#include "workbench/options/optionsfile.h"
#include "workbench/repository/store.h"

namespace qmrules::workbench {
namespace {

using test::ErrorText;
namespace fs = std::filesystem;

class WorkspaceFolderTest : public testing::Test {
 protected:
  // A workspace gives its paths without links; there may be one on the way to the folder for temporary files.
  WorkspaceFolderTest() : base_(fs::canonical(folder_.Path()).string()), root_(base_ + "/ws") {}

  static void MakeCatalogue(const WorkspaceFolder& workspace) {
    platform::WriteDiskFile(workspace.RepositoryPath(), "catalogue");
  }
  static void Fail(const WorkspaceFolder& workspace) {
    MakeCatalogue(workspace);
    throw std::runtime_error("no catalogue today");
  }
  static void DoNothing(const WorkspaceFolder&) {}

  WorkspaceFolder Make(const std::string& project = "Demo") const {
    return WorkspaceFolder::Init({root_, project, MakeCatalogue, ""});
  }
  // Everything below the folder of the test.
  std::set<std::string> Content() const {
    std::set<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(base_)) {
      names.insert(entry.path().lexically_relative(base_).string());
    }
    return names;
  }

  test::TemporaryFolder folder_;
  std::string base_;
  std::string root_;
};

TEST_F(WorkspaceFolderTest, InitMakesEveryPiece) {
  Make();
  const std::set<std::string> expected{"ws",
                                       "ws/.qmrules",
                                       "ws/.qmrules/GlobalOptions.xml",
                                       "ws/.qmrules/Icons",
                                       "ws/.qmrules/User.Repstry.xml",
                                       "ws/.qmrules/repository.db",
                                       "ws/.qmrules/workspace.json",
                                       "ws/Glossary.mdb",
                                       "ws/Projects",
                                       "ws/Projects/Demo",
                                       "ws/Projects/Demo/DATAFLOW",
                                       "ws/Projects/Demo/DATAFLOW/Demo.mdb",
                                       "ws/Projects/Demo/ProjectOptions.xml"};
  EXPECT_EQ(Content(), expected);
}

TEST_F(WorkspaceFolderTest, ThePiecesAreWhatTheyAreTakenFor) {
  const auto workspace = Make("Policy/billing");
  EXPECT_TRUE(SqliteDatabase(workspace.GlossaryPath()).OpenRecordset("Names")->Eof());
  EXPECT_TRUE(SqliteDatabase(workspace.DataflowDatabasePath()).OpenRecordset("Report")->Eof());
  OptionsFile projectOptions(workspace.ProjectOptionsPath());
  RequireOption(projectOptions.Document(), "//TEXT[@NAME='UnassignedBFName']", "ProjectOptions.xml");
  OptionsFile globalOptions(workspace.GlobalOptionsPath());
  RequireOption(globalOptions.Document(), "//CASE[@NAME='QMGlossary']", "GlobalOptions.xml");
}

TEST_F(WorkspaceFolderTest, TheCatalogueIsMadeWithTheSitesAttributesInPlace) {
  const platform::SystemClock clock;
  const auto workspace =
      WorkspaceFolder::Init({root_, "Demo",
                             [&](const WorkspaceFolder& made) {
                               const auto store = repository::OpenStore(
                                   {made.RepositoryPath(), made.SchemaDocumentPath(), "analyst", {}}, clock);
                               store->NewObject("PROJECT", made.CurrentProject());
                             },
                             ""});
  const auto store =
      repository::OpenStore({workspace.RepositoryPath(), workspace.SchemaDocumentPath(), "analyst", {}}, clock);
  EXPECT_NE(store->FindObject("PROJECT", "Demo"), nullptr);
}

TEST_F(WorkspaceFolderTest, ThePathsAreAbsolute) {
  const auto workspace = Make("A:B");
  EXPECT_EQ(workspace.SourceFolder(), root_);
  EXPECT_EQ(workspace.ProductFolder(), root_ + "/.qmrules");
  EXPECT_EQ(workspace.RepositoryPath(), root_ + "/.qmrules/repository.db");
  EXPECT_EQ(workspace.SchemaDocumentPath(), root_ + "/.qmrules/User.Repstry.xml");
  EXPECT_EQ(workspace.GlobalOptionsPath(), root_ + "/.qmrules/GlobalOptions.xml");
  EXPECT_EQ(workspace.IconsFolder(), root_ + "/.qmrules/Icons");
  EXPECT_EQ(workspace.GlossaryPath(), root_ + "/Glossary.mdb");
  EXPECT_EQ(workspace.ProjectOptionsPath(), root_ + "/Projects/A%3AB/ProjectOptions.xml");
  EXPECT_EQ(workspace.DataflowDatabasePath(), root_ + "/Projects/A%3AB/DATAFLOW/A%3AB.mdb");
}

TEST_F(WorkspaceFolderTest, TheNumberedNamesAreThoseOfTheLayout) {
  const auto workspace = Make("A:B");
  EXPECT_EQ(workspace.GetFerrowoodName(2), root_ + "/.qmrules");
  EXPECT_EQ(workspace.GetFerrowoodName(4), root_);
  EXPECT_EQ(workspace.GetFerrowoodName(6), "A%3AB");
  EXPECT_EQ(workspace.GetFerrowoodName(7), "A%3AB");
  EXPECT_EQ(ErrorText([&] { workspace.GetFerrowoodName(5); }),
            "GetFerrowoodName knows the numbers 2, 4, 6 and 7, not 5.");
  // The folder and the name together lead to the dataflow database, as its readers put the path together.
  const std::string name = workspace.GetFerrowoodName(7);
  EXPECT_TRUE(fs::exists(
      platform::DiskPath(workspace.GetFerrowoodName(4) + "\\Projects\\" + name + "\\DATAFLOW\\" + name + ".mdb")));
}

TEST_F(WorkspaceFolderTest, MissingParentFoldersAreMade) {
  WorkspaceFolder::Init({base_ + "\\a\\b\\ws", "Demo", MakeCatalogue, ""});
  EXPECT_EQ(WorkspaceFolder::Open(base_ + "/a/b/ws/").SourceFolder(), base_ + "/a/b/ws");
}

TEST_F(WorkspaceFolderTest, AFolderWithSourcesBecomesAWorkspace) {
  folder_.Write("ws/cobol/a.cbl", "source");
  Make();
  EXPECT_EQ(test::ReadBytes(root_ + "/cobol/a.cbl"), "source");
}

TEST_F(WorkspaceFolderTest, AWorkspaceIsNotMadeTwice) {
  Make();
  const auto before = Content();
  EXPECT_EQ(ErrorText([&] { Make("Other"); }), root_ + " is a workspace already; open it, or choose another folder.");
  EXPECT_EQ(Content(), before);
}

TEST_F(WorkspaceFolderTest, FilesInTheWayAreNotOverwritten) {
  for (const std::string taken : {"Glossary.mdb", ".qmrules", "Projects/Demo"}) {
    folder_.Write("ws/" + taken, "mine");
    EXPECT_EQ(ErrorText([&] { Make(); }),
              root_ + "/" + taken + " is in the way of a new workspace; move it away, or choose another folder.");
    EXPECT_EQ(test::ReadBytes(root_ + "/" + taken), "mine");
    fs::remove_all(root_);
  }
}

TEST_F(WorkspaceFolderTest, AFailedInitLeavesNothing) {
  const WorkspaceFolder::NewWorkspace request{base_ + "/a/ws", "Demo", Fail, ""};
  EXPECT_THROW(WorkspaceFolder::Init(request), std::runtime_error);
  EXPECT_TRUE(Content().empty());
}

TEST_F(WorkspaceFolderTest, AFailedInitLeavesWhatWasThereBefore) {
  folder_.Write("ws/a.cbl", "source");
  folder_.Write("ws/Projects/notes.txt", "mine");
  const auto before = Content();
  const WorkspaceFolder::NewWorkspace request{root_, "Demo", Fail, ""};
  EXPECT_THROW(WorkspaceFolder::Init(request), std::runtime_error);
  EXPECT_EQ(Content(), before);
}

TEST_F(WorkspaceFolderTest, AFailureHalfwayLeavesWhatWasThereBefore) {
  folder_.Write("ws/Projects", "a file");
  const auto before = Content();
  EXPECT_EQ(ErrorText([&] { Make(); }),
            "The folder \"" + root_ + "/Projects/Demo/DATAFLOW\" cannot be made: Not a directory.");
  EXPECT_EQ(Content(), before);
}

TEST_F(WorkspaceFolderTest, AFileInPlaceOfTheFolderIsTold) {
  folder_.Write("ws", "a file");
  EXPECT_EQ(ErrorText([&] { Make(); }), "The folder \"" + root_ + "/.qmrules/Icons\" cannot be made: Not a directory.");
  EXPECT_EQ(test::ReadBytes(root_), "a file");
}

TEST_F(WorkspaceFolderTest, InitChecksNameAndEncodingBeforeItMakesAnything) {
  EXPECT_EQ(ErrorText([&] { Make(""); }), "The project name \"\" is not admissible: it is empty. Choose another name.");
  EXPECT_EQ(ErrorText([&] {
              WorkspaceFolder::Init({root_, "Demo", MakeCatalogue, "KLINGON"});
            }),
            "The encoding \"KLINGON\" is not known; name one such as UTF-8, ISO-8859-1, SHIFT_JIS or IBM1047.");
  EXPECT_EQ(ErrorText([&] {
              WorkspaceFolder::Init({"", "Demo", MakeCatalogue, ""});
            }),
            "A workspace needs a folder: none was named.");
  EXPECT_TRUE(Content().empty());
}

TEST_F(WorkspaceFolderTest, AnOpenedWorkspaceKnowsItsProjectAndItsEncoding) {
  WorkspaceFolder::Init({root_, "Demo", MakeCatalogue, "IBM1047"});
  const auto workspace = WorkspaceFolder::Open(root_);
  EXPECT_EQ(workspace.CurrentProject(), "Demo");
  EXPECT_EQ(workspace.SourceEncoding(), "IBM1047");
}

TEST_F(WorkspaceFolderTest, AnotherFolderIsNoWorkspace) {
  const std::string rest =
      " is no workspace: there is no file .qmrules/workspace.json in it. Name the folder of a workspace, or make one.";
  EXPECT_EQ(ErrorText([&] { WorkspaceFolder::Open(base_); }), base_ + rest);
  EXPECT_EQ(ErrorText([&] { WorkspaceFolder::Open(root_); }), root_ + rest);
}

TEST_F(WorkspaceFolderTest, AMissingPieceIsTold) {
  const std::pair<std::string, std::string> pieces[] = {
      {".qmrules/repository.db", "the catalogue"},
      {".qmrules/User.Repstry.xml", "the attributes of rules"},
      {".qmrules/GlobalOptions.xml", "the workspace's options"},
      {"Projects/Demo/ProjectOptions.xml", "the current project's options"},
  };
  for (const auto& [piece, meaning] : pieces) {
    Make();
    const std::string path = root_ + "/" + piece;
    fs::remove(path);
    std::string expected = path;
    expected += " (" + meaning + ") is missing; put back a copy of the file.";
    EXPECT_EQ(ErrorText([&] { WorkspaceFolder::Open(root_); }), expected);
    fs::remove_all(root_);
  }
}

TEST_F(WorkspaceFolderTest, AGlossaryAndADataflowMayBeAbsent) {
  const auto made = Make();
  fs::remove(made.GlossaryPath());
  fs::remove_all(made.ProjectFolder() + "/DATAFLOW");
  EXPECT_EQ(WorkspaceFolder::Open(root_).CurrentProject(), "Demo");
}

TEST_F(WorkspaceFolderTest, ANewerWorkspaceIsNotOpened) {
  Make();
  const auto path = folder_.Write("ws/.qmrules/workspace.json", R"({"version": 9})");
  EXPECT_EQ(ErrorText([&] { WorkspaceFolder::Open(root_); }),
            root_ +
                "/.qmrules/workspace.json: the workspace has version 9 of its layout, and this program knows "
                "versions up to 1. Use a newer program.");
}

TEST_F(WorkspaceFolderTest, TheNearestWorkspaceUpwardsIsFound) {
  Make();
  fs::create_directories(root_ + "/cobol/old");
  EXPECT_EQ(WorkspaceFolder::FindUpwards(root_), root_);
  EXPECT_EQ(WorkspaceFolder::FindUpwards(root_ + "/cobol/old"), root_);
  EXPECT_EQ(WorkspaceFolder::FindUpwards(root_ + "/.qmrules"), root_);
  WorkspaceFolder::Init({root_ + "/cobol", "Inner", MakeCatalogue, ""});
  EXPECT_EQ(WorkspaceFolder::FindUpwards(root_ + "/cobol/old"), root_ + "/cobol");
  EXPECT_EQ(WorkspaceFolder::FindUpwards(base_), std::nullopt);
}

TEST_F(WorkspaceFolderTest, AnotherProjectIsMadeAndBecomesTheCurrentOne) {
  auto workspace = Make();
  std::string seen;
  workspace.CreateProject("alpha/beta", [&](const WorkspaceFolder& changed) { seen = changed.CurrentProject(); });
  EXPECT_EQ(seen, "alpha/beta");
  EXPECT_EQ(workspace.CurrentProject(), "alpha/beta");
  EXPECT_TRUE(fs::exists(workspace.ProjectOptionsPath()));
  EXPECT_TRUE(fs::exists(workspace.DataflowDatabasePath()));
  const auto opened = WorkspaceFolder::Open(root_);
  EXPECT_EQ(opened.CurrentProject(), "alpha/beta");
  EXPECT_EQ(opened.Projects(), (std::vector<std::string>{"alpha/beta", "Demo"}));
}

TEST_F(WorkspaceFolderTest, AFailedProjectLeavesNothing) {
  auto workspace = Make();
  const auto before = Content();
  EXPECT_THROW(workspace.CreateProject("Second", [](const WorkspaceFolder&) { throw std::runtime_error("no room"); }),
               std::runtime_error);
  EXPECT_EQ(Content(), before);
  EXPECT_EQ(workspace.CurrentProject(), "Demo");
  EXPECT_EQ(WorkspaceFolder::Open(root_).CurrentProject(), "Demo");
}

TEST_F(WorkspaceFolderTest, AProjectsFolderIsTakenInAnyCase) {
  auto workspace = Make("\u00dcbung");
  EXPECT_EQ(
      ErrorText([&] { workspace.CreateProject("\u00fcBUNG", DoNothing); }),
      "The project \"\u00fcBUNG\" cannot be made: the folder Projects/\u00dcbung is there already. Choose another "
      "name.");
  EXPECT_EQ(workspace.Projects(), std::vector<std::string>{"\u00dcbung"});
}

TEST_F(WorkspaceFolderTest, FoldersThatAreNoProjectsAreNotListed) {
  const auto workspace = Make();
  folder_.Write("ws/Projects/empty/readme.txt", "x");
  folder_.Write("ws/Projects/a%zz/ProjectOptions.xml", "x");
  folder_.Write("ws/Projects/file.txt", "x");
  EXPECT_EQ(workspace.Projects(), std::vector<std::string>{"Demo"});
}

TEST_F(WorkspaceFolderTest, AProjectIsChosenByItsExactName) {
  auto workspace = Make();
  workspace.CreateProject("Second", DoNothing);
  workspace.UseProject("Demo");
  EXPECT_EQ(workspace.GetFerrowoodName(7), "Demo");
  EXPECT_EQ(WorkspaceFolder::Open(root_).CurrentProject(), "Demo");
  EXPECT_EQ(ErrorText([&] { workspace.UseProject("second"); }),
            "There is no project \"second\" in " + root_ + "; the projects are: Demo, Second.");
  EXPECT_EQ(workspace.CurrentProject(), "Demo");
}

TEST_F(WorkspaceFolderTest, TheSourceEncodingIsKept) {
  auto workspace = Make();
  workspace.SetSourceEncoding("SHIFT_JIS");
  EXPECT_EQ(WorkspaceFolder::Open(root_).SourceEncoding(), "SHIFT_JIS");
  EXPECT_EQ(ErrorText([&] { workspace.SetSourceEncoding("KLINGON"); }),
            "The encoding \"KLINGON\" is not known; name one such as UTF-8, ISO-8859-1, SHIFT_JIS or IBM1047.");
  EXPECT_EQ(workspace.SourceEncoding(), "SHIFT_JIS");
}

TEST_F(WorkspaceFolderTest, AFailedWriteLeavesTheProjectAsItWas) {
  auto workspace = Make();
  workspace.CreateProject("Second", DoNothing);
  fs::remove(root_ + "/.qmrules/workspace.json");
  fs::create_directory(root_ + "/.qmrules/workspace.json");
  EXPECT_EQ(ErrorText([&] { workspace.UseProject("Demo"); }),
            "The file \"" + root_ + "/.qmrules/workspace.json\" cannot be written: it is a folder.");
  EXPECT_EQ(workspace.CurrentProject(), "Second");
}

}  // namespace
}  // namespace qmrules::workbench
