#pragma once

#include <QPlainTextEdit>
#include <memory>

#include "desktop/results/comparisoncolors.h"
#include "validation/findingplaces.h"

namespace qmrules::desktop {

// One of two texts side by side, to be read only. Each line has its row number and, where it differs, a sign in the
// margin: "~" a changed line, "-" one that the other side lacks, "+" one that only the right has. Where this side has
// no line there is an empty one, so that the lines of both sides stand level.
class ComparisonPane final : public QPlainTextEdit {
  Q_OBJECT

 public:
  enum class Side { Left, Right };
  ComparisonPane(Side side, QWidget* parent);

  // nullptr for nothing.
  void Show(std::shared_ptr<const validation::Comparison> comparison);
  // Brings the line, from 0, in sight, with some lines before it, and puts the caret there.
  void GoTo(int line);
  // The sign of a line, from 0; a blank for one that is the same.
  QChar Sign(int line) const;
  // Its row in the file; 0 where this side has no line.
  int Row(int line) const;

 protected:
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  class Margin;
  const validation::ComparedLine& Line(int line) const;
  void Write();
  void UseFont();
  void LayOutMargin();
  void PaintMargin(const QRect& rect);

  Side side_;
  ComparisonColors colors_;
  std::shared_ptr<const validation::Comparison> comparison_;
  QWidget* margin_;
  bool usesFont_ = false;
};

}  // namespace qmrules::desktop
