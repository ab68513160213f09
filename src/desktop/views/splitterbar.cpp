#include "desktop/views/splitterbar.h"

#include <QKeyEvent>
#include <QPainter>
#include <QSplitter>

namespace qmrules::desktop {

namespace {

constexpr int kStep = 16;  // pixels by one key

}  // namespace

SplitterBar::SplitterBar(Qt::Orientation orientation, QSplitter* parent) : QSplitterHandle(orientation, parent) {
  // Tab passes it by: it would stand between any two fields of the panes.
  setFocusPolicy(Qt::NoFocus);
  Retranslate();
}

void SplitterBar::Retranslate() {
  setAccessibleName(orientation() == Qt::Horizontal ? tr("Line between the left and the right pane")
                                                    : tr("Line between the upper and the lower pane"));
  setAccessibleDescription(tr("The arrow keys move it, Enter leads back"));
}

void SplitterBar::TakeKeyboard(QWidget* before) {
  before_ = before;
  setFocus(Qt::ShortcutFocusReason);
}

void SplitterBar::GiveKeyboardBack() {
  if (before_ != nullptr) {
    before_->setFocus(Qt::OtherFocusReason);
  } else {
    clearFocus();
  }
}

void SplitterBar::Move(int by) {
  moveSplitter((orientation() == Qt::Horizontal ? x() : y()) + by);
}

void SplitterBar::keyPressEvent(QKeyEvent* event) {
  const bool isUpright = orientation() == Qt::Horizontal;  // the panes lie side by side
  const int whole = isUpright ? splitter()->width() : splitter()->height();
  const int key = event->key();
  if (key == (isUpright ? Qt::Key_Left : Qt::Key_Up)) {
    Move(-kStep);
  } else if (key == (isUpright ? Qt::Key_Right : Qt::Key_Down)) {
    Move(kStep);
  } else if (key == Qt::Key_Home) {
    Move(-whole);
  } else if (key == Qt::Key_End) {
    Move(whole);
  } else if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape) {
    GiveKeyboardBack();
  } else {
    QSplitterHandle::keyPressEvent(event);
  }
}

// While it has the keyboard it counts as a part that can have it, for screen readers too.
void SplitterBar::focusInEvent(QFocusEvent* event) {
  setFocusPolicy(Qt::TabFocus);
  update();
  QSplitterHandle::focusInEvent(event);
}

void SplitterBar::focusOutEvent(QFocusEvent* event) {
  setFocusPolicy(Qt::NoFocus);
  update();
  QSplitterHandle::focusOutEvent(event);
}

void SplitterBar::paintEvent(QPaintEvent* event) {
  QSplitterHandle::paintEvent(event);
  if (hasFocus()) QPainter(this).fillRect(rect(), palette().color(QPalette::Highlight));
}

void SplitterBar::changeEvent(QEvent* event) {
  QSplitterHandle::changeEvent(event);
  if (event->type() == QEvent::LanguageChange) Retranslate();
}

}  // namespace qmrules::desktop
