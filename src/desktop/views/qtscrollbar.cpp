#include "desktop/views/qtscrollbar.h"

#include <QSignalBlocker>

namespace qmrules::desktop {

QtScrollBar::QtScrollBar(FocusBridge& focus, platform::widgets::ScrollBar& model, QWidget* parent)
    : QScrollBar(Qt::Vertical, parent),
      model_(model),
      binding_(focus, model, *this, WidgetBinding::Acting::View),
      changed_(model.OnChanged.Subscribe([this] { Show(); })) {
  connect(this, &QScrollBar::valueChanged, this, [this](int value) {
    model_.ScrollTo(value);
    Show();
  });
  Show();
}

void QtScrollBar::Show() {
  const QSignalBlocker silent(this);
  setRange(model_.Min(), model_.Max());
  setSingleStep(model_.SmallChange());
  setPageStep(model_.LargeChange());
  setValue(model_.Value());
}

}  // namespace qmrules::desktop
