#pragma once

#include <string>
#include <utility>

#include "platform/widgets/part.h"

namespace qmrules::platform::widgets {

// One item of a Menu. The caption "-" makes a separator.
class MenuItem final : public Part {
 public:
  MenuItem(Event<>& changed, std::string name, int index) : Part(changed), name_(std::move(name)), index_(index) {}

  const std::string& Name() const { return name_; }
  // Tells the members of a control array apart.
  int Index() const { return index_; }
  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string caption) { Assign(caption_, std::move(caption)); }
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled) { Assign(enabled_, enabled); }
  bool Visible() const { return visible_; }
  void SetVisible(bool visible) { Assign(visible_, visible); }
  bool Checked() const { return checked_; }
  void SetChecked(bool checked) { Assign(checked_, checked); }
  const std::string& Tag() const { return tag_; }
  void SetTag(std::string tag) { tag_ = std::move(tag); }
  bool IsSeparator() const { return caption_ == "-"; }

  // User: chooses the item. False when it cannot be chosen.
  bool Click() {
    if (!enabled_ || !visible_ || IsSeparator()) return false;
    OnClick.Raise();
    return true;
  }

  Event<> OnClick;

 private:
  std::string name_;
  int index_;
  std::string caption_;
  std::string tag_;
  bool enabled_ = true;
  bool visible_ = true;
  bool checked_ = false;
};

}  // namespace qmrules::platform::widgets
