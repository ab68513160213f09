#pragma once

#include <QWidget>

#include "desktop/views/focusbridge.h"
#include "platform/widgets/form.h"

namespace qmrules::desktop {

// Makes the views of all widgets of the form in the window, and lays them out.
void LayOutForm(FocusBridge& focus, platform::widgets::Form& form, QWidget& window);

}  // namespace qmrules::desktop
