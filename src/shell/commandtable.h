#pragma once

#include <span>
#include <string>
#include <string_view>

#include "shell/messages.h"

// The commands that the control registers with the workspace.
//
// To add one: its line here in commandtable.cpp, in the place where the host's menu shows it; its caption in the string
// tables; its handler in the control's dispatch of method requests.
namespace qmrules::shell {

// One line of the host's menu for the control.
struct CommandEntry {
  std::string_view key;   // the text that the host sends back; of a separator "-0", "-1", ...
  int label = 0;          // resource number of the caption; 0 for a separator
  bool asksMore = false;  // "..." stands behind the caption: a dialog follows

  [[nodiscard]] bool IsSeparator() const { return label == 0; }
};

// All lines, separators included, in the order of registration.
[[nodiscard]] std::span<const CommandEntry> CommandTable();

// The entry of a command, by its key exactly as it stands in the table; nullptr for another text and for a separator.
[[nodiscard]] const CommandEntry* FindCommand(std::string_view key);

// Where the line stands in the host: `externalName`, "|", and the caption, "-" for a separator.
[[nodiscard]] std::string MenuPath(const CommandEntry& entry, std::string_view externalName, const StringTable& texts);

}  // namespace qmrules::shell
