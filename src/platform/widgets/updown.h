#pragma once

#include "platform/widgets/textbox.h"

namespace qmrules::platform::widgets {

// Two arrows beside a text field that count its number up and down within Min to Max.
class UpDown final : public Widget {
 public:
  using Widget::Widget;

  int Min() const { return min_; }
  int Max() const { return max_; }
  // A `max` below `min` counts as `min`. The field's text stays as it is.
  void SetRange(int min, int max);
  // The field that holds the number; it outlives this widget. nullptr for none.
  TextBox* Buddy() const { return buddy_; }
  void SetBuddy(TextBox* buddy) { buddy_ = buddy; }

  // The number in the field, cut to the range; Min when the field holds no whole number.
  int Value() const;

  bool AcceptsFocus() const override { return false; }

  // User: presses an arrow. False when the number is at its limit already or the field cannot be used.
  bool Up() { return Move(1); }
  bool Down() { return Move(-1); }

 private:
  bool Move(int by);

  int min_ = 0;
  int max_ = 100;
  TextBox* buddy_ = nullptr;
};

}  // namespace qmrules::platform::widgets
