#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QApplication>

#include "desktop/views/qttree.h"
#include "desktop/views/viewtest.h"

namespace qmrules::desktop {
namespace {

using platform::widgets::Key;
using platform::widgets::KeyPress;
using platform::widgets::MouseButton;
using platform::widgets::MousePress;
using platform::widgets::TreeNode;
using platform::widgets::TreeView;

class TreeViewTest : public ViewTest {
 protected:
  TreeViewTest() {
    tree.Add(Node("Rates"), pricing);
    tree.Add(Node("Fees"), pricing);
    Show();
  }

  void Press(const QPoint& place, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(view.viewport(), button, {}, place);
  }

  TreeView& tree = container.Add<TreeView>("tvObjects");
  TreeNode* pricing = tree.Add(Node("Pricing"));
  TreeNode* claims = tree.Add(Node("Claims"));
  QtTree& view = Make<QtTree>(tree);
  QAbstractItemModelTester tester{view.model(), QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(TreeViewTest, AClickOnANodeIsTheUsersClick) {
  std::vector<std::string> clicked;
  const auto click = tree.OnNodeClick.Subscribe([&](TreeNode& node) { clicked.push_back(node.Text()); });
  Press(RowOf(view, *claims));
  EXPECT_EQ(clicked, std::vector<std::string>{"Claims"});
  EXPECT_EQ(tree.SelectedNode(), claims);
  EXPECT_EQ(view.currentIndex().data().toString(), "Claims");
  EXPECT_TRUE(tree.HasFocus());
}

TEST_F(TreeViewTest, AClickOnTheCheckBoxTurnsItOverOnce) {
  int checks = 0;
  const auto check = tree.OnNodeCheck.Subscribe([&](TreeNode&) { ++checks; });
  Press(CheckBoxOf(view, *claims));
  EXPECT_TRUE(claims->Checked());
  EXPECT_EQ(checks, 1);
  EXPECT_EQ(tree.SelectedNode(), nullptr);
  EXPECT_EQ(view.Items().IndexOf(claims).data(Qt::CheckStateRole).toInt(), Qt::Checked);
}

TEST_F(TreeViewTest, TheSignOpensAndClosesANode) {
  int expanding = 0;
  const auto expand = tree.OnExpanding.Subscribe([&](TreeNode&) { ++expanding; });
  Press(SignOf(view, *pricing));
  EXPECT_TRUE(pricing->Expanded());
  EXPECT_TRUE(view.isExpanded(view.Items().IndexOf(pricing)));
  EXPECT_EQ(expanding, 1);
  Press(SignOf(view, *pricing));
  EXPECT_FALSE(pricing->Expanded());
  EXPECT_FALSE(view.isExpanded(view.Items().IndexOf(pricing)));
}

TEST_F(TreeViewTest, ANodeThatTheLogicOpensIsOpen) {
  pricing->SetExpanded(true);
  EXPECT_TRUE(view.isExpanded(view.Items().IndexOf(pricing)));
  tree.SetSelectedNode(pricing->LastChild());
  EXPECT_EQ(view.currentIndex().data().toString(), "Fees");
  EXPECT_TRUE(view.selectionModel()->isSelected(view.currentIndex()));
}

TEST_F(TreeViewTest, TheArrowsMoveOpenAndClose) {
  Press(RowOf(view, *pricing));
  QTest::keyClick(&view, Qt::Key_Right);
  EXPECT_TRUE(pricing->Expanded());
  QTest::keyClick(&view, Qt::Key_Down);
  EXPECT_EQ(tree.SelectedNode(), pricing->FirstChild());
  QTest::keyClick(&view, Qt::Key_Left);
  QTest::keyClick(&view, Qt::Key_Left);
  EXPECT_FALSE(pricing->Expanded());
  QTest::keyClick(&view, Qt::Key_End);
  EXPECT_EQ(tree.SelectedNode(), claims);
}

TEST_F(TreeViewTest, SpaceTurnsTheCheckBoxOver) {
  Press(RowOf(view, *claims));
  QTest::keyClick(&view, Qt::Key_Space);
  EXPECT_TRUE(claims->Checked());
}

TEST_F(TreeViewTest, TheKeysOfTheCommandsReachTheModelOnce) {
  std::vector<std::pair<Key, bool>> pressed;
  const auto down = tree.OnKeyDown.Subscribe([&](KeyPress& press) {
    pressed.emplace_back(press.key, press.shift.ctrl || press.shift.shift);
    press.handled = true;
  });
  view.setFocus();
  QTest::keyClick(&view, Qt::Key_Delete);
  QTest::keyClick(&view, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(&view, Qt::Key_U, Qt::ControlModifier);
  QTest::keyClick(&view, Qt::Key_F10, Qt::ShiftModifier);
  const std::vector<std::pair<Key, bool>> expected = {
      {Key::Delete, false}, {Key::A, true}, {Key::U, true}, {Key::F10, true}};
  EXPECT_EQ(pressed, expected);
}

TEST_F(TreeViewTest, TheMenuKeyIsTheKeyOfThePopup) {
  int popups = 0;
  const auto down = tree.OnKeyDown.Subscribe([&](KeyPress& press) { popups += press.key == Key::F10 ? 1 : 0; });
  QContextMenuEvent menu(QContextMenuEvent::Keyboard, QPoint(5, 5), view.mapToGlobal(QPoint(5, 5)));
  QApplication::sendEvent(view.viewport(), &menu);
  EXPECT_EQ(popups, 1);
}

TEST_F(TreeViewTest, TheRightButtonIsTold) {
  TreeNode* under = nullptr;
  const auto down = tree.OnMouseDown.Subscribe([&](const MousePress& press) {
    if (press.button == MouseButton::Right) under = tree.HitTest(press.x, press.y);
  });
  Press(RowOf(view, *claims), Qt::RightButton);
  EXPECT_EQ(under, claims);
}

TEST_F(TreeViewTest, ADoubleClickOpensTheNode) {
  Press(RowOf(view, *pricing));
  QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, RowOf(view, *pricing));
  EXPECT_TRUE(pricing->Expanded());
}

TEST_F(TreeViewTest, TypedLettersLeadToTheRowThatBeginsSo) {
  Press(RowOf(view, *pricing));
  QTest::keyClick(&view, Qt::Key_C);
  EXPECT_EQ(tree.SelectedNode(), claims);
}

TEST_F(TreeViewTest, ANodeThatItsOwnClickRemovesDoesNoHarm) {
  const auto click = tree.OnNodeClick.Subscribe([&](TreeNode& node) { tree.Remove(node); });
  Press(RowOf(view, *claims));
  EXPECT_EQ(tree.Count(), 3U);
  EXPECT_EQ(view.model()->rowCount(), 1);
}

TEST_F(TreeViewTest, TheSelectionFallsAsTheModelTells) {
  Press(RowOf(view, *claims));
  tree.Remove(*claims);
  EXPECT_EQ(view.currentIndex(), view.Items().IndexOf(pricing));
  tree.Clear();
  EXPECT_FALSE(view.currentIndex().isValid());
}

// As a screen reader does it.
TEST_F(TreeViewTest, ANodeThatIsSelectedFromOutsideIsTheUsersClick) {
  std::vector<std::string> clicked;
  const auto click = tree.OnNodeClick.Subscribe([&](TreeNode& node) { clicked.push_back(node.Text()); });
  pricing->SetExpanded(true);
  Press(RowOf(view, *pricing));
  QAccessibleTableInterface* const reader = QAccessible::queryAccessibleInterface(&view)->tableInterface();
  ASSERT_TRUE(reader->selectRow(2));
  EXPECT_TRUE(QTest::qWaitFor([&] { return tree.SelectedNode() == pricing->LastChild(); }));
  EXPECT_EQ(view.selectionModel()->selectedIndexes(), QModelIndexList{view.Items().IndexOf(pricing->LastChild())});
  EXPECT_EQ(clicked, (std::vector<std::string>{"Pricing", "Fees"}));
}

TEST_F(TreeViewTest, ACellThatIsPressedFromOutsideIsTheUsersClick) {
  pricing->SetExpanded(true);
  Press(RowOf(view, *claims));
  QAccessibleInterface* const reader = QAccessible::queryAccessibleInterface(&view);
  QAccessibleInterface* fees = nullptr;
  for (int child = 0; child < reader->childCount(); ++child) {
    if (reader->child(child)->text(QAccessible::Name) == "Fees") fees = reader->child(child);
  }
  ASSERT_NE(fees, nullptr);
  fees->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
  EXPECT_TRUE(QTest::qWaitFor([&] { return tree.SelectedNode() == pricing->LastChild(); }));
}

TEST_F(TreeViewTest, ASelectionThatTheModelRefusesIsTakenBack) {
  Press(RowOf(view, *pricing));
  const auto click = tree.OnNodeClick.Subscribe([&](TreeNode&) { tree.SetSelectedNode(pricing); });
  view.selectionModel()->select(view.Items().IndexOf(claims), QItemSelectionModel::Select);
  QCoreApplication::processEvents();
  EXPECT_EQ(tree.SelectedNode(), pricing);
  EXPECT_EQ(view.selectionModel()->selectedIndexes(), QModelIndexList{view.Items().IndexOf(pricing)});
}

TEST_F(TreeViewTest, ADragWithTheButtonDownSelectsNothing) {
  Press(RowOf(view, *pricing));
  QTest::mousePress(view.viewport(), Qt::LeftButton, {}, RowOf(view, *pricing));
  QTest::mouseMove(view.viewport(), RowOf(view, *claims));
  QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, RowOf(view, *claims));
  EXPECT_EQ(tree.SelectedNode(), pricing);
  EXPECT_EQ(view.currentIndex(), view.Items().IndexOf(pricing));
}

TEST_F(TreeViewTest, PagesLeadThroughALongTree) {
  for (int count = 0; count < 200; ++count) tree.Add(Node("row " + std::to_string(count)));
  Press(RowOf(view, *pricing));
  QTest::keyClick(&view, Qt::Key_PageDown);
  TreeNode* const paged = tree.SelectedNode();
  ASSERT_NE(paged, nullptr);
  EXPECT_GT(view.Items().IndexOf(paged).row(), 5);
  QTest::keyClick(&view, Qt::Key_PageUp);
  EXPECT_EQ(tree.SelectedNode(), pricing);
}

}  // namespace
}  // namespace qmrules::desktop
