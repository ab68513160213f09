#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/widgets/buttonmenu.h"
#include "platform/widgets/part.h"

namespace qmrules::platform::widgets {

// A button of a ToolBar; one without a key is a separator.
class ToolButton final : public Part {
 public:
  ToolButton(Event<>& changed, std::string key, std::string image)
      : Part(changed), changed_(changed), key_(std::move(key)), image_(std::move(image)) {}

  const std::string& Key() const { return key_; }
  // Key in the tool bar's image list.
  const std::string& Image() const { return image_; }
  void SetImage(std::string image) { Assign(image_, std::move(image)); }
  const std::string& ToolTipText() const { return toolTipText_; }
  void SetToolTipText(std::string text) { Assign(toolTipText_, std::move(text)); }
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled) { Assign(enabled_, enabled); }
  bool Visible() const { return visible_; }
  void SetVisible(bool visible) { Assign(visible_, visible); }
  // True while a two-state button is shown pressed. A click does not change it: the command does.
  bool Pressed() const { return pressed_; }
  void SetPressed(bool pressed) { Assign(pressed_, pressed); }

  // Appends an entry to the button's menu. Throws std::invalid_argument when its key is taken.
  ButtonMenu& AddMenu(std::string key, std::string caption);
  // The entry of this key, in any case. std::out_of_range when there is none.
  ButtonMenu& Menu(std::string_view key);
  const std::vector<std::unique_ptr<ButtonMenu>>& Menus() const { return menus_; }

 private:
  ButtonMenu* FindMenu(std::string_view key) const;

  Event<>& changed_;
  std::string key_;
  std::string image_;
  std::string toolTipText_;
  bool enabled_ = true;
  bool visible_ = true;
  bool pressed_ = false;
  std::vector<std::unique_ptr<ButtonMenu>> menus_;
};

}  // namespace qmrules::platform::widgets
