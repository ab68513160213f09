#pragma once

#include <QStyledItemDelegate>

namespace qmrules::desktop {

// Draws the rows of trees and lists with room between them.
class RowDelegate final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  // The tool tip is there for a text that is cut.
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;
};

}  // namespace qmrules::desktop
