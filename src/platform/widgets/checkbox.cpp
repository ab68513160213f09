#include "platform/widgets/checkbox.h"

#include "platform/widgets/caption.h"

namespace qmrules::platform::widgets {

void CheckBox::SetChecked(bool checked) {
  if (Assign(checked_, checked)) OnClick.Raise();
}

bool CheckBox::Click() {
  if (!BeginUserAction()) return false;
  SetChecked(!checked_);
  return true;
}

MnemonicEffect CheckBox::PressMnemonic(std::string_view letter) {
  if (!HasMnemonic(caption_, letter)) return MnemonicEffect::None;
  Click();
  return MnemonicEffect::Acted;
}

bool CheckBox::ActOnKey(const KeyPress& press) {
  return press.key == Key::Space && Click();
}

}  // namespace qmrules::platform::widgets
