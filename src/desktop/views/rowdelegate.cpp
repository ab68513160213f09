#include "desktop/views/rowdelegate.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>
#include <algorithm>

namespace qmrules::desktop {

namespace {

constexpr int kPadding = 3;
constexpr int kBorderOpacity = 150;

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

void RowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  QStyledItemDelegate::paint(painter, option, index);
  QStyleOptionViewItem shown = option;
  initStyleOption(&shown, index);
  if (!shown.features.testFlag(QStyleOptionViewItem::HasCheckIndicator)) return;
  const QStyle* const style = option.widget == nullptr ? QApplication::style() : option.widget->style();
  const QRect box = style->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &shown, option.widget);
  QColor border = shown.palette.color(QPalette::Text);
  border.setAlpha(kBorderOpacity);
  painter->save();
  painter->setPen(border);
  painter->setBrush(Qt::NoBrush);
  painter->drawRect(box.adjusted(0, 0, -1, -1));
  painter->restore();
}

}  // namespace qmrules::desktop
