#include "desktop/views/pictures.h"

#include <QPixmap>

#include "desktop/icons/iconset.h"
#include "desktop/views/qttext.h"

namespace qmrules::desktop {

using platform::widgets::ImageList;
using platform::widgets::Picture;

namespace {

// A drawing is drawn once for each of these sizes, so that it is sharp and costs nothing when a row is painted.
constexpr int kSizes[] = {16, 20, 24, 32, 48, 64};

QIcon Drawn(const QByteArray& svg) {
  const QIcon drawing = SvgIcon(svg);
  QIcon icon;
  for (const int size : kSizes) {
    for (const auto mode : {QIcon::Normal, QIcon::Disabled, QIcon::Selected})
      icon.addPixmap(drawing.pixmap(QSize(size, size), mode), mode);
  }
  return icon;
}

QIcon IconOf(const Picture& picture) {
  if (picture.bytes.empty()) return QIcon(ToQt(picture.path));
  const QByteArray bytes = QByteArray::fromStdString(picture.bytes);
  if (bytes.contains("<svg")) return Drawn(bytes);
  QPixmap dots;
  return dots.loadFromData(bytes) ? QIcon(dots) : QIcon();
}

}  // namespace

Pictures::Pictures(const ImageList& images)
    : images_(images), changed_(images.OnChanged.Subscribe([this] {
        icons_.clear();
        OnChanged.Raise();
      })) {}

QIcon Pictures::Icon(std::string_view key) const {
  if (key.empty()) return {};
  const QString name = ToQt(key);
  if (const auto known = icons_.constFind(name); known != icons_.constEnd()) return *known;
  const Picture* const picture = images_.Find(key);
  QIcon icon = picture == nullptr ? QIcon() : IconOf(*picture);
  icons_.insert(name, icon);
  return icon;
}

}  // namespace qmrules::desktop
