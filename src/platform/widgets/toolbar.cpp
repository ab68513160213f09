#include "platform/widgets/toolbar.h"

#include <stdexcept>

#include "shell/casefold.h"

namespace qmrules::platform::widgets {

ToolButton* ToolBar::FindButton(std::string_view key) const {
  for (const auto& button : buttons_) {
    if (!button->Key().empty() && shell::EqualIgnoringCase(button->Key(), key)) return button.get();
  }
  return nullptr;
}

ToolButton& ToolBar::Add(std::string key, std::string image) {
  if (key.empty() || FindButton(key) != nullptr) {
    throw std::invalid_argument("the key \"" + key + "\" cannot be given to a button of " + Name());
  }
  buttons_.push_back(std::make_unique<ToolButton>(OnChanged, std::move(key), std::move(image)));
  OnChanged.Raise();
  return *buttons_.back();
}

void ToolBar::AddSeparator() {
  buttons_.push_back(std::make_unique<ToolButton>(OnChanged, std::string(), std::string()));
  OnChanged.Raise();
}

ToolButton& ToolBar::Button(std::string_view key) {
  if (ToolButton* button = FindButton(key)) return *button;
  throw std::out_of_range(Name() + " has no button \"" + std::string(key) + "\"");
}

bool ToolBar::Click(std::string_view key) {
  const ToolButton& button = Button(key);
  if (!button.Enabled() || !button.Visible() || !BeginUserAction()) return false;
  OnButtonClick.Raise(button.Key());
  return true;
}

bool ToolBar::ClickMenu(std::string_view key, std::string_view menuKey) {
  ToolButton& button = Button(key);
  const ButtonMenu& menu = button.Menu(menuKey);
  if (!button.Enabled() || !button.Visible() || !menu.Enabled() || !menu.Visible() || !BeginUserAction()) return false;
  OnButtonMenuClick.Raise(button.Key(), menu.Key());
  return true;
}

}  // namespace qmrules::platform::widgets
