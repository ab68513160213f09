#include "desktop/views/focusbridge.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>

namespace qmrules::desktop {

using platform::widgets::Widget;

namespace {

class Raised {
 public:
  explicit Raised(bool& flag) : flag_(flag), before_(flag) { flag_ = true; }
  Raised(const Raised&) = delete;
  Raised& operator=(const Raised&) = delete;
  ~Raised() { flag_ = before_; }

 private:
  bool& flag_;
  bool before_;
};

}  // namespace

FocusBridge::FocusBridge(platform::widgets::Container& container, QWidget& root)
    : container_(container), root_(root), removing_(container.OnWidgetRemoving.Subscribe([this](Widget& model) {
        delete ViewOf(model);
        entries_.erase(&model);
      })) {
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget* from, QWidget* to) { FocusChanged(from, to); });
}

FocusBridge::~FocusBridge() = default;

void FocusBridge::Add(Widget& model, QWidget& view) {
  Entry& entry = entries_[&model];
  entry.model = &model;
  entry.view = &view;
  entry.gotFocus = model.OnGotFocus.Subscribe([this, &model] { GiveFocus(model); });
}

QWidget* FocusBridge::ViewOf(const Widget& model) const {
  const auto found = entries_.find(&model);
  return found == entries_.end() ? nullptr : found->second.view.data();
}

Widget* FocusBridge::ModelAt(const QWidget* widget) const {
  for (; widget != nullptr && widget != &root_; widget = widget->parentWidget()) {
    for (const auto& [key, entry] : entries_) {
      if (entry.view == widget) return entry.model;
    }
  }
  return nullptr;
}

void FocusBridge::GiveFocus(Widget& model) {
  QWidget* const view = ViewOf(model);
  const QWidget* const now = QApplication::focusWidget();
  if (view == nullptr || (now != nullptr && (now == view || view->isAncestorOf(now)))) return;
  const Raised moving(moving_);
  view->setFocus(Qt::OtherFocusReason);
}

void FocusBridge::ShowActive() {
  if (Widget* const active = container_.ActiveWidget()) GiveFocus(*active);
}

// Moves the container's focus, and Qt's behind it. A handler that throws leaves the focus where it was.
void FocusBridge::Move(const std::function<void()>& move) {
  try {
    const Raised moving(moving_);
    move();
  } catch (...) {
    ShowActive();
    throw;
  }
  ShowActive();
}

void FocusBridge::FocusChanged(QWidget*, QWidget* to) {
  // Without a widget that has the focus the whole application has lost it, and will get it back where it was.
  if (to == nullptr || moving_ || !container_.IsOpen()) return;
  if (to == &root_ || root_.isAncestorOf(to)) {
    Enter(*to);
  } else {
    Leave(*to);
  }
}

void FocusBridge::Enter(QWidget& to) {
  const bool entered = !inside_;
  inside_ = true;
  if (Widget* const model = ModelAt(&to); model != nullptr && model->AcceptsFocus()) {
    Move([&] { container_.SetFocus(*model); });
  }
  if (entered) OnEntered.Raise();
}

// A dialog or a menu that comes up does not take the focus from the container: its user is still at work there.
void FocusBridge::Leave(const QWidget& to) {
  const QWidget* const modal = QApplication::activeModalWidget();
  const bool dialogIsUp = modal != nullptr && modal != root_.window();
  if (dialogIsUp || QApplication::activePopupWidget() != nullptr || qobject_cast<const QMenuBar*>(&to) != nullptr ||
      qobject_cast<const QMenu*>(&to) != nullptr) {
    return;
  }
  Move([this] { inside_ = !container_.ReleaseFocus(); });
}

void FocusBridge::SetTabOrder() {
  QWidget* before = nullptr;
  for (const auto& model : container_.Widgets()) {
    QWidget* const view = ViewOf(*model);
    if (view == nullptr || view->focusPolicy() == Qt::NoFocus) continue;
    if (before != nullptr) QWidget::setTabOrder(before, view);
    before = view;
  }
}

}  // namespace qmrules::desktop
