#include <gtest/gtest.h>

#include "platform/widgets/container.h"
#include "platform/widgets/textbox.h"
#include "platform/widgets/treeview.h"

namespace qmrules::platform::widgets {
namespace {

class TreeViewUserTest : public testing::Test {
 protected:
  Container container;
  TextBox& txtObjName = container.Add<TextBox>("txtObjName");
  TreeView& tree = container.Add<TreeView>("tvObjects");
  TreeNode* f1 = tree.Add({"f1", "Billing", "BUSINESSFUNC", {}, false});
  TreeNode* f1s1 = tree.Add({"f1s1", "Rates", "RULESET", "10", false}, f1);
  TreeNode* wait = tree.Add({{}, "Please, wait...", {}, {}, false}, f1s1);
  TreeNode* f2 = tree.Add({"f2", "Claims", "BUSINESSFUNC", {}, false});
  std::string events;
  Subscription expanding =
      tree.OnExpanding.Subscribe([this](TreeNode& node) { events += "expanding:" + node.Key() + " "; });
  Subscription click = tree.OnNodeClick.Subscribe([this](TreeNode& node) { events += "click:" + node.Key() + " "; });
  Subscription check = tree.OnNodeCheck.Subscribe([this](TreeNode& node) { events += "check:" + node.Key() + " "; });
  Subscription doubleClick =
      tree.OnDoubleClick.Subscribe([this](TreeNode& node) { events += "double:" + node.Key() + " "; });
  Subscription down = tree.OnMouseDown.Subscribe(
      [this](const MousePress& press) { events += press.button == MouseButton::Left ? "down " : "rightdown "; });
  Subscription up = tree.OnMouseUp.Subscribe([this](const MousePress&) { events += "up "; });
};

TEST_F(TreeViewUserTest, AClickSelectsTheNodeAndIsTold) {
  EXPECT_TRUE(tree.Click(*f2));
  EXPECT_EQ(tree.SelectedNode(), f2);
  EXPECT_TRUE(tree.HasFocus());
  EXPECT_EQ(events, "down up click:f2 ");
}

TEST_F(TreeViewUserTest, ASelectionByTheLogicIsNoClick) {
  tree.SetSelectedNode(f2);
  EXPECT_EQ(events, "");
}

TEST_F(TreeViewUserTest, AFieldThatKeepsTheFocusKeepsTheSelection) {
  const auto lost = txtObjName.OnLostFocus.Subscribe([](FocusLoss& loss) { loss.cancel = true; });
  tree.SetSelectedNode(f1);
  txtObjName.SetFocus();
  EXPECT_FALSE(tree.Click(*f2));
  EXPECT_FALSE(tree.ClickCheckBox(*f2));
  EXPECT_FALSE(tree.Expand(*f1));
  EXPECT_EQ(tree.SelectedNode(), f1);
  EXPECT_FALSE(f2->Checked());
  EXPECT_FALSE(f1->Expanded());
  EXPECT_EQ(events, "");
}

TEST_F(TreeViewUserTest, TheCheckTurnsBetweenMouseDownAndMouseUp) {
  std::string states;
  const auto pressed = tree.OnMouseDown.Subscribe([&](const MousePress& press) {
    ASSERT_EQ(tree.HitTest(press.x, press.y), f1s1);
    states += f1s1->Checked() ? "1" : "0";
  });
  const auto released = tree.OnMouseUp.Subscribe([&](const MousePress&) { states += f1s1->Checked() ? "1" : "0"; });
  EXPECT_TRUE(tree.ClickCheckBox(*f1s1));
  EXPECT_EQ(states, "01");
  EXPECT_EQ(events, "down up check:f1s1 ");
  EXPECT_EQ(tree.SelectedNode(), nullptr);
}

TEST_F(TreeViewUserTest, TheHitTestIsTheViewsOutsideOfANodesAction) {
  EXPECT_EQ(tree.HitTest(3, 4), nullptr);
  tree.SetHitTest([this](int x, int y) { return x == 3 && y == 4 ? f2 : nullptr; });
  EXPECT_EQ(tree.HitTest(3, 4), f2);
  EXPECT_EQ(tree.HitTest(0, 0), nullptr);
}

TEST_F(TreeViewUserTest, TheRightButtonIsToldAndSelectsNothing) {
  EXPECT_TRUE(tree.RightClick(f2));
  EXPECT_TRUE(tree.RightClick(nullptr));
  EXPECT_EQ(tree.SelectedNode(), nullptr);
  EXPECT_EQ(events, "rightdown up rightdown up ");
}

TEST_F(TreeViewUserTest, AnOpenedNodeLoadsItsChildrenWhileItOpens) {
  const auto load = tree.OnExpanding.Subscribe([this](TreeNode& node) {
    if (node.FirstChild() != wait) return;
    tree.Add({"f1r7", "Rule", "RULE", "10", false}, &node);
    tree.Remove(*wait);
  });
  EXPECT_TRUE(tree.Expand(*f1s1));
  EXPECT_TRUE(f1s1->Expanded());
  EXPECT_EQ(f1s1->FirstChild()->Key(), "f1r7");
  tree.Expand(*f1s1);
  EXPECT_EQ(events, "expanding:f1s1 ");
  tree.Collapse(*f1s1);
  tree.Expand(*f1s1);
  EXPECT_EQ(events, "expanding:f1s1 expanding:f1s1 ");
}

TEST_F(TreeViewUserTest, ANodeThatLosesAllChildrenWhileItOpensStaysClosed) {
  const auto load = tree.OnExpanding.Subscribe([this](TreeNode&) { tree.Remove(*wait); });
  tree.Expand(*f1s1);
  EXPECT_FALSE(f1s1->Expanded());
}

TEST_F(TreeViewUserTest, ANodeThatIsRemovedWhileItOpensIsLeftAlone) {
  const auto load = tree.OnExpanding.Subscribe([this](TreeNode& node) { tree.Remove(node); });
  tree.Expand(*f1);
  EXPECT_EQ(tree.Count(), 1U);
}

TEST_F(TreeViewUserTest, ALeafDoesNotOpen) {
  tree.Expand(*f2);
  f2->SetExpanded(true);
  EXPECT_FALSE(f2->Expanded());
  EXPECT_EQ(events, "");
}

TEST_F(TreeViewUserTest, OpeningByTheLogicIsToldAlike) {
  f1->SetExpanded(true);
  EXPECT_EQ(events, "expanding:f1 ");
}

TEST_F(TreeViewUserTest, AParentThatLosesItsLastChildStaysOpen) {
  f1s1->SetExpanded(true);
  tree.Remove(*wait);
  EXPECT_TRUE(f1s1->Expanded());
}

TEST_F(TreeViewUserTest, ClosingOverTheSelectedNodeSelectsTheClosedOne) {
  f1->SetExpanded(true);
  tree.SetSelectedNode(f1s1);
  events.clear();
  EXPECT_TRUE(tree.Collapse(*f1));
  EXPECT_EQ(tree.SelectedNode(), f1);
  EXPECT_EQ(events, "click:f1 ");
}

TEST_F(TreeViewUserTest, ClosingByTheLogicIsNoClick) {
  f1->SetExpanded(true);
  tree.SetSelectedNode(f1s1);
  events.clear();
  f1->SetExpanded(false);
  EXPECT_EQ(tree.SelectedNode(), f1);
  EXPECT_EQ(events, "");
}

TEST_F(TreeViewUserTest, BringingANodeIntoSightOpensAllAroundItFromTheTop) {
  TreeNode* shown = nullptr;
  const auto sight = tree.OnEnsureVisible.Subscribe([&](TreeNode& node) { shown = &node; });
  tree.EnsureVisible(*wait);
  EXPECT_TRUE(f1->Expanded());
  EXPECT_TRUE(f1s1->Expanded());
  EXPECT_EQ(shown, wait);
  EXPECT_EQ(events, "expanding:f1 expanding:f1s1 ");
}

TEST_F(TreeViewUserTest, ADoubleClickClicksOpensAndIsTold) {
  EXPECT_TRUE(tree.DoubleClick(*f1));
  EXPECT_TRUE(f1->Expanded());
  EXPECT_EQ(events, "down up click:f1 expanding:f1 double:f1 ");
}

TEST_F(TreeViewUserTest, ArrowsWalkThroughWhatIsShown) {
  f1->SetExpanded(true);
  std::string keys;
  const auto keyUp = tree.OnKeyUp.Subscribe(
      [&](KeyPress&) { keys += (tree.SelectedNode() == nullptr ? "-" : tree.SelectedNode()->Key()) + " "; });
  tree.PressKey(Key::Up);
  tree.PressKey(Key::Down);
  tree.PressKey(Key::Down);
  tree.PressKey(Key::Down);
  EXPECT_FALSE(tree.PressKey(Key::Down));
  tree.PressKey(Key::Up);
  tree.PressKey(Key::End);
  tree.PressKey(Key::Home);
  EXPECT_EQ(keys, "- f1 f1s1 f2 f2 f1s1 f2 f1 ");
  EXPECT_EQ(events, "expanding:f1 ");
}

TEST_F(TreeViewUserTest, LeftAndRightOpenCloseAndStepThroughLevels) {
  tree.SetSelectedNode(f1);
  tree.PressKey(Key::Right);
  EXPECT_TRUE(f1->Expanded());
  tree.PressKey(Key::Right);
  EXPECT_EQ(tree.SelectedNode(), f1s1);
  tree.PressKey(Key::Left);
  EXPECT_EQ(tree.SelectedNode(), f1);
  tree.PressKey(Key::Left);
  EXPECT_FALSE(f1->Expanded());
  EXPECT_FALSE(tree.PressKey(Key::Left));
}

TEST_F(TreeViewUserTest, SpaceTurnsTheCheckOfTheSelectedNode) {
  EXPECT_FALSE(tree.PressKey(Key::Space));
  tree.SetSelectedNode(f1);
  EXPECT_TRUE(tree.PressKey(Key::Space));
  EXPECT_TRUE(f1->Checked());
  EXPECT_EQ(events, "check:f1 ");
}

TEST_F(TreeViewUserTest, AClickThatRemovesItsNodeEndsThere) {
  const auto remove = tree.OnMouseDown.Subscribe([this](const MousePress&) {
    if (tree.Find("f2") != nullptr) tree.Remove(*f2);
  });
  EXPECT_TRUE(tree.Click(*f2));
  EXPECT_EQ(tree.SelectedNode(), nullptr);
  EXPECT_EQ(events, "down up ");
}

}  // namespace
}  // namespace qmrules::platform::widgets
