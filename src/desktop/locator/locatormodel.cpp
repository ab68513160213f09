#include "desktop/locator/locatormodel.h"

#include <QCoreApplication>
#include <QIcon>
#include <QPoint>
#include <algorithm>

#include "desktop/icons/iconset.h"

namespace qmrules::desktop {

namespace {

QString KindName(const std::string& entity) {
  if (entity == "BUSINESSFUNC") return LocatorModel::tr("Business function");
  if (entity == "RULESET") return LocatorModel::tr("Rule set");
  if (entity == "RULE") return LocatorModel::tr("Rule");
  return LocatorModel::tr("%1 program").arg(QString::fromStdString(entity));
}

QVariantList MarksOf(const NameMatch& match) {
  QVariantList marks;
  for (const MarkedRun& run : match.marks) {
    marks.append(QPoint(static_cast<int>(run.begin), static_cast<int>(run.length)));
  }
  return marks;
}

}  // namespace

void LocatorModel::Show(const std::vector<LocatorEntry>& entries, const LocatorQuery& query) {
  std::vector<QVariantList> marks;
  for (const LocatorEntry& entry : entries) {
    const auto match = query.Match(entry.name);
    marks.push_back(match ? MarksOf(*match) : QVariantList());
  }
  if (entries == entries_ && marks == marks_) return;
  beginResetModel();
  entries_ = entries;
  marks_ = std::move(marks);
  endResetModel();
}

void LocatorModel::SetPalette(const QPalette& palette) {
  palette_ = palette;
  if (!entries_.empty()) {
    emit dataChanged(index(0), index(static_cast<int>(entries_.size()) - 1), {Qt::DecorationRole});
  }
}

int LocatorModel::RowOf(const std::string& key) const {
  const auto entry = std::ranges::find(entries_, key, &LocatorEntry::key);
  return entry == entries_.end() ? -1 : static_cast<int>(entry - entries_.begin());
}

int LocatorModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(entries_.size());
}

QVariant LocatorModel::Picture(const LocatorEntry& entry) const {
  return IconSet(palette_).Icon(entry.entity);
}

QVariant LocatorModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const LocatorEntry& entry = Entry(index.row());
  const QString place = QString::fromStdString(entry.place);
  switch (role) {
    case Qt::DisplayRole:
      return QString::fromStdString(entry.name);
    case Qt::DecorationRole:
      return Picture(entry);
    case Qt::ToolTipRole:
      return KindName(entry.entity) + (place.isEmpty() ? "" : "\n" + place);
    case Qt::AccessibleTextRole:
      return QString::fromStdString(entry.name) + ", " + KindName(entry.entity) + (place.isEmpty() ? "" : ", " + place);
    case kPlace:
      return place;
    case kMarks:
      return marks_[static_cast<std::size_t>(index.row())];
    default:
      return {};
  }
}

}  // namespace qmrules::desktop
