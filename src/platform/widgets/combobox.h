#pragma once

#include <cstdint>
#include <vector>

#include "platform/widgets/widget.h"

namespace qmrules::platform::widgets {

// One entry of a ComboBox.
struct ComboItem {
  std::string text;
  std::int32_t itemData = 0;  // a number of the owner's own, such as an ID
  std::string key;            // "" for none
  std::string tag;
};

// A choice of items, told by their index from 0. An editable one also takes a text that no item has.
class ComboBox final : public Widget {
 public:
  using Widget::Widget;

  bool Editable() const { return editable_; }
  void SetEditable(bool editable) { Assign(editable_, editable); }

  // Appends an item. False, with nothing changed, when another item has its key.
  bool Add(ComboItem item);
  // Takes the item out; the choice stays with its item, or becomes -1 when that is the one. std::out_of_range without
  // such an item.
  void Remove(int index);
  // Takes out all items; the text becomes "". Raises no OnClick.
  void Clear();
  int Count() const { return static_cast<int>(items_.size()); }
  // std::out_of_range without such an item.
  const ComboItem& Item(int index) const;

  // The first item with this key (in any case), text (as written) or item data; -1 for none.
  int IndexOfKey(std::string_view key) const;
  int IndexOfText(std::string_view text) const;
  int IndexOfItemData(std::int32_t itemData) const;

  // The chosen item, -1 for none.
  int ListIndex() const { return listIndex_; }
  // Raises OnClick when the choice changes, as a click does. std::out_of_range without such an item (-1 is none).
  void SetListIndex(int index);
  // The chosen item, or nullptr.
  const ComboItem* SelectedItem() const { return listIndex_ < 0 ? nullptr : &Item(listIndex_); }

  // The chosen item's text or, in an editable one, what the user typed.
  const std::string& Text() const { return text_; }
  // For an editable one: the text; the choice becomes the item of this text, or none. Does nothing otherwise.
  void SetText(std::string text);

  // User: picks the item (OnClick even if it is the chosen one), picks by text (false when there is none), types a
  // whole text into an editable one.
  bool Choose(int index);
  bool ChooseText(std::string_view text);
  bool Enter(std::string_view text);

  Event<> OnClick;
  Event<> OnTextChanged;

 protected:
  bool ActOnKey(const KeyPress& press) override;

 private:
  void SetChoice(int index);

  std::vector<ComboItem> items_;
  bool editable_ = false;
  int listIndex_ = -1;
  std::string text_;
};

}  // namespace qmrules::platform::widgets
