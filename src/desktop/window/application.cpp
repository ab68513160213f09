#include "desktop/window/application.h"

#include <QMetaObject>
#include <exception>
#include <iostream>

namespace qmrules::desktop {

bool Application::notify(QObject* receiver, QEvent* event) {
  try {
    return QApplication::notify(receiver, event);
  } catch (const std::exception& failure) {
    Tell(QString::fromUtf8(failure.what()));
  }
  return false;
}

// The event may belong to a widget in the midst of painting itself, so nothing is shown before it is over.
void Application::Tell(const QString& text) {
  QMetaObject::invokeMethod(
      this,
      [this, text] {
        if (teller_) {
          teller_(text);
        } else {
          std::cerr << "qmrules-workbench: " << text.toStdString() << '\n';
        }
      },
      Qt::QueuedConnection);
}

}  // namespace qmrules::desktop
