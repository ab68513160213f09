#pragma once

#include <QPointer>
#include <QSplitterHandle>

namespace qmrules::desktop {

// The bar between the two parts of a divided pane. It has the keyboard only when it is asked to take it: the arrow
// keys, also with Alt, move it then, Home and End bring it to its ends, and Enter and Escape lead back to where the
// keyboard was.
class SplitterBar final : public QSplitterHandle {
  Q_OBJECT

 public:
  SplitterBar(Qt::Orientation orientation, QSplitter* parent);

  // `before`: where the keyboard goes back to; may be nullptr.
  void TakeKeyboard(QWidget* before);
  void GiveKeyboardBack();
  QWidget* Before() const { return before_; }

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Retranslate();
  void Move(int by);

  QPointer<QWidget> before_;
};

}  // namespace qmrules::desktop
