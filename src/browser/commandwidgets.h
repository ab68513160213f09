#pragma once

#include "browser/controlwidgets.h"
#include "shell/messages.h"

namespace qmrules::browser {

// Fills the menu mnuPopup and the tool bar, both empty before, with the commands of the table. A button's tool tip is
// the caption of the command that a click on it runs; the image keys are those of the list ilIcons.
void FillCommandWidgets(ControlWidgets& widgets, const shell::StringTable& texts);

}  // namespace qmrules::browser
