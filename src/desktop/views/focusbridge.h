#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <unordered_map>

#include "platform/event.h"
#include "platform/widgets/container.h"

namespace qmrules::desktop {

// Keeps Qt's focus and the focus of a container's models the same, in both directions. Where a model does not let go of
// the focus, Qt's focus comes back to its view. A part of the view that stands for no model, such as a button of a tool
// bar, may have Qt's focus meanwhile: the container keeps its own.
class FocusBridge final : public QObject {
 public:
  // `root` is the view that all others stand in; both outlive this.
  FocusBridge(platform::widgets::Container& container, QWidget& root);
  ~FocusBridge() override;

  platform::widgets::Container& Container() const { return container_; }

  // From now on the view, with all that stands in it, is where the model has its focus. A model that leaves the
  // container takes its view with it; the view may go before.
  void Add(platform::widgets::Widget& model, QWidget& view);
  // The view of the model, or nullptr.
  QWidget* ViewOf(const platform::widgets::Widget& model) const;
  // The model whose view the widget is or stands in, or nullptr.
  platform::widgets::Widget* ModelAt(const QWidget* widget) const;

  // Brings Qt's focus to the view of the model that has the container's.
  void ShowActive();

  // Lets Tab lead through the views in the order of the container.
  void SetTabOrder();

  // Qt's focus has come in from outside.
  platform::Event<> OnEntered;

 private:
  struct Entry {
    platform::widgets::Widget* model = nullptr;
    QPointer<QWidget> view;
    platform::Subscription gotFocus;
  };
  void FocusChanged(QWidget* from, QWidget* to);
  void Enter(QWidget& to);
  void Leave(const QWidget& to);
  void Move(const std::function<void()>& move);
  void GiveFocus(platform::widgets::Widget& model);

  platform::widgets::Container& container_;
  QWidget& root_;
  std::unordered_map<const platform::widgets::Widget*, Entry> entries_;
  platform::Subscription removing_;
  bool moving_ = false;
  bool inside_ = false;
};

}  // namespace qmrules::desktop
