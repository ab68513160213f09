#include "desktop/source/rowmargin.h"

#include <QCoreApplication>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QTextBlock>
#include <QToolTip>
#include <algorithm>

#include "desktop/source/codetext.h"

namespace qmrules::desktop {

namespace {

constexpr int kPadding = 6;
constexpr int kBarWidth = 4;
constexpr int kBarGap = 2;
constexpr int kScrollInterval = 40;  // milliseconds

}  // namespace

RowMargin::RowMargin(CodeText& text) : QWidget(&text), text_(text) {
  setAccessibleName(tr("Row numbers"));
  setObjectName(QStringLiteral("rowMargin"));
}

int RowMargin::LanesWidth() const {
  return kBarGap + std::max(text_.Segments().Lanes(), 1) * (kBarWidth + kBarGap);
}

int RowMargin::WidthNeeded() const {
  const qsizetype digits = std::max<qsizetype>(QString::number(text_.Rows()).size(), 3);
  const int digit = text_.fontMetrics().horizontalAdvance(QLatin1Char('9'));
  return kPadding + static_cast<int>(digits) * digit + kPadding + LanesWidth();
}

bool RowMargin::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QWidget::event(event);
  const auto* const help = static_cast<QHelpEvent*>(event);
  QToolTip::showText(help->globalPos(), text_.SegmentsText(text_.RowAt(help->y())), this);
  return true;
}

void RowMargin::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::LanguageChange) setAccessibleName(tr("Row numbers"));
}

void RowMargin::paintEvent(QPaintEvent* event) {
  const SourceColors& colors = text_.Colors();
  QPainter painter(this);
  painter.fillRect(event->rect(), colors.margin);
  painter.setFont(text_.font());
  const int lanesLeft = width() - LanesWidth() + kBarGap;
  const int caretRow = text_.CaretRow();
  text_.ForVisibleRows([&](const QTextBlock& block, const QRectF& rect) {
    const int row = block.blockNumber() + 1;
    const QRect line(0, static_cast<int>(rect.top()), width(), static_cast<int>(rect.height()));
    const bool isSelected = text_.HoldsRow(row);
    if (isSelected) painter.fillRect(line, text_.SelectionColor(QPalette::Highlight));
    for (const SegmentBar& bar : text_.Segments().Within(row, row)) {
      const int top = bar.fromRow == row ? 2 : 0;
      const int bottom = bar.toRow == row ? 2 : 0;
      painter.fillRect(lanesLeft + bar.lane * (kBarWidth + kBarGap), line.top() + top, kBarWidth,
                       line.height() - top - bottom, colors.lanes[static_cast<std::size_t>(bar.lane)]);
    }
    painter.setPen(isSelected        ? text_.SelectionColor(QPalette::HighlightedText)
                   : row == caretRow ? colors.currentRowNumber
                                     : colors.rowNumber);
    painter.drawText(line.adjusted(0, 0, lanesLeft - kBarGap - kPadding - width(), 0),
                     Qt::AlignRight | Qt::AlignVCenter, QString::number(row));
  });
}

void RowMargin::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  text_.setFocus(Qt::MouseFocusReason);
  const int row = text_.RowAt(static_cast<int>(event->position().y()));
  if ((event->modifiers() & Qt::ShiftModifier) != 0) {
    text_.ExtendRowsTo(row);
  } else {
    text_.SelectRows({row, 1});
  }
}

void RowMargin::mouseMoveEvent(QMouseEvent* event) {
  if ((event->buttons() & Qt::LeftButton) == 0) return;
  draggedTo_ = static_cast<int>(event->position().y());
  text_.ExtendRowsTo(text_.RowAt(draggedTo_));
  if (rect().contains(0, draggedTo_)) {
    scrolling_.stop();
  } else if (!scrolling_.isActive()) {
    scrolling_.start(kScrollInterval, this);
  }
}

void RowMargin::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) scrolling_.stop();
}

void RowMargin::wheelEvent(QWheelEvent* event) {
  QCoreApplication::sendEvent(text_.viewport(), event);
}

void RowMargin::timerEvent(QTimerEvent* event) {
  if (event->timerId() == scrolling_.timerId()) text_.ExtendRowsTo(text_.RowAt(draggedTo_));
}

}  // namespace qmrules::desktop
