#include "desktop/window/startpage.h"

#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/icons/iconset.h"

namespace qmrules::desktop {

namespace {

constexpr int kWidth = 560;
constexpr int kStartSignSize = 64;
constexpr int kTitleGrowth = 8;  // points above the ordinary letters

QLabel* AddText(QVBoxLayout& layout, QWidget* parent, QPalette::ColorRole role) {
  auto* const label = new QLabel(parent);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setForegroundRole(role);
  layout.addWidget(label);
  return label;
}

}  // namespace

StartPage::StartPage(QWidget* parent) : QWidget(parent) {
  setObjectName("startPage");
  auto* const outer = new QVBoxLayout(this);
  auto* const column = new QWidget(this);
  column->setFixedWidth(kWidth);
  auto* const layout = new QVBoxLayout(column);
  // In a row of its own, so that the height is asked for at the column's width and not at the page's.
  auto* const row = new QHBoxLayout;
  row->addStretch(1);
  row->addWidget(column);
  row->addStretch(1);
  outer->addStretch(1);
  outer->addLayout(row);
  outer->addStretch(2);

  sign_ = new QLabel(column);
  sign_->setFixedSize(kStartSignSize, kStartSignSize);
  layout->addWidget(sign_);
  title_ = AddText(*layout, column, QPalette::Text);
  purpose_ = AddText(*layout, column, QPalette::Text);
  layout->addSpacing(16);
  open_ = AddChoice(*layout, openMeaning_);
  layout->addSpacing(8);
  new_ = AddChoice(*layout, newMeaning_);
  layout->addSpacing(16);
  recentTitle_ = AddText(*layout, column, QPalette::Text);
  recentTitle_->hide();  // there is none yet
  recentList_ = new QVBoxLayout;
  recentList_->setSpacing(0);
  layout->addLayout(recentList_);
  connect(open_, &QPushButton::clicked, this, &StartPage::OpenRequested);
  connect(new_, &QPushButton::clicked, this, &StartPage::NewRequested);
  Retranslate();
  RenewColors();
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::Base);
}

QPushButton* StartPage::AddChoice(QVBoxLayout& layout, QLabel*& meaning) {
  auto* const button = new QPushButton(this);
  layout.addWidget(button, 0, Qt::AlignLeft);
  meaning = AddText(layout, this, QPalette::PlaceholderText);
  return button;
}

void StartPage::Retranslate() {
  title_->setText(tr("Business rules of legacy programs"));
  purpose_->setText(tr(
      "A workspace is a folder of program sources with a catalogue of business rules beside them. The sources stay as "
      "they are."));
  open_->setText(tr("&Open Workspace..."));
  openMeaning_->setText(tr("A folder that holds a workspace already."));
  new_->setText(tr("&New Workspace..."));
  newMeaning_->setText(tr("Makes a workspace over a folder of sources, and scans the programs in it."));
  recentTitle_->setText(tr("Last opened"));
}

void StartPage::RenewColors() {
  const IconSet icons(palette());
  sign_->setPixmap(icons.Icon("App").pixmap(kStartSignSize, kStartSignSize));
  open_->setIcon(icons.Icon("Open"));
  new_->setIcon(icons.Icon("NewWorkspace"));
  QFont font = this->font();
  font.setPointSize(font.pointSize() + kTitleGrowth);
  title_->setFont(font);
  font = this->font();
  font.setBold(true);
  recentTitle_->setFont(font);
}

void StartPage::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  switch (event->type()) {
    case QEvent::LanguageChange:
      Retranslate();
      break;
    case QEvent::PaletteChange:
    case QEvent::FontChange:
      RenewColors();
      break;
    default:
      break;
  }
}

void StartPage::SetRecent(const QStringList& folders) {
  if (folders == recent_) return;
  recent_ = folders;
  while (const QLayoutItem* const item = recentList_->takeAt(0)) {
    delete item->widget();
    delete item;
  }
  recentTitle_->setVisible(!folders.isEmpty());
  for (const QString& folder : folders) {
    auto* const button = new QPushButton(this);
    button->setFlat(true);
    button->setText(
        QString("%1   (%2)").arg(QFileInfo(folder).fileName(), QDir::toNativeSeparators(folder)).replace('&', "&&"));
    button->setStyleSheet("text-align: left; padding: 4px 0;");
    connect(button, &QPushButton::clicked, this, [this, folder] { emit RecentChosen(folder); });
    recentList_->addWidget(button);
  }
}

}  // namespace qmrules::desktop
