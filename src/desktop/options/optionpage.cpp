#include "desktop/options/optionpage.h"

#include <QLabel>
#include <QVBoxLayout>

#include "desktop/options/optionrow.h"

namespace qmrules::desktop {

namespace {

constexpr int kMargin = 20;
constexpr int kBetweenOptions = 20;
constexpr double kHeadlineScale = 1.3;

}  // namespace

OptionPage::OptionPage(const OptionSpec& first, QWidget* parent) : QScrollArea(parent) {
  auto* const content = new QWidget(this);
  layout_ = new QVBoxLayout(content);
  layout_->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  layout_->setSpacing(kBetweenOptions);
  auto* const headline = new QLabel(OptionText(first.page->caption), content);
  QFont font = headline->font();
  font.setPointSizeF(font.pointSizeF() * kHeadlineScale);
  font.setWeight(QFont::DemiBold);
  headline->setFont(font);
  auto* const scope = new QLabel(first.scope == OptionScope::Project ? tr("Options of this project")
                                                                     : tr("Options of the workspace, for all projects"),
                                 content);
  auto* const head = new QVBoxLayout;
  head->setSpacing(2);
  head->addWidget(headline);
  head->addWidget(scope);
  layout_->addLayout(head);
  layout_->addStretch();
  setWidget(content);
  setWidgetResizable(true);
  setFrameShape(QFrame::NoFrame);
  setAccessibleName(OptionText(first.page->caption));
  setFocusPolicy(Qt::NoFocus);
}

OptionRow& OptionPage::Add(const OptionSpec& option, const QString& sourceFolder) {
  auto* const row = new OptionRow(option, sourceFolder, widget());
  layout_->insertWidget(layout_->count() - 1, row);
  rows_.push_back(row);
  return *row;
}

bool OptionPage::Filter(const QString& text) {
  bool found = false;
  for (OptionRow* const row : rows_) {
    const bool matches = row->Matches(text);
    row->setVisible(matches);
    found = found || matches;
  }
  return found;
}

void OptionPage::ScrollTo(OptionRow& row) {
  ensureWidgetVisible(&row);
}

}  // namespace qmrules::desktop
