#include "platform/widgets/combobox.h"

#include <algorithm>
#include <stdexcept>

#include "shell/casefold.h"

namespace qmrules::platform::widgets {

namespace {

template <class Test>
int IndexWhere(const std::vector<ComboItem>& items, Test test) {
  const auto found = std::find_if(items.begin(), items.end(), test);
  return found == items.end() ? -1 : static_cast<int>(found - items.begin());
}

}  // namespace

bool ComboBox::Add(ComboItem item) {
  if (!item.key.empty() && IndexOfKey(item.key) != -1) return false;
  items_.push_back(std::move(item));
  OnChanged.Raise();
  return true;
}

const ComboItem& ComboBox::Item(int index) const {
  if (index < 0 || index >= Count()) throw std::out_of_range("item " + std::to_string(index) + " of " + Name());
  return items_[static_cast<std::size_t>(index)];
}

void ComboBox::Remove(int index) {
  Item(index);
  items_.erase(items_.begin() + index);
  if (listIndex_ == index) {
    listIndex_ = -1;
    if (!editable_) text_.clear();
  } else if (listIndex_ > index) {
    --listIndex_;
  }
  OnChanged.Raise();
}

void ComboBox::Clear() {
  items_.clear();
  listIndex_ = -1;
  text_.clear();
  OnChanged.Raise();
}

int ComboBox::IndexOfKey(std::string_view key) const {
  return IndexWhere(items_, [&](const ComboItem& item) { return shell::EqualIgnoringCase(item.key, key); });
}

int ComboBox::IndexOfText(std::string_view text) const {
  return IndexWhere(items_, [&](const ComboItem& item) { return item.text == text; });
}

int ComboBox::IndexOfItemData(std::int32_t itemData) const {
  return IndexWhere(items_, [&](const ComboItem& item) { return item.itemData == itemData; });
}

void ComboBox::SetChoice(int index) {
  listIndex_ = index;
  text_ = index == -1 ? std::string() : Item(index).text;
  OnChanged.Raise();
  OnClick.Raise();
}

void ComboBox::SetListIndex(int index) {
  if (index != -1) Item(index);
  if (index != listIndex_) SetChoice(index);
}

void ComboBox::SetText(std::string text) {
  if (!editable_ || text == text_) return;
  listIndex_ = IndexOfText(text);
  text_ = std::move(text);
  OnChanged.Raise();
  OnTextChanged.Raise();
}

bool ComboBox::Choose(int index) {
  Item(index);
  if (!BeginUserAction()) return false;
  SetChoice(index);
  return true;
}

bool ComboBox::ChooseText(std::string_view text) {
  const int index = IndexOfText(text);
  return index != -1 && Choose(index);
}

bool ComboBox::Enter(std::string_view text) {
  if (!editable_ || !BeginUserAction()) return false;
  SetText(std::string(text));
  return true;
}

bool ComboBox::ActOnKey(const KeyPress& press) {
  if (press.key == Key::Up) return listIndex_ > 0 && Choose(listIndex_ - 1);
  if (press.key == Key::Down) return listIndex_ + 1 < Count() && Choose(listIndex_ + 1);
  return false;
}

}  // namespace qmrules::platform::widgets
