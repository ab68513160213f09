#include "platform/widgets/widget.h"

#include <gtest/gtest.h>

#include "platform/widgets/button.h"
#include "platform/widgets/frame.h"
#include "platform/widgets/label.h"
#include "platform/widgets/textbox.h"

namespace qmrules::platform::widgets {
namespace {

TEST(Widget, BeginsVisibleEnabledAndInTabOrder) {
  const TextBox box("txtAttrs", 3);
  EXPECT_EQ(box.Name(), "txtAttrs");
  EXPECT_EQ(box.Index(), 3);
  EXPECT_TRUE(box.Visible());
  EXPECT_TRUE(box.Enabled());
  EXPECT_TRUE(box.TabStop());
  EXPECT_EQ(box.ForeColor(), Color::Normal);
  EXPECT_EQ(box.BackColor(), Color::Normal);
}

TEST(Widget, AChangeOfAShownPropertyIsToldOnce) {
  TextBox box("txtName");
  int told = 0;
  const auto changes = box.OnChanged.Subscribe([&] { ++told; });
  box.SetForeColor(Color::Red);
  box.SetForeColor(Color::Red);
  EXPECT_EQ(told, 1);
  box.SetToolTipText("C:\\X");
  box.SetVisible(false);
  box.SetEnabled(false);
  box.SetBackColor(Color::Grey);
  EXPECT_EQ(told, 5);
  EXPECT_EQ(box.ToolTipText(), "C:\\X");
  EXPECT_EQ(box.ForeColor(), Color::Red);
  EXPECT_EQ(box.BackColor(), Color::Grey);
}

TEST(Widget, TheTagIsNotShown) {
  TextBox box("txtName");
  int told = 0;
  const auto changes = box.OnChanged.Subscribe([&] { ++told; });
  box.SetTag("17");
  EXPECT_EQ(box.Tag(), "17");
  EXPECT_EQ(told, 0);
}

TEST(Widget, AHiddenOrDisabledWidgetTakesNoUserAction) {
  Button button("cmdOK");
  int clicks = 0;
  const auto subscription = button.OnClick.Subscribe([&] { ++clicks; });
  button.SetEnabled(false);
  EXPECT_FALSE(button.Press());
  EXPECT_FALSE(button.PressKey(Key::Enter));
  button.SetEnabled(true);
  button.SetVisible(false);
  EXPECT_FALSE(button.Press());
  EXPECT_EQ(clicks, 0);
  button.SetVisible(true);
  EXPECT_TRUE(button.Press());
  EXPECT_EQ(clicks, 1);
}

TEST(Widget, AFrameHidesAndDisablesWhatItEncloses) {
  Frame outer("frLocation");
  Frame inner("pbAttrs");
  Button button("cmdOK");
  inner.SetEnclosing(&outer);
  button.SetEnclosing(&inner);
  EXPECT_TRUE(button.IsUsable());
  outer.SetEnabled(false);
  EXPECT_FALSE(button.Press());
  outer.SetEnabled(true);
  inner.SetVisible(false);
  EXPECT_FALSE(button.Press());
  inner.SetVisible(true);
  EXPECT_TRUE(button.Press());
}

TEST(Widget, AKeyIsToldDownThenUp) {
  TextBox box("txtName");
  std::string order;
  const auto down = box.OnKeyDown.Subscribe([&](KeyPress& press) {
    order += press.key == Key::S ? "down " : "? ";
    EXPECT_TRUE(press.shift.ctrl);
  });
  const auto up = box.OnKeyUp.Subscribe([&](KeyPress&) { order += "up"; });
  EXPECT_FALSE(box.PressKey(Key::S, {.ctrl = true}));
  EXPECT_EQ(order, "down up");
}

TEST(Widget, AHandledKeyKeepsTheWidgetsOwnActionFromRunning) {
  TextBox box("txtName");
  box.SetText("AB");
  const auto down = box.OnKeyDown.Subscribe([](KeyPress& press) { press.handled = press.key == Key::Delete; });
  EXPECT_TRUE(box.PressKey(Key::Delete));
  EXPECT_EQ(box.Text(), "AB");
}

TEST(Widget, AMousePressIsToldWithItsPlace) {
  TextBox box("txtName");
  MousePress told;
  int released = 0;
  const auto down = box.OnMouseDown.Subscribe([&](const MousePress& press) { told = press; });
  const auto up = box.OnMouseUp.Subscribe([&](const MousePress&) { ++released; });
  EXPECT_TRUE(box.PressMouse({MouseButton::Right, {.shift = true}, 7, 9}));
  box.ReleaseMouse({MouseButton::Right, {}, 7, 9});
  EXPECT_EQ(told.button, MouseButton::Right);
  EXPECT_TRUE(told.shift.shift);
  EXPECT_EQ(told.x, 7);
  EXPECT_EQ(told.y, 9);
  EXPECT_EQ(released, 1);
}

TEST(Widget, WithoutAContainerThereIsNoFocusToTake) {
  TextBox box("txtName");
  EXPECT_FALSE(box.SetFocus());
  EXPECT_FALSE(box.HasFocus());
}

TEST(Widget, ALabelPassesItsMnemonicOn) {
  Label label("lblName");
  label.SetCaption("&Name:");
  EXPECT_EQ(label.PressMnemonic("N"), MnemonicEffect::PassOn);
  EXPECT_EQ(label.PressMnemonic("x"), MnemonicEffect::None);
  EXPECT_FALSE(label.AcceptsFocus());
}

}  // namespace
}  // namespace qmrules::platform::widgets
