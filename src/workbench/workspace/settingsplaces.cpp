#include "workbench/workspace/settingsplaces.h"

namespace qmrules::workbench {

std::string UserSettingsPath(std::string_view configHome, std::string_view home) {
  const std::string folder = configHome.empty() ? std::string(home) + "/.config" : std::string(configHome);
  return folder + "/qmrules/settings.json";
}

}  // namespace qmrules::workbench
