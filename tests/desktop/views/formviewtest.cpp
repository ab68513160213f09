#include "desktop/views/formview.h"

#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

#include "desktop/views/qtdialogs.h"
#include "desktop/views/viewtest.h"
#include "platform/widgets/button.h"
#include "platform/widgets/checkbox.h"
#include "platform/widgets/combobox.h"
#include "platform/widgets/frame.h"
#include "platform/widgets/label.h"
#include "platform/widgets/listview.h"
#include "platform/widgets/richtextbox.h"
#include "platform/widgets/textbox.h"
#include "platform/widgets/updown.h"

namespace qmrules::desktop {
namespace {

using platform::widgets::Button;
using platform::widgets::CheckBox;
using platform::widgets::FocusLoss;
using platform::widgets::Form;
using platform::widgets::Frame;
using platform::widgets::Label;
using platform::widgets::ListView;
using platform::widgets::RichTextBox;
using platform::widgets::TextBox;
using platform::widgets::UpDown;
using platform::widgets::Widget;

class FormViewTest : public testing::Test {
 protected:
  FormViewTest() {
    form.SetCaption("Create Rule");
    lblName.SetCaption("&Name:");
    lblDescr.SetCaption("&Description:");
    cmdOK.SetCaption("&OK");
    cmdCancel.SetCaption("&Cancel");
    form.SetDefaultButton(&cmdOK);
    form.SetCancelButton(&cmdCancel);
  }

  FormView& Window() const { return dynamic_cast<FormView&>(*QApplication::activeModalWidget()); }
  QWidget& View(const Widget& model) const { return *Window().ViewOf(model); }
  QRect Place(const Widget& model) const {
    const QWidget& view = View(model);
    return {view.mapTo(&Window(), QPoint()), view.size()};
  }

  // Shows the form; the step acts as its user and has to end it.
  void Run(std::function<void()> step) {
    Later([this, step = std::move(step)] {
      ASSERT_TRUE(QTest::qWaitForWindowActive(&Window()));
      step();
      if (form.Visible()) form.Hide();
    });
    form.Show(dialogs);
  }

