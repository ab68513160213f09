#pragma once

#include "platform/widgets/widget.h"

namespace qmrules::platform::widgets {

// A box that is ticked or not.
class CheckBox final : public Widget {
 public:
  using Widget::Widget;

  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string caption) { Assign(caption_, std::move(caption)); }
  bool Checked() const { return checked_; }
  // Raises OnClick when the value changes, as a click does.
  void SetChecked(bool checked);

  // User: turns the tick over.
  bool Click();

  std::string_view OwnCaption() const override { return caption_; }
  MnemonicEffect PressMnemonic(std::string_view letter) override;

  Event<> OnClick;

 protected:
  bool ActOnKey(const KeyPress& press) override;

 private:
  std::string caption_;
  bool checked_ = false;
};

}  // namespace qmrules::platform::widgets
