#include "desktop/window/programmodel.h"

#include <QFont>
#include <algorithm>

#include "desktop/views/qttext.h"

namespace qmrules::desktop {

namespace {

bool AreSame(const std::vector<catalogue::RegisteredSource>& left,
             const std::vector<catalogue::RegisteredSource>& right) {
  return std::ranges::equal(left, right, {}, &catalogue::RegisteredSource::key, &catalogue::RegisteredSource::key);
}

}  // namespace

void ProgramModel::SetPrograms(std::vector<catalogue::RegisteredSource> programs) {
  if (AreSame(programs, programs_)) {
    programs_ = std::move(programs);
    if (!programs_.empty()) emit dataChanged(index(0, 0), index(rowCount() - 1, kColumns - 1));
    return;
  }
  beginResetModel();
  programs_ = std::move(programs);
  rules_.assign(programs_.size(), 0);
  endResetModel();
}

void ProgramModel::SetRuleCounts(const std::function<std::int64_t(const catalogue::RegisteredSource&)>& count) {
  for (std::size_t row = 0; row < programs_.size(); ++row) {
    const std::int64_t counted = count(programs_[row]);
    if (counted == rules_[row]) continue;
    rules_[row] = counted;
    const QModelIndex changed = index(static_cast<int>(row), kRules);
    emit dataChanged(changed, changed);
  }
}

void ProgramModel::SetCurrent(const std::string& key) {
  if (key == current_) return;
  const int before = RowOf(current_);
  current_ = key;
  for (const int row : {before, RowOf(key)}) {
    if (row >= 0) emit dataChanged(index(row, 0), index(row, kColumns - 1), {Qt::FontRole});
  }
}

int ProgramModel::RowOf(const std::string& key) const {
  const auto found = std::ranges::find(programs_, key, &catalogue::RegisteredSource::key);
  return found == programs_.end() ? -1 : static_cast<int>(found - programs_.begin());
}

void ProgramModel::UseIcons(const IconSet& icons) {
  icons_ = icons;
  if (!programs_.empty()) emit dataChanged(index(0, 0), index(rowCount() - 1, 0), {Qt::DecorationRole});
}

void ProgramModel::Retranslate() {
  emit headerDataChanged(Qt::Horizontal, 0, kColumns - 1);
}

int ProgramModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(programs_.size());
}

int ProgramModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumns;
}

QVariant ProgramModel::TextOf(std::size_t row, int column) const {
  const auto& program = programs_[row];
  switch (column) {
    case kName:
      return ToQt(program.name);
    case kLanguage:
      return ToQt(program.language);
    default:
      return rules_[row] == 0 ? QString() : QString::number(rules_[row]);
  }
}

QVariant ProgramModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const auto row = static_cast<std::size_t>(index.row());
  const auto& program = programs_[row];
  switch (role) {
    case Qt::DisplayRole:
      return TextOf(row, index.column());
    case kSortRole:
      return index.column() == kRules ? QVariant(static_cast<qlonglong>(rules_[row])) : TextOf(row, index.column());
    case Qt::DecorationRole:
      return index.column() == kName ? QVariant(icons_.Icon(program.language)) : QVariant();
    case Qt::ToolTipRole:
      return tr("%1\n%2, lines: %3").arg(ToQt(program.file), ToQt(program.language)).arg(program.lines);
    case Qt::TextAlignmentRole:
      if (index.column() == kRules) return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
      return {};
    case Qt::FontRole: {
      if (program.key != current_) return {};
      QFont font;
      font.setBold(true);
      return font;
    }
    case Qt::AccessibleTextRole:
      if (index.column() == kRules) return tr("Rules: %1").arg(rules_[row]);
      return TextOf(row, index.column());
    default:
      return {};
  }
}

QVariant ProgramModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  if (role == Qt::TextAlignmentRole && section == kRules) return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
  if (role != Qt::DisplayRole) return {};
  switch (section) {
    case kName:
      return tr("Program");
    case kLanguage:
      return tr("Language");
    case kRules:
      return tr("Rules");
    default:
      return {};
  }
}

}  // namespace qmrules::desktop
