#include "platform/widgets/widget.h"

namespace qmrules::platform::widgets {

bool Widget::IsUsable() const {
  for (const Widget* widget = this; widget != nullptr; widget = widget->enclosing_) {
    if (!widget->visible_ || !widget->enabled_) return false;
  }
  return true;
}

bool Widget::SetFocus() {
  return owner_ != nullptr && owner_->SetFocus(*this);
}

bool Widget::BeginUserAction() {
  if (!IsUsable()) return false;
  if (owner_ == nullptr) return true;
  return owner_->IsOpen() && (!AcceptsFocus() || owner_->SetFocus(*this));
}

bool Widget::PressKey(Key key, ShiftState shift) {
  if (!BeginUserAction()) return false;
  KeyPress down{key, shift};
  OnKeyDown.Raise(down);
  const bool acted = down.handled || ActOnKey(down);
  KeyPress up{key, shift};
  OnKeyUp.Raise(up);
  return acted || up.handled;
}

bool Widget::PressMouse(const MousePress& press) {
  if (!BeginUserAction()) return false;
  OnMouseDown.Raise(press);
  return true;
}

void Widget::ReleaseMouse(const MousePress& press) {
  OnMouseUp.Raise(press);
}

MnemonicEffect Widget::PressMnemonic(std::string_view) {
  return MnemonicEffect::None;
}

bool Widget::ActOnKey(const KeyPress&) {
  return false;
}

}  // namespace qmrules::platform::widgets
