#include "shell/failurereport.h"

#include "platform/error.h"

namespace qmrules::shell {

void FailureReport::Tell(std::string_view text) const {
  const platform::NormalCursor normal(pointer_);
  dialogs_.MessageBox(text, globals_.externalName, platform::MessageStyle::Exclamation);
}

bool FailureReport::Attempt(const std::function<void()>& action) const {
  try {
    action();
    return true;
  } catch (const platform::Error& failure) {
    Tell(failure.what());
    return false;
  }
}

}  // namespace qmrules::shell
