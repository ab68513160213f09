#pragma once

#include <QString>

#include "platform/widgets/textbox.h"

namespace qmrules::desktop {

// The one place in which a text differs from another.
struct TextEdit {
  qsizetype start = 0;
  qsizetype removed = 0;
  QString inserted;
};

// How `after` came from `before`, with the cursor at `cursor` of `after` behind the change. `before` and `after`
// differ.
TextEdit EditBetween(const QString& before, const QString& after, qsizetype cursor);

// Does to the model as its user what the view's user did to its text: selects the removed characters and types the
// inserted ones. The model may take less of it, or nothing.
void HandEdit(platform::widgets::TextBox& model, const TextEdit& edit);

}  // namespace qmrules::desktop
