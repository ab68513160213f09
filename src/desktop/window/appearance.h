#pragma once

#include <QFont>
#include <QPalette>

#include "desktop/window/preferences.h"

namespace qmrules::desktop {

// How the whole application looks: the style, the colours and the size of the letters. Made once, before any window.
class Appearance {
 public:
  Appearance();

  // The system's colours are those that its own settings give the application, and follow them.
  void UseScheme(Scheme scheme);
  // In points; 0 for the system's own size.
  void UseFontSize(int points);
  // The size that is in use.
  int FontSize() const;

 private:
  QFont systemFont_;
};

// The palettes of the two schemes.
QPalette LightPalette();
QPalette DarkPalette();

}  // namespace qmrules::desktop
