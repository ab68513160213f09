#pragma once

#include <QStyledItemDelegate>

namespace qmrules::desktop {

// Draws an entry of the locator in one line: its picture, its name with the matches in bold, and at the right, paler,
// its place.
class LocatorDelegate final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace qmrules::desktop
