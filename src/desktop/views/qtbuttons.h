#pragma once

#include <QCheckBox>
#include <QPushButton>

#include "desktop/views/widgetbinding.h"
#include "platform/widgets/button.h"
#include "platform/widgets/checkbox.h"

namespace qmrules::desktop {

// Shows a push button; one whose caption is "..." is narrow.
class QtButton final : public QPushButton {
 public:
  QtButton(FocusBridge& focus, platform::widgets::Button& model, QWidget* parent);

 private:
  void Show();

  platform::widgets::Button& model_;
  WidgetBinding binding_;
  platform::Subscription changed_;
};

// Shows a check box.
class QtCheckBox final : public QCheckBox {
 public:
  QtCheckBox(FocusBridge& focus, platform::widgets::CheckBox& model, QWidget* parent);

 private:
  void Show();

  platform::widgets::CheckBox& model_;
  WidgetBinding binding_;
  platform::Subscription changed_;
};

}  // namespace qmrules::desktop
