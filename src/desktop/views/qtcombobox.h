#pragma once

#include <QComboBox>

#include "desktop/views/widgetbinding.h"
#include "platform/widgets/combobox.h"

namespace qmrules::desktop {

// Shows a choice, and the field of an editable one. The wheel does nothing to it, so that scrolling past changes no
// choice.
class QtComboBox final : public QComboBox {
 public:
  QtComboBox(FocusBridge& focus, platform::widgets::ComboBox& model, QWidget* parent);

 protected:
  void wheelEvent(QWheelEvent* event) override;

 private:
  void Show();
  void ShowItems();
  void Chosen(int index);
  void Edited(const QString& text);

  platform::widgets::ComboBox& model_;
  WidgetBinding binding_;
  platform::Subscription changed_;
};

}  // namespace qmrules::desktop
