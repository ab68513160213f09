#pragma once

#include <QColor>
#include <QPalette>
#include <QWidget>

#include "platform/widgets/color.h"
#include "platform/widgets/widget.h"

namespace qmrules::desktop {

// The text colour of this meaning, readable on the palette's base.
QColor TextColor(platform::widgets::Color color, const QPalette& palette);

// The background of this meaning.
QColor BaseColor(platform::widgets::Color color, const QPalette& palette);

// Gives the view the model's colours in the scheme that the application has now. A field that is `locked` stands on the
// window's own background.
void ApplyColors(const platform::widgets::Widget& model, bool locked, QWidget& view);

}  // namespace qmrules::desktop
