#include "desktop/views/colors.h"

#include <QApplication>

namespace qmrules::desktop {

using platform::widgets::Color;

namespace {

constexpr int kMiddleLightness = 128;

bool IsDark(const QPalette& palette) {
  return palette.color(QPalette::Active, QPalette::Base).lightness() < kMiddleLightness;
}

}  // namespace

QColor TextColor(Color color, const QPalette& palette) {
  switch (color) {
    case Color::Grey:
      return palette.color(QPalette::Disabled, QPalette::Text);
    case Color::Red:
      return IsDark(palette) ? QColor(0xff, 0x8a, 0x80) : QColor(0xb3, 0x14, 0x12);
    case Color::Normal:
      break;
  }
  return palette.color(QPalette::Active, QPalette::Text);
}

QColor BaseColor(Color color, const QPalette& palette) {
  switch (color) {
    case Color::Grey:
      return palette.color(QPalette::Active, QPalette::Window);
    case Color::Red:
      return IsDark(palette) ? QColor(0x5c, 0x1f, 0x1f) : QColor(0xfd, 0xe7, 0xe7);
    case Color::Normal:
      break;
  }
  return palette.color(QPalette::Active, QPalette::Base);
}

void ApplyColors(const platform::widgets::Widget& model, bool locked, QWidget& view) {
  const QPalette common = QApplication::palette(&view);
  QPalette own;
  if (model.ForeColor() != Color::Normal) {
    const QColor text = TextColor(model.ForeColor(), common);
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) own.setColor(role, text);
  }
  if (model.BackColor() != Color::Normal) {
    own.setColor(QPalette::Base, BaseColor(model.BackColor(), common));
  } else if (locked) {
    own.setColor(QPalette::Base, common.color(QPalette::Active, QPalette::Window));
  }
  if (own != view.palette()) view.setPalette(own);
}

}  // namespace qmrules::desktop
