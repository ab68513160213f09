#include "desktop/views/qtcombobox.h"

#include <QLineEdit>
#include <QSignalBlocker>
#include <QWheelEvent>

#include "desktop/views/qttext.h"

namespace qmrules::desktop {

using platform::widgets::ComboBox;

namespace {

constexpr int kLeastCharacters = 12;

}  // namespace

QtComboBox::QtComboBox(FocusBridge& focus, ComboBox& model, QWidget* parent)
    : QComboBox(parent),
      model_(model),
      binding_(focus, model, *this, WidgetBinding::Acting::Model),
      changed_(model.OnChanged.Subscribe([this] { Show(); })) {
  setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(kLeastCharacters);
  setInsertPolicy(QComboBox::NoInsert);
  connect(this, &QComboBox::activated, this, [this](int index) { Chosen(index); });
  connect(this, &QComboBox::editTextChanged, this, [this](const QString& text) { Edited(text); });
  Show();
}

void QtComboBox::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

void QtComboBox::ShowItems() {
  bool same = count() == model_.Count();
  for (int index = 0; same && index < count(); ++index) same = itemText(index) == ToQt(model_.Item(index).text);
  if (same) return;
  clear();
  for (int index = 0; index < model_.Count(); ++index) addItem(ToQt(model_.Item(index).text));
}

void QtComboBox::Show() {
  const QSignalBlocker silent(this);
  if (isEditable() != model_.Editable()) setEditable(model_.Editable());
  ShowItems();
  if (currentIndex() != model_.ListIndex()) setCurrentIndex(model_.ListIndex());
  if (const QString text = ToQt(model_.Text()); isEditable() && currentText() != text) setEditText(text);
}

void QtComboBox::Chosen(int index) {
  if (index >= 0 && index < model_.Count()) model_.Choose(index);
  Show();
}

void QtComboBox::Edited(const QString& text) {
  if (!isEditable() || text == ToQt(model_.Text())) return;
  model_.Enter(FromQt(text));
  Show();
}

}  // namespace qmrules::desktop
