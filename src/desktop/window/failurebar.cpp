#include "desktop/window/failurebar.h"

#include <QAccessible>
#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QToolButton>

namespace qmrules::desktop {

namespace {

// The oldest go first, so that a failure that repeats itself does not fill the memory.
constexpr qsizetype kMostTexts = 100;

}  // namespace

FailureBar::FailureBar(QWidget* parent)
    : QFrame(parent),
      icon_(new QLabel(this)),
      text_(new QLabel(this)),
      copy_(new QToolButton(this)),
      close_(new QToolButton(this)) {
  setObjectName("failureBar");
  setFrameShape(QFrame::StyledPanel);
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::ToolTipBase);
  setForegroundRole(QPalette::ToolTipText);
  auto* const layout = new QHBoxLayout(this);
  layout->setContentsMargins(8, 4, 4, 4);
  layout->addWidget(icon_);
  layout->addWidget(text_, 1);
  layout->addWidget(copy_);
  layout->addWidget(close_);
  RenewPicture();
  text_->setTextFormat(Qt::PlainText);
  text_->setWordWrap(true);
  text_->setForegroundRole(QPalette::ToolTipText);
  text_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  for (auto* const button : {copy_, close_}) {
    button->setAutoRaise(true);
    button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setForegroundRole(QPalette::ToolTipText);
  }
  connect(copy_, &QToolButton::clicked, this, [this] { QGuiApplication::clipboard()->setText(texts_.join("\n\n")); });
  connect(close_, &QToolButton::clicked, this, &FailureBar::Close);
  Retranslate();
  hide();
}

void FailureBar::Retranslate() {
  copy_->setText(tr("Copy"));
  close_->setText(tr("Close"));
  close_->setToolTip(tr("Close this notice"));
  setAccessibleName(tr("Failure"));
  ShowTexts();
}

void FailureBar::RenewPicture() {
  const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
  icon_->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(size, size));
}

void FailureBar::changeEvent(QEvent* event) {
  QFrame::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) RenewPicture();
  if (event->type() == QEvent::LanguageChange) Retranslate();
}

void FailureBar::Tell(const QString& text) {
  if (texts_.size() == kMostTexts) texts_.removeFirst();
  texts_.append(text);
  ShowTexts();
  show();
  QAccessibleEvent alert(text_, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

void FailureBar::Close() {
  texts_.clear();
  hide();
}

void FailureBar::ShowTexts() {
  if (texts_.isEmpty()) return;
  const auto earlier = texts_.size() - 1;
  text_->setText(earlier == 0 ? texts_.last() : tr("%1 (and %2 earlier)").arg(texts_.last()).arg(earlier));
}

}  // namespace qmrules::desktop
