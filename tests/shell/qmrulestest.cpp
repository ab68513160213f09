#include "shell/qmrules.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "browser/commandtable.h"
#include "catalogue/gateway.h"
#include "platform/error.h"
#include "shell/controltest.h"

namespace qmrules::shell {
namespace {

using browser::CommandTable;
using browser::MenuPath;

constexpr const char* kDefaultLayout =
    "Control(h333 Objects,Properties(v333 Descriptions,Others(v333 FirstArea,SecondArea)))";
constexpr const char* kOwnLayout =
    "Control(h500 Objects,Properties(v600 Descriptions,Others(h400 FirstArea,SecondArea)))";
constexpr const char* kHeader = "wObjs,Descr,Attrs,Aux";

// Settings on a disk that is full.
class FullSettings final : public platform::UserSettings {
 public:
  std::string Get(std::string_view, std::string_view, std::string_view otherwise) const override {
    return std::string(otherwise);
  }
  void Set(std::string_view, std::string_view, std::string_view) override {
    throw platform::Error("settings.json: no space left on device");
  }
};

class Control : public ControlTest {
 protected:
  std::string InitLayout(const std::string& saved) {
    settings.Set("Settings", "Splitter", saved);
    Init();
    return control.PaneSplitter().LayoutText();
  }
};

TEST_F(Control, InitKeepsTheTwoNames) {
  Init();
  EXPECT_EQ(globals.internalName, "QMRulesIn");
  EXPECT_EQ(globals.externalName, "Business Rules");
  EXPECT_TRUE(control.HasWorkspace());
}

TEST_F(Control, InitRegistersTheMenuAndThenEveryCommandInOrder) {
  Init();
  const auto& commands = workspace.Commands();
  const auto table = CommandTable();
  ASSERT_EQ(commands.size(), table.size() + 1);
  EXPECT_EQ(commands[0].component, "QMRulesIn");
  EXPECT_EQ(commands[0].key, "");
  EXPECT_EQ(commands[0].menuPath, "Business Rules");
  for (std::size_t at = 0; at < table.size(); ++at) {
    EXPECT_EQ(commands[at + 1].component, "QMRulesIn");
    EXPECT_EQ(commands[at + 1].key, table[at].key);
    EXPECT_EQ(commands[at + 1].menuPath, MenuPath(table[at], "Business Rules", StringTableFor(Language::English)));
  }
}

TEST_F(Control, InitReadsNothingOfTheCatalogueAndShowsNothing) {
  Init();
  EXPECT_EQ(watch.executed, 0) << "a program without a screen pays for no tree";
  EXPECT_EQ(tvObjects.Count(), 0U);
  EXPECT_FALSE(workspace.IsShown("QMRulesIn"));
  EXPECT_FALSE(widgets.txtObjName.Visible());
}

TEST_F(Control, InitTakesTheWorkspacesFont) {
  workspace.SetFont({"Serif", 11, true});
  Init();
  EXPECT_EQ(control.Font().family, "Serif");
  EXPECT_EQ(control.HelpFile(), "");
}

TEST_F(Control, ANodeHasThePictureOfItsEntity) {
  const std::string icon = store.Repository().Schema().Entity("RULE").Icon();
  ASSERT_NE(icon, "");
  store.Folder().Write("product/Icons/" + icon, "picture");
  Init();
  ASSERT_NE(widgets.ilObjects.Find("RULE"), nullptr);
  EXPECT_EQ(widgets.ilObjects.Find("RULE")->bytes, "picture");
}

TEST_F(Control, AnEntityWithoutAnIconFileHasNoPictureAndStartUpContinues) {
  Init();
  EXPECT_EQ(widgets.ilObjects.Find("RULE"), nullptr);
  EXPECT_EQ(widgets.ilObjects.Count(), 0U);
  EXPECT_TRUE(control.HasWorkspace());
}

TEST_F(Control, TheSchemaDocumentLiesInTheProductFolder) {
  Init();
  EXPECT_EQ(control.SchemaPath(), store.FE().GetFerrowoodName(2) + "\\User.Repstry.xml");
  EXPECT_EQ(control.SchemaElement().selectNodes("./entityattr").size(), 3U);
}

TEST_F(Control, TheMachinesValueNamesAnotherSchemaDocument) {
  const std::string path = store.Folder().Write(
      "site/Own.xml", "<repstry><entities><entity name='RULE'><entityattrs/></entity></entities></repstry>");
  registry.SetValue("SOFTWARE\\Norvane\\Ferrowood", "UserExtensions", path);
  Init();
  EXPECT_EQ(control.SchemaPath(), path);
  EXPECT_FALSE(control.ShownAttributes().Contains("Status"));
}

TEST_F(Control, AMissingSchemaDocumentIsNamedAndLeavesTheControlAsItWas) {
  const std::string path = store.Folder().File("gone.xml");
  registry.SetValue("SOFTWARE\\Norvane\\Ferrowood", "UserExtensions", path);
  EXPECT_TRUE(InitFailure().find(path) != std::string::npos) << InitFailure();
  EXPECT_FALSE(control.HasWorkspace());
}

TEST_F(Control, ASchemaDocumentWithoutRuleAttributesIsNamed) {
  const std::string path = store.Folder().Write("site/Own.xml", "<repstry/>");
  registry.SetValue("SOFTWARE\\Norvane\\Ferrowood", "UserExtensions", path);
  EXPECT_EQ(InitFailure(), path + " has no element //entity[@name='RULE']/entityattrs. Restore the schema document.");
}

TEST_F(Control, TheListsHoldTheFixedItemsAndTheSitesOwn) {
  Init();
  EXPECT_EQ(Items(control.ShownAttributes()),
            (std::vector<std::string>{"RuleName", "Description", "BusinessDescription", "Program", "AssignedTo",
                                      "Valid", "Validated", "Status", "Remark"}));
  EXPECT_EQ(
      Items(control.EditableAttributes()),
      (std::vector<std::string>{"RuleName", "Description", "BusinessDescription", "AssignedTo", "Status", "Remark"}));
}

TEST_F(Control, ThePanelHasTheOtherShownAttributesInTheOrderOfTheSchema) {
  Init();
  std::vector<std::string> labels;
  for (int index = 1; index <= widgets.AttributeCount(); ++index) labels.push_back(widgets.lblAttrs(index).Caption());
  EXPECT_EQ(labels, (std::vector<std::string>{
                        "Assigned To:", "Program:", "Validity:", "Validated:", "Rule Status:", "Remark:"}));
}

TEST_F(Control, ASchemaDocumentThatThePanelCannotBeBuiltFromLeavesTheControlAsItWas) {
  const std::string path = store.Folder().Write("site/Own.xml", R"(<repstry><entities><entity name="RULE"><entityattrs>
    <entityattr name="AssignedTo" type="CHAR" length="many"/></entityattrs></entity></entities></repstry>)");
  registry.SetValue("SOFTWARE\\Norvane\\Ferrowood", "UserExtensions", path);
  EXPECT_NE(InitFailure(), "no failure");
  EXPECT_FALSE(control.HasWorkspace());
  EXPECT_EQ(widgets.AttributeCount(), 0);
  EXPECT_TRUE(widgets.mnuAuxMain.Items().empty());
}

TEST_F(Control, InitReadsTheTextsOfTheUnassignedObjects) {
  Init();
  EXPECT_EQ(globals.UnassignedBFName, "Homeless Function");
  EXPECT_EQ(globals.UnassignedBFDescr, "Its rules.");
  EXPECT_EQ(globals.UnassignedRSName, "Homeless Rules");
  EXPECT_EQ(globals.UnassignedRSDescr, "No home.");
}

TEST_F(Control, AMissingOptionIsNamedAndInitCanBeTriedAgain) {
  auto& options = store.FE().ProjectOptions().Document();
  auto text = options.selectSingleNode("//TEXT[@NAME='UnassignedRSName']");
  text.parentNode().removeChild(text);
  EXPECT_EQ(InitFailure(), "The project options have no text UnassignedRSName. Restore the project's options file.");
  EXPECT_FALSE(control.HasWorkspace());
  options.loadXML(kProjectOptions);
  EXPECT_EQ(InitFailure(), "no failure");
}

TEST_F(Control, OptionsWithoutTheCatalogueAreNamed) {
  store.FE().ProjectOptions().Document().loadXML("<OPTIONS/>");
  EXPECT_EQ(InitFailure(),
            "The project options have no node /OPTIONS/CASE[@NAME='Ferrowood']/LIST[@NAME='FW']/CASE[@NAME='CRD']"
            "/LIST[@NAME='CRDOptions']/CASE[@NAME='CRDConfig']. Restore the project's options file.");
}

TEST_F(Control, TheAttributeRepairRunsWhenItIsDue) {
  store.Put(catalogue::MakeKey("RULE", lateFee), "Status", "retired");
  repairIsDue = true;
  Init();
  EXPECT_EQ(store.Get(catalogue::MakeKey("RULE", lateFee), "Status").Text(), "new");
  EXPECT_EQ(repairsDone, 1);
}

TEST_F(Control, TheAttributeRepairDoesNotRunWhenNothingChanged) {
  store.Put(catalogue::MakeKey("RULE", lateFee), "Status", "retired");
  Init();
  EXPECT_EQ(store.Get(catalogue::MakeKey("RULE", lateFee), "Status").Text(), "retired");
  EXPECT_EQ(repairsDone, 0);
}

TEST_F(Control, WithoutASavedLayoutTheFirstAreasGetAThird) {
  Init();
  EXPECT_EQ(control.PaneSplitter().LayoutText(), kDefaultLayout);
  EXPECT_TRUE(control.PaneSplitter().On());
}

TEST_F(Control, ASavedLayoutIsTakenBack) {
  EXPECT_EQ(InitLayout(std::string(kHeader) + kOwnLayout), kOwnLayout);
}

TEST_F(Control, ASavedLayoutWithoutTheHeaderGivesTheDefaultLayout) {
  EXPECT_EQ(InitLayout(kOwnLayout), kDefaultLayout);
}

TEST_F(Control, ASavedLayoutBehindAnotherHeaderGivesTheDefaultLayout) {
  EXPECT_EQ(InitLayout(std::string("wObjs,Descr,Attrs,Own") + kOwnLayout), kDefaultLayout);
  control.DeInit();
  EXPECT_EQ(InitLayout("w" + std::string(kHeader) + kOwnLayout), kDefaultLayout);
}

TEST_F(Control, ASavedLayoutThatTheSplitterRefusesGivesTheDefaultLayout) {
  EXPECT_EQ(InitLayout(std::string(kHeader) + "Control(h500 Objects"), kDefaultLayout);
}

TEST_F(Control, ASavedLayoutThatLacksAPaneGivesTheDefaultLayout) {
  EXPECT_EQ(InitLayout(std::string(kHeader) + "Control(h500 Objects,Descriptions)"), kDefaultLayout);
}

TEST_F(Control, DeInitSavesTheLayoutUnderItsHeader) {
  Init();
  control.PaneSplitter().Drag("Control", 420);
  control.DeInit();
  EXPECT_EQ(
      settings.Get("Settings", "Splitter", ""),
      std::string(kHeader) + "Control(h420 Objects,Properties(v333 Descriptions,Others(v333 FirstArea,SecondArea)))");
}

TEST_F(Control, ALayoutLastsFromOneInitToTheNext) {
  Init();
  control.PaneSplitter().Drag("Control", 420);
  control.DeInit();
  QMRules next(Services(settings));
  next.Init(workspace, "QMRulesIn", "Business Rules");
  EXPECT_EQ(next.PaneSplitter().Share("Control"), 420);
}

TEST_F(Control, DeInitGivesTheWorkspaceBackAndUnloadsTheTracedProgram) {
  Init();
  control.DeInit();
  EXPECT_FALSE(control.HasWorkspace());
  EXPECT_THROW(control.SchemaPath(), std::logic_error);
  EXPECT_EQ(tracing.unloaded, (std::vector<std::string>{""}));
}

TEST_F(Control, DeInitGivesEverythingBackAlsoWhenTheLayoutCannotBeSaved) {
  FullSettings full;
  QMRules other(Services(full));
  other.Init(workspace, "QMRulesIn", "Business Rules");
  try {
    other.DeInit();
    FAIL();
  } catch (const platform::Error& error) {
    EXPECT_STREQ(error.what(), "settings.json: no space left on device");
  }
  EXPECT_FALSE(other.HasWorkspace());
  EXPECT_EQ(tracing.unloaded, (std::vector<std::string>{""}));
}

TEST_F(Control, DeInitWithoutAWorkspaceDoesNothing) {
  control.DeInit();
  EXPECT_EQ(settings.Get("Settings", "Splitter", "unset"), "unset");
  EXPECT_TRUE(tracing.unloaded.empty());
}

TEST_F(Control, CanBeGivenAnotherWorkspaceAfterDeInit) {
  Init();
  control.DeInit();
  platform::MemoryWorkspace another(store.FE(), progress);
  control.Init(another, "QMRulesIn", "Business Rules");
  EXPECT_EQ(another.Commands().size(), CommandTable().size() + 1);
}

TEST_F(Control, ASecondInitIsADefectOfTheHost) {
  Init();
  EXPECT_THROW(Init(), std::logic_error);
  EXPECT_TRUE(control.HasWorkspace());
}

TEST_F(Control, EnabledGreysTheControlWithoutChangingAnyState) {
  Open();
  Click("Billing");
  const std::string layout = control.PaneSplitter().LayoutText();
  const std::string tree = Tree();
  std::vector<bool> told;
  const auto watching = control.OnEnabledChanged.Subscribe([&] { told.push_back(control.Enabled()); });
  EXPECT_TRUE(control.Enabled());
  control.Enabled(false);
  control.Enabled(false);
  EXPECT_FALSE(control.Enabled());
  EXPECT_EQ(control.PaneSplitter().LayoutText(), layout);
  EXPECT_EQ(Tree(), tree);
  EXPECT_EQ(SelectedText(), "Billing");
  EXPECT_EQ(widgets.txtObjName.Text(), "Billing");
  EXPECT_TRUE(widgets.txtObjName.Enabled());
  EXPECT_EQ(HostState("Delete"), "enable");
  control.Enabled(true);
  EXPECT_EQ(told, (std::vector<bool>{false, true}));
}

TEST_F(Control, ErrorRecordTakesAFailureTextAndChangesNothing) {
  Init();
  control.ErrorRecord("RULE#5 was not imported.");
  EXPECT_TRUE(control.HasWorkspace());
  EXPECT_TRUE(workspace.Errors().empty());
}

}  // namespace
}  // namespace qmrules::shell
