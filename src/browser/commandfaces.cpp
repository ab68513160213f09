#include "browser/commandfaces.h"

#include <stdexcept>
#include <string>

#include "browser/commandtable.h"

namespace qmrules::browser {

namespace {

const CommandEntry& EntryOf(std::string_view command) {
  const CommandEntry* const entry = FindCommand(command);
  if (entry == nullptr) throw std::out_of_range("no such command: " + std::string(command));
  return *entry;
}

}  // namespace

void CommandFaces::SetEnabled(std::string_view command, bool enabled) const {
  const CommandEntry& entry = EntryOf(command);
  services_.widgets.mnuPopup.Item(entry.menuItem).SetEnabled(enabled);
  auto& button = services_.widgets.tbToolbar.Button(entry.button);
  if (!entry.entry.empty()) button.Menu(entry.entry).SetEnabled(enabled);
  if (entry.IsOnButton()) button.SetEnabled(enabled);
  services_.host.SetHostItem(command, enabled ? "enable" : "disable");
}

void CommandFaces::SetVisible(std::string_view command, bool visible) const {
  const CommandEntry& entry = EntryOf(command);
  services_.widgets.mnuPopup.Item(entry.menuItem).SetVisible(visible);
  auto& button = services_.widgets.tbToolbar.Button(entry.button);
  if (entry.entry.empty()) {
    button.SetVisible(visible);
  } else {
    button.Menu(entry.entry).SetVisible(visible);
  }
  services_.host.SetHostItem(command, visible ? "show" : "hide");
}

void CommandFaces::SetChecked(std::string_view command, bool checked) const {
  const CommandEntry& entry = EntryOf(command);
  services_.widgets.mnuPopup.Item(entry.menuItem).SetChecked(checked);
  services_.widgets.tbToolbar.Button(entry.button).SetPressed(checked);
  services_.host.SetHostItem(command, checked ? "check" : "uncheck");
}

bool CommandFaces::IsChecked(std::string_view command) const {
  return services_.widgets.mnuPopup.Item(EntryOf(command).menuItem).Checked();
}

}  // namespace qmrules::browser
