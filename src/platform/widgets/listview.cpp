#include "platform/widgets/listview.h"

#include <algorithm>
#include <stdexcept>

#include "shell/casefold.h"

namespace qmrules::platform::widgets {

bool ListView::AddColumn(std::string key, std::string text) {
  const bool taken = std::any_of(columns_.begin(), columns_.end(),
                                 [&](const Column& column) { return shell::EqualIgnoringCase(column.key, key); });
  if (taken) return false;
  columns_.push_back({std::move(key), std::move(text)});
  OnChanged.Raise();
  return true;
}

std::size_t ListView::ColumnPlace(std::string_view key) const {
  for (std::size_t place = 0; place < columns_.size(); ++place) {
    if (shell::EqualIgnoringCase(columns_[place].key, key)) return place;
  }
  throw std::out_of_range(Name() + " has no column \"" + std::string(key) + "\"");
}

void ListView::SetColumnText(std::string_view key, std::string text) {
  Assign(columns_[ColumnPlace(key)].text, std::move(text));
}

ListRow* ListView::Add(std::string key, const std::string& text) {
  std::string folded = shell::FoldCase(key);
  if (!folded.empty() && index_.contains(folded)) return nullptr;
  rows_.push_back(std::make_unique<ListRow>(ListRow::Making(), *this, std::move(key), text));
  ListRow& row = *rows_.back();
  if (!folded.empty()) index_.emplace(std::move(folded), &row);
  OnRowAdded.Raise(row);
  return &row;
}

std::size_t ListView::PlaceOf(const ListRow& row) const {
  const auto found = std::find_if(rows_.begin(), rows_.end(), [&](const auto& owned) { return owned.get() == &row; });
  return static_cast<std::size_t>(found - rows_.begin());
}

void ListView::Remove(ListRow& row) {
  OnRowRemoving.Raise(row);
  const std::size_t place = PlaceOf(row);
  const bool wasSelected = row.selected_;
  const bool wasCurrent = current_ == &row;
  if (anchor_ == &row) anchor_ = nullptr;
  if (!row.Key().empty()) index_.erase(shell::FoldCase(row.Key()));
  rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(place));
  if (wasCurrent) {
    current_ = rows_.empty() ? nullptr : rows_[std::min(place, rows_.size() - 1)].get();
    if (current_ != nullptr && wasSelected && !multiSelect_) current_->selected_ = true;
  }
  OnRowsRemoved.Raise();
  if (wasCurrent || wasSelected) OnSelectionChanged.Raise();
}

void ListView::Clear() {
  const bool hadSelection = current_ != nullptr || !SelectedRows().empty();
  current_ = nullptr;
  anchor_ = nullptr;
  index_.clear();
  rows_.clear();
  OnRowsRemoved.Raise();
  if (hadSelection) OnSelectionChanged.Raise();
}

ListRow* ListView::Find(std::string_view key) const {
  const auto found = index_.find(shell::FoldCase(key));
  return found == index_.end() ? nullptr : found->second;
}

bool ListView::SelectOnly(ListRow* row) {
  bool changed = current_ != row;
  for (const auto& other : rows_) {
    changed |= other->selected_ != (other.get() == row);
    other->selected_ = other.get() == row;
  }
  current_ = row;
  anchor_ = row;
  return changed;
}

void ListView::SetCurrentRow(ListRow* row) {
  if (SelectOnly(row)) OnSelectionChanged.Raise();
}

void ListView::SetSelected(ListRow& row, bool selected) {
  if (selected && !multiSelect_) {
    SetCurrentRow(&row);
    return;
  }
  if (row.selected_ == selected) return;
  row.selected_ = selected;
  OnSelectionChanged.Raise();
}

void ListView::SelectAll(bool selected) {
  if (selected && !multiSelect_) return;
  bool changed = false;
  for (const auto& row : rows_) {
    changed |= row->selected_ != selected;
    row->selected_ = selected;
  }
  if (changed) OnSelectionChanged.Raise();
}

std::vector<ListRow*> ListView::SelectedRows() const {
  std::vector<ListRow*> selected;
  for (const auto& row : rows_) {
    if (row->selected_) selected.push_back(row.get());
  }
  return selected;
}

void ListView::SelectRange(const ListRow& from, const ListRow& to) {
  const auto [first, last] = std::minmax({PlaceOf(from), PlaceOf(to)});
  for (std::size_t place = 0; place < rows_.size(); ++place) {
    rows_[place]->selected_ = place >= first && place <= last;
  }
}

bool ListView::Click(ListRow& row, ShiftState shift) {
  const MousePress press{MouseButton::Left, shift};
  if (!PressMouse(press)) return false;
  if (multiSelect_ && shift.shift && anchor_ != nullptr) {
    SelectRange(*anchor_, row);
    current_ = &row;
    OnSelectionChanged.Raise();
  } else if (multiSelect_ && shift.ctrl) {
    row.selected_ = !row.selected_;
    current_ = &row;
    anchor_ = &row;
    OnSelectionChanged.Raise();
  } else {
    SetCurrentRow(&row);
  }
  ReleaseMouse(press);
  OnRowClick.Raise(row);
  return true;
}

bool ListView::DoubleClick(ListRow& row) {
  if (!Click(row)) return false;
  OnDoubleClick.Raise(row);
  return true;
}

bool ListView::RightClick(ListRow* row) {
  if (!BeginUserAction()) return false;
  if (row != nullptr && !row->selected_) SetCurrentRow(row);
  const MousePress press{MouseButton::Right, {}};
  if (!PressMouse(press)) return false;
  ReleaseMouse(press);
  return true;
}

bool ListView::ClickCheckBox(ListRow& row) {
  if (!checkBoxes_ || !BeginUserAction()) return false;
  row.SetChecked(!row.Checked());
  OnRowCheck.Raise(row);
  return true;
}

ListRow* ListView::RowForKey(Key key) const {
  if (rows_.empty()) return nullptr;
  if (key == Key::Home) return rows_.front().get();
  if (key == Key::End) return rows_.back().get();
  if (key != Key::Up && key != Key::Down) return nullptr;
  if (current_ == nullptr) return key == Key::Down ? rows_.front().get() : nullptr;
  const std::size_t place = PlaceOf(*current_);
  if (key == Key::Up) return place > 0 ? rows_[place - 1].get() : nullptr;
  return place + 1 < rows_.size() ? rows_[place + 1].get() : nullptr;
}

bool ListView::ActOnKey(const KeyPress& press) {
  if (press.key == Key::Space && checkBoxes_ && current_ != nullptr) return ClickCheckBox(*current_);
  ListRow* const row = RowForKey(press.key);
  if (row == nullptr) return false;
  if (multiSelect_ && press.shift.shift && anchor_ != nullptr) {
    SelectRange(*anchor_, *row);
    current_ = row;
    OnSelectionChanged.Raise();
  } else {
    SetCurrentRow(row);
  }
  OnEnsureVisible.Raise(*row);
  return true;
}

}  // namespace qmrules::platform::widgets
