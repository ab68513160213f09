#pragma once

namespace qmrules::platform::widgets {

class Widget;

// The focus is about to leave a widget. An observer that sets `cancel` keeps it there.
struct FocusLoss {
  Widget* next = nullptr;  // where it is going; nullptr when it leaves the whole container
  bool cancel = false;
};

// What a widget asks of the container that it stands in.
class FocusOwner {
 public:
  virtual ~FocusOwner() = default;
  // Moves the focus to the widget. False when the widget cannot take it or the one that has it does not let go.
  virtual bool SetFocus(Widget& widget) = 0;
  virtual bool HasFocus(const Widget& widget) const = 0;
  // True while the user can act on what stands in the container.
  virtual bool IsOpen() const = 0;
};

}  // namespace qmrules::platform::widgets
