#include "desktop/views/viewtest.h"

#include <QStyle>
#include <QTimer>

#include "desktop/views/qttree.h"

namespace qmrules::desktop {

using platform::widgets::TreeNode;

void Activate(QWidget& window) {
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
}

void ViewTest::Show() {
  focus.SetTabOrder();
  window.resize(400, 300);
  Activate(window);
  focus.ShowActive();
}

platform::widgets::NewNode Node(std::string text, bool checked) {
  return {"", std::move(text), "", "", checked};
}

platform::widgets::ComboItem Item(std::string text) {
  return {std::move(text), 0, "", ""};
}

void Later(std::function<void()> step) {
  QTimer::singleShot(0, std::move(step));
}

QPoint RowOf(const QtTree& tree, const TreeNode& node) {
  return tree.visualRect(tree.Items().IndexOf(&node)).center();
}

QPoint CheckBoxOf(const QtTree& tree, const TreeNode& node) {
  const QRect row = tree.visualRect(tree.Items().IndexOf(&node));
  return {row.left() + tree.style()->pixelMetric(QStyle::PM_IndicatorWidth) / 2 + 3, row.center().y()};
}

QPoint SignOf(const QtTree& tree, const TreeNode& node) {
  const QRect row = tree.visualRect(tree.Items().IndexOf(&node));
  return {row.left() - tree.indentation() / 2, row.center().y()};
}

}  // namespace qmrules::desktop
