#pragma once

#include <string>
#include <string_view>

#include "platform/xml.h"
#include "support/errortext.h"

namespace qmrules::platform {

// What loading the text as "a.xml" is refused with.
inline std::string LoadError(std::string_view text, const XmlLimits& limits = {}) {
  return test::ErrorText([&] { XmlDocument().loadXML(text, "a.xml", limits); });
}

}  // namespace qmrules::platform
