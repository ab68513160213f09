#include "desktop/views/qtlist.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <algorithm>

#include "desktop/views/rowdelegate.h"
#include "desktop/views/userkeys.h"

namespace qmrules::desktop {

using platform::widgets::Key;
using platform::widgets::ListRow;
using platform::widgets::ListView;
using platform::widgets::ShiftState;

namespace {

constexpr int kLeastRows = 2;
constexpr int kRowsWished = 6;
constexpr int kRowPadding = 6;

}  // namespace

QtList::QtList(FocusBridge& focus, ListView& model, QWidget* parent)
    : QTreeView(parent), model_(model), items_(model), binding_(focus, model, *this, WidgetBinding::Acting::View) {
  setModel(&items_);
  setItemDelegate(new RowDelegate(this));
  setRootIsDecorated(false);
  setItemsExpandable(false);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setAutoScroll(false);
  header()->setSectionsMovable(false);
  header()->setStretchLastSection(true);
  header()->setMinimumSectionSize(fontMetrics().averageCharWidth() * 4);
  connect(header(), &QHeaderView::sectionResized, this, [this] {
    if (!sharing_) widthsAreTheUsers_ = true;
  });
  subscriptions_.push_back(model.OnChanged.Subscribe([this] { Show(); }));
  subscriptions_.push_back(model.OnSelectionChanged.Subscribe([this] { ShowSelection(); }));
  subscriptions_.push_back(model.OnRowsRemoved.Subscribe([this] { ShowSelection(); }));
  subscriptions_.push_back(
      model.OnEnsureVisible.Subscribe([this](ListRow& row) { scrollTo(items_.index(items_.PlaceOf(&row), 0)); }));
  Show();
  ShowSelection();
}

QSize QtList::minimumSizeHint() const {
  const int row = fontMetrics().height() + kRowPadding;
  return {fontMetrics().averageCharWidth() * 16, header()->sizeHint().height() + kLeastRows * row + 2 * frameWidth()};
}

QSize QtList::sizeHint() const {
  const int row = fontMetrics().height() + kRowPadding;
  return {fontMetrics().averageCharWidth() * 60, header()->sizeHint().height() + kRowsWished * row + 2 * frameWidth()};
}

void QtList::Show() {
  setSelectionMode(model_.MultiSelect() ? QAbstractItemView::ExtendedSelection : QAbstractItemView::SingleSelection);
  ShareOutWidth();
}

// Until the user draws a column wider, the columns share the width evenly.
void QtList::ShareOutWidth() {
  const int columns = items_.columnCount();
  if (widthsAreTheUsers_ || columns == 0) return;
  const QScopedValueRollback<bool> sharing(sharing_, true);
  for (int column = 0; column + 1 < columns; ++column) setColumnWidth(column, viewport()->width() / columns);
}

void QtList::resizeEvent(QResizeEvent* event) {
  const QScopedValueRollback<bool> sharing(sharing_, true);
  QTreeView::resizeEvent(event);
  ShareOutWidth();
}

void QtList::ShowSelection() {
  const QScopedValueRollback<bool> showing(showing_, true);
  QItemSelection selection;
  const int rows = items_.rowCount();
  const int last = items_.columnCount() - 1;
  for (int row = 0; row < rows; ++row) {
    if (!items_.RowAt(items_.index(row, 0))->Selected()) continue;
    const int first = row;
    while (row + 1 < rows && items_.RowAt(items_.index(row + 1, 0))->Selected()) ++row;
    selection.select(items_.index(first, 0), items_.index(row, last));
  }
  selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
  const int current = items_.PlaceOf(model_.CurrentRow());
  selectionModel()->setCurrentIndex(current < 0 ? QModelIndex() : items_.index(current, 0),
                                    QItemSelectionModel::NoUpdate);
}

// Only the model selects.
QItemSelectionModel::SelectionFlags QtList::selectionCommand(const QModelIndex&, const QEvent*) const {
  return QItemSelectionModel::NoUpdate;
}

bool QtList::IsOnCheckBox(const QPoint& point, const QModelIndex& index) const {
  if (!model_.CheckBoxes() || index.column() != 0) return false;
  QStyleOptionViewItem option;
  initViewItemOption(&option);
  option.rect = visualRect(index);
  option.features |= QStyleOptionViewItem::HasCheckIndicator;
  return style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, this).contains(point);
}

void QtList::mousePressEvent(QMouseEvent* event) {
  const QPoint point = event->position().toPoint();
  const QModelIndex index = indexAt(point);
  ListRow* const row = items_.RowAt(index);
  if (event->button() == Qt::RightButton) {
    model_.RightClick(row);
  } else if (event->button() == Qt::LeftButton && row != nullptr) {
    if (IsOnCheckBox(point, index)) {
      model_.ClickCheckBox(*row);
    } else {
      model_.Click(*row, ShiftOf(event->modifiers()));
    }
  }
}

void QtList::mouseDoubleClickEvent(QMouseEvent* event) {
  ListRow* const row = items_.RowAt(indexAt(event->position().toPoint()));
  if (event->button() == Qt::LeftButton && row != nullptr) model_.DoubleClick(*row);
}

void QtList::mouseReleaseEvent(QMouseEvent*) {}

// A drag with a button down would select.
void QtList::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons() == Qt::NoButton) QTreeView::mouseMoveEvent(event);
}

void QtList::GoTo(const QModelIndex& index, ShiftState shift) {
  ListRow* const row = items_.RowAt(index);
  if (row == nullptr || row == model_.CurrentRow()) return;
  model_.Click(*row, shift);
  scrollTo(items_.index(index.row(), 0));
}

void QtList::keyPressEvent(QKeyEvent* event) {
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

void QtList::keyboardSearch(const QString& search) {
  QTreeView::keyboardSearch(search);
  GoTo(currentIndex(), {});
  ShowSelection();
}

// The right button has been told of when it went down; this is the keyboard's way.
void QtList::contextMenuEvent(QContextMenuEvent* event) {
  event->accept();
  if (event->reason() == QContextMenuEvent::Keyboard) model_.PressKey(Key::F10, {.shift = true});
}

}  // namespace qmrules::desktop
