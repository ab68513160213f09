#include "desktop/views/controlview.h"

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QToolButton>
#include <set>

#include "browser/commandwidgets.h"
#include "desktop/icons/iconset.h"
#include "desktop/views/qtdialogs.h"
#include "desktop/views/qttree.h"
#include "desktop/views/viewtest.h"
#include "platform/error.h"

namespace qmrules::desktop {
namespace {

using platform::widgets::Color;
using platform::widgets::FocusLoss;
using platform::widgets::Key;
using platform::widgets::KeyPress;
using platform::widgets::MouseButton;
using platform::widgets::MousePress;
using platform::widgets::SplitDirection;
using platform::widgets::Splitter;
using platform::widgets::TreeNode;

// The control's widgets as they are while a rule is shown.
class ControlViewTest : public testing::Test {
 protected:
  ControlViewTest() {
    browser::FillCommandWidgets(widgets, texts);
    splitter.Reset("Control");
    splitter.Split("Control", {"Objects", "Properties", SplitDirection::SideBySide, 333});
    splitter.Split("Properties", {"Descriptions", "Others", SplitDirection::Stacked, 333});
    splitter.Split("Others", {"FirstArea", "SecondArea", SplitDirection::Stacked, 333});
    splitter.SetOn(true);
    FillTree();
    FillPanes();
    view.resize(1000, 760);
    Activate(view);
    view.TakeFocus();
  }

  void FillTree() {
    IconSet(QApplication::palette()).Fill(widgets.ilIcons);
    IconSet(QApplication::palette()).Fill(widgets.ilObjects);
    set = widgets.tvObjects.Add({"f1s2", "Rate Calculation", "RULESET", "", false}, function);
    rule = widgets.tvObjects.Add({"f1r3", "Compute base rate", "RULE", "", true}, set);
    widgets.tvObjects.Add({"f1r4", "Surcharge for age", "RULE", "", false}, set);
    widgets.tvObjects.Add({"f2", "Claims Handling", "BUSINESSFUNC", "", false});
    function->SetExpanded(true);
    set->SetExpanded(true);
    widgets.tvObjects.SetSelectedNode(rule);
  }

  void FillPanes() {
    widgets.txtObjName.SetText("Compute base rate");
    widgets.rtbDescription.SetText("The base rate comes from the table of tariffs,\r\nby class and region.");
    widgets.rtbBusiness.SetVisible(false);
    widgets.lvContent.SetVisible(false);
    widgets.lvTriggers.SetVisible(false);
    widgets.lvConditions.SetVisible(false);
    widgets.txtTriggers.SetText("(none)");
    widgets.txtFileName.SetText("No file PREMIUM.CBL is found in the current project");
    widgets.txtFileName.SetForeColor(Color::Red);
    for (const char* const caption : {"Status:", "Audit:", "Comment:", "Classification:", "Valid:"}) {
      const int index = widgets.AddAttributeFields();
      widgets.lblAttrs(index).SetCaption(caption);
      widgets.txtAttrs(index).SetVisible(index == 1 || index > 3);
      widgets.cmbAttrs(index).SetVisible(index == 2);
      widgets.rtbAttrs(index).SetVisible(index == 3);
      widgets.txtAttrs(index).SetText("value " + std::to_string(index));
      widgets.txtAttrs(index).SetLocked(index > 3);
    }
    widgets.cmbAttrs(2).Add(Item("false"));
    widgets.cmbAttrs(2).Add(Item("true"));
    widgets.cmbAttrs(2).SetListIndex(1);
    for (const char* const name : {"WS-BASE-RATE", "WS-AGE", "WS-REGION"}) {
      auto& row = *widgets.lvIOElems.Add(name, name);
      row.SetSubItem("Kind", "Input");
      row.SetSubItem("BusinessName", "Base rate");
      row.SetSubItem("Description", "Rate before surcharges");
    }
    widgets.lvIOElems.Row(2).SetForeColor(Color::Grey);
  }

