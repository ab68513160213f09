// How the text looks: colours of its classes, and what is behind the rows.
#include <QPainter>
#include <QTextBlock>
#include <algorithm>

#include "desktop/source/codetext.h"
#include "desktop/source/rowmargin.h"

namespace qmrules::desktop {

QColor CodeText::SelectionColor(QPalette::ColorRole role) const {
  return palette().color(hasFocus() ? QPalette::Active : QPalette::Inactive, role);
}

void CodeText::Repaint() {
  viewport()->update();
  margin_->update();
}

void CodeText::TakePalette() {
  colors_ = SourceColors(palette());
  for (std::size_t kind = 0; kind < formats_.size(); ++kind) {
    formats_[kind] = QTextCharFormat();
    formats_[kind].setForeground(colors_.classes[kind]);
  }
  formats_[static_cast<std::size_t>(workbench::codemodel::TextClass::Heading)].setFontWeight(QFont::Bold);
  if (coloring_ > 0) ++coloring_;
  Repaint();
}

// Rows that came on screen since they were coloured last. What is never looked at costs nothing.
void CodeText::ColorVisibleRows() {
  if (coloring_ == 0) return;
  ForVisibleRows([this](QTextBlock block, const QRectF&) {
    if (block.userState() == coloring_) return;
    block.setUserState(coloring_);
    const int characters = block.length() - 1;
    QList<QTextLayout::FormatRange> ranges;
    for (const workbench::codemodel::ClassedRun& run :
         classes_.Row(static_cast<std::uint32_t>(block.blockNumber()) + 1)) {
      const int start = static_cast<int>(run.column) - 1;
      if (start >= characters) break;
      ranges.push_back({start, std::min(static_cast<int>(run.length), characters - start),
                        formats_[static_cast<std::size_t>(run.kind)]});
    }
    block.layout()->setFormats(ranges);
    document()->markContentsDirty(block.position(), block.length());
  });
}

void CodeText::paintEvent(QPaintEvent* event) {
  ColorVisibleRows();
  {
    QPainter painter(viewport());
    const int first = firstVisibleBlock().blockNumber() + 1;
    const std::vector<SegmentBar> bars = segments_.Within(first, first + VisibleRows() + 1);
    ForVisibleRows([&](const QTextBlock& block, const QRectF& rect) {
      const int row = block.blockNumber() + 1;
      const auto depth = std::count_if(bars.begin(), bars.end(),
                                       [row](const SegmentBar& bar) { return bar.fromRow <= row && row <= bar.toRow; });
      PaintRow(painter, row, rect, static_cast<std::size_t>(depth));
      if (!matches_.empty()) PaintMatches(painter, block, rect);
    });
  }
  QPlainTextEdit::paintEvent(event);
}

void CodeText::PaintRow(QPainter& painter, int row, const QRectF& rect, std::size_t depth) const {
  if (HoldsRow(row)) {
    painter.fillRect(rect, SelectionColor(QPalette::Highlight));
    return;
  }
  if (depth > 0) painter.fillRect(rect, colors_.Segment(depth));
  if (rows_ || row != CaretRow()) return;
  if (depth == 0) {
    painter.fillRect(rect, colors_.currentRow);
    return;
  }
  painter.setPen(colors_.lanes.front());
  painter.drawLine(rect.topLeft(), rect.topRight());
  painter.drawLine(QPointF(0, rect.bottom() - 1), QPointF(rect.right(), rect.bottom() - 1));
}

void CodeText::PaintMatches(QPainter& painter, const QTextBlock& block, const QRectF& rect) const {
  const QTextLine line = block.layout()->lineAt(0);
  if (!line.isValid()) return;
  const int begin = block.position();
  const int end = begin + block.length() - 1;
  const double left = contentOffset().x();
  for (auto place = std::upper_bound(matches_.begin(), matches_.end(), begin - matchLength_);
       place != matches_.end() && *place < end; ++place) {
    const double from = line.cursorToX(std::max(*place - begin, 0));
    const double to = line.cursorToX(std::min(*place - begin + matchLength_, block.length() - 1));
    painter.fillRect(QRectF(left + from, rect.top(), to - from, rect.height()), colors_.match);
  }
}

}  // namespace qmrules::desktop
