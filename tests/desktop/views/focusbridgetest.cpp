#include "desktop/views/focusbridge.h"

#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include "desktop/views/qtbuttons.h"
#include "desktop/views/qtlabel.h"
#include "desktop/views/qttextbox.h"
#include "desktop/views/viewtest.h"
#include "platform/widgets/button.h"
#include "platform/widgets/label.h"

namespace qmrules::desktop {
namespace {

using platform::widgets::Button;
using platform::widgets::FocusLoss;
using platform::widgets::Label;
using platform::widgets::TextBox;

class FocusBridgeTest : public ViewTest {
 protected:
  FocusBridgeTest() {
    container.Get<Label>("lblFirst").SetCaption("&First:");
    label.setBuddy(&firstView);
    button.SetCaption("&Go");
    column.addWidget(&outside);
    Show();
    first.SetFocus();
  }

  Label& firstLabel = container.Add<Label>("lblFirst");
  TextBox& first = container.Add<TextBox>("txtFirst");
  TextBox& second = container.Add<TextBox>("txtSecond");
  Button& button = container.Add<Button>("cmdGo");
  QtLabel& label = Make<QtLabel>(firstLabel);
  QtTextBox& firstView = Make<QtTextBox>(first);
  QtTextBox& secondView = Make<QtTextBox>(second);
  QtButton& buttonView = Make<QtButton>(button);
  QLineEdit& outside = *new QLineEdit(&window);
};

TEST_F(FocusBridgeTest, TheModelsFocusIsQts) {
  EXPECT_TRUE(firstView.hasFocus());
  second.SetFocus();
  EXPECT_TRUE(secondView.hasFocus());
}

TEST_F(FocusBridgeTest, QtsFocusIsTheModels) {
  QTest::keyClick(&firstView, Qt::Key_Tab);
  EXPECT_TRUE(second.HasFocus());
  QTest::keyClick(&secondView, Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_TRUE(first.HasFocus());
  QTest::mouseClick(&secondView, Qt::LeftButton);
  EXPECT_TRUE(second.HasFocus());
}

TEST_F(FocusBridgeTest, AWidgetThatKeepsTheFocusGetsQtsBack) {
  int refusals = 0;
  const auto lost = first.OnLostFocus.Subscribe([&](FocusLoss& loss) {
    ++refusals;
    loss.cancel = true;
  });
  QTest::keyClick(&firstView, Qt::Key_Tab);
  EXPECT_TRUE(firstView.hasFocus());
  EXPECT_EQ(refusals, 1);
  QTest::mouseClick(&secondView, Qt::LeftButton);
  EXPECT_TRUE(firstView.hasFocus());
  EXPECT_EQ(refusals, 2);
}

TEST_F(FocusBridgeTest, APressBehindARefusalDoesNothing) {
  int refusals = 0;
  int clicks = 0;
  const auto lost = first.OnLostFocus.Subscribe([&](FocusLoss& loss) {
    ++refusals;
    loss.cancel = true;
  });
  const auto click = button.OnClick.Subscribe([&] { ++clicks; });
  QTest::mouseClick(&buttonView, Qt::LeftButton);
  EXPECT_EQ(clicks, 0);
  EXPECT_EQ(refusals, 1);
}

TEST_F(FocusBridgeTest, AMessageDuringTheRefusalLeavesTheFocusAtTheRefuser) {
  const auto lost = first.OnLostFocus.Subscribe([&](FocusLoss& loss) {
    Later([] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return); });
    QMessageBox::warning(&window, "caption", "Name cannot be empty.");
    loss.cancel = true;
  });
  QTest::keyClick(&firstView, Qt::Key_Tab);
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  EXPECT_TRUE(firstView.hasFocus());
  EXPECT_TRUE(first.HasFocus());
}

TEST_F(FocusBridgeTest, TheFocusLeavesTheContainerAndComesBack) {
  int lost = 0;
  int entered = 0;
  const auto loss = first.OnLostFocus.Subscribe([&](FocusLoss& to) {
    ++lost;
    EXPECT_EQ(to.next, nullptr);
  });
  QWidget other;
  QVBoxLayout around(&other);
  const auto enter = focus.OnEntered.Subscribe([&] { ++entered; });
  outside.setParent(nullptr);
  outside.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&outside));
  outside.setFocus();
  EXPECT_EQ(lost, 1);
  EXPECT_EQ(container.ActiveWidget(), nullptr);
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  EXPECT_TRUE(first.HasFocus());
  EXPECT_EQ(entered, 1);
  delete &outside;
}

TEST_F(FocusBridgeTest, AnObserverMaySendTheFocusElsewhere) {
  const auto lost = first.OnLostFocus.Subscribe([&](FocusLoss&) { button.SetFocus(); });
  QTest::keyClick(&firstView, Qt::Key_Tab);
  EXPECT_TRUE(buttonView.hasFocus());
  EXPECT_TRUE(button.HasFocus());
}

TEST_F(FocusBridgeTest, AMnemonicReachesItsWidgetAndIsNotTyped) {
  second.SetFocus();
  QTest::keyClick(&secondView, Qt::Key_F, Qt::AltModifier);
  EXPECT_TRUE(first.HasFocus());
  EXPECT_TRUE(firstView.hasFocus());
  EXPECT_EQ(second.Text(), "");
  int clicks = 0;
  const auto click = button.OnClick.Subscribe([&] { ++clicks; });
  QTest::keyClick(&firstView, Qt::Key_G, Qt::AltModifier);
  EXPECT_EQ(clicks, 1);
}

TEST_F(FocusBridgeTest, AWidgetWithoutTabStopIsPassedOver) {
  second.SetTabStop(false);
  QTest::keyClick(&firstView, Qt::Key_Tab);
  EXPECT_TRUE(button.HasFocus());
  QTest::mouseClick(&secondView, Qt::LeftButton);
  EXPECT_TRUE(second.HasFocus());
}

// So it is where no window manager makes windows active.
TEST_F(FocusBridgeTest, APressInAWindowThatIsNotActiveCounts) {
  QWidget other;
  Activate(other);
  ASSERT_FALSE(window.isActiveWindow());
  int clicks = 0;
  const auto click = button.OnClick.Subscribe([&] { ++clicks; });
  QTest::mouseClick(&buttonView, Qt::LeftButton);
  EXPECT_EQ(clicks, 1);
  EXPECT_TRUE(button.HasFocus());
}

TEST_F(FocusBridgeTest, AModelThatLeavesTakesItsViewWithIt) {
  const QPointer<QWidget> view = &secondView;
  container.Remove(second);
  EXPECT_TRUE(view.isNull());
}

TEST_F(FocusBridgeTest, AViewMayGoBeforeItsModel) {
  delete &secondView;
  second.SetText("still here");
  EXPECT_EQ(focus.ViewOf(second), nullptr);
  QTest::keyClick(&firstView, Qt::Key_Tab);
  EXPECT_TRUE(button.HasFocus());
}

}  // namespace
}  // namespace qmrules::desktop
