#include "platform/scripteddialogs.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/widgets/form.h"
#include "platform/widgets/menu.h"

namespace qmrules::platform {
namespace {

template <class Call>
std::string LogicErrorText(Call call) {
  try {
    call();
  } catch (const std::logic_error& error) {
    return error.what();
  }
  return "(no error)";
}

TEST(ScriptedDialogs, GivesItsAnswersInTheirOrder) {
  ScriptedDialogs dialogs;
  dialogs.ExpectMessage(MessageAnswer::No);
  dialogs.ExpectMessage(MessageAnswer::Cancel, "Continue?");
  dialogs.ExpectMessage(MessageAnswer::Ok);
  EXPECT_EQ(dialogs.Remaining(), 3U);
  EXPECT_EQ(dialogs.MessageBox("Delete?", "Rules", MessageStyle::Question), MessageAnswer::No);
  EXPECT_EQ(dialogs.MessageBox("Continue?", "Rules", MessageStyle::QuestionOkCancel), MessageAnswer::Cancel);
  EXPECT_EQ(dialogs.MessageBox("Done.", "Rules", MessageStyle::Information), MessageAnswer::Ok);
  EXPECT_EQ(dialogs.Remaining(), 0U);
  EXPECT_EQ(dialogs.MessageTexts(), (std::vector<std::string>{"Delete?", "Continue?", "Done."}));
}

TEST(ScriptedDialogs, RemembersWhatWasShown) {
  ScriptedDialogs dialogs;
  dialogs.ExpectMessage(MessageAnswer::Ok);
  dialogs.MessageBox("No rules were found.", "Business Rules", MessageStyle::Exclamation);
  ASSERT_EQ(dialogs.History().size(), 1U);
  EXPECT_EQ(dialogs.History()[0].kind, ScriptedDialogs::Kind::MessageBox);
  EXPECT_EQ(dialogs.History()[0].name, "No rules were found.");
  EXPECT_EQ(dialogs.History()[0].caption, "Business Rules");
  EXPECT_EQ(dialogs.History()[0].style, MessageStyle::Exclamation);
}

TEST(ScriptedDialogs, ADialogBehindTheScriptsEndIsNamed) {
  ScriptedDialogs dialogs;
  widgets::Form form("frmRule");
  widgets::Menu menu("mnuPopup");
  EXPECT_EQ(LogicErrorText([&] { dialogs.MessageBox("Sure?", "Rules", MessageStyle::Question); }),
            "unexpected message box \"Sure?\": the script is at its end");
  EXPECT_EQ(LogicErrorText([&] { form.Show(dialogs); }), "unexpected form \"frmRule\": the script is at its end");
  EXPECT_FALSE(form.Visible());
  EXPECT_EQ(LogicErrorText([&] { dialogs.PopupMenu(menu); }), "unexpected menu \"mnuPopup\": the script is at its end");
  EXPECT_EQ(LogicErrorText([&] {
              dialogs.PickFileToOpen({"Import Rules", {}, {}, {}});
            }),
            "unexpected file to open \"Import Rules\": the script is at its end");
  EXPECT_EQ(LogicErrorText([&] {
              dialogs.PickFileToSave({"Export Rules", {}, {}, {}});
            }),
            "unexpected file to save \"Export Rules\": the script is at its end");
}

TEST(ScriptedDialogs, AnotherDialogThanTheScriptsIsNamed) {
  ScriptedDialogs dialogs;
  dialogs.ExpectForm("frmRule", [](widgets::Form&) { FAIL(); });
  widgets::Form form("frmRuleSet");
  EXPECT_EQ(LogicErrorText([&] { form.Show(dialogs); }),
            "unexpected form \"frmRuleSet\": the script has another dialog here");
  EXPECT_EQ(LogicErrorText([&] { dialogs.MessageBox("Sure?", "Rules", MessageStyle::Question); }),
            "unexpected message box \"Sure?\": the script has another dialog here");
  EXPECT_EQ(dialogs.Remaining(), 1U);
}

TEST(ScriptedDialogs, AMessageOfAnotherTextIsNamed) {
  ScriptedDialogs dialogs;
  dialogs.ExpectMessage(MessageAnswer::Yes, "Continue?");
  EXPECT_EQ(LogicErrorText([&] { dialogs.MessageBox("Stop?", "Rules", MessageStyle::Question); }),
            "unexpected message box \"Stop?\": the script has another dialog here");
}

TEST(ScriptedDialogs, AnAnswerThatTheStyleDoesNotOfferIsRefused) {
  ScriptedDialogs dialogs;
  dialogs.ExpectMessage(MessageAnswer::Yes);
  EXPECT_EQ(LogicErrorText([&] { dialogs.MessageBox("Done.", "Rules", MessageStyle::Information); }),
            "the message box \"Done.\" does not offer the answer of the script");
}

TEST(ScriptedDialogs, AFormThatTheScriptLeavesShownIsNamed) {
  ScriptedDialogs dialogs;
  dialogs.ExpectForm("frmRule", [](widgets::Form& form) { EXPECT_TRUE(form.Visible()); });
  widgets::Form form("frmRule");
  EXPECT_EQ(LogicErrorText([&] { form.Show(dialogs); }), "the script leaves the form \"frmRule\" shown");
  EXPECT_FALSE(form.Visible());
}

TEST(ScriptedDialogs, PicksTheScriptsFiles) {
  ScriptedDialogs dialogs;
  dialogs.ExpectOpenFile("C:\\in.erd");
  dialogs.ExpectSaveFile(std::nullopt);
  EXPECT_EQ(dialogs.PickFileToOpen({"Import Rules", "FWK ERD file|*.erd|", "C:\\src", {}}), "C:\\in.erd");
  EXPECT_EQ(dialogs.PickFileToSave({"Export Rules", "FWK ERD file|*.erd|", "C:\\src", "rules.erd"}), std::nullopt);
  EXPECT_EQ(dialogs.History()[0].request.filter, "FWK ERD file|*.erd|");
  EXPECT_EQ(dialogs.History()[1].request.defaultName, "rules.erd");
}

TEST(ScriptedDialogs, AMenusChoiceRunsBeforeTheMenuIsClosed) {
  ScriptedDialogs dialogs;
  widgets::Menu menu("mnuPopup");
  std::string order;
  const auto click = menu.Add("mnuChanger", "Rules Changer...").OnClick.Subscribe([&] { order += "click "; });
  dialogs.ExpectMenu("mnuPopup", [](widgets::Menu& shown) { EXPECT_TRUE(shown.Item("mnuChanger").Click()); });
  dialogs.PopupMenu(menu);
  order += "closed";
  EXPECT_EQ(order, "click closed");
}

}  // namespace
}  // namespace qmrules::platform
