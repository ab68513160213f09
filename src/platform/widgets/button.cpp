#include "platform/widgets/button.h"

#include "platform/widgets/caption.h"

namespace qmrules::platform::widgets {

bool Button::Press() {
  if (!BeginUserAction()) return false;
  OnClick.Raise();
  return true;
}

MnemonicEffect Button::PressMnemonic(std::string_view letter) {
  if (!HasMnemonic(caption_, letter)) return MnemonicEffect::None;
  Press();
  return MnemonicEffect::Acted;
}

bool Button::ActOnKey(const KeyPress& press) {
  return (press.key == Key::Enter || press.key == Key::Space) && Press();
}

}  // namespace qmrules::platform::widgets
