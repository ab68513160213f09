#include "desktop/results/comparisoncolors.h"

#include <QPalette>

#include "desktop/source/sourcecolors.h"

namespace qmrules::desktop {

namespace {

// `share` of the colour, from 0 to 1, on the background.
QColor Tinted(const QColor& background, const QColor& color, double share) {
  const auto channel = [share](int under, int over) { return static_cast<int>(under + (over - under) * share); };
  return {channel(background.red(), color.red()), channel(background.green(), color.green()),
          channel(background.blue(), color.blue())};
}

}  // namespace

ComparisonColors::ComparisonColors(const QPalette& palette) {
  const SourceColors source(palette);
  base = source.base;
  margin = source.margin;
  rowNumber = source.rowNumber;
  const bool isDark = Contrast(base, Qt::white) > Contrast(base, Qt::black);
  const double strength = isDark ? 0.28 : 0.22;
  const QColor amber = isDark ? QColor(0xC8, 0x96, 0x00) : QColor(0xE8, 0xA8, 0x00);
  changed = Tinted(base, amber, strength);
  word = Tinted(base, amber, isDark ? 0.62 : 0.60);
  removed = Tinted(base, QColor(0xE0, 0x3A, 0x3A), strength);
  added = Tinted(base, QColor(0x2F, 0xA8, 0x5E), strength);
  missing = Tinted(base, QColor(0x80, 0x80, 0x80), 0.18);
  text = ReadableOn({base, changed, word, removed, added}, palette.color(QPalette::Text));
}

QColor ComparisonColors::Line(validation::LinePairKind kind) const {
  switch (kind) {
    case validation::LinePairKind::Changed:
      return changed;
    case validation::LinePairKind::LeftOnly:
      return removed;
    case validation::LinePairKind::RightOnly:
      return added;
    case validation::LinePairKind::Same:
      break;
  }
  return {};
}

}  // namespace qmrules::desktop
