#pragma once

#include <span>
#include <string>
#include <string_view>

#include "shell/messages.h"

// The commands of the control and where each of them is shown: in the host's menu, in the control's own menu
// `mnuPopup`, and in the tool bar.
//
// To add one: its line in commandtable.cpp, in the place where the menus show it; its caption in the string tables; its
// handler in shell/commandhandlers.cpp; when it is not always available, its line in shell/commandavailability.cpp.
namespace qmrules::browser {

// One line of the menus, in the host and in the control.
struct CommandEntry {
  std::string_view key;            // the text that the host sends back; of a separator "-0", "-1", ...
  int label = 0;                   // resource number of the caption; 0 for a separator
  bool asksMore = false;           // "..." stands behind the caption: a dialog follows
  std::string_view menuItem = {};  // name in mnuPopup
  std::string_view button = {};    // key of its tool bar button
  std::string_view entry = {};     // key in that button's menu; "" when the command is the button's own
  bool runsOnButton = false;       // the button with the menu runs this command when it is clicked itself

  [[nodiscard]] bool IsSeparator() const { return label == 0; }
  // True when a click on the button, not on an entry of its menu, runs the command.
  [[nodiscard]] bool IsOnButton() const { return entry.empty() || runsOnButton; }
};

// All lines, separators included, in the order of the menus and of their registration.
[[nodiscard]] std::span<const CommandEntry> CommandTable();

// The entry of a command, by its key exactly as it stands in the table; nullptr for another text and for a separator.
[[nodiscard]] const CommandEntry* FindCommand(std::string_view key);

// What a click in the tool bar runs: the command of the button, or of the entry in its menu. Keys are taken as they
// stand in the table; nullptr for others.
[[nodiscard]] const CommandEntry* CommandOfButton(std::string_view button);
[[nodiscard]] const CommandEntry* CommandOfEntry(std::string_view button, std::string_view entry);

// The caption in a menu; "-" for a separator.
[[nodiscard]] std::string MenuCaption(const CommandEntry& entry, const shell::StringTable& texts);

// Where the line stands in the host: `externalName`, "|", and the caption.
[[nodiscard]] std::string MenuPath(const CommandEntry& entry, std::string_view externalName,
                                   const shell::StringTable& texts);

}  // namespace qmrules::browser
