#include "platform/widgets/tabstrip.h"

#include <algorithm>
#include <stdexcept>

#include "shell/casefold.h"

namespace qmrules::platform::widgets {

bool TabStrip::Add(std::string key, std::string caption) {
  const bool taken =
      std::any_of(tabs_.begin(), tabs_.end(), [&](const Tab& tab) { return shell::EqualIgnoringCase(tab.key, key); });
  if (taken) return false;
  tabs_.push_back({std::move(key), std::move(caption)});
  OnChanged.Raise();
  return true;
}

std::size_t TabStrip::PlaceOf(std::string_view key) const {
  for (std::size_t place = 0; place < tabs_.size(); ++place) {
    if (shell::EqualIgnoringCase(tabs_[place].key, key)) return place;
  }
  throw std::out_of_range(Name() + " has no tab \"" + std::string(key) + "\"");
}

void TabStrip::SetCaption(std::string_view key, std::string caption) {
  Assign(tabs_[PlaceOf(key)].caption, std::move(caption));
}

const std::string& TabStrip::Selected() const {
  static const std::string none;
  return tabs_.empty() ? none : tabs_[selected_].key;
}

void TabStrip::SetSelected(std::string_view key) {
  if (Assign(selected_, PlaceOf(key))) OnClick.Raise();
}

bool TabStrip::ChoosePlace(std::size_t place) {
  if (!BeginUserAction()) return false;
  Assign(selected_, place);
  OnClick.Raise();
  return true;
}

bool TabStrip::Choose(std::string_view key) {
  return ChoosePlace(PlaceOf(key));
}

bool TabStrip::ActOnKey(const KeyPress& press) {
  if (press.key == Key::Left) return selected_ > 0 && ChoosePlace(selected_ - 1);
  if (press.key == Key::Right) return selected_ + 1 < tabs_.size() && ChoosePlace(selected_ + 1);
  return false;
}

}  // namespace qmrules::platform::widgets
