#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "browser/commandtable.h"
#include "shell/controltest.h"

namespace qmrules::shell {
namespace {

using browser::CommandEntry;
using browser::CommandTable;

// One line for each command, a letter for each situation: "x" for available, "." for not.
struct States {
  std::string_view command;
  std::string_view expected;
};

// The situations, in the order of the letters: no node, a function (the first one, the last one), a rule set (first
// child, between two, last child, the exception, which is an only child too), a rule (first child, between two, last
// child).
constexpr const char* kSituations[] = {"no node", "Billing",           "Claims",   "Fees",     "Taxes",
                                       "Rebates", "Homeless Function", "Base fee", "Late fee", "Last fee"};

constexpr States kStates[] = {
    {"CreateFunction", "xxxxxxxxxx"},
    {"CreateRuleSet", "xxxxxxxxxx"},
    {"CreateRule", "xxxxxxxxxx"},
    {"CreateRuleIO", ".......xxx"},
    {"CreateRuleCond", ".......xxx"},
    {"Export", ".xxxxxxxxx"},
    {"Import", "xxxxxxxxxx"},
    {"AutoDetect", "xxxxxxxxxx"},
    {"Find", ".xxxxxxxxx"},
    {"PreviousSelected", ".xxxxxxxxx"},
    {"NextSelected", ".xxxxxxxxx"},
    {"Selected", ".xxxxxxxxx"},
    {"SelectAll", ".xxxxxxxxx"},
    {"UnselectAll", ".xxxxxxxxx"},
    {"CopyMove", "...xxx.xxx"},
    {"MoveUp", "....xx..xx"},
    {"MoveDown", "...xx..xx."},
    {"Changer", ".xxxxxxxxx"},
    {"Delete", ".xxxxxxxxx"},
    {"Segment", ".......xxx"},
    {"DeleteSegment", ".......xxx"},
    {"DataElements", ".......xxx"},
    {"BusinessNames", ".......xxx"},
    {"Emphasize", ".xxxxxxxxx"},
    {"Validate", ".xxxxxxxxx"},
    {"ActivityLog", ".......xxx"},
    {"BusinessRuleReport", "xxxxxxxxxx"},
    {"ProcessOutlineReport", "xxxxxxxxxx"},
    {"CoverageReport", "xxxxxxxxxx"},
    {"ExtendedAttributes", "xxxxxxxxxx"},
};

class CommandAvailabilityTest : public ControlTest {
 protected:
  // With a program for which AutoDetect is available.
  CommandAvailabilityTest() {
    for (const char* flag : {"DataView", "DataRelations", "DataDepends"}) store.Put(program, flag, true);
    Open();
    OpenAll();
  }

  void Enter(std::string_view situation) {
    if (situation == "no node") {
      store.Repository().object("BUSINESSFUNC#" + std::to_string(billing))->Delete();
      store.Repository().object("BUSINESSFUNC#" + std::to_string(claims))->Delete();
      control.Show();
    } else {
      Click(std::string(situation));
    }
  }

