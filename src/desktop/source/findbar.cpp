#include "desktop/source/findbar.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <algorithm>

#include "desktop/source/codetext.h"

namespace qmrules::desktop {

FindBar::FindBar(CodeText& text, QWidget* parent) : QWidget(parent), text_(text) {
  setObjectName(QStringLiteral("findBar"));
  LayOut();
  Retranslate();
  connect(pattern_, &QLineEdit::textChanged, this, &FindBar::TakePattern);
  connect(matchCase_, &QCheckBox::toggled, this, &FindBar::TakePattern);
  connect(wholeWord_, &QCheckBox::toggled, this, &FindBar::TakePattern);
  connect(previous_, &QToolButton::clicked, this, &FindBar::FindPrevious);
  connect(next_, &QToolButton::clicked, this, &FindBar::FindNext);
  connect(close_, &QToolButton::clicked, this, &FindBar::Close);
}

void FindBar::LayOut() {
  label_ = new QLabel(this);
  pattern_ = new QLineEdit(this);
  pattern_->setObjectName(QStringLiteral("findPattern"));
  pattern_->setClearButtonEnabled(true);
  label_->setBuddy(pattern_);
  matchCase_ = new QCheckBox(this);
  matchCase_->setObjectName(QStringLiteral("matchCase"));
  wholeWord_ = new QCheckBox(this);
  wholeWord_->setObjectName(QStringLiteral("wholeWord"));
  previous_ = new QToolButton(this);
  next_ = new QToolButton(this);
  close_ = new QToolButton(this);
  for (QToolButton* button : {previous_, next_, close_}) {
    button->setFocusPolicy(Qt::StrongFocus);
    button->setAutoRaise(true);
  }
  previous_->setArrowType(Qt::UpArrow);
  next_->setArrowType(Qt::DownArrow);
  close_->setText(QStringLiteral("\u2715"));
  count_ = new QLabel(this);
  count_->setObjectName(QStringLiteral("findCount"));
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(6, 2, 6, 2);
  row->addWidget(label_);
  row->addWidget(pattern_, 2);
  row->addWidget(previous_);
  row->addWidget(next_);
  row->addWidget(matchCase_);
  row->addWidget(wholeWord_);
  row->addWidget(count_, 1);
  row->addWidget(close_);
}

void FindBar::Retranslate() {
  label_->setText(tr("&Find:"));
  pattern_->setAccessibleName(tr("Text to find"));
  matchCase_->setText(tr("Match &case"));
  wholeWord_->setText(tr("&Whole word"));
  previous_->setToolTip(tr("Previous match (Shift+F3)"));
  previous_->setAccessibleName(tr("Previous match"));
  next_->setToolTip(tr("Next match (F3)"));
  next_->setAccessibleName(tr("Next match"));
  close_->setToolTip(tr("Close (Esc)"));
  close_->setAccessibleName(tr("Close"));
  count_->setAccessibleName(tr("Matches"));
}

void FindBar::Open() {
  const QTextCursor cursor = text_.textCursor();
  origin_ = cursor.selectionStart();
  const QString selected = cursor.selectedText();
  show();
  if (!selected.isEmpty() && !selected.contains(QChar::ParagraphSeparator) && !text_.HoldsRow(text_.CaretRow())) {
    pattern_->setText(selected);
  }
  TakePattern();
  pattern_->setFocus(Qt::ShortcutFocusReason);
  pattern_->selectAll();
}

void FindBar::Close() {
  hide();
  text_.SetMatches({}, 0);
  text_.setFocus(Qt::OtherFocusReason);
}

void FindBar::TakeSource() {
  origin_ = 0;
  isSearched_ = false;
  if (isHidden()) return;
  Search();
  ShowCount();
}

void FindBar::Search() {
  matches_ = FindMatches(text_.Source(), pattern_->text(), {matchCase_->isChecked(), wholeWord_->isChecked()});
  isSearched_ = true;
  text_.SetMatches(matches_, static_cast<int>(pattern_->text().size()));
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
  if (pattern_->text().isEmpty()) {
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
  text_.SelectPlace(matches_[index], static_cast<int>(pattern_->text().size()));
  const QString place = tr("%1 of %2").arg(index + 1).arg(matches_.size());
  count_->setText(notice.isEmpty() ? place : place + QStringLiteral(", ") + notice);
}

void FindBar::ShowCount() {
  if (pattern_->text().isEmpty()) {
    count_->clear();
  } else {
    count_->setText(matches_.empty() ? tr("No match") : tr("%1 matches").arg(matches_.size()));
  }
}

void FindBar::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if ((event->modifiers() & Qt::ShiftModifier) != 0) {
        FindPrevious();
      } else {
        FindNext();
      }
      break;
    case Qt::Key_Escape:
      Close();
      break;
    default:
      QWidget::keyPressEvent(event);
      break;
  }
}

void FindBar::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::LanguageChange) Retranslate();
}

}  // namespace qmrules::desktop
