#include "desktop/views/qtoptiongroup.h"

#include <QEvent>
#include <QVBoxLayout>
#include <algorithm>

#include "desktop/views/qttext.h"

namespace qmrules::desktop {

using platform::widgets::OptionGroup;

QtOptionGroup::QtOptionGroup(FocusBridge& focus, OptionGroup& model, QWidget* parent)
    : QWidget(parent),
      model_(model),
      binding_(focus, model, *this, WidgetBinding::Acting::Model),
      changed_(model.OnChanged.Subscribe([this] { Show(); })) {
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  Show();
}

QRadioButton* QtOptionGroup::AddOption(int option) {
  auto* const button = new QRadioButton(this);
  button->setAutoExclusive(false);  // the model tells which one is chosen
  button->setFocusPolicy(Qt::ClickFocus);
  connect(button, &QRadioButton::clicked, this, [this, option] {
    model_.Choose(option);
    Show();
  });
  button->installEventFilter(this);
  binding_.Watch(*button);
  layout()->addWidget(button);
  return button;
}

bool QtOptionGroup::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::MouseButtonDblClick) return QWidget::eventFilter(watched, event);
  const auto found = std::find(options_.begin(), options_.end(), watched);
  if (found == options_.end()) return false;
  model_.DoubleClick(static_cast<int>(found - options_.begin()));
  return true;
}

void QtOptionGroup::Show() {
  for (int option = static_cast<int>(options_.size()); option < model_.Count(); ++option) {
    options_.push_back(AddOption(option));
  }
  for (int option = 0; option < model_.Count(); ++option) {
    QRadioButton* const button = options_[static_cast<std::size_t>(option)];
    button->setText(ToQt(model_.Caption(option)));
    button->setChecked(option == model_.Value());
  }
  if (options_.empty()) return;
  QRadioButton* const proxy = options_[static_cast<std::size_t>(std::max(0, model_.Value()))];
  const bool focused =
      std::any_of(options_.begin(), options_.end(), [](const auto* button) { return button->hasFocus(); });
  setFocusProxy(proxy);
  if (focused && !proxy->hasFocus()) proxy->setFocus();
}

}  // namespace qmrules::desktop
