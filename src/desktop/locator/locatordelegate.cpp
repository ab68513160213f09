#include "desktop/locator/locatordelegate.h"

#include <QApplication>
#include <QIcon>
#include <QPainter>
#include <QTextLayout>
#include <algorithm>

#include "desktop/locator/locatormodel.h"

namespace qmrules::desktop {

namespace {

constexpr int kPadding = 8;
constexpr int kLeastIcon = 18;
constexpr int kPlaceShare = 2;  // the place has at most one part in so many of the line
constexpr qreal kPlaceOpacity = 0.7;

// The picture grows with the letters.
int IconSize(const QStyleOptionViewItem& option) {
  return std::max(option.fontMetrics.height(), kLeastIcon);
}

// Of the marks, what lies within the first `length` characters.
QList<QTextLayout::FormatRange> Formats(const QVariantList& marks, int length) {
  QList<QTextLayout::FormatRange> formats;
  for (const QVariant& mark : marks) {
    QTextLayout::FormatRange range;
    range.start = mark.toPoint().x();
    range.length = std::min(mark.toPoint().y(), length - range.start);
    if (range.length <= 0) continue;
    range.format.setFontWeight(QFont::Bold);
    range.format.setFontUnderline(true);
    formats.append(range);
  }
  return formats;
}

void DrawName(QPainter& painter, const QRect& room, const QFont& font, const QModelIndex& index) {
  const QString name = index.data().toString();
  const QString shown = QFontMetrics(font).elidedText(name, Qt::ElideRight, room.width());
  const auto kept = shown == name ? name.size() : shown.size() - 1;
  QTextLayout layout(shown, font);
  layout.setFormats(Formats(index.data(LocatorModel::kMarks).toList(), static_cast<int>(kept)));
  QTextOption oneLine;
  oneLine.setWrapMode(QTextOption::NoWrap);
  layout.setTextOption(oneLine);
  layout.beginLayout();
  layout.createLine().setLineWidth(room.width());
  layout.endLayout();
  const qreal top = room.top() + (room.height() - layout.boundingRect().height()) / 2;
  painter.save();
  painter.setClipRect(room);
  layout.draw(&painter, QPointF(room.left(), top));
  painter.restore();
}

// Returns where the place begins.
int DrawPlace(QPainter& painter, const QRect& room, const QFontMetrics& metrics, const QString& place) {
  const QString shown = metrics.elidedText(place, Qt::ElideMiddle, room.width() / kPlaceShare);
  const int width = metrics.horizontalAdvance(shown);
  painter.save();
  painter.setOpacity(kPlaceOpacity);
  painter.drawText(room, Qt::AlignVCenter | Qt::AlignRight, shown);
  painter.restore();
  return room.right() - width;
}

}  // namespace

void LocatorDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const auto* const style = option.widget == nullptr ? QApplication::style() : option.widget->style();
  style->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
  const bool isSelected = (option.state & QStyle::State_Selected) != 0;
  const QRect line = option.rect.adjusted(kPadding, 0, -kPadding, 0);
  const int icon = IconSize(option);
  QRect picture(0, 0, icon, icon);
  picture.moveCenter(QPoint(line.left() + icon / 2, line.center().y()));
  index.data(Qt::DecorationRole)
      .value<QIcon>()
      .paint(painter, picture, Qt::AlignCenter, isSelected ? QIcon::Selected : QIcon::Normal);
  painter->save();
  painter->setFont(option.font);
  painter->setPen(option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text));
  const QRect room = line.adjusted(icon + kPadding, 0, 0, 0);
  const int placeLeft = DrawPlace(*painter, room, option.fontMetrics, index.data(LocatorModel::kPlace).toString());
  DrawName(*painter, QRect(room.topLeft(), QPoint(std::max(room.left(), placeLeft - 2 * kPadding), room.bottom())),
           option.font, index);
  painter->restore();
}

QSize LocatorDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const {
  return {0, IconSize(option) + kPadding};
}

}  // namespace qmrules::desktop
