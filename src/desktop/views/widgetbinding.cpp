#include "desktop/views/widgetbinding.h"

#include <QAbstractScrollArea>
#include <QEvent>

#include "desktop/views/colors.h"
#include "desktop/views/qttext.h"
#include "desktop/views/userkeys.h"
#include "platform/widgets/caption.h"
#include "platform/widgets/optiongroup.h"

namespace qmrules::desktop {

using platform::widgets::Container;
using platform::widgets::Key;
using platform::widgets::KeyPress;
using platform::widgets::MouseButton;
using platform::widgets::MousePress;
using platform::widgets::OptionGroup;
using platform::widgets::ShiftState;
using platform::widgets::Widget;

namespace {

bool AnswersTo(const Widget& model, std::string_view letter) {
  if (!model.IsUsable()) return false;
  if (platform::widgets::HasMnemonic(model.OwnCaption(), letter)) return true;
  const auto* const options = dynamic_cast<const OptionGroup*>(&model);
  if (options == nullptr) return false;
  for (int option = 0; option < options->Count(); ++option) {
    if (platform::widgets::HasMnemonic(options->Caption(option), letter)) return true;
  }
  return false;
}

bool AnswersTo(const Container& container, std::string_view letter) {
  for (const auto& model : container.Widgets()) {
    if (AnswersTo(*model, letter)) return true;
  }
  return false;
}

MousePress PressOf(const QMouseEvent& event) {
  const QPoint place = event.position().toPoint();
  return {event.button() == Qt::RightButton ? MouseButton::Right : MouseButton::Left, ShiftOf(event.modifiers()),
          place.x(), place.y()};
}

QWidget& PointedPart(QWidget& view) {
  auto* const area = qobject_cast<QAbstractScrollArea*>(&view);
  return area == nullptr ? view : *area->viewport();
}

bool IsLeftOrRight(const QMouseEvent& event) {
  return event.button() == Qt::LeftButton || event.button() == Qt::RightButton;
}

}  // namespace

WidgetBinding::WidgetBinding(FocusBridge& focus, Widget& model, QWidget& view, Acting acting)
    : focus_(focus),
      model_(model),
      view_(view),
      pointed_(PointedPart(view)),
      acting_(acting),
      changed_(model.OnChanged.Subscribe([this] { Refresh(); })) {
  view.setObjectName(model.Index() == 0 ? ToQt(model.Name())
                                        : ToQt(model.Name() + "(" + std::to_string(model.Index()) + ")"));
  focus.Add(model, view);
  Watch(view);
  if (&pointed_ != &view) Watch(pointed_);
  Refresh();
}

WidgetBinding::~WidgetBinding() = default;

void WidgetBinding::Watch(QObject& part) {
  part.installEventFilter(this);
}

void WidgetBinding::SetLocked(bool locked) {
  if (locked_ == locked) return;
  locked_ = locked;
  Refresh();
}

QString WidgetBinding::NameForReaders() const {
  return ToQt(focus_.Container().AccessibleNameOf(model_));
}

void WidgetBinding::Refresh() {
  if (const QString name = NameForReaders(); !name.isEmpty()) view_.setAccessibleName(name);
  view_.setToolTip(ToQt(model_.ToolTipText()));
  view_.setEnabled(model_.Enabled());
  if (model_.AcceptsFocus()) view_.setFocusPolicy(model_.TabStop() ? Qt::StrongFocus : Qt::ClickFocus);
  ApplyColors(model_, locked_, view_);
  ShowVisibility();
}

// The logic hides all panes and shows some of them again. A view that were hidden in between would flicker and lose the
// focus, so what is on screen is hidden only when the event loop runs again.
void WidgetBinding::ShowVisibility() {
  if (model_.Visible() || !view_.isVisible()) {
    view_.setVisible(model_.Visible());
    return;
  }
  if (hiding_) return;
  hiding_ = true;
  const auto hide = [this] {
    hiding_ = false;
    view_.setVisible(model_.Visible());
  };
  QMetaObject::invokeMethod(this, hide, Qt::QueuedConnection);
}

// True when the model has the focus that Qt has given the view. In a window that is not active Qt tells nobody of it.
bool WidgetBinding::TakesFocus() {
  if (!model_.AcceptsFocus() || model_.HasFocus()) return true;
  const QWidget* const next = view_.window()->focusWidget();
  const bool isHere = next != nullptr && (next == &view_ || view_.isAncestorOf(next));
  if (isHere && model_.SetFocus()) return true;
  focus_.ShowActive();
  return false;
}

bool WidgetBinding::PressKey(const QKeyEvent& event) {
  const auto key = KeyOf(event);
  return key && *key != Key::Tab && focus_.Container().PressKey(*key, ShiftOf(event.modifiers()));
}

// A key of the model's comes before a command of the window that has the same key.
bool WidgetBinding::WantsShortcut(const QKeyEvent& event) const {
  if (const QString letter = MnemonicLetter(event); !letter.isEmpty()) {
    return AnswersTo(focus_.Container(), FromQt(letter));
  }
  if (acting_ == Acting::Editor) return false;  // an editor asks for its keys by itself
  const auto key = KeyOf(event);
  const ShiftState shift = ShiftOf(event.modifiers());
  if (!key || shift.alt) return false;
  if (shift.ctrl) return *key == Key::A || *key == Key::U;
  return *key == Key::Delete || *key == Key::Insert || *key == Key::Space || *key == Key::Enter || *key == Key::S ||
         (*key == Key::F10 && shift.shift);
}

bool WidgetBinding::FilterKeyPress(const QKeyEvent& event) {
  if (const QString letter = MnemonicLetter(event); !letter.isEmpty()) {
    const std::string pressed = FromQt(letter);
    return AnswersTo(focus_.Container(), pressed) && focus_.Container().PressMnemonic(pressed);
  }
  const auto key = KeyOf(event);
  const bool opensList = acting_ == Acting::Model && event.modifiers().testFlag(Qt::AltModifier);
  if (!key || *key == Key::Tab || opensList) return false;
  if (!TakesFocus()) return true;
  const bool editsByKey = *key != Key::Escape && *key != Key::F10;
  if (acting_ != Acting::Editor || !editsByKey) return PressKey(event);
  KeyPress press{*key, ShiftOf(event.modifiers())};
  model_.OnKeyDown.Raise(press);
  return press.handled;
}

bool WidgetBinding::FilterMousePress(const QObject& part, const QMouseEvent& event) {
  // Qt has moved its focus here before the press. When it is elsewhere again, another widget kept it.
  if (!TakesFocus()) return true;
  if (acting_ == Acting::View || !IsLeftOrRight(event) || &part != &pointed_) return false;
  pressed_ = true;
  return !model_.PressMouse(PressOf(event));
}

bool WidgetBinding::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::ShortcutOverride:
      if (!WantsShortcut(static_cast<QKeyEvent&>(*event))) return false;
      event->accept();
      return true;
    case QEvent::KeyPress:
      return FilterKeyPress(static_cast<QKeyEvent&>(*event));
    case QEvent::KeyRelease: {
      const auto key = KeyOf(static_cast<QKeyEvent&>(*event));
      if (acting_ != Acting::Editor || !key) return false;
      KeyPress press{*key, ShiftOf(static_cast<QKeyEvent&>(*event).modifiers())};
      model_.OnKeyUp.Raise(press);
      return press.handled;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      return FilterMousePress(*watched, static_cast<QMouseEvent&>(*event));
    case QEvent::MouseButtonRelease:
      if (pressed_) {
        pressed_ = false;
        model_.ReleaseMouse(PressOf(static_cast<QMouseEvent&>(*event)));
      }
      return false;
    case QEvent::ApplicationPaletteChange:
    case QEvent::PaletteChange:
      if (watched == &view_) ApplyColors(model_, locked_, view_);
      return false;
    default:
      return false;
  }
}

}  // namespace qmrules::desktop
