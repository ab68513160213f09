#include "desktop/window/newworkspacedialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/options/encodingbox.h"
#include "desktop/views/colors.h"
#include "desktop/views/qttext.h"
#include "platform/error.h"

namespace qmrules::desktop {

namespace {

constexpr int kFieldWidth = 380;

}  // namespace

NewWorkspaceDialog::NewWorkspaceDialog(Maker make, QWidget* parent)
    : QDialog(parent),
      make_(std::move(make)),
      folder_(new QLineEdit(this)),
      project_(new QLineEdit(this)),
      encoding_(new EncodingBox(this)),
      scan_(new QCheckBox(tr("&Scan the programs now"), this)),
      failure_(new QLabel(this)),
      buttons_(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this)) {
  setWindowTitle(tr("New Workspace"));
  LayOut();
  connect(folder_, &QLineEdit::textChanged, this, &NewWorkspaceDialog::FolderChanged);
  connect(project_, &QLineEdit::textChanged, this, &NewWorkspaceDialog::ShowWhetherReady);
  connect(buttons_, &QDialogButtonBox::accepted, this, &NewWorkspaceDialog::accept);
  connect(buttons_, &QDialogButtonBox::rejected, this, &NewWorkspaceDialog::reject);
  ShowWhetherReady();
}

void NewWorkspaceDialog::LayOut() {
  auto* const layout = new QVBoxLayout(this);
  auto* const form = new QFormLayout;
  layout->addLayout(form);
  auto* const row = new QHBoxLayout;
  auto* const browse = new QPushButton(tr("&Browse..."), this);
  row->addWidget(folder_, 1);
  row->addWidget(browse);
  connect(browse, &QPushButton::clicked, this, &NewWorkspaceDialog::Browse);
  folder_->setMinimumWidth(kFieldWidth);
  const auto addRow = [&](const QString& caption, QWidget* field, auto* shown) {
    auto* const label = new QLabel(caption, this);
    label->setBuddy(field);
    form->addRow(label, shown);
  };
  addRow(tr("Source &folder:"), folder_, row);
  addRow(tr("&Project:"), project_, project_);
  addRow(tr("&Encoding of the sources:"), encoding_, encoding_);
  form->addRow(QString(), scan_);
  scan_->setChecked(true);
  folder_->setObjectName("folder");
  project_->setObjectName("project");
  failure_->setObjectName("failure");
  failure_->setTextFormat(Qt::PlainText);
  failure_->setWordWrap(true);
  QPalette palette = failure_->palette();
  palette.setColor(QPalette::WindowText, TextColor(platform::widgets::Color::Red, palette));
  failure_->setPalette(palette);
  failure_->hide();
  layout->addWidget(failure_);
  layout->addWidget(buttons_);
  buttons_->button(QDialogButtonBox::Ok)->setText(tr("&Create"));
}

void NewWorkspaceDialog::Browse() {
  const QString chosen =
      QFileDialog::getExistingDirectory(this, tr("Folder of the Sources"), folder_->text(), QFileDialog::ShowDirsOnly);
  if (!chosen.isEmpty()) folder_->setText(QDir::toNativeSeparators(chosen));
}

// The project is called like its folder until the user names it.
void NewWorkspaceDialog::FolderChanged() {
  if (!project_->isModified()) project_->setText(QFileInfo(QDir::cleanPath(folder_->text())).fileName());
  ShowWhetherReady();
}

void NewWorkspaceDialog::ShowWhetherReady() {
  failure_->hide();
  buttons_->button(QDialogButtonBox::Ok)->setEnabled(!Folder().isEmpty() && !project_->text().isEmpty());
}

QString NewWorkspaceDialog::Folder() const {
  const QString folder = folder_->text().trimmed();
  return folder.isEmpty() ? QString() : QDir(folder).absolutePath();
}

bool NewWorkspaceDialog::WantsScan() const {
  return scan_->isChecked();
}

void NewWorkspaceDialog::accept() {
  try {
    make_(
        {.folder = FromQt(Folder()), .projectName = FromQt(project_->text()), .sourceEncoding = encoding_->Encoding()});
  } catch (const platform::Error& failure) {
    failure_->setText(ToQt(failure.what()));
    failure_->show();
    return;
  }
  QDialog::accept();
}

}  // namespace qmrules::desktop
