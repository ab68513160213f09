#include "platform/widgets/listrow.h"

#include "platform/widgets/listview.h"

namespace qmrules::platform::widgets {

const std::string& ListRow::SubItem(std::string_view column) const {
  static const std::string unset;
  const std::size_t place = list_.ColumnPlace(column);
  return place < cells_.size() ? cells_[place] : unset;
}

void ListRow::SetSubItem(std::string_view column, std::string text) {
  SetCell(list_.ColumnPlace(column), std::move(text));
}

void ListRow::SetCell(std::size_t column, std::string text) {
  if (column >= cells_.size()) cells_.resize(column + 1);
  if (cells_[column] == text) return;
  cells_[column] = std::move(text);
  list_.OnRowChanged.Raise(*this);
}

void ListRow::SetForeColor(Color color) {
  if (foreColor_ == color) return;
  foreColor_ = color;
  list_.OnRowChanged.Raise(*this);
}

void ListRow::SetChecked(bool checked) {
  if (checked_ == checked) return;
  checked_ = checked;
  list_.OnRowChanged.Raise(*this);
}

void ListRow::SetSelected(bool selected) {
  list_.SetSelected(*this, selected);
}

}  // namespace qmrules::platform::widgets
