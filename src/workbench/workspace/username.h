#pragma once

#include <string>

namespace qmrules::workbench {

// The login name of the user who runs this process; "user" and the decimal number for a user without a name.
std::string SystemUserName();

}  // namespace qmrules::workbench
