#pragma once

#include <QKeyEvent>
#include <optional>

#include "platform/widgets/userinput.h"

namespace qmrules::desktop {

// The key as the models know it; nothing for one that has no code there.
std::optional<platform::widgets::Key> KeyOf(const QKeyEvent& event);

platform::widgets::ShiftState ShiftOf(Qt::KeyboardModifiers modifiers);

// The letter that is pressed together with Alt alone, or with Alt and Shift; empty for any other key.
QString MnemonicLetter(const QKeyEvent& event);

}  // namespace qmrules::desktop
