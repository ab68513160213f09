#include "desktop/source/findbar.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <algorithm>

#include "desktop/source/codetext.h"
#include "desktop/source/namedtext.h"

namespace qmrules::desktop {

FindBar::FindBar(CodeText& text, QWidget* parent) : TextBar(text, parent) {
  setObjectName(QStringLiteral("findBar"));
  LayOut();
  FindBar::Retranslate();
  connect(field_, &QLineEdit::textChanged, this, &FindBar::TakePattern);
  connect(matchCase_, &QCheckBox::toggled, this, &FindBar::TakePattern);
  connect(wholeWord_, &QCheckBox::toggled, this, &FindBar::TakePattern);
  connect(previous_, &QToolButton::clicked, this, &FindBar::FindPrevious);
  connect(next_, &QToolButton::clicked, this, &FindBar::FindNext);
}

void FindBar::LayOut() {
  field_->setObjectName(QStringLiteral("findPattern"));
  field_->setClearButtonEnabled(true);
  told_->setObjectName(QStringLiteral("findCount"));
  previous_ = MakeButton();
  previous_->setArrowType(Qt::UpArrow);
  next_ = MakeButton();
  next_->setArrowType(Qt::DownArrow);
  matchCase_ = new QCheckBox(this);
  matchCase_->setObjectName(QStringLiteral("matchCase"));
  wholeWord_ = new QCheckBox(this);
  wholeWord_->setObjectName(QStringLiteral("wholeWord"));
  for (QWidget* const part : {static_cast<QWidget*>(previous_), static_cast<QWidget*>(next_),
                              static_cast<QWidget*>(matchCase_), static_cast<QWidget*>(wholeWord_)}) {
    Insert(part);
  }
  GiveRoomToField(true);
}

void FindBar::Retranslate() {
  TextBar::Retranslate();
  label_->setText(tr("&Find:"));
  field_->setAccessibleName(tr("Text to find"));
  matchCase_->setText(tr("Match &case"));
  wholeWord_->setText(tr("&Whole word"));
  previous_->setToolTip(tr("Previous match (Shift+F3)"));
  previous_->setAccessibleName(tr("Previous match"));
  next_->setToolTip(tr("Next match (F3)"));
  next_->setAccessibleName(tr("Next match"));
  told_->SetName(tr("Matches"));
}

void FindBar::Open() {
  const QTextCursor cursor = text_.textCursor();
  origin_ = cursor.selectionStart();
  const QString selected = cursor.selectedText();
  show();
  if (!selected.isEmpty() && !selected.contains(QChar::ParagraphSeparator) && !text_.HoldsRow(text_.CaretRow())) {
    field_->setText(selected);
  }
  TakePattern();
  TakeKeyboard();
}

void FindBar::Close() {
  text_.SetMatches({}, 0);
  TextBar::Close();
}

void FindBar::TakeSource() {
  origin_ = 0;
  isSearched_ = false;
  if (isHidden()) return;
  Search();
  ShowCount();
}

void FindBar::Search() {
  matches_ = FindMatches(text_.Source(), field_->text(), {matchCase_->isChecked(), wholeWord_->isChecked()});
  isSearched_ = true;
  text_.SetMatches(matches_, static_cast<int>(field_->text().size()));
}

// Shows the first match from where finding began.
void FindBar::TakePattern() {
  isSearched_ = false;
  if (isHidden()) return;
  Search();
  const auto first = std::lower_bound(matches_.begin(), matches_.end(), origin_);
  if (matches_.empty()) {
    ShowCount();
  } else if (first == matches_.end()) {
    Show(0, tr("continued at the beginning"));
  } else {
    Show(static_cast<std::size_t>(first - matches_.begin()), {});
  }
}

// False, with the bar open for a pattern or telling that there is no match, where there is none to go to.
bool FindBar::IsReady() {
  if (field_->text().isEmpty()) {
    Open();
    return false;
  }
  show();
  if (!isSearched_) Search();
  if (matches_.empty()) ShowCount();
  return !matches_.empty();
}

void FindBar::FindNext() {
  if (!IsReady()) return;
  const auto next = std::lower_bound(matches_.begin(), matches_.end(), text_.textCursor().selectionEnd());
  if (next == matches_.end()) {
    Show(0, tr("continued at the beginning"));
  } else {
    Show(static_cast<std::size_t>(next - matches_.begin()), {});
  }
}

void FindBar::FindPrevious() {
  if (!IsReady()) return;
  const auto behind = std::lower_bound(matches_.begin(), matches_.end(), text_.textCursor().selectionStart());
  if (behind == matches_.begin()) {
    Show(matches_.size() - 1, tr("continued at the end"));
  } else {
    Show(static_cast<std::size_t>(behind - matches_.begin()) - 1, {});
  }
}

void FindBar::Show(std::size_t index, const QString& notice) {
  text_.SelectPlace(matches_[index], static_cast<int>(field_->text().size()));
  const QString place = tr("%1 of %2").arg(index + 1).arg(matches_.size());
  told_->Show(notice.isEmpty() ? place : place + QStringLiteral(", ") + notice);
}

void FindBar::ShowCount() {
  if (field_->text().isEmpty()) {
    told_->Show({});
  } else {
    told_->Show(matches_.empty() ? tr("No match") : tr("%1 matches").arg(matches_.size()));
  }
}

void FindBar::Act(bool withShift) {
  if (withShift) {
    FindPrevious();
  } else {
    FindNext();
  }
}

}  // namespace qmrules::desktop