  QtTree& Tree() const { return dynamic_cast<QtTree&>(*view.ViewOf(widgets.tvObjects)); }
  QWidget& View(const platform::widgets::Widget& model) const { return *view.ViewOf(model); }

  const shell::StringTable& texts = shell::StringTableFor(shell::Language::English);
  browser::ControlWidgets widgets{texts};
  Splitter splitter{"splPanes"};
  TreeNode* function = widgets.tvObjects.Add({"f1", "Policy Pricing", "BUSINESSFUNC", "", false});
  TreeNode* set = nullptr;
  TreeNode* rule = nullptr;
  ControlView view{widgets, splitter};
};

TEST_F(ControlViewTest, TheUserWorksThroughTheTree) {
  std::vector<std::string> told;
  const auto click =
      widgets.tvObjects.OnNodeClick.Subscribe([&](TreeNode& node) { told.push_back("show " + node.Key()); });
  const auto check =
      widgets.tvObjects.OnNodeCheck.Subscribe([&](TreeNode& node) { told.push_back("check " + node.Key()); });
  const auto down = widgets.tvObjects.OnKeyDown.Subscribe([&](KeyPress& press) {
    if (press.key == Key::Delete) told.emplace_back("delete");
    if (press.key == Key::A && press.shift.ctrl) told.emplace_back("all");
    if (press.key == Key::U && press.shift.ctrl) told.emplace_back("none");
    if (press.key == Key::F10 && press.shift.shift) told.emplace_back("popup");
  });
  QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {}, RowOf(Tree(), *set));
  QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {}, CheckBoxOf(Tree(), *rule));
  QTest::keyClick(&Tree(), Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(&Tree(), Qt::Key_U, Qt::ControlModifier);
  QTest::keyClick(&Tree(), Qt::Key_F10, Qt::ShiftModifier);
  QTest::keyClick(&Tree(), Qt::Key_Delete);
  EXPECT_EQ(told, (std::vector<std::string>{"show f1s2", "check f1r3", "all", "none", "popup", "delete"}));
}

TEST_F(ControlViewTest, TheNameIsCommittedOnTabAndKeptWhileItIsRefused) {
  std::vector<std::string> left;
  const auto lost = widgets.txtObjName.OnLostFocus.Subscribe([&](FocusLoss& loss) {
    left.push_back(widgets.txtObjName.Text());
    loss.cancel = widgets.txtObjName.Text().empty();
  });
  widgets.txtObjName.SetFocus();
  QWidget& field = View(widgets.txtObjName);
  QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(&field, Qt::Key_Delete);
  QTest::keyClick(&field, Qt::Key_Tab);
  EXPECT_TRUE(field.hasFocus());
  QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {}, RowOf(Tree(), *function));
  EXPECT_TRUE(field.hasFocus());
  EXPECT_EQ(widgets.tvObjects.SelectedNode(), rule);
  QTest::keyClicks(&field, "New name");
  QTest::keyClick(&field, Qt::Key_Tab);
  EXPECT_EQ(left, (std::vector<std::string>{"", "", "New name"}));
  EXPECT_TRUE(widgets.tsDescrs.HasFocus());
}

TEST_F(ControlViewTest, TabLeadsInTheModelsOrder) {
  std::vector<std::string> order;
  for (int stops = 0; stops < 12; ++stops) {
    const auto active = widgets.ActiveControl();
    ASSERT_TRUE(active.has_value());
    order.push_back(active->name + (active->index == 0 ? "" : std::to_string(active->index)));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    if (widgets.ActiveWidget() == &widgets.lvIOElems) break;
  }
  EXPECT_EQ(order, (std::vector<std::string>{"tvObjects", "txtObjName", "tsDescrs", "rtbDescription", "txtAttrs1",
                                             "cmbAttrs2", "rtbAttrs3", "txtAttrs4", "txtAttrs5", "txtFileName",
                                             "txtTriggers", "cmdSelectTrigger"}));
}

TEST_F(ControlViewTest, AMnemonicOfALabelLeadsToItsField) {
  QTest::keyClick(&Tree(), Qt::Key_N, Qt::AltModifier);
  EXPECT_TRUE(View(widgets.txtObjName).hasFocus());
}

