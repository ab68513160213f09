#include "desktop/window/progresspanel.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QTest>
#include <QToolButton>

namespace qmrules::desktop {
namespace {

class ProgressPanelTest : public testing::Test {
 protected:
  ProgressPanelTest() {
    panel_.setParent(&window_);
    window_.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window_));
  }
  ~ProgressPanelTest() override { panel_.setParent(nullptr); }
  QToolButton& Cancel() { return *panel_.findChild<QToolButton*>(); }
  QProgressBar& Bar() { return *panel_.findChild<QProgressBar*>(); }
  // The user acts as soon as events are handled.
  void Soon(const std::function<void()>& action) { QMetaObject::invokeMethod(&window_, action, Qt::QueuedConnection); }
  // Long enough for the panel to look at events again.
  bool AskedAWhileLater() {
    QTest::qSleep(100);
    return panel_.Cancelled();
  }

  QWidget window_;
  ProgressPanel panel_;
};

TEST_F(ProgressPanelTest, IsHiddenWithoutWork) {
  EXPECT_FALSE(panel_.isVisible());
  EXPECT_FALSE(panel_.Cancelled());
  panel_.StartProgress("Scanning sources", 10, true);
  EXPECT_TRUE(panel_.isVisible());
  panel_.FinishProgress();
  EXPECT_FALSE(panel_.isVisible());
}

TEST_F(ProgressPanelTest, ShowsTextAndProgress) {
  panel_.StartProgress("Scanning sources", 10, false);
  EXPECT_EQ(panel_.findChild<QLabel*>()->text(), "Scanning sources");
  EXPECT_EQ(Bar().maximum(), 10);
  EXPECT_FALSE(Cancel().isVisible());
  QTest::qSleep(60);
  panel_.StartStep("PBRATE01");
  panel_.FinishStep(4);
  QTest::qSleep(60);
  panel_.FinishStep(3);
  EXPECT_EQ(panel_.findChild<QLabel*>()->text(), "PBRATE01");
  EXPECT_EQ(Bar().value(), 7);
  panel_.FinishProgress();
}

TEST_F(ProgressPanelTest, TheButtonCancels) {
  panel_.StartProgress("Scanning sources", 10, true);
  EXPECT_FALSE(panel_.Cancelled());
  Soon([this] { QTest::mouseClick(&Cancel(), Qt::LeftButton); });
  EXPECT_TRUE(AskedAWhileLater());
  EXPECT_FALSE(Cancel().isEnabled());
  panel_.FinishProgress();
  panel_.StartProgress("Scanning sources", 10, true);
  EXPECT_FALSE(panel_.Cancelled());
  EXPECT_TRUE(Cancel().isEnabled());
  panel_.FinishProgress();
}

TEST_F(ProgressPanelTest, EscapeCancels) {
  panel_.StartProgress("Scanning sources", 10, true);
  Soon([this] { QTest::keyClick(&window_, Qt::Key_Escape); });
  EXPECT_TRUE(AskedAWhileLater());
  panel_.FinishProgress();
}

TEST_F(ProgressPanelTest, WorkThatCannotBeCancelledGoesOn) {
  panel_.StartProgress("Loading", 10, false);
  Soon([this] { QTest::keyClick(&window_, Qt::Key_Escape); });
  EXPECT_FALSE(AskedAWhileLater());
  panel_.FinishProgress();
}

TEST_F(ProgressPanelTest, WorkWithinWorkLeavesTheOuterOneOnDisplay) {
  panel_.StartProgress("Outer", 10, true);
  panel_.StartProgress("Inner", 5, false);
  EXPECT_EQ(panel_.findChild<QLabel*>()->text(), "Inner");
  panel_.FinishProgress();
  EXPECT_TRUE(panel_.isVisible());
  EXPECT_EQ(panel_.findChild<QLabel*>()->text(), "Outer");
  EXPECT_TRUE(Cancel().isVisible());
  panel_.FinishProgress();
  EXPECT_FALSE(panel_.IsOpen());
}

TEST_F(ProgressPanelTest, PaintsWithoutWork) {
  int painted = 0;
  Soon([&] { ++painted; });
  EXPECT_FALSE(AskedAWhileLater());
  EXPECT_EQ(painted, 1);
  EXPECT_FALSE(panel_.isVisible());
}

TEST_F(ProgressPanelTest, WithoutWorkItPaintsOnlyNowAndThen) {
  int painted = 0;
  panel_.Cancelled();
  Soon([&] { ++painted; });
  for (int asked = 0; asked < 1000; ++asked) panel_.Cancelled();
  EXPECT_EQ(painted, 0);
  EXPECT_FALSE(AskedAWhileLater());
  EXPECT_EQ(painted, 1);
}

TEST_F(ProgressPanelTest, WhatIsTypedMeanwhileIsDropped) {
  int closed = 0;
  panel_.StartProgress("Loading", 10, false);
  Soon([&] {
    window_.close();
    ++closed;
  });
  panel_.FinishProgress();
  EXPECT_EQ(closed, 1);
  EXPECT_TRUE(window_.isVisible());
}

}  // namespace
}  // namespace qmrules::desktop
