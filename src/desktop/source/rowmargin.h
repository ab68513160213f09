#pragma once

#include <QBasicTimer>
#include <QWidget>

namespace qmrules::desktop {

class CodeText;

// The margin beside the text: row numbers, and the bars of the segments. A click selects a row, dragging and
// Shift+click select rows, upwards too; hovering tells the segments of a row.
class RowMargin final : public QWidget {
  Q_OBJECT

 public:
  explicit RowMargin(CodeText& text);
  // What the rows and segments of the text take.
  int WidthNeeded() const;

 protected:
  bool event(QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  int LanesWidth() const;

  CodeText& text_;
  QBasicTimer scrolling_;  // while the pointer is dragged past the edge
  int draggedTo_ = 0;      // height of the pointer
};

}  // namespace qmrules::desktop
