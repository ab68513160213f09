#include "platform/widgets/toolbutton.h"

#include <stdexcept>

#include "shell/casefold.h"

namespace qmrules::platform::widgets {

ButtonMenu* ToolButton::FindMenu(std::string_view key) const {
  for (const auto& menu : menus_) {
    if (shell::EqualIgnoringCase(menu->Key(), key)) return menu.get();
  }
  return nullptr;
}

ButtonMenu& ToolButton::AddMenu(std::string key, std::string caption) {
  if (FindMenu(key) != nullptr) throw std::invalid_argument("the button menu \"" + key + "\" is there already");
  menus_.push_back(std::make_unique<ButtonMenu>(changed_, std::move(key), std::move(caption)));
  changed_.Raise();
  return *menus_.back();
}

ButtonMenu& ToolButton::Menu(std::string_view key) {
  if (ButtonMenu* menu = FindMenu(key)) return *menu;
  throw std::out_of_range("no button menu \"" + std::string(key) + "\" below \"" + key_ + "\"");
}

}  // namespace qmrules::platform::widgets
