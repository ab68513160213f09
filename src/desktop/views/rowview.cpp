#include "desktop/views/rowview.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyle>
#include <algorithm>
#include <utility>

#include "desktop/views/rowdelegate.h"
#include "desktop/views/userkeys.h"

namespace qmrules::desktop {

using platform::widgets::Key;

RowView::RowView(platform::widgets::Widget& model, QWidget* parent) : QTreeView(parent), model_(model) {
  setItemDelegate(new RowDelegate(this));
  setUniformRowHeights(true);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setAutoScroll(false);
  FitPictures();
}

// They grow with the letters.
void RowView::FitPictures() {
  const int size = std::max(style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this), fontMetrics().height());
  setIconSize({size, size});
}

void RowView::changeEvent(QEvent* event) {
  QTreeView::changeEvent(event);
  if (event->type() == QEvent::FontChange) FitPictures();
}

// What the model throws then comes out of an event, and not out of the toolkit's selection.
void RowView::WatchSelection() {
  connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
    if (showing_ || std::exchange(takes_, true)) return;
    const auto take = [this] {
      takes_ = false;
      TakeSelection();
      ShowSelection();
    };
    QMetaObject::invokeMethod(this, take, Qt::QueuedConnection);
  });
}

bool RowView::IsOnCheckBox(const QPoint& point, const QModelIndex& index) const {
  QStyleOptionViewItem option;
  initViewItemOption(&option);
  option.rect = visualRect(index);
  option.features |= QStyleOptionViewItem::HasCheckIndicator;
  return style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, this).contains(point);
}

void RowView::mouseReleaseEvent(QMouseEvent*) {}

// A drag with a button down would select.
void RowView::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons() == Qt::NoButton) QTreeView::mouseMoveEvent(event);
}

void RowView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown) {
    const auto move = event->key() == Qt::Key_PageUp ? MovePageUp : MovePageDown;
    GoTo(moveCursor(move, Qt::NoModifier), ShiftOf(event->modifiers() & Qt::ShiftModifier));
    return;
  }
  const bool letter = !event->text().isEmpty() && event->text().front().isPrint() &&
                      (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) == 0;
  if (letter) {
    keyboardSearch(event->text());
  } else {
    event->ignore();
  }
}

// Qt looks for the row that begins so, and makes it its current one; the model goes there as by a click.
void RowView::keyboardSearch(const QString& search) {
  QTreeView::keyboardSearch(search);
  GoTo(currentIndex(), {});
  ShowSelection();
}

// The right button has been told of when it went down; this is the keyboard's way.
void RowView::contextMenuEvent(QContextMenuEvent* event) {
  event->accept();
  if (event->reason() == QContextMenuEvent::Keyboard) model_.PressKey(Key::F10, {.shift = true});
}

// Only the model selects.
QItemSelectionModel::SelectionFlags RowView::selectionCommand(const QModelIndex&, const QEvent*) const {
  return showing_ ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
}

}  // namespace qmrules::desktop
