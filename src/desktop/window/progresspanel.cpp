#include "desktop/window/progresspanel.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QToolButton>
#include <algorithm>

#include "desktop/views/qttext.h"

namespace qmrules::desktop {

namespace {

constexpr qint64 kBetweenPaints = 40;       // milliseconds
constexpr qint64 kBetweenQuietPaints = 80;  // where nothing moves
constexpr int kBarWidth = 160;
constexpr int kTextWidth = 320;

}  // namespace

ProgressPanel::ProgressPanel(QWidget* parent)
    : QWidget(parent),
      gate_(*this, [this] { RequestCancel(); }),
      text_(new QLabel(this)),
      bar_(new QProgressBar(this)),
      cancel_(new QToolButton(this)) {
  auto* const layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(text_);
  layout->addWidget(bar_);
  layout->addWidget(cancel_);
  text_->setTextFormat(Qt::PlainText);
  text_->setMaximumWidth(kTextWidth);
  bar_->setFixedWidth(kBarWidth);
  bar_->setMaximumHeight(text_->sizeHint().height());
  bar_->setTextVisible(false);
  // Taking the focus would be leaving a field, which has a meaning of its own.
  cancel_->setFocusPolicy(Qt::NoFocus);
  cancel_->setToolButtonStyle(Qt::ToolButtonTextOnly);
  cancel_->setAutoRaise(true);
  connect(cancel_, &QToolButton::clicked, this, [this] { RequestCancel(); });
  Retranslate();
  hide();
}

void ProgressPanel::Retranslate() {
  cancel_->setText(tr("Cancel"));
  cancel_->setToolTip(tr("Stop this work (Esc)"));
  bar_->setAccessibleName(tr("Progress"));
}

void ProgressPanel::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::LanguageChange) Retranslate();
}

void ProgressPanel::RequestCancel() {
  if (works_.empty() || !works_.back().canCancel) return;
  works_.back().cancelled = true;
  cancel_->setEnabled(false);
}

void ProgressPanel::ShowWork() {
  const Work& work = works_.back();
  text_->setText(text_->fontMetrics().elidedText(work.text, Qt::ElideMiddle, kTextWidth));
  // Without a total the bar only tells that something goes on.
  bar_->setRange(0, std::max(work.total, 0));
  bar_->setValue(std::clamp(work.done, 0, std::max(work.total, 0)));
  cancel_->setVisible(work.canCancel);
  cancel_->setEnabled(work.canCancel && !work.cancelled);
}

void ProgressPanel::PaintNowAndThen() {
  const qint64 between = works_.empty() ? kBetweenQuietPaints : kBetweenPaints;
  if (sincePainted_.isValid() && sincePainted_.elapsed() < between) return;
  if (works_.empty()) {
    gate_.LetPaintOnly();
  } else {
    gate_.LetPaint();
  }
  sincePainted_.start();
}

void ProgressPanel::StartProgress(std::string_view text, int total, bool canCancel) {
  works_.push_back({.text = ToQt(text), .total = total, .canCancel = canCancel});
  ShowWork();
  show();
  sincePainted_.invalidate();
  PaintNowAndThen();
}

void ProgressPanel::StartStep(std::string_view text) {
  if (works_.empty()) return;
  works_.back().text = ToQt(text);
  if (!sincePainted_.isValid() || sincePainted_.elapsed() >= kBetweenPaints) ShowWork();
  PaintNowAndThen();
}

void ProgressPanel::FinishStep(int amount) {
  if (works_.empty()) return;
  works_.back().done += amount;
  if (!sincePainted_.isValid() || sincePainted_.elapsed() >= kBetweenPaints) ShowWork();
  PaintNowAndThen();
}

void ProgressPanel::FinishProgress() {
  if (works_.empty()) return;
  // What was typed and clicked since the last look was meant for a window that was busy.
  gate_.LetPaint();
  works_.pop_back();
  if (works_.empty()) {
    hide();
  } else {
    ShowWork();
  }
}

bool ProgressPanel::Cancelled() {
  PaintNowAndThen();
  return !works_.empty() && works_.back().cancelled;
}

}  // namespace qmrules::desktop
