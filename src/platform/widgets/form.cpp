#include "platform/widgets/form.h"

#include <stdexcept>

#include "platform/dialogs.h"
#include "platform/widgets/button.h"

namespace qmrules::platform::widgets {

void Form::SetCaption(std::string caption) {
  caption_ = std::move(caption);
  OnChanged.Raise();
}

void Form::SetHelpContext(int topic) {
  helpContext_ = topic;
  OnChanged.Raise();
}

void Form::Show(Dialogs& dialogs) {
  if (Visible()) throw std::logic_error("the form " + name_ + " is shown already");
  struct Closing {
    explicit Closing(Form& shown) : form(shown) {}
    Closing(const Closing&) = delete;
    Closing& operator=(const Closing&) = delete;
    ~Closing() {
      if (form.Visible()) form.Hide();
    }
    Form& form;
  };
  const Closing closing(*this);
  Open();
  if (Visible()) dialogs.ShowModal(*this);  // a handler of the first focus may have hidden it again
}

void Form::Hide() {
  if (!Visible()) return;
  CloseContainer();
  OnHidden.Raise();
}

void Form::Close() {
  if (!Visible()) return;
  if (CancelButton() == nullptr || !CancelButton()->Press()) Hide();
}

}  // namespace qmrules::platform::widgets
