#include <gtest/gtest.h>

#include "browser/browsertest.h"
#include "support/errortext.h"

namespace qmrules::browser {
namespace {

using platform::widgets::Key;
using platform::widgets::KeyPress;
using platform::widgets::MouseButton;
using platform::widgets::ShiftState;

class TreeInputTest : public BrowserTest {
 protected:
  TreeInputTest() {
    const auto function = store.AddFunction("Billing");
    const auto set = store.AddRuleSet("Fees");
    store.AddCall(function, set, 1);
    store.AddRule(set, "Base fee", 1);
    store.AddRule(set, "Late fee", 2);
    objects.LoadTree();
    host.shown.clear();
  }
};

TEST_F(TreeInputTest, AClickShowsTheNode) {
  tvObjects.Click(Node("Fees"));
  EXPECT_EQ(host.shown, std::vector<std::string>{"Fees"});
}

TEST_F(TreeInputTest, TheArrowsUpAndDownShowTheNodeTheyLeadTo) {
  tvObjects.Expand(Node("Billing"));
  host.shown.clear();
  tvObjects.PressKey(Key::Down);
  tvObjects.PressKey(Key::Up);
  EXPECT_EQ(host.shown, (std::vector<std::string>{"Fees", "Billing"}));
}

TEST_F(TreeInputTest, AnArrowThatLeadsNowhereShowsTheNodeAgain) {
  tvObjects.PressKey(Key::Up);
  EXPECT_EQ(host.shown, std::vector<std::string>{"Billing"});
}

TEST_F(TreeInputTest, OtherKeysShowTheNodeWhenTheyHaveMoved) {
  tvObjects.Expand(Node("Billing"));
  tvObjects.Expand(Node("Fees"));
  host.shown.clear();
  tvObjects.PressKey(Key::End);
  tvObjects.PressKey(Key::End);
  EXPECT_EQ(host.shown, std::vector<std::string>{"Late fee"});
  tvObjects.PressKey(Key::Home);
  EXPECT_EQ(host.shown, (std::vector<std::string>{"Late fee", "Billing"}));
  tvObjects.PressKey(Key::Right);
  tvObjects.PressKey(Key::Left);  // closes the rule set
  tvObjects.PressKey(Key::Left);
  EXPECT_EQ(host.shown, (std::vector<std::string>{"Late fee", "Billing", "Fees", "Billing"}));
}

TEST_F(TreeInputTest, KeysInAnEmptyTreeShowNothing) {
  tvObjects.Clear();
  tvObjects.PressKey(Key::Down);
  tvObjects.PressKey(Key::Up);
  EXPECT_TRUE(host.shown.empty());
}

TEST_F(TreeInputTest, DeleteRunsItsCommandWithAnyModifier) {
  EXPECT_TRUE(tvObjects.PressKey(Key::Delete));
  EXPECT_TRUE(tvObjects.PressKey(Key::Delete, {.shift = true, .ctrl = true}));
  EXPECT_EQ(commands.run, (std::vector<std::string>{"Delete", "Delete"}));
}

TEST_F(TreeInputTest, CtrlAAndCtrlURunTheirCommands) {
  EXPECT_TRUE(tvObjects.PressKey(Key::A, {.ctrl = true}));
  EXPECT_TRUE(tvObjects.PressKey(Key::U, {.ctrl = true}));
  EXPECT_EQ(commands.run, (std::vector<std::string>{"SelectAll", "UnselectAll"}));
}

TEST_F(TreeInputTest, TheSameKeysWithOtherModifiersRunNothing) {
  for (const ShiftState& shift :
       {ShiftState{}, ShiftState{.shift = true}, ShiftState{.shift = true, .ctrl = true}, ShiftState{.alt = true}}) {
    tvObjects.PressKey(Key::A, shift);
    tvObjects.PressKey(Key::U, shift);
  }
  for (const ShiftState& shift : {ShiftState{}, ShiftState{.ctrl = true}, ShiftState{.shift = true, .alt = true}}) {
    tvObjects.PressKey(Key::F10, shift);
  }
  EXPECT_TRUE(commands.run.empty());
  EXPECT_EQ(host.popups, 0);
}

TEST_F(TreeInputTest, ShiftF10AndTheRightButtonOpenThePopupMenu) {
  EXPECT_TRUE(tvObjects.PressKey(Key::F10, {.shift = true}));
  EXPECT_EQ(host.popups, 1);
  tvObjects.RightClick(&Node("Fees"));
  EXPECT_EQ(host.popups, 2);
  tvObjects.RightClick(nullptr);
  EXPECT_EQ(host.popups, 3);
}

TEST_F(TreeInputTest, AKeyThatAnotherObserverHasHandledStaysHandled) {
  const auto first = tvObjects.OnKeyDown.Subscribe([](KeyPress& press) { press.handled = true; });
  const auto again = tvObjects.OnKeyDown.Subscribe([](const KeyPress& press) { EXPECT_TRUE(press.handled); });
  tvObjects.PressKey(Key::Down);
}

TEST_F(TreeInputTest, AClickOnTheCheckBoxHandsTheMarkOn) {
  tvObjects.Expand(Node("Fees"));
  tvObjects.ClickCheckBox(Node("Fees"));
  EXPECT_TRUE(Node("Late fee").Checked());
  tvObjects.ClickCheckBox(Node("Fees"));
  EXPECT_FALSE(Node("Late fee").Checked());
}

TEST_F(TreeInputTest, AClickOnTheTextHandsNoMarkOn) {
  tvObjects.Expand(Node("Fees"));
  tvObjects.ClickCheckBox(Node("Late fee"));
  tvObjects.Click(Node("Fees"));
  tvObjects.RightClick(&Node("Fees"));
  EXPECT_TRUE(Node("Late fee").Checked());
  EXPECT_FALSE(Node("Base fee").Checked());
}

TEST_F(TreeInputTest, TheSpaceBarHandsTheMarkOn) {
  tvObjects.Expand(Node("Fees"));
  tvObjects.PressKey(Key::Space);
  EXPECT_TRUE(Node("Late fee").Checked());
  tvObjects.PressKey(Key::Space);
  EXPECT_FALSE(Node("Late fee").Checked());
}

TEST_F(TreeInputTest, TheSpaceBarAfterAClickOnTheCheckBoxHandsTheMarkOn) {
  tvObjects.Expand(Node("Fees"));
  tvObjects.ClickCheckBox(Node("Fees"));
  tvObjects.PressKey(Key::Space);
  EXPECT_FALSE(Node("Late fee").Checked());
}

TEST_F(TreeInputTest, TheSpaceBarAfterAClickOnTheTextHandsTheMarkOnEachTime) {
  tvObjects.Expand(Node("Fees"));
  tvObjects.Click(Node("Fees"));
  for (const bool checked : {true, false, true}) {
    tvObjects.PressKey(Key::Space);
    EXPECT_EQ(Node("Late fee").Checked(), checked);
  }
}

TEST_F(TreeInputTest, TheRightButtonHandsNoMarkOn) {
  tvObjects.Expand(Node("Fees"));
  tvObjects.Click(Node("Fees"));
  Node("Fees").SetChecked(true);
  tvObjects.RightClick(&Node("Fees"));
  EXPECT_FALSE(Node("Late fee").Checked());
}

TEST_F(TreeInputTest, APressBesideAllNodesIsPassedOver) {
  tvObjects.PressMouse({MouseButton::Left, {}, 5, 500});
  tvObjects.ReleaseMouse({MouseButton::Left, {}, 5, 500});
  EXPECT_TRUE(host.shown.empty());
  EXPECT_EQ(host.popups, 0);
}

TEST_F(TreeInputTest, TheNodeUnderTheButtonMayVanishBeforeItIsReleased) {
  tvObjects.SetHitTest([this](int, int) { return &Node("Fees"); });
  tvObjects.PressMouse({MouseButton::Left, {}, 1, 1});
  tvObjects.Remove(Node("Fees"));
  tvObjects.ReleaseMouse({MouseButton::Left, {}, 1, 1});
  EXPECT_EQ(Tree(), "Billing\n");
}

}  // namespace
}  // namespace qmrules::browser
