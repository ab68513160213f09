#pragma once

#include "platform/widgets/widget.h"

namespace qmrules::platform::widgets {

// A push button.
class Button final : public Widget {
 public:
  using Widget::Widget;

  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string caption) { Assign(caption_, std::move(caption)); }

  // User: presses the button, by mouse, Enter, Space or mnemonic. True when the press was delivered.
  bool Press();

  std::string_view OwnCaption() const override { return caption_; }
  MnemonicEffect PressMnemonic(std::string_view letter) override;

  Event<> OnClick;

 protected:
  bool ActOnKey(const KeyPress& press) override;

 private:
  std::string caption_;
};

}  // namespace qmrules::platform::widgets
