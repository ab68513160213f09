#include "desktop/views/qtbuttons.h"

#include "desktop/views/qttext.h"

namespace qmrules::desktop {

using platform::widgets::Button;
using platform::widgets::CheckBox;

QtButton::QtButton(FocusBridge& focus, Button& model, QWidget* parent)
    : QPushButton(parent),
      model_(model),
      binding_(focus, model, *this, WidgetBinding::Acting::Model),
      changed_(model.OnChanged.Subscribe([this] { Show(); })) {
  setAutoDefault(false);
  connect(this, &QPushButton::clicked, this, [this] { model_.Press(); });
  Show();
}

void QtButton::Show() {
  setText(ToQt(model_.Caption()));
  const bool narrow = model_.Caption() == "...";
  setMaximumWidth(narrow ? sizeHint().height() + sizeHint().height() / 2 : QWIDGETSIZE_MAX);
}

QtCheckBox::QtCheckBox(FocusBridge& focus, CheckBox& model, QWidget* parent)
    : QCheckBox(parent),
      model_(model),
      binding_(focus, model, *this, WidgetBinding::Acting::Model),
      changed_(model.OnChanged.Subscribe([this] { Show(); })) {
  connect(this, &QCheckBox::clicked, this, [this] {
    model_.Click();
    Show();
  });
  Show();
}

void QtCheckBox::Show() {
  setText(ToQt(model_.Caption()));
  setChecked(model_.Checked());
}

}  // namespace qmrules::desktop
