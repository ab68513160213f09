#include <QApplication>
#include <QClipboard>
#include <QScrollBar>

#include "desktop/source/shownsource.h"

namespace qmrules::desktop {
namespace {

class RowSelectionTest : public ShownSource {
 protected:
  // "row count" of the viewer.
  std::string Rows() const { return std::to_string(viewer.Row()) + " " + std::to_string(viewer.SelectedRowsCount()); }
  void ClickMargin(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::mouseClick(Margin(), Qt::LeftButton, modifiers, MiddleOf(row));
  }
};

TEST_F(RowSelectionTest, AClickOnARowNumberSelectsTheRow) {
  ClickMargin(4);
  EXPECT_EQ(Rows(), "4 1");
  EXPECT_EQ(Place(), "Row 4 selected");
}

TEST_F(RowSelectionTest, ShiftAndClickExtendDownAndUpFromTheFirstRowClicked) {
  ClickMargin(6);
  ClickMargin(9, Qt::ShiftModifier);
  EXPECT_EQ(Rows(), "6 4");
  ClickMargin(3, Qt::ShiftModifier);
  EXPECT_EQ(Rows(), "6 -4");
  EXPECT_EQ(viewer.Selected()->FromRow, 3);
  EXPECT_EQ(viewer.Selected()->ToRow, 6);
}

TEST_F(RowSelectionTest, DraggingAlongTheNumbersSelectsInBothDirections) {
  QTest::mousePress(Margin(), Qt::LeftButton, {}, MiddleOf(6));
  QTest::mouseMove(Margin(), MiddleOf(8));
  EXPECT_EQ(Rows(), "6 3");
  QTest::mouseMove(Margin(), MiddleOf(2));
  EXPECT_EQ(Rows(), "6 -5");
  QTest::mouseRelease(Margin(), Qt::LeftButton, {}, MiddleOf(2));
  EXPECT_EQ(Rows(), "6 -5");
}

TEST_F(RowSelectionTest, DraggingPastTheEdgeScrollsOn) {
  QTest::mousePress(Margin(), Qt::LeftButton, {}, MiddleOf(6));
  QTest::mouseMove(Margin(), QPoint(5, Margin()->height() + 20));
  EXPECT_TRUE(QTest::qWaitFor([this] { return viewer.SelectedRowsCount() >= 40; }, 20000));
  QTest::mouseRelease(Margin(), Qt::LeftButton, {}, QPoint(5, Margin()->height() + 20));
  EXPECT_EQ(viewer.Row(), 6);
  EXPECT_FALSE(IsOnScreen(6));
}

TEST_F(RowSelectionTest, ShiftWithDownSelectsTheCaretsRowFirstAndThenMore) {
  viewer.SetRow(5);
  Press(Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(Rows(), "5 1");
  Press(Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(Rows(), "5 2");
  Press(Qt::Key_Up, Qt::ShiftModifier);
  Press(Qt::Key_Up, Qt::ShiftModifier);
  EXPECT_EQ(Rows(), "5 -2");
}

TEST_F(RowSelectionTest, ShiftWithUpStopsAtTheFirstRow) {
  viewer.SetRow(2);
  for (int presses = 0; presses < 5; ++presses) Press(Qt::Key_Up, Qt::ShiftModifier);
  EXPECT_EQ(Rows(), "2 -2");
}

TEST_F(RowSelectionTest, ShiftWithPageDownSelectsAPageOfRows) {
  Press(Qt::Key_PageDown, Qt::ShiftModifier);
  EXPECT_EQ(viewer.Row(), 1);
  const int page = viewer.SelectedRowsCount();
  EXPECT_GT(page, 5);
  Press(Qt::Key_PageUp, Qt::ShiftModifier);
  EXPECT_EQ(viewer.SelectedRowsCount(), 1);
}

TEST_F(RowSelectionTest, SelectAllTakesEveryRow) {
  Press(Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(Rows(), "1 100");
}

TEST_F(RowSelectionTest, AnArrowKeyDropsTheRows) {
  viewer.SetRow(5);
  viewer.SetSelectedRowsCount(3);
  Press(Qt::Key_Down);
  EXPECT_EQ(Rows(), "8 0");
  EXPECT_EQ(viewer.Selected()->FromCol, 0);
}

TEST_F(RowSelectionTest, ShiftWithRightSelectsAPieceOfText) {
  viewer.SetRow(5);
  Press(Qt::Key_Right);
  Press(Qt::Key_Right, Qt::ShiftModifier);
  EXPECT_EQ(Rows(), "5 0");
  EXPECT_EQ(viewer.Selected()->FromCol, 2);
  EXPECT_EQ(viewer.Selected()->ToRow, 5);
  EXPECT_EQ(Place(), "Text in row 5 selected");
}

TEST_F(RowSelectionTest, APieceThatEndsBeforeARowDoesNotTakeThatRow) {
  viewer.SetRow(5);
  Press(Qt::Key_Right);
  QTextCursor cursor = text->textCursor();
  cursor.setPosition(text->document()->findBlockByNumber(6).position(), QTextCursor::KeepAnchor);
  text->setTextCursor(cursor);
  EXPECT_EQ(viewer.Selected()->FromRow, 5);
  EXPECT_EQ(viewer.Selected()->ToRow, 6);
}

TEST_F(RowSelectionTest, APieceOfWholeRowsCountsAsRows) {
  viewer.SetRow(5);
  Press(Qt::Key_End, Qt::ShiftModifier);
  EXPECT_EQ(Rows(), "5 1");
  Press(Qt::Key_End);
  Press(Qt::Key_Home, Qt::ShiftModifier);
  EXPECT_EQ(Rows(), "5 -1");
}

TEST_F(RowSelectionTest, DraggingInTheTextSelectsAPiece) {
  const int letter = text->fontMetrics().horizontalAdvance(QLatin1Char('R'));
  QTest::mousePress(text->viewport(), Qt::LeftButton, {}, MiddleOf(3, 4 + letter * 2));
  QTest::mouseMove(text->viewport(), MiddleOf(5, 4 + letter * 2));
  QTest::mouseRelease(text->viewport(), Qt::LeftButton, {}, MiddleOf(5, 4 + letter * 2));
  EXPECT_EQ(viewer.Selected()->FromRow, 3);
  EXPECT_EQ(viewer.Selected()->FromCol, 3);
  EXPECT_EQ(viewer.Selected()->ToRow, 5);
  EXPECT_EQ(viewer.SelectedRowsCount(), 0);
}

TEST_F(RowSelectionTest, AnEmptyRowCanBeSelectedAndLeft) {
  Show("A\n\nC\n");
  ClickMargin(2);
  EXPECT_EQ(Rows(), "2 1");
  QTest::mouseClick(text->viewport(), Qt::LeftButton, {}, MiddleOf(2));
  EXPECT_EQ(Rows(), "2 0");
}

TEST_F(RowSelectionTest, RowsThatTheLogicSelectsComeOnScreen) {
  EXPECT_FALSE(IsOnScreen(80));
  viewer.SetRow(80);
  viewer.SetSelectedRowsCount(3);
  EXPECT_TRUE(IsOnScreen(80));
  EXPECT_TRUE(IsOnScreen(82));
  EXPECT_EQ(text->textCursor().selectedText().toStdString(), "ROW 80\u2029ROW 81\u2029ROW 82");
}

TEST_F(RowSelectionTest, DroppingTheRowsDoesNotScroll) {
  viewer.SetRow(80);
  viewer.SetSelectedRowsCount(3);
  text->verticalScrollBar()->setValue(0);
  viewer.SetSelectedRowsCount(0);
  EXPECT_TRUE(IsOnScreen(1));
  viewer.SetRow(80);
  EXPECT_TRUE(IsOnScreen(80));
}

TEST_F(RowSelectionTest, RowsBehindTheTextAreKeptAndNotShown) {
  viewer.SetRow(99);
  viewer.SetSelectedRowsCount(5);
  EXPECT_EQ(text->textCursor().selectedText().toStdString(), "ROW 99\u2029ROW 100");
  viewer.SetRow(200);
  viewer.SetSelectedRowsCount(2);
  EXPECT_FALSE(text->textCursor().hasSelection());
  EXPECT_EQ(Rows(), "200 2");
  Press(Qt::Key_Up, Qt::ShiftModifier);
  EXPECT_EQ(Rows(), "100 -2");
}

TEST_F(RowSelectionTest, CopiedRowsEndWithALineEnd) {
  viewer.SetRow(3);
  viewer.SetSelectedRowsCount(2);
  Trigger("copy");
  EXPECT_EQ(QApplication::clipboard()->text().toStdString(), "ROW 3\nROW 4\n");
}

TEST_F(RowSelectionTest, TheTextCannotBeChanged) {
  viewer.SetRow(3);
  viewer.SetSelectedRowsCount(2);
  Press(Qt::Key_X);
  Press(Qt::Key_Delete);
  Press(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(text->toPlainText().toStdString() + "\n", test::NumberedRows(100));
}

TEST_F(RowSelectionTest, EachChangeIsToldOnce) {
  int changes = 0;
  const auto told = viewer.OnSelectionChanged([&] { ++changes; });
  ClickMargin(4);
  EXPECT_EQ(changes, 1);
  Press(Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(changes, 2);
  Press(Qt::Key_Up);
  EXPECT_EQ(changes, 3);
}

TEST_F(RowSelectionTest, WhatAnObserverChangesFurtherIsShown) {
  const auto told = viewer.OnSelectionChanged([this] {
    if (viewer.Row() == 4) viewer.SelectRows(10, 2);
  });
  ClickMargin(4);
  EXPECT_EQ(Rows(), "10 2");
  EXPECT_EQ(text->textCursor().selectedText().toStdString(), "ROW 10\u2029ROW 11");
}

}  // namespace
}  // namespace qmrules::desktop
