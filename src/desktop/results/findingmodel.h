#pragma once

#include <QAbstractTableModel>
#include <memory>

#include "desktop/icons/iconset.h"
#include "validation/findinglist.h"

namespace qmrules::desktop {

// The findings of a validation for a view: verdict with its picture, rule, file, old and new rows. It sorts and filters
// by itself; each time it is reset.
class FindingModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  explicit FindingModel(QObject* parent = nullptr);

  const validation::FindingList& List() const { return list_; }
  // nullptr for none.
  void SetReport(std::shared_ptr<const validation::ValidationReport> report);
  void SetFilter(const QString& text);
  // The row of the rule's finding, or -1 when it is not in the list.
  int RowOf(std::int32_t ruleID) const;
  void UseIcons(const IconSet& icons);
  void Retranslate();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
  void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

 private:
  validation::FindingList list_;
  IconSet icons_{IconSet::Background::Light};
};

}  // namespace qmrules::desktop
