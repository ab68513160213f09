#pragma once

#include "browser/controlwidgets.h"
#include "desktop/locator/locatorsource.h"

namespace qmrules::desktop {

// Selects the entry's node in the tree, as a click on it does, and brings it in sight; the nodes around it are opened.
// False when the tree does not show it. What the click throws comes through.
bool JumpTo(const LocatorEntry& entry, browser::ControlWidgets& widgets);

}  // namespace qmrules::desktop
