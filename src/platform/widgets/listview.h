#pragma once

#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/widgets/listrow.h"
#include "platform/widgets/widget.h"

namespace qmrules::platform::widgets {

// A table of rows, with one current row, which the keys start from, and one or several selected rows. Keys of rows and
// columns compare without regard to case and are unique; rows with an empty key are not looked up.
class ListView final : public Widget {
 public:
  using Widget::Widget;

  struct Column {
    std::string key;
    std::string text;
  };
  // Appends a column. False, with nothing changed, when the key is taken.
  bool AddColumn(std::string key, std::string text);
  // std::out_of_range without such a column; so ColumnPlace, which counts from 0.
  void SetColumnText(std::string_view key, std::string text);
  std::size_t ColumnPlace(std::string_view key) const;
  const std::vector<Column>& Columns() const { return columns_; }

  bool MultiSelect() const { return multiSelect_; }
  void SetMultiSelect(bool multiSelect) { Assign(multiSelect_, multiSelect); }
  bool CheckBoxes() const { return checkBoxes_; }
  void SetCheckBoxes(bool checkBoxes) { Assign(checkBoxes_, checkBoxes); }

  // Appends a row. nullptr, with nothing changed, when the key is taken.
  ListRow* Add(std::string key, const std::string& text);
  // When the current row goes, the next one, else the previous one becomes current (and selected, in a list that
  // selects one row only and had this one selected).
  void Remove(ListRow& row);
  void Clear();
  // The row under the key, or nullptr; the empty key finds none.
  ListRow* Find(std::string_view key) const;
  std::size_t Count() const { return rows_.size(); }
  // By place from 0; std::out_of_range outside.
  ListRow& Row(std::size_t place) const { return *rows_.at(place); }
  // From 0, at the cost of a walk.
  std::size_t PlaceOf(const ListRow& row) const;

  ListRow* CurrentRow() const { return current_; }
  // Makes the row current and the only selected one; nullptr: neither current nor selected rows.
  void SetCurrentRow(ListRow* row);
  void SetSelected(ListRow& row, bool selected);
  void SelectAll(bool selected);
  // In the order of the list.
  std::vector<ListRow*> SelectedRows() const;
  // Asks the view to bring the row into sight.
  void EnsureVisible(ListRow& row) { OnEnsureVisible.Raise(row); }

  // User: clicks a row. Where several can be selected, Ctrl turns its selection over, and Shift selects from the row
  // that was clicked last without Shift to this one.
  bool Click(ListRow& row, ShiftState shift = {});
  bool DoubleClick(ListRow& row);
  // User: the right button, over a row (which becomes the selected one unless it is among them) or beside all rows.
  bool RightClick(ListRow* row);
  bool ClickCheckBox(ListRow& row);

  Event<ListRow&> OnRowClick;
  Event<ListRow&> OnRowCheck;
  Event<ListRow&> OnDoubleClick;
  // By the user or by the logic; current row and selection are in place.
  Event<> OnSelectionChanged;

  // For the view. Observers leave the list as it is.
  Event<ListRow&> OnRowAdded;
  Event<ListRow&> OnRowChanged;
  Event<ListRow&> OnRowRemoving;
  Event<> OnRowsRemoved;
  Event<ListRow&> OnEnsureVisible;

 protected:
  bool ActOnKey(const KeyPress& press) override;

 private:
  bool SelectOnly(ListRow* row);
  void SelectRange(const ListRow& from, const ListRow& to);
  ListRow* RowForKey(Key key) const;

  std::vector<Column> columns_;
  std::vector<std::unique_ptr<ListRow>> rows_;
  std::unordered_map<std::string, ListRow*> index_;  // by folded key
  ListRow* current_ = nullptr;
  ListRow* anchor_ = nullptr;  // where a selection with Shift begins
  bool multiSelect_ = false;
  bool checkBoxes_ = false;
};

}  // namespace qmrules::platform::widgets
