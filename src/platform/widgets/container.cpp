#include "platform/widgets/container.h"

#include <algorithm>

#include "platform/widgets/button.h"
#include "platform/widgets/caption.h"
#include "platform/widgets/label.h"

namespace qmrules::platform::widgets {

namespace {

bool CanTakeFocus(const Widget& widget) {
  return widget.AcceptsFocus() && widget.IsUsable();
}

std::string SpokenCaption(std::string_view caption) {
  std::string spoken = PlainCaption(caption);
  if (spoken.ends_with(':')) spoken.pop_back();
  return spoken;
}

}  // namespace

void Container::Adopt(std::unique_ptr<Widget> widget, const Widget* next) {
  if (Find(widget->Name(), widget->Index()) != nullptr) {
    throw std::invalid_argument("there is a widget " + widget->Name() + "(" + std::to_string(widget->Index()) +
                                ") already");
  }
  widget->SetFocusOwner(this);
  const auto place = next == nullptr ? widgets_.size() : PlaceOf(next);
  Widget& added = *widget;
  widgets_.insert(widgets_.begin() + static_cast<std::ptrdiff_t>(place), std::move(widget));
  OnWidgetAdded.Raise(added);
}

void Container::Remove(Widget& widget) {
  OnWidgetRemoving.Raise(widget);
  for (Widget** held : {&active_, &goal_, &start_}) {
    if (*held == &widget) *held = nullptr;
  }
  for (Button** held : {&defaultButton_, &cancelButton_}) {
    if (*held == &widget) *held = nullptr;
  }
  std::erase_if(widgets_, [&](const auto& owned) { return owned.get() == &widget; });
}

Widget* Container::Find(std::string_view name, int index) const {
  const auto found = std::find_if(widgets_.begin(), widgets_.end(), [&](const auto& widget) {
    return widget->Index() == index && widget->Name() == name;
  });
  return found == widgets_.end() ? nullptr : found->get();
}

Widget* Container::ActiveWidget() const {
  return active_ != nullptr && active_->IsUsable() ? active_ : nullptr;
}

std::optional<platform::ActiveControl> Container::ActiveControl() const {
  const Widget* active = ActiveWidget();
  if (active == nullptr) return std::nullopt;
  return platform::ActiveControl{active->Name(), active->Index()};
}

bool Container::Leave(Widget* next) {
  struct Flag {
    explicit Flag(bool& raised) : flag(raised) { flag = true; }
    ~Flag() { flag = false; }
    bool& flag;
  };
  goal_ = next;
  FocusLoss loss{next};
  Widget* const left = active_;
  {
    const Flag leaving(leaving_);
    left->OnLostFocus.Raise(loss);
  }
  // A widget that the user can no longer reach must not hold the focus for ever.
  if (loss.cancel && left->IsUsable()) return false;
  return goal_ != active_;
}

bool Container::SetFocus(Widget& widget) {
  if (!CanTakeFocus(widget)) return false;
  if (!open_) {
    start_ = &widget;
    return true;
  }
  if (leaving_) {
    goal_ = &widget;
    return true;
  }
  if (active_ == &widget) return true;
  goal_ = &widget;
  if (active_ != nullptr && !Leave(&widget)) return false;
  active_ = goal_;
  if (active_ != nullptr) active_->OnGotFocus.Raise();
  return active_ == &widget;
}

bool Container::ReleaseFocus() {
  if (leaving_) return false;
  if (active_ == nullptr) return true;
  if (!Leave(nullptr)) return false;
  active_ = goal_;
  if (active_ != nullptr) active_->OnGotFocus.Raise();
  return active_ == nullptr;
}

std::size_t Container::PlaceOf(const Widget* widget) const {
  const auto found =
      std::find_if(widgets_.begin(), widgets_.end(), [&](const auto& owned) { return owned.get() == widget; });
  return static_cast<std::size_t>(found - widgets_.begin());
}

bool Container::FocusAlong(bool forward) {
  const std::size_t count = widgets_.size();
  if (count == 0) return false;
  const std::size_t place = PlaceOf(active_);
  // Without a focus the walk begins at the first widget, or at the last one.
  std::size_t at = place < count ? place : (forward ? count - 1 : 0);
  for (std::size_t tried = 0; tried < count; ++tried) {
    at = forward ? (at + 1) % count : (at + count - 1) % count;
    Widget& widget = *widgets_[at];
    if (&widget != active_ && widget.TabStop() && CanTakeFocus(widget)) return SetFocus(widget);
  }
  return false;
}

bool Container::FocusBehind(std::size_t place) {
  for (std::size_t at = place + 1; at < widgets_.size(); ++at) {
    if (CanTakeFocus(*widgets_[at])) return SetFocus(*widgets_[at]);
  }
  return false;
}

bool Container::PressKey(Key key, ShiftState shift) {
  if (!open_) return false;
  if (Widget* active = ActiveWidget(); active != nullptr && active->PressKey(key, shift)) return true;
  if (key == Key::Tab) return shift.shift ? FocusPrevious() : FocusNext();
  if (key == Key::Enter) return defaultButton_ != nullptr && defaultButton_->Press();
  if (key == Key::Escape) return cancelButton_ != nullptr && cancelButton_->Press();
  return false;
}

bool Container::PressMnemonic(std::string_view letter) {
  if (!open_) return false;
  const std::size_t count = widgets_.size();
  const std::size_t place = PlaceOf(active_);
  for (std::size_t tried = 0; tried < count; ++tried) {
    const std::size_t at = ((place < count ? place + 1 : 0) + tried) % count;
    if (!widgets_[at]->IsUsable()) continue;
    switch (widgets_[at]->PressMnemonic(letter)) {
      case MnemonicEffect::None:
        break;
      case MnemonicEffect::PassOn:
        return FocusBehind(at);
      case MnemonicEffect::Acted:
        return true;
    }
  }
  return false;
}

std::string Container::AccessibleNameOf(const Widget& widget) const {
  if (!widget.AccessibleName().empty()) return widget.AccessibleName();
  if (!widget.OwnCaption().empty()) return SpokenCaption(widget.OwnCaption());
  const std::size_t place = PlaceOf(&widget);
  if (place > 0 && place < widgets_.size()) {
    if (const auto* label = dynamic_cast<const Label*>(widgets_[place - 1].get())) {
      return SpokenCaption(label->Caption());
    }
  }
  return widget.ToolTipText();
}

void Container::Open() {
  open_ = true;
  active_ = nullptr;
  Widget* const start = start_;
  start_ = nullptr;
  if (start == nullptr || !SetFocus(*start)) FocusNext();
}

void Container::CloseContainer() {
  open_ = false;
  active_ = nullptr;
  start_ = nullptr;
}

}  // namespace qmrules::platform::widgets
