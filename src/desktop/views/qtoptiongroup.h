#pragma once

#include <QRadioButton>
#include <QWidget>
#include <vector>

#include "desktop/views/widgetbinding.h"
#include "platform/widgets/optiongroup.h"

namespace qmrules::desktop {

// Shows options below each other, of which at most one is chosen.
class QtOptionGroup final : public QWidget {
 public:
  QtOptionGroup(FocusBridge& focus, platform::widgets::OptionGroup& model, QWidget* parent);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Show();
  QRadioButton* AddOption(int option);

  platform::widgets::OptionGroup& model_;
  WidgetBinding binding_;
  std::vector<QRadioButton*> options_;
  platform::Subscription changed_;
};

}  // namespace qmrules::desktop
