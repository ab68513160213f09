#include "platform/memoryworkspace.h"

#include <gtest/gtest.h>

#include "platform/error.h"
#include "platform/memorysourceviewer.h"
#include "platform/sourceviewercomponent.h"
#include "support/unopenedfrontend.h"

namespace qmrules::platform {
namespace {

// Answers for one property and one method.
class Echo final : public Component {
 public:
  std::optional<std::string> PropertyGet(std::string_view property) override {
    return property == "Text" ? std::optional(text) : std::nullopt;
  }
  void PropertyLet(std::string_view property, const Value& value) override {
    if (property == "Text") text = value.Text();
  }
  Value MethodCall(std::string_view method, std::string_view argument) override {
    if (method != "Echo") throw Error("There is no such method.");
    return std::string(argument);
  }
  std::string text;
};

class MemoryWorkspaceTest : public testing::Test {
 protected:
  test::UnopenedFrontEnd frontEnd;
  SilentProgress progress;
  MemoryWorkspace workspace{frontEnd, progress};
  MemorySourceViewer viewer;
  SourceViewerComponent viewerComponent{viewer};
  Echo echo;
};

TEST_F(MemoryWorkspaceTest, HandsOutWhatItWasGiven) {
  EXPECT_EQ(&workspace.FE(), &frontEnd);
  EXPECT_EQ(&workspace.Progress(), &progress);
  EXPECT_EQ(workspace.SourceModel(), nullptr);
  EXPECT_EQ(workspace.SearchEngine(), nullptr);
  EXPECT_EQ(workspace.CurrentConstruct(), nullptr);
  workspace.SetFont({"Sans", 9, true});
  EXPECT_EQ(workspace.Font().family, "Sans");
}

TEST_F(MemoryWorkspaceTest, CommandsAreKeptInTheOrderOfTheirRegistration) {
  workspace.AddMethod("Rules", "", "Business Rules");
  workspace.AddMethod("Rules", "CreateRule", "Business Rules|Create Rule...");
  workspace.AddMethod("Rules", "-0", "Business Rules|-");
  ASSERT_EQ(workspace.Commands().size(), 3U);
  EXPECT_EQ(workspace.Commands()[1].key, "CreateRule");
  EXPECT_EQ(workspace.Commands()[2].menuPath, "Business Rules|-");
  EXPECT_EQ(workspace.FindCommand("Rules", "createrule"), nullptr);
  EXPECT_EQ(workspace.FindCommand("Other", "CreateRule"), nullptr);
}

TEST_F(MemoryWorkspaceTest, TheComponentSetsTheStatesOfItsCommands) {
  workspace.AddMethod("Rules", "Emphasize", "Business Rules|Emphasize");
  const HostCommand* const command = workspace.FindCommand("Rules", "Emphasize");
  EXPECT_TRUE(command->enabled);
  EXPECT_TRUE(command->visible);
  EXPECT_FALSE(command->checked);
  workspace.PropertyLet("Rules", "Emphasize", "disable");
  workspace.PropertyLet("Rules", "Emphasize", "hide");
  workspace.PropertyLet("Rules", "Emphasize", "check");
  EXPECT_FALSE(command->enabled);
  EXPECT_FALSE(command->visible);
  EXPECT_TRUE(command->checked);
  workspace.PropertyLet("Rules", "Emphasize", "enable");
  workspace.PropertyLet("Rules", "Emphasize", "show");
  workspace.PropertyLet("Rules", "Emphasize", "uncheck");
  EXPECT_TRUE(command->enabled);
  EXPECT_TRUE(command->visible);
  EXPECT_FALSE(command->checked);
  try {
    workspace.PropertyLet("Rules", "Emphasize", "press");
    FAIL();
  } catch (const Error& error) {
    EXPECT_STREQ(error.what(), "The command Emphasize has no state \"press\".");
  }
}

TEST_F(MemoryWorkspaceTest, TellsOfEachChangeOfItsCommandsAndOfNothingElse) {
  int changes = 0;
  const auto subscription = workspace.OnCommandsChanged([&] { ++changes; });
  workspace.AddMethod("Rules", "Emphasize", "Business Rules|Emphasize");
  EXPECT_EQ(changes, 1);
  workspace.PropertyLet("Rules", "Emphasize", "disable");
  EXPECT_EQ(changes, 2);
  workspace.PropertyLet("Rules", "Emphasize", "disable");
  workspace.PropertyLet("Rules", "", "show");
  EXPECT_EQ(changes, 2);
}

TEST_F(MemoryWorkspaceTest, AComponentThatLeavesTakesItsCommandsAlong) {
  workspace.AddMethod("Rules", "Emphasize", "Business Rules|Emphasize");
  workspace.AddMethod("Other", "Emphasize", "Other|Emphasize");
  int changes = 0;
  const auto subscription = workspace.OnCommandsChanged([&] { ++changes; });
  workspace.RemoveMethods("Rules");
  EXPECT_EQ(workspace.FindCommand("Rules", "Emphasize"), nullptr);
  EXPECT_NE(workspace.FindCommand("Other", "Emphasize"), nullptr);
  EXPECT_EQ(changes, 1);
  workspace.RemoveMethods("Rules");
  EXPECT_EQ(changes, 1);
}

TEST_F(MemoryWorkspaceTest, TheModelIsAskedForWhenItIsNeeded) {
  int asked = 0;
  workspace.SetSourceModelProvider([&] {
    ++asked;
    return nullptr;
  });
  EXPECT_EQ(asked, 0);
  EXPECT_EQ(workspace.SourceModel(), nullptr);
  EXPECT_EQ(asked, 1);
}

TEST_F(MemoryWorkspaceTest, AComponentTellsThatItIsShownAndHasTheFocus) {
  EXPECT_FALSE(workspace.IsShown("Rules"));
  workspace.PropertyLet("Rules", "", "show");
  EXPECT_TRUE(workspace.IsShown("Rules"));
  workspace.PropertyLet("Rules", "", "hide");
  EXPECT_FALSE(workspace.IsShown("Rules"));
  workspace.PropertyLet("Container", "CurrFocus", "Rules");
  EXPECT_EQ(workspace.FocusedComponent(), "Rules");
}

TEST_F(MemoryWorkspaceTest, ComponentsAreAddressedByName) {
  workspace.AddComponent("Echo", echo);
  workspace.PropertyLet("Echo", "Text", "one");
  EXPECT_EQ(workspace.PropertyGet("Echo", "Text"), "one");
  EXPECT_EQ(workspace.PropertyGet("Echo", "Other"), std::nullopt);
  EXPECT_EQ(workspace.MethodCall("Echo", "Echo", "two")->Text(), "two");
  EXPECT_THROW(workspace.MethodCall("Echo", "Shout", ""), Error);
}

TEST_F(MemoryWorkspaceTest, AComponentThatIsNotThereIsPassedOver) {
  EXPECT_EQ(workspace.PropertyGet("QMSource", "Row"), std::nullopt);
  EXPECT_NO_THROW(workspace.PropertyLet("QMSource", "Row", 5));
  EXPECT_EQ(workspace.MethodCall("QMSource", "CheckSegment", ""), std::nullopt);
}

TEST_F(MemoryWorkspaceTest, SubstitutionsAreAskedOfTheWorkspaceItself) {
  workspace.SetSubstitution("PAR-RATE", "Rate a policy");
  EXPECT_EQ(workspace.PropertyGet("QMWS", "EvalSubst;PAR-RATE"), "Rate a policy");
  EXPECT_EQ(workspace.PropertyGet("QMWS", "EvalSubst;PAR-GONE"), "");
  EXPECT_EQ(workspace.PropertyGet("QMWS", "Other"), std::nullopt);
}

TEST_F(MemoryWorkspaceTest, SettingsAreEmptyUntilTheyAreSet) {
  EXPECT_EQ(workspace.Setting("Gleaner", "ListName"), "");
  workspace.SetSetting("Gleaner", "ListName", "Ports");
  EXPECT_EQ(workspace.Setting("Gleaner", "ListName"), "Ports");
}

TEST_F(MemoryWorkspaceTest, AnotherCurrentObjectIsTold) {
  int told = 0;
  const auto change = workspace.OnObjectIDChanged([&] { ++told; });
  workspace.SetObjectID("COBOL#12");
  workspace.SetObjectID("COBOL#12");
  EXPECT_EQ(workspace.ObjectID(), "COBOL#12");
  EXPECT_EQ(told, 1);
}

TEST_F(MemoryWorkspaceTest, ARefusedObjectLeavesTheOldOne) {
  workspace.SetObjectID("COBOL#12");
  workspace.SetObjectGate([](std::string_view key) { return key != "COBOL#13"; });
  int told = 0;
  const auto change = workspace.OnObjectIDChanged([&] { ++told; });
  workspace.SetObjectID("COBOL#13");
  EXPECT_EQ(workspace.ObjectID(), "COBOL#12");
  EXPECT_EQ(told, 0);
}

TEST_F(MemoryWorkspaceTest, ARequestedMethodGivesTheObserversResult) {
  std::string told;
  const auto request =
      workspace.OnMethodRequested([&](const std::string& who, const std::string& actionid, Value& result) {
        told += who + ":" + actionid;
        result = true;
      });
  EXPECT_TRUE(workspace.RequestMethod("Rules", "CreateListRules").Boolean());
  EXPECT_EQ(told, "Rules:CreateListRules");
}

TEST_F(MemoryWorkspaceTest, WithoutAnObserverAMethodHasNoResult) {
  EXPECT_TRUE(workspace.RequestMethod("Rules", "CreateRule").IsAbsent());
}

TEST_F(MemoryWorkspaceTest, TheViewersChangesAreTheWorkspacesEvents) {
  workspace.AddComponent("QMSource", viewerComponent);
  workspace.SetViewer(viewer);
  std::string told;
  const auto property =
      workspace.OnPropertyChanged([&](const std::string& component, const std::string& name, const Value& value) {
        told += component + "." + name + "=" + value.Text() + " ";
      });
  const auto selected = workspace.OnSelectedChanged([&] { told += "selected "; });
  viewer.SetFiles({{"PBRATE.cbl", "COBOL"}});
  workspace.PropertyLet("QMSource", "Row", 8);
  EXPECT_EQ(told, "QMSource.FileName=PBRATE.cbl selected ");
  EXPECT_EQ(workspace.CurFile()->FileName, "PBRATE.cbl");
  EXPECT_EQ(workspace.Selected()->FromRow, 8);
  EXPECT_EQ(workspace.PropertyGet("QMSource", "Row"), "8");
  told.clear();
  workspace.RaisePropertyChanged("QMSource", "", {});
  workspace.RaiseSelectedChanged();
  EXPECT_EQ(told, "QMSource.= selected ");
}

TEST_F(MemoryWorkspaceTest, WithoutAViewerNothingIsOnView) {
  EXPECT_FALSE(workspace.CurFile());
  EXPECT_FALSE(workspace.Selected());
}

TEST_F(MemoryWorkspaceTest, FailuresAreKeptAndTold) {
  std::string told;
  const auto subscription = workspace.OnErrorRecorded([&](const std::string& message) { told = message; });
  workspace.ErrorRecord("The document was refused.");
  EXPECT_EQ(workspace.Errors(), (std::vector<std::string>{"The document was refused."}));
  EXPECT_EQ(told, "The document was refused.");
}

}  // namespace
}  // namespace qmrules::platform
