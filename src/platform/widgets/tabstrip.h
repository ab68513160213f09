#pragma once

#include <vector>

#include "platform/widgets/widget.h"

namespace qmrules::platform::widgets {

// A row of tabs of which one is in front: the first one added, until another is chosen. Keys compare without regard to
// case.
class TabStrip final : public Widget {
 public:
  using Widget::Widget;

  struct Tab {
    std::string key;
    std::string caption;
  };

  // Appends a tab. False, with nothing changed, when the key is taken.
  bool Add(std::string key, std::string caption);
  const std::vector<Tab>& Tabs() const { return tabs_; }
  // std::out_of_range for a key that no tab has; so SetSelected and Choose.
  void SetCaption(std::string_view key, std::string caption);

  // Key of the tab in front, "" without tabs.
  const std::string& Selected() const;
  // Raises OnClick when another tab comes to the front, as a click does.
  void SetSelected(std::string_view key);

  // User: clicks a tab; also the one in front raises OnClick.
  bool Choose(std::string_view key);

  Event<> OnClick;

 protected:
  bool ActOnKey(const KeyPress& press) override;

 private:
  std::size_t PlaceOf(std::string_view key) const;
  bool ChoosePlace(std::size_t place);

  std::vector<Tab> tabs_;
  std::size_t selected_ = 0;
};

}  // namespace qmrules::platform::widgets
