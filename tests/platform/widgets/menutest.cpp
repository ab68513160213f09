#include "platform/widgets/menu.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace qmrules::platform::widgets {
namespace {

TEST(Menu, ItemsStandInTheirOrder) {
  Menu menu("mnuPopup");
  menu.Add("mnuCreateRule", "Create Rule...");
  menu.AddSeparator();
  menu.Add("mnuDelete", "Delete");
  ASSERT_EQ(menu.Items().size(), 3U);
  EXPECT_EQ(menu.Items()[0]->Caption(), "Create Rule...");
  EXPECT_TRUE(menu.Items()[1]->IsSeparator());
  EXPECT_EQ(menu.Items()[2]->Name(), "mnuDelete");
}

TEST(Menu, ItemsOfAControlArrayAreToldApartByIndex) {
  Menu menu("mnuAttrs");
  menu.Add("mnuAttr", "Name", 0);
  menu.Add("mnuAttr", "Description", 1);
  EXPECT_EQ(menu.Item("mnuAttr", 1).Caption(), "Description");
  EXPECT_EQ(menu.Item("mnuAttr", 1).Index(), 1);
  EXPECT_THROW(menu.Add("mnuAttr", "Again", 1), std::invalid_argument);
  EXPECT_THROW(menu.Item("mnuAttr", 2), std::out_of_range);
}

TEST(Menu, ClearTakesOutAllItems) {
  Menu menu("mnuAttrs");
  menu.Add("mnuAttr", "Name", 0);
  int told = 0;
  const auto changes = menu.OnChanged.Subscribe([&] { ++told; });
  menu.Clear();
  EXPECT_TRUE(menu.Items().empty());
  EXPECT_EQ(told, 1);
}

TEST(MenuItem, AClickIsToldWhereItCanBeChosen) {
  Menu menu("mnuPopup");
  MenuItem& item = menu.Add("mnuDelete", "Delete");
  int clicks = 0;
  const auto click = item.OnClick.Subscribe([&] { ++clicks; });
  EXPECT_TRUE(item.Click());
  item.SetEnabled(false);
  EXPECT_FALSE(item.Click());
  item.SetEnabled(true);
  item.SetVisible(false);
  EXPECT_FALSE(item.Click());
  EXPECT_EQ(clicks, 1);
}

TEST(MenuItem, AClickDoesNotTurnTheCheck) {
  Menu menu("mnuPopup");
  MenuItem& item = menu.Add("mnuEmphasize", "Emphasize");
  item.Click();
  EXPECT_FALSE(item.Checked());
  int told = 0;
  const auto changes = menu.OnChanged.Subscribe([&] { ++told; });
  item.SetChecked(true);
  item.SetChecked(true);
  EXPECT_TRUE(item.Checked());
  EXPECT_EQ(told, 1);
}

TEST(MenuItem, ASeparatorCannotBeChosen) {
  Menu menu("mnuPopup");
  menu.AddSeparator();
  EXPECT_FALSE(menu.Items().front()->Click());
}

}  // namespace
}  // namespace qmrules::platform::widgets
