#pragma once

#include <string>

#include "platform/xml.h"

namespace qmrules::desktop {

// The settings that stand in the workspace's own file, as an options document for the options window.

// `encoding`: of the sources; "" for the default.
platform::XmlDocument FolderOptions(const std::string& encoding);
std::string EncodingOf(const platform::XmlDocument& options);

}  // namespace qmrules::desktop
