#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/dialogs.h"

namespace qmrules::platform {

// Dialogs whose user follows a script: the answers given beforehand are taken in their order, one for each dialog. A
// dialog that the script has no answer for, or another kind of answer, throws std::logic_error naming the dialog.
class ScriptedDialogs final : public Dialogs {
 public:
  // What was shown, in its order.
  enum class Kind { Form, MessageBox, OpenFile, SaveFile, Menu };
  struct Shown {
    Kind kind = Kind::Form;
    std::string name;  // of the form or menu; the text of a message box; the title of a file dialog
    std::string caption;
    MessageStyle style = MessageStyle::Information;  // message boxes only
    FileRequest request;                             // file dialogs only
  };

  using FormScript = std::function<void(widgets::Form&)>;
  using MenuScript = std::function<void(widgets::Menu&)>;

  // The next dialog is the form of this name; the script acts as its user and leaves it hidden.
  void ExpectForm(std::string name, FormScript script);
  // The next dialog is a message box; with a text, it shows exactly that.
  void ExpectMessage(MessageAnswer answer);
  void ExpectMessage(MessageAnswer answer, std::string text);
  // The next dialog asks for a file; nothing cancels it.
  void ExpectOpenFile(std::optional<std::string> path);
  void ExpectSaveFile(std::optional<std::string> path);
  // The next dialog is the menu of this name.
  void ExpectMenu(std::string name, MenuScript script);

  const std::vector<Shown>& History() const { return history_; }
  // The texts of the message boxes shown, in their order.
  std::vector<std::string> MessageTexts() const;
  // Number of answers not taken yet.
  std::size_t Remaining() const { return steps_.size(); }

  // Throws std::logic_error also when the script leaves the form shown.
  void ShowModal(widgets::Form& form) override;
  // Throws std::logic_error also for an answer that the style does not offer.
  MessageAnswer MessageBox(std::string_view text, std::string_view caption, MessageStyle style) override;
  std::optional<std::string> PickFileToOpen(const FileRequest& request) override;
  std::optional<std::string> PickFileToSave(const FileRequest& request) override;
  void PopupMenu(widgets::Menu& menu) override;

 private:
  struct FormStep {
    std::string name;
    FormScript script;
  };
  struct MessageStep {
    MessageAnswer answer = MessageAnswer::Ok;
    std::optional<std::string> text;
  };
  struct OpenFileStep {
    std::optional<std::string> path;
  };
  struct SaveFileStep {
    std::optional<std::string> path;
  };
  struct MenuStep {
    std::string name;
    MenuScript script;
  };

  // Takes the next step when it is of this kind and, where it tells a name, of this one.
  template <class Step>
  Step Take(std::string_view dialog, std::string_view name);

  std::deque<std::variant<FormStep, MessageStep, OpenFileStep, SaveFileStep, MenuStep>> steps_;
  std::vector<Shown> history_;
};

}  // namespace qmrules::platform
