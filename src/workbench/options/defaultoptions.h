#pragma once

#include "platform/xml.h"

namespace qmrules::workbench {

// The options that a new project and a new workspace start with: every option that is ever read has its node in one of
// them. Each call makes a new document.
platform::XmlDocument DefaultProjectOptions();
platform::XmlDocument DefaultGlobalOptions();

}  // namespace qmrules::workbench
