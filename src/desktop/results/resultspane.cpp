#include "desktop/results/resultspane.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QSplitter>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>

#include "desktop/results/findingmodel.h"
#include "desktop/results/findingtexts.h"

namespace qmrules::desktop {

namespace {

constexpr int kListWidth = 560;  // to begin with; the two share what there is in this proportion
constexpr int kComparisonWidth = 800;

int ColumnOf(validation::FindingColumn column) {
  return static_cast<int>(column);
}

}  // namespace

ResultsPane::ResultsPane(QWidget* parent)
    : QWidget(parent),
      model_(new FindingModel(this)),
      filter_(new QLineEdit(this)),
      counts_(new QLabel(this)),
      nothing_(new QLabel(this)),
      list_(new QTreeView(this)),
      comparison_(new ComparisonView(this)) {
  LayOut();
  Connect();
  Retranslate();
  model_->UseIcons(IconSet(palette()));
}

void ResultsPane::LayOut() {
  filter_->setObjectName("findingFilter");
  filter_->setClearButtonEnabled(true);
  counts_->setObjectName("findingCounts");
  nothing_->setObjectName("noFindings");
  for (auto* const label : {counts_, nothing_}) {
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
  }
  list_->setObjectName("findingList");
  list_->setModel(model_);
  list_->setRootIsDecorated(false);
  list_->setUniformRowHeights(true);
  list_->setAllColumnsShowFocus(true);
  list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  list_->setTabKeyNavigation(false);
  list_->setSortingEnabled(true);
  list_->sortByColumn(ColumnOf(validation::FindingColumn::Verdict), Qt::AscendingOrder);
  list_->header()->setStretchLastSection(false);
  list_->header()->setSectionResizeMode(ColumnOf(validation::FindingColumn::Rule), QHeaderView::Stretch);
  auto* const left = new QWidget(this);
  auto* const column = new QVBoxLayout(left);
  column->setContentsMargins(4, 4, 4, 4);
  column->setSpacing(4);
  column->addWidget(filter_);
  column->addWidget(counts_);
  column->addWidget(nothing_);
  column->addWidget(list_, 1);
  auto* const splitter = new QSplitter(this);
  splitter->addWidget(left);
  splitter->addWidget(comparison_);
  splitter->setChildrenCollapsible(false);
  splitter->setSizes({kListWidth, kComparisonWidth});
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(splitter);
}

void ResultsPane::Connect() {
  connect(filter_, &QLineEdit::textChanged, this, [this](const QString& text) {
    model_->SetFilter(text);
    ShowCounts();
  });
  connect(filter_, &QLineEdit::returnPressed, this, [this] { Compare(list_->currentIndex()); });
  connect(list_, &QTreeView::clicked, this, &ResultsPane::Compare);
  connect(list_, &QTreeView::doubleClicked, this, &ResultsPane::ChooseCurrent);
  connect(model_, &QAbstractItemModel::modelReset, this, &ResultsPane::RestoreCurrent);
  connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex& index) {
    if (const auto* const finding = FindingAt(index)) current_ = finding->ruleID;
  });
  connect(comparison_, &ComparisonView::TreeRequested, this, &ResultsPane::ChooseCurrent);
  filter_->installEventFilter(this);
  list_->installEventFilter(this);
}

void ResultsPane::Retranslate() {
  filter_->setPlaceholderText(tr("Filter by verdict, rule or file"));
  filter_->setAccessibleName(filter_->placeholderText());
  list_->setAccessibleName(tr("Results of the validation"));
  model_->Retranslate();
  ShowCounts();
}

void ResultsPane::SetReport(std::shared_ptr<const validation::ValidationReport> report, SourceReader read) {
  comparison_->Clear();
  current_.reset();
  report_ = std::move(report);
  read_ = std::move(read);
  model_->SetReport(report_);
  for (const auto column : {validation::FindingColumn::Verdict, validation::FindingColumn::File,
                            validation::FindingColumn::OldRows, validation::FindingColumn::NewRows}) {
    list_->resizeColumnToContents(ColumnOf(column));
  }
  ShowCounts();
}

void ResultsPane::Clear() {
  SetReport(nullptr, {});
  filter_->clear();
}

void ResultsPane::FocusList() {
  list_->setFocus(Qt::ShortcutFocusReason);
  RestoreCurrent();
}

// An empty list says why it is empty.
void ResultsPane::ShowCounts() {
  counts_->setVisible(HasReport());
  counts_->setText(CountsText(model_->List()));
  nothing_->setVisible(model_->rowCount() == 0);
  nothing_->setText(HasReport() ? tr("No result has this text.")
                                : tr("No rule has been validated yet. Check rules and choose Validate."));
  list_->setVisible(HasReport());
}

// After a reset the row of the same rule is current; without one, the first.
void ResultsPane::RestoreCurrent() {
  if (model_->rowCount() == 0) return;
  const int row = current_ ? model_->RowOf(*current_) : -1;
  const QModelIndex index = model_->index(std::max(row, 0), 0);
  list_->setCurrentIndex(index);
  list_->scrollTo(index);
}

const validation::RuleFinding* ResultsPane::FindingAt(const QModelIndex& index) const {
  return index.isValid() ? &model_->List().At(static_cast<std::size_t>(index.row())) : nullptr;
}

void ResultsPane::Compare(const QModelIndex& index) {
  if (const auto* const finding = FindingAt(index)) comparison_->Show(*finding, read_);
}

void ResultsPane::ChooseCurrent() {
  if (const auto* const finding = FindingAt(list_->currentIndex())) emit RuleChosen(finding->ruleID);
}

void ResultsPane::CopySelected() const {
  QModelIndexList rows = list_->selectionModel()->selectedRows();
  std::sort(rows.begin(), rows.end());
  QString text;
  for (const QModelIndex& row : rows) {
    for (int column = 0; column < model_->columnCount(); ++column) {
      if (column > 0) text += '\t';
      text += row.siblingAtColumn(column).data().toString();
    }
    text += '\n';
  }
  if (!text.isEmpty()) QGuiApplication::clipboard()->setText(text);
}

bool ResultsPane::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
  auto* const key = static_cast<QKeyEvent*>(event);
  const bool isEnter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
  if (isEnter && key->modifiers().testFlag(Qt::ControlModifier)) {
    ChooseCurrent();
    return true;
  }
  if (watched == list_ && isEnter) {
    Compare(list_->currentIndex());
    return true;
  }
  if (watched == list_ && key->matches(QKeySequence::Copy)) {
    CopySelected();
    return true;
  }
  const bool isWay = key->key() == Qt::Key_Up || key->key() == Qt::Key_Down || key->key() == Qt::Key_PageUp ||
                     key->key() == Qt::Key_PageDown;
  if (watched == filter_ && isWay) {
    QCoreApplication::sendEvent(list_, key);
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

void ResultsPane::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::LanguageChange) Retranslate();
  if (event->type() == QEvent::PaletteChange) model_->UseIcons(IconSet(palette()));
}

}  // namespace qmrules::desktop
