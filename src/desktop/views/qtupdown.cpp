#include "desktop/views/qtupdown.h"

#include <QEvent>
#include <QKeyEvent>
#include <QToolButton>
#include <QVBoxLayout>

namespace qmrules::desktop {

QtUpDown::QtUpDown(FocusBridge& focus, platform::widgets::UpDown& model, QWidget* parent)
    : QWidget(parent), model_(model), binding_(focus, model, *this, WidgetBinding::Acting::View) {
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  const auto add = [&](Qt::ArrowType arrow, const QString& name, auto press) {
    auto* const button = new QToolButton(this);
    button->setArrowType(arrow);
    button->setAutoRepeat(true);
    button->setFocusPolicy(Qt::NoFocus);
    button->setAccessibleName(name);
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
    connect(button, &QToolButton::clicked, this, press);
    column->addWidget(button);
  };
  add(Qt::UpArrow, tr("Up"), [this] { model_.Up(); });
  add(Qt::DownArrow, tr("Down"), [this] { model_.Down(); });
  if (model.Buddy() == nullptr) return;
  if (QWidget* const field = focus.ViewOf(*model.Buddy())) field->installEventFilter(this);
}

bool QtUpDown::eventFilter(QObject*, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  const auto& key = static_cast<QKeyEvent&>(*event);
  if (key.modifiers() != Qt::NoModifier && key.modifiers() != Qt::KeypadModifier) return false;
  if (key.key() == Qt::Key_Up) return model_.Up();
  return key.key() == Qt::Key_Down && model_.Down();
}

}  // namespace qmrules::desktop
