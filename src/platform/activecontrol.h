#pragma once

#include <string>

namespace qmrules::platform {

// The widget that has the focus, by its name and its place in a control array (0 for a widget that stands alone).
struct ActiveControl {
  std::string name;
  int index = 0;
  friend bool operator==(const ActiveControl&, const ActiveControl&) = default;
};

}  // namespace qmrules::platform