TEST_F(ControlViewTest, TheKeysOfTheListsReachTheirModel) {
  std::vector<Key> keys;
  const auto down = widgets.lvIOElems.OnKeyDown.Subscribe([&](KeyPress& press) {
    keys.push_back(press.key);
    press.handled = true;
  });
  widgets.lvIOElems.SetFocus();
  QWidget& list = View(widgets.lvIOElems);
  QTest::keyClick(&list, Qt::Key_Delete);
  QTest::keyClick(&list, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(&list, Qt::Key_U, Qt::ControlModifier);
  QTest::keyClick(&list, Qt::Key_Insert);
  QTest::keyClick(&list, Qt::Key_S);
  QTest::keyClick(&list, Qt::Key_F10, Qt::ShiftModifier);
  EXPECT_EQ(keys, (std::vector<Key>{Key::Delete, Key::A, Key::U, Key::Insert, Key::S, Key::F10}));
}

TEST_F(ControlViewTest, ThePopupComesUpByTheRightButtonAndRunsWhatIsChosen) {
  platform::MemoryPointer pointer;
  QtDialogs dialogs(pointer, &view);
  int deletions = 0;
  const auto chosen = widgets.mnuPopup.Item("mnuDelete").OnClick.Subscribe([&] { ++deletions; });
  const auto down = widgets.tvObjects.OnMouseDown.Subscribe([&](const MousePress& press) {
    if (press.button == MouseButton::Right) dialogs.PopupMenu(widgets.mnuPopup);
  });
  Later([] {
    auto* const popup = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(popup, nullptr);
    popup->setActiveAction(popup->findChild<QAction*>("mnuDelete"));
    QTest::keyClick(popup, Qt::Key_Return);
  });
  QTest::mouseClick(Tree().viewport(), Qt::RightButton, {}, RowOf(Tree(), *rule));
  EXPECT_EQ(deletions, 1);
  EXPECT_TRUE(widgets.tvObjects.HasFocus());
}

TEST_F(ControlViewTest, HiddenWidgetsTakeNoRoom) {
  EXPECT_FALSE(View(widgets.rtbBusiness).isVisible());
  const QWidget& description = View(widgets.rtbDescription);
  const int tabs = View(widgets.tsDescrs).height();
  const auto gap = [&] { return description.y() - View(widgets.txtObjName).geometry().bottom(); };
  EXPECT_TRUE(QTest::qWaitFor([&] { return gap() > tabs; }));
  widgets.tsDescrs.SetVisible(false);
  EXPECT_TRUE(QTest::qWaitFor([&] { return gap() < tabs; }));
  for (auto* const model : std::initializer_list<platform::widgets::Widget*>{&widgets.lblTriggers, &widgets.txtTriggers,
                                                                             &widgets.cmdSelectTrigger,
                                                                             &widgets.tsIOCond, &widgets.lvIOElems}) {
    model->SetVisible(false);
  }
  const QWidget& file = View(widgets.txtFileName);
  EXPECT_TRUE(QTest::qWaitFor([&] { return file.mapTo(&view, QPoint(0, file.height())).y() > view.height() - 20; }));
}

TEST_F(ControlViewTest, BothDescriptionsStandInOnePlace) {
  QCoreApplication::processEvents();
  const QRect description = View(widgets.rtbDescription).geometry();
  widgets.rtbDescription.SetVisible(false);
  widgets.rtbBusiness.SetVisible(true);
  QCoreApplication::processEvents();
  EXPECT_EQ(View(widgets.rtbBusiness).geometry(), description);
}

TEST_F(ControlViewTest, EnteringFromElsewhereIsTold) {
  int entered = 0;
  const auto enter = view.OnEntered.Subscribe([&] { ++entered; });
  QLineEdit other;
  Activate(other);
  other.setFocus();
  EXPECT_EQ(widgets.ActiveWidget(), nullptr);
  view.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
  EXPECT_EQ(entered, 1);
  widgets.txtObjName.SetFocus();
  EXPECT_EQ(entered, 1);
}

// What a screen reader meets: the widgets that it stops at, with their names.
void Collect(QAccessibleInterface* item, std::set<std::string>& nameless, int& met) {
  static const std::set<QAccessible::Role> kSpoken = {
      QAccessible::Tree,        QAccessible::Table,      QAccessible::EditableText, QAccessible::ComboBox,
      QAccessible::PageTabList, QAccessible::PushButton, QAccessible::ButtonMenu,   QAccessible::ToolBar,
      QAccessible::ScrollBar,   QAccessible::StaticText, QAccessible::PageTab};
  if (kSpoken.contains(item->role()) && !item->state().invisible && item->object() != nullptr) {
    ++met;
    const auto* const widget = qobject_cast<QWidget*>(item->object());
    const bool inner = item->object()->objectName().startsWith("qt_");
    if (widget != nullptr && !inner && item->text(QAccessible::Name).isEmpty()) {
      nameless.insert(item->object()->metaObject()->className() + (" " + item->object()->objectName()).toStdString());
    }
  }
  for (int child = 0; child < item->childCount(); ++child) {
    QAccessibleInterface* const below = item->child(child);
    if (below != nullptr && below->object() != nullptr) Collect(below, nameless, met);
  }
}

TEST_F(ControlViewTest, EveryWidgetHasANameForAScreenReader) {
  std::set<std::string> nameless;
  int met = 0;
  Collect(QAccessible::queryAccessibleInterface(&view), nameless, met);
  EXPECT_GT(met, 30);
  EXPECT_EQ(nameless, std::set<std::string>{});
  for (const auto& model : widgets.Widgets()) {
    const QWidget* const shown = view.ViewOf(*model);
    if (shown == nullptr) continue;
    QAccessibleInterface* const item = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(shown));
    EXPECT_FALSE(item->text(QAccessible::Name).isEmpty()) << model->Name();
  }
}