  bool OnMenu(const CommandEntry& entry) { return widgets.mnuPopup.Item(entry.menuItem).Enabled(); }
  bool OnToolBar(const CommandEntry& entry) {
    auto& button = widgets.tbToolbar.Button(entry.button);
    return entry.entry.empty() ? button.Enabled() : button.Menu(entry.entry).Enabled();
  }
  bool OnHost(const CommandEntry& entry) { return workspace.FindCommand("QMRulesIn", entry.key)->enabled; }
  // Where the command is to be seen: "menu", "tool bar", "host".
  std::vector<std::string> Sights(const CommandEntry& entry) {
    std::vector<std::string> sights;
    auto& button = widgets.tbToolbar.Button(entry.button);
    const bool onToolBar = entry.entry.empty() ? button.Visible() : button.Menu(entry.entry).Visible();
    if (widgets.mnuPopup.Item(entry.menuItem).Visible()) sights.emplace_back("menu");
    if (onToolBar && button.Visible()) sights.emplace_back("tool bar");
    if (workspace.FindCommand("QMRulesIn", entry.key)->visible) sights.emplace_back("host");
    return sights;
  }
};

TEST_F(CommandAvailabilityTest, TheTableHasEveryCommand) {
  std::vector<std::string_view> told;
  std::vector<std::string_view> commands;
  for (const States& states : kStates) told.push_back(states.command);
  for (const CommandEntry& entry : CommandTable()) {
    if (!entry.IsSeparator()) commands.push_back(entry.key);
  }
  EXPECT_EQ(told, commands);
}

TEST_F(CommandAvailabilityTest, EveryCommandHasItsStateOnAllThreeFacesWithEveryNode) {
  // "no node" comes last: it empties the tree.
  for (std::size_t at = std::size(kSituations); at-- > 0;) {
    Enter(kSituations[at]);
    for (const States& states : kStates) {
      const CommandEntry& entry = *browser::FindCommand(states.command);
      const bool expected = states.expected[at] == 'x';
      EXPECT_EQ(OnMenu(entry), expected) << entry.key << " on the menu: " << kSituations[at];
      EXPECT_EQ(OnToolBar(entry), expected) << entry.key << " in the tool bar: " << kSituations[at];
      if (entry.IsOnButton()) {
        EXPECT_EQ(widgets.tbToolbar.Button(entry.button).Enabled(), expected)
            << entry.key << " on its button: " << kSituations[at];
      }
      EXPECT_EQ(OnHost(entry), expected) << entry.key << " in the host: " << kSituations[at];
    }
  }
}

TEST_F(CommandAvailabilityTest, WhatIsInSightAndMarkedDoesNotDependOnTheNode) {
  workspace.RequestMethod("QMRulesIn", "Emphasize");
  const std::vector<std::string> everywhere = {"menu", "tool bar", "host"};
  for (std::size_t at = std::size(kSituations); at-- > 0;) {
    Enter(kSituations[at]);
    for (const States& states : kStates) {
      const CommandEntry& entry = *browser::FindCommand(states.command);
      const bool hidden = entry.key == "BusinessNames";  // there is no glossary
      EXPECT_EQ(Sights(entry), hidden ? std::vector<std::string>() : everywhere) << entry.key << kSituations[at];
      const bool marked = entry.key == "Emphasize";
      EXPECT_EQ(widgets.mnuPopup.Item(entry.menuItem).Checked(), marked) << entry.key << kSituations[at];
      EXPECT_EQ(widgets.tbToolbar.Button(entry.button).Pressed(), marked) << entry.key << kSituations[at];
      EXPECT_EQ(workspace.FindCommand("QMRulesIn", entry.key)->checked, marked) << entry.key << kSituations[at];
    }
  }
}

TEST_F(CommandAvailabilityTest, ARuleWithTheUnassignedFunctionsNameCanBeMoved) {
  store.Put("RULE#" + std::to_string(baseFee), "RuleName", "Homeless Function");
  control.Show();
  OpenAll();
  Click("Late fee");
  tvObjects.Click(*Node("Fees").FirstChild());
  EXPECT_EQ(HostState("CopyMove"), "enable");
}

TEST_F(CommandAvailabilityTest, ARuleSetWithTheUnassignedRuleSetsNameCanBeMoved) {
  store.Put("RULESET#" + std::to_string(taxes), "Name", "Homeless Rules");
  control.Show();
  Click("Homeless Rules");
  EXPECT_EQ(HostState("CopyMove"), "enable");
}

TEST_F(CommandAvailabilityTest, TheFirstChildCanMoveUpOnceANodeWasAddedBeforeIt) {
  Click("Fees");
  EXPECT_EQ(HostState("MoveUp"), "disable");
  store.AddCall(billing, store.AddRuleSet("Discounts"), 0);
  EXPECT_EQ(Tree().substr(0, 20), "Billing\n  Discounts\n");
  EXPECT_EQ(HostState("MoveUp"), "disable") << "until the next selection";
  Click("Fees");
  EXPECT_EQ(HostState("MoveUp"), "enable");
}

TEST_F(CommandAvailabilityTest, ThePanesFollowTheKindOfNode) {
  Click("Billing");
  EXPECT_TRUE(widgets.lvContent.Visible());
  EXPECT_FALSE(widgets.pbAttrs.Visible());
  Click("Base fee");
  EXPECT_TRUE(widgets.pbAttrs.Visible());
  EXPECT_FALSE(widgets.lvContent.Visible());
  Enter("no node");
  EXPECT_FALSE(widgets.txtObjName.Visible());
  EXPECT_FALSE(widgets.pbAttrs.Visible());
}

}  // namespace
}  // namespace qmrules::shell