  platform::MemoryPointer pointer;
  QtDialogs dialogs{pointer, nullptr};
  Form form{"frmRule"};
  Label& lblName = form.Add<Label>("lblName");
  TextBox& txtName = form.Add<TextBox>("txtName");
  Label& lblDescr = form.Add<Label>("lblDescr");
  RichTextBox& rtbDescr = form.Add<RichTextBox>("rtbDescr");
  ListView& lvRules = form.Add<ListView>("lvRules");
  Button& cmdOK = form.Add<Button>("cmdOK");
  Button& cmdCancel = form.Add<Button>("cmdCancel");
};

TEST_F(FormViewTest, LabelsStandLeftOfTheirFieldsAndButtonsAtTheBottomRight) {
  Run([this] {
    EXPECT_EQ(Window().windowTitle(), "Create Rule");
    EXPECT_LT(Place(lblName).right(), Place(txtName).left());
    EXPECT_LT(Place(lblDescr).right(), Place(rtbDescr).left());
    EXPECT_EQ(Place(txtName).left(), Place(rtbDescr).left());
    EXPECT_GT(Place(lvRules).width(), Window().width() - 40);
    EXPECT_GT(Place(cmdOK).top(), Place(lvRules).bottom());
    EXPECT_GT(Place(cmdCancel).left(), Place(cmdOK).right());
    EXPECT_GT(Place(cmdCancel).right(), Window().width() - 40);
    EXPECT_TRUE(static_cast<QPushButton&>(View(cmdOK)).isDefault());
    const int before = Place(lvRules).height();
    Window().resize(Window().width(), Window().height() + 200);
    QCoreApplication::processEvents();
    EXPECT_GT(Place(lvRules).height(), before + 50);
  });
}

TEST_F(FormViewTest, TheUserTypesAndPressesEnter) {
  std::string typed;
  const auto ok = cmdOK.OnClick.Subscribe([&] {
    typed = txtName.Text();
    form.Hide();
  });
  Run([this] {
    EXPECT_TRUE(View(txtName).hasFocus());
    QTest::keyClicks(&View(txtName), "Rate");
    QTest::keyClick(&View(txtName), Qt::Key_Return);
  });
  EXPECT_EQ(typed, "Rate");
  EXPECT_FALSE(form.Visible());
}

TEST_F(FormViewTest, EnterInALongTextMakesALine) {
  int presses = 0;
  const auto ok = cmdOK.OnClick.Subscribe([&] { ++presses; });
  Run([this] {
    rtbDescr.SetFocus();
    QTest::keyClicks(&View(rtbDescr), "a");
    QTest::keyClick(&View(rtbDescr), Qt::Key_Return);
  });
  EXPECT_EQ(rtbDescr.Text(), "a\r\n");
  EXPECT_EQ(presses, 0);
}

TEST_F(FormViewTest, EscapeAndTheWindowsSignPressTheCancelButton) {
  int cancels = 0;
  const auto cancel = cmdCancel.OnClick.Subscribe([&] {
    ++cancels;
    form.Hide();
  });
  Run([this] { QTest::keyClick(&View(txtName), Qt::Key_Escape); });
  EXPECT_EQ(cancels, 1);
  Run([this] { Window().close(); });
  EXPECT_EQ(cancels, 2);
}

TEST_F(FormViewTest, AHandlerMayHideTheFormAndShowAnother) {
  Form other("frmOther");
  auto& cmdDone = other.Add<Button>("cmdDone");
  const auto done = cmdDone.OnClick.Subscribe([&] { other.Hide(); });
  std::vector<std::string> order;
  const auto ok = cmdOK.OnClick.Subscribe([&] {
    form.Hide();
    Later([&] {
      order.push_back(Window().objectName().toStdString());
      QTest::keyClick(&Window(), Qt::Key_Escape);
    });
    other.Show(dialogs);
    order.emplace_back("handler");
  });
  Run([this] { QTest::mouseClick(&View(cmdOK), Qt::LeftButton); });
  order.emplace_back("shown");
  EXPECT_EQ(order, (std::vector<std::string>{"frmOther", "handler", "shown"}));
}

TEST_F(FormViewTest, AFormMayBeShownAgain) {
  for (int times = 0; times < 2; ++times) {
    Run([this] { EXPECT_TRUE(View(txtName).hasFocus()); });
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  }
}

TEST_F(FormViewTest, AFieldThatKeepsTheFocusKeepsItFromTheButtons) {
  int presses = 0;
  const auto lost = txtName.OnLostFocus.Subscribe([](FocusLoss& loss) { loss.cancel = true; });
  const auto ok = cmdOK.OnClick.Subscribe([&] { ++presses; });
  Run([this] {
    QTest::mouseClick(&View(cmdOK), Qt::LeftButton);
    EXPECT_TRUE(View(txtName).hasFocus());
  });
  EXPECT_EQ(presses, 0);
}

TEST_F(FormViewTest, AFrameHoldsWhatItEncloses) {
  Frame& frame = form.AddBefore<Frame>(&cmdOK, "frFind");
  frame.SetCaption("Find");
  CheckBox& inside = form.AddBefore<CheckBox>(&cmdOK, "chkAll");
  inside.SetCaption("All");
  inside.SetEnclosing(&frame);
  Run([&] {
    EXPECT_TRUE(View(frame).isAncestorOf(&View(inside)));
    EXPECT_EQ(static_cast<QGroupBox&>(View(frame)).title(), "Find");
    frame.SetVisible(false);
    QCoreApplication::processEvents();
    EXPECT_FALSE(View(inside).isVisible());
  });
}

TEST_F(FormViewTest, AChoiceButtonAndArrowsStandBesideTheirField) {
  Button& choose = form.AddBefore<Button>(&lblDescr, "cmdChoose");
  choose.SetCaption("...");
  Run([&] {
    EXPECT_GT(Place(choose).left(), Place(txtName).right());
    EXPECT_NEAR(Place(choose).center().y(), Place(txtName).center().y(), 3);
    EXPECT_LT(Place(choose).width(), 60);
  });
}

TEST_F(FormViewTest, EveryWidgetHasAName) {
  lvRules.SetAccessibleName("Rules");
  Run([this] {
    for (const auto& model : form.Widgets()) {
      EXPECT_FALSE(View(*model).accessibleName().isEmpty()) << model->Name();
    }
  });
}

}  // namespace
}  // namespace qmrules::desktop
