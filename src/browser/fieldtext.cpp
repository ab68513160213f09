#include "browser/fieldtext.h"

#include <cstddef>

#include "shell/text.h"

namespace qmrules::browser {

namespace {

constexpr std::size_t kLongestToolTip = 100;

}  // namespace

std::string ToolTipOf(std::string_view text) {
  return shell::LeftCharacters(text, kLongestToolTip);
}

void ShowText(platform::widgets::TextBox& field, const std::string& text) {
  field.SetTag(text);
  field.SetToolTipText(ToolTipOf(text));
  if (field.Text() != text) field.SetText(text);  // the same text would lose its caret
}

}  // namespace qmrules::browser
