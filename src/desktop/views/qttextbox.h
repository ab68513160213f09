#pragma once

#include <QLineEdit>

#include "desktop/views/widgetbinding.h"
#include "platform/widgets/textbox.h"

namespace qmrules::desktop {

// Shows a field of one line.
class QtTextBox final : public QLineEdit {
 public:
  QtTextBox(FocusBridge& focus, platform::widgets::TextBox& model, QWidget* parent);

 private:
  void Show();
  void ShowSelection();
  void Edited();
  void HandSelection();

  platform::widgets::TextBox& model_;
  WidgetBinding binding_;
  QString shown_;
  bool showing_ = false;  // the view is being brought into line with the model
  bool handing_ = false;  // an edit is on its way to the model
  platform::Subscription changed_;
};

}  // namespace qmrules::desktop
