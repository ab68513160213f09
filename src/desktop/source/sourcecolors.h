#pragma once

#include <QColor>
#include <array>
#include <vector>

#include "desktop/source/segmentlanes.h"
#include "workbench/codemodel/textclasses.h"

class QPalette;

namespace qmrules::desktop {

// How far two colours stand apart for the eye, from 1 to 21 (WCAG 2.1, relative luminance).
double Contrast(const QColor& left, const QColor& right);

// The contrast that small text must have to what is behind it.
inline constexpr double kReadableContrast = 4.5;

// The color, or the nearest one of its hue that can be read on all of these backgrounds. Where no color can, black or
// white, whichever can be read better.
QColor ReadableOn(const std::vector<QColor>& backgrounds, const QColor& color);

// The colours of the source view, made for a palette: text can be read on everything that can be behind it.
struct SourceColors {
  static constexpr std::size_t kDepths = 3;

  SourceColors() = default;
  explicit SourceColors(const QPalette& palette);

  // Behind a row that this many segments hold, from 1.
  const QColor& Segment(std::size_t depth) const { return segments[std::min(depth, kDepths) - 1]; }
  const QColor& Class(workbench::codemodel::TextClass kind) const { return classes[static_cast<std::size_t>(kind)]; }
  // All that can be behind text that is not selected.
  std::vector<QColor> Backgrounds() const;

  QColor base;
  QColor text;
  std::array<QColor, workbench::codemodel::kTextClasses> classes;
  QColor currentRow;
  QColor match;
  std::array<QColor, kDepths> segments;
  std::array<QColor, SegmentLanes::kMostLanes> lanes;  // of the bars in the margin
  QColor margin;
  QColor rowNumber;
  QColor currentRowNumber;
};

}  // namespace qmrules::desktop
