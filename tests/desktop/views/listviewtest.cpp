#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QApplication>
#include <QSignalSpy>

#include "desktop/views/colors.h"
#include "desktop/views/qtlist.h"
#include "desktop/views/viewtest.h"

namespace qmrules::desktop {
namespace {

using platform::widgets::Color;
using platform::widgets::Key;
using platform::widgets::KeyPress;
using platform::widgets::ListRow;
using platform::widgets::ListView;

class ListViewTest : public ViewTest {
 protected:
  ListViewTest() {
    list.AddColumn("IOName", "Name");
    list.AddColumn("Kind", "Kind");
    list.SetMultiSelect(true);
    for (const char* const name : {"AMOUNT", "RATE", "TERM", "YEARS"})
      list.Add(name, name)->SetSubItem("Kind", "Input");
    Show();
  }

  QPoint At(const char* key) const {
    return view.visualRect(view.Items().index(view.Items().PlaceOf(list.Find(key)), 0)).center();
  }
  void Press(const char* key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::mouseClick(view.viewport(), Qt::LeftButton, modifiers, At(key));
  }
  std::vector<std::string> Selected() const {
    std::vector<std::string> keys;
    for (const ListRow* row : list.SelectedRows()) keys.push_back(row->Key());
    return keys;
  }
  std::vector<std::string> Shown() const {
    std::vector<std::string> keys;
    for (int row = 0; row < view.Items().rowCount(); ++row) {
      const QModelIndex index = view.Items().index(row, 0);
      if (view.selectionModel()->isSelected(index)) keys.push_back(index.data().toString().toStdString());
    }
    return keys;
  }

