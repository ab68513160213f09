#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QToolButton>

#include "desktop/icons/iconset.h"
#include "desktop/views/qttextbox.h"
#include "desktop/views/qttoolbar.h"
#include "desktop/views/viewtest.h"

namespace qmrules::desktop {
namespace {

using platform::widgets::ImageList;
using platform::widgets::TextBox;
using platform::widgets::ToolBar;

class ToolBarViewTest : public ViewTest {
 protected:
  ToolBarViewTest() {
    IconSet(IconSet::Background::Light).Fill(images);
    auto& create = bar.Add("Create", "Create");
    create.SetToolTipText("Create Rule");
    create.AddMenu("Function", "Create Business Function ...");
    create.AddMenu("Rule", "Create Rule ...");
    bar.AddSeparator();
    bar.Add("Delete", "Delete").SetToolTipText("Delete");
    bar.Add("Emphasize", "Emphasize").SetToolTipText("Emphasize");
    column.addWidget(&view);
    field = &Make<QtTextBox>(text);
    Show();
  }

  QToolButton& Button(const char* key) const {
    for (QAction* const action : view.actions()) {
      if (action->objectName() == key) return dynamic_cast<QToolButton&>(*view.widgetForAction(action));
    }
    throw std::out_of_range(key);
  }

  ImageList images;
  ToolBar& bar = container.Add<ToolBar>("tbToolbar");
  TextBox& text = container.Add<TextBox>("txtName");
  QtToolBar& view = *new QtToolBar(focus, bar, images, &window);
  QtTextBox* field = nullptr;
  std::vector<std::string> clicked;
  platform::Subscription click =
      bar.OnButtonClick.Subscribe([this](const std::string& key) { clicked.push_back(key); });
  platform::Subscription menuClick = bar.OnButtonMenuClick.Subscribe(
      [this](const std::string& key, const std::string& entry) { clicked.push_back(key + "/" + entry); });
};

TEST_F(ToolBarViewTest, AClickLeavesTheFocusWhereItIs) {
  text.SetFocus();
  QTest::mouseClick(&Button("Delete"), Qt::LeftButton);
  EXPECT_EQ(clicked, std::vector<std::string>{"Delete"});
  EXPECT_TRUE(field->hasFocus());
}

TEST_F(ToolBarViewTest, ButtonsHaveIconsTipsAndNames) {
  EXPECT_FALSE(Button("Create").icon().isNull());
  EXPECT_EQ(Button("Create").toolTip(), "Create Rule");
  EXPECT_EQ(Button("Create").accessibleName(), "Create Rule");
}

TEST_F(ToolBarViewTest, AButtonMenuRunsItsEntry) {
  QMenu* const menu = Button("Create").defaultAction()->menu();
  ASSERT_NE(menu, nullptr);
  ASSERT_EQ(menu->actions().size(), 2);
  EXPECT_EQ(menu->actions()[0]->text(), "Create Business Function ...");
  menu->actions()[0]->trigger();
  EXPECT_EQ(clicked, std::vector<std::string>{"Create/Function"});
}

TEST_F(ToolBarViewTest, StatesOfTheModelAreShown) {
  bar.Button("Delete").SetEnabled(false);
  bar.Button("Emphasize").SetPressed(true);
  bar.Button("Create").Menu("Rule").SetEnabled(false);
  EXPECT_FALSE(Button("Delete").isEnabled());
  EXPECT_TRUE(Button("Emphasize").isChecked());
  EXPECT_FALSE(Button("Create").defaultAction()->menu()->actions()[1]->isEnabled());
  QTest::mouseClick(&Button("Emphasize"), Qt::LeftButton);
  EXPECT_TRUE(Button("Emphasize").isChecked());  // the click does not change it, the command does
  bar.Button("Emphasize").SetPressed(false);
  EXPECT_FALSE(Button("Emphasize").isChecked());
}

TEST_F(ToolBarViewTest, TheKeyboardLeadsAlongTheButtons) {
  text.SetFocus();
  QTest::keyClick(field, Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_TRUE(Button("Create").hasFocus());
  EXPECT_TRUE(text.HasFocus());
  QTest::keyClick(&Button("Create"), Qt::Key_Right);
  EXPECT_TRUE(Button("Delete").hasFocus());
  QTest::keyClick(&Button("Delete"), Qt::Key_Space);
  EXPECT_EQ(clicked, std::vector<std::string>{"Delete"});
  QTest::keyClick(&Button("Delete"), Qt::Key_Escape);
  EXPECT_TRUE(field->hasFocus());
}

TEST_F(ToolBarViewTest, DownOpensTheMenuOfTheButton) {
  Button("Create").setFocus();
  Later([] {
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Down);
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Return);
  });
  QTest::keyClick(&Button("Create"), Qt::Key_Down);
  EXPECT_EQ(clicked, std::vector<std::string>{"Create/Function"});
}

TEST_F(ToolBarViewTest, WhatHasNoRoomIsReachedByKeyboard) {
  window.setMinimumWidth(0);
  view.setMinimumWidth(0);
  view.setMaximumWidth(Button("Create").width() + 24);
  QCoreApplication::processEvents();
  ASSERT_FALSE(Button("Delete").isVisible());
  auto* const rest = view.findChild<QToolButton*>("qt_toolbar_ext_button");
  ASSERT_NE(rest, nullptr);
  ASSERT_TRUE(rest->isVisible());
  Button("Create").setFocus();
  QTest::keyClick(&Button("Create"), Qt::Key_Right);
  EXPECT_TRUE(rest->hasFocus());
  EXPECT_EQ(rest->accessibleName(), "More commands");
  Later([] {
    QWidget* const popup = QApplication::activePopupWidget();
    ASSERT_NE(popup, nullptr);
    QTest::keyClick(popup, Qt::Key_Down);
    QTest::keyClick(popup, Qt::Key_Return);
  });
  QTest::keyClick(rest, Qt::Key_Space);
  EXPECT_EQ(clicked, std::vector<std::string>{"Delete"});
}

TEST_F(ToolBarViewTest, AButtonWithoutAPictureShowsItsText) {
  bar.Add("Other", "NoSuchPicture").SetToolTipText("Other command");
  EXPECT_TRUE(Button("Other").icon().isNull());
  EXPECT_EQ(Button("Other").text(), "Other command");
  EXPECT_GT(Button("Other").sizeHint().width(), Button("Delete").sizeHint().width());
}

}  // namespace
}  // namespace qmrules::desktop
