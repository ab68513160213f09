#pragma once

#include <QPlainTextEdit>
#include <QTextCharFormat>
#include <algorithm>
#include <array>
#include <climits>
#include <cstddef>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "desktop/source/loadedsource.h"
#include "desktop/source/segmentlanes.h"
#include "desktop/source/sourcecolors.h"
#include "platform/workspace.h"
#include "workbench/codemodel/textclasses.h"

namespace qmrules::desktop {

class RowMargin;

// A selection of whole rows: `count` rows from `row` on downwards or, with a minus sign, upwards. It may reach behind
// the text. Without rows it is a caret.
struct RowSelection {
  int row = 1;
  int count = 0;
  int FromRow() const { return count < 0 ? row + count + 1 : row; }
  int ToRow() const { return count > 0 ? static_cast<int>(std::min<qint64>(qint64{row} + count - 1, INT_MAX)) : row; }
  // The row at the moving end, which is the other end than `row`.
  int EndRow() const { return count < 0 ? FromRow() : ToRow(); }
  friend bool operator==(const RowSelection&, const RowSelection&) = default;
};

// The text of a source with its margin, read-only. A row is a block of the document; rows and columns count from 1.
//
// What is asked for by the Show functions is shown, without scrolling, and not told again; what the user does is told
// by the signals.
class CodeText final : public QPlainTextEdit {
  Q_OBJECT

 public:
  explicit CodeText(QWidget* parent = nullptr);

  // What a document for this view is made with.
  DocumentStyle Style() const { return {font(), tabStopDistance()}; }
  // Another text, from its beginning on, without colours and matches.
  void SetSource(LoadedSource source);
  // No text.
  void Clear();
  const QString& Source() const { return source_; }
  int Rows() const { return blockCount(); }
  // The rows on screen are coloured at once and the others when they come there.
  void SetClasses(workbench::codemodel::ClassedText classes);
  void SetSegments(SegmentLanes segments);
  const SegmentLanes& Segments() const { return segments_; }
  // What the reader is told of the segments that hold a row, a line for each; empty for none.
  QString SegmentsText(int row) const;
  void SetMatches(std::vector<int> places, int length);
  void SetFontSize(double points);

  void ShowCaret(int row, int column);
  void ShowRows(RowSelection rows);
  void ShowPiece(const platform::SelectedRange& range);
  // Scrolls where the rows are not all on screen: to the first ones when there is no room for all.
  void Reveal(int fromRow, int toRow);
  // The same for the caret, sideways too.
  void RevealCaret();

  // As the user's own selections: shown, revealed and told.
  void SelectRows(RowSelection rows);
  void SelectPlace(int place, int length);
  void MoveCaret(int row);

  // The selection of rows; for a piece of text or a caret, the row that it begins at and no rows.
  RowSelection Selection() const;
  // Goes from the start of the selection to this row, which becomes its moving end. Rows behind the text count as its
  // last.
  void ExtendRowsTo(int row);
  bool HoldsRow(int row) const { return rows_ && row >= rows_->FromRow() && row <= rows_->ToRow(); }
  int CaretRow() const { return textCursor().blockNumber() + 1; }

  // The row at a height of the viewport; above and below the text, the row that would be there, within the text.
  int RowAt(int y) const;
  // Calls for each row that is on screen, with its rectangle in the viewport.
  void ForVisibleRows(const std::function<void(const QTextBlock& block, const QRectF& rect)>& call) const;
  const SourceColors& Colors() const { return colors_; }
  // Of selected text, with the focus and without.
  QColor SelectionColor(QPalette::ColorRole role) const;

 signals:
  void CaretPlaced(int row, int column);
  void RowsSelected(int row, int count);
  void PieceSelected(int fromRow, int fromColumn, int toRow);
  void ZoomAsked(int steps);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  QMimeData* createMimeDataFromSelection() const override;

 private:
  void TellSelection();
  void TellPiece(const QTextCursor& cursor);
  bool ExtendByKey(const QKeyEvent& event);
  int VisibleRows() const;
  void SetCursor(const QTextCursor& cursor);
  void ScrollTo(int row);
  int PlaceOf(int row, int column) const;
  QTextCursor CursorOver(RowSelection rows) const;
  void ColorVisibleRows();
  void PaintRow(QPainter& painter, int row, const QRectF& rect, std::size_t depth) const;
  void PaintMatches(QPainter& painter, const QTextBlock& block, const QRectF& rect) const;
  void Repaint();
  void LayOutMargin();
  void UseFont();
  void TakePalette();

  QString source_;
  workbench::codemodel::ClassedText classes_;
  SegmentLanes segments_;
  SourceColors colors_;
  std::vector<int> matches_;
  int matchLength_ = 0;
  std::array<QTextCharFormat, workbench::codemodel::kTextClasses> formats_;
  std::optional<RowSelection> rows_;            // while rows are selected
  std::optional<std::array<int, 4>> told_;      // the selection that was told last
  std::optional<std::pair<int, int>> waiting_;  // rows to be revealed when the text is on screen
  int coloring_ = 0;                            // number of the colouring; each block knows the one that it has
  int wheel_ = 0;                               // turned, in eighths of a degree
  bool isShowing_ = false;                      // a change of the cursor is not the user's
  RowMargin* margin_;
};

}  // namespace qmrules::desktop
