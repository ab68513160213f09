#include "desktop/views/rowdelegate.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QToolTip>
#include <algorithm>

namespace qmrules::desktop {

namespace {

constexpr int kPadding = 3;

}  // namespace

QSize RowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  QSize size = QStyledItemDelegate::sizeHint(option, index);
  size.setHeight(std::max(size.height(), option.fontMetrics.height() + 2 * kPadding));
  return size;
}

bool RowDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                            const QModelIndex& index) {
  const QRect seen = view->visualRect(index).intersected(view->viewport()->rect());
  if (event->type() == QEvent::ToolTip && sizeHint(option, index).width() <= seen.width()) {
    QToolTip::hideText();
    return true;
  }
  return QStyledItemDelegate::helpEvent(event, view, option, index);
}

}  // namespace qmrules::desktop
