#include "platform/scripteddialogs.h"

#include <stdexcept>
#include <utility>

#include "platform/widgets/form.h"
#include "platform/widgets/menu.h"

namespace qmrules::platform {

namespace {

std::string Naming(std::string_view dialog, std::string_view name) {
  return std::string(dialog) + " \"" + std::string(name) + "\"";
}

template <class Step>
bool IsMeantFor(const Step& step, std::string_view name) {
  if constexpr (requires { step.script; }) {
    return step.name == name;
  } else if constexpr (requires { step.text; }) {
    return !step.text || *step.text == name;
  } else {
    return true;
  }
}

}  // namespace

void ScriptedDialogs::ExpectForm(std::string name, FormScript script) {
  steps_.push_back(FormStep{std::move(name), std::move(script)});
}

void ScriptedDialogs::ExpectMessage(MessageAnswer answer) {
  steps_.push_back(MessageStep{answer, std::nullopt});
}

void ScriptedDialogs::ExpectMessage(MessageAnswer answer, std::string text) {
  steps_.push_back(MessageStep{answer, std::move(text)});
}

void ScriptedDialogs::ExpectOpenFile(std::optional<std::string> path) {
  steps_.push_back(OpenFileStep{std::move(path)});
}

void ScriptedDialogs::ExpectSaveFile(std::optional<std::string> path) {
  steps_.push_back(SaveFileStep{std::move(path)});
}

void ScriptedDialogs::ExpectMenu(std::string name, MenuScript script) {
  steps_.push_back(MenuStep{std::move(name), std::move(script)});
}

std::vector<std::string> ScriptedDialogs::MessageTexts() const {
  std::vector<std::string> texts;
  for (const Shown& shown : history_) {
    if (shown.kind == Kind::MessageBox) texts.push_back(shown.name);
  }
  return texts;
}

template <class Step>
Step ScriptedDialogs::Take(std::string_view dialog, std::string_view name) {
  if (steps_.empty()) throw std::logic_error("unexpected " + Naming(dialog, name) + ": the script is at its end");
  Step* const next = std::get_if<Step>(&steps_.front());
  if (next == nullptr || !IsMeantFor(*next, name)) {
    throw std::logic_error("unexpected " + Naming(dialog, name) + ": the script has another dialog here");
  }
  Step taken = std::move(*next);
  steps_.pop_front();
  return taken;
}

void ScriptedDialogs::ShowModal(widgets::Form& form) {
  history_.push_back({Kind::Form, form.Name(), form.Caption(), {}, {}});
  Take<FormStep>("form", form.Name()).script(form);
  if (form.Visible()) throw std::logic_error("the script leaves the " + Naming("form", form.Name()) + " shown");
}

MessageAnswer ScriptedDialogs::MessageBox(std::string_view text, std::string_view caption, MessageStyle style) {
  history_.push_back({Kind::MessageBox, std::string(text), std::string(caption), style, {}});
  const MessageAnswer answer = Take<MessageStep>("message box", text).answer;
  if (!Offers(style, answer)) {
    throw std::logic_error("the " + Naming("message box", text) + " does not offer the answer of the script");
  }
  return answer;
}

std::optional<std::string> ScriptedDialogs::PickFileToOpen(const FileRequest& request) {
  history_.push_back({Kind::OpenFile, request.title, {}, {}, request});
  return Take<OpenFileStep>("file to open", request.title).path;
}

std::optional<std::string> ScriptedDialogs::PickFileToSave(const FileRequest& request) {
  history_.push_back({Kind::SaveFile, request.title, {}, {}, request});
  return Take<SaveFileStep>("file to save", request.title).path;
}

void ScriptedDialogs::PopupMenu(widgets::Menu& menu) {
  history_.push_back({Kind::Menu, menu.Name(), {}, {}, {}});
  Take<MenuStep>("menu", menu.Name()).script(menu);
}

}  // namespace qmrules::platform
