#pragma once

#include "platform/widgets/widget.h"

namespace qmrules::platform::widgets {

// A text on the form. It names the widget that follows it in tab order, and its mnemonic takes the user there.
class Label final : public Widget {
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
