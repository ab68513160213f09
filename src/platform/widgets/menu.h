#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/event.h"
#include "platform/widgets/menuitem.h"

namespace qmrules::platform::widgets {

// A menu, opened through Dialogs::PopupMenu or shown in a host's menu bar.
class Menu final {
 public:
  explicit Menu(std::string name) : name_(std::move(name)) {}
  Menu(const Menu&) = delete;
  Menu& operator=(const Menu&) = delete;

  const std::string& Name() const { return name_; }

  // Appends an item. Throws std::invalid_argument when name and index are taken.
  MenuItem& Add(std::string name, std::string caption, int index = 0);
  void AddSeparator();
  // Takes out all items.
  void Clear();
  // The item of this name (as it is written) and index. std::out_of_range when there is none.
  MenuItem& Item(std::string_view name, int index = 0);
  const std::vector<std::unique_ptr<MenuItem>>& Items() const { return items_; }

  Event<> OnChanged;

 private:
  MenuItem* Find(std::string_view name, int index) const;

  std::string name_;
  std::vector<std::unique_ptr<MenuItem>> items_;
};

}  // namespace qmrules::platform::widgets
