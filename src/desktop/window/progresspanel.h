#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QWidget>
#include <vector>

#include "desktop/window/inputgate.h"
#include "platform/progress.h"

class QLabel;
class QProgressBar;
class QToolButton;

namespace qmrules::desktop {

// Shows long work in the status line: what is done, how far it is, and a button to stop it, which Escape presses too.
// Hidden while there is none. Between its calls the window is painted, and nothing else of the user gets through. Asked
// for a wish to stop where there is no work, it only lets the window be painted.
class ProgressPanel final : public QWidget, public platform::Progress {
  Q_OBJECT

 public:
  explicit ProgressPanel(QWidget* parent = nullptr);

  void StartProgress(std::string_view text, int total, bool canCancel) override;
  void StartStep(std::string_view text) override;
  void FinishStep(int amount) override;
  void FinishProgress() override;
  bool Cancelled() override;

  // Paints what waits to be painted; the user gets no further than within long work.
  void LetPaint() { gate_.LetPaint(); }
  bool IsOpen() const { return !works_.empty(); }

 protected:
  void changeEvent(QEvent* event) override;

 private:
  struct Work {
    QString text;
    int total = 0;
    int done = 0;
    bool canCancel = false;
    bool cancelled = false;
  };
  void RequestCancel();
  void ShowWork();
  void PaintNowAndThen();
  void Retranslate();

  InputGate gate_;
  std::vector<Work> works_;  // the last one is shown; work within work is rare, but no work may end another's display
  QElapsedTimer sincePainted_;
  QLabel* text_;
  QProgressBar* bar_;
  QToolButton* cancel_;
};

}  // namespace qmrules::desktop
