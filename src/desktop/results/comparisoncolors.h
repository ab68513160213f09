#pragma once

#include <QColor>

#include "validation/linealignment.h"

class QPalette;

namespace qmrules::desktop {

// The colours of two texts side by side, made for a palette: the text can be read on all of them.
struct ComparisonColors {
  ComparisonColors() = default;
  explicit ComparisonColors(const QPalette& palette);

  // Behind a line of this kind; not valid for one that is the same.
  QColor Line(validation::LinePairKind kind) const;

  QColor base;
  QColor text;
  QColor changed;
  QColor word;  // behind the words that differ
  QColor removed;
  QColor added;
  QColor missing;  // where this side has no line
  QColor margin;
  QColor rowNumber;
};

}  // namespace qmrules::desktop
