#include <gtest/gtest.h>

#include <QAction>

#include "desktop/views/qtmenu.h"

namespace qmrules::desktop {
namespace {

using platform::widgets::Menu;

class MenuViewTest : public testing::Test {
 protected:
  MenuViewTest() {
    menu.Add("mnuCreateRule", "Create Rule ...");
    menu.AddSeparator();
    menu.Add("mnuDelete", "&Delete");
  }
  Menu menu{"mnuPopup"};
};

TEST_F(MenuViewTest, ItemsStandInTheirOrderWithTheirStates) {
  menu.Item("mnuDelete").SetEnabled(false);
  const QtMenu view(menu);
  ASSERT_EQ(view.actions().size(), 3);
  EXPECT_EQ(view.actions()[0]->text(), "Create Rule ...");
  EXPECT_TRUE(view.actions()[1]->isSeparator());
  EXPECT_EQ(view.actions()[1]->text(), "");
  EXPECT_FALSE(view.actions()[2]->isEnabled());
  menu.Item("mnuDelete").SetChecked(true);
  menu.Item("mnuCreateRule").SetVisible(false);
  EXPECT_TRUE(view.actions()[2]->isChecked());
  EXPECT_FALSE(view.actions()[0]->isVisible());
}

TEST_F(MenuViewTest, ChoosingAnEntryClicksItsItem) {
  int clicks = 0;
  const auto click = menu.Item("mnuDelete").OnClick.Subscribe([&] { ++clicks; });
  const QtMenu view(menu);
  view.actions()[2]->trigger();
  EXPECT_EQ(clicks, 1);
}

TEST_F(MenuViewTest, ItemsMayComeAndGo) {
  const QtMenu view(menu);
  menu.Clear();
  EXPECT_TRUE(view.actions().isEmpty());
  int clicks = 0;
  menu.Add("mnuNew", "New");
  const auto click = menu.Item("mnuNew").OnClick.Subscribe([&] { ++clicks; });
  ASSERT_EQ(view.actions().size(), 1);
  view.actions()[0]->trigger();
  EXPECT_EQ(clicks, 1);
}

}  // namespace
}  // namespace qmrules::desktop
