#include "desktop/options/textlisteditor.h"

#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace qmrules::desktop {

namespace {

constexpr int kShownRows = 6;

}  // namespace

TextListEditor::TextListEditor(const OptionSpec& option, const QString& sourceFolder, QWidget* parent)
    : OptionEditor(parent),
      sourceFolder_(option.name == "CopybookFolders" ? sourceFolder : QString()),
      list_(new QListWidget(this)),
      remove_(new QPushButton(tr("Remove"), this)),
      up_(new QPushButton(tr("Move Up"), this)),
      down_(new QPushButton(tr("Move Down"), this)) {
  list_->setAccessibleName(OptionText(option.caption));
  list_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
  list_->setFixedHeight(kShownRows * (fontMetrics().lineSpacing() + 6));
  setFocusProxy(list_);
  auto* const add = new QPushButton(tr("Add"), this);
  auto* const buttons = new QVBoxLayout;
  buttons->addWidget(add);
  if (!sourceFolder_.isEmpty()) {
    auto* const browse = new QPushButton(tr("Choose Folder..."), this);
    buttons->addWidget(browse);
    connect(browse, &QPushButton::clicked, this, &TextListEditor::AddFolder);
  }
  for (auto* const button : {remove_, up_, down_}) buttons->addWidget(button);
  buttons->addStretch();
  auto* const layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(list_, 1);
  layout->addLayout(buttons);
  auto* const erase = new QShortcut(QKeySequence(Qt::Key_Delete), list_, nullptr, nullptr, Qt::WidgetShortcut);
  connect(erase, &QShortcut::activated, this, &TextListEditor::RemoveCurrent);
  connect(add, &QPushButton::clicked, this, &TextListEditor::AddTyped);
  connect(remove_, &QPushButton::clicked, this, &TextListEditor::RemoveCurrent);
  connect(up_, &QPushButton::clicked, this, [this] { MoveCurrent(-1); });
  connect(down_, &QPushButton::clicked, this, [this] { MoveCurrent(1); });
  connect(list_, &QListWidget::itemChanged, this, &OptionEditor::Changed);
  connect(list_, &QListWidget::currentRowChanged, this, &TextListEditor::UpdateButtons);
  UpdateButtons();
}

OptionValue TextListEditor::Value() const {
  std::vector<ListedText> texts;
  for (int row = 0; row < list_->count(); ++row) {
    const QListWidgetItem& item = *list_->item(row);
    texts.push_back({item.text().toStdString(), item.checkState() == Qt::Checked});
  }
  return texts;
}

void TextListEditor::SetValue(const OptionValue& value) {
  {
    const QSignalBlocker quiet(list_);
    list_->clear();
    for (const auto& [text, counts] : std::get<std::vector<ListedText>>(value)) {
      Append(QString::fromStdString(text), counts);
    }
  }
  UpdateButtons();
  emit Changed();
}

QListWidgetItem* TextListEditor::Append(const QString& text, bool counts) {
  auto* const item = new QListWidgetItem(text);
  item->setFlags(item->flags() | Qt::ItemIsEditable | Qt::ItemIsUserCheckable);
  item->setCheckState(counts ? Qt::Checked : Qt::Unchecked);
  list_->addItem(item);
  return item;
}

void TextListEditor::AddTyped() {
  auto* const item = Append({}, true);
  list_->setCurrentItem(item);
  list_->setFocus();
  list_->editItem(item);
  emit Changed();
}

void TextListEditor::AddFolder() {
  const QString folder = QFileDialog::getExistingDirectory(this, tr("Choose a Folder of Copybooks"), sourceFolder_);
  if (folder.isEmpty()) return;
  list_->setCurrentItem(Append(QDir(sourceFolder_).relativeFilePath(folder), true));
  emit Changed();
}

void TextListEditor::RemoveCurrent() {
  if (list_->currentRow() < 0) return;
  delete list_->takeItem(list_->currentRow());
  UpdateButtons();
  emit Changed();
}

void TextListEditor::MoveCurrent(int rows) {
  const int row = list_->currentRow();
  const int goal = row + rows;
  if (row < 0 || goal < 0 || goal >= list_->count()) return;
  auto* const item = list_->takeItem(row);
  list_->insertItem(goal, item);
  list_->setCurrentRow(goal);
  emit Changed();
}

void TextListEditor::UpdateButtons() {
  const int row = list_->currentRow();
  remove_->setEnabled(row >= 0);
  up_->setEnabled(row > 0);
  down_->setEnabled(row >= 0 && row + 1 < list_->count());
}

}  // namespace qmrules::desktop
