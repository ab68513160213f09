#pragma once

#include <vector>

#include "desktop/source/matches.h"
#include "desktop/source/textbar.h"

class QCheckBox;

namespace qmrules::desktop {

// Finding in the text: the first match is shown while the pattern is typed, Enter and Shift+Enter go on to the next one
// and the one before, round the ends of the text with a notice.
class FindBar final : public TextBar {
  Q_OBJECT

 public:
  explicit FindBar(CodeText& text, QWidget* parent = nullptr);

  // Opens the bar with the selected text, where that is a piece of one row, as the pattern.
  void Open();
  void Close() override;
  // Opens the bar when there is no pattern.
  void FindNext();
  void FindPrevious();
  // The text is another one.
  void TakeSource();

 protected:
  void Act(bool withShift) override;
  void Retranslate() override;

 private:
  void LayOut();
  void TakePattern();
  void Search();
  bool IsReady();
  void Show(std::size_t index, const QString& notice);
  void ShowCount();

  std::vector<int> matches_;
  bool isSearched_ = false;  // the matches are those of the text and the pattern
  int origin_ = 0;           // where finding began
  QCheckBox* matchCase_ = nullptr;
  QCheckBox* wholeWord_ = nullptr;
  QToolButton* previous_ = nullptr;
  QToolButton* next_ = nullptr;
};

}  // namespace qmrules::desktop
