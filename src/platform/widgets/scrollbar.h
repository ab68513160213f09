#pragma once

#include <algorithm>

#include "platform/widgets/widget.h"

namespace qmrules::platform::widgets {

// A scroll bar over the values Min to Max.
class ScrollBar final : public Widget {
 public:
  using Widget::Widget;

  int Min() const { return min_; }
  int Max() const { return max_; }
  // Sets the range; a `max` below `min` counts as `min`. The value is brought into it.
  void SetRange(int min, int max) {
    Assign(min_, min);
    Assign(max_, std::max(min, max));
    SetValue(value_);
  }
  // What a step and a page move by.
  int SmallChange() const { return smallChange_; }
  void SetSmallChange(int change) { Assign(smallChange_, change); }
  int LargeChange() const { return largeChange_; }
  void SetLargeChange(int change) { Assign(largeChange_, change); }

  int Value() const { return value_; }
  // Cut to the range. Raises OnValueChanged when the value is another.
  void SetValue(int value) {
    if (Assign(value_, std::clamp(value, min_, max_))) OnValueChanged.Raise();
  }

  bool AcceptsFocus() const override { return false; }

  // User: drags to a value, moves by steps (negative: back), by pages.
  bool ScrollTo(int value) {
    if (!BeginUserAction()) return false;
    SetValue(value);
    return true;
  }
  bool Step(int steps) { return ScrollTo(value_ + steps * smallChange_); }
  bool Page(int pages) { return ScrollTo(value_ + pages * largeChange_); }

  Event<> OnValueChanged;

 private:
  int min_ = 0;
  int max_ = 0;
  int value_ = 0;
  int smallChange_ = 1;
  int largeChange_ = 1;
};

}  // namespace qmrules::platform::widgets
