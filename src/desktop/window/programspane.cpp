#include "desktop/window/programspane.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QSortFilterProxyModel>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>
#include <functional>

#include "desktop/views/qttext.h"

namespace qmrules::desktop {

namespace {

// Leaves the programs whose name or file holds the text, in any case.
class ProgramFilter final : public QSortFilterProxyModel {
 public:
  using QSortFilterProxyModel::QSortFilterProxyModel;
  void SetText(const QString& text) {
    text_ = text;
    invalidateFilter();
  }

 protected:
  bool filterAcceptsRow(int row, const QModelIndex& /*parent*/) const override {
    const auto& program = static_cast<const ProgramModel*>(sourceModel())->Programs()[static_cast<std::size_t>(row)];
    return ToQt(program.name).contains(text_, Qt::CaseInsensitive) ||
           ToQt(program.file).contains(text_, Qt::CaseInsensitive);
  }

 private:
  QString text_;
};

}  // namespace

ProgramsPane::ProgramsPane(QWidget* parent)
    : QWidget(parent),
      model_(new ProgramModel(this)),
      filtered_(new ProgramFilter(this)),
      filter_(new QLineEdit(this)),
      list_(new QTreeView(this)),
      nothing_(new QLabel(this)) {
  filtered_->setSourceModel(model_);
  filtered_->setSortRole(ProgramModel::kSortRole);
  filtered_->setSortCaseSensitivity(Qt::CaseInsensitive);
  LayOut();
  connect(filter_, &QLineEdit::textChanged, this, &ProgramsPane::Filter);
  connect(filter_, &QLineEdit::returnPressed, this, [this] { Choose(list_->currentIndex()); });
  connect(list_, &QTreeView::clicked, this, &ProgramsPane::Choose);
  connect(list_, &QTreeView::activated, this, &ProgramsPane::Choose);
  filter_->installEventFilter(this);
  Retranslate();
  ShowCount();
  model_->UseIcons(IconSet(palette()));
}

void ProgramsPane::LayOut() {
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(4, 4, 4, 4);
  layout->setSpacing(4);
  layout->addWidget(filter_);
  layout->addWidget(nothing_);
  layout->addWidget(list_, 1);
  filter_->setObjectName("programFilter");
  filter_->setClearButtonEnabled(true);
  nothing_->setObjectName("noPrograms");
  nothing_->setWordWrap(true);
  nothing_->setTextFormat(Qt::PlainText);
  nothing_->setContentsMargins(4, 4, 4, 4);
  list_->setObjectName("programList");
  list_->setModel(filtered_);
  list_->setRootIsDecorated(false);
  list_->setUniformRowHeights(true);
  list_->setAllColumnsShowFocus(true);
  list_->setSortingEnabled(true);
  list_->sortByColumn(ProgramModel::kName, Qt::AscendingOrder);
  list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  list_->setTabKeyNavigation(false);
  auto& header = *list_->header();
  header.setStretchLastSection(false);
  header.setSectionResizeMode(ProgramModel::kName, QHeaderView::Stretch);
  header.setSectionResizeMode(ProgramModel::kLanguage, QHeaderView::ResizeToContents);
  header.setSectionResizeMode(ProgramModel::kRules, QHeaderView::ResizeToContents);
}

void ProgramsPane::Retranslate() {
  filter_->setPlaceholderText(tr("Filter programs"));
  filter_->setAccessibleName(tr("Filter programs"));
  list_->setAccessibleName(tr("Programs"));
  model_->Retranslate();
  ShowCount();
}

void ProgramsPane::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::LanguageChange) Retranslate();
  if (event->type() == QEvent::PaletteChange) model_->UseIcons(IconSet(palette()));
}

// The arrows go through the list while the user types.
bool ProgramsPane::eventFilter(QObject* watched, QEvent* event) {
  if (watched == filter_ && event->type() == QEvent::KeyPress) {
    auto* const key = static_cast<QKeyEvent*>(event);
    switch (key->key()) {
      case Qt::Key_Up:
      case Qt::Key_Down:
      case Qt::Key_PageUp:
      case Qt::Key_PageDown:
        QCoreApplication::sendEvent(list_, key);
        return true;
      default:
        break;
    }
  }
  return QWidget::eventFilter(watched, event);
}

void ProgramsPane::SetPrograms(std::vector<catalogue::RegisteredSource> programs) {
  // One language for all is not worth a column.
  const bool areOneLanguage = std::ranges::adjacent_find(programs, std::ranges::not_equal_to(),
                                                         &catalogue::RegisteredSource::language) == programs.end();
  list_->setColumnHidden(ProgramModel::kLanguage, areOneLanguage);
  model_->SetPrograms(std::move(programs));
  ShowCount();
}

void ProgramsPane::SetCurrent(const std::string& key) {
  model_->SetCurrent(key);
  const int row = model_->RowOf(key);
  const QModelIndex index = row < 0 ? QModelIndex() : filtered_->mapFromSource(model_->index(row, 0));
  if (!index.isValid()) return;
  list_->setCurrentIndex(index);
  list_->scrollTo(index);
}

void ProgramsPane::FocusFilter() {
  filter_->setFocus(Qt::ShortcutFocusReason);
  filter_->selectAll();
}

void ProgramsPane::Filter(const QString& text) {
  static_cast<ProgramFilter*>(filtered_)->SetText(text);
  if (!list_->currentIndex().isValid() && filtered_->rowCount() > 0) list_->setCurrentIndex(filtered_->index(0, 0));
  ShowCount();
}

// An empty list says why it is empty.
void ProgramsPane::ShowCount() {
  const bool hasNone = model_->rowCount() == 0;
  nothing_->setVisible(filtered_->rowCount() == 0);
  nothing_->setText(hasNone ? tr("The project has no programs yet. Choose File > Scan Sources to find them.")
                            : tr("No program's name or file has this text."));
  list_->setVisible(!hasNone);
}

void ProgramsPane::Choose(const QModelIndex& index) {
  if (!index.isValid()) return;
  const auto row = static_cast<std::size_t>(filtered_->mapToSource(index).row());
  emit Chosen(ToQt(model_->Programs()[row].key));
}

}  // namespace qmrules::desktop
