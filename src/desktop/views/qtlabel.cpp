#include "desktop/views/qtlabel.h"

#include "desktop/views/qttext.h"

namespace qmrules::desktop {

QtLabel::QtLabel(FocusBridge& focus, platform::widgets::Label& model, QWidget* parent)
    : QLabel(parent),
      model_(model),
      binding_(focus, model, *this, WidgetBinding::Acting::Model),
      changed_(model.OnChanged.Subscribe([this] { Show(); })) {
  setTextFormat(Qt::PlainText);
  Show();
}

void QtLabel::Show() {
  setText(ToQt(model_.Caption()));
}

}  // namespace qmrules::desktop
