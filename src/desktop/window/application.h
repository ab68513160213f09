#pragma once

#include <QApplication>
#include <functional>

namespace qmrules::desktop {

// The application, which outlives what goes wrong in it: a failure that comes out of the handling of an event is told
// in one place, and the next event is handled.
class Application final : public QApplication {
 public:
  // Takes the text of the failure. Called once no event is being handled any more.
  using FailureTeller = std::function<void(const QString& text)>;

  Application(int& argc, char** argv) : QApplication(argc, argv) {}

  // Without one, failures are told on the error output.
  void SetFailureTeller(FailureTeller teller) { teller_ = std::move(teller); }
  // Takes a failure on its way to the user.
  void Tell(const QString& text);

  bool notify(QObject* receiver, QEvent* event) override;

 private:
  FailureTeller teller_;
};

}  // namespace qmrules::desktop
