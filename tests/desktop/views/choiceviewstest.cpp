#include <QAbstractButton>
#include <QAbstractItemView>
#include <QLineEdit>
#include <QWheelEvent>

#include "desktop/views/qtbuttons.h"
#include "desktop/views/qtcombobox.h"
#include "desktop/views/qtoptiongroup.h"
#include "desktop/views/qtscrollbar.h"
#include "desktop/views/qttabstrip.h"
#include "desktop/views/qttextbox.h"
#include "desktop/views/qtupdown.h"
#include "desktop/views/viewtest.h"

namespace qmrules::desktop {
namespace {

using platform::widgets::CheckBox;
using platform::widgets::ComboBox;
using platform::widgets::FocusLoss;
using platform::widgets::MouseButton;
using platform::widgets::MousePress;
using platform::widgets::OptionGroup;
using platform::widgets::ScrollBar;
using platform::widgets::TabStrip;
using platform::widgets::TextBox;
using platform::widgets::UpDown;

using ChoiceViewsTest = ViewTest;

TEST_F(ChoiceViewsTest, AComboShowsItsItemsAndHandsOnTheChoice) {
  auto& combo = container.Add<ComboBox>("cmbAttrs");
  for (const char* const item : {"Low", "Medium", "High"}) combo.Add(Item(item));
  auto& view = Make<QtComboBox>(combo);
  Show();
  int clicks = 0;
  const auto click = combo.OnClick.Subscribe([&] { ++clicks; });
  EXPECT_EQ(view.count(), 3);
  EXPECT_EQ(view.currentIndex(), -1);
  view.setFocus();
  QTest::keyClick(&view, Qt::Key_Down);
  EXPECT_EQ(combo.ListIndex(), 0);
  QTest::keyClick(&view, Qt::Key_H);
  EXPECT_EQ(combo.Text(), "High");
  EXPECT_EQ(clicks, 2);
  combo.SetListIndex(1);
  EXPECT_EQ(view.currentText(), "Medium");
  combo.Clear();
  combo.Add(Item("Only"));
  EXPECT_EQ(view.count(), 1);
  EXPECT_EQ(view.currentIndex(), -1);
}

TEST_F(ChoiceViewsTest, AnEditableComboTakesWhatIsTyped) {
  auto& combo = container.Add<ComboBox>("cmbText");
  combo.SetEditable(true);
  combo.Add(Item("Known"));
  auto& view = Make<QtComboBox>(combo);
  Show();
  view.setFocus();
  QTest::keyClicks(view.lineEdit(), "Other");
  EXPECT_EQ(combo.Text(), "Other");
  EXPECT_EQ(combo.ListIndex(), -1);
  combo.SetText("Known");
  EXPECT_EQ(view.currentText(), "Known");
  EXPECT_EQ(combo.ListIndex(), 0);
}

TEST_F(ChoiceViewsTest, AltAndDownOpenTheListOfACombo) {
  auto& combo = container.Add<ComboBox>("cmbAttrs");
  for (const char* const item : {"Low", "High"}) combo.Add(Item(item));
  auto& view = Make<QtComboBox>(combo);
  Show();
  view.setFocus();
  QTest::keyClick(&view, Qt::Key_Down, Qt::AltModifier);
  EXPECT_TRUE(view.view()->isVisible());
  EXPECT_EQ(combo.ListIndex(), -1);
  view.hidePopup();
}

TEST_F(ChoiceViewsTest, TheWheelChangesNoChoice) {
  auto& combo = container.Add<ComboBox>("cmbAttrs");
  for (const char* const item : {"Low", "High"}) combo.Add(Item(item));
  combo.SetListIndex(0);
  auto& view = Make<QtComboBox>(combo);
  Show();
  QWheelEvent wheel({5, 5}, view.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&view, &wheel);
  EXPECT_EQ(combo.ListIndex(), 0);
}

class TabStripViewTest : public ViewTest {
 protected:
  TabStripViewTest() {
    tabs.Add("I/O", "Data Elements");
    tabs.Add("Conditions", "Control Conditions");
    Show();
  }
  TabStrip& tabs = container.Add<TabStrip>("tsIOCond");
  TextBox& text = container.Add<TextBox>("txtName");
  QtTabStrip& view = Make<QtTabStrip>(tabs);
  QtTextBox& field = Make<QtTextBox>(text);
};

TEST_F(TabStripViewTest, AClickChoosesTheTabAlsoTheOneInFront) {
  int clicks = 0;
  const auto click = tabs.OnClick.Subscribe([&] { ++clicks; });
  QTest::mouseClick(&view, Qt::LeftButton, {}, view.tabRect(1).center());
  EXPECT_EQ(tabs.Selected(), "Conditions");
  EXPECT_EQ(clicks, 1);
  QTest::mouseClick(&view, Qt::LeftButton, {}, view.tabRect(1).center());
  EXPECT_EQ(clicks, 2);
  QTest::keyClick(&view, Qt::Key_Left);
  EXPECT_EQ(tabs.Selected(), "I/O");
  EXPECT_EQ(view.currentIndex(), 0);
}

TEST_F(TabStripViewTest, TheLogicsTabAndCaptionsAreShown) {
  tabs.SetSelected("Conditions");
  tabs.SetCaption("I/O", "Elements");
  EXPECT_EQ(view.currentIndex(), 1);
  EXPECT_EQ(view.tabText(0), "Elements");
}

TEST_F(TabStripViewTest, ATabIsNotChosenWhileAnotherWidgetKeepsTheFocus) {
  const auto lost = text.OnLostFocus.Subscribe([](FocusLoss& loss) { loss.cancel = true; });
  text.SetFocus();
  QTest::mouseClick(&view, Qt::LeftButton, {}, view.tabRect(1).center());
  EXPECT_EQ(tabs.Selected(), "I/O");
  EXPECT_EQ(view.currentIndex(), 0);
  EXPECT_TRUE(field.hasFocus());
}

TEST_F(TabStripViewTest, TheRightButtonIsTold) {
  int rights = 0;
  const auto down = tabs.OnMouseDown.Subscribe(
      [&](const MousePress& press) { rights += press.button == MouseButton::Right ? 1 : 0; });
  QTest::mouseClick(&view, Qt::RightButton, {}, view.tabRect(0).center());
  EXPECT_EQ(rights, 1);
}

TEST_F(ChoiceViewsTest, ACheckBoxTurnsOverByMouseKeyAndLogic) {
  auto& check = container.Add<CheckBox>("chkAll");
  check.SetCaption("&All");
  auto& view = Make<QtCheckBox>(check);
  Show();
  QTest::mouseClick(&view, Qt::LeftButton, {}, QPoint(8, view.height() / 2));
  EXPECT_TRUE(check.Checked());
  QTest::keyClick(&view, Qt::Key_Space);
  EXPECT_FALSE(check.Checked());
  EXPECT_FALSE(view.isChecked());
  check.SetChecked(true);
  EXPECT_TRUE(view.isChecked());
}

TEST_F(ChoiceViewsTest, OptionsAreChosenByMouseAndArrows) {
  auto& options = container.Add<OptionGroup>("optPlace");
  for (const char* const option : {"&First", "&Last", "&Behind"}) options.Add(option);
  options.SetValue(0);
  auto& view = Make<QtOptionGroup>(options);
  Show();
  const auto buttons = view.findChildren<QRadioButton*>();
  ASSERT_EQ(buttons.size(), 3);
  QTest::mouseClick(buttons[1], Qt::LeftButton, {}, QPoint(8, buttons[1]->height() / 2));
  EXPECT_EQ(options.Value(), 1);
  EXPECT_TRUE(options.HasFocus());
  QTest::keyClick(buttons[1], Qt::Key_Down);
  EXPECT_EQ(options.Value(), 2);
  EXPECT_TRUE(buttons[2]->isChecked());
  EXPECT_FALSE(buttons[1]->isChecked());
  int twice = -1;
  const auto both = options.OnDoubleClick.Subscribe([&](int option) { twice = option; });
  QTest::mouseDClick(buttons[0], Qt::LeftButton, {}, QPoint(8, buttons[0]->height() / 2));
  EXPECT_EQ(twice, 0);
}

TEST_F(ChoiceViewsTest, AScrollBarHandsOnItsValue) {
  auto& bar = container.Add<ScrollBar>("vScroll");
  bar.SetRange(0, 9);
  auto& view = Make<QtScrollBar>(bar);
  Show();
  view.setValue(4);
  EXPECT_EQ(bar.Value(), 4);
  bar.SetValue(7);
  EXPECT_EQ(view.value(), 7);
  bar.SetRange(0, 5);
  EXPECT_EQ(view.maximum(), 5);
  EXPECT_EQ(view.value(), 5);
}

TEST_F(ChoiceViewsTest, TheArrowsBesideANumberCountByMouseAndInTheField) {
  auto& text = container.Add<TextBox>("txtLevel");
  auto& arrows = container.Add<UpDown>("udLevel");
  text.SetText("3");
  arrows.SetRange(0, 5);
  arrows.SetBuddy(&text);
  auto& field = Make<QtTextBox>(text);
  auto& view = Make<QtUpDown>(arrows);
  Show();
  const auto buttons = view.findChildren<QAbstractButton*>();
  ASSERT_EQ(buttons.size(), 2);
  QTest::mouseClick(buttons[0], Qt::LeftButton);
  EXPECT_EQ(text.Text(), "4");
  QTest::keyClick(&field, Qt::Key_Down);
  EXPECT_EQ(text.Text(), "3");
  EXPECT_EQ(field.text(), "3");
}

}  // namespace
}  // namespace qmrules::desktop
