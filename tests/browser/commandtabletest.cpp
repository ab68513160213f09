#include "browser/commandtable.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace qmrules::browser {
namespace {

using shell::Language;
using shell::StringTableFor;

const shell::StringTable& English() {
  return StringTableFor(Language::English);
}

std::vector<std::string> MenuPaths() {
  std::vector<std::string> paths;
  for (const CommandEntry& entry : CommandTable()) {
    paths.push_back(std::string(entry.key) + " = " + MenuPath(entry, "Rules", English()));
  }
  return paths;
}

TEST(CommandTable, RegistersEveryLineInTheOrderOfTheMenu) {
  EXPECT_EQ(MenuPaths(), (std::vector<std::string>{
                             "CreateFunction = Rules|Create Business Function...",
                             "CreateRuleSet = Rules|Create Rule Set...",
                             "CreateRule = Rules|Create Rule...",
                             "-0 = Rules|-",
                             "CreateRuleIO = Rules|Create I/O Data Element...",
                             "CreateRuleCond = Rules|Create Control Condition...",
                             "-1 = Rules|-",
                             "Export = Rules|Rule Export...",
                             "Import = Rules|Rule Import...",
                             "-2 = Rules|-",
                             "AutoDetect = Rules|AutoDetect...",
                             "-3 = Rules|-",
                             "Find = Rules|Start Search...",
                             "PreviousSelected = Rules|Previous Selected",
                             "NextSelected = Rules|Next Selected",
                             "Selected = Rules|Selected Only",
                             "-4 = Rules|-",
                             "SelectAll = Rules|Select All",
                             "UnselectAll = Rules|Unselect All",
                             "-5 = Rules|-",
                             "CopyMove = Rules|Copy/Move...",
                             "MoveUp = Rules|Move up in Sequence",
                             "MoveDown = Rules|Move down in Sequence",
                             "Changer = Rules|Rules Changer...",
                             "Delete = Rules|Delete",
                             "-6 = Rules|-",
                             "Segment = Rules|Assign segment",
                             "DeleteSegment = Rules|Delete segment",
                             "DataElements = Rules|Detect I/O Data Elements",
                             "BusinessNames = Rules|Populate I/O Business Names",
                             "Emphasize = Rules|Emphasize",
                             "Validate = Rules|Validate",
                             "-7 = Rules|-",
                             "ActivityLog = Rules|Activity Log",
                             "BusinessRuleReport = Rules|Business Rule Report...",
                             "ProcessOutlineReport = Rules|Process Outline Report...",
                             "CoverageReport = Rules|Coverage Report...",
                             "ExtendedAttributes = Rules|Extended Rule Attributes...",
                         }));
}

TEST(CommandTable, EveryKeyStandsOnce) {
  std::set<std::string_view> keys;
  for (const CommandEntry& entry : CommandTable()) EXPECT_TRUE(keys.insert(entry.key).second) << entry.key;
}

TEST(CommandTable, EveryCaptionStandsInEveryLanguage) {
  for (const auto language : {Language::English, Language::Japanese, Language::Korean}) {
    for (const CommandEntry& entry : CommandTable()) {
      const std::string path = MenuPath(entry, "Rules", StringTableFor(language));
      EXPECT_GT(path.size(), std::string("Rules|").size()) << entry.key;
    }
  }
}

TEST(CommandTable, ACommandIsFoundByItsExactKey) {
  ASSERT_NE(FindCommand("CreateRule"), nullptr);
  EXPECT_EQ(FindCommand("CreateRule")->label, 125);
  EXPECT_EQ(FindCommand("createrule"), nullptr);
  EXPECT_EQ(FindCommand("CreateListRules"), nullptr) << "another component requests it by name; no menu shows it";
}

TEST(CommandTable, ASeparatorIsNoCommand) {
  EXPECT_EQ(FindCommand("-0"), nullptr);
}

TEST(CommandTable, AButtonRunsItsOwnCommandOrTheOneThatItsMenuNamesForIt) {
  const auto key = [](const CommandEntry* entry) { return entry == nullptr ? "-" : std::string(entry->key); };
  EXPECT_EQ(key(CommandOfButton("Create")), "CreateRule");
  EXPECT_EQ(key(CommandOfButton("Find")), "Find");
  EXPECT_EQ(key(CommandOfButton("Segment")), "Segment");
  EXPECT_EQ(key(CommandOfButton("Report")), "BusinessRuleReport");
  EXPECT_EQ(key(CommandOfButton("Change")), "Changer");
  EXPECT_EQ(key(CommandOfButton("Changer")), "-");
  EXPECT_EQ(key(CommandOfButton("")), "-") << "a separator of the tool bar";
}

TEST(CommandTable, AnEntryRunsTheCommandOfButtonAndMenuKey) {
  const auto key = [](const CommandEntry* entry) { return entry == nullptr ? "-" : std::string(entry->key); };
  EXPECT_EQ(key(CommandOfEntry("Segment", "Assign")), "Segment");
  EXPECT_EQ(key(CommandOfEntry("Create", "Rule")), "CreateRule");
  EXPECT_EQ(key(CommandOfEntry("Find", "Rule")), "-");
  EXPECT_EQ(key(CommandOfEntry("Delete", "")), "-");
}

}  // namespace
}  // namespace qmrules::browser
