#pragma once

namespace qmrules::platform::widgets {

// Keys by their usual virtual codes; a letter has the code of its capital in ASCII. A view may hand over other codes
// than these; no widget acts on them.
enum class Key : int {
  Backspace = 8,
  Tab = 9,
  Enter = 13,
  Escape = 27,
  Space = 32,
  PageUp = 33,
  PageDown = 34,
  End = 35,
  Home = 36,
  Left = 37,
  Up = 38,
  Right = 39,
  Down = 40,
  Insert = 45,
  Delete = 46,
  A = 65,
  S = 83,
  U = 85,
  F10 = 121,
};

// Which of the modifier keys are down.
struct ShiftState {
  bool shift = false;
  bool ctrl = false;
  bool alt = false;
  friend bool operator==(const ShiftState&, const ShiftState&) = default;
};

// A key going down or up. An observer sets `handled` to keep the widget's own action from running.
struct KeyPress {
  Key key = Key::Space;
  ShiftState shift;
  bool handled = false;
};

enum class MouseButton { Left, Right };

// A mouse button going down or up, at a place in the view's own measure from the widget's left top corner.
struct MousePress {
  MouseButton button = MouseButton::Left;
  ShiftState shift;
  int x = 0;
  int y = 0;
};

}  // namespace qmrules::platform::widgets
