#include "desktop/window/appearance.h"

#include <QApplication>
#include <QFontInfo>
#include <QProxyStyle>
#include <QStyleFactory>

namespace qmrules::desktop {

namespace {

struct SchemeColors {
  QRgb window, windowText, base, alternateBase, text, placeholder, button, buttonText, brightText;
  QRgb highlight, highlightedText, link, linkVisited, toolTipBase, toolTipText;
  QRgb light, midlight, mid, dark, shadow;
  QRgb disabledText, disabledHighlight;
};

constexpr SchemeColors kLight{.window = 0xfff3f4f6,
                              .windowText = 0xff1b1f24,
                              .base = 0xffffffff,
                              .alternateBase = 0xfff7f8fa,
                              .text = 0xff1b1f24,
                              .placeholder = 0xff6b7280,
                              .button = 0xfff3f4f6,
                              .buttonText = 0xff1b1f24,
                              .brightText = 0xffffffff,
                              .highlight = 0xff2563c9,
                              .highlightedText = 0xffffffff,
                              .link = 0xff1d4fb8,
                              .linkVisited = 0xff6b3fa0,
                              .toolTipBase = 0xfffffbe6,
                              .toolTipText = 0xff1b1f24,
                              .light = 0xffffffff,
                              .midlight = 0xffe8eaee,
                              .mid = 0xffb9bec7,
                              .dark = 0xff9aa1ac,
                              .shadow = 0xff6b7280,
                              .disabledText = 0xff8a919c,
                              .disabledHighlight = 0xffc9ced6};

constexpr SchemeColors kDark{.window = 0xff24272c,
                             .windowText = 0xffe3e6ea,
                             .base = 0xff1b1d21,
                             .alternateBase = 0xff212429,
                             .text = 0xffe3e6ea,
                             .placeholder = 0xff8d95a1,
                             .button = 0xff2e3238,
                             .buttonText = 0xffe3e6ea,
                             .brightText = 0xffffffff,
                             .highlight = 0xff2f6fd6,
                             .highlightedText = 0xffffffff,
                             .link = 0xff7fb0ff,
                             .linkVisited = 0xffc3a3f0,
                             .toolTipBase = 0xff33373e,
                             .toolTipText = 0xffe3e6ea,
                             .light = 0xff454a52,
                             .midlight = 0xff393e45,
                             .mid = 0xff3d424a,
                             .dark = 0xff16181b,
                             .shadow = 0xff0e0f11,
                             .disabledText = 0xff7b828d,
                             .disabledHighlight = 0xff454a52};

// Captions alone: the system's pictures on buttons belong to no scheme.
class HouseStyle final : public QProxyStyle {
 public:
  HouseStyle() : QProxyStyle(QStyleFactory::create("Fusion")) {}
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returnData) const override {
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
    return QProxyStyle::styleHint(hint, option, widget, returnData);
  }
};

QPalette PaletteOf(const SchemeColors& colors) {
  QPalette palette;
  const auto set = [&](QPalette::ColorRole role, QRgb color) { palette.setColor(role, QColor(color)); };
  set(QPalette::Window, colors.window);
  set(QPalette::WindowText, colors.windowText);
  set(QPalette::Base, colors.base);
  set(QPalette::AlternateBase, colors.alternateBase);
  set(QPalette::Text, colors.text);
  set(QPalette::PlaceholderText, colors.placeholder);
  set(QPalette::Button, colors.button);
  set(QPalette::ButtonText, colors.buttonText);
  set(QPalette::BrightText, colors.brightText);
  set(QPalette::Highlight, colors.highlight);
  set(QPalette::HighlightedText, colors.highlightedText);
  set(QPalette::Link, colors.link);
  set(QPalette::LinkVisited, colors.linkVisited);
  set(QPalette::ToolTipBase, colors.toolTipBase);
  set(QPalette::ToolTipText, colors.toolTipText);
  set(QPalette::Light, colors.light);
  set(QPalette::Midlight, colors.midlight);
  set(QPalette::Mid, colors.mid);
  set(QPalette::Dark, colors.dark);
  set(QPalette::Shadow, colors.shadow);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText}) {
    palette.setColor(QPalette::Disabled, role, QColor(colors.disabledText));
  }
  palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(colors.disabledHighlight));
  palette.setColor(QPalette::Disabled, QPalette::Base, QColor(colors.window));
  return palette;
}

}  // namespace

QPalette LightPalette() {
  return PaletteOf(kLight);
}

QPalette DarkPalette() {
  return PaletteOf(kDark);
}

Appearance::Appearance() : systemFont_(QApplication::font()) {
  QApplication::setStyle(new HouseStyle);
}

void Appearance::UseScheme(Scheme scheme) {
  switch (scheme) {
    case Scheme::System:
      // A palette that sets nothing lets the system's through.
      QApplication::setPalette(QPalette());
      break;
    case Scheme::Light:
      QApplication::setPalette(LightPalette());
      break;
    case Scheme::Dark:
      QApplication::setPalette(DarkPalette());
      break;
  }
}

void Appearance::UseFontSize(int points) {
  QFont font = systemFont_;
  if (points > 0) font.setPointSize(points);
  QApplication::setFont(font);
}

int Appearance::FontSize() const {
  return QFontInfo(QApplication::font()).pointSize();
}

}  // namespace qmrules::desktop
