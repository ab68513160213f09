#pragma once

#include <string_view>

#include "platform/xml.h"

namespace qmrules::platform {

// One of the host's options documents. Options are read by XPath; a value is the attribute `VALUE` of its node.
class Options {
 public:
  virtual ~Options() = default;
  virtual XmlDocument& Document() = 0;
  // Shows the options under the node of this path to the user. True when the user accepted (the document then holds
  // and the host has stored the new values), false when the user cancelled (nothing has changed).
  virtual bool DisplayDialog(std::string_view path) = 0;
};

}  // namespace qmrules::platform
