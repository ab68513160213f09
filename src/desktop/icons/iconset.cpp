#include "desktop/icons/iconset.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QSvgRenderer>
#include <utility>

// Resources of a static library are dropped by the linker unless somebody names them, outside of every namespace.
static void KeepIcons() {
  Q_INIT_RESOURCE(icons);
}

namespace qmrules::desktop {

namespace {

constexpr const char* kFolder = ":/qmrules/icons";

// The colours of the drawings, and what stands for them on a dark background.
struct DarkColor {
  const char* drawn;
  const char* dark;
};

constexpr DarkColor kDarkColors[] = {
    {"#3c4043", "#dadde1"},  // lines
    {"#1967d2", "#8ab4f8"},  // what the picture is about
    {"#d6e4fb", "#2d3f5c"},  // surfaces
    {"#c5221f", "#f28b82"},  // harm
    {"#188038", "#81c995"},  // success
    {"#b06000", "#fdd663"},  // doubt
};

constexpr qreal kDisabledOpacity = 0.38;

// On a selected row, whose background is a strong colour, lines and signs are white and surfaces shine through.
constexpr const char* kLineColors[] = {"#3c4043", "#dadde1", "#1967d2", "#8ab4f8"};
constexpr const char* kSurfaceFills[] = {R"(fill="#d6e4fb")", R"(fill="#2d3f5c")"};
constexpr const char* kSelectedLine = "#ffffff";
constexpr const char* kSelectedFill = R"(fill="#ffffff" fill-opacity="0.25")";

QByteArray OnSelectedRow(QByteArray svg) {
  const QPalette palette = QGuiApplication::palette();
  const bool isStrong =
      palette.color(QPalette::HighlightedText).lightness() > palette.color(QPalette::Highlight).lightness();
  if (!isStrong) return svg;
  for (const char* const fill : kSurfaceFills) svg.replace(fill, kSelectedFill);
  for (const char* const line : kLineColors) svg.replace(line, kSelectedLine);
  for (const DarkColor& color : kDarkColors) svg.replace(color.drawn, color.dark);
  return svg;
}

QSize Fitting(const QSvgRenderer& drawing, const QSize& room) {
  return drawing.defaultSize().scaled(room, Qt::KeepAspectRatio);
}

class SvgIconEngine final : public QIconEngine {
 public:
  explicit SvgIconEngine(QByteArray svg) : svg_(std::move(svg)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State /*state*/) override {
    QSvgRenderer drawing(mode == QIcon::Selected ? OnSelectedRow(svg_) : svg_);
    if (!drawing.isValid()) return;
    QRect place(QPoint(0, 0), Fitting(drawing, rect.size()));
    place.moveCenter(rect.center());
    if (mode == QIcon::Disabled) {
      PaintPale(drawing, *painter, place);
    } else {
      drawing.render(painter, place);
    }
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap picture(size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paint(&painter, QRect(QPoint(0, 0), size), mode, state);
    return picture;
  }

  QIconEngine* clone() const override { return new SvgIconEngine(svg_); }

 private:
  // As a whole: line by line, the places where lines cross would stand out.
  static void PaintPale(QSvgRenderer& drawing, QPainter& painter, const QRect& place) {
    const qreal scale = painter.device()->devicePixelRatioF();
    QPixmap whole(place.size() * scale);
    whole.fill(Qt::transparent);
    QPainter wholePainter(&whole);
    drawing.render(&wholePainter);
    wholePainter.end();
    painter.save();
    painter.setOpacity(painter.opacity() * kDisabledOpacity);
    painter.drawPixmap(place, whole);
    painter.restore();
  }

  QByteArray svg_;
};

QStringList Files() {
  KeepIcons();
  return QDir(kFolder).entryList({"*.svg"}, QDir::Files, QDir::Name | QDir::IgnoreCase);
}

bool IsOwn(const platform::widgets::Picture& picture) {
  return picture.path.empty();
}

}  // namespace

QIcon SvgIcon(const QByteArray& svg) {
  return QIcon(new SvgIconEngine(svg));
}

IconSet::IconSet(const QPalette& palette)
    : background_(palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness()
                      ? Background::Dark
                      : Background::Light) {}

std::vector<std::string> IconSet::Keys() {
  std::vector<std::string> keys;
  for (const QString& file : Files()) keys.push_back(file.chopped(4).toStdString());
  return keys;
}

QIcon IconSet::Icon(std::string_view key) const {
  const QByteArray svg = Svg(key);
  return svg.isEmpty() ? QIcon() : SvgIcon(svg);
}

QByteArray IconSet::Svg(std::string_view key) const {
  const QString wanted = QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size())) + ".svg";
  for (const QString& name : Files()) {
    if (name.compare(wanted, Qt::CaseInsensitive) != 0) continue;
    QFile file(QDir(kFolder).filePath(name));
    if (!file.open(QIODevice::ReadOnly)) return {};
    QByteArray svg = file.readAll();
    if (background_ == Background::Dark) {
      for (const DarkColor& color : kDarkColors) svg.replace(color.drawn, color.dark);
    }
    return svg;
  }
  return {};
}

void IconSet::Fill(platform::widgets::ImageList& list) const {
  for (const std::string& key : Keys()) {
    const auto* held = list.Find(key);
    if (held != nullptr && !IsOwn(*held)) continue;
    const std::string bytes = Svg(key).toStdString();
    if (held == nullptr || held->bytes != bytes) list.Set(key, {.path = {}, .bytes = bytes});
  }
}

}  // namespace qmrules::desktop
