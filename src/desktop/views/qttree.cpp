#include "desktop/views/qttree.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScopedValueRollback>

#include "desktop/views/qttext.h"
#include "desktop/views/rowdelegate.h"
#include "platform/widgets/treenodehandle.h"

namespace qmrules::desktop {

using platform::widgets::Key;
using platform::widgets::TreeNode;
using platform::widgets::TreeNodeHandle;
using platform::widgets::TreeView;

QtTree::QtTree(FocusBridge& focus, TreeView& model, QWidget* parent)
    : QTreeView(parent), model_(model), items_(model), binding_(focus, model, *this, WidgetBinding::Acting::View) {
  setModel(&items_);
  setItemDelegate(new RowDelegate(this));
  setHeaderHidden(true);
  setUniformRowHeights(true);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setSelectionMode(QAbstractItemView::SingleSelection);
  setExpandsOnDoubleClick(false);
  setAutoScroll(false);
  setTextElideMode(Qt::ElideRight);
  subscriptions_.push_back(model.OnNodeChanged.Subscribe([this](TreeNode& node) { ShowExpanded(node); }));
  subscriptions_.push_back(model.OnSelectionChanged.Subscribe([this] { ShowSelection(); }));
  subscriptions_.push_back(model.OnNodesRemoved.Subscribe([this] { ShowSelection(); }));
  subscriptions_.push_back(
      model.OnEnsureVisible.Subscribe([this](TreeNode& node) { scrollTo(items_.IndexOf(&node)); }));
  model.SetHitTest([this](int x, int y) { return items_.NodeAt(indexAt(QPoint(x, y))); });
  for (TreeNode* node = model.First(); node != nullptr; node = node->NextInOrder()) {
    if (node->Expanded()) ShowExpanded(*node);
  }
  ShowSelection();
}

QtTree::~QtTree() {
  model_.SetHitTest(nullptr);
}

void QtTree::ShowExpanded(const TreeNode& node) {
  const QModelIndex index = items_.IndexOf(&node);
  if (isExpanded(index) != node.Expanded()) setExpanded(index, node.Expanded());
}

void QtTree::ShowSelection() {
  const QModelIndex index = items_.IndexOf(model_.SelectedNode());
  if (currentIndex() == index && selectionModel()->isSelected(index)) return;
  const QScopedValueRollback<bool> showing(showing_, true);
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
}

// Only the model selects.
QItemSelectionModel::SelectionFlags QtTree::selectionCommand(const QModelIndex&, const QEvent*) const {
  return showing_ ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
}

QtTree::Place QtTree::PlaceAt(const QPoint& point, const QModelIndex& index) const {
  if (!index.isValid()) return Place::Beside;
  QStyleOptionViewItem option;
  initViewItemOption(&option);
  option.rect = visualRect(index);
  option.features |= QStyleOptionViewItem::HasCheckIndicator;
  const bool fromRight = isRightToLeft();
  const int beforeItem = fromRight ? point.x() - option.rect.right() : option.rect.left() - point.x();
  if (beforeItem > 0 && beforeItem <= indentation() && items_.hasChildren(index)) return Place::Sign;
  const QRect box = style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, this);
  return box.contains(point) ? Place::CheckBox : Place::Text;
}

void QtTree::Press(const QMouseEvent& event, bool twice) {
  const QPoint point = event.position().toPoint();
  const QModelIndex index = indexAt(point);
  TreeNode* const node = items_.NodeAt(index);
  if (event.button() == Qt::RightButton) {
    model_.RightClick(node);
    return;
  }
  if (event.button() != Qt::LeftButton || node == nullptr) return;
  switch (PlaceAt(point, index)) {
    case Place::Sign:
      if (node->Expanded()) {
        model_.Collapse(*node);
      } else {
        model_.Expand(*node);
      }
      break;
    case Place::CheckBox:
      model_.ClickCheckBox(*node);
      break;
    case Place::Text:
      if (twice) {
        model_.DoubleClick(*node);
      } else {
        model_.Click(*node);
      }
      break;
    case Place::Beside:
      break;
  }
}

void QtTree::mousePressEvent(QMouseEvent* event) {
  Press(*event, false);
}

void QtTree::mouseDoubleClickEvent(QMouseEvent* event) {
  Press(*event, true);
}

void QtTree::mouseReleaseEvent(QMouseEvent*) {}

// A drag with a button down would select.
void QtTree::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons() == Qt::NoButton) QTreeView::mouseMoveEvent(event);
}

void QtTree::GoTo(const QModelIndex& index) {
  TreeNode* const node = items_.NodeAt(index);
  if (node == nullptr || node == model_.SelectedNode()) return;
  const TreeNodeHandle shown(node);
  model_.Click(*node);
  if (shown.Get() != nullptr) scrollTo(items_.IndexOf(node));
}

void QtTree::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown) {
    GoTo(moveCursor(event->key() == Qt::Key_PageUp ? MovePageUp : MovePageDown, Qt::NoModifier));
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
void QtTree::keyboardSearch(const QString& search) {
  QTreeView::keyboardSearch(search);
  GoTo(currentIndex());
  ShowSelection();
}

// Rows that were measured before there was a place for them have no height.
void QtTree::resizeEvent(QResizeEvent* event) {
  QTreeView::resizeEvent(event);
  if (items_.rowCount() > 0 && rowHeight(items_.index(0, 0)) <= 0) scheduleDelayedItemsLayout();
}

// The right button has been told of when it went down; this is the keyboard's way.
void QtTree::contextMenuEvent(QContextMenuEvent* event) {
  event->accept();
  if (event->reason() == QContextMenuEvent::Keyboard) model_.PressKey(Key::F10, {.shift = true});
}

}  // namespace qmrules::desktop
