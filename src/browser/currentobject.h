#pragma once

#include <string>

#include "platform/widgets/treenodehandle.h"

namespace qmrules::browser {

// The object that stands in the panes.
struct CurrentObject {
  platform::widgets::TreeNodeHandle node;  // the node that it was shown from; the object may outlive the node
  std::string key;                         // "" for none
};

}  // namespace qmrules::browser
