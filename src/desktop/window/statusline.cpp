#include "desktop/window/statusline.h"

#include <QCoreApplication>
#include <QLabel>
#include <QLocale>
#include <QStatusBar>

namespace qmrules::desktop {

namespace {

struct StatusTexts {
  Q_DECLARE_TR_FUNCTIONS(StatusLine)
};

QLabel* AddField(QStatusBar& bar) {
  auto* const label = new QLabel(&bar);
  label->setTextFormat(Qt::PlainText);
  label->setContentsMargins(6, 0, 6, 0);
  bar.addPermanentWidget(label);
  label->hide();
  return label;
}

void ShowText(QLabel& label, const QString& text) {
  label.setText(text);
  label.setVisible(!text.isEmpty());
}

}  // namespace

StatusLine::StatusLine(QStatusBar& bar) : source_(AddField(bar)), counts_(AddField(bar)) {
  source_->setObjectName("statusSource");
  counts_->setObjectName("statusCounts");
}

void StatusLine::ShowSource(const std::optional<Source>& source) {
  if (!source) {
    ShowText(*source_, {});
  } else if (source->program.isEmpty()) {
    ShowText(*source_, source->file);
  } else {
    ShowText(*source_, QString("%1 · %2").arg(source->program, source->file));
  }
}

void StatusLine::ShowCounts(const std::optional<Counts>& counts) {
  if (!counts) {
    ShowText(*counts_, {});
    return;
  }
  const QLocale locale;
  const QString rules = locale.toString(counts->rules) + (counts->areWhole ? QString() : QString("+"));
  ShowText(*counts_, StatusTexts::tr("Programs: %1  Rules: %2").arg(locale.toString(counts->programs), rules));
}

}  // namespace qmrules::desktop
