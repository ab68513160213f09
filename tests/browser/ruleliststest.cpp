#include "browser/rulelists.h"

#include <gtest/gtest.h>

#include "browser/detailpanestest.h"
#include "browser/elementplace.h"
#include "support/cobolmodel.h"
#include "support/errortext.h"
#include "workbench/codemodel/codemodel.h"
#include "workbench/codemodel/modelfile.h"

namespace qmrules::browser {
namespace {

using platform::MessageAnswer;
using platform::widgets::Key;
using platform::widgets::ListRow;
using platform::widgets::Menu;
using platform::widgets::MouseButton;
using platform::widgets::ShiftState;

constexpr ShiftState kCtrl{.ctrl = true};
constexpr ShiftState kShift{.shift = true};

class RuleListsTest : public DetailPanesTest {
 protected:
  RuleListsTest() {
    AddElement("RULEIO", {{"IOName", "AMOUNT"}});
    AddElement("RULEIO", {{"IOName", "RATE"}});
    AddElement("RULECOND", {{"CondName", "ZERO"}});
  }

  std::string Selected(const platform::widgets::ListView& list) {
    std::string names;
    for (const ListRow* row : list.SelectedRows()) names += row->Text() + " ";
    return names;
  }
  // The items of the menu as it opens: caption, "-" behind one that cannot be chosen.
  std::string Items() {
    std::string items;
    dialogs.ExpectMenu("mnuAuxMain", [&](Menu& menu) {
      for (const auto& item : menu.Items()) {
        if (item->Visible()) items += item->Caption() + (item->Enabled() ? "\n" : " -\n");
      }
    });
    auto& list = widgets.tsIOCond.Selected() == "I/O" ? lvIOElems : lvConditions;
    EXPECT_TRUE(list.PressKey(Key::F10, kShift));
    return items;
  }
};

TEST_F(RuleListsTest, TheMenuOfAListWithRowsOffersAll) {
  ShowRule("Base fee");
  EXPECT_EQ(Items(), "Create...\nDelete\nEdit...\nSelect All\nUnselect All\n");
  globals.glossaryAvailable = true;
  ShowRule("Base fee");
  EXPECT_EQ(Items(), "Create...\nDelete\nEdit...\nSelect All\nUnselect All\nSync Business Names\n");
}

TEST_F(RuleListsTest, TheMenuOfAnEmptyListOffersToCreate) {
  globals.glossaryAvailable = true;
  ShowRule("Late fee");
  EXPECT_EQ(Items(), "Create...\nDelete -\nEdit... -\nSelect All -\nUnselect All -\nSync Business Names -\n");
}

TEST_F(RuleListsTest, BusinessNamesAreForDataElementsOnly) {
  globals.glossaryAvailable = true;
  ShowRule("Base fee");
  widgets.tsIOCond.Choose("Conditions");
  EXPECT_EQ(Items(), "Create...\nDelete\nEdit...\nSelect All\nUnselect All\nSync Business Names -\n");
}

TEST_F(RuleListsTest, TheRightButtonOpensTheMenuOnTheListsAndOnTheirTabs) {
  ShowRule("Base fee");
  const auto nothing = [](Menu&) {};
  dialogs.ExpectMenu("mnuAuxMain", nothing);
  lvIOElems.RightClick(&lvIOElems.Row(0));
  dialogs.ExpectMenu("mnuAuxMain", nothing);
  widgets.tsIOCond.PressMouse({MouseButton::Right, {}});
  EXPECT_EQ(dialogs.Remaining(), 0U);
  lvIOElems.Click(lvIOElems.Row(0));
  widgets.tsIOCond.PressMouse({});
  EXPECT_EQ(dialogs.History().size(), 2U);
}

TEST_F(RuleListsTest, TheItemsRunTheCommandsOfTheListInView) {
  globals.glossaryAvailable = true;
  ShowRule("Base fee");
  dialogs.ExpectMenu("mnuAuxMain", [&](Menu& menu) {
    for (const int index : {0, 1, 2}) EXPECT_TRUE(menu.Item("mnuAuxilary", index).Click());
    EXPECT_TRUE(menu.Item("mnuSyncBusinessNames").Click());
  });
  lvIOElems.PressKey(Key::F10, kShift);
  widgets.tsIOCond.Choose("Conditions");
  EXPECT_TRUE(widgets.mnuAuxMain.Item("mnuAuxilary", 0).Click());
  EXPECT_EQ(commands.run, (std::vector<std::string>{"CreateRuleIO", "DeleteElements", "EditElement",
                                                    "SyncBusinessNames", "CreateRuleCond"}));
}

TEST_F(RuleListsTest, KeysRunTheCommands) {
  globals.glossaryAvailable = true;
  ShowRule("Base fee");
  EXPECT_TRUE(lvIOElems.PressKey(Key::Delete));
  EXPECT_TRUE(lvIOElems.PressKey(Key::Insert));
  EXPECT_TRUE(lvIOElems.PressKey(Key::S));
  widgets.tsIOCond.Choose("Conditions");
  EXPECT_TRUE(lvConditions.PressKey(Key::Insert));
  EXPECT_FALSE(lvConditions.PressKey(Key::S));
  EXPECT_EQ(commands.run,
            (std::vector<std::string>{"DeleteElements", "CreateRuleIO", "SyncBusinessNames", "CreateRuleCond"}));
}

TEST_F(RuleListsTest, KeysDoNotRunWhatTheMenuDoesNotOffer) {
  ShowRule("Base fee");
  lvIOElems.PressKey(Key::S);
  ShowRule("Late fee");
  lvIOElems.PressKey(Key::Delete);
  EXPECT_TRUE(commands.run.empty());
}

TEST_F(RuleListsTest, KeysWithOtherModifiersRunNothing) {
  globals.glossaryAvailable = true;
  ShowRule("Base fee");
  for (const Key key : {Key::Delete, Key::Insert, Key::S}) {
    EXPECT_FALSE(lvIOElems.PressKey(key, kShift));
    EXPECT_FALSE(lvIOElems.PressKey(key, kCtrl));
  }
  for (const Key key : {Key::A, Key::U, Key::F10}) EXPECT_FALSE(lvIOElems.PressKey(key));
  EXPECT_TRUE(commands.run.empty());
  EXPECT_EQ(Selected(lvIOElems), "");
}

TEST_F(RuleListsTest, AllRowsAreSelectedAndUnselected) {
  ShowRule("Base fee");
  EXPECT_TRUE(lvIOElems.PressKey(Key::A, kCtrl));
  EXPECT_EQ(Selected(lvIOElems), "AMOUNT RATE ");
  EXPECT_EQ(Selected(lvConditions), "");
  EXPECT_TRUE(lvIOElems.PressKey(Key::U, kCtrl));
  EXPECT_EQ(Selected(lvIOElems), "");
  widgets.tsIOCond.Choose("Conditions");
  dialogs.ExpectMenu("mnuAuxMain", [](Menu& menu) { menu.Item("mnuAuxilary", 3).Click(); });
  lvConditions.PressKey(Key::F10, kShift);
  EXPECT_EQ(Selected(lvConditions), "ZERO ");
  dialogs.ExpectMenu("mnuAuxMain", [](Menu& menu) { menu.Item("mnuAuxilary", 4).Click(); });
  lvConditions.PressKey(Key::F10, kShift);
  EXPECT_EQ(Selected(lvConditions), "");
}

TEST_F(RuleListsTest, ReferencesAreSplitFromTheRight) {
  const auto both = ParseElementReference("VAR#17#COBOL#3");
  EXPECT_EQ(both.modelObject, "VAR#17");
  EXPECT_EQ(both.program, "COBOL#3");
  EXPECT_EQ(ParseElementReference("17#COBOL#3").modelObject, "17");
  EXPECT_EQ(ParseElementReference("VAR#17##").modelObject, "VAR#17");
  EXPECT_EQ(ParseElementReference("VAR#17##").program, "");
  EXPECT_EQ(ParseElementReference("VAR#17").modelObject, "VAR#17");
  EXPECT_EQ(ParseElementReference("VAR#17").program, "");
  for (const char* none : {"", "#", "##", "##3", "#COBOL#3"}) {
    EXPECT_EQ(ParseElementReference(none).modelObject, "") << none;
  }
}

// A rule with one data element for each way to tell its place in the program, whose model is at hand.
class ElementPlaceTest : public DetailPanesTest {
 protected:
  ElementPlaceTest() {
    const auto found = cobol.Find(workbench::codemodel::Entity::Var, "RATE");
    number = std::to_string(found);
    workbench::codemodel::WriteModelFile(store.Folder().File("model"), cobol.Data());
    model = factory.OpenModel(store.Folder().File("model"));
    workspace.SetSourceModel(model.get());
    workspace.SetObjectID(programKey);
    viewer.SetFiles({{"copy.cpy", "COBOL"}, {"program.cbl", "COBOL"}});
  }

