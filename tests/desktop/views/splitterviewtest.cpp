#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QSplitter>
#include <QTest>

#include "desktop/views/qtsplitter.h"
#include "desktop/views/splitterbar.h"
#include "desktop/views/viewtest.h"

namespace qmrules::desktop {
namespace {

using platform::widgets::SplitDirection;
using platform::widgets::Splitter;

class SplitterViewTest : public testing::Test {
 protected:
  SplitterViewTest() {
    splitter.Reset("Control");
    splitter.Split("Control", {"Objects", "Properties", SplitDirection::SideBySide, 250});
    splitter.Split("Properties", {"Descriptions", "FirstArea", SplitDirection::Stacked, 500});
    splitter.SetOn(true);
    view.resize(808, 408);
    Activate(view);
  }

  int Width(const QWidget* pane) const { return pane->width(); }

  Splitter splitter{"splPanes"};
  QWidget* objects = new QWidget;
  QWidget* descriptions = new QWidget;
  QWidget* first = new QWidget;
  QtSplitter view{splitter, {{"Objects", objects}, {"Descriptions", descriptions}, {"FirstArea", first}}, nullptr};
};

TEST_F(SplitterViewTest, ThePanesHaveTheirShares) {
  EXPECT_NEAR(objects->width(), 200, 3);
  EXPECT_NEAR(descriptions->width(), 600, 6);
  EXPECT_NEAR(descriptions->height(), first->height(), 2);
  view.resize(1608, 408);
  QCoreApplication::processEvents();
  EXPECT_NEAR(objects->width(), 400, 3);
}

TEST_F(SplitterViewTest, ADragTellsTheModel) {
  auto* const bars = view.findChild<QSplitter*>("Control");
  ASSERT_NE(bars, nullptr);
  QSplitterHandle* const handle = bars->handle(1);
  const QPoint from = handle->rect().center();
  QTest::mousePress(handle, Qt::LeftButton, {}, from);
  QTest::mouseMove(handle, from + QPoint(100, 0));
  QTest::mouseRelease(handle, Qt::LeftButton, {}, from + QPoint(100, 0));
  EXPECT_NEAR(splitter.Share("Control"), 375, 12);
  EXPECT_NEAR(objects->width(), 300, 10);
}

class SplitterKeysTest : public SplitterViewTest {
 protected:
  SplitterKeysTest() {
    field = new QLineEdit(objects);
    field->show();
    field->setFocus();
  }
  // The bar that has the keyboard, by the name of the pane that it divides.
  std::string Bar() const {
    const auto* const bar = qobject_cast<SplitterBar*>(QApplication::focusWidget());
    return bar == nullptr ? "" : bar->splitter()->objectName().toStdString();
  }
  void Press(int key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
  }

  QLineEdit* field = nullptr;
};

TEST_F(SplitterKeysTest, TheKeyboardGoesFromBarToBarAndBack) {
  view.GoToNextBar();
  EXPECT_EQ(Bar(), "Control");
  view.GoToNextBar();
  EXPECT_EQ(Bar(), "Properties");
  view.GoToNextBar();
  EXPECT_TRUE(field->hasFocus());
  view.GoToNextBar();
  Press(Qt::Key_Escape);
  EXPECT_TRUE(field->hasFocus());
}

TEST_F(SplitterKeysTest, TheArrowsMoveTheBarAndTellTheModel) {
  view.GoToNextBar();
  const int before = objects->width();
  Press(Qt::Key_Right);
  EXPECT_EQ(objects->width(), before + 16);
  EXPECT_NEAR(splitter.Share("Control"), 270, 2);
  Press(Qt::Key_Left, Qt::AltModifier);
  EXPECT_EQ(objects->width(), before);
  Press(Qt::Key_Up);
  EXPECT_EQ(objects->width(), before);
  view.GoToNextBar();
  const int height = descriptions->height();
  Press(Qt::Key_Down);
  EXPECT_EQ(descriptions->height(), height + 16);
  Press(Qt::Key_End);
  EXPECT_GT(splitter.Share("Properties"), 900);
  Press(Qt::Key_Home);
  EXPECT_LT(splitter.Share("Properties"), 100);
}

TEST_F(SplitterKeysTest, AHiddenBarIsPassedOver) {
  view.SetEmpty("FirstArea", true);
  view.GoToNextBar();
  EXPECT_EQ(Bar(), "Control");
  view.GoToNextBar();
  EXPECT_TRUE(field->hasFocus());
}

TEST_F(SplitterKeysTest, TheBarIsSeenAndNamed) {
  view.GoToNextBar();
  QWidget* const bar = QApplication::focusWidget();
  EXPECT_EQ(bar->accessibleName(), "Line between the left and the right pane");
  EXPECT_TRUE(QAccessible::queryAccessibleInterface(bar)->state().focusable);
  const QColor inside = bar->grab().toImage().pixelColor(bar->rect().center());
  EXPECT_EQ(inside, bar->palette().color(QPalette::Highlight));
  Press(Qt::Key_Return);
  EXPECT_NE(bar->grab().toImage().pixelColor(bar->rect().center()), inside);
  EXPECT_EQ(bar->focusPolicy(), Qt::NoFocus);
}

TEST_F(SplitterViewTest, AnotherLayoutMovesThePanes) {
  ASSERT_TRUE(splitter.SetLayoutText("Control(v500 Properties(h500 FirstArea,Descriptions),Objects)"));
  QCoreApplication::processEvents();
  EXPECT_GT(objects->mapTo(&view, QPoint()).y(), first->mapTo(&view, QPoint()).y());
  EXPECT_LT(first->mapTo(&view, QPoint()).x(), descriptions->mapTo(&view, QPoint()).x());
  EXPECT_TRUE(objects->isVisible());
  EXPECT_NEAR(objects->width(), 808, 2);
}

TEST_F(SplitterViewTest, AnEmptyPaneLeavesItsRoom) {
  view.SetEmpty("FirstArea", true);
  QCoreApplication::processEvents();
  EXPECT_FALSE(first->isVisible());
  EXPECT_NEAR(descriptions->height(), 408, 2);
  view.SetEmpty("Descriptions", true);
  EXPECT_TRUE(first->isVisible());  // both are: the room beside the tree stays
  EXPECT_NEAR(objects->width(), 200, 3);
  view.SetEmpty("FirstArea", false);
  view.SetEmpty("Descriptions", false);
  QCoreApplication::processEvents();
  EXPECT_NEAR(descriptions->height(), first->height(), 2);
}

TEST_F(SplitterViewTest, NothingIsShownUntilTheLayoutIsInForce) {
  splitter.SetOn(false);
  EXPECT_FALSE(objects->isVisible());
  splitter.SetOn(true);
  EXPECT_TRUE(objects->isVisible());
}

}  // namespace
}  // namespace qmrules::desktop
