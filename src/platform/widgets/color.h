#pragma once

namespace qmrules::platform::widgets {

// A colour by its meaning; the view picks the one that fits the user's theme.
enum class Color {
  Normal,
  Grey,  // text that cannot be acted on
  Red,   // text that tells of something missing
};

}  // namespace qmrules::platform::widgets
