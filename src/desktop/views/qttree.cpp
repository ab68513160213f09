#include "desktop/views/qttree.h"

#include <QMouseEvent>

#include "platform/widgets/treenodehandle.h"

namespace qmrules::desktop {

using platform::widgets::ShiftState;
using platform::widgets::TreeNode;
using platform::widgets::TreeNodeHandle;
using platform::widgets::TreeView;

QtTree::QtTree(FocusBridge& focus, TreeView& model, QWidget* parent)
    : RowView(model, parent), model_(model), items_(model), binding_(focus, model, *this, WidgetBinding::Acting::View) {
  setModel(&items_);
  setHeaderHidden(true);
  setSelectionMode(QAbstractItemView::SingleSelection);
  // Qt's screen reader interface selects a row below another one wrongly where whole rows are selected.
  setSelectionBehavior(QAbstractItemView::SelectItems);
  setExpandsOnDoubleClick(false);
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
  QtTree::ShowSelection();
  WatchSelection();
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
  const QModelIndexList shown = selectionModel()->selectedIndexes();
  if (currentIndex() == index && (index.isValid() ? shown == QModelIndexList{index} : shown.isEmpty())) return;
  const ShowingSelection showing(*this);
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
}

void QtTree::TakeSelection() {
  for (const QModelIndex& index : selectionModel()->selectedIndexes()) {
    if (items_.NodeAt(index) == model_.SelectedNode()) continue;
    GoTo(index, {});
    return;
  }
}

QtTree::Place QtTree::PlaceAt(const QPoint& point, const QModelIndex& index) const {
  if (!index.isValid()) return Place::Beside;
  const QRect item = visualRect(index);
  const int beforeItem = isRightToLeft() ? point.x() - item.right() : item.left() - point.x();
  if (beforeItem > 0 && beforeItem <= indentation() && items_.hasChildren(index)) return Place::Sign;
  return IsOnCheckBox(point, index) ? Place::CheckBox : Place::Text;
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

void QtTree::GoTo(const QModelIndex& index, ShiftState) {
  TreeNode* const node = items_.NodeAt(index);
  if (node == nullptr || node == model_.SelectedNode()) return;
  const TreeNodeHandle shown(node);
  model_.Click(*node);
  if (shown.Get() != nullptr) scrollTo(items_.IndexOf(node));
}

// Rows that were measured before there was a place for them have no height.
void QtTree::resizeEvent(QResizeEvent* event) {
  QTreeView::resizeEvent(event);
  if (items_.rowCount() > 0 && rowHeight(items_.index(0, 0)) <= 0) scheduleDelayedItemsLayout();
}

}  // namespace qmrules::desktop
