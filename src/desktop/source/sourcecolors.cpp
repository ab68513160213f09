#include "desktop/source/sourcecolors.h"

#include <QPalette>
#include <algorithm>
#include <cmath>

namespace qmrules::desktop {

namespace {

using workbench::codemodel::TextClass;

double Luminance(const QColor& color) {
  const auto linear = [](double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
  };
  const auto share = [&](int channel) { return linear(static_cast<double>(channel) / 255); };
  return 0.2126 * share(color.red()) + 0.7152 * share(color.green()) + 0.0722 * share(color.blue());
}

// `share` of the one color, from 0 to 1, and the rest of the other.
QColor Blend(const QColor& color, double share, const QColor& other) {
  const auto channel = [share](int one, int two) {
    return static_cast<int>(std::lround(one * share + two * (1 - share)));
  };
  return {channel(color.red(), other.red()), channel(color.green(), other.green()),
          channel(color.blue(), other.blue())};
}

double LeastContrast(const std::vector<QColor>& backgrounds, const QColor& color) {
  double least = 21;
  for (const QColor& background : backgrounds) least = std::min(least, Contrast(background, color));
  return least;
}

QColor ClassColor(TextClass kind, bool isDark) {
  switch (kind) {
    case TextClass::Comment:
      return isDark ? QColor(0x8A, 0xA6, 0x8A) : QColor(0x4E, 0x6B, 0x50);
    case TextClass::Margin:
      return isDark ? QColor(0x8C, 0x92, 0x9A) : QColor(0x70, 0x76, 0x7E);
    case TextClass::Directive:
      return isDark ? QColor(0xC8, 0xB0, 0x70) : QColor(0x7A, 0x5A, 0x00);
    case TextClass::Heading:
      return isDark ? QColor(0xFF, 0xC9, 0x6B) : QColor(0x8A, 0x3B, 0x00);
    case TextClass::Label:
      return isDark ? QColor(0xF2, 0xD5, 0x9B) : QColor(0x8A, 0x3B, 0x00);
    case TextClass::Verb:
      return isDark ? QColor(0x7F, 0xBC, 0xFF) : QColor(0x00, 0x4F, 0xA8);
    case TextClass::Reserved:
      return isDark ? QColor(0x9F, 0xB8, 0xE0) : QColor(0x2C, 0x56, 0x8C);
    case TextClass::Inclusion:
      return isDark ? QColor(0xE6, 0x9C, 0xE0) : QColor(0x8A, 0x1C, 0x86);
    case TextClass::Embedded:
      return isDark ? QColor(0x5F, 0xD0, 0xC4) : QColor(0x00, 0x66, 0x60);
    case TextClass::Literal:
      return isDark ? QColor(0xF0, 0x9A, 0x8A) : QColor(0xA3, 0x1D, 0x1D);
    case TextClass::Number:
      return isDark ? QColor(0xB9, 0xD6, 0x8E) : QColor(0x3F, 0x6A, 0x00);
    case TextClass::Picture:
      break;
  }
  return isDark ? QColor(0xC7, 0xA9, 0xF2) : QColor(0x5B, 0x3A, 0x9E);
}

}  // namespace

double Contrast(const QColor& left, const QColor& right) {
  const double one = Luminance(left) + 0.05;
  const double two = Luminance(right) + 0.05;
  return std::max(one, two) / std::min(one, two);
}

QColor ReadableOn(const std::vector<QColor>& backgrounds, const QColor& color) {
  const bool isBlackBetter = LeastContrast(backgrounds, Qt::black) > LeastContrast(backgrounds, Qt::white);
  const QColor extreme = isBlackBetter ? Qt::black : Qt::white;
  constexpr int steps = 32;
  for (int step = 0; step < steps; ++step) {
    const QColor candidate = Blend(extreme, static_cast<double>(step) / steps, color);
    if (LeastContrast(backgrounds, candidate) >= kReadableContrast) return candidate;
  }
  return extreme;
}

SourceColors::SourceColors(const QPalette& palette) : base(palette.color(QPalette::Base)) {
  const bool isDark = Contrast(base, Qt::white) > Contrast(base, Qt::black);
  const QColor extreme = isDark ? Qt::white : Qt::black;
  currentRow = Blend(extreme, isDark ? 0.08 : 0.05, base);
  match = Blend(isDark ? QColor(0xC8, 0x96, 0x00) : QColor(0xFF, 0xD2, 0x3C), isDark ? 0.30 : 0.50, base);
  const QColor segment = isDark ? QColor(0x3F, 0xA8, 0x6B) : QColor(0x3C, 0xB0, 0x6C);
  for (std::size_t depth = 0; depth < kDepths; ++depth) {
    segments[depth] = Blend(segment, 0.12 + 0.07 * static_cast<double>(depth), base);
  }
  margin = Blend(extreme, isDark ? 0.04 : 0.03, base);
  const std::array<QColor, SegmentLanes::kMostLanes> hues = {QColor(0x2F, 0x9E, 0x5E), QColor(0xD9, 0x7A, 0x1E),
                                                             QColor(0x8A, 0x5F, 0xD0), QColor(0x2A, 0x8F, 0xBD)};
  lanes = hues;
  const std::vector<QColor> backgrounds = Backgrounds();
  text = ReadableOn(backgrounds, palette.color(QPalette::Text));
  for (std::size_t kind = 0; kind < classes.size(); ++kind) {
    classes[kind] = ReadableOn(backgrounds, ClassColor(static_cast<TextClass>(kind), isDark));
  }
  rowNumber = ReadableOn({margin}, Class(TextClass::Margin));
  currentRowNumber = ReadableOn({margin}, text);
}

std::vector<QColor> SourceColors::Backgrounds() const {
  std::vector<QColor> backgrounds = {base, currentRow, match};
  backgrounds.insert(backgrounds.end(), segments.begin(), segments.end());
  return backgrounds;
}

}  // namespace qmrules::desktop
