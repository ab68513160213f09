#include <filesystem>

#include "cli/clifixture.h"

namespace qmrules::test {

using nlohmann::json;

namespace {

class InitCommand : public CliTest {};

TEST_F(InitCommand, MakesAWorkspaceWithItsProject) {
  EXPECT_EQ(Run({"init", "--project", "Policy Billing"}), (CliRun{0, Root() + "\n", ""}));
  EXPECT_TRUE(std::filesystem::exists(folder_.File(".qmrules/workspace.json")));
  EXPECT_TRUE(std::filesystem::exists(folder_.File("Projects/Policy Billing/ProjectOptions.xml")));
  EXPECT_EQ(DoJson({"fetch", "--node", "PROJECT;ID,Name"}), json::parse(R"([{"ID":1,"Name":"Policy Billing"}])"));
}

TEST_F(InitCommand, MakesTheNamedFolderFromTheCurrentOneOn) {
  EXPECT_EQ(Do({"init", "deep/down", "--project", "Demo"}), Root() + "/deep/down\n");
  EXPECT_TRUE(std::filesystem::exists(folder_.File("deep/down/.qmrules/workspace.json")));
}

TEST_F(InitCommand, TakesTheFolderOfTheWorkspaceOptionToo) {
  EXPECT_EQ(Do({"init", "--workspace", "there", "--project", "Demo"}), Root() + "/there\n");
}

TEST_F(InitCommand, NeedsTheProject) {
  EXPECT_EQ(Run({"init"}), (CliRun{2, "", "qmrules: --project is required\nSee \"qmrules init --help\".\n"}));
  EXPECT_TRUE(Files().empty());
}

TEST_F(InitCommand, RefusesAFolderThatIsAWorkspace) {
  MakeWorkspace();
  const auto before = Files();
  EXPECT_EQ(Run({"init", "--project", "Other"}),
            (CliRun{1, "", "qmrules: " + Root() + " is a workspace already; open it, or choose another folder.\n"}));
  EXPECT_EQ(Files(), before);
}

TEST_F(InitCommand, RefusesAnUnknownEncodingAndMakesNothing) {
  EXPECT_EQ(Run({"init", "--project", "Demo", "--encoding", "KLINGON"}),
            (CliRun{1, "",
                    "qmrules: The encoding \"KLINGON\" is not known; name one such as UTF-8, ISO-8859-1, SHIFT_JIS or "
                    "IBM1047.\n"}));
  EXPECT_TRUE(Files().empty());
}

TEST_F(InitCommand, RefusesAProjectWithoutAName) {
  EXPECT_EQ(Run({"init", "--project", ""}).code, 1);
  EXPECT_TRUE(Files().empty());
}

class WorkspaceChoice : public CliTest {};

TEST_F(WorkspaceChoice, IsTheNearestFolderUpwards) {
  MakeWorkspace();
  std::filesystem::create_directories(folder_.File("cobol/old"));
  currentFolder_ = folder_.File("cobol/old");
  EXPECT_EQ(Do({"project", "list"}), "* Demo\n");
}

TEST_F(WorkspaceChoice, IsNamedByTheOptionBeforeOrBehindTheCommand) {
  Do({"init", "one", "--project", "First"});
  EXPECT_EQ(Do({"project", "list", "--workspace", "one"}), "* First\n");
  EXPECT_EQ(Do({"--workspace", Root() + "/one", "project", "list"}), "* First\n");
}

TEST_F(WorkspaceChoice, IsNamedByTheVariableUnlessTheOptionIsGiven) {
  Do({"init", "one", "--project", "First"});
  Do({"init", "two", "--project", "Second"});
  variables_["QMRULES_WORKSPACE"] = "one";
  EXPECT_EQ(Do({"project", "list"}), "* First\n");
  EXPECT_EQ(Do({"project", "list", "--workspace", "two"}), "* Second\n");
}

TEST_F(WorkspaceChoice, TellsWhatToDoWithoutAWorkspace) {
  EXPECT_EQ(Run({"list"}),
            (CliRun{1, "",
                    "qmrules: There is no workspace in " + Root() +
                        " or a folder above it; make one with \"qmrules init\", or name one with --workspace DIR.\n"}));
}

TEST_F(WorkspaceChoice, TellsWhenTheNamedFolderIsNone) {
  EXPECT_EQ(
      Run({"list", "--workspace", "nowhere"}),
      (CliRun{1, "",
              "qmrules: " + Root() +
                  "/nowhere is no workspace: there is no file .qmrules/workspace.json in it. Name the folder of a "
                  "workspace, or make one.\n"}));
}

class ProjectCommands : public CliTest {};

TEST_F(ProjectCommands, ListMarksTheCurrentProject) {
  MakeWorkspace();
  Do({"project", "create", "Claims"});
  EXPECT_EQ(Do({"project", "list"}), "* Claims\n  Demo\n");
  EXPECT_EQ(DoJson({"project", "list"}),
            json::parse(R"([{"name":"Claims","current":true},{"name":"Demo","current":false}])"));
}

TEST_F(ProjectCommands, CreateEntersTheProjectInTheCatalogue) {
  MakeWorkspace();
  Do({"project", "create", "Claims"});
  EXPECT_EQ(DoJson({"fetch", "--node", "PROJECT;ID,Name"}),
            json::parse(R"([{"ID":1,"Name":"Demo"},{"ID":2,"Name":"Claims"}])"));
  EXPECT_EQ(Do({"function", "create", "Claims handling"}), "BUSINESSFUNC#1\n");
  EXPECT_EQ(Do({"list"}), "Claims handling  BUSINESSFUNC#1\n");
}

TEST_F(ProjectCommands, CreateRefusesATakenNameInAnyCase) {
  MakeWorkspace();
  const auto before = Files();
  EXPECT_EQ(Run({"project", "create", "DEMO"}),
            (CliRun{1, "",
                    "qmrules: The project \"DEMO\" cannot be made: the folder Projects/Demo is there already. Choose "
                    "another name.\n"}));
  EXPECT_EQ(Files(), before);
}

TEST_F(ProjectCommands, CreateTakesAnyNameThatIsNoCommand) {
  MakeWorkspace();
  Do({"project", "create", "list"});
  EXPECT_EQ(Do({"project", "list"}), "  Demo\n* list\n");
}

TEST_F(ProjectCommands, UseChangesWhatTheOtherCommandsSee) {
  MakeCatalogue();
  Do({"project", "create", "Claims"});
  EXPECT_EQ(Do({"list"}), "");
  EXPECT_EQ(Do({"project", "use", "Demo"}), "");
  EXPECT_EQ(DoJson({"list"})["functions"].size(), 2U);
}

TEST_F(ProjectCommands, UseTellsTheProjectsThatThereAre) {
  MakeWorkspace();
  EXPECT_EQ(Run({"project", "use", "Nothing"}),
            (CliRun{1, "", "qmrules: There is no project \"Nothing\" in " + Root() + "; the projects are: Demo.\n"}));
}

TEST_F(ProjectCommands, UseEntersAProjectThatTheCatalogueLacks) {
  MakeWorkspace();
  Do({"project", "create", "Claims"});
  std::filesystem::copy(folder_.File("Projects/Claims"), folder_.File("Projects/Restored"),
                        std::filesystem::copy_options::recursive);
  Do({"project", "use", "Restored"});
  EXPECT_EQ(Do({"function", "create", "Billing"}), "BUSINESSFUNC#1\n");
}

}  // namespace
}  // namespace qmrules::test
