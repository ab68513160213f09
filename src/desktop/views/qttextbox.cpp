#include "desktop/views/qttextbox.h"

#include <QScopedValueRollback>
#include <limits>

#include "desktop/views/qttext.h"
#include "desktop/views/textedit.h"

namespace qmrules::desktop {

using platform::widgets::TextBox;

QtTextBox::QtTextBox(FocusBridge& focus, TextBox& model, QWidget* parent)
    : QLineEdit(parent),
      model_(model),
      binding_(focus, model, *this, WidgetBinding::Acting::Editor),
      changed_(model.OnChanged.Subscribe([this] { Show(); })) {
  setMaxLength(std::numeric_limits<int>::max());  // the model knows what it takes
  connect(this, &QLineEdit::textEdited, this, [this] { Edited(); });
  connect(this, &QLineEdit::cursorPositionChanged, this, [this] { HandSelection(); });
  connect(this, &QLineEdit::selectionChanged, this, [this] { HandSelection(); });
  Show();
}

void QtTextBox::Show() {
  if (handing_) return;
  const QScopedValueRollback<bool> showing(showing_, true);
  setReadOnly(model_.Locked());
  binding_.SetLocked(model_.Locked());
  if (const QString now = ToQt(model_.Text()); now != text() || now != shown_) {
    setText(now);
    shown_ = now;
  }
  ShowSelection();
}

void QtTextBox::ShowSelection() {
  const int start = static_cast<int>(model_.SelStart());
  const int length = static_cast<int>(model_.SelLength());
  const bool same = hasSelectedText() ? selectionStart() == start && selectedText().size() == length
                                      : length == 0 && cursorPosition() == start;
  if (same) return;
  if (length == 0) {
    setCursorPosition(start);
    deselect();
  } else {
    setSelection(start, length);
  }
}

void QtTextBox::HandSelection() {
  if (showing_ || handing_ || text() != shown_) return;
  const QScopedValueRollback<bool> handing(handing_, true);
  const bool selected = hasSelectedText();
  model_.Select(static_cast<std::size_t>(selected ? selectionStart() : cursorPosition()),
                static_cast<std::size_t>(selected ? selectedText().size() : 0));
}

void QtTextBox::Edited() {
  if (showing_ || text() == shown_) return;
  {
    const QScopedValueRollback<bool> handing(handing_, true);
    HandEdit(model_, EditBetween(shown_, text(), cursorPosition()));
  }
  if (ToQt(model_.Text()) == text()) {
    shown_ = text();
    HandSelection();
  } else {
    Show();
  }
}

}  // namespace qmrules::desktop
