#include "desktop/window/appearance.h"

#include <QApplication>
#include <QFontInfo>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>

#include "desktop/icons/iconset.h"

namespace qmrules::desktop {

namespace {

constexpr int kTitleIndent = 4;
constexpr int kFieldOutline = 90;  // how strong, of 255
constexpr int kMarkOutline = 150;

struct SchemeColors {
  QRgb window, windowText, base, alternateBase, text, placeholder, button, buttonText, brightText;
  QRgb highlight, highlightedText, link, linkVisited, toolTipBase, toolTipText;
  QRgb light, midlight, mid, dark, shadow;
  QRgb disabledText, disabledHighlight;
};

constexpr SchemeColors kLight{.window = 0xfff3f4f6,
                              .windowText = 0xff1b1f24,
                              .base = 0xffffffff,
                              .alternateBase = 0xfff7f8fa,
                              .text = 0xff1b1f24,
                              .placeholder = 0xff6b7280,
                              .button = 0xfff3f4f6,
                              .buttonText = 0xff1b1f24,
                              .brightText = 0xffffffff,
                              .highlight = 0xff2563c9,
                              .highlightedText = 0xffffffff,
                              .link = 0xff1d4fb8,
                              .linkVisited = 0xff6b3fa0,
                              .toolTipBase = 0xfffffbe6,
                              .toolTipText = 0xff1b1f24,
                              .light = 0xffffffff,
                              .midlight = 0xffe8eaee,
                              .mid = 0xffb9bec7,
                              .dark = 0xff9aa1ac,
                              .shadow = 0xff6b7280,
                              .disabledText = 0xff8a919c,
                              .disabledHighlight = 0xffc9ced6};

constexpr SchemeColors kDark{.window = 0xff24272c,
                             .windowText = 0xffe3e6ea,
                             .base = 0xff1b1d21,
                             .alternateBase = 0xff212429,
                             .text = 0xffe3e6ea,
                             .placeholder = 0xff8d95a1,
                             .button = 0xff2e3238,
                             .buttonText = 0xffe3e6ea,
                             .brightText = 0xffffffff,
                             .highlight = 0xff2f6fd6,
                             .highlightedText = 0xffffffff,
                             .link = 0xff7fb0ff,
                             .linkVisited = 0xffc3a3f0,
                             .toolTipBase = 0xff33373e,
                             .toolTipText = 0xffe3e6ea,
                             .light = 0xff454a52,
                             .midlight = 0xff393e45,
                             .mid = 0xff3d424a,
                             .dark = 0xff16181b,
                             .shadow = 0xff0e0f11,
                             .disabledText = 0xff7b828d,
                             .disabledHighlight = 0xff454a52};

// The product's own picture for one of the style's, or nullptr.
const char* OwnPicture(QStyle::StandardPixmap picture) {
  switch (picture) {
    case QStyle::SP_MessageBoxQuestion:
      return "Question";
    case QStyle::SP_MessageBoxInformation:
      return "Information";
    case QStyle::SP_MessageBoxWarning:
      return "Warning";
    case QStyle::SP_MessageBoxCritical:
      return "Error";
    default:
      return nullptr;
  }
}

// The outline of what is marked or typed in. The style draws it darker than the window, which on a dark one nobody
// sees.
void DrawOutline(QStyle::PrimitiveElement element, const QStyleOption& option, QPainter& painter) {
  const bool isRound = element == QStyle::PE_IndicatorRadioButton;
  const bool isBox = element == QStyle::PE_IndicatorCheckBox;  // those of lists are drawn as such
  const bool isField = element == QStyle::PE_FrameLineEdit;
  const bool isDark =
      option.palette.color(QPalette::Window).lightness() < option.palette.color(QPalette::WindowText).lightness();
  const bool hasFocus = option.state.testFlag(QStyle::State_HasFocus);
  if (!isDark || (!isRound && !isBox && !isField) || (isField && hasFocus)) return;
  QColor color = option.palette.color(QPalette::WindowText);
  color.setAlpha(isField ? kFieldOutline : kMarkOutline);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, isRound || isField);
  painter.setPen(color);
  painter.setBrush(Qt::NoBrush);
  const QRectF edge = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
  if (isRound) {
    painter.drawEllipse(edge);
  } else if (isField) {
    painter.drawRoundedRect(edge, 2, 2);
  } else {
    painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
  }
  painter.restore();
}

// The titles of panes in the letters of the window, which the style keeps at their first size; pictures in the colours
// of the scheme; outlines that are seen in the dark one; and buttons with captions alone, since the system's pictures
// for them belong to no scheme.
class HouseStyle final : public QProxyStyle {
 public:
  HouseStyle() : QProxyStyle(QStyleFactory::create("Fusion")) {}
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returnData) const override {
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
    return QProxyStyle::styleHint(hint, option, widget, returnData);
  }

