#include "browser/commandfaces.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "browser/browsertest.h"

namespace qmrules::browser {
namespace {

struct Places {
  const char* command;
  const char* menuItem;
  const char* button;
  const char* entry;  // "" for the button itself
};

void PrintTo(const Places& places, std::ostream* out) {
  *out << places.command;
}

class CommandFacesTest : public BrowserTest, public testing::WithParamInterface<Places> {
 protected:
  CommandFaces faces{services};
};

TEST_P(CommandFacesTest, ACommandIsEnabledAndDisabledWhereItIsShown) {
  const Places& places = GetParam();
  for (const bool enabled : {false, true}) {
    faces.SetEnabled(places.command, enabled);
    EXPECT_EQ(mnuPopup.Item(places.menuItem).Enabled(), enabled);
    auto& button = tbToolbar.Button(places.button);
    const std::string entry = places.entry;
    EXPECT_EQ(entry.empty() ? button.Enabled() : button.Menu(entry).Enabled(), enabled);
    EXPECT_EQ(host.hostItems.back(), std::string(places.command) + (enabled ? " enable" : " disable"));
  }
}

TEST_P(CommandFacesTest, NoOtherMenuItemIsTouched) {
  faces.SetEnabled(GetParam().command, false);
  for (const auto& item : mnuPopup.Items()) EXPECT_EQ(item->Enabled(), item->Name() != GetParam().menuItem);
}

INSTANTIATE_TEST_SUITE_P(
    EachCommand, CommandFacesTest,
    testing::Values(
        Places{"CreateFunction", "mnuCreateFunction", "Create", "Function"},
        Places{"CreateRuleSet", "mnuCreateRuleSet", "Create", "RuleSet"},
        Places{"CreateRule", "mnuCreateRule", "Create", "Rule"},
        Places{"CreateRuleIO", "mnuCreateRuleIO", "Create", "RuleIO"},
        Places{"CreateRuleCond", "mnuCreateRuleCond", "Create", "RuleCond"},
        Places{"Export", "mnuExport", "Create", "Export"}, Places{"Import", "mnuImport", "Create", "Import"},
        Places{"AutoDetect", "mnuAutoDetect", "AutoDetect", ""}, Places{"Find", "mnuSearchRules", "Find", "Find"},
        Places{"Find", "mnuSearchRules", "Find", ""},
        Places{"PreviousSelected", "mnuPreviousSelected", "Find", "PreviousSelected"},
        Places{"NextSelected", "mnuNextSelected", "Find", "NextSelected"},
        Places{"Selected", "mnuSelected", "Selected", ""}, Places{"SelectAll", "mnuSelectAll", "Find", "SelectAll"},
        Places{"UnselectAll", "mnuUnselectAll", "Find", "UnselectAll"},
        Places{"CopyMove", "mnuCopyMove", "CopyMove", ""}, Places{"MoveUp", "mnuMoveUp", "MoveUp", ""},
        Places{"MoveDown", "mnuMoveDown", "MoveDown", ""}, Places{"Changer", "mnuChanger", "Change", ""},
        Places{"Delete", "mnuDelete", "Delete", ""}, Places{"Segment", "mnuSegment", "Segment", "Assign"},
        Places{"Segment", "mnuSegment", "Segment", ""},
        Places{"DeleteSegment", "mnuDeleteSegment", "Segment", "DeleteSegment"},
        Places{"DataElements", "mnuDataElements", "Segment", "DataElements"},
        Places{"BusinessNames", "mnuPopulateBusinessName", "Segment", "BusinessNames"},
        Places{"Emphasize", "mnuEmphasize", "Emphasize", ""}, Places{"Validate", "mnuValidate", "Validate", ""},
        Places{"ActivityLog", "mnuActivityLog", "ActivityLog", ""},
        Places{"BusinessRuleReport", "mnuBusinessRuleReport", "Report", "BusinessRuleReport"},
        Places{"ProcessOutlineReport", "mnuProcessOutlineReport", "Report", "ProcessOutlineReport"},
        Places{"CoverageReport", "mnuCoverageReport", "Report", "CoverageReport"},
        Places{"ExtendedAttributes", "mnuExtendedAttributes", "ExtendedAttributes", ""}));

class CommandMarksTest : public BrowserTest {
 protected:
  CommandFaces faces{services};
};

TEST_F(CommandMarksTest, ATwoStateCommandIsCheckedWhereItIsShown) {
  faces.SetChecked("Emphasize", true);
  EXPECT_TRUE(faces.IsChecked("Emphasize"));
  EXPECT_TRUE(mnuPopup.Item("mnuEmphasize").Checked());
  EXPECT_TRUE(tbToolbar.Button("Emphasize").Pressed());
  faces.SetChecked("Emphasize", false);
  EXPECT_FALSE(faces.IsChecked("Emphasize"));
  EXPECT_FALSE(tbToolbar.Button("Emphasize").Pressed());
  EXPECT_EQ(host.hostItems, (std::vector<std::string>{"Emphasize check", "Emphasize uncheck"}));
}

TEST_F(CommandMarksTest, AKeyOfNoCommandIsADefectOfTheCaller) {
  EXPECT_THROW(faces.SetEnabled("Unknown", true), std::out_of_range);
  EXPECT_THROW(faces.SetChecked("-0", true), std::out_of_range);
  EXPECT_THROW(static_cast<void>(faces.IsChecked("selected")), std::out_of_range);
}

}  // namespace
}  // namespace qmrules::browser
