#include "desktop/results/findingmodel.h"

#include <QIcon>

#include "desktop/results/findingtexts.h"

namespace qmrules::desktop {

using validation::FindingColumn;

FindingModel::FindingModel(QObject* parent) : QAbstractTableModel(parent) {
  list_.SetWords(AllVerdictWords());
}

void FindingModel::SetReport(std::shared_ptr<const validation::ValidationReport> report) {
  beginResetModel();
  list_.SetReport(std::move(report));
  endResetModel();
}

void FindingModel::SetFilter(const QString& text) {
  beginResetModel();
  list_.SetFilter(text.toStdString());
  endResetModel();
}

int FindingModel::RowOf(std::int32_t ruleID) const {
  for (std::size_t row = 0; row < list_.Count(); ++row) {
    if (list_.At(row).ruleID == ruleID) return static_cast<int>(row);
  }
  return -1;
}

void FindingModel::UseIcons(const IconSet& icons) {
  icons_ = icons;
  if (list_.Count() > 0) emit dataChanged(index(0, 0), index(rowCount() - 1, 0), {Qt::DecorationRole});
}

void FindingModel::Retranslate() {
  beginResetModel();
  list_.SetWords(AllVerdictWords());
  endResetModel();
}

int FindingModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(list_.Count());
}

int FindingModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(validation::kFindingColumns);
}

QVariant FindingModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const auto row = static_cast<std::size_t>(index.row());
  const auto column = static_cast<FindingColumn>(index.column());
  const auto verdict = list_.At(row).verdict;
  const bool areRows = column == FindingColumn::OldRows || column == FindingColumn::NewRows;
  switch (role) {
    case Qt::DisplayRole:
      return QString::fromStdString(list_.Text(row, column));
    case Qt::ToolTipRole:
      return column == FindingColumn::Verdict ? QVariant(VerdictMeaning(verdict)) : QVariant();
    case Qt::DecorationRole:
      return column == FindingColumn::Verdict ? QVariant(icons_.Icon(VerdictIcon(verdict))) : QVariant();
    case Qt::TextAlignmentRole:
      return QVariant::fromValue(Qt::AlignVCenter | (areRows ? Qt::AlignRight : Qt::AlignLeft));
    default:
      return {};
  }
}

QVariant FindingModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  switch (static_cast<FindingColumn>(section)) {
    case FindingColumn::Verdict:
      return tr("Verdict");
    case FindingColumn::Rule:
      return tr("Rule");
    case FindingColumn::File:
      return tr("File");
    case FindingColumn::OldRows:
      return tr("Old rows");
    case FindingColumn::NewRows:
      return tr("New rows");
  }
  return {};
}

void FindingModel::sort(int column, Qt::SortOrder order) {
  // A view whose indicator is taken away asks for column -1.
  if (column < 0) return;
  beginResetModel();
  list_.SortBy(static_cast<FindingColumn>(column), order == Qt::DescendingOrder);
  endResetModel();
}

}  // namespace qmrules::desktop
