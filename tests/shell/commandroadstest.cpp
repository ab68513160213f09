#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "browser/commandtable.h"
#include "browser/rulelists.h"
#include "catalogue/gateway.h"
#include "platform/error.h"
#include "shell/commandhandlers.h"
#include "shell/controltest.h"
#include "workbench/repository/store.h"

namespace qmrules::shell {
namespace {

using browser::CommandEntry;
using browser::CommandTable;
using catalogue::MakeKey;
using platform::MessageAnswer;
using platform::MessageStyle;
using platform::ScriptedDialogs;
using platform::widgets::Form;
using platform::widgets::Key;
using platform::widgets::Menu;

constexpr const char* kNotAvailable = "The action is not available in this context.";

// The commands whose jobs are there.
bool IsBuilt(std::string_view key) {
  for (const std::string_view built : {"PreviousSelected", "NextSelected", "Selected", "SelectAll", "UnselectAll",
                                       "MoveUp", "MoveDown", "Emphasize", "Validate", "ActivityLog"}) {
    if (key == built) return true;
  }
  return false;
}

class CommandRoadsTest : public ControlTest {
 protected:
  CommandRoadsTest() { Open(); }

  bool AllAreChecked() {
    for (const auto* node = tvObjects.First(); node != nullptr; node = node->NextInOrder()) {
      if (!node->Checked()) return false;
    }
    return true;
  }
  void OpenPopup(ScriptedDialogs::MenuScript script) {
    dialogs.ExpectMenu("mnuPopup", std::move(script));
    tvObjects.RightClick(&Node("Fees"));
  }
  std::string NameOf(std::int32_t function) { return store.Get(MakeKey("BUSINESSFUNC", function), "Name").Text(); }
};

TEST_F(CommandRoadsTest, EveryCommandHasAHandler) {
  for (const CommandEntry& entry : CommandTable()) {
    EXPECT_EQ(CommandHandlers::Knows(entry.key), !entry.IsSeparator()) << entry.key;
  }
  EXPECT_TRUE(CommandHandlers::Knows("CreateListRules"));
  for (const auto key : {browser::kCreateDataElement, browser::kCreateCondition, browser::kDeleteElements,
                         browser::kEditElement, browser::kSyncBusinessNames}) {
    EXPECT_TRUE(CommandHandlers::Knows(key)) << key;
  }
  EXPECT_FALSE(CommandHandlers::Knows("-0"));
  EXPECT_FALSE(CommandHandlers::Knows(""));
  EXPECT_FALSE(CommandHandlers::Knows("Changer "));
}

TEST_F(CommandRoadsTest, ACommandComesFromTheHostsMenu) {
  const platform::Value result = Request("SelectAll");
  EXPECT_TRUE(AllAreChecked());
  EXPECT_TRUE(result.IsAbsent());
}

TEST_F(CommandRoadsTest, ACommandComesFromAButtonOfTheToolBar) {
  Click("Fees");
  EXPECT_TRUE(widgets.tbToolbar.Click("MoveDown"));
  EXPECT_EQ(Tree().substr(0, 23), "Billing\n  Taxes\n  Fees\n");
}

TEST_F(CommandRoadsTest, ACommandComesFromTheMenuOfAButton) {
  EXPECT_TRUE(widgets.tbToolbar.ClickMenu("Find", "SelectAll"));
  EXPECT_TRUE(AllAreChecked());
}

TEST_F(CommandRoadsTest, ACommandComesFromThePopupMenu) {
  Click("Fees");
  OpenPopup([](Menu& menu) { menu.Item("mnuMoveDown").Click(); });
  EXPECT_EQ(Tree().substr(0, 23), "Billing\n  Taxes\n  Fees\n");
}

TEST_F(CommandRoadsTest, ACommandComesFromAKey) {
  tvObjects.PressKey(Key::A, {.ctrl = true});
  EXPECT_TRUE(AllAreChecked());
  tvObjects.PressKey(Key::U, {.ctrl = true});
  EXPECT_FALSE(Node("Fees").Checked());
  ExpectNotAvailable();
  tvObjects.PressKey(Key::Delete);
  EXPECT_EQ(dialogs.Remaining(), 0U);
}

TEST_F(CommandRoadsTest, ShiftF10OpensThePopupMenu) {
  dialogs.ExpectMenu("mnuPopup", [](Menu&) {});
  tvObjects.PressKey(Key::F10, {.shift = true});
  EXPECT_EQ(dialogs.Remaining(), 0U);
}

TEST_F(CommandRoadsTest, WhatIsNotBuiltYetSaysSoOnEveryRoad) {
  OpenAll();
  Click("Base fee");
  for (const CommandEntry& entry : CommandTable()) {
    if (entry.IsSeparator() || IsBuilt(entry.key)) continue;
    ExpectNotAvailable();
    Request(std::string(entry.key));
    EXPECT_EQ(dialogs.Remaining(), 0U) << entry.key << " from the host";
    auto& menuItem = widgets.mnuPopup.Item(entry.menuItem);
    if (menuItem.Enabled() && menuItem.Visible()) {
      ExpectNotAvailable();
      menuItem.Click();
      EXPECT_EQ(dialogs.Remaining(), 0U) << entry.key << " from the menu";
    }
    if (entry.IsOnButton() && widgets.tbToolbar.Button(entry.button).Enabled()) {
      ExpectNotAvailable();
      widgets.tbToolbar.Click(entry.button);
      EXPECT_EQ(dialogs.Remaining(), 0U) << entry.key << " from the tool bar";
    }
  }
  for (const auto& shown : dialogs.History()) {
    EXPECT_EQ(shown.name, kNotAvailable);
    EXPECT_EQ(shown.style, MessageStyle::Exclamation);
    EXPECT_EQ(shown.caption, "Business Rules");
  }
}

TEST_F(CommandRoadsTest, TheListsOfARuleSayItToo) {
  OpenAll();
  Click("Base fee");
  ExpectNotAvailable();
  widgets.lvIOElems.SetFocus();
  EXPECT_TRUE(widgets.lvIOElems.PressKey(Key::Insert));
  EXPECT_EQ(dialogs.Remaining(), 0U);
}

TEST_F(CommandRoadsTest, AMethodForAnotherComponentIsIgnored) {
  workspace.RequestMethod("Gleaner", "SelectAll");
  EXPECT_FALSE(Node("Fees").Checked());
  widgets.txtObjName.SetFocus();
  widgets.txtObjName.Enter("Invoicing");
  workspace.RequestMethod("Gleaner", "SelectAll");
  EXPECT_EQ(NameOf(billing), "Billing") << "nothing is committed either";
}

TEST_F(CommandRoadsTest, ATextThatIsNoCommandIsIgnored) {
  for (const char* text : {"", "-0", "selectall", "SelectAll ", "mnuSelectAll", "DeleteElements"}) {
    EXPECT_TRUE(Request(text).IsAbsent()) << text;
  }
  EXPECT_FALSE(Node("Fees").Checked());
  EXPECT_TRUE(dialogs.History().empty());
}

TEST_F(CommandRoadsTest, CreateListRulesAloneGivesAResult) {
  ExpectNotAvailable();
  EXPECT_EQ(Request("CreateListRules"), platform::Value(true));
  ExpectNotAvailable();
  EXPECT_TRUE(Request("CreateRule").IsAbsent());
}

TEST_F(CommandRoadsTest, AMethodCommitsTheEditThatIsPending) {
  Click("Billing");
  widgets.txtObjName.SetFocus();
  widgets.txtObjName.Enter("Invoicing");
  Request("SelectAll");
  EXPECT_EQ(NameOf(billing), "Invoicing");
  EXPECT_TRUE(AllAreChecked());
}

TEST_F(CommandRoadsTest, AMethodThatComesWhileAFieldHoldsAnInvalidNameHasNoEffect) {
  Click("Billing");
  widgets.txtObjName.SetFocus();
  widgets.txtObjName.Enter("   ");
  ExpectMessage("Name cannot be empty.");
  Request("SelectAll");
  EXPECT_FALSE(Node("Fees").Checked());
  EXPECT_EQ(NameOf(billing), "Billing");
  EXPECT_TRUE(widgets.txtObjName.HasFocus());
}

TEST_F(CommandRoadsTest, CreateListRulesGivesNoResultWhileAFieldHoldsAnInvalidName) {
  Click("Billing");
  widgets.txtObjName.SetFocus();
  widgets.txtObjName.Enter("");
  ExpectMessage("Name cannot be empty.");
  EXPECT_TRUE(Request("CreateListRules").IsAbsent());
}

TEST_F(CommandRoadsTest, AClickInTheToolBarCommitsTheEditThatIsPending) {
  Click("Billing");
  widgets.txtObjName.SetFocus();
  widgets.txtObjName.Enter("Invoicing");
  widgets.tbToolbar.ClickMenu("Find", "SelectAll");
  EXPECT_EQ(NameOf(billing), "Invoicing");
  widgets.txtObjName.Enter(" ");
  ExpectMessage("Name cannot be empty.");
  widgets.tbToolbar.ClickMenu("Find", "UnselectAll");
  EXPECT_TRUE(AllAreChecked());
}

TEST_F(CommandRoadsTest, TheRulesChangerOfThePopupOpensOnlyAfterTheMenuHasClosed) {
  std::size_t shownInside = 0;
  dialogs.ExpectMenu("mnuPopup", [&](Menu& menu) {
    menu.Item("mnuChanger").Click();
    shownInside = dialogs.History().size();
  });
  ExpectNotAvailable();
  tvObjects.RightClick(&Node("Fees"));
  EXPECT_EQ(shownInside, 1U) << "the menu alone";
  EXPECT_EQ(dialogs.MessageTexts(), std::vector<std::string>{kNotAvailable});
}

TEST_F(CommandRoadsTest, TheRulesChangerOpensAtOnceOutsideThePopup) {
  ExpectNotAvailable();
  Request("Changer");
  ExpectNotAvailable();
  widgets.tbToolbar.Click("Change");
  EXPECT_EQ(dialogs.Remaining(), 0U);
}

TEST_F(CommandRoadsTest, TheOtherCommandsOfThePopupRunInsideTheMenu) {
  std::size_t shownInside = 0;
  dialogs.ExpectMenu("mnuPopup", [&](Menu& menu) {
    ExpectNotAvailable();
    menu.Item("mnuDelete").Click();
    shownInside = dialogs.History().size();
  });
  tvObjects.RightClick(&Node("Fees"));
  EXPECT_EQ(shownInside, 2U);
}

TEST_F(CommandRoadsTest, AShowWhileThePopupIsOpenForgetsThatItIs) {
  std::size_t shownInside = 0;
  OpenPopup([&](Menu& menu) {
    control.Show();
    ExpectNotAvailable();
    menu.Item("mnuChanger").Click();
    shownInside = dialogs.MessageTexts().size();
  });
  EXPECT_EQ(shownInside, 1U) << "at once";
  EXPECT_EQ(dialogs.MessageTexts().size(), 1U);
}

TEST_F(CommandRoadsTest, APopupThatFailsPutsNothingOff) {
  dialogs.ExpectMenu("mnuPopup", [](Menu&) { throw platform::Error("The menu cannot be shown."); });
  EXPECT_THROW(tvObjects.RightClick(nullptr), platform::Error);
  ExpectNotAvailable();
  Request("Changer");
  EXPECT_EQ(dialogs.Remaining(), 0U);
}

TEST_F(CommandRoadsTest, APopupThatIsLeftWithoutAChoiceRunsNothing) {
  OpenPopup([](Menu&) {});
  EXPECT_TRUE(dialogs.MessageTexts().empty());
  ExpectNotAvailable();
  Request("Changer");
  EXPECT_EQ(dialogs.Remaining(), 0U) << "nothing is put off any more";
}

TEST_F(CommandRoadsTest, SelectedOnlyAndEmphasizeAreTwoState) {
  tvObjects.ClickCheckBox(Node("Claims"));
  for (const char* key : {"Selected", "Emphasize"}) {
    const CommandEntry& entry = *browser::FindCommand(key);
    Request(key);
    EXPECT_EQ(HostState(key), "enable check");
    EXPECT_TRUE(widgets.mnuPopup.Item(entry.menuItem).Checked());
    EXPECT_TRUE(widgets.tbToolbar.Button(entry.button).Pressed());
    widgets.tbToolbar.Click(entry.button);
    EXPECT_EQ(HostState(key), "enable");
    EXPECT_FALSE(widgets.tbToolbar.Button(entry.button).Pressed());
  }
}

TEST_F(CommandRoadsTest, TheActivityLogShowsForARuleOnly) {
  Request("ActivityLog");
  EXPECT_TRUE(dialogs.History().empty()) << "a function is selected";
  OpenAll();
  Click("Base fee");
  ExpectMessage("No logged activity for this rule.");
  Request("ActivityLog");
  widgets.txtObjName.SetFocus();
  widgets.txtObjName.Enter("Basic fee");
  std::size_t records = 0;
  dialogs.ExpectForm("frmActivityLog", [&](Form& form) {
    records = form.Get<platform::widgets::ListView>("lvLog").Count();
    form.Close();
  });
  widgets.tbToolbar.Click("ActivityLog");
  EXPECT_EQ(records, 1U);
}

TEST_F(CommandRoadsTest, WithoutANodeTheCommandsReturnAtOnce) {
  repository.object(MakeKey("BUSINESSFUNC", billing))->Delete();
  repository.object(MakeKey("BUSINESSFUNC", claims))->Delete();
  control.Show();
  for (const char* key :
       {"MoveUp", "MoveDown", "ActivityLog", "PreviousSelected", "NextSelected", "SelectAll", "UnselectAll"}) {
    Request(key);
  }
  EXPECT_TRUE(dialogs.History().empty());
  EXPECT_EQ(tvObjects.Count(), 0U);
}

TEST_F(CommandRoadsTest, NextAndPreviousSelectedDoNothingWithoutASearch) {
  Request("NextSelected");
  Request("PreviousSelected");
  EXPECT_EQ(SelectedText(), "Billing");
}

TEST_F(CommandRoadsTest, MovingTheFirstNodeDownMakesItMovableUp) {
  Click("Fees");
  EXPECT_EQ(HostState("MoveUp"), "disable");
  Request("MoveDown");
  EXPECT_EQ(SelectedText(), "Fees");
  EXPECT_EQ(HostState("MoveUp"), "enable");
  EXPECT_EQ(HostState("MoveDown"), "enable");
  Request("MoveDown");
  EXPECT_EQ(HostState("MoveDown"), "disable");
  Request("MoveUp");
  EXPECT_EQ(HostState("MoveDown"), "enable");
}

TEST_F(CommandRoadsTest, NoCommandDoesHarmToARuleThatAnotherProcessHasDeleted) {
  OpenAll();
  Click("Late fee");
  const std::string key = MakeKey("RULE", lateFee);
  workbench::repository::OpenStore({.path = store.StorePath(),
                                    .extensionPath = store.Folder().File("product/User.Repstry.xml"),
                                    .userName = "somebody else",
                                    .connect = {}},
                                   store.Clock())
      ->object(key)
      ->Delete();
  for (const CommandEntry& entry : CommandTable()) {
    if (entry.IsSeparator() || entry.key == "Selected") continue;
    const bool moves = entry.key == "MoveUp" || entry.key == "MoveDown";
    const bool tells = moves || !IsBuilt(entry.key) || entry.key == "ActivityLog" || entry.key == "Validate";
    if (tells) dialogs.ExpectMessage(MessageAnswer::Ok);
    Request(std::string(entry.key));
    EXPECT_EQ(dialogs.Remaining(), 0U) << entry.key;
    if (moves) {
      EXPECT_NE(dialogs.MessageTexts().back().find(key), std::string::npos) << dialogs.MessageTexts().back();
    }
    EXPECT_EQ(SelectedText(), "Late fee") << entry.key;
    EXPECT_EQ(Node("Fees").ChildCount(), 3U) << entry.key;
    EXPECT_FALSE(pointer.IsBusy()) << entry.key;
  }
  Request("Selected");
  Request("Selected");
  OpenAll();
  EXPECT_EQ(Node("Fees").ChildCount(), 2U);
  EXPECT_EQ(repository.CountObjects("RULE", {}), 2);
  EXPECT_EQ(repository.CountObjects("RULELOG", {}), 0);
}

}  // namespace
}  // namespace qmrules::shell
