#pragma once

#include <QWidget>
#include <vector>

#include "desktop/source/matches.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QToolButton;

namespace qmrules::desktop {

class CodeText;

// Finding in the text: the first match is shown while the pattern is typed, Enter and Shift+Enter go on to the next one
// and the one before, round the ends of the text with a notice. Escape closes the bar.
class FindBar final : public QWidget {
  Q_OBJECT

 public:
  explicit FindBar(CodeText& text, QWidget* parent = nullptr);

  // Opens the bar with the selected text, where that is a piece of one row, as the pattern.
  void Open();
  void Close();
  // Opens the bar when there is no pattern.
  void FindNext();
  void FindPrevious();
  // The text is another one.
  void TakeSource();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void LayOut();
  void Retranslate();
  void TakePattern();
  void Search();
  bool IsReady();
  void Show(std::size_t index, const QString& notice);
  void ShowCount();

  CodeText& text_;
  std::vector<int> matches_;
  bool isSearched_ = false;  // the matches are those of the text and the pattern
  int origin_ = 0;           // where finding began
  QLabel* label_ = nullptr;
  QLineEdit* pattern_ = nullptr;
  QCheckBox* matchCase_ = nullptr;
  QCheckBox* wholeWord_ = nullptr;
  QToolButton* previous_ = nullptr;
  QToolButton* next_ = nullptr;
  QLabel* count_ = nullptr;
  QToolButton* close_ = nullptr;
};

}  // namespace qmrules::desktop
