#include <gtest/gtest.h>

#include <QSplitter>
#include <QTest>

#include "desktop/views/qtsplitter.h"
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
