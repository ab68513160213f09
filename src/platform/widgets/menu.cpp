#include "platform/widgets/menu.h"

#include <algorithm>
#include <stdexcept>

namespace qmrules::platform::widgets {

MenuItem* Menu::Find(std::string_view name, int index) const {
  const auto found = std::find_if(items_.begin(), items_.end(), [&](const auto& item) {
    return !item->IsSeparator() && item->Index() == index && item->Name() == name;
  });
  return found == items_.end() ? nullptr : found->get();
}

MenuItem& Menu::Add(std::string name, std::string caption, int index) {
  if (Find(name, index) != nullptr) {
    throw std::invalid_argument("there is a menu item " + name + "(" + std::to_string(index) + ") already");
  }
  items_.push_back(std::make_unique<MenuItem>(OnChanged, std::move(name), index));
  MenuItem& added = *items_.back();
  added.SetCaption(std::move(caption));
  return added;
}

void Menu::AddSeparator() {
  items_.push_back(std::make_unique<MenuItem>(OnChanged, std::string(), 0));
  items_.back()->SetCaption("-");
}

void Menu::Clear() {
  items_.clear();
  OnChanged.Raise();
}

MenuItem& Menu::Item(std::string_view name, int index) {
  if (MenuItem* item = Find(name, index)) return *item;
  throw std::out_of_range(name_ + " has no item " + std::string(name) + "(" + std::to_string(index) + ")");
}

}  // namespace qmrules::platform::widgets
