#include "desktop/views/qtlist.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <algorithm>
#include <numeric>
#include <utility>

#include "desktop/views/userkeys.h"

namespace qmrules::desktop {

using platform::widgets::ListRow;
using platform::widgets::ListView;
using platform::widgets::ShiftState;

namespace {

constexpr int kLeastRows = 2;
constexpr int kRowsWished = 6;
constexpr int kRowPadding = 6;
constexpr int kLettersWished = 60;
constexpr int kMostLettersWished = 130;

// Each column gets what it needs, but no more than its even share of what those that need less have left. What is left
// in the end is shared evenly.
std::vector<int> SharesOf(int room, const std::vector<int>& needs) {
  std::vector<std::size_t> byNeed(needs.size());
  std::iota(byNeed.begin(), byNeed.end(), std::size_t{0});
  std::ranges::stable_sort(byNeed, {}, [&](std::size_t column) { return needs[column]; });
  std::vector<int> shares(needs.size());
  int columnsLeft = static_cast<int>(needs.size());
  for (const std::size_t column : byNeed) {
    shares[column] = std::min(needs[column], room / columnsLeft--);
    room -= shares[column];
  }
  for (int& share : shares) share += room / static_cast<int>(needs.size());
  return shares;
}

}  // namespace

QtList::QtList(FocusBridge& focus, ListView& model, QWidget* parent)
    : RowView(model, parent), model_(model), items_(model), binding_(focus, model, *this, WidgetBinding::Acting::View) {
  setModel(&items_);
  setRootIsDecorated(false);
  setItemsExpandable(false);
  setAllColumnsShowFocus(true);
  header()->setSectionsMovable(false);
  header()->setStretchLastSection(true);
  header()->setMinimumSectionSize(fontMetrics().averageCharWidth() * 4);
  connect(header(), &QHeaderView::sectionResized, this, [this](int column) {
    // The last one fills what the others leave.
    if (!sharing_ && column + 1 < items_.columnCount()) widthsAreTheUsers_ = true;
  });
  for (const auto change : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved}) {
    connect(&items_, change, this, &QtList::ShareOutWidthLater);
  }
  subscriptions_.push_back(model.OnChanged.Subscribe([this] { Show(); }));
  subscriptions_.push_back(model.OnSelectionChanged.Subscribe([this] { ShowSelection(); }));
  subscriptions_.push_back(model.OnRowsRemoved.Subscribe([this] { ShowSelection(); }));
  subscriptions_.push_back(
      model.OnEnsureVisible.Subscribe([this](ListRow& row) { scrollTo(items_.index(items_.PlaceOf(&row), 0)); }));
  Show();
  QtList::ShowSelection();
  WatchSelection();
}

QSize QtList::minimumSizeHint() const {
  const int row = fontMetrics().height() + kRowPadding;
  return {fontMetrics().averageCharWidth() * 16, header()->sizeHint().height() + kLeastRows * row + 2 * frameWidth()};
}

QSize QtList::sizeHint() const {
  const int row = fontMetrics().height() + kRowPadding;
  const std::vector<int> needs = WidthsNeeded();
  const int letter = fontMetrics().averageCharWidth();
  const int width = std::clamp(std::accumulate(needs.begin(), needs.end(), 4 * letter), kLettersWished * letter,
                               kMostLettersWished * letter);
  return {width, header()->sizeHint().height() + kRowsWished * row + 2 * frameWidth()};
}

void QtList::Show() {
  setSelectionMode(model_.MultiSelect() ? QAbstractItemView::ExtendedSelection : QAbstractItemView::SingleSelection);
  ShareOutWidth();
}

// Of the texts that are in sight, and of the headers.
std::vector<int> QtList::WidthsNeeded() const {
  std::vector<int> needs;
  for (int column = 0; column < items_.columnCount(); ++column) {
    needs.push_back(std::max(sizeHintForColumn(column), header()->sectionSizeHint(column)));
  }
  return needs;
}

// Until the user draws a column wider.
void QtList::ShareOutWidth() {
  if (widthsAreTheUsers_ || items_.columnCount() == 0) return;
  const std::vector<int> shares = SharesOf(viewport()->width(), WidthsNeeded());
  const QScopedValueRollback<bool> sharing(sharing_, true);
  for (std::size_t column = 0; column + 1 < shares.size(); ++column) {
    setColumnWidth(static_cast<int>(column), shares[column]);
  }
}

// Rows come many at a time.
void QtList::ShareOutWidthLater() {
  if (std::exchange(sharesLater_, true)) return;
  const auto share = [this] {
    sharesLater_ = false;
    ShareOutWidth();
  };
  QMetaObject::invokeMethod(this, share, Qt::QueuedConnection);
}

void QtList::resizeEvent(QResizeEvent* event) {
  const QScopedValueRollback<bool> sharing(sharing_, true);
  QTreeView::resizeEvent(event);
  ShareOutWidth();
}

void QtList::ShowSelection() {
  const ShowingSelection showing(*this);
  QItemSelection selection;
  const int rows = items_.rowCount();
  const int last = items_.columnCount() - 1;
  for (int row = 0; row < rows; ++row) {
    if (!items_.RowAt(items_.index(row, 0))->Selected()) continue;
    const int first = row;
    while (row + 1 < rows && items_.RowAt(items_.index(row + 1, 0))->Selected()) ++row;
    selection.select(items_.index(first, 0), items_.index(row, last));
  }
  selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
  const int current = items_.PlaceOf(model_.CurrentRow());
  selectionModel()->setCurrentIndex(current < 0 ? QModelIndex() : items_.index(current, 0),
                                    QItemSelectionModel::NoUpdate);
}

void QtList::TakeSelection() {
  std::vector<ListRow*> changed;
  for (int place = 0; place < items_.rowCount(); ++place) {
    ListRow* const row = items_.RowAt(items_.index(place, 0));
    const bool isSelected = selectionModel()->isSelected(items_.index(place, 0));
    const bool isChanged = model_.MultiSelect() ? isSelected != row->Selected() : isSelected && !row->Selected();
    if (isChanged) changed.push_back(row);
  }
  // The user's own way to change one row's selection and leave the others.
  const ShiftState shift{.ctrl = model_.MultiSelect()};
  for (ListRow* const row : changed) {
    if (items_.PlaceOf(row) >= 0) model_.Click(*row, shift);
  }
}

void QtList::mousePressEvent(QMouseEvent* event) {
  const QPoint point = event->position().toPoint();
  const QModelIndex index = indexAt(point);
  ListRow* const row = items_.RowAt(index);
  if (event->button() == Qt::RightButton) {
    model_.RightClick(row);
  } else if (event->button() == Qt::LeftButton && row != nullptr) {
    if (model_.CheckBoxes() && index.column() == 0 && IsOnCheckBox(point, index)) {
      model_.ClickCheckBox(*row);
    } else {
      model_.Click(*row, ShiftOf(event->modifiers()));
    }
  }
}

void QtList::mouseDoubleClickEvent(QMouseEvent* event) {
  ListRow* const row = items_.RowAt(indexAt(event->position().toPoint()));
  if (event->button() == Qt::LeftButton && row != nullptr) model_.DoubleClick(*row);
}

void QtList::GoTo(const QModelIndex& index, ShiftState shift) {
  ListRow* const row = items_.RowAt(index);
  if (row == nullptr || row == model_.CurrentRow()) return;
  model_.Click(*row, shift);
  scrollTo(items_.index(index.row(), 0));
}

}  // namespace qmrules::desktop
