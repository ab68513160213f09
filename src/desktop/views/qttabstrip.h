#pragma once

#include <QTabBar>

#include "desktop/views/widgetbinding.h"
#include "platform/widgets/tabstrip.h"

namespace qmrules::desktop {

// Shows a row of tabs.
class QtTabStrip final : public QTabBar {
 public:
  QtTabStrip(FocusBridge& focus, platform::widgets::TabStrip& model, QWidget* parent);

 private:
  void Show();
  void Chosen(int place);

  platform::widgets::TabStrip& model_;
  WidgetBinding binding_;
  bool choosing_ = false;
  platform::Subscription changed_;
};

}  // namespace qmrules::desktop
