#pragma once

#include <QApplication>
#include <QTimer>
#include <functional>

namespace qmrules::test {

// Waits for a modal window and acts on it, once; the action closes it.
class ModalAnswer {
 public:
  explicit ModalAnswer(std::function<void(QWidget&)> act) : act_(std::move(act)) {
    QObject::connect(&timer_, &QTimer::timeout, [this] {
      QWidget* const window = QApplication::activeModalWidget();
      if (window == nullptr || done_) return;
      done_ = true;
      timer_.stop();
      act_(*window);
    });
    timer_.start(5);
  }
  bool Done() const { return done_; }

 private:
  std::function<void(QWidget&)> act_;
  QTimer timer_;
  bool done_ = false;
};

}  // namespace qmrules::test
