#include "platform/widgets/toolbar.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace qmrules::platform::widgets {
namespace {

class ToolBarTest : public testing::Test {
 protected:
  ToolBarTest() {
    toolBar.Add("Create", "Create").AddMenu("RuleSet", "Create Rule Set...");
    toolBar.AddSeparator();
    toolBar.Add("Selected", "Selected");
  }

  ToolBar toolBar{"tbToolbar"};
  std::string clicks;
  Subscription click = toolBar.OnButtonClick.Subscribe([this](const std::string& key) { clicks += key + ";"; });
  Subscription menuClick = toolBar.OnButtonMenuClick.Subscribe(
      [this](const std::string& key, const std::string& menuKey) { clicks += key + "/" + menuKey + ";"; });
};

TEST_F(ToolBarTest, TellsClicksByKey) {
  EXPECT_TRUE(toolBar.Click("create"));
  EXPECT_TRUE(toolBar.ClickMenu("Create", "RULESET"));
  EXPECT_EQ(clicks, "Create;Create/RuleSet;");
}

TEST_F(ToolBarTest, DisabledAndHiddenButtonsAndEntriesCannotBeClicked) {
  toolBar.Button("Selected").SetEnabled(false);
  EXPECT_FALSE(toolBar.Click("Selected"));
  toolBar.Button("Create").Menu("RuleSet").SetVisible(false);
  EXPECT_FALSE(toolBar.ClickMenu("Create", "RuleSet"));
  toolBar.Button("Create").Menu("RuleSet").SetVisible(true);
  toolBar.Button("Create").Menu("RuleSet").SetEnabled(false);
  EXPECT_FALSE(toolBar.ClickMenu("Create", "RuleSet"));
  toolBar.Button("Create").SetVisible(false);
  EXPECT_FALSE(toolBar.Click("Create"));
  EXPECT_EQ(clicks, "");
}

TEST_F(ToolBarTest, UnknownKeysAreRefused) {
  EXPECT_THROW(toolBar.Click("Gone"), std::out_of_range);
  EXPECT_THROW(toolBar.ClickMenu("Create", "Gone"), std::out_of_range);
  EXPECT_THROW(toolBar.Button(""), std::out_of_range);
  EXPECT_THROW(toolBar.Add("CREATE", "Create"), std::invalid_argument);
  EXPECT_THROW(toolBar.Button("Create").AddMenu("ruleset", ""), std::invalid_argument);
}

TEST_F(ToolBarTest, TheCommandAndNotTheClickPressesATwoStateButton) {
  toolBar.Click("Selected");
  EXPECT_FALSE(toolBar.Button("Selected").Pressed());
  int told = 0;
  const auto changes = toolBar.OnChanged.Subscribe([&] { ++told; });
  toolBar.Button("Selected").SetPressed(true);
  toolBar.Button("Selected").SetToolTipText("Selected Only");
  toolBar.Button("Create").Menu("RuleSet").SetCaption("Rule Set");
  EXPECT_TRUE(toolBar.Button("Selected").Pressed());
  EXPECT_EQ(told, 3);
}

}  // namespace
}  // namespace qmrules::platform::widgets
