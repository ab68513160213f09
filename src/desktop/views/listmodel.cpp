#include "desktop/views/listmodel.h"

#include <QApplication>
#include <algorithm>

#include "desktop/views/colors.h"
#include "desktop/views/qttext.h"

namespace qmrules::desktop {

using platform::widgets::Color;
using platform::widgets::ListRow;
using platform::widgets::ListView;

ListModel::ListModel(ListView& list) : list_(list), columns_(list.Columns()), checkBoxes_(list.CheckBoxes()) {
  for (std::size_t place = 0; place < list.Count(); ++place) rows_.push_back(&list.Row(place));
  subscriptions_.push_back(list.OnRowAdded.Subscribe([this](ListRow& row) { Added(row); }));
  subscriptions_.push_back(list.OnRowRemoving.Subscribe([this](ListRow& row) { Removing(row); }));
  subscriptions_.push_back(list.OnRowsRemoved.Subscribe([this] {
    if (list_.Count() != 0 || rows_.empty()) return;
    beginResetModel();
    rows_.clear();
    endResetModel();
  }));
  subscriptions_.push_back(list.OnRowChanged.Subscribe([this](ListRow& row) {
    const int place = PlaceOf(&row);
    if (place >= 0) emit dataChanged(index(place, 0), index(place, columnCount() - 1));
  }));
  subscriptions_.push_back(list.OnChanged.Subscribe([this] { ShowColumns(); }));
}

ListModel::~ListModel() = default;

ListRow* ListModel::RowAt(const QModelIndex& index) const {
  const auto place = static_cast<std::size_t>(index.row());
  return index.isValid() && place < rows_.size() ? rows_[place] : nullptr;
}

int ListModel::PlaceOf(const ListRow* row) const {
  const auto found = std::find(rows_.begin(), rows_.end(), row);
  return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

int ListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int ListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
  const ListRow* const row = RowAt(index);
  if (row == nullptr || index.column() >= columnCount()) return {};
  switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
      return ToQt(row->SubItem(columns_[static_cast<std::size_t>(index.column())].key));
    case Qt::ForegroundRole:
      if (row->ForeColor() == Color::Normal) return {};
      return TextColor(row->ForeColor(), QApplication::palette());
    case Qt::CheckStateRole:
      if (!checkBoxes_ || index.column() != 0) return {};
      return static_cast<int>(row->Checked() ? Qt::Checked : Qt::Unchecked);
    default:
      return {};
  }
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  if (role == Qt::TextAlignmentRole) return static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter);
  return role == Qt::DisplayRole ? QVariant(ToQt(columns_[static_cast<std::size_t>(section)].text)) : QVariant();
}

Qt::ItemFlags ListModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
  if (checkBoxes_ && index.column() == 0) flags |= Qt::ItemIsUserCheckable;
  return flags;
}

void ListModel::Added(ListRow& row) {
  const int place = static_cast<int>(rows_.size());
  beginInsertRows({}, place, place);
  rows_.push_back(&row);
  endInsertRows();
}

void ListModel::Removing(const ListRow& row) {
  const int place = PlaceOf(&row);
  if (place < 0) return;
  beginRemoveRows({}, place, place);
  rows_.erase(rows_.begin() + place);
  endRemoveRows();
}

void ListModel::ShowColumns() {
  const auto& columns = list_.Columns();
  const auto known = columns_.size();
  if (columns.size() > known) {
    beginInsertColumns({}, static_cast<int>(known), static_cast<int>(columns.size()) - 1);
    columns_ = columns;
    endInsertColumns();
  }
  for (std::size_t place = 0; place < known; ++place) {
    if (columns_[place].text == columns[place].text) continue;
    columns_[place].text = columns[place].text;
    emit headerDataChanged(Qt::Horizontal, static_cast<int>(place), static_cast<int>(place));
  }
  if (checkBoxes_ == list_.CheckBoxes()) return;
  checkBoxes_ = list_.CheckBoxes();
  if (!rows_.empty()) emit dataChanged(index(0, 0), index(rowCount() - 1, 0), {Qt::CheckStateRole});
}

}  // namespace qmrules::desktop
