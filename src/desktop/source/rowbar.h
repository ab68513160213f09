#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QToolButton;

namespace qmrules::desktop {

class CodeText;

// The field for going to a row. Enter goes there and closes it; a row that the text does not have is told. Escape
// closes it.
class RowBar final : public QWidget {
  Q_OBJECT

 public:
  explicit RowBar(CodeText& text, QWidget* parent = nullptr);
  void Open();
  void Close();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Retranslate();
  void ShowRows();
  void Go();

  CodeText& text_;
  QLabel* label_;
  QLineEdit* row_;
  QLabel* rows_;
  QToolButton* close_;
};

}  // namespace qmrules::desktop
