#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "browser/nodes.h"
#include "catalogue/gateway.h"
#include "platform/error.h"
#include "shell/controltest.h"
#include "support/errortext.h"

namespace qmrules::shell {
namespace {

using browser::kReadFault;
using platform::MessageStyle;

constexpr const char* kWholeTree = "Billing\n  Fees\n    ...\n  Taxes\n  Rebates\nClaims\n  Homeless Function\n";

// A store that cannot be read for a while.
class ControlFailureTest : public ControlTest {
 protected:
  // What a view does around each action of the user.
  void Act(const std::function<void()>& action) { control.Failures().Attempt(action); }
};

TEST_F(ControlFailureTest, AShowThatCannotReadTheStoreIsToldOfOnceAndTheNextOneSucceeds) {
  Init();
  watch.Arm(1);
  ExpectMessage(kReadFault);
  control.Show();
  EXPECT_EQ(dialogs.History().size(), 1U);
  EXPECT_EQ(dialogs.History()[0].style, MessageStyle::Exclamation);
  EXPECT_EQ(dialogs.History()[0].caption, "Business Rules");
  EXPECT_TRUE(control.IsShown());
  EXPECT_FALSE(pointer.IsBusy());
  watch.Arm(0);
  control.Show();
  EXPECT_EQ(Tree(), kWholeTree);
}

TEST_F(ControlFailureTest, AFailureAtEveryStepOfALaterShowLeavesAUsableControl) {
  Open();
  int failures = 0;
  for (int step = 1;; ++step) {
    watch.Arm(step);
    const std::size_t before = dialogs.History().size();
    dialogs.ExpectMessage(platform::MessageAnswer::Ok);
    control.Show();
    watch.failAt = 0;
    if (dialogs.History().size() == before) break;
    ++failures;
    EXPECT_EQ(dialogs.History().back().name, kReadFault);
    EXPECT_EQ(Tree(), kWholeTree) << "step " << step;
    EXPECT_EQ(HostState("Delete"), "enable") << "step " << step;
    EXPECT_FALSE(pointer.IsBusy());
    ASSERT_LT(step, 200);
  }
  EXPECT_GT(failures, 5);
}

TEST_F(ControlFailureTest, AnExpansionThatFailsLeavesTheNodeClosedAndCanBeTriedAgain) {
  Open();
  tvObjects.Expand(Node("Billing"));
  tvObjects.Click(Node("Fees"));
  for (int step = 1;; ++step) {
    watch.Arm(step);
    const std::string failure = test::ErrorText([this] { tvObjects.Expand(Node("Fees")); });
    watch.failAt = 0;
    if (Node("Fees").Expanded()) break;
    EXPECT_EQ(failure, kReadFault);
    EXPECT_TRUE(browser::HasOnlyPlaceholder(Node("Fees"))) << "step " << step;
    EXPECT_FALSE(pointer.IsBusy());
    ASSERT_LT(step, 100);
  }
  EXPECT_TRUE(Node("Fees").Expanded());
  EXPECT_EQ(Node("Fees").ChildCount(), 3U);
}

TEST_F(ControlFailureTest, WhatAWidgetsActionThrowsIsToldByTheOnePlace) {
  Open();
  tvObjects.Expand(Node("Billing"));
  watch.Arm(1);
  ExpectMessage(kReadFault);
  Act([this] { tvObjects.Expand(Node("Fees")); });
  EXPECT_EQ(dialogs.Remaining(), 0U);
  EXPECT_EQ(dialogs.History().back().style, MessageStyle::Exclamation);
}

TEST_F(ControlFailureTest, ACommandThatFailsIsToldOfOnTheRoadsFromOutside) {
  Open();
  Click("Fees");
  for (const std::string_view road : {"host", "button", "menu"}) {
    watch.Arm(1);
    ExpectMessage(kReadFault);
    if (road == "host") {
      Request("MoveDown");
    } else if (road == "button") {
      widgets.tbToolbar.Click("MoveDown");
    } else {
      widgets.mnuPopup.Item("mnuMoveDown").Click();
    }
    EXPECT_EQ(dialogs.Remaining(), 0U) << road;
    EXPECT_EQ(Tree(), kWholeTree) << road;
    EXPECT_FALSE(pointer.IsBusy()) << road;
  }
}

TEST_F(ControlFailureTest, AFailureInsideThePopupLeavesNothingPutOff) {
  Open();
  Click("Fees");
  dialogs.ExpectMenu("mnuPopup", [this](platform::widgets::Menu& menu) {
    watch.Arm(1);
    ExpectMessage(kReadFault);
    menu.Item("mnuMoveDown").Click();
    watch.failAt = 0;
  });
  tvObjects.RightClick(nullptr);
  ExpectNotAvailable();
  Request("Changer");
  EXPECT_EQ(dialogs.Remaining(), 0U);
}

TEST_F(ControlFailureTest, AnEditThatCannotBeWrittenIsToldOfAndItsCommandIsNotCarriedOut) {
  Open();
  Click("Billing");
  widgets.txtObjName.SetFocus();
  widgets.txtObjName.Enter("Invoicing");
  watch.Arm(1);
  ExpectMessage(kReadFault);
  Request("SelectAll");
  watch.failAt = 0;
  EXPECT_FALSE(Node("Fees").Checked());
  EXPECT_EQ(store.Get(catalogue::MakeKey("BUSINESSFUNC", billing), "Name").Text(), "Billing");
  EXPECT_EQ(widgets.txtObjName.Text(), "Invoicing") << "what the user typed is still there";
  Click("Claims");
  EXPECT_EQ(widgets.txtObjName.Text(), "Claims");
}

TEST_F(ControlFailureTest, DeInitGivesEverythingBackAlsoWhenAnEditCannotBeWritten) {
  Open();
  Click("Billing");
  widgets.txtObjName.Enter("Invoicing");
  watch.Arm(1);
  EXPECT_EQ(test::ErrorText([this] { control.DeInit(); }), kReadFault);
  EXPECT_FALSE(control.HasWorkspace());
  EXPECT_EQ(tvObjects.Count(), 0U);
  EXPECT_NE(settings.Get("Settings", "Splitter", ""), "");
  EXPECT_EQ(tracing.unloaded, (std::vector<std::string>{""}));
}

TEST_F(ControlFailureTest, TurningSelectedOnlyOffThatFailsLeavesTheViewAndItsMark) {
  Open();
  tvObjects.ClickCheckBox(Node("Claims"));
  Request("Selected");
  watch.Arm(1);
  ExpectMessage(kReadFault);
  Request("Selected");
  EXPECT_TRUE(widgets.mnuPopup.Item("mnuSelected").Checked());
  EXPECT_EQ(Tree(), "Claims\n  Homeless Function\n");
  EXPECT_TRUE(widgets.txtObjName.Visible());
  EXPECT_EQ(HostState("Selected"), "enable check");
  watch.failAt = 0;
  Request("Selected");
  EXPECT_EQ(Tree(), kWholeTree);
}

TEST_F(ControlFailureTest, ADefectOfTheProgramIsNotTakenForAFailure) {
  Open();
  EXPECT_THROW(control.Failures().Attempt([] { throw std::logic_error("defect"); }), std::logic_error);
}

TEST_F(ControlFailureTest, ThePointerIsNormalWhileTheFailureIsRead) {
  class Watching final : public platform::Dialogs {
   public:
    explicit Watching(platform::Pointer& pointer) : pointer_(pointer) {}
    void ShowModal(platform::widgets::Form&) override {}
    platform::MessageAnswer MessageBox(std::string_view, std::string_view, platform::MessageStyle) override {
      wasBusy = pointer_.IsBusy();
      return platform::MessageAnswer::Ok;
    }
    std::optional<std::string> PickFileToOpen(const platform::FileRequest&) override { return {}; }
    std::optional<std::string> PickFileToSave(const platform::FileRequest&) override { return {}; }
    void PopupMenu(platform::widgets::Menu&) override {}
    bool wasBusy = true;

   private:
    platform::Pointer& pointer_;
  } watching(pointer);
  const FailureReport report(watching, pointer, globals);
  const platform::BusyCursor busy(pointer);
  report.Tell("text");
  EXPECT_FALSE(watching.wasBusy);
  EXPECT_TRUE(pointer.IsBusy());
}

}  // namespace
}  // namespace qmrules::shell
