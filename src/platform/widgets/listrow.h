#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/widgets/color.h"

namespace qmrules::platform::widgets {

class ListView;

// A row of a ListView, which owns it: it stays at its address until it is removed.
class ListRow {
 public:
  // Only a ListView makes rows.
  class Making {
    friend class ListView;
    Making() = default;
  };
  ListRow(Making, ListView& list, std::string key, const std::string& text)
      : list_(list), key_(std::move(key)), cells_(1, text) {}
  ListRow(const ListRow&) = delete;
  ListRow& operator=(const ListRow&) = delete;

  // "" for a row that is not looked up.
  const std::string& Key() const { return key_; }
  // The text in the first column.
  const std::string& Text() const { return cells_.front(); }
  void SetText(std::string text) { SetCell(0, std::move(text)); }
  // The text in the column of this key, which for the first column is Text(). std::out_of_range for an unknown column.
  const std::string& SubItem(std::string_view column) const;
  void SetSubItem(std::string_view column, std::string text);
  // A text of the owner's own.
  const std::string& Tag() const { return tag_; }
  void SetTag(std::string tag) { tag_ = std::move(tag); }
  Color ForeColor() const { return foreColor_; }
  void SetForeColor(Color color);
  bool Checked() const { return checked_; }
  // Raises no OnRowCheck: that one tells of the user.
  void SetChecked(bool checked);
  bool Selected() const { return selected_; }
  // In a list that selects one row only, selecting a row unselects the others and makes it the current one.
  void SetSelected(bool selected);

 private:
  friend class ListView;
  void SetCell(std::size_t column, std::string text);

  ListView& list_;
  std::string key_;
  std::vector<std::string> cells_;  // grows as far as columns have been set
  std::string tag_;
  Color foreColor_ = Color::Normal;
  bool checked_ = false;
  bool selected_ = false;
};

}  // namespace qmrules::platform::widgets
