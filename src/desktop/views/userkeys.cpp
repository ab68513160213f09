#include "desktop/views/userkeys.h"

namespace qmrules::desktop {

using platform::widgets::Key;
using platform::widgets::ShiftState;

namespace {

constexpr int kFirstFunctionKey = 112;

}  // namespace

std::optional<Key> KeyOf(const QKeyEvent& event) {
  const int key = event.key();
  if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9)) return static_cast<Key>(key);
  if (key >= Qt::Key_F1 && key <= Qt::Key_F12) return static_cast<Key>(kFirstFunctionKey + key - Qt::Key_F1);
  switch (key) {
    case Qt::Key_Backspace:
      return Key::Backspace;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
      return Key::Tab;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return Key::Enter;
    case Qt::Key_Escape:
      return Key::Escape;
    case Qt::Key_Space:
      return Key::Space;
    case Qt::Key_PageUp:
      return Key::PageUp;
    case Qt::Key_PageDown:
      return Key::PageDown;
    case Qt::Key_End:
      return Key::End;
    case Qt::Key_Home:
      return Key::Home;
    case Qt::Key_Left:
      return Key::Left;
    case Qt::Key_Up:
      return Key::Up;
    case Qt::Key_Right:
      return Key::Right;
    case Qt::Key_Down:
      return Key::Down;
    case Qt::Key_Insert:
      return Key::Insert;
    case Qt::Key_Delete:
      return Key::Delete;
    default:
      return std::nullopt;
  }
}

ShiftState ShiftOf(Qt::KeyboardModifiers modifiers) {
  return {.shift = modifiers.testFlag(Qt::ShiftModifier),
          .ctrl = modifiers.testFlag(Qt::ControlModifier),
          .alt = modifiers.testFlag(Qt::AltModifier)};
}

QString MnemonicLetter(const QKeyEvent& event) {
  const auto modifiers = event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
  if (modifiers != Qt::AltModifier) return {};
  QString text = event.text();
  if (!text.isEmpty() && text.front().isPrint() && !text.front().isSpace()) return text;
  const int key = event.key();
  const bool plain = (key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9);
  return plain ? QString(QChar(key)) : QString();
}

}  // namespace qmrules::desktop
