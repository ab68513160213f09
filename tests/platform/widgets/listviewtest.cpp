#include "platform/widgets/listview.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace qmrules::platform::widgets {
namespace {

class ListViewTest : public testing::Test {
 protected:
  ListViewTest() {
    list.AddColumn("IOName", "Name");
    list.AddColumn("Kind", "Kind");
    list.AddColumn("BusinessName", "Business Name");
    for (const char* key : {"k1", "k2", "k3", "k4"}) list.Add(key, std::string("Row ") + key);
  }

  std::string Selected() const {
    std::string keys;
    for (const ListRow* row : list.SelectedRows()) keys += row->Key() + " ";
    return keys;
  }
  ListRow& Row(std::string_view key) { return *list.Find(key); }

  ListView list{"lvIOElems"};
  int selections = 0;
  Subscription selection = list.OnSelectionChanged.Subscribe([this] { ++selections; });
};

TEST_F(ListViewTest, CellsAreReachedByColumnKey) {
  ListRow& row = Row("K1");
  row.SetSubItem("kind", "Input");
  EXPECT_EQ(row.SubItem("Kind"), "Input");
  EXPECT_EQ(row.SubItem("BusinessName"), "");
  EXPECT_EQ(row.SubItem("IOName"), "Row k1");
  row.SetSubItem("IOName", "PREMIUM");
  EXPECT_EQ(row.Text(), "PREMIUM");
  EXPECT_THROW(row.SubItem("Gone"), std::out_of_range);
  EXPECT_THROW(row.SetSubItem("Gone", "x"), std::out_of_range);
}

TEST_F(ListViewTest, ColumnsHaveKeysAndTexts) {
  EXPECT_FALSE(list.AddColumn("KIND", "Again"));
  list.SetColumnText("IOName", "Rule Sets");
  EXPECT_EQ(list.Columns()[0].text, "Rule Sets");
  EXPECT_EQ(list.ColumnPlace("businessname"), 2U);
  EXPECT_THROW(list.SetColumnText("Gone", "x"), std::out_of_range);
}

TEST_F(ListViewTest, RowKeysStandOnceAndEmptyOnesOften) {
  EXPECT_EQ(list.Add("K1", "again"), nullptr);
  EXPECT_NE(list.Add("", "one"), nullptr);
  EXPECT_NE(list.Add("", "two"), nullptr);
  EXPECT_EQ(list.Count(), 6U);
  EXPECT_EQ(list.Find(""), nullptr);
  EXPECT_EQ(list.Row(5).Text(), "two");
  EXPECT_EQ(list.PlaceOf(list.Row(5)), 5U);
  EXPECT_THROW(list.Row(6), std::out_of_range);
}

TEST_F(ListViewTest, RowsHoldTagColourAndCheck) {
  std::string told;
  const auto changes = list.OnRowChanged.Subscribe([&](ListRow& row) { told += row.Key() + " "; });
  Row("k2").SetTag("COBOL#1#2#3");
  Row("k2").SetForeColor(Color::Grey);
  Row("k2").SetForeColor(Color::Grey);
  Row("k2").SetChecked(true);
  Row("k2").SetText("Other");
  EXPECT_EQ(Row("k2").Tag(), "COBOL#1#2#3");
  EXPECT_EQ(Row("k2").ForeColor(), Color::Grey);
  EXPECT_EQ(told, "k2 k2 k2 ");
}

TEST_F(ListViewTest, AClickSelectsOneRow) {
  ListRow* clicked = nullptr;
  const auto click = list.OnRowClick.Subscribe([&](ListRow& row) { clicked = &row; });
  EXPECT_TRUE(list.Click(Row("k2")));
  EXPECT_TRUE(list.Click(Row("k3"), {.ctrl = true}));
  EXPECT_EQ(Selected(), "k3 ");
  EXPECT_EQ(list.CurrentRow(), &Row("k3"));
  EXPECT_EQ(clicked, &Row("k3"));
  EXPECT_EQ(selections, 2);
}

TEST_F(ListViewTest, CtrlAndShiftSelectSeveralWhereAllowed) {
  list.SetMultiSelect(true);
  list.Click(Row("k1"));
  list.Click(Row("k3"), {.ctrl = true});
  EXPECT_EQ(Selected(), "k1 k3 ");
  list.Click(Row("k1"), {.ctrl = true});
  EXPECT_EQ(Selected(), "k3 ");
  list.Click(Row("k4"));
  list.Click(Row("k2"), {.shift = true});
  EXPECT_EQ(Selected(), "k2 k3 k4 ");
  list.Click(Row("k3"), {.shift = true});
  EXPECT_EQ(Selected(), "k3 k4 ");
  EXPECT_EQ(list.CurrentRow(), &Row("k3"));
}

TEST_F(ListViewTest, TheLogicSelectsOneRowOrSeveral) {
  Row("k1").SetSelected(true);
  Row("k2").SetSelected(true);
  EXPECT_EQ(Selected(), "k2 ");
  list.SelectAll(true);
  EXPECT_EQ(Selected(), "k2 ");
  list.SetMultiSelect(true);
  list.SelectAll(true);
  EXPECT_EQ(Selected(), "k1 k2 k3 k4 ");
  list.SelectAll(false);
  EXPECT_EQ(Selected(), "");
  Row("k1").SetSelected(true);
  Row("k4").SetSelected(true);
  EXPECT_EQ(Selected(), "k1 k4 ");
  list.SetCurrentRow(nullptr);
  EXPECT_EQ(Selected(), "");
  EXPECT_EQ(list.CurrentRow(), nullptr);
}

TEST_F(ListViewTest, TheCurrentRowFallsToTheNextThenToThePrevious) {
  list.SetCurrentRow(&Row("k3"));
  list.Remove(Row("k3"));
  EXPECT_EQ(list.CurrentRow(), &Row("k4"));
  EXPECT_EQ(Selected(), "k4 ");
  list.Remove(Row("k4"));
  EXPECT_EQ(list.CurrentRow(), &Row("k2"));
  list.Remove(Row("k2"));
  list.Remove(Row("k1"));
  EXPECT_EQ(list.CurrentRow(), nullptr);
  EXPECT_EQ(list.Count(), 0U);
}

TEST_F(ListViewTest, InAListOfSeveralTheNewCurrentRowIsNotSelected) {
  list.SetMultiSelect(true);
  list.SetCurrentRow(&Row("k1"));
  list.Remove(Row("k1"));
  EXPECT_EQ(list.CurrentRow(), &Row("k2"));
  EXPECT_EQ(Selected(), "");
}

TEST_F(ListViewTest, ARemovedKeyIsFree) {
  list.Remove(Row("k1"));
  EXPECT_EQ(list.Find("k1"), nullptr);
  EXPECT_NE(list.Add("k1", "again"), nullptr);
  EXPECT_EQ(list.Row(3).Key(), "k1");
}

TEST_F(ListViewTest, RowsCanBeRemovedFromTheLastToTheFirst) {
  for (std::size_t place = list.Count(); place-- > 0;) {
    if (list.Row(place).Key() != "k2") list.Remove(list.Row(place));
  }
  EXPECT_EQ(list.Count(), 1U);
  EXPECT_EQ(list.Row(0).Key(), "k2");
}

TEST_F(ListViewTest, ClearTellsAViewOnce) {
  int removed = 0;
  const auto removal = list.OnRowsRemoved.Subscribe([&] { ++removed; });
  list.SetCurrentRow(&Row("k1"));
  list.Clear();
  EXPECT_EQ(list.Count(), 0U);
  EXPECT_EQ(list.CurrentRow(), nullptr);
  EXPECT_EQ(removed, 1);
  EXPECT_EQ(selections, 2);
}

TEST_F(ListViewTest, ADoubleClickIsToldBehindTheClick) {
  std::string order;
  const auto click = list.OnRowClick.Subscribe([&](ListRow&) { order += "click "; });
  const auto doubleClick = list.OnDoubleClick.Subscribe([&](ListRow& row) { order += "double " + row.Key(); });
  EXPECT_TRUE(list.DoubleClick(Row("k2")));
  EXPECT_EQ(order, "click double k2");
}

TEST_F(ListViewTest, TheRightButtonKeepsASelectionThatItIsPressedOn) {
  list.SetMultiSelect(true);
  list.Click(Row("k1"));
  list.Click(Row("k2"), {.ctrl = true});
  int presses = 0;
  const auto down = list.OnMouseDown.Subscribe([&](const MousePress& press) {
    EXPECT_EQ(press.button, MouseButton::Right);
    ++presses;
  });
  EXPECT_TRUE(list.RightClick(&Row("k1")));
  EXPECT_EQ(Selected(), "k1 k2 ");
  EXPECT_TRUE(list.RightClick(&Row("k4")));
  EXPECT_EQ(Selected(), "k4 ");
  EXPECT_TRUE(list.RightClick(nullptr));
  EXPECT_EQ(presses, 3);
}

TEST_F(ListViewTest, ChecksAreTheUsersWhereThereAreBoxes) {
  std::string told;
  const auto check = list.OnRowCheck.Subscribe([&](ListRow& row) { told += row.Key(); });
  EXPECT_FALSE(list.ClickCheckBox(Row("k1")));
  list.SetCheckBoxes(true);
  EXPECT_TRUE(list.ClickCheckBox(Row("k1")));
  EXPECT_TRUE(Row("k1").Checked());
  list.SetCurrentRow(&Row("k2"));
  EXPECT_TRUE(list.PressKey(Key::Space));
  EXPECT_TRUE(Row("k2").Checked());
  EXPECT_EQ(told, "k1k2");
}

TEST_F(ListViewTest, ArrowKeysMoveTheCurrentRow) {
  ListRow* shown = nullptr;
  const auto sight = list.OnEnsureVisible.Subscribe([&](ListRow& row) { shown = &row; });
  list.PressKey(Key::Down);
  EXPECT_EQ(list.CurrentRow(), &Row("k1"));
  list.PressKey(Key::Down);
  EXPECT_EQ(shown, &Row("k2"));
  list.PressKey(Key::End);
  EXPECT_FALSE(list.PressKey(Key::Down));
  EXPECT_EQ(Selected(), "k4 ");
  list.PressKey(Key::Up);
  list.PressKey(Key::Home);
  EXPECT_FALSE(list.PressKey(Key::Up));
  EXPECT_EQ(Selected(), "k1 ");
}

TEST_F(ListViewTest, ShiftAndArrowsExtendTheSelection) {
  list.SetMultiSelect(true);
  list.Click(Row("k2"));
  list.PressKey(Key::Down, {.shift = true});
  list.PressKey(Key::Down, {.shift = true});
  EXPECT_EQ(Selected(), "k2 k3 k4 ");
  list.PressKey(Key::Up, {.shift = true});
  EXPECT_EQ(Selected(), "k2 k3 ");
}

TEST_F(ListViewTest, ADisabledListTakesNoClick) {
  list.SetEnabled(false);
  EXPECT_FALSE(list.Click(Row("k1")));
  EXPECT_FALSE(list.DoubleClick(Row("k1")));
  EXPECT_FALSE(list.RightClick(&Row("k1")));
  EXPECT_EQ(Selected(), "");
}

}  // namespace
}  // namespace qmrules::platform::widgets
