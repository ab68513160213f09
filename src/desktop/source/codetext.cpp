#include "desktop/source/codetext.h"

#include <QFontDatabase>
#include <QHelpEvent>
#include <QMenu>
#include <QMimeData>
#include <QPointer>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTextBlock>
#include <QToolTip>
#include <algorithm>

#include "desktop/source/rowmargin.h"

namespace qmrules::desktop {

namespace {

constexpr int kTabColumns = 8;

}  // namespace

CodeText::CodeText(QWidget* parent) : QPlainTextEdit(parent), margin_(new RowMargin(*this)) {
  setObjectName(QStringLiteral("codeText"));
  setReadOnly(true);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setUndoRedoEnabled(false);
  setLineWrapMode(NoWrap);
  setTabChangesFocus(true);
  setCursorWidth(2);
  setAccessibleName(tr("Source text"));
  TakePalette();
  connect(this, &QPlainTextEdit::cursorPositionChanged, this, &CodeText::TellSelection);
  connect(this, &QPlainTextEdit::selectionChanged, this, &CodeText::TellSelection);
  connect(this, &QPlainTextEdit::blockCountChanged, this, &CodeText::LayOutMargin);
  connect(this, &QPlainTextEdit::updateRequest, margin_, [this](const QRect&, int) { margin_->update(); });
}

void CodeText::SetSource(LoadedSource source) {
  const QScopedValueRollback showing(isShowing_, true);
  rows_.reset();
  told_.reset();
  matches_.clear();
  classes_ = {};
  coloring_ = 0;
  source_ = source.text;
  // The first document goes by itself.
  const QPointer<QTextDocument> old = document();
  QTextDocument* const made = source.document.release();
  made->setParent(this);
  setDocument(made);
  delete old.data();
  if (made->defaultFont() != font()) UseFont();
  LayOutMargin();
}

void CodeText::Clear() {
  SetSource(LoadSource({}, {}, {}, Style()));
}

void CodeText::UseFont() {
  document()->setDefaultFont(font());
  setTabStopDistance(kTabColumns * fontMetrics().horizontalAdvance(QLatin1Char(' ')));
}

void CodeText::SetClasses(workbench::codemodel::ClassedText classes) {
  classes_ = std::move(classes);
  ++coloring_;
  viewport()->update();
}

void CodeText::SetSegments(SegmentLanes segments) {
  segments_ = std::move(segments);
  LayOutMargin();
  Repaint();
}

QString CodeText::SegmentsText(int row) const {
  QStringList lines;
  for (const SegmentBar& bar : segments_.Within(row, row)) {
    lines += bar.fromRow == bar.toRow ? tr("Segment: row %1").arg(bar.fromRow)
                                      : tr("Segment: rows %1 to %2").arg(bar.fromRow).arg(bar.toRow);
  }
  return lines.join(u'\n');
}

void CodeText::SetMatches(std::vector<int> places, int length) {
  matches_ = std::move(places);
  matchLength_ = length;
  viewport()->update();
}

void CodeText::SetFontSize(double points) {
  QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  font.setPointSizeF(points);
  setFont(font);
}

// The place of a row and column in the document, the nearest one where the text has no such place.
int CodeText::PlaceOf(int row, int column) const {
  const QTextBlock block = document()->findBlockByNumber(std::clamp(row, 1, Rows()) - 1);
  return block.position() + std::clamp(column - 1, 0, block.length() - 1);
}

QTextCursor CodeText::CursorOver(RowSelection rows) const {
  QTextCursor cursor(document());
  if (rows.FromRow() > Rows()) {
    cursor.movePosition(QTextCursor::End);
    return cursor;
  }
  const QTextBlock last = document()->findBlockByNumber(std::min(rows.ToRow(), Rows()) - 1);
  const int begin = PlaceOf(rows.FromRow(), 1);
  const int end = last.position() + last.length() - 1;
  cursor.setPosition(rows.count < 0 ? end : begin);
  cursor.setPosition(rows.count < 0 ? begin : end, QTextCursor::KeepAnchor);
  return cursor;
}

// Stays where it is scrolled to.
void CodeText::SetCursor(const QTextCursor& cursor) {
  const QScopedValueRollback showing(isShowing_, true);
  const int right = horizontalScrollBar()->value();
  const int down = verticalScrollBar()->value();
  setTextCursor(cursor);
  horizontalScrollBar()->setValue(right);
  verticalScrollBar()->setValue(down);
  Repaint();
}

void CodeText::ShowCaret(int row, int column) {
  rows_.reset();
  told_.reset();
  QTextCursor cursor(document());
  cursor.setPosition(PlaceOf(row, column));
  SetCursor(cursor);
}

void CodeText::ShowRows(RowSelection rows) {
  rows_ = rows;
  told_.reset();
  SetCursor(CursorOver(rows));
}

void CodeText::ShowPiece(const platform::SelectedRange& range) {
  rows_.reset();
  told_.reset();
  QTextCursor cursor = CursorOver({range.FromRow, std::min(range.ToRow, Rows()) - range.FromRow + 1});
  const int end = cursor.position();
  cursor.setPosition(std::min(PlaceOf(range.FromRow, range.FromCol), end));
  cursor.setPosition(end, QTextCursor::KeepAnchor);
  SetCursor(cursor);
}

void CodeText::Reveal(int fromRow, int toRow) {
  if (!isVisible()) {
    waiting_.emplace(fromRow, toRow);
    return;
  }
  const int first = firstVisibleBlock().blockNumber() + 1;
  const int page = VisibleRows();
  if (fromRow >= first && std::min(toRow, Rows()) < first + page) return;
  const int spare = std::max(page - (std::min(toRow, Rows()) - fromRow + 1), 0);
  verticalScrollBar()->setValue(fromRow - 1 - std::max(spare / 3, 1));
}

void CodeText::RevealCaret() {
  Reveal(CaretRow(), CaretRow());
  if (isVisible()) ensureCursorVisible();
}

// Scrolls no further than to the row.
void CodeText::ScrollTo(int row) {
  const int first = firstVisibleBlock().blockNumber() + 1;
  const int page = VisibleRows();
  if (row < first) verticalScrollBar()->setValue(row - 1);
  if (row >= first + page) verticalScrollBar()->setValue(row - page);
}

void CodeText::SelectRows(RowSelection rows) {
  ShowRows(rows);
  emit RowsSelected(rows.row, rows.count);
}

void CodeText::SelectPlace(int place, int length) {
  QTextCursor cursor(document());
  cursor.setPosition(place);
  cursor.setPosition(place + length, QTextCursor::KeepAnchor);
  const int down = verticalScrollBar()->value();
  setTextCursor(cursor);
  verticalScrollBar()->setValue(down);
  Reveal(CaretRow(), CaretRow());
}

void CodeText::MoveCaret(int row) {
  ShowCaret(row, 1);
  RevealCaret();
  TellSelection();
}

RowSelection CodeText::Selection() const {
  if (rows_) return *rows_;
  return {document()->findBlock(textCursor().anchor()).blockNumber() + 1, 0};
}

void CodeText::ExtendRowsTo(int row) {
  const int start = std::min(Selection().row, Rows());
  const int end = std::clamp(row, 1, Rows());
  SelectRows({start, end >= start ? end - start + 1 : end - start - 1});
  ScrollTo(end);
}

// Shift with Up, Down, PgUp and PgDn selects rows. Without a selection, the first step takes the caret's row.
bool CodeText::ExtendByKey(const QKeyEvent& event) {
  if (event.matches(QKeySequence::SelectAll)) {
    SelectRows({1, Rows()});
    return true;
  }
  if ((event.modifiers() & ~Qt::KeypadModifier) != Qt::ShiftModifier) return false;
  int step = 0;
  switch (event.key()) {
    case Qt::Key_Up:
      step = -1;
      break;
    case Qt::Key_Down:
      step = 1;
      break;
    case Qt::Key_PageUp:
      step = -VisibleRows();
      break;
    case Qt::Key_PageDown:
      step = VisibleRows();
      break;
    default:
      return false;
  }
  if (!rows_ && !textCursor().hasSelection() && (step == 1 || step == -1)) step = 0;
  ExtendRowsTo((rows_ ? std::min(rows_->EndRow(), Rows()) : CaretRow()) + step);
  return true;
}

void CodeText::TellSelection() {
  Repaint();
  if (isShowing_) return;
  const QTextCursor cursor = textCursor();
  if (cursor.hasSelection()) {
    TellPiece(cursor);
    return;
  }
  const std::array<int, 4> caret = {0, cursor.blockNumber() + 1, cursor.positionInBlock() + 1, 0};
  rows_.reset();
  if (told_ == caret) return;
  told_ = caret;
  emit CaretPlaced(caret[1], caret[2]);
}

// A piece that consists of whole rows counts as rows.
void CodeText::TellPiece(const QTextCursor& cursor) {
  const QTextBlock first = document()->findBlock(cursor.selectionStart());
  QTextBlock last = document()->findBlock(cursor.selectionEnd());
  int end = cursor.selectionEnd();
  if (end == last.position() && first != last) {
    last = last.previous();
    end = last.position() + last.length() - 1;
  }
  const int fromRow = first.blockNumber() + 1;
  const int toRow = last.blockNumber() + 1;
  const int column = cursor.selectionStart() - first.position() + 1;
  std::array<int, 4> piece = {1, fromRow, column, toRow};
  rows_.reset();
  if (column == 1 && end == last.position() + last.length() - 1) {
    const int count = toRow - fromRow + 1;
    rows_ = cursor.position() < cursor.anchor() ? RowSelection{toRow, -count} : RowSelection{fromRow, count};
    piece = {2, rows_->row, rows_->count, 0};
  }
  if (told_ == piece) return;
  told_ = piece;
  if (rows_) {
    emit RowsSelected(rows_->row, rows_->count);
  } else {
    emit PieceSelected(fromRow, column, toRow);
  }
}

int CodeText::VisibleRows() const {
  const double height = blockBoundingRect(firstVisibleBlock()).height();
  return height < 1 ? 1 : std::max(static_cast<int>(viewport()->height() / height), 1);
}

int CodeText::RowAt(int y) const {
  const int first = firstVisibleBlock().blockNumber() + 1;
  if (y < 0) return std::max(first - 1, 1);
  int row = first;
  ForVisibleRows([&](const QTextBlock& block, const QRectF& rect) {
    if (rect.top() <= y) row = block.blockNumber() + 1;
  });
  return y < viewport()->height() ? row : std::min(row + 1, Rows());
}

void CodeText::ForVisibleRows(const std::function<void(const QTextBlock& block, const QRectF& rect)>& call) const {
  QTextBlock block = firstVisibleBlock();
  double top = blockBoundingGeometry(block).translated(contentOffset()).top();
  while (block.isValid() && top < viewport()->height()) {
    const double height = blockBoundingRect(block).height();
    call(block, QRectF(0, top, viewport()->width(), height));
    top += height;
    block = block.next();
  }
}

void CodeText::LayOutMargin() {
  const int width = margin_->WidthNeeded();
  setViewportMargins(width, 0, 0, 0);
  const QRect contents = contentsRect();
  margin_->setGeometry(contents.left(), contents.top(), width, viewport()->height());
}

void CodeText::resizeEvent(QResizeEvent* event) {
  QPlainTextEdit::resizeEvent(event);
  LayOutMargin();
}

void CodeText::showEvent(QShowEvent* event) {
  QPlainTextEdit::showEvent(event);
  if (const auto waiting = std::exchange(waiting_, std::nullopt)) Reveal(waiting->first, waiting->second);
}

void CodeText::changeEvent(QEvent* event) {
  QPlainTextEdit::changeEvent(event);
  switch (event->type()) {
    case QEvent::PaletteChange:
    case QEvent::StyleChange:
      TakePalette();
      break;
    case QEvent::FontChange:
      UseFont();
      LayOutMargin();
      break;
    case QEvent::LanguageChange:
      setAccessibleName(tr("Source text"));
      break;
    default:
      break;
  }
}

void CodeText::keyPressEvent(QKeyEvent* event) {
  if (!ExtendByKey(*event)) QPlainTextEdit::keyPressEvent(event);
}

void CodeText::mousePressEvent(QMouseEvent* event) {
  QPlainTextEdit::mousePressEvent(event);
  // A click at the place of the caret moves nothing, but drops selected rows that have no text.
  if (event->button() == Qt::LeftButton) TellSelection();
}

void CodeText::wheelEvent(QWheelEvent* event) {
  if ((event->modifiers() & Qt::ControlModifier) == 0) {
    QPlainTextEdit::wheelEvent(event);
    return;
  }
  wheel_ += event->angleDelta().y();
  const int steps = wheel_ / QWheelEvent::DefaultDeltasPerStep;
  wheel_ -= steps * QWheelEvent::DefaultDeltasPerStep;
  if (steps != 0) emit ZoomAsked(steps);
  event->accept();
}

void CodeText::contextMenuEvent(QContextMenuEvent* event) {
  auto* const menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->addActions(actions());
  menu->popup(event->globalPos());
}

bool CodeText::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QPlainTextEdit::viewportEvent(event);
  const auto* const help = static_cast<QHelpEvent*>(event);
  QToolTip::showText(help->globalPos(), SegmentsText(RowAt(help->y())), viewport());
  return true;
}

// Rows are copied whole, with the end of the last one.
QMimeData* CodeText::createMimeDataFromSelection() const {
  QMimeData* const copied = QPlainTextEdit::createMimeDataFromSelection();
  if (rows_) copied->setText(copied->text() + u'\n');
  return copied;
}

}  // namespace qmrules::desktop
