#pragma once

#include <QScrollBar>

#include "desktop/views/widgetbinding.h"
#include "platform/widgets/scrollbar.h"

namespace qmrules::desktop {

// Shows an upright scroll bar.
class QtScrollBar final : public QScrollBar {
 public:
  QtScrollBar(FocusBridge& focus, platform::widgets::ScrollBar& model, QWidget* parent);

 private:
  void Show();

  platform::widgets::ScrollBar& model_;
  WidgetBinding binding_;
  platform::Subscription changed_;
};

}  // namespace qmrules::desktop
