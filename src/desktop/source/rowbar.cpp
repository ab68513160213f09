#include "desktop/source/rowbar.h"

#include <QLabel>
#include <QLineEdit>
#include <QRegularExpressionValidator>

#include "desktop/source/codetext.h"
#include "desktop/source/namedtext.h"

namespace qmrules::desktop {

RowBar::RowBar(CodeText& text, QWidget* parent) : TextBar(text, parent) {
  setObjectName(QStringLiteral("rowBar"));
  field_->setObjectName(QStringLiteral("rowNumber"));
  field_->setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]{0,9}")), field_));
  field_->setMaximumWidth(field_->fontMetrics().horizontalAdvance(QLatin1Char('9')) * 14);
  told_->setObjectName(QStringLiteral("rowCount"));
  GiveRoomToField(false);
  RowBar::Retranslate();
  connect(field_, &QLineEdit::textEdited, this, &RowBar::ShowRows);
}

void RowBar::Retranslate() {
  TextBar::Retranslate();
  label_->setText(tr("&Go to row:"));
  field_->setAccessibleName(tr("Row number"));
  told_->SetName(tr("Rows"));
  ShowRows();
}

void RowBar::ShowRows() {
  told_->Show(tr("of %1").arg(text_.Rows()));
}

void RowBar::Open() {
  ShowRows();
  field_->setText(QString::number(text_.CaretRow()));
  TakeKeyboard();
}

void RowBar::Act(bool /*withShift*/) {
  const int row = field_->text().toInt();
  if (row < 1 || row > text_.Rows()) {
    told_->Show(tr("Rows go from 1 to %1.").arg(text_.Rows()));
    field_->selectAll();
    return;
  }
  text_.MoveCaret(row);
  Close();
}

}  // namespace qmrules::desktop
