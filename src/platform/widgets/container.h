#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/activecontrol.h"
#include "platform/widgets/widget.h"

namespace qmrules::platform::widgets {

class Button;

// Owns the widgets of one form or control, in tab order, and says which of them has the focus. While it is closed (a
// form that is not shown) SetFocus only notes where the focus is to begin.
class Container : public FocusOwner {
 public:
  Container() = default;
  Container(const Container&) = delete;
  Container& operator=(const Container&) = delete;
  ~Container() override = default;

  // Makes a widget, behind those that stand already. Throws std::invalid_argument when name and index are taken.
  template <class W>
  W& Add(std::string name, int index = 0) {
    return AddBefore<W>(nullptr, std::move(name), index);
  }
  // The same, with its place in tab order before a widget of this container; nullptr: behind all.
  template <class W>
  W& AddBefore(const Widget* next, std::string name, int index = 0) {
    auto widget = std::make_unique<W>(std::move(name), index);
    W& added = *widget;
    Adopt(std::move(widget), next);
    return added;
  }
  // Destroys a widget of this container, with the focus gone from it untold. Not to be called from within an event of
  // that widget.
  void Remove(Widget& widget);
  const std::vector<std::unique_ptr<Widget>>& Widgets() const { return widgets_; }

  // The widget of this name (as it is written) and index, or nullptr.
  Widget* Find(std::string_view name, int index = 0) const;
  // The same for one that must be there and be of this class; std::out_of_range, naming it, otherwise.
  template <class W>
  W& Get(std::string_view name, int index = 0) const {
    auto* widget = dynamic_cast<W*>(Find(name, index));
    if (widget == nullptr) throw std::out_of_range("no such widget: " + std::string(name));
    return *widget;
  }

  // The widget that has the focus, or nullptr; one that was hidden or disabled meanwhile has it no more.
  Widget* ActiveWidget() const;
  std::optional<platform::ActiveControl> ActiveControl() const;

  // Moves the focus: the widget that has it gets OnLostFocus and may refuse, then `widget` has it and gets OnGotFocus,
  // where it may pass it on. Called from within OnLostFocus it names another goal for the move under way.
  bool SetFocus(Widget& widget) override;
  bool HasFocus(const Widget& widget) const override { return ActiveWidget() == &widget; }
  bool IsOpen() const override { return open_; }
  // The next or previous tab stop in turn. False when there is none or the focus does not move.
  bool FocusNext() { return FocusAlong(true); }
  bool FocusPrevious() { return FocusAlong(false); }
  // The focus leaves the container. False when the widget that has it refuses.
  bool ReleaseFocus();

  // The buttons that Enter and Escape press from anywhere; nullptr for none.
  void SetDefaultButton(Button* button) { defaultButton_ = button; }
  void SetCancelButton(Button* button) { cancelButton_ = button; }
  Button* DefaultButton() const { return defaultButton_; }
  Button* CancelButton() const { return cancelButton_; }

  // User: a key, to the widget with the focus first. Tab, Enter and Escape that it leaves alone move the focus and
  // press the default and the cancel button.
  bool PressKey(Key key, ShiftState shift = {});
  // User: Alt with a letter. The widgets behind the one with the focus are asked first.
  bool PressMnemonic(std::string_view letter);

  // What a screen reader calls the widget: its own accessible name, else its caption, else the label before it, else
  // its tool tip.
  std::string AccessibleNameOf(const Widget& widget) const;

  // For the view. A widget that is told of as added has its name and index and nothing else yet.
  Event<Widget&> OnWidgetAdded;
  Event<Widget&> OnWidgetRemoving;

 protected:
  // Opens with the focus where SetFocus put it, else on the first tab stop.
  void Open();
  void CloseContainer();

 private:
  void Adopt(std::unique_ptr<Widget> widget, const Widget* next);
  std::size_t PlaceOf(const Widget* widget) const;
  bool FocusAlong(bool forward);
  bool FocusBehind(std::size_t place);
  bool Leave(Widget* next);

  std::vector<std::unique_ptr<Widget>> widgets_;
  Widget* active_ = nullptr;
  Widget* goal_ = nullptr;   // where the move under way leads
  Widget* start_ = nullptr;  // where the focus begins when the container opens
  Button* defaultButton_ = nullptr;
  Button* cancelButton_ = nullptr;
  bool open_ = true;
  bool leaving_ = false;
};

}  // namespace qmrules::platform::widgets
