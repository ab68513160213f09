#include "desktop/views/formview.h"

#include <QCloseEvent>
#include <QEventLoop>
#include <QKeyEvent>

#include "desktop/views/focusbridge.h"
#include "desktop/views/formlayout.h"
#include "desktop/views/qttext.h"
#include "desktop/views/userkeys.h"

namespace qmrules::desktop {

using platform::widgets::Form;
using platform::widgets::Key;
using platform::widgets::Widget;

namespace {

constexpr int kLeastWidth = 360;

}  // namespace

FormView::FormView(Form& form, QWidget* parent)
    : QDialog(parent), form_(form), focus_(std::make_unique<FocusBridge>(form, *this)) {
  setObjectName(ToQt(form.Name()));
  setModal(true);
  setSizeGripEnabled(true);
  setMinimumWidth(kLeastWidth);
  LayOutForm(*focus_, form, *this);
  subscriptions_.push_back(form.OnChanged.Subscribe([this] { Show(); }));
  Show();
}

FormView::~FormView() = default;

void FormView::Show() {
  setWindowTitle(ToQt(form_.Caption()));
}

QWidget* FormView::ViewOf(const Widget& model) const {
  return focus_->ViewOf(model);
}

void FormView::Run() {
  QEventLoop loop;
  const auto hidden = form_.OnHidden.Subscribe([&] {
    hide();
    loop.quit();
  });
  show();
  focus_->ShowActive();
  // A handler that hid the form while the window was coming up has not been waited for.
  if (form_.Visible()) loop.exec(QEventLoop::DialogExec);
  hide();
}

// Escape, and the sign in the window's title.
void FormView::reject() {
  form_.Close();
}

void FormView::closeEvent(QCloseEvent* event) {
  form_.Close();
  event->setAccepted(!form_.Visible());
}

// What no widget took: Enter and Escape press the form's buttons from anywhere.
void FormView::keyPressEvent(QKeyEvent* event) {
  const auto key = KeyOf(*event);
  if (key == Key::Escape) {
    form_.Close();
  } else if (!key || !form_.PressKey(*key, ShiftOf(event->modifiers()))) {
    event->ignore();
  }
}

}  // namespace qmrules::desktop
