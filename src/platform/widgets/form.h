#pragma once

#include <string>
#include <utility>

#include "platform/event.h"
#include "platform/widgets/container.h"

namespace qmrules::platform {
class Dialogs;
}

namespace qmrules::platform::widgets {

// A dialog's window, shown modally through platform::Dialogs until a handler hides it. A handler may hide the form and
// show another one before it returns: the first form's Show then returns behind that handler. Each Show begins with the
// focus on the widget that SetFocus named meanwhile, else on the first tab stop.
class Form : public Container {
 public:
  explicit Form(std::string name) : name_(std::move(name)) { CloseContainer(); }

  const std::string& Name() const { return name_; }
  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string caption);
  // The topic of the host's help file; 0 for none.
  int HelpContext() const { return helpContext_; }
  void SetHelpContext(int topic);

  bool Visible() const { return IsOpen(); }
  // Shows the form and returns once it is hidden. Throws std::logic_error when it is shown already, and what
  // Dialogs::ShowModal throws, with the form hidden.
  void Show(Dialogs& dialogs);
  void Hide();

  // User: closes the window. Presses the cancel button; a form without one is hidden.
  void Close();

  Event<> OnChanged;
  Event<> OnHidden;

 private:
  std::string name_;
  std::string caption_;
  int helpContext_ = 0;
};

}  // namespace qmrules::platform::widgets
