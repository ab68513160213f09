#pragma once

#include <QCoreApplication>
#include <QWidget>

#include "desktop/views/widgetbinding.h"
#include "platform/widgets/updown.h"

namespace qmrules::desktop {

// Shows the two arrows of a number's field. In the field itself the keys Up and Down count, too.
class QtUpDown final : public QWidget {
  Q_DECLARE_TR_FUNCTIONS(qmrules::desktop::QtUpDown)

 public:
  QtUpDown(FocusBridge& focus, platform::widgets::UpDown& model, QWidget* parent);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  platform::widgets::UpDown& model_;
  WidgetBinding binding_;
};

}  // namespace qmrules::desktop
