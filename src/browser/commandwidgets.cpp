#include "browser/commandwidgets.h"

#include <string>
#include <string_view>

#include "browser/commandtable.h"

namespace qmrules::browser {

namespace {

struct ButtonPlace {
  std::string_view key;  // "" for a separator
  std::string_view image = {};
};

constexpr ButtonPlace kButtons[] = {
    {"Create", "Create"},
    {"AutoDetect", "AutoDetect"},
    {},
    {"Find", "Find"},
    {"Selected", "Selected"},
    {},
    {"CopyMove", "CopyMove"},
    {"MoveUp", "MoveUp"},
    {"MoveDown", "MoveDown"},
    {"Change", "Change"},
    {"Delete", "Delete"},
    {},
    {"Segment", "Segment"},
    {"Emphasize", "Emphasize"},
    {"Validate", "Validate"},
    {},
    {"ActivityLog", "ActivityLog"},
    {"Report", "Report"},
    {"ExtendedAttributes", "Properties"},
};

void AddButton(platform::widgets::ToolBar& toolBar, const ButtonPlace& place, const shell::StringTable& texts) {
  auto& button = toolBar.Add(std::string(place.key), std::string(place.image));
  for (const CommandEntry& command : CommandTable()) {
    if (command.button != place.key) continue;
    if (!command.entry.empty()) button.AddMenu(std::string(command.entry), MenuCaption(command, texts));
    if (command.IsOnButton()) button.SetToolTipText(texts.Text(command.label));
  }
}

}  // namespace

void FillCommandWidgets(ControlWidgets& widgets, const shell::StringTable& texts) {
  for (const CommandEntry& command : CommandTable()) {
    if (command.IsSeparator()) {
      widgets.mnuPopup.AddSeparator();
    } else {
      widgets.mnuPopup.Add(std::string(command.menuItem), MenuCaption(command, texts));
    }
  }
  for (const ButtonPlace& place : kButtons) {
    if (place.key.empty()) {
      widgets.tbToolbar.AddSeparator();
    } else {
      AddButton(widgets.tbToolbar, place, texts);
    }
  }
}

}  // namespace qmrules::browser
