#pragma once

#include "platform/widgets/widget.h"

namespace qmrules::platform::widgets {

// A captioned box, or a bare panel, around other widgets (SetEnclosing). Its mnemonic takes the user to the first
// widget behind it in tab order.
class Frame final : public Widget {
 public:
  using Widget::Widget;

  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string caption) { Assign(caption_, std::move(caption)); }

  std::string_view OwnCaption() const override { return caption_; }
  bool AcceptsFocus() const override { return false; }
  MnemonicEffect PressMnemonic(std::string_view letter) override;

 private:
  std::string caption_;
};

}  // namespace qmrules::platform::widgets
