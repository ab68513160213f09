#include "desktop/views/qttoolbar.h"

#include <QAction>
#include <QKeyEvent>
#include <QMenu>
#include <algorithm>
#include <utility>

#include "desktop/views/qttext.h"

namespace qmrules::desktop {

using platform::widgets::ButtonMenu;
using platform::widgets::ImageList;
using platform::widgets::ToolBar;
using platform::widgets::ToolButton;

namespace {

bool HasMenu(const QToolButton& button) {
  const QAction* const action = button.defaultAction();
  return button.menu() != nullptr || (action != nullptr && action->menu() != nullptr);
}

}  // namespace

QtToolBar::QtToolBar(FocusBridge& focus, ToolBar& model, const ImageList& images, QWidget* parent)
    : QToolBar(parent),
      focus_(focus),
      model_(model),
      pictures_(images),
      binding_(focus, model, *this, WidgetBinding::Acting::View),
      changed_(model.OnChanged.Subscribe([this] { Show(); })),
      picturesChanged_(pictures_.OnChanged.Subscribe([this] { ShowPicturesLater(); })) {
  setMovable(false);
  setFloatable(false);
  Show();
}

// Pictures change many at a time.
void QtToolBar::ShowPicturesLater() {
  if (std::exchange(picturesAreStale_, true)) return;
  const auto show = [this] {
    picturesAreStale_ = false;
    Show();
  };
  QMetaObject::invokeMethod(this, show, Qt::QueuedConnection);
}

void QtToolBar::Fill() {
  clear();
  for (const auto& button : model_.Buttons()) {
    if (button->Key().empty()) {
      addSeparator();
      continue;
    }
    QAction* const action = addAction(QString());
    const std::string key = button->Key();
    connect(action, &QAction::triggered, this, [this, key] {
      model_.Click(key);
      Show();  // the model tells whether a button of two states is pressed
    });
    FillMenu(*action, *button);
    if (auto* const shown = qobject_cast<QToolButton*>(widgetForAction(action))) {
      shown->setPopupMode(button->Menus().empty() ? QToolButton::DelayedPopup : QToolButton::MenuButtonPopup);
      shown->setFocusPolicy(Qt::NoFocus);
      shown->installEventFilter(this);
    }
  }
  const auto all = findChildren<QToolButton*>(QString(), Qt::FindDirectChildrenOnly);
  for (QToolButton* const button : all) button->installEventFilter(this);
}

void QtToolBar::FillMenu(QAction& action, const ToolButton& button) {
  if (button.Menus().empty()) return;
  auto* const menu = new QMenu(this);
  connect(&action, &QObject::destroyed, menu, &QObject::deleteLater);
  for (const auto& entry : button.Menus()) {
    QAction* const item = menu->addAction(QString());
    connect(item, &QAction::triggered, this,
            [this, key = button.Key(), menuKey = entry->Key()] { model_.ClickMenu(key, menuKey); });
  }
  action.setMenu(menu);
}

void QtToolBar::ShowButton(QAction& action, const ToolButton& button) const {
  const QIcon icon = pictures_.Icon(button.Image());
  const QString tip = ToQt(button.ToolTipText().empty() ? button.Key() : button.ToolTipText());
  action.setObjectName(ToQt(button.Key()));
  if (action.icon().cacheKey() != icon.cacheKey()) action.setIcon(icon);
  action.setText(tip);
  action.setToolTip(tip);
  action.setEnabled(button.Enabled());
  action.setVisible(button.Visible());
  action.setCheckable(button.Pressed());
  action.setChecked(button.Pressed());
  if (QWidget* const shown = widgetForAction(&action)) shown->setAccessibleName(tip);
  if (action.menu() == nullptr) return;
  const QList<QAction*> items = action.menu()->actions();
  for (std::size_t place = 0; place < button.Menus().size(); ++place) {
    const ButtonMenu& entry = *button.Menus()[place];
    QAction& item = *items[static_cast<qsizetype>(place)];
    item.setText(ToQt(entry.Caption()));
    item.setEnabled(entry.Enabled());
    item.setVisible(entry.Visible());
  }
}

void QtToolBar::Show() {
  const auto& buttons = model_.Buttons();
  const auto fits = [&] {
    if (actions().size() != static_cast<qsizetype>(buttons.size())) return false;
    for (std::size_t place = 0; place < buttons.size(); ++place) {
      const QAction& action = *actions()[static_cast<qsizetype>(place)];
      const qsizetype entries = action.menu() == nullptr ? 0 : action.menu()->actions().size();
      if (entries != static_cast<qsizetype>(buttons[place]->Menus().size())) return false;
    }
    return true;
  };
  if (!fits()) Fill();
  for (std::size_t place = 0; place < buttons.size(); ++place) {
    if (!buttons[place]->Key().empty()) ShowButton(*actions()[static_cast<qsizetype>(place)], *buttons[place]);
  }
  ShowTabStop();
}

// The buttons that the keyboard leads along, the one that opens the rest last.
std::vector<QToolButton*> QtToolBar::Stops() const {
  std::vector<QToolButton*> stops;
  for (QAction* const action : actions()) {
    auto* const button = qobject_cast<QToolButton*>(widgetForAction(action));
    if (button != nullptr && button->isVisible() && button->isEnabled()) stops.push_back(button);
  }
  auto* const rest = findChild<QToolButton*>(QStringLiteral("qt_toolbar_ext_button"));
  if (rest != nullptr && rest->isVisible()) {
    rest->setAccessibleName(tr("More commands"));
    stops.push_back(rest);
  }
  return stops;
}

void QtToolBar::ShowTabStop() {
  const auto stops = Stops();
  const bool one = std::any_of(stops.begin(), stops.end(), [](const auto* stop) { return stop->hasFocus(); });
  const auto all = findChildren<QToolButton*>(QString(), Qt::FindDirectChildrenOnly);
  for (QToolButton* const button : all) {
    const bool isStop = one ? button->hasFocus() : !stops.empty() && button == stops.front();
    button->setFocusPolicy(isStop ? Qt::TabFocus : Qt::NoFocus);
  }
}

void QtToolBar::resizeEvent(QResizeEvent* event) {
  QToolBar::resizeEvent(event);
  ShowTabStop();
}

void QtToolBar::showEvent(QShowEvent* event) {
  QToolBar::showEvent(event);
  ShowTabStop();
}

bool QtToolBar::MoveAlong(const QToolButton& from, int by) {
  const auto stops = Stops();
  const auto found = std::find(stops.begin(), stops.end(), &from);
  if (found == stops.end()) return false;
  const auto count = static_cast<std::ptrdiff_t>(stops.size());
  const auto to = (found - stops.begin() + by + count) % count;
  stops[static_cast<std::size_t>(to)]->setFocus(Qt::TabFocusReason);
  ShowTabStop();
  return true;
}

bool QtToolBar::eventFilter(QObject* watched, QEvent* event) {
  auto* const button = qobject_cast<QToolButton*>(watched);
  if (button == nullptr || event->type() != QEvent::KeyPress) return QToolBar::eventFilter(watched, event);
  switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Left:
      return MoveAlong(*button, isRightToLeft() ? 1 : -1);
    case Qt::Key_Right:
      return MoveAlong(*button, isRightToLeft() ? -1 : 1);
    case Qt::Key_Down:
      if (HasMenu(*button)) button->showMenu();
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      button->click();
      return true;
    case Qt::Key_Escape:
      focus_.ShowActive();
      return true;
    default:
      return false;
  }
}

}  // namespace qmrules::desktop
