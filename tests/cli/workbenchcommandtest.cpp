#include <filesystem>

#include "cli/clifixture.h"

namespace qmrules::test {
namespace {

using Words = std::vector<std::string>;

class WorkbenchCommand : public CliTest {
 protected:
  WorkbenchCommand() {
    programFolder_ = folder_.File("bin");
    desktop_ = folder_.Write("bin/qmrules-workbench", "");
  }
  std::string desktop_;
};

TEST_F(WorkbenchCommand, OpensTheWorkspaceOfTheCurrentFolder) {
  MakeWorkspace();
  std::filesystem::create_directories(folder_.File("cobol/deep"));
  currentFolder_ = folder_.File("cobol/deep");
  EXPECT_EQ(Run({"workbench"}), (CliRun{7, "", ""}));
  EXPECT_EQ(started_, (Words{desktop_, Root()}));
}

TEST_F(WorkbenchCommand, OpensTheFolderThatIsNamed) {
  Run({"workbench", "claims"});
  EXPECT_EQ(started_, (Words{desktop_, folder_.File("claims")}));
  Run({"workbench", "--workspace", "billing"});
  EXPECT_EQ(started_, (Words{desktop_, folder_.File("billing")}));
  variables_["QMRULES_WORKSPACE"] = "/srv/billing";
  Run({"workbench"});
  EXPECT_EQ(started_, (Words{desktop_, "/srv/billing"}));
}

TEST_F(WorkbenchCommand, LetsTheDesktopAskWhereThereIsNoWorkspace) {
  Run({"workbench"});
  EXPECT_EQ(started_, Words{desktop_});
}

TEST_F(WorkbenchCommand, HandsOnTheLanguageThatIsAskedFor) {
  Run({"workbench", "claims", "--language", "ko"});
  EXPECT_EQ(started_, (Words{desktop_, "--language", "ko", folder_.File("claims")}));
}

TEST_F(WorkbenchCommand, TellsWhatToDoWhereTheDesktopIsNotInstalled) {
  std::filesystem::remove(desktop_);
  EXPECT_EQ(Run({"workbench"}),
            (CliRun{1, "",
                    "qmrules: The desktop is not installed: " + desktop_ +
                        " is missing; put the program qmrules-workbench there, which a build with Qt 6 makes.\n"}));
  EXPECT_TRUE(started_.empty());
}

}  // namespace
}  // namespace qmrules::test
