#pragma once

#include <QWidget>

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QToolButton;

namespace qmrules::desktop {

class CodeText;
class NamedText;

// What the fields below the source have in common: a caption with its field, a text that tells what came of it, and a
// button to close. Enter acts, Escape closes; the focus goes back to the source then.
class TextBar : public QWidget {
  Q_OBJECT

 public:
  TextBar(CodeText& text, QWidget* parent);
  virtual void Close();

 protected:
  // Enter was pressed.
  virtual void Act(bool withShift) = 0;
  // Puts all texts anew in the language of the user. Each bar calls it once it has been made.
  virtual void Retranslate();

  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;

  // Shows the bar, with the keyboard in the field and its text selected.
  void TakeKeyboard();
  // A button that shows a sign, and takes the focus by Tab.
  QToolButton* MakeButton();
  // Between the field and the text.
  void Insert(QWidget* part);
  // The field takes what the parts leave, and the text only what it needs, or the other way round.
  void GiveRoomToField(bool toField);

  CodeText& text_;
  QLabel* label_;
  QLineEdit* field_;
  NamedText* told_;

 private:
  QToolButton* close_;
  QHBoxLayout* line_;
};

}  // namespace qmrules::desktop
