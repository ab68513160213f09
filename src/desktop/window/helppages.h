#pragma once

#include <vector>

#include "desktop/window/windowmenus.h"

class QWidget;

namespace qmrules::desktop {

// Shows all keys: those of the menus, and those that the panes take.
void ShowKeyboardPage(const std::vector<WindowMenus::Shortcut>& shortcuts, QWidget* parent);

// Shows what the program is and which libraries it stands on.
void ShowAboutPage(QWidget* parent);

}  // namespace qmrules::desktop