  QIcon standardIcon(StandardPixmap picture, const QStyleOption* option, const QWidget* widget) const override {
    const char* const own = OwnPicture(picture);
    return own == nullptr ? QProxyStyle::standardIcon(picture, option, widget)
                          : IconSet(QApplication::palette()).Icon(own);
  }

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    DrawOutline(element, *option, *painter);
  }

  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override {
    const auto* const title = qstyleoption_cast<const QStyleOptionDockWidget*>(option);
    if (element != CE_DockWidgetTitle || title == nullptr || title->verticalTitleBar || widget == nullptr) {
      QProxyStyle::drawControl(element, option, painter, widget);
      return;
    }
    const QRect room = subElementRect(SE_DockWidgetTitleBarText, option, widget).adjusted(kTitleIndent, 0, 0, 0);
    painter->save();
    painter->setFont(widget->font());
    const QString shown = painter->fontMetrics().elidedText(title->title, Qt::ElideRight, room.width());
    drawItemText(painter, room, Qt::AlignLeft | Qt::AlignVCenter, title->palette, true, shown, QPalette::WindowText);
    painter->restore();
  }
};

QPalette PaletteOf(const SchemeColors& colors) {
  QPalette palette;
  const auto set = [&](QPalette::ColorRole role, QRgb color) { palette.setColor(role, QColor(color)); };
  set(QPalette::Window, colors.window);
  set(QPalette::WindowText, colors.windowText);
  set(QPalette::Base, colors.base);
  set(QPalette::AlternateBase, colors.alternateBase);
  set(QPalette::Text, colors.text);
  set(QPalette::PlaceholderText, colors.placeholder);
  set(QPalette::Button, colors.button);
  set(QPalette::ButtonText, colors.buttonText);
  set(QPalette::BrightText, colors.brightText);
  set(QPalette::Highlight, colors.highlight);
  set(QPalette::HighlightedText, colors.highlightedText);
  set(QPalette::Link, colors.link);
  set(QPalette::LinkVisited, colors.linkVisited);
  set(QPalette::ToolTipBase, colors.toolTipBase);
  set(QPalette::ToolTipText, colors.toolTipText);
  set(QPalette::Light, colors.light);
  set(QPalette::Midlight, colors.midlight);
  set(QPalette::Mid, colors.mid);
  set(QPalette::Dark, colors.dark);
  set(QPalette::Shadow, colors.shadow);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText}) {
    palette.setColor(QPalette::Disabled, role, QColor(colors.disabledText));
  }
  palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(colors.disabledHighlight));
  palette.setColor(QPalette::Disabled, QPalette::Base, QColor(colors.window));
  return palette;
}

}  // namespace

QPalette LightPalette() {
  return PaletteOf(kLight);
}

QPalette DarkPalette() {
  return PaletteOf(kDark);
}

Appearance::Appearance() : systemFont_(QApplication::font()) {
  QApplication::setStyle(new HouseStyle);
}

void Appearance::UseScheme(Scheme scheme) {
  switch (scheme) {
    case Scheme::System:
      // A palette that sets nothing lets the system's through.
      QApplication::setPalette(QPalette());
      break;
    case Scheme::Light:
      QApplication::setPalette(LightPalette());
      break;
    case Scheme::Dark:
      QApplication::setPalette(DarkPalette());
      break;
  }
}

void Appearance::UseFontSize(int points) {
  QFont font = systemFont_;
  if (points > 0) font.setPointSize(points);
  QApplication::setFont(font);
}

int Appearance::FontSize() const {
  return QFontInfo(QApplication::font()).pointSize();
}

}  // namespace qmrules::desktop
