#include "browser/commandwidgets.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "browser/commandtable.h"

namespace qmrules::browser {
namespace {

using shell::Language;
using shell::StringTableFor;

class CommandWidgetsTest : public testing::Test {
 protected:
  CommandWidgetsTest() { FillCommandWidgets(widgets, texts); }

  // A line for each button: key, picture, tool tip; then the entries of its menu.
  std::vector<std::string> Buttons() const {
    std::vector<std::string> lines;
    for (const auto& button : widgets.tbToolbar.Buttons()) {
      std::string line =
          button->Key().empty() ? "-" : button->Key() + " (" + button->Image() + ") " + button->ToolTipText();
      for (const auto& entry : button->Menus()) line += " | " + entry->Key() + "=" + entry->Caption();
      lines.push_back(line);
    }
    return lines;
  }

  const shell::StringTable& texts = StringTableFor(Language::English);
  ControlWidgets widgets{texts};
};

TEST_F(CommandWidgetsTest, TheMenuHasEveryLineOfTheTableInItsOrder) {
  const auto table = CommandTable();
  const auto& items = widgets.mnuPopup.Items();
  ASSERT_EQ(items.size(), table.size());
  for (std::size_t at = 0; at < table.size(); ++at) {
    EXPECT_EQ(items[at]->Name(), table[at].menuItem);
    EXPECT_EQ(items[at]->Caption(), MenuCaption(table[at], texts));
    EXPECT_EQ(items[at]->IsSeparator(), table[at].IsSeparator());
  }
}

TEST_F(CommandWidgetsTest, TheToolBarHasItsButtonsWithPicturesToolTipsAndMenus) {
  EXPECT_EQ(Buttons(),
            (std::vector<std::string>{
                "Create (Create) Create Rule | Function=Create Business Function... | RuleSet=Create Rule Set... | "
                "Rule=Create Rule... | RuleIO=Create I/O Data Element... | RuleCond=Create Control Condition... | "
                "Export=Rule Export... | Import=Rule Import...",
                "AutoDetect (AutoDetect) AutoDetect",
                "-",
                "Find (Find) Start Search | Find=Start Search... | PreviousSelected=Previous Selected | "
                "NextSelected=Next Selected | SelectAll=Select All | UnselectAll=Unselect All",
                "Selected (Selected) Selected Only",
                "-",
                "CopyMove (CopyMove) Copy/Move",
                "MoveUp (MoveUp) Move up in Sequence",
                "MoveDown (MoveDown) Move down in Sequence",
                "Change (Change) Rules Changer",
                "Delete (Delete) Delete",
                "-",
                "Segment (Segment) Assign segment | Assign=Assign segment | DeleteSegment=Delete segment | "
                "DataElements=Detect I/O Data Elements | BusinessNames=Populate I/O Business Names",
                "Emphasize (Emphasize) Emphasize",
                "Validate (Validate) Validate",
                "-",
                "ActivityLog (ActivityLog) Activity Log",
                "Report (Report) Business Rule Report | BusinessRuleReport=Business Rule Report... | "
                "ProcessOutlineReport=Process Outline Report... | CoverageReport=Coverage Report...",
                "ExtendedAttributes (Properties) Extended Rule Attributes",
            }));
}

TEST_F(CommandWidgetsTest, EveryCommandOfTheTableStandsInTheToolBar) {
  for (const CommandEntry& command : CommandTable()) {
    if (command.IsSeparator()) continue;
    auto& button = widgets.tbToolbar.Button(command.button);
    if (!command.entry.empty()) {
      EXPECT_EQ(button.Menu(command.entry).Key(), command.entry);
    }
  }
}

TEST_F(CommandWidgetsTest, CaptionsAndToolTipsAreInTheUsersLanguage) {
  const auto& japanese = StringTableFor(Language::Japanese);
  ControlWidgets others(japanese);
  FillCommandWidgets(others, japanese);
  EXPECT_EQ(others.mnuPopup.Item("mnuDelete").Caption(), japanese.Text(131));
  EXPECT_EQ(others.tbToolbar.Button("Delete").ToolTipText(), japanese.Text(131));
}

}  // namespace
}  // namespace qmrules::browser
