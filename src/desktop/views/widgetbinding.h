#pragma once

#include <QKeyEvent>
#include <QMouseEvent>
#include <QObject>
#include <QString>
#include <QWidget>

#include "desktop/views/focusbridge.h"
#include "platform/event.h"
#include "platform/widgets/widget.h"

namespace qmrules::desktop {

// What all views share. Shows whether the model can be seen and used, its tool tip, colours and accessible name, and
// hands the focus, the keys and the presses of the mouse to the model. The focus reaches the model first: a press that
// the user could not have made, since another widget kept the focus, does not reach the view.
//
// One stands in each view, as its last member but the subscriptions.
class WidgetBinding final : public QObject {
 public:
  // Who acts on keys and presses that no observer of the model handles.
  enum class Acting {
    Model,   // the model does, and the view on what the model leaves
    Editor,  // the view, which edits by itself; the model's observers are only told of the keys
    View,    // the model on keys; the view on presses, which it hands to the model by itself
  };

  // Keys and presses reach the model so as `acting` tells. `view` outlives this, and `model` outlives the view.
  WidgetBinding(FocusBridge& focus, platform::widgets::Widget& model, QWidget& view, Acting acting);
  ~WidgetBinding() override;

  // Keys and presses of this part of the view count as the view's own.
  void Watch(QObject& part);

  // A field that the user cannot change looks different.
  void SetLocked(bool locked);

  // Shows what all views show, as the model has it now.
  void Refresh();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void ShowVisibility();
  bool TakesFocus();
  bool PressKey(const QKeyEvent& event);
  bool FilterKeyPress(const QKeyEvent& event);
  bool FilterMousePress(const QObject& part, const QMouseEvent& event);
  bool WantsShortcut(const QKeyEvent& event) const;
  QString NameForReaders() const;

  FocusBridge& focus_;
  platform::widgets::Widget& model_;
  QWidget& view_;
  QObject& pointed_;  // the part of the view that the mouse is over
  Acting acting_;
  bool locked_ = false;
  bool pressed_ = false;
  bool hiding_ = false;
  platform::Subscription changed_;
};

}  // namespace qmrules::desktop
