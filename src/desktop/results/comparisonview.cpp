#include "desktop/results/comparisonview.h"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "desktop/icons/iconset.h"
#include "desktop/results/comparisonpane.h"
#include "desktop/results/findingtexts.h"

namespace qmrules::desktop {

using validation::Verdict;

namespace {

QLabel* MakeLabel(const char* name, QWidget* parent) {
  auto* const label = new QLabel(parent);
  label->setObjectName(QString::fromLatin1(name));
  label->setTextFormat(Qt::PlainText);
  return label;
}

QToolButton* MakeButton(const char* name, QWidget* parent) {
  auto* const button = new QToolButton(parent);
  button->setObjectName(QString::fromLatin1(name));
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::StrongFocus);
  return button;
}

}  // namespace

ComparisonView::ComparisonView(QWidget* parent)
    : QWidget(parent),
      meaning_(MakeLabel("findingMeaning", this)),
      step_(MakeLabel("placeNumber", this)),
      previous_(MakeButton("previousPlace", this)),
      next_(MakeButton("nextPlace", this)),
      tree_(MakeButton("showInTree", this)),
      storedCaption_(MakeLabel("storedCaption", this)),
      placeCaption_(MakeLabel("placeCaption", this)),
      differing_(MakeLabel("differingLines", this)),
      stored_(new ComparisonPane(ComparisonPane::Side::Left, this)),
      shown_(new ComparisonPane(ComparisonPane::Side::Right, this)) {
  LayOut();
  connect(previous_, &QToolButton::clicked, this, [this] { Step(-1); });
  connect(next_, &QToolButton::clicked, this, [this] { Step(1); });
  connect(tree_, &QToolButton::clicked, this, &ComparisonView::TreeRequested);
  Join(stored_->verticalScrollBar(), shown_->verticalScrollBar());
  Join(stored_->horizontalScrollBar(), shown_->horizontalScrollBar());
  Retranslate();
  Clear();
}

void ComparisonView::LayOut() {
  stored_->setObjectName("storedText");
  shown_->setObjectName("placeText");
  meaning_->setWordWrap(true);
  auto* const head = new QHBoxLayout;
  head->addWidget(meaning_, 1);
  for (auto* const button : {previous_, next_}) button->setToolButtonStyle(Qt::ToolButtonIconOnly);
  head->addWidget(previous_);
  head->addWidget(step_);
  head->addWidget(next_);
  head->addWidget(tree_);
  auto* const texts = new QGridLayout;
  texts->addWidget(storedCaption_, 0, 0);
  texts->addWidget(placeCaption_, 0, 1);
  texts->addWidget(stored_, 1, 0);
  texts->addWidget(shown_, 1, 1);
  texts->setRowStretch(1, 1);
  for (const int column : {0, 1}) texts->setColumnStretch(column, 1);
  for (auto* const caption : {storedCaption_, placeCaption_}) {
    // A long name does not push the texts apart.
    caption->setMinimumWidth(1);
    caption->setWordWrap(true);
  }
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(4, 4, 4, 4);
  layout->setSpacing(4);
  layout->addLayout(head);
  layout->addLayout(texts, 1);
  layout->addWidget(differing_);
}

// The bars of both sides move together. One that cannot go as far does not pull the other back.
void ComparisonView::Join(QScrollBar* left, QScrollBar* right) {
  const auto follow = [this](QScrollBar* leader, QScrollBar* follower) {
    connect(leader, &QScrollBar::valueChanged, this, [this, follower](int value) {
      if (isFollowing_) return;
      isFollowing_ = true;
      follower->setValue(value);
      isFollowing_ = false;
    });
  };
  follow(left, right);
  follow(right, left);
}

void ComparisonView::Retranslate() {
  const IconSet icons(palette());
  previous_->setIcon(icons.Icon("Previous"));
  next_->setIcon(icons.Icon("Next"));
  tree_->setIcon(icons.Icon("RULE"));
  previous_->setToolTip(tr("Previous place"));
  next_->setToolTip(tr("Next place"));
  tree_->setToolTip(tr("Show the rule in the tree"));
  for (auto* const button : {previous_, next_, tree_}) button->setAccessibleName(button->toolTip());
  stored_->setAccessibleName(tr("Stored text"));
  shown_->setAccessibleName(tr("Text in the file"));
  ShowTexts();
}

