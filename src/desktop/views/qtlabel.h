#pragma once

#include <QLabel>

#include "desktop/views/widgetbinding.h"
#include "platform/widgets/label.h"

namespace qmrules::desktop {

// Shows a label. Its mnemonic is underlined once a buddy is set, which Qt's focus goes to from outside.
class QtLabel final : public QLabel {
 public:
  QtLabel(FocusBridge& focus, platform::widgets::Label& model, QWidget* parent);

 private:
  void Show();

  platform::widgets::Label& model_;
  WidgetBinding binding_;
  platform::Subscription changed_;
};

}  // namespace qmrules::desktop
