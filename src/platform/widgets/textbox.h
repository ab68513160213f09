#pragma once

#include <cstddef>

#include "platform/widgets/widget.h"

namespace qmrules::platform::widgets {

// A field of text. Places and lengths count characters (UTF-16 code units) from 0; a place within a surrogate pair
// means the place before it.
class TextBox : public Widget {
 public:
  using Widget::Widget;

  const std::string& Text() const { return text_; }
  // Takes any text, longer than MaxLength too; the selection becomes empty, at the beginning.
  void SetText(std::string text);

  // Most characters that the user can bring the text to; 0 for any number.
  std::size_t MaxLength() const { return maxLength_; }
  void SetMaxLength(std::size_t characters) { Assign(maxLength_, characters); }
  // A locked field can be read and selected by the user but not changed.
  bool Locked() const { return locked_; }
  void SetLocked(bool locked) { Assign(locked_, locked); }
  virtual bool MultiLine() const { return false; }

  std::size_t SelStart() const { return selStart_; }
  std::size_t SelLength() const { return selLength_; }
  std::string SelText() const;
  // Selects, cut to what there is of the text.
  void Select(std::size_t start, std::size_t length);
  // Puts a text in place of the selected part; the caret goes behind it. Not bound by Locked and MaxLength.
  void ReplaceSelection(std::string_view text);

  // User: types, or pastes, over the selection. Where the text would grow beyond MaxLength, the rest of the input is
  // dropped; a field of one line takes the input up to its first line break. True when the text was changed.
  bool Type(std::string_view input);
  // User: replaces the whole text, as selecting all and typing does. The same text changes nothing.
  bool Enter(std::string_view input);
  // User: deletes the selection, else the character before or behind the caret.
  bool Backspace();
  bool DeleteForward();

  // Raised by any change of the text, also by SetText.
  Event<> OnTextChanged;

 protected:
  bool ActOnKey(const KeyPress& press) override;

 private:
  struct Span {
    std::size_t begin = 0;  // bytes
    std::size_t end = 0;
  };
  std::size_t ByteAt(std::size_t character) const;
  Span SelectedBytes() const;
  std::string Accepted(std::string_view input) const;
  bool Replace(Span span, std::string_view text);

  std::string text_;
  std::size_t maxLength_ = 0;
  bool locked_ = false;
  std::size_t selStart_ = 0;
  std::size_t selLength_ = 0;
};

}  // namespace qmrules::platform::widgets