void ComparisonView::Clear() {
  finding_ = nullptr;
  file_.reset();
  places_.clear();
  ShowPlace();
}

void ComparisonView::Show(const validation::RuleFinding& finding, const SourceReader& read) {
  finding_ = &finding;
  file_ = finding.verdict == Verdict::NoSegment ? std::nullopt : read(finding.fileName);
  places_ = file_ ? PlacesOf(finding, *file_) : std::vector<validation::FindingPlace>();
  place_ = FirstPlaceShown(places_);
  ShowPlace();
}

void ComparisonView::Step(int places) {
  const auto next = static_cast<qsizetype>(place_) + places;
  if (next < 0 || next >= static_cast<qsizetype>(places_.size())) return;
  place_ = static_cast<std::size_t>(next);
  ShowPlace();
}

void ComparisonView::ShowPlace() {
  comparison_.reset();
  if (finding_ != nullptr) {
    const auto rows = places_.empty() ? finding_->rows : places_[place_].rows;
    comparison_ = std::make_shared<validation::Comparison>(CompareWithPlace(*finding_, file_, rows));
  }
  stored_->Show(comparison_);
  shown_->Show(comparison_);
  GoToFirstDifference();
  ShowTexts();
}

void ComparisonView::GoToFirstDifference() {
  if (!comparison_ || comparison_->differing == 0) return;
  const auto& lines = comparison_->lines;
  const auto first = std::ranges::find_if(
      lines, [](const validation::ComparedLine& line) { return line.kind != validation::LinePairKind::Same; });
  for (auto* const pane : {stored_, shown_}) pane->GoTo(static_cast<int>(first - lines.begin()));
}

void ComparisonView::ShowTexts() {
  const bool hasSteps = places_.size() > 1;
  for (QWidget* const widget :
       {static_cast<QWidget*>(previous_), static_cast<QWidget*>(next_), static_cast<QWidget*>(step_)}) {
    widget->setVisible(hasSteps);
  }
  previous_->setEnabled(place_ > 0);
  next_->setEnabled(place_ + 1 < places_.size());
  step_->setText(tr("%1 of %2").arg(place_ + 1).arg(places_.size()));
  tree_->setEnabled(finding_ != nullptr);
  if (finding_ == nullptr) {
    for (auto* const label : {storedCaption_, placeCaption_, differing_}) label->clear();
    meaning_->setText(tr("Choose a rule to compare its text with the file."));
    return;
  }
  meaning_->setText(
      QString("%1: %2").arg(QString::fromStdString(finding_->ruleName), VerdictMeaning(finding_->verdict)));
  storedCaption_->setText(StoredCaption(*finding_));
  const bool isUnread = places_.empty() && finding_->verdict != Verdict::NoSegment;
  placeCaption_->setText(!places_.empty() ? PlaceCaption(*finding_, places_[place_])
                         : isUnread       ? tr("%1 cannot be read.").arg(QString::fromStdString(finding_->fileName))
                                          : QString());
  const auto lines = comparison_->lines.size();
  QString differing = lines == 0 || isUnread ? QString()
                      : comparison_->differing == 0
                          ? tr("No line differs.")
                          : tr("Lines that differ: %1 of %2.").arg(comparison_->differing).arg(lines);
  if (comparison_->isCut)
    differing += ' ' + tr("Only the first %1 lines are shown.").arg(validation::kMostLinesCompared);
  differing_->setText(differing);
  shown_->setAccessibleDescription(placeCaption_->text() + ' ' + differing);
  stored_->setAccessibleDescription(storedCaption_->text());
}

void ComparisonView::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::LanguageChange || event->type() == QEvent::PaletteChange) Retranslate();
}

}  // namespace qmrules::desktop
