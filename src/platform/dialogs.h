#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qmrules::platform {

namespace widgets {
class Form;
class Menu;
}  // namespace widgets

// What a message box looks like and which answers it offers.
enum class MessageStyle {
  Question,          // Yes, No
  QuestionOkCancel,  // Ok, Cancel
  Information,       // Ok
  Exclamation,       // Ok
};

enum class MessageAnswer { Ok, Cancel, Yes, No };

// True for an answer that the style offers. Closing the box gives No, Cancel or Ok.
constexpr bool Offers(MessageStyle style, MessageAnswer answer) {
  switch (style) {
    case MessageStyle::Question:
      return answer == MessageAnswer::Yes || answer == MessageAnswer::No;
    case MessageStyle::QuestionOkCancel:
      return answer == MessageAnswer::Ok || answer == MessageAnswer::Cancel;
    case MessageStyle::Information:
    case MessageStyle::Exclamation:
      break;
  }
  return answer == MessageAnswer::Ok;
}

// What a file is asked for with.
struct FileRequest {
  std::string title;
  std::string filter;  // label, "|", pattern, "|", as "Text file|*.txt|"
  std::string folder;  // where the search begins
  std::string defaultName;
};

// Everything that stops and waits for the user. Each call returns when the user is done; the pointer is normal
// meanwhile.
class Dialogs {
 public:
  virtual ~Dialogs() = default;
  // Shows the form and lets the user act on it until it is hidden. Called by Form::Show only.
  virtual void ShowModal(widgets::Form& form) = 0;
  // Gives one of the answers that the style offers. Lines of the text are parted by a line break.
  virtual MessageAnswer MessageBox(std::string_view text, std::string_view caption, MessageStyle style) = 0;
  // A full path, or nothing when the user cancelled. The file to open exists; for the file to save the user has agreed
  // to replace one that exists.
  virtual std::optional<std::string> PickFileToOpen(const FileRequest& request) = 0;
  virtual std::optional<std::string> PickFileToSave(const FileRequest& request) = 0;
  // Opens the menu at the pointer. The chosen item's OnClick runs before this returns.
  virtual void PopupMenu(widgets::Menu& menu) = 0;
};

}  // namespace qmrules::platform
