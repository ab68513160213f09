#pragma once

#include <memory>
#include <vector>

#include "platform/widgets/toolbutton.h"
#include "platform/widgets/widget.h"

namespace qmrules::platform::widgets {

// A row of buttons, some with a menu below. A click leaves the focus where it is. Keys compare without regard to case.
class ToolBar final : public Widget {
 public:
  using Widget::Widget;

  // Appends a button. Throws std::invalid_argument when its key is taken.
  ToolButton& Add(std::string key, std::string image);
  void AddSeparator();
  // std::out_of_range when no button has the key.
  ToolButton& Button(std::string_view key);
  const std::vector<std::unique_ptr<ToolButton>>& Buttons() const { return buttons_; }

  bool AcceptsFocus() const override { return false; }

  // User: clicks a button, or an entry of its menu. False when it cannot be clicked; std::out_of_range when there is
  // none.
  bool Click(std::string_view key);
  bool ClickMenu(std::string_view key, std::string_view menuKey);

  Event<std::string> OnButtonClick;                   // the button's key
  Event<std::string, std::string> OnButtonMenuClick;  // the button's key, the entry's key

 private:
  ToolButton* FindButton(std::string_view key) const;

  std::vector<std::unique_ptr<ToolButton>> buttons_;
};

}  // namespace qmrules::platform::widgets
