#pragma once

#include "platform/widgets/textbox.h"

namespace qmrules::platform::widgets {

// A field of several lines, taken as plain text. Line breaks that the user makes are CR LF; those of SetText stay.
class RichTextBox final : public TextBox {
 public:
  using TextBox::TextBox;
  bool MultiLine() const override { return true; }
};

}  // namespace qmrules::platform::widgets
