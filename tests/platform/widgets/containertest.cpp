#include "platform/widgets/container.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/widgets/button.h"
#include "platform/widgets/checkbox.h"
#include "platform/widgets/frame.h"
#include "platform/widgets/label.h"
#include "platform/widgets/optiongroup.h"
#include "platform/widgets/richtextbox.h"
#include "platform/widgets/toolbar.h"

namespace qmrules::platform::widgets {
namespace {

class ContainerTest : public testing::Test {
 protected:
  Container container;
  Label& lblName = container.Add<Label>("lblName");
  TextBox& txtName = container.Add<TextBox>("txtName");
  RichTextBox& rtbDescr = container.Add<RichTextBox>("rtbDescr");
  Button& cmdOK = container.Add<Button>("cmdOK");
  Button& cmdCancel = container.Add<Button>("cmdCancel");
};

TEST_F(ContainerTest, FindsByNameAndIndex) {
  TextBox& third = container.Add<TextBox>("txtAttrs", 3);
  EXPECT_EQ(container.Find("txtAttrs", 3), &third);
  EXPECT_EQ(container.Find("txtAttrs"), nullptr);
  EXPECT_EQ(&container.Get<TextBox>("txtAttrs", 3), &third);
  EXPECT_THROW(container.Get<Button>("txtName"), std::out_of_range);
  EXPECT_THROW(container.Get<TextBox>("txtGone"), std::out_of_range);
}

TEST_F(ContainerTest, ANameAndIndexStandOnce) {
  EXPECT_THROW(container.Add<TextBox>("txtName"), std::invalid_argument);
  EXPECT_NO_THROW(container.Add<TextBox>("txtName", 1));
}

TEST_F(ContainerTest, TheActiveControlIsToldByNameAndIndex) {
  EXPECT_EQ(container.ActiveControl(), std::nullopt);
  TextBox& third = container.Add<TextBox>("txtAttrs", 3);
  EXPECT_TRUE(third.SetFocus());
  EXPECT_EQ(container.ActiveControl(), (platform::ActiveControl{"txtAttrs", 3}));
}

TEST_F(ContainerTest, FocusIsLostHereBeforeItIsGotThere) {
  std::string order;
  const auto lost = txtName.OnLostFocus.Subscribe([&](FocusLoss& loss) {
    EXPECT_EQ(loss.next, &cmdOK);
    EXPECT_TRUE(txtName.HasFocus());
    order += "lost ";
  });
  const auto got = cmdOK.OnGotFocus.Subscribe([&] {
    EXPECT_TRUE(cmdOK.HasFocus());
    order += "got";
  });
  txtName.SetFocus();
  EXPECT_TRUE(cmdOK.SetFocus());
  EXPECT_EQ(order, "lost got");
}

TEST_F(ContainerTest, ACancelledLossKeepsTheFocusAndTheUsersAction) {
  const auto lost = txtName.OnLostFocus.Subscribe([](FocusLoss& loss) { loss.cancel = true; });
  int clicks = 0;
  const auto click = cmdOK.OnClick.Subscribe([&] { ++clicks; });
  txtName.SetFocus();
  EXPECT_FALSE(cmdOK.Press());
  EXPECT_EQ(clicks, 0);
  EXPECT_TRUE(txtName.HasFocus());
}

TEST_F(ContainerTest, AHandlerSeesWhereTheFocusIsGoing) {
  const auto lost = txtName.OnLostFocus.Subscribe([this](FocusLoss& loss) { loss.cancel = loss.next != &cmdCancel; });
  txtName.SetFocus();
  EXPECT_FALSE(rtbDescr.SetFocus());
  EXPECT_TRUE(cmdCancel.Press());
  EXPECT_TRUE(cmdCancel.HasFocus());
}

TEST_F(ContainerTest, SendingTheFocusBackWhileItLeavesKeepsIt) {
  const auto lost = txtName.OnLostFocus.Subscribe([this](FocusLoss&) { txtName.SetFocus(); });
  txtName.SetFocus();
  EXPECT_FALSE(cmdOK.SetFocus());
  EXPECT_TRUE(txtName.HasFocus());
}

TEST_F(ContainerTest, SendingTheFocusElsewhereWhileItLeavesMovesItThere) {
  const auto lost = txtName.OnLostFocus.Subscribe([this](FocusLoss&) { rtbDescr.SetFocus(); });
  txtName.SetFocus();
  EXPECT_FALSE(cmdOK.SetFocus());
  EXPECT_TRUE(rtbDescr.HasFocus());
}

TEST_F(ContainerTest, AWidgetThatGetsTheFocusCanPassItOn) {
  const auto got = txtName.OnGotFocus.Subscribe([this] { rtbDescr.SetFocus(); });
  EXPECT_FALSE(txtName.SetFocus());
  EXPECT_TRUE(rtbDescr.HasFocus());
}

TEST_F(ContainerTest, AnErrorWhileTheFocusLeavesLeavesItMovable) {
  {
    const auto lost = txtName.OnLostFocus.Subscribe([](FocusLoss&) { throw std::runtime_error("refused"); });
    txtName.SetFocus();
    EXPECT_THROW(cmdOK.SetFocus(), std::runtime_error);
    EXPECT_TRUE(txtName.HasFocus());
  }
  EXPECT_TRUE(cmdOK.SetFocus());
}

TEST_F(ContainerTest, AHiddenWidgetDoesNotHoldTheFocus) {
  const auto lost = txtName.OnLostFocus.Subscribe([](FocusLoss& loss) { loss.cancel = true; });
  txtName.SetFocus();
  txtName.SetVisible(false);
  EXPECT_EQ(container.ActiveWidget(), nullptr);
  EXPECT_TRUE(cmdOK.SetFocus());
}

TEST_F(ContainerTest, HiddenDisabledAndFocuslessWidgetsDoNotTakeTheFocus) {
  txtName.SetVisible(false);
  rtbDescr.SetEnabled(false);
  EXPECT_FALSE(txtName.SetFocus());
  EXPECT_FALSE(rtbDescr.SetFocus());
  EXPECT_FALSE(lblName.SetFocus());
}

TEST_F(ContainerTest, TabGoesAroundTheTabStops) {
  rtbDescr.SetTabStop(false);
  EXPECT_TRUE(container.PressKey(Key::Tab));
  EXPECT_TRUE(txtName.HasFocus());
  container.PressKey(Key::Tab);
  EXPECT_TRUE(cmdOK.HasFocus());
  container.PressKey(Key::Tab);
  container.PressKey(Key::Tab);
  EXPECT_TRUE(txtName.HasFocus());
  container.PressKey(Key::Tab, {.shift = true});
  EXPECT_TRUE(cmdCancel.HasFocus());
}

TEST_F(ContainerTest, TabStaysWhereThereIsNoOtherStop) {
  txtName.SetFocus();
  for (Widget* widget : {static_cast<Widget*>(&rtbDescr), static_cast<Widget*>(&cmdOK)}) widget->SetTabStop(false);
  cmdCancel.SetEnabled(false);
  EXPECT_FALSE(container.FocusNext());
  EXPECT_FALSE(container.FocusPrevious());
  EXPECT_TRUE(txtName.HasFocus());
  Container empty;
  EXPECT_FALSE(empty.FocusNext());
}

TEST_F(ContainerTest, ReleasingTheFocusAsksTheWidgetThatHasIt) {
  EXPECT_TRUE(container.ReleaseFocus());
  bool refuse = true;
  const auto lost = txtName.OnLostFocus.Subscribe([&](FocusLoss& loss) {
    EXPECT_EQ(loss.next, nullptr);
    loss.cancel = refuse;
  });
  txtName.SetFocus();
  EXPECT_FALSE(container.ReleaseFocus());
  EXPECT_TRUE(txtName.HasFocus());
  refuse = false;
  EXPECT_TRUE(container.ReleaseFocus());
  EXPECT_EQ(container.ActiveWidget(), nullptr);
}

TEST_F(ContainerTest, EnterPressesTheDefaultButtonAndEscapeTheCancelButton) {
  std::string pressed;
  const auto ok = cmdOK.OnClick.Subscribe([&] { pressed += "ok "; });
  const auto cancel = cmdCancel.OnClick.Subscribe([&] { pressed += "cancel "; });
  txtName.SetFocus();
  EXPECT_FALSE(container.PressKey(Key::Enter));
  container.SetDefaultButton(&cmdOK);
  container.SetCancelButton(&cmdCancel);
  EXPECT_TRUE(container.PressKey(Key::Enter));
  txtName.SetFocus();
  EXPECT_TRUE(container.PressKey(Key::Escape));
  EXPECT_EQ(pressed, "ok cancel ");
}

TEST_F(ContainerTest, EnterPressesTheButtonWithTheFocusAndBreaksALineInAMultiLineText) {
  std::string pressed;
  const auto ok = cmdOK.OnClick.Subscribe([&] { pressed += "ok "; });
  const auto cancel = cmdCancel.OnClick.Subscribe([&] { pressed += "cancel "; });
  container.SetDefaultButton(&cmdOK);
  cmdCancel.SetFocus();
  container.PressKey(Key::Enter);
  rtbDescr.SetFocus();
  container.PressKey(Key::Enter);
  EXPECT_EQ(pressed, "cancel ");
  EXPECT_EQ(rtbDescr.Text(), "\r\n");
}

TEST_F(ContainerTest, ADisabledDefaultButtonIsNotPressed) {
  container.SetDefaultButton(&cmdOK);
  cmdOK.SetEnabled(false);
  txtName.SetFocus();
  EXPECT_FALSE(container.PressKey(Key::Enter));
}

TEST_F(ContainerTest, AMnemonicOfALabelLeadsToTheNextWidget) {
  lblName.SetCaption("&Name:");
  cmdOK.SetFocus();
  EXPECT_TRUE(container.PressMnemonic("n"));
  EXPECT_TRUE(txtName.HasFocus());
  EXPECT_FALSE(container.PressMnemonic("q"));
}

TEST_F(ContainerTest, AMnemonicPressesButtonsAndTurnsBoxes) {
  CheckBox& chkProject = container.Add<CheckBox>("chkProject");
  chkProject.SetCaption("&Project Only");
  OptionGroup& optAction = container.Add<OptionGroup>("optAction");
  optAction.Add("&Copy");
  optAction.Add("&Move");
  int clicks = 0;
  const auto ok = cmdOK.OnClick.Subscribe([&] { ++clicks; });
  cmdOK.SetCaption("&OK");
  EXPECT_TRUE(container.PressMnemonic("O"));
  EXPECT_EQ(clicks, 1);
  EXPECT_TRUE(container.PressMnemonic("p"));
  EXPECT_TRUE(chkProject.Checked());
  EXPECT_TRUE(container.PressMnemonic("m"));
  EXPECT_EQ(optAction.Value(), 1);
}

TEST_F(ContainerTest, WhereTwoShareAMnemonicTheOneBehindTheFocusAnswers) {
  std::string pressed;
  cmdOK.SetCaption("&Close");
  cmdCancel.SetCaption("&Cancel");
  const auto ok = cmdOK.OnClick.Subscribe([&] { pressed += "ok "; });
  const auto cancel = cmdCancel.OnClick.Subscribe([&] { pressed += "cancel "; });
  txtName.SetFocus();
  container.PressMnemonic("c");
  container.PressMnemonic("c");
  container.PressMnemonic("c");
  EXPECT_EQ(pressed, "ok cancel ok ");
}

TEST_F(ContainerTest, AMnemonicOfAHiddenOrDisabledWidgetDoesNothing) {
  cmdOK.SetCaption("&OK");
  cmdOK.SetEnabled(false);
  EXPECT_FALSE(container.PressMnemonic("o"));
}

TEST_F(ContainerTest, AFramesMnemonicLeadsIntoIt) {
  Frame& frType = container.Add<Frame>("frType");
  frType.SetCaption("&Kind:");
  OptionGroup& optType = container.Add<OptionGroup>("optType");
  optType.SetEnclosing(&frType);
  optType.Add("&Input");
  EXPECT_TRUE(container.PressMnemonic("k"));
  EXPECT_TRUE(optType.HasFocus());
}

TEST_F(ContainerTest, AToolBarClickLeavesTheFocus) {
  ToolBar& tbToolbar = container.Add<ToolBar>("tbToolbar");
  tbToolbar.Add("Delete", "Delete");
  int lost = 0;
  const auto loss = txtName.OnLostFocus.Subscribe([&](FocusLoss&) { ++lost; });
  txtName.SetFocus();
  EXPECT_TRUE(tbToolbar.Click("Delete"));
  EXPECT_EQ(lost, 0);
  EXPECT_TRUE(txtName.HasFocus());
}

TEST_F(ContainerTest, TheAccessibleNameIsTheCaptionOrTheLabelBefore) {
  lblName.SetCaption("&Name:");
  cmdOK.SetCaption("&OK");
  rtbDescr.SetToolTipText("What it does");
  EXPECT_EQ(container.AccessibleNameOf(txtName), "Name");
  EXPECT_EQ(container.AccessibleNameOf(cmdOK), "OK");
  EXPECT_EQ(container.AccessibleNameOf(rtbDescr), "What it does");
  txtName.SetAccessibleName("Name of the rule");
  EXPECT_EQ(container.AccessibleNameOf(txtName), "Name of the rule");
}

TEST_F(ContainerTest, ARemovedWidgetIsForgottenEverywhere) {
  container.SetDefaultButton(&cmdOK);
  cmdOK.SetFocus();
  container.Remove(cmdOK);
  EXPECT_EQ(container.ActiveWidget(), nullptr);
  EXPECT_EQ(container.DefaultButton(), nullptr);
  EXPECT_EQ(container.Find("cmdOK"), nullptr);
  EXPECT_TRUE(txtName.SetFocus());
}

TEST_F(ContainerTest, AViewIsToldOfWidgetsThatComeAndGo) {
  std::vector<std::string> told;
  const auto added =
      container.OnWidgetAdded.Subscribe([&](const Widget& widget) { told.push_back("added " + widget.Name()); });
  const auto removing = container.OnWidgetRemoving.Subscribe([&](const Widget& widget) {
    told.push_back("removing " + widget.Name());
    EXPECT_EQ(container.Find(widget.Name()), &widget);
  });
  TextBox& txtNew = container.Add<TextBox>("txtNew");
  container.Remove(txtNew);
  EXPECT_EQ(told, (std::vector<std::string>{"added txtNew", "removing txtNew"}));
}

TEST_F(ContainerTest, TheGoalMayBeRemovedWhileTheFocusIsOnItsWay) {
  const auto lost = txtName.OnLostFocus.Subscribe([this](FocusLoss&) { container.Remove(cmdOK); });
  txtName.SetFocus();
  EXPECT_FALSE(cmdOK.SetFocus());
  EXPECT_EQ(container.ActiveWidget(), nullptr);
}

}  // namespace
}  // namespace qmrules::platform::widgets
