#pragma once

#include <string>
#include <string_view>

#include "platform/widgets/textbox.h"

namespace qmrules::browser {

// The beginning of a text that a field is too small for.
std::string ToolTipOf(std::string_view text);

// Puts a text that is stored so into the field and its tag, and the beginning of it into the tool tip.
void ShowText(platform::widgets::TextBox& field, const std::string& text);

}  // namespace qmrules::browser