TEST_F(ControlViewTest, AHandlerThatFailsLeavesTheFocusWhereItWas) {
  bool fails = true;
  const auto lost = widgets.txtObjName.OnLostFocus.Subscribe([&](FocusLoss&) {
    if (fails) throw platform::Error("The repository cannot be written.");
  });
  widgets.txtObjName.SetFocus();
  EXPECT_THROW(View(widgets.tsDescrs).setFocus(), platform::Error);
  EXPECT_TRUE(View(widgets.txtObjName).hasFocus());
  EXPECT_TRUE(widgets.txtObjName.HasFocus());
  fails = false;
  View(widgets.tsDescrs).setFocus();
  EXPECT_TRUE(widgets.tsDescrs.HasFocus());
}

// Set the variable to a file to see what the control looks like.
TEST_F(ControlViewTest, ItCanBeDrawnInLightAndDark) {
  const QPalette light = QApplication::palette();
  QCoreApplication::processEvents();
  const QImage before = view.grab().toImage();
  const QString file = qEnvironmentVariable("QMRULES_PICTURE");
  EXPECT_TRUE(file.isEmpty() || before.save(file + "-light.png"));
  QPalette dark(QColor(0x2e, 0x32, 0x38), QColor(0x24, 0x27, 0x2c));
  dark.setColor(QPalette::Base, QColor(0x1b, 0x1d, 0x21));
  QApplication::setPalette(dark);
  IconSet(dark).Fill(widgets.ilIcons);
  IconSet(dark).Fill(widgets.ilObjects);
  QCoreApplication::processEvents();
  const QImage after = view.grab().toImage();
  EXPECT_TRUE(file.isEmpty() || after.save(file + "-dark.png"));
  QApplication::setPalette(light);
  EXPECT_EQ(before.size(), after.size());
  EXPECT_GT(before.pixelColor(200, 400).lightness(), 128);
  EXPECT_LT(after.pixelColor(200, 400).lightness(), 128);
}

}  // namespace
}  // namespace qmrules::desktop
