#pragma once

#include <QAbstractTableModel>
#include <vector>

#include "platform/event.h"
#include "platform/widgets/listview.h"

namespace qmrules::desktop {

// The rows of a list as an item model. Each change of the list is handed on as that one change.
class ListModel final : public QAbstractTableModel {
 public:
  // `list` outlives this.
  explicit ListModel(platform::widgets::ListView& list);
  ~ListModel() override;

  // The row at the index; nullptr for the invalid one.
  platform::widgets::ListRow* RowAt(const QModelIndex& index) const;
  // From 0; -1 for nullptr.
  int PlaceOf(const platform::widgets::ListRow* row) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  void Added(platform::widgets::ListRow& row);
  void Removing(const platform::widgets::ListRow& row);
  void ShowColumns();

  platform::widgets::ListView& list_;
  std::vector<platform::widgets::ListRow*> rows_;
  std::vector<platform::widgets::ListView::Column> columns_;
  bool checkBoxes_ = false;
  std::vector<platform::Subscription> subscriptions_;
};

}  // namespace qmrules::desktop
