#include "desktop/window/hostmenu.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include "platform/progress.h"
#include "support/unopenedfrontend.h"

namespace qmrules::desktop {
namespace {

class HostMenuTest : public testing::Test {
 protected:
  HostMenuTest() {
    workspace_.AddMethod("Rules", "", "Business Rules");
    workspace_.AddMethod("Rules", "CreateRule", "Business Rules|Create Rule...");
    workspace_.AddMethod("Rules", "-0", "Business Rules|-");
    workspace_.AddMethod("Rules", "Emphasize", "Business Rules|Emphasize");
    workspace_.AddMethod("Other", "Elsewhere", "Other|Elsewhere");
    menu_.SetWorkspace(&workspace_);
  }
  // Each entry by its text and states: "-" a separator, "." disabled, "*" checked, "!" hidden.
  std::string Shown() {
    QCoreApplication::processEvents();
    std::string shown;
    for (const QAction* const action : menu_.actions()) {
      shown += action->isSeparator() ? "-" : action->text().toStdString();
      if (!action->isSeparator() && !action->isEnabled()) shown += ".";
      if (action->isChecked()) shown += "*";
      if (!action->isVisible()) shown += "!";
      shown += " / ";
    }
    return shown;
  }
  QAction& Entry(int at) { return *menu_.actions().at(at); }

  test::UnopenedFrontEnd frontEnd_;
  platform::SilentProgress progress_;
  platform::MemoryWorkspace workspace_{frontEnd_, progress_};
  HostMenu menu_{"Rules"};
};

TEST_F(HostMenuTest, ShowsTheComponentsCommandsInTheirOrderWithTheirSeparators) {
  EXPECT_EQ(menu_.title(), "Business Rules");
  EXPECT_EQ(Shown(), "Create Rule... / - / Emphasize / ");
}

TEST_F(HostMenuTest, ShowsACommandThatIsRegisteredLater) {
  workspace_.AddMethod("Rules", "Delete", "Business Rules|Delete");
  EXPECT_EQ(Shown(), "Create Rule... / - / Emphasize / Delete\tDel / ");
}

TEST_F(HostMenuTest, ShowsEachState) {
  const auto set = [&](const char* key, const char* state) { workspace_.PropertyLet("Rules", key, state); };
  set("CreateRule", "disable");
  EXPECT_EQ(Shown(), "Create Rule.... / - / Emphasize / ");
  set("CreateRule", "hide");
  EXPECT_EQ(Shown(), "Create Rule....! / - / Emphasize / ");
  set("CreateRule", "enable");
  set("CreateRule", "show");
  set("Emphasize", "check");
  EXPECT_EQ(Shown(), "Create Rule... / - / Emphasize* / ");
  set("Emphasize", "uncheck");
  EXPECT_EQ(Shown(), "Create Rule... / - / Emphasize / ");
}

TEST_F(HostMenuTest, AChoiceRequestsTheMethodOfItsComponent) {
  std::string requested;
  const auto subscription =
      workspace_.OnMethodRequested([&](const std::string& who, const std::string& key, platform::Value& /*result*/) {
        requested += who + "." + key;
      });
  Entry(0).trigger();
  EXPECT_EQ(requested, "Rules.CreateRule");
}

TEST_F(HostMenuTest, TheMarkIsSetByTheComponentAndNotByTheClick) {
  workspace_.PropertyLet("Rules", "Emphasize", "check");
  QCoreApplication::processEvents();
  Entry(2).trigger();
  EXPECT_TRUE(Entry(2).isChecked());
  workspace_.PropertyLet("Rules", "Emphasize", "uncheck");
  QCoreApplication::processEvents();
  Entry(2).trigger();
  EXPECT_FALSE(Entry(2).isChecked());
}

TEST_F(HostMenuTest, IsEmptyWithoutAWorkspace) {
  menu_.SetWorkspace(nullptr);
  workspace_.PropertyLet("Rules", "Emphasize", "check");
  EXPECT_EQ(Shown(), "");
}

TEST_F(HostMenuTest, ForgetsTheCommandsOfAComponentThatLeaves) {
  workspace_.RemoveMethods("Rules");
  EXPECT_EQ(Shown(), "");
  EXPECT_EQ(workspace_.Commands().size(), 1U);
}

}  // namespace
}  // namespace qmrules::desktop
