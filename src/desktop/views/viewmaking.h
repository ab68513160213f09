#pragma once

#include <QWidget>

#include "desktop/views/focusbridge.h"
#include "platform/widgets/widget.h"

namespace qmrules::desktop {

// Makes the view of the model, as a child of `parent`. Throws std::logic_error for a kind of model that stands in no
// form: a tool bar needs its pictures, a splitter its panes.
//
// To add a kind of widget: its view, and its line in viewmaking.cpp.
QWidget* MakeView(FocusBridge& focus, platform::widgets::Widget& model, QWidget* parent);

}  // namespace qmrules::desktop
