#pragma once

#include <string>
#include <string_view>

namespace qmrules::workbench {

// The file of the user's settings: qmrules/settings.json in the folder of $XDG_CONFIG_HOME or, where that is empty, in
// .config below $HOME. Takes the values of the two variables.
std::string UserSettingsPath(std::string_view configHome, std::string_view home);

// The file of the machine's values.
inline constexpr std::string_view kRegistryPath = "/etc/qmrules/registry.json";

}  // namespace qmrules::workbench
