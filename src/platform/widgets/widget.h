#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "platform/event.h"
#include "platform/widgets/color.h"
#include "platform/widgets/focus.h"
#include "platform/widgets/userinput.h"

namespace qmrules::platform::widgets {

// What a key with Alt does to a widget whose caption names it.
enum class MnemonicEffect { None, PassOn, Acted };

// The part that all widget models share. A model is the truth about its widget: a view shows it, is told of each
// change through OnChanged, and hands the user's actions to the functions marked "user". A user action takes the focus
// first; it does nothing and gives false when the user could not have done it (the widget is hidden or disabled, the
// form is not shown) or when the widget that has the focus does not let go. A model is used without a view in the same
// way.
class Widget {
 public:
  // `index` tells the members of a control array apart, which share a name.
  explicit Widget(std::string name, int index = 0) : name_(std::move(name)), index_(index) {}
  Widget(const Widget&) = delete;
  Widget& operator=(const Widget&) = delete;
  virtual ~Widget() = default;

  const std::string& Name() const { return name_; }
  int Index() const { return index_; }

  bool Visible() const { return visible_; }
  void SetVisible(bool visible) { Assign(visible_, visible); }
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled) { Assign(enabled_, enabled); }
  // True when Tab stops here.
  bool TabStop() const { return tabStop_; }
  void SetTabStop(bool tabStop) { Assign(tabStop_, tabStop); }
  const std::string& ToolTipText() const { return toolTipText_; }
  void SetToolTipText(std::string text) { Assign(toolTipText_, std::move(text)); }
  // A text of the owner's own; no view shows it.
  const std::string& Tag() const { return tag_; }
  void SetTag(std::string tag) { tag_ = std::move(tag); }
  Color ForeColor() const { return foreColor_; }
  void SetForeColor(Color color) { Assign(foreColor_, color); }
  Color BackColor() const { return backColor_; }
  void SetBackColor(Color color) { Assign(backColor_, color); }
  // The name for a screen reader where the caption or the label does not do; see Container::AccessibleNameOf.
  const std::string& AccessibleName() const { return accessibleName_; }
  void SetAccessibleName(std::string name) { Assign(accessibleName_, std::move(name)); }
  // The caption that names the widget, "" for one that has none.
  virtual std::string_view OwnCaption() const { return {}; }

  // The frame or panel around the widget, or nullptr; it outlives the widget. What is hidden or disabled hides or
  // disables all within.
  Widget* Enclosing() const { return enclosing_; }
  void SetEnclosing(Widget* enclosing) { enclosing_ = enclosing; }

  // True when the widget and all around it are visible and enabled.
  bool IsUsable() const;
  // True for a kind of widget that can have the focus.
  virtual bool AcceptsFocus() const { return true; }

  // Moves the focus here; false when it does not come. A widget outside a container has no focus to take.
  bool SetFocus();
  bool HasFocus() const { return owner_ != nullptr && owner_->HasFocus(*this); }

  // User: presses and releases a key. True when an observer or the widget itself acted on it.
  bool PressKey(Key key, ShiftState shift = {});
  // User: a mouse button goes down, or up again.
  bool PressMouse(const MousePress& press);
  void ReleaseMouse(const MousePress& press);
  // User: Alt with the letter. PassOn asks for the focus to go to the next widget that takes it.
  virtual MnemonicEffect PressMnemonic(std::string_view letter);

  // The container's side; see FocusOwner.
  void SetFocusOwner(FocusOwner* owner) { owner_ = owner; }

  Event<> OnChanged;
  Event<> OnGotFocus;
  Event<FocusLoss&> OnLostFocus;
  Event<KeyPress&> OnKeyDown;
  Event<KeyPress&> OnKeyUp;
  Event<MousePress> OnMouseDown;
  Event<MousePress> OnMouseUp;

 protected:
  // Sets the field and tells the view; false when the value is the same.
  template <class T>
  bool Assign(T& field, T value) {
    if (field == value) return false;
    field = std::move(value);
    OnChanged.Raise();
    return true;
  }

  // The first step of every user action.
  bool BeginUserAction();

  // What the widget does with a key by itself; false for nothing.
  virtual bool ActOnKey(const KeyPress& press);

 private:
  std::string name_;
  int index_;
  bool visible_ = true;
  bool enabled_ = true;
  bool tabStop_ = true;
  std::string toolTipText_;
  std::string tag_;
  Color foreColor_ = Color::Normal;
  Color backColor_ = Color::Normal;
  std::string accessibleName_;
  Widget* enclosing_ = nullptr;
  FocusOwner* owner_ = nullptr;
};

}  // namespace qmrules::platform::widgets
