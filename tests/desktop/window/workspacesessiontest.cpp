#include "desktop/window/workspacesession.h"

#include "desktop/window/workspacefixture.h"
#include "platform/error.h"
#include "platform/scripteddialogs.h"
#include "support/errortext.h"

namespace qmrules::desktop {
namespace {

using platform::Error;

class WorkspaceSessionTest : public test::WorkspaceFixture {
 protected:
  platform::ScriptedDialogs dialogs_;
  platform::MemoryPointer pointer_;
  platform::SilentProgress progress_;
  WorkspaceSession session_{Root(), Services(), {dialogs_, pointer_, progress_}};
};

TEST_F(WorkspaceSessionTest, KnowsTheProgramsOfTheProject) {
  ASSERT_EQ(session_.Programs().size(), 2U);
  EXPECT_EQ(session_.Programs()[0].name, "PAYFEE");
  EXPECT_EQ(session_.FindProgram(session_.Programs()[1].key)->name, "PAYRATE");
  EXPECT_EQ(session_.FindProgram("COBOL#99"), nullptr);
  EXPECT_EQ(session_.ProgramOnView(), "");
}

TEST_F(WorkspaceSessionTest, RefusesAFolderThatIsNoWorkspace) {
  const test::TemporaryFolder empty;
  EXPECT_THROW(WorkspaceSession(empty.Path().string(), Services(), {dialogs_, pointer_, progress_}), Error);
}

TEST_F(WorkspaceSessionTest, AProgramThatIsShownIsTheCurrentObjectWithItsFile) {
  const auto& program = session_.Programs()[0];
  std::string told;
  const auto object = session_.Workspace().OnObjectIDChanged([&] { told += "object "; });
  const auto property = session_.Workspace().OnPropertyChanged(
      [&](const std::string& component, const std::string& name, const platform::Value& value) {
        told += component + "." + name + "=" + value.Text() + " ";
      });
  session_.ShowProgram(program.key);
  EXPECT_EQ(session_.Workspace().ObjectID(), program.key);
  EXPECT_EQ(session_.Viewer().CurFile()->FileName, "cobol/payfee.cbl");
  EXPECT_EQ(session_.Viewer().CurFile()->Language, "COBOL");
  EXPECT_NE(told.find("QMSource.FileName=cobol/payfee.cbl"), std::string::npos) << told;
  EXPECT_NE(told.find("object"), std::string::npos) << told;
  session_.ShowProgram("");
  EXPECT_FALSE(session_.Viewer().CurFile());
}

TEST_F(WorkspaceSessionTest, TheCopybooksOfAProgramAreAmongItsFiles) {
  folder_.Write("cobol/FEES.cpy", "       01 WS-CAP PIC 9(4).\n");
  folder_.Write(
      "cobol/payfee.cbl",
      "       IDENTIFICATION DIVISION.\n       PROGRAM-ID. PAYFEE.\n       DATA DIVISION.\n"
      "       WORKING-STORAGE SECTION.\n       COPY FEES.\n       PROCEDURE DIVISION.\n           STOP RUN.\n");
  session_.Scan();
  session_.ShowProgram(session_.Programs()[0].key);
  EXPECT_EQ(session_.Viewer().Files(), (std::vector<std::string>{"cobol/payfee.cbl", "cobol/FEES.cpy"}));
}

TEST_F(WorkspaceSessionTest, AProgramWithoutAReadableSourceIsRefused) {
  session_.ShowProgram(session_.Programs()[1].key);
  const std::string onView = session_.ProgramOnView();
  std::filesystem::remove(folder_.File("cobol/payfee.cbl"));
  const std::string key = session_.Programs()[0].key;
  EXPECT_THROW(session_.ShowProgram(key), Error);
  EXPECT_EQ(session_.ProgramOnView(), onView);
  // A component is refused as well, and the reason is kept.
  session_.Workspace().SetObjectID(key);
  EXPECT_EQ(session_.ProgramOnView(), onView);
  ASSERT_EQ(session_.Workspace().Errors().size(), 1U);
  EXPECT_NE(session_.Workspace().Errors()[0].find("payfee.cbl"), std::string::npos);
  session_.Workspace().SetObjectID("COBOL#99");
  EXPECT_EQ(session_.ProgramOnView(), onView);
}

TEST_F(WorkspaceSessionTest, GivesTheCodeModelOfTheProgramOnView) {
  EXPECT_EQ(session_.Workspace().SourceModel(), nullptr);
  session_.ShowProgram(session_.Programs()[0].key);
  auto* const model = session_.Workspace().SourceModel();
  ASSERT_NE(model, nullptr);
  EXPECT_EQ(model->ModelName(), "COBOL");
  EXPECT_EQ(session_.Workspace().SourceModel(), model);
  session_.ShowProgram("");
  EXPECT_EQ(session_.Workspace().SourceModel(), nullptr);
}

TEST_F(WorkspaceSessionTest, AScanFindsNewProgramsAndForgetsNoneThatIsOnView) {
  session_.ShowProgram(session_.Programs()[1].key);
  int told = 0;
  const auto subscription = session_.OnProgramsChanged.Subscribe([&] { ++told; });
  folder_.Write("cobol/paynew.cbl",
                "       IDENTIFICATION DIVISION.\n       PROGRAM-ID. PAYNEW.\n       PROCEDURE DIVISION.\n"
                "           STOP RUN.\n");
  const auto report = session_.Scan();
  EXPECT_EQ(report.Count(workbench::ScannedModel::Outcome::Added), 1U);
  EXPECT_EQ(session_.Programs().size(), 3U);
  EXPECT_EQ(told, 1);
  EXPECT_EQ(session_.FindProgram(session_.ProgramOnView())->name, "PAYRATE");
}

TEST_F(WorkspaceSessionTest, TheControlsCommandsComeAndGoWithIt) {
  session_.StartControl(shell::StringTableFor(shell::Language::English), "Rules");
  EXPECT_NE(session_.Workspace().FindCommand(kControlName, "CreateRule"), nullptr);
  session_.EndControl();
  session_.DropControl();
  EXPECT_TRUE(session_.Workspace().Commands().empty());
  session_.StartControl(shell::StringTableFor(shell::Language::Japanese), "ルール");
  EXPECT_EQ(session_.Workspace().FindCommand(kControlName, "")->menuPath, "ルール");
  session_.EndControl();
}

TEST_F(WorkspaceSessionTest, GivesTheTextsToTheViewer) {
  EXPECT_TRUE(session_.ReadBytes("cobol/payfee.cbl").starts_with("       IDENTIFICATION"));
  EXPECT_THROW(session_.ReadBytes("../payfee.cbl"), Error);
  EXPECT_EQ(session_.Encoding(), "");
  EXPECT_TRUE(session_.Classifier({"cobol/payfee.cbl", "COBOL"}));
  EXPECT_FALSE(session_.Classifier({"jobs/nightly.jcl", "JCL"}));
}

}  // namespace
}  // namespace qmrules::desktop
