#pragma once

#include <string>
#include <utility>

#include "platform/widgets/part.h"

namespace qmrules::platform::widgets {

// An entry of the menu that drops from a tool bar button.
class ButtonMenu final : public Part {
 public:
  ButtonMenu(Event<>& changed, std::string key, std::string caption)
      : Part(changed), key_(std::move(key)), caption_(std::move(caption)) {}

  const std::string& Key() const { return key_; }
  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string caption) { Assign(caption_, std::move(caption)); }
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled) { Assign(enabled_, enabled); }
  bool Visible() const { return visible_; }
  void SetVisible(bool visible) { Assign(visible_, visible); }

 private:
  std::string key_;
  std::string caption_;
  bool enabled_ = true;
  bool visible_ = true;
};

}  // namespace qmrules::platform::widgets
