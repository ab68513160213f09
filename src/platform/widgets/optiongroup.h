#pragma once

#include <vector>

#include "platform/widgets/widget.h"

namespace qmrules::platform::widgets {

// A set of options of which at most one is chosen. Options are told by their index, from 0.
class OptionGroup final : public Widget {
 public:
  using Widget::Widget;

  // Appends an option; `tag` is a text of the owner's own.
  void Add(std::string caption, std::string tag = {});
  int Count() const { return static_cast<int>(options_.size()); }
  // Each throws std::out_of_range for an index that no option has.
  const std::string& Caption(int index) const { return At(index).caption; }
  void SetCaption(int index, std::string caption);
  const std::string& OptionTag(int index) const { return At(index).tag; }

  // The chosen option, -1 for none.
  int Value() const { return value_; }
  // Raises OnClick when the choice changes, as a click does; not for -1. std::out_of_range for any other index that no
  // option has.
  void SetValue(int index);

  // User: chooses the option; DoubleClick then also raises OnDoubleClick.
  bool Choose(int index);
  bool DoubleClick(int index);

  MnemonicEffect PressMnemonic(std::string_view letter) override;

  Event<int> OnClick;
  Event<int> OnDoubleClick;

 protected:
  bool ActOnKey(const KeyPress& press) override;

 private:
  struct Option {
    std::string caption;
    std::string tag;
  };
  const Option& At(int index) const;

  std::vector<Option> options_;
  int value_ = -1;
};

}  // namespace qmrules::platform::widgets
