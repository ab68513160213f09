#include "desktop/window/inputgate.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace qmrules::desktop {

namespace {

bool IsMouse(QEvent::Type type) {
  switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
      return true;
    default:
      return false;
  }
}

bool IsRefusedByIgnoring(QEvent::Type type) {
  return type == QEvent::Close || type == QEvent::Quit || type == QEvent::DragEnter || type == QEvent::DragMove;
}

// What would have something done.
bool IsRequest(QEvent::Type type) {
  switch (type) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::InputMethod:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
    case QEvent::TabletMove:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
    case QEvent::Close:
    case QEvent::Quit:
      return true;
    default:
      return IsMouse(type);
  }
}

}  // namespace

void InputGate::LetPaint() {
  HandleEvents(QEventLoop::AllEvents);
}

void InputGate::LetPaintOnly() {
  HandleEvents(QEventLoop::ExcludeUserInputEvents);
}

void InputGate::HandleEvents(QEventLoop::ProcessEventsFlags which) {
  if (within_) return;
  struct Open {
    explicit Open(InputGate& gate) : gate(gate) {
      gate.within_ = true;
      qApp->installEventFilter(&gate);
    }
    ~Open() {
      qApp->removeEventFilter(&gate);
      gate.within_ = false;
    }
    InputGate& gate;
  } const open(*this);
  QCoreApplication::processEvents(which);
}

bool InputGate::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  // The timers of widgets only blink and animate; another one's may begin some work. It rings again later.
  if (type == QEvent::Timer) return !watched->isWidgetType();
  if (!IsRequest(type)) return false;
  if (type == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) escape_();
  // A window hands its mouse events on to its widgets, where they come by here again.
  if (IsMouse(type) &&
      (watched->isWindowType() || watched == &open_ || open_.isAncestorOf(qobject_cast<QWidget*>(watched)))) {
    return false;
  }
  // A key or click that is not accepted would go on to the widget around.
  event->setAccepted(!IsRefusedByIgnoring(type));
  return true;
}

}  // namespace qmrules::desktop
