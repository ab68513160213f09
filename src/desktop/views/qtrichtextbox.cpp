#include "desktop/views/qtrichtextbox.h"

#include <QScopedValueRollback>
#include <QTextBlock>

#include "desktop/views/qttext.h"
#include "desktop/views/textedit.h"

namespace qmrules::desktop {

using platform::widgets::RichTextBox;

namespace {

constexpr int kLinesWished = 3;

bool IsFullLineBreak(const QString& text, qsizetype at) {
  return text[at] == QChar::CarriageReturn && at + 1 < text.size() && text[at + 1] == QChar::LineFeed;
}

QString WithShortLineBreaks(QString text) {
  text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  text.replace(QChar::CarriageReturn, QChar::LineFeed);
  text.replace(QChar::ParagraphSeparator, QChar::LineFeed);
  return text;
}

// A place in the text as the model holds it, for a place in the text with short line breaks, and back.
qsizetype HeldPlace(const QString& held, qsizetype shown) {
  qsizetype at = 0;
  for (; shown > 0 && at < held.size(); --shown) at += IsFullLineBreak(held, at) ? 2 : 1;
  return at;
}

qsizetype ShownPlace(const QString& held, qsizetype place) {
  qsizetype shown = 0;
  for (qsizetype at = 0; at < place && at < held.size(); ++shown) at += IsFullLineBreak(held, at) ? 2 : 1;
  return shown;
}

}  // namespace

QtRichTextBox::QtRichTextBox(FocusBridge& focus, RichTextBox& model, QWidget* parent)
    : QPlainTextEdit(parent),
      model_(model),
      binding_(focus, model, *this, WidgetBinding::Acting::Editor),
      changed_(model.OnChanged.Subscribe([this] { Show(); })) {
  setTabChangesFocus(true);
  connect(this, &QPlainTextEdit::textChanged, this, [this] { Edited(); });
  connect(this, &QPlainTextEdit::cursorPositionChanged, this, [this] { HandSelection(); });
  connect(this, &QPlainTextEdit::selectionChanged, this, [this] { HandSelection(); });
  Show();
}

QSize QtRichTextBox::sizeHint() const {
  return {QPlainTextEdit::sizeHint().width(), minimumSizeHint().height() * 2};
}

QSize QtRichTextBox::minimumSizeHint() const {
  const int frame = 2 * frameWidth() + static_cast<int>(2 * document()->documentMargin());
  return {QPlainTextEdit::minimumSizeHint().width(), kLinesWished * fontMetrics().lineSpacing() + frame};
}

// The document's own plain text would turn a no-break space into a space.
QString QtRichTextBox::TextNow() const {
  QString text = document()->toRawText();
  text.replace(QChar::LineSeparator, QChar::LineFeed);
  return WithShortLineBreaks(std::move(text));
}

void QtRichTextBox::Show() {
  if (handing_) return;
  const QScopedValueRollback<bool> showing(showing_, true);
  setReadOnly(model_.Locked());
  binding_.SetLocked(model_.Locked());
  held_ = ToQt(model_.Text());
  const QString now = WithShortLineBreaks(held_);
  if (now != shown_ || now != TextNow()) {
    setPlainText(now);
    shown_ = TextNow();
  }
  const auto begin = ShownPlace(held_, static_cast<qsizetype>(model_.SelStart()));
  const auto end =
      ShownPlace(held_, static_cast<qsizetype>(model_.SelStart()) + static_cast<qsizetype>(model_.SelLength()));
  QTextCursor cursor = textCursor();
  if (cursor.selectionStart() == begin && cursor.selectionEnd() == end) return;
  cursor.setPosition(static_cast<int>(begin));
  cursor.setPosition(static_cast<int>(end), QTextCursor::KeepAnchor);
  setTextCursor(cursor);
}

void QtRichTextBox::HandSelection() {
  if (showing_ || handing_ || TextNow() != shown_) return;
  const QScopedValueRollback<bool> handing(handing_, true);
  const QTextCursor cursor = textCursor();
  const auto begin = HeldPlace(held_, cursor.selectionStart());
  const auto end = HeldPlace(held_, cursor.selectionEnd());
  model_.Select(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin));
}

void QtRichTextBox::Edited() {
  if (showing_) return;
  const QString now = TextNow();
  if (now == shown_) return;
  {
    const QScopedValueRollback<bool> handing(handing_, true);
    TextEdit edit = EditBetween(shown_, now, textCursor().position());
    const auto begin = HeldPlace(held_, edit.start);
    const auto end = HeldPlace(held_, edit.start + edit.removed);
    HandEdit(model_, {begin, end - begin, std::move(edit.inserted)});
  }
  held_ = ToQt(model_.Text());
  if (WithShortLineBreaks(held_) == now) {
    shown_ = now;
    HandSelection();
  } else {
    Show();
  }
}

}  // namespace qmrules::desktop
