#include "desktop/source/textbar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

#include "desktop/source/codetext.h"
#include "desktop/source/namedtext.h"

namespace qmrules::desktop {

namespace {

constexpr int kField = 1;  // its place in the line

}  // namespace

TextBar::TextBar(CodeText& text, QWidget* parent)
    : QWidget(parent),
      text_(text),
      label_(new QLabel(this)),
      field_(new QLineEdit(this)),
      told_(new NamedText(this)),
      close_(MakeButton()),
      line_(new QHBoxLayout(this)) {
  label_->setBuddy(field_);
  close_->setText(QStringLiteral("\u2715"));
  line_->setContentsMargins(6, 2, 6, 2);
  for (QWidget* const part : {static_cast<QWidget*>(label_), static_cast<QWidget*>(field_),
                              static_cast<QWidget*>(told_), static_cast<QWidget*>(close_)}) {
    line_->addWidget(part);
  }
  connect(close_, &QToolButton::clicked, this, &TextBar::Close);
}

QToolButton* TextBar::MakeButton() {
  auto* const button = new QToolButton(this);
  button->setFocusPolicy(Qt::StrongFocus);
  button->setAutoRaise(true);
  return button;
}

void TextBar::Insert(QWidget* part) {
  const int place = line_->indexOf(told_);
  setTabOrder(line_->itemAt(place - 1)->widget(), part);
  setTabOrder(part, close_);
  line_->insertWidget(place, part);
}

void TextBar::GiveRoomToField(bool toField) {
  line_->setStretch(kField, toField ? 2 : 0);
  line_->setStretch(line_->indexOf(told_), 1);
}

void TextBar::Retranslate() {
  close_->setToolTip(tr("Close (Esc)"));
  close_->setAccessibleName(tr("Close"));
}

void TextBar::TakeKeyboard() {
  show();
  field_->setFocus(Qt::ShortcutFocusReason);
  field_->selectAll();
}

void TextBar::Close() {
  hide();
  text_.setFocus(Qt::OtherFocusReason);
}

void TextBar::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Act(event->modifiers().testFlag(Qt::ShiftModifier));
      break;
    case Qt::Key_Escape:
      Close();
      break;
    default:
      QWidget::keyPressEvent(event);
      break;
  }
}

void TextBar::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::LanguageChange) Retranslate();
}

}  // namespace qmrules::desktop
