#pragma once

#include <QGroupBox>

#include "desktop/views/widgetbinding.h"
#include "platform/widgets/frame.h"

namespace qmrules::desktop {

// Shows the box around other views; without a caption it has no border either.
class QtFrame final : public QGroupBox {
 public:
  QtFrame(FocusBridge& focus, platform::widgets::Frame& model, QWidget* parent);

 private:
  void Show();

  platform::widgets::Frame& model_;
  WidgetBinding binding_;
  platform::Subscription changed_;
};

}  // namespace qmrules::desktop
