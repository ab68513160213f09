#pragma once

#include "cli/environment.h"

namespace qmrules::cli {

// The environment of this process: its standard streams, current folder, variables and user. The user's settings are
// qmrules/settings.json in $XDG_CONFIG_HOME or ~/.config; the machine's values are /etc/qmrules/registry.json. Throws
// platform::Error when there is no current folder.
CliEnvironment SystemEnvironment(const platform::Clock& clock);

}  // namespace qmrules::cli
