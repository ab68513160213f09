#include "platform/widgets/optiongroup.h"

#include <stdexcept>

#include "platform/widgets/caption.h"

namespace qmrules::platform::widgets {

void OptionGroup::Add(std::string caption, std::string tag) {
  options_.push_back({std::move(caption), std::move(tag)});
  OnChanged.Raise();
}

const OptionGroup::Option& OptionGroup::At(int index) const {
  if (index < 0 || index >= Count()) throw std::out_of_range("option " + std::to_string(index) + " of " + Name());
  return options_[static_cast<std::size_t>(index)];
}

void OptionGroup::SetCaption(int index, std::string caption) {
  At(index);
  Assign(options_[static_cast<std::size_t>(index)].caption, std::move(caption));
}

void OptionGroup::SetValue(int index) {
  if (index != -1) At(index);
  if (Assign(value_, index) && index != -1) OnClick.Raise(index);
}

bool OptionGroup::Choose(int index) {
  At(index);
  if (!BeginUserAction()) return false;
  SetValue(index);
  return true;
}

bool OptionGroup::DoubleClick(int index) {
  if (!Choose(index)) return false;
  OnDoubleClick.Raise(index);
  return true;
}

MnemonicEffect OptionGroup::PressMnemonic(std::string_view letter) {
  for (int index = 0; index < Count(); ++index) {
    if (!HasMnemonic(Caption(index), letter)) continue;
    Choose(index);
    return MnemonicEffect::Acted;
  }
  return MnemonicEffect::None;
}

bool OptionGroup::ActOnKey(const KeyPress& press) {
  if (press.key == Key::Up || press.key == Key::Left) return value_ > 0 && Choose(value_ - 1);
  if (press.key == Key::Down || press.key == Key::Right) return value_ + 1 < Count() && Choose(value_ + 1);
  if (press.key == Key::Space) return value_ == -1 && Count() > 0 && Choose(0);
  return false;
}

}  // namespace qmrules::platform::widgets
