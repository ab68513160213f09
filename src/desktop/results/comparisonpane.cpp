#include "desktop/results/comparisonpane.h"

#include <QEvent>
#include <QFontDatabase>
#include <QFontInfo>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>
#include <algorithm>

namespace qmrules::desktop {

namespace {

constexpr int kPadding = 6;
constexpr int kFewestDigits = 3;
constexpr int kLinesBefore = 2;

}  // namespace

class ComparisonPane::Margin final : public QWidget {
 public:
  explicit Margin(ComparisonPane& pane) : QWidget(&pane), pane_(pane) {}

 protected:
  void paintEvent(QPaintEvent* event) override { pane_.PaintMargin(event->rect()); }

 private:
  ComparisonPane& pane_;
};

ComparisonPane::ComparisonPane(Side side, QWidget* parent)
    : QPlainTextEdit(parent), side_(side), colors_(palette()), margin_(new Margin(*this)) {
  setReadOnly(true);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setLineWrapMode(QPlainTextEdit::NoWrap);
  setTabChangesFocus(true);
  setUndoRedoEnabled(false);
  connect(this, &QPlainTextEdit::updateRequest, this, [this](const QRect& rect, int dy) {
    if (dy != 0) {
      margin_->scroll(0, dy);
    } else {
      margin_->update(0, rect.y(), margin_->width(), rect.height());
    }
  });
  UseFont();
}

void ComparisonPane::Show(std::shared_ptr<const validation::Comparison> comparison) {
  comparison_ = std::move(comparison);
  Write();
}

void ComparisonPane::GoTo(int line) {
  setTextCursor(QTextCursor(document()->findBlockByNumber(line)));
  verticalScrollBar()->setValue(std::max(0, line - kLinesBefore));
}

const validation::ComparedLine& ComparisonPane::Line(int line) const {
  return comparison_->lines[static_cast<std::size_t>(line)];
}

int ComparisonPane::Row(int line) const {
  return side_ == Side::Left ? Line(line).leftRow : Line(line).rightRow;
}

QChar ComparisonPane::Sign(int line) const {
  using enum validation::LinePairKind;
  switch (Line(line).kind) {
    case Changed:
      return QLatin1Char('~');
    case LeftOnly:
      return side_ == Side::Left ? QChar(0x2212) : QChar(QLatin1Char(' '));
    case RightOnly:
      return side_ == Side::Right ? QLatin1Char('+') : QLatin1Char(' ');
    case Same:
      break;
  }
  return QLatin1Char(' ');
}

// The words that differ are underlined as well, so that no one has to see the colour.
void ComparisonPane::Write() {
  clear();
  QTextCursor cursor(document());
  cursor.beginEditBlock();
  QTextCharFormat plain;
  plain.setForeground(colors_.text);
  QTextCharFormat strong = plain;
  strong.setBackground(colors_.word);
  strong.setFontWeight(QFont::Bold);
  strong.setFontUnderline(true);
  const int count = comparison_ ? static_cast<int>(comparison_->lines.size()) : 0;
  for (int line = 0; line < count; ++line) {
    if (line > 0) cursor.insertBlock();
    QTextBlockFormat block;
    const bool hasLine = side_ == Side::Left ? Line(line).kind != validation::LinePairKind::RightOnly
                                             : Line(line).kind != validation::LinePairKind::LeftOnly;
    const QColor background = hasLine ? colors_.Line(Line(line).kind) : colors_.missing;
    if (background.isValid()) block.setBackground(background);
    cursor.setBlockFormat(block);
    for (const auto& piece : side_ == Side::Left ? Line(line).left : Line(line).right) {
      cursor.insertText(QString::fromStdString(piece.text), piece.differs ? strong : plain);
    }
  }
  cursor.endEditBlock();
  moveCursor(QTextCursor::Start);
  LayOutMargin();
  margin_->update();
}

void ComparisonPane::UseFont() {
  QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  font.setPointSizeF(QFontInfo(parentWidget()->font()).pointSizeF());
  usesFont_ = true;
  setFont(font);
  document()->setDefaultFont(font);
  usesFont_ = false;
  LayOutMargin();
}

void ComparisonPane::LayOutMargin() {
  int highest = 0;
  for (int line = 0; comparison_ && line < static_cast<int>(comparison_->lines.size()); ++line) {
    highest = std::max(highest, Row(line));
  }
  const int digits = std::max(static_cast<int>(QString::number(highest).size()), kFewestDigits);
  const int digit = fontMetrics().horizontalAdvance(QLatin1Char('9'));
  const int width = kPadding + digits * digit + kPadding + digit + kPadding;
  setViewportMargins(width, 0, 0, 0);
  const QRect contents = contentsRect();
  margin_->setGeometry(contents.left(), contents.top(), width, viewport()->height());
}

void ComparisonPane::PaintMargin(const QRect& rect) {
  QPainter painter(margin_);
  painter.fillRect(rect, colors_.margin);
  painter.setFont(font());
  if (!comparison_ || comparison_->lines.empty()) return;
  const int sign = fontMetrics().horizontalAdvance(QLatin1Char('9'));
  const int numbersRight = margin_->width() - 2 * kPadding - sign;
  for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
    const QRectF place = blockBoundingGeometry(block).translated(contentOffset());
    if (place.top() > rect.bottom()) break;
    const int line = block.blockNumber();
    const int top = static_cast<int>(place.top());
    const int height = static_cast<int>(place.height());
    painter.setPen(colors_.rowNumber);
    if (Row(line) > 0) {
      painter.drawText(0, top, numbersRight, height, Qt::AlignRight | Qt::AlignVCenter, QString::number(Row(line)));
    }
    painter.setPen(colors_.text);
    painter.drawText(numbersRight + kPadding, top, sign, height, Qt::AlignCenter, QString(Sign(line)));
  }
}

void ComparisonPane::changeEvent(QEvent* event) {
  QPlainTextEdit::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) {
    colors_ = ComparisonColors(palette());
    Write();
  }
  if (event->type() == QEvent::FontChange && !usesFont_ && margin_ != nullptr) UseFont();
}

void ComparisonPane::resizeEvent(QResizeEvent* event) {
  QPlainTextEdit::resizeEvent(event);
  LayOutMargin();
}

}  // namespace qmrules::desktop