  using Keys = std::vector<std::string>;
  ListView& list = container.Add<ListView>("lvIOElems");
  QtList& view = Make<QtList>(list);
  QAbstractItemModelTester tester{view.model(), QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(ListViewTest, ShowsColumnsAndCells) {
  EXPECT_EQ(view.model()->columnCount(), 2);
  EXPECT_EQ(view.model()->headerData(1, Qt::Horizontal).toString(), "Kind");
  EXPECT_EQ(view.model()->index(1, 0).data().toString(), "RATE");
  EXPECT_EQ(view.model()->index(1, 1).data().toString(), "Input");
  list.SetColumnText("Kind", "Sort");
  EXPECT_EQ(view.model()->headerData(1, Qt::Horizontal).toString(), "Sort");
}

TEST_F(ListViewTest, ClicksWithCtrlAndShiftSelectAsTheModelDoes) {
  Press("AMOUNT");
  EXPECT_EQ(Shown(), Keys{"AMOUNT"});
  Press("TERM", Qt::ControlModifier);
  EXPECT_EQ(Shown(), (Keys{"AMOUNT", "TERM"}));
  Press("YEARS", Qt::ShiftModifier);
  EXPECT_EQ(Shown(), (Keys{"TERM", "YEARS"}));
  EXPECT_EQ(Selected(), Shown());
}

TEST_F(ListViewTest, WhatTheLogicSelectsIsSelected) {
  list.SelectAll(true);
  EXPECT_EQ(Shown().size(), 4U);
  list.SelectAll(false);
  EXPECT_EQ(Shown().size(), 0U);
}

TEST_F(ListViewTest, KeysReachTheModel) {
  std::vector<Key> keys;
  const auto down = list.OnKeyDown.Subscribe([&](KeyPress& press) { keys.push_back(press.key); });
  Press("AMOUNT");
  QTest::keyClick(&view, Qt::Key_Down);
  EXPECT_EQ(Shown(), Keys{"RATE"});
  QTest::keyClick(&view, Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(Shown(), (Keys{"RATE", "TERM"}));
  QTest::keyClick(&view, Qt::Key_Insert);
  QTest::keyClick(&view, Qt::Key_Return);
  QTest::keyClick(&view, Qt::Key_Delete);
  EXPECT_EQ(keys, (std::vector<Key>{Key::Down, Key::Down, Key::Insert, Key::Enter, Key::Delete}));
}

TEST_F(ListViewTest, DoubleAndRightClicksReachTheModel) {
  std::string twice;
  const auto clicked = list.OnDoubleClick.Subscribe([&](ListRow& row) { twice = row.Key(); });
  QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, At("TERM"));
  EXPECT_EQ(twice, "TERM");
  QTest::mouseClick(view.viewport(), Qt::RightButton, {}, At("RATE"));
  EXPECT_EQ(Shown(), Keys{"RATE"});
}

TEST_F(ListViewTest, AGreyRowIsGreyInThePaletteAtHand) {
  list.Find("RATE")->SetForeColor(Color::Grey);
  const auto color = view.model()->index(1, 0).data(Qt::ForegroundRole).value<QColor>();
  EXPECT_EQ(color, QApplication::palette().color(QPalette::Disabled, QPalette::Text));
  EXPECT_FALSE(view.model()->index(0, 0).data(Qt::ForegroundRole).isValid());
}

TEST_F(ListViewTest, ASingleChangeIsHandedOnAsThatChangeAlone) {
  QSignalSpy inserted(view.model(), &QAbstractItemModel::rowsInserted);
  QSignalSpy removed(view.model(), &QAbstractItemModel::rowsRemoved);
  QSignalSpy reset(view.model(), &QAbstractItemModel::modelReset);
  list.Add("ZIP", "ZIP");
  list.Remove(*list.Find("RATE"));
  EXPECT_EQ(inserted.size(), 1);
  EXPECT_EQ(removed.size(), 1);
  EXPECT_EQ(reset.size(), 0);
  list.Clear();
  EXPECT_EQ(reset.size(), 1);
  EXPECT_EQ(view.model()->rowCount(), 0);
}

TEST_F(ListViewTest, CheckBoxesTurnOver) {
  list.SetCheckBoxes(true);
  const QRect row = view.visualRect(view.Items().index(1, 0));
  const int half = view.style()->pixelMetric(QStyle::PM_IndicatorWidth) / 2;
  QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, QPoint(row.left() + half + 3, row.center().y()));
  EXPECT_TRUE(list.Row(1).Checked());
  EXPECT_EQ(view.Items().index(1, 0).data(Qt::CheckStateRole).toInt(), Qt::Checked);
  EXPECT_TRUE(Selected().empty());
}

// As a screen reader does it.
TEST_F(ListViewTest, RowsThatAreSelectedFromOutsideAreSelectedInTheModel) {
  QAccessibleTableInterface* const reader = QAccessible::queryAccessibleInterface(&view)->tableInterface();
  ASSERT_TRUE(reader->selectRow(2));
  EXPECT_TRUE(QTest::qWaitFor([&] { return Selected() == Keys{"TERM"}; }));
  ASSERT_TRUE(reader->selectRow(0));
  EXPECT_TRUE(QTest::qWaitFor([&] { return Selected() == Keys{"AMOUNT", "TERM"}; }));
  ASSERT_TRUE(reader->unselectRow(2));
  EXPECT_TRUE(QTest::qWaitFor([&] { return Selected() == Keys{"AMOUNT"}; }));
  EXPECT_EQ(Shown(), Selected());
}

TEST_F(ListViewTest, ASelectionFromOutsideLeavesOneRowWhereOnlyOneCanBe) {
  list.SetMultiSelect(false);
  Press("AMOUNT");
  std::vector<std::string> clicked;
  const auto click = list.OnRowClick.Subscribe([&](ListRow& row) { clicked.push_back(row.Key()); });
  ASSERT_TRUE(QAccessible::queryAccessibleInterface(&view)->tableInterface()->selectRow(3));
  EXPECT_TRUE(QTest::qWaitFor([&] { return Selected() == Keys{"YEARS"}; }));
  EXPECT_EQ(Shown(), Keys{"YEARS"});
  EXPECT_EQ(clicked, Keys{"YEARS"});
}

TEST_F(ListViewTest, AColumnGetsTheRoomThatItsTextNeeds) {
  list.Find("TERM")->SetSubItem("Kind", "An input of the calculation, taken from the policy");
  list.Add("ZIP", "ZIP");
  QCoreApplication::processEvents();
  EXPECT_LT(view.columnWidth(0), view.columnWidth(1));
  EXPECT_GE(view.columnWidth(0), view.fontMetrics().horizontalAdvance("AMOUNT"));
}

TEST_F(ListViewTest, AListWishesForTheWidthOfItsTexts) {
  const int before = view.sizeHint().width();
  list.Find("TERM")->SetSubItem("Kind", std::string(90, 'm'));
  EXPECT_GT(view.sizeHint().width(), before);
  EXPECT_GE(view.sizeHint().width(), view.fontMetrics().horizontalAdvance(QString(60, 'm')));
}

TEST_F(ListViewTest, TheColumnsShareTheWidthUntilTheUserDrawsOne) {
  const int spare = view.viewport()->width() - view.columnWidth(0) - view.columnWidth(1);
  EXPECT_NEAR(spare, 0, 1);
  EXPECT_GT(view.columnWidth(0), view.fontMetrics().horizontalAdvance("AMOUNT"));
  view.setColumnWidth(0, 70);
  window.resize(600, 300);
  QCoreApplication::processEvents();
  EXPECT_EQ(view.columnWidth(0), 70);
}

}  // namespace
}  // namespace qmrules::desktop
