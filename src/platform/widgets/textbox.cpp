#include "platform/widgets/textbox.h"

#include <algorithm>

#include "shell/text.h"

namespace qmrules::platform::widgets {

namespace {

// A view may hand over line feeds alone; a text of several lines ends them with CR LF.
std::string WithFullLineBreaks(std::string_view text) {
  std::string full;
  full.reserve(text.size());
  char before = 0;
  for (const char character : text) {
    if (character == '\n' && before != '\r') full += '\r';
    full += character;
    before = character;
  }
  return full;
}

}  // namespace

void TextBox::SetText(std::string text) {
  selStart_ = 0;
  selLength_ = 0;
  if (Assign(text_, std::move(text))) OnTextChanged.Raise();
}

std::size_t TextBox::ByteAt(std::size_t character) const {
  return shell::LeftCharacters(text_, character).size();
}

TextBox::Span TextBox::SelectedBytes() const {
  return {ByteAt(selStart_), ByteAt(selStart_ + selLength_)};
}

std::string TextBox::SelText() const {
  const Span span = SelectedBytes();
  return text_.substr(span.begin, span.end - span.begin);
}

void TextBox::Select(std::size_t start, std::size_t length) {
  const std::size_t count = shell::CharacterCount(text_);
  start = std::min(start, count);
  length = std::min(length, count - start);
  const std::size_t begin = ByteAt(start);
  const std::size_t end = ByteAt(start + length);
  const std::string_view text = text_;
  const std::size_t newStart = shell::CharacterCount(text.substr(0, begin));
  const std::size_t newLength = shell::CharacterCount(text.substr(begin, end - begin));
  if (newStart == selStart_ && newLength == selLength_) return;
  selStart_ = newStart;
  selLength_ = newLength;
  OnChanged.Raise();
}

bool TextBox::Replace(Span span, std::string_view text) {
  std::string replaced = text_.substr(0, span.begin);
  replaced += text;
  selStart_ = shell::CharacterCount(replaced);
  selLength_ = 0;
  replaced.append(text_, span.end);
  if (!Assign(text_, std::move(replaced))) {
    OnChanged.Raise();  // the caret alone has moved
    return false;
  }
  OnTextChanged.Raise();
  return true;
}

void TextBox::ReplaceSelection(std::string_view text) {
  Replace(SelectedBytes(), text);
}

std::string TextBox::Accepted(std::string_view input) const {
  if (MultiLine()) return WithFullLineBreaks(input);
  return std::string(input.substr(0, input.find_first_of("\r\n")));
}

bool TextBox::Type(std::string_view input) {
  if (!BeginUserAction() || locked_) return false;
  std::string accepted = Accepted(input);
  const Span span = SelectedBytes();
  if (maxLength_ != 0) {
    const std::size_t kept = shell::CharacterCount(text_) - selLength_;
    accepted = shell::LeftCharacters(accepted, maxLength_ > kept ? maxLength_ - kept : 0);
  }
  if (accepted.empty() && span.begin == span.end) return false;
  return Replace(span, accepted);
}

bool TextBox::Enter(std::string_view input) {
  if (!BeginUserAction() || locked_) return false;
  if (input == text_ || (MultiLine() && WithFullLineBreaks(input) == WithFullLineBreaks(text_))) return false;
  Select(0, shell::CharacterCount(text_));
  return Type(input);
}

bool TextBox::Backspace() {
  if (!BeginUserAction() || locked_) return false;
  if (selLength_ == 0) {
    if (selStart_ == 0) return false;
    const bool behindLineBreak = std::string_view(text_).substr(0, ByteAt(selStart_)).ends_with("\r\n");
    const std::size_t length = behindLineBreak ? 2 : 1;
    Select(selStart_ - length, length);
  }
  return Replace(SelectedBytes(), {});
}

bool TextBox::DeleteForward() {
  if (!BeginUserAction() || locked_) return false;
  if (selLength_ == 0) {
    const bool atLineBreak = std::string_view(text_).substr(ByteAt(selStart_)).starts_with("\r\n");
    Select(selStart_, atLineBreak ? 2 : 1);
    if (selLength_ == 0) Select(selStart_, 2);  // a code point of two characters goes whole
    if (selLength_ == 0) return false;
  }
  return Replace(SelectedBytes(), {});
}

bool TextBox::ActOnKey(const KeyPress& press) {
  switch (press.key) {
    case Key::Backspace:
      return Backspace();
    case Key::Delete:
      return DeleteForward();
    case Key::Enter:
      return MultiLine() && Type("\r\n");
    case Key::A:
      if (!press.shift.ctrl) return false;
      Select(0, shell::CharacterCount(text_));
      return true;
    default:
      return false;
  }
}

}  // namespace qmrules::platform::widgets
