#pragma once

#include <QFrame>
#include <QStringList>

class QLabel;
class QToolButton;

namespace qmrules::desktop {

// A strip that tells of failures which no message box told of. It stays until the user closes it, and never stops the
// user from working. Hidden while there is nothing to tell.
class FailureBar final : public QFrame {
  Q_OBJECT

 public:
  explicit FailureBar(QWidget* parent = nullptr);

  // Shows the text; earlier ones that were not closed stay counted, and can be copied with it.
  void Tell(const QString& text);
  const QStringList& Texts() const { return texts_; }
  void Close();

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void Retranslate();
  void RenewPicture();
  void ShowTexts();

  QStringList texts_;
  QLabel* icon_;
  QLabel* text_;
  QToolButton* copy_;
  QToolButton* close_;
};

}  // namespace qmrules::desktop
