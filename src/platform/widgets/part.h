#pragma once

#include <utility>

#include "platform/event.h"

namespace qmrules::platform::widgets {

// A piece of a widget that is held by reference, such as a tool bar's button: a change of it counts as a change of the
// widget.
class Part {
 public:
  // `changed` is the widget's OnChanged; it outlives the part.
  explicit Part(Event<>& changed) : changed_(changed) {}
  Part(const Part&) = delete;
  Part& operator=(const Part&) = delete;

 protected:
  ~Part() = default;

  // Sets the field and tells the view; false when the value is the same.
  template <class T>
  bool Assign(T& field, T value) {
    if (field == value) return false;
    field = std::move(value);
    changed_.Raise();
    return true;
  }

 private:
  Event<>& changed_;
};

}  // namespace qmrules::platform::widgets