  ListRow& ShowElement(const std::string& qmid, const std::string& type, const std::string& id) {
    AddElement("RULEIO", {{"IOName", "RATE"}, {"QMID", qmid}, {"SourceType", type}, {"SourceID", id}});
    ShowRule("Base fee");
    lvIOElems.SetCurrentRow(&lvIOElems.Row(0));
    return lvIOElems.Row(0);
  }
  std::string ProgramID() const { return programKey.substr(programKey.find('#') + 1); }

  test::CobolModel cobol = test::CobolModel::Of("01 RATE PIC 9.\n01 AMOUNT PIC 9.", "MAIN.\n    MOVE RATE TO AMOUNT.");
  std::string number;
  workbench::codemodel::CodeModelFactory factory{{}};
  std::unique_ptr<platform::SourceModel> model;
};

TEST_F(ElementPlaceTest, ADoubleClickGoesToThePlaceOfTheElement) {
  auto& row = ShowElement("VAR#" + number, "COBOL", ProgramID());
  lvIOElems.DoubleClick(row);
  EXPECT_EQ(viewer.CurFile()->FileName, "program.cbl");
  EXPECT_EQ(viewer.Row(), 9);
  EXPECT_FALSE(pointer.IsBusy());
}

TEST_F(ElementPlaceTest, EnterGoesThereTooAndAnIDAloneTellsTheObject) {
  ShowElement(number, "COBOL", ProgramID());
  EXPECT_TRUE(lvIOElems.PressKey(Key::Enter));
  EXPECT_EQ(viewer.Row(), 9);
}

TEST_F(ElementPlaceTest, WithoutASourceItIsTheProgramOnView) {
  lvIOElems.DoubleClick(ShowElement("VAR#" + number, "", ""));
  EXPECT_EQ(viewer.Row(), 9);
}

TEST_F(ElementPlaceTest, AnotherProgramBecomesTheWorkspacesObject) {
  workspace.SetObjectID("COBOL#99");
  viewer.SetFiles({{"program.cbl", "COBOL"}});
  auto& row = ShowElement("VAR#" + number, "COBOL", ProgramID());
  const auto files = workspace.OnObjectIDChanged([this] { viewer.SetFiles({{"program.cbl", "COBOL"}}); });
  lvIOElems.DoubleClick(row);
  EXPECT_EQ(workspace.ObjectID(), programKey);
  EXPECT_EQ(viewer.Row(), 9);
}

TEST_F(ElementPlaceTest, AnElementMadeByHandLeadsNowhere) {
  lvIOElems.DoubleClick(ShowElement("", "", ""));
  EXPECT_EQ(viewer.CurFile()->FileName, "copy.cpy");
  EXPECT_TRUE(dialogs.History().empty());
}

TEST_F(ElementPlaceTest, AProgramThatTheWorkspaceDoesNotTakeIsTold) {
  workspace.SetObjectGate([](std::string_view) { return false; });
  auto& row = ShowElement("VAR#" + number, "COBOL", "99");
  dialogs.ExpectMessage(MessageAnswer::Ok, "The action is not available in this context.");
  lvIOElems.DoubleClick(row);
  EXPECT_EQ(dialogs.History().size(), 1U);
}

TEST_F(ElementPlaceTest, AProgramWithoutAModelIsTold) {
  workspace.SetSourceModel(nullptr);
  dialogs.ExpectMessage(MessageAnswer::Ok, "The action is not available in this context.");
  lvIOElems.DoubleClick(ShowElement("VAR#" + number, "COBOL", ProgramID()));
  EXPECT_EQ(dialogs.Remaining(), 0U);
}

TEST_F(ElementPlaceTest, AnObjectThatTheModelDoesNotHaveIsNamed) {
  auto& row = ShowElement("VAR#99999", "COBOL", ProgramID());
  EXPECT_NE(test::ErrorText([&] { lvIOElems.DoubleClick(row); }).find("VAR#99999"), std::string::npos);
  EXPECT_FALSE(pointer.IsBusy());
}

TEST_F(ElementPlaceTest, EnterWithoutACurrentRowLeadsNowhere) {
  ShowElement("VAR#" + number, "COBOL", ProgramID());
  lvIOElems.SetCurrentRow(nullptr);
  EXPECT_FALSE(lvIOElems.PressKey(Key::Enter));
}

}  // namespace
}  // namespace qmrules::browser
