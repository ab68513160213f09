#include "desktop/views/qtframe.h"

#include "desktop/views/qttext.h"

namespace qmrules::desktop {

QtFrame::QtFrame(FocusBridge& focus, platform::widgets::Frame& model, QWidget* parent)
    : QGroupBox(parent),
      model_(model),
      binding_(focus, model, *this, WidgetBinding::Acting::View),
      changed_(model.OnChanged.Subscribe([this] { Show(); })) {
  Show();
}

void QtFrame::Show() {
  setTitle(ToQt(model_.Caption()));
  setFlat(model_.Caption().empty());
}

}  // namespace qmrules::desktop
