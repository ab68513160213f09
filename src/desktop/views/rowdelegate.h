#pragma once

#include <QStyledItemDelegate>

namespace qmrules::desktop {

// Draws the rows of trees and lists: with room between them, and with a border around each check box that can be seen
// on any background. (The style draws the border darker than the window, which on a dark one nobody sees.)
class RowDelegate final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  // The tool tip is there for a text that is cut.
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace qmrules::desktop
