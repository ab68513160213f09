#pragma once

#include <QEventLoop>
#include <QObject>
#include <functional>

class QWidget;

namespace qmrules::desktop {

// Keeps the window painted within long work without letting the user into it: while events are handled here, what is
// typed and clicked is dropped, timers wait, and only the one open widget, and Escape, get through. So no command is
// entered while another runs.
class InputGate final : public QObject {
 public:
  // `open`: the widget that goes on to take clicks; it and its children. `escape`: told when Escape is pressed.
  InputGate(QWidget& open, std::function<void()> escape) : open_(open), escape_(std::move(escape)) {}

  // Handles the events that wait. Does nothing within itself.
  void LetPaint();
  // The same, but what is typed and clicked waits for the end of the work, as it does in a window that is not painted:
  // for work that shows no display, of which the user knows nothing.
  void LetPaintOnly();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void HandleEvents(QEventLoop::ProcessEventsFlags which);

  QWidget& open_;
  std::function<void()> escape_;
  bool within_ = false;
};

}  // namespace qmrules::desktop
