#include "platform/widgets/form.h"

#include <gtest/gtest.h>

#include "platform/scripteddialogs.h"
#include "platform/widgets/button.h"
#include "platform/widgets/combobox.h"
#include "platform/widgets/label.h"
#include "platform/widgets/textbox.h"

namespace qmrules::platform::widgets {
namespace {

class FormTest : public testing::Test {
 protected:
  FormTest() {
    form.SetDefaultButton(&cmdOK);
    form.SetCancelButton(&cmdCancel);
  }

  ScriptedDialogs dialogs;
  Form form{"frmRule"};
  ComboBox& cmbFunction = form.Add<ComboBox>("cmbFunction");
  TextBox& txtName = form.Add<TextBox>("txtName");
  Button& cmdOK = form.Add<Button>("cmdOK");
  Button& cmdCancel = form.Add<Button>("cmdCancel");
  Subscription ok = cmdOK.OnClick.Subscribe([this] { form.Hide(); });
  Subscription cancel = cmdCancel.OnClick.Subscribe([this] { form.Hide(); });
};

TEST_F(FormTest, IsShownUntilAHandlerHidesIt) {
  dialogs.ExpectForm("frmRule", [this](Form& shown) {
    EXPECT_TRUE(shown.Visible());
    txtName.Type("Check");
    EXPECT_TRUE(shown.PressKey(Key::Enter));
    EXPECT_FALSE(shown.Visible());
  });
  EXPECT_FALSE(form.Visible());
  form.Show(dialogs);
  EXPECT_FALSE(form.Visible());
  EXPECT_EQ(txtName.Text(), "Check");
}

TEST_F(FormTest, TakesNoUserActionWhileHidden) {
  EXPECT_FALSE(txtName.Type("Check"));
  EXPECT_FALSE(cmdOK.Press());
  EXPECT_FALSE(form.PressKey(Key::Enter));
  EXPECT_FALSE(form.PressMnemonic("n"));
  EXPECT_EQ(txtName.Text(), "");
}

TEST_F(FormTest, EachShowingBeginsOnTheFirstTabStop) {
  const auto script = [this](Form& shown) {
    EXPECT_TRUE(cmbFunction.HasFocus());
    shown.PressKey(Key::Escape);
  };
  dialogs.ExpectForm("frmRule", script);
  dialogs.ExpectForm("frmRule", script);
  form.Show(dialogs);
  form.Show(dialogs);
}

TEST_F(FormTest, AFocusSetWhileHiddenIsWhereTheShowingBegins) {
  int got = 0;
  const auto gotFocus = txtName.OnGotFocus.Subscribe([&] { ++got; });
  EXPECT_TRUE(txtName.SetFocus());
  EXPECT_EQ(got, 0);
  dialogs.ExpectForm("frmRule", [this](Form& shown) {
    EXPECT_TRUE(txtName.HasFocus());
    shown.Close();
  });
  form.Show(dialogs);
  EXPECT_EQ(got, 1);
}

TEST_F(FormTest, TheFirstFieldMayPassTheFirstFocusOn) {
  bool firstFocus = true;
  const auto gotFocus = cmbFunction.OnGotFocus.Subscribe([&] {
    if (std::exchange(firstFocus, false)) txtName.SetFocus();
  });
  dialogs.ExpectForm("frmRule", [this](Form& shown) {
    EXPECT_TRUE(txtName.HasFocus());
    EXPECT_TRUE(cmbFunction.SetFocus());
    EXPECT_TRUE(cmbFunction.HasFocus());
    shown.Close();
  });
  form.Show(dialogs);
}

TEST_F(FormTest, HidingAsksNoFieldToLetGo) {
  int lost = 0;
  const auto loss = txtName.OnLostFocus.Subscribe([&](FocusLoss&) { ++lost; });
  dialogs.ExpectForm("frmRule", [this](Form& shown) {
    txtName.SetFocus();
    shown.Hide();
  });
  form.Show(dialogs);
  EXPECT_EQ(lost, 0);
}

TEST_F(FormTest, ClosingTheWindowPressesTheCancelButton) {
  int cancelled = 0;
  const auto pressed = cmdCancel.OnClick.Subscribe([&] { ++cancelled; });
  dialogs.ExpectForm("frmRule", [](Form& shown) { shown.Close(); });
  form.Show(dialogs);
  EXPECT_EQ(cancelled, 1);
}

TEST_F(FormTest, ClosingTheWindowWithoutACancelButtonHidesIt) {
  form.SetCancelButton(nullptr);
  int hidden = 0;
  const auto hiding = form.OnHidden.Subscribe([&] { ++hidden; });
  dialogs.ExpectForm("frmRule", [](Form& shown) { shown.Close(); });
  form.Show(dialogs);
  EXPECT_EQ(hidden, 1);
}

TEST_F(FormTest, CannotBeShownTwiceAtOnce) {
  dialogs.ExpectForm("frmRule", [this](Form& shown) {
    EXPECT_THROW(form.Show(dialogs), std::logic_error);
    EXPECT_TRUE(shown.Visible());
    shown.Close();
  });
  form.Show(dialogs);
}

TEST_F(FormTest, HidesWhileAnotherShowsAndReturnsBehindIt) {
  Form inner("frmRuleSet");
  Button& innerOK = inner.Add<Button>("cmdOK");
  const auto hideInner = innerOK.OnClick.Subscribe([&] { inner.Hide(); });
  Button& cmdNew = form.Add<Button>("cmdNew");
  std::string order;
  const auto openInner = cmdNew.OnClick.Subscribe([&] {
    form.Hide();
    inner.Show(dialogs);
    order += "handler ";
  });
  dialogs.ExpectForm("frmRule", [&](Form&) { EXPECT_TRUE(cmdNew.Press()); });
  dialogs.ExpectForm("frmRuleSet", [&](Form&) {
    EXPECT_FALSE(form.Visible());
    innerOK.Press();
    order += "inner ";
  });
  form.Show(dialogs);
  order += "outer";
  EXPECT_EQ(order, "inner handler outer");
}

TEST_F(FormTest, AnotherFormMayShowAboveIt) {
  Form inner("frmBusinessFunction");
  Button& cmdNew = form.Add<Button>("cmdNewFunction");
  const auto openInner = cmdNew.OnClick.Subscribe([&] { inner.Show(dialogs); });
  dialogs.ExpectForm("frmRule", [&](Form& shown) {
    cmdNew.Press();
    EXPECT_TRUE(shown.Visible());
    EXPECT_TRUE(cmdNew.HasFocus());
    shown.Close();
  });
  dialogs.ExpectForm("frmBusinessFunction", [](Form& shown) { shown.Close(); });
  form.Show(dialogs);
}

TEST_F(FormTest, AFailureWhileShownLeavesItHidden) {
  dialogs.ExpectForm("frmRule", [](Form&) { throw std::runtime_error("broken"); });
  EXPECT_THROW(form.Show(dialogs), std::runtime_error);
  EXPECT_FALSE(form.Visible());
}

TEST_F(FormTest, AFormHiddenByItsFirstFocusIsNotShown) {
  const auto gotFocus = cmbFunction.OnGotFocus.Subscribe([this] { form.Hide(); });
  form.Show(dialogs);
  EXPECT_TRUE(dialogs.History().empty());
}

TEST_F(FormTest, CaptionAndHelpTopicAreShown) {
  int told = 0;
  const auto changes = form.OnChanged.Subscribe([&] { ++told; });
  form.SetCaption("Create Rule");
  form.SetHelpContext(2010377);
  EXPECT_EQ(form.Caption(), "Create Rule");
  EXPECT_EQ(form.HelpContext(), 2010377);
  EXPECT_EQ(told, 2);
}

}  // namespace
}  // namespace qmrules::platform::widgets
