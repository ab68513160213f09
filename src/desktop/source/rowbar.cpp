#include "desktop/source/rowbar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpressionValidator>
#include <QToolButton>

#include "desktop/source/codetext.h"

namespace qmrules::desktop {

RowBar::RowBar(CodeText& text, QWidget* parent)
    : QWidget(parent),
      text_(text),
      label_(new QLabel(this)),
      row_(new QLineEdit(this)),
      rows_(new QLabel(this)),
      close_(new QToolButton(this)) {
  setObjectName(QStringLiteral("rowBar"));
  row_->setObjectName(QStringLiteral("rowNumber"));
  row_->setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]{0,9}")), row_));
  row_->setMaximumWidth(row_->fontMetrics().horizontalAdvance(QLatin1Char('9')) * 14);
  rows_->setObjectName(QStringLiteral("rowCount"));
  label_->setBuddy(row_);
  close_->setText(QStringLiteral("\u2715"));
  close_->setAutoRaise(true);
  close_->setFocusPolicy(Qt::StrongFocus);
  auto* const line = new QHBoxLayout(this);
  line->setContentsMargins(6, 2, 6, 2);
  line->addWidget(label_);
  line->addWidget(row_);
  line->addWidget(rows_, 1);
  line->addWidget(close_);
  Retranslate();
  connect(row_, &QLineEdit::textEdited, this, &RowBar::ShowRows);
  connect(close_, &QToolButton::clicked, this, &RowBar::Close);
}

void RowBar::Retranslate() {
  label_->setText(tr("&Go to row:"));
  row_->setAccessibleName(tr("Row number"));
  close_->setToolTip(tr("Close (Esc)"));
  close_->setAccessibleName(tr("Close"));
  ShowRows();
}

void RowBar::ShowRows() {
  rows_->setText(tr("of %1").arg(text_.Rows()));
}

void RowBar::Open() {
  ShowRows();
  row_->setText(QString::number(text_.CaretRow()));
  show();
  row_->setFocus(Qt::ShortcutFocusReason);
  row_->selectAll();
}

void RowBar::Close() {
  hide();
  text_.setFocus(Qt::OtherFocusReason);
}

void RowBar::Go() {
  const int row = row_->text().toInt();
  if (row < 1 || row > text_.Rows()) {
    rows_->setText(tr("Rows go from 1 to %1.").arg(text_.Rows()));
    row_->selectAll();
    return;
  }
  text_.MoveCaret(row);
  Close();
}

void RowBar::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Go();
      break;
    case Qt::Key_Escape:
      Close();
      break;
    default:
      QWidget::keyPressEvent(event);
      break;
  }
}

void RowBar::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::LanguageChange) Retranslate();
}

}  // namespace qmrules::desktop
